#pragma once

#include "host/clone/references.h"
#include "host/cloning.h"

#include <deque>
#include <unordered_map>

namespace corma::host {

/// A record of the source and what becomes of it.
struct PlannedRecord
{
    enum class Role : std::uint8_t
    {
        entry, // of a table, but no block
        block, // the record of a block
        blockBegin,
        blockEnd,
        entity,
        subEntity,
        object
    };
    enum class Fate : std::uint8_t
    {
        existing, // one of the destination stands for it
        replaced, // one of the destination gets its content
        added
    };

    AcDbStub* source = nullptr; // null where the destination only needs a plain record of that name
    Role role = Role::object;
    Fate fate = Fate::added;
    TableKind table = TableKind::blockRecord; // of an entry or block

    // The block of an entity, the entity of a sub-entity, the owner of an object.
    PlannedRecord* into = nullptr;

    std::wstring name; // in the destination: of an entry, a block, an object in a dictionary
    Groups groups; // as the destination has them, but with the names and handles of the source
    const AcGeMatrix3d* transform = nullptr;
    std::size_t position = 0; // in the plan
    std::size_t parts = 0; // of a block: what follows it in the plan
    bool isFrame = false; // a dictionary without its entries

    AcDbStub* destination = nullptr; // of one that is added: known once it is made
};

/// What a cloning is going to do.
class ClonePlan
{
public:
    explicit ClonePlan(const CloneJob& cloneJob)
        : job(cloneJob)
    {
    }

    ClonePlan(const ClonePlan&) = delete;
    ClonePlan& operator=(const ClonePlan&) = delete;

    /// What is planned for a record of the source; null when it does not come along.
    [[nodiscard]] PlannedRecord* find(const AcDbStub* source) const
    {
        const auto found = m_bySource.find(source);
        return found == m_bySource.end() ? nullptr : found->second;
    }

    /// What is planned for what a reference names; null when that does not come along.
    [[nodiscard]] PlannedRecord* target(const Groups& groups, const Reference& reference);

    /// The record of the source that a reference names; null when there is none.
    AcDbStub* named(const Groups& groups, const Reference& reference);

    PlannedRecord& add(PlannedRecord record)
    {
        record.position = records.size();
        return records.emplace_back(std::move(record));
    }

    void lead(const AcDbStub* source, PlannedRecord& to) { m_bySource[source] = &to; }

    const CloneJob& job;
    std::deque<PlannedRecord> records;

private:
    std::unordered_map<const AcDbStub*, PlannedRecord*> m_bySource;
    std::array<std::unordered_map<std::wstring, AcDbStub*>, kTableCount> m_entries; // by name
};

/// What a planned record is in its drawing.
RecordKind kindOf(PlannedRecord::Role role);

/// A failure when a block would contain itself once the plan is carried out.
CloneFailure checkCircles(const ClonePlan& plan);

/// Carries a plan out.
void execute(ClonePlan& plan, AcDbIdMapping& mapping);

} // namespace corma::host
