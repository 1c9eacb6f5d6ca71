#include "settings/Instelling.h"
#include "settings/Rubriek.h"
#include "settings/texts.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>
#include <string>

namespace corma {
namespace {

// The level state in one line: flags, value, global and project value.
std::wstring stateOf(const Instelling& setting)
{
    std::wstring state = setting.isProject() ? L"project " : setting.isLocal() ? L"local " : L"";
    state += setting.value();
    state += L" | " + (setting.hasGlobalValue() ? setting.globalValue() : L"-");
    return state + L" | " + (setting.hasProjectValue() ? setting.projectValue() : L"-");
}

Instelling projectSetting(const wchar_t* global, const wchar_t* project)
{
    Instelling setting(L"A", global);
    setting.setProjectValue(project);
    return setting;
}

class InstellingTest : public ::testing::Test
{
protected:
    testing::RecordingServices services;
};

TEST_F(InstellingTest, ANullNameIsCalledNoName)
{
    const Instelling setting(nullptr);
    EXPECT_EQ(setting.name(), L"(no name)");
    EXPECT_EQ(setting.value(), L"");
}

TEST_F(InstellingTest, StartsWithWhatItIsGivenAndNothingElse)
{
    const Instelling setting(L"Hoogte", L"2.5", L"De hoogte", SettingType::decimal);
    EXPECT_EQ(setting.name(), L"Hoogte");
    EXPECT_EQ(setting.value(), L"2.5");
    EXPECT_EQ(setting.longDescription(), L"De hoogte");
    EXPECT_EQ(setting.type(), SettingType::decimal);
    const std::wstring others = setting.shortDescription() + setting.bitmap() + setting.choices()
        + setting.maxValue() + setting.minValue() + setting.readOnly() + setting.level()
        + setting.fileTypes();
    EXPECT_EQ(others, L"");
    EXPECT_EQ(setting.globalValue(), L"***KV_BESTAAT_NIET***");
    EXPECT_EQ(setting.projectValue(), L"***KV_BESTAAT_NIET***");
    EXPECT_FALSE(setting.isProject() || setting.isLocal());
    EXPECT_EQ(setting.rgb(), 0U);
    EXPECT_EQ(setting.viewAccess(), 0);
    EXPECT_EQ(setting.editAccess(), 0);
    EXPECT_EQ(setting.category(), nullptr);
}

TEST_F(InstellingTest, GivesBackEachTextThatItWasGiven)
{
    Instelling setting(L"A");
    setting.setName(L"Naam");
    setting.setLongDescription(L"lang\u00A7verhaal");
    setting.setShortDescription(L"kort");
    setting.setBitmap(L"plaatje.bmp");
    setting.setChoices(L"links,midden");
    setting.setMaxValue(L"10");
    setting.setMinValue(L"-10");
    setting.setReadOnly(L"true");
    setting.setLevel(L"p");
    setting.setFileTypes(L"Tekst|*.txt||");
    setting.setGlobalValue(L"g");
    setting.setProjectCopy(L"p");
    const std::wstring all = setting.name() + L'/' + setting.longDescription() + L'/'
        + setting.shortDescription() + L'/' + setting.bitmap() + L'/' + setting.choices() + L'/'
        + setting.maxValue() + L'/' + setting.minValue() + L'/' + setting.readOnly() + L'/'
        + setting.level() + L'/' + setting.fileTypes() + L'/' + setting.globalValue() + L'/'
        + setting.projectValue();
    EXPECT_EQ(
        all,
        L"Naam/lang\u00A7verhaal/kort/plaatje.bmp/links,midden/10/-10/true/p/Tekst|*.txt||/g/p");
}

TEST_F(InstellingTest, BothDescriptionsTogetherDifferInTheirLineBreaks)
{
    Instelling setting(L"A");
    setting.setDescription(PackedText("een\xC2\xA7twee\xC2\xA7\xC2\xA7"
                                      "drie"));
    EXPECT_EQ(setting.longDescription(), L"een\u00A7twee\u00A7\u00A7drie");
    EXPECT_EQ(setting.shortDescription(), L"een twee  drie");
}

TEST_F(InstellingTest, ANewLongDescriptionLeavesTheShortOneAlone)
{
    Instelling setting(L"A");
    setting.setDescription(PackedText("een\xC2\xA7twee"));
    setting.setLongDescription(L"anders");
    EXPECT_EQ(setting.longDescription(), L"anders");
    EXPECT_EQ(setting.shortDescription(), L"een twee");
}

TEST_F(InstellingTest, ANewShortDescriptionLeavesTheLongOneAlone)
{
    Instelling setting(L"A");
    setting.setDescription(PackedText("een\xC2\xA7twee"));
    setting.setShortDescription(L"kort");
    EXPECT_EQ(setting.longDescription(), L"een\u00A7twee");
    EXPECT_EQ(setting.shortDescription(), L"kort");
}

TEST_F(InstellingTest, ACopyHasNoAccessLevels)
{
    Rubriek category(L"X");
    Instelling setting = projectSetting(L"g", L"p");
    setting.setDescription(PackedText("een\xC2\xA7twee"));
    setting.setType(SettingType::colour);
    setting.setRgb(0x0000FF);
    setting.setCategory(&category);
    setting.setViewAccess(10);
    setting.setEditAccess(20);
    const Instelling copy(setting);
    EXPECT_EQ(copy.viewAccess(), 0);
    EXPECT_EQ(copy.editAccess(), 0);
    EXPECT_EQ(stateOf(copy), L"project p | g | -");
    EXPECT_EQ(copy.shortDescription(), L"een twee");
    EXPECT_EQ(copy.type(), SettingType::colour);
    EXPECT_EQ(copy.rgb(), 0x0000FFU);
    EXPECT_EQ(copy.category(), &category);
}

TEST_F(InstellingTest, ACopyOutlivesTheArenaOfItsTexts)
{
    auto texts = std::make_unique<TextArena>();
    auto setting = std::make_unique<Instelling>(texts->pack("een lange naam"),
                                                texts->pack("een lange waarde"));
    const Instelling copy(*setting);
    setting.reset();
    texts.reset();
    EXPECT_EQ(copy.name(), L"een lange naam");
    EXPECT_EQ(copy.value(), L"een lange waarde");
}

TEST_F(InstellingTest, SetValueChangesTheValueAlone)
{
    Instelling setting = projectSetting(L"g", L"p");
    setting.setValue(L"x");
    EXPECT_EQ(stateOf(setting), L"project x | g | -");
}

TEST_F(InstellingTest, AProjectValueMovesTheFormerOneDown)
{
    Instelling setting(L"A", L"g");
    setting.setProjectValue(L"p");
    EXPECT_EQ(stateOf(setting), L"project p | g | -");
}

TEST_F(InstellingTest, ASecondProjectValueOverwritesTheGlobalOne)
{
    Instelling setting = projectSetting(L"g", L"p");
    setting.setProjectValue(L"q");
    EXPECT_EQ(stateOf(setting), L"project q | p | -");
}

TEST_F(InstellingTest, ALocalValueKeepsTheProjectOne)
{
    Instelling setting = projectSetting(L"g", L"p");
    setting.setLocalValue(L"d");
    EXPECT_EQ(stateOf(setting), L"local d | g | p");
}

TEST_F(InstellingTest, ALocalValueKeepsTheGlobalOne)
{
    Instelling setting(L"A", L"g");
    setting.setLocalValue(L"d");
    EXPECT_EQ(stateOf(setting), L"local d | g | -");
}

TEST_F(InstellingTest, AValueEqualToTheMarkerCountsAsNone)
{
    Instelling setting(L"A", NOT_FOUND_MARKER);
    setting.setLocalValue(L"d");
    EXPECT_FALSE(setting.hasGlobalValue());
    EXPECT_EQ(setting.globalValue(), NOT_FOUND_MARKER);
}

TEST_F(InstellingTest, AProjectCopyOfAGlobalSettingIsACopyOfGlobal)
{
    Instelling setting(L"A", L"g");
    setting.makeProjectCopy();
    EXPECT_EQ(stateOf(setting), L"project g | g | -");
    EXPECT_EQ(setting.levelText(), L"Copy of Global");
}

TEST_F(InstellingTest, AProjectCopyOfALocalSettingForgetsTheGlobalValue)
{
    Instelling setting(L"A", L"g");
    setting.setLocalValue(L"d");
    setting.makeProjectCopy();
    EXPECT_EQ(stateOf(setting), L"project d | d | -");
}

TEST_F(InstellingTest, ALocalCopyOfAGlobalSettingIsADoubleCopy)
{
    Instelling setting(L"A", L"g");
    setting.makeLocalCopy();
    EXPECT_EQ(stateOf(setting), L"local g | g | g");
    EXPECT_EQ(setting.levelText(), L"Double Copy");
}

TEST_F(InstellingTest, ALocalCopyOfAProjectSettingIsADoubleCopy)
{
    Instelling setting = projectSetting(L"g", L"p");
    setting.makeLocalCopy();
    EXPECT_EQ(stateOf(setting), L"local p | p | p");
}

TEST_F(InstellingTest, ALocalCopyLeavesAProjectTextThatWasKeptAlone)
{
    Instelling setting = projectSetting(L"g", L"p");
    setting.setProjectCopy(L"oud");
    setting.makeLocalCopy();
    EXPECT_EQ(stateOf(setting), L"local p | p | oud");
}

struct MarkRow
{
    const char* name;
    bool isProject;
    bool isLocal;
    const wchar_t* value;
    const wchar_t* global;
    const wchar_t* project;
    int number;
    const wchar_t* english;
    const wchar_t* dutch;
};

class LevelMarkTest : public ::testing::TestWithParam<MarkRow>
{
};

TEST_P(LevelMarkTest, FollowsFromTheState)
{
    const testing::RecordingServices services;
    const MarkRow& row = GetParam();
    Instelling setting(L"A", row.value);
    setting.setIsProject(row.isProject);
    setting.setIsLocal(row.isLocal);
    setting.setGlobalValue(row.global);
    setting.setProjectCopy(row.project);
    EXPECT_EQ(static_cast<int>(setting.levelMark()), row.number);
    EXPECT_EQ(setting.levelText(), row.english);
    setTextLanguage(19);
    EXPECT_EQ(setting.levelText(), row.dutch);
}

constexpr const wchar_t* kNone = NOT_FOUND_MARKER;

INSTANTIATE_TEST_SUITE_P(
    Rows, LevelMarkTest,
    ::testing::Values(MarkRow {"NoFlag", false, false, L"g", kNone, kNone, 0, L"Global Setting",
                               L"Globale instelling"},
                      MarkRow {"Project", true, false, L"p", L"g", kNone, 1, L"Project Setting",
                               L"Projectinstelling"},
                      MarkRow {"ProjectAlone", true, false, L"p", kNone, kNone, 1,
                               L"Project Setting", L"Projectinstelling"},
                      MarkRow {"ProjectEqualToGlobal", true, false, L"g", L"g", kNone, 3,
                               L"Copy of Global", L"Kopie van globaal"},
                      MarkRow {"ProjectOfOtherCase", true, false, L"G", L"g", kNone, 1,
                               L"Project Setting", L"Projectinstelling"},
                      MarkRow {"Local", false, true, L"d", L"g", L"p", 2, L"Local Setting",
                               L"Lokale instelling"},
                      MarkRow {"LocalEqualToGlobal", false, true, L"g", L"g", L"p", 4,
                               L"Copy of Global", L"Kopie van globaal"},
                      MarkRow {"LocalEqualToProject", false, true, L"p", L"g", L"p", 5,
                               L"Copy of Project", L"Kopie van project"},
                      MarkRow {"LocalEqualToBoth", false, true, L"g", L"g", L"g", 6, L"Double Copy",
                               L"Dubbele kopie"}),
    [](const auto& test) { return std::string(test.param.name); });

struct TypeCase
{
    const char* name;
    char letter;
    unsigned number;
    const wchar_t* english;
    const wchar_t* french;
};

class TypeTest : public ::testing::TestWithParam<TypeCase>
{
};

TEST_P(TypeTest, HasItsLetterNumberAndLabel)
{
    const testing::RecordingServices services;
    const TypeCase& row = GetParam();
    const SettingType type = typeOfLetter(row.letter);
    EXPECT_EQ(static_cast<unsigned>(type), row.number);
    Instelling setting(L"A", L"", nullptr, type);
    EXPECT_EQ(setting.typeText(), row.english);
    setTextLanguage(12);
    EXPECT_EQ(setting.typeText(), row.french);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TypeTest,
    ::testing::Values(TypeCase {"Text", 's', 0, L"String", L"Cha\u00EEne"},
                      TypeCase {"Capital", 'T', 0, L"String", L"Cha\u00EEne"},
                      TypeCase {"Nothing", '\0', 0, L"String", L"Cha\u00EEne"},
                      TypeCase {"YesNo", 't', 1, L"Yes/No", L"Oui/Non"},
                      TypeCase {"Integer", 'i', 2, L"Integer", L"Entier"},
                      TypeCase {"Decimal", 'd', 3, L"Decimal", L"D\u00E9cimal"},
                      TypeCase {"Colour", 'k', 4, L"Colour", L"Couleur"},
                      TypeCase {"Linetype", 'l', 5, L"Linetype", L"Type de ligne"},
                      TypeCase {"File", 'b', 6, L"File", L"Fichier"},
                      TypeCase {"Visualisation", 'v', 7, L"Visualisation", L"Visualisation"},
                      TypeCase {"Obsolete", 'o', 8, L"Obsolete", L"Obsol\u00E8te"},
                      TypeCase {"TextStyle", 'x', 9, L"Textstyle", L"Style de texte"},
                      TypeCase {"Hatch", 'h', 10, L"Hatch", L"Hachures"},
                      TypeCase {"Option", 'c', 11, L"Option", L"Option"},
                      TypeCase {"OpenOption", 'q', 12, L"Option", L"Option"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(InstellingTest, ANumberThatIsNoTypeHasTheLabelOfAString)
{
    const Instelling setting(L"A", L"", nullptr, static_cast<SettingType>(13));
    EXPECT_EQ(setting.typeText(), L"String");
}

} // namespace
} // namespace corma
