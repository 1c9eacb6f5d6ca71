#include "editor/line_sample.h"

#include <algorithm>
#include <cmath>

namespace corma {

std::vector<LinePiece> linePieces(const std::vector<double>& dashes, double length)
{
    constexpr double kRepetitions = 2.5;
    double period = 0.0;
    for (const double dash : dashes) {
        period += std::abs(dash);
    }
    const double scale = length / (kRepetitions * period);
    if (!std::isfinite(scale) || scale <= 0.0) {
        return {{0.0, length}}; // no pattern, or one that cannot be measured
    }
    const auto count = static_cast<std::size_t>(std::ceil(kRepetitions));
    std::vector<LinePiece> pieces;
    double at = 0.0;
    for (std::size_t i = 0; i < count * dashes.size() && at <= length; ++i) {
        const double dash = dashes[i % dashes.size()] * scale;
        if (dash >= 0.0) {
            pieces.push_back({at, std::min(at + dash, length)});
        }
        at += std::abs(dash);
    }
    return pieces;
}

} // namespace corma
