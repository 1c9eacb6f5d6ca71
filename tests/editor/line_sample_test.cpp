#include "editor/line_sample.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using corma::LinePiece;
using corma::linePieces;
using ::testing::ElementsAre;

namespace corma {

void PrintTo(const LinePiece& piece, std::ostream* out)
{
    *out << piece.begin << ".." << piece.end;
}

} // namespace corma

namespace {

TEST(LinePieces, ALinetypeWithoutDashesIsUnbroken)
{
    EXPECT_THAT(linePieces({}, 100), ElementsAre(LinePiece {0, 100}));
}

TEST(LinePieces, DashesAndGapsRepeatTwoTimesAndAHalf)
{
    EXPECT_THAT(linePieces({3, -1}, 100),
                ElementsAre(LinePiece {0, 30}, LinePiece {40, 70}, LinePiece {80, 100}));
}

TEST(LinePieces, ADotBeginsWhereItEnds)
{
    EXPECT_THAT(linePieces({0, -4}, 100),
                ElementsAre(LinePiece {0, 0}, LinePiece {40, 40}, LinePiece {80, 80}));
}

TEST(LinePieces, AGapMayComeFirst)
{
    EXPECT_THAT(linePieces({-1, 3}, 100),
                ElementsAre(LinePiece {10, 40}, LinePiece {50, 80}, LinePiece {90, 100}));
}

TEST(LinePieces, TheUnitDoesNotMatter)
{
    EXPECT_EQ(linePieces({3e-6, -1e-6}, 100).size(), linePieces({3e6, -1e6}, 100).size());
}

TEST(LinePieces, WhatCannotBeMeasuredIsUnbroken)
{
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double odd : {0.0, infinite, -infinite, std::nan("")}) {
        EXPECT_THAT(linePieces({odd}, 100), ElementsAre(LinePiece {0, 100})) << odd;
    }
}

} // namespace
