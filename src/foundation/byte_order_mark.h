#pragma once

#include <string_view>

namespace corma {

/// The byte-order marks that a text file may begin with.
enum class Mark
{
    none,
    utf8,
    utf16Little,
    utf16Big
};

constexpr std::string_view bytesOf(Mark mark)
{
    switch (mark) {
    case Mark::none:
        break;
    case Mark::utf8:
        return "\xEF\xBB\xBF";
    case Mark::utf16Little:
        return "\xFF\xFE";
    case Mark::utf16Big:
        return "\xFE\xFF";
    }
    return {};
}

constexpr Mark markOf(std::string_view content)
{
    for (const Mark mark : {Mark::utf8, Mark::utf16Little, Mark::utf16Big}) {
        if (content.starts_with(bytesOf(mark))) {
            return mark;
        }
    }
    return Mark::none;
}

} // namespace corma
