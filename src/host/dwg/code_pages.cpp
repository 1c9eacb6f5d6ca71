#include "host/dwg/code_pages.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace corma::host::dwg {

namespace {

// By their numbers.
constexpr std::array<std::string_view, 45> kNames
    = {"UNDEFINED",  "US_ASCII",   "ISO_8859_1", "ISO_8859_2", "ISO_8859_3", "ISO_8859_4",
       "ISO_8859_5", "ISO_8859_6", "ISO_8859_7", "ISO_8859_8", "ISO_8859_9", "DOS437",
       "DOS850",     "DOS852",     "DOS855",     "DOS857",     "DOS860",     "DOS861",
       "DOS863",     "DOS864",     "DOS865",     "DOS869",     "DOS932",     "MACINTOSH",
       "BIG5",       "KSC5601",    "JOHAB",      "DOS866",     "ANSI_1250",  "ANSI_1251",
       "ANSI_1252",  "GB2312",     "ANSI_1253",  "ANSI_1254",  "ANSI_1255",  "ANSI_1256",
       "ANSI_1257",  "ANSI_874",   "ANSI_932",   "ANSI_936",   "ANSI_949",   "ANSI_950",
       "ANSI_1361",  "UTF16",      "ANSI_1258"};

constexpr std::size_t kUsual = 30;

bool isSame(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
        return std::toupper(x) == std::toupper(y);
    });
}

} // namespace

std::string nameOfCodePage(int number)
{
    const auto at = static_cast<std::size_t>(number);
    return std::string(number >= 0 && at < kNames.size() ? kNames[at] : kNames[kUsual]);
}

int numberOfCodePage(std::string_view name)
{
    const auto* const found = std::find_if(
        kNames.begin(), kNames.end(), [&](std::string_view known) { return isSame(known, name); });
    return static_cast<int>(
        found == kNames.end() ? kUsual : static_cast<std::size_t>(found - kNames.begin()));
}

} // namespace corma::host::dwg
