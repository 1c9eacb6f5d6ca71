#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace corma {

/// Finds the places of elements in a list by their hashes. It keeps nothing of them: whoever asks
/// tells, by isAt(place), whether the element there is the one.
class HashIndex
{
public:
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    /// The hash of a name; with another seed another one.
    static std::uint32_t hashOf(std::string_view name, std::uint64_t seed = 0);

    /// Forgets all.
    void clear();

    /// Takes in the next element of the list, before those that are equal.
    template<class IsAt> void add(std::uint32_t hash, const IsAt& isAt)
    {
        makeRoom();
        enter(slotOf(m_slots, hash, isAt), hash);
    }

    /// Takes in the next element of the list unless there is an equal one. False then.
    template<class IsAt> [[nodiscard]] bool addNew(std::uint32_t hash, const IsAt& isAt)
    {
        makeRoom();
        Slot& slot = slotOf(m_slots, hash, isAt);
        if (slot.place != 0) {
            return false;
        }
        enter(slot, hash);
        return true;
    }

    /// The place of an element, the last one of several; kNowhere for none.
    template<class IsAt> [[nodiscard]] std::size_t find(std::uint32_t hash, const IsAt& isAt) const
    {
        if (m_slots.empty()) {
            return kNowhere;
        }
        return slotOf(m_slots, hash, isAt).place - std::size_t {1};
    }

private:
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t place = 0; // and 1; 0 is free
    };

    // The slot of an element, or the free one that it would take.
    template<class Slots, class IsAt>
    static auto& slotOf(Slots& slots, std::uint32_t hash, const IsAt& isAt)
    {
        std::size_t slot = hash & (slots.size() - 1);
        while (slots[slot].place != 0
               && !(slots[slot].hash == hash && isAt(slots[slot].place - 1))) {
            slot = (slot + 1) & (slots.size() - 1);
        }
        return slots[slot];
    }

    void makeRoom();

    void enter(Slot& slot, std::uint32_t hash)
    {
        slot = {hash, static_cast<std::uint32_t>(++m_size)};
    }

    std::vector<Slot> m_slots; // a power of two
    std::size_t m_size = 0;
};

} // namespace corma
