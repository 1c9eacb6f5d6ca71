#pragma once

#include "controls/GridModel.h"
#include "controls/grid_style.h"

#include <QStyledItemDelegate>

#include <optional>

namespace corma {

/// What a grid list shows, besides its rows and their styles.
struct GridLook
{
    int currentColumn = -1; // a display position
    QColor highlightText;
    QColor highlightBack;
    bool ownDrawText = false;
    int maxDecimals = 32;
};

/// Draws the cells of a grid list. Look and model stay the caller's.
class GridDelegate : public QStyledItemDelegate
{
public:
    GridDelegate(const GridLook& look, const GridModel& model, xx_gridListCtrl& list);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// The size that shows the whole text of a cell.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

    /// The width that shows all cells of a column whole, whether their rows are selected or not.
    [[nodiscard]] int widthOfColumn(int column) const;

private:
    [[nodiscard]] bool isCurrent(const QModelIndex& index) const;
    [[nodiscard]] StyleLevels levelsOf(const QModelIndex& index) const;
    [[nodiscard]] QString shownText(const QModelIndex& index) const;
    [[nodiscard]] CellColors colorsFor(const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const;
    [[nodiscard]] std::optional<QFont> fontFor(const QModelIndex& index, RowState state) const;
    [[nodiscard]] int widthOf(const QModelIndex& index, const std::optional<QFont>& font) const;
    [[nodiscard]] int inset() const;
    void drawText(QPainter& painter, const QStyleOptionViewItem& option,
                  const QModelIndex& index) const;

    const GridLook& m_look;
    const GridModel& m_model;
    xx_gridListCtrl& m_list;
};

} // namespace corma
