#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corma::host::dwg {

/// Decompresses a page of R2004, R2010 and later into `out`. The number of bytes that came out of
/// it; nothing when the stream is damaged or `out` is too small. What stands in `out` behind them
/// may have changed.
std::optional<std::size_t> decompressPage(std::string_view stream, std::span<char> out);

inline constexpr std::size_t kLeastToCompress = 4; // fewer bytes have no compressed form

/// The compressed form of at least kLeastToCompress bytes.
std::string compressPage(std::string_view bytes);

/// decompressPage for R2007, whose streams are others and have no end mark.
std::optional<std::size_t> decompressR2007Page(std::string_view stream, std::span<char> out);

} // namespace corma::host::dwg
