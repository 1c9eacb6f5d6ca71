#pragma once

#include "editor/Desk.h"
#include "settings/LevelsTest.h"

#include <memory>
#include <string>
#include <string_view>

namespace corma::testing {

/// Tests of the dialog for one setting, on a desk with the files and the drawing of LevelsTest. The
/// setting is "A" at the head of the file, unless a test selects another.
class SettingDialogTest : public LevelsTest
{
protected:
    enum class Levels
    {
        global,
        project,
        local,
        localProject
    };

    void TearDown() override;

    /// The definition of the setting A, such as "i max=10".
    void define(std::string_view definition) const;

    /// The description of the setting A, in UTF-8.
    void describe(std::string_view description) const;

    /// A start of the levels; their files must be there, and for local ones the drawing is made
    /// unless there is one.
    [[nodiscard]] DeskStart startAt(Levels levels, int language = 9) const;

    /// Opens the desk with the setting A selected.
    void open(const DeskStart& start);

    void open(Levels levels = Levels::global, int language = 9) { open(startAt(levels, language)); }

    void select(const wchar_t* name);

    [[nodiscard]] Instelling& setting() const { return *desk->selectedSetting(); }

    /// The message boxes since the last time: icon, title and text of each in a line.
    std::string messages();

    std::unique_ptr<Desk> desk;
};

/// The preferences of nobody.
class NoPreferences : public Preferences
{
public:
    [[nodiscard]] bool sortCategories() const override { return false; }

    void setSortCategories(bool /*sort*/) override { }
};

/// A main dialog that nobody sees.
class HiddenView : public DeskView
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

} // namespace corma::testing
