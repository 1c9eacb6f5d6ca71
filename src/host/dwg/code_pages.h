#pragma once

#include <string>
#include <string_view>

namespace corma::host::dwg {

/// The name that $DWGCODEPAGE has for the number of a code page in the head of a file;
/// L"ANSI_1252" for a number that is not known.
std::wstring codePageName(int number);

/// The opposite, without regard to case; the number of Windows-1252 for a name that is not known.
int codePageNumber(std::wstring_view name);

} // namespace corma::host::dwg
