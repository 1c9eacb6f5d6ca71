#include "editor/file_filter.h"

#include "foundation/wide_text.h"

#include <utility>

namespace corma {

namespace {

std::vector<std::wstring_view> partsOf(std::wstring_view text, wchar_t separator)
{
    std::vector<std::wstring_view> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::wstring_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

std::wstring patternsOf(std::wstring_view text)
{
    std::wstring patterns;
    for (const std::wstring_view part : partsOf(text, L';')) {
        const std::wstring_view pattern = trimmed(part);
        if (!pattern.empty()) {
            patterns += patterns.empty() ? L"" : L" ";
            patterns += pattern == L"*.*" ? L"*" : pattern;
        }
    }
    return patterns;
}

// A pattern without "*" is told in the words that it is written in.
std::wstring_view nameOf(std::wstring_view description, std::wstring_view patterns)
{
    const std::wstring_view name = trimmed(description);
    const std::size_t bracket = name.rfind(L'(');
    if (bracket == std::wstring_view::npos || !name.ends_with(L')')) {
        return name;
    }
    const std::wstring_view told = name.substr(bracket + 1, name.size() - bracket - 2);
    const bool tellsPatterns = told.find(L'*') != std::wstring_view::npos || told == patterns;
    return tellsPatterns ? trimmed(name.substr(0, bracket)) : name;
}

} // namespace

std::vector<std::wstring> nameFilters(std::wstring_view filter)
{
    const std::vector<std::wstring_view> parts = partsOf(filter, L'|');
    std::vector<std::wstring> filters;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        const std::wstring patterns = patternsOf(parts[i + 1]);
        if (!patterns.empty()) {
            std::wstring shown(nameOf(parts[i], patterns));
            shown += shown.empty() ? L"(" : L" (";
            shown += patterns;
            shown += L')';
            filters.push_back(std::move(shown));
        }
    }
    return filters;
}

} // namespace corma
