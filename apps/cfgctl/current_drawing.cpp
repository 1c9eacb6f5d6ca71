#include "current_drawing.h"

#include "console.h"
#include "text.h"

namespace cfgctl {

namespace {

constexpr const char* kAdvice = "pass a DXF drawing to --drawing";

// The library says what is wrong with the drawing; that becomes the one line of wrong usage.
void open(const std::wstring& name)
{
    if (name.empty()) {
        throw UsageError(std::string("--drawing is empty; ") + kAdvice);
    }
    const Listener library(Listener::Pass::nothing);
    if (!corma::openDocument(name.c_str())) {
        std::string message = toBytes(library.heard());
        if (message.ends_with('.')) {
            message.pop_back();
        }
        throw UsageError(message + "; " + kAdvice);
    }
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
        open(*options.drawing);
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

} // namespace cfgctl
