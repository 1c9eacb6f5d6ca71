#include "controls/CColorListCtrl.h"
#include "controls/readable.h"

#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleOption>
#include <QVBoxLayout>
#include <QWidget>
#include <QtTest>

#include <gtest/gtest.h>
#include <map>

namespace {

/// Keeps the colour in which the text of each cell was drawn.
class RecordingStyle : public QProxyStyle
{
public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
            element == CE_ItemViewItem && item != nullptr) {
            colours[{item->index.row(), item->index.column()}]
                = item->palette.color(QPalette::Text);
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    mutable std::map<std::pair<int, int>, QColor> colours; // by row and column
};

/// Rows without end, which counts how often it is asked for something to show.
class LongModel : public QAbstractTableModel
{
public:
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : rows;
    }

    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : 4;
    }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        ++asked;
        return role == Qt::DisplayRole ? QString::number(index.row()) : QVariant();
    }

    void fill(int count)
    {
        beginResetModel();
        rows = count;
        endResetModel();
    }

    int rows = 0;
    mutable int asked = 0;
};

class ColourList : public ::testing::Test
{
protected:
    ColourList()
    {
        QPalette palette;
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::Text, Qt::black);
        list.setPalette(palette);
        list.setStyle(&style);
        list.resize(400, 200);
    }

    void addRow(const char* name, const QVariant& colour = {})
    {
        auto* first = new QStandardItem(QString::fromLatin1(name));
        first->setData(colour, Qt::ForegroundRole);
        model.appendRow({first, new QStandardItem(QStringLiteral("value"))});
    }

    std::map<std::pair<int, int>, QColor> drawnColours()
    {
        style.colours.clear();
        list.grab();
        return style.colours;
    }

    RecordingStyle style; // before the list, which draws with it
    QStandardItemModel model;
    CColorListCtrl list;
};

TEST_F(ColourList, DrawsEachRowInItsOwnColour)
{
    addRow("red", QColor(Qt::red));
    addRow("plain");
    addRow("blue", QBrush(Qt::blue));
    list.setModel(&model);
    const auto colours = drawnColours();
    for (const int column : {0, 1}) {
        EXPECT_EQ(colours.at({0, column}), QColor(Qt::red));
        EXPECT_EQ(colours.at({1, column}), QColor(Qt::black));
        EXPECT_EQ(colours.at({2, column}), QColor(Qt::blue));
    }
}

TEST_F(ColourList, KeepsItsColourForARowThatGivesOneForAnotherColumnOnly)
{
    addRow("plain");
    model.item(0, 1)->setForeground(Qt::red);
    list.setModel(&model);
    EXPECT_EQ(drawnColours().at({0, 1}), QColor(Qt::black));
}

TEST_F(ColourList, MakesAColourReadable)
{
    addRow("yellow", QColor(Qt::yellow));
    list.setModel(&model);
    EXPECT_EQ(drawnColours().at({0, 0}), corma::readableOn(Qt::yellow, Qt::white));

    QPalette dark = list.palette();
    dark.setColor(QPalette::Base, Qt::black);
    list.setPalette(dark);
    EXPECT_EQ(drawnColours().at({0, 0}), QColor(Qt::yellow));
}

TEST_F(ColourList, FollowsAColourThatChanges)
{
    addRow("red", QColor(Qt::red));
    list.setModel(&model);
    EXPECT_EQ(drawnColours().at({0, 0}), QColor(Qt::red));
    model.item(0, 0)->setData(QVariant(), Qt::ForegroundRole);
    EXPECT_EQ(drawnColours().at({0, 0}), QColor(Qt::black));
}

TEST_F(ColourList, SelectsWholeRowsAndSeveralOfThem)
{
    addRow("a");
    addRow("b");
    addRow("c");
    list.setModel(&model);
    list.setCurrentIndex(model.index(0, 1));
    EXPECT_EQ(list.selectionModel()->selectedRows().size(), 1);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(list.selectionModel()->selectedRows().size(), 2);
}

TEST_F(ColourList, IsFlat)
{
    EXPECT_FALSE(list.rootIsDecorated());
    EXPECT_TRUE(list.uniformRowHeights());
    EXPECT_FALSE(list.isSortingEnabled());
    EXPECT_FALSE(list.header()->sectionsClickable());
    EXPECT_FALSE(list.header()->sectionsMovable());
}

TEST_F(ColourList, EditsNothingInPlace)
{
    addRow("a");
    list.setModel(&model);
    list.setCurrentIndex(model.index(0, 0));
    const QPoint cell = list.visualRect(model.index(0, 0)).center();
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, cell);
    QTest::keyClick(&list, Qt::Key_F2);
    QTest::keyClick(&list, Qt::Key_A);
    EXPECT_FALSE(list.isPersistentEditorOpen(model.index(0, 0)));
    EXPECT_EQ(list.findChild<QLineEdit*>(), nullptr);
}

TEST_F(ColourList, TellsOfItsKeys)
{
    addRow("a");
    list.setModel(&model);
    const std::pair<Qt::Key, void (CColorListCtrl::*)()> keys[] = {
        {Qt::Key_Insert, &CColorListCtrl::insertPressed},
        {Qt::Key_Delete, &CColorListCtrl::removePressed},
        {Qt::Key_Left, &CColorListCtrl::leftPressed},
        {Qt::Key_F2, &CColorListCtrl::editPressed},
    };
    for (const auto& [key, signal] : keys) {
        const QSignalSpy spy(&list, signal);
        ASSERT_TRUE(spy.isValid());
        for (const auto& [other, otherSignal] : keys) {
            QTest::keyClick(&list, other);
        }
        EXPECT_EQ(spy.count(), 1) << key;
        QTest::keyClick(&list, key, Qt::KeypadModifier);
        EXPECT_EQ(spy.count(), 2) << key;
        QTest::keyClick(&list, key, Qt::ControlModifier);
        QTest::keyClick(&list, key, Qt::ShiftModifier);
        EXPECT_EQ(spy.count(), 2) << key;
    }
}

TEST_F(ColourList, LeavesEnterToTheDialog)
{
    addRow("a");
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* inside = new CColorListCtrl;
    auto* button = new QPushButton(&dialog);
    button->setDefault(true);
    layout->addWidget(inside);
    layout->addWidget(button);
    inside->setModel(&model);
    inside->setCurrentIndex(model.index(0, 0));
    dialog.show();
    const QSignalSpy clicks(button, &QPushButton::clicked);
    QTest::keyClick(inside, Qt::Key_Return);
    QTest::keyClick(inside, Qt::Key_Enter);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(ColourList, AsksForTheRowsInSightOnly)
{
    LongModel rows;
    list.setModel(&rows);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    rows.asked = 0;
    rows.fill(100'000);
    list.grab();
    EXPECT_GT(rows.asked, 0);
    EXPECT_LT(rows.asked, 2000);

    rows.asked = 0;
    list.fitFirstColumn();
    EXPECT_GT(rows.asked, 0);
    EXPECT_LT(rows.asked, 2000);

    rows.asked = 0;
    list.scrollToBottom();
    list.grab();
    EXPECT_LT(rows.asked, 2000);
}

TEST_F(ColourList, ItsFirstColumnFitsTheHeaderAndTheRowsInSight)
{
    model.setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Value")});
    addRow("a");
    list.setModel(&model);
    list.show();
    list.fitFirstColumn();
    const int narrow = list.columnWidth(0);
    EXPECT_GE(narrow, list.header()->sectionSizeHint(0));

    addRow("a name that is rather long");
    list.fitFirstColumn();
    const int wide = list.columnWidth(0);
    EXPECT_GT(wide, narrow);
    EXPECT_GE(wide, list.fontMetrics().horizontalAdvance(model.item(1, 0)->text()));

    for (int i = 0; i < 100; ++i) {
        addRow("b");
    }
    addRow("a name that is even longer, so that it would take much more room than all the others");
    list.fitFirstColumn();
    EXPECT_EQ(list.columnWidth(0), wide);
    list.scrollToBottom();
    list.fitFirstColumn();
    EXPECT_GT(list.columnWidth(0), wide);
}

TEST_F(ColourList, WithoutRowsItsFirstColumnFitsTheHeader)
{
    list.fitFirstColumn();
    model.setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Value")});
    list.setModel(&model);
    list.fitFirstColumn();
    EXPECT_EQ(list.columnWidth(0), list.header()->sectionSizeHint(0));
}

} // namespace
