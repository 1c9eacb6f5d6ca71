#pragma once

// Bytes looked at eight at a time. A text that is read this way needs 7 readable bytes behind it.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace corma {

inline constexpr std::uint64_t kOnes = 0x0101010101010101U;
inline constexpr std::uint64_t kHighBits = 0x80 * kOnes;

inline std::uint64_t loadWord(const char* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

inline void storeWord(char* bytes, std::uint64_t word)
{
    std::memcpy(bytes, &word, sizeof word);
}

/// The first `count` bytes of a word, 1 to 7.
inline std::uint64_t firstBytes(std::uint64_t word, std::size_t count)
{
    static_assert(std::endian::native == std::endian::little);
    return word & ((std::uint64_t {1} << (8 * count)) - 1);
}

/// A word with its ASCII capital letters made small.
inline std::uint64_t lowerWord(std::uint64_t word)
{
    const std::uint64_t ascii = word & ~kHighBits;
    const std::uint64_t fromA = ascii + kOnes * (0x80 - 'A');
    const std::uint64_t behindZ = ascii + kOnes * (0x80 - 'Z' - 1);
    return word | ((fromA & ~behindZ & ~word & kHighBits) >> 2U);
}

/// The high bits of the bytes below `limit`, which is at most 128. The lowest such bit is true; it
/// can make false ones above it.
inline std::uint64_t bytesBelow(std::uint64_t word, unsigned char limit)
{
    return (word - kOnes * limit) & ~word & kHighBits;
}

/// The first character below 32, or end.
inline const char* firstControl(const char* begin, const char* end)
{
    for (const char* at = begin; at < end; at += 8) {
        const std::uint64_t marks = bytesBelow(loadWord(at), 32);
        if (marks != 0) {
            const char* const found = at + std::countr_zero(marks) / 8;
            return found < end ? found : end;
        }
    }
    return end;
}

/// The place of a byte in a text, from a place on; npos when it is not there. For texts in which it
/// is near: a call of memchr() costs more than looking at a few words. Needs no bytes behind the
/// text.
inline std::size_t findNear(std::string_view text, char wanted, std::size_t from = 0)
{
    const std::uint64_t pattern = kOnes * static_cast<unsigned char>(wanted);
    std::size_t at = from;
    for (; at + sizeof pattern <= text.size(); at += sizeof pattern) {
        const std::uint64_t marks = bytesBelow(loadWord(text.data() + at) ^ pattern, 1);
        if (marks != 0) {
            return at + static_cast<std::size_t>(std::countr_zero(marks)) / 8;
        }
    }
    for (; at < text.size(); ++at) {
        if (text[at] == wanted) {
            return at;
        }
    }
    return std::string_view::npos;
}

} // namespace corma
