#include "fuzz_support.h"
#include "inifile/scrambled_rewrite.h"
#include "inifile/scrambling.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdint>

namespace {

using namespace corma;

std::string descrambled(std::string_view bytes, int key)
{
    std::string text;
    for (const char byte : bytes) {
        const auto position = static_cast<long>(text.size() + 1);
        text.push_back(descramble(static_cast<unsigned char>(byte), position, key));
    }
    return text;
}

// What no line of a scrambled file can bear, or what would make two lines of one.
bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 32;
}

long count(std::string_view text, char c)
{
    return std::count(text.begin(), text.end(), c);
}

// The former text line by line: each is cut, and may have got the value.
void checkLines(std::string_view former, std::string_view text, std::string_view value)
{
    bool hasValue = false;
    while (former.find('\r') != std::string_view::npos) {
        std::string line(former.substr(0, former.find('\r')));
        former.remove_prefix(line.size() + 1);
        std::erase(line, '\n'); // it is written where it stands, before the rest of its line
        line.erase(std::find_if(line.begin(), line.end(), isControl), line.end());
        std::string now(text.substr(0, text.find('\r')));
        text.remove_prefix(now.size() + 1);
        std::erase(now, '\n');
        const std::size_t equals = line.find('=');
        if (now != line) {
            fuzzing::require(equals != std::string::npos && now.substr(now.find('=') + 1) == value);
        }
        hasValue = hasValue || (equals != std::string::npos && now.ends_with(value));
    }
    fuzzing::require(hasValue);
    std::string rest(text);
    std::erase(rest, '\n');
    fuzzing::require(rest.empty());
}

} // namespace

/// The first byte is the scramble number. An ident up to a line feed and a value up to the next one
/// follow; the rest is the scrambled file or, for an ident that begins with "!", its text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view input(reinterpret_cast<const char*>(data), size);
    if (std::count(input.begin(), input.end(), '\n') < 2) {
        return 0;
    }
    const int key = data[0] < 128 ? data[0] : data[0] - 256;
    input.remove_prefix(input.front() == '\n' ? 0 : 1);
    const auto taken = [&input] {
        std::string part(input.substr(0, input.find('\n')));
        input.remove_prefix(std::min(part.size() + 1, input.size()));
        std::erase_if(part, isControl);
        return part;
    };
    std::string name = taken();
    const std::string value = taken();
    std::string bytes(input);
    if (name.starts_with('!')) {
        name.erase(0, 1);
        std::erase(bytes, '\r');
        bytes = scrambledForm(bytes, key);
    }
    const std::wstring ident = fromUtf8(name);
    const std::string former = descrambled(bytes, key);
    const auto changed = withScrambledValue(bytes, key, Ident::parse(ident), value);
    if (changed) {
        const std::string text = descrambled(*changed, key);
        fuzzing::require(count(text, '\r') == count(former, '\r'));
        fuzzing::require(count(text, '\n') == count(former, '\n'));
        checkLines(former, text, value);
        // A line like "[x=1" becomes a header by a value that ends in a bracket.
        if (!Ident::parse(ident).name.starts_with(L'[')) {
            const auto again = withScrambledValue(*changed, key, Ident::parse(ident), value);
            fuzzing::require(again == changed);
        }
    }
    return 0;
}
