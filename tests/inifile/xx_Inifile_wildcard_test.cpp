#include "inifile/InifileTest.h"
#include "platform/text.h"
#include <corma/host.h>
#include <corma/xx_Var.h>

using corma::testing::Ini;
using corma::testing::InifileTest;

namespace {

class Wildcard : public InifileTest
{
protected:
    // "name=value", one pair a line; the status is kept.
    std::string find(Ini& ini, std::wstring pattern, int skip = 0, int report = 0)
    {
        xx_VarArray results;
        status = ini.file.getWcString(pattern.data(), &results, report, skip);
        std::string text;
        for (int i = 0; i < results.length(); ++i) {
            EXPECT_NE(results[i]->currentText(), nullptr);
            text += corma::toUtf8(results[i]->name()) + "="
                + corma::toUtf8(results[i]->currentText()) + "\n";
        }
        return text;
    }

    Ini twoChapters()
    {
        return Ini(folder.write(L"a.ini",
                                "Kop=1\nKopHoogte=2\n[Tekst]\nHoogte=3\n "
                                "Uit=4\nStijl=5=6\n\n[Deuren]\nHoogte=7\tlost\n"));
    }

    int status = 0;
};

TEST_F(Wildcard, AChapterAndAStarGiveTheHeaderAndEveryEntry)
{
    Ini ini = twoChapters();
    EXPECT_EQ(find(ini, L"[Tekst]*"), "[Tekst]=\n[Tekst]Hoogte=3\n[Tekst]Stijl=5=6\n");
    EXPECT_EQ(status, RTNORM);
}

TEST_F(Wildcard, WithoutAChapterOnlyTheHeadOfTheFileIsLookedAt)
{
    Ini ini = twoChapters();
    EXPECT_EQ(find(ini, L"*Hoogte"), "KopHoogte=2\n");
    EXPECT_EQ(find(ini, L"*"), "Kop=1\nKopHoogte=2\n");
    EXPECT_EQ(find(ini, L"Stijl"), "");
    EXPECT_EQ(status, 2);
}

TEST_F(Wildcard, ChaptersAndIdentsFitWithoutRegardToCase)
{
    Ini ini = twoChapters();
    EXPECT_EQ(find(ini, L"[t*,d*]hOOG*"), "[Tekst]Hoogte=3\n[Deuren]Hoogte=7\n");
}

TEST_F(Wildcard, AStarForTheChapterLeavesOutTheHead)
{
    Ini ini = twoChapters();
    EXPECT_EQ(find(ini, L"[*]Hoogte"), "[Tekst]Hoogte=3\n[Deuren]Hoogte=7\n");
}

TEST_F(Wildcard, TheMarkerListsChaptersOnly)
{
    Ini ini = twoChapters();
    EXPECT_EQ(find(ini, L"[*]XXINIFRUBR"), "[Tekst]=\n[Deuren]=\n");
    EXPECT_EQ(status, 2) << "a chapter is no entry";
    EXPECT_EQ(find(ini, L"[*]XXINIFRUBR,Stijl"), "[Tekst]=\n[Tekst]Stijl=5=6\n[Deuren]=\n");
}

TEST_F(Wildcard, TheMarkerHeedsCase)
{
    Ini ini = twoChapters();
    EXPECT_EQ(find(ini, L"[*]xxinifrubr"), "");
    EXPECT_EQ(find(ini, L"[*]XX*,Stijl"), "[Tekst]=\n[Tekst]Stijl=5=6\n[Deuren]=\n");
}

TEST_F(Wildcard, SkipLeavesOutLeadingCharacters)
{
    Ini ini(folder.write(L"a.ini", "[A]\nab=1\nabc=2\nabcd=3\n"));
    EXPECT_EQ(find(ini, L"[A]ab*", 3), "[A]d=3\n") << "an ident of that length is left out";
    EXPECT_EQ(find(ini, L"[A]ab*", 2), "[A]c=2\n[A]cd=3\n");
    EXPECT_EQ(find(ini, L"[A]ab*", -1), "[A]ab=1\n[A]abc=2\n[A]abcd=3\n");
    EXPECT_EQ(find(ini, L"[A]ab*", 4), "");
    EXPECT_EQ(status, 2);
}

TEST_F(Wildcard, ThePatternIsHeldAgainstTheWholeIdent)
{
    Ini ini(folder.write(L"a.ini", "Deur1=1\nDeur2=2\n"));
    EXPECT_EQ(find(ini, L"Deur#", 4), "1=1\n2=2\n");
    EXPECT_EQ(find(ini, L"#", 4), "");
}

TEST_F(Wildcard, EveryOccurrenceCounts)
{
    Ini ini(folder.write(L"a.ini", "[A]\nX=1\nX=2\n[A]\nX=3\n"));
    EXPECT_EQ(find(ini, L"[A]X"), "[A]X=1\n[A]X=2\n[A]X=3\n");
}

TEST_F(Wildcard, IncludedFilesAddFirst)
{
    folder.write(L"part.ini", "[A]\nX=part\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n[A]\nX=own\n"));
    EXPECT_EQ(find(ini, L"[A]X"), "[A]X=part\n[A]X=own\n");
}

TEST_F(Wildcard, ResultsOfIncludedFilesAloneAreNoSuccess)
{
    folder.write(L"part.ini", "[A]\nX=part\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n"));
    EXPECT_EQ(find(ini, L"[A]X", 0, 1), "[A]X=part\n");
    EXPECT_EQ(status, 2);
    EXPECT_TRUE(services.printed.empty()) << "there are results";
}

TEST_F(Wildcard, AMissIsToldWhenAsked)
{
    Ini ini = twoChapters();
    EXPECT_EQ(find(ini, L"[A]50%", 0, 1), "");
    EXPECT_EQ(services.allPrinted(), L"\n[A]50% not found in configurationfile");
}

TEST_F(Wildcard, WithoutAnOpenFileTheStatusIsThree)
{
    Ini ini(L"none.ini");
    services.printed.clear();
    EXPECT_EQ(find(ini, L"*", 0, 1), "");
    EXPECT_EQ(status, 3);
    EXPECT_EQ(services.allPrinted(), L"\n* not found in configurationfile");
}

TEST_F(Wildcard, ResultsAreAppended)
{
    Ini ini = twoChapters();
    xx_VarArray results;
    std::wstring pattern = L"Kop";
    ini.file.getWcString(pattern.data(), &results, 0, 0);
    ini.file.getWcString(pattern.data(), &results, 0, 0);
    EXPECT_EQ(results.length(), 2);
}

TEST_F(Wildcard, AHeaderIsTakenBetweenItsOuterBrackets)
{
    Ini ini(folder.write(L"a.ini", "[A]b]\nX=1\n"));
    EXPECT_EQ(find(ini, L"[A`]b]X"), "") << "the pattern ends at its first closing bracket";
    EXPECT_EQ(find(ini, L"[A?b]X"), "[A]b]X=1\n");
}

TEST_F(Wildcard, NamesAreLimitedTo2999Characters)
{
    Ini ini(folder.write(L"a.ini",
                         "[" + std::string(1500, 'c') + "]\n" + std::string(2000, 'n') + "=1\n"));
    std::wstring pattern = L"[*]n*";
    xx_VarArray results;
    EXPECT_EQ(ini.file.getWcString(pattern.data(), &results, 0, 0), RTNORM);
    EXPECT_EQ(std::wstring(results[0]->name()).size(), 2999U);
}

TEST_F(Wildcard, LinesAreTakenInPiecesOf2999Characters)
{
    Ini ini(folder.write(L"a.ini", "X=" + std::string(2997, 'x') + "Y=2\n"));
    EXPECT_EQ(find(ini, L"Y"), "Y=2\n");
    Ini shorter(folder.write(L"b.ini", "X=" + std::string(2996, 'x') + "Y=2\n"));
    EXPECT_EQ(find(shorter, L"Y"), "");
}

TEST_F(Wildcard, OtherAlphabetsFitToo)
{
    Ini ini(folder.write(L"a.ini", "[Stärke]\nHöhe=2\n"));
    EXPECT_EQ(find(ini, L"[STÄRKE]h@he"), "[Stärke]Höhe=2\n");
}

} // namespace
