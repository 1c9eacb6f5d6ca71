#include "editor/NameChoice.h"

#include "platform/text.h"

#include <algorithm>

namespace corma {

NameChoice::Index NameChoice::find(std::wstring_view name) const
{
    const auto found = std::find_if(m_names.begin(), m_names.end(), [&](const auto& each) {
        return equalIgnoringCase(each, name);
    });
    return found == m_names.end() ? Index() : Index(found - m_names.begin());
}

void NameChoice::take(const std::wstring& name)
{
    m_chosen = find(name);
    m_isTyped = !m_chosen;
    m_typed = m_isTyped ? name : std::wstring();
}

void NameChoice::choose(Index index)
{
    m_chosen = index && *index < m_names.size() ? index : Index();
}

void NameChoice::fromList()
{
    m_isTyped = false;
    if (!m_chosen && canChoose()) {
        m_chosen = 0;
    }
}

void NameChoice::fromField()
{
    if (m_typed.empty()) {
        m_typed = name();
    }
    m_isTyped = true;
}

std::wstring NameChoice::name() const
{
    if (m_isTyped) {
        return m_typed;
    }
    return m_chosen ? m_names[*m_chosen] : std::wstring();
}

} // namespace corma
