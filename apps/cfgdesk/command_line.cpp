#include "command_line.h"

#include "cfgctl/text.h"
#include "cfgctl/usage.h"

#include <CLI/CLI.hpp>

namespace cfgdesk {

namespace {

using cfgctl::UsageError;

constexpr const char* kPurpose
    = "Shows the settings of a configuration file in a window, by category, and writes each "
      "change\n"
      "at once: to the file, to the file of a project, or into a drawing, which is saved when the\n"
      "window was closed. With --attributes, shows in place of that which blocks of a drawing are\n"
      "inserted with attributes that are out of date, and updates those that are chosen.\n";

constexpr const char* kExamples = R"(Examples, in the folder examples/plattegrond:
  cfgdesk plattegrond.ini
  cfgdesk plattegrond.ini --language 19 --clean
  cfgdesk plattegrond.ini --drawing project/woonhuis.dxf
  cfgdesk plattegrond.ini --project project/plattegrond.ipr
  cfgdesk --attributes project/woonhuis.dxf
  cfgdesk --attributes project/woonhuis.dxf --pattern "PG-DEUR*"

Exit status: 0 when the window was closed, 1 when no window can be shown, the drawing could not be
saved or attributes could not be brought up to date, 2 for wrong usage or a drawing that cannot be
read.)";

constexpr const char* kAdvice = "; see cfgdesk --help";

struct Declared
{
    CLI::App& app;

    void text(const char* name, const char* type, const char* meaning,
              std::optional<std::wstring>& value) const
    {
        const auto assign = [&value](const std::string& word) { value = cfgctl::toWide(word); };
        app.add_option_function<std::string>(name, assign, meaning)->type_name(type);
    }

    template<class Number, class Value>
    void number(const char* name, const char* meaning, Value& value) const
    {
        const auto assign = [&value, name](const std::string& word) {
            value = cfgctl::numberIn<Number>(word, name);
        };
        app.add_option_function<std::string>(name, assign, meaning)->type_name("N");
    }
};

void declare(CLI::App& app, Options& options)
{
    const Declared declared {app};
    app.add_option_function<std::string>(
           "FILE", [&options](const std::string& word) { options.file = cfgctl::toWide(word); },
           "The configuration file; with --attributes the drawing")
        ->required()
        ->type_name("");
    declared.text("--drawing", "FILE",
                  "Show the values of this drawing and of the project file beside it",
                  options.drawing);
    declared.text("--project", "FILE",
                  "Show the values of this project file; it is made when it is not there",
                  options.project);
    app.add_flag("--local", options.local, "Show the drawing without the project");
    app.add_flag("--project-mode", options.projectMode, "Show the project without the drawing");
    app.add_flag("--clean", options.clean, "Global values only, without menu, New and Help");
    declared.number<int>("--language",
                         "Language of the window: 7 German, 9 English (the default), 10 Spanish,\n"
                         "12 French, 19 Dutch, 21 Polish, 25 Russian; any other is English",
                         options.language);
    declared.number<short>("--access", "Access level of the user; usually 0", options.access);
    app.add_flag("--attributes", options.attributes,
                 "Bring attributes up to date in place of settings: FILE is a DWG or\n"
                 "DXF drawing, whose references are compared with their blocks");
    app.add_flag("--records", options.records,
                 "With --attributes: compare blocks with drawing files of their names");
    declared.text("--pattern", "P",
                  "With --attributes: only blocks whose names fit, such as \"DOOR*\"",
                  options.pattern);
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("--version", std::string("cfgdesk ") + CFGDESK_VERSION,
                         "Print the version and exit");
    app.allow_windows_style_options(false);
    app.get_formatter()->label("REQUIRED", "");
    app.get_formatter()->label("Positionals", "Arguments");
    app.footer(kExamples);
}

void refuse(bool isWrong, const char* message)
{
    if (isWrong) {
        throw UsageError(message + std::string(kAdvice));
    }
}

void checkAttributes(const Options& options)
{
    const bool isOfEditor = options.drawing || options.project || options.local
        || options.projectMode || options.clean || options.access;
    refuse(options.pattern == L"", "--pattern is empty");
    refuse(options.attributes && isOfEditor,
           "--attributes cannot go with --drawing, --project, --local, --project-mode, --clean or "
           "--access; FILE is the drawing");
    refuse(options.records && !options.attributes, "--records needs --attributes");
    refuse(options.pattern && !options.attributes, "--pattern needs --attributes");
}

// An empty name is nearly always a variable of a script that was not set.
void check(const Options& options)
{
    const bool hasMode = options.local || options.projectMode;
    refuse(options.file.empty(), "FILE is empty");
    checkAttributes(options);
    refuse(options.drawing == L"", "--drawing is empty");
    refuse(options.project == L"", "--project is empty");
    refuse(options.project && options.drawing,
           "--project cannot go with --drawing, whose project file lies beside it");
    refuse(options.clean && (options.drawing || options.project || hasMode),
           "--clean cannot go with --drawing, --project, --local or --project-mode");
    refuse(options.local && !options.drawing, "--local needs a drawing; pass one with --drawing");
    refuse(options.projectMode && !options.drawing,
           "--project-mode needs a drawing, beside which the project lies; pass one with "
           "--drawing, or the project with --project");
}

std::string quotedWords(const std::vector<std::string>& words)
{
    std::string all;
    for (const std::string& word : words) {
        all += " \"" + word + '"';
    }
    return all;
}

} // namespace

std::optional<Options> parseCommandLine(std::span<const char* const> words, std::ostream& out)
{
    Options options;
    CLI::App app(kPurpose, "cfgdesk");
    declare(app, options);
    try {
        app.parse(static_cast<int>(words.size()), words.data());
    } catch (const CLI::CallForHelp&) {
        out << CLI::detail::find_and_replace(app.help(), "\n\n\n", "\n\n");
        return std::nullopt;
    } catch (const CLI::CallForVersion& version) {
        out << version.what() << '\n';
        return std::nullopt;
    } catch (const CLI::ExtrasError&) {
        throw UsageError("not expected:" + quotedWords(app.remaining()) + kAdvice);
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what() + std::string(kAdvice));
    }
    check(options);
    return options;
}

} // namespace cfgdesk
