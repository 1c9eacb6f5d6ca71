#include "platform/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace corma {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// What Windows-1252 has at 0x80 to 0x9F; the rest of the code page is Latin-1.
constexpr std::array<char16_t, 32> kWindows1252 = {
    // clang-format off
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
    // clang-format on
};

bool isAscii(wchar_t c)
{
    return static_cast<char32_t>(c) < 0x80;
}

bool isScalar(char32_t c)
{
    return c <= kGreatestCharacter && (c < 0xD800 || c > 0xDFFF);
}

bool isContinuation(std::string_view bytes, std::size_t at)
{
    return at < bytes.size() && (static_cast<unsigned char>(bytes[at]) & 0xC0U) == 0x80U;
}

// The bytes of the sequence that begins with this lead byte, 0 for a byte that leads nothing.
std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

struct Decoded
{
    char32_t c;
    std::size_t length; // 0: the bytes are no UTF-8
};

Decoded decodeOne(std::string_view bytes, std::size_t at)
{
    const auto lead = static_cast<unsigned char>(bytes[at]);
    const std::size_t length = sequenceLength(lead);
    if (length < 2) {
        return {lead, length};
    }
    auto c = static_cast<char32_t>(lead & (0xFFU >> (length + 1)));
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(bytes, at + i)) {
            return {kReplacement, 0};
        }
        c = (c << 6U) | (static_cast<unsigned char>(bytes[at + i]) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    const bool overlong = c < kSmallest[length];
    return overlong || !isScalar(c) ? Decoded {kReplacement, 0} : Decoded {c, length};
}

constexpr std::uint64_t kHighBits = 0x8080808080808080U;

std::uint64_t wordAt(std::string_view bytes, std::size_t at)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data() + at, sizeof word);
    return word;
}

// Large steps without a branch within: most text is ASCII for long stretches.
std::size_t skipAscii(std::string_view bytes, std::size_t at)
{
    static_assert(std::endian::native == std::endian::little);
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    constexpr std::size_t kStep = 4 * kWord;
    while (at + kStep <= bytes.size()
           && ((wordAt(bytes, at) | wordAt(bytes, at + kWord) | wordAt(bytes, at + 2 * kWord)
                | wordAt(bytes, at + 3 * kWord))
               & kHighBits)
               == 0) {
        at += kStep;
    }
    for (; at + kWord <= bytes.size(); at += kWord) {
        if (const std::uint64_t high = wordAt(bytes, at) & kHighBits) {
            return at + static_cast<std::size_t>(std::countr_zero(high)) / 8;
        }
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) {
        ++at;
    }
    return at;
}

} // namespace

wchar_t foldCase(wchar_t c)
{
    if (isAscii(c)) {
        return c >= L'A' && c <= L'Z' ? c + (L'a' - L'A') : c;
    }
    const auto folded
        = static_cast<wchar_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
    return isAscii(folded) ? c : folded;
}

wchar_t upperCase(wchar_t c)
{
    return static_cast<wchar_t>(u_toupper(static_cast<UChar32>(c)));
}

std::wstring upperCase(std::wstring_view text)
{
    std::wstring upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](wchar_t c) { return upperCase(c); });
    return upper;
}

std::wstring lowerCase(std::wstring_view text)
{
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](wchar_t c) {
        return static_cast<wchar_t>(u_tolower(static_cast<UChar32>(c)));
    });
    return lower;
}

bool equalIgnoringCase(std::wstring_view a, std::wstring_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return x == y || foldCase(x) == foldCase(y); });
}

char32_t nextUtf8(std::string_view bytes, std::size_t& at)
{
    const Decoded next = decodeOne(bytes, at);
    at += next.length == 0 ? 1 : next.length;
    return next.length == 0 ? kReplacement : next.c;
}

void appendUtf8(std::string& bytes, char32_t c)
{
    if (!isScalar(c)) {
        c = kReplacement;
    }
    const auto put = [&](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    const auto putTail = [&](unsigned shift) { put(0x80U | ((c >> shift) & 0x3FU)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0U | (c >> 6U));
        putTail(0);
    } else if (c < 0x10000) {
        put(0xE0U | (c >> 12U));
        putTail(6);
        putTail(0);
    } else {
        put(0xF0U | (c >> 18U));
        putTail(12);
        putTail(6);
        putTail(0);
    }
}

std::wstring fromUtf8(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        text.push_back(static_cast<wchar_t>(nextUtf8(bytes, at)));
    }
    return text;
}

std::string toUtf8(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t c : text) {
        appendUtf8(bytes, static_cast<char32_t>(c));
    }
    return bytes;
}

bool isAllAscii(std::string_view bytes)
{
    unsigned char seen = 0;
    for (const char c : bytes) {
        seen |= static_cast<unsigned char>(c);
    }
    return seen < 0x80;
}

bool isUtf8(std::string_view bytes)
{
    for (std::size_t at = skipAscii(bytes, 0); at < bytes.size(); at = skipAscii(bytes, at)) {
        const std::size_t length = decodeOne(bytes, at).length;
        if (length == 0) {
            return false;
        }
        at += length;
    }
    return true;
}

wchar_t fromWindows1252(unsigned char byte)
{
    return byte >= 0x80 && byte <= 0x9F ? static_cast<wchar_t>(kWindows1252[byte - 0x80U])
                                        : static_cast<wchar_t>(byte);
}

std::optional<unsigned char> toWindows1252(wchar_t c)
{
    const auto code = static_cast<char32_t>(c);
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) {
        return static_cast<unsigned char>(code);
    }
    const auto* found = std::find(kWindows1252.begin(), kWindows1252.end(), code);
    if (found == kWindows1252.end()) {
        return std::nullopt;
    }
    return static_cast<unsigned char>(0x80 + (found - kWindows1252.begin()));
}

std::optional<std::string> toWindows1252(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t c : text) {
        const auto byte = toWindows1252(c);
        if (!byte) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<char>(*byte));
    }
    return bytes;
}

std::u16string toUtf16(std::wstring_view text)
{
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t wide : text) {
        const auto c = static_cast<char32_t>(wide);
        if (c < 0x10000) {
            units.push_back(static_cast<char16_t>(c));
        } else {
            units.push_back(U16_LEAD(c));
            units.push_back(U16_TRAIL(c));
        }
    }
    return units;
}

} // namespace corma
