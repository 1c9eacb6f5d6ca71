#pragma once

#include "editor/Desk.h"

namespace corma::testing {

/// A view that shows nothing and whose user cancels everything.
class QuietView : public DeskView
{
public:
    void showTree() override { }

    void showList() override { }

    void showState() override { }

    void fitNames() override { }

    void focusOn(Pane /*pane*/) override { }

    std::optional<NewName> askName(NameOf /*what*/) override { return std::nullopt; }

    std::optional<std::wstring> askProject(const ProjectQuestion& /*question*/) override
    {
        return std::nullopt;
    }

    bool editSetting() override { return false; }

    void editFile(const std::wstring& /*file*/) override { }

    void endDialog() override { }
};

/// Preferences that hold as long as the object.
class KeptPreferences : public Preferences
{
public:
    [[nodiscard]] bool sortCategories() const override { return sort; }

    void setSortCategories(bool value) override { sort = value; }

    bool sort = false;
};

} // namespace corma::testing
