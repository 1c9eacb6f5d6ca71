#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corma {

/// The filter of a file dialog, as settings tell it, in the form of Qt. "Texts|*.txt;*.doc||" is
/// a description and its patterns with ";" between, a "|" behind each, any number of such pairs;
/// each becomes "Texts (*.txt *.doc)". Patterns that the description tells in brackets at its end
/// are not told twice, and "*.*" stands for all files, also those without a dot. A description
/// without patterns is left out. Nothing for an empty filter, which shows all files.
std::vector<std::wstring> nameFilters(std::wstring_view filter);

} // namespace corma
