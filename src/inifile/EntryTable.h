#pragma once

// What a merge of files knows of them by name. Names compare exactly; they are views of the files.

#include "foundation/HashIndex.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace corma {

/// Gives each name a number, the same to the same: 1 for the first, as they come.
class NumberedNames
{
public:
    /// The number, and whether it is new.
    std::pair<std::size_t, bool> number(std::string_view name)
    {
        const auto isAt = [&](std::size_t place) { return m_names[place] == name; };
        const auto hash = HashIndex::hashOf(name);
        const bool isNew = m_index.addNew(hash, isAt);
        if (isNew) {
            m_names.push_back(name);
            return {m_names.size(), true};
        }
        return {m_index.find(hash, isAt) + 1, false};
    }

private:
    std::vector<std::string_view> m_names;
    HashIndex m_index;
};

/// Keeps something of each entry of a file whose chapters are numbered.
template<class Kept> class EntryTable
{
public:
    /// What is kept of an entry, and whether it is new: then it is `kept`.
    std::pair<Kept*, bool> add(std::size_t chapter, std::string_view ident, Kept kept)
    {
        const auto hash = HashIndex::hashOf(ident, chapter);
        const bool isNew = m_index.addNew(hash, isEntry(chapter, ident));
        if (isNew) {
            m_entries.push_back({chapter, ident, kept});
            return {&m_entries.back().kept, true};
        }
        return {&m_entries[m_index.find(hash, isEntry(chapter, ident))].kept, false};
    }

    /// Null for an entry that is not there.
    [[nodiscard]] const Kept* find(std::size_t chapter, std::string_view ident) const
    {
        const std::size_t place
            = m_index.find(HashIndex::hashOf(ident, chapter), isEntry(chapter, ident));
        return place == HashIndex::kNowhere ? nullptr : &m_entries[place].kept;
    }

private:
    struct Entry
    {
        std::size_t chapter;
        std::string_view ident;
        Kept kept;
    };

    [[nodiscard]] auto isEntry(std::size_t chapter, std::string_view ident) const
    {
        return [this, chapter, ident](std::size_t place) {
            const Entry& entry = m_entries[place];
            return entry.chapter == chapter && entry.ident == ident;
        };
    }

    std::vector<Entry> m_entries;
    HashIndex m_index;
};

} // namespace corma
