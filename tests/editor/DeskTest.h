#pragma once

#include "editor/FakeView.h"
#include "settings/LevelsTest.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corma::testing {

/// Preferences that live as long as the test.
struct FakePreferences : Preferences
{
    [[nodiscard]] bool sortCategories() const override { return sort; }

    void setSortCategories(bool wanted) override
    {
        sort = wanted;
        ++writes;
    }

    bool sort = false;
    int writes = 0;
};

/// Tests of a desk on tool.ini in the folder cfg, with the project and the drawing in the folder
/// house. In the end the view must have been told of all that is shown.
class DeskTest : public LevelsTest
{
protected:
    /// The ways to begin, by the levels that are loaded on top of the file.
    enum class Levels
    {
        global,
        project,
        local,
        localProject
    };

    void SetUp() override;
    void TearDown() override;

    [[nodiscard]] DeskStart plain(int language = kEnglish) const;

    /// On the current drawing; a new one is made when there is none.
    [[nodiscard]] DeskStart onDrawing(int language = kEnglish) const;

    /// A start of the levels; their files must be there, and for local ones the drawing is made
    /// unless there is one.
    [[nodiscard]] DeskStart startAt(Levels levels, int language = kEnglish) const;

    /// Makes a desk and opens it; what the view was told by then is forgotten.
    Desk& open(const DeskStart& start, short accessLevel = 0);

    /// The project file is made where it is wanted and not there.
    Desk& open(Levels levels, int language = kEnglish);

    Desk& desk() { return *m_desk; }

    /// Selects the first item of the tree with that text; the test fails without one.
    void selectItem(const wchar_t* text);

    /// Selects rows by the names in them, from the top; the last one changed.
    void select(const std::vector<std::wstring>& names);

    /// Selects a row and double clicks it.
    void activate(const wchar_t* name);

    [[nodiscard]] std::string tree() const { return written(m_desk->tree()); }

    [[nodiscard]] std::string rows() const { return written(m_desk->rows()); }

    /// The names in the rows, a blank between.
    [[nodiscard]] std::string names() const;

    [[nodiscard]] std::string title() const;
    [[nodiscard]] std::string description() const;

    /// What the drawing holds for tool.ini after it was saved and opened again. Ends the desk.
    std::string savedDrawing();

    FakePreferences preferences;
    FakeView view;

private:
    std::unique_ptr<Desk> m_desk;
};

} // namespace corma::testing
