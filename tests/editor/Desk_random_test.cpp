#include "editor/DeskTest.h"
#include "host/host.h"
#include "platform/text.h"
#include "settings/apply_value.h"

#include <array>
#include <map>
#include <random>
#include <set>

using corma::LevelMode;
using corma::MenuCommand;
using corma::MessageAnswer;
using corma::NewName;
using corma::toUtf8;
using corma::TreeContents;
using corma::testing::CurrentFolder;

namespace {

/// No name begins with another one: a removal takes the first line that begins with a name.
constexpr std::array kIdents = {L"Hoogte", L"Breedte", L"Naam", L"Kleur", L"Dikte", L"Soort"};
constexpr std::array kCategories = {L"Tekst", L"Lijn", L"Extra", L"Punt"};

/// A user who does anything, in any order.
class DeskWalk : public corma::testing::DeskTest
{
protected:
    void SetUp() override
    {
        DeskTest::SetUp();
        folder.write(L"cfg/sub.ini", "S=1\n");
        folder.write(L"cfg/tool.inr",
                     "Hoogte=d min=0\n[Tekst]\nNaam=s rgb=1,2,3 bitmap=n.bmp\nKleur=k\nDikte=o\n"
                     "Soort=c choices={a,b} access=0,5\n");
        folder.write(L"cfg/LanEN/tool.ind", "[Tekst]=Over tekst\nNaam=een§twee\n");
    }

    void walk(unsigned seed, Levels levels, int steps);

    int m_compared = 0; // times that the desk had to be what is loaded

private:
    int any(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    bool chance(int outOf) { return any(outOf) == 0; }

    void begin(Levels levels);
    void step();
    void selectAnyItem();
    void selectAnyRows();
    void editAny();
    void removeAny();
    void makeAny();
    void chooseAny();
    void typeAndSearch();
    bool change();
    bool hasFallenBack();
    void check();
    void compareWithFiles();

    std::mt19937 m_random;
    bool m_mayDiffer = false; // from what would be loaded now
    bool m_mayHaveDoubles = false; // settings of a category that is gone stand below another one
};

void DeskWalk::begin(Levels levels)
{
    corma::closeDocument();
    writeIni("#INCLUDE=sub.ini\nHoogte=1\nBreedte=2\n[Tekst]\nNaam=abc\nKleur=3\nDikte=4\n"
             "Soort=a\n[Lijn]\nDikte=5\n");
    writeIpr("Hoogte=p\n[Tekst]\nNaam=p\n[Extra]\nSoort=p\n");
    folder.write(L"other/tool.ipr", "Breedte=o\n");
    if (levels == Levels::local) {
        folder.remove(L"house/tool.ipr");
    }
    if (levels == Levels::local || levels == Levels::localProject) {
        newDrawing();
        store(L"", L"Breedte", L"d");
        store(L"Tekst", L"Naam", L"d");
        store(L"Punt", L"Kleur", L"d");
    }
    m_mayDiffer = false;
    m_mayHaveDoubles = false;
    services.printed.clear();
    open(levels);
}

void DeskWalk::selectAnyItem()
{
    std::vector<const TreeContents::Item*> items;
    for (const auto& item : desk().tree().topLevel()) {
        items.push_back(item.get());
        for (const auto& child : item->children) {
            items.push_back(child.get());
        }
    }
    if (chance(2)) {
        desk().moveInTree();
    }
    desk().selectTreeItem(*items[static_cast<std::size_t>(any(static_cast<int>(items.size())))]);
}

void DeskWalk::selectAnyRows()
{
    std::vector<int> selected;
    int changed = -1;
    for (int row = 0; row < static_cast<int>(desk().rows().size()); ++row) {
        if (chance(2)) {
            selected.push_back(row);
            changed = row;
        }
    }
    desk().setMark(changed);
    desk().selectRows(selected, chance(8) ? -1 : changed);
    if (chance(2)) {
        desk().clickList();
    }
}

bool DeskWalk::change()
{
    Instelling* const setting = desk().selectedSetting();
    if (setting == nullptr || setting->name() == L"#INCLUDE" || chance(4)) {
        return false;
    }
    return corma::applyValue(*setting, std::to_wstring(any(10)),
                             {desk().model(), desk().fileNames(), desk().database()},
                             corma::ValueEditor::generic, {});
}

void DeskWalk::editAny()
{
    selectAnyRows();
    // Where the row belongs to another category than the tree has, nothing is edited.
    view.edit = [this] { return change(); };
    desk().activateList();
    view.edit = nullptr;
}

// A setting that was removed from the project keeps the value below it: removed from the file as
// well it still has that, until the files are loaded again.
bool DeskWalk::hasFallenBack()
{
    const Rubriek* const category = desk().selectedCategory();
    for (std::size_t i = 0; category != nullptr && i < category->settings().size(); ++i) {
        const Instelling& setting = category->settings()[i];
        if (!setting.isProject() && !setting.isLocal() && setting.hasGlobalValue()) {
            return true;
        }
    }
    return false;
}

// A category that is removed with levels on top of the file leaves what they have of it. Without
// the head the next category stands in its place, which the files do not show.
void DeskWalk::removeAny()
{
    services.answer = chance(3) ? MessageAnswer::no : MessageAnswer::yes;
    if (!chance(6)) {
        selectAnyRows();
        m_mayDiffer = m_mayDiffer || hasFallenBack();
        desk().removeSettings();
        return;
    }
    const Rubriek* const category = desk().selectedCategory();
    if (category == nullptr || category->name() == L"Algemeen") {
        return;
    }
    desk().removeCategory();
    m_mayDiffer = m_mayDiffer || desk().mode() != LevelMode {};
    m_mayHaveDoubles = m_mayHaveDoubles || m_mayDiffer;
}

void DeskWalk::makeAny()
{
    if (chance(2)) {
        view.newName = NewName {.name = kIdents[static_cast<std::size_t>(any(kIdents.size()))]};
        desk().newSetting();
    } else {
        view.newName
            = NewName {.name = kCategories[static_cast<std::size_t>(any(kCategories.size()))]};
        // A copy has the levels of what it copies, while it is written to one of them.
        if (desk().mode() == LevelMode {} && chance(2)) {
            view.newName->copyOf = kCategories[static_cast<std::size_t>(any(kCategories.size()))];
        }
        desk().newCategory();
    }
    view.newName.reset();
}

void DeskWalk::chooseAny()
{
    const auto command = static_cast<MenuCommand>(any(corma::kMenuCommands));
    if (command == MenuCommand::exit || !desk().isAvailable(command)) {
        return;
    }
    view.project.reset();
    if (chance(3)) {
        view.project = folder.path(chance(2) ? L"other/tool.ipr" : L"house/tool.ipr");
    }
    const bool isNew = command == MenuCommand::globalSettings
        || command == MenuCommand::projectSettings
        || (view.project && desk().mode() != LevelMode {}
            && (command == MenuCommand::newProject || command == MenuCommand::openProject));
    desk().run(command);
    m_mayDiffer = m_mayDiffer && !isNew;
}

void DeskWalk::typeAndSearch()
{
    constexpr std::array kSearches = {L"", L"a", L"hoogte", L"e+", L"na+dik", L"zz", L"+"};
    desk().setSearchText(kSearches[static_cast<std::size_t>(any(kSearches.size()))]);
    if (chance(3)) {
        desk().searchFocused();
    } else if (chance(2)) {
        desk().search();
    }
}

void DeskWalk::step()
{
    switch (any(10)) {
    case 0:
    case 1:
        selectAnyItem();
        break;
    case 2:
        desk().clickTreeItem();
        desk().activateTreeItem();
        break;
    case 3:
        selectAnyRows();
        break;
    case 4:
        editAny();
        break;
    case 5:
        removeAny();
        break;
    case 6:
        makeAny();
        break;
    case 7:
        typeAndSearch();
        break;
    default:
        selectAnyRows();
        chooseAny();
        break;
    }
}

void DeskWalk::check()
{
    EXPECT_EQ(corma::host::openObjectCount(), 0);
    EXPECT_TRUE(view.isUpToDate());
    EXPECT_GE(desk().mark(), -1);
    if (!m_mayHaveDoubles) {
        EXPECT_EQ(services.allPrinted(), L"");
    }
    if (corma::currentDocument() != nullptr) {
        EXPECT_EQ(corma::currentDocument()->lockMode(), AcAp::kNotLocked);
    }
    std::set<std::wstring> names;
    for (const corma::SettingRow& row : desk().rows()) {
        EXPECT_TRUE(names.insert(row.name).second) << toUtf8(row.name);
    }
}

using Values = std::map<std::wstring, std::map<std::wstring, std::wstring>>;

/// By category and name; categories without a setting are left out.
Values valuesIn(const RubriekenArray& model)
{
    Values values;
    for (std::size_t i = 0; i < model.size(); ++i) {
        const InstellingenArray& settings = model[i].settings();
        for (std::size_t at = 0; at < settings.size(); ++at) {
            values[model[i].name()][settings[at].name()] = settings[at].value();
        }
    }
    return values;
}

// What is loaded now has no line that is none, and is what the desk has.
void DeskWalk::compareWithFiles()
{
    services.boxes.clear();
    const FileNameSet names = desk().fileNames();
    RubriekenArray fresh(names);
    if (desk().mode().project) {
        EXPECT_TRUE(fresh.loadProjectFile(names.projectFolder + names.projectName));
    }
    if (desk().mode().local) {
        fresh.loadDrawing(desk().database(), names);
    }
    EXPECT_EQ(boxes(), "");
    if (!m_mayDiffer && !m_mayHaveDoubles) {
        ++m_compared;
        EXPECT_EQ(valuesIn(desk().model()), valuesIn(fresh));
    }
}

void DeskWalk::walk(unsigned seed, Levels levels, int steps)
{
    SCOPED_TRACE("seed " + std::to_string(seed));
    m_random.seed(seed);
    begin(levels);
    for (int i = 0; i < steps && !HasFailure(); ++i) {
        SCOPED_TRACE("step " + std::to_string(i));
        step();
        check();
        if (i % 10 == 9) {
            compareWithFiles();
        }
    }
}

TEST_F(DeskWalk, KeepsDeskAndFilesTogether)
{
    const CurrentFolder current(folder.path());
    for (unsigned seed = 1; seed <= 3 && !HasFailure(); ++seed) {
        for (const Levels levels :
             {Levels::global, Levels::project, Levels::local, Levels::localProject}) {
            walk(seed, levels, 200);
        }
    }
    EXPECT_GT(m_compared, 100);
}

} // namespace
