#include "inifile/Ident.h"

#include "inifile/words.h"
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

Pieces::Pieces(std::wstring_view text, std::wstring_view separators)
    : m_rest(text)
    , m_separators(separators)
{
    skipSeparators();
}

void Pieces::skipSeparators()
{
    while (!m_rest.empty() && m_separators.find(m_rest.front()) != std::wstring_view::npos) {
        m_rest.remove_prefix(1);
    }
}

std::wstring_view Pieces::next()
{
    std::size_t end = m_rest.size();
    for (const wchar_t separator : m_separators) {
        end = std::min(end, m_rest.substr(0, end).find(separator));
    }
    const std::wstring_view piece = m_rest.substr(0, end);
    m_rest.remove_prefix(end);
    skipSeparators();
    return piece;
}

namespace {

constexpr std::size_t kBlock = 8; // characters that are folded at once

// Folds ASCII characters to bytes; all bits that any of the characters has.
char32_t foldBlock(const wchar_t* text, char* folded)
{
    char32_t seen = 0;
    std::array<char, kBlock> bytes; // apart from the text for the compiler, which takes it at once
    for (std::size_t i = 0; i < kBlock; ++i) {
        seen |= static_cast<char32_t>(text[i]);
        bytes[i] = static_cast<char>(text[i]);
    }
    storeWord(folded, lowerWord(loadWord(bytes.data())));
    return seen;
}

} // namespace

FoldedText::FoldedText(std::wstring_view text)
{
    if (text.size() + kBlock <= m_inside.size() && foldAscii(text)) {
        return;
    }
    for (const wchar_t c : text) {
        m_isAscii = m_isAscii && static_cast<char32_t>(c) < 0x80;
        appendUtf8(m_outside, static_cast<char32_t>(foldCase(c)));
    }
    const std::size_t size = m_outside.size();
    m_outside.append(kPadding, '\0');
    m_bytes = std::string_view(m_outside).substr(0, size);
}

bool FoldedText::foldAscii(std::wstring_view text)
{
    char* out = m_inside.data();
    char32_t seen = 0;
    while (text.size() >= kBlock) {
        seen |= foldBlock(text.data(), out);
        text.remove_prefix(kBlock);
        out += kBlock;
    }
    // The rest of the last block are the zeros that may be read behind the text.
    std::array<wchar_t, kBlock> last {};
    std::copy(text.begin(), text.end(), last.begin());
    seen |= foldBlock(last.data(), out);
    m_bytes = {m_inside.data(), static_cast<std::size_t>(out - m_inside.data()) + text.size()};
    return seen < 0x80;
}

} // namespace corma
