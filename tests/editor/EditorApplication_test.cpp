// In a process that has a Qt application of its own; without_application_test.cpp has the others.

#include "editor/EditorApplication.h"
#include "support/RecordingServices.h"

#include <QFile>
#include <QLibraryInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace corma::testing {

namespace {

std::string cancelOfQt()
{
    return QCoreApplication::translate("QPlatformTheme", "Cancel").toStdString();
}

TEST(EditorApplication, UsesTheApplicationThatIsThere)
{
    const RecordingServices services;
    const QCoreApplication* const former = QCoreApplication::instance();
    {
        const EditorApplication application(9);
        EXPECT_TRUE(application.isReady());
        EXPECT_EQ(QCoreApplication::instance(), former);
    }
    EXPECT_EQ(QCoreApplication::instance(), former);
    EXPECT_THAT(services.alerts, IsEmpty());
}

TEST(EditorApplication, QtSpeaksTheLanguageAsLongAsItLasts)
{
    const QString dutch
        = QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_nl.qm");
    if (!QFile::exists(dutch)) {
        GTEST_SKIP() << "Qt has no translations here";
    }
    const RecordingServices services;
    const std::string former = cancelOfQt();
    {
        const EditorApplication outer(19);
        EXPECT_EQ(cancelOfQt(), "Annuleren");
        {
            const EditorApplication inner(12);
            EXPECT_EQ(cancelOfQt(), "Annuler");
        }
        EXPECT_EQ(cancelOfQt(), "Annuleren");
    }
    EXPECT_EQ(cancelOfQt(), former);
}

// A program of which no other window is open goes on when the editor is closed.
TEST(EditorApplication, ClosingItsLastWindowDoesNotEndTheProgram)
{
    const RecordingServices services;
    QGuiApplication::setQuitOnLastWindowClosed(true);
    {
        const EditorApplication outer(9);
        EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
        {
            const EditorApplication inner(9);
        }
        EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
    }
    EXPECT_TRUE(QGuiApplication::quitOnLastWindowClosed());
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

TEST(EditorApplication, AnotherThreadIsRefused)
{
    const RecordingServices services;
    bool isReady = true;
    std::thread([&isReady] { isReady = EditorApplication(9).isReady(); }).join();
    EXPECT_FALSE(isReady);
    EXPECT_THAT(
        services.alerts,
        ElementsAre(L"CfgDesk cannot be shown: this is not the thread of the user interface."));
}

} // namespace

} // namespace corma::testing
