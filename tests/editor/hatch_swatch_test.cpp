#include "editor/hatch_swatch.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

using corma::kMostSwatchLines;
using corma::SwatchLine;
using corma::swatchLines;
using corma::swatchSide;
using corma::host::HatchLines;
using corma::host::HatchPattern;

namespace {

HatchPattern patternOf(std::vector<HatchLines> families)
{
    return {L"A", L"", std::move(families)};
}

// To two places, a line each.
std::string described(const std::vector<SwatchLine>& lines)
{
    const auto rounded = [](double number) { return std::round(number * 100.0) / 100.0 + 0.0; };
    std::ostringstream text;
    for (const SwatchLine& line : lines) {
        text << rounded(line.x1) << ',' << rounded(line.y1);
        if (line.isDot()) {
            text << '\n';
        } else {
            text << ' ' << rounded(line.x2) << ',' << rounded(line.y2) << '\n';
        }
    }
    return text.str();
}

struct Row
{
    const char* sentence;
    HatchLines family;
    const char* lines; // in a square of side 4
};

class Swatch : public ::testing::TestWithParam<Row>
{
};

TEST_P(Swatch, HasTheLinesThatAreInTheSquare)
{
    EXPECT_EQ(described(swatchLines(patternOf({GetParam().family}), 4.0)), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Editor, Swatch,
    ::testing::Values(
        Row {"LevelLines", {.y = 1, .across = 2}, "0,0.25 1,0.25\n0,0.75 1,0.75\n"},
        Row {"LinesOnTheBorderToo", {.across = 4}, "0,0 1,0\n0,1 1,1\n"},
        Row {"UprightLines", {.angle = 90, .x = 1, .across = 2}, "0.75,0 0.75,1\n0.25,0 0.25,1\n"},
        Row {"LinesInTheOtherDirection", {.y = 1, .across = -2}, "0,0.75 1,0.75\n0,0.25 1,0.25\n"},
        Row {"BackwardLines", {.angle = 180, .y = 1, .across = 8}, "1,0.25 0,0.25\n"},
        Row {"AnglesBelowZero", {.angle = -90, .x = 1, .across = 8}, "0.25,1 0.25,0\n"},
        Row {"AnglesBeyondATurn", {.angle = 450, .x = 1, .across = 8}, "0.25,0 0.25,1\n"},
        Row {"SlantedLines", {.angle = 45, .across = 10}, "0,0 1,1\n"},
        Row {"LinesThatBeginFarAway", {.x = 4e6, .y = 2 - 4e6, .across = 4}, "0,0.5 1,0.5\n"},
        Row {"Dashes",
             {.y = 2, .across = 4, .dashes = {1, -1}},
             "0,0.5 0.25,0.5\n0.5,0.5 0.75,0.5\n"},
        Row {"DashesCutAtTheBorder",
             {.x = -1, .y = 2, .across = 4, .dashes = {2, -2}},
             "0,0.5 0.25,0.5\n0.75,0.5 1,0.5\n"},
        Row {"AGapAtFirst", {.y = 2, .across = 4, .dashes = {-3, 1}}, "0.75,0.5 1,0.5\n"},
        Row {"Dots", {.x = 1, .y = 2, .across = 4, .dashes = {0, -2}}, "0.25,0.5\n0.75,0.5\n"},
        Row {"DashesMovedFromLineToLine",
             {.y = 1, .along = 2, .across = 2, .dashes = {2, -2}},
             "0,0.25 0.5,0.25\n0.5,0.75 1,0.75\n"},
        Row {"NoneWhereTheyAllPassBy", {.y = 100, .across = 1000}, ""}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST(SwatchLines, OfFamiliesFollowEachOther)
{
    const auto lines
        = swatchLines(patternOf({{.y = 2, .across = 4}, {.angle = 90, .x = 2, .across = 4}}), 4.0);
    EXPECT_EQ(described(lines), "0,0.5 1,0.5\n0.5,0 0.5,1\n");
}

// Whatever the numbers: all of it is in the square, and it is not more than can be drawn.
TEST(SwatchLines, AreFewAndInTheSquare)
{
    for (const double angle : {0.0, 30.0, 45.0, 90.0, 135.0, 359.9, 1e9, -1e9}) {
        for (const double across : {1e-300, 1e-9, 0.001, 1.0, -0.001, 1e9}) {
            for (const double dash : {1e-300, 1e-9, 0.01, 1.0, 1e9}) {
                const HatchLines family {angle, 1e9, -1e9, 1e9, across, {dash, -dash, 0, -dash}};
                const auto lines = swatchLines(patternOf({family}), 1.0);
                EXPECT_LE(lines.size(), kMostSwatchLines);
                EXPECT_TRUE(std::all_of(lines.begin(), lines.end(),
                                        [](const auto& line) {
                                            const auto [least, most]
                                                = std::minmax({line.x1, line.y1, line.x2, line.y2});
                                            return least >= -1e-6 && most <= 1 + 1e-6;
                                        }))
                    << angle << ' ' << across << ' ' << dash;
            }
        }
    }
}

TEST(SwatchLines, StayBelowTheirLimit)
{
    const HatchLines dots {.across = 0.005, .dashes = {0, -0.0025, 0, -0.0025}};
    EXPECT_EQ(swatchLines(patternOf({dots, dots, dots}), 1.0).size(), kMostSwatchLines);
}

TEST(SwatchSide, ShowsSomeRepetitions)
{
    EXPECT_DOUBLE_EQ(swatchSide(patternOf({{.across = 0.125}})), 0.75);
    EXPECT_DOUBLE_EQ(swatchSide(patternOf({{.across = -2}, {.across = 1}})), 10.0);
    EXPECT_DOUBLE_EQ(swatchSide(patternOf({{.across = 1.5}, {.across = 1}})), 9.0);
    EXPECT_DOUBLE_EQ(swatchSide(patternOf({})), 1.0);
}

} // namespace
