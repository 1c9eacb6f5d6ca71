#include "host/color_index.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>

using corma::host::colorOfIndex;
using corma::host::Rgb;

namespace corma::host {

void PrintTo(const Rgb& color, std::ostream* out)
{
    *out << int {color.red} << ' ' << int {color.green} << ' ' << int {color.blue};
}

} // namespace corma::host

namespace {

int brightest(const Rgb& color)
{
    return std::max({color.red, color.green, color.blue});
}

int darkest(const Rgb& color)
{
    return std::min({color.red, color.green, color.blue});
}

TEST(ColorIndex, TheFirstOnesHaveNames)
{
    EXPECT_EQ(colorOfIndex(1), (Rgb {255, 0, 0})) << "red";
    EXPECT_EQ(colorOfIndex(2), (Rgb {255, 255, 0})) << "yellow";
    EXPECT_EQ(colorOfIndex(3), (Rgb {0, 255, 0})) << "green";
    EXPECT_EQ(colorOfIndex(4), (Rgb {0, 255, 255})) << "cyan";
    EXPECT_EQ(colorOfIndex(5), (Rgb {0, 0, 255})) << "blue";
    EXPECT_EQ(colorOfIndex(6), (Rgb {255, 0, 255})) << "magenta";
    EXPECT_EQ(colorOfIndex(7), (Rgb {255, 255, 255})) << "white";
    EXPECT_EQ(colorOfIndex(8), (Rgb {128, 128, 128}));
    EXPECT_EQ(colorOfIndex(9), (Rgb {192, 192, 192}));
}

TEST(ColorIndex, TheHuesGoRoundTheWheel)
{
    EXPECT_EQ(colorOfIndex(10), colorOfIndex(1)) << "red";
    EXPECT_EQ(colorOfIndex(30), (Rgb {255, 127, 0})) << "orange";
    EXPECT_EQ(colorOfIndex(50), colorOfIndex(2)) << "yellow";
    EXPECT_EQ(colorOfIndex(90), colorOfIndex(3)) << "green";
    EXPECT_EQ(colorOfIndex(130), colorOfIndex(4)) << "cyan";
    EXPECT_EQ(colorOfIndex(170), colorOfIndex(5)) << "blue";
    EXPECT_EQ(colorOfIndex(210), colorOfIndex(6)) << "magenta";
    EXPECT_EQ(colorOfIndex(240), (Rgb {255, 0, 63}));
}

TEST(ColorIndex, AHueHasPairsThatGetDarker)
{
    EXPECT_EQ(colorOfIndex(11), (Rgb {255, 127, 127}));
    EXPECT_EQ(colorOfIndex(12), (Rgb {165, 0, 0}));
    EXPECT_EQ(colorOfIndex(13), (Rgb {165, 82, 82}));
    EXPECT_EQ(colorOfIndex(19), (Rgb {38, 19, 19}));
    for (int hue = 10; hue < 250; hue += 10) {
        for (int shade = 0; shade < 10; shade += 2) {
            const Rgb full = colorOfIndex(hue + shade).value();
            const Rgb pale = colorOfIndex(hue + shade + 1).value();
            EXPECT_EQ(brightest(full), brightest(pale)) << hue + shade;
            EXPECT_EQ(darkest(full), 0) << hue + shade;
            EXPECT_EQ(darkest(pale), brightest(full) / 2) << hue + shade;
            if (shade > 0) {
                EXPECT_LT(brightest(full), brightest(colorOfIndex(hue + shade - 2).value()));
            }
        }
    }
}

TEST(ColorIndex, TheLastOnesAreGreysFromDarkToWhite)
{
    for (int index = 250; index <= 255; ++index) {
        const Rgb grey = colorOfIndex(index).value();
        EXPECT_EQ(brightest(grey), darkest(grey)) << index;
        if (index > 250) {
            EXPECT_LT(brightest(colorOfIndex(index - 1).value()), brightest(grey)) << index;
        }
    }
    EXPECT_EQ(colorOfIndex(255), (Rgb {255, 255, 255}));
}

TEST(ColorIndex, EveryColourLooksLikeSomethingAndNothingElseDoes)
{
    for (int index = 1; index <= 255; ++index) {
        EXPECT_TRUE(colorOfIndex(index)) << index;
    }
    for (const int index : {0, 256, 257, -1, 1000, std::numeric_limits<int>::min(),
                            std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(colorOfIndex(index)) << index;
    }
}

} // namespace
