#include "editor/hatch_swatch.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>

using corma::kMostSwatchLines;
using corma::SwatchLine;
using corma::swatchLines;
using corma::swatchSide;
using corma::turnedAndScaled;
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

struct SwatchRow
{
    const char* sentence;
    HatchLines family;
    const char* lines; // in a square of side 4
};

class Swatch : public ::testing::TestWithParam<SwatchRow>
{
};

TEST_P(Swatch, HasTheLinesThatAreInTheSquare)
{
    EXPECT_EQ(described(swatchLines(patternOf({GetParam().family}), 4.0)), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Editor, Swatch,
    ::testing::Values(
        SwatchRow {"LevelLines", {.y = 1, .across = 2}, "0,0.25 1,0.25\n0,0.75 1,0.75\n"},
        SwatchRow {"LinesOnTheBorderToo", {.across = 4}, "0,0 1,0\n0,1 1,1\n"},
        SwatchRow {
            "UprightLines", {.angle = 90, .x = 1, .across = 2}, "0.75,0 0.75,1\n0.25,0 0.25,1\n"},
        SwatchRow {
            "LinesInTheOtherDirection", {.y = 1, .across = -2}, "0,0.75 1,0.75\n0,0.25 1,0.25\n"},
        SwatchRow {"BackwardLines", {.angle = 180, .y = 1, .across = 8}, "1,0.25 0,0.25\n"},
        SwatchRow {"AnglesBelowZero", {.angle = -90, .x = 1, .across = 8}, "0.25,1 0.25,0\n"},
        SwatchRow {"AnglesBeyondATurn", {.angle = 450, .x = 1, .across = 8}, "0.25,0 0.25,1\n"},
        SwatchRow {"SlantedLines", {.angle = 45, .across = 10}, "0,0 1,1\n"},
        SwatchRow {"LinesThatBeginFarAway", {.x = 4e6, .y = 2 - 4e6, .across = 4}, "0,0.5 1,0.5\n"},
        SwatchRow {"Dashes",
                   {.y = 2, .across = 4, .dashes = {1, -1}},
                   "0,0.5 0.25,0.5\n0.5,0.5 0.75,0.5\n"},
        SwatchRow {"DashesCutAtTheBorder",
                   {.x = -1, .y = 2, .across = 4, .dashes = {2, -2}},
                   "0,0.5 0.25,0.5\n0.75,0.5 1,0.5\n"},
        SwatchRow {"AGapAtFirst", {.y = 2, .across = 4, .dashes = {-3, 1}}, "0.75,0.5 1,0.5\n"},
        SwatchRow {
            "Dots", {.x = 1, .y = 2, .across = 4, .dashes = {0, -2}}, "0.25,0.5\n0.75,0.5\n"},
        SwatchRow {"DashesMovedFromLineToLine",
                   {.y = 1, .along = 2, .across = 2, .dashes = {2, -2}},
                   "0,0.25 0.5,0.25\n0.5,0.75 1,0.75\n"},
        SwatchRow {"NoneWhereTheyAllPassBy", {.y = 100, .across = 1000}, ""}),
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

// --- turned and scaled ---------------------------------------------------------------------------

TEST(TurnedAndScaled, KeepsItsNameAndWhatItIs)
{
    const HatchPattern turned = turnedAndScaled({L"Solid", L"filled", {{.across = 1}}}, 45.0, 2.0);
    EXPECT_EQ(turned.name, L"Solid");
    EXPECT_EQ(turned.description, L"filled");
    EXPECT_TRUE(turned.isSolid());
    EXPECT_TRUE(turnedAndScaled(patternOf({}), 45.0, 2.0).families.empty());
}

TEST(TurnedAndScaled, TurnsTheOriginWithTheLines)
{
    const HatchLines turned
        = turnedAndScaled(
              patternOf(
                  {{.angle = 30, .x = 1, .y = 2, .along = 3, .across = -4, .dashes = {5, 0, -6}}}),
              90.0, 2.0)
              .families.at(0);
    EXPECT_DOUBLE_EQ(turned.angle, 120.0);
    EXPECT_DOUBLE_EQ(turned.x, -4.0);
    EXPECT_DOUBLE_EQ(turned.y, 2.0);
    EXPECT_DOUBLE_EQ(turned.along, 6.0);
    EXPECT_DOUBLE_EQ(turned.across, -8.0);
    EXPECT_EQ(turned.dashes, (std::vector {10.0, 0.0, -12.0}));
}

TEST(TurnedAndScaled, ByNothingIsTheSame)
{
    const HatchPattern pattern
        = patternOf({{.angle = 30, .x = 1, .y = 2, .along = 3, .across = 4, .dashes = {5, -6}}});
    const HatchLines same = turnedAndScaled(pattern, 0.0, 1.0).families.at(0);
    const HatchLines& before = pattern.families.at(0);
    EXPECT_EQ(same.angle, before.angle);
    EXPECT_EQ(same.x, before.x);
    EXPECT_EQ(same.y, before.y);
    EXPECT_EQ(same.along, before.along);
    EXPECT_EQ(same.across, before.across);
    EXPECT_EQ(same.dashes, before.dashes);
}

// Families with different origins, so that a turn of each around itself would show.
HatchPattern crosses()
{
    return patternOf({{.x = 0.5, .y = 1, .along = 1, .across = 2, .dashes = {1, -1}},
                      {.angle = 90, .x = 1, .y = 0.5, .across = 4, .dashes = {0, -2}}});
}

TEST(TurnedAndScaled, ScaledInASquareThatIsAsManyTimesAsLargeItLooksTheSame)
{
    const std::string once = described(swatchLines(crosses(), 4.0));
    ASSERT_NE(once, "");
    for (const double scale : {0.001, 0.25, 2.0, 1000.0}) {
        EXPECT_EQ(described(swatchLines(turnedAndScaled(crosses(), 0.0, scale), 4.0 * scale)), once)
            << scale;
    }
}

// A line each, the same for the same lines whichever way they are drawn.
std::vector<std::string> ordered(const std::vector<SwatchLine>& lines)
{
    std::vector<std::string> all;
    for (SwatchLine line : lines) {
        if (std::pair(line.x1, line.y1) > std::pair(line.x2, line.y2)) {
            std::swap(line.x1, line.x2);
            std::swap(line.y1, line.y2);
        }
        all.push_back(described({line}));
    }
    std::sort(all.begin(), all.end());
    return all;
}

SwatchLine turnedLeft(const SwatchLine& line)
{
    return {1 - line.y1, line.x1, 1 - line.y2, line.x2};
}

// The turn is around the corner of the square, into the square beside it; with lines that repeat
// with the square that one looks the same.
TEST(TurnedAndScaled, TurnedByRightAnglesItIsThePictureTurned)
{
    const HatchPattern pattern
        = patternOf({{.x = 0.5, .y = 1, .across = 4, .dashes = {1, -3}},
                     {.angle = 90, .x = 3, .y = 0.25, .across = 4, .dashes = {2, -2}}});
    std::vector<SwatchLine> expected = swatchLines(pattern, 4.0);
    ASSERT_EQ(expected.size(), 2U);
    for (const double degrees : {90.0, 180.0, 270.0, 360.0, 450.0}) {
        for (SwatchLine& line : expected) {
            line = turnedLeft(line);
        }
        EXPECT_EQ(ordered(swatchLines(turnedAndScaled(pattern, degrees, 1.0), 4.0)),
                  ordered(expected))
            << degrees;
    }
}

TEST(TurnedAndScaled, AFamilyIsTurnedAsIfItHadThatAngle)
{
    const auto plain = [](double angle) {
        return described(swatchLines(patternOf({{.angle = angle, .across = 1}}), 4.0));
    };
    for (const double degrees : {0.0, 17.0, 45.0, 90.0, 135.5, 270.0, -30.0, 725.0}) {
        const auto turned = turnedAndScaled(patternOf({{.across = 1}}), degrees, 1.0);
        EXPECT_EQ(described(swatchLines(turned, 4.0)), plain(degrees)) << degrees;
    }
}

} // namespace
