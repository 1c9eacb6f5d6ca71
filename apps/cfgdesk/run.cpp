#include "run.h"

#include "WindowServices.h"
#include "attributes.h"
#include "command_line.h"
#include "current_drawing.h"
#include <corma/cfgdesk.h>
#include <corma/host.h>

namespace cfgdesk {

namespace {

constexpr int kNotRun = 1;

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

int show(const Options& options, std::ostream& out)
{
    WindowServices services;
    xx_setAccessLevel(options.access.value_or(0));
    if (!options.drawing) {
        startWithoutDrawing(options);
        services.showRest();
        return services.wasRefused() ? kNotRun : 0;
    }
    const CurrentDrawing drawing(*options.drawing, "pass a DWG or DXF drawing to --drawing");
    startOnDrawing(options);
    const bool isSaved = drawing.saveIfChanged(out);
    services.showRest();
    return services.wasRefused() || !isSaved ? kNotRun : 0;
}

} // namespace

int run(std::span<const char* const> words, std::ostream& out)
{
    const auto options = parseCommandLine(words, out);
    if (!options) {
        return 0;
    }
    return options->attributes ? showAttributes(*options, out) : show(*options, out);
}

} // namespace cfgdesk
