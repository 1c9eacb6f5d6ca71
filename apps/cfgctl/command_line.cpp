#include "command_line.h"

#include "text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <string_view>
#include <vector>

namespace cfgctl {

namespace {

constexpr const char* kPurpose
    = "Looks into configuration files: values through included files, the drawing, the project\n"
      "file beside it and the file itself. Changes values at each of these levels, freezes them\n"
      "into drawings, and merges new versions of files. Shows the settings model, every setting\n"
      "with its type, texts and levels, and what a drawing holds. Loads blocks into drawings,\n"
      "brings attributes up to date, copies and erases entities. Reads rows of databases, and\n"
      "translates stored words by one.";

constexpr const char* kExamples = R"(  cfgctl get plattegrond.ini "[Trappen]OptredeMax"
  cfgctl get plattegrond.ini "[Plot]Schaal" --drawing project/woonhuis.dxf
  cfgctl levels plattegrond.ini "[Lagen]Buitenwand"
  cfgctl rows plattegrond.ini Plot --drawing project/woonhuis.dxf --language 19
  cfgctl set plattegrond.ini "[Trappen]OptredeMax" 185
  cfgctl set plattegrond.ini "[Ruimten]Hoogte" 2650 --drawing plan.dxf
  cfgctl update plattegrond.ini nieuw/plattegrond.inp
  cfgctl attupdate --drawing project/woonhuis.dxf
  cfgctl translate plattegrond.ini WOOD --language 12
  cfgctl get --help

Standard output holds the result; what the library says goes to standard error.
Exit status: 0 when the operation succeeded, 1 when it did not (a value that is not there among
others), 2 for wrong usage or an input that cannot be used. A drawing that a command did not change
is not written.
The environment variable ACAD is the list of support folders, separated by ";".)";

void assign(int& value, const std::string& text, const std::string& name)
{
    value = numberIn<int>(text, name);
}

void assign(short& value, const std::string& text, const std::string& name)
{
    value = numberIn<short>(text, name);
}

void assign(std::wstring& value, const std::string& text, const std::string& /*name*/)
{
    value = toWide(text);
}

void assign(std::optional<std::wstring>& value, const std::string& text,
            const std::string& /*name*/)
{
    value = toWide(text);
}

void declareCommon(Syntax& syntax, Options& options)
{
    syntax.group("Common options");
    syntax.option("--scramble N", "Scramble number of FILE; 0 is a plain file", options.scramble);
    syntax.flag("--cache", "Look up through the read cache", options.cache);
    syntax.option("--module-dir DIR", "Folder searched first for files, in place of the program's",
                  options.moduleFolder);
    syntax.option("--language N",
                  "Language of texts: 7 German, 9 English (the default), 10 Spanish,\n"
                  "12 French, 19 Dutch, 21 Polish, 25 Russian; any other has English ones",
                  options.language);
    syntax.option("--access N", "Access level of the user; usually 0", options.access);
    syntax.flag("--json", "One JSON document in place of the plain form", options.json);
    syntax.option("--drawing FILE",
                  "The current drawing, a DWG or DXF file; the project file lies beside\n"
                  "it. It is written back when the command changed it",
                  options.drawing);
    syntax.option("--save-as FILE",
                  "Write the changed drawing here, and leave the first one alone; a DXF\n"
                  "drawing becomes a DWG file under a name that ends in .dwg",
                  options.saveAs);
}

std::string commandNames()
{
    std::string names;
    for (const CommandEntry& entry : commands()) {
        names += (names.empty() ? "" : ", ") + std::string(entry.name);
    }
    return names;
}

void dress(CLI::App& app, const char* examples)
{
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.allow_windows_style_options(false);
    app.get_formatter()->label("REQUIRED", "");
    app.get_formatter()->label("Positionals", "Arguments");
    app.footer(std::string("Examples, in the folder examples/plattegrond:\n") + examples);
}

void printHelp(const CLI::App& app)
{
    std::cout << CLI::detail::find_and_replace(app.help(), "\n\n\n", "\n\n");
}

std::string quotedWords(const std::vector<std::string>& words)
{
    std::string all;
    for (const std::string& word : words) {
        all += " \"" + word + '"';
    }
    return all;
}

// False when help or version was asked for; that is printed then.
bool parse(CLI::App& app, std::span<const char* const> words, const std::string& advice)
{
    try {
        app.parse(static_cast<int>(words.size()), words.data());
        return true;
    } catch (const CLI::CallForHelp&) {
        printHelp(app);
    } catch (const CLI::CallForVersion& version) {
        std::cout << version.what() << '\n';
    } catch (const CLI::ExtrasError&) {
        throw UsageError("not expected:" + quotedWords(app.remaining()) + advice);
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what() + advice);
    }
    return false;
}

// A command is parsed by itself and not as a part of the program: its arguments are then free of
// words that have a meaning to the whole.
ParsedLine parseCommand(const CommandEntry& entry, std::span<const char* const> words)
{
    ParsedLine line {{}, entry.make()};
    CLI::App app(std::string(entry.purpose) + '\n', std::string("cfgctl ") + entry.name);
    dress(app, entry.examples);
    Syntax syntax(app);
    line.command->declare(syntax);
    declareCommon(syntax, line.options);
    if (!parse(app, words, "; see " + app.get_name() + " --help")) {
        line.command.reset();
    }
    return line;
}

// A line without a command asks for help or the version, or is wrong.
ParsedLine parseWithoutCommand(std::span<const char* const> words)
{
    CLI::App app(std::string(kPurpose) + '\n', "cfgctl");
    dress(app, kExamples);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND ARGUMENTS [OPTIONS]");
    app.set_version_flag("--version", std::string("cfgctl ") + CFGCTL_VERSION,
                         "Print the version and exit");
    for (const CommandEntry& entry : commands()) {
        app.add_subcommand(entry.name, entry.purpose)->group("Commands");
    }
    const std::string advice = "; the command goes first; see cfgctl --help";
    if (parse(app, words, advice)) {
        throw UsageError("no command given; the commands are " + commandNames()
                         + "; see cfgctl --help");
    }
    return {};
}

} // namespace

template<class Value>
CLI::Option* Syntax::declare(std::string name, const char* meaning, Value& value)
{
    const auto assignIt = [&value, name](const std::string& text) { assign(value, text, name); };
    return m_app.add_option_function<std::string>(name, assignIt, meaning);
}

template<class Value>
void Syntax::declareOption(const char* name, const char* meaning, Value& value)
{
    const std::string_view whole = name;
    const std::size_t blank = whole.find(' ');
    declare(std::string(whole.substr(0, blank)), meaning, value)
        ->type_name(std::string(whole.substr(blank + 1)))
        ->group(m_group);
}

void Syntax::argument(const char* name, const char* meaning, std::wstring& value)
{
    declare(name, meaning, value)->required()->type_name("");
}

void Syntax::argument(const char* name, const char* meaning, int& value)
{
    declare(name, meaning, value)->required()->type_name("");
}

void Syntax::optionalArgument(const char* name, const char* meaning,
                              std::optional<std::wstring>& value)
{
    declare(name, meaning, value)->type_name("");
}

void Syntax::argumentList(const char* name, const char* meaning, std::vector<int>& values)
{
    const auto assignAll = [&values, name](const std::vector<std::string>& words) {
        for (const std::string& word : words) {
            values.push_back(numberIn<int>(word, name));
        }
    };
    // The parser would take a word in brackets apart into several.
    const auto refuseBrackets = [](const std::string& word) {
        return std::string(word.starts_with('[') ? "a word in brackets" : "");
    };
    m_app.validate_positionals();
    m_app.add_option_function<std::vector<std::string>>(name, assignAll, meaning)
        ->check(refuseBrackets)
        ->type_name("");
}

void Syntax::argumentList(const char* name, const char* meaning, std::vector<std::wstring>& values)
{
    const auto assignAll = [&values](const std::vector<std::string>& words) {
        std::transform(words.begin(), words.end(), std::back_inserter(values), toWide);
    };
    m_app.add_option_function<std::vector<std::string>>(name, assignAll, meaning)
        ->required()
        ->type_name("");
}

void Syntax::option(const char* name, const char* meaning, int& value)
{
    declareOption(name, meaning, value);
}

void Syntax::option(const char* name, const char* meaning, short& value)
{
    declareOption(name, meaning, value);
}

void Syntax::option(const char* name, const char* meaning, std::wstring& value)
{
    declareOption(name, meaning, value);
}

void Syntax::option(const char* name, const char* meaning, std::optional<std::wstring>& value)
{
    declareOption(name, meaning, value);
}

void Syntax::flag(const char* name, const char* meaning, bool& value)
{
    m_app.add_flag(name, value, meaning)->group(m_group);
}

ParsedLine parseCommandLine(std::span<const char* const> words)
{
    const std::string first = words.size() > 1 ? words[1] : "-";
    for (const CommandEntry& entry : commands()) {
        if (first == entry.name) {
            return parseCommand(entry, words.subspan(1));
        }
    }
    if (!first.starts_with('-')) {
        throw UsageError("unknown command \"" + first + "\"; the commands are " + commandNames());
    }
    return parseWithoutCommand(words);
}

} // namespace cfgctl
