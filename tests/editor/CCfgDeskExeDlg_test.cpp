// The main dialog: what it shows, and how keys and clicks move about in it.

#include "controls/CColorListCtrl.h"
#include "controls/CPictureEx.h"
#include "editor/AboutCfgDeskDlg.h"
#include "editor/DeskDialogTest.h"
#include "editor/qt_text.h"
#include "platform/text.h"
#include "support/languages.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>

#include <gmock/gmock.h>
#include <set>

using corma::MessageAnswer;
using corma::testing::DeskDialogTest;
using corma::testing::kDutch;
using corma::testing::kFrench;
using corma::testing::kGerman;
using corma::testing::kRussian;
using corma::testing::utf8;
using ::testing::ElementsAre;

namespace {

class CCfgDeskExeDlgTest : public DeskDialogTest
{
protected:
    void SetUp() override
    {
        DeskDialogTest::SetUp();
        writeIni("#INCLUDE=a.ini\nKop=1\nMaat=2\n[Tekst]\nHoogte=3\nNaam=abc\n[Lijn]\nKleur=4\n");
        folder.write(L"cfg/a.ini", "[Binnen]\nX=1\n");
    }

    void writeInr(std::string_view text) const { folder.write(L"cfg/tool.inr", text); }

    void writeInd(std::string_view text) const { folder.write(L"cfg/LanEN/tool.ind", text); }

    void writePicture(const wchar_t* path, const QSize& size) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        ASSERT_TRUE(image.save(QString::fromStdWString(folder.path(path)), "BMP"));
    }

    [[nodiscard]] QSize pictureSize() const { return at<CPictureEx>("picture").pictureSize(); }

    [[nodiscard]] bool isShown(const char* name) const { return at<QWidget>(name).isVisible(); }

    /// The menu as "title: entry, entry/title: ...", "|" for a line between two of them.
    [[nodiscard]] std::string menu() const
    {
        std::string text;
        for (const QAction* const title : at<QMenuBar>("menu").actions()) {
            text += (text.empty() ? "" : "/") + utf8(title->text()) + ": ";
            std::string between;
            for (const QAction* const item : title->menu()->actions()) {
                text += item->isSeparator() ? " |" : between + utf8(item->text());
                between = item->isSeparator() ? " " : ", ";
            }
        }
        return text;
    }

    [[nodiscard]] std::string headings() const
    {
        const QAbstractItemModel& model = *listView().model();
        std::string all;
        for (int column = 0; column < model.columnCount(); ++column) {
            all += (column == 0 ? "" : ", ")
                + utf8(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        }
        return all;
    }
};

// --- what it shows -------------------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgTest, OpensOnTheHeadOfTheFile)
{
    show();
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - ~/cfg/tool.ini");
    EXPECT_EQ(treeShown(), "a.ini\n-General *\n  Tekst\n  Lijn\n");
    EXPECT_EQ(listed(), "#INCLUDE=a.ini (String) \nKop=1 (String) \nMaat=2 (String) \n");
    EXPECT_EQ(headings(), "Name, Type, Value, Description");
    EXPECT_EQ(descriptionShown(), "General settings");
    EXPECT_EQ(searchShown(), "");
    EXPECT_EQ(textOfButton("newCategory"), "New...");
    EXPECT_EQ(textOfButton("newSetting"), "New...");
    EXPECT_EQ(textOfButton("searchButton"), "Search");
    EXPECT_EQ(textOfButton("help"), "Help");
    EXPECT_FALSE(isShown("picture"));
    EXPECT_EQ(focus(), "list");
    EXPECT_EQ(current(), "#INCLUDE");
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(asked(), "");
}

TEST_F(CCfgDeskExeDlgTest, TheColumnsHaveTheirWidthsAndTheNamesAreInSight)
{
    writeIni("EenBijzonderLangeNaamVoorEenInstelling=1\n[Tekst]\nH=1\n");
    show();
    const CColorListCtrl& list = listView();
    EXPECT_GT(list.columnWidth(0), 200);
    EXPECT_GE(list.columnWidth(1), 65);
    EXPECT_EQ(list.columnWidth(2), 200);
    EXPECT_EQ(list.columnWidth(3), 321);
    clickItem("Tekst");
    EXPECT_LT(list.columnWidth(0), 100) << "fits the names of each category";
}

TEST_F(CCfgDeskExeDlgTest, ShowsWhatTheAccessLevelAllows)
{
    writeInr("Kop=s access=3,3\n");
    show(plain(), 0);
    EXPECT_EQ(namesListed(), "#INCLUDE Maat");
    show(plain(), 3);
    EXPECT_EQ(namesListed(), "#INCLUDE Kop Maat");
}

struct DeskTextsRow
{
    const char* sentence;
    int language;
    std::string root;
    std::string headings;
    std::string buttons; // of the top row, from the left
    std::string menu;
};

void PrintTo(const DeskTextsRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class CCfgDeskExeDlgTexts : public CCfgDeskExeDlgTest,
                            public ::testing::WithParamInterface<DeskTextsRow>
{
};

TEST_P(CCfgDeskExeDlgTexts, AreThoseOfTheLanguage)
{
    const DeskTextsRow& row = GetParam();
    show(plain(row.language));
    EXPECT_EQ(treeShown(), "a.ini\n-" + row.root + " *\n  Tekst\n  Lijn\n");
    EXPECT_EQ(headings(), row.headings);
    EXPECT_EQ(textOfButton("newCategory") + ", " + textOfButton("searchButton") + ", "
                  + textOfButton("help") + ", " + textOfButton("newSetting"),
              row.buttons);
    EXPECT_EQ(menu(), row.menu);
    EXPECT_EQ(namesListed(), "#INCLUDE Kop Maat");
}

INSTANTIATE_TEST_SUITE_P(
    Editor, CCfgDeskExeDlgTexts,
    ::testing::Values(
        DeskTextsRow {"English", 9, "General", "Name, Type, Value, Description",
                      "New..., Search, Help, New...",
                      "&File: New Project..., Open Project..., Global Settings, Project Settings | "
                      "Make Project Copy, Make Local Copy | Exit/&View: Show Global, Show Project, "
                      "Show Local, Sort sections"},
        DeskTextsRow {"GermanIsTheEnglishOne", kGerman, "General", "Name, Type, Value, Description",
                      "New..., Search, Help, New...",
                      "&File: New Project..., Open Project..., Global Settings, Project Settings | "
                      "Make Project Copy, Make Local Copy | Exit/&View: Show Global, Show Project, "
                      "Show Local, Sort sections"},
        DeskTextsRow {"Dutch", kDutch, "Algemeen", "Naam, Type, Waarde, Beschrijving",
                      "Nieuw..., Zoeken, Help, Nieuw...",
                      "&Bestand: Nieuw Project..., Open Project..., Globale Instellingen, "
                      "Projectinstellingen | Maak Projectkopie, Maak Lokale Kopie | &Afsluiten/"
                      "&Beeld: Toon Globaal, Toon Project, Toon Lokaal, Sorteer rubrieken"},
        DeskTextsRow {"French", kFrench, "Général", "Nom, Type, Valeur, Description",
                      "Nouveau..., Rechercher, Aide, Nouveau...",
                      "&Fichier: Nouveau Projet..., Ouvrir Projet..., Configurations Globales, "
                      "Configurations du Projet | Copier Projet, Copie Locale | Sortie/L'&image: "
                      "Montrer Global, Montrer Projet, Montrer local, Tri du rubrique"},
        DeskTextsRow {"Russian", kRussian, "Общие", "Имя, Тип, Значение, Описание",
                      "Создать..., Найти, Справка, Создать...",
                      "&Файл: New Project..., Open Project..., Global Settings, Project Settings | "
                      "Make Project Copy, Make Local Copy | Exit/&Display: Show Global, "
                      "Show Project, Show Local, Sort sections"}),
    [](const auto& each) { return each.param.sentence; });

// Two titles of the Dutch menu have the same letter, which is theirs to share.
TEST_F(CCfgDeskExeDlgTest, NoButtonHasALetterOfTheMenuOrOfAnother)
{
    for (const int language : {7, 9, 10, 12, 19, 21, 25}) {
        show(plain(language));
        std::set<QString> titles;
        for (const QAction* const title : at<QMenuBar>("menu").actions()) {
            titles.insert(QKeySequence::mnemonic(title->text()).toString());
        }
        for (const bool isSearching : {false, true}) {
            std::set<QString> letters = titles;
            for (const char* name : {"newCategory", "searchButton", "help", "newSetting"}) {
                const QKeySequence letter = QKeySequence::mnemonic(at<QPushButton>(name).text());
                EXPECT_FALSE(letter.isEmpty()) << language << " " << name;
                EXPECT_TRUE(letters.insert(letter.toString()).second)
                    << language << " " << name << " " << isSearching << " "
                    << utf8(letter.toString());
            }
            press(Qt::Key_Return);
        }
    }
}

TEST_F(CCfgDeskExeDlgTest, WithoutMenuAndButtonsTheKeysStillWork)
{
    corma::DeskStart start = plain();
    start.clean = start.startLocal = start.startProject = true;
    show(start);
    EXPECT_EQ(dialog->findChild<QMenuBar*>(), nullptr);
    for (const char* name : {"newCategory", "newSetting", "help"}) {
        EXPECT_FALSE(isShown(name)) << name;
    }
    EXPECT_TRUE(isShown("searchButton"));
    EXPECT_EQ(textOfButton("searchButton"), "Search");
    clickRow("Kop");
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), "Are you sure you want to remove this setting?\n");
    EXPECT_EQ(namesListed(), "#INCLUDE Maat");
    answer<QDialog>([] { press(Qt::Key_Insert); },
                    [](QDialog& asked) {
                        EXPECT_EQ(utf8(asked.objectName()), "NieuwDlg");
                        type("Breedte");
                        press(Qt::Key_Return);
                    });
    EXPECT_EQ(namesListed(), "#INCLUDE Maat Breedte");
    clickItem("Lijn");
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(),
              "Are you sure you want to remove this category?\nRubriek succesvol verwijderd.\n");
    EXPECT_EQ(treeShown(), "a.ini *\n-General\n  Tekst\n");
    answer<QDialog>([] { press(Qt::Key_Insert); },
                    [](QDialog& /*asked*/) {
                        type("Deur");
                        press(Qt::Key_Return);
                    });
    EXPECT_EQ(treeShown(), "a.ini\n-General *\n  Tekst\n  Deur\n");
}

// --- closing -------------------------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgTest, EnterSearchesWhereverItIsPressedAndNeverCloses)
{
    for (const char* name : {"searchText", "tree", "list", "description", "newCategory",
                             "newSetting", "searchButton", "help"}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            show();
            focusOn(name);
            press(key, key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
            EXPECT_EQ(textOfButton("searchButton"), "Stop Search") << name;
            EXPECT_TRUE(dialog->isVisible()) << name;
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << name;
            EXPECT_TRUE(services.helpFiles.empty()) << name;
        }
    }
}

TEST_F(CCfgDeskExeDlgTest, EscapeClosesItFromEverywhere)
{
    for (const char* name : {"searchText", "tree", "list", "description", "newCategory", "help"}) {
        show();
        focusOn(name);
        press(Qt::Key_Escape);
        EXPECT_FALSE(dialog->isVisible()) << name;
        EXPECT_EQ(dialog->result(), 0) << name;
    }
    EXPECT_EQ(asked(), "");
}

TEST_F(CCfgDeskExeDlgTest, ExitEndsItWithNothing)
{
    show();
    QSignalSpy finished(dialog.get(), &QDialog::finished);
    choose("Exit");
    EXPECT_FALSE(dialog->isVisible());
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].toInt(), 0);
}

// --- keys ----------------------------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgTest, UpAndDownGoThroughTheTree)
{
    show();
    focusOn("tree");
    press(Qt::Key_Down);
    EXPECT_EQ(treeShown(), "a.ini\n-General\n  Tekst *\n  Lijn\n");
    EXPECT_EQ(namesListed(), "Hoogte Naam");
    EXPECT_EQ(focus(), "tree");
    press(Qt::Key_Down);
    EXPECT_EQ(namesListed(), "Kleur");
    press(Qt::Key_Up);
    EXPECT_EQ(namesListed(), "Hoogte Naam");
    press(Qt::Key_Home);
    EXPECT_EQ(treeShown(), "a.ini *\n-General\n  Tekst\n  Lijn\n");
    EXPECT_EQ(namesListed(), "#INCLUDE Kop Maat");
}

TEST_F(CCfgDeskExeDlgTest, UpAndDownInTheTreeMarkTheFirstRow)
{
    show();
    clickItem("Tekst");
    clickRow("Naam");
    EXPECT_EQ(current(), "Naam");
    focusOn("tree");
    press(Qt::Key_Up);
    EXPECT_EQ(current(), "#INCLUDE");
    clickRow("Maat");
    clickItem("Tekst");
    EXPECT_EQ(current(), "Naam") << "a click keeps the mark, as far as there are rows";
}

TEST_F(CCfgDeskExeDlgTest, RightGoesOnToTheListAndLeftBackToTheTree)
{
    show();
    clickItem("Tekst");
    EXPECT_EQ(focus(), "tree");
    press(Qt::Key_Right);
    EXPECT_EQ(focus(), "list");
    EXPECT_EQ(current(), "Hoogte");
    press(Qt::Key_Left);
    EXPECT_EQ(focus(), "tree");
    EXPECT_EQ(treeShown(), "a.ini\n-General\n  Tekst *\n  Lijn\n");
    clickItem("a.ini");
    press(Qt::Key_Right);
    EXPECT_EQ(focus(), "tree") << "an included file is not unfolded";
    clickItem("General");
    press(Qt::Key_Right);
    EXPECT_EQ(focus(), "tree") << "the root has categories below it";
}

TEST_F(CCfgDeskExeDlgTest, TheArrowsSelectRows)
{
    show();
    EXPECT_EQ(focus(), "list");
    press(Qt::Key_Down);
    EXPECT_EQ(selected(), "Kop");
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "Kop Maat");
    press(Qt::Key_Up);
    EXPECT_EQ(selected(), "Kop");
    EXPECT_EQ(current(), "Kop");
}

TEST_F(CCfgDeskExeDlgTest, TheMarkKeepsItsPlaceWhenTheListIsFilledAgain)
{
    show();
    clickRow("Kop");
    focusOn("searchText");
    press(Qt::Key_Return);
    EXPECT_EQ(focus(), "list");
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(current(), "Kop");
    clickRow("Maat");
    press(Qt::Key_Delete);
    EXPECT_EQ(namesListed(), "#INCLUDE Kop");
    EXPECT_EQ(current(), "Kop") << "the last row there is";
}

TEST_F(CCfgDeskExeDlgTest, TabGoesAsOneReads)
{
    show();
    focusOn("newCategory");
    std::vector<std::string> names;
    do {
        names.push_back(focus());
        press(Qt::Key_Tab);
    } while (focus() != names.front() && names.size() < 20);
    EXPECT_THAT(names,
                ElementsAre("newCategory", "searchText", "searchButton", "help", "newSetting",
                            "tree", "list", "description", "windowMenu"));
}

TEST_F(CCfgDeskExeDlgTest, WhateverTakesTheFocusHasANameThatCanBeReadAloud)
{
    for (const int language : {9, kDutch}) {
        show(plain(language));
        int count = 0;
        for (QWidget* const widget : dialog->findChildren<QWidget*>()) {
            if (widget->focusPolicy() == Qt::NoFocus || widget->window() != dialog.get()) {
                continue;
            }
            QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(read, nullptr) << utf8(widget->objectName());
            EXPECT_NE(utf8(read->text(QAccessible::Name)), "") << utf8(widget->objectName());
            ++count;
        }
        EXPECT_GE(count, 9);
        EXPECT_EQ(utf8(at<QWidget>("tree").accessibleName()),
                  language == 9 ? "Categories" : "Rubrieken");
        EXPECT_NE(at<QPushButton>("newCategory").accessibleName(),
                  at<QPushButton>("newSetting").accessibleName())
            << "the text of both is the same";
    }
}

TEST_F(CCfgDeskExeDlgTest, AnEntryOfTheMenuIsChosenWithKeys)
{
    show();
    press(Qt::Key_V, Qt::AltModifier);
    auto* const popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popup, nullptr);
    QTest::keyClick(popup, Qt::Key_End);
    QTest::keyClick(popup, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(treeShown(), "a.ini\n-General *\n  Lijn\n  Tekst\n");
    EXPECT_EQ(textOfButton("searchButton"), "Search");
}

TEST_F(CCfgDeskExeDlgTest, AboutIsReachedFromTheIconOfTheProgramAndByAKey)
{
    show();
    const auto look = [](AboutCfgDeskDlg& box) {
        EXPECT_EQ(utf8(box.windowTitle()), "About CfgDeskExe");
        QTest::keyClick(&box, Qt::Key_Escape);
    };
    answer<AboutCfgDeskDlg>([] { press(Qt::Key_F1, Qt::ShiftModifier); }, look);
    const QList<QAction*> entries = at<QToolButton>("windowMenu").actions();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(utf8(entries[0]->text()), "&About CfgDeskExe...");
    answer<AboutCfgDeskDlg>([&] { entries[0]->trigger(); }, look);
}

TEST_F(CCfgDeskExeDlgTest, HelpIsShown)
{
    show();
    click("help");
    focusOn("list");
    press(Qt::Key_F1);
    ASSERT_EQ(services.helpFiles.size(), 2U);
    EXPECT_EQ(services.helpFiles[0], services.helpFiles[1]);
}

// --- search --------------------------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgTest, NothingIsSoughtBeforeEnter)
{
    show();
    click("searchText");
    type("KO");
    EXPECT_EQ(namesListed(), "#INCLUDE Kop Maat");
    press(Qt::Key_Return);
    EXPECT_EQ(namesListed(), "Kop");
    EXPECT_EQ(searchShown(), "KO");
    EXPECT_EQ(textOfButton("searchButton"), "Stop Search");
    EXPECT_EQ(focus(), "list");
    press(Qt::Key_Return);
    EXPECT_EQ(namesListed(), "#INCLUDE Kop Maat");
    EXPECT_EQ(searchShown(), "");
    EXPECT_EQ(textOfButton("searchButton"), "Search");
    EXPECT_EQ(descriptionShown(), "General settings");
}

TEST_F(CCfgDeskExeDlgTest, TheButtonSearchesAndStops)
{
    show();
    focusOn("searchText");
    type("maa");
    click("searchButton");
    EXPECT_EQ(namesListed(), "Maat");
    click("searchButton");
    EXPECT_EQ(namesListed(), "#INCLUDE Kop Maat");
    EXPECT_EQ(searchShown(), "");
}

TEST_F(CCfgDeskExeDlgTest, AnotherCategoryKeepsTheFilter)
{
    show();
    focusOn("searchText");
    type("aa");
    press(Qt::Key_Return);
    clickItem("Tekst");
    EXPECT_EQ(namesListed(), "Naam");
    EXPECT_EQ(searchShown(), "aa");
    EXPECT_EQ(textOfButton("searchButton"), "Stop Search");
}

TEST_F(CCfgDeskExeDlgTest, AnotherCategoryClearsATextThatWasNotSought)
{
    writeInd("[Tekst]=Over tekst\n");
    show();
    focusOn("searchText");
    type("aa");
    clickItem("Tekst");
    EXPECT_EQ(namesListed(), "Hoogte Naam");
    EXPECT_EQ(searchShown(), "");
    EXPECT_EQ(descriptionShown(), "Over tekst");
}

TEST_F(CCfgDeskExeDlgTest, TheFocusOnTheFieldBeginsANewSearchFromTheOldText)
{
    for (const bool byMouse : {true, false}) {
        show();
        focusOn("searchText");
        type("ko");
        press(Qt::Key_Return);
        ASSERT_EQ(namesListed(), "Kop");
        if (byMouse) {
            click("searchText");
        } else {
            focusOn("newCategory");
            press(Qt::Key_Tab);
        }
        EXPECT_EQ(namesListed(), "#INCLUDE Kop Maat");
        EXPECT_EQ(searchShown(), "ko");
        EXPECT_EQ(textOfButton("searchButton"), "Search");
        EXPECT_EQ(focus(), "searchText");
        press(Qt::Key_End);
        type("p");
        press(Qt::Key_Return);
        EXPECT_EQ(namesListed(), "Kop");
        EXPECT_EQ(searchShown(), "kop");
    }
}

TEST_F(CCfgDeskExeDlgTest, ANewWindowFocusLeavesTheFilterInForce)
{
    show();
    focusOn("searchText");
    type("ko");
    press(Qt::Key_Return);
    QFocusEvent event(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(&at<QLineEdit>("searchText"), &event);
    QCoreApplication::processEvents();
    EXPECT_EQ(namesListed(), "Kop");
    EXPECT_EQ(textOfButton("searchButton"), "Stop Search");
}

// --- description and picture ---------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgTest, AClickShowsAllLinesAndAKeyASingleOne)
{
    writeInd("[Tekst]=Over tekst\nHoogte=Een§twee§drie\nNaam=Zo heet het\n");
    show();
    clickItem("Tekst");
    EXPECT_EQ(descriptionShown(), "Over tekst");
    clickRow("Hoogte");
    EXPECT_EQ(descriptionShown(), "Over tekst : Een\ntwee\ndrie");
    press(Qt::Key_Down);
    EXPECT_EQ(descriptionShown(), "Over tekst: Zo heet het");
    press(Qt::Key_Up);
    EXPECT_EQ(descriptionShown(), "Over tekst: Een twee drie");
    clickRow("Hoogte");
    EXPECT_EQ(descriptionShown(), "Over tekst : Een\ntwee\ndrie");
}

TEST_F(CCfgDeskExeDlgTest, AClickBesideTheRowsClearsTheDescription)
{
    show();
    clickRow("Kop");
    ASSERT_EQ(descriptionShown(), "General settings : ");
    QTest::mouseClick(listView().viewport(), Qt::LeftButton, {},
                      QPoint(20, listView().viewport()->height() - 5));
    QCoreApplication::processEvents();
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(descriptionShown(), "");
}

TEST_F(CCfgDeskExeDlgTest, AnObsoleteSettingSaysSo)
{
    writeInr("Kop=o\n");
    show();
    const std::string text = "This setting has been declared obsolete and will no longer be used "
                             "in future versions.";
    press(Qt::Key_Down);
    EXPECT_EQ(descriptionShown(), text);
    doubleClickRow("Kop");
    EXPECT_EQ(asked(), text + "\n");
    EXPECT_EQ(services.icons.back(), corma::MessageIcon::stop);
}

TEST_F(CCfgDeskExeDlgTest, ThePictureOfASettingIsShownWhileItIsSelected)
{
    writeInr("Kop=s bitmap=kop.bmp\n");
    writePicture(L"cfg/S_kop.bmp", {40, 30});
    show();
    EXPECT_FALSE(isShown("picture"));
    clickRow("Kop");
    EXPECT_TRUE(isShown("picture"));
    EXPECT_EQ(pictureSize(), QSize(40, 30));
    press(Qt::Key_Down);
    EXPECT_FALSE(isShown("picture"));
    EXPECT_EQ(pictureSize(), QSize(0, 0));
    press(Qt::Key_Up);
    EXPECT_TRUE(isShown("picture"));
    clickItem("Tekst");
    EXPECT_FALSE(isShown("picture"));
}

TEST_F(CCfgDeskExeDlgTest, TheDefaultPictureStandsInForThoseWithoutOne)
{
    writeInr("Kop=s bitmap=kop.bmp\nMaat=s bitmap=gone.bmp\n");
    writePicture(L"cfg/S_kop.bmp", {40, 30});
    writePicture(L"house/S_all.bmp", {50, 20});
    corma::DeskStart start = plain();
    start.defaultBitmap = folder.path(L"house/all.bmp");
    show(start);
    EXPECT_TRUE(isShown("picture"));
    EXPECT_EQ(pictureSize(), QSize(50, 20));
    clickRow("Kop");
    EXPECT_EQ(pictureSize(), QSize(40, 30));
    clickRow("Maat");
    EXPECT_EQ(pictureSize(), QSize(0, 0)) << "a file that cannot be read shows nothing";
    clickRow("#INCLUDE");
    EXPECT_EQ(pictureSize(), QSize(50, 20));
    clickRow("Kop");
    clickItem("General");
    EXPECT_EQ(pictureSize(), QSize(50, 20)) << "also a click on the selected category";
}

} // namespace
