#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corma::host::dwg {

/// Where the checksum of an object, of the header variables, of the classes and of a piece of the
/// object map begins.
inline constexpr std::uint16_t kChecksumStart = 0xC0C1;

inline constexpr std::size_t kChecksumSize = 2; // bytes

/// The checksum of 16 bits that stands behind most parts of a file, carried on from `start`.
std::uint16_t checksum(std::string_view bytes, std::uint16_t start = kChecksumStart);

} // namespace corma::host::dwg
