#pragma once

#include <string_view>

namespace corma {

/// Numbers as the values of settings are read: leading white space is skipped, reading stops at the
/// first character that does not fit, and a text without a number gives 0. The same in every
/// locale. What is too large gives the largest number of its sign.
int toInt(std::wstring_view text);
int toInt(std::string_view text);
double toDouble(std::wstring_view text);

} // namespace corma
