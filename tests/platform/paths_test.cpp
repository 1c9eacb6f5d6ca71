#include "platform/platform.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using corma::testing::CurrentFolder;
using corma::testing::TempFolder;

namespace corma::platform {
namespace {

TEST(SplitPath, GivesThePiecesOfAPath)
{
    const auto parts = splitPath(L"/a/b.c/tool.ini");
    EXPECT_EQ(parts.folder, L"/a/b.c/");
    EXPECT_EQ(parts.base, L"tool");
    EXPECT_EQ(parts.extension, L".ini");
    EXPECT_EQ(parts.fileName(), L"tool.ini");
}

TEST(SplitPath, TakesBothSeparators)
{
    EXPECT_EQ(splitPath(L"norm\\a.ini").folder, L"norm/");
}

TEST(SplitPath, ADotInAFolderIsNoExtension)
{
    const auto parts = splitPath(L"b.c/tool");
    EXPECT_EQ(parts.base, L"tool");
    EXPECT_EQ(parts.extension, L"");
}

TEST(SplitPath, TheLastDotBeginsTheExtension)
{
    EXPECT_EQ(splitPath(L"a.b.ini").base, L"a.b");
    EXPECT_EQ(splitPath(L".ini").extension, L".ini");
    EXPECT_EQ(splitPath(L"").fileName(), L"");
}

TEST(JoinPath, PutsOneSeparatorBetween)
{
    EXPECT_EQ(joinPath(L"/a", L"b"), L"/a/b");
    EXPECT_EQ(joinPath(L"/a/", L"b\\c"), L"/a/b/c");
    EXPECT_EQ(joinPath(L"/a", L"/b"), L"/b");
    EXPECT_EQ(joinPath(L"", L"b"), L"b");
}

TEST(FullPath, TakesStepsOut)
{
    EXPECT_EQ(fullPath(L"/a/./b/../c//d"), L"/a/c/d");
    EXPECT_EQ(fullPath(L"/../a"), L"/a");
    EXPECT_EQ(fullPath(L"/"), L"/");
    EXPECT_EQ(fullPath(L"/a/b/"), L"/a/b/");
}

TEST(FullPath, BeginsAtTheCurrentFolder)
{
    const TempFolder folder;
    const CurrentFolder there(folder.path());
    EXPECT_EQ(fullPath(L"a\\b"), folder.path(L"a/b"));
}

TEST(NativePath, BytesThatAreNoTextSurviveTheWayThere)
{
    const std::string bytes = "/a/\xFF\xC3(\xC3\xA9";
    EXPECT_EQ(toNative(fromNative(bytes)), bytes);
    EXPECT_EQ(toNative(fromNative("\xEF\xBF\xBD")), "\xEF\xBF\xBD");
}

TEST(Locate, TakesTheExactNameFirst)
{
    const TempFolder folder;
    folder.write(L"TOOL.INI", "");
    folder.write(L"tool.ini", "");
    EXPECT_EQ(locate(folder.path(L"tool.ini")), toNative(folder.path(L"tool.ini")));
    EXPECT_EQ(locate(folder.path(L"TOOL.INI")), toNative(folder.path(L"TOOL.INI")));
}

TEST(Locate, FindsANameInOtherCaseStepByStep)
{
    const TempFolder folder;
    folder.write(L"Norm/Één.ini", "");
    EXPECT_EQ(locate(folder.path(L"NORM\\ÉÉN.INI")), toNative(folder.path(L"Norm/Één.ini")));
}

TEST(Locate, TakesTheFirstOfSeveralInSortedOrder)
{
    const TempFolder folder;
    folder.write(L"Tool.ini", "");
    folder.write(L"tool.Ini", "");
    EXPECT_EQ(locate(folder.path(L"TOOL.INI")), toNative(folder.path(L"Tool.ini")));
}

TEST(Locate, GivesTheNameBackWhenNothingFits)
{
    const TempFolder folder;
    EXPECT_EQ(locate(folder.path(L"none/x.ini")), toNative(folder.path(L"none/x.ini")));
}

TEST(Locate, WorksFromTheCurrentFolderToo)
{
    const TempFolder folder;
    folder.write(L"Tool.ini", "");
    const CurrentFolder there(folder.path());
    EXPECT_EQ(locate(L"TOOL.INI"), "Tool.ini");
}

} // namespace
} // namespace corma::platform
