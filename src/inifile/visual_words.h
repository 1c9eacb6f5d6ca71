#pragma once

// The words and numbers of a value that tells how something is drawn, as lookups read them.

#include <cstddef>
#include <string_view>

namespace corma {

inline constexpr wchar_t kVisualSeparator = L','; // between the fields of such a value

/// Where the text goes on behind so many separators. A text with fewer starts over from its
/// beginning at each one that it lacks, as editors have always read short values.
std::size_t behindSeparators(std::wstring_view text, int count);

/// A colour: 256 for "ByLayer", 0 for "ByBlock", in any case; else the whole number in the text.
int colourFromText(std::wstring_view text);

/// A lineweight: "ByLayer" -1, "ByBlock" -2, "Default" and "ByDefault" -3, in any case; else the
/// legal width next to so many millimetres, in hundredths of one.
int lineweightFromText(std::wstring_view text);

} // namespace corma
