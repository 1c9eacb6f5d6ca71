#include "platform/text.h"
#include "settings/model_lines.h"
#include "settings/texts.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

using corma::testing::RecordingServices;

namespace corma {
namespace {

using namespace std::string_literals;

const std::string kTwoBytes = "\xC3\xA9";
const std::string kThreeBytes = "\xE2\x82\xAC";
const std::string kFourBytes = "\xF0\x9F\x98\x80";

std::string times(std::size_t count, const std::string& text)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

// --- lines ---------------------------------------------------------------------------------------

using Lines = std::vector<std::string>;

struct LineRow
{
    const char* sentence;
    std::string text;
    Lines lines;
};

void PrintTo(const LineRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class LinesOfAText : public ::testing::TestWithParam<LineRow>
{
};

TEST_P(LinesOfAText, AreTakenWithoutTheirEnds)
{
    ModelLines lines(GetParam().text);
    EXPECT_EQ(lines.number(), -1);
    Lines taken;
    for (std::string_view line; lines.next(line);) {
        EXPECT_EQ(lines.number(), static_cast<int>(taken.size()));
        taken.emplace_back(line);
    }
    EXPECT_EQ(taken, GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    ModelLines, LinesOfAText,
    ::testing::Values(LineRow {"AnEmptyTextHasNone", "", {}},
                      LineRow {"TheLastLineNeedsNoEnd", "a\nb", {"a", "b"}},
                      LineRow {"NoLineStandsBehindTheLastEnd", "a\nb\n", {"a", "b"}},
                      LineRow {"EmptyLinesCount", "\n\na\n\n", {"", "", "a", ""}},
                      LineRow {"AReturnBelongsToTheEnd", "a\r\nb\r\n", {"a", "b"}},
                      LineRow {"OneReturnOnlyBelongsToTheEnd", "a\r\r\n", {"a\r"}},
                      LineRow {"AReturnWithinALineIsPartOfIt", "a\rb\n", {"a\rb"}},
                      LineRow {"AReturnAtTheEndOfTheTextIsPartOfTheLine", "a\r", {"a\r"}},
                      LineRow {"EndsMayDiffer", "a\nb\r\nc", {"a", "b", "c"}},
                      LineRow {"ANulIsACharacter", "a\0b\n"s, {"a\0b"s}}),
    [](const auto& row) { return row.param.sentence; });

// --- pieces --------------------------------------------------------------------------------------

struct PieceRow
{
    const char* sentence;
    std::string text;
    std::vector<std::size_t> characters; // of each piece
};

void PrintTo(const PieceRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class PiecesOfAText : public ::testing::TestWithParam<PieceRow>
{
};

TEST_P(PiecesOfAText, AreTakenOneByOne)
{
    ModelLines lines(GetParam().text);
    std::vector<std::size_t> taken;
    std::string all;
    for (std::string_view piece; lines.nextPiece(piece, kLongestProjectLine);) {
        EXPECT_EQ(lines.number(), static_cast<int>(taken.size()));
        EXPECT_TRUE(isUtf8(piece));
        taken.push_back(fromUtf8(piece).size());
        all += piece;
    }
    EXPECT_EQ(taken, GetParam().characters);
    std::string withoutEnds = GetParam().text;
    std::erase(withoutEnds, '\n');
    std::erase(withoutEnds, '\r');
    EXPECT_EQ(all, withoutEnds);
}

INSTANTIATE_TEST_SUITE_P(
    ModelLines, PiecesOfAText,
    ::testing::Values(
        PieceRow {"AnEmptyTextHasNone", "", {}},
        PieceRow {"ShortLinesAreWhole", "a\nbc\r\nd", {1, 2, 1}},
        PieceRow {"ALineAndItsFeedFit", times(253, "a") + "\nb", {253, 1}},
        PieceRow {"AFeedThatDoesNotFitIsALineOfItsOwn", times(254, "a") + "\nb", {254, 0, 1}},
        PieceRow {"OneCharacterTooManyComesNext", times(255, "a") + "\nb", {254, 1, 1}},
        PieceRow {"AReturnTakesNoRoom", times(253, "a") + "\r\nb", {253, 1}},
        PieceRow {"AReturnGoesWithItsFeed", times(254, "a") + "\r\nb", {254, 0, 1}},
        PieceRow {"ALineWithAReturnIsCutAsAnother", times(255, "a") + "\r\nb", {254, 1, 1}},
        PieceRow {"TheLastLineWithoutAFeedFits", times(254, "a"), {254}},
        PieceRow {"TheLastLineIsCut", times(255, "a"), {254, 1}},
        PieceRow {"ThreeHundredCharactersAreTwoLines", times(300, "a") + "\n", {254, 46}},
        PieceRow {"TwicePiecesAndAFeed", times(508, "a") + "\n", {254, 254, 0}},
        PieceRow {"CharactersOfTwoBytesCountOnce", times(253, kTwoBytes) + "\nb", {253, 1}},
        PieceRow {"CharactersOfTwoBytesFillALine", times(254, kTwoBytes) + "\nb", {254, 0, 1}},
        PieceRow {"CharactersOfTwoBytesAreCut", times(255, kTwoBytes) + "\nb", {254, 1, 1}},
        PieceRow {"CharactersOfThreeBytesAreCut", times(300, kThreeBytes) + "\r\nb", {254, 46, 1}},
        PieceRow {"CharactersOfFourBytesFit", times(253, kFourBytes) + "\r\nb", {253, 1}},
        PieceRow {"CharactersOfFourBytesFillALine", times(254, kFourBytes) + "\r\nb", {254, 0, 1}},
        PieceRow {"CharactersOfFourBytesAreCut", times(255, kFourBytes) + "\r\nb", {254, 1, 1}},
        PieceRow {"AMixtureIsCutAtACharacter",
                  times(253, "a") + kTwoBytes + kFourBytes + "\n",
                  {254, 1}}),
    [](const auto& row) { return row.param.sentence; });

TEST(ModelLines, AGiantLineComesInPieces)
{
    const std::string text = times(2'000'000, "a") + "\nb=1\n";
    ModelLines lines(text);
    std::size_t size = 0;
    std::string_view piece;
    while (lines.nextPiece(piece, kLongestProjectLine) && !piece.starts_with('b')) {
        EXPECT_LE(piece.size(), 254U);
        size += piece.size();
    }
    EXPECT_EQ(size, 2'000'000U);
    EXPECT_EQ(piece, "b=1");
    EXPECT_EQ(lines.number(), 2'000'000 / 254 + 1);
}

// --- cutAt ---------------------------------------------------------------------------------------

TEST(CutAt, CountsCharacters)
{
    EXPECT_EQ(cutAt("", 0), "");
    EXPECT_EQ(cutAt("abc", 0), "");
    EXPECT_EQ(cutAt("abc", 2), "ab");
    EXPECT_EQ(cutAt("abc", 3), "abc");
    EXPECT_EQ(cutAt("abc", 4), "abc");
    const std::string text = kTwoBytes + kThreeBytes + kFourBytes + "a";
    EXPECT_EQ(cutAt(text, 1), kTwoBytes);
    EXPECT_EQ(cutAt(text, 2), kTwoBytes + kThreeBytes);
    EXPECT_EQ(cutAt(text, 3), kTwoBytes + kThreeBytes + kFourBytes);
    EXPECT_EQ(cutAt(text, 4), text);
}

// --- ignored lines -------------------------------------------------------------------------------

TEST(IgnoredLines, AreEmptyOrBeginWithASemicolonABlankOrATab)
{
    for (const char* const line : {"", ";", ";A=1", " ", " A=1", "\tA=1", " [A]"}) {
        EXPECT_TRUE(isIgnored(line)) << line;
    }
    for (const char* const line : {"A=1", "[A]", "#A=1", "A;B=1", "=", "\r", "'x", "]"}) {
        EXPECT_FALSE(isIgnored(line)) << line;
    }
    EXPECT_FALSE(isIgnored("\xC2\xA0"
                           "A=1"))
        << "a blank that does not break is another character";
}

// --- normaliseLine -------------------------------------------------------------------------------

struct NormalRow
{
    const char* sentence;
    std::string line;
    std::string normal;
};

void PrintTo(const NormalRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class NormalLines : public ::testing::TestWithParam<NormalRow>
{
};

TEST_P(NormalLines, LoseBlanksUpToTheValue)
{
    bool wasCut = true;
    EXPECT_EQ(normaliseLine(GetParam().line, &wasCut), GetParam().normal);
    EXPECT_FALSE(wasCut);
    EXPECT_EQ(normaliseLine(GetParam().line), GetParam().normal);
}

INSTANTIATE_TEST_SUITE_P(
    ModelLines, NormalLines,
    ::testing::Values(NormalRow {"InTheIdentAndOneBehindTheEqualsSign", "a b = c d", "ab=c d"},
                      NormalRow {"OnlyOneBehindTheEqualsSign", "a=  b", "a= b"},
                      NormalRow {"AllBeforeTheEqualsSign", "a   =b", "a=b"},
                      NormalRow {"TheFirstEqualsSignCounts", "a = b = c", "a=b = c"},
                      NormalRow {"TabsStay", "a\t=\tb", "a\t=\tb"},
                      NormalRow {"ABlankAfterATabStays", "a=\t b", "a=\t b"},
                      NormalRow {"AtTheEndOfTheValueTheyStay", "a=b  ", "a=b  "},
                      NormalRow {"ALineThatBeginsWithABlankIsKept", " a b = c", " a b = c"},
                      NormalRow {"ALineThatBeginsWithATabIsKept", "\ta b = c", "\ta b = c"},
                      NormalRow {"LineFeedsGoEverywhere", "a\nb=\nc\nd\n", "ab=cd"},
                      NormalRow {"LineFeedsGoFromAKeptLineToo", " a\n=\nb ", " a=b "},
                      NormalRow {"AHeaderLosesAll", "[a b] c d", "[ab]cd"},
                      NormalRow {"AHeaderLosesThemUpToItsEqualsSign", "[a b] = c d", "[ab]=c d"},
                      NormalRow {"NothingButTheSign", " ", " "}, NormalRow {"AnEmptyLine", "", ""},
                      NormalRow {"AnEqualsSignAlone", "= ", "="}),
    [](const auto& row) { return row.param.sentence; });

TEST(NormaliseLine, CutsAt255Characters)
{
    for (const std::string& character : {"a"s, kTwoBytes, kFourBytes}) {
        const std::string head = "k=";
        bool wasCut = true;
        const std::string below = head + times(252, character);
        EXPECT_EQ(normaliseLine(below, &wasCut), below);
        EXPECT_FALSE(wasCut);
        const std::string at = head + times(253, character);
        EXPECT_EQ(normaliseLine(at, &wasCut), at);
        EXPECT_FALSE(wasCut);
        EXPECT_EQ(normaliseLine(head + times(254, character), &wasCut), at);
        EXPECT_TRUE(wasCut);
        EXPECT_EQ(normaliseLine(head + times(5000, character)), at);
    }
}

TEST(NormaliseLine, BlanksThatGoTakeNoRoom)
{
    bool wasCut = true;
    const std::string kept = "k=" + times(253, "a");
    EXPECT_EQ(normaliseLine("k   = " + times(253, "a"), &wasCut), kept);
    EXPECT_FALSE(wasCut);
    EXPECT_EQ(normaliseLine(" " + kept, &wasCut), " k=" + times(252, "a"));
    EXPECT_TRUE(wasCut);
}

// --- splitEntry ----------------------------------------------------------------------------------

TEST(SplitEntry, CutsAtTheFirstEqualsSign)
{
    const auto entry = splitEntry(" A b = c=d ");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->ident, " A b ");
    EXPECT_EQ(entry->value, " c=d ");
    const auto empty = splitEntry("=");
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->ident, "");
    EXPECT_EQ(empty->value, "");
    EXPECT_FALSE(splitEntry("A"));
    EXPECT_FALSE(splitEntry(""));
}

// --- chapters and defects ------------------------------------------------------------------------

class DefectsOfAFile : public ::testing::Test
{
protected:
    std::string chapter(std::string_view header, int number = 0)
    {
        return std::string(chapterOf(header, number, defects).value_or("(none)"));
    }

    RecordingServices services;
    Defects defects {L"ini"};
};

TEST_F(DefectsOfAFile, AChapterEndsAtTheFirstClosingBracket)
{
    EXPECT_EQ(chapter("[Tekst]"), "Tekst");
    EXPECT_EQ(chapter("[Tekst]=x]"), "Tekst");
    EXPECT_EQ(chapter("[ A [b]"), " A [b");
    EXPECT_EQ(chapter("[]"), "");
    defects.tell();
    EXPECT_TRUE(services.boxes.empty());
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(DefectsOfAFile, AHeaderWithoutAnEndIsOne)
{
    EXPECT_EQ(chapter("[Tekst", 4), "(none)");
    defects.tell();
    EXPECT_EQ(services.boxes,
              std::vector<std::wstring> {L"Line was skipped! Expected: \"]\" (ini:4) (Tekst)"});
}

TEST_F(DefectsOfAFile, AChapterOf256CharactersIsWhole)
{
    for (const std::string& character : {"a"s, kTwoBytes}) {
        EXPECT_EQ(chapter("[" + times(255, character) + "]"), times(255, character));
        EXPECT_EQ(chapter("[" + times(256, character) + "]"), times(256, character));
    }
    defects.tell();
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(DefectsOfAFile, ALongerChapterIsCutAndTold)
{
    EXPECT_EQ(chapter("[" + times(257, kTwoBytes) + "]", 3), times(256, kTwoBytes));
    EXPECT_EQ(chapter("[" + times(300, "a") + "]", 5), times(256, "a"));
    defects.tell();
    EXPECT_EQ(services.allPrinted(), L"\nLine was too long and is cut (ini:3)");
    EXPECT_TRUE(services.boxes.empty());
}

TEST_F(DefectsOfAFile, OnlyTheFirstOfEachKindIsTold)
{
    defects.addCut(1);
    defects.addSkipped(L'=', "first", 2);
    defects.addSkipped(L']', "[second", 3);
    defects.addCut(4);
    defects.tell();
    EXPECT_EQ(services.boxes,
              std::vector<std::wstring> {L"Line was skipped! Expected: \"=\" (ini:2) (first)"});
    EXPECT_EQ(services.allPrinted(), L"\nLine was too long and is cut (ini:1)");
}

TEST_F(DefectsOfAFile, NoneIsNotTold)
{
    defects.tell();
    EXPECT_TRUE(services.boxes.empty());
    EXPECT_EQ(services.allPrinted(), L"");
}

struct MessageRow
{
    const char* sentence;
    int language;
    wchar_t missing;
    const wchar_t* kind;
    int number;
    std::string line;
    std::wstring message;
};

void PrintTo(const MessageRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class SkippedLines : public ::testing::TestWithParam<MessageRow>
{
};

TEST_P(SkippedLines, AreToldWordForWord)
{
    const RecordingServices services;
    setTextLanguage(GetParam().language);
    const MessageRow& row = GetParam();
    EXPECT_EQ(skippedLineMessage(row.missing, row.kind, row.number, row.line), row.message);
}

INSTANTIATE_TEST_SUITE_P(
    ModelLines, SkippedLines,
    ::testing::Values(MessageRow {"English", 9, L'=', L"ini", 0, "los",
                                  L"Line was skipped! Expected: \"=\" (ini:0) (los)"},
                      MessageRow {"AHeaderLosesItsBracket", 9, L']', L"inr", 12, "[Tekst",
                                  L"Line was skipped! Expected: \"]\" (inr:12) (Tekst)"},
                      MessageRow {"OnlyTheFirstBracketGoes", 9, L']', L"ind", 1, "[[Tekst",
                                  L"Line was skipped! Expected: \"]\" (ind:1) ([Tekst)"},
                      MessageRow {"ABracketWithinTheLineStays", 9, L'=', L"ipr", 1, "a[b",
                                  L"Line was skipped! Expected: \"=\" (ipr:1) (a[b)"},
                      MessageRow {"APercentSignStays", 9, L'=', L"ini", 1, "50%s",
                                  L"Line was skipped! Expected: \"=\" (ini:1) (50%s)"},
                      MessageRow {"OtherAlphabetsStay", 9, L'=', L"ini", 1, "\xD0\x96",
                                  L"Line was skipped! Expected: \"=\" (ini:1) (Ж)"},
                      MessageRow {"AnEmptyHeader", 9, L']', L"ini", 1, "[",
                                  L"Line was skipped! Expected: \"]\" (ini:1) ()"},
                      MessageRow {"German", 7, L'=', L"ini", 0, "los",
                                  L"Line was skipped! Expected: \"=\" (ini:0) (los)"},
                      MessageRow {"FrenchHasTheEnglishText", 12, L'=', L"ini", 0, "los",
                                  L"Line was skipped! Expected: \"=\" (ini:0) (los)"},
                      MessageRow {"Dutch", 19, L']', L"inr", 7, "[los",
                                  L"Regel overgeslagen! Verwacht: \"]\" (inr:7) (los)"},
                      MessageRow {"Polish", 21, L'=', L"ind", 3, "los",
                                  L"Pominięto wiersz! Oczekiwano: \"=\" (ind:3) (los)"},
                      MessageRow {"Russian", 25, L'=', L"ipr", 3, "los",
                                  L"Строка пропущена! Ожидалось: \"=\" (ipr:3) (los)"}),
    [](const auto& row) { return row.param.sentence; });

} // namespace
} // namespace corma
