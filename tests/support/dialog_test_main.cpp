#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// Lets every folder in which Qt keeps something of the person who runs the tests be one of ours.
void keepSettingsAway(const QTemporaryDir& folder)
{
    const QByteArray path = folder.path().toLocal8Bit();
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
        qputenv(name, path);
    }
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR", path); // Qt complains otherwise
    }
    QStandardPaths::setTestModeEnabled(true);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) {
        return RUN_ALL_TESTS(); // the build asks for the names where no window system may be
    }
    const QTemporaryDir folder;
    keepSettingsAway(folder);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false); // a test that closes one may go on
    return RUN_ALL_TESTS();
}
