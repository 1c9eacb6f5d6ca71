#include "fuzz_support.h"
#include "inifile/scrambling.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "reader_checks.h"

#include <algorithm>
#include <cstdint>

namespace {

using namespace corma;

// Byte by byte, as the format tells it: carriage returns stand for nothing.
std::wstring descrambled(std::string_view bytes, int key)
{
    std::wstring text;
    long position = 0;
    for (const char byte : bytes) {
        const auto plain = static_cast<unsigned char>(
            descramble(static_cast<unsigned char>(byte), ++position, key));
        fuzzing::require(scramble(plain, position, key) == byte);
        if (plain != '\r') {
            text.push_back(fromWindows1252(plain));
        }
    }
    return text;
}

// A text without carriage returns comes back from its scrambled form.
void checkRoundTrip(std::string text, std::string_view form, int key)
{
    std::erase(text, '\r');
    std::wstring wide;
    for (const char c : text) {
        wide.push_back(fromWindows1252(static_cast<unsigned char>(c)));
    }
    const auto feeds = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    fuzzing::require(form.size() == text.size() + feeds);
    fuzzing::require(descrambled(form, key) == wide);
}

} // namespace

/// The first byte is the scramble number and the second chooses the idents; with its highest bit
/// the other bytes are the scrambled file, else the text of one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzzing::SilentServices services;
    static const fuzzing::MemoryFolder folder;
    if (size < 2 || data[0] == 0) {
        return 0;
    }
    const int key = data[0] < 128 ? data[0] : data[0] - 256;
    std::string bytes(reinterpret_cast<const char*>(data + 2), size - 2);
    if (data[1] < 128) {
        std::string text = bytes;
        std::erase(text, '\r');
        bytes = scrambledForm(text, key);
        checkRoundTrip(text, bytes, key);
    }
    // The file itself is read as a scrambled one where there is none with the number in its name.
    folder.write("t.ini", bytes);
    const fuzzing::OpenedText opened {platform::fromNative(folder.path("t.ini")), key,
                                      descrambled(bytes, key)};
    fuzzing::checkLookups(opened, fuzzing::identsIn(opened.text, data[1]));
    fuzzing::checkWildcards(opened);
    return 0;
}
