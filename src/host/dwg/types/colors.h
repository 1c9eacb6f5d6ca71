#pragma once

#include "host/dwg/group_fields.h"

#include <cstdint>
#include <optional>

namespace corma::host::dwg {

/// The codes under which groups have a color that is not the entity's own.
struct ColorCodes
{
    int index;
    int rgb;
    int name;
};

void colorGroups(FieldsToGroups& io, const ColorCodes& codes, const Color& color);
void colorGroups(FieldsFromGroups& io, const ColorCodes& codes, Color& color);

/// A number of the palette, or red, green and blue where they are given. A color that is the same
/// keeps its form.
void setColor(Color& color, int index, std::optional<std::uint32_t> rgb);

/// The number of the palette for what a color is from R2004 on; the nearest one for red, green and
/// blue.
int paletteIndexOf(std::uint32_t rgb);

/// The number of the palette of a color in a file of a version.
int paletteIndexIn(DrawingVersion version, const Color& color);

/// The opposite of paletteIndexOf(), for a color of the palette, by layer and by block.
std::uint32_t rgbOfPalette(int index);

/// True for a color that is red, green and blue.
bool isTrueColor(std::uint32_t rgb);

} // namespace corma::host::dwg
