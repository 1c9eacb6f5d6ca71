// What a person does with the grid list besides moving: editing, scrolling, dragging its header,
// resting on a cell.

#include "controls/GridListTest.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QToolTip>
#include <QVBoxLayout>

#include <tuple>

using corma::testing::text;

namespace {

using GridList = corma::testing::GridListTest;

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
