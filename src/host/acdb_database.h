#pragma once

// A drawing in memory.

#include "host/acdb_block.h"
#include "host/acdb_dictionary.h"
#include "host/acdb_entity.h"
#include "host/acdb_object.h"
#include "host/acdb_symbol_table.h"
#include <corma/geometry.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace corma::host {
class Store;
}

namespace corma::platform {
struct FileContent;
}

namespace AcDb {

/// What happens to a named record that the destination has, too.
enum DuplicateRecordCloning
{
    kDrcNotApplicable = 0,
    kDrcIgnore = 1, // the destination's stays
    kDrcReplace = 2, // the source's takes its place, under the destination's id
    kDrcXrefMangleName = 3,
    kDrcMangleName = 4, // both: the source's gets another name
    kDrcUnmangleName = 5
};

} // namespace AcDb

/// The name of an object in its drawing.
class AcDbHandle
{
public:
    AcDbHandle() = default;
    explicit AcDbHandle(const ACHAR* hexadecimal); // null for a text that is none

    explicit AcDbHandle(corma::host::Handle handle)
        : m_handle(handle)
    {
    }

    [[nodiscard]] bool isNull() const { return m_handle == corma::host::Handle::none; }

    [[nodiscard]] corma::host::Handle value() const { return m_handle; }

    /// At least 17 characters.
    void getIntoAsciiBuffer(ACHAR* buffer, std::size_t size) const;

private:
    corma::host::Handle m_handle = corma::host::Handle::none;
};

/// An object and its clone.
class AcDbIdPair
{
public:
    AcDbIdPair() = default;

    AcDbIdPair(AcDbObjectId key, AcDbObjectId value, bool isCloned)
        : m_key(key)
        , m_value(value)
        , m_isCloned(isCloned)
    {
    }

    [[nodiscard]] AcDbObjectId key() const { return m_key; }

    [[nodiscard]] AcDbObjectId value() const { return m_value; }

    /// False for a record that the destination had already.
    [[nodiscard]] bool isCloned() const { return m_isCloned; }

private:
    AcDbObjectId m_key;
    AcDbObjectId m_value;
    bool m_isCloned = false;
};

/// What a cloning made of what.
class AcDbIdMapping
{
public:
    void setDestDb(AcDbDatabase* destination) { m_destination = destination; }

    [[nodiscard]] AcDbDatabase* destDb() const { return m_destination; }

    bool assign(const AcDbIdPair& pair); // replaces the pair of the same key
    bool compute(AcDbIdPair& pair) const; // fills in the value for pair.key(); false: there is none

private:
    friend class AcDbIdMappingIter;

    AcDbDatabase* m_destination = nullptr;
    std::vector<AcDbIdPair> m_pairs; // in the order of cloning
    std::unordered_map<AcDbStub*, std::size_t> m_index;
};

class AcDbIdMappingIter
{
public:
    explicit AcDbIdMappingIter(const AcDbIdMapping& mapping)
        : m_mapping(mapping)
    {
    }

    void start() { m_at = 0; }

    void next() { ++m_at; }

    [[nodiscard]] bool done() const { return m_at >= m_mapping.m_pairs.size(); }

    bool getMap(AcDbIdPair& pair) const; // false behind the end

private:
    const AcDbIdMapping& m_mapping;
    std::size_t m_at = 0;
};

class AcDbDatabase
{
public:
    enum OpenMode
    {
        kForReadAndReadShare = 1,
        kForReadAndWriteNoShare = 2,
        kForReadAndAllShare = 3
    };

    /// With buildDefaultDrawing a new, empty drawing; without it one into which a file is to be
    /// read. noDocument says that no document belongs to it, which makes no difference here.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    /// Nothing of it may be open. Ids of its objects are not to be used any more.
    ~AcDbDatabase();

    // --- files -----------------------------------------------------------------------------------

    /// Reads a drawing; the content tells the format, not the name. The drawing must be empty. A
    /// failure is told in a message that names the file and what was found: eFileNotFound,
    /// eFileAccessErr, eUnsupportedFileFormat (no drawing, or a format or version that cannot be
    /// read), eBadDxfFile (a garbled or truncated one). A password is refused: no format here has
    /// one.
    Acad::ErrorStatus readDwgFile(const ACHAR* fileName, OpenMode mode = kForReadAndReadShare,
                                  bool allowCPConversion = false, const ACHAR* password = nullptr);
    Acad::ErrorStatus dxfIn(const ACHAR* fileName, const ACHAR* logFileName = nullptr);

    /// Writes the drawing to a file in the format and version that it was read from, in one step.
    /// A new drawing is written as text DXF. A failure is told in a message; the file is then as it
    /// was.
    Acad::ErrorStatus saveAs(const ACHAR* fileName);

    /// The same to the file that it was read from.
    Acad::ErrorStatus save();

    /// Full path of the file that it was read from or last saved to; empty for a new drawing.
    Acad::ErrorStatus getFilename(const ACHAR*& fileName) const;

    /// Something differs from that file.
    [[nodiscard]] bool isModified() const;

    // --- tables and dictionaries -----------------------------------------------------------------

    /// Each opens the one object of its kind; the caller closes it.
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                                AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& table,
                                     AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& table,
                                     AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getSymbolTable(AcDbViewportTable*& table,
                                     AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table,
                                       AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table,
                                        AcDb::OpenMode mode = AcDb::kForRead);

    [[nodiscard]] AcDbObjectId namedObjectsDictionaryId() const; // null where there can be none
    [[nodiscard]] AcDbObjectId blockTableId() const;
    [[nodiscard]] AcDbObjectId layerTableId() const;
    [[nodiscard]] AcDbObjectId linetypeTableId() const;
    [[nodiscard]] AcDbObjectId textStyleTableId() const;
    [[nodiscard]] AcDbObjectId viewportTableId() const;

    /// The object with a handle. eUnknownHandle when there is none.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound,
                                      const AcDbHandle& handle);

    // --- header and services -----------------------------------------------------------------

    /// $ACADVER as the file has it, such as L"AC1032"; empty when it does not tell.
    [[nodiscard]] std::wstring versionText() const;

    /// True while the model's own view is current, false in a layout.
    [[nodiscard]] bool tilemode() const;

    /// Loads one linetype, or all for "*", from a file that the host finds. eDuplicateKey when it
    /// is there already, eUndefinedLineType when the file does not have it, eFileNotFound.
    Acad::ErrorStatus loadLineTypeFile(const ACHAR* linetypeName, const ACHAR* fileName);

    /// The legal width nearest to one in hundredths of a millimetre, halfway the larger; the three
    /// words stay. Any other negative number is the thinnest width.
    static AcDb::LineWeight getNearestLineWeight(int weight);

    // --- cloning: source and destination must not be the same drawing --------------------------

    /// The model space of a drawing as a block of this one; a block of that name is redefined and
    /// keeps its id. Without preserveSource the source may be emptied by it.
    Acad::ErrorStatus insert(AcDbObjectId& blockId, const ACHAR* blockName, AcDbDatabase* source,
                             bool preserveSource = true);

    /// The entities of the model space of a drawing, transformed, into the current space.
    Acad::ErrorStatus insert(const AcGeMatrix3d& transform, AcDbDatabase* source,
                             bool preserveSource = true);

    /// Entities of this drawing, with what they need, as a new drawing that the caller deletes; its
    /// origin is the base point.
    Acad::ErrorStatus wblock(AcDbDatabase*& output, const AcDbObjectIdArray& ids,
                             const AcGePoint3d& basePoint);

    /// Clones objects of this drawing, with what they own and need, into an owner of another one:
    /// a symbol table, a block or a dictionary. The mapping tells what became what.
    Acad::ErrorStatus wblockCloneObjects(const AcDbObjectIdArray& ids, AcDbObjectId& owner,
                                         AcDbIdMapping& mapping, AcDb::DuplicateRecordCloning rule,
                                         bool deferTranslation = false);

    // --- inside the host -----------------------------------------------------------------------

    [[nodiscard]] corma::host::Store& store() { return *m_store; }

    [[nodiscard]] const corma::host::Store& store() const { return *m_store; }

private:
    Acad::ErrorStatus read(corma::platform::FileContent content, const std::wstring& path);

    std::unique_ptr<corma::host::Store> m_store;
    std::wstring m_fileName;
};
