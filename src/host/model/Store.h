#pragma once

#include "host/error_status.h"
#include "host/model/DrawingFormat.h"
#include "host/model/Group.h"
#include "host/model/HandleTable.h"
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
    /// Which records of the section ENTITIES are its own.
    enum class Share : std::uint8_t
    {
        none,
        modelSpace,
        paperSpace
    };

    AcDbStub* record = nullptr; // the BLOCK_RECORD, or the BLOCK itself where there are none (R12)
    AcDbStub* begin = nullptr; // null for an implied one
    AcDbStub* end = nullptr; // null where the file lacks it
    std::wstring name;
    Share share = Share::none;
    std::size_t position = 0; // among the blocks
};

/// The table that the blocks of a drawing are entries of.
inline constexpr TableKind kBlockTable = TableKind::blockRecord;

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
        AcDbStub* classesBegin = nullptr; // SECTION, null where there is none
        std::array<Table, kTableCount> tables {};
        std::vector<Block> blocks; // begin and end, and the record where the file says it
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

    [[nodiscard]] AcDbStub* find(Handle handle) const { return m_handles.find(handle); }

    /// The first record of the file; the others follow by AcDbStub::next.
    [[nodiscard]] AcDbStub* first() const { return m_first; }

    [[nodiscard]] std::size_t recordCount() const { return m_count; }

    /// The groups of a record: those in memory where there are any, else decoded from the file.
    [[nodiscard]] Groups groupsOf(const AcDbStub& stub) const;

    /// A text of a record, without keeping the record in memory.
    [[nodiscard]] std::wstring textOf(const AcDbStub& stub, int code) const;

    /// A new entity at the end of a block, or a sub-entity before the end of its entity's. The
    /// record has a handle; its object, with groups, is still to be given by setResident().
    AcDbStub* appendEntity(Block& block, RecordType type);
    AcDbStub* appendSubEntity(AcDbStub& entity, RecordType type);

    /// The same right behind one that the entity has, or behind the entity itself.
    AcDbStub* appendSubEntity(AcDbStub& entity, AcDbStub& behind, RecordType type);

    /// Puts sub-entities of an entity ahead of its others, in this order.
    void orderSubEntities(AcDbStub& entity, const std::vector<AcDbStub*>& order);

    /// The block references that bear a name and are not erased, wherever they are. The first
    /// question goes over the drawing; later ones cost what they find.
    std::vector<AcDbStub*> referencesOf(std::wstring_view blockName);

    /// A new record as the last object of the drawing, in the same way.
    AcDbStub* appendObject(RecordType type);

    /// A new entry at the end of a table, in the same way; makes the table where the file lacks it.
    AcDbStub* appendEntry(TableKind table, RecordType type, std::wstring_view name);

    /// The object in memory for a record, made from its groups when there is none yet.
    AcDbObject& resident(AcDbStub& stub);

    /// Gives a new record its object. Handle and owner, if there is one, are put into its groups;
    /// groups that wait for an object are forgotten.
    void setResident(AcDbStub& stub, std::unique_ptr<AcDbObject> object, Handle owner);

    /// Gives a record new content, without an object until one is asked for; nobody may have it
    /// open. The groups have neither handle nor owner yet.
    void setGroups(AcDbStub& stub, Groups groups, Handle owner);

    /// The same with groups that have both already.
    void replaceGroups(AcDbStub& stub, Groups groups);

    /// Lets go of the object in memory when it holds nothing that the file does not.
    void release(AcDbStub& stub);

    /// Marks a record as erased, with all that it owns, or takes the marks away from it and from
    /// what was erased along with it. A dictionary that it is an entry of becomes a changed one.
    void erase(AcDbStub& stub, bool erasing);

    /// Marks a record as taken out of its dictionary, with all that it owns, or takes the marks
    /// away.
    void setLoose(AcDbStub& stub, bool isLoose);

    /// The record that owns another by its place or by what it says; null when there is none.
    [[nodiscard]] AcDbStub* ownerOf(const AcDbStub& stub) const;

    /// A handle that was never used in the drawing; $HANDSEED grows.
    Handle newHandle();

    /// True when the records of the drawing bear their handles.
    [[nodiscard]] bool writesHandles() const;

    // --- tables --------------------------------------------------------------------------------

    /// Implied where the file lacks it.
    AcDbStub& table(TableKind kind);
    [[nodiscard]] std::optional<TableKind> kindOfTable(const AcDbStub& table) const;

    // The entries of a table in order, erased ones included; null at the end.
    AcDbStub* firstEntry(TableKind table);
    AcDbStub* lastEntry(TableKind table);
    AcDbStub* entryBehind(TableKind table, const AcDbStub& entry);
    AcDbStub* entryBefore(TableKind table, const AcDbStub& entry);

    /// The entry of a name, without regard to case; an erased one only when asked for and when
    /// there is no other.
    AcDbStub* findEntry(TableKind table, std::wstring_view name, bool evenErased = false);

    /// The name of a table's entry.
    [[nodiscard]] std::wstring nameOfEntry(const AcDbStub& entry);

    /// A name changed: the names of a table are looked at anew.
    void forgetNames(TableKind table);

    // --- blocks --------------------------------------------------------------------------------

    /// The definition that a record of the block table, a BLOCK or an ENDBLK stands for.
    Block* blockOf(const AcDbStub& record);

    /// By name, without regard to case; null when there is none, or an erased one only.
    Block* findBlock(std::wstring_view name);
    std::deque<Block>& blocks();

    /// A new definition; the name must not be there yet.
    Block& addBlock(const std::wstring& name);

    /// Gives a block another name; it must be open for that in no other way.
    void renameBlock(Block& block, const std::wstring& name);

    /// The point of a block that comes to the position of a reference.
    [[nodiscard]] Point originOf(const Block& block) const;

    /// The block that an entity is in; null for a record that is in none.
    Block* spaceOf(const AcDbStub& entity);

    // Entities of a block in order, erased ones included: null at the end. Sub-entities are passed
    // over.
    [[nodiscard]] AcDbStub* firstEntity(const Block& block) const;
    [[nodiscard]] AcDbStub* lastEntity(const Block& block) const;
    [[nodiscard]] AcDbStub* entityBehind(const Block& block, const AcDbStub& entity) const;
    [[nodiscard]] AcDbStub* entityBefore(const Block& block, const AcDbStub& entity) const;

    // The sub-entities of an entity, erased ones included, SEQEND among them.
    [[nodiscard]] static AcDbStub* firstSubEntity(const AcDbStub& entity);
    [[nodiscard]] static AcDbStub* subEntityBehind(const AcDbStub& subEntity);

    // --- classes -------------------------------------------------------------------------------

    /// How the drawing describes a type of record that is not built into every program (CLASS);
    /// empty when it does not.
    [[nodiscard]] Groups classOf(std::string_view type) const;

    /// Adds such a description. Versions before R13 have no place for it; nothing happens then.
    void addClass(Groups groups);

    // --- dictionaries --------------------------------------------------------------------------

    /// The dictionary that all others hang on. Implied where the file lacks it.
    AcDbStub& namedObjects();

    /// Gives an implied root dictionary its place in the file. eInvalidDwgVersion when the version
    /// of the drawing has none (R12 and before).
    Acad::ErrorStatus makeRoomForObjects();

    // --- header --------------------------------------------------------------------------------

    [[nodiscard]] DrawingVersion version() const { return m_version; }

    /// $ACADVER as it stands, such as L"AC1015"; empty when there is none.
    [[nodiscard]] const std::wstring& versionText() const { return m_versionText; }

    /// The groups of a header variable; empty when the drawing does not have it.
    [[nodiscard]] Groups variable(std::wstring_view name) const; // L"$TILEMODE"

    /// All of them, with their names; empty for a drawing that has no header.
    [[nodiscard]] Groups headerGroups() const;

    /// Gives a variable a value, in place of the one of the same code. Nothing happens in a drawing
    /// that has no header.
    void setVariable(std::wstring_view name, const Group& value);

    // --- saving --------------------------------------------------------------------------------

    /// Something differs from the file.
    [[nodiscard]] bool isChanged() const { return m_isChanged; }

    void markChanged(AcDbStub& stub);

    [[nodiscard]] const DrawingFormat* format() const { return m_format.get(); }

    /// Where records that are not understood can come from, and go to, as the bits that they are.
    [[nodiscard]] std::optional<BitsForm> bitsForm() const;

    /// Takes such records of a drawing from now on, though its own format has none: for one in
    /// memory, whose content goes back into a drawing of that form. It cannot be written in a
    /// format that has no such records while it has one.
    void setBitsForm(std::optional<BitsForm> form) { m_bitsForm = form; }

    /// The drawing is as it is in a file from now on.
    void markSaved() { m_isChanged = false; }

private:
    struct Header;
    struct References;
    using Names = std::unordered_map<std::wstring, AcDbStub*>; // folded name; erased ones, too

    AcDbStub* newStub(RecordKind kind, RecordType type);
    AcDbStub* insertBefore(AcDbStub* place, RecordKind kind, RecordType type);
    AcDbStub* insertStructure(AcDbStub* place, RecordKind kind, std::vector<Group> groups);
    void link(AcDbStub& stub, AcDbStub* before);
    void giveMissingHandles();
    Handle nextHandle();
    void noteHandles();
    void readVersion();
    void implyTables();
    void implyNamedObjects();
    void ensureTablesSection();
    void ensureTable(TableKind kind);
    void ensureEntitiesSection();
    void ensureBlocksSection();
    AcDbStub* insertBlockRecord(RecordKind kind, std::vector<Group> groups, Handle owner);
    AcDbStub* nextOfTable(TableKind table, AcDbStub* at) const;
    void buildBlocks();
    Block& enterBlock(Block block);
    void buildNames(TableKind table);
    Names& names(TableKind table);
    AcDbStub* impliedStub(RecordKind kind, RecordType type, std::vector<Group> groups);
    [[nodiscard]] bool isOwn(const Block& block, const AcDbStub& stub) const;
    [[nodiscard]] AcDbStub* sectionBehind(const Block& block) const;
    AcDbStub* placeBehind(const Block& block) const;
    void collectOwned(const AcDbStub& stub, std::vector<AcDbStub*>& owned);
    std::vector<AcDbStub*> withOwned(AcDbStub& stub);
    void noteErasing(AcDbStub& stub, bool erasing);
    Header& header() const;
    void readGroups(const AcDbStub& stub, Groups& groups) const;
    void noteReference(AcDbStub& changed);
    [[nodiscard]] std::wstring blockNameOf(const AcDbStub& reference) const;
    References& references();

    AcDbDatabase* m_database;
    std::unique_ptr<DrawingFormat> m_format;
    std::optional<BitsForm> m_bitsForm; // instead of that of the format

    static constexpr std::size_t kStubsInPiece = 4096;
    std::vector<std::unique_ptr<AcDbStub[]>> m_pieces;
    std::size_t m_count = 0;
    Groups m_room; // memory of groups that are no longer needed, for the next record
    AcDbStub* m_first = nullptr;
    AcDbStub* m_last = nullptr;
    Structure m_structure;
    AcDbStub* m_namedObjects = nullptr;
    std::unordered_map<const AcDbStub*, Groups> m_newGroups; // of new records without an object
    std::unordered_map<const AcDbStub*, const AcDbStub*> m_erasedWith; // what was erased to what

    DrawingVersion m_version = DrawingVersion::unknown;
    std::wstring m_versionText;
    bool m_isChanged = false;

    std::uint64_t m_nextHandle = 1;
    HandleTable m_handles;
    std::size_t m_withoutHandle = 0; // objects that were loaded without one of their own

    std::vector<std::string> m_typeNames;
    std::unordered_map<std::string, RecordType> m_types;
    std::array<std::optional<Names>, kTableCount> m_names;

    bool m_hasBlocks = false;
    std::deque<Block> m_blocks;
    std::unordered_map<const AcDbStub*, Block*> m_blocksByStub; // of record, begin and end
    std::unordered_map<std::wstring, Block*> m_blocksByName; // folded

    mutable std::unique_ptr<Header> m_header;
    std::unique_ptr<References> m_references; // null until somebody asks
};

/// The text of names in tables and dictionaries as they compare: without regard to case.
std::wstring foldedName(std::wstring_view name);

} // namespace corma::host
