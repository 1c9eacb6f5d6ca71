#include "settings/load.h"

#include "foundation/messages.h"
#include "inifile/words.h"
#include "platform/platform.h"
#include "settings/messages.h"

#include <algorithm>

namespace corma {

namespace {

constexpr const wchar_t* kNotFound = L"%s was not found.";
constexpr const wchar_t* kDenied = L"Access to %s was denied.";

} // namespace

std::string_view keyValue(std::string_view rest)
{
    return rest.substr(0, findNear(rest, ' '));
}

std::string_view picturePath(std::string_view folder, std::string_view name, std::string& buffer)
{
    const auto isSeparator = [](char c) { return c == '\\' || c == '/'; };
    if (std::any_of(name.begin(), name.end(), isSeparator)) {
        return name;
    }
    buffer.assign(folder).append(name);
    return buffer;
}

void tellCannotOpen(const std::wstring& path)
{
    const wchar_t* const format = platform::exists(path) ? kDenied : kNotFound;
    showMessage(formatted(format, path.c_str()), MessageIcon::exclamation);
}

} // namespace corma
