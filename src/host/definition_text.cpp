#include "host/definition_text.h"

#include "host/host.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <array>
#include <charconv>

namespace corma::host {

std::wstring_view trimmed(std::wstring_view text)
{
    constexpr std::wstring_view kBlanks = L" \t\r";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::wstring_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::wstring_view takeUntil(std::wstring_view& text, wchar_t separator)
{
    const std::size_t end = text.find(separator);
    const std::wstring_view piece = text.substr(0, end);
    text = end == std::wstring_view::npos ? std::wstring_view() : text.substr(end + 1);
    return piece;
}

std::optional<double> numberIn(std::wstring_view text)
{
    const std::string bytes = toUtf8(trimmed(text));
    const char* begin = bytes.data();
    const char* const end = begin + bytes.size();
    if (begin != end && *begin == '+') {
        ++begin;
    }
    double number = 0.0;
    const auto [behind, error] = std::from_chars(begin, end, number);
    return error == std::errc() && behind == end && begin != end ? std::optional(number)
                                                                 : std::nullopt;
}

std::optional<DefinitionFile> readDefinitions(const std::wstring& path)
{
    const auto content = platform::readFile(platform::locate(path));
    if (!content) {
        return std::nullopt;
    }
    return DefinitionFile {path, fromUtf8(content->view())};
}

std::optional<DefinitionFile> definitionFile(const std::wstring& name,
                                             std::span<const OwnDefinitionFile> own)
{
    constexpr std::size_t kLongestPath = 4096; // characters
    std::array<ACHAR, kLongestPath> path {};
    if (acedFindFile(name.c_str(), path.data(), path.size()) == RTNORM) {
        return readDefinitions(path.data());
    }
    const std::wstring fileName = platform::splitPath(name).fileName();
    for (const OwnDefinitionFile& file : own) {
        if (equalIgnoringCase(file.name, fileName)) {
            return DefinitionFile {std::wstring(file.name), fromUtf8(file.content)};
        }
    }
    return std::nullopt;
}

} // namespace corma::host
