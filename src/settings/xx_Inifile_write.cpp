// Values written through the settings model, so that the library and the editor change files in one
// way.

#include "foundation/at_boundary.h"
#include "foundation/wide_text.h"
#include "inifile/xx_Inifile_private.h"
#include "settings/Rubriek.h"
#include "settings/messages.h"
#include "settings/model_start.h"
#include "settings/texts.h"

namespace {

constexpr int kGlobalLevel = 0;
constexpr int kProjectLevel = 1;
constexpr int kDrawingLevel = 2;

// Writes a value of a plain file at one of the two levels of files.
void writeToFile(const xx_Inifile& file, const corma::Ident& ident, const wchar_t* value,
                 bool toGlobal, bool mayAdd)
{
    const std::wstring name(ident.name);
    if (*file.getFilename() == 0) {
        corma::showMessage(name + L"\n" + corma::text(corma::row::kNotWritten),
                           corma::MessageIcon::stop);
        return;
    }
    Rubriek category(std::wstring(ident.chapter()).c_str());
    Instelling setting(name.c_str(), value);
    setting.setCategory(&category);
    const FileNameSet names = corma::namesFor(file.getFilename(), corma::textLanguage());
    // The user is told of a failure; a caller has no use for it.
    static_cast<void>(setting.writeToFile(names, toGlobal, mayAdd));
}

} // namespace

void xx_Inifile::writeString(wchar_t* ident, wchar_t* value)
{
    writeString(ident, value, kDrawingLevel, true);
}

void xx_Inifile::writeString(wchar_t* ident, wchar_t* value, int level)
{
    writeString(ident, value, level, true);
}

// A project file gets what it lacks whatever the caller says
// (test: AProjectFileGetsWhatItLacksInAnyCase).
void xx_Inifile::writeString(wchar_t* text, wchar_t* value, int level, bool create)
{
    corma::atBoundary(corma::kInifileSource, __LINE__, 0, [&] {
        using corma::InifileInside;
        const corma::Ident ident = corma::Ident::parse(corma::view(text));
        if (level == kDrawingLevel) {
            InifileInside::renewInCache(*this, ident, corma::view(value));
            if (!InifileInside::storeInDrawing(*this, ident, value)) {
                InifileInside::dropFromCache(*this, ident);
            }
            return 0;
        }
        InifileInside::dropFromCache(*this, ident);
        if (level == kGlobalLevel && scrambled != 0) {
            InifileInside::writeScrambled(*this, ident, corma::view(value));
        } else if (level == kGlobalLevel) {
            writeToFile(*this, ident, value, true, create);
        } else if (level == kProjectLevel && scrambled == 0) {
            writeToFile(*this, ident, value, false, true);
        }
        InifileInside::reopen(*this);
        return 0;
    });
}
