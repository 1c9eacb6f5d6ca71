#include "host/dwg/checksum.h"

#include "host/dwg/bits.h"

#include <array>
#include <cstddef>

namespace corma::host::dwg {

namespace {

constexpr std::uint16_t kPolynomial = 0xA001; // bits from the lowest on
constexpr std::size_t kByteCount = 256;
constexpr unsigned kByteMask = 0xFF;
constexpr std::size_t kStep = 8; // bytes that are taken in one step

using ChecksumRow = std::array<std::uint16_t, kByteCount>;

// Row n: what a byte makes of the checksum n bytes later.
constexpr std::array<ChecksumRow, kStep> makeChecksumRows()
{
    std::array<ChecksumRow, kStep> rows {};
    for (unsigned byte = 0; byte < kByteCount; ++byte) {
        unsigned value = byte;
        for (unsigned bit = 0; bit < kByteBits; ++bit) {
            value = (value & 1U) != 0 ? (value >> 1U) ^ kPolynomial : value >> 1U;
        }
        rows[0][byte] = static_cast<std::uint16_t>(value);
    }
    for (std::size_t row = 1; row < kStep; ++row) {
        for (std::size_t byte = 0; byte < kByteCount; ++byte) {
            const unsigned before = rows[row - 1][byte];
            rows[row][byte]
                = static_cast<std::uint16_t>((before >> kByteBits) ^ rows[0][before & kByteMask]);
        }
    }
    return rows;
}

constexpr std::array<ChecksumRow, kStep> kChecksumRows = makeChecksumRows();

} // namespace

std::uint16_t checksum(std::string_view bytes, std::uint16_t start)
{
    unsigned value = start;
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t left = bytes.size();
    for (; left >= kStep; left -= kStep, at += kStep) {
        unsigned next = kChecksumRows[7][at[0] ^ (value & kByteMask)];
        next ^= kChecksumRows[6][at[1] ^ (value >> kByteBits)];
        next ^= kChecksumRows[5][at[2]] ^ kChecksumRows[4][at[3]] ^ kChecksumRows[3][at[4]];
        next ^= kChecksumRows[2][at[5]] ^ kChecksumRows[1][at[6]] ^ kChecksumRows[0][at[7]];
        value = next;
    }
    // Most records are short, so what is left of them counts.
    if ((left & 4U) != 0) {
        unsigned next = kChecksumRows[3][at[0] ^ (value & kByteMask)];
        next ^= kChecksumRows[2][at[1] ^ (value >> kByteBits)];
        value = next ^ kChecksumRows[1][at[2]] ^ kChecksumRows[0][at[3]];
        at += 4;
    }
    if ((left & 2U) != 0) {
        value = kChecksumRows[1][at[0] ^ (value & kByteMask)]
            ^ kChecksumRows[0][at[1] ^ (value >> kByteBits)];
        at += 2;
    }
    if ((left & 1U) != 0) {
        value = (value >> kByteBits) ^ kChecksumRows[0][(*at ^ value) & kByteMask];
    }
    return static_cast<std::uint16_t>(value);
}

} // namespace corma::host::dwg
