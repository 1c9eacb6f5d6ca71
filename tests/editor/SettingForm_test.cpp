#include "editor/SettingDialogTest.h"
#include "editor/SettingForm.h"
#include "foundation/xx_findf.h"
#include "platform/faults.h"
#include "platform/text.h"
#include "support/RefusedCalls.h"
#include "support/SqliteFile.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <optional>

using corma::SettingForm;
using corma::platform::SystemCall;
using corma::testing::filesIn;
using corma::testing::RefusedCalls;
using corma::testing::SettingDialogTest;
using corma::testing::SqliteFile;
using corma::testing::WriteWatch;
using Input = SettingForm::Input;

namespace {

// What the callback of a desk was asked, and what it answers.
struct Asked
{
    std::string arguments;
    int answer = 1;
};

Asked& asked()
{
    static Asked kept;
    return kept;
}

int askCallback(const wchar_t* value, const wchar_t* name, const wchar_t* label)
{
    asked().arguments
        += corma::toUtf8(value) + "|" + corma::toUtf8(name) + "|" + corma::toUtf8(label) + "\n";
    return asked().answer;
}

std::string utf8(const std::optional<std::wstring>& text)
{
    return text ? corma::toUtf8(*text) : "(none)";
}

class SettingFormTest : public SettingDialogTest
{
protected:
    void SetUp() override
    {
        SettingDialogTest::SetUp();
        asked() = {};
        writeIni("A=5\n");
    }

    void TearDown() override
    {
        m_form.reset();
        SettingDialogTest::TearDown();
    }

    SettingForm& show(Levels levels = Levels::global, int language = 9)
    {
        open(levels, language);
        return showAgain();
    }

    /// With a callback that answers this.
    SettingForm& showAsking(int answer)
    {
        asked().answer = answer;
        corma::DeskStart start = startAt(Levels::global);
        start.callback = askCallback;
        open(start);
        return showAgain();
    }

    SettingForm& showAgain()
    {
        m_form.emplace(desk());
        return *m_form;
    }

private:
    std::optional<SettingForm> m_form;
};

// --- what is shown -------------------------------------------------------------------------------

struct TypeRow
{
    const char* sentence;
    const char* definition;
    int language;
    const char* caption;
    const char* typeText;
    Input input;
    bool hasInputLabel;
    bool hasBrowse;
};

void PrintTo(const TypeRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class SettingFormOfType : public SettingFormTest, public ::testing::WithParamInterface<TypeRow>
{
};

TEST_P(SettingFormOfType, ShowsTheInputThatFits)
{
    const TypeRow& row = GetParam();
    define(row.definition);
    SettingForm& form = show(Levels::global, row.language);
    EXPECT_EQ(utf8(form.caption()), row.caption);
    EXPECT_EQ(utf8(form.typeText()), row.typeText);
    EXPECT_EQ(form.input(), row.input);
    EXPECT_EQ(form.hasInputLabel(), row.hasInputLabel);
    EXPECT_EQ(form.hasBrowse(), row.hasBrowse);
    EXPECT_TRUE(form.isEnabled());
    EXPECT_FALSE(desk().texts().newValue.empty());
}

// clang-format off
const TypeRow typeRows[] = {
    {"String", "s", 9, "Settings - A", "String", Input::field, true, false},
    {"StringInDutch", "s", 19, "Instellingen - A", "Tekst", Input::field, true, false},
    {"YesNo", "t", 9, "Settings - A", "Yes/No", Input::question, false, false},
    {"YesNoInFrench", "t", 12, "Paramètres - A", "Oui/Non", Input::question, false, false},
    {"Integer", "i", 9, "Settings - A", "Integer", Input::field, true, false},
    {"IntegerInRussian", "i", 25, "Параметры - A", "Целое число", Input::field, true, false},
    {"Decimal", "d", 9, "Settings - A", "Decimal", Input::field, true, false},
    {"Linetype", "l", 9, "Settings - A", "Linetype", Input::field, true, false},
    {"File", "b", 9, "Settings - A", "File", Input::field, true, true},
    {"Option", "c", 9, "Settings - A", "Option", Input::optionList, true, false},
    {"OpenOption", "q", 9, "Settings - A", "Option", Input::optionField, true, false},
    {"OpenOptionInDutch", "q", 19, "Instellingen - A", "Optie", Input::optionField, true, false},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, SettingFormOfType, ::testing::ValuesIn(typeRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

struct LevelRow
{
    const char* sentence;
    const char* ini; // values; null for a level without one
    const char* ipr;
    const wchar_t* drawing;
    int language;
    int icon;
    const char* text;
    const char* global;
    const char* project;
};

void PrintTo(const LevelRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class SettingFormAtLevel : public SettingFormTest, public ::testing::WithParamInterface<LevelRow>
{
};

TEST_P(SettingFormAtLevel, TellsIt)
{
    const LevelRow& row = GetParam();
    writeIni(row.ini == nullptr ? "B=1\n" : "A=" + std::string(row.ini) + "\n");
    writeIpr(row.ipr == nullptr ? "" : "A=" + std::string(row.ipr) + "\n");
    if (row.drawing != nullptr) {
        newDrawing();
        store(L"", L"A", row.drawing);
    }
    SettingForm& form
        = show(row.drawing != nullptr ? Levels::localProject : Levels::project, row.language);
    EXPECT_EQ(form.levelIcon(), row.icon);
    EXPECT_EQ(utf8(form.levelText()), row.text);
    EXPECT_EQ(utf8(form.globalValue()), row.global);
    EXPECT_EQ(utf8(form.projectValue()), row.project);
}

// clang-format off
const LevelRow levelRows[] = {
    {"Global", "g", nullptr, nullptr, 9, 0, "Global Setting", "(none)", "(none)"},
    {"GlobalInFrench", "g", nullptr, nullptr, 12, 0, "Paramètre global", "(none)", "(none)"},
    {"Project", "g", "p", nullptr, 9, 1, "Project Setting", "g", "(none)"},
    {"ProjectInDutch", "g", "p", nullptr, 19, 1, "Projectinstelling", "g", "(none)"},
    {"ProjectAlone", nullptr, "p", nullptr, 9, 1, "Project Setting", "(none)", "(none)"},
    {"ProjectCopy", "g", "g", nullptr, 9, 3, "Copy of Global", "g", "(none)"},
    {"Local", "g", "p", L"d", 9, 2, "Local Setting", "g", "p"},
    {"LocalInRussian", "g", "p", L"d", 25, 2, "Локальный параметр", "g", "p"},
    {"LocalAlone", nullptr, nullptr, L"d", 9, 2, "Local Setting", "(none)", "(none)"},
    {"LocalOverGlobal", "g", nullptr, L"d", 9, 2, "Local Setting", "g", "(none)"},
    {"LocalCopyOfGlobal", "g", "p", L"g", 9, 4, "Copy of Global", "g", "p"},
    {"LocalCopyOfProject", "g", "p", L"p", 9, 5, "Copy of Project", "g", "p"},
    {"LocalCopyOfAProjectAlone", nullptr, "p", L"p", 9, 5, "Copy of Project", "(none)", "p"},
    {"DoubleCopy", "g", "g", L"g", 9, 6, "Double Copy", "g", "g"},
    {"EmptyValuesAreShown", "", "", L"d", 9, 2, "Local Setting", "", ""},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, SettingFormAtLevel, ::testing::ValuesIn(levelRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

// --- tick boxes ----------------------------------------------------------------------------------

class SettingFormBoxes : public SettingFormTest
{
protected:
    /// Both boxes: "+" for a shown and "-" for a hidden one, the name in capitals for an enabled
    /// one, "*" for a tick.
    std::string boxesAt(Levels levels)
    {
        newDrawing();
        const auto text = [](const SettingForm::TickBox& box, const char* on, const char* off) {
            return std::string(box.isShown ? "+" : "-") + (box.isEnabled ? on : off)
                + (box.isTicked ? "*" : "");
        };
        const SettingForm& form = show(levels);
        return text(form.saveGlobally(), "GLOBAL", "global") + " "
            + text(form.saveInProject(), "PROJECT", "project");
    }

    std::string boxesOfInclude(Levels levels)
    {
        newDrawing();
        folder.write(L"cfg/more.ini", "");
        writeIni("#INCLUDE=more.ini\nA=5\n");
        open(levels);
        select({L"#INCLUDE"});
        const SettingForm form(desk());
        return std::string(form.saveGlobally().isShown ? "+" : "-")
            + (form.saveGlobally().isEnabled ? "GLOBAL" : "global")
            + (form.saveGlobally().isTicked ? "*" : "") + " "
            + (form.saveInProject().isShown ? "+" : "-")
            + (form.saveInProject().isEnabled ? "PROJECT" : "project")
            + (form.saveInProject().isTicked ? "*" : "");
    }
};

TEST_F(SettingFormBoxes, AreShownByTheMode)
{
    EXPECT_EQ(boxesAt(Levels::global), "-GLOBAL -PROJECT");
    EXPECT_EQ(boxesAt(Levels::local), "+GLOBAL -PROJECT");
    writeIpr("");
    EXPECT_EQ(boxesAt(Levels::project), "+GLOBAL -PROJECT");
    EXPECT_EQ(boxesAt(Levels::localProject), "+GLOBAL +PROJECT");
}

TEST_F(SettingFormBoxes, AreClosedByTheLevelOfTheSetting)
{
    writeIpr("");
    define("s level=p");
    EXPECT_EQ(boxesAt(Levels::localProject), "+global +PROJECT");
    define("s level=d");
    EXPECT_EQ(boxesAt(Levels::localProject), "+global +project");
    define("s level=x");
    EXPECT_EQ(boxesAt(Levels::localProject), "+GLOBAL +PROJECT");
}

TEST_F(SettingFormBoxes, AreClosedForAReadOnlySetting)
{
    writeIpr("");
    define("s readonly=true");
    EXPECT_EQ(boxesAt(Levels::localProject), "+global +project");
    define("s readonly=false");
    EXPECT_EQ(boxesAt(Levels::localProject), "+GLOBAL +PROJECT");
}

TEST_F(SettingFormBoxes, OfAnIncludeAreClosedAndItIsSavedGlobally)
{
    EXPECT_EQ(boxesOfInclude(Levels::global), "-global* -project");
    EXPECT_EQ(boxesOfInclude(Levels::local), "+global* -project");
    writeIpr("");
    EXPECT_EQ(boxesOfInclude(Levels::project), "+global* -project");
    EXPECT_EQ(boxesOfInclude(Levels::localProject), "+global* +project");
}

// --- the inputs ----------------------------------------------------------------------------------

TEST_F(SettingFormTest, AReadOnlySettingHasAClosedInput)
{
    for (const char* type : {"s", "t", "i", "b", "c", "q"}) {
        define(std::string(type) + " readonly=true");
        EXPECT_FALSE(show().isEnabled()) << type;
        define(std::string(type) + " readonly=True");
        EXPECT_TRUE(show().isEnabled()) << type;
    }
}

TEST_F(SettingFormTest, AQuestionIsTickedUnlessItsValueIsZero)
{
    define("t");
    describe("Toon alles§ook dit");
    for (const auto& [value, isYes] :
         {std::pair {"0", false}, {"1", true}, {"", true}, {"00", true}, {"ja", true}}) {
        writeIni("A=" + std::string(value) + "\n");
        EXPECT_EQ(show().isYes(), isYes) << value;
        EXPECT_EQ(utf8(showAgain().question()), "Toon alles\nook dit");
    }
}

TEST_F(SettingFormTest, LimitsOfNumbersAreShown)
{
    for (const char* type : {"i", "d"}) {
        define(std::string(type) + " max=10 min=-2.5");
        EXPECT_EQ(utf8(show().maximumText()), "Maximum : 10");
        EXPECT_EQ(utf8(showAgain().minimumText()), "Minimum : -2.5");
        define(type);
        EXPECT_EQ(utf8(show().maximumText()), "");
        EXPECT_EQ(utf8(showAgain().minimumText()), "");
    }
    define("s max=10 min=1");
    EXPECT_EQ(utf8(show().maximumText()), "");
    EXPECT_EQ(utf8(showAgain().minimumText()), "");
}

TEST_F(SettingFormTest, AStringOfSeveralLinesIsShownInTheBox)
{
    newDrawing();
    for (const auto& [value, shown] :
         {std::pair {L"one\ntwo", "one\ntwo"}, {L"one\r\ntwo", "one\ntwo"}, {L"one\n", "one\n"}}) {
        store(L"", L"A", value);
        SettingForm& form = show(Levels::local);
        EXPECT_EQ(form.input(), Input::box);
        EXPECT_EQ(utf8(form.boxText()), shown);
        EXPECT_EQ(form.fieldText(), setting().value());
        EXPECT_TRUE(form.hasInputLabel());
    }
    store(L"", L"A", L"one line");
    EXPECT_EQ(show(Levels::local).input(), Input::field);
    store(L"", L"A", L"");
    EXPECT_EQ(show(Levels::local).input(), Input::field);
}

TEST_F(SettingFormTest, ALineEndInAnotherTypeMakesNoBox)
{
    define("i");
    newDrawing();
    store(L"", L"A", L"1\n2");
    EXPECT_EQ(show(Levels::local).input(), Input::field);
}

TEST_F(SettingFormTest, ThePictureIsTheSettingsOrElseTheDesks)
{
    corma::DeskStart start = startAt(Levels::global);
    open(start);
    EXPECT_EQ(utf8(showAgain().picture()), "");
    start.defaultBitmap = L"/pictures/default.bmp";
    open(start);
    EXPECT_EQ(utf8(showAgain().picture()), "/pictures/default.bmp");
    define("s bitmap=own.bmp");
    open(start);
    EXPECT_EQ(folder.homely(showAgain().picture()), "~/cfg/own.bmp");
}

TEST_F(SettingFormTest, WithoutASettingAllIsEmptyAndOkDoesNothing)
{
    open();
    desk().selectRows({}, -1);
    SettingForm& form = showAgain();
    EXPECT_EQ(utf8(form.caption()), "Settings - ");
    EXPECT_EQ(utf8(form.fileFilter()), "");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(ini(), "A=5\n");
}

// --- files ---------------------------------------------------------------------------------------

class SettingFormFile : public SettingFormTest
{
protected:
    void SetUp() override
    {
        SettingFormTest::SetUp();
        services.module = folder.makeFolder(L"Module") + L"/host.bin";
        services.variables[L"ACAD"] = folder.makeFolder(L"support");
        corma::forgetModuleFolder();
        folder.write(L"Module/here.txt", "");
        folder.write(L"support/there.txt", "");
        define("b filetypes=Texts|*.txt||");
    }

    /// What is shown for a value, in which "~" stands for the folder.
    std::string shownFor(std::string value)
    {
        const std::string home = corma::toUtf8(folder.path());
        if (const std::size_t at = value.find('~'); at != std::string::npos) {
            value.replace(at, 1, home);
        }
        writeIni("A=" + value + "\n");
        return folder.homely(show().fieldText());
    }
};

TEST_F(SettingFormFile, BesideTheModuleIsShownByItsName)
{
    EXPECT_EQ(shownFor("~/Module/here.txt"), "here.txt");
    EXPECT_EQ(shownFor("~/MODULE/gone.txt"), "gone.txt");
    EXPECT_EQ(shownFor("here.txt"), "here.txt");
}

TEST_F(SettingFormFile, OfAnotherFolderIsShownByItsPath)
{
    EXPECT_EQ(shownFor("~/support/there.txt"), "~/support/there.txt");
    EXPECT_EQ(shownFor("~/nowhere/gone.txt"), "~/nowhere/gone.txt");
    EXPECT_EQ(shownFor("sub\\file.txt"), "sub\\file.txt");
    EXPECT_EQ(shownFor("there.txt"), "~/support/there.txt");
}

TEST_F(SettingFormFile, AFileThatIsNotFoundIsShownAsNothing)
{
    EXPECT_EQ(shownFor("gone.txt"), "");
    EXPECT_EQ(shownFor(""), "");
}

TEST_F(SettingFormFile, IsStoredAsItIsShown)
{
    EXPECT_EQ(shownFor("~/Module/here.txt"), "here.txt");
    EXPECT_TRUE(showAgain().accept());
    EXPECT_EQ(ini(), "A=here.txt\n");
    showAgain().setFieldText(L"C:\\any thing.txt");
    EXPECT_EQ(utf8(setting().value()), "here.txt");
}

TEST_F(SettingFormFile, IsAskedForFromWhereItIs)
{
    SettingForm& form = show();
    EXPECT_EQ(utf8(form.fileFilter()), "Texts|*.txt||");
    const auto startOf = [&](const std::wstring& text) {
        form.setFieldText(text);
        return folder.homely(form.browseStart());
    };
    EXPECT_EQ(startOf(L"here.txt"), "~/Module/here.txt");
    EXPECT_EQ(startOf(L"there.txt"), "~/support/there.txt");
    EXPECT_EQ(startOf(L"/any/file.txt"), "/any/file.txt");
    EXPECT_EQ(startOf(L"any\\file.txt"), "any\\file.txt");
    EXPECT_EQ(startOf(L"gone.txt"), "");
    EXPECT_EQ(startOf(L""), "");
    const std::wstring longest = L"/" + std::wstring(255, L'x');
    EXPECT_EQ(startOf(longest), corma::toUtf8(longest));
    EXPECT_EQ(startOf(longest + L"y"), corma::toUtf8(longest));
}

// --- options -------------------------------------------------------------------------------------

struct ChoiceRow
{
    const char* sentence;
    const char* choices;
    const char* value;
    const char* list; // the entry and the text for a closed list
    const char* field; // and for an open field
};

void PrintTo(const ChoiceRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class SettingFormOption : public SettingFormTest, public ::testing::WithParamInterface<ChoiceRow>
{
protected:
    void SetUp() override
    {
        SettingFormTest::SetUp();
        SqliteFile(folder.path(L"words.db3"))
            .run("CREATE TABLE Keys(Key VARCHAR, E VARCHAR, N VARCHAR, F VARCHAR);"
                 "INSERT INTO Keys VALUES('WOOD','Timber','Hout','Bois'),"
                 "('STEEL','Iron and steel','Staal','Acier'),('ÉÉN','Élan','één','un')");
    }

    SettingForm& showOption(const std::string& type, const std::string& choices,
                            const std::string& value, int language = 9)
    {
        writeIni("TranslateDB=" + corma::toUtf8(folder.path(L"words.db3")) + "\nA=" + value + "\n");
        folder.write(L"cfg/tool.inr", "A=" + type + " choices={" + choices + "}\n");
        return show(Levels::global, language);
    }

    static std::string selected(const SettingForm& form)
    {
        return (form.chosen() ? std::to_string(*form.chosen()) : "-") + ":"
            + corma::toUtf8(form.optionText());
    }

    std::string stored()
    {
        EXPECT_EQ(messages(), "");
        const std::string text = ini();
        return text.substr(text.find("\nA=") + 3);
    }
};

TEST_P(SettingFormOption, SelectsTheEntryOfAValue)
{
    const ChoiceRow& row = GetParam();
    EXPECT_EQ(selected(showOption("c", row.choices, row.value)), row.list);
    EXPECT_EQ(selected(showOption("q", row.choices, row.value)), row.field);
}

// clang-format off
const ChoiceRow choiceRows[] = {
    {"AWordWithoutTranslation", "left,right", "right", "1:right", "1:right"},
    {"TheFirstOneIsFoundLast", "left,right", "left", "0:left", "0:left"},
    {"InAnyCase", "left,RIGHT", "Right", "1:RIGHT", "1:RIGHT"},
    {"InAnyCaseOfOtherLetters", "x,écran", "ÉCRAN", "1:écran", "1:écran"},
    {"WhatBeginsWithItBehindTheFirst", "a,abc,ab", "a", "1:abc", "1:abc"},
    {"TheFirstOneWhereNoOtherBeginsWithIt", "a,b", "A", "0:a", "0:a"},
    {"AKey", "left,WOOD,STEEL", "STEEL", "2:Iron and steel", "2:Iron and steel"},
    {"ATranslationThatBeginsWithTheValue", "left,STEEL,WOOD", "TI", "2:Timber", "2:Timber"},
    {"AKeyInItsOwnCaseOnly", "left,WOOD", "wood", "-:", "-:wood"},
    {"AnotherText", "left,right", "middle", "-:", "-:middle"},
    {"NoChoices", "", "middle", "-:", "-:middle"},
    {"AnEmptyValueBeginsEachEntry", "left,right", "", "1:right", "1:right"},
    {"AnEmptyValueAloneIsTheOnlyEntry", "left", "", "0:left", "0:left"},
    {"AKeyWithMarks", "left,ÉÉN", "ÉÉN", "1:Élan", "1:Élan"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, SettingFormOption, ::testing::ValuesIn(choiceRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

using Choices = SettingFormOption;

TEST_F(Choices, AreShownInTheLanguage)
{
    using Choice = SettingForm::Choice;
    EXPECT_THAT(showOption("c", "left,WOOD", "", 9).choices(),
                ::testing::ElementsAre(Choice {L"left"}, Choice {L"Timber", L"WOOD"}));
    EXPECT_THAT(showOption("q", "left,WOOD", "", 12).choices(),
                ::testing::ElementsAre(Choice {L"left"}, Choice {L"Bois", L"WOOD"}));
    EXPECT_THAT(showOption("c", "WOOD", "", 19).choices(),
                ::testing::ElementsAre(Choice {L"Hout", L"WOOD"}));
    EXPECT_THAT(showOption("i", "WOOD", "", 19).choices(), ::testing::IsEmpty());
}

TEST_F(Choices, AreStoredAsTheirKeys)
{
    for (const char* type : {"c", "q"}) {
        SettingForm& form = showOption(type, "left,WOOD,STEEL", "WOOD");
        EXPECT_TRUE(form.accept());
        EXPECT_EQ(stored(), "WOOD\n");
        form.choose(2);
        EXPECT_TRUE(form.accept());
        EXPECT_EQ(stored(), "STEEL\n");
        form.choose(0);
        EXPECT_TRUE(form.accept());
        EXPECT_EQ(stored(), "left\n");
    }
}

TEST_F(Choices, ThatAreTypedAreStoredAsTyped)
{
    SettingForm& form = showOption("q", "left,WOOD,STEEL", "WOOD");
    form.setOptionText(L"Iron and steel"); // another entry's text, but none was chosen
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(stored(), "Iron and steel\n");
    form.setOptionText(L"timber");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(stored(), "timber\n");
    form.setOptionText(L"");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(stored(), "\n");
}

TEST_F(Choices, ThatNoneIsChosenIsStoredAsNothing)
{
    EXPECT_TRUE(showOption("c", "left,right", "middle").accept());
    EXPECT_EQ(stored(), "\n");
}

// --- the callback --------------------------------------------------------------------------------

TEST_F(SettingFormTest, ACallbackIsAskedFirst)
{
    SettingForm& form = showAsking(1);
    form.setFieldText(L"new");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(asked().arguments, "new|A|String\n");
    EXPECT_EQ(ini(), "A=new\n");
    showAsking(-7).setFieldText(L"newer");
    EXPECT_TRUE(showAgain().accept());
    EXPECT_EQ(messages(), "");
}

TEST_F(SettingFormTest, ACallbackCanRefuse)
{
    SettingForm& form = showAsking(0);
    form.setFieldText(L"new");
    EXPECT_FALSE(form.accept());
    EXPECT_EQ(asked().arguments, "new|A|String\n");
    EXPECT_EQ(messages(),
              "exclamation, CfgDesk: This is not a correct value for a setting of type \n");
    EXPECT_EQ(utf8(form.fieldText()), "");
    EXPECT_EQ(ini(), "A=5\n");
    EXPECT_EQ(utf8(setting().value()), "5");
    EXPECT_FALSE(form.accept());
    EXPECT_EQ(asked().arguments, "new|A|String\n|A|String\n");
}

TEST_F(SettingFormTest, ACallbackSeesTheFormerValueOfWhatIsNotTyped)
{
    writeIni("A=1\n");
    define("t");
    SettingForm& form = showAsking(1);
    form.setYes(false);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(asked().arguments, "1|A|Yes/No\n");
    EXPECT_EQ(ini(), "A=0\n");
    writeIni("A=left\n");
    define("c choices={left,right}");
    SettingForm& option = showAsking(1);
    option.choose(1);
    EXPECT_TRUE(option.accept());
    EXPECT_EQ(asked().arguments,
              "1|A|Yes/No\n"
              "left|A|Option\n");
    EXPECT_EQ(ini(), "A=right\n");
}

TEST_F(SettingFormTest, ARefusedValueIsToldOfItsLimitsAsWell)
{
    define("i max=10");
    SettingForm& form = showAsking(0);
    form.setFieldText(L"11");
    EXPECT_FALSE(form.accept());
    EXPECT_EQ(messages(),
              "exclamation, Wrong value: The maximum value : 10\n"
              "exclamation, CfgDesk: This is not a correct value for a setting of type \n");
}

// --- limits --------------------------------------------------------------------------------------

struct LimitRow
{
    const char* sentence;
    const char* definition;
    const wchar_t* typed;
    const char* told; // limits: "max", "min" or "max min"; "type" for another wrong value
    const char* stored;
};

void PrintTo(const LimitRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class SettingFormLimits : public SettingFormTest, public ::testing::WithParamInterface<LimitRow>
{
};

TEST_P(SettingFormLimits, AreInclusive)
{
    const LimitRow& row = GetParam();
    define(row.definition);
    SettingForm& form = show();
    form.setFieldText(row.typed);
    const std::string told = row.told;
    EXPECT_EQ(form.accept(), told.empty());
    const std::string all = messages();
    EXPECT_EQ(all.find("Wrong value: The maximum value : 10\n") != std::string::npos,
              told.find("max") != std::string::npos);
    EXPECT_EQ(all.find("Wrong value: The minimum value : ") != std::string::npos,
              told.find("min") != std::string::npos);
    EXPECT_EQ(all.ends_with("setting of type \n"), !told.empty() && told != "type");
    EXPECT_EQ(all.ends_with("setting of type Integer\n") || all.ends_with("of type Decimal\n"),
              told == "type");
    EXPECT_EQ(form.fieldText(), told.empty() || told == "type" ? row.typed : L"");
    EXPECT_EQ(ini(), "A=" + std::string(row.stored) + "\n");
}

// clang-format off
const LimitRow limitRows[] = {
    {"BelowTheMaximum", "i max=10", L"9", "", "9"},
    {"AtTheMaximum", "i max=10", L"10", "", "10"},
    {"AboveTheMaximum", "i max=10", L"11", "max", "5"},
    {"BelowTheMinimum", "i min=3", L"2", "min", "5"},
    {"AtTheMinimum", "i min=3", L"3", "", "3"},
    {"AboveTheMinimum", "i min=3", L"4", "", "4"},
    {"DecimalBelowTheMaximum", "d max=10", L"9.99", "", "9.99"},
    {"DecimalAtTheMaximum", "d max=10", L"10.0", "", "10.0"},
    {"DecimalAboveTheMaximum", "d max=10", L"10.01", "max", "5"},
    {"DecimalBelowTheMinimum", "d min=-1.5", L"-1.51", "min", "5"},
    {"DecimalAtTheMinimum", "d min=-1.5", L"-1.5", "", "-1.5"},
    {"ACommaEndsTheNumberOfTheLimits", "d max=10", L"10,9", "", "10.9"},
    {"BothAreTold", "i max=10 min=20", L"15", "max min", "5"},
    {"NoNumberCountsAsZero", "i max=10", L"abc", "type", "5"},
    {"NoNumberCountsAsZeroForDecimals", "d max=10", L"abc", "type", "5"},
    {"NoNumberIsBelowAMinimum", "i min=1", L"abc", "min", "5"},
    {"NothingCountsAsZero", "i min=1", L"", "min", "5"},
    {"NothingPassesWithoutLimits", "i", L"", "", ""},
    {"AnyOrderOfDigitsAndSignsPasses", "i", L"1-2", "", "1-2"},
    {"ADecimalCommaIsStoredAsAPoint", "d", L"1,5", "", "1.5"},
    {"AnIntegerHasNoComma", "i", L"1,5", "type", "5"},
    {"ALimitThatIsNoNumberIsZero", "d max=10x min=y", L"-1", "min", "5"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, SettingFormLimits, ::testing::ValuesIn(limitRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

struct MessageRow
{
    const char* sentence;
    int language;
    const char* limits; // the boxes for 11 where 10 is the maximum and 20 the minimum
    const char* wrong; // the box for what is no number
};

void PrintTo(const MessageRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class SettingFormMessages : public SettingFormTest, public ::testing::WithParamInterface<MessageRow>
{
};

TEST_P(SettingFormMessages, AreThoseOfTheLanguage)
{
    define("i max=10 min=20");
    SettingForm& form = show(Levels::global, GetParam().language);
    form.setFieldText(L"11");
    EXPECT_FALSE(form.accept());
    EXPECT_EQ(messages(), GetParam().limits);
    EXPECT_EQ(utf8(form.fieldText()), "");
    define("d");
    SettingForm& other = show(Levels::global, GetParam().language);
    other.setFieldText(L"x1");
    EXPECT_FALSE(other.accept());
    EXPECT_EQ(messages(), GetParam().wrong);
    EXPECT_EQ(utf8(other.fieldText()), "x1");
    EXPECT_EQ(ini(), "A=5\n");
}

// clang-format off
const MessageRow messageRows[] = {
    {"English", 9,
     "exclamation, Wrong value: The maximum value : 10\n"
     "exclamation, Wrong value: The minimum value : 20\n"
     "exclamation, CfgDesk: This is not a correct value for a setting of type \n",
     "exclamation, CfgDesk: This is not a correct value for a setting of type Decimal\n"},
    {"Dutch", 19,
     "exclamation, Onjuiste waarde: De maximale waarde: 10\n"
     "exclamation, Onjuiste waarde: De minimale waarde: 20\n"
     "exclamation, CfgDesk: Dit is geen juiste waarde voor een instelling van het type \n",
     "exclamation, CfgDesk: Dit is geen juiste waarde voor een instelling van het type Decimaal getal\n"},
    {"French", 12,
     "exclamation, Valeur incorrecte: La valeur maximale : 10\n"
     "exclamation, Valeur incorrecte: La valeur minimale : 20\n"
     "exclamation, CfgDesk: Cette valeur n'est pas correcte pour un paramètre de type \n",
     "exclamation, CfgDesk: Cette valeur n'est pas correcte pour un paramètre de type Décimal\n"},
    {"Russian", 25,
     "exclamation, Неверное значение: Максимальное значение: 10\n"
     "exclamation, Неверное значение: Минимальное значение: 20\n"
     "exclamation, CfgDesk: Недопустимое значение для параметра типа \n",
     "exclamation, CfgDesk: Недопустимое значение для параметра типа Десятичное число\n"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(In, SettingFormMessages, ::testing::ValuesIn(messageRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

// --- the new value -------------------------------------------------------------------------------

TEST_F(SettingFormTest, NothingIsWrittenBeforeTheEnd)
{
    SettingForm& form = show();
    form.setFieldText(L"new");
    form.tickGlobally(true);
    EXPECT_EQ(ini(), "A=5\n");
    EXPECT_EQ(utf8(setting().value()), "5");
}

TEST_F(SettingFormTest, AnAnswerIsStoredAsADigit)
{
    define("t");
    SettingForm& form = show();
    EXPECT_TRUE(form.isYes());
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(ini(), "A=1\n");
    form.setYes(false);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(ini(), "A=0\n");
}

TEST_F(SettingFormTest, LinesAreStoredWithTheEndsThatTheyHad)
{
    newDrawing();
    for (const auto& [before, after] :
         {std::pair {L"one\ntwo", L"one\nthree\n"}, {L"one\r\ntwo", L"one\r\nthree\r\n"}}) {
        store(L"", L"A", before);
        SettingForm& form = show(Levels::local);
        EXPECT_TRUE(form.accept());
        EXPECT_EQ(setting().value(), before);
        form.setBoxText(L"one\nthree\n");
        form.setFieldText(L"not this");
        EXPECT_TRUE(form.accept());
        EXPECT_EQ(setting().value(), after);
    }
}

TEST_F(SettingFormTest, AValueOfAnotherTypeEndsEmpty)
{
    for (const char* type : {"l", "k", "v", "o", "x"}) {
        writeIni("A=5\n");
        define(type);
        SettingForm& form = show();
        EXPECT_EQ(utf8(form.fieldText()), "5");
        EXPECT_TRUE(form.accept());
        EXPECT_EQ(ini(), "A=\n") << type;
    }
}

TEST_F(SettingFormTest, ASettingThatIsGoneMeanwhileEndsTheDialog)
{
    SettingForm& form = show();
    form.setFieldText(L"new");
    writeIni("B=5\n");
    desk().run(corma::MenuCommand::globalSettings);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(ini(), "B=5\n");
    EXPECT_EQ(messages(), "");
}

TEST_F(SettingFormTest, AnotherSettingDoesNotGetTheValue)
{
    writeIni("A=5\nB=6\n");
    SettingForm& form = show();
    form.setFieldText(L"new");
    select({L"B"});
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(ini(), "A=5\nB=6\n");
}

// --- where it goes -------------------------------------------------------------------------------

class SettingFormStore : public SettingFormTest
{
protected:
    void SetUp() override
    {
        SettingFormTest::SetUp();
        writeIni("A=g\n");
    }

    /// All places with a value, after the drawing was saved and read again if there is one.
    std::string places()
    {
        std::string all = "ini " + ini();
        if (folder.has(L"house/tool.ipr")) {
            all += "ipr " + ipr() + (ipr().ends_with('\n') ? "" : "\n");
        }
        return all + "drawing " + savedDrawing();
    }
};

TEST_F(SettingFormStore, InGlobalModeIsTheConfigurationFile)
{
    newDrawing();
    SettingForm& form = show();
    form.setFieldText(L"new");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(places(), "ini A=new\ndrawing (none)");
}

TEST_F(SettingFormStore, InProjectModeIsTheProject)
{
    newDrawing();
    writeIpr("");
    SettingForm& form = show(Levels::project);
    form.setFieldText(L"new");
    EXPECT_TRUE(form.accept());
    EXPECT_TRUE(setting().isProject());
    EXPECT_EQ(utf8(setting().globalValue()), "g");
    form.setFieldText(L"newer");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(utf8(setting().globalValue()), "g");
    EXPECT_EQ(places(), "ini A=g\nipr A=newer\ndrawing (none)");
}

TEST_F(SettingFormStore, InProjectModeIsAlsoTheConfigurationFileWhenAskedTo)
{
    newDrawing();
    writeIpr("A=p\n");
    SettingForm& form = show(Levels::project);
    form.setFieldText(L"new");
    form.tickGlobally(true);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(utf8(setting().globalValue()), "new");
    EXPECT_EQ(places(), "ini A=new\nipr A=new\ndrawing (none)");
}

TEST_F(SettingFormStore, InLocalModeIsTheDrawing)
{
    newDrawing();
    SettingForm& form = show(Levels::local);
    form.setFieldText(L"new");
    EXPECT_TRUE(form.accept());
    EXPECT_TRUE(setting().isLocal());
    EXPECT_EQ(utf8(setting().globalValue()), "g");
    form.setFieldText(L"newer");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(utf8(setting().globalValue()), "g");
    EXPECT_EQ(places(), "ini A=g\ndrawing A=newer\n");
}

TEST_F(SettingFormStore, InLocalProjectModeIsTheDrawing)
{
    newDrawing();
    writeIpr("A=p\n");
    SettingForm& form = show(Levels::localProject);
    form.setFieldText(L"new");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(places(), "ini A=g\nipr A=p\ndrawing A=new\n");
}

TEST_F(SettingFormStore, InLocalProjectModeIsAlsoTheProjectWhenAskedTo)
{
    newDrawing();
    writeIpr("");
    SettingForm& form = show(Levels::localProject);
    form.setFieldText(L"new");
    form.tickInProject(true);
    EXPECT_TRUE(form.accept());
    EXPECT_TRUE(setting().isLocal());
    EXPECT_EQ(utf8(setting().globalValue()), "g");
    EXPECT_EQ(utf8(setting().projectValue()), "new");
    EXPECT_EQ(places(), "ini A=g\nipr A=new\ndrawing A=new\n");
}

TEST_F(SettingFormStore, IsEveryPlaceWhenAllAreAskedFor)
{
    newDrawing();
    writeIpr("A=p\n");
    store(L"", L"A", L"d");
    SettingForm& form = show(Levels::localProject);
    form.setFieldText(L"new");
    form.tickInProject(true);
    form.tickGlobally(true);
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(places(), "ini A=new\nipr A=new\ndrawing A=new\n");
}

TEST_F(SettingFormStore, OfAnIncludeIsTheConfigurationFileAsWell)
{
    newDrawing();
    folder.write(L"cfg/more.ini", "");
    folder.write(L"cfg/other.ini", "");
    writeIni("#INCLUDE=more.ini\nA=g\n");
    writeIpr("");
    open(Levels::project);
    select({L"#INCLUDE"});
    SettingForm form(desk());
    form.setFieldText(L"other.ini");
    EXPECT_TRUE(form.accept());
    EXPECT_EQ(places(), "ini #INCLUDE=other.ini\nA=g\nipr #INCLUDE=other.ini\ndrawing (none)");
}

TEST_F(SettingFormStore, ThatFailsLeavesTheFileAndEndsTheDialog)
{
    SettingForm& form = show();
    form.setFieldText(L"new");
    {
        const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
        EXPECT_TRUE(form.accept());
    }
    EXPECT_EQ(ini(), "A=g\n");
    EXPECT_EQ(utf8(setting().value()), "new");
    EXPECT_EQ(messages(),
              "stop, CfgDesk: ~/cfg/tool.ini : Could not open file for write \n"
              "stop, CfgDesk: ~/cfg/tool.ini\nSetting was not written. \nCheck if ini-file is "
              "present and \nif the file is not read-only\n");
}

TEST_F(SettingFormStore, ThatFailsInDutchIsToldInDutch)
{
    SettingForm& form = show(Levels::global, 19);
    form.setFieldText(L"new");
    const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
    EXPECT_TRUE(form.accept());
    EXPECT_THAT(messages(),
                ::testing::StartsWith("stop, CfgDesk: ~/cfg/tool.ini : Kan bestand niet openen om "
                                      "te schrijven \n"));
}

} // namespace
