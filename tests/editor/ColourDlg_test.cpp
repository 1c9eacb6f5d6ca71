#include "editor/ColourDlg.h"
#include "editor/ColourTableModel.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

using corma::ColourTableModel;
using ::testing::ElementsAre;

namespace {

class ColourDlgTest : public ::testing::Test
{
protected:
    ColourDlg& show(int colour)
    {
        dialog = std::make_unique<ColourDlg>(colour);
        dialog->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        return *dialog;
    }

    template<class Widget> [[nodiscard]] Widget& at(const char* name) const
    {
        auto* const found = dialog->findChild<Widget*>(QString::fromUtf8(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    [[nodiscard]] QTableView& table() const { return at<QTableView>("colours"); }

    [[nodiscard]] QPushButton& ok() const
    {
        return *at<QDialogButtonBox>("buttons").button(QDialogButtonBox::Ok);
    }

    [[nodiscard]] int selected() const
    {
        const QModelIndexList cells = table().selectionModel()->selectedIndexes();
        return cells.isEmpty() ? 0 : ColourTableModel::colourAt(cells.first());
    }

    [[nodiscard]] std::string text() const { return at<QLineEdit>("number").text().toStdString(); }

    void press(Qt::Key key) const { QTest::keyClick(dialog->focusWidget(), key); }

    void clickColour(int colour) const
    {
        const auto* const model = qobject_cast<ColourTableModel*>(table().model());
        const QPoint place = table().visualRect(model->indexOf(colour)).center();
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, place);
    }

    std::unique_ptr<ColourDlg> dialog;
};

TEST_F(ColourDlgTest, BeginsWithTheColourSelected)
{
    show(12);
    EXPECT_EQ(dialog->windowTitle().toStdString(), "Colour");
    EXPECT_EQ(selected(), 12);
    EXPECT_EQ(text(), "12");
    EXPECT_EQ(dialog->chosen(), 12);
    EXPECT_EQ(dialog->focusWidget(), &table());
}

TEST_F(ColourDlgTest, AllColoursAreInSight)
{
    show(1);
    const auto* const model = qobject_cast<ColourTableModel*>(table().model());
    for (int colour = 1; colour <= 255; ++colour) {
        const QRect cell = table().visualRect(model->indexOf(colour));
        EXPECT_TRUE(table().viewport()->rect().contains(cell)) << colour;
        EXPECT_GE(cell.width(), 16);
    }
}

TEST_F(ColourDlgTest, KeysGoFromColourToColour)
{
    show(1);
    press(Qt::Key_Right);
    EXPECT_EQ(selected(), 2);
    EXPECT_EQ(text(), "2");
    press(Qt::Key_Down);
    EXPECT_EQ(selected(), 28);
    press(Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->chosen(), 28);
}

TEST_F(ColourDlgTest, AClickSelectsAndADoubleClickEnds)
{
    show(256);
    EXPECT_EQ(selected(), 0);
    clickColour(200);
    EXPECT_EQ(dialog->chosen(), 200);
    EXPECT_TRUE(dialog->isVisible());
    at<QPushButton>("byBlock").click();
    EXPECT_EQ(dialog->chosen(), 0);
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(text(), "ByBlock");
    clickColour(200); // the same cell again
    EXPECT_EQ(dialog->chosen(), 200);
    const auto* const model = qobject_cast<ColourTableModel*>(table().model());
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {},
                       table().visualRect(model->indexOf(200)).center());
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(ColourDlgTest, TheWordsAreButtonsThatShowWhichIsMeant)
{
    show(256);
    EXPECT_EQ(text(), "ByLayer");
    EXPECT_TRUE(at<QPushButton>("byLayer").isChecked());
    EXPECT_FALSE(at<QPushButton>("byBlock").isChecked());
    at<QPushButton>("byLayer").click(); // again
    EXPECT_TRUE(at<QPushButton>("byLayer").isChecked());
    at<QPushButton>("byBlock").click();
    EXPECT_FALSE(at<QPushButton>("byLayer").isChecked());
    EXPECT_TRUE(at<QPushButton>("byBlock").isChecked());
}

TEST_F(ColourDlgTest, ANumberIsTyped)
{
    show(1);
    auto& number = at<QLineEdit>("number");
    number.setFocus();
    number.selectAll();
    QTest::keyClicks(&number, QStringLiteral("25"));
    EXPECT_EQ(selected(), 25);
    QTest::keyClicks(&number, QStringLiteral("7"));
    EXPECT_EQ(text(), "257");
    EXPECT_FALSE(ok().isEnabled());
    EXPECT_EQ(selected(), 0);
    press(Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    number.selectAll();
    QTest::keyClicks(&number, QStringLiteral("bylayer"));
    EXPECT_TRUE(ok().isEnabled());
    EXPECT_EQ(text(), "bylayer");
    EXPECT_TRUE(at<QPushButton>("byLayer").isChecked());
    press(Qt::Key_Return);
    EXPECT_EQ(dialog->chosen(), 256);
}

TEST_F(ColourDlgTest, ANumberThatIsNoColourCannotBeTaken)
{
    show(999);
    EXPECT_EQ(text(), "999");
    EXPECT_FALSE(ok().isEnabled());
    clickColour(5);
    EXPECT_TRUE(ok().isEnabled());
}

TEST_F(ColourDlgTest, EscapeChoosesNothing)
{
    show(1);
    press(Qt::Key_Right);
    press(Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
}

TEST_F(ColourDlgTest, WhatIsReadOnlyIsShown)
{
    show(30).setReadOnly();
    EXPECT_EQ(selected(), 30);
    for (const char* name : {"colours", "number", "byLayer", "byBlock"}) {
        EXPECT_FALSE(at<QWidget>(name).isEnabled()) << name;
    }
}

TEST_F(ColourDlgTest, TabGoesAsOneReadsAndAllHasAName)
{
    show(1);
    std::vector<std::string> names;
    for (int i = 0; i < 6; ++i) {
        QWidget* const widget = dialog->focusWidget();
        names.push_back(widget->objectName().toStdString());
        const auto* const button = qobject_cast<QPushButton*>(widget);
        EXPECT_FALSE(widget->accessibleName().isEmpty()
                     && (button == nullptr || button->text().isEmpty()))
            << names.back();
        press(Qt::Key_Tab);
    }
    EXPECT_THAT(names, ElementsAre("colours", "number", "byLayer", "byBlock", "", ""));
    EXPECT_EQ(dialog->focusWidget(), &table());
}

} // namespace
