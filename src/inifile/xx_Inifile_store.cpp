// Values stored where the settings model has no part: in scrambled files and, by name, in drawings.

#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "inifile/scrambled_rewrite.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <array>

namespace {

constexpr const wchar_t* kNoDrawing = L"%s not stored: no drawing is open";
constexpr const wchar_t* kNotStored = L"%s not stored in the drawing";
constexpr const wchar_t* kCannotOpen = L"\nCannot open %s";
constexpr const wchar_t* kCannotWrite = L"\nCannot write %s";
constexpr const wchar_t* kCannotHold
    = L"%s not written: its value has a character that Windows-1252 does not have";

// How far the change of a file came.
enum class Came
{
    nowhere,
    toOpening,
    toWriting
};

// A temporary file that cannot be made is not told
// (test: AFolderThatTakesNoFileIsNotTold).
bool isTold(const corma::platform::FileError& error, Came came)
{
    using Cause = corma::platform::FileError::Cause;
    const bool isRefused = error.cause == Cause::denied || error.cause == Cause::badPath;
    return error.isOne() && !(came == Came::toOpening && isRefused);
}

} // namespace

namespace corma {

void InifileInside::writeScrambled(const xx_Inifile& file, const Ident& ident,
                                   std::wstring_view value)
{
    const auto bytes = toWindows1252(value);
    if (!bytes) {
        xx_printMessage(kCannotHold, std::wstring(ident.name).c_str(), 0);
        return;
    }
    using platform::FileRewrite;
    platform::FileError error;
    Came came = Came::nowhere;
    {
        FileRewrite rewrite(file.filename, std::wstring(file.filename) + L"2",
                            FileRewrite::Missing::isFailure);
        const auto changed = withScrambledValue(rewrite.content(), file.scrambled, ident, *bytes);
        if (!rewrite.error().isOne() && !changed) {
            return; // a file that is not scrambled at all would not survive being written
        }
        if (!rewrite.error().isOne()) {
            came = Came::toOpening;
            const std::array<std::string_view, 1> whole {*changed};
            if (rewrite.write(whole)) {
                came = Came::toWriting;
                static_cast<void>(rewrite.commit()); // its error tells
            }
        }
        error = rewrite.error();
    }
    if (isTold(error, came)) {
        const wchar_t* const format = came == Came::nowhere ? kCannotOpen : kCannotWrite;
        xx_reportError(kInifileSource, __LINE__, formatted(format, file.filename).c_str(),
                       error.number);
    }
}

bool InifileInside::storeInDrawing(const xx_Inifile& file, const Ident& ident, const wchar_t* value)
{
    const std::wstring chapter(ident.chapter());
    const std::wstring name(ident.name);
    const Acad::ErrorStatus status = writeToDrawing(nameInDrawing(file).c_str(), chapter.c_str(),
                                                    name.c_str(), value, nullptr);
    if (status == Acad::eOk) {
        return true;
    }
    const bool hasDrawing = acdbHostApplicationServices()->workingDatabase() != nullptr;
    const std::wstring whole = std::wstring(ident.prefix).append(ident.name);
    xx_printMessage(hasDrawing ? kNotStored : kNoDrawing, whole.c_str(), 0);
    return false;
}

void InifileInside::reopen(xx_Inifile& file)
{
    if (file.priv != nullptr && !file.priv->file && *file.filename != 0) {
        file.priv->file = ConfigFile::open(file.filename, file.scrambled);
    }
}

} // namespace corma
