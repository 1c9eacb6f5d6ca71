#include "host/dxf/dxf_text.h"

#include "host/model/Group.h"
#include "platform/text.h"

#include <array>
#include <optional>

namespace corma::host::dxf {

namespace {

constexpr std::wstring_view kUnicode = L"\\U+";
constexpr std::wstring_view kMultiByte = L"\\M+";
constexpr std::size_t kEscapeDigits = 4;
constexpr wchar_t kBackslash = L'\\';
constexpr wchar_t kCaret = L'^';
constexpr wchar_t kFirstControlLetter = L'@'; // stands for the character 0
constexpr wchar_t kLastControlLetter = L'_'; // 0x1F
constexpr char32_t kFirstPrintable = U' ';
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstSupplementary = 0x10000;

// What an escape stands for, and its length.
struct Escaped
{
    std::wstring text;
    std::size_t length = 0;
};

constexpr bool isHighSurrogate(char32_t c)
{
    return c >= 0xD800 && c <= 0xDBFF;
}

constexpr bool isLowSurrogate(char32_t c)
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

constexpr char32_t joined(char32_t high, char32_t low)
{
    return kFirstSupplementary + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

std::optional<unsigned> hexNumber(std::wstring_view digits)
{
    const auto number = digits.size() == kEscapeDigits ? handleFrom(digits) : std::nullopt;
    return number ? std::optional(static_cast<unsigned>(*number)) : std::nullopt;
}

std::optional<unsigned> unicodeUnit(std::wstring_view text)
{
    return text.starts_with(kUnicode) ? hexNumber(text.substr(kUnicode.size(), kEscapeDigits))
                                      : std::nullopt;
}

std::optional<Escaped> unicodeEscape(std::wstring_view text)
{
    constexpr std::size_t kLength = kUnicode.size() + kEscapeDigits;
    const auto unit = unicodeUnit(text);
    if (!unit) {
        return std::nullopt;
    }
    const auto second = isHighSurrogate(*unit) ? unicodeUnit(text.substr(kLength)) : std::nullopt;
    if (!second || !isLowSurrogate(*second)) {
        return Escaped {std::wstring(1, static_cast<wchar_t>(*unit)), kLength};
    }
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        return Escaped {{static_cast<wchar_t>(*unit), static_cast<wchar_t>(*second)}, 2 * kLength};
    }
    return Escaped {std::wstring(1, static_cast<wchar_t>(joined(*unit, *second))), 2 * kLength};
}

std::optional<Escaped> multiByteEscape(std::wstring_view text)
{
    constexpr std::size_t kLength = kMultiByte.size() + 1 + kEscapeDigits;
    if (!text.starts_with(kMultiByte) || text.size() < kLength || text[kMultiByte.size()] > L'~') {
        return std::nullopt;
    }
    const auto number = hexNumber(text.substr(kLength - kEscapeDigits, kEscapeDigits));
    const auto page
        = number ? CodePage::ofEscape(static_cast<char>(text[kMultiByte.size()])) : std::nullopt;
    if (!page) {
        return std::nullopt;
    }
    const std::array bytes = {static_cast<char>(*number >> 8U), static_cast<char>(*number & 0xFFU)};
    const std::wstring character = page->decode({bytes.data(), bytes.size()});
    const bool isOne = character.size() == 1 && character.front() != wchar_t {kReplacement};
    return isOne ? std::optional(Escaped {character, kLength}) : std::nullopt;
}

std::optional<Escaped> caretEscape(std::wstring_view text)
{
    constexpr std::size_t kLength = 2;
    if (text.size() < kLength || text[0] != kCaret) {
        return std::nullopt;
    }
    if (text[1] == L' ') {
        return Escaped {std::wstring(1, kCaret), kLength};
    }
    if (text[1] < kFirstControlLetter || text[1] > kLastControlLetter) {
        return std::nullopt;
    }
    const auto control = static_cast<wchar_t>(text[1] - kFirstControlLetter);
    return Escaped {std::wstring(1, control), kLength};
}

std::optional<Escaped> backslashEscape(std::wstring_view text)
{
    auto escaped = unicodeEscape(text);
    return escaped ? escaped : multiByteEscape(text);
}

std::wstring withoutEscapes(std::wstring_view text, Caret caret)
{
    std::wstring plain;
    plain.reserve(text.size());
    for (std::wstring_view left = text; !left.empty();) {
        std::optional<Escaped> escaped;
        if (left.front() == kCaret && caret == Caret::escapes) {
            escaped = caretEscape(left);
        } else if (left.front() == kBackslash) {
            escaped = backslashEscape(left);
        }
        if (escaped) {
            plain += escaped->text;
        } else {
            plain += left.front();
        }
        left.remove_prefix(escaped ? escaped->length : 1);
    }
    return plain;
}

// A character above the Basic Multilingual Plane is two of them where wchar_t has two bytes.
char32_t takeCharacter(std::wstring_view& left)
{
    auto c = static_cast<char32_t>(left.front());
    left.remove_prefix(1);
    if (sizeof(wchar_t) == sizeof(char16_t) && isHighSurrogate(c) && !left.empty()
        && isLowSurrogate(static_cast<char32_t>(left.front()))) {
        c = joined(c, static_cast<char32_t>(left.front()));
        left.remove_prefix(1);
    }
    return c > kGreatestCharacter ? kReplacement : c;
}

void appendUnicodeEscape(char32_t c, std::string& value)
{
    if (c >= kFirstSupplementary) {
        appendUnicodeEscape(0xD800 + ((c - kFirstSupplementary) >> 10U), value);
        c = 0xDC00 + ((c - kFirstSupplementary) & 0x3FFU);
    }
    constexpr std::string_view kHex = "0123456789ABCDEF";
    value += "\\U+";
    for (unsigned shift = 16; shift > 0;) {
        shift -= 4;
        value += kHex[(c >> shift) & 0xFU];
    }
}

// What ends a line or a value, or would be taken for an escape.
bool appendControl(char32_t c, Caret caret, std::string& value)
{
    if (caret == Caret::isItself) {
        if (c == 0) {
            appendUnicodeEscape(c, value);
        }
        return c == 0;
    }
    if (c != char32_t {kCaret} && c >= kFirstPrintable) {
        return false;
    }
    value += '^';
    value += c == char32_t {kCaret} ? ' ' : static_cast<char>(c + char32_t {kFirstControlLetter});
    return true;
}

void appendCharacter(char32_t c, const CodePage& page, Caret caret, std::string& value)
{
    if (appendControl(c, caret, value)) {
        return;
    }
    if (c < 0x80) {
        value += static_cast<char>(c);
    } else if (!page.encode(c, value)) {
        appendUnicodeEscape(c, value);
    }
}

} // namespace

std::wstring decodeText(std::string_view value, const CodePage& page, Caret caret)
{
    // Most texts are short and plain, so one look at each character does.
    unsigned bits = 0;
    bool hasCaret = false;
    bool hasBackslash = false;
    for (const char c : value) {
        bits |= static_cast<unsigned char>(c);
        hasCaret |= c == '^';
        hasBackslash |= c == kBackslash;
    }
    constexpr unsigned kFirstBeyondAscii = 0x80;
    std::wstring text
        = bits < kFirstBeyondAscii ? std::wstring(value.begin(), value.end()) : page.decode(value);
    const bool mayHaveEscapes = hasCaret
        || (hasBackslash
            && (value.find("\\U+") != std::string_view::npos
                || value.find("\\M+") != std::string_view::npos));
    return mayHaveEscapes ? withoutEscapes(text, caret) : text;
}

std::string encodeText(std::wstring_view text, const CodePage& page, Caret caret)
{
    std::string value;
    value.reserve(text.size());
    for (std::wstring_view left = text; !left.empty();) {
        // A text that reads like an escape must not be taken for one.
        const bool isMisleading = left.front() == kBackslash && backslashEscape(left);
        const char32_t c = takeCharacter(left);
        if (isMisleading) {
            appendUnicodeEscape(c, value);
        } else {
            appendCharacter(c, page, caret, value);
        }
    }
    return value;
}

} // namespace corma::host::dxf
