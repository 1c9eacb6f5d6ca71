#include "editor/AboutCfgDeskDlg.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

TEST(AboutCfgDeskDlg, TellsTheProgramAndItsVersion)
{
    AboutCfgDeskDlg box(nullptr);
    box.show();
    EXPECT_EQ(box.windowTitle(), QStringLiteral("About CfgDeskExe"));
    EXPECT_EQ(box.findChild<QLabel*>(QStringLiteral("line"))->text(),
              QStringLiteral("Ini Editor Version 1.0"));
    EXPECT_FALSE(box.findChild<QLabel*>(QStringLiteral("icon"))->pixmap().isNull());
}

TEST(AboutCfgDeskDlg, CannotBeMadeLarger)
{
    AboutCfgDeskDlg box(nullptr);
    box.show();
    EXPECT_EQ(box.minimumSize(), box.maximumSize());
    EXPECT_EQ(box.size(), box.minimumSize());
}

TEST(AboutCfgDeskDlg, OkEnterAndEscapeCloseIt)
{
    AboutCfgDeskDlg box(nullptr);
    box.show();
    QTest::mouseClick(
        box.findChild<QDialogButtonBox*>(QStringLiteral("buttons"))->button(QDialogButtonBox::Ok),
        Qt::LeftButton);
    EXPECT_FALSE(box.isVisible());
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        box.show();
        QTest::keyClick(&box, key);
        EXPECT_FALSE(box.isVisible()) << key;
    }
}
