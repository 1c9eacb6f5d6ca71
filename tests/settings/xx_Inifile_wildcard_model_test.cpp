#include "inifile/InifileTest.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "support/row_names.h"
#include <corma/texts.h>
#include <corma/xx_Var.h>

using corma::testing::Ini;
using corma::testing::InifileTest;
using corma::testing::sentenceOf;

namespace {

class ModelQuery : public InifileTest
{
protected:
    // "name=value", one pair a line; the status is kept.
    std::string find(Ini& ini, std::wstring pattern, int skip = 0, int report = 0)
    {
        xx_VarArray results;
        status = ini.file.getWcStringNew(pattern.data(), &results, report, skip);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
        return textOf(results);
    }

    static std::string textOf(xx_VarArray& results)
    {
        std::string text;
        for (int i = 0; i < results.length(); ++i) {
            text += corma::toUtf8(results[i]->name()) + "="
                + corma::toUtf8(results[i]->currentText()) + "\n";
        }
        return text;
    }

    void newDrawing(const wchar_t* name = L"drawings/house.dxf")
    {
        ASSERT_TRUE(corma::newDocument(folder.path(name).c_str()));
    }

    static void store(const wchar_t* chapter, const wchar_t* ident, const wchar_t* value,
                      const wchar_t* file = L"tool.ini")
    {
        ASSERT_EQ(corma::writeToDrawing(file, chapter, ident, value, nullptr), Acad::eOk);
    }

    std::wstring tool(std::string_view text) { return folder.write(L"tool.ini", text); }

    std::wstring twoChapters()
    {
        return tool("Kop=1\nKopHoogte=2\n[Tekst]\nHoogte=3\n Uit=4\nStijl = 5=6\n\n"
                    "[Deuren]\nHoogte=7\n");
    }

    int status = 0;
};

// --- patterns ------------------------------------------------------------------------------------

struct PatternRow
{
    const char* sentence;
    const wchar_t* pattern;
    int skip;
    const char* pairs;
    int status;
};

void PrintTo(const PatternRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class ModelPattern : public ModelQuery, public ::testing::WithParamInterface<PatternRow>
{
};

TEST_P(ModelPattern, GivesItsPairs)
{
    Ini ini(twoChapters());
    EXPECT_EQ(find(ini, GetParam().pattern, GetParam().skip), GetParam().pairs);
    EXPECT_EQ(status, GetParam().status);
    EXPECT_TRUE(services.boxes.empty());
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    Settings, ModelPattern,
    ::testing::Values(
        PatternRow {"WithoutAChapterTheHeadIsMeant", L"*", 0, "Kop=1\nKopHoogte=2\n", RTNORM},
        PatternRow {"WithoutAChapterIdentsFit", L"*Hoogte", 0, "KopHoogte=2\n", RTNORM},
        PatternRow {"WithEmptyBracketsTheHeadIsMeant", L"[]Kop", 0, "Kop=1\n", RTNORM},
        PatternRow {"AChapterIsThereBehindTheHead", L"[Tekst]*", 0,
                    "Kop=1\nKopHoogte=2\n[Tekst]Hoogte=3\n[Tekst]Stijl=5=6\n", RTNORM},
        PatternRow {"TheHeadIsAlwaysAsked", L"[D*]*Hoogte", 0, "KopHoogte=2\n[Deuren]Hoogte=7\n",
                    RTNORM},
        PatternRow {"AStarIsEveryChapter", L"[*]Hoogte", 0, "[Tekst]Hoogte=3\n[Deuren]Hoogte=7\n",
                    RTNORM},
        PatternRow {"AlternativesFit", L"[Deuren,Tekst]Stijl,Kop", 0, "Kop=1\n[Tekst]Stijl=5=6\n",
                    RTNORM},
        PatternRow {"ChaptersHeedCase", L"[tekst]Hoogte", 0, "", RTCAN},
        PatternRow {"IdentsHeedCase", L"kop", 0, "", RTCAN},
        PatternRow {"AnUnknownChapterIsTheHeadAlone", L"[Dak]*", 0, "Kop=1\nKopHoogte=2\n", RTNORM},
        PatternRow {"WhatFitsNothingIsCancelled", L"[*]Dak", 0, "", RTCAN},
        PatternRow {"AnEmptyPatternFitsNothing", L"", 0, "", RTCAN},
        PatternRow {"BlanksOfTheFileAreGone", L"[Tekst]Stijl", 0, "[Tekst]Stijl=5=6\n", RTNORM}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Skip, ModelPattern,
    ::testing::Values(PatternRow {"LeavesOutTheFirstCharactersOfTheHeadsIdents", L"Kop*", 1,
                                  "op=1\nopHoogte=2\n", RTNORM},
                      PatternRow {"MayLeaveNothing", L"Kop*", 3, "=1\nHoogte=2\n", RTNORM},
                      PatternRow {"MayBeMoreThanThereIs", L"Kop*", 4, "=1\noogte=2\n", RTNORM},
                      PatternRow {"MayBeMuchMoreThanThereIs", L"Kop*", 1000000, "=1\n=2\n", RTNORM},
                      PatternRow {"BelowNoneIsNone", L"Kop", -1, "Kop=1\n", RTNORM},
                      PatternRow {"IsNotForIdentsOfChapters", L"[Tekst]H*", 3, "[Tekst]Hoogte=3\n",
                                  RTNORM},
                      PatternRow {"IsNotForNamesOfChapters", L"[Tekst]XXINIFRUBR", 3,
                                  "Algemeen=\nTekst=\n", RTNORM}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Marker, ModelPattern,
    ::testing::Values(
        PatternRow {"WithAStarListsEveryChapter", L"[*]XXINIFRUBR", 0,
                    "Algemeen=\nTekst=\nDeuren=\n", RTNORM},
        PatternRow {"ListsTheChaptersThatFit", L"[T*]XXINIFRUBR", 0, "Algemeen=\nTekst=\n", RTNORM},
        PatternRow {"WithoutAChapterListsTheHead", L"XXINIFRUBR", 0, "Algemeen=\n", RTNORM},
        PatternRow {"WithACommaListsSettingsBeforeTheirChapter", L"[*]XXINIFRUBR,Hoogte", 0,
                    "Algemeen=\n[Tekst]Hoogte=3\nTekst=\n[Deuren]Hoogte=7\nDeuren=\n", RTNORM},
        PatternRow {"WithTwoCommasListsAlternatives", L"[T*]XXINIFRUBR,Hoogte,Kop", 0,
                    "Kop=1\nAlgemeen=\n[Tekst]Hoogte=3\nTekst=\n", RTNORM},
        PatternRow {"WithNothingBehindTheCommaListsNoSettings", L"[T*]XXINIFRUBR,", 0,
                    "Algemeen=\nTekst=\n", RTNORM},
        PatternRow {"BehindACommaIsTheIdentPattern", L"[T*]Hoogte,XXINIFRUBR", 0,
                    "Algemeen=\nTekst=\n", RTNORM},
        PatternRow {"WithinAWordCounts", L"[T*]aXXINIFRUBRb", 0, "Algemeen=\nTekst=\n", RTNORM},
        PatternRow {"HeedsCase", L"[T*]xxinifrubr", 0, "", RTCAN},
        PatternRow {"InTheChapterDoesNotCount", L"[XXINIFRUBR]Kop", 0, "Kop=1\n", RTNORM},
        PatternRow {"IsNotMeantByAStar", L"[T*]Kop*", 0, "Kop=1\nKopHoogte=2\n", RTNORM}),
    sentenceOf);

TEST_F(ModelQuery, AChapterThatStandsTwiceIsListedTwice)
{
    Ini ini(tool("[A]\nX=1\n[A]\nX=2\n"));
    EXPECT_EQ(find(ini, L"[A]XXINIFRUBR,*"), "Algemeen=\n[A]X=1\nA=\n[A]X=2\nA=\n");
}

TEST_F(ModelQuery, AnEmptyValueIsAPair)
{
    Ini ini(tool("A=\n"));
    EXPECT_EQ(find(ini, L"A"), "A=\n");
}

TEST_F(ModelQuery, PairsComeBehindThoseThatAreThere)
{
    Ini ini(tool("A=1\n"));
    xx_VarArray results;
    std::wstring pattern = L"A";
    EXPECT_EQ(ini.file.getWcStringNew(pattern.data(), &results, 0, 0), RTNORM);
    EXPECT_EQ(ini.file.getWcStringNew(pattern.data(), &results, 0, 0), RTNORM);
    EXPECT_EQ(textOf(results), "A=1\nA=1\n");
}

TEST_F(ModelQuery, NothingIsReportedWhenNothingFits)
{
    Ini ini(tool("A=1\n"));
    EXPECT_EQ(find(ini, L"B", 0, 1), "");
    EXPECT_EQ(status, RTCAN);
    EXPECT_EQ(services.allPrinted(), L"");
}

// --- files ---------------------------------------------------------------------------------------

TEST_F(ModelQuery, IncludedFilesComeFirstAndDoNotTellTheStatus)
{
    folder.write(L"part.ini", "A=part\n[B]\nC=part\n");
    folder.write(L"other.ini", "A=other\n");
    Ini ini(tool("#INCLUDE=part.ini,other.ini\nA=own\n[B]\nC=own\n"));
    EXPECT_EQ(find(ini, L"A"), "A=part\nA=other\nA=own\n");
    EXPECT_EQ(find(ini, L"[B]C"), "[B]C=part\n[B]C=own\n");
    folder.write(L"part.ini", "D=part\n");
    EXPECT_EQ(find(ini, L"D"), "D=part\n");
    EXPECT_EQ(status, RTCAN);
}

TEST_F(ModelQuery, TheIncludeIsASetting)
{
    folder.write(L"part.ini", "");
    Ini ini(tool("#INCLUDE=part.ini\n"));
    EXPECT_EQ(find(ini, L"*"), "#INCLUDE=part.ini\n");
}

TEST_F(ModelQuery, WithoutAnOpenFileIsCancelledAndTold)
{
    Ini ini(folder.path(L"missing.ini"));
    services.printed.clear();
    EXPECT_EQ(find(ini, L"*"), "");
    EXPECT_EQ(status, RTCAN);
    EXPECT_EQ(services.boxes, std::vector<std::wstring> {L"Ini-file not found: "});
    corma::setTextLanguage(19);
    EXPECT_EQ(find(ini, L"*"), "");
    EXPECT_EQ(services.boxes.back(), L"Ini-bestand niet gevonden: ");
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(ModelQuery, LinesThatAreNoneAreTold)
{
    Ini ini(tool("los\nA=1\n"));
    EXPECT_EQ(find(ini, L"*"), "A=1\n");
    EXPECT_EQ(services.boxes,
              std::vector<std::wstring> {L"Line was skipped! Expected: \"=\" (ini:0) (los)"});
}

TEST_F(ModelQuery, TheFileIsReadAsItIsNow)
{
    Ini ini(tool("A=1\n"));
    EXPECT_EQ(find(ini, L"A"), "A=1\n");
    EXPECT_EQ(ini.get(L"A"), L"1");
    tool("A=2\n");
    EXPECT_EQ(ini.get(L"A"), L"2");
    EXPECT_EQ(find(ini, L"A"), "A=2\n");
}

TEST_F(ModelQuery, AScrambledFileIsNotRead)
{
    Ini plain(tool("A=1\n[B]\nC=2\n"));
    std::wstring target = folder.path(L"tool7.ini");
    ASSERT_EQ(plain.file.scramble(target.data(), 7), RTNORM);
    Ini scrambled(folder.path(L"tool.ini"), 7);
    EXPECT_EQ(scrambled.get(L"A"), L"1");
    EXPECT_EQ(find(scrambled, L"[*]A,C"), "");
    EXPECT_EQ(status, RTCAN);
}

// --- levels --------------------------------------------------------------------------------------

TEST_F(ModelQuery, ValuesOfTheDrawingGoBeforeThoseOfTheFile)
{
    newDrawing();
    Ini ini(tool("A=file\nB=file\n[C]\nD=file\n"));
    store(L"", L"A", L"drawing");
    store(L"C", L"D", L"drawing");
    store(L"C", L"E", L"drawing");
    store(L"N=w", L"F", L"drawing");
    EXPECT_EQ(find(ini, L"[*]*"),
              "A=drawing\nB=file\n[C]D=drawing\n[C]E=drawing\n[N=w]F=drawing\n");
    EXPECT_EQ(find(ini, L"[*]XXINIFRUBR"), "Algemeen=\nC=\nN=w=\n");
    EXPECT_FALSE(folder.has(L"drawings/tool.ipr"));
    corma::closeDocument();
    EXPECT_EQ(find(ini, L"[*]*"), "A=file\nB=file\n[C]D=file\n");
}

TEST_F(ModelQuery, OnlyTheDrawingsValuesOfTheFileCount)
{
    newDrawing();
    Ini ini(tool("A=file\n"));
    store(L"", L"A", L"drawing", L"other.ini");
    EXPECT_EQ(find(ini, L"A"), "A=file\n");
}

TEST_F(ModelQuery, AProjectFileBesideTheDrawingCountsWhereAFileOfThatNameLiesToo)
{
    newDrawing();
    Ini ini(tool("A=file\n"));
    folder.write(L"drawings/tool.ipr", "A=project\nB=project\n[C]\nD=project\n");
    EXPECT_EQ(find(ini, L"[*]*"), "A=file\n") << "there is no such file";
    folder.write(L"drawings/tool.ini", "A=other\n");
    EXPECT_EQ(find(ini, L"[*]*"), "A=project\nB=project\n[C]D=project\n");
    store(L"", L"A", L"drawing");
    EXPECT_EQ(find(ini, L"[*]*"), "A=drawing\nB=project\n[C]D=project\n");
}

TEST_F(ModelQuery, AProjectFileIsMadeWhereAFileOfThatNameLies)
{
    newDrawing();
    Ini ini(tool("A=file\n"));
    folder.write(L"drawings/tool.ini", "A=other\n");
    EXPECT_EQ(find(ini, L"A"), "A=file\n");
    EXPECT_TRUE(folder.has(L"drawings/tool.ipr"));
    EXPECT_EQ(folder.read(L"drawings/tool.ipr"), "");
}

TEST_F(ModelQuery, WithoutADrawingThereIsNoProject)
{
    folder.write(L"tool.ipr", "A=project\n");
    Ini ini(tool("A=file\n"));
    EXPECT_EQ(find(ini, L"A"), "A=file\n");
}

TEST_F(ModelQuery, TheProjectOfADrawingBesideTheFileCounts)
{
    newDrawing(L"house.dxf");
    folder.write(L"tool.ipr", "A=project\n");
    Ini ini(tool("A=file\n"));
    EXPECT_EQ(find(ini, L"A"), "A=project\n");
}

TEST_F(ModelQuery, AProjectFileThatCannotBeOpenedIsNotTold)
{
    newDrawing(L"house.dxf");
    folder.makeFolder(L"tool.ipr");
    Ini ini(tool("A=file\n"));
    EXPECT_EQ(find(ini, L"A"), "A=file\n");
    EXPECT_TRUE(services.boxes.empty());
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(ModelQuery, IncludedFilesHaveTheirOwnProjectAndValuesInTheDrawing)
{
    newDrawing(L"house.dxf");
    folder.write(L"part.ini", "A=part\nB=part\n");
    folder.write(L"part.ipr", "A=project\n");
    Ini ini(tool("#INCLUDE=part.ini\nB=own\n"));
    store(L"", L"B", L"drawing", L"part.ini");
    EXPECT_EQ(find(ini, L"?"), "A=project\nB=drawing\nB=own\n");
}

} // namespace
