#include "settings/InstellingenArray.h"
#include "settings/texts.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace corma {
namespace {

// A list that keeps its rows as lines: image, name, type, value, description, colour.
class RowList : public SettingList
{
public:
    [[nodiscard]] short accessLevel() const override { return access; }

    std::wstring translateKey(const std::wstring& word) override { return L"<" + word + L">"; }

    [[nodiscard]] int selectionMark() const override { return mark; }

    void setSelectionMark(int row) override { mark = row; }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(rows.size()); }

    void deleteAllRows() override { rows.clear(); }

    void appendRow(const SettingRow& row) override { rows.push_back(row); }

    void setFocus() override { ++focused; }

    [[nodiscard]] std::wstring text() const
    {
        std::wstring all;
        for (const SettingRow& row : rows) {
            all += std::to_wstring(row.image) + L' ' + row.name + L'\n';
        }
        return all;
    }

    short access = 0;
    int mark = -1;
    int focused = 0;
    std::vector<SettingRow> rows;
};

class FillList : public ::testing::Test
{
protected:
    Instelling& add(const wchar_t* name, const wchar_t* value = L"g")
    {
        settings.addSetting(std::make_unique<Instelling>(name, value));
        return *settings.findSetting(name);
    }

    std::wstring filled(std::optional<std::wstring_view> search = L"", ShownLevels shown = {})
    {
        settings.fillList(list, search, shown);
        return list.text();
    }

    testing::RecordingServices services;
    InstellingenArray settings {nullptr};
    RowList list;
};

// One setting of each level mark.
class FillListOfAllLevels : public FillList
{
protected:
    FillListOfAllLevels()
    {
        add(L"Global");
        add(L"Project").setProjectValue(L"p");
        add(L"ProjectCopy").setProjectValue(L"g");
        add(L"Local").setLocalValue(L"d");
        add(L"CopyOfGlobal").setProjectValue(L"p");
        settings.findSetting(L"CopyOfGlobal")->setLocalValue(L"g");
        add(L"CopyOfProject").setProjectValue(L"p");
        settings.findSetting(L"CopyOfProject")->setLocalValue(L"p");
        add(L"DoubleCopy").makeLocalCopy();
        add(L"Obsolete").setType(SettingType::obsolete);
        add(L"ReadOnly").setReadOnly(L"true");
    }
};

TEST_F(FillListOfAllLevels, ShowsEachByItsImage)
{
    EXPECT_EQ(filled(),
              L"0 Global\n1 Project\n3 ProjectCopy\n2 Local\n4 CopyOfGlobal\n5 CopyOfProject\n"
              L"6 DoubleCopy\n7 Obsolete\n8 ReadOnly\n");
}

TEST_F(FillListOfAllLevels, HidesGlobalOnes)
{
    EXPECT_EQ(filled(L"", {.global = false}),
              L"1 Project\n3 ProjectCopy\n2 Local\n4 CopyOfGlobal\n5 CopyOfProject\n"
              L"6 DoubleCopy\n7 Obsolete\n8 ReadOnly\n");
}

TEST_F(FillListOfAllLevels, HidesProjectOnes)
{
    EXPECT_EQ(filled(L"", {.project = false}),
              L"0 Global\n2 Local\n4 CopyOfGlobal\n5 CopyOfProject\n6 DoubleCopy\n7 Obsolete\n"
              L"8 ReadOnly\n");
}

TEST_F(FillListOfAllLevels, HidesLocalOnes)
{
    EXPECT_EQ(filled(L"", {.local = false}),
              L"0 Global\n1 Project\n3 ProjectCopy\n7 Obsolete\n8 ReadOnly\n");
}

TEST_F(FillListOfAllLevels, NeverHidesObsoleteAndReadOnlyOnes)
{
    EXPECT_EQ(filled(L"", {false, false, false}), L"7 Obsolete\n8 ReadOnly\n");
}

TEST_F(FillList, ObsoleteGoesBeforeReadOnly)
{
    Instelling& one = add(L"A");
    one.setType(SettingType::obsolete);
    one.setReadOnly(L"true");
    EXPECT_EQ(filled(), L"7 A\n");
}

TEST_F(FillList, ReadOnlyIsTheExactWord)
{
    add(L"A").setReadOnly(L"True");
    add(L"B").setReadOnly(L"1");
    add(L"C").setReadOnly(L"false");
    EXPECT_EQ(filled(), L"0 A\n0 B\n0 C\n");
}

TEST_F(FillList, FillsAllColumns)
{
    Instelling& one = add(L"Hoogte", L"2.5");
    one.setType(SettingType::decimal);
    one.setDescription(PackedText("De hoogte\xC2\xA7in mm"));
    one.setRgb(0x00FF80);
    filled();
    ASSERT_EQ(list.rows.size(), 1U);
    EXPECT_EQ(list.rows[0].type, L"Decimal");
    EXPECT_EQ(list.rows[0].value, L"2.5");
    EXPECT_EQ(list.rows[0].description, L"De hoogte in mm");
    EXPECT_EQ(list.rows[0].rgb, 0x00FF80U);
}

struct ShownValue
{
    const char* name;
    SettingType type;
    const wchar_t* value;
    const wchar_t* english;
    const wchar_t* dutch;
};

class FillListValue : public ::testing::TestWithParam<ShownValue>
{
};

TEST_P(FillListValue, IsShownByItsType)
{
    const testing::RecordingServices services;
    const ShownValue& row = GetParam();
    InstellingenArray settings(nullptr);
    settings.addSetting(std::make_unique<Instelling>(L"A", row.value, nullptr, row.type));
    RowList list;
    settings.fillList(list, L"", {});
    EXPECT_EQ(list.rows.at(0).value, row.english);
    setTextLanguage(19);
    settings.fillList(list, L"", {});
    EXPECT_EQ(list.rows.at(0).value, row.dutch);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FillListValue,
    ::testing::Values(
        ShownValue {"No", SettingType::yesNo, L"0", L"No", L"Nee"},
        ShownValue {"Yes", SettingType::yesNo, L"1", L"Yes", L"Ja"},
        ShownValue {"AnythingButZeroIsYes", SettingType::yesNo, L"00", L"Yes", L"Ja"},
        ShownValue {"EmptyIsYes", SettingType::yesNo, L"", L"Yes", L"Ja"},
        ShownValue {"AnOptionIsTranslated", SettingType::option, L"links", L"<links>", L"<links>"},
        ShownValue {"AnOpenOptionIsTranslated", SettingType::openOption, L"vrij", L"<vrij>",
                    L"<vrij>"},
        ShownValue {"AStringIsNot", SettingType::string, L"0", L"0", L"0"},
        ShownValue {"AnObsoleteOneShowsItsValue", SettingType::obsolete, L"7", L"7", L"7"}),
    [](const auto& test) { return std::string(test.param.name); });

class FillListSearch : public FillList
{
protected:
    FillListSearch()
    {
        add(L"WandHoogte").setShortDescription(L"hoe hoog een MUUR is");
        add(L"DeurBreedte").setShortDescription(L"de maat van de opening");
        add(L"Kleur").setShortDescription(L"a+b en deur");
    }
};

TEST_F(FillListSearch, FindsNamesAndDescriptionsWithoutRegardToCase)
{
    EXPECT_EQ(filled(L"wandh"), L"0 WandHoogte\n");
    EXPECT_EQ(filled(L"Muur"), L"0 WandHoogte\n");
    EXPECT_EQ(filled(L"DEUR"), L"0 DeurBreedte\n0 Kleur\n");
    EXPECT_EQ(filled(L"raam"), L"");
}

TEST_F(FillListSearch, AnEmptyTextFindsAll)
{
    EXPECT_EQ(filled(L"").size(), filled(L"e").size());
    EXPECT_EQ(list.rows.size(), 3U);
}

TEST_F(FillListSearch, EitherSideOfAPlusCounts)
{
    EXPECT_EQ(filled(L"kleur+muur"), L"0 WandHoogte\n0 Kleur\n");
    EXPECT_EQ(filled(L"raam+opening"), L"0 DeurBreedte\n");
    EXPECT_EQ(filled(L"raam+dak"), L"");
}

TEST_F(FillListSearch, APlusAtAnEndFindsAll)
{
    EXPECT_EQ(filled(L"raam+").empty(), false);
    EXPECT_EQ(list.rows.size(), 3U);
    filled(L"+raam");
    EXPECT_EQ(list.rows.size(), 3U);
    filled(L"+");
    EXPECT_EQ(list.rows.size(), 3U);
}

TEST_F(FillListSearch, OfTwoPlusesTheLastParts)
{
    EXPECT_EQ(filled(L"a+b+dak"), L"0 Kleur\n"); // the left part is "a+b"
    EXPECT_EQ(filled(L"x+wand+muur"), L"0 WandHoogte\n"); // the right part
    EXPECT_EQ(filled(L"muur+x+y"), L""); // the left part is "muur+x"
}

TEST_F(FillListSearch, FindsLettersOfAllAlphabetsWithoutRegardToCase)
{
    add(L"\u0412\u042B\u0421\u041E\u0422\u0410");
    EXPECT_EQ(filled(L"\u0432\u044B\u0441"), L"0 \u0412\u042B\u0421\u041E\u0422\u0410\n");
}

TEST_F(FillListSearch, WithoutATextNothingComes)
{
    filled(L"");
    EXPECT_EQ(filled(std::nullopt), L"");
    EXPECT_EQ(list.focused, 2);
}

TEST_F(FillList, ASettingIsSeenFromItsAccessLevelOn)
{
    add(L"A").setViewAccess(5);
    list.access = 4;
    EXPECT_EQ(filled(), L"");
    list.access = 5;
    EXPECT_EQ(filled(), L"0 A\n");
    list.access = 6;
    EXPECT_EQ(filled(), L"0 A\n");
}

TEST_F(FillList, ASettingMadeReadOnlyShowsItFromTheNextFillOn)
{
    Instelling& one = add(L"A");
    one.setViewAccess(5);
    one.setEditAccess(10);
    list.access = 5;
    EXPECT_EQ(filled(), L"0 A\n");
    EXPECT_TRUE(one.isReadOnly());
    EXPECT_EQ(filled(), L"8 A\n");
    list.access = 10;
    EXPECT_EQ(filled(), L"8 A\n"); // until the model is loaded anew
}

TEST_F(FillList, TheEditLevelItselfMayChange)
{
    Instelling& one = add(L"A");
    one.setEditAccess(10);
    list.access = 10;
    filled();
    EXPECT_FALSE(one.isReadOnly());
    list.access = 9;
    filled();
    EXPECT_TRUE(one.isReadOnly());
}

TEST_F(FillList, ASettingThatIsNotShownStaysAsItIs)
{
    Instelling& one = add(L"A");
    one.setEditAccess(10);
    filled(L"", {.global = false});
    EXPECT_FALSE(one.isReadOnly());
    filled(L"x");
    EXPECT_FALSE(one.isReadOnly());
    one.setViewAccess(1);
    filled();
    EXPECT_FALSE(one.isReadOnly());
}

TEST_F(FillList, AHiddenSettingThatMayNotBeChangedStaysHidden)
{
    Instelling& one = add(L"A");
    one.setEditAccess(10);
    one.setProjectValue(L"p");
    EXPECT_EQ(filled(L"", {.project = false}), L"");
    EXPECT_EQ(filled(L"", {.project = false}), L"");
}

TEST_F(FillList, SetsTheMarkToTheFirstRowWhenThereWasNone)
{
    add(L"A");
    add(L"B");
    filled();
    EXPECT_EQ(list.mark, 0);
}

TEST_F(FillList, KeepsTheMarkAsFarAsRowsReach)
{
    add(L"A1");
    add(L"A2");
    add(L"A3");
    list.mark = 2;
    filled();
    EXPECT_EQ(list.mark, 2);
    list.mark = 3;
    filled();
    EXPECT_EQ(list.mark, 2);
    list.mark = 1;
    filled(L"A3");
    EXPECT_EQ(list.mark, 0);
    EXPECT_EQ(list.focused, 3);
}

} // namespace
} // namespace corma
