#pragma once

#include "editor/Desk.h"

#include <QDialog>

#include <array>
#include <functional>
#include <memory>

class QAction;
class QItemSelection;
class QMenu;
class QMenuBar;

namespace Ui {
class CCfgDeskExeDlg;
} // namespace Ui

namespace corma {
class CategoryTreeModel;
class SettingListModel;
} // namespace corma

/// The main dialog of the editor: the categories of a configuration file, the settings of one of
/// them, and what can be done with both. It opens on what it was started with and closes with 0.
class CCfgDeskExeDlg : public QDialog, private corma::DeskView
{
    Q_OBJECT

public:
    /// Loads the files. The preferences live longer than the dialog.
    CCfgDeskExeDlg(const corma::DeskStart& start, corma::Preferences& preferences,
                   QWidget* parent = nullptr);
    CCfgDeskExeDlg(const CCfgDeskExeDlg&) = delete;
    CCfgDeskExeDlg& operator=(const CCfgDeskExeDlg&) = delete;
    ~CCfgDeskExeDlg() override;

    /// Before it is shown.
    void setAccessLevel(short level) { m_desk.setAccessLevel(level); }

    [[nodiscard]] const corma::Desk& desk() const { return m_desk; }

    void setVisible(bool visible) override;

Q_SIGNALS:
    /// The left button of the mouse was released over the list.
    void listReleased();

    /// The search field got the focus, and not with the window or from a menu of its own.
    void searchFocused();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showTree() override;
    void showList() override;
    void showState() override;
    void fitNames() override;
    void focusOn(Pane pane) override;
    std::optional<corma::NewName> askName(corma::NameOf what) override;
    std::optional<std::wstring> askProject(const corma::ProjectQuestion& question) override;
    bool editSetting() override;
    void editFile(const std::wstring& file) override;
    void endDialog() override;

    void setTexts();
    void setButtonTexts();
    void setColumnWidths();
    void setUpTreeAndList();
    void setUpMenu();
    void setUpKeys();
    void connectTree();
    void connectList();
    void connectRest();
    void addItems(QMenu& menu, corma::MenuCommand first, corma::MenuCommand last);
    void addAbout();
    void selectTreeIndex(const QModelIndex& current);
    void selectRows(const QItemSelection& selected, const QItemSelection& deselected);
    void editWithKey();
    void activateList();
    void showPicture();
    void showMenuState();
    void showAbout();

    corma::Desk m_desk;
    std::unique_ptr<Ui::CCfgDeskExeDlg> m_ui;
    std::unique_ptr<corma::CategoryTreeModel> m_treeModel;
    std::unique_ptr<corma::SettingListModel> m_listModel;
    QMenuBar* m_menuBar = nullptr; // the layout's; null without a menu
    std::array<QAction*, corma::kMenuCommands> m_menuItems {}; // the menu's
    corma::ShownPicture m_picture; // what the control shows
    std::wstring m_searchButton; // the text of the button; empty before it has one
    bool m_isOpen = false;
    bool m_isShowing = false; // the widgets follow the desk: no news of theirs is the user's
};
