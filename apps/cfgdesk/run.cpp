#include "run.h"

#include "WindowServices.h"
#include "cfgctl/text.h"
#include "cfgctl/usage.h"
#include "command_line.h"
#include <corma/cfgdesk.h>

namespace cfgdesk {

namespace {

constexpr int kFailed = 1;

// The current document, until the end of the program.
class CurrentDrawing
{
public:
    explicit CurrentDrawing(const std::wstring& name)
    {
        const cfgctl::Listener library(cfgctl::Listener::Pass::nothing);
        if (!corma::openDocument(name.c_str())) {
            std::string message = cfgctl::toBytes(library.heard());
            if (message.ends_with('.')) {
                message.pop_back();
            }
            throw cfgctl::UsageError(message + "; pass a DXF drawing to --drawing");
        }
    }

    CurrentDrawing(const CurrentDrawing&) = delete;
    CurrentDrawing& operator=(const CurrentDrawing&) = delete;

    ~CurrentDrawing() { corma::closeDocument(); }
};

void startOnDrawing(const Options& options)
{
    std::wstring file = options.file;
    xx_startCfgDeskFromDwg(file.data(), corma::currentDocument(), options.language, options.local,
                           options.projectMode);
}

void startWithoutDrawing(const Options& options)
{
    std::wstring file = options.file;
    if (options.clean) {
        xx_startCfgDeskClean(file.data(), options.language);
        return;
    }
    std::wstring project = options.project.value_or(L"");
    xx_startCfgDesk(file.data(), options.language, project.data(), nullptr);
}

// The library says why it cannot.
bool saveIfChanged(const Options& options, std::ostream& out)
{
    if (!corma::isDocumentModified()) {
        return true;
    }
    if (!corma::saveDocument()) {
        return false;
    }
    out << "cfgdesk: saved " << cfgctl::toBytes(*options.drawing) << std::endl;
    return true;
}

int show(const Options& options, std::ostream& out)
{
    WindowServices services;
    xx_setAccessLevel(options.access);
    if (!options.drawing) {
        startWithoutDrawing(options);
        services.showRest();
        return services.wasRefused() ? kFailed : 0;
    }
    const CurrentDrawing drawing(*options.drawing);
    startOnDrawing(options);
    const bool isSaved = saveIfChanged(options, out);
    services.showRest();
    return services.wasRefused() || !isSaved ? kFailed : 0;
}

} // namespace

int run(std::span<const char* const> words, std::ostream& out)
{
    const auto options = parseCommandLine(words, out);
    return options ? show(*options, out) : 0;
}

} // namespace cfgdesk
