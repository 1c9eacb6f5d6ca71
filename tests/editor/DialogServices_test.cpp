#include "editor/DialogServices.h"
#include "editor/HatchPaletteDlg.h"
#include "editor/HelpDlg.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/cfgdesk.h>
#include <corma/texts.h>

#include <QAbstractButton>
#include <QDesktopServices>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include <array>
#include <functional>
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace corma::testing {

namespace {

QMessageBox* shownBox()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

/// What the user of a message box sees.
struct SeenBox
{
    std::string title;
    std::string text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    std::vector<std::string> buttons {}; // "*" before the one that Enter presses
};

SeenBox lookAt(const QMessageBox& box)
{
    SeenBox seen {.title = box.windowTitle().toStdString(),
                  .text = box.text().toStdString(),
                  .icon = box.icon()};
    for (QAbstractButton* const button : box.buttons()) {
        const std::string mark = button == box.defaultButton() ? "*" : "";
        seen.buttons.push_back(mark + button->text().remove(u'&').toStdString());
    }
    return seen;
}

class DialogServicesTest : public ::testing::Test
{
protected:
    /// Does this to the message box that comes next.
    void next(std::function<void(QMessageBox&)> act)
    {
        QTimer::singleShot(0, qApp, [this, act = std::move(act)] {
            QMessageBox* const box = shownBox();
            ASSERT_NE(box, nullptr);
            seen = lookAt(*box);
            act(*box);
        });
    }

    static void pressEscape(QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }

    static void pressEnter(QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }

    static MessageAnswer ask(MessageButtons buttons)
    {
        return services().messageBox(L"Text", L"Title", MessageIcon::question, buttons);
    }

    RecordingServices before;
    const DialogServices dialogs;
    SeenBox seen;
};

TEST_F(DialogServicesTest, AMessageBoxShowsWhatItIsTold)
{
    next(pressEnter);
    services().messageBox(L"Pad: /a/b.ini", L"CfgDesk", MessageIcon::stop, MessageButtons::ok);
    EXPECT_EQ(seen.title, "CfgDesk");
    EXPECT_EQ(seen.text, "Pad: /a/b.ini");
    EXPECT_EQ(seen.icon, QMessageBox::Critical);
    EXPECT_THAT(seen.buttons, ElementsAre("*OK"));
    EXPECT_THAT(before.boxes, IsEmpty());
}

TEST_F(DialogServicesTest, EachIconHasItsPicture)
{
    struct Row
    {
        MessageIcon icon;
        QMessageBox::Icon shown;
    };

    for (const Row& row : {Row {MessageIcon::none, QMessageBox::NoIcon},
                           Row {MessageIcon::information, QMessageBox::Information},
                           Row {MessageIcon::question, QMessageBox::Question},
                           Row {MessageIcon::exclamation, QMessageBox::Warning},
                           Row {MessageIcon::stop, QMessageBox::Critical}}) {
        next(pressEnter);
        services().messageBox(L"Text", L"Title", row.icon, MessageButtons::ok);
        EXPECT_EQ(seen.icon, row.shown) << static_cast<int>(row.icon);
    }
}

TEST_F(DialogServicesTest, AnAlertIsAMessageBox)
{
    next(pressEnter);
    services().alert(L"Let op");
    EXPECT_EQ(seen.title, "CfgDesk");
    EXPECT_EQ(seen.text, "Let op");
    EXPECT_EQ(seen.icon, QMessageBox::Warning);
    EXPECT_THAT(before.alerts, IsEmpty());
}

TEST_F(DialogServicesTest, ANullTextIsAnEmptyOne)
{
    next(pressEnter);
    EXPECT_EQ(services().messageBox(nullptr, nullptr, MessageIcon::none, MessageButtons::ok),
              MessageAnswer::ok);
    EXPECT_EQ(seen.text, "");
}

TEST_F(DialogServicesTest, AMessageIsTextAndNothingElse)
{
    next([](QMessageBox& box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_TRUE(box.textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        box.accept();
    });
    services().alert(L"<b>fat</b> & thin");
    EXPECT_EQ(seen.text, "<b>fat</b> & thin");
}

struct ButtonRow
{
    const char* sentence;
    MessageButtons buttons;
    std::vector<std::string> shown; // in any order, as the desktop has it
    MessageAnswer onEnter;
    MessageAnswer onEscape;
};

TEST_F(DialogServicesTest, ButtonsGiveTheirAnswers)
{
    using enum MessageAnswer;
    const std::vector<ButtonRow> rows = {
        {"Ok", MessageButtons::ok, {"*OK"}, ok, ok},
        {"OkCancel", MessageButtons::okCancel, {"*OK", "Cancel"}, ok, cancel},
        {"YesNo", MessageButtons::yesNo, {"*Yes", "No"}, yes, no},
        {"YesNoCancel", MessageButtons::yesNoCancel, {"*Yes", "No", "Cancel"}, yes, cancel},
    };
    for (const ButtonRow& row : rows) {
        next(pressEnter);
        EXPECT_EQ(ask(row.buttons), row.onEnter) << row.sentence;
        EXPECT_THAT(seen.buttons, ::testing::UnorderedElementsAreArray(row.shown)) << row.sentence;
        next(pressEscape);
        EXPECT_EQ(ask(row.buttons), row.onEscape) << row.sentence;
    }
}

TEST_F(DialogServicesTest, AClickOnNoIsNo)
{
    next([](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton); });
    EXPECT_EQ(ask(MessageButtons::yesNoCancel), MessageAnswer::no);
}

TEST_F(DialogServicesTest, ButtonsAreInTheLanguageInForce)
{
    setTextLanguage(19);
    next(pressEscape);
    ask(MessageButtons::yesNoCancel);
    EXPECT_THAT(seen.buttons, ::testing::UnorderedElementsAre("*Ja", "Nee", "Annuleren"));
}

TEST_F(DialogServicesTest, ABoxIsAboveTheWindowInUse)
{
    QDialog window;
    window.setModal(true);
    window.show();
    next([&window](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), &window);
        box.accept();
    });
    services().alert(L"Text");
}

// --- what is not shown ---------------------------------------------------------------------------

TEST_F(DialogServicesTest, TheRestGoesToTheServicesBefore)
{
    before.module = L"/opt/kvr/kvr";
    before.variables[L"ACAD"] = L"/support";
    services().print(L"\nregel");
    services().fail(L"einde");
    EXPECT_THAT(before.printed, ElementsAre(L"\nregel"));
    EXPECT_THAT(before.failures, ElementsAre(L"einde"));
    EXPECT_STREQ(services().moduleFile(), L"/opt/kvr/kvr");
    EXPECT_STREQ(services().environment(L"ACAD"), L"/support");
    EXPECT_EQ(services().environment(L"NIETS"), nullptr);
}

TEST_F(DialogServicesTest, AnotherThreadIsNotShownAnything)
{
    before.answer = MessageAnswer::no;
    const auto answer = std::async(std::launch::async, [] {
                            services().alert(L"stil");
                            return ask(MessageButtons::yesNo);
                        }).get();
    EXPECT_EQ(answer, MessageAnswer::no);
    EXPECT_THAT(before.alerts, ElementsAre(L"stil"));
    EXPECT_THAT(before.boxes, ElementsAre(L"Text"));
}

TEST(DialogServices, TheFormerServicesComeBack)
{
    const RecordingServices before;
    {
        const DialogServices outer;
        {
            const DialogServices inner;
            EXPECT_EQ(&services(), &inner);
        }
        EXPECT_EQ(&services(), &outer);
    }
    EXPECT_EQ(&services(), &before);
}

TEST(DialogServices, TheDefaultOnesComeBack)
{
    Services& before = services();
    {
        const DialogServices dialogs;
        EXPECT_NE(&services(), &before);
    }
    EXPECT_EQ(&services(), &before);
    EXPECT_EQ(setServices(nullptr), nullptr);
}

// --- hatches -------------------------------------------------------------------------------------

class ChosenHatch : public DialogServicesTest
{
protected:
    static void next(Qt::Key key)
    {
        QTimer::singleShot(0, qApp, [key] {
            auto* const palette = qobject_cast<HatchPaletteDlg*>(QApplication::activeModalWidget());
            ASSERT_NE(palette, nullptr);
            QTest::keyClick(palette, key);
        });
    }

    const TempFolder folder;
    const CurrentFolder there {folder.path()};
    const std::wstring patterns = folder.write(
        L"acad.pat", "*ANSI31, iron\n45, 0,0, 0,3\n*DOTS, dots\n0, 0,0, 1,1, 0,-1\n");
};

TEST_F(ChosenHatch, IsThePatternOfThePalette)
{
    std::wstring chosen = L"before";
    next(Qt::Key_Return);
    EXPECT_TRUE(services().chooseHatchPattern({.pattern = L"DOTS"}, chosen));
    EXPECT_EQ(chosen, L"DOTS");
    EXPECT_THAT(before.hatchQuestions, IsEmpty());
}

TEST_F(ChosenHatch, StaysWhenTheUserCancels)
{
    std::wstring chosen = L"before";
    next(Qt::Key_Escape);
    EXPECT_FALSE(services().chooseHatchPattern({.pattern = L"DOTS"}, chosen));
    EXPECT_EQ(chosen, L"before");
}

TEST_F(ChosenHatch, IsCopiedIntoTheBufferOfTheExportedFunction)
{
    std::array<wchar_t, 4> result {L"abc"};
    next(Qt::Key_Return);
    EXPECT_TRUE(xx_showHatchPalleteDialog(L"DOTS", false, result.data(), 4));
    EXPECT_STREQ(result.data(), L"DOT");
    next(Qt::Key_Escape);
    EXPECT_FALSE(xx_showHatchPalleteDialog(L"ANSI31", true, result.data(), 4));
    EXPECT_STREQ(result.data(), L"ANS");
    EXPECT_EQ(&services(), &dialogs);
}

// --- help ----------------------------------------------------------------------------------------

/// Takes the files that would be opened by other programs.
class OpenedFiles : public QObject
{
    Q_OBJECT

public:
    OpenedFiles() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "take"); }

    OpenedFiles(const OpenedFiles&) = delete;
    OpenedFiles& operator=(const OpenedFiles&) = delete;

    ~OpenedFiles() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    Q_INVOKABLE void take(const QUrl& url) { files.push_back(url.toLocalFile().toStdWString()); }

    std::vector<std::wstring> files;
};

TEST_F(DialogServicesTest, AHelpFileIsOpenedByTheDesktop)
{
    const TempFolder folder;
    const OpenedFiles opened;
    const std::wstring file = folder.write(L"KVR_xx_corma.chm", "help");
    EXPECT_TRUE(services().showHelp(file.c_str()));
    EXPECT_THAT(opened.files, ElementsAre(file));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DialogServicesTest, WithoutAHelpFileThePageIsShownAndStaysOpen)
{
    const OpenedFiles opened;
    setTextLanguage(12);
    QDialog window;
    window.setModal(true);
    window.show();
    EXPECT_TRUE(services().showHelp(L""));
    auto* const help = window.findChild<HelpDlg*>();
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());
    EXPECT_FALSE(help->isModal());
    EXPECT_TRUE(help->findChild<QTextBrowser*>()->toPlainText().contains(
        QStringLiteral("l'éditeur de paramètres")));
    EXPECT_THAT(opened.files, IsEmpty());
    EXPECT_THAT(before.helpFiles, IsEmpty());
}

TEST_F(DialogServicesTest, HelpIsThereOnce)
{
    QDialog window;
    window.setModal(true);
    window.show();
    services().showHelp(L"/not/there.chm");
    services().showHelp(nullptr);
    EXPECT_EQ(window.findChildren<HelpDlg*>().size(), 1);
}

TEST_F(DialogServicesTest, HelpThatWasClosedIsShownAgain)
{
    QDialog window;
    window.setModal(true);
    window.show();
    services().showHelp(L"");
    window.findChild<HelpDlg*>()->close();
    services().showHelp(L"");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(window.findChildren<HelpDlg*>().size(), 1);
    EXPECT_TRUE(window.findChild<HelpDlg*>()->isVisible());
}

} // namespace

} // namespace corma::testing

#include "DialogServices_test.moc"
