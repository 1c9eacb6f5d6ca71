#include "controls/GridModel.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>
#include <vector>

namespace corma {

namespace {

QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

// A model with its columns and rows, under Qt's own tester.
class Grid : public ::testing::Test
{
protected:
    void addColumns(int count)
    {
        for (int i = 0; i < count; ++i) {
            model.addColumn(i, {QString::number(i)});
        }
    }

    void addRow(std::initializer_list<const char*> texts)
    {
        const int row = model.rowCount();
        model.addRow(row, text(*texts.begin()), std::make_unique<ItemStruct>());
        int column = 0;
        for (const char* const one : texts) {
            model.setText(row, column++, text(one));
        }
    }

    [[nodiscard]] QString textsOfRow(int row) const
    {
        QStringList texts;
        for (int column = 0; column < model.columnCount(); ++column) {
            texts += model.text(row, column);
        }
        return texts.join(u'|');
    }

    // The records of a row by column, for what becomes of them.
    [[nodiscard]] std::vector<ItemStruct*> recordsOf(int row) const
    {
        std::vector<ItemStruct*> records;
        for (int column = 0; column < model.columnCount(); ++column) {
            records.push_back(&model.cell(row, column));
        }
        return records;
    }

    GridModel model;
    QAbstractItemModelTester tester {&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(Grid, IsEmptyAtTheStart)
{
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 0);
    EXPECT_FALSE(model.hasRow(0));
    EXPECT_FALSE(model.hasCell(0, 0));
}

TEST_F(Grid, ShowsItsTextsAndAlignments)
{
    model.addColumn(0, {text("Name")});
    model.addColumn(1, {text("Count"), Qt::AlignRight});
    addRow({"doors", "7"});
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), text("Count"));
    const QModelIndex count = model.index(0, 1);
    EXPECT_EQ(count.data().toString(), text("7"));
    EXPECT_EQ(count.data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::TextAlignmentRole),
              count.data(Qt::TextAlignmentRole));
    EXPECT_FALSE(count.data(Qt::DecorationRole).isValid());
    EXPECT_FALSE(model.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

TEST_F(Grid, HasARecordForEachCell)
{
    addColumns(3);
    addRow({"a"});
    const auto records = recordsOf(0);
    EXPECT_EQ(records[0]->cells.size(), 2U);
    EXPECT_EQ(records[0]->cells[0].get(), records[1]);
    EXPECT_EQ(records[0]->cells[1].get(), records[2]);
}

TEST_F(Grid, InsertsARowBetweenOthers)
{
    addColumns(2);
    addRow({"a", "1"});
    addRow({"b", "2"});
    model.addRow(1, text("new"), std::make_unique<ItemStruct>());
    EXPECT_EQ(textsOfRow(0), text("a|1"));
    EXPECT_EQ(textsOfRow(1), text("new|"));
    EXPECT_EQ(textsOfRow(2), text("b|2"));
}

TEST_F(Grid, PutsARowBeyondTheEndAtTheEnd)
{
    addColumns(1);
    addRow({"a"});
    model.addRow(9, text("b"), std::make_unique<ItemStruct>());
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(textsOfRow(1), text("b"));
}

TEST_F(Grid, ANewColumnBringsANewRecordToEachRow)
{
    addColumns(3);
    addRow({"a", "b", "c"});
    const auto before = recordsOf(0);
    ASSERT_EQ(model.addColumn(2, {text("new")}), 2);
    const auto after = recordsOf(0);
    EXPECT_EQ(textsOfRow(0), text("a|b||c"));
    ASSERT_EQ(after.size(), 4U);
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(after[1], before[1]);
    EXPECT_EQ(after[3], before[2]);
}

TEST_F(Grid, ANewFirstColumnTakesTheRecordOfTheRow)
{
    addColumns(2);
    addRow({"a", "b"});
    const auto before = recordsOf(0);
    model.addColumn(0, {text("new")});
    const auto after = recordsOf(0);
    EXPECT_EQ(textsOfRow(0), text("|a|b"));
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(after[2], before[1]);
}

TEST_F(Grid, AColumnBeyondTheEndIsTheLast)
{
    addColumns(1);
    addRow({"a"});
    EXPECT_EQ(model.addColumn(7, {text("new")}), 1);
    EXPECT_EQ(recordsOf(0).size(), 2U);
}

TEST_F(Grid, AColumnGoesWithItsRecords)
{
    addColumns(3);
    addRow({"a", "b", "c"});
    const auto before = recordsOf(0);
    EXPECT_TRUE(model.takeColumn(1));
    const auto after = recordsOf(0);
    EXPECT_EQ(textsOfRow(0), text("a|c"));
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(after[1], before[2]);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), text("2"));
}

TEST_F(Grid, TheFirstColumnLeavesTheRecordOfTheRow)
{
    addColumns(3);
    addRow({"a", "b", "c"});
    const auto before = recordsOf(0);
    EXPECT_TRUE(model.takeColumn(0));
    const auto after = recordsOf(0);
    EXPECT_EQ(textsOfRow(0), text("b|c"));
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(after[1], before[2]) << "that of the second column went";
}

TEST_F(Grid, TheFirstOfTwoColumnsLeavesTheRows)
{
    addColumns(2);
    addRow({"a", "b"});
    EXPECT_TRUE(model.takeColumn(0));
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(textsOfRow(0), text("b"));
}

TEST_F(Grid, TheLastColumnTakesTheRowsAlong)
{
    addColumns(1);
    addRow({"a"});
    addRow({"b"});
    EXPECT_TRUE(model.takeColumn(0));
    EXPECT_EQ(model.columnCount(), 0);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.takeColumn(0));
}

TEST_F(Grid, StylesOfColumnsMoveWithThem)
{
    addColumns(2);
    EXPECT_EQ(model.columnStyle(0), nullptr);
    ItemStruct* const style = &model.makeColumnStyle(1);
    EXPECT_EQ(&model.makeColumnStyle(1), style);
    model.addColumn(0, {text("new")});
    EXPECT_EQ(model.columnStyle(0), nullptr);
    EXPECT_EQ(model.columnStyle(2), style);
    model.takeColumn(1);
    EXPECT_EQ(model.columnStyle(1), style);
    model.takeColumn(1);
    EXPECT_EQ(model.columnStyle(0), nullptr);
}

TEST_F(Grid, AStyleOfARowIsMadeWhenAskedFor)
{
    addColumns(2);
    addRow({"a"});
    EXPECT_EQ(model.rowStyle(0), nullptr);
    ItemStruct* const style = &model.makeRowStyle(0);
    EXPECT_EQ(&model.makeRowStyle(0), style);
    EXPECT_EQ(model.rowStyle(0), style);
    EXPECT_EQ(model.cell(0, 0).rowStyle.get(), style);
}

TEST_F(Grid, ARowGoes)
{
    addColumns(1);
    addRow({"a"});
    addRow({"b"});
    EXPECT_TRUE(model.takeRow(0));
    EXPECT_EQ(textsOfRow(0), text("b"));
    EXPECT_FALSE(model.takeRow(1));
    EXPECT_FALSE(model.takeRow(-1));
    model.clear();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 1);
    model.clear();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(Grid, LeavesWhatIsOutOfRangeAlone)
{
    addColumns(2);
    addRow({"a", "b"});
    for (const auto& [row, column] : {std::pair {0, 2}, {0, -1}, {1, 0}, {-1, 0}}) {
        EXPECT_FALSE(model.setText(row, column, text("x")));
        EXPECT_TRUE(model.text(row, column).isEmpty());
        EXPECT_FALSE(model.hasCell(row, column));
    }
    EXPECT_FALSE(model.takeColumn(2));
    EXPECT_FALSE(model.takeColumn(-1));
    EXPECT_EQ(textsOfRow(0), text("a|b"));
}

TEST_F(Grid, TellsOfATextThatChanges)
{
    addColumns(2);
    addRow({"a", "b"});
    int told = 0;
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& first, const QModelIndex& last) {
                         ++told;
                         EXPECT_EQ(first, model.index(0, 1));
                         EXPECT_EQ(last, first);
                     });
    EXPECT_TRUE(model.setText(0, 1, text("c")));
    EXPECT_EQ(told, 1);
}

} // namespace

} // namespace corma
