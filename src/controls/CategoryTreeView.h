#pragma once

#include <QTreeView>

namespace corma {

/// A tree without a header that tells of the keys that mean something to its dialog. Nothing is
/// edited in place; a press on Enter is left to the dialog.
class CategoryTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit CategoryTreeView(QWidget* parent = nullptr);

Q_SIGNALS:
    void insertPressed();
    void removePressed();
    void editPressed();

    /// Before the key does in the tree what it does there: open an item or go into it.
    void rightPressed();

    /// Before Up or Down moves the current item.
    void movedVertically();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace corma
