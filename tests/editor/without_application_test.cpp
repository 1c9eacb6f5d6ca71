// Starts in a process that has no Qt application, which is why this is a program of its own.

#include "editor/CCfgDeskExeDlg.h"
#include "support/BlockDrawing.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/IniBuffer.h>
#include <corma/about.h>
#include <corma/attribute_dialog.h>
#include <corma/cfgdesk.h>

#include <QApplication>
#include <QSettings>
#include <QTimer>

#include <array>
#include <clocale>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// What happens once the next Qt application runs its first dialog.
std::function<void()>& onceItRuns()
{
    static std::function<void()> act;
    return act;
}

void actOnceItRuns()
{
    QTimer::singleShot(0, QCoreApplication::instance(), [] {
        if (const auto act = std::exchange(onceItRuns(), nullptr)) {
            act();
        }
    });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(actOnceItRuns)

namespace corma::testing {

namespace {

class WithoutApplication : public ::testing::Test
{
protected:
    WithoutApplication()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("XDG_RUNTIME_DIR", QString::fromStdWString(folder.path()).toUtf8());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdWString(folder.path()));
        ini = folder.write(L"tool.ini", "A=1\n");
    }

    /// Starts the editor, does this while it is open, and closes it.
    void start(std::function<void(CCfgDeskExeDlg&)> act)
    {
        bool wasOpen = false;
        onceItRuns() = [&wasOpen, act = std::move(act)] {
            auto* const dialog = qobject_cast<CCfgDeskExeDlg*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            wasOpen = true;
            act(*dialog);
            dialog->reject();
        };
        xx_startCfgDesk(ini.data(), 19);
        EXPECT_TRUE(wasOpen);
    }

    static void takeDisplaysAway()
    {
        for (const char* const name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
            qunsetenv(name);
        }
    }

    RecordingServices services;
    const TempFolder folder;
    std::wstring ini;
};

TEST_F(WithoutApplication, AStartMakesOneForAsLongAsItLasts)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    start([](CCfgDeskExeDlg& /*dialog*/) {
        EXPECT_NE(qobject_cast<QApplication*>(QCoreApplication::instance()), nullptr);
        EXPECT_FALSE(QGuiApplication::windowIcon().isNull());
    });
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_THAT(services.alerts, IsEmpty());
}

TEST_F(WithoutApplication, OneStartCanFollowTheOther)
{
    std::vector<std::wstring> titles;
    for (int i = 0; i < 3; ++i) {
        start([&titles](CCfgDeskExeDlg& dialog) { titles.push_back(dialog.desk().title()); });
    }
    EXPECT_EQ(titles.size(), 3U);
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(WithoutApplication, ANestedStartUsesTheSameOne)
{
    start([this](CCfgDeskExeDlg& /*outer*/) {
        const QCoreApplication* const application = QCoreApplication::instance();
        QTimer::singleShot(0, QCoreApplication::instance(),
                           [] { QApplication::activeModalWidget()->close(); });
        xx_startCfgDeskClean(ini.data(), 19);
        EXPECT_EQ(QCoreApplication::instance(), application);
    });
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

// Qt would make the locale of the environment that of the process, and with it its numbers.
TEST_F(WithoutApplication, TheLocaleOfTheProcessStays)
{
    qputenv("LC_ALL", "C.UTF-8");
    ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    std::string whileOpen;
    start([&whileOpen](CCfgDeskExeDlg& /*dialog*/) {
        whileOpen = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_CTYPE, ""); // as the input of composed letters does
    });
    EXPECT_EQ(whileOpen, "C");
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST_F(WithoutApplication, WithoutADisplayAStartTellsSoAndDoesNothing)
{
    takeDisplaysAway();
    std::array<wchar_t, 10> value {};
    int slot = -1;
    IniBuffer::shared().lookup(L"[A]B", value.data(), 10, &slot, nullptr);
    IniBuffer::shared().store(L"[A]B", L"7", slot, nullptr);
    const std::string before = folder.names();

    xx_startCfgDesk(ini.data(), 19, folder.path(L"new.ipr").data(), nullptr);
    ASSERT_EQ(services.alerts.size(), 1U);
    EXPECT_TRUE(services.alerts.front().starts_with(L"CfgDesk cannot be shown: "))
        << folder.homely(services.alerts.front());
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_EQ(textLanguage(), kEnglish);
    EXPECT_EQ(folder.names(), before);
    EXPECT_FALSE(IniBuffer::shared().lookup(L"[A]B", value.data(), 10, &slot, nullptr));
}

TEST_F(WithoutApplication, AnApplicationWithoutWindowsIsRefused)
{
    int count = 1;
    std::array<char, 5> name {"host"};
    std::array<char*, 2> arguments {name.data(), nullptr};
    const QCoreApplication host(count, arguments.data());
    xx_startCfgDesk(ini.data(), 19);
    EXPECT_THAT(services.alerts,
                ElementsAre(L"CfgDesk cannot be shown: the Qt application of this program is not "
                            L"one for widgets."));
}

TEST_F(WithoutApplication, AfterAStartAnotherThreadIsRefused)
{
    start([](CCfgDeskExeDlg& /*dialog*/) {});
    std::thread([this] { xx_startCfgDesk(ini.data(), 19); }).join();
    EXPECT_THAT(
        services.alerts,
        ElementsAre(L"CfgDesk cannot be shown: this is not the thread of the user interface."));
}

TEST_F(WithoutApplication, WithoutADisplayNoPatternIsChosen)
{
    takeDisplaysAway();
    std::array<wchar_t, 6> result {L"abcde"};
    EXPECT_FALSE(xx_showHatchPalleteDialog(L"ANSI31", false, result.data(), 6));
    EXPECT_STREQ(result.data(), L"ANSI3");
    EXPECT_EQ(services.alerts.size(), 1U);
    EXPECT_THAT(services.hatchQuestions, IsEmpty());
    EXPECT_FALSE(xx_showHatchPalleteDialog(nullptr, false, result.data(), 6));
    EXPECT_STREQ(result.data(), L"");
    EXPECT_FALSE(xx_showHatchPalleteDialog(L"ANSI31", false, nullptr, 6));
    EXPECT_FALSE(xx_showHatchPalleteDialog(L"ANSI31", false, result.data(), 0));
    EXPECT_STREQ(result.data(), L"");
}

TEST_F(WithoutApplication, WithoutADisplayNoAttributesAreBroughtUpToDate)
{
    takeDisplaysAway();
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD"}}).inModel({"A1", "DOOR"});
    ASSERT_TRUE(openDocument(folder.write(L"plan.dxf", drawing.bytes()).c_str()));
    xx_show_attribute_update(false, nullptr);
    ASSERT_EQ(services.alerts.size(), 1U);
    EXPECT_TRUE(services.alerts.front().starts_with(L"The attribute update cannot be shown: "))
        << folder.homely(services.alerts.front());
    EXPECT_FALSE(isDocumentModified());
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(WithoutApplication, AnAttributeUpdateMakesOneForAsLongAsItLasts)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD"}}).inModel({"A1", "DOOR"});
    ASSERT_TRUE(openDocument(folder.write(L"plan.dxf", drawing.bytes()).c_str()));
    bool wasOpen = false;
    onceItRuns() = [&wasOpen] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        wasOpen = true;
        dialog->accept();
    };
    xx_show_attribute_update(false, nullptr);
    EXPECT_TRUE(wasOpen);
    EXPECT_TRUE(isDocumentModified());
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_THAT(services.alerts, IsEmpty());
}

TEST_F(WithoutApplication, AnAboutBoxMakesOneForAsLongAsItLasts)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    QString title;
    onceItRuns() = [&title] {
        title = QApplication::activeModalWidget()->windowTitle();
        QApplication::activeModalWidget()->close();
    };
    xx_show_about(L"none.mnu", {L"a"}, nullptr);
    EXPECT_EQ(title, QStringLiteral("About"));
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_THAT(services.alerts, IsEmpty());
    EXPECT_NE(services.allPrinted().find(L"Cannot find menufile none.mnu"), std::wstring::npos);
}

// Not even that the menu file is not there.
TEST_F(WithoutApplication, WithoutADisplayAnAboutBoxTellsThatAndNothingElse)
{
    takeDisplaysAway();
    xx_show_about(L"none.mnu", {L"a"}, nullptr);
    EXPECT_THAT(services.alerts,
                ElementsAre(L"The about box cannot be shown: no display: neither DISPLAY nor "
                            L"WAYLAND_DISPLAY is set."));
    EXPECT_THAT(services.printed, IsEmpty());
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(WithoutApplication, AnotherThreadShowsNoAboutBox)
{
    start([](CCfgDeskExeDlg& /*dialog*/) {});
    std::thread([] { xx_show_about(nullptr); }).join();
    EXPECT_THAT(services.alerts,
                ElementsAre(L"The about box cannot be shown: this is not the thread of the user "
                            L"interface."));
}

} // namespace

} // namespace corma::testing
