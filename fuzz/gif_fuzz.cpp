#include "controls/gif.h"
#include "fuzz_support.h"

#include <cstdint>

namespace {

using corma::GifFile;
using corma::GifFrame;
using corma::fuzzing::require;

constexpr int kMostOfShort = 0xFFFF;

bool isShort(int value)
{
    return value >= 0 && value <= kMostOfShort;
}

bool isWithin(std::string_view part, std::string_view whole)
{
    return part.empty()
        || (part.data() >= whole.data()
            && part.data() + part.size() <= whole.data() + whole.size());
}

// A frame is a part of the input behind the frame before it.
void requirePlace(const GifFrame& frame, std::string_view rest)
{
    require(isWithin(frame.image, rest) && isWithin(frame.control, rest) && !frame.image.empty());
    require(frame.control.empty() || frame.control.data() < frame.image.data());
}

void requireLimits(const GifFrame& frame)
{
    require(isShort(frame.left) && isShort(frame.top));
    require(isShort(frame.width) && isShort(frame.height));
    require(frame.control.empty() ? frame.delay == -1 : isShort(frame.delay));
    require(frame.disposal >= 0 && frame.disposal <= (frame.control.empty() ? 0 : 7));
}

// A frame's file has this frame only, at the corner of a screen of its size, and taken apart and
// put together again it is the same.
void requireFile(const GifFile& gif, const GifFrame& frame)
{
    const std::string file = corma::fileOfFrame(gif, frame);
    require(file.ends_with(";"));
    const auto again = corma::parseGif(file);
    require(again && again->frames.size() == 1);
    require(again->width == frame.width && again->height == frame.height);
    require(again->globalColours == gif.globalColours);
    const GifFrame& only = again->frames.front();
    require(only.left == 0 && only.top == 0);
    require(only.width == frame.width && only.height == frame.height);
    require(only.delay == frame.delay && only.disposal == frame.disposal);
    require(corma::fileOfFrame(*again, only) == file);
}

} // namespace

/// The input is a file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto gif = corma::parseGif(bytes);
    if (!gif) {
        return 0;
    }
    require(corma::isGif(bytes) && !gif->frames.empty());
    require(isShort(gif->width) && isShort(gif->height));
    require(isWithin(gif->globalColours, bytes));
    require(!gif->background || !gif->globalColours.empty());
    std::string_view rest = bytes;
    for (const GifFrame& frame : gif->frames) {
        requirePlace(frame, rest);
        requireLimits(frame);
        requireFile(*gif, frame);
        rest.remove_prefix(
            static_cast<std::size_t>(frame.image.data() + frame.image.size() - rest.data()));
    }
    return 0;
}
