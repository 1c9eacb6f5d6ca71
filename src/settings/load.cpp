#include "settings/load.h"

#include "foundation/messages.h"
#include "platform/platform.h"
#include "settings/messages.h"

namespace corma {

namespace {

constexpr const wchar_t* kNotFound = L"%s was not found.";
constexpr const wchar_t* kDenied = L"Access to %s was denied.";

} // namespace

std::string_view keyValue(std::string_view rest)
{
    return rest.substr(0, rest.find_first_of(" \n"));
}

std::string_view picturePath(std::string_view folder, std::string_view name, std::string& buffer)
{
    if (name.find_first_of("\\/") != std::string_view::npos) {
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
