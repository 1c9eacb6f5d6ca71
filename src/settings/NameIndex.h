#pragma once

#include "foundation/HashIndex.h"

#include <cstddef>
#include <string_view>

namespace corma {

/// Finds the places of names in a list. It keeps no names: whoever asks tells, by nameAt(place),
/// what the elements are called.
class NameIndex
{
public:
    static constexpr std::size_t kNowhere = HashIndex::kNowhere;

    /// Forgets all.
    void clear() { m_index.clear(); }

    /// Takes in the next element of the list, before those that bear the same name.
    template<class NameAt> void add(std::string_view name, const NameAt& nameAt)
    {
        m_index.add(HashIndex::hashOf(name), isNamed(name, nameAt));
    }

    /// Takes in the next element of the list unless an element has its name. False then.
    template<class NameAt> [[nodiscard]] bool addNew(std::string_view name, const NameAt& nameAt)
    {
        return m_index.addNew(HashIndex::hashOf(name), isNamed(name, nameAt));
    }

    /// The place of a name, the last one of several; kNowhere for none.
    template<class NameAt>
    [[nodiscard]] std::size_t find(std::string_view name, const NameAt& nameAt) const
    {
        return m_index.find(HashIndex::hashOf(name), isNamed(name, nameAt));
    }

private:
    template<class NameAt> static auto isNamed(std::string_view name, const NameAt& nameAt)
    {
        return [name, &nameAt](std::size_t place) { return nameAt(place) == name; };
    }

    HashIndex m_index;
};

} // namespace corma
