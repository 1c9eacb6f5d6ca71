#include "settings/saving.h"

#include "foundation/messages.h"
#include "inifile/Ident.h"
#include "inifile/drawing_settings.h"
#include "settings/Instelling.h"
#include "settings/Rubriek.h"
#include "settings/line_edits.h"
#include "settings/messages.h"
#include "settings/texts.h"

namespace corma {

namespace {

using Cause = platform::FileError::Cause;
using Step = RewriteFailure::Step;

constexpr const wchar_t* kSource = L"Instelling.cpp";
constexpr const wchar_t* kWithCause = L"%s : %s";

constexpr const wchar_t* kNoText = L"the setting has a character that no file can hold";
constexpr const wchar_t* kInUse = L"another program keeps it from being changed";
constexpr const wchar_t* kNotInDrawing = L"%s not stored in the drawing";
constexpr const wchar_t* kDiskFull = L"the disk is full";

// Readers of reports know these lines.
void reportNotRenamed(const std::wstring& temporary, const std::wstring& target, int status)
{
    constexpr int kWhatLine = 388;
    constexpr int kFromLine = 389;
    constexpr int kToLine = 390;
    xx_reportError(kSource, kWhatLine, L"unable to rename dummy.tmp to inifile", status);
    xx_reportError(kSource, kFromLine, (L"  - " + temporary).c_str(), status);
    xx_reportError(kSource, kToLine, (L"  - " + target).c_str(), status);
}

// The texts name the configuration file whichever file it was: it is the one that users know.
void tellNotWritten(const FileNameSet& fileNames, bool toGlobal, const RewriteFailure& failure)
{
    const std::wstring known = pathOf(fileNames, true);
    const std::wstring target = pathOf(fileNames, toGlobal);
    if (failure.step == Step::replace) {
        if (toGlobal) {
            reportNotRenamed(temporaryPath(fileNames), target, failure.error.number);
        }
        return;
    }
    if (failure.error.cause == Cause::notFound) {
        showMessage(known + L" : " + text(row::kFileNotFound), MessageIcon::stop);
    } else if (failure.error.cause == Cause::denied) {
        showMessage(known + L" : " + text(row::kCannotOpenForWrite), MessageIcon::stop);
    } else {
        tellCause(target, failure);
    }
    showMessage(known + L"\n" + text(row::kNotWritten), MessageIcon::stop);
}

} // namespace

std::wstring temporaryPath(const FileNameSet& fileNames)
{
    return fileNames.projectFolder + kTemporaryName;
}

std::wstring pathOf(const FileNameSet& fileNames, bool toGlobal)
{
    return toGlobal ? fileNames.globalFolder + fileNames.fileName
                    : fileNames.projectFolder + fileNames.projectName;
}

void tellCause(const std::wstring& path, const RewriteFailure& failure)
{
    std::wstring what = failure.detail;
    if (failure.error.cause == Cause::inUse) {
        what = kInUse;
    } else if (failure.error.cause == Cause::diskFull) {
        what = kDiskFull;
    }
    if (!what.empty()) {
        showMessage(formatted(kWithCause, path.c_str(), what.c_str()), MessageIcon::stop);
    }
}

RewriteFailure addHeader(const std::wstring& category, const FileNameSet& fileNames, bool toGlobal)
{
    const auto name = toStrictUtf8(category);
    if (!name) {
        return {Step::encode, {}, kNoText};
    }
    TextRewrite file(pathOf(fileNames, toGlobal), temporaryPath(fileNames),
                     TextRewrite::Missing::isFailure);
    const std::string end(file.lineEnd());
    const bool isLastLineOpen = !file.text().empty() && file.text().back() != '\n';
    const std::string before = toGlobal || isLastLineOpen ? end : std::string();
    const TextEdit edit {file.text().size(), file.text().size(), before + "[" + *name + "]" + end};
    static_cast<void>(file.replace(edit.appliedTo(file.text())));
    return file.failure();
}

std::wstring describe(const std::wstring& path, const RewriteFailure& failure)
{
    const std::wstring what = failure.detail.empty() ? failure.error.text() : failure.detail;
    return formatted(kWithCause, path.c_str(), what.c_str());
}

bool saveToDrawing(const Instelling& setting, AcDbDatabase* database, const FileNameSet& fileNames)
{
    if (setting.writeToDrawing(database, fileNames) == Acad::eOk) {
        return true;
    }
    showMessage(formatted(kNotInDrawing, setting.name().c_str()), MessageIcon::stop);
    return false;
}

} // namespace corma

bool Instelling::writeToFile(const FileNameSet& fileNames, bool toGlobal, bool mayAdd) const
{
    using corma::RewriteFailure;
    const std::wstring chapter
        = m_category == nullptr ? std::wstring(corma::kHeadChapter) : m_category->name();
    const auto category = corma::toStrictUtf8(chapter);
    const auto ident = corma::toStrictUtf8(name());
    const auto newValue = corma::toStrictUtf8(value());
    RewriteFailure failure {RewriteFailure::Step::encode, {}, corma::kNoText};
    if (category && ident && newValue) {
        using Missing = corma::TextRewrite::Missing;
        corma::TextRewrite file(corma::pathOf(fileNames, toGlobal), corma::temporaryPath(fileNames),
                                toGlobal ? Missing::isFailure : Missing::isEmpty);
        const auto edit
            = corma::editToWrite(file.text(), file.lineEnd(), {*category, *ident, *newValue},
                                 mayAdd ? corma::Adding::yes : corma::Adding::no);
        if (file.replace(edit.appliedTo(file.text()))) {
            return true;
        }
        failure = file.failure();
    }
    corma::tellNotWritten(fileNames, toGlobal, failure);
    return false;
}

Acad::ErrorStatus Instelling::writeToDrawing(AcDbDatabase* database,
                                             const FileNameSet& fileNames) const
{
    const std::wstring chapter = m_category == nullptr ? std::wstring() : m_category->name();
    return corma::writeToDrawing(fileNames.fileName.c_str(), chapter.c_str(), name().c_str(),
                                 value().c_str(), database);
}
