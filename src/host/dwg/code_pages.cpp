#include "host/dwg/code_pages.h"

#include "platform/text.h"

#include <array>
#include <cstddef>

namespace corma::host::dwg {

namespace {

// By their numbers.
constexpr std::array<std::wstring_view, 45> kNames
    = {L"UNDEFINED", L"ASCII",     L"ISO8859-1", L"ISO8859-2", L"ISO8859-3", L"ISO8859-4",
       L"ISO8859-5", L"ISO8859-6", L"ISO8859-7", L"ISO8859-8", L"ISO8859-9", L"DOS437",
       L"DOS850",    L"DOS852",    L"DOS855",    L"DOS857",    L"DOS860",    L"DOS861",
       L"DOS863",    L"DOS864",    L"DOS865",    L"DOS869",    L"DOS932",    L"MAC-ROMAN",
       L"BIG5",      L"KSC5601",   L"JOHAB",     L"DOS866",    L"ANSI_1250", L"ANSI_1251",
       L"ANSI_1252", L"GB2312",    L"ANSI_1253", L"ANSI_1254", L"ANSI_1255", L"ANSI_1256",
       L"ANSI_1257", L"ANSI_874",  L"ANSI_932",  L"ANSI_936",  L"ANSI_949",  L"ANSI_950",
       L"ANSI_1361", L"UTF16",     L"ANSI_1258"};

constexpr int kWindows1252 = 30;

} // namespace

std::wstring codePageName(int number)
{
    const bool isKnown = number > 0 && static_cast<std::size_t>(number) < kNames.size();
    return std::wstring(kNames[static_cast<std::size_t>(isKnown ? number : kWindows1252)]);
}

int codePageNumber(std::wstring_view name)
{
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if (equalIgnoringCase(kNames[i], name)) {
            return static_cast<int>(i);
        }
    }
    return kWindows1252;
}

} // namespace corma::host::dwg
