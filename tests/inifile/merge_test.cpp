#include "inifile/PlainMerge.h"
#include "inifile/merge.h"
#include "support/random_choice.h"
#include "support/row_names.h"

#include <gtest/gtest.h>
#include <random>

using namespace std::string_literals;

namespace corma {
namespace {

using corma::testing::below;
using corma::testing::oneOf;
using corma::testing::Random;
using corma::testing::sentenceOf;

std::string merged(std::string_view own, std::string_view defaults, int& added,
                   std::string_view lineEnd = "\n")
{
    DefaultsMerge merge(own);
    merge.add(defaults);
    added = merge.added();
    return merge.text(lineEnd);
}

std::string renewed(std::string_view own, std::string_view newer)
{
    std::string text;
    for (const std::string_view piece : withNewValues(own, newer)) {
        text += piece;
    }
    return text;
}

// --- defaults ------------------------------------------------------------------------------------

struct Defaults
{
    const char* sentence;
    std::string own;
    std::string defaults;
    std::string text;
    int added;
};

class MergedDefaults : public ::testing::TestWithParam<Defaults>
{
};

TEST_P(MergedDefaults, GiveTheText)
{
    int added = -1;
    EXPECT_EQ(merged(GetParam().own, GetParam().defaults, added), GetParam().text);
    EXPECT_EQ(added, GetParam().added);
}

TEST_P(MergedDefaults, AreNotNewASecondTime)
{
    int added = -1;
    EXPECT_EQ(merged(GetParam().text, GetParam().defaults, added), GetParam().text);
    EXPECT_EQ(added, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Known, MergedDefaults,
    ::testing::Values(
        Defaults {"AnOwnValueStays", "a=1\n", "a=2\n", "a=1\n", 0},
        Defaults {"EqualFilesHaveNothingNew", "a=1\n\n[B]\nc=2\n", "a=1\n\n[B]\nc=2\n",
                  "a=1\n\n[B]\nc=2\n", 0},
        Defaults {"NoDefaultsAddNothing", "a=1\n", "", "a=1\n", 0},
        Defaults {"TwoEmptyFilesAreOne", "", "", "", 0},
        Defaults {"AnIdentInAnotherCaseIsNew", "x=0\na=1\n", "x=0\nA=2\n", "x=0\nA=2\na=1\n", 1},
        Defaults {"AChapterInAnotherCaseIsNew", "[B]\na=1\n", "[b]\na=2\n",
                  "[B]\na=1\n\n[b]\na=2\n", 2},
        Defaults {"ALongerIdentIsAnother", "x=0\nab=1\n", "x=0\na=2\n", "x=0\na=2\nab=1\n", 1},
        Defaults {"ABlankBeforeTheEqualsSignIsPartOfTheIdent", "x=0\na =1\n", "x=0\na=2\n",
                  "x=0\na=2\na =1\n", 1},
        Defaults {"AnIdentEndsAtTheFirstEqualsSign", "a=1=2\n", "a=3=4\n", "a=1=2\n", 0},
        Defaults {"AnEmptyIdentIsOne", "=1\n", "=2\n", "=1\n", 0},
        Defaults {"AnEmptyValueIsOne", "a=\n", "a=1\n", "a=\n", 0},
        Defaults {"ABlankLedOwnLineHoldsNoIdent", "x=0\n a=1\n", "x=0\na=2\n", "x=0\na=2\n a=1\n",
                  1},
        Defaults {"AnEntryOfAnotherChapterDoesNotCount", "a=1\n[B]\nb=1\n", "[B]\na=2\n",
                  "a=1\n\n[B]\nb=1\na=2\n", 1},
        Defaults {"AnIdentThatDefaultsHaveTwiceIsAddedOnce", "x=0\n", "x=0\na=1\na=2\n",
                  "x=0\na=1\n", 1},
        Defaults {"ADisabledLineThatHoldsASemicolonIsAnEntry", "x=0\n", "x=0\n;a=1\n",
                  "x=0\n;a=1\n", 1}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Comments, MergedDefaults,
    ::testing::Values(Defaults {"OfDefaultsAreNotTaken", "x=0\n", "x=0\nlos\n; los\na=1\n",
                                "x=0\na=1\n", 1},
                      Defaults {"OfDefaultsThatAreBlankLedAreNotTaken", "x=0\n",
                                "x=0\n a=1\n [B]\nb=1\n", "x=0\nb=1\n", 1},
                      Defaults {"OfTheFileSurvive", "los\n; x\n c=1\n\nx=0\n", "x=1\na=1\n",
                                "los\n; x\n c=1\n\nx=0\na=1\n", 1},
                      Defaults {"AfterALineThatBeginsWithANullByteAreNotTaken", "x=0\n",
                                "x=0\n\0a=1\nb=1\n"s, "x=0\nb=1\n", 1}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Place, MergedDefaults,
    ::testing::Values(Defaults {"IsBehindTheKnownEntryBefore", "a=1\nz=9\n", "a=0\nb=0\nz=0\n",
                                "a=1\nb=0\nz=9\n", 1},
                      Defaults {"IsBehindTheNewEntryBefore", "a=1\nz=9\n", "a=0\nb=0\nc=0\n",
                                "a=1\nb=0\nc=0\nz=9\n", 2},
                      Defaults {"FollowsTheKnownEntriesThatStandInAnotherOrder", "z=9\na=1\n",
                                "a=0\nb=0\nz=0\ny=0\n", "z=9\ny=0\na=1\nb=0\n", 2},
                      Defaults {"OfTheFirstLineIsTheFront", "; mine\nx=0\n", "a=1\nb=1\n",
                                "a=1\nb=1\n; mine\nx=0\n", 2},
                      Defaults {"OfTheFirstLineBehindSkippedOnesIsTheFront", "x=0\n", " c\na=1\n",
                                "a=1\nx=0\n", 1},
                      Defaults {"OfAnEntryBehindACommentIsTheEndOfTheHead", "x=0\n[B]\n",
                                "los\na=1\n", "x=0\na=1\n\n[B]\n", 1},
                      Defaults {"OfAnEntryBehindAnEmptyLineIsTheEndOfTheHead", "x=0\n[B]\n",
                                "\na=1\n", "x=0\na=1\n\n[B]\n", 1},
                      Defaults {"OfAnEntryInAHeadOfNoLinesIsTheFront", "[B]\nb=1\n", "los\na=1\n",
                                "a=1\n\n[B]\nb=1\n", 1},
                      Defaults {"OfTheFirstEntryOfAChapterIsTheChaptersEnd", "[B]\nb=1\n[C]\n",
                                "[B]\na=1\n", "[B]\nb=1\na=1\n\n[C]\n", 1},
                      Defaults {"IsTheEndOfTheChapterBehindItsEmptyLines", "[B]\nb=1\n\n[C]\n",
                                "[B]\na=1\n", "[B]\nb=1\n\na=1\n\n[C]\n", 1},
                      Defaults {"OfAnEntryOfAnEmptyChapterIsBehindItsHeader", "[B]\n[C]\n",
                                "[B]\na=1\n", "[B]\na=1\n\n[C]\n", 1},
                      Defaults {"BeginsAnewAtEachHeader", "a=1\n[B]\nz=9\n", "a=0\n[B]\nb=0\n",
                                "a=1\n\n[B]\nz=9\nb=0\n", 1},
                      Defaults {"InAChapterThatDefaultsHaveTwiceIsItsEnd", "[B]\na=1\nz=9\n",
                                "[B]\na=0\n[C]\n[B]\nb=0\n", "[B]\na=1\nz=9\nb=0\n", 1},
                      Defaults {"IsInTheFirstOfTwoChaptersOfOneName", "[B]\na=1\n[C]\n[B]\nb=1\n",
                                "[B]\nb=0\n", "[B]\na=1\nb=0\n\n[C]\n\n[B]\nb=1\n", 1},
                      Defaults {"InAnEmptyFileIsTheFront", "", "a=1\nb=2\n", "a=1\nb=2\n", 2}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Chapters, MergedDefaults,
    ::testing::Values(
        Defaults {"AreItemsThemselves", "a=1\n", "[B]\nb=1\n", "a=1\n\n[B]\nb=1\n", 2},
        Defaults {"AreAddedOnce", "a=1\n", "[B]\nb=1\nc=1\n[B]\nd=1\n",
                  "a=1\n\n[B]\nb=1\nc=1\nd=1\n", 4},
        Defaults {"WithoutEntriesAreNotAdded", "a=1\n", "[B]\nlos\n[C]\n", "a=1\n", 0},
        Defaults {"AreAddedInTheOrderOfTheDefaults", "[Z]\nz=1\n", "[C]\nc=1\n[B]\nb=1\n",
                  "[Z]\nz=1\n\n[C]\nc=1\n\n[B]\nb=1\n", 4},
        Defaults {"AreAddedToAnEmptyFile", "", "[B]\nb=1\n[C]\nc=1\n", "[B]\nb=1\n\n[C]\nc=1\n", 4},
        Defaults {"WithAnEmptyNameAreChapters", "[]\na=1\n", "[]\nb=1\n", "[]\na=1\nb=1\n", 1},
        Defaults {"CompareAsWholeLines", "[B]x]\na=1\n", "[B]\na=2\n", "[B]x]\na=1\n\n[B]\na=2\n",
                  2},
        Defaults {"NeedTheirLastBracket", "[B]x\na=1\n", "[B]\na=2\n", "[B]x\na=1\n\n[B]\na=2\n",
                  2},
        Defaults {"AreMoreThanABracket", "[\nx=0\n", "[\na=1\n", "[\nx=0\na=1\n", 1}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    EmptyLines, MergedDefaults,
    ::testing::Values(
        Defaults {"ComeBeforeHeaders", "x=0\n[B]\n[C]\nc=1\n", "x=0\na=1\n",
                  "x=0\na=1\n\n[B]\n\n[C]\nc=1\n", 1},
        Defaults {"DoNotComeTwice", "x=0\n\n[B]\n", "x=0\na=1\n", "x=0\na=1\n\n[B]\n", 1},
        Defaults {"DoNotComeBeforeTheFirstLine", "[B]\nb=1\n", "[B]\na=1\n", "[B]\nb=1\na=1\n", 1},
        Defaults {"OfTheFileStay", "\n\nx=0\n\n\n[B]\n\n", "x=0\na=1\n",
                  "\n\nx=0\na=1\n\n\n[B]\n\n", 1},
        Defaults {"AreNotLinesOfABlank", "x=0\n \n[B]\n", "x=0\na=1\n", "x=0\na=1\n \n\n[B]\n", 1}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Lines, MergedDefaults,
    ::testing::Values(
        Defaults {"AreCutAtATab", "x=0\tcomment\nb=1\n", "x=0\na=1\tcomment\n", "x=0\na=1\nb=1\n",
                  1},
        Defaults {"AreCutAtANullByte", "x=0\0y\n"s, "x=0\na=1\0z\n"s, "x=0\na=1\n", 1},
        Defaults {"AreHeadersOnceTheyAreCut", "[B]\t; x\nb=1\n", "[B]\t; y\na=1\n",
                  "[B]\nb=1\na=1\n", 1},
        Defaults {"ThatAreCutBeforeTheirEqualsSignAreNoEntries", "a\t=1\n[B]\n",
                  "[B]\nb\t=1\nc=1\n", "a\n\n[B]\nc=1\n", 1},
        Defaults {"ThatBeginWithATabAreEmpty", "\tx\n[B]\n", "[B]\na=1\n", "\n[B]\na=1\n", 1},
        Defaults {"MayEndInTwoCharacters", "x=0\r\n[B]\r\nb=1\r\n", "x=0\r\na=1\r\n",
                  "x=0\na=1\n\n[B]\nb=1\n", 1},
        Defaults {"NeedNoEndAtTheEnd", "x=0\n[B]\nb=1", "[B]\na=1", "x=0\n\n[B]\nb=1\na=1\n", 1},
        Defaults {"MayHoldAllCharacters", "é=€\n", "é=1\n😀=2\n", "é=€\n😀=2\n", 1}),
    sentenceOf);

TEST(DefaultsMerge, EndsItsLinesAsItIsTold)
{
    int added = 0;
    EXPECT_EQ(merged("a=1\n[B]\nb=1\n", "[B]\nc=1\n", added, "\r\n"),
              "a=1\r\n\r\n[B]\r\nb=1\r\nc=1\r\n");
}

// A text of characters of two bytes, so that characters and bytes are told apart.
std::string accents(std::size_t characters)
{
    std::string text;
    for (std::size_t i = 0; i < characters; ++i) {
        text += "é";
    }
    return text;
}

TEST(DefaultsMerge, TakesAnOwnLineOfMoreThan3000CharactersInPieces)
{
    int added = 0;
    const std::string longest = "a=" + accents(2998);
    EXPECT_EQ(merged(longest + "\n", "[B]\nb=1\n", added), longest + "\n\n[B]\nb=1\n");
    EXPECT_EQ(merged(longest + "\r\n", "[B]\nb=1\n", added), longest + "\n\n[B]\nb=1\n");
    EXPECT_EQ(merged(longest + "x=1\n", "x=2\n[B]\nb=1\n", added), longest + "\nx=1\n\n[B]\nb=1\n");
    EXPECT_EQ(added, 2) << "the rest of the line is an entry of its own";
    EXPECT_EQ(merged(longest + accents(3000) + "[C]\n", "[C]\nb=1\n", added),
              longest + "\n" + accents(3000) + "\n\n[C]\nb=1\n");
}

TEST(DefaultsMerge, TakesALineOfDefaultsOfMoreThan2999CharactersInPieces)
{
    int added = 0;
    const std::string longest = "a=" + accents(2997);
    EXPECT_EQ(merged("", longest + "\nb=1\n", added), longest + "\nb=1\n");
    EXPECT_EQ(added, 2);
    EXPECT_EQ(merged("", longest + "b=1\n", added), longest + "\nb=1\n");
    EXPECT_EQ(added, 2);
    EXPECT_EQ(merged("", longest + " b=1\n", added), longest + "\n") << "a piece may be blank-led";
    EXPECT_EQ(added, 1);
}

// --- new values ----------------------------------------------------------------------------------

struct NewValues
{
    const char* sentence;
    std::string own;
    std::string newer;
    std::string text;
};

class RenewedValues : public ::testing::TestWithParam<NewValues>
{
};

TEST_P(RenewedValues, GiveTheText)
{
    EXPECT_EQ(renewed(GetParam().own, GetParam().newer), GetParam().text);
}

TEST_P(RenewedValues, AreTheSameASecondTime)
{
    EXPECT_EQ(renewed(GetParam().text, GetParam().newer), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Values, RenewedValues,
    ::testing::Values(
        NewValues {"AreTaken", "a=1\n[B]\nb=1\n", "a=2\n[B]\nb=3\n", "a=2\n[B]\nb=3\n"},
        NewValues {"ThatAreNotNewStay", "a=1\nb=1\n", "a=2\n", "a=2\nb=1\n"},
        NewValues {"OfIdentsThatAreNotThereAreDropped", "a=1\n", "b=2\n[B]\na=2\n", "a=1\n"},
        NewValues {"MayBecomeEmpty", "a=1\n", "a=\n", "a=\n"},
        NewValues {"ALineThatIsSwitchedOffStaysAsItIs", " a=1\n\ta=2\na=3\n", " a=5\n\ta=6\na=7\n",
                   " a=1\n\ta=2\na=7\n"},
        NewValues {"OfALineThatIsSwitchedOffAreNotTaken", "a=1\n", " a=5\n\ta=6\n", "a=1\n"},
        NewValues {"MayHaveBeenEmpty", "a=\n", "a=2\n", "a=2\n"},
        NewValues {"MayHoldEqualsSigns", "a=1=2\n", "a=3=4\n", "a=3=4\n"},
        NewValues {"MayHoldBlanks", "a= 1 \n", "a=  2  \n", "a=  2  \n"},
        NewValues {"MayHoldTabs", "a=1\t2\n", "a=3\t4\n", "a=3\t4\n"},
        NewValues {"MayBeLong", "a=1\n", "a=" + std::string(10'000, 'v') + "\n",
                   "a=" + std::string(10'000, 'v') + "\n"},
        NewValues {"OfNobodyStay", "a=1\n\n[B]\nb=1", "", "a=1\n\n[B]\nb=1"},
        NewValues {"OfAnEmptyFileAreNone", "", "a=1\n[B]\n", ""},
        NewValues {"HeedTheCaseOfIdents", "a=1\n", "A=2\n", "a=1\n"},
        NewValues {"HeedTheCaseOfChapters", "[B]\na=1\n", "[b]\na=2\n", "[B]\na=1\n"},
        NewValues {"HeedTheChapter", "a=1\n[B]\na=1\n[C]\na=1\n", "[B]\na=2\n",
                   "a=1\n[B]\na=2\n[C]\na=1\n"},
        NewValues {"HeedBlanksOfIdents", "a =1\n", "a=2\n", "a =1\n"},
        NewValues {"OfAnEmptyIdentAreTaken", "[B]\n=1\n", "[B]\n=2\n", "[B]\n=2\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Twice, RenewedValues,
    ::testing::Values(
        NewValues {"AnIdentInTheNewFileGivesItsFirstValue", "a=1\n", "a=2\na=3\n", "a=2\n"},
        NewValues {"AnIdentInTheFileGetsTheNewValueTwice", "a=1\nb=1\na=2\n", "a=3\n",
                   "a=3\nb=1\na=3\n"},
        NewValues {"AnIdentGetsItsFirstValueTwice", "a=1\nb=1\na=2\n", "", "a=1\nb=1\na=1\n"},
        NewValues {"AChapterOfTheFileIsOne", "[B]\na=1\n[C]\n[B]\na=2\nb=1\n", "[B]\nb=3\n",
                   "[B]\na=1\n[C]\n[B]\na=1\nb=3\n"},
        NewValues {"AChapterOfTheNewFileIsOne", "[B]\na=1\nb=1\n", "[B]\na=2\n[C]\n[B]\nb=3\n",
                   "[B]\na=2\nb=3\n"},
        NewValues {"AHeaderRightBehindItselfIsLeftOut", "[B]\na=1\n[B]\nb=1\n", "",
                   "[B]\na=1\nb=1\n"},
        NewValues {"AHeaderBehindAnotherStays", "[B]\n[C]\n[B]\n", "", "[B]\n[C]\n[B]\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    OtherLines, RenewedValues,
    ::testing::Values(NewValues {"Stay", "los\n\n; x\n[B\n[B] x\n\t\n", "los=1\n",
                                 "los\n\n; x\n[B\n[B] x\n\t\n"},
                      NewValues {"OfBlanksStayAsTheyAre", "  a=1\n \n", "a=2\n", "  a=1\n \n"},
                      NewValues {"WithAnEqualsSignAreEntries", "; a=1\n", "; a=2\n", "; a=2\n"},
                      NewValues {"ThatLookLikeTheNameOfAnEntryStay", "[B]a\n[B]\na=1\n",
                                 "[B]\na=2\n", "[B]a\n[B]\na=2\n"},
                      NewValues {"WithATabBehindTheirBracketAreNoHeaders", "[B]\t\na=1\n",
                                 "[B]\na=2\n", "[B]\t\na=1\n"},
                      NewValues {"OfTheNewFileAreNotTaken", "a=1\n", "los\n; x\n\na=2\n", "a=2\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    LineEnds, RenewedValues,
    ::testing::Values(NewValues {"OfTheFileStay", "a=1\r\nb=1\nc=1\r\n", "a=2\nb=2\r\nc=2",
                                 "a=2\r\nb=2\nc=2\r\n"},
                      NewValues {"MayBeMissingAtTheEnd", "a=1\nb=1", "b=2\n", "a=1\nb=2"},
                      NewValues {"OfTheNewFileAreNoPartOfItsValues", "a=1\n", "a=2\r\n", "a=2\n"},
                      NewValues {"ThatAreHalfAreNoPartOfAValue", "a=1\n", "a=2\r", "a=2\n"},
                      NewValues {"OfTwoReturnsStayInTheFile", "a=1\r\r\nb=1\r", "a=2\r\r\nb=2",
                                 "a=2\r\r\nb=2\r"}),
    sentenceOf);

TEST(NewValuePieces, OfAFileThatStaysAreOne)
{
    const std::string own = "a=1\r\n\r\n[B]\r\nb=1\r\n; x\r\n";
    EXPECT_EQ(withNewValues(own, "").size(), 1U);
    EXPECT_EQ(withNewValues(own, own), std::vector<std::string_view> {own});
}

// --- random files --------------------------------------------------------------------------------

// Few names in few chapters, so that doubles, misses and look-alikes all occur. None of them looks
// like the joined name by which the plain rules know an entry of a chapter.
const std::vector<std::string> kNames = {"a", "A", "b", "ab", "a b", "é", "É", ";a", "x", "y"};
const std::vector<std::string> kChapters = {"[A]", "[a]", "[B]", "[A b]", "[]", "[é]"};
const std::vector<std::string> kOthers
    = {"", "", "los", "; los", " a", " a=1", "  [A]", "[A", "A]", "\t", "\ta=1", " ", "[A] x"};

std::string randomLine(Random& random)
{
    switch (below(random, 10)) {
    case 0:
    case 1:
        return oneOf(random, kChapters);
    case 2:
        return oneOf(random, kOthers);
    case 3:
        return oneOf(random, kNames) + "=" + std::to_string(below(random, 9)) + "=\tcut";
    case 4:
        return below(random, 40) != 0 ? oneOf(random, kNames) + "="
                                      : "a=" + std::string(6100, 'v') + "b=1";
    default:
        return oneOf(random, kNames) + "=" + std::to_string(below(random, 100));
    }
}

std::string randomText(Random& random)
{
    const std::string lineEnd = below(random, 4) == 0 ? "\r\n" : "\n";
    std::string text;
    for (std::size_t lines = below(random, 16); lines > 0; --lines) {
        text += randomLine(random) + lineEnd;
    }
    return below(random, 4) == 0 ? text + randomLine(random) : text;
}

TEST(DefaultsMerge, GivesWhatThePlainRulesGive)
{
    Random random(41);
    int untouched = 0;
    constexpr int kPairs = 6000;
    for (int i = 0; i < kPairs; ++i) {
        const std::string own = randomText(random);
        const std::string defaults = randomText(random);
        const testing::PlainUpdate plain(own, defaults);
        int added = -1;
        ASSERT_EQ(merged(own, defaults, added), plain.text()) << own << "---\n" << defaults;
        ASSERT_EQ(added, plain.added()) << own << "---\n" << defaults;
        untouched += added == 0 ? 1 : 0;
    }
    EXPECT_GT(untouched, kPairs / 50); // both ends are met
    EXPECT_LT(untouched, kPairs / 2);
}

TEST(NewValues, AreWhatThePlainRulesGive)
{
    Random random(43);
    int changed = 0;
    constexpr int kPairs = 6000;
    for (int i = 0; i < kPairs; ++i) {
        const std::string own = randomText(random);
        const std::string newer = randomText(random);
        const std::string text = renewed(own, newer);
        ASSERT_EQ(testing::plainLines(text), testing::plainReplacement(own, newer))
            << own << "---\n"
            << newer;
        changed += text == own ? 0 : 1;
    }
    EXPECT_GT(changed, kPairs / 4);
    EXPECT_LT(changed, kPairs);
}

} // namespace
} // namespace corma
