#include "host/acdb_database.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>

namespace {

// In hundredths of a millimetre, as users see them in the list of widths.
constexpr int kLegal[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                          53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

int nearest(int weight)
{
    return AcDbDatabase::getNearestLineWeight(weight);
}

TEST(LineWeight, ALegalOneStays)
{
    for (const int weight : kLegal) {
        EXPECT_EQ(nearest(weight), weight);
    }
}

TEST(LineWeight, BetweenTwoTheNearerAndHalfwayTheLarger)
{
    for (std::size_t i = 0; i + 1 < std::size(kLegal); ++i) {
        const int low = kLegal[i];
        const int high = kLegal[i + 1];
        for (int weight = low; weight <= high; ++weight) {
            EXPECT_EQ(nearest(weight), 2 * weight < low + high ? low : high) << weight;
        }
    }
}

TEST(LineWeight, KnownWidths)
{
    EXPECT_EQ(nearest(2), 0);
    EXPECT_EQ(nearest(3), 5);
    EXPECT_EQ(nearest(7), 9) << "halfway between 5 and 9";
    EXPECT_EQ(nearest(51), 50);
    EXPECT_EQ(nearest(52), 53);
    EXPECT_EQ(nearest(55), 53);
    EXPECT_EQ(nearest(205), 200);
    EXPECT_EQ(nearest(206), 211);
}

TEST(LineWeight, AboveTheWidestIsTheWidest)
{
    EXPECT_EQ(nearest(212), 211);
    EXPECT_EQ(nearest(std::numeric_limits<int>::max()), 211);
}

TEST(LineWeight, TheThreeWordsStay)
{
    EXPECT_EQ(nearest(-1), AcDb::kLnWtByLayer);
    EXPECT_EQ(nearest(-2), AcDb::kLnWtByBlock);
    EXPECT_EQ(nearest(-3), AcDb::kLnWtByLwDefault);
}

TEST(LineWeight, ANegativeNumberThatIsNoWordIsTheThinnest)
{
    EXPECT_EQ(nearest(-4), 0);
    EXPECT_EQ(nearest(-100), 0);
    EXPECT_EQ(nearest(std::numeric_limits<int>::min()), 0);
}

} // namespace
