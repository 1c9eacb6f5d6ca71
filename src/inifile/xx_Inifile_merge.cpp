// A new version of an add-on brings new defaults or new values for the files of its users.

#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/text_rewrite.h"
#include "foundation/wide_text.h"
#include "foundation/xx_findf.h"
#include "host/host.h"
#include "inifile/merge.h"
#include "inifile/xx_Inifile_private.h"

#include <algorithm>
#include <optional>

namespace {

constexpr const wchar_t* kNewItems = L"\n%d new items added to %s\n";
constexpr const wchar_t* kIsUpToDate = L"\nFile %s is OK\n";
constexpr const wchar_t* kNotForScrambled = L"Not supported for use with %s";
constexpr const wchar_t* kFormerKept = L"\nOld version of file %s renamed to %s";
constexpr const wchar_t* kNotRenamed = L"Could not rename %s into %s (Aborting)";
constexpr const wchar_t* kNotChanged = L"\nFile %s is not changed: %s";
constexpr const wchar_t* kUnreadable
    = L"Unable to read the file '%s' (osError=%d, cause=%d)\nDetail: %s";

constexpr const wchar_t* kDefaultsExtension = L"inp";
constexpr const wchar_t* kNewValuesExtension = L"irp";

using corma::RewriteFailure;
using Step = RewriteFailure::Step;
using Cause = corma::platform::FileError::Cause;

// tool.ini is kept as tool.ino, and what ends in "o" already as "... old". An upper-case one
// counts: names are found in any case, so the other name would be that of the file itself.
std::wstring backupNameOf(std::wstring name)
{
    if (name.ends_with(L'o') || name.ends_with(L'O')) {
        return name + L" old";
    }
    name.back() = L'o';
    return name;
}

std::wstring temporaryBeside(const wchar_t* path)
{
    return corma::platform::splitPath(path).folderPath() + corma::kTemporaryName;
}

// A whole file, read for once.
struct ReadText
{
    explicit ReadText(const std::wstring& path)
        : content(corma::platform::readFile(corma::platform::locate(path)))
        , error(content ? corma::platform::FileError {} : corma::platform::readingError(path))
        , decoded(content ? content->view() : std::string_view())
    {
    }

    [[nodiscard]] bool isWhole() const { return content && decoded.defect().empty(); }

    [[nodiscard]] std::wstring defect() const { return content ? decoded.defect() : error.text(); }

    std::optional<corma::platform::FileContent> content;
    corma::platform::FileError error;
    corma::DecodedText decoded;
};

std::wstring reasonOf(const RewriteFailure& failure)
{
    return failure.detail.empty() ? failure.error.text() : failure.detail;
}

void reportUnreadable(const wchar_t* path, const corma::platform::FileError& error,
                      const std::wstring& detail)
{
    const std::wstring text = corma::formatted(kUnreadable, path, error.number,
                                               static_cast<int>(error.cause), detail.c_str());
    xx_reportError(corma::kInifileSource, __LINE__, text.c_str(), error.number);
}

// A text of nothing lacks no line end either.
bool endsWithLineFeed(const std::vector<std::string_view>& pieces)
{
    const auto last = std::find_if(pieces.rbegin(), pieces.rend(),
                                   [](std::string_view piece) { return !piece.empty(); });
    return last == pieces.rend() || last->ends_with('\n');
}

enum class UpdateState
{
    done,
    isUpToDate,
    failed, // the file is open as before
    lost // the object is without its file
};

struct Updated
{
    UpdateState state = UpdateState::done;
    int added = 0;
};

// A folder in which no name can be made or changed.
bool isRefusedByFolder(const RewriteFailure& failure)
{
    return failure.step == Step::keep
        || (failure.step != Step::none && failure.error.cause == Cause::denied);
}

Updated tellFailure(const std::wstring& path, const std::wstring& backup,
                    const RewriteFailure& failure)
{
    if (!isRefusedByFolder(failure)) {
        corma::showUserMessage(
            corma::formatted(kNotChanged, path.c_str(), reasonOf(failure).c_str()));
        return {UpdateState::failed};
    }
    const std::wstring text = corma::formatted(kNotRenamed, path.c_str(), backup.c_str());
    corma::showUserMessage(L"\n");
    corma::showUserMessage(text);
    xx_printOrAlert(text.c_str(), 1);
    return {UpdateState::lost};
}

bool isComplete(const std::wstring& path, std::string_view defaults)
{
    const ReadText own(path);
    corma::DefaultsMerge merge(own.decoded.text());
    merge.add(defaults);
    return own.isWhole() && merge.added() == 0;
}

// The new file is on disk before the former one gets its other name, so that there is always one.
Updated addDefaults(const std::wstring& path, std::string_view defaults)
{
    const std::wstring backup = backupNameOf(path);
    RewriteFailure failure;
    int added = 0;
    {
        corma::TextRewrite file(path, temporaryBeside(path.c_str()),
                                corma::TextRewrite::Missing::isFailure);
        corma::DefaultsMerge merge(file.text());
        merge.add(defaults);
        added = merge.added();
        const std::string text = merge.text(file.lineEnd());
        const std::string_view whole = text;
        const bool isDone = !file.failure().isOne()
            && (added == 0 || (file.write({&whole, 1}) && file.keepAs(backup) && file.commit()));
        if (isDone && added == 0) {
            return {UpdateState::isUpToDate};
        }
        failure = file.failure();
    }
    // Who may not write a file has no need to when it is complete.
    if (failure.step == Step::open && isComplete(path, defaults)) {
        return {UpdateState::isUpToDate};
    }
    if (failure.isOne()) {
        return tellFailure(path, backup, failure);
    }
    corma::showUserMessage(corma::formatted(kFormerKept, path.c_str(), backup.c_str()));
    return {UpdateState::done, added};
}

} // namespace

namespace corma {

int InifileInside::updateOwnFile(xx_Inifile& file, wchar_t* defaultFile, int* newItems)
{
    const xx_Inifile defaults(defaultFile, 0, nullptr);
    const auto isOpen = [](const xx_Inifile& one) {
        return one.priv != nullptr && one.priv->file && *one.filename;
    };
    if (!isOpen(file) || !isOpen(defaults)) {
        return RTCAN;
    }
    if (file.scrambled != 0) {
        xx_printMessage(kNotForScrambled, file.filename, 0);
        return RTCAN;
    }
    const ReadText text(defaults.filename);
    if (!text.isWhole()) {
        showUserMessage(formatted(kNotChanged, file.filename, text.defect().c_str()));
        return RTCAN;
    }
    const Updated updated = addDefaults(file.filename, text.decoded.text());
    if (updated.state == UpdateState::lost) {
        file.priv->file.reset();
    }
    if (updated.state == UpdateState::lost || updated.state == UpdateState::failed) {
        return RTCAN;
    }
    if (updated.state == UpdateState::done) {
        std::wstring path(file.filename);
        xx_Inifile renewed(path.data(), file.scrambled, nullptr);
        file = renewed;
        file.flushIniBuffer();
    }
    if (newItems != nullptr) {
        *newItems = updated.added;
    }
    return RTNORM;
}

// A new file that cannot be read has no values. The name is taken as it was passed.
int InifileInside::replaceOwnValues(xx_Inifile& own, const wchar_t* newFile)
{
    const ReadText text(newFile);
    std::string_view newValues;
    if (text.isWhole()) {
        newValues = text.decoded.text();
    } else {
        reportUnreadable(newFile, text.error, text.defect());
    }
    RewriteFailure failure;
    {
        TextRewrite file(own.filename, temporaryBeside(own.filename),
                         TextRewrite::Missing::isFailure);
        auto pieces = withNewValues(file.text(), newValues);
        // A byte at the end of a scrambled file would be another character.
        if (own.scrambled == 0 && !endsWithLineFeed(pieces)) {
            pieces.push_back(file.lineEnd());
        }
        file.replace(pieces);
        failure = file.failure();
    }
    own.flushIniBuffer();
    if (failure.step == Step::open || failure.step == Step::decode) {
        reportUnreadable(own.filename, failure.error, reasonOf(failure));
    } else if (failure.isOne()) {
        showUserMessage(formatted(kNotChanged, own.filename, reasonOf(failure).c_str()));
    }
    return failure.isOne() ? RTERROR : RTNORM;
}

std::vector<std::pair<xx_Inifile*, std::wstring>>
InifileInside::includedWith(const xx_Inifile& file, const wchar_t* extension)
{
    std::vector<std::pair<xx_Inifile*, std::wstring>> found;
    for (std::size_t i = 0; file.priv != nullptr && i < file.priv->included.size(); ++i) {
        if (const auto& child = file.priv->included[i]) {
            wchar_t path[xx_Inifile::kFilenameSize] = {};
            child->getOtherFileName(path, extension);
            if (platform::isReadable(path)) {
                found.emplace_back(child.get(), path);
            }
        }
    }
    return found;
}

} // namespace corma

int xx_Inifile::update(wchar_t* defaultFile, int* newItems)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        int status = corma::InifileInside::updateOwnFile(*this, defaultFile, newItems);
        for (auto& [child, path] : corma::InifileInside::includedWith(*this, kDefaultsExtension)) {
            const int ofChild = child->update(path.data(), newItems);
            status = ofChild == RTNORM ? status : ofChild;
        }
        return status;
    });
}

int xx_Inifile::update(wchar_t* defaultFile)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        int newItems = 0;
        const int status = update(defaultFile, &newItems);
        if (status == RTNORM && newItems == 0) {
            acutPrintf(kIsUpToDate, filename);
        } else if (status == RTNORM) {
            acutPrintf(kNewItems, newItems, filename);
        }
        return status;
    });
}

int xx_Inifile::replaceNew(const wchar_t* newFile)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        wchar_t found[corma::kLongestPath + 1] = {};
        const int search = xx_findfile(newFile, found, corma::kLongestPath);
        if (search != RTNORM) {
            return search;
        }
        int status = corma::InifileInside::replaceOwnValues(*this, newFile);
        for (auto& [child, path] : corma::InifileInside::includedWith(*this, kNewValuesExtension)) {
            const int ofChild = child->replaceNew(path.c_str());
            status = ofChild == RTNORM ? status : ofChild;
        }
        return status;
    });
}

int xx_Inifile::replace(const wchar_t* newFile)
{
    return replaceNew(newFile);
}

void xx_Inifile::getOtherFileName(wchar_t* out, const wchar_t* extension) const
{
    const auto parts = corma::platform::splitPath(filename);
    corma::copyBounded(out, kFilenameSize, parts.folderPath() + parts.base + L"." + extension);
}
