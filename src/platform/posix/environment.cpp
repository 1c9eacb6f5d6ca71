#include "platform/platform.h"
#include "platform/text.h"

#include <array>
#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <link.h>
#include <system_error>
#include <unistd.h>

namespace corma::platform {

std::optional<std::wstring> environmentVariable(std::wstring_view name)
{
    const char* value = std::getenv(toNative(name).c_str());
    if (value == nullptr) {
        return std::nullopt;
    }
    return fromNative(value);
}

std::wstring currentFolder()
{
    std::error_code failed;
    return fromNative(std::filesystem::current_path(failed).native());
}

bool setCurrentFolder(std::wstring_view path)
{
    std::error_code failed;
    std::filesystem::current_path(locate(path), failed);
    return !failed;
}

std::wstring temporaryFolder()
{
    std::error_code failed;
    std::wstring folder = fromNative(std::filesystem::temp_directory_path(failed).native());
    if (failed) {
        return L"/tmp";
    }
    while (folder.size() > 1 && isSeparator(folder.back())) {
        folder.pop_back();
    }
    return folder;
}

std::wstring programFile()
{
    std::error_code failed;
    return fromNative(std::filesystem::read_symlink("/proc/self/exe", failed).native());
}

namespace {

struct LibrarySearch
{
    std::string name;
    std::string path;
};

int isLookedFor(dl_phdr_info* library, std::size_t /*size*/, void* data)
{
    auto& search = *static_cast<LibrarySearch*>(data);
    const std::string_view path = library->dlpi_name;
    if (path.substr(path.rfind('/') + 1) != search.name) {
        return 0;
    }
    search.path = path;
    return 1;
}

} // namespace

std::optional<std::wstring> loadedLibrary(std::wstring_view name)
{
    LibrarySearch search {toNative(name), {}};
    if (dl_iterate_phdr(isLookedFor, &search) == 0) {
        return std::nullopt;
    }
    return fromNative(search.path);
}

namespace {

std::optional<std::wstring> loadedUnderAnyName(std::wstring_view library)
{
    if (auto path = loadedLibrary(library)) {
        return path;
    }
    const PathParts parts = splitPath(library);
    if (!equalIgnoringCase(parts.extension, L".dll")) {
        return std::nullopt;
    }
    const auto path = loadedLibrary(parts.base + L".so");
    return path ? path : loadedLibrary(L"lib" + parts.base + L".so");
}

// Closes what dlopen() opened.
using Library = std::unique_ptr<void, decltype([](void* handle) { ::dlclose(handle); })>;

// A search by handle goes on in the libraries that this one needs: those are not asked for.
bool isOf(void* handle, const void* address)
{
    link_map* searched = nullptr;
    link_map* found = nullptr;
    Dl_info info {};
    return ::dlinfo(handle, RTLD_DI_LINKMAP, static_cast<void*>(&searched)) == 0
        && ::dladdr1(address, &info, reinterpret_cast<void**>(&found), RTLD_DL_LINKMAP) != 0
        && searched == found;
}

} // namespace

LibraryFunction loadedFunction(std::wstring_view library, const char* symbol)
{
    const auto path = loadedUnderAnyName(library);
    if (!path) {
        return nullptr;
    }
    const Library handle(::dlopen(toNative(*path).c_str(), RTLD_LAZY | RTLD_NOLOAD));
    void* const address = handle ? ::dlsym(handle.get(), symbol) : nullptr;
    if (address == nullptr || !isOf(handle.get(), address)) {
        return nullptr;
    }
    return reinterpret_cast<LibraryFunction>(address);
}

} // namespace corma::platform
