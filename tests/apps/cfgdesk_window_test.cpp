// cfgdesk with its window, within the process of the tests.

#include "cfgdesk/WindowServices.h"
#include "cfgdesk/run.h"
#include "editor/CCfgDeskExeDlg.h"
#include "host/host.h"
#include "platform/platform.h"
#include "settings/model_start.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace corma::testing {

namespace {

QWidget* modal()
{
    return QApplication::activeModalWidget();
}

/// Keeps the texts of the message boxes that come, and closes them.
class BoxCloser
{
public:
    BoxCloser()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (auto* const box = qobject_cast<QMessageBox*>(modal())) {
                texts.push_back(box->text().toStdString());
                box->close();
            }
        });
        m_timer.start(0);
    }

    std::vector<std::string> texts;

private:
    QTimer m_timer;
};

class CfgdeskWindow : public ::testing::Test
{
protected:
    CfgdeskWindow()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdWString(folder.path()));
        ini = narrow(folder.write(L"cfg/tool.ini", "A=1\n"));
        const auto content = platform::readFile(std::string(CORMA_TEST_DATA "/r2000.dxf"));
        drawing = narrow(folder.write(L"house/plan.dxf", content->view()));
        untouched = content->view();
    }

    static std::string narrow(const std::wstring& path) { return platform::toNative(path); }

    /// Runs the program, does this with its window, and closes it.
    int run(const std::vector<std::string>& words, std::function<void(CCfgDeskExeDlg&)> act)
    {
        std::vector<const char*> pointers {"cfgdesk"};
        for (const std::string& word : words) {
            pointers.push_back(word.c_str());
        }
        QTimer::singleShot(0, qApp, [act = std::move(act)] {
            auto* const dialog = qobject_cast<CCfgDeskExeDlg*>(modal());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
            dialog->reject();
        });
        return cfgdesk::run(pointers, out);
    }

    /// Makes a setting as the user does, which is written at once.
    static void makeSetting(CCfgDeskExeDlg& dialog, const QString& name)
    {
        QTimer::singleShot(0, qApp, [name] {
            auto* const field = modal()->findChild<QLineEdit*>(QStringLiteral("name"));
            ASSERT_NE(field, nullptr);
            QTest::keyClicks(field, name);
            QTest::keyClick(field, Qt::Key_Return);
        });
        QTest::keyClick(dialog.findChild<QWidget*>(QStringLiteral("list")), Qt::Key_Insert);
    }

    /// Changes the value of the first setting as the user does.
    static void edit(CCfgDeskExeDlg& dialog, const QString& value)
    {
        QTimer::singleShot(0, qApp, [value] {
            auto* const field = modal()->findChild<QLineEdit*>(QStringLiteral("valueField"));
            ASSERT_NE(field, nullptr);
            field->selectAll();
            QTest::keyClicks(field, value);
            QTest::keyClick(field, Qt::Key_Return);
        });
        QTest::keyClick(dialog.findChild<QWidget*>(QStringLiteral("list")), Qt::Key_F2);
    }

    /// The setting of that name as a start on the saved drawing sees it.
    [[nodiscard]] std::string inDrawing(const wchar_t* name) const
    {
        if (!openDocument(platform::fromNative(drawing).c_str())) {
            return "no drawing";
        }
        const StartedModel started
            = startModel({.iniFile = platform::fromNative(ini), .document = currentDocument()});
        const Instelling* const setting
            = started.model->findCategory(L"Algemeen")->settings().findSetting(name);
        if (setting == nullptr) {
            return "no setting";
        }
        return (setting->isLocal() ? "local " : "not local ") + narrow(setting->value());
    }

    [[nodiscard]] std::string saved() const { return folder.read(L"house/plan.dxf"); }

    const RecordingServices services;
    const TempFolder folder;
    std::string ini;
    std::string drawing;
    std::string untouched;
    std::ostringstream out;
};

TEST_F(CfgdeskWindow, AChangeOfTheFileIsWrittenToIt)
{
    EXPECT_EQ(run({ini}, [](CCfgDeskExeDlg& dialog) { makeSetting(dialog, QStringLiteral("B")); }),
              0);
    EXPECT_THAT(folder.read(L"cfg/tool.ini"), HasSubstr("B="));
    EXPECT_EQ(out.str(), "");
}

TEST_F(CfgdeskWindow, AChangedDrawingIsSavedWhenTheWindowWasClosed)
{
    const int status = run({ini, "--drawing", drawing}, [this](CCfgDeskExeDlg& dialog) {
        makeSetting(dialog, QStringLiteral("Trap"));
        EXPECT_EQ(saved(), untouched);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(out.str(), "cfgdesk: saved " + drawing + "\n");
    EXPECT_EQ(folder.read(L"cfg/tool.ini"), "A=1\n");
    EXPECT_EQ(currentDocument(), nullptr);

    EXPECT_EQ(inDrawing(L"Trap"), "local ");
}

TEST_F(CfgdeskWindow, AnEditedValueIsInTheSavedDrawing)
{
    folder.write(L"cfg/tool.inr", "A=i\n");
    const int status = run({ini, "--drawing", drawing},
                           [](CCfgDeskExeDlg& dialog) { edit(dialog, QStringLiteral("42")); });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(out.str(), "cfgdesk: saved " + drawing + "\n");
    EXPECT_EQ(folder.read(L"cfg/tool.ini"), "A=1\n");
    EXPECT_EQ(inDrawing(L"A"), "local 42");
}

TEST_F(CfgdeskWindow, ADrawingThatWasOnlyLookedAtIsNotWritten)
{
    EXPECT_EQ(run({ini, "--drawing", drawing}, [](CCfgDeskExeDlg& /*dialog*/) {}), 0);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(saved(), untouched);
}

TEST_F(CfgdeskWindow, ADrawingThatCannotBeSavedIsToldInABox)
{
    std::optional<BoxCloser> boxes;
    const int status = run({ini, "--drawing", drawing}, [&](CCfgDeskExeDlg& dialog) {
        makeSetting(dialog, QStringLiteral("Trap"));
        std::filesystem::remove_all(narrow(folder.path(L"house")));
        boxes.emplace();
    });
    EXPECT_EQ(status, 1);
    EXPECT_EQ(out.str(), "");
    ASSERT_EQ(boxes->texts.size(), 1U);
    EXPECT_THAT(boxes->texts.front(), HasSubstr("plan.dxf"));
}

TEST_F(CfgdeskWindow, OptionsReachTheEditor)
{
    folder.write(L"house/tool.ipr", "A=2\n");
    std::string shown;
    const auto look = [&shown](CCfgDeskExeDlg& dialog) {
        const Desk& desk = dialog.desk();
        shown = std::to_string(desk.language());
        shown += desk.mode().local ? " local" : "";
        shown += desk.mode().project ? " project" : "";
        shown += desk.isClean() ? " clean" : "";
    };
    const std::string project = narrow(folder.path(L"house/tool.ipr"));
    run({ini, "--language", "19"}, look);
    EXPECT_EQ(shown, "19");
    run({ini, "--clean"}, look);
    EXPECT_EQ(shown, "9 clean");
    run({ini, "--project", project}, look);
    EXPECT_EQ(shown, "9 project");
    run({ini, "--drawing", drawing}, look);
    EXPECT_EQ(shown, "9 local project");
    run({ini, "--drawing", drawing, "--local"}, look);
    EXPECT_EQ(shown, "9 local");
    run({ini, "--drawing", drawing, "--project-mode"}, look);
    EXPECT_EQ(shown, "9 project");
    run({ini, "--drawing", drawing, "--project-mode", "--local"}, look);
    EXPECT_EQ(shown, "9");
}

TEST_F(CfgdeskWindow, TheAccessLevelReachesTheEditor)
{
    folder.write(L"cfg/tool.inr", "A=s access=3,3\n");
    std::size_t rows = 7;
    const auto look = [&rows](CCfgDeskExeDlg& dialog) { rows = dialog.desk().rows().size(); };
    run({ini, "--access", "2"}, look);
    EXPECT_EQ(rows, 0U);
    run({ini, "--access", "3"}, look);
    EXPECT_EQ(rows, 1U);
    run({ini}, look);
    EXPECT_EQ(rows, 0U);
}

// --- what the library says -----------------------------------------------------------------------

class PrintedLines : public ::testing::Test
{
protected:
    const RecordingServices before;
    cfgdesk::WindowServices services;
    BoxCloser boxes;
};

TEST_F(PrintedLines, ComeInOneBoxWhichTellsEachOnce)
{
    services.print(L"\nline 3 was skipped");
    services.print(L"\nline 5 was skipped\n");
    services.print(L"\nline 3 was skipped");
    EXPECT_THAT(boxes.texts, IsEmpty());
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_THAT(boxes.texts, ElementsAre("line 3 was skipped\nline 5 was skipped"));
}

TEST_F(PrintedLines, OfALaterTimeComeInAnotherBox)
{
    services.print(L"\none");
    QCoreApplication::processEvents();
    services.print(L"\none");
    QCoreApplication::processEvents();
    EXPECT_THAT(boxes.texts, ElementsAre("one", "one"));
}

TEST_F(PrintedLines, OfNothingShowNoBox)
{
    services.print(L"\n");
    services.print(L"");
    QCoreApplication::processEvents();
    services.showRest();
    EXPECT_THAT(boxes.texts, IsEmpty());
}

TEST_F(PrintedLines, ThatWereNotShownYetAreShownInTheEnd)
{
    services.print(L"\nlast");
    services.showRest();
    EXPECT_THAT(boxes.texts, ElementsAre("last"));
    QCoreApplication::processEvents();
    EXPECT_EQ(boxes.texts.size(), 1U);
}

} // namespace

} // namespace corma::testing
