#pragma once

#include <optional>

namespace corma::host {

struct Rgb
{
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;

    bool operator==(const Rgb&) const = default;
};

inline constexpr int kColorByBlock = 0;
inline constexpr int kColorByLayer = 256;
inline constexpr int kLastColor = 255; // the first is 1

/// What a colour index looks like: 1 to 7 are red, yellow, green, cyan, blue, magenta and white, 8
/// and 9 greys, then come 24 hues of 10 each, ever darker, the odd ones paler; in the end greys.
/// Nothing for any other number, by block and by layer included.
std::optional<Rgb> colorOfIndex(int index);

} // namespace corma::host
