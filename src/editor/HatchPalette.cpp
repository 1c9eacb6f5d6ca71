#include "editor/HatchPalette.h"

#include "platform/text.h"

#include <algorithm>

namespace corma {

HatchPalette::HatchPalette(std::vector<host::HatchPattern> patterns, std::wstring_view selected)
    : m_patterns(std::move(patterns))
{
    const auto found = std::find_if(m_patterns.begin(), m_patterns.end(), [&](const auto& each) {
        return equalIgnoringCase(each.name, selected);
    });
    if (found != m_patterns.end()) {
        m_selected = static_cast<std::size_t>(found - m_patterns.begin());
    }
}

void HatchPalette::select(Index index)
{
    m_selected = index && *index < m_patterns.size() ? index : std::nullopt;
}

std::wstring HatchPalette::name() const
{
    return m_selected ? m_patterns[*m_selected].name : std::wstring();
}

std::wstring HatchPalette::description() const
{
    return m_selected ? m_patterns[*m_selected].description : std::wstring();
}

HatchPalette::Index HatchPalette::find(std::wstring_view typed, std::size_t from) const
{
    const std::wstring wanted = lowerCase(typed);
    Index within;
    for (std::size_t i = 0; i < m_patterns.size() && !wanted.empty(); ++i) {
        const std::size_t index = (from + i) % m_patterns.size();
        const std::size_t place = lowerCase(m_patterns[index].name).find(wanted);
        if (place == 0) {
            return index;
        }
        if (place != std::wstring::npos && !within) {
            within = index;
        }
    }
    return within;
}

} // namespace corma
