#include "inifile/InifileTest.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using corma::toUtf8;
using corma::testing::Ini;
using corma::testing::InifileTest;

namespace {

// A report is its text with a source and a line around it.
void expectReport(const std::wstring& printed, const std::wstring& text, const wchar_t* status)
{
    EXPECT_TRUE(printed.starts_with(L"\nError in file xx_Inifile.cpp on line ")) << toUtf8(printed);
    EXPECT_TRUE(printed.ends_with(L"\n(" + text + L", ec = " + status + L")")) << toUtf8(printed);
}

using Opening = InifileTest;

TEST_F(Opening, FindsTheFileAndTellsItsFullPath)
{
    services.module = folder.path(L"program");
    const auto path = folder.write(L"tool.ini", "A=1\n");
    Ini ini(L"tool.ini");
    EXPECT_EQ(ini.file.getFilename(), path);
    EXPECT_EQ(ini.file.getScrambled(), 0);
    EXPECT_EQ(ini.get(L"A"), L"1");
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(Opening, AMissingIniFileIsReportedUnderTheNameAsPassed)
{
    Ini ini(L"none/tool.INI");
    expectReport(services.allPrinted(), L"Inifile \"none/tool.INI\" not found ", L"0");
    EXPECT_STREQ(ini.file.getFilename(), L"");
    EXPECT_EQ(ini.status(L"A"), RTERROR);
    EXPECT_EQ(ini.value, L"");
}

TEST_F(Opening, AMissingFileOfAnotherKindIsReportedByItsExtension)
{
    const Ini ini(L"tool.cfg");
    expectReport(services.allPrinted(), L".cfg file \"tool.cfg\" not found ", L"0");
}

TEST_F(Opening, AMissingScrambledFileIsCalledSo)
{
    const Ini ini(L"tool.ini", 7);
    expectReport(services.allPrinted(), L"Inifile \"tool.ini\" not found (scrambled)", L"0");
    services.printed.clear();
    const Ini other(L"tool.cfg", -7);
    expectReport(services.allPrinted(), L".cfg file \"tool.cfg\" not found (scrambled)", L"0");
}

TEST_F(Opening, WhatCannotBeOpenedIsReported)
{
    const Ini ini(folder.makeFolder(L"tool.ini"));
    expectReport(services.allPrinted(),
                 L"Inifile \"" + folder.path(L"tool.ini") + L"\" could not be opened", L"0");
    services.printed.clear();
    const Ini other(folder.makeFolder(L"tool.cfg"));
    expectReport(services.allPrinted(),
                 L".cfg file \"" + folder.path(L"tool.cfg") + L"\" could not be opened", L"0");
}

TEST_F(Opening, AnUnreadableFileIsReported)
{
    const auto path = folder.write(L"tool.ini", "A=1");
    ASSERT_EQ(::chmod(corma::platform::toNative(path).c_str(), 0), 0);
    Ini ini(path);
    if (::geteuid() == 0) { // nothing is unreadable for root
        EXPECT_EQ(ini.get(L"A"), L"1");
    } else {
        expectReport(services.allPrinted(), L"Inifile \"" + path + L"\" could not be opened", L"0");
    }
}

TEST_F(Opening, ADeviceIsNoConfigurationFile)
{
    const Ini ini(L"/dev/zero");
    expectReport(services.allPrinted(), L" file \"/dev/zero\" could not be opened", L"0");
}

TEST_F(Opening, WithoutMemoryTheObjectIsOneInWhichNothingIsFound)
{
    const auto path = folder.write(L"tool.ini", "A=1\n");
    corma::failNextAllocation();
    Ini ini(path);
    expectReport(services.allPrinted(), L"unable to allocate private inif data", L"8458");
    EXPECT_EQ(ini.status(L"A"), RTERROR);
    EXPECT_EQ(ini.file.getIncludedFiles(), 0);
    EXPECT_EQ(ini.file.scramble(nullptr, 7), RTCAN);
    EXPECT_TRUE(corma::levelsOf(ini.file, L"A").empty());
    EXPECT_FALSE(corma::includeTree(ini.file)->found);
}

TEST_F(Opening, ANullNameIsANameThatIsNotFound)
{
    xx_Inifile file(nullptr, 0, nullptr);
    expectReport(services.allPrinted(), L" file \"\" not found ", L"0");
    EXPECT_STREQ(file.getFilename(), L"");
}

TEST_F(Opening, APathThatIsTooLongIsCutWithAReport)
{
    std::wstring deep;
    while (folder.path(deep).size() < 300) {
        deep += L"a-folder-with-a-name/";
    }
    const auto path = folder.write(deep + L"tool.ini", "A=1");
    Ini ini(path);
    EXPECT_EQ(std::wstring(ini.file.getFilename()).size(), 260U);
    EXPECT_NE(services.allPrinted().find(L"(xx_findfile filename length, ec = "),
              std::wstring::npos);
    EXPECT_NE(services.allPrinted().find(L"(Inifile \"" + folder.path()), std::wstring::npos);
    EXPECT_EQ(ini.get(L"A"), L"(none)");
}

using ScrambledOpening = InifileTest;

TEST_F(ScrambledOpening, TheNumberedFileIsTakenFirst)
{
    const auto plain = folder.write(L"tool.ini", "A=plain\n");
    Ini(plain).file.scramble(nullptr, 7);
    Ini ini(plain, 7);
    EXPECT_EQ(ini.file.getFilename(), folder.path(L"tool7.ini"));
    EXPECT_EQ(ini.file.getScrambled(), 7);
    EXPECT_EQ(ini.get(L"A"), L"plain");
}

TEST_F(ScrambledOpening, APlainFileServesAndIsReadThroughTheDescrambler)
{
    const auto source = folder.write(L"source.ini", "A=1\n");
    std::wstring target = folder.path(L"tool.ini");
    Ini(source).file.scramble(target.data(), 9);
    Ini ini(target, 9);
    EXPECT_EQ(ini.file.getFilename(), target);
    EXPECT_EQ(ini.get(L"A"), L"1");
    Ini wrong(source, 9);
    EXPECT_EQ(wrong.get(L"A"), L"(none)");
}

using Version = InifileTest;

TEST_F(Version, IsSix)
{
    EXPECT_EQ(xx_Inifile::getIniVersion(), 6);
    EXPECT_TRUE(xx_Inifile::checkIniVersion(true, 6));
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(Version, AnOlderApplicationIsToldToUpgrade)
{
    EXPECT_FALSE(xx_Inifile::checkIniVersion(false, 5));
    EXPECT_EQ(
        services.allPrinted(),
        L"\nVersion of application (5) too old for ini-dll (6) : please upgrade application.");
    EXPECT_TRUE(services.failures.empty());
}

TEST_F(Version, ANewerApplicationNeedsANewerLibrary)
{
    EXPECT_FALSE(xx_Inifile::checkIniVersion(false, 7));
    EXPECT_EQ(services.allPrinted(),
              L"\nVersion of application (7) too new for ini-dll (6) : please upgrade ini dll.");
}

TEST_F(Version, AMismatchStopsTheHostWhenAsked)
{
    EXPECT_FALSE(xx_Inifile::checkIniVersion(true, 5));
    EXPECT_EQ(
        services.failures,
        std::vector<std::wstring> {L"Contact Korvane : version of application and ini dll don't "
                                   L"match. Aborting..."});
}

using Assignment = InifileTest;

TEST_F(Assignment, TakesOverTheFileAndReadsItsIncludesAfresh)
{
    folder.write(L"part.ini", "[A]X=1\n[B]\nY=part\n");
    Ini from(folder.write(L"from.ini", "#INCLUDE=part.ini\nZ=own\n"));
    Ini to(folder.write(L"to.ini", "Q=old\n"));
    to.file = from.file;
    EXPECT_EQ(to.file.getFilename(), folder.path(L"from.ini"));
    EXPECT_EQ(to.file.getIncludedFiles(), 1);
    EXPECT_EQ(to.get(L"[B]Y"), L"part");
    EXPECT_EQ(to.get(L"Z"), L"own");
    EXPECT_EQ(to.get(L"Q"), L"(none)");
    EXPECT_STREQ(from.file.getFilename(), L"");
    EXPECT_EQ(from.get(L"Z"), L"(none)");
    EXPECT_EQ(from.get(L"[B]Y"), L"part") << "the source keeps its children until it goes";
}

TEST_F(Assignment, OfAnObjectToItselfChangesNothing)
{
    Ini ini(folder.write(L"a.ini", "A=1\n"));
    xx_Inifile& same = ini.file;
    ini.file = same;
    EXPECT_EQ(ini.get(L"A"), L"1");
    EXPECT_EQ(ini.file.getFilename(), folder.path(L"a.ini"));
}

TEST_F(Assignment, TakesOverTheScrambleNumber)
{
    Ini(folder.write(L"a.ini", "A=1\n")).file.scramble(nullptr, 7);
    Ini from(folder.path(L"a.ini"), 7);
    Ini to(folder.write(L"b.ini", ""));
    to.file = from.file;
    EXPECT_EQ(to.file.getScrambled(), 7);
    EXPECT_EQ(from.file.getScrambled(), 0);
    EXPECT_EQ(to.get(L"A"), L"1");
}

TEST(JoinedIdent, StandsInOneBufferOfTheProcess)
{
    wchar_t chapter[] = L"[Tekst]";
    wchar_t name[] = L"Hoogte";
    const wchar_t* first = xx_Inifile::Id(chapter, name);
    EXPECT_STREQ(first, L"[Tekst]Hoogte");
    xx_Inifile::Id(name, chapter);
    EXPECT_STREQ(xx_Inifile::Id(nullptr, name), L"Hoogte");
    EXPECT_STREQ(xx_Inifile::Id(chapter, nullptr), L"[Tekst]");
}

} // namespace
