#include "host/dwg/ownership.h"

namespace corma::host::dwg {

namespace {

constexpr std::wstring_view kModelSpace = L"*Model_Space";
constexpr std::wstring_view kPaperSpace = L"*Paper_Space";
constexpr std::wstring_view kLinetypeByBlock = L"ByBlock";
constexpr std::wstring_view kLinetypeByLayer = L"ByLayer";

Handle handleOf(const AcDbStub* stub)
{
    return stub == nullptr || !isWritten(*stub) ? Handle::none : stub->handle;
}

} // namespace

bool isWritten(const AcDbStub& stub)
{
    return !stub.isErased && !stub.isImplied && !stub.isLoose;
}

Ownership::Ownership(Store& store)
    : m_store(store)
{
}

void Ownership::touchOwnerOf(const AcDbStub& stub)
{
    switch (stub.kind) {
    case RecordKind::tableEntry:
    case RecordKind::subEntity:
        if (stub.container != nullptr) {
            touch(*stub.container);
        }
        break;
    case RecordKind::entity:
        if (const Block* const block = m_store.spaceOf(stub)) {
            touch(*block->record);
        }
        break;
    case RecordKind::blockBegin:
    case RecordKind::blockEnd:
        if (const Block* const block = m_store.blockOf(stub)) {
            touch(*block->record);
        }
        break;
    default:
        break;
    }
}

std::vector<AcDbStub*> Ownership::membersOf(const AcDbStub& owner)
{
    std::vector<AcDbStub*> members;
    const auto add = [&](AcDbStub* stub) {
        if (isWritten(*stub)) {
            members.push_back(stub);
        }
    };
    if (owner.kind == RecordKind::tableEntry) {
        if (const Block* const block = m_store.blockOf(owner)) {
            for (AcDbStub* at = m_store.firstEntity(*block); at != nullptr;
                 at = m_store.entityBehind(*block, *at)) {
                add(at);
            }
        }
        return members;
    }
    for (AcDbStub* at = Store::firstSubEntity(owner); at != nullptr;
         at = Store::subEntityBehind(*at)) {
        if (at->type != RecordType::sequenceEnd) {
            add(at);
        }
    }
    return members;
}

Surroundings Ownership::of(AcDbStub& stub)
{
    Surroundings around;
    if (const auto table = m_store.kindOfTable(stub)) {
        ownEntries(stub, *table, around);
    } else if (stub.type == RecordType::blockRecord) {
        if (Block* const block = m_store.blockOf(stub)) {
            ownBlock(*block, around);
        }
    } else if (stub.kind == RecordKind::entity) {
        for (const AcDbStub* member : membersOf(stub)) {
            around.owned.push_back(member->handle);
        }
        for (const AcDbStub* at = Store::firstSubEntity(stub); at != nullptr;
             at = Store::subEntityBehind(*at)) {
            if (at->type == RecordType::sequenceEnd && isWritten(*at)) {
                around.end = at->handle;
            }
        }
    }
    if (const Neighbours* const neighbours = neighboursOf(stub)) {
        around.previous = neighbours->previous;
        around.next = neighbours->next;
    }
    return around;
}

void Ownership::ownEntries(AcDbStub& /*table*/, TableKind kind, Surroundings& around)
{
    const bool isBlocks = kind == kBlockTable;
    const bool isLinetypes = kind == TableKind::linetype;
    const std::wstring first = foldedName(isBlocks ? kModelSpace : kLinetypeByBlock);
    const std::wstring second = foldedName(isBlocks ? kPaperSpace : kLinetypeByLayer);
    for (AcDbStub* at = m_store.firstEntry(kind); at != nullptr;
         at = m_store.entryBehind(kind, *at)) {
        if (!isWritten(*at)) {
            continue;
        }
        const std::wstring name
            = isBlocks || isLinetypes ? foldedName(m_store.nameOfEntry(*at)) : std::wstring();
        if (!name.empty() && name == first && around.first == Handle::none) {
            around.first = at->handle;
        } else if (!name.empty() && name == second && around.second == Handle::none) {
            around.second = at->handle;
        } else {
            around.owned.push_back(at->handle);
        }
    }
}

void Ownership::ownBlock(Block& block, Surroundings& around)
{
    around.begin = handleOf(block.begin);
    around.end = handleOf(block.end);
    for (const AcDbStub* member : membersOf(*block.record)) {
        around.owned.push_back(member->handle);
    }
    around.references = referencesOf(*block.record);
}

void Ownership::linkMembers(const AcDbStub& owner)
{
    const std::vector<AcDbStub*> members = membersOf(owner);
    for (std::size_t i = 0; i < members.size(); ++i) {
        Neighbours& neighbours = m_neighbours[members[i]];
        neighbours.previous = i == 0 ? Handle::none : members[i - 1]->handle;
        neighbours.next = i + 1 == members.size() ? Handle::none : members[i + 1]->handle;
    }
}

const Ownership::Neighbours* Ownership::neighboursOf(const AcDbStub& stub) const
{
    const auto found = m_neighbours.find(&stub);
    return found == m_neighbours.end() ? nullptr : &found->second;
}

void Ownership::noteReference(const AcDbStub& reference)
{
    if (const Block* const block = m_store.findBlock(m_store.textOf(reference, code::name))) {
        touch(*block->record);
        m_references[block->record].push_back(reference.handle);
    }
}

std::vector<Handle> Ownership::referencesOf(const AcDbStub& record) const
{
    const auto found = m_references.find(&record);
    return found == m_references.end() ? std::vector<Handle>() : found->second;
}

} // namespace corma::host::dwg
