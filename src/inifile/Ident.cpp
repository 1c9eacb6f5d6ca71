#include "inifile/Ident.h"

#include "platform/text.h"

#include <algorithm>

namespace corma {

Ident Ident::parse(std::wstring_view text)
{
    const std::size_t close = text.starts_with(L'[') ? text.find(L']') : std::wstring_view::npos;
    if (close == std::wstring_view::npos) {
        return {{}, text};
    }
    const std::wstring_view name = text.substr(close + 1);
    return close == 1 ? Ident {{}, name} : Ident {text.substr(0, close + 1), name};
}

std::wstring_view Ident::chapter() const
{
    return prefix.empty() ? kHeadChapter : prefix.substr(1, prefix.size() - 2);
}

std::wstring_view Pieces::next()
{
    const std::size_t begin = std::min(m_rest.find_first_not_of(m_separators), m_rest.size());
    m_rest.remove_prefix(begin);
    const std::wstring_view piece = m_rest.substr(0, m_rest.find_first_of(m_separators));
    m_rest.remove_prefix(piece.size());
    return piece;
}

bool Pieces::atEnd() const
{
    return m_rest.find_first_not_of(m_separators) == std::wstring_view::npos;
}

FoldedText::FoldedText(std::wstring_view text)
{
    const bool fits = text.size() + kPadding <= m_inside.size();
    if (fits) {
        std::size_t count = 0;
        while (count < text.size() && static_cast<char32_t>(text[count]) < 0x80) {
            m_inside[count] = static_cast<char>(foldCase(text[count]));
            ++count;
        }
        if (count == text.size()) {
            std::fill_n(m_inside.begin() + count, kPadding, '\0');
            m_bytes = {m_inside.data(), count};
            return;
        }
    }
    for (const wchar_t c : text) {
        m_isAscii = m_isAscii && static_cast<char32_t>(c) < 0x80;
        appendUtf8(m_outside, static_cast<char32_t>(foldCase(c)));
    }
    const std::size_t size = m_outside.size();
    m_outside.append(kPadding, '\0');
    m_bytes = std::string_view(m_outside).substr(0, size);
}

} // namespace corma
