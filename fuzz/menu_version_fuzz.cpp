#include "controls/menu_version.h"
#include "fuzz_support.h"
#include "platform/text.h"

#include <cstdint>
#include <cwchar>
#include <sstream>

namespace {

// The rule as it is told, over wide lines.
std::wstring plainVersion(const std::wstring& text)
{
    std::wistringstream lines(text);
    for (std::wstring line; std::getline(lines, line);) {
        const std::size_t marker = line.find(L"_MENUVERSION");
        if (marker == std::wstring::npos) {
            continue;
        }
        if (!lines.eof() && line.back() == L'\r') {
            line.pop_back();
        }
        std::wstring version = line.substr(marker);
        version.erase(0, 14);
        return version.substr(0, version.find(L'"'));
    }
    return {};
}

} // namespace

/// The input is the text of a menu file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    corma::fuzzing::require(corma::menuVersionIn(text) == plainVersion(corma::fromUtf8(text)));
    return 0;
}
