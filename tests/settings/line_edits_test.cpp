#include "foundation/decoded_text.h"
#include "settings/line_edits.h"
#include "settings/reference_edits.h"
#include "support/random_choice.h"
#include "support/row_names.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

using corma::Adding;
using corma::SettingLine;
using corma::TextEdit;
using corma::testing::oneOf;
using corma::testing::Random;
using corma::testing::sentenceOf;

namespace {

std::string applied(const TextEdit& edit, std::string_view text)
{
    std::string result;
    for (const std::string_view piece : edit.appliedTo(text)) {
        result += piece;
    }
    return result;
}

std::string written(std::string_view text, std::string_view lineEnd, const SettingLine& setting,
                    Adding adding)
{
    return applied(corma::editToWrite(text, lineEnd, setting, adding), text);
}

// --- writing -------------------------------------------------------------------------------------

struct WriteRow
{
    const char* sentence;
    std::string text;
    SettingLine setting;
    std::string expected;
    Adding adding = Adding::yes;
    const char* lineEnd = "\n";
};

void PrintTo(const WriteRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class Writing : public ::testing::TestWithParam<WriteRow>
{
};

TEST_P(Writing, GivesThisText)
{
    const auto& [sentence, text, setting, expected, adding, lineEnd] = GetParam();
    EXPECT_EQ(written(text, lineEnd, setting, adding), expected);
    EXPECT_EQ(corma::testing::plainlyWritten(text, lineEnd, setting, adding), expected);
}

INSTANTIATE_TEST_SUITE_P(
    ALineThatIsThere, Writing,
    ::testing::Values(
        WriteRow {"IsReplacedInItsPlace", "A=1\n[X]\nB=2\n", {"X", "B", "3"}, "A=1\n[X]\nB=3\n"},
        WriteRow {
            "OfTheHeadIsReplaced", "A=1\n[X]\nA=2\n", {"Algemeen", "A", "3"}, "A=3\n[X]\nA=2\n"},
        WriteRow {"OfAnotherChapterStays",
                  "[X]\nA=1\n[Y]\nA=2\n",
                  {"Y", "A", "3"},
                  "[X]\nA=1\n[Y]\nA=3\n"},
        WriteRow {"OfTheHeadStaysWhenAChapterIsMeant",
                  "A=1\n[X]\nA=2\n",
                  {"X", "A", "3"},
                  "A=1\n[X]\nA=3\n"},
        WriteRow {"IsTheFirstOfSeveral", "[X]\nA=1\nA=2\n", {"X", "A", "3"}, "[X]\nA=3\nA=2\n"},
        WriteRow {"OfALongerIdentIsAnother",
                  "[X]\nKleurRand=1\nKleur=2\n",
                  {"X", "Kleur", "3"},
                  "[X]\nKleurRand=1\nKleur=3\n"},
        WriteRow {"OfAShorterIdentIsAnother",
                  "[X]\nKleur=1\nKleurRand=2\n",
                  {"X", "KleurRand", "3"},
                  "[X]\nKleur=1\nKleurRand=3\n"},
        WriteRow {"HeedsTheCaseOfTheIdent", "[X]\na=1\nA=2\n", {"X", "A", "3"}, "[X]\na=1\nA=3\n"},
        WriteRow {"HeedsTheCaseOfTheChapter",
                  "[x]\nA=1\n[X]\nA=2\n",
                  {"X", "A", "3"},
                  "[x]\nA=1\n[X]\nA=3\n"},
        WriteRow {"MayHaveNoValue", "[X]\nA=\nB=1\n", {"X", "A", "3"}, "[X]\nA=3\nB=1\n"},
        WriteRow {"MayLoseItsValue", "[X]\nA=1\nB=1\n", {"X", "A", ""}, "[X]\nA=\nB=1\n"},
        WriteRow {
            "LosesWhatStandsBehindItsValue", "[X]\nA=1 ; why\n", {"X", "A", "3"}, "[X]\nA=3\n"},
        WriteRow {"MayHaveFurtherEqualsSigns", "[X]\nA=B=1\n", {"X", "A", "B=2"}, "[X]\nA=B=2\n"},
        WriteRow {"OfTheIdentWithAnEqualsSign",
                  "[X]\nA=1\nA=B=1\n",
                  {"X", "A=B", "2"},
                  "[X]\nA=1\nA=B=2\n"},
        WriteRow {"MayHaveNoIdent", "[X]\nA=1\n=2\n", {"X", "", "3"}, "[X]\nA=1\n=3\n"},
        WriteRow {
            "OfTheSameValueChangesNothing", "[X]\nA=1\nB=2\n", {"X", "A", "1"}, "[X]\nA=1\nB=2\n"},
        WriteRow {"InALaterChapterOfTheNameIsNotReached",
                  "[X]\nA=1\n[Y]\n[X]\nB=1\n",
                  {"X", "B", "2"},
                  "[X]\nA=1\nB=2\n[Y]\n[X]\nB=1\n"},
        WriteRow {"OfALaterChapterIsReplacedInTheFirst",
                  "[X]\nA=1\n[X]\nA=2\n",
                  {"X", "A", "3"},
                  "[X]\nA=3\n[X]\nA=2\n"},
        WriteRow {"IsReachedInALaterChapterOfTheNameWhenNoneMayBeAdded",
                  "[X]\nA=1\n[Y]\nB=0\n[X]\nB=1\n",
                  {"X", "B", "2"},
                  "[X]\nA=1\n[Y]\nB=0\n[X]\nB=2\n",
                  Adding::no},
        WriteRow {"IsReplacedWhenNoneMayBeAdded",
                  "A=1\n[X]\nB=2\n",
                  {"X", "B", "3"},
                  "A=1\n[X]\nB=3\n",
                  Adding::no},
        WriteRow {"MayBeTheLastWithoutAnEnd", "[X]\nA=1", {"X", "A", "2"}, "[X]\nA=2\n"},
        WriteRow {"GivesTheLastLineItsEnd", "[X]\nA=1\nB=1", {"X", "A", "2"}, "[X]\nA=2\nB=1\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    ALineThatIsNone, Writing,
    ::testing::Values(
        WriteRow {
            "HasABlankBeforeTheEqualsSign", "[X]\nA = 1\n", {"X", "A", "2"}, "[X]\nA=2\nA = 1\n"},
        WriteRow {"HasABlankBeforeTheIdent",
                  "[X]\n A=1\n[Y]\n",
                  {"X", "A", "2"},
                  "[X]\n A=1\nA=2\n[Y]\n"},
        WriteRow {"HasATabBeforeTheEqualsSign", "A\t=1\n", {"Algemeen", "A", "2"}, "A\t=1\nA=2\n"},
        WriteRow {"IsAComment", "[X]\n;A=1\n[Y]\n", {"X", "A", "2"}, "[X]\n;A=1\nA=2\n[Y]\n"},
        WriteRow {"HasNoEqualsSign", "[X]\nA\n[Y]\n", {"X", "A", "2"}, "[X]\nA\nA=2\n[Y]\n"},
        WriteRow {"StandsBehindALoneCarriageReturn",
                  "[X]\nB=1\rA=1\n[Y]\n",
                  {"X", "A", "2"},
                  "[X]\nB=1\rA=1\nA=2\n[Y]\n"},
        WriteRow {
            "IsWhatAValueHolds", "[X]\nB=A=1\n[Y]\n", {"X", "A", "2"}, "[X]\nB=A=1\nA=2\n[Y]\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    ANewLine, Writing,
    ::testing::Values(
        WriteRow {"OfTheHeadComesBeforeTheFirstHeader",
                  "A=1\n\n[X]\nB=2\n",
                  {"Algemeen", "C", "3"},
                  "A=1\n\nC=3\n[X]\nB=2\n"},
        WriteRow {"OfTheHeadComesBeforeAHeaderAtTheTop",
                  "[X]\nB=2\n",
                  {"Algemeen", "C", "3"},
                  "C=3\n[X]\nB=2\n"},
        WriteRow {"OfTheHeadComesBehindTheFirstLineOfAFileWithoutHeaders",
                  "A=1\nB=2\n",
                  {"Algemeen", "C", "3"},
                  "A=1\nC=3\nB=2\n"},
        WriteRow {"OfTheHeadComesBehindAFirstLineThatIsAComment",
                  ";all\nB=2\n",
                  {"Algemeen", "C", "3"},
                  ";all\nC=3\nB=2\n"},
        WriteRow {"OfTheHeadComesBehindAFirstLineThatIsBlank",
                  "\nB=2\n",
                  {"Algemeen", "C", "3"},
                  "\nC=3\nB=2\n"},
        WriteRow {"OfTheHeadComesBehindAnOnlyLineWithoutAnEnd",
                  "A=1",
                  {"Algemeen", "C", "3"},
                  "A=1\nC=3\n"},
        WriteRow {"OfTheHeadIsTheFirstOfAnEmptyFile", "", {"Algemeen", "C", "3"}, "C=3\n"},
        WriteRow {"OfTheHeadNeverGoesBehindAHeaderOfItsName",
                  "A=1\n[Algemeen]\nC=2\n",
                  {"Algemeen", "C", "3"},
                  "A=1\nC=3\n[Algemeen]\nC=2\n"},
        WriteRow {"OfTheHeadComesBeforeAHeaderOfItsNameAtTheTop",
                  "[Algemeen]\nC=2\n",
                  {"Algemeen", "C", "3"},
                  "C=3\n[Algemeen]\nC=2\n"},
        WriteRow {"ComesBeforeTheNextHeader",
                  "[X]\nA=1\n[Y]\nB=2\n",
                  {"X", "C", "3"},
                  "[X]\nA=1\nC=3\n[Y]\nB=2\n"},
        WriteRow {"ComesBehindTheBlankLinesOfItsChapter",
                  "[X]\nA=1\n\n;c\n\n[Y]\n",
                  {"X", "C", "3"},
                  "[X]\nA=1\n\n;c\n\nC=3\n[Y]\n"},
        WriteRow {"ComesBeforeAHeaderThatFollowsAtOnce",
                  "[X]\n[Y]\n",
                  {"X", "C", "3"},
                  "[X]\nC=3\n[Y]\n"},
        WriteRow {"ComesBeforeAHeaderOfTheSameName",
                  "[X]\nA=1\n[X]\nC=2\n",
                  {"X", "C", "3"},
                  "[X]\nA=1\nC=3\n[X]\nC=2\n"},
        WriteRow {"OfTheLastChapterComesUnderItsHeader",
                  "A=1\n[X]\nB=2\n",
                  {"X", "C", "3"},
                  "A=1\n[X]\nC=3\nB=2\n"},
        WriteRow {"OfTheLastChapterComesUnderAHeaderWithoutAnEnd",
                  "A=1\n[X]",
                  {"X", "C", "3"},
                  "A=1\n[X]\nC=3\n"},
        WriteRow {"OfTheLastChapterGivesTheLastLineItsEnd",
                  "[X]\nB=2",
                  {"X", "C", "3"},
                  "[X]\nC=3\nB=2\n"},
        WriteRow {
            "OfANewChapterComesAtTheEndWithoutAnEnd", "A=1\n", {"X", "C", "3"}, "A=1\n[X]\nC=3"},
        WriteRow {"OfANewChapterGivesTheLastLineItsEnd",
                  "A=1\n[Y]\nB=1",
                  {"X", "C", "3"},
                  "A=1\n[Y]\nB=1\n[X]\nC=3"},
        WriteRow {"OfANewChapterIsAllOfAnEmptyFile", "", {"X", "C", "3"}, "[X]\nC=3"},
        WriteRow {"OfANewChapterComesBehindBlankLines",
                  "A=1\n\n\n",
                  {"X", "C", "3"},
                  "A=1\n\n\n[X]\nC=3"},
        WriteRow {"OfAChapterInAnotherCaseIsOfANewOne",
                  "[x]\nC=1\n",
                  {"X", "C", "3"},
                  "[x]\nC=1\n[X]\nC=3"},
        WriteRow {"OfAChapterThatIsOnlyTheBeginningIsOfANewOne",
                  "[Xy]\nC=1\n",
                  {"X", "C", "3"},
                  "[Xy]\nC=1\n[X]\nC=3"},
        WriteRow {"OfNoIdentIsAdded", "A=1\n[X]\n", {"X", "", "3"}, "A=1\n[X]\n=3\n"},
        WriteRow {"OfNoValueIsAdded", "A=1\n[X]\n", {"X", "C", ""}, "A=1\n[X]\nC=\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    NoNewLine, Writing,
    ::testing::Values(
        WriteRow {"ComesIntoTheHead",
                  "A=1\n[X]\nC=2\n",
                  {"Algemeen", "C", "3"},
                  "A=1\n[X]\nC=2\n",
                  Adding::no},
        WriteRow {"ComesIntoAChapterThatIsThere",
                  "[X]\nA=1\n[Y]\n",
                  {"X", "C", "3"},
                  "[X]\nA=1\n[Y]\n",
                  Adding::no},
        WriteRow {"ComesIntoAChapterThatIsNotThere", "A=1\n", {"X", "C", "3"}, "A=1\n", Adding::no},
        WriteRow {"ComesIntoAnEmptyFile", "", {"X", "C", "3"}, "", Adding::no},
        WriteRow {"ComesAndTheLastLineGetsItsEnd",
                  "A=1\n[X]\nB=2",
                  {"X", "C", "3"},
                  "A=1\n[X]\nB=2\n",
                  Adding::no},
        WriteRow {"ComesAndTheLastLineGetsTheEndOfTheFirst",
                  "A=1\r\n[X]\nB=2",
                  {"X", "C", "3"},
                  "A=1\r\n[X]\nB=2\r\n",
                  Adding::no,
                  "\r\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    AHeader, Writing,
    ::testing::Values(
        WriteRow {"MayHaveTextBehindItsBracket",
                  "[X] of all\nA=1\n",
                  {"X", "A", "2"},
                  "[X] of all\nA=2\n"},
        WriteRow {
            "MayHaveAValueBehindItsBracket", "[X]=text\nA=1\n", {"X", "A", "2"}, "[X]=text\nA=2\n"},
        WriteRow {"EndsAtItsFirstBracket", "[X]Y]\nA=1\n", {"X", "A", "2"}, "[X]Y]\nA=2\n"},
        WriteRow {"KeepsItsBlanks", "[ X ]\nA=1\n", {"X", "A", "2"}, "[ X ]\nA=1\n[X]\nA=2"},
        WriteRow {"OfBlanksIsFoundByThem", "[ X ]\nA=1\n", {" X ", "A", "2"}, "[ X ]\nA=2\n"},
        WriteRow {
            "WithoutABracketIsOfNoChapter", "[X\nA=1\n", {"X", "A", "2"}, "[X\nA=1\n[X]\nA=2"},
        WriteRow {"WithoutABracketEndsTheChapter",
                  "[X]\nB=1\n[Open\nA=1\n",
                  {"X", "A", "2"},
                  "[X]\nB=1\nA=2\n[Open\nA=1\n"},
        WriteRow {"WithoutABracketEndsTheHead",
                  "B=1\n[\nA=1\n",
                  {"Algemeen", "A", "2"},
                  "B=1\nA=2\n[\nA=1\n"},
        WriteRow {"BehindABlankIsNone", "[X]\n [Y]\nA=1\n", {"X", "A", "2"}, "[X]\n [Y]\nA=2\n"},
        WriteRow {"BehindALoneCarriageReturnIsNone",
                  "B=1\r[X]\nA=1\n",
                  {"X", "A", "2"},
                  "B=1\r[X]\nA=1\n[X]\nA=2"},
        WriteRow {"OfTheHeadFurtherDownHasItsSettings",
                  "[X]\nA=1\n[Algemeen]\nA=2\n",
                  {"Algemeen", "A", "3"},
                  "[X]\nA=1\n[Algemeen]\nA=3\n",
                  Adding::no},
        WriteRow {"OfTheHeadFurtherDownIsNotReachedWhenOneIsAdded",
                  "[X]\nA=1\n[Algemeen]\nA=2\n",
                  {"Algemeen", "A", "3"},
                  "A=3\n[X]\nA=1\n[Algemeen]\nA=2\n"},
        WriteRow {"OfNoNameIsAChapter", "[]\nA=1\n[X]\n", {"", "A", "2"}, "[]\nA=2\n[X]\n"},
        WriteRow {"ThatBeginsWithTheIdentIsItsLine",
                  "[A=1]\nB=1\n",
                  {"Algemeen", "[A", "2"},
                  "[A=2\nB=1\n"},
        WriteRow {"OfALongChapterIsFoundByAllOfIt",
                  "[" + std::string(1000, 'x') + "y]\nA=1\n[Y]\nA=1\n",
                  {"Y", "A", "2"},
                  "[" + std::string(1000, 'x') + "y]\nA=1\n[Y]\nA=2\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    LineEnds, Writing,
    ::testing::Values(
        WriteRow {"OfTwoCharactersAreKept",
                  "A=1\r\n[X]\r\nB=2\r\n",
                  {"X", "B", "3"},
                  "A=1\r\n[X]\r\nB=3\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"OfTwoCharactersAreGivenToANewLine",
                  "A=1\r\n[X]\r\n",
                  {"X", "B", "3"},
                  "A=1\r\n[X]\r\nB=3\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"OfTwoCharactersAreGivenToANewChapter",
                  "A=1\r\n",
                  {"X", "B", "3"},
                  "A=1\r\n[X]\r\nB=3",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"OfALineStayItsOwn",
                  "A=1\r\n[X]\nB=2\nC=3\r\n",
                  {"X", "B", "3"},
                  "A=1\r\n[X]\nB=3\nC=3\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {
            "OfAReplacedLineAreItsOwn", "A=1\nB=2\r\n", {"Algemeen", "B", "3"}, "A=1\nB=3\r\n"},
        WriteRow {"OfANewLineAreThoseOfTheFirst",
                  "A=1\r\n[X]\nC=1\n[Y]\n",
                  {"X", "B", "3"},
                  "A=1\r\n[X]\nC=1\nB=3\r\n[Y]\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"OfALastLineWithoutOneAreThoseOfTheFirst",
                  "A=1\r\nB=2\nC=3",
                  {"Algemeen", "C", "4"},
                  "A=1\r\nB=2\nC=4\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"OfAHeaderLeaveItsName",
                  "[X]\r\nA=1\r\n",
                  {"X", "A", "2"},
                  "[X]\r\nA=2\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"OfAnEmptyValueAreNoPartOfIt",
                  "A=\r\nB=1\r\n",
                  {"Algemeen", "A", "2"},
                  "A=2\r\nB=1\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"AreNoLoneCarriageReturns", "A=1\rB=2\r", {"Algemeen", "A", "3"}, "A=3\n"},
        WriteRow {"MayHaveTwoCarriageReturns",
                  "A=1\r\r\nB=1\r\r\n",
                  {"Algemeen", "A", "2"},
                  "A=2\r\nB=1\r\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {
            "OfBlankLinesStay", "\n\r\n\nA=1\n\n", {"Algemeen", "A", "2"}, "\n\r\n\nA=2\n\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    AValue, Writing,
    ::testing::Values(
        WriteRow {"WithALineFeedMakesALine",
                  "[X]\nA=1\nB=1\n",
                  {"X", "A", "een\ntwee"},
                  "[X]\nA=een\ntwee\nB=1\n"},
        WriteRow {"WithALineFeedGetsTheEndsOfTheFile",
                  "A=1\r\nB=1\r\n",
                  {"Algemeen", "A", "een\ntwee\n"},
                  "A=een\r\ntwee\r\n\r\nB=1\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"WithAWholeLineEndKeepsIt",
                  "A=1\n",
                  {"Algemeen", "A", "een\r\ntwee"},
                  "A=een\r\ntwee\n"},
        WriteRow {"WithAWholeLineEndGetsNoSecondReturn",
                  "A=1\r\n",
                  {"Algemeen", "A", "een\r\ntwee"},
                  "A=een\r\ntwee\r\n",
                  Adding::yes,
                  "\r\n"},
        WriteRow {"ThatBeginsWithALineFeed", "A=1\n", {"Algemeen", "A", "\nB=2"}, "A=\nB=2\n"},
        WriteRow {"WithAHeaderInItIsWrittenAsItStands",
                  "A=1\n[X]\n",
                  {"Algemeen", "A", "\n[Y]"},
                  "A=\n[Y]\n[X]\n"},
        WriteRow {"WithALineFeedInANewChapter", "", {"X", "A", "een\ntwee"}, "[X]\nA=een\ntwee"},
        WriteRow {
            "IsNotQuoted", "A=1\n", {"Algemeen", "A", " \"a\" ;[%s]\\ "}, "A= \"a\" ;[%s]\\ \n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(OtherCharacters, Writing,
                         ::testing::Values(WriteRow {"OfIdentsAndChapters",
                                                     "[Chauff\xC3\xA9]\n\xE2\x82\xAC=1\n",
                                                     {"Chauff\xC3\xA9", "\xE2\x82\xAC", "\xC2\xB2"},
                                                     "[Chauff\xC3\xA9]\n\xE2\x82\xAC=\xC2\xB2\n"},
                                           WriteRow {"ThatBeginLikeOthers",
                                                     "\xC3\xA9=1\n\xC3\xA8=2\n",
                                                     {"Algemeen", "\xC3\xA8", "3"},
                                                     "\xC3\xA9=1\n\xC3\xA8=3\n"},
                                           WriteRow {"OfAChapterThatBeginsLikeAnother",
                                                     "[\xC3\xA9]\nA=1\n",
                                                     {"\xC3\xA8", "A", "2"},
                                                     "[\xC3\xA9]\nA=1\n[\xC3\xA8]\nA=2"},
                                           WriteRow {"ThatAreZero",
                                                     std::string("A=1\0\n\0=2\n", 9),
                                                     {"Algemeen", "A", "3"},
                                                     std::string("A=3\n\0=2\n", 8)}),
                         sentenceOf);

const std::string kLong(100000, 'v');

INSTANTIATE_TEST_SUITE_P(
    LongLines, Writing,
    ::testing::Values(
        WriteRow {
            "AreOne", "A=" + kLong + "\nB=1\n", {"Algemeen", "B", "2"}, "A=" + kLong + "\nB=2\n"},
        WriteRow {
            "AreReplacedWhole", "A=" + kLong + "\nB=1\n", {"Algemeen", "A", "2"}, "A=2\nB=1\n"},
        WriteRow {"AreWritten", "A=1\nB=1\n", {"Algemeen", "A", kLong}, "A=" + kLong + "\nB=1\n"},
        WriteRow {"AreNoHeaderWithin",
                  kLong + "[X]\nA=1\n",
                  {"X", "A", "2"},
                  kLong + "[X]\nA=1\n[X]\nA=2"},
        WriteRow {"HaveNoEntryWithin",
                  "[X]\n" + kLong + "A=1\n[Y]\n",
                  {"X", "A", "2"},
                  "[X]\n" + kLong + "A=1\nA=2\n[Y]\n"}),
    sentenceOf);

// --- removal -------------------------------------------------------------------------------------

constexpr const char* kNothingThere = "(none)";

struct RemoveRow
{
    const char* sentence;
    std::string text;
    const char* category;
    const char* name;
    std::string expected; // kNothingThere when there is no such line
    const char* lineEnd = "\n";
};

void PrintTo(const RemoveRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class Removing : public ::testing::TestWithParam<RemoveRow>
{
};

TEST_P(Removing, GivesThisText)
{
    const auto& [sentence, text, category, name, expected, lineEnd] = GetParam();
    const auto edit = corma::editToRemove(text, lineEnd, category, name);
    EXPECT_EQ(edit ? applied(*edit, text) : kNothingThere, expected);
    EXPECT_EQ(corma::testing::plainlyRemoved(text, lineEnd, category, name).value_or(kNothingThere),
              expected);
}

INSTANTIATE_TEST_SUITE_P(
    ALine, Removing,
    ::testing::Values(
        RemoveRow {"OfTheHead", "A=1\nB=2\n[X]\nA=3\n", "Algemeen", "A", "B=2\n[X]\nA=3\n"},
        RemoveRow {"OfAChapter", "A=1\n[X]\nA=2\nB=3\n[Y]\nA=4\n", "X", "A",
                   "A=1\n[X]\nB=3\n[Y]\nA=4\n"},
        RemoveRow {"IsTheFirstOfSeveral", "A=1\nA=2\n", "Algemeen", "A", "A=2\n"},
        RemoveRow {"OfALongerIdentThatComesFirst", "[X]\nKleurRand=1\nKleur=2\n", "X", "Kleur",
                   "[X]\nKleur=2\n"},
        RemoveRow {"OfALongerIdentThatComesLaterStays", "[X]\nKleur=2\nKleurRand=1\n", "X", "Kleur",
                   "[X]\nKleurRand=1\n"},
        RemoveRow {"OfAShorterIdentStays", "Kleur=1\n", "Algemeen", "KleurRand", kNothingThere},
        RemoveRow {"NeedsNoEqualsSign", "Apart\nA=1\n", "Algemeen", "A", "A=1\n"},
        RemoveRow {"MayHaveBlanksBeforeItsEqualsSign", "A = 1\n", "Algemeen", "A", ""},
        RemoveRow {"MayNotBeginWithABlank", " A=1\n", "Algemeen", "A", kNothingThere},
        RemoveRow {"HeedsCase", "a=1\n", "Algemeen", "A", kNothingThere},
        RemoveRow {"OfAnotherChapterStays", "[X]\nA=1\n[Y]\nB=1\n", "Y", "A", kNothingThere},
        RemoveRow {"OfAChapterThatIsNotThere", "A=1\n", "X", "A", kNothingThere},
        RemoveRow {"OfALaterChapterOfTheName", "[X]\nB=1\n[Y]\n[X]\nA=1\n", "X", "A",
                   "[X]\nB=1\n[Y]\n[X]\n"},
        RemoveRow {"BelowAHeaderOfTheHeadFurtherDown", "[X]\nA=1\n[Algemeen]\nA=2\n", "Algemeen",
                   "A", "[X]\nA=1\n[Algemeen]\n"},
        RemoveRow {"BelowAHeaderWithoutABracketIsOfNoChapter", "[X\nA=1\n", "X", "A",
                   kNothingThere},
        RemoveRow {"OfAnEmptyFile", "", "Algemeen", "A", kNothingThere},
        RemoveRow {"ThatIsTheOnlyOne", "A=1\n", "Algemeen", "A", ""},
        RemoveRow {"ThatIsTheOnlyOneWithoutAnEnd", "A=1", "Algemeen", "A", ""},
        RemoveRow {"ThatIsTheLastWithoutAnEnd", "A=1\nB=2", "Algemeen", "B", "A=1\n"},
        RemoveRow {"GivesTheLastLineItsEnd", "A=1\nB=2", "Algemeen", "A", "B=2\n"},
        RemoveRow {"GivesTheLastLineTheEndOfTheFirst", "A=1\r\nB=2\nC=3", "Algemeen", "B",
                   "A=1\r\nC=3\r\n", "\r\n"},
        RemoveRow {"GoesWithItsEnd", "A=1\r\nB=2\nC=3\r\n", "Algemeen", "A", "B=2\nC=3\r\n",
                   "\r\n"},
        RemoveRow {"OfOtherCharacters", "[\xC3\xA9]\n\xE2\x82\xAC=1\nA=2\n", "\xC3\xA9",
                   "\xE2\x82\xAC", "[\xC3\xA9]\nA=2\n"},
        RemoveRow {"OfALongFile", kLong + "\nA=" + kLong + "\nB=1\n", "Algemeen", "A",
                   kLong + "\nB=1\n"},
        RemoveRow {"OfNoIdentIsTheFirstOfTheHead", "A=1\n=2\n", "Algemeen", "", "=2\n"},
        RemoveRow {"OfNoIdentIsTheFirstBehindItsHeader", "B=1\n[X]\n=2\n", "X", "", "B=1\n[X]\n"},
        RemoveRow {"OfNoIdentIsNoneInAChapterWithoutLines", "B=1\n[X]\n", "X", "", kNothingThere},
        RemoveRow {"IsNoLineEnd", "A\r\nB=1\r\n", "Algemeen", "A\r", kNothingThere, "\r\n"}),
    [](const auto& row) { return row.param.sentence; });

TEST(LineEdits, RemovingTakesTheFirstLineThatBeginsWithTheName)
{
    const std::string text = "[Tekst]\nKleurRand=1\nKleur=2\n";
    const auto edit = corma::editToRemove(text, "\n", "Tekst", "Kleur");
    ASSERT_TRUE(edit);
    EXPECT_EQ(applied(*edit, text), "[Tekst]\nKleur=2\n");
}

struct RemovedHeaderRow
{
    const char* sentence;
    std::string text;
    const char* category;
    std::string expected; // kNothingThere when there is no such header
};

void PrintTo(const RemovedHeaderRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class RemovingHeaders : public ::testing::TestWithParam<RemovedHeaderRow>
{
};

TEST_P(RemovingHeaders, GivesThisText)
{
    const auto& [sentence, text, category, expected] = GetParam();
    const std::string_view lineEnd = corma::lineEndOf(text);
    const auto edit = corma::editToRemoveHeader(text, lineEnd, category);
    EXPECT_EQ(edit ? applied(*edit, text) : kNothingThere, expected);
    EXPECT_EQ(corma::testing::plainlyWithoutHeader(text, lineEnd, category).value_or(kNothingThere),
              expected);
}

INSTANTIATE_TEST_SUITE_P(
    AHeader, RemovingHeaders,
    ::testing::Values(
        RemovedHeaderRow {"GoesAlone", "A=1\n[X]\n;c\nB=2\n[Y]\n", "X", "A=1\n;c\nB=2\n[Y]\n"},
        RemovedHeaderRow {"ThatIsLongerGoesWhenItComesFirst", "[KleurRand]\n[Kleur]\n", "Kleur",
                          "[Kleur]\n"},
        RemovedHeaderRow {"ThatIsLongerStaysWhenItComesLater", "[Kleur]\n[KleurRand]\n", "Kleur",
                          "[KleurRand]\n"},
        RemovedHeaderRow {"OfSeveralIsTheFirst", "[X]\nA=1\n[X]\nB=1\n", "X", "A=1\n[X]\nB=1\n"},
        RemovedHeaderRow {"MayHaveNoBracket", "[X\n[X]\n", "X", "[X]\n"},
        RemovedHeaderRow {"HeedsCase", "[x]\n", "X", kNothingThere},
        RemovedHeaderRow {"BehindABlankIsNone", " [X]\n", "X", kNothingThere},
        RemovedHeaderRow {"OfBlanksIsAnother", "[ X]\n", "X", kNothingThere},
        RemovedHeaderRow {"ThatIsNotThere", "A=1\nX\n", "X", kNothingThere},
        RemovedHeaderRow {"OfAnEmptyFile", "", "X", kNothingThere},
        RemovedHeaderRow {"OfTheHeadGoes", "A=1\n[Algemeen]\nB=1\n", "Algemeen", "A=1\nB=1\n"},
        RemovedHeaderRow {"OfNoNameIsTheFirst", "A=1\n[Y]\n[X]\n", "", "A=1\n[X]\n"},
        RemovedHeaderRow {"GoesWithItsEnd", "A=1\r\n[X]\r\nB=1\n", "X", "A=1\r\nB=1\n"},
        RemovedHeaderRow {"ThatIsAllOfAFile", "[X]", "X", ""},
        RemovedHeaderRow {"GivesTheLastLineItsEnd", "[X]\r\nB=1", "X", "B=1\r\n"},
        RemovedHeaderRow {"OfOtherCharacters", "[\xC3\xA8]\n[\xC3\xA9]\n", "\xC3\xA9",
                          "[\xC3\xA8]\n"}),
    [](const auto& row) { return row.param.sentence; });

// --- nothing -------------------------------------------------------------------------------------

TEST(LineEdits, OfNothingGiveTheLastLineItsEnd)
{
    for (const auto& [text, expected] :
         {std::pair {"", ""}, {"A=1\n", "A=1\n"}, {"A=1", "A=1\n"}, {"A=1\r", "A=1\r\n"}}) {
        EXPECT_EQ(applied(corma::editOfNothing(text, "\n"), text), expected);
    }
    EXPECT_EQ(applied(corma::editOfNothing("A=1\r\nB", "\r\n"), "A=1\r\nB"), "A=1\r\nB\r\n");
}

// --- random texts --------------------------------------------------------------------------------

using Words = std::vector<std::string>;

// Few of them, so that doubles, misses and look-alikes all occur.
const Words kIdents = {"A", "AB", "A=B", "a", "", "A ", " A", "[A", "\xC3\xA9", "\xC3\xA8", "A\r"};
const Words kChapters = {"X", "Xy", "x", "", " X", "Algemeen", "algemeen", "A=1", "\xC3\xA9", "[X"};
const Words kValues = {"", "1", " 2", "a=b", "[X]", "een\ntwee", "\n[X]\nA=0", "drie\r\n", "\r"};
const Words kEnds = {"\n", "\n", "\n", "\r\n", "\r\n", "\r", "\r\r\n"};
const Words kHeaderEnds = {"]", "]", "]", "]", "] text", "]]", "]=A", ""};
const Words kOthers = {"", ";A=1", " ", "A", "\t[X]", "A = 1", "]", "[", "=", "\xE2\x82\xAC"};

std::string randomLine(Random& random)
{
    switch (random() % 6) {
    case 0:
    case 1:
        return "[" + oneOf(random, kChapters) + oneOf(random, kHeaderEnds);
    case 2:
        return oneOf(random, kOthers);
    default:
        return oneOf(random, kIdents) + "=" + oneOf(random, kValues);
    }
}

std::string randomText(Random& random)
{
    std::string text;
    for (std::size_t left = random() % 12; left > 0; --left) {
        text += randomLine(random) + oneOf(random, kEnds);
    }
    if (random() % 3 == 0) {
        text += randomLine(random);
    }
    return text;
}

// What kind of edit it is, so that the test can tell that all of them came.
const char* kindOf(const TextEdit& edit, std::string_view text, bool isNewChapter)
{
    if (edit.begin < edit.end) {
        return "replaced";
    }
    if (edit.inserted.empty()) {
        return "nothing";
    }
    if (isNewChapter) {
        return "chapter";
    }
    return edit.begin < text.size() && text[edit.begin] == '[' ? "before a header"
                                                               : "behind a line";
}

constexpr int kTexts = 12000;
constexpr int kEnough = kTexts / 100;

TEST(LineEdits, GiveWhatThePlainRulesGive)
{
    Random random(20261121);
    std::map<std::string, int> kinds;
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string text = randomText(random);
        const std::string chapter = oneOf(random, kChapters);
        const std::string ident = oneOf(random, kIdents);
        const std::string value = oneOf(random, kValues);
        const SettingLine setting {chapter, ident, value};
        const std::string_view end = corma::lineEndOf(text);
        for (const Adding adding : {Adding::yes, Adding::no}) {
            const TextEdit edit = corma::editToWrite(text, end, setting, adding);
            const std::string expected = corma::testing::plainlyWritten(text, end, setting, adding);
            EXPECT_EQ(applied(edit, text), expected)
                << "text " << ::testing::PrintToString(text) << " chapter " << chapter << " ident "
                << ident << (adding == Adding::yes ? ", added" : ", not added");
            const bool isNewChapter = expected.ends_with(edit.inserted)
                && edit.inserted.find("[" + chapter + "]" + std::string(end) + ident + "=") <= 2;
            ++kinds[kindOf(edit, text, isNewChapter)];
        }
    }
    for (const char* const kind :
         {"replaced", "nothing", "chapter", "before a header", "behind a line"}) {
        EXPECT_GT(kinds[kind], kEnough) << kind;
    }
}

TEST(LineEdits, RemoveWhatThePlainRulesRemove)
{
    Random random(20261122);
    int linesRemoved = 0;
    int headersRemoved = 0;
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        const std::string text = randomText(random);
        const std::string chapter = oneOf(random, kChapters);
        const std::string ident = oneOf(random, kIdents);
        const std::string_view end = corma::lineEndOf(text);
        const auto line = corma::editToRemove(text, end, chapter, ident);
        EXPECT_EQ(line ? applied(*line, text) : kNothingThere,
                  corma::testing::plainlyRemoved(text, end, chapter, ident).value_or(kNothingThere))
            << "text " << ::testing::PrintToString(text) << " chapter " << chapter << " ident "
            << ident;
        const auto header = corma::editToRemoveHeader(text, end, chapter);
        EXPECT_EQ(header ? applied(*header, text) : kNothingThere,
                  corma::testing::plainlyWithoutHeader(text, end, chapter).value_or(kNothingThere))
            << "text " << ::testing::PrintToString(text) << " chapter " << chapter;
        linesRemoved += line ? 1 : 0;
        headersRemoved += header ? 1 : 0;
    }
    EXPECT_GT(linesRemoved, kEnough);
    EXPECT_GT(headersRemoved, kEnough);
}

} // namespace
