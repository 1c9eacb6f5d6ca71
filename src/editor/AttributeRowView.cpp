#include "editor/AttributeRowView.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>

#include <algorithm>

namespace corma {

namespace {

constexpr int kBesideButton = 2; // device-independent pixels of the column that stay free

// On a dark ground styles draw an empty check box in hardly another colour than that.
class OutlinedCheckBoxes : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        QStyleOptionViewItem item(option);
        initStyleOption(&item, index);
        if (!item.features.testFlag(QStyleOptionViewItem::HasCheckIndicator)) {
            return;
        }
        constexpr float kOpaque = 0.6F;
        const bool isSelected = item.state.testFlag(QStyle::State_Selected);
        QColor line = item.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
        line.setAlphaF(kOpaque);
        const QStyle& style = *(item.widget != nullptr ? item.widget->style() : qApp->style());
        const QRect box
            = style.subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, item.widget);
        painter->save();
        painter->setPen(line);
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(box.adjusted(0, 0, -1, -1));
        painter->restore();
    }
};

bool isReasonOfPerson(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
        || reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
}

bool movesInList(int key)
{
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        return true;
    default:
        return false;
    }
}

} // namespace

AttributeRowView::AttributeRowView(QWidget* parent)
    : QTreeView(parent)
    , m_button(new QPushButton(QStringLiteral("..."), viewport()))
{
    m_button->setObjectName(QStringLiteral("browse"));
    m_button->setCursor(Qt::ArrowCursor);
    m_button->installEventFilter(this);
    m_button->hide();
    setItemDelegate(new OutlinedCheckBoxes(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setSectionsClickable(false);
    header()->setSectionsMovable(false);
}

void AttributeRowView::showButtonIn(const QModelIndex& row)
{
    const bool isThere = m_buttonRow.isValid() && m_buttonRow == row;
    m_buttonRow = row;
    if (!row.isValid()) {
        if (window()->focusWidget() == m_button) {
            setFocus(Qt::OtherFocusReason); // else it would go to what is next
        }
        m_button->hide();
        return;
    }
    placeButton();
    if (!isThere) {
        m_button->raise();
        m_button->show();
        m_button->setFocus(Qt::OtherFocusReason);
        m_isButtonMeant = false; // also where it had the focus before
    }
}

void AttributeRowView::fitColumns()
{
    ensurePolished();
    for (int column = 0; column < header()->count(); ++column) {
        resizeColumnToContents(column);
    }
    const QModelIndex first = model()->index(0, 0);
    if (first.isValid()) {
        const int last = header()->count() - 1;
        header()->resizeSection(last, columnWidth(last) + rowHeight(first) + kBesideButton);
    }
}

void AttributeRowView::keyPressEvent(QKeyEvent* event)
{
    const bool isBare = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (event->key() == Qt::Key_Space && isBare && currentIndex().isValid()) {
        Q_EMIT togglePressed(currentIndex().row());
        return;
    }
    QTreeView::keyPressEvent(event);
}

bool AttributeRowView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_button && event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        // A window that comes back to the front has the same focus as before.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            m_isButtonMeant = isReasonOfPerson(reason);
        }
    }
    if (watched == m_button && event->type() == QEvent::KeyPress) {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (belongsToList(*key)) {
            keyPressEvent(key);
            return true;
        }
    }
    return QTreeView::eventFilter(watched, event);
}

bool AttributeRowView::belongsToList(const QKeyEvent& key) const
{
    if (key.key() == Qt::Key_Space) {
        return !m_isButtonMeant;
    }
    const bool isTyped = !key.text().isEmpty() && key.text().at(0).isPrint()
        && (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
    return movesInList(key.key()) || isTyped;
}

void AttributeRowView::updateGeometries()
{
    QTreeView::updateGeometries();
    placeButton();
}

void AttributeRowView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    placeButton();
}

// A row that is wider than the list has the button at the edge that is seen.
void AttributeRowView::placeButton()
{
    if (!m_buttonRow.isValid()) {
        return;
    }
    const QModelIndex last = m_buttonRow.sibling(m_buttonRow.row(), header()->count() - 1);
    const QRect end = visualRect(last);
    const int right = std::min(end.right(), viewport()->rect().right());
    const int side = end.height();
    m_button->setGeometry(right - side + 1, end.top(), side, side);
}

} // namespace corma
