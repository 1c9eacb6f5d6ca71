#include "TimerRecorder.h"
#include "controls/GridListTest.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QHeaderView>
#include <QLayout>
#include <QShortcut>
#include <QVBoxLayout>

using corma::testing::text;

namespace {

using GridList = corma::testing::GridListTest;

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

} // namespace
