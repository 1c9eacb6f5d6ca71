#pragma once

// The menu of the main dialog: its four fixed forms, and what of it can be chosen when.

#include <array>
#include <cstddef>

namespace corma {

/// The entries of the menu, in its order: those of its first title, then those of its second.
enum class MenuCommand
{
    newProject,
    openProject,
    globalSettings,
    projectSettings,
    makeProjectCopy, // behind a line
    makeLocalCopy,
    exit, // behind a line
    showGlobal, // the first one of the second title; these four can be ticked
    showProject,
    showLocal,
    sortCategories
};

inline constexpr std::size_t kMenuCommands = 11;

/// The texts of a menu; "&" stands before the letter that opens it.
struct MenuForm
{
    const wchar_t* firstTitle;
    const wchar_t* secondTitle;
    std::array<const wchar_t*, kMenuCommands> items;

    [[nodiscard]] const wchar_t* textOf(MenuCommand command) const
    {
        return items[static_cast<std::size_t>(command)];
    }
};

/// The form for a language number: 19, 12 and 25 have one of their own, all others the English one.
const MenuForm& menuFormOf(int language);

/// Which levels are loaded on top of the configuration file.
struct LevelMode
{
    bool project = false;
    bool local = false;

    bool operator==(const LevelMode&) const = default;
};

/// True for an entry that can be chosen.
bool isAvailable(MenuCommand command, LevelMode mode);

} // namespace corma
