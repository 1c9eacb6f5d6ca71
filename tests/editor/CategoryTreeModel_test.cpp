#include "editor/CategoryTreeModel.h"

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

using Tester = QAbstractItemModelTester;

std::string textAt(const QModelIndex& index)
{
    return index.data().toString().toStdString();
}

/// Two included files above a root with two categories.
class CategoryTreeModelTest : public ::testing::Test
{
protected:
    CategoryTreeModelTest()
    {
        void* const root = tree.insertItem(L"General", nullptr);
        tree.insertItem(L"Tekst", root);
        tree.insertItem(L"Lijn", root);
        tree.insertIncludedFile(L"b.ini", 1);
        tree.insertIncludedFile(L"a.ini", 0);
    }

    TreeContents tree {9};
    TreeContents other {9};
    CategoryTreeModel model;
    Tester tester {&model, Tester::FailureReportingMode::Fatal};
};

TEST_F(CategoryTreeModelTest, IsEmptyUntilItShowsATree)
{
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(CategoryTreeModel::itemAt({}), nullptr);
    EXPECT_FALSE(model.indexOf(tree.first()).isValid());
}

TEST_F(CategoryTreeModelTest, HasTheItemsOfTheTree)
{
    model.show(tree);
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.columnCount(), 1);
    EXPECT_EQ(textAt(model.index(0, 0)), "a.ini");
    EXPECT_EQ(textAt(model.index(1, 0)), "b.ini");
    const QModelIndex root = model.index(2, 0);
    EXPECT_EQ(textAt(root), "General");
    ASSERT_EQ(model.rowCount(root), 2);
    EXPECT_EQ(textAt(model.index(0, 0, root)), "Tekst");
    EXPECT_EQ(textAt(model.index(1, 0, root)), "Lijn");
    EXPECT_EQ(model.parent(model.index(1, 0, root)), root);
    EXPECT_EQ(model.rowCount(model.index(0, 0, root)), 0);
    EXPECT_FALSE(model.index(2, 0, root).isValid());
}

TEST_F(CategoryTreeModelTest, FindsAnItemByItsIndexAndBack)
{
    model.show(tree);
    const QModelIndex line = model.index(1, 0, model.index(2, 0));
    const TreeContents::Item* const item = CategoryTreeModel::itemAt(line);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->text, L"Lijn");
    EXPECT_EQ(model.indexOf(item), line);
    EXPECT_FALSE(model.indexOf(nullptr).isValid());
    const TreeContents::Item stranger {.text = L"Lijn"};
    EXPECT_FALSE(model.indexOf(&stranger).isValid());
}

TEST_F(CategoryTreeModelTest, OnlyAnIncludedFileHasAnIcon)
{
    model.show(tree);
    EXPECT_TRUE(model.index(0, 0).data(Qt::DecorationRole).canConvert<QIcon>());
    EXPECT_FALSE(model.index(2, 0).data(Qt::DecorationRole).isValid());
    EXPECT_EQ(model.index(0, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("a.ini"));
    EXPECT_FALSE(model.index(0, 0).data(Qt::EditRole).isValid());
    EXPECT_FALSE(model.flags(model.index(0, 0)).testFlag(Qt::ItemIsEditable));
}

TEST_F(CategoryTreeModelTest, AnotherTreeTakesItsPlace)
{
    model.show(tree);
    const QPersistentModelIndex former = model.index(0, 0);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    other.insertItem(L"Algemeen", nullptr);
    model.show(other);
    EXPECT_EQ(reset.size(), 1);
    EXPECT_FALSE(former.isValid());
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(textAt(model.index(0, 0)), "Algemeen");
}

} // namespace

} // namespace corma::testing
