#pragma once

#include <array>
#include <string_view>

namespace corma::host {

/// A linetype file that the host has without anyone installing one.
struct OwnLinetypeFile
{
    std::wstring_view name;
    std::string_view content; // UTF-8
};

extern const std::array<OwnLinetypeFile, 2> kOwnLinetypeFiles;

} // namespace corma::host
