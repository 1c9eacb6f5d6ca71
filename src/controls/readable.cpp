#include "controls/readable.h"

#include <algorithm>
#include <cmath>

namespace corma {

namespace {

/// A part of a colour, 0 to 255, as a share of light.
double linear(int part)
{
    const double share = part / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.red()) + 0.7152 * linear(colour.green())
        + 0.0722 * linear(colour.blue());
}

constexpr double kStrayLight = 0.05; // what even a black screen gives off

/// The luminance that has the same contrast to black as to white: sqrt(1.05 * 0.05) - 0.05.
constexpr double kMiddle = 0.1791;

} // namespace

double contrast(const QColor& a, const QColor& b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + kStrayLight) / (darker + kStrayLight);
}

QColor readableOn(const QColor& colour, const QColor& background)
{
    if (!colour.isValid() || contrast(colour, background) >= kLeastContrast) {
        return colour;
    }
    const QColor own = colour.toHsl();
    const auto atLightness = [&own](int lightness) {
        return QColor::fromHsl(own.hslHue(), own.hslSaturation(), lightness, own.alpha()).toRgb();
    };
    // Halving: the colour at `poor` has too little contrast, that at `good` has enough.
    int poor = own.lightness();
    int good = luminance(background) > kMiddle ? 0 : 255;
    while (std::abs(good - poor) > 1) {
        const int between = (good + poor) / 2;
        (contrast(atLightness(between), background) >= kLeastContrast ? good : poor) = between;
    }
    return atLightness(good);
}

} // namespace corma
