#pragma once

#include <corma/texts.h>

#include <optional>
#include <ostream>
#include <span>
#include <string>

namespace cfgdesk {

/// What the editor is asked to show.
struct Options
{
    std::wstring file;
    std::optional<std::wstring> drawing;
    std::optional<std::wstring> project;
    int language = corma::kEnglish; // of the texts
    short access = 0; // level of the user
    bool local = false;
    bool projectMode = false;
    bool clean = false;
};

/// Reads the words of the command line, of which the first is the program. Nothing when help or the
/// version was asked for, which is printed then. Throws cfgctl::UsageError.
std::optional<Options> parseCommandLine(std::span<const char* const> words, std::ostream& out);

} // namespace cfgdesk
