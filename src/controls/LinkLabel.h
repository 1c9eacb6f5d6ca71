#pragma once

#include <QFocusEvent>
#include <QLabel>

/// A label with one link, which has the keyboard as soon as the label has: one press on Tab reaches
/// it, the next one leaves it.
class LinkLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        QLabel::focusInEvent(event);
        if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
            focusNextPrevChild(event->reason() == Qt::TabFocusReason);
        }
    }
};
