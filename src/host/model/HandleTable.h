#pragma once

#include "host/model/Group.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class AcDbStub;

namespace corma::host {

/// The records of a drawing by their handles. Handles are mostly given one after the other, so up
/// to a bound that grows with the number of records they are positions in rows: neighbours in the
/// file are neighbours in memory, and a row that none is in does not exist. Those beyond the bound
/// stand in a table of hashes. Memory is a small multiple of the records, whatever their handles.
class HandleTable
{
public:
    HandleTable();

    /// For a number of records that come; none may be there yet.
    void reserve(std::size_t records);

    /// Null when no record has it.
    [[nodiscard]] AcDbStub* find(Handle handle) const
    {
        const auto number = static_cast<std::uint64_t>(handle);
        if (number >= m_bound) {
            return findFar(handle);
        }
        const Row& row = m_rows[static_cast<std::size_t>(number / kRowSize)];
        return row == nullptr ? nullptr : row[number % kRowSize];
    }

    /// False when another record has the handle already.
    bool enter(Handle handle, AcDbStub& stub);

private:
    static constexpr std::size_t kRowSize = 1024;

    using Row = std::unique_ptr<AcDbStub*[]>;

    // Open addressing; at most half of the slots are taken.
    struct Slot
    {
        Handle handle = Handle::none;
        AcDbStub* stub = nullptr;
    };

    [[nodiscard]] AcDbStub* findFar(Handle handle) const;
    bool enterNear(std::uint64_t number, AcDbStub& stub);
    bool enterFar(Handle handle, AcDbStub& stub);
    void setBound(std::uint64_t bound);
    void growFar();

    std::uint64_t m_bound = 0; // a multiple of kRowSize
    std::vector<Row> m_rows; // up to the bound; null where there is none
    std::vector<Slot> m_far;
    std::size_t m_farCount = 0;
    std::size_t m_count = 0;
};

} // namespace corma::host
