#include "editor/NameChoice.h"

#include <gtest/gtest.h>

using corma::NameChoice;

namespace {

NameChoice threeNames()
{
    return NameChoice({L"0", L"Gevel", L"MUUR"});
}

struct TakenNameRow
{
    const char* sentence;
    const wchar_t* taken;
    NameChoice::Index chosen;
    const wchar_t* typed;
    const wchar_t* name; // what counts then
};

void PrintTo(const TakenNameRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class TakenName : public ::testing::TestWithParam<TakenNameRow>
{
};

TEST_P(TakenName, IsChosenWhereTheListHasIt)
{
    NameChoice choice = threeNames();
    choice.take(GetParam().taken);
    EXPECT_EQ(choice.chosen(), GetParam().chosen);
    EXPECT_EQ(choice.isTyped(), !GetParam().chosen.has_value());
    EXPECT_EQ(choice.typed(), GetParam().typed);
    EXPECT_EQ(choice.name(), GetParam().name);
    EXPECT_EQ(choice.find(GetParam().taken), GetParam().chosen);
}

// clang-format off
const TakenNameRow takenNameRows[] = {
    {"TheFirst", L"0", 0, L"", L"0"},
    {"TheLast", L"MUUR", 2, L"", L"MUUR"},
    {"InAnotherCaseItHasThatOfTheList", L"muur", 2, L"", L"MUUR"},
    {"AndTheOtherWayRound", L"GEVEL", 1, L"", L"Gevel"},
    {"TheBeginningOfANameIsAnother", L"Geve", std::nullopt, L"Geve", L"Geve"},
    {"ANameWithMoreIsAnother", L"Gevels", std::nullopt, L"Gevels", L"Gevels"},
    {"BlanksCount", L" Gevel", std::nullopt, L" Gevel", L" Gevel"},
    {"AnUnknownOneKeepsItsCase", L"dAk", std::nullopt, L"dAk", L"dAk"},
    {"NothingIsTyped", L"", std::nullopt, L"", L""},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Editor, TakenName, ::testing::ValuesIn(takenNameRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST(NameChoice, BeginsWithNothing)
{
    const NameChoice none;
    EXPECT_TRUE(none.names().empty());
    EXPECT_FALSE(none.canChoose());
    EXPECT_FALSE(none.isTyped());
    EXPECT_EQ(none.chosen(), std::nullopt);
    EXPECT_EQ(none.name(), L"");
    const NameChoice some = threeNames();
    EXPECT_TRUE(some.canChoose());
    EXPECT_EQ(some.chosen(), std::nullopt);
    EXPECT_EQ(some.name(), L"");
}

TEST(NameChoice, TheFirstOfEqualNamesIsFound)
{
    const NameChoice choice({L"A", L"B", L"b"});
    EXPECT_EQ(choice.find(L"b"), 1U);
}

TEST(NameChoice, ANewNameTakesTheFormersPlace)
{
    NameChoice choice = threeNames();
    choice.take(L"dak");
    choice.take(L"gevel");
    EXPECT_FALSE(choice.isTyped());
    EXPECT_EQ(choice.typed(), L"");
    EXPECT_EQ(choice.name(), L"Gevel");
    choice.take(L"dak");
    EXPECT_EQ(choice.chosen(), std::nullopt);
    EXPECT_EQ(choice.name(), L"dak");
}

TEST(NameChoice, ANumberBeyondTheListChoosesNone)
{
    NameChoice choice = threeNames();
    choice.choose(2);
    EXPECT_EQ(choice.name(), L"MUUR");
    choice.choose(3);
    EXPECT_EQ(choice.chosen(), std::nullopt);
    EXPECT_EQ(choice.name(), L"");
    choice.choose(0);
    choice.choose(std::nullopt);
    EXPECT_EQ(choice.chosen(), std::nullopt);
    NameChoice empty;
    empty.choose(0);
    EXPECT_EQ(empty.chosen(), std::nullopt);
}

// --- from one button to the other ----------------------------------------------------------------

TEST(NameChoice, TheFieldBeginsWithTheChosenName)
{
    NameChoice choice = threeNames();
    choice.take(L"gevel");
    choice.fromField();
    EXPECT_TRUE(choice.isTyped());
    EXPECT_EQ(choice.typed(), L"Gevel");
    EXPECT_EQ(choice.chosen(), 1U);
    choice.type(L"");
    EXPECT_EQ(choice.name(), L"");
}

TEST(NameChoice, EachSideKeepsItsOwn)
{
    NameChoice choice = threeNames();
    choice.take(L"dak");
    choice.fromList();
    EXPECT_EQ(choice.name(), L"0") << "nothing was chosen before";
    choice.choose(1);
    EXPECT_EQ(choice.typed(), L"dak");
    choice.fromField();
    EXPECT_EQ(choice.name(), L"dak");
    choice.type(L"dakrand");
    choice.fromList();
    EXPECT_EQ(choice.name(), L"Gevel");
    choice.fromField();
    EXPECT_EQ(choice.name(), L"dakrand");
}

TEST(NameChoice, TheSameButtonAgainChangesNothing)
{
    NameChoice choice = threeNames();
    choice.take(L"muur");
    choice.fromList();
    EXPECT_EQ(choice.chosen(), 2U);
    choice.fromField();
    choice.type(L"x");
    choice.fromField();
    EXPECT_EQ(choice.name(), L"x");
}

TEST(NameChoice, WhatIsTypedDoesNotCountForTheList)
{
    NameChoice choice = threeNames();
    choice.take(L"muur");
    choice.type(L"dak");
    EXPECT_EQ(choice.name(), L"MUUR");
    choice.fromField();
    choice.choose(1);
    EXPECT_EQ(choice.name(), L"dak");
    choice.fromList();
    EXPECT_EQ(choice.name(), L"Gevel");
}

TEST(NameChoice, AnEmptyListHasNoFirstName)
{
    NameChoice choice;
    choice.take(L"dak");
    EXPECT_TRUE(choice.isTyped());
    choice.fromList();
    EXPECT_FALSE(choice.isTyped());
    EXPECT_EQ(choice.chosen(), std::nullopt);
    EXPECT_EQ(choice.name(), L"");
    choice.fromField();
    EXPECT_EQ(choice.name(), L"dak");
}

} // namespace
