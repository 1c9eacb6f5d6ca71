#include "platform/platform.h"

#include <climits>
#include <cstdlib>
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

} // namespace corma::platform
