#include "inifile/numbers.h"
#include "platform/text.h"

#include <gtest/gtest.h>
#include <string>

namespace corma {
namespace {

struct NumberCase
{
    const char* name;
    const char* text;
    int number;
};

class ToInt : public ::testing::TestWithParam<NumberCase>
{
};

TEST_P(ToInt, ReadsTheNumberThatATextBeginsWith)
{
    EXPECT_EQ(toInt(std::string_view(GetParam().text)), GetParam().number);
    EXPECT_EQ(toInt(fromUtf8(GetParam().text)), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ToInt,
    ::testing::Values(NumberCase {"Empty", "", 0}, NumberCase {"Word", "een", 0},
                      NumberCase {"Number", "120", 120}, NumberCase {"Minus", "-12", -12},
                      NumberCase {"Plus", "+12", 12}, NumberCase {"TwoSigns", "+-12", 0},
                      NumberCase {"SignAlone", "-", 0},
                      NumberCase {"WhiteSpaceBefore", " \t\r\n\v\f7", 7},
                      NumberCase {"BlankBehindASign", "- 7", 0},
                      NumberCase {"OtherBlankBefore",
                                  "\xC2\xA0"
                                  "7",
                                  0},
                      NumberCase {"Fraction", "3.9", 3}, NumberCase {"WordBehind", "5mm", 5},
                      NumberCase {"LeadingZeros", "000000000000012", 12},
                      NumberCase {"Largest", "2147483647", 2147483647},
                      NumberCase {"AboveTheLargest", "2147483648", 2147483647},
                      NumberCase {"Smallest", "-2147483648", -2147483647 - 1},
                      NumberCase {"BelowTheSmallest", "-2147483649", -2147483647 - 1},
                      NumberCase {"MuchTooLarge", "99999999999999999999999", 2147483647}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace corma
