#include "host/dwg/types/colors.h"

#include "host/color_index.h"

#include <limits>
#include <string>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

// The upper byte says what the color is.
constexpr std::uint32_t kKindByLayer = 0xC0;
constexpr std::uint32_t kKindByBlock = 0xC1;
constexpr std::uint32_t kKindTrue = 0xC2;
constexpr std::uint32_t kKindPalette = 0xC3;
constexpr unsigned kKindShift = 24;
constexpr std::uint32_t kIndexMask = 0xFF;

constexpr std::uint8_t kHasName = 1;
constexpr std::uint8_t kHasBook = 2;

int nearestIndex(std::uint32_t rgb)
{
    constexpr unsigned kByte = 8;
    const auto square = [](int difference) { return difference * difference; };
    int nearest = 1;
    int least = std::numeric_limits<int>::max();
    for (int index = 1; index <= kLastColor; ++index) {
        const Rgb color = colorOfIndex(index).value_or(Rgb {});
        const int distance = square(color.red - static_cast<int>(rgb >> (2 * kByte) & kIndexMask))
            + square(color.green - static_cast<int>(rgb >> kByte & kIndexMask))
            + square(color.blue - static_cast<int>(rgb & kIndexMask));
        if (distance < least) {
            least = distance;
            nearest = index;
        }
    }
    return nearest;
}

// The name in groups, of a color that has one.
std::wstring nameOf(const Color& color)
{
    return (color.names & kHasBook) != 0 ? color.book.value + L"$" + color.name.value
                                         : color.name.value;
}

void nameFrom(FieldsFromGroups& io, int nameCode, Color& color)
{
    const bool isThere = io.groups().find(nameCode, io.range()).has_value();
    const std::wstring_view whole = io.groups().text(nameCode, io.range());
    const bool hasName = (color.names & kHasName) != 0;
    if (isThere == hasName && (!isThere || whole == nameOf(color))) {
        return; // a book without a name has no group
    }
    const std::size_t bar = whole.find(L'$'); // between the book and the color
    const bool hasBook = bar != std::wstring_view::npos;
    const std::wstring_view name = hasBook ? whole.substr(bar + 1) : whole;
    FieldsFromGroups::setText(color.name, name);
    FieldsFromGroups::setText(color.book, hasBook ? whole.substr(0, bar) : std::wstring_view {});
    color.names
        = static_cast<std::uint8_t>((name.empty() ? 0 : kHasName) | (hasBook ? kHasBook : 0));
}

} // namespace

bool isTrueColor(std::uint32_t rgb)
{
    return rgb >> kKindShift == kKindTrue;
}

int paletteIndexOf(std::uint32_t rgb)
{
    switch (rgb >> kKindShift) {
    case kKindByLayer:
        return kColorByLayer;
    case kKindByBlock:
        return kColorByBlock;
    case kKindTrue:
        return nearestIndex(rgb);
    default:
        return static_cast<int>(rgb & kIndexMask);
    }
}

int paletteIndexIn(DrawingVersion version, const Color& color)
{
    return version >= r2004 ? paletteIndexOf(color.rgb) : color.index;
}

std::uint32_t rgbOfPalette(int index)
{
    if (index == kColorByLayer) {
        return kKindByLayer << kKindShift;
    }
    if (index == kColorByBlock) {
        return kKindByBlock << kKindShift;
    }
    return kKindPalette << kKindShift | (static_cast<std::uint32_t>(index) & kIndexMask);
}

void setColor(Color& color, int index, std::optional<std::uint32_t> rgb)
{
    const std::uint32_t whole
        = rgb ? (*rgb & Color::kRgbMask) | kKindTrue << kKindShift : rgbOfPalette(index);
    const bool isSame = whole == color.rgb
        || (!rgb && !isTrueColor(color.rgb) && paletteIndexOf(color.rgb) == index);
    if (!isSame) {
        color.rgb = whole;
        color.index = 0;
    }
}

void colorGroups(FieldsToGroups& io, const ColorCodes& codes, const Color& color)
{
    if (!io.since(r2004)) {
        io.integer(codes.index, color.index);
        return;
    }
    io.integer(codes.index, paletteIndexOf(color.rgb));
    if (isTrueColor(color.rgb)) {
        io.integer(codes.rgb, color.rgb & Color::kRgbMask);
    }
    if ((color.names & kHasName) != 0) {
        io.groups().add(Group(codes.name, GroupValue(nameOf(color))));
    }
}

void colorGroups(FieldsFromGroups& io, const ColorCodes& codes, Color& color)
{
    int index = kColorByLayer;
    io.integer(codes.index, index, kColorByLayer);
    if (!io.since(r2004)) {
        color.index = static_cast<std::int16_t>(index);
        return;
    }
    std::optional<std::uint32_t> rgb;
    if (io.groups().find(codes.rgb, io.range())) {
        io.integer(codes.rgb, rgb.emplace());
    }
    setColor(color, index, rgb);
    nameFrom(io, codes.name, color);
}

} // namespace corma::host::dwg
