#include "host/host.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

} // namespace

/// The input is a text, a null byte and a pattern; each byte is one character.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::uint8_t* const end = data + size;
    const std::uint8_t* const separator = std::find(data, end, 0);
    const std::wstring text(data, separator);
    // A null byte within the pattern would end it.
    const std::wstring pattern(separator == end ? end : separator + 1,
                               separator == end ? end : std::find(separator + 1, end, 0));
    std::wstring escaped;
    for (const wchar_t c : pattern) {
        escaped.append({L'`', c});
    }

    require((acutWcMatch(text.c_str(), pattern.c_str()) == RTNORM)
            == acutWcMatchEx(text.c_str(), pattern.c_str(), false));
    acutWcMatchEx(text.c_str(), pattern.c_str(), true);
    require((acutWcMatch(text.c_str(), escaped.c_str()) == RTNORM) == (text == pattern));
    require(acutWcMatchEx(text.c_str(), escaped.c_str(), true)
            == corma::equalIgnoringCase(text, pattern));
    require(acutWcMatch(text.c_str(), L"*") == RTNORM);
    require(acutWcMatchEx(text.c_str(), L"*", true));
    return 0;
}
