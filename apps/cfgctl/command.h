#pragma once

// What a command is: its arguments, and what it does with them.

#include "output.h"
#include "usage.h"
#include <corma/texts.h>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace cfgctl {

/// The options that stand behind every command.
struct Options
{
    bool json = false;
    bool cache = false;
    int scramble = 0;
    int language = corma::kEnglish; // of the texts
    short access = 0; // level of the user
    std::optional<std::wstring> moduleFolder;
    std::optional<std::wstring> drawing;
    std::optional<std::wstring> saveAs;
};

/// Declares the arguments and options of a command. The values are written before the command runs.
class Syntax
{
public:
    explicit Syntax(CLI::App& app)
        : m_app(app)
    {
    }

    void argument(const char* name, const char* meaning, std::wstring& value);
    void argument(const char* name, const char* meaning, int& value);
    void optionalArgument(const char* name, const char* meaning,
                          std::optional<std::wstring>& value);

    /// All words that follow, which may be none.
    void argumentList(const char* name, const char* meaning, std::vector<int>& values);

    /// All words that follow, at least one.
    void argumentList(const char* name, const char* meaning, std::vector<std::wstring>& values);

    /// The names are of the form "--size N".
    void option(const char* name, const char* meaning, int& value);
    void option(const char* name, const char* meaning, short& value);
    void option(const char* name, const char* meaning, std::wstring& value);
    void option(const char* name, const char* meaning, std::optional<std::wstring>& value);
    void flag(const char* name, const char* meaning, bool& value);

    /// The heading in the help of the options declared from here on.
    void group(const char* heading) { m_group = heading; }

private:
    template<class Value> CLI::Option* declare(std::string name, const char* meaning, Value& value);
    template<class Value> void declareOption(const char* name, const char* meaning, Value& value);

    CLI::App& m_app;
    const char* m_group = "Options";
};

class Command
{
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    virtual void declare(Syntax& syntax) = 0;

    /// Throws UsageError.
    virtual Answer run(const Options& options) = 0;
};

/// What the program knows of a command before it makes it.
struct CommandEntry
{
    const char* name;
    std::unique_ptr<Command> (*make)();
    const char* purpose;
    const char* examples;
};

/// All commands, in the order of the help.
std::span<const CommandEntry> commands();

} // namespace cfgctl
