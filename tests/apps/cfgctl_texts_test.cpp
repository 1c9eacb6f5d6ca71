// cfgctl: the texts of the editor.

#include "CfgctlTest.h"
#include "support/row_names.h"

namespace corma::testing {

namespace {

struct TextsRow
{
    const char* sentence;
    Words arguments;
    const char* out;
};

class CfgctlTexts : public CfgctlTest, public ::testing::WithParamInterface<TextsRow>
{
};

TEST_P(CfgctlTexts, ArePrinted)
{
    const ProgramResult result = run(GetParam().arguments);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, GetParam().out);
    EXPECT_EQ(result.err, "");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Texts, CfgctlTexts, ::testing::Values(
    TextsRow {"AreEnglishUnlessTold",        {"texts", "2972"}, "2972\tGeneral\n"},
    TextsRow {"AreThoseOfTheLanguage",       {"texts", "2972", "--language", "19"}, "2972\tAlgemeen\n"},
    TextsRow {"AreUtf8",                     {"texts", "3013", "--language", "25"}, "3013\tСтепень растяжения\n"},
    TextsRow {"AreEnglishForAnUnknownLanguage", {"texts", "2972", "--language", "8"}, "2972\tGeneral\n"},
    TextsRow {"AreEnglishInGerman",          {"texts", "2972", "--language", "7"}, "2972\tGeneral\n"},
    TextsRow {"AreEnglishInANegativeLanguage", {"texts", "2972", "--language=-1"}, "2972\tGeneral\n"},
    TextsRow {"ComeInTheOrderOfTheArguments", {"texts", "2996", "2995", "2996"}, "2996\tNo\n2995\tYes\n2996\tNo\n"},
    TextsRow {"KeepTheirBlanks",             {"texts", "2992"}, "2992\tIni-file not found: \n"},
    TextsRow {"ShowLineEndsAsEscapes",       {"texts", "3003"}, "3003\tSetting was not written. \\nCheck if ini-file is present and \\nif the file is not read-only\n"},
    TextsRow {"AreEmptyForARowThatIsNotThere", {"texts", "3001"}, "3001\t\n"},
    TextsRow {"AreEmptyForANegativeRow",     {"texts", "--", "-1"}, "-1\t\n"},
    TextsRow {"ComeForTheHighestAccessLevel", {"texts", "2972", "--access", "32767"}, "2972\tGeneral\n"},
    TextsRow {"ComeForTheLowestAccessLevel", {"texts", "2972", "--access=-32768"}, "2972\tGeneral\n"},
    TextsRow {"AreADocument",                {"texts", "2995", "2996", "--language", "12", "--json"}, "{\"2995\":\"Oui\",\"2996\":\"Non\"}\n"},
    TextsRow {"OfADocumentComeOnceEach",     {"texts", "2996", "2995", "2996", "--json"}, "{\"2996\":\"No\",\"2995\":\"Yes\"}\n"},
    TextsRow {"OfADocumentKeepTheirLineEnds", {"texts", "3003", "--json"}, "{\"3003\":\"Setting was not written. \\nCheck if ini-file is present and \\nif the file is not read-only\"}\n"},
    TextsRow {"OfADocumentAreEmptyForARowThatIsNotThere", {"texts", "3001", "--json"}, "{\"3001\":\"\"}\n"}),
    sentenceOf);

// clang-format on

class CfgctlAllTexts : public CfgctlTest
{
};

TEST_F(CfgctlAllTexts, ComeWhenNoRowIsNamed)
{
    const Json document = Json::parse(json({"texts", "--language", "19"}));
    EXPECT_EQ(document.size(), 93U);
    EXPECT_EQ(document.items().begin().key(), "101");
    EXPECT_EQ(document.value("2981", ""), "Lijntype");
    EXPECT_EQ(document.value("8566", ""), "Zoeken stoppen");
    const std::string out = run({"texts", "--language", "19"}).out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 93);
}

} // namespace

} // namespace corma::testing
