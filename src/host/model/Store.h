#pragma once

#include "host/error_status.h"
#include "host/model/DrawingFormat.h"
#include "host/model/Group.h"
#include "host/model/Stub.h"

#include <array>
#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class AcDbDatabase;
class AcDbObject;

namespace corma::host {

enum class TableKind : std::uint8_t
{
    viewport, // VPORT
    linetype,
    layer,
    textStyle,
    view,
    ucs,
    appId,
    dimStyle,
    blockRecord
};
inline constexpr std::size_t kTableCount = 9;

/// The name of a table in its file, such as "LTYPE".
std::string_view nameOf(TableKind table);

/// A symbol table: its entries stand between its head and its end.
struct Table
{
    AcDbStub* head = nullptr; // TABLE; implied where the file lacks it
    AcDbStub* end = nullptr; // ENDTAB; null where the file lacks the table
};

/// A block definition. Its entities stand between BLOCK and ENDBLK, but for those of the model and
/// of the current paper space, which stand in a section of their own.
struct Block
{
    AcDbStub* record = nullptr; // the BLOCK_RECORD, or the BLOCK itself where there are none (R12)
    AcDbStub* begin = nullptr; // null for an implied one
    AcDbStub* end = nullptr;
    std::wstring name;
};

/// The records of one drawing, in the order of its file, and what leads to them: handles, tables,
/// blocks, header variables. It owns the records, and the objects that are in memory for them.
class Store
{
public:
    explicit Store(AcDbDatabase* database);
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store();

    [[nodiscard]] AcDbDatabase* database() const { return m_database; }

    // --- loading: called by a format, in the order of the file ---------------------------------

    /// Puts a record behind all others.
    AcDbStub* append(RecordKind kind, RecordType type, std::uint64_t offset, std::uint32_t size);

    /// Registers the handle that a record has in its file. The first with a handle keeps it; one
    /// that comes later, as one without any, gets another that stands in memory only.
    void giveHandle(AcDbStub& stub, Handle handle);

    RecordType typeNamed(std::string_view name);
    [[nodiscard]] std::string_view nameOf(RecordType type) const;

    void reserve(std::size_t records);

    /// What the format found out while it read.
    struct Structure
    {
        AcDbStub* header = nullptr;
        std::array<Table, kTableCount> tables {};
        std::vector<Block> blocks; // begin and end only
        AcDbStub* tablesEnd = nullptr; // ENDSEC of the section, null where there is none
        AcDbStub* blocksEnd = nullptr;
        AcDbStub* entitiesBegin = nullptr; // SECTION
        AcDbStub* entitiesEnd = nullptr;
        AcDbStub* objectsBegin = nullptr;
        AcDbStub* objectsEnd = nullptr;
        AcDbStub* fileEnd = nullptr; // EOF
    };

    /// Ends the loading: completes what the file means without saying it.
    void finishLoading(Structure structure, std::unique_ptr<DrawingFormat> format);

    // --- records -------------------------------------------------------------------------------

    [[nodiscard]] AcDbStub* find(Handle handle) const;

    [[nodiscard]] AcDbStub* first() const { return m_first; }

    [[nodiscard]] std::size_t recordCount() const { return m_stubs.size(); }

    /// The groups of a record: those in memory where there are any, else decoded from the file.
    [[nodiscard]] Groups groupsOf(const AcDbStub& stub) const;

    /// A text of a record without keeping the record in memory.
    [[nodiscard]] std::wstring textOf(const AcDbStub& stub, int code) const;

    /// A new record with a new handle, before another one. Its object is given by setResident().
    AcDbStub* insertBefore(AcDbStub& place, RecordKind kind, RecordType type);

    /// The same as the last object of the drawing; makes the section OBJECTS where it is missing.
    AcDbStub* appendObject(RecordType type);

    /// The object in memory for a record, made from its groups when there is none yet.
    AcDbObject& resident(AcDbStub& stub);
    void setResident(AcDbStub& stub, std::unique_ptr<AcDbObject> object);

    /// Lets go of an object that nobody has open and that holds nothing that the file does not.
    void release(AcDbStub& stub);

    /// A handle that was never used in the drawing; $HANDSEED grows.
    Handle newHandle();

    // --- what leads to records -----------------------------------------------------------------

    /// Implied where the file lacks it. Entries: see firstIn() and the chain.
    AcDbStub* table(TableKind kind);
    [[nodiscard]] std::optional<TableKind> kindOfTable(const AcDbStub& table) const;

    /// The entry of a table by its name, without regard to case; erased ones only when asked for.
    AcDbStub* findEntry(TableKind table, std::wstring_view name, bool evenErased = false);

    /// Puts a new entry at the end of a table, and makes the table where the file lacks it.
    AcDbStub* addEntry(TableKind table, const std::wstring& name);

    /// A name came, went or changed: the names of a table are looked at anew.
    void forgetNames(TableKind table);

    /// The definition that a record of the block table stands for; null for another record.
    Block* blockOf(const AcDbStub& record);
    Block* findBlock(std::wstring_view name);
    std::deque<Block>& blocks();

    /// A new definition: its record, BLOCK and ENDBLK. The name must not be there yet.
    Block& addBlock(const std::wstring& name, std::wstring_view layer = L"0");

    /// The block that an entity is in; null for a record that is in none.
    Block* spaceOf(const AcDbStub& entity);

    // Entities of a block, erased ones included: null at the end. Sub-entities are passed over.
    AcDbStub* firstEntity(const Block& block) const;
    AcDbStub* lastEntity(const Block& block) const;
    AcDbStub* entityBehind(const Block& block, const AcDbStub& entity) const;
    AcDbStub* entityBefore(const Block& block, const AcDbStub& entity) const;

    /// The record before which a new entity of a block goes.
    AcDbStub& placeForEntity(Block& block);

    // The sub-entities of an entity, erased ones included, SEQEND among them.
    AcDbStub* firstSubEntity(const AcDbStub& entity) const;
    AcDbStub* subEntityBehind(const AcDbStub& subEntity) const;

    /// The dictionary that all others hang on; null where the drawing cannot have one (R12).
    AcDbStub* namedObjects();

    // --- header --------------------------------------------------------------------------------

    [[nodiscard]] DrawingVersion version() const { return m_version; }

    /// $ACADVER as it stands, such as "AC1015"; empty when there is none.
    [[nodiscard]] const std::string& versionText() const { return m_versionText; }

    /// The groups of a header variable; empty when the drawing does not have it.
    [[nodiscard]] std::vector<Group> variable(std::wstring_view name) const; // "$TILEMODE"
    [[nodiscard]] std::int64_t integerVariable(std::wstring_view name, std::int64_t fallback) const;
    [[nodiscard]] Point pointVariable(std::wstring_view name, Point fallback) const;
    void setVariable(std::wstring_view name, Group value);

    // --- saving --------------------------------------------------------------------------------

    /// Something differs from the file.
    [[nodiscard]] bool isChanged() const { return m_isChanged; }

    void markChanged(AcDbStub& stub);

    [[nodiscard]] const DrawingFormat* format() const { return m_format.get(); }

    /// The drawing is as it is in a file from now on.
    void markSaved() { m_isChanged = false; }

private:
    struct HeaderVariables;

    AcDbStub* newStub(RecordKind kind, RecordType type);
    void link(AcDbStub& stub, AcDbStub* before);
    AcDbStub* structureBefore(AcDbStub& place, RecordType type, std::vector<Group> groups);
    void ensureTablesSection();
    void ensureTable(TableKind kind);
    void ensureObjectsSection();
    void buildBlocks();
    HeaderVariables& header() const;

    AcDbDatabase* m_database;
    std::unique_ptr<DrawingFormat> m_format;
    std::deque<AcDbStub> m_stubs;
    AcDbStub* m_first = nullptr;
    AcDbStub* m_last = nullptr;
    Structure m_structure;
    DrawingVersion m_version = DrawingVersion::unknown;
    std::string m_versionText;
    bool m_isChanged = false;
    std::uint64_t m_nextHandle = 1;

    // Open addressing; the load stays below one half.
    struct HandleSlot
    {
        Handle handle = Handle::none;
        AcDbStub* stub = nullptr;
    };

    void growHandles(std::size_t count);
    std::vector<HandleSlot> m_handles;
    std::size_t m_handleCount = 0;

    std::vector<std::string> m_typeNames;
    std::unordered_map<std::string, RecordType> m_types;

    using Names = std::unordered_map<std::wstring, AcDbStub*>; // by folded name; erased ones, too
    std::array<std::optional<Names>, kTableCount> m_names;

    bool m_hasBlocks = false;
    std::deque<Block> m_blocks;
    std::unordered_map<const AcDbStub*, Block*> m_blocksByStub; // of record and begin
    std::unordered_map<std::wstring, Block*> m_blocksByName; // folded

    mutable std::unique_ptr<HeaderVariables> m_header;
};

} // namespace corma::host
