// The main dialog: values that are edited, levels, projects, new and removed things; each with the
// dialogs that come up for it.

#include "controls/CColorListCtrl.h"
#include "editor/DeskDialogTest.h"
#include "editor/EditDlg.h"
#include "editor/NieuwDlg.h"
#include "editor/qt_text.h"
#include "host/host.h"
#include "platform/text.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QMessageLogger>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <unistd.h>

using corma::MessageAnswer;
using corma::testing::CurrentFolder;
using corma::testing::DeskDialogTest;
using corma::testing::utf8;

namespace {

constexpr const char* kRemoveSetting = "Are you sure you want to remove this setting?\n";
constexpr const char* kRemoved = "Rubriek succesvol verwijderd.\n";
constexpr const char* kRemoveCategory = "Are you sure you want to remove this category?\n";

class CCfgDeskExeDlgCommands : public DeskDialogTest
{
protected:
    void SetUp() override
    {
        DeskDialogTest::SetUp();
        writeIni("Kop=1\nMaat=2\n[Tekst]\nHoogte=3\nNaam=abc\n[Lijn]\nKleur=4\n");
    }

    /// Double clicks a row and acts on the dialog that comes up.
    void edit(const char* name, const std::function<void(EditDlg&)>& reply) const
    {
        answer<EditDlg>([&] { doubleClickRow(name); }, reply);
    }

    /// Gives the setting of a row another value.
    void enter(const char* name, const char* value) const
    {
        edit(name, [&](EditDlg& asked) {
            EXPECT_EQ(utf8(asked.windowTitle()), std::string("Settings - ") + name);
            type(value);
            press(Qt::Key_Return);
        });
    }

    /// Presses a key that asks for a name, and types keys into the dialog that comes up.
    void pressForName(Qt::Key key, const std::function<void()>& keys) const
    {
        answer<NieuwDlg>([&] { press(key); }, [&](NieuwDlg& /*asked*/) { keys(); });
    }

    void newOne(const char* name) const
    {
        pressForName(Qt::Key_Insert, [&] {
            type(name);
            press(Qt::Key_Return);
        });
    }

    /// Chooses an entry that asks for a project, and answers with a file.
    void chooseProject(const char* what, const std::wstring& path) const
    {
        answer<QFileDialog>([&] { choose(what); },
                            [&](QFileDialog& asked) {
                                EXPECT_EQ(utf8(asked.objectName()), "projectFile");
                                enterFile(asked, path);
                            });
    }

    static void enterFile(QFileDialog& asked, const std::wstring& path)
    {
        auto* const name = asked.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(name, nullptr);
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, QString::fromStdWString(path));
        const bool isNew = asked.acceptMode() == QFileDialog::AcceptSave;
        QTest::mouseClick(asked.findChild<QDialogButtonBox*>()->button(
                              isNew ? QDialogButtonBox::Save : QDialogButtonBox::Open),
                          Qt::LeftButton);
    }

    /// The entries that can be chosen only in some modes, those that can be chosen now.
    [[nodiscard]] std::string available() const
    {
        std::string all;
        for (const char* text : {"Global Settings", "Project Settings", "Make Project Copy",
                                 "Make Local Copy", "Show Global", "Show Project", "Show Local"}) {
            if (entry(text).isEnabled()) {
                all += (all.empty() ? "" : ", ") + std::string(text);
            }
        }
        for (const char* text : {"New Project...", "Open Project...", "Exit", "Sort sections"}) {
            EXPECT_TRUE(entry(text).isEnabled()) << text;
        }
        return all;
    }

    /// The ticked entries.
    [[nodiscard]] std::string ticks() const
    {
        std::string all;
        for (const char* text : {"Show Global", "Show Project", "Show Local", "Sort sections"}) {
            EXPECT_TRUE(entry(text).isCheckable()) << text;
            if (entry(text).isChecked()) {
                all += (all.empty() ? "" : ", ") + std::string(text);
            }
        }
        EXPECT_FALSE(entry("Global Settings").isCheckable());
        return all;
    }

    /// What the drawing holds after it was saved and opened again. Ends the dialog.
    std::string savedAndOpened()
    {
        end();
        EXPECT_TRUE(corma::saveDocument());
        EXPECT_TRUE(corma::openDocument(folder.path(L"house/house.dxf").c_str()));
        return drawing();
    }

    const CurrentFolder processFolder {folder.path()};
};

// --- values --------------------------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgCommands, AValueOfTheFileIsEditedByADoubleClick)
{
    show();
    clickItem("Tekst");
    enter("Hoogte", "25");
    EXPECT_EQ(ini(), "Kop=1\nMaat=2\n[Tekst]\nHoogte=25\nNaam=abc\n[Lijn]\nKleur=4\n");
    EXPECT_EQ(listed(), "Hoogte=25 (String) \nNaam=abc (String) \n");
    EXPECT_EQ(current(), "Hoogte");
    EXPECT_EQ(asked(), "");
}

TEST_F(CCfgDeskExeDlgCommands, AValueIsEditedWithKeysAlone)
{
    show();
    press(Qt::Key_Down);
    answer<EditDlg>([] { press(Qt::Key_F2); },
                    [](EditDlg& /*asked*/) {
                        type("7");
                        press(Qt::Key_Return);
                    });
    EXPECT_EQ(listed(), "Kop=1 (String) \nMaat=7 (String) \n");
    EXPECT_EQ(focus(), "list");
    EXPECT_EQ(current(), "Maat");
    EXPECT_EQ(selected(), "");
    answer<EditDlg>([] { press(Qt::Key_F2); },
                    [](EditDlg& asked) {
                        EXPECT_EQ(utf8(asked.windowTitle()), "Settings - Maat")
                            << "the marked one, where none is selected";
                        press(Qt::Key_Escape);
                    });
    EXPECT_EQ(ini(), "Kop=1\nMaat=7\n[Tekst]\nHoogte=3\nNaam=abc\n[Lijn]\nKleur=4\n");
}

TEST_F(CCfgDeskExeDlgCommands, ACancelledEditChangesNothing)
{
    const std::string before = ini();
    show();
    edit("Kop", [](EditDlg& /*asked*/) {
        type("9");
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(ini(), before);
    EXPECT_EQ(listed(), "Kop=1 (String) \nMaat=2 (String) \n");
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(CCfgDeskExeDlgCommands, ALimitRefusesAValue)
{
    folder.write(L"cfg/tool.inr", "Kop=i max=10\n");
    show();
    edit("Kop", [this](EditDlg& shown) {
        type("11");
        press(Qt::Key_Return);
        EXPECT_TRUE(shown.isVisible());
        EXPECT_EQ(asked(),
                  "The maximum value : 10\n"
                  "This is not a correct value for a setting of type \n");
        EXPECT_NE(ini().find("Kop=1\n"), std::string::npos);
        type("10");
        press(Qt::Key_Return);
    });
    EXPECT_EQ(listed(), "Kop=10 (Integer) \nMaat=2 (String) \n");
}

TEST_F(CCfgDeskExeDlgCommands, ADoubleClickOnAnEmptyListDoesNothing)
{
    writeIni("[Tekst]\n");
    show();
    clickItem("Tekst");
    QTest::mouseClick(listView().viewport(), Qt::LeftButton, {}, QPoint(10, 10));
    QTest::mouseDClick(listView().viewport(), Qt::LeftButton, {}, QPoint(10, 10));
    press(Qt::Key_F2);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(listed(), "");
}

TEST_F(CCfgDeskExeDlgCommands, InADrawingAValueGoesIntoTheDrawing)
{
    const std::string before = ini();
    show(Levels::local);
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - Local Mode(house.dxf)");
    clickItem("Tekst");
    enter("Hoogte", "26");
    EXPECT_EQ(listed(), "Hoogte=26 (String) \nNaam=abc (String) \n");
    EXPECT_EQ(ini(), before);
    EXPECT_EQ(savedAndOpened(), "Tekst/\nTekst/Hoogte=26\n");
    show(Levels::local);
    clickItem("Tekst");
    EXPECT_EQ(listed(), "Hoogte=26 (String) \nNaam=abc (String) \n");
}

TEST_F(CCfgDeskExeDlgCommands, InAProjectAValueGoesIntoTheProject)
{
    const std::string before = ini();
    writeIpr("Kop=p\n");
    show(Levels::project);
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - Project Mode(~/house/tool.ipr)");
    enter("Maat", "q");
    EXPECT_EQ(listed(), "Kop=p (String) \nMaat=q (String) \n");
    EXPECT_EQ(ini(), before);
    EXPECT_EQ(ipr(), "Kop=p\nMaat=q\n");
}

TEST_F(CCfgDeskExeDlgCommands, NothingIsEditedInPlaceNorDragged)
{
    show();
    for (const QTreeView* const each : {&treeView(), static_cast<QTreeView*>(&listView())}) {
        EXPECT_EQ(each->editTriggers(), QAbstractItemView::NoEditTriggers);
        EXPECT_FALSE(each->dragEnabled());
        EXPECT_FALSE(each->acceptDrops());
    }
    const std::string before = listed();
    QTest::mouseClick(listView().header()->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    EXPECT_EQ(listed(), before) << "a click on a heading sorts nothing";
}

// --- modes ---------------------------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgCommands, EachModeOffersItsEntries)
{
    show(Levels::global);
    EXPECT_EQ(available(), "");
    EXPECT_EQ(ticks(), "Show Global, Show Project, Show Local");
    show(Levels::local);
    EXPECT_EQ(available(), "Global Settings, Make Local Copy, Show Global, Show Local");
    writeIpr("Kop=p\n");
    show(Levels::project);
    EXPECT_EQ(available(), "Global Settings, Make Project Copy, Show Global, Show Project");
    show(Levels::localProject);
    EXPECT_EQ(available(),
              "Global Settings, Project Settings, Make Local Copy, Show Global, Show Project, "
              "Show Local");
}

TEST_F(CCfgDeskExeDlgCommands, FromADrawingThroughTheProjectToTheFile)
{
    writeIpr("Maat=p\n");
    newDrawing();
    store(L"", L"Kop", L"d");
    show(Levels::localProject);
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - Local Mode(house.dxf)");
    EXPECT_EQ(listed(), "Kop=d (String) \nMaat=p (String) \n");
    clickItem("Tekst");
    choose("Project Settings");
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - Project Mode(~/house/tool.ipr)");
    EXPECT_EQ(listed(), "Kop=1 (String) \nMaat=p (String) \n") << "the head, whatever is selected";
    EXPECT_EQ(treeShown(), "-General\n  Tekst *\n  Lijn\n");
    EXPECT_EQ(available(), "Global Settings, Make Project Copy, Show Global, Show Project");
    choose("Global Settings");
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - ~/cfg/tool.ini");
    EXPECT_EQ(listed(), "Kop=1 (String) \nMaat=2 (String) \n");
    EXPECT_EQ(available(), "");
    EXPECT_EQ(asked(), "");
}

TEST_F(CCfgDeskExeDlgCommands, AProjectIsOpened)
{
    folder.write(L"other/tool.ipr", "Kop=o\n");
    show();
    chooseProject("Open Project...", folder.path(L"other/tool.ipr"));
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - Project Mode(~/other/tool.ipr)");
    EXPECT_EQ(listed(), "Kop=o (String) \nMaat=2 (String) \n");
    EXPECT_EQ(available(), "Global Settings, Make Project Copy, Show Global, Show Project");
    EXPECT_EQ(focus(), "tree");
    enter("Maat", "w");
    EXPECT_EQ(folder.read(L"other/tool.ipr"), "Kop=o\nMaat=w\n");
}

TEST_F(CCfgDeskExeDlgCommands, AProjectOfAnotherNameLeavesTheNameInTheTitle)
{
    folder.write(L"other/mine.ipr", "Kop=o\n");
    show();
    chooseProject("Open Project...", folder.path(L"other/mine.ipr"));
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - Project Mode(~/other/tool.ipr)");
    EXPECT_EQ(listed(), "Kop=o (String) \nMaat=2 (String) \n");
}

TEST_F(CCfgDeskExeDlgCommands, OpeningAProjectLeavesTheDrawing)
{
    folder.write(L"other/tool.ipr", "Maat=o\n");
    newDrawing();
    store(L"", L"Kop", L"d");
    show(Levels::local);
    EXPECT_EQ(listed(), "Kop=d (String) \nMaat=2 (String) \n");
    chooseProject("Open Project...", folder.path(L"other/tool.ipr"));
    EXPECT_EQ(listed(), "Kop=1 (String) \nMaat=o (String) \n");
    EXPECT_EQ(available(), "Global Settings, Make Project Copy, Show Global, Show Project");
}

TEST_F(CCfgDeskExeDlgCommands, AFileThatIsNotThereIsNotOpened)
{
    show();
    answer<QFileDialog>([this] { choose("Open Project..."); },
                        [this](QFileDialog& asked) {
                            EXPECT_EQ(asked.acceptMode(), QFileDialog::AcceptOpen);
                            EXPECT_EQ(asked.fileMode(), QFileDialog::ExistingFile);
                            QTimer::singleShot(0, &asked, [] {
                                auto* const box
                                    = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                                ASSERT_NE(box, nullptr);
                                box->accept();
                            });
                            enterFile(asked, folder.path(L"house/gone.ipr"));
                            EXPECT_TRUE(asked.isVisible());
                            QTest::keyClick(&asked, Qt::Key_Escape);
                        });
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - ~/cfg/tool.ini");
    EXPECT_EQ(available(), "");
}

TEST_F(CCfgDeskExeDlgCommands, ANewProjectBeginsWithTheNameThatBelongsToTheFile)
{
    show();
    answer<QFileDialog>(
        [this] { choose("New Project..."); },
        [this](QFileDialog& asked) {
            EXPECT_EQ(asked.acceptMode(), QFileDialog::AcceptSave);
            EXPECT_EQ(utf8(asked.nameFilters().join(u'|')), "project files (tool.ipr)");
            EXPECT_EQ(homely(utf8(asked.selectedFiles().join(u'|'))), "~/cfg/tool.ipr");
            EXPECT_EQ(utf8(asked.defaultSuffix()), "ipr");
            enterFile(asked, folder.path(L"house/tool.ipr"));
        });
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - Project Mode(~/house/tool.ipr)");
    EXPECT_EQ(listed(), "Kop=1 (String) \nMaat=2 (String) \n");
    enter("Kop", "n");
    EXPECT_EQ(ipr(), "Kop=n\n");
}

// What is told of as an overwrite is a project that is taken on.
TEST_F(CCfgDeskExeDlgCommands, ANewProjectInThePlaceOfAFileIsAskedFor)
{
    writeIpr("Kop=p\n");
    for (const auto reply : {QMessageBox::No, QMessageBox::Yes}) {
        show();
        bool isAsked = false;
        answer<QFileDialog>([this] { choose("New Project..."); },
                            [&](QFileDialog& asked) {
                                QTimer::singleShot(0, &asked, [&] {
                                    auto* const box = qobject_cast<QMessageBox*>(
                                        QApplication::activeModalWidget());
                                    ASSERT_NE(box, nullptr);
                                    isAsked = true;
                                    box->button(reply)->click();
                                });
                                enterFile(asked, folder.path(L"house/tool.ipr"));
                                EXPECT_EQ(asked.isVisible(), reply == QMessageBox::No);
                                if (asked.isVisible()) {
                                    QTest::keyClick(&asked, Qt::Key_Escape);
                                }
                            });
        EXPECT_TRUE(isAsked);
        EXPECT_EQ(ipr(), "Kop=p\n");
        EXPECT_EQ(listed(),
                  reply == QMessageBox::No ? "Kop=1 (String) \nMaat=2 (String) \n"
                                           : "Kop=p (String) \nMaat=2 (String) \n");
    }
}

TEST_F(CCfgDeskExeDlgCommands, ACancelledQuestionForAProjectChangesNothing)
{
    for (const char* what : {"New Project...", "Open Project..."}) {
        show();
        answer<QFileDialog>([&] { choose(what); },
                            [](QFileDialog& asked) { QTest::keyClick(&asked, Qt::Key_Escape); });
        EXPECT_EQ(titleShown(), "Korvane CfgDesk - ~/cfg/tool.ini");
    }
}

TEST_F(CCfgDeskExeDlgCommands, TheTicksShowAndHideLevelsAndOutliveAReload)
{
    writeIpr("Maat=p\n");
    show(Levels::project);
    EXPECT_EQ(namesListed(), "Kop Maat");
    choose("Show Global");
    EXPECT_EQ(ticks(), "Show Project, Show Local");
    EXPECT_EQ(namesListed(), "Maat");
    choose("Show Project");
    EXPECT_EQ(namesListed(), "");
    choose("Show Global");
    EXPECT_EQ(ticks(), "Show Global, Show Local");
    EXPECT_EQ(namesListed(), "Kop");
    choose("Show Global");
    choose("Global Settings");
    EXPECT_EQ(ticks(), "Show Local");
    EXPECT_EQ(namesListed(), "Kop Maat");
}

TEST_F(CCfgDeskExeDlgCommands, SortingIsKept)
{
    show();
    choose("Sort sections");
    EXPECT_EQ(treeShown(), "-General *\n  Lijn\n  Tekst\n");
    EXPECT_EQ(ticks(), "Show Global, Show Project, Show Local, Sort sections");
    EXPECT_TRUE(preferences.sort);
    show();
    EXPECT_EQ(treeShown(), "-General *\n  Lijn\n  Tekst\n");
    EXPECT_EQ(ticks(), "Show Global, Show Project, Show Local, Sort sections");
    choose("Sort sections");
    EXPECT_EQ(treeShown(), "-General *\n  Tekst\n  Lijn\n");
    EXPECT_FALSE(preferences.sort);
}

TEST_F(CCfgDeskExeDlgCommands, CopiesAreMadeOfAllSelectedRows)
{
    writeIni("A=1\nB=2\nC=3\n");
    writeIpr("");
    show(Levels::project);
    clickRow("A");
    clickRow("C", Qt::ControlModifier);
    EXPECT_EQ(selected(), "A C");
    choose("Make Project Copy");
    EXPECT_EQ(ipr(), "A=1\nC=3\n");
    EXPECT_EQ(selected(), "");
    folder.remove(L"house/tool.ipr");
    show(Levels::local);
    clickRow("B");
    choose("Make Local Copy");
    EXPECT_EQ(savedAndOpened(), "B=2\n");
}

// --- new categories and settings -----------------------------------------------------------------

TEST_F(CCfgDeskExeDlgCommands, ANewCategoryIsACopyByKeys)
{
    show();
    focusOn("tree");
    pressForName(Qt::Key_Insert, [] {
        type("Deur");
        press(Qt::Key_Tab);
        press(Qt::Key_Space);
        press(Qt::Key_Tab);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
    });
    EXPECT_EQ(treeShown(), "-General *\n  Tekst\n  Lijn\n  Deur\n");
    EXPECT_EQ(ini(),
              "Kop=1\nMaat=2\n[Tekst]\nHoogte=3\nNaam=abc\n[Lijn]\nKleur=4\n\n[Deur]\nNaam=abc\n"
              "Hoogte=3\n")
        << "each new line stands behind the header";
    EXPECT_EQ(textOfButton("searchButton"), "Search") << "Enter went to the dialog in front alone";
    clickItem("Deur");
    EXPECT_EQ(listed(), "Hoogte=3 (String) \nNaam=abc (String) \n");
}

TEST_F(CCfgDeskExeDlgCommands, TheNewButtonsAskForNames)
{
    show();
    answer<NieuwDlg>([this] { click("newCategory"); },
                     [](NieuwDlg& /*asked*/) {
                         type("Deur");
                         press(Qt::Key_Return);
                     });
    EXPECT_EQ(treeShown(), "-General *\n  Tekst\n  Lijn\n  Deur\n");
    answer<NieuwDlg>([this] { click("newSetting"); },
                     [](NieuwDlg& /*asked*/) {
                         type("Diepte");
                         press(Qt::Key_Return);
                     });
    EXPECT_EQ(namesListed(), "Kop Maat Diepte");
}

TEST_F(CCfgDeskExeDlgCommands, ACategoryThatExistsChangesNoFile)
{
    const std::string before = ini();
    show();
    focusOn("tree");
    newOne("Tekst");
    EXPECT_EQ(ini(), before);
    pressForName(Qt::Key_Insert, [] {
        type("Deur");
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(ini(), before);
    EXPECT_EQ(treeShown(), "-General *\n  Tekst\n  Lijn\n");
}

TEST_F(CCfgDeskExeDlgCommands, ANewSettingGoesToItsLevel)
{
    show();
    clickItem("Lijn");
    press(Qt::Key_Right);
    newOne("Dikte");
    EXPECT_EQ(listed(), "Kleur=4 (String) \nDikte= (String) \n");
    EXPECT_EQ(ini(), "Kop=1\nMaat=2\n[Tekst]\nHoogte=3\nNaam=abc\n[Lijn]\nDikte=\nKleur=4\n");
    newOne("Dikte");
    EXPECT_EQ(namesListed(), "Kleur Dikte");
    writeIpr("");
    show(Levels::project);
    newOne("P");
    EXPECT_EQ(ipr(), "P=\n");
    show(Levels::localProject);
    newOne("L");
    EXPECT_EQ(namesListed(), "Kop Maat P L");
    EXPECT_EQ(savedAndOpened(), "L=\n");
}

// --- removing ------------------------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgCommands, SeveralRowsAreRemovedAfterOneQuestion)
{
    writeIni("A=1\nB=2\nC=3\nD=4\n");
    show();
    clickRow("B");
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "B C");
    services.answer = MessageAnswer::no;
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), kRemoveSetting);
    EXPECT_EQ(ini(), "A=1\nB=2\nC=3\nD=4\n");
    EXPECT_EQ(selected(), "B C");
    services.answer = MessageAnswer::yes;
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), kRemoveSetting);
    EXPECT_EQ(ini(), "A=1\nD=4\n");
    EXPECT_EQ(namesListed(), "A D");
    EXPECT_EQ(current(), "D");
    EXPECT_EQ(selected(), "");
}

TEST_F(CCfgDeskExeDlgCommands, ASettingIsRemovedFromTheDrawing)
{
    const std::string before = ini();
    newDrawing();
    store(L"", L"Kop", L"d");
    store(L"", L"Maat", L"e");
    show(Levels::local);
    clickRow("Kop");
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), kRemoveSetting);
    EXPECT_EQ(listed(), "Kop=1 (String) \nMaat=e (String) \n");
    EXPECT_EQ(savedAndOpened(), "Maat=e\n");
    EXPECT_EQ(ini(), before);
}

TEST_F(CCfgDeskExeDlgCommands, ACategoryIsRemovedAndTheFirstItemSelected)
{
    show();
    clickItem("Tekst");
    services.answer = MessageAnswer::no;
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), kRemoveCategory);
    EXPECT_EQ(treeShown(), "-General\n  Tekst *\n  Lijn\n");
    services.answer = MessageAnswer::yes;
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), std::string(kRemoveCategory) + kRemoved);
    EXPECT_EQ(treeShown(), "-General *\n  Lijn\n");
    EXPECT_EQ(namesListed(), "Kop Maat");
    EXPECT_EQ(ini(), "Kop=1\nMaat=2\n[Lijn]\nKleur=4\n");
    EXPECT_EQ(focus(), "tree");
}

// --- included files ------------------------------------------------------------------------------

TEST_F(CCfgDeskExeDlgCommands, AnIncludedFileOpensInAnEditorAboveThisOne)
{
    writeIni("#INCLUDE=sub/a.ini\nKop=1\n[Tekst]\nHoogte=3\n");
    folder.write(L"cfg/sub/a.ini", "[Binnen]\nX=1\n");
    show();
    const std::string before = listed();
    const auto look = [this](CCfgDeskExeDlg& inner) {
        EXPECT_NE(&inner, dialog.get());
        EXPECT_EQ(inner.parentWidget(), dialog.get());
        EXPECT_EQ(homely(utf8(inner.windowTitle())), "Korvane CfgDesk - ~/cfg/sub/a.ini");
        EXPECT_EQ(inner.desk().tree().first()->children.front()->text, L"Binnen");
        press(Qt::Key_Escape);
        EXPECT_FALSE(inner.isVisible());
    };
    answer<CCfgDeskExeDlg>([this] { doubleClickItem("a.ini"); }, look);
    EXPECT_EQ(listed(), before);
    EXPECT_EQ(treeShown(), "a.ini *\n-General\n  Tekst\n");
    focusOn("tree");
    answer<CCfgDeskExeDlg>([] { press(Qt::Key_F2); }, look);
    EXPECT_TRUE(dialog->isVisible());
    clickItem("Tekst");
    press(Qt::Key_F2);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "a category is no file";
}

TEST_F(CCfgDeskExeDlgCommands, AnEditorAboveThisOneWritesItsOwnFile)
{
    writeIni("#INCLUDE=a.ini\nKop=1\n");
    folder.write(L"cfg/a.ini", "X=1\n");
    show();
    clickItem("a.ini");
    answer<CCfgDeskExeDlg>([] { press(Qt::Key_F2); },
                           [this](CCfgDeskExeDlg& inner) {
                               const std::string title = utf8(inner.windowTitle());
                               press(Qt::Key_Home);
                               answer<EditDlg>([] { press(Qt::Key_F2); },
                                               [](EditDlg& /*asked*/) {
                                                   type("5");
                                                   press(Qt::Key_Return);
                                               });
                               EXPECT_EQ(inner.desk().rows()[0].value, L"5");
                               press(Qt::Key_Escape);
                           });
    EXPECT_EQ(folder.read(L"cfg/a.ini"), "X=5\n");
    EXPECT_EQ(ini(), "#INCLUDE=a.ini\nKop=1\n");
    EXPECT_EQ(titleShown(), "Korvane CfgDesk - ~/cfg/tool.ini");
}

} // namespace
