#pragma once

#include "foundation/byte_order_mark.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace corma {

constexpr bool isSurrogate(char32_t c)
{
    return c >= 0xD800 && c <= 0xDFFF;
}

/// The next code point of UTF-16 bytes at `at`, which moves behind it and must be below the size;
/// half of a pair comes as it is, and a single byte at the end as U+FFFD. The mark tells the order
/// of the bytes.
char32_t nextUtf16(std::string_view bytes, std::size_t& at, Mark mark);

/// Appends text in UTF-8 as UTF-16 bytes.
void appendUtf16(std::string& bytes, std::string_view utf8, Mark mark);

} // namespace corma
