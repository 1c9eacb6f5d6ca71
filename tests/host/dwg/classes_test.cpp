#include "host/dwg/SampleRecords.h"
#include "host/dwg/classes.h"

#include <gtest/gtest.h>

namespace corma::host::dwg {
namespace {

using enum DrawingVersion;

class DwgClasses : public ::testing::TestWithParam<DrawingVersion>
{
protected:
    static FileForm form()
    {
        constexpr int kWindows1252 = 30;
        FileForm made;
        made.version = GetParam();
        made.codePage = kWindows1252;
        return made;
    }

    static ClassInfo wipeout()
    {
        ClassInfo info;
        info.number = 500;
        info.proxyFlags = 2175;
        info.application.set(L"WipeOut|Product");
        info.cppName.set(L"AcDbWipeout");
        info.dxfName.set(L"WIPEOUT");
        info.isEntity = true;
        info.count = 3;
        return info;
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, DwgClasses,
                         ::testing::Values(r14, r2000, r2004, r2007, r2010, r2013, r2018),
                         [](const auto& row) {
                             return "AC" + std::to_string(static_cast<int>(row.param));
                         });

TEST_P(DwgClasses, ComeBackFromTheirSection)
{
    const FileForm made = form();
    ClassInfo second = wipeout();
    second.number = 501;
    second.dxfName.set(L"SCALE");
    second.isEntity = false;
    second.wasZombie = true;
    const auto back = decodeClasses(encodeClasses({wipeout(), second}, made, {}), made);
    ASSERT_TRUE(back);
    ASSERT_EQ(back->size(), 2U);
    const ClassInfo& first = back->front();
    EXPECT_EQ(first.number, 500U);
    EXPECT_EQ(first.proxyFlags, 2175);
    EXPECT_EQ(first.application.value, L"WipeOut|Product");
    EXPECT_EQ(first.cppName.value, L"AcDbWipeout");
    EXPECT_EQ(first.dxfName.value, L"WIPEOUT");
    EXPECT_TRUE(first.isEntity);
    EXPECT_EQ(first.count, GetParam() >= r2004 ? 3 : 0);
    EXPECT_FALSE(back->back().isEntity);
    EXPECT_TRUE(back->back().wasZombie);
}

TEST_P(DwgClasses, ADrawingMayHaveNone)
{
    const FileForm made = form();
    const auto back = decodeClasses(encodeClasses({}, made, {}), made);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->empty());
}

TEST_P(DwgClasses, ADamagedSectionIsRefused)
{
    const FileForm made = form();
    const std::string section = encodeClasses({wipeout()}, made, {});
    for (std::size_t i = 0; i < section.size(); ++i) {
        std::string damaged = section;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
        EXPECT_FALSE(decodeClasses(damaged, made)) << i;
        EXPECT_FALSE(decodeClasses(std::string_view(section).substr(0, i), made)) << i;
    }
}

TEST(DwgClassGroups, GoThereAndBack)
{
    Groups groups;
    groups.add(Group(0, L"CLASS"));
    groups.add(Group(1, L"DICTIONARYVAR"));
    groups.add(Group(2, L"AcDbDictionaryVar"));
    groups.add(Group(3, L"ObjectDBX Classes"));
    groups.add(Group(90, 0));
    groups.add(Group(91, 16));
    groups.add(Group(280, 0));
    groups.add(Group(281, 0));
    const Groups back = classToGroups(classFromGroups(groups), r2010);
    ASSERT_EQ(back.size(), groups.size());
    for (std::size_t i = 0; i < back.size(); ++i) {
        EXPECT_EQ(back[i].code, groups[i].code);
        EXPECT_EQ(back[i].value, groups[i].value) << back[i].code;
    }
    EXPECT_FALSE(classToGroups(classFromGroups(groups), r2000).find(91));
}

TEST(DwgClassSamples, ComeBackToTheSameBytes)
{
    const auto files = sampleDwgFiles();
    if (files.empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    for (const auto& path : files) {
        const SampleFile file(path);
        const std::string_view section = file.container->parts().classes;
        const auto classes = decodeClasses(section, file.form);
        ASSERT_TRUE(classes) << path;
        EXPECT_EQ(encodeClasses(*classes, file.form, section) == section, true) << path;
    }
}

} // namespace

} // namespace corma::host::dwg
