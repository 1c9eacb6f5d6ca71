#include "editor/WrappedCheckBox.h"

#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

namespace corma {

namespace {

constexpr int kTextFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int kUsualWidth = 60; // of the text, in widths of a usual letter
constexpr int kLeastWidth = 20;

} // namespace

WrappedCheckBox::WrappedCheckBox(QWidget* parent)
    : QCheckBox(parent)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred, QSizePolicy::CheckBox);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int WrappedCheckBox::textLeft() const
{
    return style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this)
        + style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this);
}

QSize WrappedCheckBox::textSize(int width) const
{
    const QRect space(0, 0, std::max(width, 1), QWIDGETSIZE_MAX);
    return fontMetrics().boundingRect(space, kTextFlags, text()).size();
}

int WrappedCheckBox::heightForWidth(int width) const
{
    const int indicator = style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this);
    return std::max({textSize(width - textLeft()).height(), fontMetrics().height(), indicator});
}

QSize WrappedCheckBox::sizeHint() const
{
    const int usual = fontMetrics().averageCharWidth() * kUsualWidth;
    const int width = textLeft() + std::min(textSize(usual).width(), usual);
    return {width, heightForWidth(width)};
}

QSize WrappedCheckBox::minimumSizeHint() const
{
    const int least = textLeft() + fontMetrics().averageCharWidth() * kLeastWidth;
    return {std::min(least, sizeHint().width()), fontMetrics().height()};
}

// Also a click on the space behind the last word counts, as it is beside the text.
bool WrappedCheckBox::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

void WrappedCheckBox::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);

    const int line = fontMetrics().height();
    const int width = style()->pixelMetric(QStyle::PM_IndicatorWidth, &option, this);
    const int height = style()->pixelMetric(QStyle::PM_IndicatorHeight, &option, this);
    QStyleOptionButton tick = option;
    tick.rect = QStyle::visualRect(layoutDirection(), rect(),
                                   QRect(0, std::max(0, (line - height) / 2), width, height));
    painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, tick);

    const QRect space = QStyle::visualRect(layoutDirection(), rect(),
                                           QRect(textLeft(), std::max(0, (height - line) / 2),
                                                 rect().width() - textLeft(), rect().height()));
    painter.drawItemText(space, kTextFlags, palette(), isEnabled(), text(), QPalette::WindowText);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = QRect(space.topLeft(), textSize(space.width())).intersected(rect());
        focus.backgroundColor = palette().color(QPalette::Window);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

} // namespace corma
