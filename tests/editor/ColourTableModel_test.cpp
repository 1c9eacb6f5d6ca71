#include "editor/ColourTableModel.h"

#include <QAbstractItemModelTester>
#include <QColor>

#include <gtest/gtest.h>
#include <map>

using corma::ColourTableModel;

namespace {

TEST(ColourTableModel, HasEachColourOnce)
{
    ColourTableModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::map<int, int> counts;
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            ++counts[ColourTableModel::colourAt(model.index(row, column))];
        }
    }
    counts.erase(0); // cells without a colour
    ASSERT_EQ(counts.size(), 255U);
    for (const auto& [colour, count] : counts) {
        EXPECT_EQ(count, 1) << colour;
        EXPECT_EQ(ColourTableModel::colourAt(model.indexOf(colour)), colour);
    }
}

TEST(ColourTableModel, ByBlockAndByLayerAreNoCells)
{
    const ColourTableModel model;
    for (const int other : {0, 256, -1, 1000}) {
        EXPECT_FALSE(model.indexOf(other).isValid()) << other;
    }
    EXPECT_EQ(ColourTableModel::colourAt({}), 0);
}

TEST(ColourTableModel, ACellTellsItsColourInEachWay)
{
    const ColourTableModel model;
    const QModelIndex red = model.indexOf(1);
    EXPECT_EQ(red.data(Qt::BackgroundRole).value<QColor>(), QColor(Qt::red));
    EXPECT_EQ(red.data(Qt::ToolTipRole).toString().toStdString(), "Colour 1");
    EXPECT_EQ(red.data(Qt::AccessibleTextRole).toString().toStdString(), "Colour 1");
    EXPECT_EQ(red.data(Qt::AccessibleDescriptionRole).toString().toStdString(), "#ff0000");
    EXPECT_TRUE(red.flags().testFlag(Qt::ItemIsSelectable));
}

TEST(ColourTableModel, ACellWithoutAColourCannotBeSelected)
{
    const ColourTableModel model;
    const QModelIndex empty = model.index(0, 12);
    EXPECT_EQ(empty.flags(), Qt::NoItemFlags);
    EXPECT_FALSE(empty.data(Qt::BackgroundRole).isValid());
    EXPECT_FALSE(empty.data(Qt::ToolTipRole).isValid());
}

} // namespace
