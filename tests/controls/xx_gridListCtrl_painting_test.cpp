// What the grid list draws, told by pixels.

#include "controls/readable.h"
#include <corma/xx_gridListCtrl.h>

#include <QtTest>

#include <gtest/gtest.h>

namespace {

// Colours of which no two are the same, so that a pixel tells where it comes from.
const QColor kBase(250, 250, 250);
const QColor kText(10, 10, 10);
const QColor kHighlight(0, 0, 160);
const QColor kHighlightText(255, 255, 200);
const QColor kButton(200, 200, 190);
const QColor kButtonText(30, 0, 0);
const QColor kDark(120, 120, 110);
const QColor kShadow(60, 60, 50);
const QColor kLight(240, 240, 230);

QPalette colours()
{
    QPalette palette;
    palette.setColor(QPalette::Base, kBase);
    palette.setColor(QPalette::Text, kText);
    palette.setColor(QPalette::Highlight, kHighlight);
    palette.setColor(QPalette::HighlightedText, kHighlightText);
    palette.setColor(QPalette::Button, kButton);
    palette.setColor(QPalette::ButtonText, kButtonText);
    palette.setColor(QPalette::Dark, kDark);
    palette.setColor(QPalette::Shadow, kShadow);
    palette.setColor(QPalette::Light, kLight);
    return palette;
}

/// Three rows and two columns of large letters, whose strokes have pixels of the pure colour.
class DrawnGrid : public ::testing::Test
{
protected:
    DrawnGrid()
    {
        QFont font = list.font();
        font.setPixelSize(40);
        list.setFont(font);
        list.setPalette(colours());
        list.setGridStyle(0);
        for (int column = 0; column < 2; ++column) {
            list.insertColumn(column, {QStringLiteral("x"), Qt::AlignLeft, 200});
        }
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 2; ++column) {
                list.setCellText(row, column, 0, QStringLiteral("HH"), {});
            }
        }
        list.resize(700, 400);
        list.show();
        list.activateWindow();
    }

    [[nodiscard]] QRect rectOf(int row, int column) const
    {
        return list.visualRect(list.model()->index(row, column));
    }

    QImage drawn() { return list.viewport()->grab().toImage(); }

    // Of the ground of a cell, clear of text and frame.
    QColor backOf(int row, int column)
    {
        return drawn().pixelColor(rectOf(row, column).topLeft() + QPoint(4, 4));
    }

    // The columns of pixels, from the left of a cell, that have a colour.
    std::vector<int> columnsWith(int row, int column, const QColor& colour)
    {
        const QImage image = drawn();
        const QRect rect = rectOf(row, column).adjusted(3, 3, -3, -3);
        std::vector<int> found;
        for (int x = rect.left(); x <= rect.right(); ++x) {
            for (int y = rect.top(); y <= rect.bottom(); ++y) {
                if (image.pixelColor(x, y).rgb() == colour.rgb()) {
                    found.push_back(x - rect.left());
                    break;
                }
            }
        }
        return found;
    }

    bool hasText(int row, int column, const QColor& colour)
    {
        return !columnsWith(row, column, colour).empty();
    }

    void makeCurrent(int row, int column)
    {
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, rectOf(row, column).center());
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, rectOf(row, column).center());
    }

    void focus()
    {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
        list.setFocus();
        ASSERT_TRUE(list.hasFocus());
    }

    xx_gridListCtrl list;
};

TEST_F(DrawnGrid, APlainCellHasTheColoursOfTheList)
{
    EXPECT_EQ(backOf(1, 1), kBase);
    EXPECT_TRUE(hasText(1, 1, kText));
}

TEST_F(DrawnGrid, ASelectedCellHasTheHighlight)
{
    list.selectionModel()->select(list.model()->index(1, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    for (int column = 0; column < 2; ++column) {
        EXPECT_EQ(backOf(1, column), kHighlight);
        EXPECT_TRUE(hasText(1, column, kHighlightText));
        EXPECT_EQ(backOf(0, column), kBase);
    }
}

TEST_F(DrawnGrid, ACellHasTheColoursOfItsStyle)
{
    ItemStruct& style = list.cellStyle(1, 1);
    style.setFlags(ItemStruct::kHasTextColor | ItemStruct::kHasBackColor);
    style.textColor = Qt::red;
    style.backColor = Qt::yellow;
    EXPECT_EQ(backOf(1, 1), QColor(Qt::yellow));
    EXPECT_TRUE(hasText(1, 1, Qt::red));
    EXPECT_EQ(backOf(1, 0), kBase);
}

TEST_F(DrawnGrid, ARowHasTheColoursOfItsStyle)
{
    ItemStruct& style = list.rowStyle(1);
    style.setFlags(ItemStruct::kHasBackColor);
    style.backColor = Qt::yellow;
    EXPECT_EQ(backOf(1, 0), QColor(Qt::yellow));
    EXPECT_EQ(backOf(1, 1), QColor(Qt::yellow));
    EXPECT_EQ(backOf(0, 0), kBase);
}

TEST_F(DrawnGrid, AColourThatNobodyChoseIsMadeReadable)
{
    ItemStruct& style = list.cellStyle(1, 1);
    style.setFlags(ItemStruct::kHasBackColor);
    style.backColor = QColor(20, 20, 20);
    const QColor made = corma::readableOn(kText, style.backColor);
    ASSERT_NE(made, kText);
    EXPECT_TRUE(hasText(1, 1, made));
    style.setFlags(ItemStruct::kHasBackColor | ItemStruct::kHasTextColor);
    style.textColor = QColor(30, 30, 30);
    EXPECT_TRUE(hasText(1, 1, style.textColor)) << "this one was chosen";
}

TEST_F(DrawnGrid, ABoldTextIsWider)
{
    const int plain = columnsWith(1, 1, kText).back();
    list.cellStyle(1, 1).setFlags(ItemStruct::kBold);
    EXPECT_GT(columnsWith(1, 1, kText).back(), plain);
}

TEST_F(DrawnGrid, LinesAreDrawnUnderAndThroughTheText)
{
    const auto plain = columnsWith(1, 1, kText).size();
    for (const unsigned flag : {ItemStruct::kUnderline, ItemStruct::kStrikeOut}) {
        list.cellStyle(1, 1).setFlags(flag);
        EXPECT_GT(columnsWith(1, 1, kText).size(), plain) << flag;
    }
}

TEST_F(DrawnGrid, AColumnHasItsFontInSelectedRowsOnly)
{
    list.columnStyle(1).setFlags(ItemStruct::kBold);
    const int plain = columnsWith(1, 1, kText).back();
    const int other = columnsWith(1, 0, kText).back();
    EXPECT_EQ(plain, other);
    list.selectionModel()->select(list.model()->index(1, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_GT(columnsWith(1, 1, kHighlightText).back(), plain);
}

TEST_F(DrawnGrid, TheCurrentCellIsAButtonWithTwoFrames)
{
    focus();
    makeCurrent(1, 1);
    const QImage image = drawn();
    const QRect cell = rectOf(1, 1);
    EXPECT_EQ(image.pixelColor(cell.topLeft()), kDark);
    EXPECT_EQ(image.pixelColor(cell.left(), cell.center().y()), kDark);
    EXPECT_EQ(image.pixelColor(cell.bottomRight()), kButton);
    EXPECT_EQ(image.pixelColor(cell.topLeft() + QPoint(1, 1)), kShadow);
    EXPECT_EQ(image.pixelColor(cell.bottomRight() - QPoint(1, 1)), kLight);
    EXPECT_EQ(image.pixelColor(cell.topLeft() + QPoint(2, 2)), kButton);
    EXPECT_TRUE(hasText(1, 1, kButtonText));
    EXPECT_EQ(backOf(1, 0), kHighlight) << "the others of the row are selected";
}

TEST_F(DrawnGrid, TheTextDoesNotMoveIntoTheFrame)
{
    focus();
    const auto before = columnsWith(1, 1, kText);
    makeCurrent(1, 1);
    EXPECT_EQ(columnsWith(1, 1, kButtonText), before);
}

TEST_F(DrawnGrid, TheFrameIsSharpAtDoubleScale)
{
    focus();
    makeCurrent(1, 1);
    QImage image(list.viewport()->size() * 2, QImage::Format_RGB32);
    image.setDevicePixelRatio(2);
    list.viewport()->render(&image);
    const QRect cell = rectOf(1, 1);
    const int y = cell.center().y() * 2;
    const int left = cell.left() * 2;
    const QColor expected[] = {kDark, kDark, kShadow, kShadow, kButton, kButton};
    for (int x = 0; x < 6; ++x) {
        EXPECT_EQ(image.pixelColor(left + x, y), expected[x]) << x;
    }
}

TEST_F(DrawnGrid, WithoutTheFocusTheCurrentCellHasItsColour)
{
    focus();
    makeCurrent(1, 0);
    QTest::keyClick(&list, Qt::Key_Right);
    list.clearFocus();
    EXPECT_EQ(backOf(1, 1), QColor(0x7D, 0x7D, 0x7D));
    EXPECT_EQ(backOf(1, 0), QColor(Qt::black));
}

TEST_F(DrawnGrid, AnotherRowShowsNothingOfTheColoursThatItHadWhileSelected)
{
    list.setRowColor(1, 1, Qt::green, Qt::yellow);
    EXPECT_EQ(backOf(1, 1), kBase);
    list.selectionModel()->select(list.model()->index(1, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_EQ(backOf(1, 1), QColor(Qt::green));
    EXPECT_EQ(backOf(1, 0), QColor(Qt::yellow));
}

TEST_F(DrawnGrid, OnAWhiteCellTheTextIsBlack)
{
    list.setRowColor(1, 1, Qt::white, Qt::blue);
    list.selectionModel()->select(list.model()->index(1, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_EQ(backOf(1, 1), QColor(Qt::white));
    EXPECT_TRUE(hasText(1, 1, Qt::black));
    EXPECT_TRUE(hasText(1, 0, kHighlightText));
}

TEST_F(DrawnGrid, WithoutACurrentColumnThereIsNoFrame)
{
    focus();
    list.onKeyDown(Qt::Key_Down);
    ASSERT_EQ(list.currentColumn(), -1);
    EXPECT_EQ(backOf(list.selectionMark(), 0), QColor(0x7D, 0x7D, 0x7D));
}

TEST_F(DrawnGrid, ATextThatDoesNotFitEndsInAnEllipsisOnOneLine)
{
    const auto fitting = columnsWith(1, 1, kText);
    list.setCellText(1, 1, 0, QStringLiteral("HHHHHHHHHHHHHHHHH"), {});
    const auto cut = columnsWith(1, 1, kText);
    const int blanks = 2 * QFontMetrics(list.font()).horizontalAdvance(u' ');
    EXPECT_GT(cut.size(), fitting.size());
    EXPECT_LT(cut.back(), 200 - blanks);
    list.setCellText(1, 1, 0, QStringLiteral("HH\nHH"), {});
    EXPECT_GT(columnsWith(1, 1, kText).back(), fitting.back()) << "the second HH is beside";
}

TEST_F(DrawnGrid, AnAmpersandIsDrawn)
{
    list.setCellText(1, 1, 0, QStringLiteral("&HH"), {});
    EXPECT_GT(columnsWith(1, 1, kText).back(), columnsWith(1, 0, kText).back());
}

TEST_F(DrawnGrid, TextStandsWhereItsColumnWantsIt)
{
    list.insertColumn(2, {QStringLiteral("y"), Qt::AlignRight, 150});
    list.setCellText(1, 2, 0, QStringLiteral("H"), {});
    const auto columns = columnsWith(1, 2, kText);
    EXPECT_GT(columns.front(), 75);
}

TEST_F(DrawnGrid, TextThatItDrawsItselfHasNoBackOfItsStyle)
{
    list.setOwnDrawText(true);
    ItemStruct& style = list.cellStyle(1, 1);
    style.setFlags(ItemStruct::kHasTextColor | ItemStruct::kHasBackColor);
    style.textColor = Qt::red;
    style.backColor = Qt::yellow;
    EXPECT_EQ(backOf(1, 1), kBase);
    EXPECT_TRUE(hasText(1, 1, Qt::red));
    list.setStyleFlags(1, 1, ItemStruct::kHasTextColor, false);
    list.selectionModel()->select(list.model()->index(1, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_EQ(backOf(1, 1), kHighlight);
    EXPECT_TRUE(hasText(1, 1, kHighlightText));
}

TEST_F(DrawnGrid, NumbersThatItDrawsItselfHaveAsManyDecimalsAsAreWanted)
{
    list.setCellText(0, 1, 0, QStringLiteral("1.25"), {});
    list.setCellText(1, 1, 0, QStringLiteral("1.2512"), {});
    EXPECT_GT(columnsWith(1, 1, kText).back(), columnsWith(0, 1, kText).back());
    list.setMaxDecimals(2);
    EXPECT_GT(columnsWith(1, 1, kText).back(), columnsWith(0, 1, kText).back())
        << "the list does not draw them itself";
    list.setOwnDrawText(true);
    EXPECT_EQ(columnsWith(1, 1, kText), columnsWith(0, 1, kText));
    list.setMaxDecimals(32);
    EXPECT_GT(columnsWith(1, 1, kText).back(), columnsWith(0, 1, kText).back());
}

TEST_F(DrawnGrid, ADisabledListIsDrawnInItsColours)
{
    QPalette palette = colours();
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::gray);
    list.setPalette(palette);
    list.setEnabled(false);
    EXPECT_TRUE(hasText(1, 1, Qt::gray));
}

} // namespace
