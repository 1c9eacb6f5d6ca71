#include "dwg_parts.h"

#include "host/dwg/checksum.h"
#include "host/dwg/little_endian.h"
#include "platform/text.h"

#include <algorithm>

namespace corma::fuzzing {

using namespace host;
using namespace host::dwg;
using enum host::DrawingVersion;

namespace {

constexpr unsigned kFormBits = 2; // ahead of a type

void addType(unsigned type, DrawingVersion version, BitWriter& to)
{
    constexpr unsigned kMostOfByte = 0xFF;
    constexpr unsigned kFirstOfTwoBytes = 0x1F0;
    if (version < r2010) {
        to.bitShort(static_cast<std::uint16_t>(type));
    } else if (type <= kMostOfByte) {
        to.bits(0, kFormBits);
        to.byte(static_cast<std::uint8_t>(type));
    } else {
        to.bits(1, kFormBits);
        to.byte(static_cast<std::uint8_t>(type - kFirstOfTwoBytes));
    }
}

void addSize(std::size_t size, std::string& record)
{
    constexpr unsigned kWordBits = 15;
    constexpr std::uint16_t kMoreWords = 0x8000;
    const bool isLong = size >= kMoreWords;
    addNumber(static_cast<std::uint16_t>(isLong ? size | kMoreWords : size), record);
    if (isLong) {
        addNumber(static_cast<std::uint16_t>(size >> kWordBits), record);
    }
}

void addHandleBits(std::size_t count, std::string& record)
{
    constexpr unsigned kBits = 7;
    constexpr std::size_t kMore = 0x80;
    for (; count >= kMore; count >>= kBits) {
        record += static_cast<char>(count | kMore);
    }
    record += static_cast<char>(count);
}

} // namespace

std::vector<ClassInfo> knownClasses()
{
    constexpr std::string_view kTypes[] = {"ACDBDICTIONARYWDFLT",
                                           "ACDBPLACEHOLDER",
                                           "DICTIONARYVAR",
                                           "IMAGEDEF",
                                           "LAYOUT",
                                           "PLOTSETTINGS",
                                           "RASTERVARIABLES",
                                           "SCALE",
                                           "SORTENTSTABLE",
                                           "WIPEOUTVARIABLES",
                                           "UNKNOWN_ENTITY",
                                           "UNKNOWN_OBJECT"};
    std::vector<ClassInfo> classes;
    for (const std::string_view type : kTypes) {
        ClassInfo& info = classes.emplace_back();
        info.number = kFirstClass + static_cast<unsigned>(classes.size()) - 1;
        info.dxfName.set(fromUtf8(type));
        info.isEntity = type == "UNKNOWN_ENTITY";
    }
    return classes;
}

std::string recordFrom(Input input, const FileForm& form)
{
    constexpr std::size_t kFirstOfClasses = 128;
    const std::size_t type = input.byte();
    const std::size_t dataBits = input.shortNumber();
    const std::string_view body = input.rest();
    const bool hasBegin = form.version >= r2000 && form.version < r2010;
    constexpr std::size_t kLongBits = 32;
    BitWriter bits;
    addType(
        static_cast<unsigned>(type < kFirstOfClasses ? type : type - kFirstOfClasses + kFirstClass),
        form.version, bits);
    const std::size_t bodyAt = bits.size() + (hasBegin ? kLongBits : 0);
    // What is left of the last byte would be one more handle.
    const std::size_t size = (bodyAt + body.size() * kByteBits) / kByteBits;
    const std::size_t handlesAt = std::min(bodyAt + dataBits, size * kByteBits);
    if (hasBegin) {
        bits.rawLong(static_cast<std::uint32_t>(handlesAt));
    }
    bits.append(body, 0, body.size() * kByteBits);
    std::string record;
    addSize(size, record);
    if (form.version >= r2010) {
        addHandleBits(size * kByteBits - handlesAt, record);
    }
    record += std::string_view(bits.bytes()).substr(0, size);
    addNumber(checksum(record), record);
    return record;
}

std::string sectionFrom(Input input, const Sentinels& sentinels, const FileForm& form)
{
    const std::size_t wanted = input.shortNumber();
    const std::string_view body = input.rest();
    const std::size_t all = body.size() * kByteBits;
    const std::size_t dataBits = form.hasUnicode() ? std::min(wanted, all) : all;
    BitWriter data;
    data.append(body, 0, dataBits);
    FieldsToBits io(form, Handle::none);
    io.setOpaque(data);
    io.handleBits().append(body, dataBits, all);
    return closeSection(io, sentinels, form, {});
}

} // namespace corma::fuzzing
