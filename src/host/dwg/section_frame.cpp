#include "host/dwg/section_frame.h"

#include "host/dwg/checksum.h"
#include "host/dwg/sentinels.h"
#include "host/dwg/streams.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

// The size has a second half that is not in use.
bool hasWideSize(const FileForm& form)
{
    constexpr int kFirstMaintenance = 4;
    return form.version >= r2018
        || (form.version >= r2010 && form.maintenance >= kFirstMaintenance);
}

std::size_t headSize(const FileForm& form)
{
    return kSentinelSize + kSizeSize + (hasWideSize(form) ? kSizeSize : 0);
}

} // namespace

std::optional<Streams> openSection(std::string_view section, const Sentinels& sentinels,
                                   const FileForm& form)
{
    const std::size_t begin = headSize(form);
    if (section.size() < begin + kChecksumSize + kSentinelSize
        || !section.starts_with(sentinels.begin)) {
        return std::nullopt;
    }
    const std::size_t size = BitReader(section.substr(kSentinelSize)).rawLong();
    if (size > section.size() - begin - kChecksumSize - kSentinelSize) {
        return std::nullopt;
    }
    const std::size_t end = begin + size;
    const std::string_view summed = section.substr(kSentinelSize, end - kSentinelSize);
    if (BitReader(section.substr(end)).rawShort() != checksum(summed)
        || !section.substr(end + kChecksumSize).starts_with(sentinels.end)) {
        return std::nullopt;
    }
    Streams streams;
    streams.bytes = section.substr(begin, size);
    streams.data = BitReader(streams.bytes);
    const std::size_t all = size * kByteBits;
    const std::size_t dataEnd = form.hasUnicode() ? streams.data.rawLong() : all;
    if (dataEnd > all) {
        return std::nullopt;
    }
    partStreams(streams, dataEnd, all, form.hasUnicode());
    return streams.data.isGood() ? std::optional(streams) : std::nullopt;
}

std::string closeSection(const FieldsToBits& io, const Sentinels& sentinels, const FileForm& form,
                         std::string_view former)
{
    BitWriter bits;
    if (form.hasUnicode()) {
        bits.rawLong(0);
        bits.append(io.data());
        appendTexts(io, bits);
        bits.setRawLong(0, static_cast<std::uint32_t>(bits.size()));
        bits.append(io.handleBits());
    } else {
        bits.append(io.data());
    }
    const std::size_t formerTail = sentinels.end.size() + kChecksumSize;
    if (former.size() > formerTail) {
        bits.padWith(former[former.size() - formerTail - 1]);
    }
    BitWriter summed;
    summed.rawLong(static_cast<std::uint32_t>(bits.bytes().size()));
    if (hasWideSize(form)) {
        summed.rawLong(0);
    }
    summed.bytes(bits.bytes());
    const std::uint16_t sum = checksum(summed.bytes());
    summed.rawShort(sum);
    std::string section(sentinels.begin);
    section += summed.bytes();
    return section += sentinels.end;
}

} // namespace corma::host::dwg
