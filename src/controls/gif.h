#pragma once

// The structure of a GIF file: which images it has, where and for how long each is shown. What is
// in an image is left to a decoder.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma {

/// One image of a GIF file, in pixels of its screen; it may reach beyond that.
struct GifFrame
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int delay = -1; // 1/100 s; -1 without a control extension
    int disposal = 0; // 2: back to the background, 3: back to what was there; else it stays
    std::string_view control; // its control extension, or empty
    std::string_view image; // its block: descriptor, colours, data
};

struct GifColour
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const GifColour&) const = default;
};

/// A GIF file taken apart. It refers to the bytes it was made of, which must outlive it.
struct GifFile
{
    int width = 0; // of the screen, in pixels
    int height = 0;
    std::optional<GifColour> background; // none without a global table that has the colour
    std::string_view globalColours; // empty without a table
    std::vector<GifFrame> frames; // at least one
};

/// True for data that counts as a GIF: the version behind the first three bytes does not matter.
bool isGif(std::string_view bytes);

/// Takes a file apart, up to its end, a broken block or one of no known kind. An image that is not
/// there to its last byte is none. Nothing for data that is no GIF or has no image.
std::optional<GifFile> parseGif(std::string_view bytes);

/// A GIF file of its own with one frame, as the only thing on a screen of its size.
std::string fileOfFrame(const GifFile& gif, const GifFrame& frame);

} // namespace corma
