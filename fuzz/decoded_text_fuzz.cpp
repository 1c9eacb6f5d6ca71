#include "foundation/decoded_text.h"
#include "fuzz_support.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

using namespace corma;

std::string contentOf(const DecodedText& decoded, std::span<const std::string_view> pieces)
{
    const auto encoded = decoded.encoded(pieces);
    fuzzing::require(encoded.defect.empty());
    std::string content(encoded.isAsGiven ? decoded.mark() : std::string_view(encoded.bytes));
    for (std::size_t i = 0; encoded.isAsGiven && i < pieces.size(); ++i) {
        content += pieces[i];
    }
    return content;
}

} // namespace

/// The input is a file. What is decoded without a defect is well-formed and gives the same bytes
/// back, be it in one piece or in two.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const DecodedText decoded(content);
    if (!decoded.defect().empty()) {
        fuzzing::require(markOf(content) != Mark::none);
        return 0;
    }
    const std::string_view text = decoded.text();
    fuzzing::require(isUtf8(text));
    fuzzing::require(contentOf(decoded, std::array {text}) == content);
    const std::size_t feed = std::min(text.find('\n'), text.size());
    fuzzing::require(contentOf(decoded, std::array {text.substr(0, feed), text.substr(feed)})
                     == content);
    return 0;
}
