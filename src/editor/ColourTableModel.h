#pragma once

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

namespace corma {

/// The 255 colours in a table: in the first row the nine named ones and, at its end, the greys;
/// below a column for each hue, the full colour in the middle, darker ones away from it, pale ones
/// in the lower half. Cells between hold nothing.
class ColourTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;

    /// The colour itself as the background, its number as the tip and the accessible text.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// 1 to 255; 0 for a cell that holds nothing.
    [[nodiscard]] static int colourAt(const QModelIndex& index);

    /// The cell of a colour; an invalid index for 0 and 256.
    [[nodiscard]] QModelIndex indexOf(int colour) const;
};

/// Draws the cells: the colour, and a frame around the one that is selected.
class ColourCellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

} // namespace corma
