#include "host/dwg/bits.h"

#include <algorithm>
#include <array>

namespace corma::host::dwg {

namespace {

// What the two bits ahead of a number say.
constexpr unsigned kFormBits = 2;

enum ShortForm : std::uint32_t
{
    kWhole = 0,
    kOneByte = 1, // for a real number: 1.0
    kZero = 2,
    kUsualShort = 3 // 256
};

constexpr std::uint16_t kFrequentShort = 256;
constexpr unsigned kMostOfByte = 0xFF;

// How a real number differs from the usual one: not, in its lower 4 bytes, in its lower 6, in all.
enum Difference : std::uint32_t
{
    kSame = 0,
    kLowFour = 1,
    kLowSix = 2,
    kAll = 3
};

constexpr std::size_t kDoubleSize = sizeof(double);
using DoubleBytes = std::array<std::uint8_t, kDoubleSize>; // the lowest first

DoubleBytes bytesOf(double value)
{
    const auto whole = std::bit_cast<std::uint64_t>(value);
    DoubleBytes bytes {};
    for (std::size_t i = 0; i < kDoubleSize; ++i) {
        bytes[i] = static_cast<std::uint8_t>(whole >> (i * kByteBits));
    }
    return bytes;
}

double doubleFrom(const DoubleBytes& bytes)
{
    std::uint64_t whole = 0;
    for (std::size_t i = kDoubleSize; i > 0; --i) {
        whole = whole << kByteBits | bytes[i - 1];
    }
    return std::bit_cast<double>(whole);
}

bool isSameAs(double value, double other)
{
    return std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(other);
}

constexpr std::size_t kLowPart = 4; // the bytes that differ in the shorter forms
constexpr std::size_t kMiddlePart = 6;

} // namespace

// --- BitReader -----------------------------------------------------------------------------------

std::uint64_t BitReader::lastWindow(std::size_t byte) const
{
    std::uint64_t window = 0;
    for (std::size_t i = 0; i < sizeof window; ++i) {
        const std::size_t at = byte + i;
        window = window << kByteBits
            | (at < m_bytes.size() ? static_cast<unsigned char>(m_bytes[at]) : 0U);
    }
    return window;
}

std::uint16_t BitReader::rawShort()
{
    const std::uint32_t value = bits(2 * kByteBits);
    return static_cast<std::uint16_t>(value >> kByteBits | value << kByteBits);
}

std::uint32_t BitReader::rawLong()
{
    return __builtin_bswap32(bits(4 * kByteBits));
}

double BitReader::rawDouble()
{
    const std::uint64_t low = rawLong();
    return std::bit_cast<double>(low | std::uint64_t {rawLong()} << 4 * kByteBits);
}

std::string BitReader::bytes(std::size_t count)
{
    std::string all;
    if (count > left() / kByteBits) {
        m_isGood = false;
        m_at = m_end;
        return all;
    }
    if (m_at % kByteBits == 0) {
        all = m_bytes.substr(m_at / kByteBits, count);
        m_at += count * kByteBits;
        return all;
    }
    all.resize(count);
    for (char& one : all) {
        one = static_cast<char>(byte());
    }
    return all;
}

std::uint16_t BitReader::bitShort()
{
    switch (bits(kFormBits)) {
    case kWhole:
        return rawShort();
    case kOneByte:
        return byte();
    case kZero:
        return 0;
    default:
        return kFrequentShort;
    }
}

std::uint32_t BitReader::bitLong()
{
    switch (bits(kFormBits)) {
    case kWhole:
        return rawLong();
    case kOneByte:
        return byte();
    case kZero:
        return 0;
    default:
        m_isGood = false;
        return 0;
    }
}

std::uint64_t BitReader::bitLongLong()
{
    constexpr unsigned kCountBits = 3;
    std::uint64_t value = 0;
    const unsigned count = bits(kCountBits);
    for (unsigned i = 0; i < count; ++i) {
        value |= std::uint64_t {byte()} << (i * kByteBits);
    }
    return value;
}

double BitReader::bitDouble()
{
    switch (bits(kFormBits)) {
    case kWhole:
        return rawDouble();
    case kOneByte:
        return 1.0;
    case kZero:
        return 0.0;
    default:
        m_isGood = false;
        return 0.0;
    }
}

double BitReader::defaultDouble(double usual)
{
    const std::uint32_t difference = bits(kFormBits);
    if (difference == kSame) {
        return usual;
    }
    if (difference == kAll) {
        return rawDouble();
    }
    DoubleBytes value = bytesOf(usual);
    if (difference == kLowSix) { // the middle ones stand ahead of the lower
        for (std::size_t i = kLowPart; i < kMiddlePart; ++i) {
            value[i] = byte();
        }
    }
    for (std::size_t i = 0; i < kLowPart; ++i) {
        value[i] = byte();
    }
    return doubleFrom(value);
}

std::size_t BitReader::count(std::size_t number, std::size_t fewestBits)
{
    if (number > left() / std::max<std::size_t>(fewestBits, 1)) {
        m_isGood = false;
        return 0;
    }
    return number;
}

// --- BitWriter -----------------------------------------------------------------------------------

void BitWriter::bits(std::uint32_t value, unsigned count)
{
    while (count != 0) {
        const auto used = static_cast<unsigned>(m_size % kByteBits);
        if (used == 0) {
            m_bytes += '\0';
        }
        const unsigned room = kByteBits - used;
        const unsigned taken = std::min(room, count);
        const std::uint32_t part = value >> (count - taken) & ((1U << taken) - 1U);
        auto& last = m_bytes.back();
        last = static_cast<char>(static_cast<unsigned char>(last) | part << (room - taken));
        count -= taken;
        m_size += taken;
    }
}

void BitWriter::rawShort(std::uint16_t value)
{
    byte(static_cast<std::uint8_t>(value));
    byte(static_cast<std::uint8_t>(value >> kByteBits));
}

void BitWriter::rawLong(std::uint32_t value)
{
    rawShort(static_cast<std::uint16_t>(value));
    rawShort(static_cast<std::uint16_t>(value >> 2 * kByteBits));
}

void BitWriter::rawDouble(double value)
{
    const auto whole = std::bit_cast<std::uint64_t>(value);
    rawLong(static_cast<std::uint32_t>(whole));
    rawLong(static_cast<std::uint32_t>(whole >> 4 * kByteBits));
}

void BitWriter::bytes(std::string_view all)
{
    append(all, 0, all.size() * kByteBits);
}

void BitWriter::bitShort(std::uint16_t value)
{
    if (value == 0 || value == kFrequentShort) {
        bits(value == 0 ? kZero : kUsualShort, kFormBits);
    } else if (value <= kMostOfByte) {
        bits(kOneByte, kFormBits);
        byte(static_cast<std::uint8_t>(value));
    } else {
        bits(kWhole, kFormBits);
        rawShort(value);
    }
}

void BitWriter::bitLong(std::uint32_t value)
{
    if (value == 0) {
        bits(kZero, kFormBits);
    } else if (value <= kMostOfByte) {
        bits(kOneByte, kFormBits);
        byte(static_cast<std::uint8_t>(value));
    } else {
        bits(kWhole, kFormBits);
        rawLong(value);
    }
}

void BitWriter::bitLongLong(std::uint64_t value)
{
    constexpr unsigned kCountBits = 3;
    unsigned count = 0;
    while (value >> (count * kByteBits) != 0) {
        ++count;
    }
    bits(count, kCountBits);
    for (unsigned i = 0; i < count; ++i) {
        byte(static_cast<std::uint8_t>(value >> (i * kByteBits)));
    }
}

void BitWriter::bitDouble(double value)
{
    if (isSameAs(value, 0.0) || isSameAs(value, 1.0)) {
        bits(isSameAs(value, 0.0) ? kZero : kOneByte, kFormBits);
    } else {
        bits(kWhole, kFormBits);
        rawDouble(value);
    }
}

void BitWriter::defaultDouble(double value, double usual)
{
    if (isSameAs(value, usual)) {
        bits(kSame, kFormBits);
        return;
    }
    const DoubleBytes mine = bytesOf(value);
    const DoubleBytes other = bytesOf(usual);
    if (!std::equal(mine.begin() + kMiddlePart, mine.end(), other.begin() + kMiddlePart)) {
        bits(kAll, kFormBits);
        rawDouble(value);
        return;
    }
    const bool isLow
        = std::equal(mine.begin() + kLowPart, mine.begin() + kMiddlePart, other.begin() + kLowPart);
    bits(isLow ? kLowFour : kLowSix, kFormBits);
    for (std::size_t i = isLow ? kMiddlePart : kLowPart; i < kMiddlePart; ++i) {
        byte(mine[i]);
    }
    for (std::size_t i = 0; i < kLowPart; ++i) {
        byte(mine[i]);
    }
}

void BitWriter::setRawLong(std::size_t position, std::uint32_t value)
{
    BitWriter number;
    number.rawLong(value);
    for (const char byte : number.bytes()) {
        const auto used = static_cast<unsigned>(position % kByteBits);
        const unsigned both = unsigned {static_cast<unsigned char>(byte)} << (kByteBits - used);
        const unsigned mask = kMostOfByte << (kByteBits - used);
        for (unsigned half = 0; half < 2; ++half) {
            const std::size_t at = position / kByteBits + half;
            const unsigned shift = half == 0 ? kByteBits : 0;
            const unsigned kept = mask >> shift & kMostOfByte;
            if (kept != 0) {
                const auto before = static_cast<unsigned char>(m_bytes[at]);
                m_bytes[at] = static_cast<char>((before & ~kept) | (both >> shift & kept));
            }
        }
        position += kByteBits;
    }
}

void BitWriter::padWith(char byte)
{
    const unsigned used = m_size % kByteBits;
    if (used != 0) {
        constexpr unsigned kAll = 0xFF;
        const unsigned last = static_cast<unsigned char>(m_bytes.back());
        m_bytes.back()
            = static_cast<char>(last | (static_cast<unsigned char>(byte) & (kAll >> used)));
    }
}

void BitWriter::append(std::string_view bytes, std::size_t begin, std::size_t end)
{
    constexpr std::size_t kAtOnce = 32;
    m_bytes.reserve((m_size + end - begin) / kByteBits + 1);
    if (m_size % kByteBits == 0 && begin % kByteBits == 0) {
        const std::size_t whole = (end - begin) / kByteBits;
        m_bytes += bytes.substr(begin / kByteBits, whole);
        m_size += whole * kByteBits;
        begin += whole * kByteBits;
    }
    BitReader reader(bytes, begin, end);
    while (reader.left() != 0) {
        const auto count = static_cast<unsigned>(std::min(reader.left(), kAtOnce));
        bits(reader.bits(count), count);
    }
}

} // namespace corma::host::dwg
