#pragma once

#include "host/hatch_patterns.h"

#include <vector>

namespace corma {

/// A line of a swatch, in a square whose corners are (0, 0) and (1, 1), y upwards. A dot has both
/// ends in one place.
struct SwatchLine
{
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;

    [[nodiscard]] bool isDot() const { return x1 == x2 && y1 == y2; }
};

inline constexpr std::size_t kMostSwatchLines = 20'000;

/// The side of a square, in drawing units, that shows some repetitions of a pattern.
double swatchSide(const host::HatchPattern& pattern);

/// The pattern turned by so many degrees to the left, and so many times as large.
host::HatchPattern turnedAndScaled(host::HatchPattern pattern, double degrees, double scale);

/// What of a pattern is in the square with that side, in drawing units, whose lower left corner is
/// the origin. What would be too fine to see is drawn coarser: not every line, or unbroken. What is
/// beyond kMostSwatchLines is left out.
std::vector<SwatchLine> swatchLines(const host::HatchPattern& pattern, double side);

} // namespace corma
