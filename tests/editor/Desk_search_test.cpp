#include "editor/DeskTest.h"
#include "platform/text.h"

using corma::MenuCommand;
using corma::NewName;
using corma::toUtf8;

namespace {

class DeskSearch : public corma::testing::DeskTest
{
protected:
    void SetUp() override
    {
        DeskTest::SetUp();
        writeIni("Kop=1\n[Tekst]\nHoogte=2\nNaam=abc\nHoek=5\n[Lijn]\nHoogteLijn=3\nDikte=4\n");
        folder.write(L"cfg/LanEN/tool.ind", "[Tekst]=Over tekst\nNaam=Wat er STAAT\n[Lijn]=L\n");
        open(plain());
    }

    void search(const wchar_t* text)
    {
        desk().setSearchText(text);
        desk().search();
    }

    [[nodiscard]] std::string button() { return toUtf8(desk().searchButton()); }

    [[nodiscard]] std::string text() { return toUtf8(desk().searchText()); }
};

TEST_F(DeskSearch, DoesNothingBeforeTheButton)
{
    selectItem(L"Tekst");
    view.takeCalls();
    desk().setSearchText(L"hoogte");
    EXPECT_EQ(view.takeCalls(), "");
    EXPECT_EQ(names(), "Hoogte Naam Hoek");
    EXPECT_EQ(button(), "Search");
}

TEST_F(DeskSearch, FiltersTheSelectedCategoryByTheText)
{
    selectItem(L"Tekst");
    view.takeCalls();
    search(L"HOOG");
    EXPECT_EQ(view.takeCalls(), "list, focus list, fit");
    EXPECT_EQ(names(), "Hoogte");
    EXPECT_EQ(button(), "Stop Search");
    EXPECT_EQ(text(), "HOOG");
    EXPECT_EQ(description(), "Over tekst");
}

TEST_F(DeskSearch, EndsWithTheSecondPress)
{
    selectItem(L"Tekst");
    search(L"hoogte");
    select({L"Hoogte"});
    view.takeCalls();
    desk().search();
    EXPECT_EQ(view.takeCalls(), "list, focus list, fit");
    EXPECT_EQ(names(), "Hoogte Naam Hoek");
    EXPECT_EQ(button(), "Search");
    EXPECT_EQ(text(), "");
    EXPECT_EQ(description(), "Over tekst");
}

TEST_F(DeskSearch, LooksForEachSideOfTheLastPlus)
{
    selectItem(L"Tekst");
    search(L"staat+hoek");
    EXPECT_EQ(names(), "Naam Hoek");
    desk().search();
    search(L"hoek+");
    EXPECT_EQ(names(), "Hoogte Naam Hoek");
}

TEST_F(DeskSearch, KeepsFilterAndTextOverCategories)
{
    selectItem(L"Tekst");
    search(L"hoogte");
    select({L"Hoogte"});
    const std::string before = description();
    view.takeCalls();
    selectItem(L"Lijn");
    EXPECT_EQ(view.takeCalls(), "list, focus list, fit, focus tree");
    EXPECT_EQ(names(), "HoogteLijn");
    EXPECT_EQ(button(), "Stop Search");
    EXPECT_EQ(text(), "hoogte");
    EXPECT_EQ(description(), before) << "as the category's own is shown without a search only";
}

TEST_F(DeskSearch, ForgetsATextThatWasNotSearchedForWithTheNextCategory)
{
    desk().setSearchText(L"hoogte");
    selectItem(L"Lijn");
    EXPECT_EQ(text(), "");
    EXPECT_EQ(names(), "HoogteLijn Dikte");
    EXPECT_EQ(description(), "L");
}

TEST_F(DeskSearch, EndsWithTheFocusOnItsFieldAndKeepsTheText)
{
    selectItem(L"Tekst");
    search(L"hoogte");
    select({L"Hoogte"});
    view.takeCalls();
    desk().searchFocused();
    EXPECT_EQ(view.takeCalls(), "list, focus list, focus search");
    EXPECT_EQ(names(), "Hoogte Naam Hoek");
    EXPECT_EQ(button(), "Search");
    EXPECT_EQ(text(), "hoogte");
    EXPECT_EQ(description(), "Over tekst");
    search(L"hoek");
    EXPECT_EQ(names(), "Hoek");
    EXPECT_EQ(button(), "Stop Search");
}

TEST_F(DeskSearch, IsNotTouchedByTheFocusBeforeIt)
{
    selectItem(L"Tekst");
    select({L"Hoek"});
    desk().setSearchText(L"hoogte");
    const std::string before = description();
    view.takeCalls();
    desk().searchFocused();
    EXPECT_EQ(view.takeCalls(), "");
    EXPECT_EQ(names(), "Hoogte Naam Hoek");
    EXPECT_EQ(description(), before);
    EXPECT_EQ(text(), "hoogte");
    ASSERT_NE(desk().selectedSetting(), nullptr);
}

TEST_F(DeskSearch, StaysWithAnEmptyText)
{
    desk().search();
    EXPECT_EQ(names(), "Kop");
    EXPECT_EQ(button(), "Stop Search");
    desk().search();
    EXPECT_EQ(button(), "Search");
}

TEST_F(DeskSearch, StaysWhenALevelIsHiddenOrASettingIsMade)
{
    selectItem(L"Tekst");
    search(L"hoogte");
    desk().run(MenuCommand::showGlobal);
    EXPECT_EQ(names(), "");
    desk().run(MenuCommand::showGlobal);
    EXPECT_EQ(names(), "Hoogte");
    view.newName = NewName {.name = L"Anders"};
    desk().newSetting();
    EXPECT_EQ(names(), "Hoogte");
    view.newName = NewName {.name = L"Hoogte2"};
    desk().newSetting();
    EXPECT_EQ(names(), "Hoogte Hoogte2");
    EXPECT_EQ(button(), "Stop Search");
}

TEST_F(DeskSearch, StaysWhenTheModelIsLoadedAgain)
{
    search(L"kop");
    desk().run(MenuCommand::globalSettings);
    EXPECT_EQ(button(), "Stop Search");
    EXPECT_EQ(text(), "kop");
    EXPECT_EQ(names(), "Kop");
    search(L"");
    EXPECT_EQ(names(), "Kop");
}

TEST_F(DeskSearch, StaysWithTheRowsOfTheHeadThatFitWhenTheModelIsLoadedAgain)
{
    selectItem(L"Tekst");
    search(L"hoogte");
    desk().run(MenuCommand::globalSettings);
    EXPECT_EQ(names(), "") << "nothing in the head fits";
}

struct SearchButtonRow
{
    int language;
    const char* armed;
    const char* filtering;
};

TEST_F(DeskSearch, HasItsWordsOnTheButton)
{
    for (const SearchButtonRow& row : {SearchButtonRow {corma::kEnglish, "Search", "Stop Search"},
                                       SearchButtonRow {19, "Zoeken", "Zoeken stoppen"},
                                       SearchButtonRow {12, "Rechercher", "Arrêter la recherche"},
                                       SearchButtonRow {25, "Найти", "Остановить поиск"}}) {
        open(plain(row.language));
        EXPECT_EQ(button(), row.armed);
        desk().search();
        EXPECT_EQ(button(), row.filtering);
    }
}

} // namespace
