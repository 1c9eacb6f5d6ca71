#include "gif_bytes.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace corma::testing {

namespace {

using namespace std::string_view_literals;

constexpr auto kColours = "\0\0\0\xFF\0\0\0\xFF\0\0\0\xFF"sv; // black, red, green, blue
constexpr auto kOwnColours = "\xFF\xFF\xFF\xFF\xFF\0"sv; // white, yellow

std::string number(int value)
{
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
}

/// Codes of 8 bits, begun anew before they would need 9, so that each is a byte.
std::string imageData(const TestFrame& frame)
{
    constexpr int kPixelsOfBlock = 100;
    constexpr char kClear = '\x80';
    constexpr char kEnd = '\x81';
    std::string data = "\x07";
    for (int left = frame.width * frame.height; left > 0; left -= kPixelsOfBlock) {
        const int count = std::min(left, kPixelsOfBlock);
        data.push_back(static_cast<char>(count + 1));
        data.push_back(kClear);
        data.append(static_cast<std::size_t>(count), static_cast<char>(frame.colour));
    }
    return data.append(1, '\x01').append(1, kEnd).append(1, '\0');
}

} // namespace

std::string gifHead(const TestScreen& screen)
{
    std::string head(screen.version);
    head.append(number(screen.width)).append(number(screen.height));
    head.push_back(screen.hasColours ? '\x81' : '\0');
    head.push_back(static_cast<char>(screen.background));
    head.push_back('\0');
    return screen.hasColours ? head.append(kColours) : head;
}

std::string gifBlocks(const TestFrame& frame)
{
    std::string blocks;
    if (frame.delay >= 0) {
        const bool isTransparent = frame.transparent >= 0;
        blocks.append("\x21\xF9\x04"sv);
        blocks.push_back(static_cast<char>(frame.disposal << 2 | (isTransparent ? 1 : 0)));
        blocks.append(number(frame.delay));
        blocks.push_back(isTransparent ? static_cast<char>(frame.transparent) : '\0');
        blocks.push_back('\0');
    }
    blocks.push_back('\x2C');
    blocks.append(number(frame.left)).append(number(frame.top));
    blocks.append(number(frame.width)).append(number(frame.height));
    blocks.push_back(frame.hasOwnColours ? '\x80' : '\0');
    blocks.append(frame.hasOwnColours ? kOwnColours : ""sv);
    return blocks.append(imageData(frame));
}

std::string gifBytes(const TestScreen& screen, const std::vector<TestFrame>& frames)
{
    std::string bytes = gifHead(screen);
    for (const TestFrame& frame : frames) {
        bytes.append(gifBlocks(frame));
    }
    return bytes + ";";
}

} // namespace corma::testing
