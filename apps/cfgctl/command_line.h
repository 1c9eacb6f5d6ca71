#pragma once

#include "command.h"

#include <memory>
#include <span>

namespace cfgctl {

/// A command with its arguments, ready to run.
struct ParsedLine
{
    Options options;
    std::unique_ptr<Command> command; // null: help or version was asked for, and is printed
};

/// Reads the words of the command line, of which the first is the program. Throws UsageError.
ParsedLine parseCommandLine(std::span<const char* const> words);

} // namespace cfgctl
