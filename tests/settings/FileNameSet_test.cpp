#include "settings/FileNameSet.h"

#include <gtest/gtest.h>
#include <string>

namespace corma {
namespace {

struct NamesCase
{
    const char* name;
    const wchar_t* file;
    const wchar_t* definitions;
    const wchar_t* descriptions;
    const wchar_t* project;
};

class FileNameSetTest : public ::testing::TestWithParam<NamesCase>
{
};

TEST_P(FileNameSetTest, NamesBesideAreMadeByPosition)
{
    const NamesCase& row = GetParam();
    const FileNameSet names = FileNameSet::of(L"map/", row.file, 12);
    EXPECT_EQ(names.fileName, row.file);
    EXPECT_EQ(names.definitionsName, row.definitions);
    EXPECT_EQ(names.descriptionsName, row.descriptions);
    EXPECT_EQ(names.projectName, row.project);
    EXPECT_EQ(names.globalFolder, L"map/");
    EXPECT_EQ(names.projectFolder, L"map/");
    EXPECT_EQ(names.drawingName, L"");
    EXPECT_EQ(names.language, 12);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FileNameSetTest,
    ::testing::Values(NamesCase {"Ini", L"tool.ini", L"tool.inr", L"tool.ind", L"tool.ipr"},
                      NamesCase {"OtherExtension", L"a.cfg", L"a.cfr", L"a.cfd", L"a.cpr"},
                      NamesCase {"NoExtension", L"settings", L"settingr", L"settingd", L"settinpr"},
                      NamesCase {"TwoLetters", L"ab", L"ar", L"ad", L"pr"},
                      NamesCase {"OneLetter", L"a", L"r", L"d", L"pr"},
                      NamesCase {"Empty", L"", L"", L"", L""}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace corma
