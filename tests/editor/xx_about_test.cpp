// The exported about box in a process that has a Qt application; without_application_test.cpp has
// the others.

#include "controls/xx_aboutDlg.h"
#include "support/ModuleFile.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/about.h>
#include <corma/xx_gridListCtrl.h>

#include <QApplication>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <QTimer>

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::IsEmpty;

namespace corma::testing {

namespace {

/// What a box showed, a line for each part, and "|" between the cells of a row.
QString seenIn(const xx_aboutDlg& dialog)
{
    QStringList seen {dialog.findChild<QLabel*>(QStringLiteral("appName"))->text()};
    for (const char* const name : {"appVersion", "menuVersion"}) {
        seen << dialog.findChild<QLineEdit*>(QLatin1StringView(name))->text();
    }
    seen << dialog.findChild<QLabel*>(QStringLiteral("copyright"))->text();
    const auto* const grid = dialog.findChild<xx_gridListCtrl*>();
    for (int row = 0; row < grid->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid->columnCount(); ++column) {
            cells << grid->text(row, column);
        }
        seen << cells.join(QLatin1Char('|'));
    }
    return seen.join(QLatin1Char('\n'));
}

class About : public ::testing::Test
{
protected:
    About()
    {
        services.module = folder.write(L"host.so", moduleWithVersion("Host", "1.0", "(c) Host"));
        folder.write(L"plan.mnu", "// menu\r\n_MENUVERSION \"4.2\"\r\n");
    }

    /// What the box shows that comes up, which is closed then.
    std::string shownBy(const std::function<void()>& call)
    {
        QString seen = QStringLiteral("(no box)");
        QTimer::singleShot(0, QCoreApplication::instance(), [&] {
            auto* const dialog = qobject_cast<xx_aboutDlg*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            seen = seenIn(*dialog);
            hasPicture = dialog->findChild<QLabel*>(QStringLiteral("bitmap"))->isVisible();
            owner = dialog->parentWidget();
            dialog->reject();
        });
        call();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        return seen.toStdString();
    }

    RecordingServices services;
    const TempFolder folder;
    const CStringArray rows = {L"Software\t1\tPlan\tyes", L"", L"a\t\tb", L"1\t2\t3\t4\t5\t6"};
    const std::string shownRows = "\nSoftware|1|Plan|yes|\na|b|||\n1|2|3|4|5";
    bool hasPicture = false;
    QWidget* owner = nullptr;
};

TEST_F(About, WithABitmapAloneHasNoMenuAndNoRows)
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    EXPECT_EQ(shownBy([&] { xx_show_about(&image); }), "Host\n1.0\nN/A\n(c) Host");
    EXPECT_TRUE(hasPicture);
    EXPECT_EQ(shownBy([] { xx_show_about(nullptr); }), "Host\n1.0\nN/A\n(c) Host");
    EXPECT_FALSE(hasPicture);
    EXPECT_THAT(services.printed, IsEmpty());
}

TEST_F(About, ReadsTheMenuFileForTheApplicationsModule)
{
    EXPECT_EQ(shownBy([&] { xx_show_about(L"plan.mnu", rows, nullptr); }),
              "Host\n1.0\n4.2\n(c) Host" + shownRows);
    EXPECT_THAT(services.printed, IsEmpty());
}

TEST_F(About, CanBeOfAnotherModule)
{
    const std::wstring module
        = folder.write(L"plan.so", moduleWithVersion("Plan", "4.2.1", "(c) Plan"));
    EXPECT_EQ(shownBy([&] { xx_show_about(L"plan.mnu", rows, nullptr, module.c_str()); }),
              "Plan\n4.2.1\n4.2\n(c) Plan" + shownRows);
    for (const wchar_t* const none : {static_cast<const wchar_t*>(nullptr), L""}) {
        EXPECT_EQ(shownBy([&] { xx_show_about(L"plan.mnu", {}, nullptr, none); }),
                  "Host\n1.0\n4.2\n(c) Host");
    }
}

TEST_F(About, ReportsAMenuFileThatIsNotThere)
{
    EXPECT_EQ(shownBy([&] { xx_show_about(L"none.mnu", {}, nullptr); }),
              "Host\n1.0\n(menu file not found)\n(c) Host");
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file xx_about.cpp on line 117\n"
              L"(Cannot find menufile none.mnu, ec = 6542)");
    EXPECT_THAT(services.alerts, IsEmpty());
}

TEST_F(About, OfAModuleWithoutVersionAndAFileThatIsNotThereHasEmptyTexts)
{
    EXPECT_EQ(
        shownBy([&] { xx_show_about(L"plan.mnu", {}, nullptr, folder.path(L"plan.mnu").c_str()); }),
        "\n\n4.2\n");
    EXPECT_EQ(
        shownBy([&] { xx_show_about(L"plan.mnu", {}, nullptr, folder.path(L"none").c_str()); }),
        "\n\n4.2\n");
    services.module.clear();
    EXPECT_EQ(shownBy([] { xx_show_about(nullptr); }), "\n\nN/A\n");
    EXPECT_THAT(services.printed, IsEmpty());
}

TEST_F(About, WithAGivenVersionReadsNoMenuFile)
{
    EXPECT_EQ(shownBy([&] { xx_show_about_internal(L"7.0 beta", rows, nullptr); }),
              "Host\n1.0\n7.0 beta\n(c) Host" + shownRows);
    EXPECT_EQ(shownBy([] { xx_show_about_internal(nullptr, {}, nullptr); }),
              "Host\n1.0\n\n(c) Host");
    EXPECT_THAT(services.printed, IsEmpty());
}

TEST_F(About, StandsAboveTheWindowInUse)
{
    QDialog window;
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    shownBy([] { xx_show_about(nullptr); });
    EXPECT_EQ(owner, &window);
}

TEST_F(About, LeavesTheServicesAsTheyWere)
{
    shownBy([] { xx_show_about(nullptr); });
    EXPECT_EQ(&corma::services(), &services);
}

} // namespace

} // namespace corma::testing
