#pragma once

#include <string>

namespace corma {

/// The texts that the main dialog and its children have in common, in one language.
struct FixedTexts
{
    /// In the language in force.
    static FixedTexts now();

    std::wstring newOne; // "New"
    std::wstring search;
    std::wstring stopSearch;
    std::wstring saveGlobally;
    std::wstring saveInProject;
    std::wstring global;
    std::wstring project;
    std::wstring type;
    std::wstring newValue;
    std::wstring specifyName;
    std::wstring copyOf;
    std::wstring cancel;
    std::wstring browse;
    std::wstring help;
};

} // namespace corma
