#include "editor/FakeView.h"

#include "platform/text.h"

#include <iomanip>
#include <sstream>
#include <utility>

namespace corma::testing {

namespace {

FakeView::State stateOf(const Desk& desk)
{
    FakeView::State state {.title = desk.title(),
                           .description = desk.description(),
                           .searchText = desk.searchText(),
                           .searchButton = desk.searchButton(),
                           .picture = desk.picture(),
                           .menu = {}};
    for (std::size_t i = 0; i < kMenuCommands; ++i) {
        state.menu.push_back(desk.isAvailable(static_cast<MenuCommand>(i)));
        state.menu.push_back(desk.isTicked(static_cast<MenuCommand>(i)));
    }
    return state;
}

const char* nameOf(DeskView::Pane pane)
{
    switch (pane) {
    case DeskView::Pane::tree:
        return "tree";
    case DeskView::Pane::list:
        return "list";
    case DeskView::Pane::search:
        return "search";
    }
    return "";
}

void write(std::ostream& out, const TreeContents::Items& items, const TreeContents& tree,
           const std::string& indent)
{
    for (const auto& item : items) {
        out << indent << (item->isExpanded ? "-" : "") << toUtf8(item->text);
        if (item->data != 0) {
            out << " [" << item->data << "]";
        }
        out << (item.get() == tree.selected() ? " *\n" : "\n");
        write(out, item->children, tree, indent + "  ");
    }
}

} // namespace

void FakeView::showTree()
{
    m_calls.emplace_back("tree");
    m_tree = written(m_desk->tree());
}

void FakeView::showList()
{
    m_calls.emplace_back("list");
    m_rows = written(m_desk->rows());
}

void FakeView::showState()
{
    m_state = stateOf(*m_desk);
}

void FakeView::fitNames()
{
    m_calls.emplace_back("fit");
}

void FakeView::focusOn(Pane pane)
{
    m_calls.push_back(std::string("focus ") + nameOf(pane));
}

std::optional<NewName> FakeView::askName(NameOf what)
{
    m_calls.emplace_back(what == NameOf::category ? "ask category" : "ask setting");
    return newName;
}

std::optional<std::wstring> FakeView::askProject(const ProjectQuestion& question)
{
    m_calls.emplace_back("ask project");
    projectQuestions.push_back(question);
    return project;
}

bool FakeView::editSetting()
{
    m_calls.emplace_back("edit");
    return edit && edit();
}

void FakeView::editFile(const std::wstring& file)
{
    m_calls.emplace_back("edit file");
    editedFiles.push_back(file);
}

void FakeView::endDialog()
{
    m_calls.emplace_back("close");
}

std::string FakeView::takeCalls()
{
    std::string all;
    for (const std::string& call : std::exchange(m_calls, {})) {
        all += (all.empty() ? "" : ", ") + call;
    }
    return all;
}

bool FakeView::isUpToDate() const
{
    State now = stateOf(*m_desk);
    now.searchText = m_state.searchText; // the user's own typing comes from the view
    return now == m_state && written(m_desk->rows()) == m_rows;
}

std::string written(const TreeContents& tree)
{
    std::ostringstream out;
    write(out, tree.topLevel(), tree, "");
    return out.str();
}

std::string written(const std::vector<SettingRow>& rows)
{
    std::ostringstream out;
    for (const SettingRow& row : rows) {
        out << row.image << ' ' << toUtf8(row.name) << '=' << toUtf8(row.value) << " ("
            << toUtf8(row.type) << ')';
        if (!row.description.empty()) {
            out << ' ' << toUtf8(row.description);
        }
        if (row.rgb != 0) {
            out << " #" << std::hex << std::setw(6) << std::setfill('0') << row.rgb << std::dec;
        }
        out << '\n';
    }
    return out.str();
}

} // namespace corma::testing

void corma::PrintTo(const ShownPicture& picture, std::ostream* out)
{
    *out << toUtf8(picture.file) << (picture.isVisible ? " (visible)" : " (hidden)");
}
