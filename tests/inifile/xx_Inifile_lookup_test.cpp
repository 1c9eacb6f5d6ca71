#include "inifile/InifileTest.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/platform.h"
#include "platform/text.h"
#include <corma/lookup_trace.h>

#include <climits>
#include <cstdlib>

using corma::LevelValue;
using corma::LookupTrace;
using corma::Source;
using corma::SourceAsked;
using corma::testing::Ini;
using corma::testing::InifileTest;

namespace {

// "included a.ini:2 found", one source a line.
std::string described(const SourceAsked& asked)
{
    std::string line = corma::nameOf(asked.source);
    line += ' ' + corma::toUtf8(corma::platform::splitPath(asked.file).fileName());
    line += asked.line == 0 ? "" : ":" + std::to_string(asked.line);
    return line + (asked.found ? " found\n" : "\n");
}

std::string described(const LookupTrace& trace)
{
    std::string text;
    for (const auto& asked : trace.asked()) {
        text += described(asked);
    }
    return text;
}

std::string described(const std::vector<LevelValue>& levels)
{
    std::string text;
    for (const auto& level : levels) {
        text += (level.inForce ? "* " : "  ") + corma::toUtf8(level.value) + " "
            + described(level.where);
    }
    return text;
}

class Lookup : public InifileTest
{
protected:
    void openHouse() { corma::newDocument(folder.path(L"project/house.dwg").c_str()); }
};

TEST_F(Lookup, AnIncludedFileWinsOverTheFileItself)
{
    folder.write(L"part.ini", "[A]\nX=part\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n[A]\nX=own\nY=own\n"));
    EXPECT_EQ(ini.get(L"[A]X"), L"part");
    EXPECT_EQ(ini.get(L"[A]Y"), L"own");
}

TEST_F(Lookup, TheIncludesOfAnIncludeWinOverIt)
{
    folder.write(L"inner.ini", "X=inner\n");
    folder.write(L"outer.ini", "#INCLUDE=inner.ini\nX=outer\nY=outer\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=outer.ini\nX=own\nY=own\n"));
    EXPECT_EQ(ini.get(L"X"), L"inner");
    EXPECT_EQ(ini.get(L"Y"), L"outer");
}

TEST_F(Lookup, AnIncludeWinsOverTheProject)
{
    folder.write(L"part.ini", "X=part\n");
    folder.write(L"project/a.ipr", "X=project\n");
    openHouse();
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\nX=own\n"));
    EXPECT_EQ(ini.get(L"X"), L"part");
}

TEST_F(Lookup, TheProjectFileBesideTheDrawingWinsOverTheFile)
{
    folder.write(L"project/a.ipr", "[A]\nX=project\n");
    Ini ini(folder.write(L"a.ini", "[A]\nX=own\nY=own\n"));
    EXPECT_EQ(ini.get(L"[A]X"), L"own");
    openHouse();
    EXPECT_EQ(ini.get(L"[A]X"), L"project");
    EXPECT_EQ(ini.get(L"[A]Y"), L"own");
    corma::closeDocument();
    EXPECT_EQ(ini.get(L"[A]X"), L"own");
}

TEST_F(Lookup, AProjectFileThatComesLaterIsSeen)
{
    Ini ini(folder.write(L"a.ini", "X=own\n"));
    folder.makeFolder(L"project");
    openHouse();
    EXPECT_EQ(ini.get(L"X"), L"own");
    corma::testing::letFilesSettle();
    EXPECT_EQ(ini.get(L"X"), L"own");
    folder.write(L"project/a.ipr", "X=project\n");
    EXPECT_EQ(ini.get(L"X"), L"project");
    folder.write(L"project/a.ipr", "X=another\n");
    EXPECT_EQ(ini.get(L"X"), L"another");
    folder.remove(L"project/a.ipr");
    EXPECT_EQ(ini.get(L"X"), L"own");
}

TEST_F(Lookup, TheProjectFileFollowsTheDrawing)
{
    folder.write(L"one/a.ipr", "X=one\n");
    folder.write(L"two/a.ipr", "X=two\n");
    Ini ini(folder.write(L"a.ini", "X=own\n"));
    corma::newDocument(folder.path(L"one/d.dwg").c_str());
    EXPECT_EQ(ini.get(L"X"), L"one");
    corma::newDocument(folder.path(L"two/d.dwg").c_str());
    EXPECT_EQ(ini.get(L"X"), L"two");
}

TEST_F(Lookup, TheProjectFileIsFoundInAnyCaseOfItsName)
{
    folder.write(L"project/TOOL.IPR", "X=project\n");
    openHouse();
    Ini ini(folder.write(L"tool.ini", "X=own\n"));
    EXPECT_EQ(ini.get(L"X"), L"project");
}

TEST_F(Lookup, AnIncludeInAProjectFileHasNoEffect)
{
    folder.write(L"project/part.ini", "X=part\n");
    folder.write(L"project/a.ipr", "#INCLUDE=part.ini,none.ini\nY=project\n");
    openHouse();
    Ini ini(folder.write(L"a.ini", "X=own\n"));
    EXPECT_EQ(ini.get(L"X"), L"own");
    EXPECT_EQ(ini.get(L"Y"), L"project");
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(Lookup, AFileOfAnotherKindNeverSeesTheProject)
{
    folder.write(L"project/a.cpr", "X=project\n");
    folder.write(L"project/a.ipr", "X=project\n");
    openHouse();
    Ini ini(folder.write(L"a.cfg", "X=own\n"));
    EXPECT_EQ(ini.get(L"X"), L"own");
}

TEST_F(Lookup, AnIncludedIniFileHasAProjectFileOfItsOwn)
{
    folder.write(L"part.ini", "X=part\n");
    folder.write(L"project/part.ipr", "X=project of part\n");
    openHouse();
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n"));
    EXPECT_EQ(ini.get(L"X"), L"project of part");
}

TEST_F(Lookup, AListGivesTheFirstThatIsThereWithoutAWord)
{
    Ini ini(folder.write(L"a.ini", "Y=2\nZ=3\n"));
    EXPECT_EQ(ini.status(L"X,Y,Z", 3000, 1), RTNORM);
    EXPECT_EQ(ini.value, L"2");
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(Lookup, AListThatFailsNamesItsLastIdent)
{
    Ini ini(folder.write(L"a.ini", "Y=2\n"));
    EXPECT_EQ(ini.status(L"[A]Q,[B]X", 3000, 1), RTERROR);
    EXPECT_EQ(services.printed,
              (std::vector<std::wstring> {L"\n", L"[B]X not found in configurationfile\n"}));
    EXPECT_EQ(ini.value, L"");
}

TEST_F(Lookup, AMissIsSilentUnlessAReportIsAskedFor)
{
    Ini ini(folder.write(L"a.ini", "Y=2\n"));
    EXPECT_EQ(ini.status(L"X"), RTERROR);
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(Lookup, APercentSignInANoticeStays)
{
    Ini ini(folder.write(L"a.ini", ""));
    ini.status(L"50%s", 3000, 1);
    EXPECT_EQ(services.allPrinted(), L"\n50%s not found in configurationfile\n");
}

TEST_F(Lookup, IncludedFilesAreSilentToo)
{
    folder.write(L"part.ini", "");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n"));
    EXPECT_EQ(ini.status(L"X", 3000, 1), RTERROR);
    EXPECT_EQ(services.allPrinted(), L"\nX not found in configurationfile\n");
}

TEST_F(Lookup, AnEmptyListIsRefused)
{
    Ini ini(folder.write(L"a.ini", "=1\n"));
    EXPECT_EQ(ini.status(L""), RTCAN);
    EXPECT_EQ(ini.status(L",,"), RTCAN);
    EXPECT_EQ(ini.file.getString(nullptr, nullptr, 0, 0), RTCAN);
}

TEST_F(Lookup, EmptyPiecesOfAListCollapse)
{
    Ini ini(folder.write(L"a.ini", "Y=2\n"));
    EXPECT_EQ(ini.status(L",,X,,Y,", 3000, 1), RTNORM);
    EXPECT_EQ(ini.value, L"2");
}

TEST_F(Lookup, AListIsAskedInAnIncludeBeforeTheFileItself)
{
    folder.write(L"part.ini", "Y=part\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\nX=own\n"));
    EXPECT_EQ(ini.get(L"X,Y"), L"part");
}

struct SizeRow
{
    const char* sentence;
    int size;
    const wchar_t* value;
};

class ValueSize : public testing::TestWithParam<SizeRow>
{
};

TEST_P(ValueSize, BoundsTheValue)
{
    corma::testing::RecordingServices services;
    const corma::testing::TempFolder folder;
    Ini ini(folder.write(L"a.ini", "X=1234567890\n"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ini.status(L"X", GetParam().size), RTNORM);
        EXPECT_EQ(ini.value, GetParam().value);
    }
    EXPECT_TRUE(services.printed.empty());
}

INSTANTIATE_TEST_SUITE_P(Value, ValueSize,
                         testing::Values(SizeRow {"FourCharactersOfTenAtSizeFive", 5, L"1234"},
                                         SizeRow {"ANegativeSizeCountsTheSame", -5, L"1234"},
                                         SizeRow {"AllButOneJustBelow", 10, L"123456789"},
                                         SizeRow {"AllWhenItFits", 11, L"1234567890"},
                                         SizeRow {"AllAbove", 12, L"1234567890"},
                                         SizeRow {"NothingAtSizeOne", 1, L""},
                                         SizeRow {"NothingIsWrittenAtSizeZero", 0, L""}),
                         [](const auto& row) { return row.param.sentence; });

TEST(SmallestSize, CountsAsTheLargest)
{
    wchar_t value[1];
    EXPECT_EQ(corma::ValueBuffer(value, INT_MIN).capacity, 2147483648U);
    EXPECT_EQ(corma::ValueBuffer(nullptr, 10).capacity, 0U);
}

TEST_F(Lookup, SeesWhatAnotherWriterFinished)
{
    Ini ini(folder.write(L"a.ini", "X=1\n"));
    EXPECT_EQ(ini.get(L"X"), L"1");
    folder.write(L"a.ini", "X=2\n");
    EXPECT_EQ(ini.get(L"X"), L"2");
    folder.replace(L"a.ini", "X=3\n");
    EXPECT_EQ(ini.get(L"X"), L"3");
}

TEST_F(Lookup, OneFileMissIsToldInItsOwnWords)
{
    Ini ini(folder.write(L"a.ini", "X=1\n"));
    wchar_t value[] = L"before";
    EXPECT_EQ(corma::InifileInside::getStringOneIdentOld(ini.file, L"Q", value, 7, 0), 2);
    EXPECT_STREQ(value, L"");
    EXPECT_TRUE(services.printed.empty());
    EXPECT_EQ(corma::InifileInside::getStringOneIdentOld(ini.file, L"[A]Q", value, 7, 1), 2);
    EXPECT_EQ(services.allPrinted(), L"\n[A]Q not found in configurationfile (old)\n");
    EXPECT_EQ(corma::InifileInside::getStringOneIdentOld(ini.file, L"X", value, 7, 1), RTNORM);
    EXPECT_STREQ(value, L"1");
    Ini none(L"none.ini");
    EXPECT_EQ(corma::InifileInside::getStringOneIdentOld(none.file, L"X", value, 7, 0), 3);
}

TEST_F(Lookup, ForOnceGivesAHeapText)
{
    auto path = folder.write(L"a.ini", "[A]\nX=1234567890\n");
    wchar_t ident[] = L"[A]X";
    wchar_t missing[] = L"[A]Y";
    wchar_t* value = getStringFromIni(path.data(), ident, 3000, 0);
    EXPECT_STREQ(value, L"1234567890");
    std::free(value);
    value = getStringFromIni(path.data(), ident, 5, 0);
    EXPECT_STREQ(value, L"1234");
    std::free(value);
    value = getStringFromIni(path.data(), missing, 3000, 1);
    EXPECT_STREQ(value, L"");
    std::free(value);
    EXPECT_EQ(services.allPrinted(), L"\n[A]Y not found in configurationfile\n");
}

TEST_F(Lookup, ForOnceTakesNoMoreThan3000CharactersEitherWay)
{
    auto path = folder.write(L"a.ini", "X=" + std::string(2998, 'x') + "\n");
    wchar_t ident[] = L"X";
    for (const int size : {3000, 5000, -5000, INT_MIN, INT_MAX}) {
        wchar_t* value = getStringFromIni(path.data(), ident, size, 0);
        EXPECT_EQ(std::wstring(value), std::wstring(2998, L'x')) << size;
        std::free(value);
    }
}

using Trace = Lookup;

TEST_F(Trace, TellsTheSourcesInTheOrderAsked)
{
    folder.write(L"inner.ini", "");
    folder.write(L"outer.ini", "#INCLUDE=inner.ini\n");
    folder.write(L"project/a.ipr", "");
    openHouse();
    IniBuffer buffer;
    Ini ini(folder.write(L"a.ini", "#INCLUDE=outer.ini\n\n[A]\nX=1\n"), 0, &buffer);
    {
        const LookupTrace trace(ini.file);
        EXPECT_EQ(ini.get(L"[A]X"), L"1");
        EXPECT_EQ(described(trace),
                  "included inner.ini\nincluded outer.ini\ncache a.ini\ndrawing house.dwg\n"
                  "project a.ipr\nfile a.ini:4 found\n");
        EXPECT_EQ(trace.asked().back().file, folder.path(L"a.ini"));
        EXPECT_EQ(trace.asked()[3].file, folder.path(L"project/house.dwg"));
        EXPECT_EQ(trace.asked()[4].file, folder.path(L"project/a.ipr"));
    }
    const LookupTrace again(ini.file);
    EXPECT_EQ(ini.get(L"[A]X"), L"1");
    EXPECT_EQ(described(again), "included inner.ini\nincluded outer.ini\ncache a.ini found\n");
}

TEST_F(Trace, StopsWhereTheValueIs)
{
    folder.write(L"one.ini", "\nX=1\n");
    folder.write(L"two.ini", "X=2\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=one.ini,two.ini\n"));
    const LookupTrace trace(ini.file);
    ini.get(L"X");
    EXPECT_EQ(described(trace), "included one.ini:2 found\n");
}

TEST_F(Trace, AnIncludedFileCountsAsOneSource)
{
    folder.write(L"part.ini", "X=part\n");
    folder.write(L"project/part.ipr", "X=project\n");
    openHouse();
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n"));
    const LookupTrace trace(ini.file);
    ini.get(L"X");
    EXPECT_EQ(described(trace), "included part.ipr:1 found\n");
}

TEST_F(Trace, CoversTypedGettersAndLists)
{
    Ini ini(folder.write(L"a.ini", "Y=5\n"));
    const LookupTrace trace(ini.file);
    int number = 0;
    wchar_t idents[] = L"X,Y";
    EXPECT_EQ(ini.file.getInt(idents, &number, 0), RTNORM);
    EXPECT_EQ(described(trace), "file a.ini\nfile a.ini:1 found\n");
}

TEST_F(Trace, WithoutAnOpenFileTheMissIsTold)
{
    Ini ini(L"none.ini");
    const LookupTrace trace(ini.file);
    ini.get(L"X");
    EXPECT_EQ(described(trace), "file \n");
}

using Levels = Lookup;

TEST_F(Levels, ShowEverySourceAndTheOneInForce)
{
    folder.write(L"part.ini", "[A]\nX=part\n");
    folder.write(L"project/a.ipr", "[A]\nX=project\n");
    openHouse();
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n[A]\nX=own\nY=own\n"));
    EXPECT_EQ(described(corma::levelsOf(ini.file, L"[A]X")),
              "* part included part.ini:2 found\n   drawing house.dwg\n"
              "  project project a.ipr:2 found\n  own file a.ini:3 found\n");
    EXPECT_EQ(described(corma::levelsOf(ini.file, L"[A]Y")),
              "   included part.ini\n   drawing house.dwg\n   project a.ipr\n"
              "* own file a.ini:4 found\n");
    EXPECT_EQ(described(corma::levelsOf(ini.file, L"[A]Z")),
              "   included part.ini\n   drawing house.dwg\n   project a.ipr\n   file a.ini\n");
}

TEST_F(Levels, TellTheStrongestValueOfAnIncludedFile)
{
    folder.write(L"inner.ini", "X=inner\n");
    folder.write(L"part.ini", "#INCLUDE=inner.ini\nX=part\n");
    folder.write(L"project/part.ipr", "X=project\n");
    openHouse();
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n"));
    EXPECT_EQ(described(corma::levelsOf(ini.file, L"X")),
              "* inner included inner.ini:1 found\n  project included part.ipr:1 found\n"
              "   drawing house.dwg\n   project a.ipr\n   file a.ini\n");
}

TEST_F(Levels, TheOneInForceIsWhatALookupGives)
{
    folder.write(L"part.ini", "X=part\nZ=\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\nX=own\nY=own\nZ=own\n"));
    for (const wchar_t* ident : {L"X", L"Y", L"Z"}) {
        for (const auto& level : corma::levelsOf(ini.file, ident)) {
            if (level.inForce) {
                EXPECT_EQ(level.value, ini.get(ident));
            }
        }
    }
}

TEST_F(Levels, KeepNothingInTheCache)
{
    IniBuffer buffer;
    Ini ini(folder.write(L"a.ini", "X=1\n"), 0, &buffer);
    EXPECT_EQ(described(corma::levelsOf(ini.file, L"X")),
              "   cache a.ini\n* 1 file a.ini:1 found\n");
    EXPECT_EQ(described(corma::levelsOf(ini.file, L"X")),
              "   cache a.ini\n* 1 file a.ini:1 found\n");
    ini.get(L"X");
    EXPECT_EQ(described(corma::levelsOf(ini.file, L"X")),
              "* 1 cache a.ini found\n  1 file a.ini:1 found\n");
}

} // namespace
