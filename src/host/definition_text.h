#pragma once

// What the host's definition files (*.lin, *.pat) have in common: lines with pieces between commas,
// and where the files come from.

#include "host/own_definitions.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corma::host {

/// Without the blanks, tabs and carriage returns at both ends.
std::wstring_view trimmed(std::wstring_view text);

/// What stands before the next separator; `text` moves behind it.
std::wstring_view takeUntil(std::wstring_view& text, wchar_t separator);

/// The number that a piece is, with blanks around it or not; nothing for anything else.
std::optional<double> numberIn(std::wstring_view text);

struct DefinitionFile
{
    std::wstring path; // the name alone for one of the host's own
    std::wstring text;
};

/// The content of a file; nothing when it cannot be read.
std::optional<DefinitionFile> readDefinitions(const std::wstring& path);

/// A file that the host finds under a name, else the host's own one of that name.
std::optional<DefinitionFile> definitionFile(const std::wstring& name,
                                             std::span<const OwnDefinitionFile> own);

} // namespace corma::host
