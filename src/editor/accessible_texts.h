#pragma once

#include <string>

namespace corma {

/// What widgets of the editor are called for those who cannot see them, where no text stands beside
/// them. Tool tips show the same.
enum class AccessibleText
{
    categories,
    settings,
    newCategory,
    newSetting,
    searchText,
    description,
    picture,
    level,
    block,
    blockReference,
    newAttribute,
    extraAttribute,
    browseSource,
    fromList, // of two ways to give a name
    otherName
};

/// In the language in force; English for a language without texts.
std::wstring accessibleText(AccessibleText what);

} // namespace corma
