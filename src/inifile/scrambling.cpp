#include "inifile/scrambling.h"

#include "foundation/messages.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace corma {

namespace {

// What is added to a byte at this position, besides the position itself.
unsigned shiftAt(unsigned long position, int key)
{
    constexpr std::array<unsigned, 4> kShifts = {48, 15, 71, 128};
    const unsigned long phase = position % 4;
    const auto number = static_cast<unsigned>(key);
    return phase == 1 || phase == 2 ? kShifts[phase] + number : kShifts[phase] - number;
}

// The shifts repeat with the position's low byte, so a table makes the loop over a large file one
// of plain byte sums.
std::array<unsigned char, 256> shiftTable(int key)
{
    std::array<unsigned char, 256> table {};
    for (unsigned i = 0; i < table.size(); ++i) {
        table[i] = static_cast<unsigned char>(i + 1 + shiftAt(i + 1, key));
    }
    return table;
}

bool hasLoneCarriageReturn(std::string_view bytes)
{
    unsigned lone = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
        lone |= static_cast<unsigned>(bytes[i] == '\r')
            & static_cast<unsigned>(bytes[i + 1] != '\n');
    }
    return lone != 0 || bytes.ends_with('\r');
}

} // namespace

char scramble(int byte, long position, int key)
{
    const auto place = static_cast<unsigned long>(position);
    return static_cast<char>(static_cast<unsigned char>(
        static_cast<unsigned>(byte) + static_cast<unsigned>(place) + shiftAt(place, key)));
}

char descramble(int byte, long position, int key)
{
    const auto place = static_cast<unsigned long>(position);
    return static_cast<char>(static_cast<unsigned char>(
        static_cast<unsigned>(byte) - static_cast<unsigned>(place) - shiftAt(place, key)));
}

void descrambleContent(platform::FileContent& content, int key)
{
    const auto table = shiftTable(key);
    auto* const bytes = reinterpret_cast<unsigned char*>(content.bytes.get());
    for (std::size_t block = 0; block < content.size; block += table.size()) {
        const std::size_t count = std::min(table.size(), content.size - block);
        for (std::size_t i = 0; i < count; ++i) {
            bytes[block + i] = static_cast<unsigned char>(bytes[block + i] - table[i]);
        }
    }
    // Before a line feed a carriage return ends the line as well, so only others must go.
    if (hasLoneCarriageReturn(content.view())) {
        char* const begin = content.bytes.get();
        char* const end = std::remove(begin, begin + content.size, '\r');
        std::fill(end, begin + content.size, '\0');
        content.size = static_cast<std::size_t>(end - begin);
    }
}

std::string scrambledForm(std::string_view text, int key)
{
    std::string out;
    out.reserve(text.size() + text.size() / 16);
    const auto put = [&](char c) {
        const auto position = static_cast<long>(out.size() + 1);
        out.push_back(scramble(static_cast<unsigned char>(c), position, key));
    };
    for (const char c : text) {
        if (c == '\n') {
            put('\r');
        }
        put(c);
    }
    return out;
}

std::wstring scrambledName(std::wstring_view path, int key)
{
    const auto parts = platform::splitPath(path);
    return formatted(L"%s%s%s%d%s", parts.drive.c_str(), parts.folder.c_str(), parts.base.c_str(),
                     key, parts.extension.c_str());
}

} // namespace corma
