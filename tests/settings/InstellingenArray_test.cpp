#include "settings/InstellingenArray.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace corma {
namespace {

std::unique_ptr<Instelling> setting(const std::wstring& name, const wchar_t* value = L"")
{
    return std::make_unique<Instelling>(name.c_str(), value);
}

std::vector<std::wstring> namesOf(const std::vector<Instelling*>& settings)
{
    std::vector<std::wstring> names;
    for (const Instelling* const one : settings) {
        names.push_back(one->name());
    }
    return names;
}

class InstellingenArrayTest : public ::testing::Test
{
protected:
    testing::RecordingServices services;
    InstellingenArray list {nullptr};
};

TEST_F(InstellingenArrayTest, IsEmptyAtFirst)
{
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(list.owner(), nullptr);
    EXPECT_EQ(list.findSetting(L"A"), nullptr);
    EXPECT_EQ(list.findSetting(L""), nullptr);
}

TEST_F(InstellingenArrayTest, KeepsTheOrderOfInsertion)
{
    EXPECT_EQ(list.addSetting(setting(L"C")), 0);
    EXPECT_EQ(list.addSetting(setting(L"A")), 1);
    EXPECT_EQ(list.addSetting(setting(L"B")), 2);
    EXPECT_EQ(list[0].name() + list[1].name() + list[2].name(), L"CAB");
}

TEST_F(InstellingenArrayTest, RefusesADoubleWithAReport)
{
    list.addSetting(setting(L"Hoogte", L"1"));
    EXPECT_EQ(list.addSetting(setting(L"Hoogte", L"2")), -1);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0].value(), L"1");
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file InstellingenArray.cpp on line 45\n"
              L"(Setting 'Hoogte' already exists, ec = 59798)");
}

TEST_F(InstellingenArrayTest, ARefusedSettingStaysWithItsCaller)
{
    list.addSetting(setting(L"A"));
    auto refused = setting(L"A", L"2");
    EXPECT_EQ(list.addSetting(std::move(refused)), -1);
    ASSERT_NE(refused, nullptr); // NOLINT(bugprone-use-after-move): it is moved when it is taken
    EXPECT_EQ(refused->value(), L"2");
}

TEST_F(InstellingenArrayTest, ALongNameIsCutInTheReport)
{
    const std::wstring name(300, L'x');
    list.addSetting(setting(name));
    list.addSetting(setting(name));
    const std::wstring report = services.allPrinted();
    EXPECT_TRUE(
        report.starts_with(L"\nError in file InstellingenArray.cpp on line 45\n(Setting 'xxx"));
    EXPECT_EQ(report.size(), 256U); // the line feed before it and the report at its longest
}

TEST_F(InstellingenArrayTest, NamesThatDifferInCaseAreTwo)
{
    list.addSetting(setting(L"hoogte", L"1"));
    EXPECT_EQ(list.addSetting(setting(L"Hoogte", L"2")), 1);
    EXPECT_EQ(list.findSetting(L"hoogte")->value(), L"1");
    EXPECT_EQ(list.findSetting(L"Hoogte")->value(), L"2");
    EXPECT_EQ(list.findSetting(L"HOOGTE"), nullptr);
}

TEST_F(InstellingenArrayTest, FindsAnEmptyNameAndNamesOfAllAlphabets)
{
    for (const wchar_t* const name :
         {L"", L"m\u00B2", L"\u0412\u044B\u0441\u043E\u0442\u0430", L"\U0001F3E0"}) {
        list.addSetting(setting(name, name));
    }
    EXPECT_EQ(list.findSetting(L"")->value(), L"");
    EXPECT_EQ(list.findSetting(L"m\u00B2"), &list[1]);
    EXPECT_EQ(list.findSetting(L"\u0412\u044B\u0441\u043E\u0442\u0430"), &list[2]);
    EXPECT_EQ(list.findSetting(L"\U0001F3E0"), &list[3]);
}

TEST_F(InstellingenArrayTest, FindsInAnyOrderWhatItHolds)
{
    for (int i = 0; i < 1000; ++i) {
        list.addSetting(setting(L"Instelling" + std::to_wstring(i)));
    }
    for (int i = 0; i < 1000; ++i) {
        const int wanted = i * 7 % 1000;
        EXPECT_EQ(list.findSetting(L"Instelling" + std::to_wstring(wanted)),
                  &list[static_cast<std::size_t>(wanted)]);
        EXPECT_EQ(list.findSetting(L"instelling" + std::to_wstring(wanted)), nullptr);
    }
}

TEST_F(InstellingenArrayTest, FiltersByPatternInOrder)
{
    for (const wchar_t* const name : {L"KleurRand", L"Hoogte", L"kleurVlak", L"Kleur"}) {
        list.addSetting(setting(name));
    }
    using Names = std::vector<std::wstring>;
    EXPECT_EQ(namesOf(list.filterByPattern(L"Kleur*")), (Names {L"KleurRand", L"Kleur"}));
    EXPECT_EQ(namesOf(list.filterByPattern(L"Hoogte,kleur*")), (Names {L"Hoogte", L"kleurVlak"}));
    EXPECT_EQ(namesOf(list.filterByPattern(L"*")).size(), 4U);
    EXPECT_EQ(namesOf(list.filterByPattern(L"KLEUR")), Names {});
}

struct OrderCase
{
    const char* name;
    const wchar_t* a;
    const wchar_t* b;
    int order;
};

class CompareRows : public ::testing::TestWithParam<OrderCase>
{
};

TEST_P(CompareRows, OrdersByCodeUnits)
{
    EXPECT_EQ(compareRows(GetParam().a, GetParam().b), GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CompareRows,
    ::testing::Values(OrderCase {"LowerFirst", L"A", L"B", -1},
                      OrderCase {"HigherFirst", L"B", L"A", 1},
                      OrderCase {"CapitalsBeforeSmallLetters", L"Z", L"a", -1},
                      OrderCase {"LongerBehindItsBeginning", L"AB", L"A", 1},
                      OrderCase {"ShorterBeforeItsContinuation", L"A", L"AB", -1},
                      OrderCase {"EqualIsBefore", L"A", L"A", -1},
                      OrderCase {"EmptyAndEmpty", L"", L"", -1},
                      // As 16-bit units a character beyond them comes before U+FB01.
                      OrderCase {"SurrogatesBeforeLigatures", L"\U0001F3E0", L"\uFB01", -1}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace corma
