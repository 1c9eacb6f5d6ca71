#pragma once

#include <QTreeView>

class QPushButton;

namespace corma {

/// A list of rows with columns, one of which may have a button over its right-hand end. While the
/// button has the focus because its row was selected, the keys go on to belong to the list: arrows
/// select, Space toggles. Once a person goes to the button with Tab or the mouse, Space presses it.
class AttributeRowView : public QTreeView
{
    Q_OBJECT

public:
    explicit AttributeRowView(QWidget* parent = nullptr);

    [[nodiscard]] QPushButton& button() const { return *m_button; }

    /// Shows the button in a row, with the focus when it was not there before; in no row for an
    /// invalid index. The focus goes to the list when the button that had it is hidden.
    void showButtonIn(const QModelIndex& row);

    /// Makes the columns as wide as header and contents need, and the last one wider by the room
    /// for the button, if there are rows.
    void fitColumns();

Q_SIGNALS:
    /// Space was pressed in that row.
    void togglePressed(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

private:
    [[nodiscard]] bool belongsToList(const QKeyEvent& key) const;
    void placeButton();

    QPushButton* m_button; // child of the viewport
    QPersistentModelIndex m_buttonRow;
    bool m_isButtonMeant = false; // a person went to the button itself
};

} // namespace corma
