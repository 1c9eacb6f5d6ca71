#pragma once

#include "command_line.h"

#include <ostream>

namespace cfgdesk {

/// Shows what an attribute update of a drawing found, does what is chosen, and saves the drawing.
/// Returns the exit status; throws cfgctl::UsageError.
int showAttributes(const Options& options, std::ostream& out);

} // namespace cfgdesk
