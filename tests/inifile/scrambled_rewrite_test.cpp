#include "inifile/scrambled_rewrite.h"
#include "inifile/scrambling.h"
#include "support/row_names.h"

#include <climits>
#include <gtest/gtest.h>
#include <random>

using namespace std::string_literals;

namespace corma {
namespace {

using corma::testing::sentenceOf;

// Byte by byte as it stands, with its carriage returns.
std::string scrambledBytes(std::string_view text, int key)
{
    std::string bytes;
    for (const char c : text) {
        const auto position = static_cast<long>(bytes.size() + 1);
        bytes.push_back(scramble(static_cast<unsigned char>(c), position, key));
    }
    return bytes;
}

std::string plainBytes(std::string_view bytes, int key)
{
    std::string text;
    for (const char c : bytes) {
        const auto position = static_cast<long>(text.size() + 1);
        text.push_back(descramble(static_cast<unsigned char>(c), position, key));
    }
    return text;
}

// The new text, which can be read only when each byte is scrambled for its own position.
std::string changed(std::string_view text, std::wstring_view ident, std::string_view value,
                    int key = 7)
{
    const auto bytes
        = withScrambledValue(scrambledBytes(text, key), key, Ident::parse(ident), value);
    return bytes ? plainBytes(*bytes, key) : "(nothing)";
}

struct RewriteRow
{
    const char* sentence;
    std::string text;
    const wchar_t* ident;
    std::string value;
    std::string changed;
};

class ScrambledRewrite : public ::testing::TestWithParam<RewriteRow>
{
};

TEST_P(ScrambledRewrite, GivesTheText)
{
    for (const int key : {7, 1, -1, -4711, 255, 256, INT_MAX, INT_MIN}) {
        EXPECT_EQ(changed(GetParam().text, GetParam().ident, GetParam().value, key),
                  GetParam().changed)
            << key;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Value, ScrambledRewrite,
    ::testing::Values(
        RewriteRow {"IsPutInItsLine", "a=1\r\nb=2\r\n", L"b", "345", "a=1\r\nb=345\r\n"},
        RewriteRow {"MayBecomeEmpty", "a=1\r\nb=2\r\n", L"a", "", "a=\r\nb=2\r\n"},
        RewriteRow {"MayHaveBeenEmpty", "a=\r\n", L"a", "1", "a=1\r\n"},
        RewriteRow {"MayHoldAnEqualsSign", "a=1=2\r\n", L"a", "3=4", "a=3=4\r\n"},
        RewriteRow {"MayHoldAllBytes", "a=1\r\n", L"a", "\x80\xFF ", "a=\x80\xFF \r\n"},
        RewriteRow {"MovesWhatComesBehindIt", "a=1\r\n[B]\r\nb=2\r\n\r\n; x\r\n", L"a",
                    "long value", "a=long value\r\n[B]\r\nb=2\r\n\r\n; x\r\n"},
        RewriteRow {"MayStayTheSame", "a=1\r\n", L"a", "1", "a=1\r\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Ident, ScrambledRewrite,
    ::testing::Values(
        RewriteRow {"ThatIsNotThereGivesNothing", "a=1\r\n", L"b", "2", "(nothing)"},
        RewriteRow {"OfAnEmptyFileGivesNothing", "", L"b", "2", "(nothing)"},
        RewriteRow {"IsTakenWithoutRegardToCase", "hoogte=1\r\n", L"HOOGTE", "2", "HOOGTE=2\r\n"},
        RewriteRow {"IsTakenWithoutRegardToTheCaseOfAccents", "\xE9=1\r\n", L"É", "2",
                    "\xC9=2\r\n"},
        RewriteRow {"IsTakenWhole", "ab=1\r\n", L"a", "2", "(nothing)"},
        RewriteRow {"IsNotAPartOfWhatIsAsked", "a=1\r\n", L"ab", "2", "(nothing)"},
        RewriteRow {"MayBeEmpty", "a=1\r\n=2\r\n", L"", "3", "a=1\r\n=3\r\n"},
        RewriteRow {"EndsAtTheFirstEqualsSign", "a=b=1\r\n", L"a=b", "2", "(nothing)"},
        RewriteRow {"NeedsAnEqualsSign", "a\r\n", L"a", "2", "(nothing)"},
        RewriteRow {"HeedsBlanks", "a =1\r\n a=1\r\n", L"a", "2", "(nothing)"},
        RewriteRow {"MayBeBlankLedWhenItIsAskedSo", " a=1\r\n", L" a", "2", " a=2\r\n"},
        RewriteRow {"ThatNoByteCanSpellIsNotThere", "?=1\r\n", L"Ł", "2", "(nothing)"},
        RewriteRow {"ThatAHeadHasTwiceIsChangedOnce", "a=1\r\na=2\r\n", L"a", "3",
                    "a=3\r\na=2\r\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    IdentOfAChapter, ScrambledRewrite,
    ::testing::Values(
        RewriteRow {"IsTakenInItsChapter", "a=1\r\n[A]\r\na=2\r\n[B]\r\na=3\r\n[C]\r\na=4\r\n",
                    L"[B]a", "5", "a=1\r\n[A]\r\na=2\r\n[B]\r\na=5\r\n[C]\r\na=4\r\n"},
        RewriteRow {"IsTakenWithoutRegardToTheCaseOfTheChapter", "[tekst]\r\na=1\r\n", L"[TEKST]a",
                    "2", "[tekst]\r\na=2\r\n"},
        RewriteRow {"IsTakenInTheFirstLaterChapterThatHasItWhenItsOwnLacksIt",
                    "[A]\r\na=1\r\n[B]\r\nb=1\r\n[C]\r\n[D]\r\na=1\r\n[E]\r\na=1\r\n", L"[B]a", "2",
                    "[A]\r\na=1\r\n[B]\r\nb=1\r\n[C]\r\n[D]\r\na=2\r\n[E]\r\na=1\r\n"},
        RewriteRow {"OfAChapterThatIsNotThereIsNotTaken", "a=1\r\n[A]\r\na=1\r\n", L"[B]a", "2",
                    "(nothing)"},
        RewriteRow {"IsNotTakenInAnEarlierChapter", "[A]\r\na=1\r\n[B]\r\nb=1\r\n", L"[B]a", "2",
                    "(nothing)"},
        RewriteRow {"IsTakenAgainInASecondChapterOfTheName",
                    "[B]\r\na=1\r\n[C]\r\na=1\r\n[B]\r\na=1\r\n", L"[B]a", "2",
                    "[B]\r\na=2\r\n[C]\r\na=1\r\n[B]\r\na=2\r\n"},
        RewriteRow {"HeedsTheWholeNameOfTheChapter", "[BC]\r\na=1\r\n", L"[B]a", "2", "(nothing)"},
        RewriteRow {"TakesAHeaderThatGoesOnBehindItsBracket", "[B]x]\r\na=1\r\n", L"[B]a", "2",
                    "[B]x]\r\na=2\r\n"},
        RewriteRow {"TakesNoHeaderWithoutItsLastBracket", "[B]x\r\na=1\r\n", L"[B]a", "2",
                    "(nothing)"},
        RewriteRow {"OfTheHeadByItsNameIsOneOfAChapter", "a=1\r\n[Algemeen]\r\na=1\r\n",
                    L"[Algemeen]a", "2", "a=1\r\n[Algemeen]\r\na=2\r\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    IdentWithoutAChapter, ScrambledRewrite,
    ::testing::Values(
        RewriteRow {"ChangesInEveryLaterChapter",
                    "a=1\r\n[A]\r\na=1\r\n[B]\r\nb=1\r\n[C]\r\nA=1\r\n", L"a", "2",
                    "a=2\r\n[A]\r\na=2\r\n[B]\r\nb=1\r\n[C]\r\na=2\r\n"},
        RewriteRow {"ChangesInChaptersWhenTheHeadLacksIt", "[A]\r\na=1\r\n[B]\r\na=1\r\n", L"a",
                    "2", "[A]\r\na=2\r\n[B]\r\na=2\r\n"},
        RewriteRow {"ChangesOncePerChapter", "a=1\r\n[A]\r\na=1\r\na=1\r\n", L"a", "2",
                    "a=2\r\n[A]\r\na=2\r\na=1\r\n"},
        RewriteRow {"MayHaveEmptyBrackets", "a=1\r\n[A]\r\na=1\r\n", L"[]a", "2",
                    "a=2\r\n[A]\r\na=2\r\n"},
        RewriteRow {"MayHaveABracketThatIsNotClosed", "[a=1\r\n", L"[a", "2", "[a=2\r\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Lines, ScrambledRewrite,
    ::testing::Values(
        RewriteRow {"AreCutAtTheirFirstControlCharacter",
                    "a=1\r\nb=2\tcomment\r\nlos\x1Fx\r\n[C]\t; x\r\nc=\0d\r\n"s, L"a", "2",
                    "a=2\r\nb=2\r\nlos\r\n[C]\r\nc=\r\n"},
        RewriteRow {"AreCutBeforeTheyAreLookedAt", "a\t=1\r\n[B]\t\r\na=1\tx\r\n", L"[B]a", "2",
                    "a\r\n[B]\r\na=2\r\n"},
        RewriteRow {"KeepTheirOrderAndTheirBlanks", "\r\n x=1\r\na=1\r\n  \r\n[B]\r\n\r\n", L"a",
                    "2", "\r\n x=1\r\na=2\r\n  \r\n[B]\r\n\r\n"},
        RewriteRow {"ThatAreLastAndHaveNoEndAreLost", "a=1\r\nb=1\r\nc=1", L"a", "2",
                    "a=2\r\nb=1\r\n"},
        RewriteRow {"ThatAreLastAndHaveNoEndAreNotChanged", "b=1\r\na=1", L"a", "2", "(nothing)"},
        RewriteRow {"MayEndInACarriageReturnAlone", "a=1\rb=1\r", L"b", "2", "a=1\rb=2\r"},
        RewriteRow {"AreNotCutInPieces", "a=" + std::string(7000, 'v') + "\r\nb=1\r\n", L"b", "2",
                    "a=" + std::string(7000, 'v') + "\r\nb=2\r\n"}),
    sentenceOf);

TEST(ScrambledRewriteBytes, AreThoseThatAFreshFileWouldHave)
{
    for (const int key : {7, -7, 100'000}) {
        const auto bytes = withScrambledValue(scrambledForm("a=1\n[B]\nb=2\nc=3\n", key), key,
                                              Ident::parse(L"[B]b"), "a much longer value");
        EXPECT_EQ(bytes, scrambledForm("a=1\n[B]\nb=a much longer value\nc=3\n", key));
    }
}

TEST(ScrambledRewriteBytes, OfAPlainFileAreNothing)
{
    EXPECT_EQ(withScrambledValue("a=1\r\n[B]\r\nb=2\r\n", 7, Ident::parse(L"a"), "2"),
              std::nullopt);
}

TEST(ScrambledRewriteBytes, ReadWithAnotherNumberAreNothing)
{
    EXPECT_EQ(withScrambledValue(scrambledForm("a=1\nb=2\n", 7), 8, Ident::parse(L"a"), "2"),
              std::nullopt);
}

TEST(ScrambledRewriteBytes, ComeBackWhenTheFormerValueIsWrittenAgain)
{
    std::mt19937 random(5);
    const auto below
        = [&](int bound) { return std::uniform_int_distribution<>(0, bound - 1)(random); };
    for (int i = 0; i < 500; ++i) {
        std::string text;
        std::vector<std::wstring> idents;
        std::vector<std::string> values;
        const int count = 1 + below(8);
        for (int n = 0; n < count; ++n) {
            values.emplace_back(static_cast<std::size_t>(below(30)), static_cast<char>('0' + n));
            text += "[K" + std::to_string(n) + "]\nident=" + values.back() + "\n";
            idents.push_back(L"[k" + std::to_wstring(n) + L"]ident");
        }
        const int key = below(2000) - 1000;
        const std::string former = scrambledForm(text, key);
        const auto chosen = static_cast<std::size_t>(below(count));
        const Ident ident = Ident::parse(idents[chosen]);
        const std::string value(static_cast<std::size_t>(below(50)), 'v');
        const auto there = withScrambledValue(former, key, ident, value);
        ASSERT_TRUE(there);
        ASSERT_NE(plainBytes(*there, key).find("\nident=" + value + "\r"), std::string::npos);
        ASSERT_EQ(withScrambledValue(*there, key, ident, values[chosen]), former);
    }
}

} // namespace
} // namespace corma
