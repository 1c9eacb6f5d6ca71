#include "controls/CIconStatic.h"

#include "controls/icons.h"

#include <QPainter>

namespace {

constexpr QSize kSize(140, 48);

} // namespace

CIconStatic::CIconStatic(int icon, QWidget* parent)
    : QWidget(parent)
{
    if (const QString path = corma::widePicture(icon); !path.isEmpty()) {
        m_picture.load(path);
    }
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize CIconStatic::sizeHint() const
{
    return kSize;
}

QSize CIconStatic::minimumSizeHint() const
{
    return kSize;
}

void CIconStatic::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    // The left edge is beyond the left end of a control that is too narrow.
    const QPoint corner((width() - kSize.width()) / 2, 0);
    m_picture.render(&painter, QRect(corner, kSize));
}
