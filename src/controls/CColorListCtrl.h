#pragma once

#include <QTreeView>

/// A flat list with columns in which each row is drawn in its own colour: that which the model
/// gives for the first column of the row as Qt::ForegroundRole, changed as far as it must be to be
/// readable. A row without one has the colour of the list. Nothing is edited in place; a press on
/// Enter is left to the dialog.
class CColorListCtrl : public QTreeView
{
    Q_OBJECT

public:
    explicit CColorListCtrl(QWidget* parent = nullptr);

    /// Makes the first column as wide as its header and the rows in sight need.
    void fitFirstColumn();

Q_SIGNALS:
    void insertPressed();
    void removePressed();
    void leftPressed();
    void editPressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
