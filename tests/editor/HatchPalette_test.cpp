#include "editor/HatchPalette.h"

#include <gtest/gtest.h>

using corma::HatchPalette;
using corma::host::HatchPattern;

namespace {

std::vector<HatchPattern> patterns()
{
    std::vector<HatchPattern> all;
    for (const wchar_t* name : {L"ANSI31", L"ANSI32", L"Brick", L"NET"}) {
        all.push_back({name, std::wstring(L"about ") + name, {{.across = 1.0}}});
    }
    return all;
}

TEST(HatchPalette, SelectsThePatternThatIsGiven)
{
    const HatchPalette palette(patterns(), L"BRICK");
    EXPECT_EQ(palette.selected(), 2U);
    EXPECT_EQ(palette.name(), L"Brick");
    EXPECT_EQ(palette.description(), L"about Brick");
}

TEST(HatchPalette, SelectsNothingForAnUnknownPattern)
{
    for (const wchar_t* name : {L"", L"NOSUCH", L"ANSI3"}) {
        const HatchPalette palette(patterns(), name);
        EXPECT_EQ(palette.selected(), std::nullopt);
        EXPECT_EQ(palette.name(), L"");
        EXPECT_EQ(palette.description(), L"");
    }
    EXPECT_EQ(HatchPalette({}, L"NET").selected(), std::nullopt);
}

TEST(HatchPalette, SelectsWhatThereIsOnly)
{
    HatchPalette palette(patterns(), L"");
    palette.select(3);
    EXPECT_EQ(palette.name(), L"NET");
    palette.select(4);
    EXPECT_EQ(palette.selected(), std::nullopt);
    palette.select(0);
    EXPECT_EQ(palette.name(), L"ANSI31");
    palette.select(std::nullopt);
    EXPECT_EQ(palette.name(), L"");
}

struct TypedTextRow
{
    const char* sentence;
    const wchar_t* typed;
    std::size_t from;
    HatchPalette::Index found;
};

class TypedText : public ::testing::TestWithParam<TypedTextRow>
{
};

TEST_P(TypedText, FindsAPattern)
{
    EXPECT_EQ(HatchPalette(patterns(), L"").find(GetParam().typed, GetParam().from),
              GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(Editor, TypedText,
                         ::testing::Values(TypedTextRow {"InAnyCase", L"bR", 0, 2},
                                           TypedTextRow {"FromThePlaceOn", L"ansi", 1, 1},
                                           TypedTextRow {"AndThenFromTheBeginning", L"ansi", 2, 0},
                                           TypedTextRow {"FromBehindTheLast", L"ansi", 4, 0},
                                           TypedTextRow {"WithinANameToo", L"32", 0, 1},
                                           TypedTextRow {"ABeginningGoesBeforeTheRest", L"n", 0, 3},
                                           TypedTextRow {"AWholeName", L"net", 0, 3},
                                           TypedTextRow {"MoreThanANameIsNone", L"nets", 0,
                                                         std::nullopt},
                                           TypedTextRow {"NoTextIsNone", L"", 0, std::nullopt}),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST(HatchPalette, FindsNothingWhereThereIsNothing)
{
    EXPECT_EQ(HatchPalette({}, L"").find(L"a", 0), std::nullopt);
}

} // namespace
