// Values frozen into the working drawing, where they stay when the files change.

#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "inifile/xx_Inifile_private.h"
#include "settings/RubriekenArray.h"
#include "settings/model_start.h"
#include <corma/xx_Var.h>

#include <string>

namespace {

constexpr int kLongestValue = 512; // characters, the terminator counted
constexpr const wchar_t* kLevelOfDrawings = L"d";

// What a query lists: a header, which has nothing behind its bracket, is no ident.
bool isIdent(std::wstring_view name)
{
    const std::size_t bracket = name.find(L']');
    return bracket != std::wstring_view::npos && bracket + 1 < name.size();
}

} // namespace

void xx_Inifile::makeLocal(wchar_t* text, int report)
{
    corma::atBoundary(corma::kInifileSource, __LINE__, 0, [&] {
        const corma::Ident ident = corma::Ident::parse(corma::view(text));
        const std::wstring chapter(ident.chapter());
        const std::wstring name(ident.name);
        if (corma::InifileInside::localValue(*this, chapter.c_str(), name.c_str())) {
            return 0;
        }
        wchar_t value[kLongestValue] = {};
        getStringOneIdent(corma::view(text), value, kLongestValue, report);
        if (acdbHostApplicationServices()->workingDatabase() != nullptr) {
            corma::InifileInside::storeInDrawing(*this, ident, value);
        }
        return 0;
    });
}

void xx_Inifile::makeLocalChapter(const wchar_t* chapter, int report)
{
    corma::atBoundary(corma::kInifileSource, __LINE__, 0, [&] {
        std::wstring pattern = L"[" + std::wstring(corma::view(chapter)) + L"]*";
        xx_VarArray entries;
        getWcString(pattern.data(), &entries, report, 0);
        for (int i = 0; i < entries.length(); ++i) {
            std::wstring name(corma::view(entries[i]->name()));
            if (isIdent(name)) {
                makeLocal(name.data(), report);
            }
        }
        return 0;
    });
}

// The settings of the head of a file have no chapter in their idents.
void xx_Inifile::makeLocalLevelsLocal(int report)
{
    corma::atBoundary(corma::kInifileSource, __LINE__, 0, [&] {
        const FileNameSet names = corma::namesFor(filename, corma::textLanguage());
        if (*filename == 0 || names.fileName.empty()) {
            return 0;
        }
        const RubriekenArray model(names);
        for (std::size_t i = 0; i < model.size(); ++i) {
            const Rubriek& category = model[i];
            const std::wstring chapter = category.name();
            const std::wstring prefix
                = chapter == corma::kHeadChapter ? L"" : L"[" + chapter + L"]";
            for (std::size_t j = 0; j < category.settings().size(); ++j) {
                const Instelling& setting = category.settings()[j];
                std::wstring ident = prefix + setting.name();
                if (setting.level() == kLevelOfDrawings && ident.size() > prefix.size()) {
                    makeLocal(ident.data(), report);
                }
            }
        }
        return 0;
    });
}
