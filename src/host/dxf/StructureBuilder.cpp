#include "host/dxf/StructureBuilder.h"

#include "host/dxf/tags.h"

#include <algorithm>
#include <utility>

namespace corma::host::dxf {

namespace {

std::optional<TableKind> tableNamed(std::string_view name)
{
    for (std::size_t i = 0; i < kTableCount; ++i) {
        const auto kind = static_cast<TableKind>(i);
        if (nameOf(kind) == name) {
            return kind;
        }
    }
    return std::nullopt;
}

bool isSubEntityOf(RecordType type, RecordType owner)
{
    switch (type) {
    case RecordType::attribute:
        return owner == RecordType::insert;
    case RecordType::vertex:
        return owner == RecordType::polyline;
    default:
        return type == RecordType::sequenceEnd;
    }
}

// What may stand in one section only.
bool isFrame(RecordType type)
{
    return type == RecordType::table || type == RecordType::endTable || type == RecordType::block
        || type == RecordType::blockEnd;
}

} // namespace

void StructureBuilder::addPreface(std::uint32_t size)
{
    if (size != 0) {
        m_store.append(RecordKind::structure, RecordType::none, 0, size);
    }
}

void StructureBuilder::add(const FileRecord& record)
{
    m_record = record;
    m_type = typeOf(record.type);
    switch (m_type) {
    case RecordType::section:
        beginSection();
        break;
    case RecordType::endSection:
        endSection();
        break;
    case RecordType::endOfFile:
        closeSection();
        m_structure.fileEnd = append(RecordKind::structure);
        break;
    default:
        addInSection();
        break;
    }
}

void StructureBuilder::addInSection()
{
    switch (m_section) {
    case Section::tables:
        addToTables();
        break;
    case Section::blocks:
        addToBlocks();
        break;
    case Section::entities:
        addEntity(nullptr);
        break;
    case Section::objects:
        addToObjects();
        break;
    case Section::none:
    case Section::other:
        append(RecordKind::structure);
        break;
    }
}

Store::Structure StructureBuilder::finish()
{
    m_record.offset += m_record.size; // for what is implied behind it
    closeSection();
    if (m_structure.fileEnd == nullptr) {
        m_structure.fileEnd = appendImplied(RecordKind::structure, RecordType::endOfFile);
    }
    return std::move(m_structure);
}

RecordType StructureBuilder::typeOf(std::string_view name)
{
    if (name.empty()) {
        return m_store.typeNamed(name);
    }
    // Nearly all records of a large drawing are of a few types.
    const auto first = static_cast<unsigned char>(name.front());
    const auto last = static_cast<unsigned char>(name.back());
    KnownType& known = m_known[(first + last * 3U + name.size() * 5U) % m_known.size()];
    if (known.name != name) {
        known = {name, m_store.typeNamed(name)};
    }
    return known.type;
}

AcDbStub* StructureBuilder::append(RecordKind kind)
{
    return m_store.append(kind, m_type, m_record.offset, m_record.size);
}

AcDbStub* StructureBuilder::appendObject(RecordKind kind, AcDbStub* container)
{
    AcDbStub* const stub = append(kind);
    stub->container = container;
    m_store.giveHandle(*stub, handleFrom(trimmed(m_record.handle)).value_or(Handle::none));
    return stub;
}

AcDbStub* StructureBuilder::appendImplied(RecordKind kind, RecordType type)
{
    AcDbStub* const stub = m_store.append(kind, type, m_record.offset, 0);
    stub->isImplied = true;
    return stub;
}

StructureBuilder::Section StructureBuilder::sectionNamed(std::string_view name)
{
    struct Known
    {
        std::string_view name;
        Section section;
    };

    constexpr std::array kKnown
        = {Known {"TABLES", Section::tables}, Known {"BLOCKS", Section::blocks},
           Known {"ENTITIES", Section::entities}, Known {"OBJECTS", Section::objects}};
    const auto* const known = std::find_if(kKnown.begin(), kKnown.end(),
                                           [&](const Known& row) { return row.name == name; });
    return known == kKnown.end() ? Section::other : known->section;
}

void StructureBuilder::beginSection()
{
    closeSection();
    const bool isHeader = m_record.name == "HEADER" && m_structure.header == nullptr;
    AcDbStub* const stub = append(isHeader ? RecordKind::header : RecordKind::structure);
    if (isHeader) {
        m_structure.header = stub;
    }
    // Classes come ahead of all that they describe.
    const bool isFirst = m_structure.tablesEnd == nullptr && m_structure.entitiesBegin == nullptr
        && m_structure.objectsBegin == nullptr && m_structure.blocks.empty();
    if (m_record.name == "CLASSES" && m_structure.classesBegin == nullptr && isFirst) {
        m_structure.classesBegin = stub;
    }
    m_section = sectionNamed(m_record.name);
    m_sectionName = m_record.name;
    if (m_section == Section::entities && m_structure.entitiesBegin == nullptr) {
        m_structure.entitiesBegin = stub;
    } else if (m_section == Section::objects && m_structure.objectsBegin == nullptr) {
        m_structure.objectsBegin = stub;
    }
}

void StructureBuilder::endSection()
{
    closeTable();
    closeBlock();
    sectionEnds(append(RecordKind::structure));
}

void StructureBuilder::closeSection()
{
    closeTable();
    closeBlock();
    if (isInSection()) {
        sectionEnds(appendImplied(RecordKind::structure, RecordType::endSection));
    }
}

// Of several sections with one name the first is the one that new records go to.
void StructureBuilder::sectionEnds(AcDbStub* end)
{
    if (AcDbStub** const place = endOf(m_section); place != nullptr && *place == nullptr) {
        *place = end;
    }
    m_section = Section::none;
    m_owner = nullptr;
}

void StructureBuilder::addToTables()
{
    if (m_type == RecordType::table) {
        addTable();
    } else if (m_type == RecordType::endTable) {
        tableEnds(append(RecordKind::structure));
    } else if (m_table == nullptr || isFrame(m_type)) {
        append(RecordKind::structure);
    } else {
        appendObject(RecordKind::tableEntry, m_table);
    }
}

void StructureBuilder::addTable()
{
    closeTable();
    m_table = appendObject(RecordKind::table, nullptr);
    m_tableKind = tableNamed(m_record.name);
    if (!m_tableKind) {
        return;
    }
    Table& table = tableOf(*m_tableKind);
    if (table.head != nullptr) {
        m_tableKind.reset();
        return;
    }
    table.head = m_table;
}

void StructureBuilder::closeTable()
{
    if (m_table != nullptr) {
        tableEnds(appendImplied(RecordKind::structure, RecordType::endTable));
    }
}

void StructureBuilder::tableEnds(AcDbStub* end)
{
    if (m_tableKind) {
        tableOf(*m_tableKind).end = end;
    }
    m_table = nullptr;
    m_tableKind.reset();
}

void StructureBuilder::addToBlocks()
{
    if (m_type == RecordType::block) {
        addBlock();
    } else if (m_block == nullptr) {
        append(RecordKind::structure);
    } else if (m_type == RecordType::blockEnd) {
        blockEnds(appendObject(RecordKind::blockEnd, nullptr));
    } else {
        addEntity(m_block);
    }
}

void StructureBuilder::addBlock()
{
    closeBlock();
    m_block = appendObject(RecordKind::blockBegin, nullptr);
    Block block;
    block.begin = m_block;
    m_structure.blocks.push_back(std::move(block));
}

void StructureBuilder::closeBlock()
{
    if (m_block != nullptr) {
        blockEnds(appendImplied(RecordKind::blockEnd, RecordType::blockEnd));
    }
}

void StructureBuilder::blockEnds(AcDbStub* end)
{
    m_structure.blocks.back().end = end;
    m_block = nullptr;
    m_owner = nullptr;
}

void StructureBuilder::addToObjects()
{
    if (isFrame(m_type)) {
        append(RecordKind::structure);
    } else {
        appendObject(RecordKind::object, nullptr);
    }
}

void StructureBuilder::addEntity(AcDbStub* block)
{
    if (isFrame(m_type)) {
        append(RecordKind::structure);
        return;
    }
    const bool isOwned = m_owner != nullptr && isSubEntityOf(m_type, m_owner->type);
    AcDbStub* const stub = isOwned ? appendObject(RecordKind::subEntity, m_owner)
                                   : appendObject(RecordKind::entity, block);
    stub->isPaperSpace = m_record.isPaperSpace && block == nullptr;
    const bool isOwner = m_type == RecordType::insert || m_type == RecordType::polyline;
    if (isOwner) {
        m_owner = stub;
    } else if (!isOwned || m_type == RecordType::sequenceEnd) {
        m_owner = nullptr;
    }
}

AcDbStub** StructureBuilder::endOf(Section section)
{
    switch (section) {
    case Section::tables:
        return &m_structure.tablesEnd;
    case Section::blocks:
        return &m_structure.blocksEnd;
    case Section::entities:
        return &m_structure.entitiesEnd;
    case Section::objects:
        return &m_structure.objectsEnd;
    case Section::none:
    case Section::other:
        break;
    }
    return nullptr;
}

Table& StructureBuilder::tableOf(TableKind kind)
{
    return m_structure.tables[static_cast<std::size_t>(kind)];
}

} // namespace corma::host::dxf
