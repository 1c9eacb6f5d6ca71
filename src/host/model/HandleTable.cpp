#include "host/model/HandleTable.h"

#include <utility>

namespace corma::host {

namespace {

constexpr std::uint64_t kLeastBound = 0x10000;
constexpr std::uint64_t kMostGaps = 4; // positions for each record

// Handles that follow each other, as those of neighbours in a file do, keep together: they share a
// line of the processor's cache.
std::size_t farSlotOf(Handle handle, std::size_t mask)
{
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15ULL; // odd, with bits all over
    constexpr int kUpperBits = 32;
    constexpr int kTogetherBits = 3;
    constexpr std::uint64_t kTogetherMask = (1U << kTogetherBits) - 1;
    const auto number = static_cast<std::uint64_t>(handle);
    const std::uint64_t place = ((number >> kTogetherBits) * kSpread) >> kUpperBits;
    return static_cast<std::size_t>(place << kTogetherBits | (number & kTogetherMask)) & mask;
}

} // namespace

HandleTable::HandleTable()
{
    setBound(kLeastBound);
}

void HandleTable::reserve(std::size_t records)
{
    if (m_count == 0 && kMostGaps * records > m_bound) {
        setBound(kMostGaps * records);
    }
}

void HandleTable::setBound(std::uint64_t bound)
{
    m_rows.resize(static_cast<std::size_t>(bound / kRowSize) + 1);
    m_bound = std::uint64_t {m_rows.size()} * kRowSize;
}

bool HandleTable::enter(Handle handle, AcDbStub& stub)
{
    const auto number = static_cast<std::uint64_t>(handle);
    // A drawing that grows gets its next handles: they come near when they are few gaps away.
    if (number >= m_bound && number / (kMostGaps / 2) < m_count) {
        setBound(2 * number);
        std::vector<Slot> former;
        former.swap(m_far);
        m_count -= std::exchange(m_farCount, 0);
        for (const Slot& slot : former) {
            if (slot.stub != nullptr) {
                enter(slot.handle, *slot.stub);
            }
        }
    }
    const bool isNew = number < m_bound ? enterNear(number, stub) : enterFar(handle, stub);
    m_count += isNew ? 1 : 0;
    return isNew;
}

bool HandleTable::enterNear(std::uint64_t number, AcDbStub& stub)
{
    Row& row = m_rows[static_cast<std::size_t>(number / kRowSize)];
    if (row == nullptr) {
        row = std::make_unique<AcDbStub*[]>(kRowSize);
    }
    AcDbStub*& place = row[number % kRowSize];
    if (place != nullptr) {
        return false;
    }
    place = &stub;
    return true;
}

bool HandleTable::enterFar(Handle handle, AcDbStub& stub)
{
    if (2 * (m_farCount + 1) > m_far.size()) {
        growFar();
    }
    const std::size_t mask = m_far.size() - 1;
    std::size_t at = farSlotOf(handle, mask);
    while (m_far[at].stub != nullptr) {
        if (m_far[at].handle == handle) {
            return false;
        }
        at = (at + 1) & mask;
    }
    m_far[at] = {handle, &stub};
    ++m_farCount;
    return true;
}

void HandleTable::growFar()
{
    constexpr std::size_t kFewest = 1024;
    std::vector<Slot> former(m_far.empty() ? kFewest : 2 * m_far.size());
    former.swap(m_far);
    const std::size_t mask = m_far.size() - 1;
    for (const Slot& slot : former) {
        if (slot.stub != nullptr) {
            std::size_t at = farSlotOf(slot.handle, mask);
            while (m_far[at].stub != nullptr) {
                at = (at + 1) & mask;
            }
            m_far[at] = slot;
        }
    }
}

AcDbStub* HandleTable::findFar(Handle handle) const
{
    if (m_far.empty()) {
        return nullptr;
    }
    const std::size_t mask = m_far.size() - 1;
    for (std::size_t at = farSlotOf(handle, mask); m_far[at].stub != nullptr;
         at = (at + 1) & mask) {
        if (m_far[at].handle == handle) {
            return m_far[at].stub;
        }
    }
    return nullptr;
}

} // namespace corma::host
