// The block definitions of a store, and the entities in them.

#include "host/acdb_object.h"
#include "host/model/Store.h"

#include <algorithm>

namespace corma::host {

namespace {

constexpr const wchar_t* kModelSpace = L"*Model_Space";
constexpr const wchar_t* kPaperSpace = L"*Paper_Space";

// R12 has no names that begin with a star for what a user must not touch.
constexpr const wchar_t* kOldModelSpace = L"$MODEL_SPACE";
constexpr const wchar_t* kOldPaperSpace = L"$PAPER_SPACE";

Block::Share shareOf(std::wstring_view name)
{
    const std::wstring folded = foldedName(name);
    if (folded == foldedName(kModelSpace)) {
        return Block::Share::modelSpace;
    }
    return folded == foldedName(kPaperSpace) ? Block::Share::paperSpace : Block::Share::none;
}

std::wstring modernName(const std::wstring& name)
{
    const std::wstring folded = foldedName(name);
    if (folded == foldedName(kOldModelSpace)) {
        return kModelSpace;
    }
    return folded == foldedName(kOldPaperSpace) ? kPaperSpace : name;
}

bool isDrawn(const AcDbStub& stub)
{
    return stub.kind == RecordKind::entity || stub.kind == RecordKind::subEntity;
}

} // namespace

// --- definitions ---------------------------------------------------------------------------------

Block& Store::enterBlock(Block block)
{
    block.share = shareOf(block.name);
    block.position = m_blocks.size();
    Block& entered = m_blocks.emplace_back(std::move(block));
    for (const AcDbStub* stub : {entered.record, entered.begin, entered.end}) {
        if (stub != nullptr) {
            m_blocksByStub.emplace(stub, &entered);
        }
    }
    Block*& named = m_blocksByName[foldedName(entered.name)];
    if (named == nullptr || (named->record->isErased && !entered.record->isErased)) {
        named = &entered;
    }
    return entered;
}

// In the order of the records; what has no record follows, as a file of R12 has it throughout.
void Store::buildBlocks()
{
    m_hasBlocks = true;
    std::unordered_map<std::wstring, std::deque<Block>> definitions; // those of a name, in order
    std::unordered_map<const AcDbStub*, const Block*> byRecord;
    for (Block& block : m_structure.blocks) {
        if (block.record != nullptr) {
            byRecord.emplace(block.record, &block);
            continue;
        }
        block.name = modernName(textOf(*block.begin, code::name));
        definitions[foldedName(block.name)].push_back(block);
    }
    for (AcDbStub* at = nextOfTable(kBlockTable, table(kBlockTable).next); at != nullptr;
         at = nextOfTable(kBlockTable, at->next)) {
        Block block;
        block.name = textOf(*at, code::name);
        auto& waiting = definitions[foldedName(block.name)];
        if (const auto known = byRecord.find(at); known != byRecord.end()) {
            block.begin = known->second->begin;
            block.end = known->second->end;
        } else if (!waiting.empty()) {
            block = waiting.front();
            waiting.pop_front();
        }
        block.record = at;
        enterBlock(std::move(block));
    }
    for (const Block& found : m_structure.blocks) {
        if (m_blocksByStub.contains(found.begin)) {
            continue;
        }
        Block block = found;
        block.record = block.begin;
        enterBlock(std::move(block));
    }
    for (const wchar_t* name : {kModelSpace, kPaperSpace}) {
        if (!m_blocksByName.contains(foldedName(name))) {
            Block block;
            block.name = name;
            block.record = impliedStub(RecordKind::tableEntry, RecordType::blockRecord,
                                       {{code::type, L"BLOCK_RECORD"}, {code::name, name}});
            block.record->container = &table(kBlockTable);
            enterBlock(std::move(block));
        }
    }
}

std::deque<Block>& Store::blocks()
{
    if (!m_hasBlocks) {
        buildBlocks();
    }
    return m_blocks;
}

Block* Store::blockOf(const AcDbStub& record)
{
    blocks();
    const auto found = m_blocksByStub.find(&record);
    return found == m_blocksByStub.end() ? nullptr : found->second;
}

Block* Store::findBlock(std::wstring_view name)
{
    blocks();
    const auto found = m_blocksByName.find(foldedName(name));
    return found == m_blocksByName.end() || found->second->record->isErased ? nullptr
                                                                            : found->second;
}

namespace {

std::vector<Group> newBlockBegin(const std::wstring& name, bool hasSubclasses)
{
    constexpr int kSecondName = 3;
    constexpr int kBasePoint = 10;
    constexpr int kReferencePath = 1;
    std::vector<Group> groups = {{code::type, L"BLOCK"}};
    if (hasSubclasses) {
        groups.emplace_back(code::subclass, kEntityMarker);
    }
    groups.emplace_back(code::layer, L"0");
    if (hasSubclasses) {
        groups.emplace_back(code::subclass, L"AcDbBlockBegin");
    }
    const int anonymous = name.starts_with(L'*') ? 1 : 0;
    groups.emplace_back(code::name, GroupValue(name));
    groups.emplace_back(code::flags, anonymous);
    for (int axis = 0; axis < 3; ++axis) {
        groups.emplace_back(kBasePoint + 10 * axis, 0.0);
    }
    groups.emplace_back(kSecondName, GroupValue(name));
    if (hasSubclasses) {
        groups.emplace_back(kReferencePath, L"");
    }
    return groups;
}

std::vector<Group> newBlockEnd(bool hasSubclasses)
{
    std::vector<Group> groups = {{code::type, L"ENDBLK"}};
    if (hasSubclasses) {
        groups.emplace_back(code::subclass, kEntityMarker);
    }
    groups.emplace_back(code::layer, L"0");
    if (hasSubclasses) {
        groups.emplace_back(code::subclass, L"AcDbBlockEnd");
    }
    return groups;
}

std::vector<Group> newBlockRecord(const std::wstring& name, DrawingVersion version)
{
    constexpr int kLayout = 340;
    constexpr int kUnits = 70;
    constexpr int kIsExplodable = 280;
    constexpr int kScaling = 281;
    std::vector<Group> groups = {{code::type, L"BLOCK_RECORD"},
                                 {code::subclass, L"AcDbSymbolTableRecord"},
                                 {code::subclass, L"AcDbBlockTableRecord"},
                                 {code::name, GroupValue(name)}};
    if (version >= DrawingVersion::r2000) {
        groups.emplace_back(kLayout, Handle::none);
    }
    if (version >= DrawingVersion::r2007) {
        groups.emplace_back(kUnits, 0);
        groups.emplace_back(kIsExplodable, 1);
        groups.emplace_back(kScaling, 0);
    }
    return groups;
}

} // namespace

void Store::ensureBlocksSection()
{
    if (m_structure.blocksEnd != nullptr) {
        return;
    }
    ensureTablesSection();
    AcDbStub* const place = m_structure.tablesEnd->next;
    insertStructure(place, RecordKind::structure,
                    {{code::type, L"SECTION"}, {code::name, L"BLOCKS"}});
    m_structure.blocksEnd
        = insertStructure(place, RecordKind::structure, {{code::type, L"ENDSEC"}});
}

// A BLOCK or ENDBLK: its groups wait in the store, as hardly anyone opens it.
AcDbStub* Store::insertBlockRecord(RecordKind kind, std::vector<Group> groups, Handle owner)
{
    const RecordType type
        = kind == RecordKind::blockBegin ? RecordType::block : RecordType::blockEnd;
    AcDbStub* const stub = insertBefore(m_structure.blocksEnd, kind, type);
    Groups all(std::move(groups));
    if (writesHandles()) {
        all.insert(1, Group(code::handle, stub->handle));
    }
    if (m_version >= DrawingVersion::r13) {
        all.setOwnerHandle(owner);
    }
    m_newGroups[stub] = std::move(all);
    return stub;
}

Block& Store::addBlock(const std::wstring& name)
{
    blocks();
    ensureBlocksSection();
    const bool hasRecords = m_version >= DrawingVersion::r13;
    Block block;
    block.name = name;
    if (hasRecords) {
        block.record = appendEntry(kBlockTable, RecordType::blockRecord, name);
        Groups groups(newBlockRecord(name, m_version));
        groups.insert(1, Group(code::handle, block.record->handle));
        groups.setOwnerHandle(block.record->container->handle);
        m_newGroups[block.record] = std::move(groups);
    }
    const Handle owner = hasRecords ? block.record->handle : Handle::none;
    block.begin = insertBlockRecord(RecordKind::blockBegin, newBlockBegin(name, hasRecords), owner);
    block.end = insertBlockRecord(RecordKind::blockEnd, newBlockEnd(hasRecords), owner);
    if (!hasRecords) {
        block.record = block.begin;
    }
    forgetNames(kBlockTable);
    return enterBlock(std::move(block));
}

void Store::renameBlock(Block& block, const std::wstring& name)
{
    constexpr int kSecondName = 3;
    for (AcDbStub* stub : {block.record, block.begin}) {
        if (stub == nullptr) {
            continue;
        }
        Groups& groups = resident(*stub).m_groups;
        for (const int nameCode : {code::name, kSecondName}) {
            if (const auto at = groups.find(nameCode)) {
                groups[*at].set(name);
            }
        }
        markChanged(*stub);
    }
    m_blocksByName.erase(foldedName(block.name));
    block.name = name;
    m_blocksByName[foldedName(name)] = &block;
    forgetNames(kBlockTable);
}

Point Store::originOf(const Block& block) const
{
    constexpr int kBasePoint = 10;
    if (block.begin == nullptr) {
        return {};
    }
    const Groups groups = groupsOf(*block.begin);
    return groups.point(kBasePoint, groups.subclass(L"AcDbBlockBegin"));
}

// --- entities ------------------------------------------------------------------------------------

Block* Store::spaceOf(const AcDbStub& entity)
{
    if (entity.kind == RecordKind::subEntity) {
        return entity.container == nullptr ? nullptr : spaceOf(*entity.container);
    }
    if (entity.kind != RecordKind::entity) {
        return nullptr;
    }
    if (entity.container != nullptr) {
        return blockOf(*entity.container);
    }
    return findBlock(entity.isPaperSpace ? kPaperSpace : kModelSpace);
}

bool Store::isOwn(const Block& block, const AcDbStub& stub) const
{
    if (stub.kind != RecordKind::entity) {
        return false;
    }
    if (stub.container != nullptr) {
        return stub.container == block.begin;
    }
    return block.share == (stub.isPaperSpace ? Block::Share::paperSpace : Block::Share::modelSpace);
}

// Where the entities of a block go on when those between BLOCK and ENDBLK are over.
AcDbStub* Store::sectionBehind(const Block& block) const
{
    return block.share == Block::Share::none ? nullptr : m_structure.entitiesBegin;
}

AcDbStub* Store::firstEntity(const Block& block) const
{
    AcDbStub* const start = block.begin == nullptr ? sectionBehind(block) : block.begin;
    return start == nullptr ? nullptr : entityBehind(block, *start);
}

AcDbStub* Store::entityBehind(const Block& block, const AcDbStub& entity) const
{
    bool isInBlock = &entity == block.begin || entity.container != nullptr;
    for (AcDbStub* at = entity.next;; at = at->next) {
        const bool isOver = at == nullptr || !isDrawn(*at);
        if (!isOver) {
            if (isOwn(block, *at)) {
                return at;
            }
            continue;
        }
        at = isInBlock ? sectionBehind(block) : nullptr;
        if (at == nullptr) {
            return nullptr;
        }
        isInBlock = false;
    }
}

AcDbStub* Store::lastEntity(const Block& block) const
{
    const bool isShared = block.share != Block::Share::none && m_structure.entitiesBegin != nullptr;
    if (!isShared && block.begin == nullptr) {
        return nullptr;
    }
    const AcDbStub* const behind = placeBehind(block);
    AcDbStub* const last = behind == nullptr ? m_last : behind->previous;
    return isOwn(block, *last) ? last : entityBefore(block, *last);
}

AcDbStub* Store::entityBefore(const Block& block, const AcDbStub& entity) const
{
    const auto lastOwn = [&](AcDbStub* at) {
        while (at != nullptr && isDrawn(*at) && !isOwn(block, *at)) {
            at = at->previous;
        }
        return at != nullptr && isDrawn(*at) ? at : nullptr;
    };
    const bool isSub = entity.kind == RecordKind::subEntity && entity.container != nullptr;
    const AcDbStub& whole = isSub ? *entity.container : entity;
    AcDbStub* const found
        = lastOwn(&entity == m_structure.entitiesBegin ? nullptr : entity.previous);
    if (found != nullptr || whole.container != nullptr || block.begin == nullptr) {
        return found;
    }
    AcDbStub* at = block.begin; // and from its end backwards
    while (at->next != nullptr && isDrawn(*at->next)) {
        at = at->next;
    }
    return lastOwn(at);
}

// The record before which a new entity of a block goes; null for the end of the file.
AcDbStub* Store::placeBehind(const Block& block) const
{
    const bool isShared = block.share != Block::Share::none && m_structure.entitiesBegin != nullptr;
    AcDbStub* at = isShared ? m_structure.entitiesEnd : block.end;
    if (at != nullptr) {
        return at;
    }
    at = isShared ? m_structure.entitiesBegin : block.begin; // the file lacks the end
    do {
        at = at->next;
    } while (at != nullptr && isDrawn(*at));
    return at;
}

void Store::ensureEntitiesSection()
{
    if (m_structure.entitiesBegin != nullptr) {
        return;
    }
    AcDbStub* const place
        = m_structure.objectsBegin == nullptr ? m_structure.fileEnd : m_structure.objectsBegin;
    m_structure.entitiesBegin = insertStructure(
        place, RecordKind::structure, {{code::type, L"SECTION"}, {code::name, L"ENTITIES"}});
    m_structure.entitiesEnd
        = insertStructure(place, RecordKind::structure, {{code::type, L"ENDSEC"}});
}

AcDbStub* Store::appendEntity(Block& block, RecordType type)
{
    if (block.share != Block::Share::none) {
        ensureEntitiesSection();
    }
    AcDbStub* const stub = insertBefore(placeBehind(block), RecordKind::entity, type);
    stub->container = block.share == Block::Share::none ? block.begin : nullptr;
    stub->isPaperSpace = block.share == Block::Share::paperSpace;
    return stub;
}

AcDbStub* Store::firstSubEntity(const AcDbStub& entity)
{
    AcDbStub* const next = entity.next;
    return next != nullptr && next->kind == RecordKind::subEntity && next->container == &entity
        ? next
        : nullptr;
}

AcDbStub* Store::subEntityBehind(const AcDbStub& subEntity)
{
    AcDbStub* const next = subEntity.next;
    return next != nullptr && next->kind == RecordKind::subEntity
            && next->container == subEntity.container
        ? next
        : nullptr;
}

AcDbStub* Store::appendSubEntity(AcDbStub& entity, RecordType type)
{
    AcDbStub* behind = &entity;
    // It goes ahead of an erased end, too, which may come back.
    for (AcDbStub* at = firstSubEntity(entity);
         at != nullptr && at->type != RecordType::sequenceEnd; at = subEntityBehind(*at)) {
        behind = at;
    }
    return appendSubEntity(entity, *behind, type);
}

AcDbStub* Store::appendSubEntity(AcDbStub& entity, AcDbStub& behind, RecordType type)
{
    AcDbStub* const stub = insertBefore(behind.next, RecordKind::subEntity, type);
    stub->container = &entity;
    return stub;
}

void Store::orderSubEntities(AcDbStub& entity, const std::vector<AcDbStub*>& order)
{
    AcDbStub* behind = &entity;
    for (AcDbStub* const stub : order) {
        if (behind->next != stub) {
            stub->previous->next = stub->next;
            (stub->next == nullptr ? m_last : stub->next->previous) = stub->previous;
            link(*stub, behind->next);
            m_isChanged = true;
        }
        behind = stub;
    }
}

} // namespace corma::host
