#include "foundation/utf16.h"

#include "platform/text.h"

namespace corma {

namespace {

constexpr char32_t kFirstLead = 0xD800;
constexpr char32_t kFirstTrail = 0xDC00;
constexpr char32_t kFirstPaired = 0x10000;
constexpr unsigned kBitsOfHalf = 10;

char32_t unitAt(std::string_view bytes, std::size_t at, Mark mark)
{
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<char32_t>(mark == Mark::utf16Little ? second << 8U | first
                                                           : first << 8U | second);
}

void appendUnit(std::string& bytes, char32_t unit, Mark mark)
{
    const auto high = static_cast<char>(unit >> 8U);
    const auto low = static_cast<char>(unit & 0xFFU);
    bytes.push_back(mark == Mark::utf16Little ? low : high);
    bytes.push_back(mark == Mark::utf16Little ? high : low);
}

} // namespace

char32_t nextUtf16(std::string_view bytes, std::size_t& at, Mark mark)
{
    if (at + 1 >= bytes.size()) {
        at = bytes.size();
        return 0xFFFD;
    }
    const char32_t unit = unitAt(bytes, at, mark);
    at += 2;
    if (unit >= kFirstLead && unit < kFirstTrail && at + 1 < bytes.size()) {
        const char32_t trail = unitAt(bytes, at, mark);
        if (trail >= kFirstTrail && isSurrogate(trail)) {
            at += 2;
            return kFirstPaired + ((unit - kFirstLead) << kBitsOfHalf) + (trail - kFirstTrail);
        }
    }
    return unit;
}

void appendUtf16(std::string& bytes, std::string_view utf8, Mark mark)
{
    for (std::size_t at = 0; at < utf8.size();) {
        char32_t c = nextUtf8(utf8, at);
        if (c >= kFirstPaired) {
            c -= kFirstPaired;
            appendUnit(bytes, kFirstLead + (c >> kBitsOfHalf), mark);
            c = kFirstTrail + (c & ((1U << kBitsOfHalf) - 1));
        }
        appendUnit(bytes, c, mark);
    }
}

} // namespace corma
