#include "host/dwg/SampleNames.h"
#include "host/dwg/code_pages.h"
#include "host/dwg/header_variables.h"
#include "platform/platform.h"
#include "support/DxfDrawing.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>

namespace corma::host::dwg {
namespace {

using enum DrawingVersion;
using corma::testing::DxfDrawing;

class OneLayer : public Names
{
public:
    [[nodiscard]] std::wstring nameOf(Handle entry) const override
    {
        return entry == kLayer ? L"Walls" : L"";
    }

    [[nodiscard]] Handle find(TableKind table, std::wstring_view name) const override
    {
        return table == TableKind::layer && name == L"Walls" ? kLayer : Handle::none;
    }

    static constexpr Handle kLayer {0x2A};
};

class DwgHeader : public ::testing::TestWithParam<DrawingVersion>
{
protected:
    static FileForm form()
    {
        FileForm made;
        made.version = GetParam();
        made.codePage = codePageNumber(L"ANSI_1252");
        return made;
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, DwgHeader,
                         ::testing::Values(r13, r14, r2000, r2004, r2007, r2010, r2013, r2018),
                         [](const auto& row) {
                             return "AC" + std::to_string(static_cast<int>(row.param));
                         });

/// Of the releases whose variables tell line weights.
class DwgHeaderSinceR2000 : public DwgHeader
{
};

INSTANTIATE_TEST_SUITE_P(Versions, DwgHeaderSinceR2000,
                         ::testing::Values(r2000, r2004, r2007, r2010, r2013, r2018),
                         [](const auto& row) {
                             return "AC" + std::to_string(static_cast<int>(row.param));
                         });

void add(Groups& groups, const wchar_t* name, int code, GroupValue value)
{
    groups.add(Group(code::variable, name));
    groups.add(Group(code, std::move(value)));
}

// Of one variable, without its name.
Group valueOf(const Groups& groups, std::wstring_view name)
{
    for (std::size_t i = 0; i + 1 < groups.size(); ++i) {
        if (groups[i].code == code::variable && groups[i].isText(name)) {
            return groups[i + 1];
        }
    }
    return {};
}

TEST_P(DwgHeader, NewVariablesComeBackFromTheirSection)
{
    const FileForm made = form();
    const OneLayer names;
    Groups groups;
    add(groups, L"$CLAYER", 8, std::wstring(L"Walls"));
    add(groups, L"$LTSCALE", 40, 2.5);
    add(groups, L"$TILEMODE", 70, std::int64_t {0});
    add(groups, GetParam() < r2000 ? L"$TDCREATE" : L"$TDUCREATE", 40, 2454762.75);
    add(groups, L"$ANGBASE", 50, 90.0);
    add(groups, L"$LUNITS", 70, std::int64_t {4});
    add(groups, L"$HANDSEED", 5, Handle {0x1234});
    add(groups, L"$MENU", 1, std::wstring(L"acad"));
    add(groups, L"$CECOLOR", 62, std::int64_t {3});
    RootHandles roots;
    roots.blocks = Handle {1};
    roots.namedObjects = Handle {0xC};
    HeaderVariables variables(made);
    variables.setRootHandles(roots);
    variables.fromGroups(names, groups);

    const auto back = HeaderVariables::read(variables.bytes(), made);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->isUnderstood());
    EXPECT_EQ(back->rootHandles().blocks, Handle {1});
    EXPECT_EQ(back->rootHandles().namedObjects, Handle {0xC});
    EXPECT_EQ(back->seed(), Handle {0x1234});
    Groups again;
    back->toGroups(names, again);
    for (std::size_t i = 0; i < groups.size(); i += 2) {
        const Group got = valueOf(again, groups[i].text());
        EXPECT_EQ(got.code, groups[i + 1].code) << i;
        EXPECT_EQ(got.value, groups[i + 1].value) << i;
    }
}

TEST_P(DwgHeaderSinceR2000, WeightAndFlagsShareANumber)
{
    const FileForm made = form();
    const OneLayer names;
    Groups groups;
    add(groups, L"$CELWEIGHT", 370, std::int64_t {50});
    add(groups, L"$ENDCAPS", 280, std::int64_t {2});
    add(groups, L"$JOINSTYLE", 280, std::int64_t {1});
    add(groups, L"$LWDISPLAY", 290, std::int64_t {1});
    add(groups, L"$XEDIT", 290, std::int64_t {0});
    add(groups, L"$EXTNAMES", 290, std::int64_t {1});
    HeaderVariables variables(made);
    variables.fromGroups(names, groups);
    Groups again;
    variables.toGroups(names, again);
    for (std::size_t i = 0; i < groups.size(); i += 2) {
        EXPECT_EQ(valueOf(again, groups[i].text()).value, groups[i + 1].value) << i;
    }
}

TEST_P(DwgHeader, ANameThatTheDrawingLacksChangesNothing)
{
    const FileForm made = form();
    const OneLayer names;
    Groups groups;
    add(groups, L"$CLAYER", 8, std::wstring(L"Walls"));
    HeaderVariables variables(made);
    variables.fromGroups(names, groups);
    Groups absent;
    add(absent, L"$CLAYER", 8, std::wstring(L"Roof"));
    variables.fromGroups(names, absent);
    Groups again;
    variables.toGroups(names, again);
    EXPECT_EQ(valueOf(again, L"$CLAYER").text(), L"Walls");
}

TEST_P(DwgHeader, ATimeThatNoFileHasChangesNothing)
{
    const FileForm made = form();
    const OneLayer names;
    for (const double days : {1e300, -1.0, std::nan("")}) {
        Groups groups;
        add(groups, L"$TDINDWG", 40, 2.5);
        add(groups, L"$TDUSRTIMER", 40, days);
        HeaderVariables variables(made);
        Groups usual;
        variables.toGroups(names, usual);
        variables.fromGroups(names, groups);
        Groups again;
        variables.toGroups(names, again);
        EXPECT_EQ(valueOf(again, L"$TDINDWG").value, GroupValue(2.5)) << days;
        EXPECT_EQ(valueOf(again, L"$TDUSRTIMER").value, valueOf(usual, L"$TDUSRTIMER").value)
            << days;
    }
}

TEST_P(DwgHeader, ADamagedSectionIsRefused)
{
    const FileForm made = form();
    const std::string section = HeaderVariables(made).bytes();
    for (std::size_t i = 0; i < section.size(); ++i) {
        std::string damaged = section;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x01);
        EXPECT_FALSE(HeaderVariables::read(damaged, made)) << i;
        EXPECT_FALSE(HeaderVariables::read(std::string_view(section).substr(0, i), made)) << i;
    }
}

TEST(DwgCodePages, HaveNamesAndNumbers)
{
    EXPECT_EQ(codePageName(30), L"ANSI_1252");
    EXPECT_EQ(codePageName(29), L"ANSI_1251");
    EXPECT_EQ(codePageName(-1), L"ANSI_1252");
    EXPECT_EQ(codePageName(1000), L"ANSI_1252");
    EXPECT_EQ(codePageNumber(L"ansi_1250"), 28);
    EXPECT_EQ(codePageNumber(L"none"), 30);
}

TEST(DwgHeaderSamples, ComeBackToTheSameBytes)
{
    const auto files = sampleDwgFiles();
    if (files.empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    for (const auto& path : files) {
        SCOPED_TRACE(path.filename().string());
        const SampleFile file(path);
        const SampleNames names(file);
        const std::string_view section = file.container->parts().header;
        auto variables = HeaderVariables::read(section, file.form);
        ASSERT_TRUE(variables);
        EXPECT_TRUE(variables->isUnderstood());
        EXPECT_NE(variables->rootHandles().namedObjects, Handle::none);
        Groups groups;
        variables->toGroups(names, groups);
        variables->fromGroups(names, groups);
        EXPECT_EQ(variables->bytes() == section, true);
    }
}

// But for what stands elsewhere in a DWG file, or changes at each saving.
TEST(DwgHeaderSamples, HaveTheVariablesOfTheDxfFile)
{
    const std::filesystem::path folder = CORMA_SAMPLE_DRAWINGS;
    if (folder.empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    const std::set<std::wstring_view> elsewhere = {L"$LASTSAVEDBY", L"$MEASUREMENT", L"$CMLSTYLE"};
    const std::set<std::wstring_view> changing
        = {L"$ACADMAINTVER", L"$HANDSEED",   L"$TDUUPDATE",   L"$XCLIPFRAME",
           L"$TDINDWG",      L"$TDUSRTIMER", L"$VERSIONGUID", L"$FINGERPRINTGUID"};
    const SampleFile file(folder / "libredwg-example_2007.dwg");
    const SampleNames names(file);
    const auto variables = HeaderVariables::read(file.container->parts().header, file.form);
    ASSERT_TRUE(variables);
    Groups mine;
    variables->toGroups(names, mine);
    const auto content = platform::readFile((folder / "libredwg-example_2007.dxf").native());
    ASSERT_TRUE(content);
    const DxfDrawing twin(content->view());
    int compared = 0;
    for (std::size_t i = 0; i + 1 < mine.size(); ++i) {
        if (mine[i].code != code::variable || changing.count(mine[i].text()) != 0
            || elsewhere.count(mine[i].text()) != 0) {
            continue;
        }
        const Groups other = twin.store.variable(mine[i].text());
        ASSERT_FALSE(other.empty()) << std::string(mine[i].text().begin(), mine[i].text().end());
        for (std::size_t k = 0; k < other.size(); ++k) {
            const Group& got = mine[i + 1 + k];
            const std::string label(mine[i].text().begin(), mine[i].text().end());
            EXPECT_EQ(got.code, other[k].code) << label;
            if (std::holds_alternative<double>(other[k].value)) {
                EXPECT_NEAR(got.real(), other[k].real(), 1e-9 * (1 + std::fabs(got.real())))
                    << label;
            } else if (const auto* text = std::get_if<std::wstring>(&other[k].value)) {
                EXPECT_EQ(foldedName(got.text()), foldedName(*text)) << label;
            } else {
                EXPECT_EQ(got.value, other[k].value) << label;
            }
        }
        ++compared;
    }
    EXPECT_GT(compared, 230);
}

} // namespace

} // namespace corma::host::dwg
