#include "editor/Desk.h"

#include "editor/external_dialogs.h"
#include "foundation/wide_text.h"
#include "inifile/Ident.h"
#include "inifile/numbers.h"
#include "platform/platform.h"
#include "settings/description.h"
#include "settings/messages.h"
#include "settings/texts.h"
#include <corma/translation.h>
#include <corma/xx_Inifile.h>

#include <algorithm>
#include <map>
#include <utility>

namespace corma {

namespace {

constexpr const wchar_t* kTitlePrefix = L"Korvane CfgDesk - ";
constexpr const wchar_t* kSmallPrefix = L"S_";
constexpr std::size_t kLongestBitmap = 511; // characters
constexpr std::size_t kLongestDescription = 2047; // characters
constexpr std::size_t kPathSize = 260; // characters, the terminator counted
constexpr int kValueCapacity = 256; // characters that an external dialog can edit

// The rows of a list while it is filled: a message box that comes up meanwhile still shows the
// former ones.
class FilledRows : public SettingList
{
public:
    FilledRows(const Desk& desk, short accessLevel)
        : m_desk(desk)
        , m_mark(desk.mark())
        , m_accessLevel(accessLevel)
    {
    }

    [[nodiscard]] short accessLevel() const override { return m_accessLevel; }

    // Options have few words in many rows.
    std::wstring translateKey(const std::wstring& word) override
    {
        const auto known = m_translations.find(word);
        return known != m_translations.end()
            ? known->second
            : m_translations.emplace(word, m_desk.translateKey(word)).first->second;
    }

    [[nodiscard]] int selectionMark() const override { return m_mark; }

    void setSelectionMark(int row) override { m_mark = row; }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(m_rows.size()); }

    void deleteAllRows() override { m_rows.clear(); }

    void appendRow(const SettingRow& row) override { m_rows.push_back(row); }

    void setFocus() override { }

    [[nodiscard]] std::vector<SettingRow> take() { return std::move(m_rows); }

private:
    const Desk& m_desk;
    std::map<std::wstring, std::wstring> m_translations;
    std::vector<SettingRow> m_rows;
    int m_mark;
    short m_accessLevel;
};

std::wstring smallFormOf(const std::wstring& bitmap)
{
    const platform::PathParts parts = platform::splitPath(bitmap);
    return parts.folderPath() + kSmallPrefix + parts.fileName();
}

} // namespace

Desk::Desk(const DeskStart& start, Preferences& preferences)
    : m_start(start)
    , m_preferences(preferences)
    , m_started(startModel(start.request))
    , m_tree(start.request.language)
    , m_sort(preferences.sortCategories())
{
    m_start.defaultBitmap.resize(std::min(m_start.defaultBitmap.size(), kLongestBitmap));
}

void Desk::open(DeskView& view)
{
    m_view = &view;
    m_texts = FixedTexts::now();
    rebuildTree();
    fillHead();
    m_view->fitNames();
    showDefaultPicture();
    m_isSearchArmed = true;
    if (m_start.startLocal && m_start.startProject) {
        showGlobalSettings();
    } else if (m_start.startLocal) {
        showLocalSettings();
    } else if (m_start.startProject) {
        showProjectSettings();
    }
    changed();
}

void Desk::changed()
{
    m_view->showState();
}

// --- names ---------------------------------------------------------------------------------------

std::wstring Desk::title() const
{
    const FileNameSet& names = fileNames();
    const LevelMode levels = mode();
    if (levels.local) {
        return kTitlePrefix + text(row::kLocalMode) + L"(" + names.drawingName + L")";
    }
    if (levels.project) {
        return kTitlePrefix + text(row::kProjectMode) + L"(" + names.projectFolder
            + names.projectName + L")";
    }
    return kTitlePrefix + names.projectFolder + names.fileName;
}

std::wstring Desk::configurationFile() const
{
    return fileNames().globalFolder + fileNames().fileName;
}

std::wstring Desk::translateKey(const std::wstring& word) const
{
    return corma::translateKey(configurationFile().c_str(), word, language());
}

// A category that is called as the word for the root cannot be told from it.
std::wstring Desk::selectedName() const
{
    const TreeContents::Item* const item = m_tree.selected();
    if (item == nullptr || item->text == text(row::kGeneral)) {
        return std::wstring(kHeadChapter);
    }
    return item->text;
}

Rubriek* Desk::selectedCategory() const
{
    return model().findCategory(selectedName());
}

Instelling* Desk::settingOfRow(int row) const
{
    const Rubriek* const category = selectedCategory();
    const bool isRow = row >= 0 && row < static_cast<int>(m_rows.size());
    return category == nullptr || !isRow
        ? nullptr
        : category->settings().findSetting(m_rows[static_cast<std::size_t>(row)].name);
}

Instelling* Desk::selectedSetting() const
{
    return m_selectedRows.empty() ? nullptr : settingOfRow(m_selectedRows.front());
}

std::vector<std::wstring> Desk::selectedIdents() const
{
    std::vector<std::wstring> idents;
    for (const int row : m_selectedRows) {
        idents.push_back(m_rows[static_cast<std::size_t>(row)].name);
    }
    return idents;
}

// --- tree and list -------------------------------------------------------------------------------

void Desk::fill(const std::wstring& category, const std::wstring& search, ShownLevels shown)
{
    FilledRows filled(*this, m_accessLevel);
    if (Rubriek* const found = model().findCategory(category)) {
        found->settings().fillList(filled, search, shown);
    } else {
        filled.setSelectionMark(-1);
    }
    m_mark = filled.selectionMark();
    m_rows = filled.take();
    m_selectedRows.clear();
    m_view->showList();
    m_view->focusOn(DeskView::Pane::list);
}

void Desk::fillSelected(const std::wstring& search)
{
    fill(selectedName(), search, model().shown);
}

void Desk::fillHead()
{
    fill(std::wstring(kHeadChapter), m_searchText, model().shown);
}

// The selection that the model restores acts as one of the user does.
void Desk::rebuildTree()
{
    const TreeContents::Item* const former = m_tree.selected();
    TreeContents fresh
        = former == nullptr ? TreeContents(language()) : TreeContents(former->text, language());
    m_started.model->fillTree(fresh, m_sort);
    addIncludedFiles(fresh);
    std::swap(m_tree, fresh);
    m_view->showTree();
    treeSelectionChanged();
}

// A file that is included twice keeps an empty place.
void Desk::addIncludedFiles(TreeContents& tree) const
{
    std::wstring path = configurationFile();
    const xx_Inifile file(path.data(), 0, nullptr);
    for (int index = file.getIncludedFiles() - 1; index >= 0; --index) {
        std::array<wchar_t, kPathSize + 1> name {};
        file.getIncludedFileName(index, name.data(), kPathSize);
        if (name.front() != 0) {
            tree.insertIncludedFile(platform::splitPath(name.data()).fileName(), index);
        }
    }
}

void Desk::selectTreeItem(const TreeContents::Item& item)
{
    m_tree.selectItem(const_cast<TreeContents::Item*>(&item));
    treeSelectionChanged();
    changed();
}

void Desk::treeSelectionChanged()
{
    if (m_isSearchArmed) {
        m_searchText.clear();
        refill();
        showCategoryDescription();
    } else {
        refill();
    }
    clickTreeItem();
    m_view->focusOn(DeskView::Pane::tree);
}

void Desk::clickTreeItem()
{
    showDefaultPicture();
    m_view->fitNames();
    changed();
}

void Desk::activateTreeItem()
{
    const TreeContents::Item* const item = m_tree.selected();
    if (item == nullptr || !item->isIncludedFile()) {
        return;
    }
    std::wstring path = configurationFile();
    const xx_Inifile file(path.data(), 0, nullptr);
    std::array<wchar_t, kPathSize + 1> name {};
    file.getIncludedFileName(item->data - TreeContents::kFirstInclude, name.data(), kPathSize);
    if (name.front() != 0) {
        m_view->editFile(name.data());
    }
}

bool Desk::goesOnToList() const
{
    const TreeContents::Item* const item = m_tree.selected();
    return item != nullptr && item->children.empty() && item->isExpanded;
}

// --- search --------------------------------------------------------------------------------------

void Desk::search()
{
    if (m_isSearchArmed) {
        refill();
    } else {
        m_searchText.clear();
        refill();
        showCategoryDescription();
    }
    m_isSearchArmed = !m_isSearchArmed;
    m_view->fitNames();
    changed();
}

// The text stays, so that a new search can begin from it.
void Desk::searchFocused()
{
    if (m_isSearchArmed) {
        return;
    }
    m_isSearchArmed = true;
    fillSelected({});
    showCategoryDescription();
    m_view->focusOn(DeskView::Pane::search);
    changed();
}

// --- description and picture ---------------------------------------------------------------------

void Desk::showCategoryDescription()
{
    const Rubriek* const category = selectedCategory();
    m_description = category == nullptr ? std::wstring() : category->description;
}

void Desk::showDefaultPicture()
{
    const bool isThere = !defaultBitmap().empty();
    m_picture = {isThere ? smallFormOf(defaultBitmap()) : std::wstring(), isThere};
}

// Without a picture of its own a setting leaves the control shown or hidden as it is.
void Desk::showPictureOf(const Instelling& setting, MakesVisible makesVisible)
{
    const std::wstring own = setting.bitmap();
    if (!own.empty()) {
        m_picture.file = smallFormOf(own);
        m_picture.isVisible = m_picture.isVisible || makesVisible == MakesVisible::yes;
    } else if (!defaultBitmap().empty()) {
        m_picture.file = smallFormOf(defaultBitmap());
    } else {
        m_picture = {};
    }
}

// A click shows the whole text, a move with the keys a single line of it.
void Desk::clickList()
{
    if (m_selectedRows.empty()) {
        m_description.clear();
        changed();
        return;
    }
    const Instelling* const setting = selectedSetting();
    if (setting == nullptr) {
        return;
    }
    if (setting->type() == SettingType::obsolete) {
        m_description = text(row::kDeclaredObsolete);
    } else {
        m_description
            = selectedCategory()->description + L" : " + onLines(setting->longDescription());
        m_description.resize(std::min(m_description.size(), kLongestDescription));
    }
    showPictureOf(*setting, MakesVisible::no);
    changed();
}

void Desk::selectRows(std::vector<int> rows, int changedRow)
{
    m_selectedRows = std::move(rows);
    if (changedRow == -1) {
        m_description.clear();
        changed();
        return;
    }
    const Instelling* const setting = settingOfRow(changedRow);
    if (setting == nullptr) {
        return;
    }
    m_description = setting->type() == SettingType::obsolete ? text(row::kDeclaredObsolete)
                                                             : selectedCategory()->description
            + L": " + m_rows[static_cast<std::size_t>(changedRow)].description;
    showPictureOf(*setting, MakesVisible::yes);
    changed();
}

// --- editing -------------------------------------------------------------------------------------

void Desk::activateList()
{
    if (Instelling* const setting = selectedSetting()) {
        edit(*setting);
    }
}

void Desk::edit(Instelling& setting)
{
    switch (setting.type()) {
    case SettingType::obsolete:
        showMessage(text(row::kDeclaredObsolete), MessageIcon::stop);
        return;
    case SettingType::colour:
        editColour(setting);
        return;
    case SettingType::visualisation:
        editBy(xx_show_visparam_dialog, setting);
        return;
    case SettingType::textStyle:
        editBy(xx_show_textinfo_dialog, setting);
        return;
    case SettingType::hatch:
        editBy(xx_show_hatch_dialog, setting);
        return;
    default:
        if (m_view->editSetting()) {
            refill();
            changed();
        }
    }
}

void Desk::editColour(Instelling& setting)
{
    int chosen = 0;
    if (xx_show_color_dialog(toInt(setting.value()), chosen) == RTNORM) {
        storeGlobally(setting, std::to_wstring(chosen));
    }
}

void Desk::editBy(int (*dialog)(wchar_t* value, int capacity), Instelling& setting)
{
    std::array<wchar_t, kValueCapacity + 1> value {};
    copyBounded(value.data(), value.size(), setting.value());
    if (dialog(value.data(), kValueCapacity) == RTNORM) {
        value.back() = 0;
        storeGlobally(setting, value.data());
    }
}

// Whatever mode the editor is in (test: AnExternalDialogStoresGloballyInEveryMode).
void Desk::storeGlobally(Instelling& setting, const std::wstring& value)
{
    setting.setValue(value);
    // The user is told of a failure; the list shows what the setting holds.
    static_cast<void>(setting.saveToFile(fileNames(), true));
    setting.setGlobalValue(value);
    refill();
    changed();
}

} // namespace corma
