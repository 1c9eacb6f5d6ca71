#pragma once

// host/ - the CAD host's operations under their own names and with their own signatures. Here the
// standalone host behind them is ours; inside the CAD host the same names come from the host. Only
// what the library calls is here.

#include "host/acdb_database.h"
#include "host/error_status.h"
#include <corma/geometry.h>
#include <corma/host.h>

#include <memory>
#include <string>

// --- text and messages ---------------------------------------------------------------------------

/// Prints formatted text on the command line. Always RTNORM.
int acutPrintf(const ACHAR* format, ...);

/// Shows a text that the user must close. Always RTNORM.
int acedAlert(const ACHAR* text);

/// Ends the host with a message.
void acdbFail(const ACHAR* text);

/// Shows a help file, given with its path. RTERROR when nothing can be shown, as for an empty path.
/// There is one way to show a file: the topic and the command of the CAD host's help are ignored.
int acedHelp(const ACHAR* file, const ACHAR* topic, int command);

/// Lets the user choose a hatch pattern; true when he did. `pattern` (null: none) is selected at
/// first, showCustom adds the patterns with files of their own. The result is the name chosen, else
/// the pattern as it was given: always a text that the caller frees by acutDelString(), except
/// that it is null when there is no memory.
bool acedHatchPalletteDialog(const ACHAR* pattern, bool showCustom, ACHAR*& result);

/// RTNORM when the text fits the wild-card pattern, heeding case; else RTERROR.
int acutWcMatch(const ACHAR* text, const ACHAR* pattern);

/// True when the text fits the wild-card pattern:
/// `#` a digit, `@` a letter, `.` neither letter nor digit, `?` any character, `*` any run of
/// characters, `[abc]` one of, `[~abc]` none of, `[a-c]` a range, a leading `~` negates a whole
/// alternative, `,` separates alternatives, a backquote takes the next character as it stands.
bool acutWcMatchEx(const ACHAR* text, const ACHAR* pattern, bool ignoreCase);

// --- variables and files -------------------------------------------------------------------------

/// Reads a system variable into *result. A text in it is a heap copy that the caller frees.
/// RTERROR for an unknown name.
int acedGetVar(const ACHAR* name, resbuf* result);

/// Sets a system variable. RTERROR for an unknown name, a read-only one, or a value of another
/// type.
int acedSetVar(const ACHAR* name, const resbuf* value);

/// Full path of a file that the host finds: the path as it stands, the current folder, the folder
/// of the current drawing, the support folders. RTERROR when nowhere; the result then stays as it
/// was. length is the capacity of result in characters, its terminator counted.
int acedFindFile(const ACHAR* name, ACHAR* result, std::size_t length);

/// The module that runs on the host's behalf, as a full path, or null.
const ACHAR* acedGetAppName();

/// Runs a command to its end. The arguments are pairs of a result type and a value, such as RTSTR
/// and a text, and end with RTNONE. One empty text stands for Enter. RTNORM when the command
/// ran; RTERROR, with a message, when it is unknown or failed.
int acedCommandS(int type, ...);

// --- result lists: acutNewRb and acutRelRb are in <corma/host.h> ---------------------------------

/// Frees a text that the host handed out on the heap, and makes the pointer null. Null is allowed.
void acutDelString(ACHAR*& text);
void acutDelBuffer(ACHAR*& text);

// --- the application -----------------------------------------------------------------------------

/// An object of the host's automation: what it has is read by the number of a property.
class AcadAutomation
{
public:
    /// The object that a property is; null for one that is no object.
    [[nodiscard]] virtual const AcadAutomation* object(long property) const = 0;

    /// The text that a property is; empty for one that is no text.
    [[nodiscard]] virtual std::wstring text(long property) const = 0;

protected:
    AcadAutomation() = default;
    AcadAutomation(const AcadAutomation&) = default;
    AcadAutomation& operator=(const AcadAutomation&) = default;
    ~AcadAutomation() = default;
};

/// The host's application. The list of its support folders, separated by ";", is the text 0 of the
/// object 0x60020001 (files) of its object 14 (preferences).
const AcadAutomation* acedGetAcadWinApp();

// --- coordinates ---------------------------------------------------------------------------------

/// The matrix from the user's coordinate system to the world. False without a drawing; the matrix
/// is then the identity.
bool acdbUcsMatrix(AcGeMatrix3d& matrix, AcDbDatabase* database = nullptr);

/// Turns user coordinates into those of the world; a vector is not moved. q may be p. False
/// without a drawing; q is then p.
bool acdbUcs2Wcs(const ads_point p, ads_point q, bool isVector);

/// The viewport that the user works in: in the model's own view the active record of the viewport
/// table, in a layout the VIEWPORT that was last active. Null when there is none.
AcDbObjectId acedGetCurViewportObjectId();

// --- documents -----------------------------------------------------------------------------------

namespace AcAp {

enum DocLockMode
{
    kNone = 0x00,
    kAutoWrite = 0x01,
    kNotLocked = 0x02,
    kWrite = 0x04,
    kRead = 0x14,
    kXWrite = 0x20
};

} // namespace AcAp

class AcApDocument
{
public:
    AcApDocument(const ACHAR* fileName, std::unique_ptr<AcDbDatabase> database);

    /// Full file name of the drawing; empty for an unnamed one.
    [[nodiscard]] const ACHAR* fileName() const;

    [[nodiscard]] AcDbDatabase* database() const { return m_database.get(); }

    /// The strongest lock that is held, kNotLocked when there is none.
    [[nodiscard]] AcAp::DocLockMode lockMode() const;

private:
    friend class AcApDocManager;

    const std::wstring m_fileName;
    const std::unique_ptr<AcDbDatabase> m_database;
    std::vector<AcAp::DocLockMode> m_locks;
};

class AcApDocManager
{
public:
    /// The document that the user works in, or null.
    [[nodiscard]] AcApDocument* curDocument() const;

    /// Locks nest: each needs its unlocking. eInvalidInput for null. Everything runs on one thread
    /// here, so nobody ever waits.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite);
    Acad::ErrorStatus
    unlockDocument(AcApDocument* document); // eNotApplicable when it is not locked
};

AcApDocManager* acDocManagerPtr();

class AcDbHostApplicationServices
{
public:
    /// The database that drawing operations work on, or null.
    [[nodiscard]] AcDbDatabase* workingDatabase() const;

    /// Makes a database the one to work on, until another document is opened; null puts that of the
    /// current document back.
    void setWorkingDatabase(AcDbDatabase* database);

    /// Value of an environment variable such as "ACAD", the support folders separated by ";".
    /// Null when it is not set; the text lives until the next call.
    const ACHAR* getEnv(const ACHAR* name) const;
};

AcDbHostApplicationServices* acdbHostApplicationServices();
