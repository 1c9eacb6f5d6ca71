// The commands of the main dialog: levels, projects, copies, new and removed categories and
// settings.

#include "editor/Desk.h"
#include "foundation/messages.h"
#include "foundation/xx_findf.h"
#include "host/host.h"
#include "inifile/Ident.h"
#include "platform/platform.h"
#include "settings/load.h"
#include "settings/messages.h"
#include "settings/saving.h"
#include "settings/texts.h"

#include <utility>

namespace corma {

namespace {

constexpr const wchar_t* kDeskExeSource = L"CfgDeskExeDlg.cpp";
constexpr const wchar_t* kHelpFile = L"KVR_xx_corma.chm";
constexpr std::size_t kNamedFileSize = 260; // characters, the terminator counted

bool asks(int question)
{
    return services().messageBox(text(question).c_str(), kEditorTitle, MessageIcon::question,
                                 MessageButtons::yesNo)
        == MessageAnswer::yes;
}

// The current document, locked for writing.
class DocumentLock
{
public:
    DocumentLock()
        : m_document(acDocManagerPtr()->curDocument())
    {
        acDocManagerPtr()->lockDocument(m_document, AcAp::kWrite);
    }

    DocumentLock(const DocumentLock&) = delete;
    DocumentLock& operator=(const DocumentLock&) = delete;

    ~DocumentLock() { acDocManagerPtr()->unlockDocument(m_document); }

private:
    AcApDocument* m_document;
};

} // namespace

void Desk::run(MenuCommand command)
{
    switch (command) {
    case MenuCommand::newProject:
        askProjectFile(
            {.isNew = true, .initialName = fileNames().projectFolder + fileNames().projectName});
        break;
    case MenuCommand::openProject:
        askProjectFile({.isNew = false, .initialName = fileNames().projectName});
        break;
    case MenuCommand::globalSettings:
        showGlobalSettings();
        break;
    case MenuCommand::projectSettings:
        showProjectSettings();
        break;
    case MenuCommand::makeProjectCopy:
        makeProjectCopies();
        break;
    case MenuCommand::makeLocalCopy:
        makeLocalCopies();
        break;
    case MenuCommand::exit:
        m_view->endDialog();
        return;
    case MenuCommand::showGlobal:
    case MenuCommand::showProject:
    case MenuCommand::showLocal:
        toggleLevel(command);
        break;
    case MenuCommand::sortCategories:
        toggleSorting();
        break;
    }
    changed();
}

// --- levels --------------------------------------------------------------------------------------

// The former model goes when the new one stands: what is told meanwhile finds a whole desk.
void Desk::freshModel()
{
    m_started.model = std::make_unique<RubriekenArray>(fileNames());
}

void Desk::freshModelWithoutProject()
{
    FileNameSet& names = m_started.fileNames;
    const std::wstring folder = std::exchange(names.projectFolder, names.globalFolder);
    freshModel();
    names.projectFolder = folder;
}

void Desk::loadProject(const std::wstring& path)
{
    if (!m_started.model->loadProjectFile(path)) {
        tellCannotOpen(path);
    }
}

// The list then shows the head of the file, whatever the tree has selected
// (test: AReloadShowsTheHeadOfTheFile).
void Desk::showGlobalSettings()
{
    m_started.fileNames.projectFolder = fileNames().globalFolder;
    freshModel();
    rebuildTree();
    ShownLevels shown = model().shown;
    shown.local = true;
    fill(std::wstring(kHeadChapter), m_searchText, shown);
}

// The tree is filled before the project is loaded, so categories of the project alone come into it
// when it is filled the next time (test: CategoriesOfAProjectComeWithTheNextTree).
void Desk::showProjectSettings()
{
    FileNameSet& names = m_started.fileNames;
    const std::wstring folder = std::exchange(names.projectFolder, names.globalFolder);
    freshModel();
    rebuildTree();
    names.projectFolder = folder;
    loadProject(names.projectFolder + names.projectName);
    fillHead();
}

void Desk::showLocalSettings()
{
    freshModel();
    rebuildTree();
    m_started.model->loadDrawing(database(), fileNames());
    fillHead();
}

bool Desk::isTicked(MenuCommand command) const
{
    switch (command) {
    case MenuCommand::showGlobal:
        return m_levelTicks[0];
    case MenuCommand::showProject:
        return m_levelTicks[1];
    case MenuCommand::showLocal:
        return m_levelTicks[2];
    case MenuCommand::sortCategories:
        return m_sort;
    default:
        return false;
    }
}

// The ticks outlive a model, its flags do not: the first choice after a reload can set a tick and a
// flag that was set (test: TicksOutliveAReload).
void Desk::toggleLevel(MenuCommand command)
{
    ShownLevels& shown = m_started.model->shown;
    const bool isShown = !isTicked(command);
    switch (command) {
    case MenuCommand::showGlobal:
        m_levelTicks[0] = shown.global = isShown;
        break;
    case MenuCommand::showProject:
        m_levelTicks[1] = shown.project = isShown;
        break;
    default:
        m_levelTicks[2] = shown.local = isShown;
        break;
    }
    refill();
}

void Desk::toggleSorting()
{
    m_sort = !m_sort;
    rebuildTree();
    m_preferences.setSortCategories(m_sort);
}

// --- projects ------------------------------------------------------------------------------------

void Desk::askProjectFile(const ProjectQuestion& question)
{
    ProjectQuestion asked = question;
    const std::wstring& name = fileNames().projectName;
    asked.filter = L"project files (" + name + L")|" + name + L"||";
    if (const auto path = m_view->askProject(asked)) {
        takeProject(*path);
    }
}

// The chosen file is read by the name that it has; what is written later goes beside it under the
// name that belongs to the configuration file (test: AProjectOfAnotherNameIsReadOnce). Its folder
// becomes the current one, so a folder that was told from there is told from the root before.
void Desk::takeProject(const std::wstring& path)
{
    const std::wstring whole = platform::fullPath(path);
    const std::wstring folder = platform::splitPath(whole).folderPath();
    FileNameSet& names = m_started.fileNames;
    names.globalFolder = platform::fullPath(names.globalFolder);
    // One that cannot be entered shows in the load, of which the user is told.
    static_cast<void>(platform::setCurrentFolder(folder));
    if (mode() != LevelMode {}) {
        freshModelWithoutProject();
    }
    names.projectFolder = folder;
    loadProject(whole);
    refill();
    rebuildTree();
    m_view->focusOn(DeskView::Pane::tree);
}

void Desk::makeProjectCopies()
{
    for (const std::wstring& ident : selectedIdents()) {
        Instelling* const setting = selectedCategory()->settings().findSetting(ident);
        if (setting != nullptr && !setting->isProject()) {
            setting->makeProjectCopy();
            static_cast<void>(setting->saveToFile(fileNames(), false)); // the user is told
        }
    }
    refill();
}

void Desk::makeLocalCopies()
{
    for (const std::wstring& ident : selectedIdents()) {
        Instelling* const setting = selectedCategory()->settings().findSetting(ident);
        if (setting != nullptr && !setting->isLocal()) {
            setting->makeLocalCopy();
            static_cast<void>(saveToDrawing(*setting, database(), fileNames())); // the user is told
        }
    }
    refill();
}

// --- new categories and settings -----------------------------------------------------------------

void Desk::newCategory()
{
    const auto answer = m_view->askName(NameOf::category);
    if (!answer) {
        return;
    }
    if (!answer->name.empty() && !model().hasCategory(answer->name)) {
        addCategory(*answer);
    }
    rebuildTree();
    m_view->fitNames();
    changed();
}

void Desk::addCategory(const NewName& answer)
{
    m_started.model->addCategory(std::make_unique<Rubriek>(answer.name.c_str()));
    const bool toGlobal = !model().projectMode;
    const RewriteFailure failure = addHeader(answer.name, fileNames(), toGlobal);
    if (failure.isOne()) {
        // The category is one in memory alone then, and so nothing is put below its header.
        xx_reportError(kDeskExeSource, __LINE__,
                       describe(pathOf(fileNames(), toGlobal), failure).c_str(),
                       failure.error.number);
        return;
    }
    if (answer.copyOf) {
        copySettings(*model().findCategory(answer.name), *answer.copyOf);
    }
}

void Desk::copySettings(Rubriek& target, const std::wstring& source)
{
    const InstellingenArray& settings = model().findCategory(source)->settings();
    for (std::size_t i = 0; i < settings.size(); ++i) {
        auto copy = std::make_unique<Instelling>(settings[i]);
        copy->setCategory(&target);
        const Instelling& added = *copy;
        target.settings().addSetting(std::move(copy));
        static_cast<void>(added.saveToFile(fileNames(), !model().projectMode)); // the user is told
    }
}

void Desk::newSetting()
{
    if (const auto answer = m_view->askName(NameOf::setting)) {
        Rubriek* const category = selectedCategory();
        if (category != nullptr && category->settings().findSetting(answer->name) == nullptr) {
            addSetting(*category, answer->name);
        }
        refill();
    }
    m_view->fitNames();
    changed();
}

// With both levels loaded a new setting goes into the drawing, while a category is removed from the
// project (tests: ANewSettingGoesIntoTheDrawing, ACategoryIsRemovedFromTheProject).
void Desk::addSetting(Rubriek& category, const std::wstring& name)
{
    auto added = std::make_unique<Instelling>(name.c_str());
    Instelling& setting = *added;
    category.settings().addSetting(std::move(added));
    setting.setCategory(&category);
    const LevelMode levels = mode();
    setting.setIsProject(levels.project && !levels.local);
    setting.setIsLocal(levels.local);
    static_cast<void>(levels.local ? saveToDrawing(setting, database(), fileNames())
                                   : setting.saveToFile(fileNames(), !levels.project));
}

// --- removing ------------------------------------------------------------------------------------

void Desk::removeSettings()
{
    if (asks(row::kRemoveSetting)) {
        removeSelected();
        refill();
    }
    m_view->fitNames();
    changed();
}

void Desk::removeSelected()
{
    for (const std::wstring& ident : selectedIdents()) {
        InstellingenArray& settings = selectedCategory()->settings();
        if (mode().local) {
            const DocumentLock lock;
            settings.removeFromDrawing(ident, database(), fileNames());
        } else {
            settings.removeFromFile(ident, fileNames());
        }
    }
}

void Desk::removeCategory()
{
    if (!asks(row::kRemoveCategory)) {
        return;
    }
    const LevelMode levels = mode();
    const bool local = levels.local && !levels.project;
    {
        const DocumentLock lock;
        m_started.model->removeCategory(selectedName(), fileNames(), levels.project, local,
                                        database());
    }
    rebuildTree();
    if (TreeContents::Item* const first = m_tree.first()) {
        m_tree.selectItem(first);
        m_view->showTree();
        treeSelectionChanged();
    }
    changed();
}

// --- help ----------------------------------------------------------------------------------------

void Desk::help()
{
    std::array<wchar_t, kNamedFileSize + 1> path {};
    xx_findfile(kHelpFile, path.data(), kNamedFileSize);
    acedHelp(path.data(), nullptr, 0);
}

} // namespace corma
