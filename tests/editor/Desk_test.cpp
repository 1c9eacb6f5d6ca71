#include "editor/DeskTest.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/languages.h"

using corma::DeskStart;
using corma::MenuCommand;
using corma::MessageIcon;
using corma::ShownPicture;
using corma::toUtf8;
using corma::testing::kDutch;
using corma::testing::kFrench;
using corma::testing::kGerman;
using corma::testing::kRussian;
using corma::testing::written;

namespace {

class Desk : public corma::testing::DeskTest
{
protected:
    void SetUp() override
    {
        DeskTest::SetUp();
        writeIni("Kop=1\n[Tekst]\nHoogte=2\nNaam=abc\n[Lijn]\nKleur=3\n");
    }

    void writeInr(std::string_view text) const { folder.write(L"cfg/tool.inr", text); }

    void writeInd(std::string_view text) const { folder.write(L"cfg/LanEN/tool.ind", text); }
};

// --- start ---------------------------------------------------------------------------------------

TEST_F(Desk, ShowsTheTreeBeforeTheListAndFitsTheNamesLast)
{
    corma::Desk made(plain(), preferences);
    view.setDesk(made);
    made.open(view);
    const std::string calls = view.takeCalls();
    EXPECT_TRUE(calls.starts_with("tree, ")) << calls;
    EXPECT_TRUE(calls.ends_with("list, focus list, fit")) << calls;
    EXPECT_EQ(services.boxes.size(), 0U);
}

TEST_F(Desk, BeginsWithTheListOfTheHead)
{
    open(plain());
    EXPECT_EQ(tree(), "-General *\n  -Tekst\n  -Lijn\n");
    EXPECT_EQ(rows(), "0 Kop=1 (String)\n");
    EXPECT_EQ(desk().mark(), 0);
    EXPECT_EQ(desk().searchText(), L"");
    EXPECT_EQ(desk().searchButton(), L"Search");
    EXPECT_EQ(desk().selectedSetting(), nullptr);
    EXPECT_FALSE(desk().isClean());
    for (const MenuCommand level :
         {MenuCommand::showGlobal, MenuCommand::showProject, MenuCommand::showLocal}) {
        EXPECT_TRUE(desk().isTicked(level));
    }
    EXPECT_FALSE(desk().isTicked(MenuCommand::sortCategories));
    EXPECT_FALSE(desk().isTicked(MenuCommand::exit));
}

TEST_F(Desk, GivesItsChildrenTheirFixedTexts)
{
    const corma::FixedTexts& texts = open(plain()).texts();
    EXPECT_EQ(texts.newOne, L"New");
    EXPECT_EQ(texts.search, L"Search");
    EXPECT_EQ(texts.stopSearch, L"Stop Search");
    EXPECT_EQ(texts.saveGlobally, L"Save Globally");
    EXPECT_EQ(texts.saveInProject, L"Save in Project");
    EXPECT_EQ(texts.global, L"Global");
    EXPECT_EQ(texts.project, L"Project");
    EXPECT_EQ(texts.type, L"Type");
    EXPECT_EQ(texts.newValue, L"New Value:");
    EXPECT_EQ(texts.specifyName, L"Specify name:");
    EXPECT_EQ(texts.copyOf, L"Copy of:");
    EXPECT_EQ(texts.cancel, L"Cancel");
    EXPECT_EQ(texts.browse, L"Browse...");
    EXPECT_EQ(texts.help, L"Help");
}

TEST_F(Desk, IsEmptyForAFileThatIsNotThere)
{
    folder.remove(L"cfg/tool.ini");
    open(plain());
    EXPECT_EQ(told(), "exclamation: ~/cfg/tool.ini was not found.\n");
    EXPECT_EQ(tree(), "-General *\n");
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(desk().selectedCategory(), nullptr);
    desk().clickList();
    desk().activateList();
    desk().search();
    desk().newSetting();
    desk().removeSettings();
    desk().run(MenuCommand::makeProjectCopy);
    EXPECT_EQ(rows(), "");
}

TEST_F(Desk, KeepsTheDefaultPictureTo511Characters)
{
    DeskStart start = plain();
    start.defaultBitmap = std::wstring(600, L'b');
    EXPECT_EQ(open(start).defaultBitmap(), std::wstring(511, L'b'));
}

// --- tree ----------------------------------------------------------------------------------------

struct RootRow
{
    int language;
    const char* root;
};

TEST_F(Desk, CallsTheRootByAWordOfTheLanguage)
{
    for (const RootRow& row : {RootRow {corma::kEnglish, "General"}, RootRow {kGerman, "General"},
                               RootRow {kDutch, "Algemeen"}, RootRow {kFrench, "Général"},
                               RootRow {kRussian, "Общие"}}) {
        open(plain(row.language));
        EXPECT_EQ(tree(), std::string("-") + row.root + " *\n  -Tekst\n  -Lijn\n");
        EXPECT_EQ(names(), "Kop");
        EXPECT_EQ(desk().selectedCategory()->name(), L"Algemeen");
    }
}

TEST_F(Desk, CannotTellACategoryThatIsCalledLikeTheRootFromIt)
{
    writeIni("Kop=1\n[General]\nEigen=2\n[Tekst]\nHoogte=3\n");
    open(plain());
    EXPECT_EQ(tree(), "-General *\n  -General\n  -Tekst\n");
    desk().selectTreeItem(*desk().tree().first()->children.front());
    EXPECT_EQ(tree(), "-General\n  -General *\n  -Tekst\n");
    EXPECT_EQ(names(), "Kop");
    view.newName = corma::NewName {.name = L"Maat"};
    desk().newSetting();
    EXPECT_EQ(ini(), "Kop=1\nMaat=\n[General]\nEigen=2\n[Tekst]\nHoogte=3\n");
    desk().selectTreeItem(*desk().tree().first());
    desk().run(MenuCommand::sortCategories);
    EXPECT_EQ(tree(), "-General\n  -General *\n  -Tekst\n") << "selected again by its text";
}

TEST_F(Desk, ShowsACategoryWhenItIsSelected)
{
    writeInd("[Tekst]=Over tekst\n");
    open(plain());
    selectItem(L"Tekst");
    EXPECT_EQ(view.takeCalls(), "list, focus list, fit, focus tree");
    EXPECT_EQ(tree(), "-General\n  -Tekst *\n  -Lijn\n");
    EXPECT_EQ(names(), "Hoogte Naam");
    EXPECT_EQ(description(), "Over tekst");
    selectItem(L"General");
    EXPECT_EQ(names(), "Kop");
    EXPECT_EQ(description(), "General settings");
}

TEST_F(Desk, LeavesTheListAloneForAClickInTheTree)
{
    open(plain());
    selectItem(L"Tekst");
    select({L"Naam"});
    view.takeCalls();
    const std::string before = description();
    desk().clickTreeItem();
    EXPECT_EQ(view.takeCalls(), "fit");
    EXPECT_EQ(description(), before);
    ASSERT_NE(desk().selectedSetting(), nullptr);
    EXPECT_EQ(desk().selectedSetting()->name(), L"Naam");
}

TEST_F(Desk, GoesOnToTheListFromWhatHasNothingToUnfold)
{
    folder.write(L"cfg/a.ini", "");
    writeIni("#INCLUDE=a.ini\n[Tekst]\nHoogte=2\n");
    open(plain());
    EXPECT_FALSE(desk().goesOnToList());
    selectItem(L"Tekst");
    EXPECT_TRUE(desk().goesOnToList());
    selectItem(L"a.ini");
    EXPECT_FALSE(desk().goesOnToList());
}

TEST_F(Desk, SortsCategoriesWhenTheUserWantedItBefore)
{
    preferences.sort = true;
    open(plain());
    EXPECT_EQ(tree(), "-General *\n  -Lijn\n  -Tekst\n");
    EXPECT_TRUE(desk().isTicked(MenuCommand::sortCategories));
    EXPECT_EQ(preferences.writes, 0);
}

TEST_F(Desk, StoresThatTheUserWantsCategoriesSorted)
{
    open(plain());
    selectItem(L"Tekst");
    desk().run(MenuCommand::sortCategories);
    EXPECT_EQ(tree(), "-General\n  -Lijn\n  -Tekst *\n");
    EXPECT_TRUE(preferences.sort);
    EXPECT_TRUE(desk().isTicked(MenuCommand::sortCategories));
    desk().run(MenuCommand::sortCategories);
    EXPECT_EQ(tree(), "-General\n  -Tekst *\n  -Lijn\n");
    EXPECT_FALSE(preferences.sort);
    EXPECT_EQ(preferences.writes, 2);
}

// --- included files ------------------------------------------------------------------------------

TEST_F(Desk, ShowsIncludedFilesAboveTheRootInTheirOrder)
{
    folder.write(L"cfg/sub/a.ini", "");
    folder.write(L"cfg/b.ini", "");
    writeIni("#INCLUDE=sub\\a.ini,b.ini\n[Tekst]\nHoogte=2\n");
    open(plain());
    EXPECT_EQ(tree(), "a.ini [100]\nb.ini [101]\n-General *\n  -Tekst\n");
}

TEST_F(Desk, LeavesOutAnIncludedFileThatRepeatsAndKeepsTheNumbers)
{
    folder.write(L"cfg/a.ini", "");
    folder.write(L"cfg/b.ini", "");
    writeIni("#INCLUDE=a.ini,a.ini,b.ini\n");
    open(plain());
    EXPECT_EQ(tree(), "a.ini [100]\nb.ini [102]\n-General *\n");
}

TEST_F(Desk, ShowsTheHeadForAnIncludedFile)
{
    folder.write(L"cfg/a.ini", "A=1\n");
    writeIni("#INCLUDE=a.ini\n[Tekst]\nHoogte=2\n");
    open(plain());
    selectItem(L"Tekst");
    selectItem(L"a.ini");
    EXPECT_EQ(names(), "#INCLUDE");
}

TEST_F(Desk, EditsAnIncludedFileInAnEditorOfItsOwn)
{
    folder.write(L"cfg/sub/a.ini", "");
    folder.write(L"cfg/b.ini", "");
    writeIni("#INCLUDE=b.ini,sub/a.ini\n[Tekst]\nHoogte=2\n");
    open(plain());
    selectItem(L"a.ini");
    view.takeCalls();
    desk().activateTreeItem();
    EXPECT_EQ(view.takeCalls(), "edit file") << "nothing is loaded again on return";
    ASSERT_EQ(view.editedFiles.size(), 1U);
    EXPECT_EQ(view.editedFiles[0], folder.path(L"cfg/sub/a.ini"));
}

TEST_F(Desk, EditsNoFileForACategoryNorForAFileThatWentAway)
{
    folder.write(L"cfg/a.ini", "");
    writeIni("#INCLUDE=a.ini\n[Tekst]\nHoogte=2\n");
    open(plain());
    desk().activateTreeItem();
    selectItem(L"Tekst");
    desk().activateTreeItem();
    selectItem(L"a.ini");
    writeIni("[Tekst]\nHoogte=2\n");
    desk().activateTreeItem();
    EXPECT_EQ(view.editedFiles.size(), 0U);
}

// --- list ----------------------------------------------------------------------------------------

TEST_F(Desk, ShowsValuesAsTheirTypesWantIt)
{
    writeIni("A=1\nB=0\nC=x\nD=5\nE=links\n");
    writeInr("A=t\nB=t\nC=t\nD=o\nE=c choices={links,rechts}\n");
    writeInd("A=Aan§of uit\n");
    open(plain());
    EXPECT_EQ(rows(),
              "0 A=Yes (Yes/No) Aan of uit\n0 B=No (Yes/No)\n0 C=Yes (Yes/No)\n"
              "7 D=5 (Obsolete)\n0 E=links (Option)\n");
}

TEST_F(Desk, ShowsTheColoursOfRows)
{
    writeInr("Kop=s rgb=255,128,1\n");
    open(plain());
    EXPECT_EQ(rows(), "0 Kop=1 (String) #0180ff\n");
    ASSERT_EQ(desk().rows().size(), 1U);
    EXPECT_EQ(desk().rows()[0].rgb, 0x0180FFU);
}

TEST_F(Desk, HidesSettingsFromALowerAccessLevel)
{
    writeInr("[Tekst]\nHoogte=s access=5,10\n");
    open(plain(), 4);
    selectItem(L"Tekst");
    EXPECT_EQ(names(), "Naam");
    open(plain(), 5);
    selectItem(L"Tekst");
    EXPECT_EQ(names(), "Hoogte Naam");
}

TEST_F(Desk, ShowsFromTheNextFillOnThatTheLevelMayNotEdit)
{
    writeInr("[Tekst]\nHoogte=i access=5,10\n");
    open(plain(), 5);
    selectItem(L"Tekst");
    EXPECT_EQ(rows(), "0 Hoogte=2 (Integer)\n0 Naam=abc (String)\n");
    selectItem(L"Tekst");
    EXPECT_EQ(rows(), "8 Hoogte=2 (Integer)\n0 Naam=abc (String)\n");
    open(plain(), 10);
    selectItem(L"Tekst");
    selectItem(L"Tekst");
    EXPECT_EQ(rows(), "0 Hoogte=2 (Integer)\n0 Naam=abc (String)\n");
}

TEST_F(Desk, KeepsTheMarkByItsRowAndWithinTheList)
{
    open(plain());
    selectItem(L"Tekst");
    desk().setMark(1);
    selectItem(L"Lijn");
    EXPECT_EQ(desk().mark(), 0) << "the last row";
    selectItem(L"Tekst");
    desk().setMark(1);
    desk().search();
    EXPECT_EQ(desk().mark(), 1);
    desk().moveInTree();
    EXPECT_EQ(desk().mark(), 0);
    desk().setMark(-1);
    desk().search();
    EXPECT_EQ(desk().mark(), 0);
}

TEST_F(Desk, HasNoMarkInAnEmptyListAndTheFirstRowAfterwards)
{
    open(plain());
    desk().setSearchText(L"zz");
    desk().search();
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(desk().mark(), -1);
    desk().search();
    EXPECT_EQ(desk().mark(), 0);
}

// --- description ---------------------------------------------------------------------------------

TEST_F(Desk, ShowsAllLinesForAClickAndOneForTheKeys)
{
    writeInd("[Tekst]=Over tekst\nHoogte=Een§twee§drie\n");
    open(plain());
    selectItem(L"Tekst");
    select({L"Hoogte"});
    EXPECT_EQ(description(), "Over tekst: Een twee drie");
    desk().clickList();
    EXPECT_EQ(description(), "Over tekst : Een\ntwee\ndrie");
}

TEST_F(Desk, ShowsTheRowThatChangedAndForAClickTheFirstSelectedOne)
{
    writeInd("[Tekst]=T\nHoogte=Hoog\nNaam=Naam zelf\n");
    open(plain());
    selectItem(L"Tekst");
    select({L"Hoogte", L"Naam"});
    EXPECT_EQ(description(), "T: Naam zelf");
    desk().clickList();
    EXPECT_EQ(description(), "T : Hoog");
}

TEST_F(Desk, ClearsTheDescriptionWithoutARow)
{
    open(plain());
    EXPECT_EQ(description(), "General settings");
    desk().selectRows({}, -1);
    EXPECT_EQ(description(), "");
    select({L"Kop"});
    EXPECT_EQ(description(), "General settings: ");
    desk().selectRows({}, 0);
    EXPECT_EQ(description(), "General settings: ") << "the row that changed is no longer selected";
    desk().clickList();
    EXPECT_EQ(description(), "");
}

struct ObsoleteRow
{
    int language;
    const char* text;
};

TEST_F(Desk, TellsThatASettingIsObsolete)
{
    writeInr("Kop=o\n");
    for (const ObsoleteRow& row :
         {ObsoleteRow {corma::kEnglish,
                       "This setting has been declared obsolete and will no longer be used in "
                       "future versions."},
          ObsoleteRow {kDutch,
                       "Deze instelling is vervallen verklaard en wordt in toekomstige versies "
                       "niet meer gebruikt."},
          ObsoleteRow {kFrench,
                       "Ce paramètre a été déclaré obsolète et ne sera plus utilisé dans les "
                       "versions futures."},
          ObsoleteRow {kRussian,
                       "Этот параметр объявлен устаревшим и не будет использоваться в будущих "
                       "версиях."}}) {
        open(plain(row.language));
        select({L"Kop"});
        EXPECT_EQ(description(), row.text);
        desk().selectRows({0}, -1);
        desk().clickList();
        EXPECT_EQ(description(), row.text);
        view.takeCalls();
        desk().activateList();
        EXPECT_EQ(view.takeCalls(), "");
        EXPECT_EQ(told(), std::string("stop: ") + row.text + "\n");
    }
}

TEST_F(Desk, ShowsADescriptionOfUpTo2047Characters)
{
    const std::string before = "General settings : ";
    for (const std::size_t length : {2046U, 2047U, 2048U, 5000U}) {
        writeInd("Kop=" + std::string(length - before.size(), 'x') + "\n");
        open(plain());
        select({L"Kop"});
        desk().clickList();
        const std::size_t shown = std::min<std::size_t>(length, 2047);
        EXPECT_EQ(description(), before + std::string(shown - before.size(), 'x'));
    }
}

TEST_F(Desk, IgnoresARowWhoseSettingIsOfAnotherCategory)
{
    open(plain());
    selectItem(L"Tekst");
    desk().run(MenuCommand::globalSettings);
    EXPECT_EQ(names(), "Kop") << "the head, while the tree has another category";
    const std::string before = description();
    select({L"Kop"});
    desk().clickList();
    EXPECT_EQ(description(), before);
    view.takeCalls();
    desk().activateList();
    EXPECT_EQ(view.takeCalls(), "");
}

// --- picture -------------------------------------------------------------------------------------

TEST_F(Desk, ShowsTheSmallFormOfTheDefaultPicture)
{
    for (const wchar_t* bitmap : {L"/pictures/x.y.bmp", L"\\pictures\\x.y.bmp"}) {
        DeskStart start = plain();
        start.defaultBitmap = bitmap;
        open(start);
        const ShownPicture small
            = {corma::platform::nativeSeparators(L"/pictures/S_x.y.bmp"), true};
        EXPECT_EQ(desk().picture(), small);
        select({L"Kop"});
        EXPECT_EQ(desk().picture(), small);
        desk().clickList();
        EXPECT_EQ(desk().picture(), small);
    }
}

TEST_F(Desk, ShowsNoPictureWhereThereIsNone)
{
    open(plain());
    EXPECT_EQ(desk().picture(), ShownPicture {});
    select({L"Kop"});
    desk().clickList();
    EXPECT_EQ(desk().picture(), ShownPicture {});
}

TEST_F(Desk, ShowsAPictureOfASettingAfterAMoveButNotAfterAClick)
{
    writeInr("[Tekst]\nHoogte=d bitmap=hoog.bmp\n");
    const std::wstring small = folder.path(L"cfg/S_hoog.bmp");
    open(plain());
    selectItem(L"Tekst");
    desk().selectRows({0}, -1);
    desk().clickList();
    EXPECT_EQ(desk().picture(), (ShownPicture {small, false}));
    select({L"Hoogte"});
    EXPECT_EQ(desk().picture(), (ShownPicture {small, true}));
    desk().clickList();
    EXPECT_EQ(desk().picture(), (ShownPicture {small, true}));
    select({L"Naam"});
    EXPECT_EQ(desk().picture(), ShownPicture {});
}

TEST_F(Desk, GoesBackToTheDefaultPictureWithTheTree)
{
    writeInr("Kop=s bitmap=kop.bmp\n");
    DeskStart start = plain();
    start.defaultBitmap = L"x.bmp";
    open(start);
    select({L"Kop"});
    EXPECT_EQ(desk().picture(), (ShownPicture {folder.path(L"cfg/S_kop.bmp"), true}));
    desk().clickTreeItem();
    EXPECT_EQ(desk().picture(), (ShownPicture {L"S_x.bmp", true}));
    select({L"Kop"});
    selectItem(L"Lijn");
    EXPECT_EQ(desk().picture(), (ShownPicture {L"S_x.bmp", true}));
}

// --- double clicks -------------------------------------------------------------------------------

TEST_F(Desk, EditsMostTypesInTheDialogForPlainValues)
{
    for (const char letter : {'s', 't', 'i', 'd', 'l', 'b', 'c', 'q'}) {
        writeInr(std::string("Kop=") + letter + "\n");
        open(plain());
        select({L"Kop"});
        view.edit = [&] {
            EXPECT_EQ(desk().selectedSetting()->name(), L"Kop");
            return true;
        };
        view.takeCalls();
        desk().activateList();
        EXPECT_EQ(view.takeCalls(), "edit, list, focus list") << letter;
        view.edit = nullptr;
        select({L"Kop"});
        desk().activateList();
        EXPECT_EQ(view.takeCalls(), "edit") << letter;
        EXPECT_EQ(boxes(), "");
    }
}

TEST_F(Desk, DoesNothingForATypeWhoseDialogTheProcessDoesNotHave)
{
    for (const char letter : {'k', 'v', 'x', 'h'}) {
        writeInr(std::string("Kop=") + letter + "\n");
        open(plain());
        const std::string before = rows();
        select({L"Kop"});
        view.takeCalls();
        desk().activateList();
        EXPECT_EQ(view.takeCalls(), "") << letter;
        EXPECT_EQ(rows(), before);
        EXPECT_EQ(boxes(), "");
        EXPECT_EQ(ini(), "Kop=1\n[Tekst]\nHoogte=2\nNaam=abc\n[Lijn]\nKleur=3\n");
    }
}

TEST_F(Desk, EditsNothingWithoutASelectedRow)
{
    open(plain());
    desk().activateList();
    EXPECT_EQ(view.takeCalls(), "");
    writeIni("[Tekst]\n");
    open(plain());
    desk().activateList();
    EXPECT_EQ(view.takeCalls(), "");
}

} // namespace
