#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corma::host::dwg {

/// The checksum of a page and of its header from R2004 on, carried on from `start`.
std::uint32_t pageChecksum(std::uint32_t start, std::string_view bytes);

/// The checksum of the file header from R2004 on.
std::uint32_t headerChecksum(std::string_view bytes);

inline constexpr std::size_t kMaskSize = 0x100;

/// The bytes that the file header is mixed with, and that fill the rest of a page.
extern const std::array<unsigned char, kMaskSize> kMask;

} // namespace corma::host::dwg
