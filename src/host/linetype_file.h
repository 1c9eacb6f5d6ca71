#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host {

/// A linetype as a linetype file defines it: `*NAME,description` and below it `A,` with lengths in
/// drawing units, dashes positive, gaps negative, dots 0.
struct LinetypeDefinition
{
    std::wstring name;
    std::wstring description;
    std::vector<double> dashes;
    bool isSimple = true; // made of dashes only; false when it has texts or shapes between them
};

/// All definitions of a linetype file. Comments (";") and lines that are no part of one are passed
/// over.
std::vector<LinetypeDefinition> parseLinetypes(std::wstring_view text);

/// The content of a linetype file: one that the host finds, else the host's own one of that name.
std::optional<std::wstring> linetypeFile(const std::wstring& name);

} // namespace corma::host
