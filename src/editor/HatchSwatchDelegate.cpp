#include "editor/HatchSwatchDelegate.h"

#include "editor/HatchPatternModel.h"
#include "editor/hatch_swatch.h"

#include <QApplication>
#include <QPainter>

namespace corma {

namespace {

constexpr int kMargin = 6;

// Of the swatch: as large as the letters want it.
int sideFor(const QFontMetrics& metrics)
{
    return 4 * metrics.height();
}

QPalette::ColorGroup groupOf(QStyle::State state)
{
    if (!state.testFlag(QStyle::State_Enabled)) {
        return QPalette::Disabled;
    }
    return state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
}

} // namespace

// Half way from the paper to the lines, since the greys of a dark palette are too near to the
// paper.
QColor frameColour(const QPalette& palette)
{
    const QColor from = palette.color(QPalette::Base);
    const QColor to = palette.color(QPalette::Text);
    return {(from.red() + to.red()) / 2, (from.green() + to.green()) / 2,
            (from.blue() + to.blue()) / 2};
}

void paintSwatch(QPainter& painter, const QRectF& square, const QPalette& palette,
                 const host::HatchPattern& pattern, double side)
{
    painter.save();
    painter.setClipRect(square);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(square, pattern.isSolid() ? palette.text() : palette.base());
    painter.translate(square.bottomLeft());
    const auto place
        = [&](double x, double y) { return QPointF(x * square.width(), -y * square.height()); };
    constexpr double kDotSize = 1.5;
    const auto lines = pattern.isSolid() ? std::vector<SwatchLine>() : swatchLines(pattern, side);
    for (const SwatchLine& line : lines) {
        painter.setPen(QPen(palette.text(), line.isDot() ? kDotSize : 1.0, Qt::SolidLine,
                            line.isDot() ? Qt::RoundCap : Qt::FlatCap));
        if (line.isDot()) {
            painter.drawPoint(place(line.x1, line.y1));
        } else {
            painter.drawLine(place(line.x1, line.y1), place(line.x2, line.y2));
        }
    }
    painter.restore();
}

void HatchSwatchDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    const auto* const model = qobject_cast<const HatchPatternModel*>(index.model());
    if (model == nullptr) {
        return;
    }
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.showDecorationSelected = true; // the whole cell shows the selection, not the text alone
    item.palette.setCurrentColorGroup(groupOf(item.state));
    const QStyle* const style = item.widget != nullptr ? item.widget->style() : qApp->style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);

    const int side = sideFor(item.fontMetrics);
    const QRect swatch(item.rect.center().x() - side / 2, item.rect.top() + kMargin, side, side);
    painter->fillRect(swatch, frameColour(item.palette));
    paintSwatch(*painter, swatch.adjusted(1, 1, -1, -1), item.palette, model->pattern(index),
                swatchSide(model->pattern(index)));

    const QRect below(item.rect.left() + kMargin, swatch.bottom() + kMargin,
                      item.rect.width() - 2 * kMargin, item.fontMetrics.height());
    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    painter->setPen(item.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(below, Qt::AlignCenter,
                      item.fontMetrics.elidedText(item.text, Qt::ElideRight, below.width()));
    if (item.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(item);
        focus.backgroundColor
            = item.palette.color(isSelected ? QPalette::Highlight : QPalette::Base);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, item.widget);
    }
}

QSize HatchSwatchDelegate::sizeHint(const QStyleOptionViewItem& option,
                                    const QModelIndex& /*index*/) const
{
    const int side = sideFor(option.fontMetrics);
    return {side + 4 * kMargin, side + 3 * kMargin + option.fontMetrics.height()};
}

} // namespace corma
