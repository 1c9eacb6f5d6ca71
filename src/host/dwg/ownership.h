#pragma once

#include "host/dwg/group_fields.h"
#include "host/model/Store.h"

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace corma::host::dwg {

/// True for a record that goes into the file.
bool isWritten(const AcDbStub& stub);

/// What records have by their place in a drawing, for those whose place may differ from that in
/// the file.
class Ownership
{
public:
    explicit Ownership(Store& store);

    /// The owner of a record that is new or no longer there has another list of what it owns.
    void touchOwnerOf(const AcDbStub& stub);

    void touch(const AcDbStub& owner) { m_touched.insert(&owner); }

    [[nodiscard]] bool isTouched(const AcDbStub& stub) const { return m_touched.contains(&stub); }

    [[nodiscard]] const std::unordered_set<const AcDbStub*>& touched() const { return m_touched; }

    /// The entities or sub-entities of an owner that go into the file, in order.
    std::vector<AcDbStub*> membersOf(const AcDbStub& owner);

    /// What an owner has around it; for an entity call setNeighbours(), too.
    Surroundings of(AcDbStub& stub);

    /// Notes who comes before and behind each member of an owner.
    void linkMembers(const AcDbStub& owner);

    /// The neighbours that were noted for an entity; none when it has none or was not noted.
    struct Neighbours
    {
        Handle previous = Handle::none;
        Handle next = Handle::none;
    };

    [[nodiscard]] const Neighbours* neighboursOf(const AcDbStub& stub) const;

    /// Notes that a reference, which is new or was changed, is one of a block.
    void noteReference(const AcDbStub& reference);

    /// Those that were noted of a block, by its record, in order.
    [[nodiscard]] std::vector<Handle> referencesOf(const AcDbStub& record) const;

private:
    void ownEntries(AcDbStub& table, TableKind kind, Surroundings& around);
    void ownBlock(Block& block, Surroundings& around);

    Store& m_store;
    std::unordered_set<const AcDbStub*> m_touched;
    std::unordered_map<const AcDbStub*, Neighbours> m_neighbours;
    std::unordered_map<const AcDbStub*, std::vector<Handle>> m_references; // by record of the block
};

} // namespace corma::host::dwg
