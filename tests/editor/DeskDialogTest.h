#pragma once

#include "editor/CCfgDeskExeDlg.h"
#include "editor/DeskTest.h"

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class CColorListCtrl;
class QAction;
class QTreeView;

namespace corma::testing {

/// Tests of the main dialog itself on the files of DeskTest, with the hands of a person: keys,
/// clicks and entries of the menu. In the end its widgets must show what its desk says.
class DeskDialogTest : public DeskTest
{
protected:
    void TearDown() override;

    /// Shows a dialog in the place of the former one.
    void show(const DeskStart& start, short accessLevel = 0);

    void show(Levels levels = Levels::global, int language = kEnglish)
    {
        show(startAt(levels, language));
    }

    /// Ends the dialog, after a look whether its widgets show what its desk says.
    void end();

    template<class Widget> [[nodiscard]] Widget& at(const char* name) const
    {
        auto* const found = dialog->findChild<Widget*>(QString::fromUtf8(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    [[nodiscard]] QTreeView& treeView() const;
    [[nodiscard]] CColorListCtrl& listView() const;

    // --- hands -----------------------------------------------------------------------------------

    /// A key, and text, where the focus is.
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void type(const char* text);

    void focusOn(const char* name) const;

    /// In the middle of a widget.
    void click(const char* name) const;

    /// On the first item with a text; on the name of a row.
    void clickItem(const char* text) const;
    void doubleClickItem(const char* text) const;
    void clickRow(const char* name, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    void doubleClickRow(const char* name) const;

    /// The entry of the menu with a text; the test fails without one.
    [[nodiscard]] QAction& entry(const char* text) const;

    /// Chooses an entry, which must be available.
    void choose(const char* text) const;

    /// Does something that brings up a dialog of that kind, and acts on it. What is still open then
    /// is cancelled, and the test fails.
    template<class Dialog>
    void answer(const std::function<void()>& act, const std::function<void(Dialog&)>& reply) const
    {
        bool isAsked = false;
        QTimer::singleShot(0, dialog.get(), [&] {
            const QPointer<QWidget> shown = QApplication::activeModalWidget();
            if (auto* const asked = qobject_cast<Dialog*>(shown.data())) {
                isAsked = true;
                EXPECT_TRUE(hasFocusWithin(*asked));
                reply(*asked);
            }
            closeLeftOpen(shown);
        });
        act();
        QCoreApplication::processEvents();
        EXPECT_TRUE(isAsked);
        backToTheFront();
    }

    // --- eyes ------------------------------------------------------------------------------------

    [[nodiscard]] static std::string focus();
    [[nodiscard]] std::string titleShown() const;

    /// The items of the tree, a line each: indented, "-" before one that is unfolded, "*" behind
    /// the current one.
    [[nodiscard]] std::string treeShown() const;

    /// The rows as "name=value (type) description", a line each.
    [[nodiscard]] std::string listed() const;

    /// The names in the rows, in the selected rows, and in the current row; a blank between.
    [[nodiscard]] std::string namesListed() const;
    [[nodiscard]] std::string selected() const;
    [[nodiscard]] std::string current() const;

    [[nodiscard]] std::string descriptionShown() const;
    [[nodiscard]] std::string searchShown() const;

    /// Without the mark of the letter that leads to it.
    [[nodiscard]] std::string textOfButton(const char* name) const;

    /// The texts of the message boxes since the last time, a line each.
    std::string asked();

    std::unique_ptr<CCfgDeskExeDlg> dialog;

private:
    /// What a window system does when a dialog above closes.
    void backToTheFront() const;

    /// Waits for it.
    static bool hasFocusWithin(const QWidget& window);

    static void closeLeftOpen(const QPointer<QWidget>& shown);
    [[nodiscard]] QPoint placeOfItem(const char* text) const;
    [[nodiscard]] QPoint placeOfRow(const char* name) const;
};

} // namespace corma::testing
