#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corma {

/// The dialog for a new name asks for a setting, or for a category, which can be a copy.
enum class NameOf
{
    setting,
    category
};

struct NewName
{
    std::wstring name; // as it was typed
    std::optional<std::wstring> copyOf {}; // the category to copy; nothing for none
};

/// The file dialogs for projects.
struct ProjectQuestion
{
    bool isNew = false; // asks before a file is overwritten; else the file must be there
    std::wstring initialName {}; // a path, or a name alone
    std::wstring
        filter {}; // what is shown: description and pattern, "|" behind each and at the end
};

/// What the main dialog is to its logic: something that shows it, and asks the user.
class DeskView
{
public:
    enum class Pane
    {
        tree,
        list,
        search
    };

    DeskView() = default;
    DeskView(const DeskView&) = default;
    DeskView& operator=(const DeskView&) = default;
    virtual ~DeskView() = default;

    /// The tree has other items. Until this returns the former ones are still good.
    virtual void showTree() = 0;

    /// The list has other rows, none of them selected, and perhaps another mark.
    virtual void showList() = 0;

    /// Anything else may have changed: title, texts, picture, menu.
    virtual void showState() = 0;

    /// The first column of the list becomes as wide as it need be.
    virtual void fitNames() = 0;

    virtual void focusOn(Pane pane) = 0;

    // Questions; nothing when the user cancels.
    virtual std::optional<NewName> askName(NameOf what) = 0;
    virtual std::optional<std::wstring> askProject(const ProjectQuestion& question) = 0;

    /// Lets the user edit the selected setting. True when it was changed.
    virtual bool editSetting() = 0;

    /// Shows an editor for another file, on the current drawing, until the user closes it.
    virtual void editFile(const std::wstring& file) = 0;

    virtual void endDialog() = 0;
};

} // namespace corma
