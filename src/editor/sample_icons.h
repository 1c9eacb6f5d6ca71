#pragma once

// Icons that show how something is drawn. They follow the palette, the screen and the state of
// what they stand on.

#include "host/color_index.h"

#include <QIcon>

#include <optional>
#include <vector>

namespace corma {

inline constexpr QSize kColourSample {16, 16}; // device-independent pixels
inline constexpr QSize kLineSample {84, 16};

/// A framed square of the colour; one that is crossed out where there is none to show.
QIcon colourIcon(const std::optional<host::Rgb>& colour);

/// A line of the dashes of a linetype, in drawing units.
QIcon linetypeIcon(const std::vector<double>& dashes);

/// A line of that width in hundredths of a millimetre, as wide as on paper on a screen of usual
/// density, but never invisible. Empty for a negative one.
QIcon lineweightIcon(int weight);

} // namespace corma
