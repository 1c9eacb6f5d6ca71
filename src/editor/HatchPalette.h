#pragma once

#include "host/hatch_patterns.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma {

/// The hatch patterns that a person chooses from, and the one that is selected, if any.
class HatchPalette
{
public:
    using Index = std::optional<std::size_t>;

    /// The pattern of a name, in any case of its letters, is selected.
    HatchPalette(std::vector<host::HatchPattern> patterns, std::wstring_view selected);

    [[nodiscard]] const std::vector<host::HatchPattern>& patterns() const { return m_patterns; }

    [[nodiscard]] Index selected() const { return m_selected; }

    /// Nothing, or a number that no pattern has, selects none.
    void select(Index index);

    [[nodiscard]] std::wstring name() const; ///< of the selected one; empty for none
    [[nodiscard]] std::wstring description() const; ///< the same

    /// The pattern that a person means who types: the first from `from` on, and then from the
    /// beginning, whose name begins with the text in any case of its letters, else the first whose
    /// name has it within. Nothing for an empty text.
    [[nodiscard]] Index find(std::wstring_view typed, std::size_t from) const;

private:
    std::vector<host::HatchPattern> m_patterns;
    Index m_selected;
};

} // namespace corma
