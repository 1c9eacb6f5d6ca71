#include "foundation/xx_findf.h"
#include "platform/text.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <array>
#include <gtest/gtest.h>

using corma::testing::CurrentFolder;
using corma::testing::RecordingServices;
using corma::testing::TempFolder;

namespace {

// A module folder, a support folder and a current folder.
class FindFileTest : public testing::Test
{
protected:
    FindFileTest()
    {
        services.module = folder.makeFolder(L"Module") + L"/host.bin";
        services.variables[L"ACAD"] = folder.makeFolder(L"support");
    }

    RecordingServices services;
    TempFolder folder;
    CurrentFolder here {folder.makeFolder(L"here")};
};

std::wstring find(const std::wstring& name)
{
    std::array<wchar_t, 1000> found {};
    return xx_findfile(name.c_str(), found.data(), found.size() - 1) == RTNORM ? found.data() : L"";
}

using FindFile = FindFileTest;

TEST_F(FindFile, TheModuleFolderWinsOverTheSupportPath)
{
    const auto support = folder.write(L"support/tool.ini", "");
    EXPECT_EQ(find(L"tool.ini"), support);
    const auto module = folder.write(L"Module/tool.ini", "");
    EXPECT_EQ(find(L"tool.ini"), module);
}

TEST_F(FindFile, TheSupportPathWinsOverTheHostsOwnSearch)
{
    const auto current = folder.write(L"here/tool.ini", "");
    EXPECT_EQ(find(L"tool.ini"), current);
    const auto support = folder.write(L"support/tool.ini", "");
    EXPECT_EQ(find(L"tool.ini"), support);
}

TEST_F(FindFile, TheHostsSearchWinsOverTheBlockFolders)
{
    const auto blocks = folder.write(L"Module/blocks/door.dwg", "");
    EXPECT_EQ(find(L"door.dwg"), blocks);
    const auto blokken = folder.write(L"Module/blokken/door.dwg", "");
    EXPECT_EQ(find(L"door.dwg"), blokken);
    const auto current = folder.write(L"here/door.dwg", "");
    EXPECT_EQ(find(L"door.dwg"), current);
}

TEST_F(FindFile, ARelativeNameWithAFolderIsLookedForBehindTheBlockFolders)
{
    const auto path = folder.write(L"Module/blokken/doors/single.dwg", "");
    EXPECT_EQ(find(L"doors/single.dwg"), path);
    EXPECT_EQ(find(L"doors\\single.dwg"), path);
}

TEST_F(FindFile, AFullPathIsTakenAsItStands)
{
    const auto path = folder.write(L"else/tool.ini", "");
    EXPECT_EQ(find(path), path);
}

TEST_F(FindFile, AFullPathThatDoesNotExistIsNotLookedForBelowTheModule)
{
    folder.write(L"Module/blokken/tool.ini", "");
    EXPECT_EQ(find(L"/tool.ini"), L"");
    EXPECT_EQ(find(L"\\\\tool.ini"), L"");
}

TEST_F(FindFile, ASupportFolderMayEndInASeparator)
{
    services.variables[L"ACAD"]
        = L";" + folder.path(L"none") + L";" + folder.path(L"support") + L"\\";
    const auto path = folder.write(L"support/a.ini", "");
    EXPECT_EQ(find(L"a.ini"), path);
}

TEST_F(FindFile, ARelativeSupportFolderIsBelowTheCurrentOne)
{
    services.variables[L"ACAD"] = L"norm";
    const auto path = folder.write(L"here/norm/a.ini", "");
    EXPECT_EQ(find(L"a.ini"), path);
}

TEST_F(FindFile, AMissLeavesTheOutputAsItWas)
{
    wchar_t out[] = L"before";
    EXPECT_EQ(xx_findfile(L"none.ini", out, 5), RTERROR);
    EXPECT_EQ(xx_findfile(L"", out, 5), RTERROR);
    EXPECT_EQ(xx_findfile(nullptr, out, 5), RTERROR);
    EXPECT_STREQ(out, L"before");
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(FindFile, NameAndOutputMayBeOneBuffer)
{
    const auto path = folder.write(L"Module/a.ini", "");
    std::array<wchar_t, 1000> both = {L'a', L'.', L'i', L'n', L'i', 0};
    EXPECT_EQ(xx_findfile_arx(both.data(), both.data(), both.size() - 1), RTNORM);
    EXPECT_EQ(both.data(), path);
}

TEST_F(FindFile, APathThatIsTooLongIsReportedAndCut)
{
    const auto path = folder.write(L"Module/a.ini", "");
    std::wstring out(path.size() + 1, L'\0');
    EXPECT_EQ(xx_findfile(L"a.ini", out.data(), path.size()), RTNORM);
    EXPECT_EQ(out.c_str(), path);
    EXPECT_TRUE(services.printed.empty());

    out.assign(path.size() + 1, L'\0');
    EXPECT_EQ(xx_findfile(L"a.ini", out.data(), path.size() - 1), RTNORM);
    EXPECT_EQ(out.c_str(), path.substr(0, path.size() - 1));
    const std::wstring report = services.allPrinted();
    EXPECT_TRUE(report.starts_with(L"\nError in file xx_findf.cpp on line "))
        << corma::toUtf8(report);
    EXPECT_TRUE(report.ends_with(L"\n(xx_findfile filename length, ec = "
                                 + std::to_wstring(path.size()) + L")"))
        << corma::toUtf8(report);
}

TEST_F(FindFile, APathThatFillsTheOutputHasNoTerminator)
{
    const auto path = folder.write(L"Module/a.ini", "");
    std::wstring out(path.size() + 1, L'#');
    EXPECT_EQ(xx_findfile(L"a.ini", out.data(), path.size()), RTNORM);
    EXPECT_EQ(out, path + L'#');
}

TEST_F(FindFile, TheModuleFolderIsInUpperCaseAndIsAskedForOnce)
{
    const std::wstring upper = corma::upperCase(folder.path(L"Module")) + L"/";
    EXPECT_EQ(xx_moduleFolder(), upper);
    services.module = folder.path(L"support") + L"/host.bin";
    EXPECT_EQ(xx_moduleFolder(), upper);
    corma::forgetModuleFolder();
    EXPECT_EQ(xx_moduleFolder(), corma::upperCase(folder.path(L"support")) + L"/");
}

TEST_F(FindFile, WhileTheHostItselfRunsTheLibraryStandsForTheModule)
{
    services.module = L"acad.exe";
    corma::setHostLibraryName(L"libc.so.6");
    EXPECT_TRUE(std::wstring(xx_hostModuleName()).ends_with(L"/libc.so.6"));
    const auto file = folder.write(L"lib.arx", "");
    corma::setHostLibraryName(file);
    EXPECT_EQ(xx_hostModuleName(), file);
    corma::setHostLibraryName(L"");
    services.module = L"/opt/tool/tool.arx";
    EXPECT_STREQ(xx_hostModuleName(), L"/opt/tool/tool.arx");
}

TEST_F(FindFile, ExistenceIsAStatus)
{
    EXPECT_EQ(xx_fileExists(folder.path().c_str()), RTNORM);
    EXPECT_EQ(xx_fileExists(folder.path(L"none").c_str()), RTCAN);
}

} // namespace
