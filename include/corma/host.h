#pragma once

// What a standalone program gives the library in place of a CAD host, and the few host types that
// the library's interface uses. Inside the CAD host the same names come from the host.

#include <corma/export.h>

#include <cstddef>
#include <string>
#include <vector>

// Status codes and result types of the host.
inline constexpr int RTNONE = 5000;
inline constexpr int RTREAL = 5001;
inline constexpr int RTPOINT = 5002;
inline constexpr int RTSHORT = 5003;
inline constexpr int RTSTR = 5005;
inline constexpr int RT3DPOINT = 5009;
inline constexpr int RTLONG = 5010;
inline constexpr int RTNORM = 5100;
inline constexpr int RTERROR = -5001;
inline constexpr int RTCAN = -5002;
inline constexpr int RTKWORD = -5005;

using ACHAR = wchar_t;

class AcApDocument;
class AcDbDatabase;
class AcDbStub;
using ads_real = double;
using ads_point = ads_real[3];

// Without initialisers, as a member of a union.
struct ads_binary
{
    short clen; // bytes in buf
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    long long rlname[2];
    int rlong;
    long long mnInt64;
    ads_binary rbinary;
};

/// Names an object of a drawing, for as long as the drawing is in memory.
class AcDbObjectId
{
public:
    constexpr AcDbObjectId() = default;

    constexpr explicit AcDbObjectId(AcDbStub* stub)
        : m_stub(stub)
    {
    }

    [[nodiscard]] constexpr bool isNull() const { return m_stub == nullptr; }

    constexpr void setNull() { m_stub = nullptr; }

    constexpr bool operator==(const AcDbObjectId&) const = default;

    /// What the host keeps behind the id.
    [[nodiscard]] constexpr AcDbStub* stub() const { return m_stub; }

private:
    AcDbStub* m_stub = nullptr;
};

/// An ordered list of ids; one may stand in it more than once.
class CORMA_EXPORT AcDbObjectIdArray
{
public:
    [[nodiscard]] int length() const { return static_cast<int>(m_ids.size()); }

    [[nodiscard]] bool isEmpty() const { return m_ids.empty(); }

    int append(AcDbObjectId id);

    [[nodiscard]] AcDbObjectId at(int index) const
    {
        return m_ids[static_cast<std::size_t>(index)];
    }

    AcDbObjectId& operator[](int index) { return m_ids[static_cast<std::size_t>(index)]; }

    AcDbObjectId operator[](int index) const { return at(index); }

    [[nodiscard]] bool contains(AcDbObjectId id) const { return find(id) >= 0; }

    [[nodiscard]] int find(AcDbObjectId id) const; // -1 when it is not there
    bool remove(AcDbObjectId id); // the first such; false when it was not there
    AcDbObjectIdArray& removeAll();
    AcDbObjectIdArray& setLogicalLength(int length);

    [[nodiscard]] auto begin() const { return m_ids.begin(); }

    [[nodiscard]] auto end() const { return m_ids.end(); }

private:
    std::vector<AcDbObjectId> m_ids;
};

/// A node of the host's result lists; `restype` tells which member of `resval` is live.
struct resbuf
{
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

/// A new zero-filled node of the given result type, or null when there is no memory.
/// The caller frees it, with all that is chained behind it, by acutRelRb().
CORMA_EXPORT resbuf* acutNewRb(int type);

/// Frees a list and the texts that it owns. Null is allowed. Always RTNORM.
CORMA_EXPORT int acutRelRb(resbuf* list);

namespace corma {

enum class MessageIcon
{
    none,
    information,
    question,
    exclamation,
    stop
};
enum class MessageButtons
{
    ok,
    okCancel,
    yesNo,
    yesNoCancel
};
enum class MessageAnswer
{
    ok,
    cancel,
    yes,
    no
};

/// Which hatch pattern the user is to choose.
struct HatchPatternQuestion
{
    const wchar_t* pattern = L""; // the one that is selected at first; empty for none
    bool showCustom = false; // also those that have a file of their own in the support folders
};

/// What the library shows, asks and wants to know of its surroundings. A program derives from it
/// and installs its object with setServices(); the defaults serve a program on a terminal.
class CORMA_EXPORT Services
{
public:
    Services() = default;
    Services(const Services&) = default;
    Services& operator=(const Services&) = default;
    virtual ~Services();

    /// Text for the command line, as the library sends it: a message begins with a line end and
    /// does not end in one. By default it goes to standard error as UTF-8.
    virtual void print(const wchar_t* text);

    /// A message that the user must see. By default printed.
    virtual void alert(const wchar_t* text);

    /// A message box. By default its text is printed and the answer is the cautious one:
    /// cancel where there is such a button, else no, else ok.
    virtual MessageAnswer messageBox(const wchar_t* text, const wchar_t* title, MessageIcon icon,
                                     MessageButtons buttons);

    /// The host cannot go on. By default the text is printed and the process aborts; an override
    /// may return, and the library then goes on with its normal failure.
    virtual void fail(const wchar_t* text);

    /// Shows the patterns that areas can be filled with. True when the user chose one, whose name
    /// is then in `chosen`; else `chosen` stays as it was. By default nothing is shown or chosen.
    virtual bool chooseHatchPattern(const HatchPatternQuestion& question, std::wstring& chosen);

    /// Shows a help file, given with its path; an empty one was not found. True when the user sees
    /// it. By default the path is printed, or that there is none.
    virtual bool showHelp(const wchar_t* file);

    /// Full path of the module whose folder is searched first for files. By default the program.
    /// Null or empty: there is none. The text lives as long as the object.
    virtual const wchar_t* moduleFile();

    /// Value of an environment variable, null when it is not set. The text lives until the next
    /// call.
    virtual const wchar_t* environment(const wchar_t* name);
};

/// The services in force.
CORMA_EXPORT Services& services();

/// Installs other services and returns the former ones (null: the default ones were in force).
/// The caller keeps ownership; null puts the default ones back.
CORMA_EXPORT Services* setServices(Services* replacement);

/// Reads a drawing and makes it the current document: its settings and the project file beside it
/// then count in lookups, and drawing operations work on it. The content of the file decides the
/// format: DWG of R13 to R2018, text DXF or binary DXF. False, with a message that tells why, when
/// the file cannot be read; the document that was current stays so then.
CORMA_EXPORT bool openDocument(const wchar_t* fileName);

/// Makes a new, empty drawing the current document. Nothing is written before it is saved; the name
/// decides where it goes then, and where project files are looked for. False when the name is null
/// or empty.
CORMA_EXPORT bool newDocument(const wchar_t* fileName);

/// True when the drawing of the current document differs from its file.
CORMA_EXPORT bool isDocumentModified();

/// Writes the drawing of the current document to a file, or for null to its own, in one step. It
/// stays in its format, but for a DXF drawing that gets another name, one that ends in ".dwg": that
/// file is DWG. False, with a message that tells why, when it fails; the file is then as it was.
CORMA_EXPORT bool saveDocument(const wchar_t* fileName = nullptr);

/// Closes the current document without saving it, if there is one; then none is current.
CORMA_EXPORT void closeDocument();

/// The current document, or null. It lives until it is closed or another one becomes current.
CORMA_EXPORT AcApDocument* currentDocument();

/// Reads a drawing aside: no document belongs to it and the working database stays. Null, with a
/// message that tells why, when the file cannot be read. The caller closes it by closeDatabase().
CORMA_EXPORT AcDbDatabase* openDatabase(const wchar_t* fileName);

/// Closes a drawing that was read aside, without saving it. Null is allowed. Ids of its objects are
/// not to be used any more.
CORMA_EXPORT void closeDatabase(AcDbDatabase* database);

/// The handle of an object: its name in the drawing, hexadecimal, in capitals. Empty for a null id.
CORMA_EXPORT std::wstring handleOf(AcDbObjectId id);

/// The object with a handle in a drawing, the working one for null. A null id when there is none.
CORMA_EXPORT AcDbObjectId objectWithHandle(const wchar_t* handle, AcDbDatabase* database = nullptr);

/// The folder search keeps the folder of Services::moduleFile() once it has asked. Call this
/// after other services were installed, so that it asks again.
CORMA_EXPORT void forgetModuleFolder();

} // namespace corma
