#include "current_drawing.h"

#include "console.h"
#include "text.h"

namespace cfgctl {

namespace {

// Calls what opens a drawing. The library says what is wrong with it; that becomes the one line of
// wrong usage.
template<class Open> auto open(const std::wstring& name, const std::string& option, Open opener)
{
    const std::string advice = "; pass a DWG or DXF drawing to " + option;
    if (name.empty()) {
        throw UsageError(option + " is empty" + advice);
    }
    const Listener library(Listener::Pass::nothing);
    const auto opened = opener(name.c_str());
    if (!opened) {
        std::string message = toBytes(library.heard());
        if (message.ends_with('.')) {
            message.pop_back();
        }
        throw UsageError(message + advice);
    }
    return opened;
}

} // namespace

CurrentDrawing::CurrentDrawing(const Options& options)
    : m_saveAs(options.saveAs)
{
    if (m_saveAs && !options.drawing) {
        throw UsageError("--save-as needs a drawing to save; pass one with --drawing FILE");
    }
    if (m_saveAs && m_saveAs->empty()) {
        throw UsageError("--save-as is empty; pass the name of a file");
    }
    if (options.drawing) {
        open(*options.drawing, "--drawing", corma::openDocument);
    }
}

CurrentDrawing::~CurrentDrawing()
{
    corma::closeDocument();
}

bool CurrentDrawing::saveIfChanged() const
{
    return !corma::isDocumentModified()
        || corma::saveDocument(m_saveAs ? m_saveAs->c_str() : nullptr);
}

AcDbDatabase* openAside(const std::wstring& file, const std::string& option)
{
    return open(file, option, corma::openDatabase);
}

} // namespace cfgctl
