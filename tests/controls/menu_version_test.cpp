#include "controls/menu_version.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace corma {
namespace {

using namespace std::string_literals;

struct Row
{
    const char* name;
    std::string text;
    std::wstring version;
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

std::string nameOf(const ::testing::TestParamInfo<Row>& row)
{
    return row.param.name;
}

class MenuVersion : public ::testing::TestWithParam<Row>
{
};

TEST_P(MenuVersion, FollowsTheMarkerByCount)
{
    EXPECT_EQ(menuVersionIn(GetParam().text), GetParam().version);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Text, MenuVersion, ::testing::Values(
    Row {"BehindBlankAndQuote", "_MENUVERSION \"4.2.1\"\n", L"4.2.1"},
    Row {"InTheFirstLine", "_MENUVERSION \"1\"\nWand = PG_WAND\n", L"1"},
    Row {"InTheMiddle", "// menu\n_MENUVERSION \"1\"\nWand = PG_WAND\n", L"1"},
    Row {"InTheLastLineWithoutAnEnd", "// menu\n_MENUVERSION \"1\"", L"1"},
    Row {"OfTwoTheFirst", "_MENUVERSION \"1\"\n_MENUVERSION \"2\"\n", L"1"},
    Row {"OfTwoInALineTheFirst", "_MENUVERSION _MENUVERSION \"2\"\n", L"MENUVERSION "},
    Row {"OfTheFirstThoughItIsEmpty", "_MENUVERSION\n_MENUVERSION \"2\"\n", L""},
    Row {"WithinALine", "[Edit(\"_MENUVERSION \"4.2.1\" of today)]", L"4.2.1"},
    Row {"WithinAWord", "PLAN_MENUVERSIONS:4.2\"\n", L"4.2"},
    Row {"NotInSmallLetters", "_menuversion \"1\"\n", L""},
    Row {"NotInMixedLetters", "_MenuVersion \"1\"\n_MENUVERSION \"2\"\n", L"2"},
    Row {"NotOfAPartOfTheMarker", "_MENUVERSIO \"1\"\n", L""},
    Row {"NotAcrossLines", "_MENU\nVERSION \"1\"\n", L""},
    Row {"CountsAndDoesNotParse", "_MENUVERSION=4.2.1\"\n", L".2.1"},
    Row {"CountsBlanks", "_MENUVERSION  \"4.2.1\"\n", L""},
    Row {"CountsTabs", "_MENUVERSION\t\"4.2.1\"\n", L"4.2.1"},
    Row {"CountsCharactersOfSeveralBytes", "_MENUVERSION\u20AC\u00E94.2\"\n", L"4.2"},
    Row {"CountsCharactersBeyondTheFirstPlane", "_MENUVERSION\U0001F600\U0001F6004.2\"\n", L"4.2"},
    Row {"EndsAtTheNextQuote", "_MENUVERSION \"4.2\" \"5\"\n", L"4.2"},
    Row {"EndsAtTheLineWithoutAQuote", "_MENUVERSION \"4.2\n\"\n", L"4.2"},
    Row {"EndsAtTheTextWithoutAQuote", "_MENUVERSION \"4.2", L"4.2"},
    Row {"EndsBeforeACarriageReturn", "_MENUVERSION \"4.2\r\n", L"4.2"},
    Row {"IsEmptyAtAQuoteAtOnce", "_MENUVERSION \"\"\n", L""},
    Row {"IsEmptyRightBehindTheMarker", "_MENUVERSION", L""},
    Row {"IsEmptyOneCharacterBehindIt", "_MENUVERSION \n", L""},
    Row {"IsEmptyTwoCharactersBehindIt", "_MENUVERSION \"\n4\"", L""},
    Row {"HasAnyCharacters", "_MENUVERSION \"\u0434\u0432\u0430 <b>&\"\n", L"\u0434\u0432\u0430 <b>&"},
    Row {"IsNotThereInNothing", "", L""}),
    nameOf);

// clang-format on

class MenuFile : public ::testing::TestWithParam<Row>
{
};

TEST_P(MenuFile, IsReadInItsEncoding)
{
    const testing::TempFolder folder;
    EXPECT_EQ(menuVersionOf(folder.write(L"plan.mnu", GetParam().text)), GetParam().version);
}

std::string utf16(std::string_view text, bool bigEndian)
{
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : text) {
        bytes += bigEndian ? "\0"s + c : c + "\0"s;
    }
    return bytes;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, MenuFile, ::testing::Values(
    Row {"Utf8", "_MENUVERSION \"\u20AC 4\"\r\n", L"\u20AC 4"},
    Row {"Utf8WithAMark", "\xEF\xBB\xBF_MENUVERSION \"\u20AC 4\"\r\n", L"\u20AC 4"},
    Row {"Windows1252", "_MENUVERSION \"\x80 4\"\r\n", L"\u20AC 4"},
    Row {"Windows1252BetweenMarkerAndVersion", "_MENUVERSION\xE9\xE9" "4\"\r\n", L"4"},
    Row {"Utf16", utf16("x\r\n_MENUVERSION \"4.2\"\r\n", false), L"4.2"},
    Row {"Utf16Big", utf16("x\r\n_MENUVERSION \"4.2\"\r\n", true), L"4.2"},
    Row {"Empty", "", L""}),
    nameOf);

// clang-format on

TEST(MenuFile, ThatCannotBeOpenedHasAnEmptyVersion)
{
    const testing::TempFolder folder;
    EXPECT_EQ(menuVersionOf(folder.path(L"none.mnu")), L"");
    EXPECT_EQ(menuVersionOf(folder.path()), L"");
    EXPECT_EQ(menuVersionOf(L""), L"");
}

} // namespace
} // namespace corma
