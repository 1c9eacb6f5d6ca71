#include "fuzz_support.h"
#include "host/dwg/lz77.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace corma::host::dwg;
using corma::fuzzing::require;

using Decompress = std::optional<std::size_t> (*)(std::string_view, std::span<char>);

// What comes out fits exactly, and is the same, where there is room for it and no more.
void checkStream(Decompress decompress, std::string_view stream, std::size_t room)
{
    std::string out(room, '\0');
    const auto size = decompress(stream, {out.data(), out.size()});
    if (!size) {
        return;
    }
    require(*size <= out.size());
    std::string again(*size, '\xFF');
    require(decompress(stream, {again.data(), again.size()}) == *size);
    require(std::string_view(out).substr(0, *size) == again);
    require(*size == 0 || !decompress(stream, {again.data(), *size - 1}));
}

void checkRoundTrip(std::string_view bytes)
{
    const std::string stream = compressPage(bytes);
    std::string out(bytes.size(), '\0');
    require(decompressPage(stream, {out.data(), out.size()}) == bytes.size());
    require(out == bytes);
}

} // namespace

/// The first two bytes are the room that there is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) {
        return 0;
    }
    const std::size_t room = data[0] + std::size_t {256} * data[1];
    const std::string_view bytes(reinterpret_cast<const char*>(data + 2), size - 2);
    checkStream(decompressPage, bytes, room);
    checkStream(decompressR2007Page, bytes, room);
    if (bytes.size() >= kLeastToCompress) {
        checkRoundTrip(bytes);
    }
    return 0;
}
