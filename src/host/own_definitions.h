#pragma once

#include <array>
#include <string_view>

namespace corma::host {

/// A definition file that the host has without anyone installing one.
struct OwnDefinitionFile
{
    std::wstring_view name;
    std::string_view content; // UTF-8
};

extern const std::array<OwnDefinitionFile, 2> kOwnLinetypeFiles;
extern const std::array<OwnDefinitionFile, 2> kOwnPatternFiles;

} // namespace corma::host
