#include "platform/text.h"
#include "settings/texts.h"
#include "support/RecordingServices.h"

#include <climits>
#include <gtest/gtest.h>

using corma::testing::RecordingServices;

namespace corma {

namespace {

TEST(TextOf, IsThatOfTheLanguage)
{
    EXPECT_STREQ(textOf(2981, 9), L"Linetype");
    EXPECT_STREQ(textOf(2981, 10), L"Tipo de línea");
    EXPECT_STREQ(textOf(2981, 12), L"Type de ligne");
    EXPECT_STREQ(textOf(2981, 19), L"Lijntype");
    EXPECT_STREQ(textOf(2981, 21), L"Rodzaj linii");
    EXPECT_STREQ(textOf(2981, 25), L"Тип линий");
}

TEST(TextOf, IsFoundForTheFirstAndTheLastRow)
{
    EXPECT_STREQ(textOf(101, kEnglish), L"&About CfgDeskExe...");
    EXPECT_STREQ(textOf(8566, kEnglish), L"Stop Search");
}

TEST(TextOf, IsEnglishInGermanAndInLanguagesWithoutAColumn)
{
    for (const int language : {7, 0, 1, 8, 11, 24, 26, -9, 0x409, 0x413, INT_MAX, INT_MIN}) {
        EXPECT_STREQ(textOf(2972, language), L"General") << language;
    }
}

TEST(TextOf, IsEnglishWhereNothingIsTranslated)
{
    for (const int language : {7, 10, 12, 19, 21, 25}) {
        EXPECT_STREQ(textOf(102, language), L"check") << language;
    }
}

TEST(TextOf, IsEmptyForARowThatIsNotThere)
{
    for (const int row : {0, -1, 100, 103, 2963, 3001, 3058, 8565, 8567, INT_MAX, INT_MIN}) {
        EXPECT_STREQ(textOf(row, 19), L"") << row;
    }
}

TEST(TextOf, StaysWhereItIs)
{
    const RecordingServices services;
    const wchar_t* const before = textOf(2972, 19);
    setTextLanguage(19);
    EXPECT_EQ(textOf(2972, 19), before);
}

TEST(TextRows, AreAllRowsInRisingOrder)
{
    const std::vector<int> rows = textRows();
    EXPECT_EQ(rows.size(), 93U);
    EXPECT_EQ(rows.front(), 101);
    EXPECT_EQ(rows.back(), 8566);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));
}

TEST(TextLanguage, IsEnglishUntilItIsSet)
{
    const RecordingServices services;
    EXPECT_EQ(textLanguage(), kEnglish);
    EXPECT_EQ(text(row::kGeneral), L"General");
    setTextLanguage(19);
    EXPECT_EQ(textLanguage(), 19);
    EXPECT_EQ(text(row::kGeneral), L"Algemeen");
}

TEST(TextLanguage, WithoutTextsIsKeptAsItIs)
{
    const RecordingServices services;
    setTextLanguage(7);
    EXPECT_EQ(textLanguage(), 7);
    EXPECT_EQ(text(row::kGeneral), L"General");
    setTextLanguage(-1);
    EXPECT_EQ(textLanguage(), -1);
    EXPECT_EQ(text(row::kGeneral), L"General");
}

struct Named
{
    int row;
    const wchar_t* text;
};

class NamedRow : public ::testing::TestWithParam<Named>
{
};

TEST_P(NamedRow, SaysWhatItsNameSays)
{
    EXPECT_STREQ(textOf(GetParam().row, kEnglish), GetParam().text);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, NamedRow, ::testing::Values(
    Named {row::kGeneral,         L"General"},
    Named {row::kString,          L"String"},
    Named {row::kYesNo,           L"Yes/No"},
    Named {row::kInteger,         L"Integer"},
    Named {row::kDecimal,         L"Decimal"},
    Named {row::kColour,          L"Colour"},
    Named {row::kLinetype,        L"Linetype"},
    Named {row::kFile,            L"File"},
    Named {row::kCopyOfGlobal,    L"Copy of Global"},
    Named {row::kProjectSetting,  L"Project Setting"},
    Named {row::kCopyOfProject,   L"Copy of Project"},
    Named {row::kDoubleCopy,      L"Double Copy"},
    Named {row::kLocalSetting,    L"Local Setting"},
    Named {row::kGlobalSetting,   L"Global Setting"},
    Named {row::kFileNotFound,    L"Ini-file not found: "},
    Named {row::kLineSkipped,     L"Line was skipped! Expected"},
    Named {row::kYes,             L"Yes"},
    Named {row::kNo,              L"No"},
    Named {row::kGeneralSettings, L"General settings"},
    Named {row::kVisualisation,   L"Visualisation"},
    Named {row::kObsolete,        L"Obsolete"},
    Named {row::kTextStyle,       L"Textstyle"},
    Named {row::kHatch,           L"Hatch"},
    Named {row::kAngleOutOfRange, L"The degrees of the angle must lie between 0° and 360°"},
    Named {row::kScaleNegative,   L"The scale must be positif"},
    Named {row::kOption,          L"Option"}));

// clang-format on

} // namespace

} // namespace corma
