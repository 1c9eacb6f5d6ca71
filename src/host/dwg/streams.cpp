#include "host/dwg/streams.h"

#include <algorithm>

namespace corma::host::dwg {

namespace {

} // namespace

void partStreams(Streams& streams, std::size_t handlesBegin, std::size_t end, bool hasUnicode)
{
    const std::size_t dataBegin = streams.data.position();
    streams.handles = BitReader(streams.bytes, handlesBegin, end);
    streams.dataEnd = std::max(std::min(handlesBegin, end), dataBegin);
    std::size_t fieldsEnd = streams.dataEnd;
    streams.texts = BitReader(streams.bytes, fieldsEnd, fieldsEnd);
    if (!hasUnicode) {
        streams.data = BitReader(streams.bytes, dataBegin, fieldsEnd);
        return;
    }
    constexpr std::size_t kShortBits = 16;
    if (fieldsEnd == dataBegin) {
        streams.data.fail();
        return;
    }
    --fieldsEnd;
    if (BitReader(streams.bytes, fieldsEnd, fieldsEnd + 1).bit()) {
        const auto numberBefore = [&](std::size_t position) -> std::size_t {
            return position < dataBegin + kShortBits
                ? 0
                : BitReader(streams.bytes, position - kShortBits, position).rawShort();
        };
        std::size_t size = numberBefore(fieldsEnd);
        fieldsEnd -= std::min(kShortBits, fieldsEnd - dataBegin);
        if ((size & kMoreWords) != 0) {
            size = (size & kWordMask) | numberBefore(fieldsEnd) << kWordBits;
            fieldsEnd -= std::min(kShortBits, fieldsEnd - dataBegin);
        }
        if (size > fieldsEnd - dataBegin) {
            streams.data.fail();
            return;
        }
        streams.texts = BitReader(streams.bytes, fieldsEnd - size, fieldsEnd);
        fieldsEnd -= size;
    }
    streams.data = BitReader(streams.bytes, dataBegin, fieldsEnd);
}

void appendTexts(const FieldsToBits& io, BitWriter& bits)
{
    const std::size_t size = io.texts().size();
    if (io.isOpaque()) {
        return; // it has them already
    }
    bits.append(io.texts());
    if (size != 0) {
        if (size >= kMoreWords) {
            bits.rawShort(static_cast<std::uint16_t>(size >> kWordBits));
            bits.rawShort(static_cast<std::uint16_t>((size & kWordMask) | kMoreWords));
        } else {
            bits.rawShort(static_cast<std::uint16_t>(size));
        }
    }
    bits.bit(size != 0);
}

} // namespace corma::host::dwg
