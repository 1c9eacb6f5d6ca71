#pragma once

#include <string>
#include <variant>
#include <vector>

namespace corma::host {

/// What a command gets: texts, numbers.
using CommandArgument = std::variant<std::wstring, double, long>;
using CommandArguments = std::vector<CommandArgument>;

/// Runs a command by its arguments, its name first. RTNORM when it ran; RTERROR, with a message,
/// when there is no such command, when it does not take these arguments, or when it failed.
///
/// Commands run to their end here, so one Enter ends whatever CMDNAMES shows, and while nothing
/// runs it is RTNORM and does nothing.
int runCommand(const CommandArguments& arguments);

/// Where acedCommandS() sends its commands.
class CommandRunner
{
public:
    CommandRunner() = default;
    CommandRunner(const CommandRunner&) = delete;
    CommandRunner& operator=(const CommandRunner&) = delete;
    virtual ~CommandRunner() = default;

    /// As runCommand().
    virtual int run(const CommandArguments& arguments) = 0;
};

/// Sends commands to a runner, for null to runCommand(). It stays the caller's. Returns the former
/// one.
CommandRunner* setCommandRunner(CommandRunner* runner);

} // namespace corma::host
