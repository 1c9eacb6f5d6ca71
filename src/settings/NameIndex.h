#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace corma {

/// Finds the place of a name in a list: the one that a walk from the first to the last element that
/// remembers its latest match would find. It keeps no names: whoever asks gives them. Files name
/// things in the same order as one another, so the place behind the last one found is tried first.
class NameIndex
{
public:
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    /// Forgets all.
    void clear();

    /// The number of elements that are in it.
    [[nodiscard]] std::size_t size() const { return m_size; }

    /// Takes in the next element of the list. Where others bear its name it goes before them.
    template<class NameAt> void add(std::string_view name, const NameAt& nameAt)
    {
        if ((m_size + 1) * 2 > m_slots.size()) {
            grow();
        }
        const std::uint32_t hash = hashOf(name);
        std::size_t slot = hash & (m_slots.size() - 1);
        while (m_slots[slot].place != 0
               && !(m_slots[slot].hash == hash && nameAt(m_slots[slot].place - 1) == name)) {
            slot = (slot + 1) & (m_slots.size() - 1);
        }
        m_slots[slot] = {hash, static_cast<std::uint32_t>(++m_size)};
    }

    /// The place of a name, or kNowhere. nameAt(place) is the name of an element.
    template<class NameAt>
    [[nodiscard]] std::size_t find(std::string_view name, const NameAt& nameAt)
    {
        if (m_size == 0) {
            return kNowhere;
        }
        const std::uint32_t hash = hashOf(name);
        for (std::size_t slot = hash & (m_slots.size() - 1); m_slots[slot].place != 0;
             slot = (slot + 1) & (m_slots.size() - 1)) {
            if (m_slots[slot].hash == hash && nameAt(m_slots[slot].place - 1) == name) {
                return m_slots[slot].place - 1;
            }
        }
        return kNowhere;
    }

private:
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t place = 0; // and 1; 0 is free
    };

    static std::uint32_t hashOf(std::string_view name);
    void grow();

    std::vector<Slot> m_slots; // a power of two
    std::size_t m_size = 0;
};

} // namespace corma
