#include "foundation/HashIndex.h"

#include <algorithm>
#include <cstring>

namespace corma {

namespace {

constexpr std::size_t kFewestSlots = 8;

} // namespace

void HashIndex::clear()
{
    m_slots.clear();
    m_size = 0;
}

// Names are short, and one is hashed for each line of a file: eight bytes are taken at a time.
std::uint32_t HashIndex::hashOf(std::string_view name, std::uint64_t seed)
{
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = (seed + name.size()) * kFactor;
    while (!name.empty()) {
        std::uint64_t word = 0;
        const std::size_t count = std::min(name.size(), sizeof word);
        std::memcpy(&word, name.data(), count);
        hash = (hash ^ word) * kFactor;
        hash ^= hash >> 32U;
        name.remove_prefix(count);
    }
    return static_cast<std::uint32_t>(hash);
}

void HashIndex::makeRoom()
{
    if ((m_size + 1) * 4 <= m_slots.size() * 3) {
        return;
    }
    // In large steps, since each takes all names to other places.
    std::vector<Slot> former(m_slots.empty() ? kFewestSlots : m_slots.size() * 4);
    former.swap(m_slots);
    for (const Slot& entry : former) {
        if (entry.place != 0) {
            std::size_t slot = entry.hash & (m_slots.size() - 1);
            while (m_slots[slot].place != 0) {
                slot = (slot + 1) & (m_slots.size() - 1);
            }
            m_slots[slot] = entry;
        }
    }
}

} // namespace corma
