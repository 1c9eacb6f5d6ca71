#include "editor/CHatchpatternctrl2.h"

#include "editor/HatchSwatchDelegate.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr int kSide = 120; // device-independent pixels
constexpr int kGap = 3;

} // namespace

CHatchpatternctrl2::CHatchpatternctrl2(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void CHatchpatternctrl2::setPreview(std::optional<corma::HatchForm::Preview> preview,
                                    const QString& source)
{
    m_preview = std::move(preview);
    setToolTip(source);
    setAccessibleDescription(source);
    update();
}

int CHatchpatternctrl2::captionHeight() const
{
    return fontMetrics().height() + kGap;
}

QSize CHatchpatternctrl2::sizeHint() const
{
    return {kSide, kSide + captionHeight()};
}

QSize CHatchpatternctrl2::minimumSizeHint() const
{
    return sizeHint();
}

void CHatchpatternctrl2::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    QPalette colours = palette();
    colours.setCurrentColorGroup(group);
    const int side = std::min(width(), height() - captionHeight());
    const QRect square(0, 0, side, side);
    painter.fillRect(square, corma::frameColour(colours));
    const QRect inside = square.adjusted(1, 1, -1, -1);
    painter.fillRect(inside, colours.base());
    if (m_preview) {
        corma::paintSwatch(painter, inside, colours, m_preview->pattern, m_preview->side);
        painter.setPen(colours.color(QPalette::WindowText));
        paintWidth(painter, QRect(0, side + kGap, side, fontMetrics().height()));
    }
}

// As a dimension: the number between two lines that end at the sides of the square.
void CHatchpatternctrl2::paintWidth(QPainter& painter, const QRect& area) const
{
    constexpr int kDigits = 4;
    const QString number = locale().toString(m_preview->side, 'g', kDigits);
    const int half = (fontMetrics().horizontalAdvance(number) + 2 * kGap) / 2;
    const QPoint middle = area.center();
    painter.drawText(area, Qt::AlignCenter, number);
    painter.drawLine(area.left(), middle.y(), middle.x() - half, middle.y());
    painter.drawLine(middle.x() + half, middle.y(), area.right(), middle.y());
    painter.drawLine(area.left(), area.top() + kGap, area.left(), area.bottom() - kGap);
    painter.drawLine(area.right(), area.top() + kGap, area.right(), area.bottom() - kGap);
}
