#include "editor/ColourTableModel.h"

#include "controls/readable.h"
#include "editor/HatchSwatchDelegate.h"
#include "host/color_index.h"
#include "settings/texts.h"

#include <QColor>
#include <QPainter>

#include <array>

namespace corma {

namespace {

constexpr int kHues = 24; // a column each
constexpr int kFirstHue = 10; // the colour of the first
constexpr int kNamed = 9; // colours in the first row
constexpr int kFirstGrey = 250;
constexpr int kGreys = host::kLastColor - kFirstGrey + 1;

// From the top: dark to full, then pale to dark.
constexpr std::array kShades = {8, 6, 4, 2, 0, 1, 3, 5, 7, 9};
constexpr int kRows = 1 + static_cast<int>(kShades.size());

int colourInFirstRow(int column)
{
    if (column < kNamed) {
        return column + 1;
    }
    const int grey = column - (kHues - kGreys);
    return grey >= 0 ? kFirstGrey + grey : 0;
}

QColor shown(int colour)
{
    const auto rgb = host::colorOfIndex(colour);
    return rgb ? QColor(rgb->red, rgb->green, rgb->blue) : QColor();
}

} // namespace

int ColourTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kRows;
}

int ColourTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kHues;
}

int ColourTableModel::colourAt(const QModelIndex& index)
{
    if (!index.isValid()) {
        return 0;
    }
    if (index.row() == 0) {
        return colourInFirstRow(index.column());
    }
    constexpr int kColoursOfHue = 10;
    return kFirstHue + index.column() * kColoursOfHue
        + kShades[static_cast<std::size_t>(index.row() - 1)];
}

QModelIndex ColourTableModel::indexOf(int colour) const
{
    for (int row = 0; row < kRows && colour != 0; ++row) {
        for (int column = 0; column < kHues; ++column) {
            if (const QModelIndex cell = index(row, column); colourAt(cell) == colour) {
                return cell;
            }
        }
    }
    return {};
}

QVariant ColourTableModel::data(const QModelIndex& index, int role) const
{
    const int colour = colourAt(index);
    if (colour == 0) {
        return {};
    }
    switch (role) {
    case Qt::BackgroundRole:
        return shown(colour);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return QStringLiteral("%1 %2").arg(QString::fromStdWString(text(row::kColour)),
                                           QString::number(colour));
    case Qt::AccessibleDescriptionRole:
        return shown(colour).name();
    default:
        return {};
    }
}

Qt::ItemFlags ColourTableModel::flags(const QModelIndex& index) const
{
    return colourAt(index) == 0 ? Qt::NoItemFlags : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

void ColourCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    const auto colour = index.data(Qt::BackgroundRole).value<QColor>();
    if (!colour.isValid()) {
        return;
    }
    constexpr double kHardlySeen = 1.5; // of the contrast to the paper
    const QRect inside = option.rect.adjusted(1, 1, -1, -1);
    painter->fillRect(inside, colour);
    if (contrast(colour, option.palette.color(QPalette::Base)) < kHardlySeen) {
        painter->setPen(frameColour(option.palette));
        painter->drawRect(inside.adjusted(0, 0, -1, -1));
    }
    if (!option.state.testFlag(QStyle::State_Selected)) {
        return;
    }
    // Two frames, so that one of them differs from any colour.
    painter->setPen(option.palette.color(QPalette::Text));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
    painter->setPen(option.palette.color(QPalette::Base));
    painter->drawRect(option.rect.adjusted(2, 2, -3, -3));
}

} // namespace corma
