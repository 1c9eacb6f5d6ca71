#include "command_line.h"
#include "console.h"
#include "current_drawing.h"
#include "text.h"
#include <corma/texts.h>
#include <corma/version_note.h>

#include <cstdio>
#include <exception>
#include <span>
#include <string>

CORMA_VERSION_NOTE("cfgctl, settings of CAD add-ons from the command line", CFGCTL_VERSION,
                   CORMA_COPYRIGHT)

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

void setModuleFolder(cfgctl::ConsoleServices& services, const std::wstring& folder)
{
    if (folder.empty()) {
        throw cfgctl::UsageError("--module-dir is empty; pass a folder such as \".\"");
    }
    services.setModuleFolder(folder);
}

int run(std::span<const char* const> words)
{
    const auto [options, command] = cfgctl::parseCommandLine(words);
    if (!command) {
        return 0;
    }
    cfgctl::ConsoleServices services;
    if (options.moduleFolder) {
        setModuleFolder(services, *options.moduleFolder);
    }
    corma::setTextLanguage(options.language);
    const cfgctl::CurrentDrawing drawing(options);
    cfgctl::Answer answer = command->run(options);
    if (!drawing.saveIfChanged()) {
        answer.fail();
    }
    services.endLine();
    if (!cfgctl::write(answer, options.json)) {
        services.print(L"\ncfgctl: the result could not be written to standard output");
        return kFailed;
    }
    return answer.status == RTNORM ? 0 : kFailed;
}

// An argument that is named in the message may hold line ends.
int tell(const char* message, int exitStatus)
{
    std::fprintf(stderr, "cfgctl: %s\n", cfgctl::withoutControls(message).c_str());
    return exitStatus;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run({argv, static_cast<std::size_t>(argc)});
    } catch (const cfgctl::UsageError& error) {
        return tell(error.what(), kWrongUsage);
    } catch (const std::exception& error) {
        return tell(error.what(), kFailed);
    }
}
