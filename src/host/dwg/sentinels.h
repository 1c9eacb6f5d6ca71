#pragma once

#include <cstddef>
#include <string_view>

namespace corma::host::dwg {

inline constexpr std::size_t kSentinelSize = 16;

// Bytes of the number behind a first sentinel: how much follows up to the last one.
inline constexpr std::size_t kSizeSize = 4;

// The bytes that stand ahead of the parts of a file and behind them.
inline constexpr std::string_view
    kHeadEnd("\x95\xA0\x4E\x28\x99\x82\x1A\xE5\x5E\x41\xE0\x5F\x9D\x3A\x4D\x00", kSentinelSize);
inline constexpr std::string_view
    kVariablesBegin("\xCF\x7B\x1F\x23\xFD\xDE\x38\xA9\x5F\x7C\x68\xB8\x4E\x6D\x33\x5F",
                    kSentinelSize);
inline constexpr std::string_view
    kVariablesEnd("\x30\x84\xE0\xDC\x02\x21\xC7\x56\xA0\x83\x97\x47\xB1\x92\xCC\xA0",
                  kSentinelSize);
inline constexpr std::string_view
    kClassesBegin("\x8D\xA1\xC4\xB8\xC4\xA9\xF8\xC5\xC0\xDC\xF4\x5F\xE7\xCF\xB6\x8A",
                  kSentinelSize);
inline constexpr std::string_view
    kClassesEnd("\x72\x5E\x3B\x47\x3B\x56\x07\x3A\x3F\x23\x0B\xA0\x18\x30\x49\x75", kSentinelSize);
inline constexpr std::string_view
    kPictureBegin("\x1F\x25\x6D\x07\xD4\x36\x28\x28\x9D\x57\xCA\x3F\x9D\x44\x10\x2B",
                  kSentinelSize);
inline constexpr std::string_view
    kPictureEnd("\xE0\xDA\x92\xF8\x2B\xC9\xD7\xD7\x62\xA8\x35\xC0\x62\xBB\xEF\xD4", kSentinelSize);
inline constexpr std::string_view
    kSecondHeadBegin("\xD4\x7B\x21\xCE\x28\x93\x9F\xBF\x53\x24\x40\x09\x12\x3C\xAA\x01",
                     kSentinelSize);
inline constexpr std::string_view
    kSecondHeadEnd("\x2B\x84\xDE\x31\xD7\x6C\x60\x40\xAC\xDB\xBF\xF6\xED\xC3\x55\xFE",
                   kSentinelSize);

} // namespace corma::host::dwg
