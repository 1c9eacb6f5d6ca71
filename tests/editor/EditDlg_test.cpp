#include "controls/CPictureEx.h"
#include "editor/EditDialogTest.h"
#include "editor/EditDlg.h"
#include "editor/WrappedCheckBox.h"
#include "editor/qt_text.h"
#include "platform/text.h"
#include "support/SqliteFile.h"

#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QScrollEvent>
#include <QTimer>

#include <functional>
#include <gmock/gmock.h>
#include <set>

using corma::WrappedCheckBox;
using corma::testing::SqliteFile;
using corma::testing::utf8;
using ::testing::ElementsAre;

namespace {

int refuse(const wchar_t* /*value*/, const wchar_t* /*name*/, const wchar_t* /*label*/)
{
    return 0;
}

class EditDlgTest : public corma::testing::EditDialogTest
{
protected:
    void SetUp() override
    {
        EditDialogTest::SetUp();
        writeIni("A=5\n");
    }

    EditDlg& show(Levels levels = Levels::global, int language = 9)
    {
        return show(startAt(levels, language));
    }

    EditDlg& show(const corma::DeskStart& start) { return showDialog<EditDlg>(start); }

    [[nodiscard]] QLineEdit& field() const { return at<QLineEdit>("valueField"); }
};

// --- keys ----------------------------------------------------------------------------------------

TEST_F(EditDlgTest, WhatIsTypedReplacesTheValueAndEnterStoresIt)
{
    show();
    EXPECT_EQ(utf8(dialog->windowTitle()), "Settings - A");
    EXPECT_EQ(focus(), "valueField");
    EXPECT_EQ(utf8(field().selectedText()), "5");
    type("new");
    EXPECT_EQ(ini(), "A=5\n");
    press(Qt::Key_Return);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(ini(), "A=new\n");
}

TEST_F(EditDlgTest, EscapeAndCancelLeaveAllAsItWas)
{
    show();
    type("new");
    press(Qt::Key_Escape);
    EXPECT_TRUE(isRejected());
    show();
    type("new");
    click("cancelButton");
    EXPECT_TRUE(isRejected());
    EXPECT_EQ(ini(), "A=5\n");
    EXPECT_EQ(corma::toUtf8(setting().value()), "5");
}

TEST_F(EditDlgTest, OkStoresIt)
{
    show(Levels::global, 19);
    EXPECT_EQ(utf8(dialog->windowTitle()), "Instellingen - A");
    type("nieuw");
    EXPECT_EQ(utf8(at<QPushButton>("okButton").text()), "OK");
    click("okButton");
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(ini(), "A=nieuw\n");
}

TEST_F(EditDlgTest, TabGoesAsOneReads)
{
    writeIpr("A=p\n");
    newDrawing();
    store(L"", L"A", L"d");
    define("b filetypes=T|*.txt||");
    show(Levels::localProject);
    EXPECT_THAT(tabOrder(),
                ElementsAre("typeText", "levelText", "globalText", "projectText", "valueField",
                            "browseButton", "saveGlobally", "saveInProject", "okButton",
                            "cancelButton"));
    define("t");
    show();
    EXPECT_THAT(tabOrder(),
                ElementsAre("typeText", "levelText", "question", "okButton", "cancelButton"));
    define("q choices={x,y}");
    show();
    EXPECT_THAT(tabOrder(),
                ElementsAre("typeText", "levelText", "optionField", "okButton", "cancelButton"));
}

struct EditTextsRow
{
    const char* sentence;
    int language;
    std::vector<std::string> texts; // of all labels and buttons, "&" before the letter of each
};

void PrintTo(const EditTextsRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class EditDlgTexts : public EditDlgTest, public ::testing::WithParamInterface<EditTextsRow>
{
};

TEST_P(EditDlgTexts, AreThoseOfTheLanguage)
{
    writeIpr("A=p\n");
    newDrawing();
    store(L"", L"A", L"d");
    define("b");
    show(Levels::localProject, GetParam().language);
    std::vector<std::string> texts;
    for (const char* label : {"typeLabel", "globalLabel", "projectLabel", "newValueLabel"}) {
        EXPECT_TRUE(isShown(label)) << label;
        texts.push_back(utf8(at<QLabel>(label).text()));
    }
    for (const char* button : {"browseButton", "saveGlobally", "saveInProject", "cancelButton"}) {
        EXPECT_TRUE(isShown(button)) << button;
        texts.push_back(utf8(at<QAbstractButton>(button).text()));
    }
    EXPECT_EQ(texts, GetParam().texts);
}

// clang-format off
const EditTextsRow editTextsRows[] = {
    {"English", 9, {"&Type", "&Global", "&Project", "&New Value:", "&Browse...", "&Save Globally",
                    "Save &in Project", "Cancel"}},
    {"Dutch", 19, {"&Type", "G&lobaal", "&Project", "&Nieuwe waarde:", "&Bladeren...",
                   "&Globaal opslaan", "&Opslaan in project", "Annuleren"}},
    {"French", 12, {"&Type", "&Global", "P&rojet", "&Nouvelle valeur :", "&Parcourir...",
                    "&Enregistrer globalement", "Enregistrer &dans le projet", "Annuler"}},
    {"Russian", 25, {"&Тип", "&Глобальное", "&Проект", "&Новое значение:", "&Обзор...",
                     "&Сохранить глобально", "Сохранить &в проекте", "Отмена"}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(In, EditDlgTexts, ::testing::ValuesIn(editTextsRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(EditDlgTest, AltAndALetterReachABox)
{
    writeIpr("");
    show(Levels::project);
    press(Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return at<QCheckBox>("saveGlobally").isChecked(); }));
    press(Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(focus(), "valueField");
}

TEST_F(EditDlgTest, EveryWidgetHasAnAccessibleName)
{
    writeIpr("A=p\n");
    newDrawing();
    store(L"", L"A", L"d");
    describe("Een vraag");
    for (const char* definition : {"s", "t", "b", "c choices={x}", "q choices={x}"}) {
        define(definition);
        show(Levels::localProject);
        for (const std::string& name : tabOrder()) {
            const auto& widget = at<QWidget>(name.c_str());
            const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
            EXPECT_FALSE(widget.accessibleName().isEmpty()
                         && (button == nullptr || button->text().isEmpty()))
                << name;
        }
    }
}

// --- wrong values --------------------------------------------------------------------------------

TEST_F(EditDlgTest, BeyondALimitTheFieldIsEmptyAndTheDialogStays)
{
    define("i max=10 min=1");
    show();
    EXPECT_TRUE(isShown("maximumLabel"));
    EXPECT_EQ(utf8(at<QLabel>("maximumLabel").text()), "Maximum : 10");
    EXPECT_EQ(utf8(at<QLabel>("minimumLabel").text()), "Minimum : 1");
    type("11");
    click("okButton");
    EXPECT_EQ(messages(),
              "exclamation, Wrong value: The maximum value : 10\n"
              "exclamation, CfgDesk: This is not a correct value for a setting of type \n");
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(utf8(field().text()), "");
    EXPECT_EQ(focus(), "valueField");
    type("10");
    press(Qt::Key_Enter);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(ini(), "A=10\n");
}

TEST_F(EditDlgTest, AWrongValueStaysInTheField)
{
    define("d");
    show(Levels::global, 12);
    EXPECT_FALSE(isShown("maximumLabel"));
    EXPECT_FALSE(isShown("minimumLabel"));
    type("1x");
    press(Qt::Key_Return);
    EXPECT_EQ(messages(),
              "exclamation, CfgDesk: Cette valeur n'est pas correcte pour un paramètre de type "
              "Décimal\n");
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(utf8(field().text()), "1x");
    EXPECT_EQ(ini(), "A=5\n");
    type("1,5"); // over the selected text
    press(Qt::Key_Return);
    EXPECT_EQ(ini(), "A=1.5\n");
}

TEST_F(EditDlgTest, ARefusedValueKeepsTheDialogOpen)
{
    corma::DeskStart start = startAt(Levels::global);
    start.callback = refuse;
    show(start);
    type("new");
    press(Qt::Key_Return);
    EXPECT_EQ(messages(),
              "exclamation, CfgDesk: This is not a correct value for a setting of type \n");
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(utf8(field().text()), "");
    press(Qt::Key_Escape);
    EXPECT_TRUE(isRejected());
    EXPECT_EQ(ini(), "A=5\n");
}

TEST_F(EditDlgTest, ASettingThatIsGoneEndsTheDialog)
{
    show();
    desk().selectRows({}, -1);
    press(Qt::Key_Return);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(ini(), "A=5\n");
}

// --- levels --------------------------------------------------------------------------------------

TEST_F(EditDlgTest, ShowsTheLevelsOfTheValue)
{
    writeIpr("A=p\n");
    newDrawing();
    store(L"", L"A", L"p");
    show(Levels::localProject, 25);
    EXPECT_EQ(utf8(at<QLineEdit>("typeText").text()), "Строка");
    EXPECT_EQ(utf8(at<QLineEdit>("levelText").text()), "Копия проектного");
    EXPECT_FALSE(at<QLabel>("levelIcon").pixmap(Qt::ReturnByValue).isNull());
    EXPECT_EQ(utf8(at<QLineEdit>("globalText").text()), "5");
    EXPECT_EQ(utf8(at<QLineEdit>("projectText").text()), "p");
    for (const char* name : {"typeText", "levelText", "globalText", "projectText"}) {
        EXPECT_TRUE(isShown(name)) << name;
        EXPECT_TRUE(at<QLineEdit>(name).isReadOnly()) << name;
    }
}

TEST_F(EditDlgTest, ShowsNoOtherLevelsForAGlobalValue)
{
    show();
    for (const char* name : {"globalLabel", "globalText", "projectLabel", "projectText",
                             "saveGlobally", "saveInProject", "browseButton", "valueBox",
                             "questionArea", "optionList", "optionField"}) {
        EXPECT_FALSE(isShown(name)) << name;
    }
}

TEST_F(EditDlgTest, TheBoxesAskForMoreLevels)
{
    writeIpr("A=p\n");
    newDrawing();
    show(Levels::localProject);
    type("new");
    click("saveGlobally");
    click("saveInProject");
    press(Qt::Key_Return);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(ini(), "A=new\n");
    EXPECT_EQ(ipr(), "A=new\n");
    EXPECT_EQ(drawing(), "A=new\n");
    store(L"", L"A", L"d");
    show(Levels::localProject);
    type("newer");
    click("saveGlobally");
    click("saveGlobally");
    press(Qt::Key_Return);
    EXPECT_EQ(ini(), "A=new\n");
    EXPECT_EQ(drawing(), "A=newer\n");
}

TEST_F(EditDlgTest, AClosedBoxCannotBeTicked)
{
    define("s level=p");
    writeIpr("");
    show(Levels::project);
    EXPECT_FALSE(at<QCheckBox>("saveGlobally").isEnabled());
    click("saveGlobally");
    type("new");
    press(Qt::Key_Return);
    EXPECT_EQ(ini(), "A=5\n");
    EXPECT_EQ(ipr(), "A=new\n");
}

// --- inputs --------------------------------------------------------------------------------------

TEST_F(EditDlgTest, AReadOnlyValueCannotBeChanged)
{
    define("s readonly=true");
    show();
    EXPECT_FALSE(field().isEnabled());
    click("valueField");
    type("new");
    EXPECT_EQ(utf8(field().text()), "5");
    click("okButton");
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(ini(), "A=5\n");
    for (const auto& [definition, name] : {std::pair {"t readonly=true", "question"},
                                           {"c readonly=true choices={x}", "optionList"},
                                           {"q readonly=true choices={x}", "optionField"},
                                           {"b readonly=true", "browseButton"}}) {
        define(definition);
        show();
        EXPECT_TRUE(isShown(name)) << name;
        EXPECT_FALSE(at<QWidget>(name).isEnabled()) << name;
    }
}

TEST_F(EditDlgTest, LinesAreEditedInABox)
{
    newDrawing();
    store(L"", L"A", L"one\ntwo");
    show(Levels::local);
    EXPECT_FALSE(isShown("valueField"));
    EXPECT_EQ(focus(), "valueBox");
    press(Qt::Key_End, Qt::ControlModifier);
    press(Qt::Key_Return);
    type("three");
    EXPECT_TRUE(dialog->isVisible());
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(corma::toUtf8(setting().value()), "one\ntwo\nthree");
    EXPECT_EQ(ini(), "A=5\n");
}

TEST_F(EditDlgTest, LinesOfAReadOnlyValueCannotBeChanged)
{
    define("s readonly=true");
    newDrawing();
    store(L"", L"A", L"one\ntwo");
    show(Levels::local);
    press(Qt::Key_End, Qt::ControlModifier);
    type("three");
    EXPECT_EQ(utf8(at<QPlainTextEdit>("valueBox").toPlainText()), "one\ntwo");
}

TEST_F(EditDlgTest, AFieldOfOneLineTakesNoLineEnds)
{
    show();
    QGuiApplication::clipboard()->setText(QStringLiteral("a\r\nb\nc\rd"));
    QTest::keySequence(&field(), QKeySequence::Paste);
    EXPECT_EQ(utf8(field().text()), "a b c d");
    EXPECT_EQ(field().cursorPosition(), 7);
    press(Qt::Key_Return);
    EXPECT_EQ(ini(), "A=a b c d\n");
}

TEST_F(EditDlgTest, AQuestionIsAnsweredByAClickOnItsText)
{
    define("t");
    describe("Is this a question that is so long that it does not fit on one line, nor perhaps on "
             "two, and that therefore goes on in the next?§R&D asks.");
    show();
    auto& question = at<WrappedCheckBox>("question");
    EXPECT_EQ(focus(), "question");
    EXPECT_FALSE(isShown("newValueLabel"));
    EXPECT_TRUE(question.isChecked());
    EXPECT_THAT(utf8(question.text()), ::testing::EndsWith("in the next?\nR&&D asks."));
    EXPECT_GE(question.height(), 3 * question.fontMetrics().height());
    EXPECT_LE(question.width(), dialog->width());
    QTest::mouseClick(&question, Qt::LeftButton, {},
                      QPoint(question.width() / 2, question.height() - 3));
    EXPECT_FALSE(question.isChecked());
    press(Qt::Key_Space);
    EXPECT_TRUE(question.isChecked());
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_EQ(ini(), "A=0\n");
}

TEST_F(EditDlgTest, AVeryLongQuestionIsScrolledInsteadOfLeavingTheScreen)
{
    define("t");
    std::string text;
    for (int i = 0; i < 150; ++i) {
        text += "line§";
    }
    describe(text);
    show();
    EXPECT_LE(dialog->height(), dialog->screen()->availableSize().height());
    const auto& area = at<QScrollArea>("questionArea");
    EXPECT_GT(area.verticalScrollBar()->maximum(), 0);
    EXPECT_GT(area.height(), 100);
}

// --- options -------------------------------------------------------------------------------------

class EditDlgOption : public EditDlgTest
{
protected:
    void SetUp() override
    {
        EditDlgTest::SetUp();
        SqliteFile(folder.path(L"words.db3"))
            .run("CREATE TABLE Keys(Key VARCHAR, E VARCHAR, N VARCHAR);"
                 "INSERT INTO Keys VALUES('WOOD','Timber','Hout'),('STEEL','Iron','Staal')");
    }

    void showOption(const char* type, const char* value, int language = 9)
    {
        writeIni("TranslateDB=" + corma::toUtf8(folder.path(L"words.db3")) + "\nA=" + value + "\n");
        define(std::string(type) + " choices={left,WOOD,STEEL}");
        show(Levels::global, language);
    }

    [[nodiscard]] std::string stored() const
    {
        const std::string text = ini();
        return text.substr(text.find("\nA=") + 3);
    }
};

TEST_F(EditDlgOption, IsShownInTheLanguageAndStoredAsItsKey)
{
    showOption("c", "WOOD", 19);
    auto& list = at<QComboBox>("optionList");
    EXPECT_EQ(focus(), "optionList");
    EXPECT_EQ(utf8(list.currentText()), "Hout");
    EXPECT_EQ(list.count(), 3);
    EXPECT_FALSE(isShown("optionField"));
    EXPECT_FALSE(isShown("valueField"));
    EXPECT_TRUE(isShown("newValueLabel"));
    press(Qt::Key_Down);
    EXPECT_EQ(utf8(list.currentText()), "Staal");
    press(Qt::Key_Return);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(stored(), "STEEL\n");
}

TEST_F(EditDlgOption, ThatIsLeftAsItWasIsStoredAsItWas)
{
    for (const char* type : {"c", "q"}) {
        showOption(type, "WOOD");
        press(Qt::Key_Return);
        EXPECT_TRUE(isAccepted());
        EXPECT_EQ(stored(), "WOOD\n");
    }
}

TEST_F(EditDlgOption, ThatIsNoneOfThemSelectsNone)
{
    showOption("c", "middle");
    EXPECT_EQ(at<QComboBox>("optionList").currentIndex(), -1);
    press(Qt::Key_Return);
    EXPECT_EQ(stored(), "\n");
    showOption("q", "middle");
    EXPECT_EQ(utf8(at<QComboBox>("optionField").currentText()), "middle");
    press(Qt::Key_Return);
    EXPECT_EQ(stored(), "middle\n");
}

TEST_F(EditDlgOption, ThatIsTypedIsStoredAsTyped)
{
    showOption("q", "WOOD");
    auto& box = at<QComboBox>("optionField");
    EXPECT_EQ(focus(), "optionField");
    EXPECT_EQ(utf8(box.currentText()), "Timber");
    EXPECT_EQ(utf8(box.lineEdit()->selectedText()), "Timber");
    QTest::keyClicks(box.lineEdit(), QStringLiteral("iron"));
    EXPECT_EQ(utf8(box.currentText()), "iron");
    QTest::keyClick(box.lineEdit(), Qt::Key_Return);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(stored(), "iron\n");
}

TEST_F(EditDlgOption, IsChosenInTheOpenFieldToo)
{
    showOption("q", "left", 19);
    auto& box = at<QComboBox>("optionField");
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(utf8(box.currentText()), "Staal");
    press(Qt::Key_Return);
    EXPECT_EQ(stored(), "STEEL\n");
}

// --- files ---------------------------------------------------------------------------------------

TEST_F(EditDlgTest, AFileIsAskedFor)
{
    services.module = folder.makeFolder(L"module") + L"/host.bin";
    corma::forgetModuleFolder();
    folder.write(L"module/now.txt", "");
    writeIni("A=now.txt\n");
    define("b filetypes=Texts|*.txt;*.doc|All|*.*||");
    show();
    std::wstring from;
    QStringList shownFilters;
    std::optional<std::wstring> answer;
    dialog->setFileQuestion(
        [&](QWidget& parent, const std::wstring& start, const QStringList& filters) {
            EXPECT_EQ(&parent, dialog.get());
            from = start;
            shownFilters = filters;
            return answer;
        });
    click("browseButton");
    EXPECT_EQ(folder.homely(from), "~/module/now.txt");
    EXPECT_EQ(utf8(shownFilters.join(QStringLiteral("|"))), "Texts (*.txt *.doc)|All (*)");
    EXPECT_EQ(utf8(field().text()), "now.txt");
    answer = L"/other/file.txt";
    click("browseButton");
    EXPECT_EQ(utf8(field().text()), "/other/file.txt");
    EXPECT_EQ(ini(), "A=now.txt\n");
    click("okButton");
    EXPECT_EQ(ini(), "A=/other/file.txt\n");
}

TEST_F(EditDlgTest, AFileIsChosenInAFileDialog)
{
    const std::wstring file = folder.write(L"cfg/some.txt", "");
    writeIni("A=" + corma::toUtf8(file) + "\n");
    define("b");
    show();
    const auto answering = [&](const std::function<void(QFileDialog&)>& answer) {
        QTimer::singleShot(0, dialog.get(), [answer] {
            auto* const files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(files, nullptr);
            answer(*files);
        });
        click("browseButton");
    };
    answering([&](QFileDialog& files) {
        EXPECT_EQ(folder.homely(files.directory().path().toStdWString()), "~/cfg");
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptOpen);
        files.reject();
    });
    EXPECT_EQ(folder.homely(field().text().toStdWString()), "~/cfg/some.txt");
    answering([&](QFileDialog& files) {
        auto* const name = files.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(name, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&files));
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, QStringLiteral("new.txt"));
        files.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    EXPECT_EQ(folder.homely(field().text().toStdWString()), "~/cfg/new.txt");
    press(Qt::Key_Escape);
    EXPECT_THAT(ini(), ::testing::EndsWith("some.txt\n"));
}

TEST_F(EditDlgTest, NothingOverlapsInTheSmallestDialog)
{
    define("b");
    show();
    dialog->resize(1, 1);
    QCoreApplication::processEvents();
    const QWidget& button = at<QWidget>("browseButton");
    EXPECT_GT(button.x(), field().geometry().right());
    EXPECT_LT(button.geometry().right(), dialog->width());
    EXPECT_LT(field().geometry().bottom(), at<QWidget>("buttons").y());
}

// --- pictures ------------------------------------------------------------------------------------

TEST_F(EditDlgTest, APictureIsShownInItsSize)
{
    QImage image(200, 90, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    ASSERT_TRUE(image.save(QString::fromStdWString(folder.path(L"cfg/p.png"))));
    define("s bitmap=p.png");
    show();
    EXPECT_TRUE(isShown("picture"));
    EXPECT_EQ(at<CPictureEx>("picture").size(), QSize(200, 90));
    EXPECT_GE(at<QScrollArea>("pictureArea").viewport()->height(), 90);
}

TEST_F(EditDlgTest, WithoutAPictureTheFormIsCompact)
{
    show();
    EXPECT_FALSE(isShown("pictureArea"));
    const int compact = dialog->height();
    define("s bitmap=gone.png");
    show();
    EXPECT_FALSE(isShown("pictureArea"));
    EXPECT_EQ(dialog->height(), compact);
}

TEST_F(EditDlgTest, DerivedDialogsFillChoicesAndCloseUpThemselves)
{
    class Derived : public EditDlg
    {
    public:
        using EditDlg::EditDlg;

        std::string calls;

    protected:
        void fillChoices() override { calls += "choices "; }

        void compactLayout() override { calls += "compact "; }
    };

    open();
    Derived derived(desk());
    EXPECT_EQ(derived.calls, "");
    derived.show();
    derived.hide();
    derived.show();
    EXPECT_EQ(derived.calls, "choices compact ");
}

} // namespace
