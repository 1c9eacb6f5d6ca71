#include "host/dwg/file_form.h"

#include "host/dwg/code_pages.h"
#include "platform/text.h"

namespace corma::host::dwg {

FileForm newForm(DrawingVersion version, int codePage)
{
    FileForm form;
    form.version = version;
    form.codePage = codePage;
    form.page = dxf::CodePage::named(toUtf8(codePageName(codePage)));
    return form;
}

FileForm formOf(const Parts& parts)
{
    FileForm form = newForm(parts.version, parts.codePage);
    form.maintenance = parts.maintenance;
    return form;
}

} // namespace corma::host::dwg
