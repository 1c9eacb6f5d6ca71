#pragma once

#include <string>
#include <string_view>

namespace corma {

/// What breaks the lines of a description, "§" in UTF-8.
inline constexpr std::string_view kLineBreak = "\xC2\xA7";
inline constexpr wchar_t kLineBreakSign = L'\u00A7';

/// The text with something else in each place of a part, which must not be empty.
std::string replaced(std::string_view text, std::string_view part, std::string_view by);

/// A description with blanks for its line breaks.
std::string onOneLine(std::string_view text);

/// A description with a line feed for each of its line breaks.
std::wstring onLines(std::wstring text);

} // namespace corma
