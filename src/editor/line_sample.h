#pragma once

#include <vector>

namespace corma {

/// A piece of a line, as distances from its beginning. A dot begins where it ends.
struct LinePiece
{
    double begin = 0.0;
    double end = 0.0;

    bool operator==(const LinePiece&) const = default;
};

/// The pieces of a linetype along a line of that length, such that it repeats some times. Dashes
/// are positive, gaps negative, dots 0, in any unit; without any the line is unbroken.
std::vector<LinePiece> linePieces(const std::vector<double>& dashes, double length);

} // namespace corma
