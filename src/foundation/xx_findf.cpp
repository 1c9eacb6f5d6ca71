#include "foundation/xx_findf.h"

#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "host/support_path.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <optional>

namespace {

constexpr const wchar_t* kSource = L"xx_findf.cpp";

std::wstring& hostLibraryName()
{
    static std::wstring name;
    return name;
}

// The folder is told in upper case by rule. Where the system heeds case, that would be another
// folder, so files are looked for in it as it was given.
struct ModuleFolder
{
    std::wstring upperCase;
    std::wstring asGiven;
};

std::optional<ModuleFolder>& keptModuleFolder()
{
    static std::optional<ModuleFolder> folder;
    return folder;
}

const ModuleFolder& moduleFolder()
{
    auto& folder = keptModuleFolder();
    if (!folder) {
        const std::wstring path
            = corma::platform::splitPath(corma::view(xx_hostModuleName())).folderPath();
        folder = {corma::upperCase(path), path};
    }
    return *folder;
}

// The path as it was put together when there is such a file, else nothing.
std::optional<std::wstring> ifThere(std::wstring path)
{
    if (xx_fileExists(path.c_str()) != RTNORM) {
        return std::nullopt;
    }
    return path;
}

std::optional<std::wstring> findOnSupportPath(const std::wstring& name)
{
    for (std::wstring folder : corma::host::supportFolders()) {
        if (!corma::platform::isSeparator(folder.back())) {
            folder.push_back(corma::platform::kSeparator);
        }
        if (!corma::platform::isAbsolute(folder)) {
            folder = corma::platform::fullPath(folder);
        }
        if (auto found = ifThere(corma::platform::nativeSeparators(folder + name))) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<std::wstring> askHost(const std::wstring& name)
{
    std::wstring path(4096, L'\0');
    if (acedFindFile(name.c_str(), path.data(), path.size()) != RTNORM) {
        return std::nullopt;
    }
    path.resize(corma::length(path.c_str()));
    return path;
}

std::optional<std::wstring> findWithHost(const std::wstring& name)
{
    using namespace corma::platform;
    if (isAbsolute(name)) {
        if (auto found = ifThere(nativeSeparators(name))) {
            return found;
        }
    }
    if (auto found = ifThere(joinPath(moduleFolder().asGiven, name))) {
        return found;
    }
    if (auto found = findOnSupportPath(name)) {
        return found;
    }
    return askHost(name);
}

// The folders below the module's in which drawings of blocks lie; the Dutch name goes first. In the
// module's folder itself the name was looked for before, and the system's own folders hold nothing
// of ours on this platform.
std::optional<std::wstring> findBelowModule(const std::wstring& name)
{
    if (corma::platform::isAbsolute(name)) {
        return std::nullopt;
    }
    for (const wchar_t* folder : {L"blokken/", L"blocks/"}) {
        std::wstring path = moduleFolder().asGiven + folder + name;
        if (auto found = ifThere(corma::platform::nativeSeparators(path))) {
            return found;
        }
    }
    return std::nullopt;
}

} // namespace

int xx_findfile(const wchar_t* name, wchar_t* out, std::size_t outLength)
{
    const std::wstring wanted(corma::view(name));
    if (wanted.empty()) {
        return RTERROR;
    }
    auto found = findWithHost(wanted);
    if (!found) {
        found = findBelowModule(wanted);
    }
    if (!found) {
        return RTERROR;
    }
    if (found->size() > outLength) {
        const auto length = static_cast<int>(found->size());
        xx_reportError(kSource, __LINE__, L"xx_findfile filename length", length);
    }
    // A path that fills the buffer has no terminator: the buffer may end right behind it.
    found->push_back(L'\0');
    found->copy(out, outLength);
    return RTNORM;
}

int xx_findfile_arx(const wchar_t* name, wchar_t* out, std::size_t outLength)
{
    return corma::atBoundary(kSource, __LINE__, RTERROR,
                             [&] { return xx_findfile(name, out, outLength); });
}

int xx_fileExists(const wchar_t* path)
{
    return corma::platform::exists(path) ? RTNORM : RTCAN;
}

const wchar_t* xx_moduleFolder()
{
    return moduleFolder().upperCase.c_str();
}

const wchar_t* xx_hostModuleName()
{
    static std::wstring kept;
    const ACHAR* name = acedGetAppName();
    if (corma::length(name) > 0 && !acutWcMatchEx(name, L"Ac*", true)) {
        kept = name;
        return kept.c_str();
    }
    const std::wstring& library = hostLibraryName();
    if (auto path = corma::platform::loadedLibrary(library)) {
        kept = *path;
    } else if (!library.empty() && xx_fileExists(library.c_str()) == RTNORM) {
        kept = library;
    }
    return kept.c_str();
}

namespace corma {

void setHostLibraryName(std::wstring name)
{
    hostLibraryName() = std::move(name);
}

void forgetModuleFolder()
{
    keptModuleFolder().reset();
}

} // namespace corma
