#include "editor/DeskTest.h"

#include "platform/text.h"

#include <algorithm>

namespace corma::testing {

namespace {

const TreeContents::Item* find(const TreeContents::Items& items, const std::wstring& text)
{
    for (const auto& item : items) {
        if (item->text == text) {
            return item.get();
        }
        if (const auto* const below = find(item->children, text)) {
            return below;
        }
    }
    return nullptr;
}

} // namespace

void DeskTest::SetUp()
{
    LevelsTest::SetUp();
    services.answer = MessageAnswer::yes;
}

void DeskTest::TearDown()
{
    if (m_desk) {
        EXPECT_TRUE(view.isUpToDate());
        m_desk.reset();
    }
    LevelsTest::TearDown();
}

DeskStart DeskTest::plain(int language) const
{
    return {.request = {.iniFile = folder.path(L"cfg/tool.ini"), .language = language}};
}

DeskStart DeskTest::onDrawing(int language) const
{
    if (currentDocument() == nullptr) {
        newDrawing();
    }
    DeskStart start = plain(language);
    start.request.document = currentDocument();
    return start;
}

DeskStart DeskTest::startAt(Levels levels, int language) const
{
    if (levels == Levels::local || levels == Levels::localProject) {
        return onDrawing(language);
    }
    DeskStart start = plain(language);
    if (levels == Levels::project) {
        start.request.projectFile = folder.path(L"house/tool.ipr");
    }
    return start;
}

Desk& DeskTest::open(const DeskStart& start, short accessLevel)
{
    m_desk = std::make_unique<Desk>(start, preferences);
    view.setDesk(*m_desk);
    m_desk->setAccessLevel(accessLevel);
    m_desk->open(view);
    view.takeCalls();
    return *m_desk;
}

Desk& DeskTest::open(Levels levels, int language)
{
    const bool hasProject = levels == Levels::project || levels == Levels::localProject;
    if (hasProject && !folder.has(L"house/tool.ipr")) {
        writeIpr("");
    }
    return open(startAt(levels, language));
}

void DeskTest::selectItem(const wchar_t* text)
{
    const auto* const item = find(m_desk->tree().topLevel(), text);
    ASSERT_NE(item, nullptr) << toUtf8(text);
    m_desk->selectTreeItem(*item);
}

void DeskTest::select(const std::vector<std::wstring>& names)
{
    std::vector<int> selected;
    for (const std::wstring& name : names) {
        const auto& all = m_desk->rows();
        const auto row = std::find_if(all.begin(), all.end(),
                                      [&](const SettingRow& each) { return each.name == name; });
        ASSERT_NE(row, all.end()) << toUtf8(name);
        selected.push_back(static_cast<int>(row - all.begin()));
    }
    const int changed = selected.empty() ? -1 : selected.back();
    std::sort(selected.begin(), selected.end());
    m_desk->selectRows(selected, changed);
}

void DeskTest::activate(const wchar_t* name)
{
    select({name});
    m_desk->activateList();
}

std::string DeskTest::names() const
{
    std::string all;
    for (const SettingRow& row : m_desk->rows()) {
        all += (all.empty() ? "" : " ") + toUtf8(row.name);
    }
    return all;
}

std::string DeskTest::title() const
{
    return homely(toUtf8(m_desk->title()));
}

std::string DeskTest::description() const
{
    return toUtf8(m_desk->description());
}

std::string DeskTest::savedDrawing()
{
    EXPECT_TRUE(view.isUpToDate());
    m_desk.reset();
    EXPECT_TRUE(saveDocument());
    EXPECT_TRUE(openDocument(folder.path(L"house/house.dxf").c_str()));
    return drawing();
}

} // namespace corma::testing
