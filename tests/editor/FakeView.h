#pragma once

#include "editor/Desk.h"

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace corma::testing {

/// A view without a window: it keeps what it is told and answers from what the test put in.
class FakeView : public DeskView
{
public:
    /// What showState() was last called for.
    struct State
    {
        std::wstring title;
        std::wstring description;
        std::wstring searchText;
        std::wstring searchButton;
        ShownPicture picture;
        std::vector<bool> menu; // of each entry whether it is available, then whether it is ticked

        bool operator==(const State&) const = default;
    };

    /// The one that is shown, which lives as long as the view is used.
    void setDesk(const Desk& desk) { m_desk = &desk; }

    void showTree() override;
    void showList() override;
    void showState() override;
    void fitNames() override;
    void focusOn(Pane pane) override;
    std::optional<NewName> askName(NameOf what) override;
    std::optional<std::wstring> askProject(const ProjectQuestion& question) override;
    bool editSetting() override;
    void editFile(const std::wstring& file) override;
    void endDialog() override;

    /// What was called since the last time, in order, a blank and a comma between. showState() is
    /// not in it: it may be called more often than need be.
    std::string takeCalls();

    /// True when the view was told of everything that the desk shows now.
    [[nodiscard]] bool isUpToDate() const;

    // Answers.
    std::optional<NewName> newName; // nothing: cancel
    std::optional<std::wstring> project; // nothing: cancel
    std::function<bool()> edit; // none: cancel

    std::vector<ProjectQuestion> projectQuestions;
    std::vector<std::wstring> editedFiles;

private:
    const Desk* m_desk = nullptr;
    std::vector<std::string> m_calls;
    State m_state;
    std::string m_tree;
    std::string m_rows;
};

/// The items of a tree, indented; "*" behind the selected one, "-" before one that is unfolded and
/// "[number]" behind those with a number.
std::string written(const TreeContents& tree);

/// Rows as "image name=value (type) description", one a line; a colour as "#bbggrr" at the end.
std::string written(const std::vector<SettingRow>& rows);

} // namespace corma::testing

namespace corma {

/// For messages of tests.
void PrintTo(const ShownPicture& picture, std::ostream* out);

} // namespace corma
