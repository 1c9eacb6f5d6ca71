#include "text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace cfgctl {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kByteEscape = 0xDC00; // plus a byte of 0x80 or more

bool isEscapedByte(char32_t c)
{
    return c >= kByteEscape + 0x80 && c <= kByteEscape + 0xFF;
}

bool isScalar(char32_t c)
{
    return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

struct Decoded
{
    char32_t c;
    std::size_t length; // bytes
};

unsigned char byteAt(std::string_view bytes, std::size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

// The bytes that a lead byte announces; 1 for one that leads nothing.
std::size_t announcedLength(unsigned char lead)
{
    if (lead < 0xC0 || lead > 0xF7) {
        return 1;
    }
    if (lead < 0xE0) {
        return 2;
    }
    return lead < 0xF0 ? 3 : 4;
}

Decoded decodeFirst(std::string_view bytes)
{
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    const unsigned char lead = byteAt(bytes, 0);
    const Decoded asByte = {lead < 0x80 ? lead : kByteEscape + lead, 1};
    const std::size_t length = announcedLength(lead);
    if (length == 1) {
        return asByte;
    }
    char32_t c = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned char next = byteAt(bytes, i);
        if ((next & 0xC0U) != 0x80U) {
            return asByte;
        }
        c = (c << 6U) | (next & 0x3FU);
    }
    return c >= kSmallest[length] && isScalar(c) ? Decoded {c, length} : asByte;
}

void append(std::string& bytes, char32_t c)
{
    constexpr std::array<unsigned, 5> kLeadMark = {0, 0, 0xC0, 0xE0, 0xF0};
    if (c < 0x80) {
        bytes.push_back(static_cast<char>(c));
        return;
    }
    std::size_t length = 2;
    if (c >= 0x800) {
        length = c < 0x10000 ? 3 : 4;
    }
    const auto part = [c](std::size_t number) { return c >> (6 * number); };
    bytes.push_back(static_cast<char>(kLeadMark[length] | part(length - 1)));
    for (std::size_t i = length - 1; i > 0; --i) {
        bytes.push_back(static_cast<char>(0x80U | (part(i - 1) & 0x3FU)));
    }
}

} // namespace

std::wstring toWide(std::string_view bytes)
{
    std::wstring text;
    while (!bytes.empty()) {
        const Decoded first = decodeFirst(bytes);
        text.push_back(static_cast<wchar_t>(first.c));
        bytes.remove_prefix(first.length);
    }
    return text;
}

std::string toBytes(std::wstring_view text)
{
    std::string bytes;
    for (const wchar_t wide : text) {
        const auto c = static_cast<char32_t>(wide);
        if (isEscapedByte(c)) {
            bytes.push_back(static_cast<char>(c - kByteEscape));
        } else {
            append(bytes, isScalar(c) ? c : kReplacement);
        }
    }
    return bytes;
}

std::string quoted(std::wstring_view text)
{
    return '"' + toBytes(text) + '"';
}

std::string withoutControls(std::string text)
{
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

} // namespace cfgctl
