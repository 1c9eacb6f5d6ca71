#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "inifile/xx_Inifile_private.h"

namespace {

constexpr const wchar_t* kNoDrawing = L"%s not stored: no drawing is open";
constexpr const wchar_t* kNotStored = L"%s not stored in the drawing";

} // namespace

void xx_Inifile::writeString(wchar_t* text, wchar_t* value)
{
    corma::atBoundary(corma::kInifileSource, __LINE__, 0, [&] {
        const corma::Ident ident = corma::Ident::parse(corma::view(text));
        corma::InifileInside::renewInCache(*this, ident, corma::view(value));
        const std::wstring chapter(ident.chapter());
        const std::wstring name(ident.name);
        const Acad::ErrorStatus status
            = corma::writeToDrawing(corma::InifileInside::nameInDrawing(*this).c_str(),
                                    chapter.c_str(), name.c_str(), value, nullptr);
        if (status != Acad::eOk) {
            const bool hasDrawing = acdbHostApplicationServices()->workingDatabase() != nullptr;
            xx_printMessage(hasDrawing ? kNotStored : kNoDrawing, text, 0);
        }
        return 0;
    });
}
