#pragma once

// editor/ - CfgDesk, the settings editor. Each dialog is two classes: what it knows and does, in
// plain C++ (Desk for the main dialog, SettingForm, NameForm), and the dialog of its old name,
// which lays that out on widgets and passes on what the user does.

#include "editor/DeskView.h"
#include "editor/FixedTexts.h"
#include "editor/TreeContents.h"
#include "editor/menu.h"
#include "settings/model_start.h"
#include <corma/cfgdesk.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corma {

/// What the main dialog is started with.
struct DeskStart
{
    StartRequest request; // file, language, project or document
    std::wstring defaultBitmap {}; // empty for none
    CfgDeskCallback callback = nullptr;
    bool startLocal = false;
    bool startProject = false;
    bool clean = false; // global values only, no menu, no New buttons, no help
};

/// Where the editor keeps what it remembers of its user from one start to the next.
class Preferences
{
public:
    Preferences() = default;
    Preferences(const Preferences&) = default;
    Preferences& operator=(const Preferences&) = default;
    virtual ~Preferences() = default;

    [[nodiscard]] virtual bool sortCategories() const = 0; // false until it was set

    /// That it cannot be kept is no error.
    virtual void setSortCategories(bool sort) = 0;
};

/// The small picture of the main dialog.
struct ShownPicture
{
    std::wstring file; // empty for none
    bool isVisible = false;

    bool operator==(const ShownPicture&) const = default;
};

/// The main dialog without its widgets. Whatever the user changes is written at once: there is
/// nothing to save in the end.
///
/// "The selected category" is the one whose text the selected item of the tree has; with the text
/// of an included file it is "Algemeen", as for every name that no category has.
class Desk
{
public:
    /// Loads what the start asks for; problems with the files are told to the user. The preferences
    /// live longer than the object.
    Desk(const DeskStart& start, Preferences& preferences);
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;
    ~Desk() = default;

    /// The level of the user, before open().
    void setAccessLevel(short level) { m_accessLevel = level; }

    /// Shows all on the view, which lives as long as the object is used, and goes into the mode
    /// that the start asks for. Nothing else may be called before it.
    void open(DeskView& view);

    // --- what is shown ---------------------------------------------------------------------------

    [[nodiscard]] const FixedTexts& texts() const { return m_texts; }

    [[nodiscard]] std::wstring title() const;

    [[nodiscard]] const TreeContents& tree() const { return m_tree; }

    [[nodiscard]] const std::vector<SettingRow>& rows() const { return m_rows; }

    /// The row from which the keyboard goes on; -1 for none. It need not be selected.
    [[nodiscard]] int mark() const { return m_mark; }

    [[nodiscard]] const std::wstring& description() const { return m_description; }

    [[nodiscard]] const ShownPicture& picture() const { return m_picture; }

    [[nodiscard]] const std::wstring& searchText() const { return m_searchText; }

    [[nodiscard]] const std::wstring& searchButton() const
    {
        return m_isSearchArmed ? m_texts.search : m_texts.stopSearch;
    }

    [[nodiscard]] bool isClean() const { return m_start.clean; }

    [[nodiscard]] const MenuForm& menu() const { return menuFormOf(language()); }

    [[nodiscard]] bool isAvailable(MenuCommand command) const
    {
        return corma::isAvailable(command, mode());
    }

    /// True for one of the four entries that can be ticked and is.
    [[nodiscard]] bool isTicked(MenuCommand command) const;

    // --- what the user does ----------------------------------------------------------------------

    void run(MenuCommand command);

    /// The selection of the tree moved to an item of tree().
    void selectTreeItem(const TreeContents::Item& item);

    /// A click on an item of the tree, also on the selected one.
    void clickTreeItem();

    /// A double click in the tree: the selected included file opens in an editor of its own.
    void activateTreeItem();

    /// The keys up and down in the tree, before the selection moves.
    void moveInTree() { m_mark = 0; }

    /// The key to the right in the tree goes on to the list.
    [[nodiscard]] bool goesOnToList() const;

    void setSearchText(std::wstring text) { m_searchText = std::move(text); }

    /// The search button, or Enter anywhere.
    void search();

    /// The search field got the focus.
    void searchFocused();

    /// The selection of the list changed: the selected rows from the top, and the row that changed,
    /// -1 for none.
    void selectRows(std::vector<int> rows, int changed);

    /// The row from which the keyboard goes on has moved.
    void setMark(int row) { m_mark = row; }

    /// A click on the list.
    void clickList();

    /// A double click on the list: the first selected setting is edited.
    void activateList();

    void newCategory();
    void newSetting();
    void removeCategory();
    void removeSettings(); // all selected ones
    static void help();

    // --- what the dialogs for values need --------------------------------------------------------

    /// The selected category; null only when there is none at all, as the file could not be read.
    [[nodiscard]] Rubriek* selectedCategory() const;

    /// The first selected setting; null for none.
    [[nodiscard]] Instelling* selectedSetting() const;

    [[nodiscard]] const RubriekenArray& model() const { return *m_started.model; }

    [[nodiscard]] LevelMode mode() const { return {model().projectMode, model().localMode}; }

    [[nodiscard]] const FileNameSet& fileNames() const { return m_started.fileNames; }

    [[nodiscard]] AcDbDatabase* database() const { return m_started.database; }

    [[nodiscard]] CfgDeskCallback callback() const { return m_start.callback; }

    [[nodiscard]] const std::wstring& defaultBitmap() const { return m_start.defaultBitmap; }

    [[nodiscard]] int language() const { return m_start.request.language; }

    /// The text of a stored word in the language of the start, or the word itself.
    [[nodiscard]] std::wstring translateKey(const std::wstring& word) const;

private:
    enum class MakesVisible
    {
        no,
        yes
    };

    [[nodiscard]] std::wstring configurationFile() const;
    [[nodiscard]] std::wstring selectedName() const;
    [[nodiscard]] Instelling* settingOfRow(int row) const;
    [[nodiscard]] std::vector<std::wstring> selectedIdents() const;
    void fill(const std::wstring& category, const std::wstring& search, ShownLevels shown);
    void fillSelected(const std::wstring& search);
    void fillHead();

    void refill() { fillSelected(m_searchText); }

    void rebuildTree();
    void addIncludedFiles(TreeContents& tree) const;
    void treeSelectionChanged();
    void showCategoryDescription();
    void showDefaultPicture();
    void showPictureOf(const Instelling& setting, MakesVisible makesVisible);
    void freshModel();
    void freshModelWithoutProject();
    void loadProject(const std::wstring& path);
    void showGlobalSettings();
    void showProjectSettings();
    void showLocalSettings();
    void takeProject(const std::wstring& path);
    void makeProjectCopies();
    void makeLocalCopies();
    void toggleLevel(MenuCommand command);
    void toggleSorting();
    void askProjectFile(const ProjectQuestion& question);
    void addCategory(const NewName& answer);
    void copySettings(Rubriek& target, const std::wstring& source);
    void addSetting(Rubriek& category, const std::wstring& name);
    void removeSelected();
    void edit(Instelling& setting);
    void editBy(int (*dialog)(wchar_t* value, int capacity), Instelling& setting);
    void editColour(Instelling& setting);
    void storeGlobally(Instelling& setting, const std::wstring& value);
    void changed();

    DeskStart m_start;
    Preferences& m_preferences;
    StartedModel m_started;
    FixedTexts m_texts;
    DeskView* m_view = nullptr; // not owned; null before open()
    TreeContents m_tree;
    std::vector<SettingRow> m_rows;
    std::vector<int> m_selectedRows; // from the top
    int m_mark = -1;
    std::wstring m_description;
    std::wstring m_searchText;
    ShownPicture m_picture;
    std::array<bool, 3> m_levelTicks = {true, true, true}; // of showGlobal, showProject, showLocal
    bool m_isSearchArmed = true;
    bool m_sort = false;
    short m_accessLevel = 0;
};

} // namespace corma
