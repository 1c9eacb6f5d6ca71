#pragma once

#include "host/hatch_patterns.h"

#include <QStyledItemDelegate>

namespace corma {

/// Draws a square filled with a pattern, in the colours of the texts of a palette. The square has
/// that side in drawing units.
void paintSwatch(QPainter& painter, const QRectF& square, const QPalette& palette,
                 const host::HatchPattern& pattern, double side);

/// Of the frame around a swatch.
QColor frameColour(const QPalette& palette);

/// Draws the items of a HatchPatternModel: a swatch and the name below it.
class HatchSwatchDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// One size for all: a long name is cut short.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
};

} // namespace corma
