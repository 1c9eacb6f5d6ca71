#include "settings/model_start.h"

#include "host/host.h"
#include "platform/platform.h"
#include "settings/load.h"
#include "settings/texts.h"

#include <utility>

namespace corma {

namespace {

constexpr const wchar_t* kConfigurationExtension = L".ini";
constexpr const wchar_t* kProjectExtension = L".ipr";

struct SplitName
{
    std::wstring folder; // with its last separator; empty for none
    std::wstring name;
};

SplitName split(const std::wstring& path)
{
    const std::size_t behindFolder = path.rfind(platform::kSeparator) + 1; // 0 without one
    return {path.substr(0, behindFolder), path.substr(behindFolder)};
}

std::wstring withExtension(std::wstring name, const wchar_t* extension)
{
    if (name.find(L'.') == std::wstring::npos) {
        name += extension;
    }
    return platform::nativeSeparators(name);
}

std::wstring asFolder(std::wstring path)
{
    if (path.empty() || path.back() != platform::kSeparator) {
        path.push_back(platform::kSeparator);
    }
    return path;
}

// The file is read by the name that was passed; the names kept for later writing are its folder
// and name with all that was left out.
bool loadProject(StartedModel& started, const std::wstring& projectFile)
{
    const bool isLoaded = started.model->loadProjectFile(projectFile);
    SplitName parts = split(withExtension(projectFile, kProjectExtension));
    if (parts.folder.empty()) {
        parts.folder = asFolder(platform::currentFolder());
    }
    started.fileNames.projectFolder = std::move(parts.folder);
    started.fileNames.projectName = std::move(parts.name);
    if (!isLoaded) {
        tellCannotOpen(projectFile);
    }
    return isLoaded;
}

void loadDocument(StartedModel& started, AcApDocument& document)
{
    SplitName parts = split(platform::nativeSeparators(document.fileName()));
    if (parts.folder.empty()) {
        parts.folder = asFolder(platform::temporaryFolder());
    }
    started.fileNames.projectFolder = std::move(parts.folder);
    started.fileNames.drawingName = std::move(parts.name);
    const std::wstring project = started.fileNames.projectFolder + started.fileNames.projectName;
    // A start does not make a project: most drawings are part of none.
    if (platform::isReadable(project) && !started.model->loadProjectFile(project)) {
        started.projectFailed = true;
        tellCannotOpen(project);
    }
    started.model->loadDrawing(started.database, started.fileNames);
}

} // namespace

FileNameSet namesFor(std::wstring iniFile, int language)
{
    // A bare name keeps what it was called; the extension is for names with a folder.
    SplitName parts = split(withExtension(iniFile, kConfigurationExtension));
    if (parts.folder.empty()) {
        return FileNameSet::of(asFolder(platform::currentFolder()), std::move(iniFile), language);
    }
    return FileNameSet::of(std::move(parts.folder), std::move(parts.name), language);
}

StartedModel startModel(const StartRequest& request)
{
    setTextLanguage(request.language);
    StartedModel started;
    started.fileNames = namesFor(request.iniFile, request.language);
    started.model = std::make_unique<RubriekenArray>(started.fileNames);
    // The levels above may have categories all the same.
    started.fileFailed = started.model->empty();
    if (request.document != nullptr) {
        started.database = request.document->database();
        loadDocument(started, *request.document);
    } else if (request.projectFile) {
        started.projectFailed = !loadProject(started, *request.projectFile);
    }
    return started;
}

} // namespace corma
