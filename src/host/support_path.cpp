#include "host/support_path.h"

#include "host/host.h"

#include <algorithm>
#include <string_view>

namespace corma::host {

std::vector<std::wstring> supportFolders()
{
    std::vector<std::wstring> folders;
    const ACHAR* value = acdbHostApplicationServices()->getEnv(L"ACAD");
    std::wstring_view rest = value == nullptr ? L"" : value;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L';'), rest.size());
        if (end > 0) {
            folders.emplace_back(rest.substr(0, end));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return folders;
}

} // namespace corma::host
