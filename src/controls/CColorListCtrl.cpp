#include "controls/CColorListCtrl.h"

#include "controls/readable.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>

namespace {

class RowColourDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        // The base class takes the colour of the cell, if any, over into the palette.
        const QBrush colourOfList = option->palette.brush(QPalette::Text);
        QStyledItemDelegate::initStyleOption(option, index);
        const QVariant given = index.siblingAtColumn(0).data(Qt::ForegroundRole);
        option->palette.setBrush(QPalette::Text,
                                 given.canConvert<QBrush>()
                                     ? readable(given.value<QBrush>().color(), *option)
                                     : colourOfList);
    }

private:
    static QColor readable(const QColor& colour, const QStyleOptionViewItem& option)
    {
        return corma::readableOn(colour, option.palette.color(QPalette::Base));
    }
};

} // namespace

CColorListCtrl::CColorListCtrl(QWidget* parent)
    : QTreeView(parent)
{
    setItemDelegate(new RowColourDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setSortingEnabled(false);
    header()->setSectionsClickable(false);
    header()->setSectionsMovable(false);
    header()->setResizeContentsPrecision(0); // the rows in sight only, however many there are
}

void CColorListCtrl::fitFirstColumn()
{
    resizeColumnToContents(0);
}

void CColorListCtrl::keyPressEvent(QKeyEvent* event)
{
    if ((event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        switch (event->key()) {
        case Qt::Key_Insert:
            Q_EMIT insertPressed();
            return;
        case Qt::Key_Delete:
            Q_EMIT removePressed();
            return;
        case Qt::Key_Left:
            Q_EMIT leftPressed();
            return;
        case Qt::Key_F2:
            Q_EMIT editPressed();
            return;
        default:
            break;
        }
    }
    QTreeView::keyPressEvent(event);
}
