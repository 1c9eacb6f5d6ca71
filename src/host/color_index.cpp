#include "host/color_index.h"

#include <array>
#include <cstddef>

namespace corma::host {

namespace {

constexpr std::array<Rgb, 10> kFirst = {{
    {0, 0, 0}, // by block, which is none
    {255, 0, 0},
    {255, 255, 0},
    {0, 255, 0},
    {0, 255, 255},
    {0, 0, 255},
    {255, 0, 255},
    {255, 255, 255},
    {128, 128, 128},
    {192, 192, 192},
}};
constexpr std::array<unsigned char, 6> kGreys = {51, 91, 132, 173, 214, 255};
constexpr int kFirstHue = 10;
constexpr int kFirstGrey = 250;
constexpr int kShades = 10; // of a hue, in pairs
constexpr std::array<int, kShades / 2> kLights = {255, 165, 127, 76, 38};
constexpr int kStepsOfSide = 4; // hues from one corner of the colour wheel to the next
constexpr int kSides = 6;

// How much of a primary colour is in a hue, in steps of a side: full for two sides around its own
// corner, then less, none for two sides.
int share(int hue, int cornerOfPrimary)
{
    constexpr int kWheel = kSides * kStepsOfSide;
    const int turned = (hue - cornerOfPrimary * kStepsOfSide + kWheel) % kWheel;
    const int distance = turned <= kWheel / 2 ? turned : kWheel - turned;
    if (distance <= kStepsOfSide) {
        return kStepsOfSide;
    }
    return distance < 2 * kStepsOfSide ? 2 * kStepsOfSide - distance : 0;
}

Rgb shadeOf(int hue, int shade)
{
    const int light = kLights[static_cast<std::size_t>(shade / 2)];
    const bool isPale = shade % 2 == 1;
    const auto part = [&](int cornerOfPrimary) {
        const int full = share(hue, cornerOfPrimary) * light; // in steps of a side
        const int mixed = isPale ? (full + kStepsOfSide * light) / 2 : full;
        return static_cast<unsigned char>(mixed / kStepsOfSide);
    };
    return {part(0), part(2), part(4)}; // red, green and blue stand at every second corner
}

} // namespace

std::optional<Rgb> colorOfIndex(int index)
{
    if (index <= kColorByBlock || index > kLastColor) {
        return std::nullopt;
    }
    if (index < kFirstHue) {
        return kFirst[static_cast<std::size_t>(index)];
    }
    if (index >= kFirstGrey) {
        const unsigned char grey = kGreys[static_cast<std::size_t>(index - kFirstGrey)];
        return Rgb {grey, grey, grey};
    }
    return shadeOf((index - kFirstHue) / kShades, (index - kFirstHue) % kShades);
}

} // namespace corma::host
