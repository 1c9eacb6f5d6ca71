#include "host/commands.h"

#include "host/attribute_sync.h"
#include "host/host.h"
#include "host/variables.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdarg>
#include <optional>
#include <span>
#include <utility>

namespace corma::host {

namespace {

using Run = int (*)(std::span<const CommandArgument> arguments);

struct Command
{
    const wchar_t* name;
    Run run;
};

const std::wstring* textOf(const CommandArgument& argument)
{
    return std::get_if<std::wstring>(&argument);
}

int runAttributeSync(std::span<const CommandArgument> arguments)
{
    const bool hasBoth = arguments.size() == 2;
    const std::wstring* const option = hasBoth ? textOf(arguments[0]) : nullptr;
    const std::wstring* const block = hasBoth ? textOf(arguments[1]) : nullptr;
    if (option == nullptr || block == nullptr || !equalIgnoringCase(*option, L"Name")) {
        acutPrintf(L"\nATTSYNC needs the option \"Name\" and the name of a block.");
        return RTERROR;
    }
    return syncAttributes(acdbHostApplicationServices()->workingDatabase(), *block);
}

constexpr Command kCommands[] = {{L"ATTSYNC", runAttributeSync}};

// The name without what only says which name it is: "_" that of the original language, "." that of
// the command itself, "'" one that runs within another.
std::wstring_view plainName(std::wstring_view name)
{
    name.remove_prefix(std::min(name.find_first_not_of(L"_.'"), name.size()));
    return name;
}

/// Shows a command in CMDNAMES while it runs.
class RunningCommand
{
public:
    explicit RunningCommand(const wchar_t* name) { setVariable(L"CMDNAMES", name); }

    RunningCommand(const RunningCommand&) = delete;
    RunningCommand& operator=(const RunningCommand&) = delete;

    ~RunningCommand() { setVariable(L"CMDNAMES", L""); }
};

bool isEnter(const CommandArguments& arguments)
{
    const std::wstring* const text = arguments.size() == 1 ? textOf(arguments.front()) : nullptr;
    return text != nullptr && text->empty();
}

CommandRunner*& installedRunner()
{
    static CommandRunner* runner = nullptr;
    return runner;
}

} // namespace

int runCommand(const CommandArguments& arguments)
{
    if (isEnter(arguments)) {
        // At its prompt the host would repeat the last command; callers send an Enter to end one,
        // so there it must not begin another.
        setVariable(L"CMDNAMES", L"");
        return RTNORM;
    }
    const std::wstring* const name = arguments.empty() ? nullptr : textOf(arguments.front());
    if (name == nullptr) {
        acutPrintf(L"\nThe name of a command was expected.");
        return RTERROR;
    }
    for (const Command& command : kCommands) {
        if (equalIgnoringCase(plainName(*name), command.name)) {
            const RunningCommand running(command.name);
            return command.run(std::span(arguments).subspan(1));
        }
    }
    acutPrintf(L"\nUnknown command \"%s\".", name->c_str());
    return RTERROR;
}

CommandRunner* setCommandRunner(CommandRunner* runner)
{
    return std::exchange(installedRunner(), runner);
}

namespace {

// Nothing for a type that no argument of a command has: what follows cannot be read then.
std::optional<CommandArguments> readArguments(int type, std::va_list& list)
{
    constexpr int kEnd = 0; // what some callers end with
    CommandArguments arguments;
    for (; type != RTNONE && type != kEnd; type = va_arg(list, int)) {
        switch (type) {
        case RTSTR: {
            const auto* const text = va_arg(list, const ACHAR*);
            if (text == nullptr) {
                return std::nullopt;
            }
            arguments.emplace_back(std::wstring(text));
            break;
        }
        case RTREAL:
            arguments.emplace_back(va_arg(list, double));
            break;
        case RTSHORT:
        case RTLONG:
            arguments.emplace_back(static_cast<long>(va_arg(list, int)));
            break;
        default:
            return std::nullopt;
        }
    }
    return arguments;
}

} // namespace

} // namespace corma::host

int acedCommandS(int type, ...)
{
    std::va_list list;
    va_start(list, type);
    const auto arguments = corma::host::readArguments(type, list);
    va_end(list);
    if (!arguments) {
        acutPrintf(L"\nA command takes texts and numbers only.");
        return RTERROR;
    }
    corma::host::CommandRunner* const runner = corma::host::installedRunner();
    return runner != nullptr ? runner->run(*arguments) : corma::host::runCommand(*arguments);
}
