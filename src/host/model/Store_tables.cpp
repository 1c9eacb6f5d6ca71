// The symbol tables of a store.

#include "host/acdb_object.h"
#include "host/model/Store.h"
#include "platform/text.h"

#include <algorithm>

namespace corma::host {

namespace {

struct TableName
{
    std::string_view name;
    const wchar_t* wide;
};

// In the order of TableKind, which is the order in which files have them.
constexpr std::array<TableName, kTableCount> kTableNames = {{
    {"VPORT", L"VPORT"},
    {"LTYPE", L"LTYPE"},
    {"LAYER", L"LAYER"},
    {"STYLE", L"STYLE"},
    {"VIEW", L"VIEW"},
    {"UCS", L"UCS"},
    {"APPID", L"APPID"},
    {"DIMSTYLE", L"DIMSTYLE"},
    {"BLOCK_RECORD", L"BLOCK_RECORD"},
}};

constexpr int kEntryCount = 70; // the group in the head of a table

std::size_t indexOf(TableKind kind)
{
    return static_cast<std::size_t>(kind);
}

} // namespace

std::string_view nameOf(TableKind table)
{
    return kTableNames[indexOf(table)].name;
}

std::wstring foldedName(std::wstring_view name)
{
    std::wstring folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), foldCase);
    return folded;
}

void Store::implyTables()
{
    for (std::size_t i = 0; i < kTableCount; ++i) {
        if (m_structure.tables[i].head == nullptr) {
            m_structure.tables[i].head
                = impliedStub(RecordKind::table, RecordType::table,
                              {{code::type, L"TABLE"}, {code::name, kTableNames[i].wide}});
        }
    }
}

AcDbStub& Store::table(TableKind kind)
{
    return *m_structure.tables[indexOf(kind)].head;
}

std::optional<TableKind> Store::kindOfTable(const AcDbStub& table) const
{
    for (std::size_t i = 0; i < kTableCount; ++i) {
        if (m_structure.tables[i].head == &table) {
            return static_cast<TableKind>(i);
        }
    }
    return std::nullopt;
}

// --- entries -------------------------------------------------------------------------------------

// Blocks are the entries of their table also where the file has no records for them, or lacks the
// one of model or paper space.
AcDbStub* Store::firstEntry(TableKind table)
{
    if (table == kBlockTable) {
        return blocks().empty() ? nullptr : blocks().front().record;
    }
    return nextOfTable(table, m_structure.tables[indexOf(table)].head->next);
}

AcDbStub* Store::lastEntry(TableKind table)
{
    if (table == kBlockTable) {
        return blocks().empty() ? nullptr : blocks().back().record;
    }
    AcDbStub* last = nullptr;
    for (AcDbStub* at = firstEntry(table); at != nullptr; at = entryBehind(table, *at)) {
        last = at;
    }
    return last;
}

AcDbStub* Store::entryBehind(TableKind table, const AcDbStub& entry)
{
    if (table == kBlockTable) {
        const Block* const block = blockOf(entry);
        const std::size_t next = block == nullptr ? m_blocks.size() : block->position + 1;
        return next < m_blocks.size() ? m_blocks[next].record : nullptr;
    }
    return nextOfTable(table, entry.next);
}

AcDbStub* Store::entryBefore(TableKind table, const AcDbStub& entry)
{
    if (table == kBlockTable) {
        const Block* const block = blockOf(entry);
        return block == nullptr || block->position == 0 ? nullptr
                                                        : m_blocks[block->position - 1].record;
    }
    AcDbStub* const head = m_structure.tables[indexOf(table)].head;
    AcDbStub* at = entry.previous;
    while (at != nullptr && at != head && at->kind != RecordKind::tableEntry) {
        at = at->previous;
    }
    return at == head ? nullptr : at;
}

// The first entry from a record on; null at the end of the table.
AcDbStub* Store::nextOfTable(TableKind table, AcDbStub* at) const
{
    const AcDbStub* const head = m_structure.tables[indexOf(table)].head;
    while (at != nullptr && at->container != head && at->kind != RecordKind::structure
           && at->kind != RecordKind::table) {
        at = at->next;
    }
    return at != nullptr && at->container == head && at->kind == RecordKind::tableEntry ? at
                                                                                        : nullptr;
}

// --- names ---------------------------------------------------------------------------------------

std::wstring Store::nameOfEntry(const AcDbStub& entry)
{
    if (entry.type == RecordType::blockRecord || entry.type == RecordType::block) {
        if (const Block* block = blockOf(entry)) {
            return block->name;
        }
    }
    return textOf(entry, code::name);
}

void Store::buildNames(TableKind table)
{
    Names found;
    for (AcDbStub* at = firstEntry(table); at != nullptr; at = entryBehind(table, *at)) {
        AcDbStub*& slot = found[foldedName(nameOfEntry(*at))];
        if (slot == nullptr || (slot->isErased && !at->isErased)) {
            slot = at;
        }
    }
    m_names[indexOf(table)] = std::move(found);
}

Store::Names& Store::names(TableKind table)
{
    auto& held = m_names[indexOf(table)];
    if (!held) {
        buildNames(table);
    }
    return *held;
}

AcDbStub* Store::findEntry(TableKind table, std::wstring_view name, bool evenErased)
{
    const Names& known = names(table);
    const auto found = known.find(foldedName(name));
    if (found == known.end() || (found->second->isErased && !evenErased)) {
        return nullptr;
    }
    return found->second;
}

void Store::forgetNames(TableKind table)
{
    m_names[indexOf(table)].reset();
}

// --- new entries and tables ----------------------------------------------------------------------

void Store::ensureTablesSection()
{
    if (m_structure.tablesEnd != nullptr) {
        return;
    }
    // Tables come behind the header and ahead of all that names their entries.
    AcDbStub* place = m_first;
    while (place != nullptr && place->kind != RecordKind::blockBegin
           && place != m_structure.entitiesBegin && place != m_structure.objectsBegin
           && place != m_structure.fileEnd && place->next != m_structure.blocksEnd) {
        place = place->next;
    }
    if (place != nullptr && place->kind == RecordKind::blockBegin) {
        place = place->previous; // its section's begin
    }
    insertStructure(place, RecordKind::structure,
                    {{code::type, L"SECTION"}, {code::name, L"TABLES"}});
    m_structure.tablesEnd
        = insertStructure(place, RecordKind::structure, {{code::type, L"ENDSEC"}});
}

void Store::ensureTable(TableKind kind)
{
    Table& table = m_structure.tables[indexOf(kind)];
    if (table.end != nullptr) {
        return;
    }
    ensureTablesSection();
    AcDbStub& head = *table.head;
    if (head.isImplied) {
        Groups groups = groupsOf(head);
        if (writesHandles()) {
            groups.add(Group(code::handle, head.handle));
        }
        if (m_version >= DrawingVersion::r13) {
            groups.add(Group(code::owner, Handle::none));
            groups.add(Group(code::subclass, L"AcDbSymbolTable"));
        }
        groups.add(Group(kEntryCount, 0));
        if (head.resident == nullptr) {
            m_newGroups[&head] = std::move(groups);
        } else {
            head.resident->m_groups = std::move(groups);
        }
        link(head, m_structure.tablesEnd);
        head.isImplied = false;
        head.ownsHandle = true;
        markChanged(head);
        noteHandles();
    }
    AcDbStub* place = head.next;
    while (place != nullptr && place->container == &head) {
        place = place->next;
    }
    table.end = insertStructure(place, RecordKind::structure, {{code::type, L"ENDTAB"}});
}

AcDbStub* Store::appendEntry(TableKind table, RecordType type, std::wstring_view name)
{
    ensureTable(table);
    Table& place = m_structure.tables[indexOf(table)];
    AcDbStub* const entry = insertBefore(place.end, RecordKind::tableEntry, type);
    entry->container = place.head;
    if (table != kBlockTable) {
        names(table)[foldedName(name)] = entry;
    }
    AcDbObject& head = resident(*place.head);
    const GroupRange body = head.m_groups.body();
    const std::int64_t count = head.m_groups.integer(kEntryCount, body);
    head.m_groups.set(kEntryCount, body, count + 1);
    markChanged(*place.head);
    return entry;
}

} // namespace corma::host
