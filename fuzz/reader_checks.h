#pragma once

// What must hold for any text that is read as a configuration file.

#include <string>
#include <string_view>
#include <vector>

namespace corma::fuzzing {

/// An open file with what it is made of: its path, its scramble number and its text in characters.
struct OpenedText
{
    std::wstring path;
    int scrambleNumber = 0;
    std::wstring text;
};

/// Idents that are in a text, and some that are nearly in it.
std::vector<std::wstring> identsIn(std::wstring_view text, unsigned choice);

/// Looks each ident up thrice, by a scan and by an index, and holds the answers against a plain
/// reading of the text; then runs the typed getters on the first.
void checkLookups(const OpenedText& file, const std::vector<std::wstring>& idents);

/// Holds the wild-card listings of the whole file against each other.
void checkWildcards(const OpenedText& file);

} // namespace corma::fuzzing
