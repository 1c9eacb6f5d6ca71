#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corma::testing {

/// An image of one colour, for gifBytes().
struct TestFrame
{
    int left = 0;
    int top = 0;
    int width = 1;
    int height = 1;
    int colour = 1; // index
    int delay = -1; // 1/100 s; -1: no control extension
    int disposal = 0;
    int transparent = -1; // index of the colour that is; needs a delay
    bool hasOwnColours = false; // a table of its own: colour 1 is yellow there
};

/// The screen of a file for gifBytes(). Its colours are black, red, green, blue.
struct TestScreen
{
    int width = 4;
    int height = 4;
    bool hasColours = true;
    int background = 3;
    std::string_view version = "GIF89a";
};

/// A GIF file.
std::string gifBytes(const TestScreen& screen, const std::vector<TestFrame>& frames);

/// Its beginning, before the first block.
std::string gifHead(const TestScreen& screen);

/// The blocks of one image.
std::string gifBlocks(const TestFrame& frame);

} // namespace corma::testing
