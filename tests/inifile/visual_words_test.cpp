#include "inifile/visual_words.h"

#include <gtest/gtest.h>
#include <string>

using corma::behindSeparators;
using corma::colourFromText;
using corma::lineweightFromText;

namespace {

struct NumberRow
{
    const char* sentence;
    const wchar_t* text;
    int number;
};

void PrintTo(const NumberRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class ColourText : public ::testing::TestWithParam<NumberRow>
{
};

TEST_P(ColourText, IsRead)
{
    EXPECT_EQ(colourFromText(GetParam().text), GetParam().number);
}

// clang-format off
const NumberRow colours[] = {
    {"ByLayer", L"ByLayer", 256},
    {"ByLayerInSmallLetters", L"bylayer", 256},
    {"ByLayerInCapitals", L"BYLAYER", 256},
    {"ByBlock", L"ByBlock", 0},
    {"ByBlockInSmallLetters", L"byblock", 0},
    {"ANumber", L"7", 7},
    {"TheLargestColour", L"255", 255},
    {"TheNumberOfByLayer", L"256", 256},
    {"ANumberBeyondAllColours", L"257", 257},
    {"ANumberBelowZero", L"-1", -1},
    {"ANumberWithBlanks", L" 7 ", 7},
    {"ANumberWithMoreBehindIt", L"7red", 7},
    {"AFraction", L"7.9", 7},
    {"AnotherWord", L"red", 0},
    {"TheWordWithABlank", L" ByLayer", 0},
    {"TheWordWithMoreBehindIt", L"ByLayers", 0},
    {"Nothing", L"", 0},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(VisualWords, ColourText, ::testing::ValuesIn(colours),
                         [](const auto& row) { return std::string(row.param.sentence); });

class LineweightText : public ::testing::TestWithParam<NumberRow>
{
};

TEST_P(LineweightText, IsRead)
{
    EXPECT_EQ(lineweightFromText(GetParam().text), GetParam().number);
}

// clang-format off
const NumberRow lineweights[] = {
    {"ByLayer", L"ByLayer", -1},
    {"ByLayerInCapitals", L"BYLAYER", -1},
    {"ByBlock", L"byblock", -2},
    {"Default", L"Default", -3},
    {"DefaultInSmallLetters", L"default", -3},
    {"ByDefault", L"ByDefault", -3},
    {"ByDefaultInCapitals", L"BYDEFAULT", -3},
    {"ALegalWidth", L"0.25", 25},
    {"ALegalWidthThatIsNoBinaryFraction", L"0.35", 35},
    {"TheWidest", L"2.11", 211},
    {"TheNarrowest", L"0", 0},
    {"BetweenTwoTheNearer", L"0.31", 30},
    {"HalfwayTheLarger", L"0.07", 9},
    {"WiderThanAll", L"3", 211},
    {"MuchWiderThanAll", L"1e300", 211},
    {"TooLargeForANumber", L"1e999", 211},
    {"HundredthsThatAreNotWholeAreCut", L"0.0299", 0},
    {"TheFirstWholeHundredthThatCounts", L"0.03", 5},
    {"ANumberWithABlank", L" 0.5", 50},
    {"ANumberWithItsUnit", L"0.5mm", 50},
    {"ACommaEndsANumber", L"1,5", 100},
    {"AnotherWord", L"thick", 0},
    {"Nothing", L"", 0},
    {"LessThanNothing", L"-0.05", 0},
    {"MuchLessThanNothing", L"-5", 0},
    {"TooFarBelowForANumber", L"-1e999", 0},
    {"AHundredthBelowNothingIsThatOfAWord", L"-0.01", -1},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(VisualWords, LineweightText, ::testing::ValuesIn(lineweights),
                         [](const auto& row) { return std::string(row.param.sentence); });

struct PlaceRow
{
    const char* sentence;
    const wchar_t* text;
    int count;
    std::size_t place;
};

void PrintTo(const PlaceRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class BehindSeparators : public ::testing::TestWithParam<PlaceRow>
{
};

TEST_P(BehindSeparators, ATextGoesOn)
{
    EXPECT_EQ(behindSeparators(GetParam().text, GetParam().count), GetParam().place);
}

// clang-format off
const PlaceRow places[] = {
    {"WithoutAny", L"a,b", 0, 0},
    {"One", L"ab,c", 1, 3},
    {"Two", L"a,b,c", 2, 4},
    {"EmptyFields", L",,c", 2, 2},
    {"ASeparatorAtTheEnd", L"a,b,", 2, 4},
    {"OneTooFewStartsOver", L"a,b", 2, 0},
    {"TwoTooFewCountTheFirstAgain", L"a,b", 3, 2},
    {"AndSoOn", L"a,b", 4, 0},
    {"NoneAtAll", L"ab", 5, 0},
    {"Nothing", L"", 4, 0},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(VisualWords, BehindSeparators, ::testing::ValuesIn(places),
                         [](const auto& row) { return std::string(row.param.sentence); });

} // namespace
