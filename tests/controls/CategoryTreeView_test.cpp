#include "controls/CategoryTreeView.h"

#include <QLineEdit>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QtTest>

#include <gtest/gtest.h>

namespace corma {

namespace {

class CategoryTree : public ::testing::Test
{
protected:
    CategoryTree()
    {
        auto* root = new QStandardItem(QStringLiteral("General"));
        root->appendRow(new QStandardItem(QStringLiteral("Walls")));
        root->appendRow(new QStandardItem(QStringLiteral("Doors")));
        model.appendRow(root);
        tree.setModel(&model);
        tree.setCurrentIndex(top());
    }

    [[nodiscard]] QModelIndex top() const { return model.index(0, 0); }

    [[nodiscard]] QString current() const { return tree.currentIndex().data().toString(); }

    QStandardItemModel model;
    CategoryTreeView tree;
};

TEST_F(CategoryTree, HasNoHeader)
{
    EXPECT_TRUE(tree.isHeaderHidden());
}

TEST_F(CategoryTree, TellsOfItsKeys)
{
    const std::pair<Qt::Key, void (CategoryTreeView::*)()> keys[] = {
        {Qt::Key_Insert, &CategoryTreeView::insertPressed},
        {Qt::Key_Delete, &CategoryTreeView::removePressed},
        {Qt::Key_F2, &CategoryTreeView::editPressed},
        {Qt::Key_Right, &CategoryTreeView::rightPressed},
        {Qt::Key_Down, &CategoryTreeView::movedVertically},
    };
    for (const auto& [key, signal] : keys) {
        const QSignalSpy spy(&tree, signal);
        ASSERT_TRUE(spy.isValid());
        for (const auto& [other, otherSignal] : keys) {
            QTest::keyClick(&tree, other);
        }
        EXPECT_EQ(spy.count(), 1) << key;
        QTest::keyClick(&tree, key, Qt::KeypadModifier);
        EXPECT_EQ(spy.count(), 2) << key;
        QTest::keyClick(&tree, key, Qt::ControlModifier);
        QTest::keyClick(&tree, key, Qt::ShiftModifier);
        EXPECT_EQ(spy.count(), 2) << key;
    }
}

TEST_F(CategoryTree, TellsOfAVerticalMoveBeforeItIsMade)
{
    tree.expandAll();
    QStringList before;
    QObject::connect(&tree, &CategoryTreeView::movedVertically, &tree,
                     [&] { before << current(); });
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(current(), QStringLiteral("Walls"));
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_Up);
    EXPECT_EQ(current(), QStringLiteral("Walls"));
    EXPECT_EQ(
        before,
        QStringList({QStringLiteral("General"), QStringLiteral("Walls"), QStringLiteral("Doors")}));
}

TEST_F(CategoryTree, StillOpensAnItemByRight)
{
    bool wasOpen = true;
    QObject::connect(&tree, &CategoryTreeView::rightPressed, &tree,
                     [&] { wasOpen = tree.isExpanded(top()); });
    QTest::keyClick(&tree, Qt::Key_Right);
    EXPECT_FALSE(wasOpen);
    EXPECT_TRUE(tree.isExpanded(top()));
}

TEST_F(CategoryTree, EditsNothingInPlace)
{
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(top()).center());
    QTest::keyClick(&tree, Qt::Key_F2);
    EXPECT_EQ(tree.findChild<QLineEdit*>(), nullptr);
}

TEST_F(CategoryTree, LeavesEnterToTheDialog)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&tree, &press);
    EXPECT_FALSE(press.isAccepted());
}

} // namespace

} // namespace corma
