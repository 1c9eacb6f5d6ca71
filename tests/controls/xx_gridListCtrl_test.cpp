#include "TimerRecorder.h"
#include <corma/xx_gridListCtrl.h>

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QtTest>

#include <gtest/gtest.h>
#include <tuple>
#include <vector>

namespace {

QString text(const char* latin1)
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
class GridList : public ::testing::Test
{
protected:
    static constexpr int kRows = 4;
    static constexpr int kColumns = 3;

    GridList()
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

TEST_F(GridList, StartsWithoutACurrentCell)
{
    const xx_gridListCtrl fresh;
    EXPECT_EQ(fresh.currentColumn(), -1);
    EXPECT_EQ(fresh.selectionMark(), -1);
    EXPECT_EQ(fresh.currentCellColor(), QColor(0x7D, 0x7D, 0x7D));
    EXPECT_EQ(fresh.rowColor(), QColor(0, 0, 0));
    EXPECT_EQ(fresh.maxDecimals(), 32);
    EXPECT_FALSE(fresh.ownDrawText());
    EXPECT_EQ(fresh.gridStyle(), 0);
    EXPECT_EQ(fresh.rowCount(), 0);
    EXPECT_EQ(fresh.columnCount(), 0);
    EXPECT_EQ(fresh.highlightBack(), fresh.palette().color(QPalette::Highlight));
    EXPECT_EQ(fresh.highlightText(), fresh.palette().color(QPalette::HighlightedText));
}

TEST_F(GridList, IsAFlatReportUnderQtsOwnTester)
{
    const QAbstractItemModelTester tester(list.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_FALSE(list.rootIsDecorated());
    EXPECT_TRUE(list.uniformRowHeights());
    list.deleteRow(1);
    list.insertColumn(1, {text("new")});
    list.setCellText(0, 0, 0, text("first"), {});
    list.deleteColumn(0);
    list.deleteAllRows();
    EXPECT_EQ(list.rowCount(), 0);
}

TEST_F(GridList, AStyleIsKeptAndMakesRowsWholeAndHeadersMovable)
{
    list.setGridStyle(17);
    EXPECT_EQ(list.gridStyle(), 17);
    EXPECT_EQ(list.selectionBehavior(), QAbstractItemView::SelectRows);
    EXPECT_TRUE(list.header()->sectionsMovable());
    EXPECT_TRUE(list.header()->isFirstSectionMovable());
}

// --- columns and rows ----------------------------------------------------------------------------

TEST_F(GridList, AColumnHasWhatItsDescriptionTells)
{
    EXPECT_EQ(list.insertColumn(1, {text("new"), Qt::AlignRight, 77, 3}), 1);
    EXPECT_EQ(list.columnCount(), 4);
    EXPECT_EQ(list.model()->headerData(1, Qt::Horizontal).toString(), text("new"));
    EXPECT_EQ(list.columnWidth(1), 77);
    EXPECT_EQ(list.header()->visualIndex(1), 3);
    EXPECT_EQ(list.text(0, 1), QString());
    EXPECT_EQ(list.text(0, 2), textOf(0, 1));
}

TEST_F(GridList, AColumnIsPutWhereThereIsPlace)
{
    EXPECT_EQ(list.insertColumn(99, {text("new"), Qt::AlignLeft, -1, 99}), 3);
    EXPECT_EQ(list.header()->visualIndex(3), 3);
    EXPECT_EQ(list.insertColumn(-1, {text("none")}), -1);
    EXPECT_EQ(list.columnCount(), 4);
}

TEST_F(GridList, ATextOfTheFirstColumnInsertsARow)
{
    list.setCellText(1, 0, 5, text("new"), text("a tip"));
    EXPECT_EQ(list.rowCount(), kRows + 1);
    EXPECT_EQ(list.text(1, 0), text("new"));
    EXPECT_EQ(list.text(2, 0), textOf(1, 0));
    EXPECT_EQ(list.cellStyle(1, 0).image, 5);
    EXPECT_EQ(list.cellStyle(1, 0).tipText, text("a tip"));
    EXPECT_EQ(list.cellStyle(1, 0).cells.size(), 2U);
}

TEST_F(GridList, ARowBeyondTheEndIsTheLast)
{
    list.setCellText(99, 0, 0, text("new"), {});
    EXPECT_EQ(list.text(kRows, 0), text("new"));
}

TEST_F(GridList, ARowWithoutATipHasItsText)
{
    list.setCellText(0, 0, 0, text("new"), {});
    EXPECT_EQ(list.cellStyle(0, 0).tipText, text("new"));
}

TEST_F(GridList, ATextOfAnotherColumnIsThatOfTheRowThatIsThere)
{
    list.setCellText(1, 2, 5, text("new"), text("a tip"));
    EXPECT_EQ(list.rowCount(), kRows);
    EXPECT_EQ(list.text(1, 2), text("new"));
    EXPECT_EQ(list.cellStyle(1, 2).image, 0);
    EXPECT_TRUE(list.cellStyle(1, 2).tipText.isEmpty());
}

TEST_F(GridList, ATextOutOfRangeHasNoEffect)
{
    list.setCellText(0, kColumns, 0, text("x"), {});
    list.setCellText(kRows, 1, 0, text("x"), {});
    list.setCellText(-1, 0, 0, text("x"), {});
    list.setCellText(0, -1, 0, text("x"), {});
    EXPECT_EQ(list.rowCount(), kRows);
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            EXPECT_EQ(list.text(row, column), textOf(row, column));
        }
    }
}

TEST_F(GridList, WithoutColumnsThereAreNoRows)
{
    xx_gridListCtrl empty;
    empty.setCellText(0, 0, 0, text("x"), {});
    EXPECT_EQ(empty.rowCount(), 0);
}

TEST_F(GridList, AnEditorStoresTextInAnyColumn)
{
    list.setText(1, 0, text("new"));
    EXPECT_EQ(list.rowCount(), kRows);
    EXPECT_EQ(list.text(1, 0), text("new"));
    list.setText(kRows, 0, text("x"));
    EXPECT_EQ(list.rowCount(), kRows);
}

TEST_F(GridList, DeletesRowsAndColumns)
{
    EXPECT_TRUE(list.deleteRow(0));
    EXPECT_EQ(list.text(0, 0), textOf(1, 0));
    EXPECT_FALSE(list.deleteRow(kRows - 1));
    EXPECT_TRUE(list.deleteColumn(1));
    EXPECT_EQ(list.text(0, 1), textOf(1, 2));
    EXPECT_FALSE(list.deleteColumn(2));
    list.deleteAllRows();
    EXPECT_EQ(list.rowCount(), 0);
    EXPECT_EQ(list.columnCount(), 2);
}

TEST_F(GridList, TheLastColumnTakesTheRowsAlong)
{
    list.deleteColumn(0);
    list.deleteColumn(0);
    EXPECT_EQ(list.rowCount(), kRows);
    list.deleteColumn(0);
    EXPECT_EQ(list.rowCount(), 0);
    list.grab(); // draws a list of nothing
}

// --- styles --------------------------------------------------------------------------------------

TEST_F(GridList, BackColorAndFlagsAreThoseOfTheSelectedCell)
{
    list.setBackColor(1, 2, Qt::green, false);
    list.setStyleFlags(1, 2, ItemStruct::kBold | ItemStruct::kHasBackColor, true);
    ItemStruct& plain = list.cellStyle(1, 2);
    EXPECT_EQ(plain.styleFlags, 0U);
    EXPECT_EQ(plain.backColor, QColor(Qt::black));
    ASSERT_NE(plain.selectedStyle, nullptr);
    EXPECT_EQ(plain.selectedStyle->backColor, QColor(Qt::green));
    EXPECT_EQ(plain.selectedStyle->styleFlags, 33U);
    EXPECT_TRUE(plain.selectedStyle->hasFontStyle);
}

TEST_F(GridList, TextColorIsThatOfThePlainCell)
{
    list.setTextColor(1, 2, Qt::green, true);
    EXPECT_EQ(list.cellStyle(1, 2).textColor, QColor(Qt::green));
    EXPECT_EQ(list.cellStyle(1, 2).styleFlags, 0U);
    EXPECT_EQ(list.cellStyle(1, 2).selectedStyle, nullptr);
}

TEST_F(GridList, StylesOutOfRangeHaveNoEffect)
{
    for (const auto& [row, column] : {std::pair {0, kColumns}, {kRows, 0}, {-1, 0}, {0, -1}}) {
        list.setTextColor(row, column, Qt::green, true);
        list.setBackColor(row, column, Qt::green, true);
        list.setStyleFlags(row, column, 1, true);
    }
    EXPECT_EQ(list.cellStyle(0, 0).selectedStyle, nullptr);
    EXPECT_EQ(list.cellStyle(0, 0).textColor, QColor(Qt::black));
}

TEST_F(GridList, ANewFontOfTheListDropsThoseThatWereMadeFromIt)
{
    list.cellStyle(0, 0).setFlags(ItemStruct::kBold);
    list.columnStyle(0).setFlags(ItemStruct::kBold);
    list.setCurrentIndex(list.model()->index(0, 0));
    list.grab();
    ASSERT_TRUE(list.cellStyle(0, 0).font);
    ASSERT_TRUE(list.columnStyle(0).font);
    QFont font = list.font();
    font.setPixelSize(30);
    list.setFont(font);
    EXPECT_FALSE(list.cellStyle(0, 0).font);
    EXPECT_FALSE(list.columnStyle(0).font);
    list.grab();
    EXPECT_EQ(list.cellStyle(0, 0).font->pixelSize(), 30);
}

TEST_F(GridList, AnotherPaletteBringsAnotherHighlight)
{
    QPalette palette = list.palette();
    palette.setColor(QPalette::Highlight, Qt::darkGreen);
    palette.setColor(QPalette::HighlightedText, Qt::yellow);
    list.setPalette(palette);
    EXPECT_EQ(list.highlightBack(), QColor(Qt::darkGreen));
    EXPECT_EQ(list.highlightText(), QColor(Qt::yellow));
}

// --- the colours of a row ------------------------------------------------------------------------

TEST_F(GridList, ARowIsColouredForTheTimeThatItIsSelected)
{
    list.setRowColor(2, 1, Qt::green, Qt::yellow);
    EXPECT_EQ(list.currentCellColor(), QColor(Qt::green));
    EXPECT_EQ(list.rowColor(), QColor(Qt::yellow));
    EXPECT_EQ(list.selectionMark(), 2);
    for (int column = 0; column < kColumns; ++column) {
        EXPECT_EQ(selectedBack(2, column), QColor(column == 1 ? Qt::green : Qt::yellow));
        EXPECT_EQ(selectedFlags(2, column), 32U);
        EXPECT_EQ(list.cellStyle(2, column).styleFlags, 0U);
    }
}

TEST_F(GridList, OnWhiteTheTextIsBlack)
{
    list.cellStyle(2, 1).textColor = Qt::red;
    list.setRowColor(2, 1, Qt::white, Qt::yellow);
    EXPECT_EQ(selectedFlags(2, 1), 48U);
    EXPECT_EQ(list.cellStyle(2, 1).whileSelected().textColor, QColor(Qt::black));
    EXPECT_EQ(list.cellStyle(2, 1).textColor, QColor(Qt::black));
    EXPECT_EQ(selectedFlags(2, 0), 32U);
    list.setRowColor(2, 1, Qt::green, QColor(0xFF, 0xFF, 0xFE));
    EXPECT_EQ(selectedFlags(2, 1), 32U);
    EXPECT_EQ(selectedFlags(2, 0), 32U);
}

TEST_F(GridList, AColourOutOfRangeIsOnlyStored)
{
    list.setRowColor(1, 1, Qt::red, Qt::blue);
    for (const auto& [row, column] : {std::pair {1, kColumns}, {1, -1}, {kRows, 0}, {-1, 0}}) {
        list.setRowColor(row, column, Qt::green, Qt::yellow);
        EXPECT_EQ(list.currentCellColor(), QColor(Qt::green));
        EXPECT_EQ(list.rowColor(), QColor(Qt::yellow));
        EXPECT_EQ(list.selectionMark(), 1);
        EXPECT_EQ(selectedBack(1, 1), QColor(Qt::red));
        EXPECT_EQ(selectedBack(1, 0), QColor(Qt::blue));
    }
}

TEST_F(GridList, TheColouringOfARowIsTimed)
{
    corma::testing::TimerRecorder recorder;
    list.setRowColor(1, 1, Qt::red, Qt::blue);
    EXPECT_EQ(recorder.text,
              L"Performance mark in xx_gridListCtrl.cpp, line 1990: 0 \u00b5s\n"
              L"Performance mark in xx_gridListCtrl.cpp, line 1993: 0 \u00b5s\n"
              L"Performance mark in xx_gridListCtrl.cpp, line 2000: 0 \u00b5s\n"
              L"Performance mark in xx_gridListCtrl.cpp, line 2002: 0 \u00b5s\n"
              L"Function xx_gridListCtrl::setRowColor took 0 \u00b5s\n");
    recorder.text.clear();
    list.setRowColor(1, kColumns, Qt::red, Qt::blue);
    EXPECT_EQ(recorder.text,
              L"Performance mark in xx_gridListCtrl.cpp, line 1990: 0 \u00b5s\n"
              L"Function xx_gridListCtrl::setRowColor took 0 \u00b5s\n");
}

// --- keys ----------------------------------------------------------------------------------------

TEST_F(GridList, ArrowsMoveTheCurrentCell)
{
    press(1, 1);
    pressKeys({Qt::Key_Right});
    EXPECT_EQ(list.currentColumn(), 2);
    pressKeys({Qt::Key_Left, Qt::Key_Left});
    EXPECT_EQ(list.currentColumn(), 0);
    pressKeys({Qt::Key_Down, Qt::Key_Down});
    EXPECT_EQ(list.selectionMark(), 3);
    pressKeys({Qt::Key_Up});
    EXPECT_EQ(list.selectionMark(), 2);
    EXPECT_EQ(list.colored,
              (std::vector<std::pair<int, int>> {{1, 2}, {1, 1}, {1, 0}, {2, 0}, {3, 0}, {2, 0}}));
}

TEST_F(GridList, ArrowsKeepTheColours)
{
    list.setRowColor(0, 0, Qt::green, Qt::yellow);
    press(1, 1);
    pressKeys({Qt::Key_Right});
    EXPECT_EQ(selectedBack(1, 2), QColor(Qt::green));
    EXPECT_EQ(selectedBack(1, 1), QColor(Qt::yellow));
}

TEST_F(GridList, TheEdgesStopTheArrows)
{
    press(0, 0);
    pressKeys({Qt::Key_Up, Qt::Key_Left});
    EXPECT_EQ(list.currentColumn(), 0);
    EXPECT_EQ(list.selectionMark(), 0);
    EXPECT_EQ(list.currentIndex(), list.model()->index(0, 0));
    press(kRows - 1, kColumns - 1);
    pressKeys({Qt::Key_Down, Qt::Key_Right});
    EXPECT_EQ(list.currentColumn(), kColumns - 1);
    EXPECT_EQ(list.selectionMark(), kRows - 1);
    EXPECT_EQ(list.currentIndex(), list.model()->index(kRows - 1, kColumns - 1));
}

TEST_F(GridList, NoCurrentColumnCountsAsTheFirst)
{
    list.onKeyDown(Qt::Key_Down);
    EXPECT_EQ(list.currentColumn(), -1);
    EXPECT_EQ(selectedBack(0, 0), QColor(0x7D, 0x7D, 0x7D));
    EXPECT_EQ(selectedBack(0, 1), QColor(0, 0, 0));
    list.onKeyDown(Qt::Key_Left);
    EXPECT_EQ(list.currentColumn(), -1);
    list.onKeyDown(Qt::Key_Right);
    EXPECT_EQ(list.currentColumn(), 0);
    EXPECT_EQ(list.colored, (std::vector<std::pair<int, int>> {{0, 0}, {0, 0}, {0, 0}}));
}

TEST_F(GridList, OtherKeysMoveNothing)
{
    press(1, 1);
    for (const auto key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_A, Qt::Key_F2, Qt::Key_Delete}) {
        list.onKeyDown(key);
    }
    EXPECT_TRUE(list.colored.empty());
    EXPECT_EQ(list.rowCount(), kRows);
}

TEST_F(GridList, ArrowsInAnEmptyListDoNothing)
{
    list.deleteAllRows();
    pressKeys({Qt::Key_Down, Qt::Key_Up, Qt::Key_Right, Qt::Key_Left});
    EXPECT_EQ(list.selectionMark(), -1);
    xx_gridListCtrl empty;
    QTest::keyClick(&empty, Qt::Key_Down);
    EXPECT_EQ(empty.selectionMark(), -1);
}

TEST_F(GridList, TheIndexThatScreenReadersFollowIsTheCurrentCell)
{
    press(1, 1);
    EXPECT_EQ(list.currentIndex(), list.model()->index(1, 1));
    pressKeys({Qt::Key_Right, Qt::Key_Down});
    EXPECT_EQ(list.currentIndex(), list.model()->index(2, 2));
    EXPECT_TRUE(list.selectionModel()->isRowSelected(2));
    EXPECT_FALSE(list.selectionModel()->isRowSelected(1));
}

TEST_F(GridList, AScreenReaderFindsTheNameAndTheCurrentCell)
{
    list.setAccessibleName(text("Doors"));
    QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&list);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->text(QAccessible::Name), text("Doors"));
    press(1, 1);
    pressKeys({Qt::Key_Right});
    QAccessibleInterface* const cell = reader->focusChild();
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->text(QAccessible::Name), textOf(1, 2));
}

TEST_F(GridList, ARowThatIsReachedByTheKeysComesIntoSight)
{
    for (int row = kRows; row < 200; ++row) {
        list.setCellText(row, 0, 0, text("row"), {});
    }
    show();
    press(3, 0);
    for (int i = 0; i < 100; ++i) {
        list.onKeyDown(Qt::Key_Down);
    }
    const QRect cell = list.visualRect(list.model()->index(103, 0));
    EXPECT_TRUE(list.viewport()->rect().contains(cell));
}

TEST_F(GridList, TheMarkGoesAlongWithTheFocusAndWithItsRow)
{
    press(1, 1);
    QTest::keyClick(&list, Qt::Key_End);
    EXPECT_EQ(list.selectionMark(), kRows - 1);
    list.setRowColor(2, 0, Qt::red, Qt::blue);
    EXPECT_EQ(list.selectionMark(), 2);
    EXPECT_EQ(list.currentIndex().row(), kRows - 1) << "the focus stays";
    list.deleteRow(0);
    EXPECT_EQ(list.selectionMark(), 1);
    list.deleteRow(1);
    EXPECT_EQ(list.selectionMark(), -1);
}

TEST_F(GridList, TheMarkStaysAtItsRowWhenOthersOrColumnsGo)
{
    press(3, 2);
    list.setRowColor(2, 0, Qt::red, Qt::blue);
    list.setCellText(3, 0, 0, text("behind"), {});
    EXPECT_EQ(list.selectionMark(), 2);
    list.setCellText(2, 0, 0, text("before"), {});
    EXPECT_EQ(list.selectionMark(), 3);
    list.deleteColumn(0);
    list.deleteColumn(0);
    EXPECT_EQ(list.selectionMark(), 3);
    list.deleteRow(4);
    EXPECT_EQ(list.selectionMark(), 3);
    list.deleteRow(0);
    EXPECT_EQ(list.selectionMark(), 2);
    list.deleteAllRows();
    EXPECT_EQ(list.selectionMark(), -1);
}

TEST_F(GridList, DeleteDeletesTheRowOfTheMark)
{
    press(1, 1);
    pressKeys({Qt::Key_Delete});
    EXPECT_EQ(list.rowCount(), kRows - 1);
    EXPECT_EQ(list.text(1, 0), textOf(2, 0));
    list.setRowColor(0, 0, Qt::red, Qt::blue);
    pressKeys({Qt::Key_Delete});
    EXPECT_EQ(list.text(0, 0), textOf(2, 0));
}

TEST_F(GridList, DeleteWithoutAMarkDeletesNothing)
{
    pressKeys({Qt::Key_Delete});
    EXPECT_EQ(list.rowCount(), kRows);
}

TEST_F(GridList, KeysWithAModifierAreNotItsOwn)
{
    press(1, 1);
    for (const auto modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::ShiftModifier}) {
        QTest::keyClick(&list, Qt::Key_Delete, modifier);
        QTest::keyClick(&list, Qt::Key_Right, modifier);
    }
    EXPECT_EQ(list.rowCount(), kRows);
    EXPECT_TRUE(list.colored.empty());
    QTest::keyClick(&list, Qt::Key_Delete, Qt::KeypadModifier);
    EXPECT_EQ(list.rowCount(), kRows - 1);
}

TEST_F(GridList, ItsKeysGoBeforeShortcutsOfTheWindow)
{
    QWidget window;
    QVBoxLayout layout(&window);
    layout.addWidget(&list);
    int triggered = 0;
    for (const auto key : {Qt::Key_Delete, Qt::Key_F2, Qt::Key_F3}) {
        QObject::connect(new QShortcut(key, &window), &QShortcut::activated, [&] { ++triggered; });
    }
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    list.setFocus();
    press(1, 1);
    const QSignalSpy edits(&list, &xx_gridListCtrl::beginLabelEdit);
    QTest::keyClick(window.windowHandle(), Qt::Key_F2);
    EXPECT_EQ(edits.count(), 1);
    QTest::keyClick(window.windowHandle(), Qt::Key_Delete);
    EXPECT_EQ(list.rowCount(), kRows - 1);
    EXPECT_EQ(triggered, 0);
    QTest::keyClick(window.windowHandle(), Qt::Key_F3);
    EXPECT_EQ(triggered, 1);
    layout.removeWidget(&list);
    list.setParent(nullptr);
}

// --- editing -------------------------------------------------------------------------------------

TEST_F(GridList, APressOnTheCurrentCellAsksToEditIt)
{
    const QSignalSpy edits(&list, &xx_gridListCtrl::beginLabelEdit);
    press(1, 2);
    EXPECT_EQ(edits.count(), 0);
    press(1, 2);
    ASSERT_EQ(edits.count(), 1);
    EXPECT_EQ(edits[0], (QVariantList {1, 2, textOf(1, 2)}));
    press(1, 0);
    EXPECT_EQ(edits.count(), 1) << "another column";
    press(2, 0);
    EXPECT_EQ(edits.count(), 1) << "another row";
    press(2, 0);
    ASSERT_EQ(edits.count(), 2) << "also in the first column";
    EXPECT_EQ(edits[1], (QVariantList {2, 0, textOf(2, 0)}));
}

TEST_F(GridList, TheSecondPressOfADoubleOneAsksToEdit)
{
    const QSignalSpy edits(&list, &xx_gridListCtrl::beginLabelEdit);
    const QSignalSpy doubleClicks(&list, &QAbstractItemView::doubleClicked);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, centerOf(1, 2));
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, centerOf(1, 2));
    EXPECT_GE(edits.count(), 1);
    EXPECT_EQ(edits.last(), (QVariantList {1, 2, textOf(1, 2)}));
    EXPECT_EQ(doubleClicks.count(), 1);
}

TEST_F(GridList, APressBesideTheRowsOrWithAnotherButtonAsksNothing)
{
    const QSignalSpy edits(&list, &xx_gridListCtrl::beginLabelEdit);
    press(1, 2);
    press(1, 2, Qt::RightButton);
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, {5, list.viewport()->height() - 5});
    EXPECT_EQ(edits.count(), 0);
    EXPECT_EQ(list.currentColumn(), 2);
}

TEST_F(GridList, F2AsksToEditTheCurrentCell)
{
    const QSignalSpy edits(&list, &xx_gridListCtrl::beginLabelEdit);
    press(1, 2);
    pressKeys({Qt::Key_Left, Qt::Key_F2});
    ASSERT_EQ(edits.count(), 1);
    EXPECT_EQ(edits[0], (QVariantList {1, 1, textOf(1, 1)}));
}

TEST_F(GridList, F2AsksNothingWithoutACurrentColumnOrASelectedRow)
{
    const QSignalSpy edits(&list, &xx_gridListCtrl::beginLabelEdit);
    list.onKeyDown(Qt::Key_Down); // a row, but no column
    pressKeys({Qt::Key_F2});
    EXPECT_EQ(edits.count(), 0);
    press(1, 2);
    list.clearSelection();
    pressKeys({Qt::Key_F2});
    EXPECT_EQ(edits.count(), 0);
}

TEST_F(GridList, NothingIsEditedByTheListItself)
{
    press(1, 1);
    press(1, 1);
    pressKeys({Qt::Key_F2, Qt::Key_X});
    EXPECT_EQ(list.findChild<QLineEdit*>(), nullptr);
}

TEST_F(GridList, ACellEditorMovesTheCurrentCell)
{
    const std::tuple<int, int, int> moves[] = {
        // key, column, row
        {Qt::Key_Right, 2, 1}, {Qt::Key_Left, 1, 1},  {Qt::Key_Up, 1, 0},
        {Qt::Key_Down, 1, 1},  {Qt::Key_Enter, 1, 2}, {Qt::Key_Return, 1, 3},
        {Qt::Key_A, 1, 3},     {Qt::Key_Tab, 1, 3},   {Qt::Key_Delete, 1, 3},
    };
    press(1, 1);
    for (const auto& [key, column, row] : moves) {
        EXPECT_EQ(list.message(xx_gridListCtrl::kCellKey, key), 1);
        EXPECT_EQ(list.currentColumn(), column) << key;
        EXPECT_EQ(list.selectionMark(), row) << key;
    }
    EXPECT_EQ(list.rowCount(), kRows);
}

TEST_F(GridList, MessagesHaveTheirNumbersAndAnswers)
{
    EXPECT_EQ(int(xx_gridListCtrl::kCellKey), 0x9A);
    EXPECT_EQ(int(xx_gridListCtrl::kCellEditor), 0x784);
    EXPECT_EQ(list.message(0x784), 1);
    EXPECT_EQ(list.message(0x784, Qt::Key_Down), 1);
    EXPECT_EQ(list.message(0x9B, Qt::Key_Down), 0);
    EXPECT_EQ(list.selectionMark(), -1);
}

// --- focus, scrolling ----------------------------------------------------------------------------

/// The list beside a field that has the focus.
class GridListBesideAField : public GridList
{
protected:
    GridListBesideAField()
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(&field);
        layout->addWidget(&list);
        window.resize(200, 120);
        window.show();
        window.activateWindow();
    }

    ~GridListBesideAField() override
    {
        list.setParent(nullptr);
        field.setParent(nullptr);
    }

    QWidget window;
    QLineEdit field;
};

TEST_F(GridListBesideAField, AMessageOfAKeyTakesTheFocus)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field.setFocus();
    list.message(xx_gridListCtrl::kCellEditor);
    EXPECT_TRUE(field.hasFocus());
    list.message(xx_gridListCtrl::kCellKey, Qt::Key_A);
    EXPECT_TRUE(list.hasFocus());
}

TEST_F(GridListBesideAField, ScrollingTakesTheFocus)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (QScrollBar* const bar : {list.horizontalScrollBar(), list.verticalScrollBar()}) {
        field.setFocus();
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        EXPECT_TRUE(list.hasFocus());
        field.setFocus();
        bar->setSliderDown(true);
        EXPECT_TRUE(list.hasFocus());
        bar->setSliderDown(false);
    }
}

TEST_F(GridListBesideAField, AWheelLeavesTheFocus)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field.setFocus();
    list.verticalScrollBar()->triggerAction(QAbstractSlider::SliderMove);
    EXPECT_TRUE(field.hasFocus());
}

TEST_F(GridListBesideAField, APressScrollsItsColumnIntoSight)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const int width = list.viewport()->width();
    ASSERT_LT(width, 200);
    for (int column = 0; column < kColumns; ++column) {
        list.setColumnWidth(column, 100);
    }
    const QPoint inSecond(110, list.visualRect(list.model()->index(0, 1)).center().y());
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, inSecond);
    EXPECT_EQ(list.horizontalScrollBar()->value(), 100);
    EXPECT_EQ(list.currentColumn(), 1);
    EXPECT_EQ(list.currentIndex(), list.model()->index(0, 1)) << "not what is under the point now";
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, {10, inSecond.y()});
    EXPECT_EQ(list.horizontalScrollBar()->value(), 100) << "it is wholly visible";
    list.horizontalScrollBar()->setValue(30);
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, {10, inSecond.y()});
    EXPECT_EQ(list.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(list.currentColumn(), 0);
}

// --- a header that was dragged -------------------------------------------------------------------

/// The last column is displayed first: the order is 2, 0, 1.
class DraggedGridList : public GridList
{
protected:
    DraggedGridList() { list.header()->moveSection(2, 0); }
};

TEST_F(DraggedGridList, ThePressTellsTheDisplayPosition)
{
    press(1, 2);
    EXPECT_EQ(list.currentColumn(), 0);
    press(1, 0);
    EXPECT_EQ(list.currentColumn(), 1);
}

TEST_F(DraggedGridList, KeysGoByWhatIsDisplayedAndColoursByTheColumn)
{
    press(1, 2);
    pressKeys({Qt::Key_Right});
    EXPECT_EQ(list.currentIndex(), list.model()->index(1, 0));
    EXPECT_EQ(selectedBack(1, 0), QColor(0x7D, 0x7D, 0x7D));
    EXPECT_EQ(selectedBack(1, 2), QColor(0, 0, 0));
    pressKeys({Qt::Key_Left});
    EXPECT_EQ(list.currentIndex(), list.model()->index(1, 2));
}

TEST_F(DraggedGridList, EditingIsAskedForByTheColumn)
{
    const QSignalSpy edits(&list, &xx_gridListCtrl::beginLabelEdit);
    press(1, 2);
    press(1, 2);
    pressKeys({Qt::Key_F2});
    ASSERT_EQ(edits.count(), 2);
    EXPECT_EQ(edits[0], (QVariantList {1, 2, textOf(1, 2)}));
    EXPECT_EQ(edits[1], edits[0]);
}

TEST_F(DraggedGridList, TheCurrentPositionStaysWhenAnotherColumnGoesThere)
{
    press(1, 2);
    list.header()->moveSection(0, 2);
    EXPECT_EQ(list.currentColumn(), 0);
    EXPECT_EQ(list.currentIndex(), list.model()->index(1, 0));
}

TEST_F(DraggedGridList, ToolTipsAreThoseOfTheColumnUnderThePoint)
{
    show();
    EXPECT_EQ(list.toolHitTest(centerOf(1, 2)), 1024 + 2 + 1);
}

// --- tool tips -----------------------------------------------------------------------------------

TEST_F(GridList, ACellHasItsToolNumberAndItsRectangle)
{
    show();
    QRect cell;
    EXPECT_EQ(list.toolHitTest(centerOf(3, 2), &cell), 3075);
    EXPECT_EQ(cell, list.visualRect(list.model()->index(3, 2)));
    EXPECT_EQ(list.toolHitTest(centerOf(0, 0)), 1);
}

TEST_F(GridList, BesideTheCellsThereIsNoTool)
{
    show();
    QRect cell(1, 2, 3, 4);
    EXPECT_EQ(list.toolHitTest({5, list.viewport()->height() - 5}, &cell), -1);
    EXPECT_EQ(list.toolHitTest({-5, 5}), -1);
    EXPECT_EQ(list.toolHitTest({list.viewport()->width() - 2, 5}), -1) << "behind the last column";
    EXPECT_EQ(cell, QRect(1, 2, 3, 4));
}

TEST_F(GridList, TheRectangleOfAToolIsCutAtTheView)
{
    list.setColumnWidth(2, 1000);
    show();
    QRect cell;
    ASSERT_EQ(list.toolHitTest({list.viewport()->width() - 2, centerOf(0, 0).y()}, &cell), 3);
    EXPECT_EQ(cell.right(), list.viewport()->rect().right());
}

TEST_F(GridList, TheTipOfARowIsThatOfAllItsCells)
{
    list.setCellText(0, 0, 0, text("new"), text("a tip"));
    list.setCellText(0, 1, 0, text("other"), text("another tip"));
    EXPECT_EQ(list.toolTipOf(1), text("a tip"));
    EXPECT_EQ(list.toolTipOf(2), text("a tip"));
    EXPECT_EQ(list.toolTipOf(1024 + 2), textOf(0, 0)) << "a row without a tip has its text";
}

TEST_F(GridList, WithoutATipItIsTheTextOfTheCell)
{
    list.setCellText(0, 0, 0, {}, {});
    list.setCellText(0, 1, 0, text("other"), {});
    EXPECT_EQ(list.toolTipOf(1), QString());
    EXPECT_EQ(list.toolTipOf(2), text("other"));
}

TEST_F(GridList, NoCellHasNoTip)
{
    EXPECT_EQ(list.toolTipOf(-1), QString());
    EXPECT_EQ(list.toolTipOf(0), QString());
    EXPECT_EQ(list.toolTipOf(kRows * 1024 + 1), QString());
}

TEST_F(GridList, ATipIsCutTo80Characters)
{
    for (const int size : {79, 80, 81}) {
        list.cellStyle(0, 0).tipText = QString(size, u'x');
        EXPECT_EQ(list.toolTipOf(1), QString(std::min(size, 80), u'x'));
    }
    list.cellStyle(0, 0).tipText = QString(79, u'x') + QString::fromUcs4(U"\x1F600");
    EXPECT_EQ(list.toolTipOf(1), QString(79, u'x')) << "no half of a character";
}

TEST_F(GridList, ATipIsShownOverItsCell)
{
    list.cellStyle(1, 0).tipText = text("a < b & c");
    show();
    const auto ask = [&](const QPoint& point) {
        QHelpEvent event(QEvent::ToolTip, point, list.viewport()->mapToGlobal(point));
        QCoreApplication::sendEvent(list.viewport(), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(ask(centerOf(1, 2)));
    EXPECT_EQ(QToolTip::text(), text("a < b & c"));
    EXPECT_FALSE(ask({5, list.viewport()->height() - 5}));
    list.cellStyle(1, 0).tipText = text("<b>bold</b>");
    EXPECT_TRUE(ask(centerOf(1, 1)));
    EXPECT_EQ(QToolTip::text(), text("<span>&lt;b&gt;bold&lt;/b&gt;</span>")) << "it is no HTML";
    QToolTip::hideText();
}

// --- sizes ---------------------------------------------------------------------------------------

TEST_F(GridList, AColumnIsAsWideAsItsWidestText)
{
    const int header = list.header()->sectionSizeHint(1);
    EXPECT_TRUE(list.autoSizeColumn(1));
    EXPECT_EQ(list.columnWidth(1), header) << "short texts";
    const QString longText = text("a text that is a good deal wider than the header");
    list.setCellText(3, 1, 0, longText, {});
    EXPECT_TRUE(list.autoSizeColumn(1));
    EXPECT_GE(list.columnWidth(1), list.fontMetrics().horizontalAdvance(longText));
    EXPECT_LE(list.columnWidth(1), list.fontMetrics().horizontalAdvance(longText) + 40);
    EXPECT_FALSE(list.autoSizeColumn(kColumns));
    EXPECT_FALSE(list.autoSizeColumn(-1));
}

TEST_F(GridList, AllRowsCountForTheWidthOfAColumn)
{
    const QString longText = text("a text that is a good deal wider than the header");
    for (int row = kRows; row < 2000; ++row) {
        list.setCellText(row, 0, 0, row == 1990 ? longText : text("x"), {});
    }
    list.autoSizeColumn(0);
    EXPECT_GE(list.columnWidth(0), list.fontMetrics().horizontalAdvance(longText));
}

TEST_F(GridList, ABoldTextIsWiderAlsoWhenItIsOnlySoWhileSelected)
{
    const QString longText = text("a text that is a good deal wider than the header");
    list.setCellText(3, 1, 0, longText, {});
    list.autoSizeColumn(1);
    const int plain = list.columnWidth(1);
    list.cellStyle(3, 1).setFlags(ItemStruct::kBold);
    list.autoSizeColumn(1);
    const int bold = list.columnWidth(1);
    EXPECT_GT(bold, plain);
    list.cellStyle(3, 1).setFlags(0);
    list.autoSizeColumn(1);
    EXPECT_EQ(list.columnWidth(1), plain);
    list.setStyleFlags(3, 1, ItemStruct::kBold, false);
    list.autoSizeColumn(1);
    EXPECT_EQ(list.columnWidth(1), bold);
}

/// Counts the columns that are sized.
class CountingList : public xx_gridListCtrl
{
public:
    bool autoSizeColumn(int column) override
    {
        sized.push_back(column);
        return xx_gridListCtrl::autoSizeColumn(column);
    }

    std::vector<int> sized;
};

TEST_F(GridList, AllColumnsAreSizedByTheOneOperation)
{
    CountingList counting;
    EXPECT_EQ(counting.autoSizeColumns(), 0);
    counting.insertColumn(0, {text("a")});
    counting.insertColumn(1, {text("b")});
    EXPECT_EQ(counting.autoSizeColumns(), 2);
    EXPECT_EQ(counting.sized, (std::vector {0, 1}));
}

TEST_F(GridList, DecimalsBelowZeroAreNone)
{
    list.setMaxDecimals(-3);
    EXPECT_EQ(list.maxDecimals(), 0);
    list.setMaxDecimals(5);
    EXPECT_EQ(list.maxDecimals(), 5);
    list.setOwnDrawText(true);
    EXPECT_TRUE(list.ownDrawText());
}

} // namespace
