#pragma once

#include <corma/texts.h>

#include <optional>
#include <ostream>
#include <span>
#include <string>

namespace cfgdesk {

/// What the program is asked to show.
struct Options
{
    std::wstring file; // of the configuration; with `attributes` the drawing
    std::optional<std::wstring> drawing;
    std::optional<std::wstring> project;
    int language = corma::kEnglish; // of the texts
    std::optional<short> access; // level of the user
    bool local = false;
    bool projectMode = false;
    bool clean = false;
    bool attributes = false; // the attribute update of a drawing in place of the editor
    bool records = false; // of its blocks, else of its references
    std::optional<std::wstring> pattern; // for names of blocks; nothing for all
};

/// Reads the words of the command line, of which the first is the program. Nothing when help or the
/// version was asked for, which is printed then. Throws cfgctl::UsageError.
std::optional<Options> parseCommandLine(std::span<const char* const> words, std::ostream& out);

} // namespace cfgdesk
