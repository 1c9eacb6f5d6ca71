#include "editor/DeskDialogTest.h"

#include "controls/CColorListCtrl.h"
#include "controls/CPictureEx.h"
#include "editor/qt_text.h"
#include "platform/text.h"

#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

namespace corma::testing {

namespace {

void write(std::string& text, const QTreeView& view, const QModelIndex& parent,
           const std::string& indent)
{
    for (int row = 0; row < view.model()->rowCount(parent); ++row) {
        const QModelIndex item = view.model()->index(row, 0, parent);
        text += indent + (view.isExpanded(item) ? "-" : "") + utf8(item.data().toString())
            + (view.currentIndex() == item ? " *" : "") + "\n";
        write(text, view, item, indent + "  ");
    }
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts) {
        all += (all.empty() ? "" : " ") + text;
    }
    return all;
}

QModelIndex indexOf(const QAbstractItemModel& model, const char* text)
{
    const QModelIndexList found
        = model.match(model.index(0, 0), Qt::DisplayRole, QString::fromUtf8(text), 1,
                      Qt::MatchExactly | Qt::MatchCaseSensitive | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.front();
}

QPoint placeIn(QTreeView& view, const char* text)
{
    const QModelIndex index = indexOf(*view.model(), text);
    EXPECT_TRUE(index.isValid()) << text;
    view.scrollTo(index);
    return view.visualRect(index).center();
}

void doubleClick(const QTreeView& view, const QPoint& place)
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, place);
    QCoreApplication::processEvents();
}

} // namespace

void DeskDialogTest::TearDown()
{
    if (dialog) {
        end();
    }
    DeskTest::TearDown();
}

void DeskDialogTest::show(const DeskStart& start, short accessLevel)
{
    if (dialog) {
        end();
    }
    dialog = std::make_unique<CCfgDeskExeDlg>(start, preferences);
    dialog->setAccessLevel(accessLevel);
    dialog->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
}

void DeskDialogTest::end()
{
    QCoreApplication::processEvents();
    const Desk& desk = dialog->desk();
    std::string rows;
    for (const SettingRow& row : desk.rows()) {
        rows += toUtf8(row.name + L'=' + row.value + L" (" + row.type + L") " + row.description)
            + "\n";
    }
    EXPECT_EQ(listed(), rows);
    EXPECT_EQ(listView().currentIndex().row(), desk.rows().empty() ? -1 : desk.mark());
    EXPECT_EQ(utf8(dialog->windowTitle()), toUtf8(desk.title()));
    EXPECT_EQ(descriptionShown(), toUtf8(desk.description()));
    EXPECT_EQ(searchShown(), toUtf8(desk.searchText()));
    EXPECT_EQ(textOfButton("searchButton"), toUtf8(desk.searchButton()));
    EXPECT_EQ(at<CPictureEx>("picture").isHidden(), !desk.picture().isVisible);
    dialog.reset();
}

QTreeView& DeskDialogTest::treeView() const
{
    return at<QTreeView>("tree");
}

CColorListCtrl& DeskDialogTest::listView() const
{
    return at<CColorListCtrl>("list");
}

// --- hands ---------------------------------------------------------------------------------------

void DeskDialogTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    QCoreApplication::processEvents();
}

void DeskDialogTest::type(const char* text)
{
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text));
}

void DeskDialogTest::focusOn(const char* name) const
{
    at<QWidget>(name).setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(focus(), name);
}

void DeskDialogTest::click(const char* name) const
{
    auto& widget = at<QWidget>(name);
    // A press takes the focus where there is a window system.
    if ((widget.focusPolicy() & Qt::ClickFocus) != 0) {
        widget.setFocus(Qt::MouseFocusReason);
    }
    QTest::mouseClick(&widget, Qt::LeftButton);
    QCoreApplication::processEvents();
}

QPoint DeskDialogTest::placeOfItem(const char* text) const
{
    return placeIn(treeView(), text);
}

QPoint DeskDialogTest::placeOfRow(const char* name) const
{
    return placeIn(listView(), name);
}

void DeskDialogTest::clickItem(const char* text) const
{
    QTest::mouseClick(treeView().viewport(), Qt::LeftButton, {}, placeOfItem(text));
    QCoreApplication::processEvents();
}

void DeskDialogTest::doubleClickItem(const char* text) const
{
    doubleClick(treeView(), placeOfItem(text));
}

void DeskDialogTest::clickRow(const char* name, Qt::KeyboardModifiers modifiers) const
{
    QTest::mouseClick(listView().viewport(), Qt::LeftButton, modifiers, placeOfRow(name));
    QCoreApplication::processEvents();
}

void DeskDialogTest::doubleClickRow(const char* name) const
{
    doubleClick(listView(), placeOfRow(name));
}

QAction& DeskDialogTest::entry(const char* text) const
{
    for (const QAction* const title : at<QMenuBar>("menu").actions()) {
        for (QAction* const item : title->menu()->actions()) {
            if (item->text() == QString::fromUtf8(text)) {
                return *item;
            }
        }
    }
    throw std::invalid_argument(text); // which fails the test
}

void DeskDialogTest::choose(const char* text) const
{
    QAction& item = entry(text);
    EXPECT_TRUE(item.isEnabled()) << text;
    item.trigger();
    QCoreApplication::processEvents();
}

void DeskDialogTest::backToTheFront() const
{
    QWidget* const above = QApplication::activeModalWidget();
    QWidget* const front = above != nullptr ? above : dialog.get();
    front->activateWindow();
    EXPECT_TRUE(hasFocusWithin(*front));
}

// That a window is the active one says less: its children count as active with it.
bool DeskDialogTest::hasFocusWithin(const QWidget& window)
{
    return QTest::qWaitFor([&] {
        const QWidget* const widget = QApplication::focusWidget();
        return widget != nullptr && widget->window() == &window;
    });
}

void DeskDialogTest::closeLeftOpen(const QPointer<QWidget>& shown)
{
    if (shown != nullptr && shown->isVisible()) {
        ADD_FAILURE() << utf8(shown->objectName()) << " is still open";
        shown->close();
    }
}

// --- eyes ----------------------------------------------------------------------------------------

std::string DeskDialogTest::focus()
{
    const QWidget* const widget = QApplication::focusWidget();
    return widget == nullptr ? "(none)" : utf8(widget->objectName());
}

std::string DeskDialogTest::titleShown() const
{
    return homely(utf8(dialog->windowTitle()));
}

std::string DeskDialogTest::treeShown() const
{
    std::string text;
    write(text, treeView(), {}, "");
    return text;
}

std::string DeskDialogTest::listed() const
{
    const QAbstractItemModel& model = *listView().model();
    const auto cell
        = [&](int row, int column) { return utf8(model.index(row, column).data().toString()); };
    std::string text;
    for (int row = 0; row < model.rowCount(); ++row) {
        text
            += cell(row, 0) + "=" + cell(row, 2) + " (" + cell(row, 1) + ") " + cell(row, 3) + "\n";
    }
    return text;
}

std::string DeskDialogTest::namesListed() const
{
    std::vector<std::string> names;
    for (int row = 0; row < listView().model()->rowCount(); ++row) {
        names.push_back(utf8(listView().model()->index(row, 0).data().toString()));
    }
    return joined(names);
}

std::string DeskDialogTest::selected() const
{
    QModelIndexList rows = listView().selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<std::string> names;
    for (const QModelIndex& row : rows) {
        names.push_back(utf8(row.data().toString()));
    }
    return joined(names);
}

std::string DeskDialogTest::current() const
{
    return utf8(listView().currentIndex().siblingAtColumn(0).data().toString());
}

std::string DeskDialogTest::descriptionShown() const
{
    return utf8(at<QPlainTextEdit>("description").toPlainText());
}

std::string DeskDialogTest::searchShown() const
{
    return utf8(at<QLineEdit>("searchText").text());
}

std::string DeskDialogTest::textOfButton(const char* name) const
{
    return utf8(at<QPushButton>(name).text().remove(u'&'));
}

std::string DeskDialogTest::asked()
{
    std::string texts;
    for (const std::wstring& box : std::exchange(services.boxes, {})) {
        texts += toUtf8(box) + "\n";
    }
    return homely(texts);
}

} // namespace corma::testing
