#include "controls/AboutBox.h"
#include "platform/platform.h"
#include "support/ModuleFile.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/host.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace corma::testing {

namespace {

// --- rows ----------------------------------------------------------------------------------------

struct RowTexts
{
    const char* name;
    std::vector<std::wstring> texts;
    std::wstring cells; // "|" between the cells, a line for each row
};

void PrintTo(const RowTexts& row, std::ostream* out)
{
    *out << row.name;
}

class Rows : public ::testing::TestWithParam<RowTexts>
{
};

TEST_P(Rows, AreCutAtTabs)
{
    AboutBox box;
    box.setRows(GetParam().texts);
    std::wstring cells;
    for (const auto& row : box.rows) {
        for (const std::wstring& cell : row) {
            cells += (&cell == &row.front() ? L"" : L"|") + cell;
        }
        cells += L"\n";
    }
    EXPECT_EQ(cells, GetParam().cells);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, Rows, ::testing::Values(
    RowTexts {"NoTextsGiveNone", {}, L""},
    RowTexts {"OneTokenFillsOneCell", {L"a"}, L"a\n"},
    RowTexts {"ThreeTokensFillThreeCells", {L"a\tb c\td"}, L"a|b c|d\n"},
    RowTexts {"FiveTokensFillAll", {L"1\t2\t3\t4\t5"}, L"1|2|3|4|5\n"},
    RowTexts {"TokensBehindTheFifthHaveNoEffect", {L"1\t2\t3\t4\t5\t6\t7", L"8"}, L"1|2|3|4|5\n8\n"},
    RowTexts {"TwoTabsPartAsOneDoes", {L"a\t\tb\t\t\tc"}, L"a|b|c\n"},
    RowTexts {"TabsAtTheEndsPartNothing", {L"\ta\t\t"}, L"a\n"},
    RowTexts {"AnEmptyTextGivesNoRow", {L"", L"a", L"", L"b", L""}, L"a\nb\n"},
    RowTexts {"NothingButTabsGivesNoRow", {L"\t\t", L"a"}, L"a\n"},
    RowTexts {"BlanksAreText", {L" \t "}, L" | \n"}),
    [](const auto& row) { return std::string(row.param.name); });

// clang-format on

TEST(AboutBox, TakesNewRowsInThePlaceOfTheFormerOnes)
{
    AboutBox box;
    box.setRows({L"a", L"b"});
    box.setRows({L"c"});
    EXPECT_THAT(box.rows, ElementsAre(ElementsAre(L"c")));
}

// --- the module ----------------------------------------------------------------------------------

class ModuleOfAboutBox : public ::testing::Test
{
protected:
    ModuleOfAboutBox()
    {
        ::setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3",
                 1); // each program of tests has its own process
    }

    ~ModuleOfAboutBox() override { ::unsetenv("TZ"); }

    /// Writes a file that was changed last at that second since 1970.
    std::wstring write(std::wstring_view name, const std::string& bytes, long changed) const
    {
        const std::wstring path = folder.write(name, bytes);
        const timespec time {.tv_sec = changed, .tv_nsec = 999'999'999};
        const std::array times {time, time};
        EXPECT_EQ(::utimensat(AT_FDCWD, platform::toNative(path).c_str(), times.data(), 0), 0);
        return path;
    }

    RecordingServices services;
    const TempFolder folder;
};

constexpr long kSummer = 1'783'407'909; // 7 July 2026, 7:05:09 UTC

TEST_F(ModuleOfAboutBox, GivesNameVersionCopyrightAndDate)
{
    const std::wstring module
        = write(L"plan.so", moduleWithVersion("Plans", "4.2.1", "\xC2\xA9 2026"), kSummer);
    AboutBox box;
    box.readModule(module.c_str());
    EXPECT_EQ(box.appName, L"Plans");
    EXPECT_EQ(box.appVersion, L"4.2.1");
    EXPECT_EQ(box.copyright, L"\u00A9 2026");
    EXPECT_EQ(box.appDate, L"07/07/2026 09:05:09");
    EXPECT_EQ(box.menuVersion, L"");
}

TEST_F(ModuleOfAboutBox, IsThatOfTheApplicationUnlessAnotherIsNamed)
{
    services.module = write(L"host.so", moduleWithVersion("Host", "1", ""), kSummer);
    const std::wstring other = write(L"other.so", moduleWithVersion("Other", "2", ""), kSummer);
    for (const wchar_t* const none : {static_cast<const wchar_t*>(nullptr), L""}) {
        AboutBox box;
        box.readModule(none);
        EXPECT_EQ(box.appName, L"Host");
    }
    AboutBox box;
    box.readModule(other.c_str());
    EXPECT_EQ(box.appName, L"Other");
}

TEST_F(ModuleOfAboutBox, WithoutAVersionBlockHasItsDateOnly)
{
    const std::wstring module = write(L"plan.so", "no module", kSummer);
    AboutBox box;
    box.readModule(module.c_str());
    EXPECT_EQ(box.appName + box.appVersion + box.copyright, L"");
    EXPECT_EQ(box.appDate, L"07/07/2026 09:05:09");
}

TEST_F(ModuleOfAboutBox, ThatIsNotThereLeavesAllEmpty)
{
    for (const std::wstring& module : {folder.path(L"none.so"), folder.path(), std::wstring()}) {
        AboutBox box;
        box.readModule(module.c_str());
        EXPECT_EQ(box.appName + box.appVersion + box.copyright + box.appDate, L"");
    }
    EXPECT_THAT(services.printed, IsEmpty());
}

TEST_F(ModuleOfAboutBox, HasTextsOf255Characters)
{
    // Three bytes each: characters count.
    std::string longest;
    for (int i = 0; i < 255; ++i) {
        longest += "\xE2\x82\xAC";
    }
    const std::wstring module
        = write(L"plan.so", moduleWithVersion(longest, longest + "x", "c"), kSummer);
    AboutBox box;
    box.readModule(module.c_str());
    EXPECT_EQ(box.appName, std::wstring(255, L'\u20AC'));
    EXPECT_EQ(box.appVersion, std::wstring(255, L'\u20AC'));
    EXPECT_EQ(box.copyright, L"c");
}

// --- the menu ------------------------------------------------------------------------------------

class MenuOfAboutBox : public ::testing::Test
{
protected:
    MenuOfAboutBox() { services.module = folder.path(L"host.so"); }

    RecordingServices services;
    const TempFolder folder;
};

TEST_F(MenuOfAboutBox, IsLookedForInTheFolderOfTheModule)
{
    folder.write(L"plan.mnu", "// menu\r\n_MENUVERSION \"4.2.1\"\r\n");
    EXPECT_EQ(versionOfMenu(L"plan.mnu"), L"4.2.1");
    EXPECT_THAT(services.printed, IsEmpty());
}

TEST_F(MenuOfAboutBox, IsFoundByItsFullPath)
{
    EXPECT_EQ(versionOfMenu(folder.write(L"a/b.mnu", "_MENUVERSION \"1\"").c_str()), L"1");
}

TEST_F(MenuOfAboutBox, WithoutTheMarkerHasAnEmptyVersion)
{
    folder.write(L"plan.mnu", "// menu\r\n");
    EXPECT_EQ(versionOfMenu(L"plan.mnu"), L"");
    EXPECT_THAT(services.printed, IsEmpty());
}

TEST_F(MenuOfAboutBox, ThatIsAFolderHasAnEmptyVersion)
{
    folder.makeFolder(L"plan.mnu");
    EXPECT_EQ(versionOfMenu(L"plan.mnu"), L"");
    EXPECT_THAT(services.printed, IsEmpty());
}

TEST_F(MenuOfAboutBox, ThatIsNotThereIsReported)
{
    EXPECT_EQ(versionOfMenu(L"plan.mnu"), L"(menu file not found)");
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file xx_about.cpp on line 117\n"
              L"(Cannot find menufile plan.mnu, ec = 6542)");
}

TEST_F(MenuOfAboutBox, WithoutANameIsNotThere)
{
    for (const wchar_t* const none : {static_cast<const wchar_t*>(nullptr), L""}) {
        services.printed.clear();
        EXPECT_EQ(versionOfMenu(none), L"(menu file not found)");
        EXPECT_EQ(services.allPrinted(),
                  L"\nError in file xx_about.cpp on line 117\n"
                  L"(Cannot find menufile , ec = 6542)");
    }
}

// The path is cut where it does not fit, and the file of the cut path is not there.
TEST_F(MenuOfAboutBox, WithAPathOfMoreThan260CharactersHasAnEmptyVersion)
{
    const auto ofLength = [this](std::size_t length, wchar_t letter) {
        std::wstring name;
        while (folder.path(name).size() + 101 < length) {
            name += std::wstring(50, L'd') + L"/";
        }
        name += std::wstring(length - folder.path(name).size(), letter);
        return folder.write(name, "_MENUVERSION \"1\"");
    };
    const std::wstring fits = ofLength(260, L'a');
    ASSERT_EQ(fits.size(), 260U);
    EXPECT_EQ(versionOfMenu(fits.c_str()), L"1");
    EXPECT_THAT(services.printed, IsEmpty());
    EXPECT_EQ(versionOfMenu(ofLength(261, L'b').c_str()), L"");
    EXPECT_NE(services.allPrinted().find(L"(xx_findfile filename length, ec = 261)"),
              std::wstring::npos);
}

} // namespace

} // namespace corma::testing
