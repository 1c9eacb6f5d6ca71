#pragma once

#include <corma/xx_gridListCtrl.h>

#include <QtTest>

#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>
#include <vector>

namespace corma::testing {

inline QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/// Keeps what setRowColor() was called with.
class RecordingList : public xx_gridListCtrl
{
public:
    void setRowColor(int row, int column, const QColor& cellColor, const QColor& rowColor) override
    {
        colored.emplace_back(row, column);
        xx_gridListCtrl::setRowColor(row, column, cellColor, rowColor);
    }

    std::vector<std::pair<int, int>> colored; // rows and columns
};

/// A list of three columns and four rows; the text of a cell is its row and column.
class GridListTest : public ::testing::Test
{
protected:
    static constexpr int kRows = 4;
    static constexpr int kColumns = 3;

    GridListTest()
    {
        list.resize(400, 300);
        list.setGridStyle(0);
        for (int column = 0; column < kColumns; ++column) {
            list.insertColumn(column, {text("column ") + QString::number(column)});
        }
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column) {
                list.setCellText(row, column, 0, textOf(row, column), {});
            }
        }
    }

    static QString textOf(int row, int column)
    {
        return QStringLiteral("%1,%2").arg(row).arg(column);
    }

    void show()
    {
        list.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    }

    [[nodiscard]] QPoint centerOf(int row, int column) const
    {
        return list.visualRect(list.model()->index(row, column)).center();
    }

    void press(int row, int column, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(list.viewport(), button, {}, centerOf(row, column));
        QTest::mouseRelease(list.viewport(), button, {}, centerOf(row, column));
    }

    void pressKeys(std::initializer_list<Qt::Key> keys)
    {
        for (const Qt::Key key : keys) {
            QTest::keyClick(&list, key);
        }
    }

    // The colour and the flags that a cell has while its row is selected.
    QColor selectedBack(int row, int column)
    {
        return list.cellStyle(row, column).whileSelected().backColor;
    }

    unsigned selectedFlags(int row, int column)
    {
        return list.cellStyle(row, column).whileSelected().styleFlags;
    }

    RecordingList list;
};

} // namespace corma::testing
