#pragma once

// Colours that can be read.

#include <QColor>

namespace corma {

/// How well two colours can be told apart by their lightness: 1 for the same up to 21 for black and
/// white, as the guidelines for accessible web pages define it.
double contrast(const QColor& a, const QColor& b);

/// The contrast that a row's own colour must have to its background.
inline constexpr double kLeastContrast = 3.0;

/// The colour, or where its contrast to the background is below kLeastContrast the nearest one of
/// the same hue that has it: darker on a light background, lighter on a dark one. An invalid colour
/// is given back as it is.
QColor readableOn(const QColor& colour, const QColor& background);

} // namespace corma
