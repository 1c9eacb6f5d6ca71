#include "editor/sample_icons.h"

#include "editor/line_sample.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <functional>
#include <utility>

namespace corma {

namespace {

// What an icon that is active stands on: the highlighted entry of an open list, or a button that
// has the focus.
enum class Active
{
    isHighlighted,
    isPlain
};

/// Paints at the size that is asked for, in the colour of texts that stand in the same state.
class SampleEngine : public QIconEngine
{
public:
    using Paint = std::function<void(QPainter& painter, const QRectF& area, const QColor& text)>;

    SampleEngine(Paint paint, Active active)
        : m_paint(std::move(paint))
        , m_active(active)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State /*state*/) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        m_paint(*painter, rect, textColour(mode));
        painter->restore();
    }

    [[nodiscard]] QIconEngine* clone() const override
    {
        return new SampleEngine(m_paint, m_active);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1.0);
    }

    // The size is in pixels of the screen; widths of lines are not.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        pixmap.setDevicePixelRatio(scale);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), (QSizeF(size) / scale).toSize()), mode, state);
        return pixmap;
    }

private:
    [[nodiscard]] QColor textColour(QIcon::Mode mode) const
    {
        const QPalette palette = QGuiApplication::palette();
        switch (mode) {
        case QIcon::Disabled:
            return palette.color(QPalette::Disabled, QPalette::Text);
        case QIcon::Selected:
            return palette.color(QPalette::HighlightedText);
        case QIcon::Active:
            return palette.color(m_active == Active::isHighlighted ? QPalette::HighlightedText
                                                                   : QPalette::Text);
        default:
            return palette.color(QPalette::Text);
        }
    }

    Paint m_paint;
    Active m_active;
};

QIcon iconOf(Active active, SampleEngine::Paint paint)
{
    return QIcon(new SampleEngine(std::move(paint), active));
}

QPen penOf(const QColor& colour, double width)
{
    return {colour, width, Qt::SolidLine, Qt::FlatCap};
}

} // namespace

QIcon colourIcon(const std::optional<host::Rgb>& colour)
{
    return iconOf(
        Active::isPlain, [colour](QPainter& painter, const QRectF& area, const QColor& text) {
            constexpr double kHalf = 0.5; // of the pen, so that its pixels are whole
            const double side = std::min(area.width(), area.height()) - 2;
            QRectF square(0, 0, side - 1, side - 1);
            square.moveTopLeft(area.center() - QPointF(side / 2 - kHalf, side / 2 - kHalf));
            painter.setRenderHint(QPainter::Antialiasing, !colour);
            painter.setPen(penOf(text, 1));
            if (colour) {
                painter.setBrush(QColor(colour->red, colour->green, colour->blue));
            }
            painter.drawRect(square);
            if (!colour) {
                painter.drawLine(square.bottomLeft(), square.topRight());
            }
        });
}

QIcon linetypeIcon(const std::vector<double>& dashes)
{
    return iconOf(Active::isHighlighted,
                  [dashes](QPainter& painter, const QRectF& area, const QColor& text) {
                      constexpr double kWidth = 1.5;
                      const double y = area.center().y();
                      for (const LinePiece& piece : linePieces(dashes, area.width())) {
                          // A dot is as long as it is wide.
                          const double end = std::max(piece.end, piece.begin + kWidth);
                          painter.setPen(penOf(text, kWidth));
                          painter.drawLine(QPointF(area.left() + piece.begin, y),
                                           QPointF(area.left() + end, y));
                      }
                  });
}

QIcon lineweightIcon(int weight)
{
    if (weight < 0) {
        return {};
    }
    return iconOf(Active::isHighlighted,
                  [weight](QPainter& painter, const QRectF& area, const QColor& text) {
                      constexpr double kPixels = 96.0 / 2540.0; // of a hundredth of a millimetre
                      constexpr double kLeast = 0.5;
                      const double width = std::max(kLeast, weight * kPixels);
                      painter.setPen(Qt::NoPen);
                      painter.setBrush(text);
                      painter.drawRect(
                          QRectF(area.left(), area.center().y() - width / 2, area.width(), width));
                  });
}

} // namespace corma
