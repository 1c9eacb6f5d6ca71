#pragma once

#include "host/color_index.h"
#include "host/model/DrawingFormat.h"
#include "host/model/Group.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corma::host::dwg {

/// A text, with the bytes that it has in its file for as long as it is unchanged: some programs
/// write a zero behind the last character, or characters as escapes.
struct Text
{
    std::wstring value;
    std::string raw; // from R2007 on UTF-16, before it in the code page of the drawing
    bool isFromFile = false; // raw is what gets written

    void set(std::wstring_view text)
    {
        value = text;
        raw.clear();
        isFromFile = false;
    }
};

/// What a record says of another one that it names.
enum class Bond : std::uint8_t
{
    none = 0, // a plain handle
    softOwner = 2,
    hardOwner = 3,
    softPointer = 4,
    hardPointer = 5
};

/// A handle as it stands in a record: as it is, or as the distance from that of the record itself.
struct Ref
{
    Handle target = Handle::none;

    // As the file has it.
    bool isFromFile = false;
    std::uint8_t code = 0; // a Bond, or 6, 8, 10 and 12 for a distance
    std::uint8_t size = 0; // bytes of the number
    std::uint64_t number = 0;

    Bond bond = Bond::none; // what a new one means, where its place does not say it

    void set(Handle handle)
    {
        if (target != handle) {
            *this = {};
            target = handle;
        }
    }
};

/// A color: a number of the palette or, from R2004 on, red, green and blue or one from a book.
struct Color
{
    static constexpr std::uint32_t kRgbMask = 0xFFFFFF;

    static constexpr std::uint16_t kHasRgb = 0x8000; // of the flags
    static constexpr std::uint16_t kHasBookColor = 0x4000;
    static constexpr std::uint16_t kHasTransparency = 0x2000;

    std::int16_t index = kColorByLayer;
    std::uint16_t flags = 0; // of an entity from R2004 on: what it has
    std::uint32_t rgb = 0; // with the way it is meant in the upper byte
    std::uint32_t transparency = 0;
    std::uint8_t names = 0; // of others from R2004 on; bit 0: a name follows, bit 1: a book's
    Text name;
    Text book;
    Ref bookColor; // of an entity: the record of the color, among the handles

    /// A color from a book has its red, green and blue in its own record.
    [[nodiscard]] bool hasRgb() const { return (flags & (kHasRgb | kHasBookColor)) == kHasRgb; }
};

/// A point on a plane.
struct Point2
{
    double x = 0.0;
    double y = 0.0;

    bool operator==(const Point2&) const = default;
};

} // namespace corma::host::dwg
