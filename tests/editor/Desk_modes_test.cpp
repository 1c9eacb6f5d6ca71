#include "editor/DeskTest.h"
#include "host/host.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <unistd.h>

using corma::DeskStart;
using corma::LevelMode;
using corma::MenuCommand;
using corma::toUtf8;
using corma::testing::CurrentFolder;

namespace {

constexpr LevelMode kGlobal {};
constexpr LevelMode kProject {.project = true, .local = false};
constexpr LevelMode kLocal {.project = false, .local = true};
constexpr LevelMode kLocalProject {.project = true, .local = true};

class DeskModes : public corma::testing::DeskTest
{
protected:
    void SetUp() override
    {
        DeskTest::SetUp();
        writeIni("Kop=1\nMaat=2\n[Tekst]\nHoogte=3\n");
        writeIpr("Maat=p\n[Extra]\nE=1\n");
    }

    /// A drawing with a value of the head and a category of its own.
    void makeDrawing() const
    {
        newDrawing();
        store(L"Algemeen", L"Kop", L"d");
        store(L"Eigen", L"D", L"9");
    }

    void start(Levels levels)
    {
        if (levels == Levels::global || levels == Levels::local) {
            folder.remove(L"house/tool.ipr");
        }
        if (levels == Levels::local || levels == Levels::localProject) {
            makeDrawing();
        }
        open(levels);
    }

    [[nodiscard]] std::string projectFolder() const { return homely(toUtf8(projectFolderOf())); }

    /// Answers the question for a project.
    void choose(const std::wstring& path, MenuCommand command = MenuCommand::openProject)
    {
        view.project = path;
        desk().run(command);
    }

    const CurrentFolder current {folder.path()};

private:
    [[nodiscard]] std::wstring projectFolderOf() const
    {
        return const_cast<DeskModes*>(this)->desk().fileNames().projectFolder;
    }
};

// --- how it begins -------------------------------------------------------------------------------

TEST_F(DeskModes, BeginInGlobalModeWithAFileAlone)
{
    start(Levels::global);
    EXPECT_EQ(desk().mode(), kGlobal);
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat=2 (String)\n");
    EXPECT_EQ(title(), "Korvane CfgDesk - ~/cfg/tool.ini");
}

TEST_F(DeskModes, BeginInProjectModeWithAProject)
{
    start(Levels::project);
    EXPECT_EQ(desk().mode(), kProject);
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n1 Maat=p (String)\n");
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n  -Extra\n");
    EXPECT_EQ(title(), "Korvane CfgDesk - Project Mode(~/house/tool.ipr)");
}

TEST_F(DeskModes, BeginInLocalModeWithADrawing)
{
    start(Levels::local);
    EXPECT_EQ(desk().mode(), kLocal);
    EXPECT_EQ(rows(), "2 Kop=d (String)\n0 Maat=2 (String)\n");
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n  -Eigen\n");
    EXPECT_EQ(title(), "Korvane CfgDesk - Local Mode(house.dxf)");
}

TEST_F(DeskModes, BeginWithAllLevelsWhereTheProjectStandsBesideTheDrawing)
{
    start(Levels::localProject);
    EXPECT_EQ(desk().mode(), kLocalProject);
    EXPECT_EQ(rows(), "2 Kop=d (String)\n1 Maat=p (String)\n");
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n  -Extra\n  -Eigen\n");
    EXPECT_EQ(title(), "Korvane CfgDesk - Local Mode(house.dxf)");
}

TEST_F(DeskModes, AreToldInTheLanguageOfTheStart)
{
    makeDrawing();
    const std::string prefix = "Korvane CfgDesk - ";
    open(Levels::local, 19);
    EXPECT_EQ(title(), prefix + "Lokale modus(house.dxf)");
    open(Levels::local, 12);
    EXPECT_EQ(title(), prefix + "Mode local(house.dxf)");
    open(Levels::local, 25);
    EXPECT_EQ(title(), prefix + "Локальный режим(house.dxf)");
    open(Levels::project, 19);
    EXPECT_EQ(title(), prefix + "Projectmodus(~/house/tool.ipr)");
    open(Levels::project, 12);
    EXPECT_EQ(title(), prefix + "Mode projet(~/house/tool.ipr)");
    open(Levels::project, 25);
    EXPECT_EQ(title(), prefix + "Режим проекта(~/house/tool.ipr)");
}

TEST_F(DeskModes, AreGlobalWithBothFlagsOfTheStart)
{
    makeDrawing();
    DeskStart start = onDrawing();
    start.startLocal = true;
    start.startProject = true;
    open(start);
    EXPECT_EQ(desk().mode(), kGlobal);
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n");
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat=2 (String)\n");
    EXPECT_EQ(title(), "Korvane CfgDesk - ~/cfg/tool.ini");
}

TEST_F(DeskModes, AreLocalWithoutTheProjectWithTheFlagForTheDrawing)
{
    makeDrawing();
    DeskStart start = onDrawing();
    start.startLocal = true;
    open(start);
    EXPECT_EQ(desk().mode(), kLocal);
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n") << "made before the drawing was loaded";
    EXPECT_EQ(rows(), "2 Kop=d (String)\n0 Maat=2 (String)\n");
    EXPECT_EQ(title(), "Korvane CfgDesk - Local Mode(house.dxf)");
    EXPECT_EQ(projectFolder(), "~/house/");
}

TEST_F(DeskModes, AreOfTheProjectWithoutTheDrawingWithTheFlagForTheProject)
{
    makeDrawing();
    DeskStart start = onDrawing();
    start.startProject = true;
    open(start);
    EXPECT_EQ(desk().mode(), kProject);
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n1 Maat=p (String)\n");
    EXPECT_EQ(title(), "Korvane CfgDesk - Project Mode(~/house/tool.ipr)");
}

TEST_F(DeskModes, AreGlobalInACleanStartWhateverProjectLiesThere)
{
    folder.write(L"cfg/tool.ipr", "Maat=p\n");
    DeskStart start = plain();
    start.startLocal = start.startProject = start.clean = true;
    open(start);
    EXPECT_TRUE(desk().isClean());
    EXPECT_EQ(desk().mode(), kGlobal);
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat=2 (String)\n");
}

// --- loading again -------------------------------------------------------------------------------

TEST_F(DeskModes, AreGlobalAfterGlobalSettingsFromAny)
{
    for (const Levels levels : {Levels::project, Levels::localProject, Levels::local}) {
        writeIpr("Maat=p\n");
        start(levels);
        selectItem(L"Tekst");
        view.takeCalls();
        desk().run(MenuCommand::globalSettings);
        EXPECT_EQ(desk().mode(), kGlobal);
        EXPECT_EQ(projectFolder(), "~/cfg/");
        EXPECT_EQ(title(), "Korvane CfgDesk - ~/cfg/tool.ini");
        EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat=2 (String)\n");
        EXPECT_FALSE(desk().isAvailable(MenuCommand::globalSettings));
        EXPECT_TRUE(view.takeCalls().ends_with("focus tree, list, focus list"));
    }
}

TEST_F(DeskModes, AReloadShowsTheHeadOfTheFile)
{
    start(Levels::localProject);
    selectItem(L"Tekst");
    desk().run(MenuCommand::globalSettings);
    EXPECT_EQ(tree(), "-General\n  -Tekst *\n");
    EXPECT_EQ(names(), "Kop Maat");
    selectItem(L"Tekst");
    EXPECT_EQ(names(), "Hoogte");
}

TEST_F(DeskModes, ShowLocalSettingsAfterGlobalSettingsWhateverTheFlag)
{
    start(Levels::local);
    desk().run(MenuCommand::showLocal);
    EXPECT_EQ(names(), "Maat");
    desk().run(MenuCommand::globalSettings);
    EXPECT_EQ(names(), "Kop Maat");
}

TEST_F(DeskModes, DropTheDrawingForProjectSettings)
{
    start(Levels::localProject);
    desk().run(MenuCommand::projectSettings);
    EXPECT_EQ(desk().mode(), kProject);
    EXPECT_EQ(projectFolder(), "~/house/");
    EXPECT_EQ(title(), "Korvane CfgDesk - Project Mode(~/house/tool.ipr)");
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n1 Maat=p (String)\n");
    EXPECT_FALSE(desk().isAvailable(MenuCommand::projectSettings));
    EXPECT_TRUE(desk().isAvailable(MenuCommand::makeProjectCopy));
}

TEST_F(DeskModes, CategoriesOfAProjectComeWithTheNextTree)
{
    start(Levels::localProject);
    desk().run(MenuCommand::projectSettings);
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n");
    desk().run(MenuCommand::sortCategories);
    EXPECT_EQ(tree(), "-General *\n  -Extra\n  -Tekst\n");
}

TEST_F(DeskModes, MakeTheProjectOfProjectSettings)
{
    makeDrawing();
    folder.remove(L"house/tool.ipr");
    DeskStart start = onDrawing();
    start.startProject = true;
    open(start);
    EXPECT_EQ(desk().mode(), kProject);
    EXPECT_TRUE(folder.has(L"house/tool.ipr"));
    EXPECT_EQ(ipr(), "");
    EXPECT_EQ(told(), "");
}

TEST_F(DeskModes, SeeWhatOthersWroteAfterAReload)
{
    start(Levels::localProject);
    writeIni("Nieuw=1\n[Later]\nL=1\n");
    desk().run(MenuCommand::globalSettings);
    EXPECT_EQ(names(), "Nieuw");
    EXPECT_EQ(tree(), "-General *\n  -Later\n");
}

// --- levels that are shown -----------------------------------------------------------------------

TEST_F(DeskModes, HideAndShowTheSettingsOfALevel)
{
    start(Levels::localProject);
    desk().run(MenuCommand::showGlobal);
    EXPECT_FALSE(desk().isTicked(MenuCommand::showGlobal));
    EXPECT_EQ(names(), "Kop Maat");
    desk().run(MenuCommand::showLocal);
    EXPECT_EQ(names(), "Maat");
    desk().run(MenuCommand::showProject);
    EXPECT_EQ(names(), "");
    desk().run(MenuCommand::showLocal);
    EXPECT_EQ(names(), "Kop");
    EXPECT_TRUE(desk().isTicked(MenuCommand::showLocal));
    EXPECT_FALSE(desk().isTicked(MenuCommand::showProject));
    selectItem(L"Tekst");
    EXPECT_EQ(names(), "");
    view.takeCalls();
    desk().run(MenuCommand::showGlobal);
    EXPECT_EQ(view.takeCalls(), "list, focus list");
    EXPECT_EQ(names(), "Hoogte");
}

TEST_F(DeskModes, TicksOutliveAReload)
{
    start(Levels::localProject);
    desk().run(MenuCommand::showGlobal);
    desk().run(MenuCommand::globalSettings);
    EXPECT_FALSE(desk().isTicked(MenuCommand::showGlobal));
    EXPECT_TRUE(desk().model().shown.global);
    EXPECT_EQ(names(), "Kop Maat");
    desk().run(MenuCommand::showGlobal);
    EXPECT_TRUE(desk().isTicked(MenuCommand::showGlobal));
    EXPECT_TRUE(desk().model().shown.global);
    EXPECT_EQ(names(), "Kop Maat");
}

// --- projects ------------------------------------------------------------------------------------

TEST_F(DeskModes, AskForANewProjectUnderTheNameThatBelongsToTheFile)
{
    start(Levels::project);
    desk().run(MenuCommand::newProject);
    ASSERT_EQ(view.projectQuestions.size(), 1U);
    EXPECT_TRUE(view.projectQuestions[0].isNew);
    EXPECT_EQ(view.projectQuestions[0].initialName, folder.path(L"house/tool.ipr"));
    EXPECT_EQ(view.projectQuestions[0].filter, L"project files (tool.ipr)|tool.ipr||");
    EXPECT_EQ(view.takeCalls(), "ask project") << "cancelled";
    EXPECT_EQ(desk().mode(), kProject);
}

TEST_F(DeskModes, AskForAnExistingProjectByItsNameAlone)
{
    start(Levels::global);
    desk().run(MenuCommand::openProject);
    ASSERT_EQ(view.projectQuestions.size(), 1U);
    EXPECT_FALSE(view.projectQuestions[0].isNew);
    EXPECT_EQ(view.projectQuestions[0].initialName, L"tool.ipr");
    EXPECT_EQ(view.projectQuestions[0].filter, L"project files (tool.ipr)|tool.ipr||");
    EXPECT_EQ(desk().mode(), kGlobal);
}

TEST_F(DeskModes, AreOfTheProjectThatWasOpened)
{
    for (const Levels levels :
         {Levels::global, Levels::project, Levels::localProject, Levels::local}) {
        writeIpr("Maat=p\n");
        start(levels);
        folder.write(L"other/tool.ipr", "Maat=o\n[Ander]\nA=1\n");
        selectItem(L"Tekst");
        view.takeCalls();
        choose(folder.path(L"other/tool.ipr"));
        EXPECT_TRUE(view.takeCalls().ends_with("focus tree"));
        EXPECT_EQ(desk().mode(), kProject);
        EXPECT_EQ(projectFolder(), "~/other/");
        EXPECT_EQ(title(), "Korvane CfgDesk - Project Mode(~/other/tool.ipr)");
        EXPECT_EQ(tree(), "-General\n  -Tekst *\n  -Ander\n");
        EXPECT_EQ(names(), "Hoogte");
        selectItem(L"General");
        EXPECT_EQ(rows(), "0 Kop=1 (String)\n1 Maat=o (String)\n");
        EXPECT_EQ(toUtf8(corma::platform::currentFolder()), toUtf8(folder.path(L"other")));
        EXPECT_TRUE(desk().isAvailable(MenuCommand::makeProjectCopy));
    }
}

TEST_F(DeskModes, KeepWhatTheModelHasWhenAProjectIsOpenedInGlobalMode)
{
    start(Levels::global);
    writeIni("Anders=1\n");
    writeIpr("Maat=p\n");
    choose(folder.path(L"house/tool.ipr"));
    EXPECT_EQ(names(), "Kop Maat") << "the model was not built again";
    choose(folder.path(L"house/tool.ipr"));
    EXPECT_EQ(names(), "Anders Maat");
}

TEST_F(DeskModes, MakeANewProjectEmpty)
{
    start(Levels::global);
    folder.makeFolder(L"new");
    choose(folder.path(L"new/tool.ipr"), MenuCommand::newProject);
    EXPECT_TRUE(folder.has(L"new/tool.ipr"));
    EXPECT_EQ(folder.read(L"new/tool.ipr"), "");
    EXPECT_EQ(desk().mode(), kProject);
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat=2 (String)\n");
    EXPECT_EQ(told(), "");
}

TEST_F(DeskModes, AProjectOfAnotherNameIsReadOnce)
{
    start(Levels::global);
    folder.write(L"house/mine.ipr", "Maat=m\n");
    choose(folder.path(L"house/mine.ipr"));
    EXPECT_EQ(title(), "Korvane CfgDesk - Project Mode(~/house/tool.ipr)");
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n1 Maat=m (String)\n");
    select({L"Kop"});
    desk().run(MenuCommand::makeProjectCopy);
    EXPECT_EQ(folder.read(L"house/mine.ipr"), "Maat=m\n");
    EXPECT_EQ(ipr(), "Kop=1\n");
}

TEST_F(DeskModes, TellOfAProjectThatCannotBeRead)
{
    start(Levels::global);
    folder.makeFolder(L"other/tool.ipr");
    choose(folder.path(L"other/tool.ipr"));
    EXPECT_EQ(told(), "exclamation: Access to ~/other/tool.ipr was denied.\n");
    EXPECT_EQ(desk().mode(), kProject);
    EXPECT_EQ(title(), "Korvane CfgDesk - Project Mode(~/other/tool.ipr)");
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat=2 (String)\n");
}

TEST_F(DeskModes, DoNotTakeAProjectFromAFolderThatIsNotThere)
{
    start(Levels::global);
    choose(folder.path(L"nowhere/tool.ipr"));
    EXPECT_EQ(told(), "exclamation: ~/nowhere/tool.ipr was not found.\n");
    EXPECT_FALSE(folder.has(L"tool.ipr")) << "nor is one made in the current folder";
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat=2 (String)\n");
}

TEST_F(DeskModes, FindAFileNamedFromTheFormerFolderAgain)
{
    DeskStart start = plain();
    start.request.iniFile = L"cfg/tool.ini";
    open(start);
    EXPECT_EQ(toUtf8(desk().fileNames().globalFolder), "cfg/");
    choose(folder.path(L"house/tool.ipr"));
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n1 Maat=p (String)\n");
    desk().run(MenuCommand::globalSettings);
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n0 Maat=2 (String)\n");
    EXPECT_EQ(told(), "");
}

} // namespace
