#include "inifile/InifileTest.h"
#include "inifile/line.h"
#include "support/row_names.h"

using corma::testing::Ini;
using corma::testing::RecordingServices;
using corma::testing::sentenceOf;
using corma::testing::TempFolder;

namespace {

using namespace std::string_literals;

struct LineRow
{
    const char* sentence;
    std::string file;
    std::wstring ident;
    std::wstring value; // Ini::kNone when there is none
};

class OneFileLookup : public testing::TestWithParam<LineRow>
{
};

// Plain and scrambled files follow one grammar, and the index finds what the scan finds.
TEST_P(OneFileLookup, Gives)
{
    RecordingServices services;
    const TempFolder folder;
    Ini plain(folder.write(L"tool.ini", GetParam().file));
    EXPECT_EQ(plain.get(GetParam().ident), GetParam().value) << "by a scan";
    EXPECT_EQ(plain.get(GetParam().ident), GetParam().value) << "by the index";
}

const std::string kTwoChapters = "Kop=head\r\n[A]\r\nHoogte=2\r\nBreedte=3\r\n[B]\r\nHoogte=5\r\n";

INSTANTIATE_TEST_SUITE_P(
    Lines, OneFileLookup,
    testing::Values(
        LineRow {"AValueEndsAtTheEndOfItsLine", "[A]\nHoogte=2\nBreedte=3", L"[A]Hoogte", L"2"},
        LineRow {"TheLastLineNeedsNoLineEnd", "[A]\nHoogte=2", L"[A]Hoogte", L"2"},
        LineRow {"ACarriageReturnIsPartOfTheLineEnd", "[A]\r\nHoogte=2\r\n", L"[A]Hoogte", L"2"},
        LineRow {"ATabEndsWhatAReaderSees", "X=ab\tcd\nY=1\n", L"X", L"ab"},
        LineRow {"ATabBeforeTheEqualsSignLeavesNoEntry", "X\t=1\n", L"X", Ini::kNone},
        LineRow {"ANulByteEndsIt", "X=ab\0cd\nY=1\n"s, L"X", L"ab"},
        LineRow {"AfterANulByteTheNextLineCounts", "X=ab\0cd\nY=1\n"s, L"Y", L"1"},
        LineRow {"ALoneCarriageReturnEndsItToo", "X=ab\rY=1\nZ=2\n", L"X", L"ab"},
        LineRow {"WhatIsBehindALoneCarriageReturnIsLost", "X=ab\rY=1\nZ=2\n", L"Y", Ini::kNone},
        LineRow {"ALeadingBlankDisablesALine", " X=1\nX=2\n", L"X", L"2"},
        LineRow {"ALeadingBlankDisablesAHeader", " [A]\nX=1\n", L"[A]X", Ini::kNone},
        LineRow {"ABlankLedLineIsNotFoundByItsName", " X=1\n", L" X", Ini::kNone},
        LineRow {"ABlankBeforeTheEqualsSignBelongsToTheIdent", "X =1\n", L"X", Ini::kNone},
        LineRow {"AnIdentMayEndInABlank", "X =1\n", L"X ", L"1"},
        LineRow {"ABlankBehindTheEqualsSignBelongsToTheValue", "X= 1 \n", L"X", L" 1 "},
        LineRow {"AValueMayHoldEqualsSignsAndCommas", "X=a=b,c\n", L"X", L"a=b,c"},
        LineRow {"ASemicolonBeginsNoComment", ";X=1\n", L";X", L"1"},
        LineRow {"ALineWithoutEqualsSignIsIgnored", "X\nX=1\n", L"X", L"1"},
        LineRow {"AnEmptyValueIsFound", "X=\n", L"X", L""},
        LineRow {"AnEmptyLineIsNothing", "\n\r\n\nX=1\n", L"X", L"1"},
        LineRow {"TheFirstOfTwoWins", "X=1\nX=2\n", L"X", L"1"},
        LineRow {"AnIdentIsFoundInAnyCase", "HOOGTE=1\n", L"hoogte", L"1"},
        LineRow {"AnIdentIsFoundInAnyCaseTheOtherWay", "hoogte=1\n", L"HOOGTE", L"1"},
        LineRow {"CaseFoldsBeyondAscii", "COÖRDINAAT=1\n", L"coördinaat", L"1"},
        LineRow {"CaseFoldsInWindows1252Too", "CO\xD6RDINAAT=1\n", L"coördinaat", L"1"},
        LineRow {"ALongerIdentIsAnother", "Hoogtes=1\n", L"Hoogte", Ini::kNone},
        LineRow {"AShorterIdentIsAnother", "Hoog=1\n", L"Hoogte", Ini::kNone},
        LineRow {"AnIdentWithAnEqualsSignIsNeverFound", "a=b=c\n", L"a=b", Ini::kNone},
        LineRow {"AnIdentMayBeEmpty", "[A]\n=1\n", L"[A]", L"1"},
        LineRow {"AnEmptyFileHasNothing", "", L"X", Ini::kNone},
        LineRow {"OnlyLineEnds", "\n\n\n", L"X", Ini::kNone}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Chapters, OneFileLookup,
    testing::Values(
        LineRow {"APlainIdentIsInTheHeadOfTheFile", kTwoChapters, L"Kop", L"head"},
        LineRow {"APlainIdentStopsAtTheFirstHeader", kTwoChapters, L"Hoogte", Ini::kNone},
        LineRow {"AnIdentIsInItsChapter", kTwoChapters, L"[A]Breedte", L"3"},
        LineRow {"EachChapterHasItsOwn", kTwoChapters, L"[B]Hoogte", L"5"},
        LineRow {"AChapterEndsAtTheNextHeader", kTwoChapters, L"[B]Breedte", Ini::kNone},
        LineRow {"AChapterIsFoundInAnyCase", kTwoChapters, L"[a]hoogte", L"2"},
        LineRow {"AHeadIdentIsInNoChapter", kTwoChapters, L"[A]Kop", Ini::kNone},
        LineRow {"AnUnknownChapterHasNothing", kTwoChapters, L"[C]Hoogte", Ini::kNone},
        LineRow {"AChapterIsNotFoundByTheBeginningOfItsName", "[AB]\nX=1\n", L"[A]X", Ini::kNone},
        LineRow {"AHeaderGoesToItsFirstBracket", "[A]rest]\nX=1\n", L"[A]X", L"1"},
        LineRow {"OnlyTheFirstOfTwoChaptersOfANameCounts", "[A]\nX=1\n[B]\n[A]\nY=2\n", L"[A]Y",
                 Ini::kNone},
        LineRow {"AnEmptyFirstChapterOfANameCounts", "[A]\n[A]\nY=2\n", L"[A]Y", Ini::kNone},
        LineRow {"AHeaderNeedsItsLastBracket", "[A\nX=1\n", L"X", L"1"},
        LineRow {"AHeaderMayHoldAnEqualsSign", "[A=1]\nX=2\n", L"[A=1]X", L"2"},
        LineRow {"ALineThatOnlyBeginsLikeAHeaderIsAnEntry", "[A=1\n", L"[A", L"1"},
        LineRow {"ABlankBehindAHeaderMakesItNone", "[A] \nX=1\n", L"X", L"1"},
        LineRow {"ATabBehindAHeaderIsLost", "[A]\tx\nX=1\n", L"[A]X", L"1"},
        LineRow {"AnEmptyChapterInTheIdentIsTheHead", "X=1\n[A]\nX=2\n", L"[]X", L"1"},
        LineRow {"WithoutAClosingBracketItIsAPlainName", "[A=1\n", L"[A", L"1"},
        LineRow {"TheHeadChapterByNameIsOneFurtherDown", "X=1\n[Algemeen]\nX=2\n", L"[Algemeen]X",
                 L"2"},
        LineRow {"ThePlainIdentIsTheOneAbove", "X=1\n[Algemeen]\nX=2\n", L"X", L"1"},
        LineRow {"WithoutThatHeaderTheNameFindsNothing", "X=1\n", L"[Algemeen]X", Ini::kNone},
        LineRow {"ChaptersFoldBeyondAscii", "[COÖRD]\nX=1\n", L"[coörd]X", L"1"}),
    sentenceOf);

// Lines of up to 3000 characters are whole; what is longer counts as further lines.
std::string lineOf(std::size_t size, const std::string& begin)
{
    return begin + std::string(size - begin.size(), 'x');
}

std::wstring valueOfSize(std::size_t size)
{
    return std::wstring(size, L'x');
}

TEST(LongLine, OfLessThan3000CharactersIsWhole)
{
    RecordingServices services;
    const TempFolder folder;
    Ini ini(folder.write(L"a.ini", lineOf(2999, "X=") + "\nY=1\n"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ini.get(L"X", 5000), valueOfSize(2997));
        EXPECT_EQ(ini.get(L"Y"), L"1");
    }
}

TEST(LongLine, Of3000CharactersIsWhole)
{
    RecordingServices services;
    const TempFolder folder;
    for (const char* lineEnd : {"\n", "\r\n"}) {
        Ini ini(folder.write(L"a.ini", lineOf(3000, "X=") + lineEnd + "Y=1\n"));
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(ini.get(L"X", 5000), valueOfSize(2998));
            EXPECT_EQ(ini.get(L"Y"), L"1");
        }
    }
}

TEST(LongLine, BeyondThatIsALineOfItsOwn)
{
    RecordingServices services;
    const TempFolder folder;
    for (const char* lineEnd : {"\n", "\r\n"}) {
        Ini ini(folder.write(L"a.ini", lineOf(3000, "X=") + "Z=2" + lineEnd + "Y=1\n"));
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(ini.get(L"X", 5000), valueOfSize(2998));
            EXPECT_EQ(ini.get(L"Z"), L"2");
            EXPECT_EQ(ini.get(L"Y"), L"1");
        }
    }
}

TEST(LongLine, ThePiecesFollowTheRulesOfLines)
{
    RecordingServices services;
    const TempFolder folder;
    const std::string file
        = lineOf(3000, "X=") + " Z=disabled" + std::string(2989, 'x') + "[A]\nQ=3\n";
    Ini ini(folder.write(L"a.ini", file));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ini.get(L"Z"), L"(none)");
        EXPECT_EQ(ini.get(L"[A]Q"), L"3");
    }
}

TEST(LongLine, CountsCharactersAndNotBytes)
{
    RecordingServices services;
    const TempFolder folder;
    std::string line = "X=";
    for (int i = 0; i < 2998; ++i) {
        line += "\xC3\xA9";
    }
    Ini ini(folder.write(L"a.ini", line + "Z=2\nY=1\n"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ini.get(L"X", 5000), std::wstring(2998, L'é'));
        EXPECT_EQ(ini.get(L"Z"), L"2");
        EXPECT_EQ(ini.get(L"Y"), L"1");
    }
}

TEST(LongLine, WithoutAnyLineEndIsReadInPieces)
{
    RecordingServices services;
    const TempFolder folder;
    Ini ini(folder.write(L"a.ini", std::string(1'000'000 / 3000 * 3000, 'x') + "Y=1"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ini.get(L"Y"), L"1");
    }
}

} // namespace
