#pragma once

// What the two forms of a query by wild cards have in common.

#include <corma/xx_Var.h>

#include <memory>
#include <string>

namespace corma {

/// Stands for the chapters themselves in a pattern for idents.
inline constexpr const wchar_t* kChapterMarker = L"XXINIFRUBR";

/// Puts a name and a value behind the results before.
inline void appendPair(xx_VarArray& results, const std::wstring& name, const std::wstring& value)
{
    results.append(std::make_unique<xx_Var>(name.c_str(), value.c_str()).release());
}

} // namespace corma
