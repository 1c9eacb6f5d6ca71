#include "settings/Instelling.h"
#include "settings/texts.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace corma {
namespace {

constexpr const wchar_t* kAngle
    = L"The degrees of the angle must lie between 0\u00B0 and 360\u00B0";
constexpr const wchar_t* kScale = L"The scale must be positif";

struct ValueCase
{
    const char* name;
    int label;
    const wchar_t* value;
    bool isAccepted;
    const wchar_t* result;
    std::vector<std::wstring> told = {};
};

class ValidateValue : public ::testing::TestWithParam<ValueCase>
{
};

TEST_P(ValidateValue, KeepsWhatATypeAllows)
{
    const testing::RecordingServices services;
    const ValueCase& row = GetParam();
    std::wstring value = row.value;
    EXPECT_EQ(Instelling::validateValue(value, text(row.label)), row.isAccepted);
    EXPECT_EQ(value, row.result);
    EXPECT_EQ(services.boxes, row.told);
}

// The rule follows the label, which is in the language of the texts.
TEST_P(ValidateValue, DoesSoInEachLanguage)
{
    const testing::RecordingServices services;
    const ValueCase& row = GetParam();
    for (const int language : {7, 10, 12, 19, 21, 25}) {
        setTextLanguage(language);
        std::wstring value = row.value;
        EXPECT_EQ(Instelling::validateValue(value, text(row.label)), row.isAccepted) << language;
        EXPECT_EQ(value, row.result) << language;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, ValidateValue,
    ::testing::Values(
        ValueCase {"AnInteger", row::kInteger, L"120", true, L"120"},
        ValueCase {"AnEmptyInteger", row::kInteger, L"", true, L""},
        ValueCase {"ALoneMinusIsAnInteger", row::kInteger, L"-", true, L"-"},
        ValueCase {"AMinusBetweenDigitsStays", row::kInteger, L"1-2--3", true, L"1-2--3"},
        ValueCase {"AnIntegerLosesALetter", row::kInteger, L"12a", false, L"12"},
        ValueCase {"AnIntegerLosesItsCommaAndClosesUp", row::kInteger, L"1,5", false, L"15"},
        ValueCase {"AnIntegerLosesItsPoint", row::kInteger, L"1.5", false, L"15"},
        ValueCase {"AnIntegerLosesBlanksAndPlus", row::kInteger, L" +7 ", false, L"7"},
        ValueCase {"AnIntegerOfOtherDigitsIsNone", row::kInteger, L"\u0661\u0662", false, L""},
        ValueCase {"ADecimal", row::kDecimal, L"-2.5", true, L"-2.5"},
        ValueCase {"AnEmptyDecimal", row::kDecimal, L"", true, L""},
        ValueCase {"ALoneMinusIsADecimal", row::kDecimal, L"-", true, L"-"},
        ValueCase {"ADecimalCommaBecomesAPoint", row::kDecimal, L"2,5", true, L"2.5"},
        ValueCase {"MorePointsPass", row::kDecimal, L"1.2,3.4", true, L"1.2.3.4"},
        ValueCase {"ADecimalLosesAnExponent", row::kDecimal, L"1e5", false, L"15"}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    YesNo, ValidateValue,
    ::testing::Values(ValueCase {"One", row::kYesNo, L"1", true, L"1"},
                      ValueCase {"Zero", row::kYesNo, L"0", true, L"0"},
                      ValueCase {"EmptyBecomesZero", row::kYesNo, L"", false, L"0"},
                      ValueCase {"AWordBecomesZero", row::kYesNo, L"Yes", false, L"0"},
                      ValueCase {"ElevenBecomesZero", row::kYesNo, L"11", false, L"0"}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    OtherTypes, ValidateValue,
    ::testing::Values(ValueCase {"AString", row::kString, L"a b,c", true, L"a b,c"},
                      ValueCase {"AColour", row::kColour, L"red", true, L"red"},
                      ValueCase {"AnOption", row::kOption, L"", true, L""},
                      ValueCase {"NoTypeAtAll", row::kYes, L"x", true, L"x"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ValidateValueOfAHatch, EmptyPasses)
{
    const testing::RecordingServices services;
    std::wstring value;
    EXPECT_TRUE(Instelling::validateValue(value, text(row::kHatch)));
    EXPECT_EQ(value, L"");
    EXPECT_TRUE(services.boxes.empty());
}

TEST(ValidateValueOfAHatch, TellsInTheLanguageOfTheTexts)
{
    const testing::RecordingServices services;
    setTextLanguage(19);
    std::wstring value = L"laag,1,CONTINUOUS,0.13,ANSI31,400,-1";
    EXPECT_FALSE(Instelling::validateValue(value, text(row::kHatch)));
    EXPECT_EQ(services.boxes, (std::vector<std::wstring> {textOf(3026, 19), textOf(3027, 19)}));
    EXPECT_NE(services.boxes.front(), kAngle);
}

// The angle is the sixth field of a record, the scale the seventh.
INSTANTIATE_TEST_SUITE_P(
    Hatches, ValidateValue,
    ::testing::Values(
        ValueCase {"InOrder", row::kHatch, L"laag,1,CONT,0.13,ANSI31,45,2", true,
                   L"laag,1,CONT,0.13,ANSI31,45,2"},
        ValueCase {
            "AngleBelowZero", row::kHatch, L"l,1,C,0,A,-1,1", false, L"l,1,C,0,A,-1,1", {kAngle}},
        ValueCase {"AngleZero", row::kHatch, L"l,1,C,0,A,0,1", true, L"l,1,C,0,A,0,1"},
        ValueCase {"Angle360", row::kHatch, L"l,1,C,0,A,360,1", true, L"l,1,C,0,A,360,1"},
        ValueCase {
            "Angle361", row::kHatch, L"l,1,C,0,A,361,1", false, L"l,1,C,0,A,361,1", {kAngle}},
        ValueCase {
            "Angle400Scale1", row::kHatch, L"l,1,C,0,A,400,1", false, L"l,1,C,0,A,400,1", {kAngle}},
        ValueCase {"Angle10ScaleMinus1",
                   row::kHatch,
                   L"l,1,C,0,A,10,-1",
                   false,
                   L"l,1,C,0,A,10,-1",
                   {kScale}},
        ValueCase {"ScaleZero", row::kHatch, L"l,1,C,0,A,10,0", true, L"l,1,C,0,A,10,0"},
        ValueCase {"BothWrongEmptyTheValue",
                   row::kHatch,
                   L"l,1,C,0,A,400,-1",
                   false,
                   L"",
                   {kAngle, kScale}},
        ValueCase {"WordsAreZero", row::kHatch, L"l,1,C,0,A,schuin,groot", true,
                   L"l,1,C,0,A,schuin,groot"},
        ValueCase {"AFractionIsCut", row::kHatch, L"l,1,C,0,A,360.9,0.5", true,
                   L"l,1,C,0,A,360.9,0.5"},
        ValueCase {"SeveralCommasAreOne",
                   row::kHatch,
                   L"l,1,C,0,A,,10,,-1",
                   false,
                   L"l,1,C,0,A,,10,,-1",
                   {kScale}},
        ValueCase {"NoScale", row::kHatch, L"l,1,C,0,A,45", true, L"l,1,C,0,A,45"}),
    [](const auto& test) { return std::string(test.param.name); });

// With fewer than five commas the walk starts over at the beginning and ends on some other field.
INSTANTIATE_TEST_SUITE_P(
    HatchOfFewFields, ValidateValue,
    ::testing::Values(
        ValueCase {"NoComma", row::kHatch, L"500", false, L"500", {kAngle}},
        ValueCase {"OneCommaLandsBehindIt", row::kHatch, L"1,500", false, L"1,500", {kAngle}},
        ValueCase {
            "TwoCommasLandBehindTheSecond", row::kHatch, L"1,2,500", false, L"1,2,500", {kAngle}},
        ValueCase {"ThreeCommasLandBehindTheFirst",
                   row::kHatch,
                   L"1,500,2,3",
                   false,
                   L"1,500,2,3",
                   {kAngle}},
        ValueCase {"FourCommasLandAtTheBeginning",
                   row::kHatch,
                   L"500,-1,2,3,4",
                   false,
                   L"",
                   {kAngle, kScale}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ValidateValueOfAHatch, AHatchOfFewFieldsIsReadFromItsBeginning)
{
    const testing::RecordingServices services;
    std::wstring value = L"-5,a,b,c,d";
    EXPECT_FALSE(Instelling::validateValue(value, text(row::kHatch)));
    EXPECT_EQ(services.boxes, std::vector<std::wstring> {kAngle});
}

} // namespace
} // namespace corma
