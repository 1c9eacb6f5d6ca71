#include "controls/CategoryTreeView.h"

#include <QKeyEvent>

namespace corma {

CategoryTreeView::CategoryTreeView(QWidget* parent)
    : QTreeView(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
}

void CategoryTreeView::keyPressEvent(QKeyEvent* event)
{
    if ((event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        switch (event->key()) {
        case Qt::Key_Insert:
            Q_EMIT insertPressed();
            return;
        case Qt::Key_Delete:
            Q_EMIT removePressed();
            return;
        case Qt::Key_F2:
            Q_EMIT editPressed();
            return;
        case Qt::Key_Right:
            Q_EMIT rightPressed();
            break;
        case Qt::Key_Up:
        case Qt::Key_Down:
            Q_EMIT movedVertically();
            break;
        default:
            break;
        }
    }
    QTreeView::keyPressEvent(event);
}

} // namespace corma
