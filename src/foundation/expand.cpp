#include "foundation/expand.h"

#include "host/host.h"

namespace corma {

std::optional<std::wstring> expandEnvironment(std::wstring_view text, std::size_t longest)
{
    std::wstring expanded;
    while (!text.empty()) {
        const std::size_t close
            = text.front() == L'%' ? text.find(L'%', 1) : std::wstring_view::npos;
        if (close == std::wstring_view::npos) {
            const std::size_t plain = text.find(L'%', 1);
            expanded.append(text.substr(0, plain));
            text.remove_prefix(plain == std::wstring_view::npos ? text.size() : plain);
            continue;
        }
        const std::wstring name(text.substr(1, close - 1));
        const wchar_t* value = name.empty() ? nullptr : services().environment(name.c_str());
        // The closing sign of an unknown name may open the next one.
        expanded.append(value == nullptr ? text.substr(0, close) : std::wstring_view(value));
        text.remove_prefix(value == nullptr ? close : close + 1);
    }
    if (expanded.size() > longest) {
        return std::nullopt;
    }
    return expanded;
}

} // namespace corma
