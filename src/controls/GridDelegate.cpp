#include "controls/GridDelegate.h"

#include "controls/grid_cells.h"
#include "controls/readable.h"

#include <QHeaderView>
#include <QPainter>

#include <algorithm>

namespace corma {

namespace {

constexpr int kAboveAndBelow = 4; // pixels around the text, of which the frame takes two

RowState stateOf(const QStyleOptionViewItem& option)
{
    return option.state.testFlag(QStyle::State_Selected) ? RowState::selected : RowState::plain;
}

// Whole pixels of their own colours instead of lines, so that the edges are sharp at any scale.
void drawEdges(QPainter& painter, const QRect& rect, const QColor& topLeft,
               const QColor& bottomRight)
{
    painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1, bottomRight);
    painter.fillRect(rect.right(), rect.top(), 1, rect.height(), bottomRight);
    painter.fillRect(rect.left(), rect.top(), rect.width() - 1, 1, topLeft);
    painter.fillRect(rect.left(), rect.top(), 1, rect.height() - 1, topLeft);
}

// Sunken, as a field that can be edited.
void drawFrame(QPainter& painter, const QRect& rect, const QPalette& palette)
{
    painter.fillRect(rect, palette.color(QPalette::Button));
    drawEdges(painter, rect, palette.color(QPalette::Dark), palette.color(QPalette::Button));
    drawEdges(painter, rect.adjusted(1, 1, -1, -1), palette.color(QPalette::Shadow),
              palette.color(QPalette::Light));
}

} // namespace

GridDelegate::GridDelegate(const GridLook& look, const GridModel& model, xx_gridListCtrl& list)
    : QStyledItemDelegate(&list)
    , m_look(look)
    , m_model(model)
    , m_list(list)
{
}

bool GridDelegate::isCurrent(const QModelIndex& index) const
{
    return m_list.hasFocus() && index.row() == m_list.currentIndex().row()
        && m_list.header()->visualIndex(index.column()) == m_look.currentColumn;
}

StyleLevels GridDelegate::levelsOf(const QModelIndex& index) const
{
    return {&m_model.cell(index.row(), index.column()), m_model.rowStyle(index.row()),
            m_model.columnStyle(index.column())};
}

QString GridDelegate::shownText(const QModelIndex& index) const
{
    QString text = m_model.text(index.row(), index.column());
    if (m_look.ownDrawText) {
        text = QString::fromStdWString(numberWithin(text.toStdWString(), m_look.maxDecimals));
    }
    return text;
}

// A colour that nobody chose for its background is changed as far as it must be to be readable.
CellColors GridDelegate::colorsFor(const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    const RowState state = stateOf(option);
    const CellColors ofList = state == RowState::selected
        ? CellColors {m_look.highlightText, m_look.highlightBack}
        : CellColors {option.palette.color(QPalette::Text), option.palette.color(QPalette::Base)};
    CellColors colors = colorsOf(levelsOf(index), state, ofList);
    if (m_look.ownDrawText) {
        colors.back = ofList.back;
        colors.text = state == RowState::selected ? ofList.text : colors.text;
        return colors;
    }
    if (isCurrent(index)) {
        colors.back = option.palette.color(QPalette::Button);
        colors.text = readableOn(colors.isTextGiven ? colors.text
                                                    : option.palette.color(QPalette::ButtonText),
                                 colors.back);
        return colors;
    }
    if (colors.isBackGiven && !colors.isTextGiven) {
        colors.text = readableOn(colors.text, colors.back);
    }
    return colors;
}

std::optional<QFont> GridDelegate::fontFor(const QModelIndex& index, RowState state) const
{
    return fontOf(levelsOf(index), state, m_list.font());
}

int GridDelegate::inset() const
{
    return 2 * m_list.fontMetrics().horizontalAdvance(QLatin1Char(' '));
}

void GridDelegate::drawText(QPainter& painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    const QFont font = fontFor(index, stateOf(option)).value_or(m_list.font());
    const QRect rect = option.rect.adjusted(inset(), 0, -inset(), 0);
    painter.setFont(font);
    painter.setPen(colorsFor(option, index).text);
    const auto alignment = static_cast<Qt::Alignment>(index.data(Qt::TextAlignmentRole).toInt());
    painter.drawText(rect, static_cast<int>(alignment) | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(shownText(index), Qt::ElideRight, rect.width()));
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    painter->save();
    painter->setClipRect(option.rect);
    const CellColors colors = colorsFor(option, index);
    if (isCurrent(index)) {
        drawFrame(*painter, option.rect, option.palette);
    } else if (m_look.ownDrawText || colors.isBackGiven || stateOf(option) == RowState::selected) {
        painter->fillRect(option.rect, colors.back);
    }
    drawText(*painter, option, index);
    painter->restore();
}

QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return {widthOf(index, fontFor(index, stateOf(option))),
            m_list.fontMetrics().height() + 2 * kAboveAndBelow};
}

int GridDelegate::widthOf(const QModelIndex& index, const std::optional<QFont>& font) const
{
    const QFontMetrics metrics = font ? QFontMetrics(*font) : m_list.fontMetrics();
    return metrics.horizontalAdvance(shownText(index)) + 2 * inset() + 1;
}

int GridDelegate::widthOfColumn(int column) const
{
    int width = 0;
    for (int row = 0; row < m_model.rowCount(); ++row) {
        const QModelIndex index = m_model.index(row, column);
        const auto plain = fontFor(index, RowState::plain);
        const auto selected = fontFor(index, RowState::selected);
        width = std::max(width, widthOf(index, plain));
        if (selected != plain) {
            width = std::max(width, widthOf(index, selected));
        }
    }
    return width;
}

} // namespace corma
