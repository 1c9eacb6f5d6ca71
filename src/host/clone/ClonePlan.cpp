#include "host/clone/ClonePlan.h"

namespace corma::host {

AcDbStub* ClonePlan::named(const Groups& groups, const Reference& reference)
{
    const Group& group = groups[reference.at];
    if (reference.kind != Reference::Kind::name) {
        AcDbStub* const found = job.source.find(group.handle());
        return found == nullptr || found->isErased ? nullptr : found;
    }
    auto& known = m_entries[static_cast<std::size_t>(reference.table)];
    const auto [slot, isNew] = known.try_emplace(nameIn(group), nullptr);
    if (isNew && reference.table == kBlockTable) {
        const Block* const block = job.source.findBlock(slot->first);
        slot->second = block == nullptr ? nullptr : block->record;
    } else if (isNew) {
        slot->second = job.source.findEntry(reference.table, slot->first);
    }
    return slot->second;
}

PlannedRecord* ClonePlan::target(const Groups& groups, const Reference& reference)
{
    const AcDbStub* const source = named(groups, reference);
    return source == nullptr ? nullptr : find(source);
}

RecordKind kindOf(PlannedRecord::Role role)
{
    using Role = PlannedRecord::Role;
    switch (role) {
    case Role::entry:
    case Role::block:
        return RecordKind::tableEntry;
    case Role::blockBegin:
        return RecordKind::blockBegin;
    case Role::blockEnd:
        return RecordKind::blockEnd;
    case Role::entity:
        return RecordKind::entity;
    case Role::subEntity:
        return RecordKind::subEntity;
    case Role::object:
        break;
    }
    return RecordKind::object;
}

} // namespace corma::host
