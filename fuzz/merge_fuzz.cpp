#include "fuzz_support.h"
#include "inifile/PlainMerge.h"
#include "inifile/merge.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdint>

namespace {

using namespace corma;

// The texts reach the merges decoded, so they are well-formed.
std::string wellFormed(std::string_view bytes)
{
    return toUtf8(fromUtf8(bytes));
}

// Defaults come in by the plain rules, and are not new a second time.
void checkDefaults(const std::string& own, const std::string& defaults)
{
    const testing::PlainUpdate plain(own, defaults);
    DefaultsMerge merge(own);
    merge.add(defaults);
    const std::string text = merge.text("\n");
    fuzzing::require(merge.added() == plain.added() && text == plain.text());
    DefaultsMerge again(text);
    again.add(defaults);
    fuzzing::require(again.added() == 0);
}

std::string joined(const std::vector<std::string_view>& pieces)
{
    std::string text;
    for (const std::string_view piece : pieces) {
        text += piece;
    }
    return text;
}

// New values change no line but those of entries; nothing changes when they come a second time.
void checkNewValues(const std::string& own, const std::string& newer)
{
    const std::string once = joined(withNewValues(own, newer));
    fuzzing::require(joined(withNewValues(once, newer)) == once);
    const auto linesOf
        = [](const std::string& text) { return std::count(text.begin(), text.end(), '\n'); };
    fuzzing::require(linesOf(once) <= linesOf(own));
    const std::string kept = joined(withNewValues(own, own));
    fuzzing::require(joined(withNewValues(own, "")) == kept);
}

} // namespace

/// The text before the first null byte is the file of the user, that behind it the new file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t null = std::min(input.find('\0'), size);
    const std::string own = wellFormed(input.substr(0, null));
    const std::string newer = wellFormed(input.substr(std::min(null + 1, size)));
    checkDefaults(own, newer);
    checkNewValues(own, newer);
    return 0;
}
