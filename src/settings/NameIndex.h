#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace corma {

/// Finds the places of names in a list. It keeps no names: whoever asks tells, by nameAt(place),
/// what the elements are called.
class NameIndex
{
public:
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    /// Forgets all.
    void clear();

    /// Takes in the next element of the list, before those that bear the same name.
    template<class NameAt> void add(std::string_view name, const NameAt& nameAt)
    {
        makeRoom();
        const std::uint32_t hash = hashOf(name);
        enter(slotOf(m_slots, hash, name, nameAt), hash);
    }

    /// Takes in the next element of the list unless an element has its name. False then.
    template<class NameAt> [[nodiscard]] bool addNew(std::string_view name, const NameAt& nameAt)
    {
        makeRoom();
        const std::uint32_t hash = hashOf(name);
        Slot& slot = slotOf(m_slots, hash, name, nameAt);
        if (slot.place != 0) {
            return false;
        }
        enter(slot, hash);
        return true;
    }

    /// The place of a name, the last one of several; kNowhere for none.
    template<class NameAt>
    [[nodiscard]] std::size_t find(std::string_view name, const NameAt& nameAt) const
    {
        if (m_slots.empty()) {
            return kNowhere;
        }
        return slotOf(m_slots, hashOf(name), name, nameAt).place - std::size_t {1};
    }

private:
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t place = 0; // and 1; 0 is free
    };

    // The slot of a name, or the free one that it would take.
    template<class Slots, class NameAt>
    static auto& slotOf(Slots& slots, std::uint32_t hash, std::string_view name,
                        const NameAt& nameAt)
    {
        std::size_t slot = hash & (slots.size() - 1);
        while (slots[slot].place != 0
               && !(slots[slot].hash == hash && nameAt(slots[slot].place - 1) == name)) {
            slot = (slot + 1) & (slots.size() - 1);
        }
        return slots[slot];
    }

    static std::uint32_t hashOf(std::string_view name);
    void makeRoom();

    void enter(Slot& slot, std::uint32_t hash)
    {
        slot = {hash, static_cast<std::uint32_t>(++m_size)};
    }

    std::vector<Slot> m_slots; // a power of two
    std::size_t m_size = 0;
};

} // namespace corma
