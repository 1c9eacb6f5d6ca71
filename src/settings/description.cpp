#include "settings/description.h"

#include <algorithm>

namespace corma {

std::string replaced(std::string_view text, std::string_view part, std::string_view by)
{
    std::string result;
    for (std::size_t found = text.find(part); found != std::string_view::npos;
         found = text.find(part)) {
        result.append(text.substr(0, found)).append(by);
        text.remove_prefix(found + part.size());
    }
    return result.append(text);
}

std::string onOneLine(std::string_view text)
{
    return replaced(text, kLineBreak, " ");
}

std::wstring onLines(std::wstring text)
{
    std::replace(text.begin(), text.end(), kLineBreakSign, L'\n');
    return text;
}

} // namespace corma
