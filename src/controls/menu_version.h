#pragma once

// The version that a menu file tells of itself. Needs no widgets.

#include <string>
#include <string_view>

namespace corma {

/// From the first line that holds "_MENUVERSION", in this case: what stands behind it and two more
/// characters, up to the next double quote or the end of the line. It goes by count and is no
/// parser. Empty when no line has the marker, or it has nothing behind it. The text is UTF-8.
std::wstring menuVersionIn(std::string_view text);

/// That of a file, in any encoding that the project reads; empty for one that cannot be opened.
std::wstring menuVersionOf(std::wstring_view path);

} // namespace corma
