#include "host/host.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

namespace {

struct WildCardRow
{
    const char* sentence;
    const wchar_t* text;
    const wchar_t* pattern;
    bool fits; // when case is heeded
};

std::string sentenceOf(const testing::TestParamInfo<WildCardRow>& row)
{
    return row.param.sentence;
}

class WildCard : public testing::TestWithParam<WildCardRow>
{
};

TEST_P(WildCard, Fits)
{
    const auto& [sentence, text, pattern, fits] = GetParam();
    EXPECT_EQ(acutWcMatch(text, pattern), fits ? RTNORM : RTERROR);
    EXPECT_EQ(acutWcMatchEx(text, pattern, false), fits);
}

// clang-format off
const WildCardRow literalRows[] = {
    {"TheSameText",                          L"Hoogte",  L"Hoogte",  true},
    {"AnotherText",                          L"Hoogte",  L"Breedte", false},
    {"OtherCase",                            L"hoogte",  L"Hoogte",  false},
    {"TheBeginningOnly",                     L"Hoogte",  L"Hoog",    false},
    {"MoreThanTheText",                      L"Hoog",    L"Hoogte",  false},
    {"AnEmptyPatternFitsTheEmptyText",       L"",        L"",        true},
    {"AnEmptyPatternFitsNothingElse",        L"a",       L"",        false},
    {"NullTextIsEmpty",                      nullptr,    L"",        true},
    {"NullPatternIsEmpty",                   L"",        nullptr,    true},
    {"BothNull",                             nullptr,    nullptr,    true},
    {"NullPatternFitsNoText",                L"a",       nullptr,    false},
    {"NullTextFitsTheStar",                  nullptr,    L"*",       true},
    {"AClosingBracketAloneIsLiteral",        L"a]",      L"a]",      true},
    {"AHyphenOutsideBracketsIsLiteral",      L"a-c",     L"a-c",     true},
    {"AHyphenOutsideBracketsIsNoRange",      L"b",       L"a-c",     false},
    {"ABackslashIsLiteral",                  L"a\\b",    L"a\\b",    true},
};

const WildCardRow singleRows[] = {
    {"HashFitsADigit",                       L"7",       L"#",       true},
    {"HashFitsNoLetter",                     L"a",       L"#",       false},
    {"HashFitsNotNothing",                   L"",        L"#",       false},
    {"HashFitsOneDigitOnly",                 L"77",      L"#",       false},
    {"HashFitsZeroAndNine",                  L"09",      L"##",      true},
    {"HashFitsNotTheCharacterBeforeZero",    L"/",       L"#",       false},
    {"HashFitsNotTheCharacterBehindNine",    L":",       L"#",       false},
    {"HashFitsNoDigitOfAnotherScript",       L"\u0663",  L"#",       false},
    {"AtFitsALetter",                        L"q",       L"@",       true},
    {"AtFitsACapital",                       L"Q",       L"@",       true},
    {"AtFitsALetterWithAnAccent",            L"\u00E9",  L"@",       true},
    {"AtFitsALetterOfAnotherScript",         L"\u0416",  L"@",       true},
    {"AtFitsNoDigit",                        L"7",       L"@",       false},
    {"AtFitsNoUnderscore",                   L"_",       L"@",       false},
    {"DotFitsASign",                         L"_",       L".",       true},
    {"DotFitsABlank",                        L" ",       L".",       true},
    {"DotFitsADot",                          L".",       L".",       true},
    {"DotFitsNoLetter",                      L"a",       L".",       false},
    {"DotFitsNoLetterWithAnAccent",          L"\u00E9",  L".",       false},
    {"DotFitsNoDigit",                       L"7",       L".",       false},
    {"DotFitsNoDigitOfAnotherScript",        L"\u0663",  L".",       false},
    {"DotFitsNotNothing",                    L"",        L".",       false},
    {"QuestionMarkFitsAnyCharacter",         L"a7_",     L"???",     true},
    {"QuestionMarkFitsNotNothing",           L"",        L"?",       false},
    {"QuestionMarkFitsACharacterBeyondTheFirstPlane", L"\U0001F600", L"?", true},
    {"TheyMixWithLiterals",                  L"Wand-07b", L"W@@d.##?", true},
};

const WildCardRow starRows[] = {
    {"StarFitsAnything",                     L"a7_",     L"*",       true},
    {"StarFitsNothing",                      L"",        L"*",       true},
    {"StarAtTheEndFitsTheRest",              L"Hoogte",  L"Hoog*",   true},
    {"StarAtTheEndFitsAnEmptyRest",          L"Hoog",    L"Hoog*",   true},
    {"StarAtTheFront",                       L"Hoogte",  L"*te",     true},
    {"StarAtTheFrontNeedsTheEnd",            L"Hoogtes", L"*te",     false},
    {"StarInTheMiddle",                      L"Hoogte",  L"H*e",     true},
    {"StarOnBothSides",                      L"Hoogte",  L"*oog*",   true},
    {"StarTakesBackWhatItTook",              L"abcabd",  L"*abd",    true},
    {"StarsTakeBackInTurn",                  L"aXbXcXd", L"a*X*Xd",  true},
    {"StarMayNotOverlapTheEnd",              L"aba",     L"ab*ba",   false},
    {"SeveralStarsAreOne",                   L"ab",      L"a***b",   true},
    {"SeveralStarsFitNothing",               L"",        L"***",     true},
    {"StarDoesNotReplaceACharacter",         L"",        L"*?",      false},
    {"StarBeforeASet",                       L"xx7",     L"*[5-9]",  true},
};

const WildCardRow setRows[] = {
    {"ASetFitsAMember",                      L"b",       L"[abc]",   true},
    {"ASetFitsNoOther",                      L"d",       L"[abc]",   false},
    {"ASetFitsNotNothing",                   L"",        L"[abc]",   false},
    {"ASetFitsOneCharacter",                 L"ab",      L"[abc]",   false},
    {"ASetHeedsCase",                        L"B",       L"[abc]",   false},
    {"ANegatedSetFitsAnother",               L"d",       L"[~abc]",  true},
    {"ANegatedSetFitsNoMember",              L"b",       L"[~abc]",  false},
    {"ANegatedSetFitsNotNothing",            L"",        L"[~abc]",  false},
    {"ARangeFitsItsLowerBound",              L"b",       L"[b-d]",   true},
    {"ARangeFitsItsUpperBound",              L"d",       L"[b-d]",   true},
    {"ARangeFitsWhatLiesBetween",            L"c",       L"[b-d]",   true},
    {"ARangeFitsNothingBelow",               L"a",       L"[b-d]",   false},
    {"ARangeFitsNothingAbove",               L"e",       L"[b-d]",   false},
    {"ARangeFitsNoHyphen",                   L"-",       L"[b-d]",   false},
    {"ANegatedRange",                        L"5",       L"[~0-9]",  false},
    {"ARangeTurnedRoundIsEmpty",             L"c",       L"[d-b]",   false},
    {"TwoRanges",                            L"7",       L"[a-f0-9]", true},
    {"AHyphenAtTheFrontIsLiteral",           L"-",       L"[-a]",    true},
    {"AHyphenAtTheFrontMakesNoRange",        L"A",       L"[-a]",    false},
    {"AHyphenAtTheEndIsLiteral",             L"-",       L"[a-]",    true},
    {"AHyphenAtTheEndLeavesTheMember",       L"a",       L"[a-]",    true},
    {"AHyphenBehindTheNegationIsLiteral",    L"-",       L"[~-a]",   false},
    {"AHyphenBehindARangeIsLiteral",         L"-",       L"[a-c-e]", true},
    {"AHyphenBehindARangeMakesNoOther",      L"d",       L"[a-c-e]", false},
    {"AHyphenCanBeABound",                   L",",       L"[+--]",   true},
    {"AnEscapedHyphenIsLiteral",             L"b",       L"[a`-c]",  false},
    {"AnEscapedHyphenIsAMember",             L"-",       L"[a`-c]",  true},
    {"AnEscapedBoundIsABound",               L"\\",      L"[[-`]]",  true},
    {"ANegationNotAtTheFrontIsLiteral",      L"~",       L"[a~]",    true},
    {"AnEscapedNegationIsAMember",           L"~",       L"[`~a]",   true},
    {"AnEscapedClosingBracketIsAMember",     L"]",       L"[a`]b]",  true},
    {"AnOpeningBracketInsideIsAMember",      L"[",       L"[a[]",    true},
    {"AnEscapedBackquoteIsAMember",          L"`",       L"[a``]",   true},
    {"ACommaInsideIsAMember",                L",",       L"[a,b]",   true},
    {"ACommaInsideSeparatesNothing",         L"b]",      L"[a,b]",   false},
    {"SpecialCharactersInsideAreMembers",    L"*",       L"[#@.?*]", true},
    {"SpecialCharactersInsideMeanNothing",   L"7",       L"[#@.?*]", false},
    {"AnEmptySetFitsNoCharacter",            L"]",       L"[]",      false},
    {"AnEmptySetFitsNotNothing",             L"",        L"[]",      false},
    {"ANegatedEmptySetFitsAnyCharacter",     L"a",       L"[~]",     true},
    {"ANegatedEmptySetFitsNotNothing",       L"",        L"[~]",     false},
    {"AnUnclosedBracketIsLiteral",           L"[abc",    L"[abc",    true},
    {"AnUnclosedBracketMakesNoSet",          L"a",       L"[abc",    false},
    {"AnUnclosedBracketLeavesTheRest",       L"[a7",     L"[a#",     true},
    {"AnUnclosedBracketLeavesTheComma",      L"b",       L"[a,b",    true},
    {"ABracketWhoseEndIsEscapedIsLiteral",   L"[a]",     L"[a`]",    true},
    {"ABracketAloneIsLiteral",               L"[",       L"[",       true},
    {"ABracketBehindTheLastSetIsLiteral",    L"a[",      L"[a][",    true},
    {"AnUnclosedBracketWithANegation",       L"[~a",     L"[~a",     true},
};

const WildCardRow alternativeRows[] = {
    {"TheFirstAlternative",                  L"een",     L"een,twee,drie", true},
    {"AnAlternativeInBetween",               L"twee",    L"een,twee,drie", true},
    {"TheLastAlternative",                   L"drie",    L"een,twee,drie", true},
    {"NoAlternative",                        L"vier",    L"een,twee,drie", false},
    {"ABlankBelongsToItsAlternative",        L"twee",    L"een, twee",     false},
    {"AlternativesWithStars",                L"tweede",  L"een*,twee*",    true},
    {"TheTextMayNotHoldTheWholePattern",     L"een,twee", L"een,twee",     false},
    {"AnEscapedCommaIsLiteral",              L"een,twee", L"een`,twee",    true},
    {"AnEscapedCommaSeparatesNothing",       L"een",     L"een`,twee",     false},
    {"AnEmptyAlternativeFitsTheEmptyText",   L"",        L"a,",            true},
    {"AnEmptyAlternativeInFront",            L"",        L",a",            true},
    {"AnEmptyAlternativeFitsNothingElse",    L"b",       L"a,,c",          false},
    {"ACommaAloneFitsTheEmptyText",          L"",        L",",             true},
    {"ACommaAloneFitsNoComma",               L",",       L",",             false},
    {"ASetInAnAlternative",                  L"b",       L"x,[a,b],y",     true},
    {"ASetEndsBeforeTheNextAlternative",     L"y",       L"x,[a,b],y",     true},
    {"ABracketIsClosedAcrossACommaOnly",     L"a,",      L"[a,b],c",       false},
};

const WildCardRow negatedRows[] = {
    {"ANegatedAlternativeFitsAnotherText",   L"b",       L"~a",      true},
    {"ANegatedAlternativeFitsNotItsText",    L"a",       L"~a",      false},
    {"ANegatedAlternativeFitsTheEmptyText",  L"",        L"~a",      true},
    {"ANegatedStarFitsNothing",              L"a",       L"~*",      false},
    {"ANegatedPartInTheMiddle",              L"abc",     L"~*b*",    false},
    {"ANegatedPartThatIsAbsent",             L"adc",     L"~*b*",    true},
    {"OnlyItsAlternativeIsNegated",          L"b",       L"~a,b",    true},
    {"EitherAlternativeIsEnough",            L"a",       L"~a,a",    true},
    {"ALaterAlternativeCanBeNegated",        L"c",       L"a,~b",    true},
    {"ALaterNegatedAlternativeRefuses",      L"b",       L"a,~b",    false},
    {"TwoNegationsAreAlternatives",          L"a",       L"~a,~b",   true},
    {"ATildeNotAtTheFrontIsLiteral",         L"a~b",     L"a~b",     true},
    {"ATildeAtTheEndIsLiteral",              L"a~",      L"a~",      true},
    {"ATildeAloneRefusesTheEmptyText",       L"",        L"~",       false},
    {"ATildeAloneFitsAllElse",               L"~",       L"~",       true},
    {"ASecondTildeIsLiteral",                L"~x",      L"~~x",     false},
    {"ASecondTildeDoesNotNegateAgain",       L"x",       L"~~x",     true},
    {"AnEscapedTildeIsLiteral",              L"~a",      L"`~a",     true},
    {"AnEscapedTildeNegatesNothing",         L"b",       L"`~a",     false},
    {"ANegatedSetAlternative",               L"a",       L"~[ab]",   false},
    {"TwoNegationsCancelOnOneCharacter",     L"a",       L"~[~ab]",  true},
};

const WildCardRow escapeRows[] = {
    {"AnEscapedStarIsLiteral",               L"*",       L"`*",      true},
    {"AnEscapedStarIsNoWildCard",            L"a",       L"`*",      false},
    {"AnEscapedHashIsLiteral",               L"#",       L"`#",      true},
    {"AnEscapedAtIsLiteral",                 L"@",       L"`@",      true},
    {"AnEscapedDotIsLiteral",                L"_",       L"`.",      false},
    {"AnEscapedQuestionMarkIsLiteral",       L"a",       L"`?",      false},
    {"AnEscapedBracketIsLiteral",            L"[a]",     L"`[a]",    true},
    {"AnEscapedBackquoteIsLiteral",          L"`",       L"``",      true},
    {"AnEscapedLetterIsItself",              L"a",       L"`a",      true},
    {"ABackquoteAtTheEndIsLiteral",          L"a`",      L"a`",      true},
    {"ABackquoteAloneIsLiteral",             L"`",       L"`",       true},
    {"ThreeBackquotesAreTwo",                L"``",      L"```",     true},
    {"AnEscapedStarBehindAStar",             L"ab*",     L"a*`*",    true},
    {"AnEscapedStarAtTheEndIsNeeded",        L"ab",      L"ab`*",    false},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Literals, WildCard, testing::ValuesIn(literalRows), sentenceOf);
INSTANTIATE_TEST_SUITE_P(SingleCharacters, WildCard, testing::ValuesIn(singleRows), sentenceOf);
INSTANTIATE_TEST_SUITE_P(Stars, WildCard, testing::ValuesIn(starRows), sentenceOf);
INSTANTIATE_TEST_SUITE_P(Sets, WildCard, testing::ValuesIn(setRows), sentenceOf);
INSTANTIATE_TEST_SUITE_P(Alternatives, WildCard, testing::ValuesIn(alternativeRows), sentenceOf);
INSTANTIATE_TEST_SUITE_P(Negations, WildCard, testing::ValuesIn(negatedRows), sentenceOf);
INSTANTIATE_TEST_SUITE_P(Escapes, WildCard, testing::ValuesIn(escapeRows), sentenceOf);

class WildCardIgnoringCase : public testing::TestWithParam<WildCardRow>
{
};

TEST_P(WildCardIgnoringCase, Fits)
{
    EXPECT_EQ(acutWcMatchEx(GetParam().text, GetParam().pattern, true), GetParam().fits);
}

// clang-format off
const WildCardRow ignoringCaseRows[] = {
    {"ALiteral",                             L"HOOGTE",  L"hoogte",   true},
    {"ALiteralTheOtherWayRound",             L"hoogte",  L"HOOGTE",   true},
    {"AnotherLiteral",                       L"hoogte",  L"hoogt\u00E9", false},
    {"AShorterLiteral",                      L"HOOG",    L"hoogte",   false},
    {"ALongerText",                          L"HOOGTE",  L"hoog",     false},
    {"ALiteralBehindAStar",                  L"Ac1",     L"aC*",      true},
    {"ALetterWithAnAccent",                  L"CAF\u00C9", L"caf\u00E9", true},
    {"AMember",                              L"B",       L"[abc]",    true},
    {"ACapitalMember",                       L"b",       L"[ABC]",    true},
    {"ARange",                               L"Q",       L"[a-z]",    true},
    {"ACapitalRange",                        L"q",       L"[A-Z]",    true},
    {"ARangeWithAccents",                    L"\u00C9",  L"[\u00E0-\u00FF]", true},
    {"ANegatedRange",                        L"Q",       L"[~a-z]",   false},
    {"ARangeKeepsTheSignsBetweenTheAlphabets", L"_",     L"[A-z]",    true},
    {"ARangeAcrossTheAlphabets",             L"A",       L"[Z-a]",    true},
    {"ALookAlikeIsNoMember",                 L"\u212A",  L"[k]",      false},
    {"ALookAlikeIsInNoRange",                L"\u017F",  L"[A-Z]",    false},
    {"AnAlternative",                        L"PLOT",    L"3dorbit,preview,plot", true},
    {"ANegation",                            L"PLOT",    L"~plot",    false},
    {"AnEscapedLetter",                      L"A",       L"`a",       true},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(WildCard, WildCardIgnoringCase, testing::ValuesIn(ignoringCaseRows),
                         sentenceOf);

// Were each star taken back in turn, this would take longer than a life.
TEST(WildCardEffort, IsBoundedForManyStars)
{
    std::wstring pattern;
    for (int i = 0; i < 100; ++i) {
        pattern += L"*a";
    }
    const std::wstring text(5000, L'a');
    EXPECT_TRUE(acutWcMatchEx(text.c_str(), pattern.c_str(), false));
    EXPECT_FALSE(acutWcMatchEx(text.c_str(), (pattern + L"b").c_str(), false));
}

TEST(WildCardEffort, IsBoundedForManyOpeningBrackets)
{
    const std::wstring brackets(20000, L'[');
    EXPECT_TRUE(acutWcMatchEx(brackets.c_str(), brackets.c_str(), false));
    EXPECT_TRUE(acutWcMatchEx(L"[", (brackets + L"]").c_str(), false));
}

TEST(WildCardEffort, NeedsNoStackForLongTexts)
{
    const std::wstring text(1000000, L'x');
    EXPECT_TRUE(acutWcMatchEx(text.c_str(), text.c_str(), true));
    EXPECT_TRUE(acutWcMatchEx(text.c_str(), (L"*" + text).c_str(), false));
    EXPECT_FALSE(acutWcMatchEx(text.c_str(), L"*x?[x]y", false));
}

// --- against a plain matcher ---------------------------------------------------------------------

/// The rules word by word: recursive, slow, without a thought for effort. ASCII only.
class PlainMatcher
{
public:
    static bool fits(std::wstring_view text, std::wstring_view pattern)
    {
        for (;;) {
            const std::size_t end = alternativeLength(pattern);
            std::wstring_view alternative = pattern.substr(0, end);
            const bool negated = !alternative.empty() && alternative.front() == L'~';
            alternative.remove_prefix(negated ? 1 : 0);
            if (alternativeFits(text, alternative) != negated) {
                return true;
            }
            if (end == pattern.size()) {
                return false;
            }
            pattern.remove_prefix(end + 1);
        }
    }

private:
    static bool isEscape(std::wstring_view pattern)
    {
        return pattern.size() > 1 && pattern.front() == L'`';
    }

    /// Characters of the set at the front, its brackets counted; 0 when there is none.
    static std::size_t setLength(std::wstring_view pattern)
    {
        if (pattern.empty() || pattern.front() != L'[') {
            return 0;
        }
        for (std::size_t i = 1; i < pattern.size(); ++i) {
            if (pattern[i] == L']') {
                return i + 1;
            }
            i += isEscape(pattern.substr(i)) ? 1 : 0;
        }
        return 0;
    }

    static std::size_t elementLength(std::wstring_view pattern)
    {
        const std::size_t set = setLength(pattern);
        return set != 0 ? set : isEscape(pattern) ? 2 : 1;
    }

    static std::size_t alternativeLength(std::wstring_view pattern)
    {
        std::size_t length = 0;
        while (length < pattern.size() && pattern[length] != L',') {
            length += elementLength(pattern.substr(length));
        }
        return length;
    }

    static bool alternativeFits(std::wstring_view text, std::wstring_view pattern)
    {
        if (pattern.empty()) {
            return text.empty();
        }
        if (pattern.front() == L'*') {
            return alternativeFits(text, pattern.substr(1))
                || (!text.empty() && alternativeFits(text.substr(1), pattern));
        }
        const std::size_t length = elementLength(pattern);
        return !text.empty() && elementFits(text.front(), pattern.substr(0, length))
            && alternativeFits(text.substr(1), pattern.substr(length));
    }

    static bool elementFits(wchar_t c, std::wstring_view element)
    {
        const bool digit = std::wstring_view(L"0123456789").find(c) != std::wstring_view::npos;
        const bool letter = (L'a' <= c && c <= L'z') || (L'A' <= c && c <= L'Z');
        if (element.size() == 2 && element.front() == L'`') {
            return element.back() == c;
        }
        if (element.size() > 1) {
            return setFits(c, element.substr(1, element.size() - 2));
        }
        switch (element.front()) {
        case L'#':
            return digit;
        case L'@':
            return letter;
        case L'.':
            return !digit && !letter;
        case L'?':
            return true;
        default:
            return element.front() == c;
        }
    }

    static bool setFits(wchar_t c, std::wstring_view members)
    {
        if (!members.empty() && members.front() == L'~') {
            return !isMember(c, members.substr(1));
        }
        return isMember(c, members);
    }

    static wchar_t takeCharacter(std::wstring_view& members)
    {
        members.remove_prefix(isEscape(members) ? 1 : 0);
        const wchar_t c = members.front();
        members.remove_prefix(1);
        return c;
    }

    static bool isMember(wchar_t c, std::wstring_view members)
    {
        while (!members.empty()) {
            const wchar_t low = takeCharacter(members);
            wchar_t high = low;
            if (members.size() > 1 && members.front() == L'-') {
                members.remove_prefix(1);
                high = takeCharacter(members);
            }
            if (low <= c && c <= high) {
                return true;
            }
        }
        return false;
    }
};

TEST(WildCardAgainstAPlainMatcher, AgreesOnRandomTextsAndPatterns)
{
    constexpr std::wstring_view alphabet = L"ab1-#@.*?~[],`";
    constexpr unsigned seed = 20180321;
    constexpr int rounds = 200000;
    std::mt19937 random(seed);
    const auto randomText = [&](std::size_t longest) {
        std::wstring text(random() % (longest + 1), L'\0');
        for (wchar_t& c : text) {
            c = alphabet[random() % alphabet.size()];
        }
        return text;
    };
    int fitting = 0;
    for (int i = 0; i < rounds; ++i) {
        const std::wstring text = randomText(4);
        const std::wstring pattern = randomText(9);
        const bool expected = PlainMatcher::fits(text, pattern);
        ASSERT_EQ(acutWcMatchEx(text.c_str(), pattern.c_str(), false), expected)
            << "text " << testing::PrintToString(text) << " pattern "
            << testing::PrintToString(pattern);
        fitting += expected ? 1 : 0;
    }
    // Both answers occur often enough to mean something.
    EXPECT_GT(fitting, rounds / 20);
    EXPECT_LT(fitting, rounds - rounds / 20);
}

} // namespace
