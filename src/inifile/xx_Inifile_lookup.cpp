#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "inifile/xx_Inifile_private.h"

#include <algorithm>

namespace {

constexpr const wchar_t* kNotFound = L"%s not found in configurationfile\n";
constexpr const wchar_t* kNotFoundInFile = L"%s not found in configurationfile (old)\n";

constexpr int kLongestValue = 3000; // characters, the terminator counted

} // namespace

// Included files are asked first, also for idents that this file holds.
int xx_Inifile::getString(wchar_t* idents, wchar_t* value, int size, int report)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        int status = RTCAN;
        for (size_t i = 0; priv != nullptr && i < priv->included.size() && status != RTNORM; ++i) {
            if (const auto& child = priv->included[i]) {
                status = child->getString(idents, value, size, 0);
            }
        }
        if (status == RTNORM) {
            return status;
        }
        corma::Pieces list(corma::view(idents), L",");
        for (status = RTCAN; status != RTNORM && !list.atEnd();) {
            const std::wstring_view ident = list.next();
            status = getStringOneIdent(ident, value, size, list.atEnd() ? report : 0);
        }
        return status;
    });
}

int xx_Inifile::getStringOneIdent(std::wstring_view text, wchar_t* value, int size, int report)
{
    const corma::Ident ident = corma::Ident::parse(text);
    const corma::ValueBuffer out(value, size);
    corma::SourceWalk walk(*this, ident);
    corma::LookupTrace* trace = corma::InifileInside::traceOf(*this);
    for (const corma::Source source : corma::SourceWalk::kSources) {
        if (!walk.applies(source)) {
            continue;
        }
        const bool found = walk.ask(source);
        if (trace != nullptr) {
            corma::InifileInside::note(*trace, *this, walk);
        }
        if (found) {
            walk.copyValue(out);
            walk.keepInCache();
            return RTNORM;
        }
    }
    if (report != 0) {
        xx_printMessage(kNotFound, std::wstring(text).c_str(), 0);
    }
    out.clear();
    return RTERROR;
}

// A lookup that is made once, when the file has just been opened: no index is worth its making.
int xx_Inifile::getStringOneIdentOld(const wchar_t* ident, wchar_t* value, int size, int report)
{
    const corma::ValueBuffer out(value, size);
    int status = corma::kNoOpenFile;
    if (priv != nullptr && priv->file) {
        const corma::TextFile& file = priv->file->text();
        const corma::IdentKey key(corma::Ident::parse(ident));
        if (const auto entry = corma::findByScan(file, key)) {
            file.decodeInto(entry->value, out.text, out.capacity);
            return RTNORM;
        }
        status = corma::kNotThere;
    }
    if (report != 0) {
        xx_printMessage(kNotFoundInFile, ident, 0);
    }
    out.clear();
    return status;
}

bool xx_Inifile::getLocalString(const wchar_t* chapter, const wchar_t* ident, wchar_t* value,
                                int size)
{
    const auto found = corma::InifileInside::localValue(*this, chapter, ident);
    if (found) {
        const corma::ValueBuffer out(value, size);
        corma::copyBounded(out.text, out.capacity, *found);
    }
    return found.has_value();
}

namespace corma {

bool InifileInside::seesDrawing(const xx_Inifile& file)
{
    return file.isIni && acdbHostApplicationServices()->workingDatabase() != nullptr;
}

std::optional<std::wstring> InifileInside::localValue(const xx_Inifile& file,
                                                      const wchar_t* chapter, const wchar_t* ident)
{
    if (!seesDrawing(file)) {
        return std::nullopt;
    }
    return readFromDrawing(nameInDrawing(file).c_str(), chapter, ident, nullptr);
}

// A scrambled file has the settings of the plain one.
std::wstring InifileInside::nameInDrawing(const xx_Inifile& file)
{
    std::wstring name = platform::splitPath(file.filename).fileName();
    if (!name.empty() && view(file.filename).find(L'.') == std::wstring_view::npos) {
        name += L".ini";
    }
    if (file.scrambled <= 0) {
        return name;
    }
    const std::wstring digits = std::to_wstring(file.scrambled);
    for (std::size_t at = name.find(digits); at != std::wstring::npos; at = name.find(digits, at)) {
        name.erase(at, digits.size());
    }
    return name;
}

} // namespace corma

wchar_t* getStringFromIni(wchar_t* fileName, wchar_t* ident, int size, int report)
{
    wchar_t* const none = nullptr;
    return corma::atBoundary(corma::kInifileSource, __LINE__, none, [&] {
        xx_Inifile file(fileName, 0, nullptr);
        std::wstring value(kLongestValue, L'\0');
        const int bounded = std::clamp(size, -kLongestValue, kLongestValue);
        file.getString(ident, value.data(), bounded, report);
        return corma::duplicate(value.c_str());
    });
}
