#include "support/RecordingServices.h"
#include <corma/xx_Var.h>

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace {

using corma::testing::RecordingServices;
using Messages = std::vector<std::wstring>;

/// The elements in order as "name=text", a number as "name", a nameless one as "-".
std::wstring listing(const xx_VarArray& array)
{
    std::wstring result;
    for (int i = 0; i < array.length(); ++i) {
        const wchar_t* const name = xx_Var::name(array[i]);
        const wchar_t* const text = array[i]->currentText();
        result.append(i == 0 ? L"" : L" ").append(name != nullptr ? name : L"-");
        result.append(text != nullptr ? std::wstring(L"=") + text : L"");
    }
    return result;
}

xx_Var* newText(const wchar_t* name, const wchar_t* value)
{
    return new xx_Var(name, value);
}

/// Fills an array with texts of those names, numbered from 1.
void fill(xx_VarArray& array, std::initializer_list<const wchar_t*> names)
{
    int number = 0;
    for (const wchar_t* const name : names) {
        array.append(newText(name, std::to_wstring(++number).c_str()));
    }
}

// --- elements ------------------------------------------------------------------------------------

TEST(xx_VarArray, ANewArrayIsEmptyAndHasNoSlots)
{
    const xx_VarArray array;
    EXPECT_EQ(array.length(), 0);
    EXPECT_EQ(array.physicalLength(), 0);
    EXPECT_EQ(array.at(0), nullptr);
}

TEST(xx_VarArray, ElementsAreReadByIndex)
{
    xx_VarArray array;
    xx_Var* const first = newText(L"A", L"1");
    xx_Var* const second = new xx_Var(L"B", 2.5);
    array.append(first);
    array.append(second);
    EXPECT_EQ(array.length(), 2);
    EXPECT_EQ(array[0], first);
    EXPECT_EQ(array[1], second);
    EXPECT_EQ(array.at(1), second);
    EXPECT_EQ(array.at(2), nullptr);
    EXPECT_EQ(array.at(-1), nullptr);
}

TEST(xx_VarArray, AppendDoesNotLookAtTheName)
{
    xx_VarArray array;
    fill(array, {L"A", L"a", L"A"});
    EXPECT_EQ(listing(array), L"A=1 a=2 A=3");
}

TEST(xx_VarArray, ANullRecordIsIgnored)
{
    xx_VarArray array;
    fill(array, {L"A", nullptr});
    array.append(nullptr);
    array.setOwned(nullptr);
    array.insertAt(0, nullptr);
    EXPECT_EQ(listing(array), L"A=1 -=2");
}

struct InsertRow
{
    const char* sentence;
    int index;
    const wchar_t* result;
};

class Insert : public testing::TestWithParam<InsertRow>
{
};

TEST_P(Insert, ShiftsTheLaterElements)
{
    xx_VarArray array;
    fill(array, {L"A", L"B", L"C"});
    array.insertAt(GetParam().index, newText(L"N", L"0"));
    EXPECT_EQ(listing(array), GetParam().result);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(xx_VarArray, Insert, testing::Values(
    InsertRow {"AtTheFront",         0, L"N=0 A=1 B=2 C=3"},
    InsertRow {"InBetween",          2, L"A=1 B=2 N=0 C=3"},
    InsertRow {"AtTheEnd",           3, L"A=1 B=2 C=3 N=0"},
    InsertRow {"FarBehindTheEnd",   99, L"A=1 B=2 C=3 N=0"},
    InsertRow {"AtANegativeIndex",  -1, L"A=1 B=2 C=3 N=0"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST(xx_VarArray, AnInsertionIntoFullSlotsGrowsThem)
{
    xx_VarArray array;
    fill(array, {L"A", L"B", L"C", L"D", L"E", L"F", L"G", L"H"});
    ASSERT_EQ(array.physicalLength(), 8);
    array.insertAt(7, newText(L"N", L"0"));
    EXPECT_EQ(listing(array), L"A=1 B=2 C=3 D=4 E=5 F=6 G=7 N=0 H=8");
    EXPECT_EQ(array.physicalLength(), 16);
}

// --- growth --------------------------------------------------------------------------------------

TEST(xx_VarArray, TheSlotsDoubleUntil8192AndThenGrowBy8192)
{
    xx_VarArray array;
    std::vector<int> lengths;
    while (array.length() <= 24576) {
        array.append(new xx_Var());
        if (lengths.empty() || lengths.back() != array.physicalLength()) {
            EXPECT_EQ(array.length() - 1, lengths.empty() ? 0 : lengths.back());
            lengths.push_back(array.physicalLength());
        }
    }
    const std::vector<int> expected {8,    16,   32,   64,   128,   256,   512,
                                     1024, 2048, 4096, 8192, 16384, 24576, 32768};
    EXPECT_EQ(lengths, expected);
}

TEST(xx_VarArray, ElementsKeepTheirPlacesWhenTheSlotsGrow)
{
    xx_VarArray array;
    std::vector<const xx_Var*> elements;
    for (int i = 0; i < 100; ++i) {
        auto* const element = new xx_Var(L"N", i);
        elements.push_back(element);
        array.append(element);
    }
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(array[i], elements[static_cast<std::size_t>(i)]);
        EXPECT_EQ(array[i]->values[0].rlong, i);
    }
}

// --- clear ---------------------------------------------------------------------------------------

TEST(xx_VarArray, ClearKeepsTheSlots)
{
    xx_VarArray array;
    fill(array, {L"A", L"B"});
    array.clear();
    EXPECT_EQ(array.length(), 0);
    EXPECT_EQ(array.physicalLength(), 8);
    EXPECT_EQ(array.at(0), nullptr);
    fill(array, {L"C"});
    EXPECT_EQ(listing(array), L"C=1");
}

// --- find ----------------------------------------------------------------------------------------

struct FindRow
{
    const char* sentence;
    const wchar_t* name;
    int index; // -1: not found
};

class Find : public testing::TestWithParam<FindRow>
{
};

TEST_P(Find, GivesTheFirstOfThatName)
{
    RecordingServices services;
    xx_VarArray array;
    fill(array, {L"NAME", L"Twee", L"twee", nullptr, L""});
    EXPECT_EQ(array.find(GetParam().name, false), array.at(GetParam().index));
    EXPECT_EQ(services.printed, Messages {});
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(xx_VarArray, Find, testing::Values(
    FindRow {"SpelledTheSame",          L"NAME",   0},
    FindRow {"InOtherCase",             L"name",   0},
    FindRow {"TwiceThere",              L"TWEE",   1},
    FindRow {"Absent",                  L"Drie",  -1},
    FindRow {"OnlyTheBeginningOfAName", L"NAM",   -1},
    FindRow {"LongerThanAName",         L"NAMES", -1},
    FindRow {"Null",                    nullptr,   3},
    FindRow {"Empty",                   L"",       4}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST(xx_VarArray, FindTellsTheUserWhatIsMissing)
{
    RecordingServices services;
    xx_VarArray array;
    fill(array, {L"A"});
    EXPECT_EQ(array.find(L"Hoogte", true), nullptr);
    EXPECT_EQ(services.printed, (Messages {L"\n", L"\nGeen Hoogte gevonden"}));
    EXPECT_EQ(services.alerts, Messages {});
}

TEST(xx_VarArray, APercentSignInAMissingNameIsShownAsADollarSign)
{
    RecordingServices services;
    EXPECT_EQ(xx_VarArray().find(L"100%s", true), nullptr);
    EXPECT_EQ(services.printed, (Messages {L"\n", L"\nGeen 100$s gevonden"}));
}

TEST(xx_VarArray, AMissingNullNameIsShownAsNothing)
{
    RecordingServices services;
    EXPECT_EQ(xx_VarArray().find(nullptr, true), nullptr);
    EXPECT_EQ(services.printed, (Messages {L"\n", L"\nGeen  gevonden"}));
}

TEST(xx_VarArray, FindTellsNothingWhenItFinds)
{
    RecordingServices services;
    xx_VarArray array;
    fill(array, {L"A"});
    EXPECT_EQ(array.find(L"a", true), array[0]);
    EXPECT_EQ(services.printed, Messages {});
}

// --- remove --------------------------------------------------------------------------------------

struct RemoveRow
{
    const char* sentence;
    const wchar_t* name;
    int status;
    const wchar_t* result;
};

class Remove : public testing::TestWithParam<RemoveRow>
{
};

TEST_P(Remove, ClosesTheGap)
{
    xx_VarArray array;
    fill(array, {L"A", L"B", L"C", L"b"});
    EXPECT_EQ(array.remove(GetParam().name), GetParam().status);
    EXPECT_EQ(listing(array), GetParam().result);
    EXPECT_EQ(array.physicalLength(), 8);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(xx_VarArray, Remove, testing::Values(
    RemoveRow {"OfTheFirst",            L"A",    RTNORM, L"B=2 C=3 b=4"},
    RemoveRow {"OfTheFirstOfTwo",       L"B",    RTNORM, L"A=1 C=3 b=4"},
    RemoveRow {"OfANameInOtherCase",    L"c",    RTNORM, L"A=1 B=2 b=4"},
    RemoveRow {"OfAnUnknownNameIsRefused", L"D", RTCAN,  L"A=1 B=2 C=3 b=4"},
    RemoveRow {"OfNullIsRefused",       nullptr, RTCAN,  L"A=1 B=2 C=3 b=4"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST(xx_VarArray, RemovingTheOnlyElementEmptiesTheArray)
{
    xx_VarArray array;
    fill(array, {L"A"});
    EXPECT_EQ(array.remove(L"A"), 5100);
    EXPECT_EQ(array.length(), 0);
    EXPECT_EQ(array.remove(L"A"), -5002);
}

// --- setCopy and setOwned ------------------------------------------------------------------------

TEST(xx_VarArray, SetCopyKeepsThePlaceAndTakesOverTheSpelling)
{
    xx_VarArray array;
    fill(array, {L"A", L"B", L"C"});
    const xx_Var* const second = array[1];
    array.setCopy(xx_Var(L"b", L"nieuw"));
    EXPECT_EQ(listing(array), L"A=1 b=nieuw C=3");
    EXPECT_EQ(array[1], second);
}

TEST(xx_VarArray, SetCopyAppendsAnUnknownName)
{
    xx_VarArray array;
    fill(array, {L"A"});
    array.setCopy(xx_Var(L"B", L"nieuw"));
    EXPECT_EQ(listing(array), L"A=1 B=nieuw");
}

TEST(xx_VarArray, SetCopyOfARecordThatStaysKeepsThePlaceToo)
{
    xx_VarArray array;
    fill(array, {L"A", L"B", L"C"});
    const xx_Var record(L"b", L"nieuw");
    array.setCopy(record);
    EXPECT_EQ(listing(array), L"A=1 b=nieuw C=3");
    EXPECT_STREQ(record.currentText(), L"nieuw");
}

TEST(xx_VarArray, SetCopyTakesARecordOverThatIsGivenUp)
{
    xx_VarArray array;
    fill(array, {L"A"});
    xx_Var known(L"A", L"nieuw");
    xx_Var unknown(L"B", L"anders");
    const wchar_t* const texts[] = {known.currentText(), unknown.currentText()};
    array.setCopy(std::move(known));
    array.setCopy(std::move(unknown));
    EXPECT_EQ(listing(array), L"A=nieuw B=anders");
    EXPECT_EQ(array[0]->currentText(), texts[0]);
    EXPECT_EQ(array[1]->currentText(), texts[1]);
}

TEST(xx_VarArray, SetCopyLeavesTheRecordToItsCaller)
{
    RecordingServices services;
    xx_VarArray array;
    xx_Var record(L"A", L"tekst");
    array.setCopy(record);
    array.clear();
    EXPECT_STREQ(record.currentText(), L"tekst");
    EXPECT_EQ(services.printed, Messages {});
}

TEST(xx_VarArray, SetCopyOfItsOwnElementChangesNothing)
{
    xx_VarArray array;
    fill(array, {L"A", L"B"});
    array.setCopy(*array[1]);
    EXPECT_EQ(listing(array), L"A=1 B=2");
}

TEST(xx_VarArray, SetCopyMayChangeTheType)
{
    xx_VarArray array;
    fill(array, {L"A", L"B"});
    array.setCopy(xx_Var(L"A", 2.5));
    ASSERT_EQ(array.length(), 2);
    EXPECT_EQ(array[0]->type, RTREAL);
    EXPECT_EQ(array[0]->values[0].rreal, 2.5);
}

TEST(xx_VarArray, SetOwnedMovesTheNameToTheEnd)
{
    xx_VarArray array;
    fill(array, {L"A", L"B", L"C"});
    xx_Var* const record = newText(L"b", L"nieuw");
    array.setOwned(record);
    EXPECT_EQ(listing(array), L"A=1 C=3 b=nieuw");
    EXPECT_EQ(array[2], record);
}

TEST(xx_VarArray, SetOwnedAppendsAnUnknownName)
{
    xx_VarArray array;
    fill(array, {L"A"});
    array.setOwned(newText(L"B", L"nieuw"));
    EXPECT_EQ(listing(array), L"A=1 B=nieuw");
}

TEST(xx_VarArray, SetOwnedOfItsOwnElementMovesIt)
{
    xx_VarArray array;
    fill(array, {L"A", L"B"});
    array.setOwned(array[0]);
    EXPECT_EQ(listing(array), L"B=2 A=1");
}

// --- assignment ----------------------------------------------------------------------------------

TEST(xx_VarArray, AssignmentCopiesTheElementsDeeply)
{
    xx_VarArray source;
    fill(source, {L"A", L"B"});
    source[1]->cursor = 0;
    xx_VarArray target;
    fill(target, {L"X", L"Y", L"Z"});
    target = source;
    EXPECT_EQ(listing(target), L"A=1 B=2");
    EXPECT_NE(target[0], source[0]);
    source.clear();
    EXPECT_EQ(listing(target), L"A=1 B=2");
}

TEST(xx_VarArray, ACopiedArrayHasItsOwnElements)
{
    xx_VarArray source;
    fill(source, {L"A", L"B"});
    const xx_VarArray copy(source);
    source.clear();
    EXPECT_EQ(listing(copy), L"A=1 B=2");
}

TEST(xx_VarArray, AssigningAnArrayToItselfChangesNothing)
{
    xx_VarArray array;
    fill(array, {L"A", L"B"});
    const xx_Var* const first = array[0];
    const xx_VarArray& same = array;
    array = same;
    EXPECT_EQ(listing(array), L"A=1 B=2");
    EXPECT_EQ(array[0], first);
}

TEST(xx_VarArray, AssigningAnEmptyArrayClearsTheTarget)
{
    xx_VarArray array;
    fill(array, {L"A", L"B"});
    array = xx_VarArray();
    EXPECT_EQ(array.length(), 0);
    EXPECT_EQ(array.physicalLength(), 8);
}

} // namespace
