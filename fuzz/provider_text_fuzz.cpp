#include "data/providers.h"
#include "fuzz_support.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdint>

namespace {

using corma::ConnectionParts;
using corma::fuzzing::require;

std::wstring braced(const std::wstring& value)
{
    std::wstring text = L"{";
    for (const wchar_t c : value) {
        text.append(c == L'}' ? 2 : 1, c);
    }
    return text + L"}";
}

std::wstring textFor(const ConnectionParts& parts)
{
    std::wstring text;
    for (const auto& [key, value] : parts) {
        text.append(key).append(L"=").append(braced(value)).append(L";");
    }
    return text;
}

bool hasKey(const ConnectionParts& parts, std::wstring_view key)
{
    return std::any_of(parts.begin(), parts.end(), [key](const auto& part) {
        return corma::equalIgnoringCase(part.first, key);
    });
}

std::wstring lastOf(const ConnectionParts& parts, std::wstring_view key)
{
    const auto found = std::find_if(parts.rbegin(), parts.rend(), [key](const auto& part) {
        return corma::equalIgnoringCase(part.first, key);
    });
    return found == parts.rend() ? std::wstring() : found->second;
}

/// The parts as ODBC reads them, which knows braces only.
ConnectionParts odbcParts(const std::wstring& text)
{
    ConnectionParts parts;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t equals = text.find(L'=', at);
        require(equals != std::wstring::npos);
        parts.emplace_back(text.substr(at, equals - at), L"");
        std::wstring& value = parts.back().second;
        const bool isBraced = text[equals + 1] == L'{';
        at = equals + (isBraced ? 2 : 1);
        for (; at < text.size() && (isBraced || text[at] != L';'); ++at) {
            if (isBraced && text[at] == L'}') {
                ++at;
                if (at == text.size() || text[at] != L'}') {
                    break;
                }
            }
            value.push_back(text[at]);
        }
        require(at == text.size() || text[at] == L';');
    }
    return parts;
}

// What a row takes from a text is there when ODBC reads it.
void requireFilling(const std::wstring& text, const ConnectionParts& parts)
{
    const std::wstring extended = lastOf(parts, L"Extended Properties");
    std::wstring pattern = L"*";
    for (const wchar_t c :
         lastOf(parts, L"Provider") + (extended.empty() ? L"" : L"/") + extended) {
        pattern += c == L'/' ? L"/*" : L"";
    }
    const auto odbc = corma::odbcText(text, L"", {{pattern, L"X=<a>;Y=<b|c>"}});
    require(odbc.has_value());
    if (hasKey(parts, L"DSN") || hasKey(parts, L"FILEDSN") || hasKey(parts, L"Driver")) {
        return;
    }
    const ConnectionParts filled = odbcParts(*odbc);
    const std::wstring b = lastOf(parts, L"b");
    require(lastOf(filled, L"X") == lastOf(parts, L"a"));
    require(lastOf(filled, L"Y") == (b.empty() ? lastOf(parts, L"c") : b));
}

} // namespace

/// The input is a connection text, a null byte and a table.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corma;
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t separator = std::min(input.find('\0'), size);
    const std::wstring text = fromUtf8(std::string_view(input).substr(0, separator));
    const ConnectionParts parts = connectionParts(text);
    require(connectionParts(textFor(parts)) == parts);
    requireFilling(text, parts);

    const auto table = providerRows(fromUtf8(std::string_view(input).substr(separator)));
    const auto odbc = odbcText(text, L"Given", table);
    if (odbc && hasKey(parts, L"DSN")) {
        require(!hasKey(connectionParts(*odbc), L"Provider"));
    }
    return 0;
}
