#pragma once

// The rules by which settings are written to files and taken out of them, written down a second
// time: slowly, line by line, in two passes over lists of lines. Tests hold the quick ones against
// them.

#include "settings/line_edits.h"

#include <optional>
#include <string>
#include <string_view>

namespace corma::testing {

/// What a text becomes by editToWrite().
std::string plainlyWritten(std::string_view text, std::string_view lineEnd,
                           const SettingLine& setting, Adding adding);

/// What it becomes by editToRemove(); nothing when there is no line to remove.
std::optional<std::string> plainlyRemoved(std::string_view text, std::string_view lineEnd,
                                          std::string_view category, std::string_view name);

/// What it becomes by editToRemoveHeader(); nothing when there is no header to remove.
std::optional<std::string> plainlyWithoutHeader(std::string_view text, std::string_view lineEnd,
                                                std::string_view category);

} // namespace corma::testing
