#include "current_drawing.h"

#include "cfgctl/console.h"
#include "cfgctl/text.h"
#include "cfgctl/usage.h"
#include <corma/host.h>

namespace cfgdesk {

CurrentDrawing::CurrentDrawing(const std::wstring& name, const char* advice)
    : m_name(name)
{
    const cfgctl::Listener library(cfgctl::Listener::Pass::nothing);
    if (!corma::openDocument(name.c_str())) {
        std::string message = cfgctl::toBytes(library.heard());
        if (message.ends_with('.')) {
            message.pop_back();
        }
        throw cfgctl::UsageError(message + "; " + advice);
    }
}

CurrentDrawing::~CurrentDrawing()
{
    corma::closeDocument();
}

bool CurrentDrawing::saveIfChanged(std::ostream& out) const
{
    if (!corma::isDocumentModified()) {
        return true;
    }
    if (!corma::saveDocument()) {
        return false;
    }
    out << "cfgdesk: saved " << cfgctl::toBytes(m_name) << std::endl;
    return true;
}

} // namespace cfgdesk
