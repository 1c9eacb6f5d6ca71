#include "editor/ColourForm.h"

#include <gtest/gtest.h>

using corma::ColourForm;

namespace {

struct ColourRow
{
    const char* sentence;
    const wchar_t* typed;
    std::optional<int> colour;
};

void PrintTo(const ColourRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class TypedColour : public ::testing::TestWithParam<ColourRow>
{
};

TEST_P(TypedColour, IsThatColour)
{
    ColourForm form(7);
    form.type(GetParam().typed);
    EXPECT_EQ(form.colour(), GetParam().colour);
    EXPECT_EQ(form.text(), GetParam().typed);
}

const ColourRow kRows[] = {
    {"ANumber", L"12", 12},
    {"TheFirst", L"1", 1},
    {"TheLast", L"255", 255},
    {"TheNumberOfByLayer", L"256", 256},
    {"TheNumberOfByBlock", L"0", 0},
    {"AWord", L"ByLayer", 256},
    {"AWordInAnyCase", L"byBLOCK", 0},
    {"NoughtsInFront", L"007", 7},
    {"OneTooMany", L"257", std::nullopt},
    {"FarTooMany", L"99999999999999999999", std::nullopt},
    {"ANegativeNumber", L"-1", std::nullopt},
    {"AFraction", L"1.5", std::nullopt},
    {"AnotherWord", L"red", std::nullopt},
    {"ANumberAndMore", L"12x", std::nullopt},
    {"Nothing", L"", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Of, TypedColour, ::testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST(ColourForm, BeginsWithTheColourAsText)
{
    EXPECT_EQ(ColourForm(256).text(), L"ByLayer");
    EXPECT_EQ(ColourForm(0).text(), L"ByBlock");
    EXPECT_EQ(ColourForm(12).text(), L"12");
    EXPECT_EQ(ColourForm(12).colour(), 12);
}

TEST(ColourForm, ANumberThatIsNoColourIsNoneUntilOneIsChosen)
{
    ColourForm form(999);
    EXPECT_EQ(form.text(), L"999");
    EXPECT_EQ(form.colour(), std::nullopt);
    form.choose(30);
    EXPECT_EQ(form.text(), L"30");
    EXPECT_EQ(form.colour(), 30);
}

} // namespace
