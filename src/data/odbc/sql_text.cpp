#include "data/odbc/sql_text.h"

#include "foundation/utf16.h"
#include "platform/text.h"

#include <algorithm>
#include <bit>

namespace corma::odbc {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "the driver manager is built for UTF-16");

namespace {

/// True for the first half of a pair, whose second half must follow.
bool isFirstHalf(SQLWCHAR unit)
{
    constexpr SQLWCHAR kFirst = 0xD800;
    constexpr SQLWCHAR kBehind = 0xDC00;
    return unit >= kFirst && unit < kBehind;
}

/// Bytes of a character in UTF-8 by its first one; 0 for one that is not the first.
std::size_t sizeByFirst(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0x80) {
        return 1;
    }
    if (byte < 0xC0) {
        return 0;
    }
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

} // namespace

Units toUnits(std::wstring_view text)
{
    const std::u16string units = toUtf16(text);
    Units terminated(units.begin(), units.end());
    terminated.push_back(0);
    return terminated;
}

std::wstring toText(std::span<const SQLWCHAR> units)
{
    if constexpr (sizeof(wchar_t) == sizeof(SQLWCHAR)) {
        return {units.begin(), units.end()};
    }
    constexpr Mark order
        = std::endian::native == std::endian::little ? Mark::utf16Little : Mark::utf16Big;
    const std::string_view bytes(reinterpret_cast<const char*>(units.data()), units.size_bytes());
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < bytes.size();) {
        text.push_back(static_cast<wchar_t>(nextUtf16(bytes, at, order)));
    }
    return text;
}

std::span<const SQLWCHAR> untilTerminator(std::span<const SQLWCHAR> units)
{
    const auto end = std::find(units.begin(), units.end(), SQLWCHAR {0});
    return units.first(static_cast<std::size_t>(end - units.begin()));
}

std::wstring toText(std::span<const char> bytes)
{
    const std::string_view all(bytes.data(), bytes.size());
    if (isUtf8(all)) {
        return fromUtf8(all);
    }
    std::wstring text;
    for (const char byte : all) {
        text.push_back(fromWindows1252(static_cast<unsigned char>(byte)));
    }
    return text;
}

std::span<const SQLWCHAR> withoutPart(std::span<const SQLWCHAR> units)
{
    const bool isCut = !units.empty() && isFirstHalf(units.back());
    return isCut ? units.first(units.size() - 1) : units;
}

std::span<const char> withoutPart(std::span<const char> bytes)
{
    constexpr std::size_t kMostPart = 3; // of a character of four bytes
    for (std::size_t part = 1; part <= std::min(kMostPart, bytes.size()); ++part) {
        if (const std::size_t size = sizeByFirst(bytes[bytes.size() - part]); size != 0) {
            return size > part ? bytes.first(bytes.size() - part) : bytes;
        }
    }
    return bytes;
}

} // namespace corma::odbc
