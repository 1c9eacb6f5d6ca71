#include "editor/visual_value.h"
#include "host/acdb_database.h"
#include "inifile/visual_words.h"

#include <gtest/gtest.h>

using corma::behindVisualFields;
using corma::colourFromText;
using corma::colourText;
using corma::fieldsOf;
using corma::joinedFields;
using corma::lineweightFromText;
using corma::lineweightText;
using corma::withDecimalPoints;

namespace {

using Fields = std::vector<std::wstring>;

struct FieldsRow
{
    const char* sentence;
    const wchar_t* text;
    std::size_t count;
    Fields fields;
};

void PrintTo(const FieldsRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class FieldsOfText : public ::testing::TestWithParam<FieldsRow>
{
};

TEST_P(FieldsOfText, AreAsManyAsWanted)
{
    EXPECT_EQ(fieldsOf(GetParam().text, GetParam().count), GetParam().fields);
}

// clang-format off
const FieldsRow fieldsRows[] = {
    {"AllOfThem", L"a,b,c", 3, {L"a", L"b", L"c"}},
    {"NoMoreThanWanted", L"a,b,c", 2, {L"a", L"b"}},
    {"MissingOnesAreEmpty", L"a", 3, {L"a", L"", L""}},
    {"EmptyOnesKeepTheirPlace", L"a,,c", 3, {L"a", L"", L"c"}},
    {"EmptyOnesAtBothEnds", L",b,", 3, {L"", L"b", L""}},
    {"OfNothing", L"", 2, {L"", L""}},
    {"BlanksStay", L" a , b", 2, {L" a ", L" b"}},
    {"NoneAreWanted", L"a,b", 0, {}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Editor, FieldsOfText, ::testing::ValuesIn(fieldsRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

struct BehindRow
{
    const char* sentence;
    const wchar_t* text;
    const wchar_t* behind;
};

void PrintTo(const BehindRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class BehindVisualFields : public ::testing::TestWithParam<BehindRow>
{
};

TEST_P(BehindVisualFields, StandTheOwnOnes)
{
    EXPECT_EQ(behindVisualFields(GetParam().text), GetParam().behind);
}

// A search that finds no separator goes on from the beginning, so the separators are counted round.
// clang-format off
const BehindRow behindRows[] = {
    {"AWholeText", L"a,b,c,d,e,f", L"e,f"},
    {"FourSeparatorsAndNothing", L"a,b,c,d,", L""},
    {"EmptyFields", L",,,,e", L"e"},
    {"ThreeSeparators", L"a,b,c,d", L"a,b,c,d"},
    {"TwoSeparators", L"a,b,c", L"b,c"},
    {"OneSeparator", L"a,b", L"a,b"},
    {"NoSeparator", L"a", L"a"},
    {"Nothing", L"", L""},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Editor, BehindVisualFields, ::testing::ValuesIn(behindRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST(VisualValue, FieldsAreJoinedWithCommas)
{
    EXPECT_EQ(joinedFields({L"a", L"", L"c"}), L"a,,c");
    EXPECT_EQ(joinedFields({L"a"}), L"a");
    EXPECT_EQ(joinedFields({L"", L""}), L",");
    EXPECT_EQ(joinedFields({}), L"");
}

TEST(VisualValue, EveryCommaOfANumberBecomesAPoint)
{
    EXPECT_EQ(withDecimalPoints(L"2,5"), L"2.5");
    EXPECT_EQ(withDecimalPoints(L"2.5"), L"2.5");
    EXPECT_EQ(withDecimalPoints(L",1,000,"), L".1.000.");
    EXPECT_EQ(withDecimalPoints(L"high, wide"), L"high. wide");
    EXPECT_EQ(withDecimalPoints(L""), L"");
}

TEST(VisualValue, AColourIsAWordOrItsNumber)
{
    EXPECT_EQ(colourText(256), L"ByLayer");
    EXPECT_EQ(colourText(0), L"ByBlock");
    EXPECT_EQ(colourText(1), L"1");
    EXPECT_EQ(colourText(255), L"255");
    EXPECT_EQ(colourText(257), L"257");
    EXPECT_EQ(colourText(-1), L"-1");
}

TEST(VisualValue, ALineweightIsAWordOrItsMillimetres)
{
    EXPECT_EQ(lineweightText(AcDb::kLnWtByLayer), L"ByLayer");
    EXPECT_EQ(lineweightText(AcDb::kLnWtByBlock), L"ByBlock");
    EXPECT_EQ(lineweightText(AcDb::kLnWtByLwDefault), L"Default");
    EXPECT_EQ(lineweightText(0), L"0.00");
    EXPECT_EQ(lineweightText(5), L"0.05");
    EXPECT_EQ(lineweightText(25), L"0.25");
    EXPECT_EQ(lineweightText(100), L"1.00");
    EXPECT_EQ(lineweightText(211), L"2.11");
}

TEST(VisualValue, EveryColourIsReadAsItIsWritten)
{
    for (int colour = 0; colour <= 256; ++colour) {
        EXPECT_EQ(colourFromText(colourText(colour)), colour);
    }
}

TEST(VisualValue, EveryLegalLineweightIsReadAsItIsWritten)
{
    int legal = 0;
    for (int weight = AcDb::kLnWtByLwDefault; weight <= AcDb::kLnWt211; ++weight) {
        if (AcDbDatabase::getNearestLineWeight(weight) == weight) {
            EXPECT_EQ(lineweightFromText(lineweightText(weight)), weight);
            ++legal;
        }
    }
    EXPECT_EQ(legal, 27);
}

} // namespace
