#include "editor/DeskTest.h"
#include "host/host.h"
#include "platform/text.h"
#include "settings/saving.h"

#include <cerrno>

using corma::MenuCommand;
using corma::MessageAnswer;
using corma::MessageIcon;
using corma::NewName;
using corma::toUtf8;
using corma::platform::SystemCall;
using corma::testing::RefusedCalls;

namespace {

class DeskCommands : public corma::testing::DeskTest
{
protected:
    void newCategory(const wchar_t* name, std::optional<std::wstring> copyOf = {})
    {
        view.newName = NewName {.name = name, .copyOf = std::move(copyOf)};
        desk().newCategory();
    }

    void newSetting(const wchar_t* name)
    {
        view.newName = NewName {.name = name};
        desk().newSetting();
    }

    [[nodiscard]] std::string printed() const { return homely(toUtf8(services.allPrinted())); }
};

// --- new categories ------------------------------------------------------------------------------

TEST_F(DeskCommands, NoCategoryIsMadeWhenTheUserCancels)
{
    writeIni("Kop=1\n");
    open(Levels::global);
    desk().newCategory();
    EXPECT_EQ(view.takeCalls(), "ask category");
    EXPECT_EQ(ini(), "Kop=1\n");
}

TEST_F(DeskCommands, ANewCategoryStandsBehindAnEmptyLineInTheConfigurationFile)
{
    writeIni("Kop=1\n[Tekst]\nHoogte=2\n");
    open(Levels::global);
    selectItem(L"Tekst");
    view.takeCalls();
    newCategory(L"Nieuw");
    EXPECT_EQ(ini(), "Kop=1\n[Tekst]\nHoogte=2\n\n[Nieuw]\n");
    EXPECT_EQ(tree(), "-General\n  -Tekst *\n  -Nieuw\n");
    EXPECT_EQ(names(), "Hoogte");
    const std::string calls = view.takeCalls();
    EXPECT_TRUE(calls.starts_with("ask category, tree")) << calls;
    EXPECT_TRUE(calls.ends_with("fit")) << calls;
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(printed(), "");
}

TEST_F(DeskCommands, ANewCategoryIsOneOfTheConfigurationFileInLocalMode)
{
    writeIni("Kop=1\n");
    open(Levels::local);
    newCategory(L"Nieuw");
    EXPECT_EQ(ini(), "Kop=1\n\n[Nieuw]\n");
    EXPECT_EQ(drawing(), "(none)");
}

TEST_F(DeskCommands, ANewCategoryIsOneOfTheProjectWhereThereIsOne)
{
    for (const Levels levels : {Levels::project, Levels::localProject}) {
        writeIni("Kop=1\n");
        writeIpr("Kop=p\n");
        open(levels);
        newCategory(L"Nieuw");
        EXPECT_EQ(ini(), "Kop=1\n");
        EXPECT_EQ(ipr(), "Kop=p\n[Nieuw]\n");
        EXPECT_EQ(tree(), "-General *\n  -Nieuw\n");
    }
}

TEST_F(DeskCommands, ACategoryThatIsThereOrHasNoNameOnlyFillsTheTreeAgain)
{
    writeIni("Kop=1\n[Tekst]\nHoogte=2\n");
    open(Levels::global);
    for (const wchar_t* name : {L"Tekst", L"", L"Algemeen"}) {
        view.takeCalls();
        newCategory(name, L"Tekst");
        EXPECT_TRUE(view.takeCalls().starts_with("ask category, tree"));
        EXPECT_EQ(tree(), "-General *\n  -Tekst\n");
        EXPECT_EQ(ini(), "Kop=1\n[Tekst]\nHoogte=2\n");
    }
}

TEST_F(DeskCommands, ACategoryThatDiffersInCaseIsAnotherOne)
{
    writeIni("[Tekst]\n");
    open(Levels::global);
    newCategory(L"tekst");
    EXPECT_EQ(ini(), "[Tekst]\n\n[tekst]\n");
}

TEST_F(DeskCommands, ACopiedCategoryHasTheSettingsOfTheOther)
{
    writeIni("Kop=1\n[Tekst]\nHoogte=2\nNaam=abc\n");
    folder.write(L"cfg/tool.inr", "[Tekst]\nHoogte=d min=1\n");
    open(Levels::global);
    newCategory(L"Nieuw", L"Tekst");
    // Each setting goes right below the header, so that the last one is the first.
    EXPECT_EQ(ini(), "Kop=1\n[Tekst]\nHoogte=2\nNaam=abc\n\n[Nieuw]\nNaam=abc\nHoogte=2\n");
    selectItem(L"Nieuw");
    EXPECT_EQ(rows(), "0 Hoogte=2 (Decimal)\n0 Naam=abc (String)\n");
    select({L"Hoogte"});
    EXPECT_EQ(desk().selectedSetting()->category(), desk().selectedCategory());
    EXPECT_EQ(desk().selectedSetting()->minValue(), L"1");
}

TEST_F(DeskCommands, ACopyOfTheRootOrOfNothingIsOneOfTheHead)
{
    writeIni("Kop=1\n");
    open(Levels::global);
    newCategory(L"Eerste", L"General");
    EXPECT_EQ(ini(), "Kop=1\n\n[Eerste]\nKop=1\n");
    newCategory(L"Tweede", L"");
    EXPECT_EQ(ini(), "Kop=1\n\n[Eerste]\nKop=1\n\n[Tweede]\nKop=1\n");
}

TEST_F(DeskCommands, ACopiedCategoryIsOneOfTheProjectWhereThereIsOne)
{
    writeIni("[Tekst]\nHoogte=2\nNaam=abc\n");
    writeIpr("[Tekst]\nNaam=p\n");
    open(Levels::project);
    newCategory(L"Nieuw", L"Tekst");
    EXPECT_EQ(ini(), "[Tekst]\nHoogte=2\nNaam=abc\n");
    EXPECT_EQ(ipr(), "[Tekst]\nNaam=p\n[Nieuw]\nNaam=p\nHoogte=2\n");
}

TEST_F(DeskCommands, ACategoryThatCannotBeWrittenIsReportedAndStandsInMemory)
{
    writeIni("Kop=1\n[Tekst]\nHoogte=2\n");
    open(Levels::global);
    {
        const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
        newCategory(L"Nieuw", L"Tekst");
        EXPECT_EQ(readOnly.count(), 1) << "nor are its settings written";
    }
    EXPECT_EQ(ini(), "Kop=1\n[Tekst]\nHoogte=2\n");
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n  -Nieuw\n");
    EXPECT_EQ(boxes(), "");
    EXPECT_TRUE(printed().find("~/cfg/tool.ini : Permission denied") != std::string::npos)
        << printed();
    EXPECT_TRUE(printed().find("Error in file CfgDeskExeDlg.cpp on line ") != std::string::npos)
        << printed();
    EXPECT_EQ(corma::testing::filesIn(folder), "cfg/tool.ini");
    desk().run(MenuCommand::globalSettings);
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n");
}

TEST_F(DeskCommands, ACategoryIsNotWrittenToAProjectFileThatWentAway)
{
    writeIni("[Tekst]\nHoogte=2\n");
    open(Levels::project);
    folder.remove(L"house/tool.ipr");
    newCategory(L"Nieuw", L"Tekst");
    EXPECT_FALSE(folder.has(L"house/tool.ipr"));
    EXPECT_TRUE(printed().find("~/house/tool.ipr : No such file") != std::string::npos)
        << printed();
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n  -Nieuw\n");
}

// --- new settings --------------------------------------------------------------------------------

TEST_F(DeskCommands, NoSettingIsMadeWhenTheUserCancels)
{
    writeIni("Kop=1\n");
    open(Levels::global);
    desk().newSetting();
    EXPECT_EQ(view.takeCalls(), "ask setting, fit");
    EXPECT_EQ(ini(), "Kop=1\n");
}

TEST_F(DeskCommands, ANewSettingIsAnEmptyTextInTheConfigurationFile)
{
    writeIni("Kop=1\n[Tekst]\nHoogte=2\n[Lijn]\n");
    open(Levels::global);
    newSetting(L"Maat");
    EXPECT_EQ(ini(), "Kop=1\nMaat=\n[Tekst]\nHoogte=2\n[Lijn]\n");
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat= (String)\n");
    EXPECT_EQ(view.takeCalls(), "ask setting, list, focus list, fit");
    selectItem(L"Tekst");
    newSetting(L"Naam");
    EXPECT_EQ(ini(), "Kop=1\nMaat=\n[Tekst]\nHoogte=2\nNaam=\n[Lijn]\n");
    selectItem(L"Lijn");
    newSetting(L"Dikte");
    EXPECT_EQ(ini(), "Kop=1\nMaat=\n[Tekst]\nHoogte=2\nNaam=\n[Lijn]\nDikte=\n");
    EXPECT_EQ(rows(), "0 Dikte= (String)\n");
}

TEST_F(DeskCommands, ANewSettingIsOneOfTheProjectInProjectMode)
{
    writeIni("Kop=1\n");
    writeIpr("Kop=p\n");
    open(Levels::project);
    newSetting(L"Maat");
    EXPECT_EQ(ini(), "Kop=1\n");
    EXPECT_EQ(ipr(), "Kop=p\nMaat=\n");
    EXPECT_EQ(rows(), "1 Kop=p (String)\n1 Maat= (String)\n");
}

TEST_F(DeskCommands, ANewSettingGoesIntoTheDrawing)
{
    for (const Levels levels : {Levels::local, Levels::localProject}) {
        writeIni("Kop=1\n[Tekst]\nHoogte=2\n");
        open(levels);
        newSetting(L"Maat");
        EXPECT_EQ(rows(), "0 Kop=1 (String)\n2 Maat= (String)\n");
        selectItem(L"Tekst");
        newSetting(L"Naam");
        EXPECT_EQ(ini(), "Kop=1\n[Tekst]\nHoogte=2\n");
        if (levels == Levels::localProject) {
            EXPECT_EQ(ipr(), "");
        }
        EXPECT_EQ(savedDrawing(), "Maat=\nTekst/\nTekst/Naam=\n");
        corma::closeDocument();
    }
}

TEST_F(DeskCommands, ASettingThatIsThereOnlyFillsTheListAgain)
{
    writeIni("Kop=1\n");
    open(Levels::global);
    newSetting(L"Kop");
    EXPECT_EQ(view.takeCalls(), "ask setting, list, focus list, fit");
    EXPECT_EQ(ini(), "Kop=1\n");
    EXPECT_EQ(printed(), "") << "no double is tried";
}

TEST_F(DeskCommands, ASettingWithoutANameIsMade)
{
    writeIni("Kop=1\n");
    open(Levels::global);
    newSetting(L"");
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 = (String)\n");
    EXPECT_EQ(ini(), "Kop=1\n=\n");
}

TEST_F(DeskCommands, ANewSettingOfAnIncludedFileIsOneOfTheHead)
{
    folder.write(L"cfg/a.ini", "A=1\n");
    writeIni("#INCLUDE=a.ini\n[Tekst]\n");
    open(Levels::global);
    selectItem(L"a.ini");
    newSetting(L"Maat");
    EXPECT_EQ(ini(), "#INCLUDE=a.ini\nMaat=\n[Tekst]\n");
    EXPECT_EQ(folder.read(L"cfg/a.ini"), "A=1\n");
}

TEST_F(DeskCommands, ASettingThatCannotBeWrittenIsTold)
{
    writeIni("Kop=1\n");
    open(Levels::global);
    {
        const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
        newSetting(L"Maat");
    }
    EXPECT_EQ(told(),
              "stop: ~/cfg/tool.ini : Could not open file for write \n"
              "stop: ~/cfg/tool.ini\nSetting was not written. \n"
              "Check if ini-file is present and \nif the file is not read-only\n");
    EXPECT_EQ(ini(), "Kop=1\n");
    EXPECT_EQ(names(), "Kop Maat");
}

// --- copies --------------------------------------------------------------------------------------

TEST_F(DeskCommands, AProjectCopyOfEachSelectedSettingIsWritten)
{
    writeIni("A=1\nB=2\nC=3\nD=4\n");
    writeIpr("B=p\n");
    open(Levels::project);
    select({L"A", L"B", L"D"});
    view.takeCalls();
    desk().run(MenuCommand::makeProjectCopy);
    EXPECT_EQ(view.takeCalls(), "list, focus list");
    EXPECT_EQ(rows(), "3 A=1 (String)\n1 B=p (String)\n0 C=3 (String)\n3 D=4 (String)\n");
    EXPECT_EQ(ini(), "A=1\nB=2\nC=3\nD=4\n");
    EXPECT_EQ(ipr(), "B=p\nD=4\nA=1\n");
}

TEST_F(DeskCommands, NoCopyIsMadeWithoutASelection)
{
    writeIni("A=1\n");
    open(Levels::project);
    view.takeCalls();
    desk().run(MenuCommand::makeProjectCopy);
    EXPECT_EQ(view.takeCalls(), "list, focus list");
    EXPECT_EQ(ipr(), "");
}

TEST_F(DeskCommands, ALocalCopyOfEachSelectedSettingIsStored)
{
    writeIni("A=1\nB=2\n[T]\nC=3\n");
    newDrawing();
    store(L"", L"B", L"d");
    open(Levels::local);
    select({L"A", L"B"});
    desk().run(MenuCommand::makeLocalCopy);
    EXPECT_EQ(rows(), "6 A=1 (String)\n2 B=d (String)\n");
    selectItem(L"T");
    select({L"C"});
    desk().run(MenuCommand::makeLocalCopy);
    EXPECT_EQ(rows(), "6 C=3 (String)\n");
    EXPECT_EQ(ini(), "A=1\nB=2\n[T]\nC=3\n");
    EXPECT_EQ(savedDrawing(), "A=1\nB=d\nT/\nT/C=3\n");
}

TEST_F(DeskCommands, ALocalCopyOfAProjectSettingHasItsValue)
{
    writeIni("A=1\n");
    writeIpr("A=p\n");
    open(Levels::localProject);
    EXPECT_EQ(rows(), "1 A=p (String)\n");
    select({L"A"});
    desk().run(MenuCommand::makeLocalCopy);
    EXPECT_EQ(rows(), "6 A=p (String)\n");
    EXPECT_EQ(ipr(), "A=p\n");
    EXPECT_EQ(savedDrawing(), "A=p\n");
}

// --- removing settings ---------------------------------------------------------------------------

struct QuestionRow
{
    int language;
    const char* setting;
    const char* category;
};

TEST_F(DeskCommands, RemovalsAreAskedInTheLanguageOfTheStart)
{
    writeIni("A=1\n[T]\nB=2\n");
    services.answer = MessageAnswer::no;
    for (const QuestionRow& row :
         {QuestionRow {corma::kEnglish, "Are you sure you want to remove this setting?",
                       "Are you sure you want to remove this category?"},
          QuestionRow {19, "Weet u zeker dat u deze instelling wilt verwijderen?",
                       "Weet u zeker dat u deze rubriek wilt verwijderen?"},
          QuestionRow {12, "Voulez-vous vraiment supprimer ce paramètre ?",
                       "Voulez-vous vraiment supprimer cette catégorie ?"},
          QuestionRow {25, "Вы действительно хотите удалить этот параметр?",
                       "Вы действительно хотите удалить эту категорию?"}}) {
        open(Levels::global, row.language);
        selectItem(L"T");
        select({L"B"});
        view.takeCalls();
        desk().removeSettings();
        EXPECT_EQ(view.takeCalls(), "fit");
        EXPECT_EQ(told(), std::string("question: ") + row.setting + "\n");
        desk().removeCategory();
        EXPECT_EQ(view.takeCalls(), "");
        EXPECT_EQ(told(), std::string("question: ") + row.category + "\n");
        EXPECT_EQ(ini(), "A=1\n[T]\nB=2\n");
    }
}

TEST_F(DeskCommands, SeveralSettingsAreRemovedAfterOneQuestion)
{
    writeIni("A=1\nB=2\nC=3\n");
    open(Levels::global);
    select({L"A", L"C"});
    view.takeCalls();
    desk().removeSettings();
    EXPECT_EQ(told(), "question: Are you sure you want to remove this setting?\n");
    EXPECT_EQ(view.takeCalls(), "list, focus list, fit");
    EXPECT_EQ(rows(), "0 B=2 (String)\n");
    EXPECT_EQ(ini(), "B=2\n");
}

TEST_F(DeskCommands, TheQuestionComesWithoutASelectedRowToo)
{
    writeIni("A=1\n");
    open(Levels::global);
    desk().removeSettings();
    EXPECT_EQ(services.boxes.size(), 1U);
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(rows(), "0 A=1 (String)\n");
}

TEST_F(DeskCommands, ASettingOfTheProjectFallsBackToTheGlobalOne)
{
    writeIni("A=1\n");
    writeIpr("A=p\n");
    open(Levels::project);
    select({L"A"});
    desk().removeSettings();
    EXPECT_EQ(rows(), "0 A=1 (String)\n");
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(ipr(), "");
}

TEST_F(DeskCommands, ASettingOfTheDrawingFallsBackToTheProject)
{
    writeIni("A=1\nB=2\n");
    writeIpr("A=p\n");
    newDrawing();
    store(L"", L"A", L"d");
    store(L"", L"B", L"e");
    store(L"", L"N", L"n");
    open(Levels::localProject);
    select({L"A", L"B", L"N"});
    desk().removeSettings();
    EXPECT_EQ(told(), "question: Are you sure you want to remove this setting?\n");
    EXPECT_EQ(rows(), "1 A=p (String)\n0 B=2 (String)\n");
    EXPECT_EQ(corma::currentDocument()->lockMode(), AcAp::kNotLocked);
    EXPECT_EQ(ini(), "A=1\nB=2\n");
    EXPECT_EQ(ipr(), "A=p\n");
    EXPECT_EQ(savedDrawing(), "");
}

TEST_F(DeskCommands, InLocalModeASettingOfAnotherLevelStays)
{
    writeIni("A=1\n");
    open(Levels::local);
    select({L"A"});
    desk().removeSettings();
    EXPECT_EQ(told(),
              "question: Are you sure you want to remove this setting?\n"
              "information: Can not remove setting in Local Mode\n");
    EXPECT_EQ(rows(), "0 A=1 (String)\n");
    EXPECT_EQ(ini(), "A=1\n");
}

TEST_F(DeskCommands, ASettingInAFileThatMayNotBeChangedStays)
{
    writeIni("A=1\nB=2\n");
    open(Levels::global);
    select({L"A"});
    {
        const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
        desk().removeSettings();
    }
    EXPECT_EQ(ini(), "A=1\nB=2\n");
    EXPECT_EQ(names(), "A B");
    EXPECT_EQ(services.boxes.size(), 2U) << "the question, and what was wrong";
}

// --- removing categories -------------------------------------------------------------------------

TEST_F(DeskCommands, ACategoryIsRemovedAndTheFirstItemSelected)
{
    writeIni("Kop=1\n[T]\nB=2\n[L]\nC=3\n");
    open(Levels::global);
    selectItem(L"T");
    desk().removeCategory();
    EXPECT_EQ(told(),
              "question: Are you sure you want to remove this category?\n"
              "information: Rubriek succesvol verwijderd.\n");
    EXPECT_EQ(ini(), "Kop=1\n[L]\nC=3\n");
    EXPECT_EQ(tree(), "-General *\n  -L\n");
    EXPECT_EQ(names(), "Kop");
}

TEST_F(DeskCommands, TheFirstItemAfterARemovalMayBeAnIncludedFile)
{
    folder.write(L"cfg/a.ini", "");
    writeIni("#INCLUDE=a.ini\n[T]\nB=2\n");
    open(Levels::global);
    selectItem(L"T");
    desk().removeCategory();
    EXPECT_EQ(tree(), "a.ini [100] *\n-General\n");
    EXPECT_EQ(names(), "#INCLUDE");
}

TEST_F(DeskCommands, ACategoryOfTheDrawingIsRemovedInLocalMode)
{
    writeIni("Kop=1\n[T]\n");
    newDrawing();
    store(L"T", L"B", L"d");
    store(L"Eigen", L"E", L"e");
    open(Levels::local);
    selectItem(L"T");
    desk().removeCategory();
    EXPECT_EQ(ini(), "Kop=1\n");
    EXPECT_EQ(tree(), "-General *\n  -Eigen\n");
    EXPECT_EQ(corma::currentDocument()->lockMode(), AcAp::kNotLocked);
    EXPECT_EQ(savedDrawing(), "Eigen/\nEigen/E=e\n");
}

TEST_F(DeskCommands, ACategoryIsRemovedFromTheProject)
{
    writeIni("Kop=1\n[T]\nB=2\n");
    writeIpr("[T]\nP=p\n");
    open(Levels::localProject);
    selectItem(L"T");
    desk().removeCategory();
    EXPECT_EQ(told(),
              "question: Are you sure you want to remove this category?\n"
              "information: Rubriek succesvol verwijderd.\n")
        << "in local mode its settings could not be removed";
    EXPECT_EQ(ini(), "Kop=1\n");
    EXPECT_EQ(ipr(), "[T]\n");
}

TEST_F(DeskCommands, ACategoryOfWhichASettingStaysIsKept)
{
    writeIni("Kop=1\n[T]\nB=2\n");
    open(Levels::local);
    selectItem(L"T");
    desk().removeCategory();
    EXPECT_EQ(told(),
              "question: Are you sure you want to remove this category?\n"
              "information: Can not remove setting in Local Mode\n"
              "exclamation: Een van de onderliggende instellingen kon niet verwijderd worden. "
              "Daarom kan de rubriek niet verwijderd worden.\n");
    EXPECT_EQ(ini(), "Kop=1\n[T]\nB=2\n");
    EXPECT_EQ(tree(), "-General *\n  -T\n");
}

TEST_F(DeskCommands, AnIncludedFileIsNotRemoved)
{
    folder.write(L"cfg/a.ini", "A=1\n");
    writeIni("#INCLUDE=a.ini\nKop=1\n");
    open(Levels::global);
    selectItem(L"a.ini");
    desk().removeCategory();
    EXPECT_EQ(ini(), "#INCLUDE=a.ini\nKop=1\n");
    EXPECT_EQ(folder.read(L"cfg/a.ini"), "A=1\n");
    EXPECT_EQ(names(), "#INCLUDE Kop");
}

TEST_F(DeskCommands, TheHeadCanBeRemovedAndTheDeskStillBeUsed)
{
    writeIni("Kop=1\n");
    open(Levels::global);
    desk().removeCategory();
    EXPECT_EQ(ini(), "");
    EXPECT_EQ(tree(), "-General *\n");
    EXPECT_EQ(rows(), "");
    newSetting(L"Maat");
    EXPECT_EQ(rows(), "");
    newCategory(L"Nieuw", L"Nieuw");
    EXPECT_EQ(ini(), "\n[Nieuw]\n");
}

// --- the rest ------------------------------------------------------------------------------------

TEST_F(DeskCommands, HelpIsFoundBesideTheModule)
{
    writeIni("");
    open(Levels::global);
    services.module = folder.path(L"module.so");
    const std::wstring help = folder.write(L"KVR_xx_corma.chm", "help");
    corma::Desk::help();
    ASSERT_EQ(services.helpFiles.size(), 1U);
    EXPECT_EQ(services.helpFiles[0], help);
}

TEST_F(DeskCommands, HelpThatIsNotFoundIsAskedForWithoutAPath)
{
    writeIni("");
    open(Levels::global);
    corma::Desk::help();
    ASSERT_EQ(services.helpFiles.size(), 1U);
    EXPECT_EQ(services.helpFiles[0], L"");
}

TEST_F(DeskCommands, ExitClosesTheWindow)
{
    writeIni("");
    open(Levels::global);
    desk().run(MenuCommand::exit);
    EXPECT_EQ(view.takeCalls(), "close");
}

} // namespace
