#pragma once

#include <string>
#include <string_view>

namespace corma::host::dwg {

/// The name that $DWGCODEPAGE has for the number of a code page in the head of a file, such as
/// "ANSI_1252" for 30, which is also that of an unknown number.
std::string nameOfCodePage(int number);

/// 30 for a name that is not known.
int numberOfCodePage(std::string_view name);

} // namespace corma::host::dwg
