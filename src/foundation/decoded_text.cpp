#include "foundation/decoded_text.h"

#include "foundation/messages.h"
#include "foundation/utf16.h"
#include "platform/text.h"

#include <algorithm>

namespace corma {

namespace {

constexpr const wchar_t* kNotDecoded = L"line %d is no %s, as its byte-order mark says";
constexpr const wchar_t* kNotInWindows1252
    = L"line %d has a character that Windows-1252, the encoding of the file, does not have";
constexpr const wchar_t* kSeenAsMark
    = L"the file would then begin with what is taken for a byte-order mark";
constexpr const wchar_t* kNotSeenAsWindows1252
    = L"the file, which is in Windows-1252, would then be taken for UTF-8";

int lineBehind(std::string_view text)
{
    return static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
}

// The bytes up to the line that is broken.
std::string_view wholeLinesOf(std::string_view bytes)
{
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
        if (!isUtf8(bytes.substr(at, end - at))) {
            break;
        }
        at = end;
    }
    return bytes.substr(0, at);
}

// The bytes of a text that a mark could be made of.
std::string beginningOf(std::span<const std::string_view> pieces)
{
    constexpr std::size_t kLongestMark = 3;
    std::string beginning;
    for (const std::string_view piece : pieces) {
        beginning += piece.substr(0, kLongestMark);
        if (beginning.size() >= kLongestMark) {
            break;
        }
    }
    return beginning;
}

// Characters at the top of a file without a mark must not make one.
std::wstring defectOfBeginning(std::string_view bytes)
{
    return markOf(bytes) == Mark::none ? L"" : kSeenAsMark;
}

// What is wrong with pieces that the encoding cannot hold; else empty.
std::wstring appendWindows1252(std::string& bytes, std::span<const std::string_view> pieces)
{
    for (const std::string_view piece : pieces) {
        for (std::size_t at = 0; at < piece.size();) {
            const auto byte = toWindows1252(static_cast<wchar_t>(nextUtf8(piece, at)));
            if (!byte) {
                return formatted(kNotInWindows1252, lineBehind(bytes));
            }
            bytes.push_back(static_cast<char>(*byte));
        }
    }
    // Nothing but its other bytes tells that a file is in Windows-1252.
    return !isAllAscii(bytes) && isUtf8(bytes) ? kNotSeenAsWindows1252 : L"";
}

} // namespace

DecodedText::DecodedText(std::string_view content)
    : m_mark(markOf(content))
    , m_text(content.substr(bytesOf(m_mark).size()))
{
    if (m_mark == Mark::utf16Little || m_mark == Mark::utf16Big) {
        decodeUtf16(m_text);
    } else if (!isUtf8(m_text)) {
        if (m_mark == Mark::utf8) {
            m_defect = formatted(kNotDecoded, lineBehind(wholeLinesOf(m_text)), L"UTF-8");
        } else {
            decodeWindows1252(m_text);
        }
    }
}

void DecodedText::decodeUtf16(std::string_view bytes)
{
    m_form = Form::utf16;
    m_converted.reserve(bytes.size());
    bool isWhole = true;
    for (std::size_t at = 0; isWhole && at < bytes.size();) {
        const bool isUnit = at + 1 < bytes.size();
        const char32_t c = nextUtf16(bytes, at, m_mark);
        isWhole = isUnit && !isSurrogate(c);
        if (isWhole) {
            appendUtf8(m_converted, c);
        }
    }
    m_text = m_converted;
    if (!isWhole) {
        m_defect = formatted(kNotDecoded, lineBehind(m_converted), L"UTF-16");
    }
}

void DecodedText::decodeWindows1252(std::string_view bytes)
{
    m_form = Form::windows1252;
    m_converted.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const wchar_t c = fromWindows1252(static_cast<unsigned char>(byte));
        appendUtf8(m_converted, static_cast<char32_t>(c));
    }
    m_text = m_converted;
}

DecodedText::Encoded DecodedText::encoded(std::span<const std::string_view> pieces) const
{
    Encoded result;
    switch (m_form) {
    case Form::utf8:
        result.isAsGiven = true;
        result.defect = m_mark == Mark::none ? defectOfBeginning(beginningOf(pieces)) : L"";
        break;
    case Form::utf16:
        result.bytes = bytesOf(m_mark);
        for (const std::string_view piece : pieces) {
            appendUtf16(result.bytes, piece, m_mark);
        }
        break;
    case Form::windows1252:
        result.defect = appendWindows1252(result.bytes, pieces);
        if (result.defect.empty()) {
            result.defect = defectOfBeginning(result.bytes);
        }
        break;
    }
    return result;
}

std::string_view lineEndOf(std::string_view text)
{
    const std::size_t feed = text.find('\n');
    const bool hasReturn = feed != std::string_view::npos && feed > 0 && text[feed - 1] == '\r';
    return hasReturn ? "\r\n" : "\n";
}

std::optional<std::string> toStrictUtf8(std::wstring_view text)
{
    constexpr wchar_t kReplacement = 0xFFFD;
    std::string bytes = toUtf8(text);
    std::ptrdiff_t replaced = 0;
    constexpr std::string_view kReplacementBytes = "\xEF\xBF\xBD";
    for (std::size_t at = bytes.find(kReplacementBytes); at != std::string::npos;
         at = bytes.find(kReplacementBytes, at + 1)) {
        ++replaced;
    }
    if (replaced != std::count(text.begin(), text.end(), kReplacement)) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace corma
