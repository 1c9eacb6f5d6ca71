#pragma once

#include "host/model/Store.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace corma::host::dxf {

/// A record as it stands in the file: what there is from one group of code 0 up to the next.
struct FileRecord
{
    std::uint64_t offset = 0;
    std::uint32_t size = 0;
    std::string_view type;
    std::string_view name; // the first group of code 2
    std::string_view handle; // as text; empty where there is none
    bool isPaperSpace = false;
};

/// Makes the records of a drawing, in the order of the file, and finds out which part each plays.
/// Whatever is not where it belongs becomes a record without a meaning; an end that the file lacks
/// becomes an implied record.
class StructureBuilder
{
public:
    explicit StructureBuilder(Store& store)
        : m_store(store)
    {
    }

    /// The bytes ahead of the first record, if there are any.
    void addPreface(std::uint32_t size);

    void add(const FileRecord& record);

    /// A section was begun and not ended.
    [[nodiscard]] bool isInSection() const { return m_section != Section::none; }

    /// Its name, or that of the section before.
    [[nodiscard]] std::string_view sectionName() const { return m_sectionName; }

    /// Call it once, behind the last record.
    Store::Structure finish();

private:
    enum class Section : std::uint8_t
    {
        none,
        tables,
        blocks,
        entities,
        objects,
        other
    };

    struct KnownType
    {
        std::string_view name;
        RecordType type = RecordType::none;
    };

    RecordType typeOf(std::string_view name);
    AcDbStub* append(RecordKind kind);
    AcDbStub* appendObject(RecordKind kind, AcDbStub* container);
    AcDbStub* appendImplied(RecordKind kind, RecordType type);

    static Section sectionNamed(std::string_view name);
    AcDbStub** endOf(Section section);
    Table& tableOf(TableKind kind);

    void addInSection();
    void beginSection();
    void endSection();
    void closeSection();
    void sectionEnds(AcDbStub* end);
    void addToTables();
    void addTable();
    void closeTable();
    void tableEnds(AcDbStub* end);
    void addToBlocks();
    void addBlock();
    void closeBlock();
    void blockEnds(AcDbStub* end);
    void addEntity(AcDbStub* block);
    void addToObjects();

    Store& m_store;
    Store::Structure m_structure;

    FileRecord m_record; // the one that is being added
    RecordType m_type = RecordType::none;

    Section m_section = Section::none;
    std::string_view m_sectionName;
    AcDbStub* m_table = nullptr; // the one whose end has not come yet
    std::optional<TableKind> m_tableKind; // where it is the first of its kind
    AcDbStub* m_block = nullptr;
    AcDbStub* m_owner = nullptr; // the entity that sub-entities may follow

    std::array<KnownType, 64> m_known {}; // by a hash of the name; others are looked up
};

} // namespace corma::host::dxf
