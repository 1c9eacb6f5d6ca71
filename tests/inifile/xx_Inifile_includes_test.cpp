#include "inifile/InifileTest.h"
#include "platform/platform.h"
#include "platform/text.h"
#include <corma/lookup_trace.h>

#include <array>
#include <filesystem>

using corma::testing::CurrentFolder;
using corma::testing::Ini;
using corma::testing::InifileTest;

namespace {

// The tree as indented names, "-" for a skipped slot and "!" behind a file that is not there.
void describe(const corma::IncludedFile* file, int depth, std::string& out)
{
    out.append(static_cast<std::size_t>(depth) * 2, ' ');
    if (file == nullptr) {
        out += "-\n";
        return;
    }
    out += corma::toUtf8(corma::platform::splitPath(file->path).fileName());
    out += file->found ? "\n" : "!\n";
    for (const auto& child : file->included) {
        describe(child.get(), depth + 1, out);
    }
}

std::string treeOf(const xx_Inifile& file)
{
    std::string out;
    describe(corma::includeTree(file).get(), 0, out);
    return out;
}

std::wstring includedName(const xx_Inifile& file, int index)
{
    std::array<wchar_t, 300> name = {L'#'};
    file.getIncludedFileName(index, name.data(), name.size() - 1);
    return name.data();
}

using Includes = InifileTest;

TEST_F(Includes, ARepeatedNameKeepsItsEmptySlot)
{
    folder.write(L"a.ini", "X=a\nY=a\n");
    folder.write(L"b.ini", "X=b\nY=b\nZ=b\n");
    Ini ini(folder.write(L"main.ini", "#INCLUDE=a.ini;b.ini,a.ini\nX=main\nZ=main\nQ=main\n"));
    EXPECT_EQ(ini.file.getIncludedFiles(), 3);
    EXPECT_EQ(treeOf(ini.file), "main.ini\n  a.ini\n  b.ini\n  -\n");
    EXPECT_EQ(ini.get(L"X"), L"a");
    EXPECT_EQ(ini.get(L"Z"), L"b");
    EXPECT_EQ(ini.get(L"Q"), L"main");
    EXPECT_EQ(includedName(ini.file, 0), folder.path(L"a.ini"));
    EXPECT_EQ(includedName(ini.file, 1), folder.path(L"b.ini"));
}

TEST_F(Includes, NamesOutOfRangeOrSkippedAreLeftAlone)
{
    folder.write(L"a.ini", "");
    Ini ini(folder.write(L"main.ini", "#INCLUDE=a.ini,a.ini\n"));
    EXPECT_EQ(includedName(ini.file, -1), L"#");
    EXPECT_EQ(includedName(ini.file, 1), L"#");
    EXPECT_EQ(includedName(ini.file, 2), L"#");
}

TEST_F(Includes, TheNameIsCopiedBounded)
{
    folder.write(L"a.ini", "");
    Ini ini(folder.write(L"main.ini", "#INCLUDE=a.ini\n"));
    wchar_t name[] = L"######";
    ini.file.getIncludedFileName(0, name, 3);
    EXPECT_EQ(std::wstring(name), folder.path().substr(0, 3) + L"###");
}

TEST_F(Includes, TwoFilesThatIncludeEachOtherEndAfterTheFirstPass)
{
    folder.write(L"b.ini", "#INCLUDE=a.ini\nX=b\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=b.ini\nY=a\n"));
    EXPECT_EQ(treeOf(ini.file), "a.ini\n  b.ini\n    -\n");
    EXPECT_EQ(ini.get(L"X"), L"b");
    EXPECT_EQ(ini.get(L"Y"), L"a");
}

TEST_F(Includes, AFileThatIncludesItselfHasAnEmptySlot)
{
    Ini ini(folder.write(L"a.ini", "#INCLUDE=a.ini\nY=a\n"));
    EXPECT_EQ(treeOf(ini.file), "a.ini\n  -\n");
}

TEST_F(Includes, ALongerCycleEndsToo)
{
    folder.write(L"b.ini", "#INCLUDE=c.ini\n");
    folder.write(L"c.ini", "#INCLUDE=b.ini,a.ini,d.ini\n");
    folder.write(L"d.ini", "X=d\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=b.ini,d.ini\n"));
    EXPECT_EQ(treeOf(ini.file), "a.ini\n  b.ini\n    c.ini\n      -\n      -\n      d.ini\n  -\n");
    EXPECT_EQ(ini.get(L"X"), L"d");
}

TEST_F(Includes, EnvironmentVariablesAreExpandedFirst)
{
    services.variables[L"NORM"] = folder.path(L"norm");
    folder.write(L"norm/a.ini", "X=a\n");
    Ini ini(folder.write(L"main.ini", "#INCLUDE=%NORM%\\a.ini\n"));
    EXPECT_EQ(ini.get(L"X"), L"a");
    EXPECT_EQ(includedName(ini.file, 0), folder.path(L"norm/a.ini"));
}

TEST_F(Includes, ANameThatExpandsTooFarKeepsAnEmptySlot)
{
    services.variables[L"LONG"] = std::wstring(250, L'x');
    Ini ini(folder.write(L"main.ini", "#INCLUDE=%LONG%/123456.ini\n"));
    EXPECT_EQ(ini.file.getIncludedFiles(), 1);
    EXPECT_EQ(treeOf(ini.file), "main.ini\n  -\n");
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(Includes, ARelativeNameResolvesAgainstTheIncludingFile)
{
    folder.write(L"norm/a.ini", "#INCLUDE=..\\other\\b.ini\nX=right\n");
    folder.write(L"other/b.ini", "Y=right\n");
    folder.write(L"here/norm/a.ini", "X=wrong\n");
    const CurrentFolder there(folder.path(L"here"));
    Ini ini(folder.write(L"main.ini", "#INCLUDE=norm\\a.ini\n"));
    EXPECT_EQ(ini.get(L"X"), L"right");
    EXPECT_EQ(ini.get(L"Y"), L"right");
}

TEST_F(Includes, AFullPathStandsForItself)
{
    const auto other = corma::toUtf8(folder.write(L"else/a.ini", "X=a\n"));
    Ini ini(folder.write(L"main.ini", "#INCLUDE=" + other + "\n"));
    EXPECT_EQ(ini.get(L"X"), L"a");
}

TEST_F(Includes, OnlyTheHeadOfTheFileCounts)
{
    folder.write(L"a.ini", "X=a\n");
    Ini ini(folder.write(L"main.ini", "[A]\n#INCLUDE=a.ini\n"));
    EXPECT_EQ(ini.file.getIncludedFiles(), 0);
}

TEST_F(Includes, AnEmptyValueOrOnlySeparatorsIncludeNothing)
{
    EXPECT_EQ(Ini(folder.write(L"a.ini", "#INCLUDE=\n")).file.getIncludedFiles(), 0);
    EXPECT_EQ(Ini(folder.write(L"b.ini", "#INCLUDE=;,;\n")).file.getIncludedFiles(), 0);
}

TEST_F(Includes, AMissingFileIsReportedByItsOwnNameAndTheRestIsRead)
{
    folder.write(L"a.ini", "X=a\n");
    Ini ini(folder.write(L"main.ini", "#INCLUDE=none.ini,a.ini\n"));
    const std::wstring printed = services.allPrinted();
    EXPECT_TRUE(
        printed.ends_with(L"\n(Inifile \"" + folder.path(L"none.ini") + L"\" not found , ec = 0)"))
        << corma::toUtf8(printed);
    EXPECT_EQ(treeOf(ini.file), "main.ini\n  !\n  a.ini\n");
    EXPECT_EQ(ini.get(L"X"), L"a");
    EXPECT_EQ(includedName(ini.file, 0), L"");
}

TEST_F(Includes, AFolderOrADeviceIsReportedAndTheRestIsRead)
{
    folder.makeFolder(L"sub");
    folder.write(L"a.ini", "X=a\n");
    Ini ini(folder.write(L"main.ini", "#INCLUDE=sub,/dev/zero,a.ini\n"));
    EXPECT_EQ(treeOf(ini.file), "main.ini\n  sub!\n  zero!\n  a.ini\n");
    EXPECT_EQ(ini.get(L"X"), L"a");
}

TEST_F(Includes, ChildrenOfAScrambledFileAreScrambledToo)
{
    Ini(folder.write(L"a.ini", "X=a\n")).file.scramble(nullptr, 7);
    Ini(folder.write(L"main.ini", "#INCLUDE=a.ini\n")).file.scramble(nullptr, 7);
    Ini ini(folder.path(L"main.ini"), 7);
    EXPECT_EQ(treeOf(ini.file), "main7.ini\n  a7.ini\n");
    EXPECT_EQ(ini.get(L"X"), L"a");
}

TEST_F(Includes, NamesAreComparedExactly)
{
    folder.write(L"a.ini", "X=a\n");
    Ini ini(folder.write(L"main.ini", "#INCLUDE=a.ini,A.INI\n"));
    EXPECT_EQ(treeOf(ini.file), "main.ini\n  a.ini\n  A.INI\n");
}

TEST_F(Includes, BlanksBelongToAName)
{
    folder.write(L" a.ini", "X=a\n");
    Ini ini(folder.write(L"main.ini", "#INCLUDE=b.ini, a.ini\n"));
    EXPECT_EQ(ini.get(L"X"), L"a");
}

TEST_F(Includes, AWideTreeIsReadWhole)
{
    std::string list;
    for (int i = 0; i < 300; ++i) {
        const std::string number = std::to_string(i);
        folder.write(L"p" + std::to_wstring(i) + L".ini", "X" + number + "=" + number + "\n");
        list += "p" + number + ".ini,";
    }
    Ini ini(folder.write(L"main.ini", "#INCLUDE=" + list + "\n"));
    EXPECT_EQ(ini.file.getIncludedFiles(), 300);
    EXPECT_EQ(ini.get(L"X299"), L"299");
}

void writeChain(const corma::testing::TempFolder& folder, int length)
{
    for (int i = 0; i < length; ++i) {
        folder.write(L"c" + std::to_wstring(i) + L".ini",
                     "#INCLUDE=c" + std::to_string(i + 1) + ".ini\n");
    }
    folder.write(L"c" + std::to_wstring(length) + L".ini", "X=end\n");
}

TEST_F(Includes, ADeepTreeIsReadToAHundredLevels)
{
    writeChain(folder, 100);
    Ini ini(folder.path(L"c0.ini"));
    EXPECT_EQ(ini.get(L"X"), L"end");
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(Includes, ADeeperTreeIsCutWithOneMessage)
{
    writeChain(folder, 101);
    Ini ini(folder.path(L"c0.ini"));
    EXPECT_EQ(ini.get(L"X"), L"(none)");
    EXPECT_TRUE(services.allPrinted().ends_with(
        L"(Inifile \"" + folder.path(L"c101.ini")
        + L"\" not included: more than 100 levels of includes, ec = 0)"))
        << corma::toUtf8(services.allPrinted());
}

TEST_F(Includes, FoldersThatContainThemselvesMakeNoEndlessTree)
{
    std::filesystem::create_directory_symlink(".", corma::platform::toNative(folder.path(L"d")));
    std::filesystem::create_directory_symlink(".", corma::platform::toNative(folder.path(L"e")));
    Ini ini(folder.write(L"a.ini", "#INCLUDE=d/a.ini,e/a.ini\nX=1\n"));
    EXPECT_EQ(ini.get(L"X"), L"1");
    EXPECT_NE(services.allPrinted().find(L"not included: more than"), std::wstring::npos);
}

} // namespace
