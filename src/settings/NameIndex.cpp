#include "settings/NameIndex.h"

#include <functional>

namespace corma {

namespace {

constexpr std::size_t kFewestSlots = 8;

} // namespace

void NameIndex::clear()
{
    m_slots.clear();
    m_size = 0;
}

std::uint32_t NameIndex::hashOf(std::string_view name)
{
    const std::size_t hash = std::hash<std::string_view>()(name);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}

void NameIndex::makeRoom()
{
    if ((m_size + 1) * 2 <= m_slots.size()) {
        return;
    }
    std::vector<Slot> former(m_slots.empty() ? kFewestSlots : m_slots.size() * 2);
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
