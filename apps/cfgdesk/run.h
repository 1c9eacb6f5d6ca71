#pragma once

#include <ostream>
#include <span>

namespace cfgdesk {

/// The whole program: reads the words of the command line, shows the editor or the attribute update
/// until it is closed, and saves the drawing. What it did goes to `out`. Returns the exit status;
/// throws cfgctl::UsageError.
int run(std::span<const char* const> words, std::ostream& out);

} // namespace cfgdesk
