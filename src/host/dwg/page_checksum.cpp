#include "host/dwg/page_checksum.h"

#include "host/dwg/bits.h"

#include <algorithm>

namespace corma::host::dwg {

namespace {

constexpr std::uint32_t kModulus = 0xFFF1;
constexpr unsigned kHalfBits = 16;
constexpr std::uint32_t kHalfMask = 0xFFFF;
constexpr std::size_t kMostUnreduced = 5552; // bytes after which a sum might overflow
constexpr std::size_t kBlockSize = 16;

struct PageSums
{
    std::uint32_t plain = 0;
    std::uint32_t weighted = 0; // each byte as often as there are bytes from it to the end
};

// Without a dependency from byte to byte, so that the compiler can take all of them at once.
void addBlock(PageSums& sums, const unsigned char* at)
{
    std::uint32_t plain = 0;
    std::uint32_t weighted = 0;
    for (std::size_t i = 0; i < kBlockSize; ++i) {
        plain += at[i];
        weighted += static_cast<std::uint32_t>(kBlockSize - i) * at[i];
    }
    sums.weighted += static_cast<std::uint32_t>(kBlockSize) * sums.plain + weighted;
    sums.plain += plain;
}

void addPiece(PageSums& sums, const unsigned char* at, std::size_t size)
{
    for (; size >= kBlockSize; size -= kBlockSize, at += kBlockSize) {
        addBlock(sums, at);
    }
    for (; size != 0; --size, ++at) {
        sums.plain += *at;
        sums.weighted += sums.plain;
    }
    sums.plain %= kModulus;
    sums.weighted %= kModulus;
}

constexpr std::array<unsigned char, kMaskSize> makeMask()
{
    constexpr std::uint32_t kFactor = 0x343FD;
    constexpr std::uint32_t kIncrement = 0x269EC3;
    std::array<unsigned char, kMaskSize> mask {};
    std::uint32_t value = 1;
    for (unsigned char& byte : mask) {
        value = value * kFactor + kIncrement;
        byte = static_cast<unsigned char>(value >> kHalfBits);
    }
    return mask;
}

constexpr std::size_t kByteValues = 256;

constexpr std::array<std::uint32_t, kByteValues> makeHeaderRow()
{
    constexpr std::uint32_t kPolynomial = 0xEDB88320; // bits from the lowest on
    std::array<std::uint32_t, kByteValues> row {};
    for (std::uint32_t byte = 0; byte < kByteValues; ++byte) {
        std::uint32_t value = byte;
        for (unsigned bit = 0; bit < kByteBits; ++bit) {
            value = (value & 1U) != 0 ? (value >> 1U) ^ kPolynomial : value >> 1U;
        }
        row[byte] = value;
    }
    return row;
}

} // namespace

constexpr std::array<unsigned char, kMaskSize> kMask = makeMask();

std::uint32_t pageChecksum(std::uint32_t start, std::string_view bytes)
{
    PageSums sums {.plain = start & kHalfMask, .weighted = start >> kHalfBits};
    const auto* const begin = reinterpret_cast<const unsigned char*>(bytes.data());
    for (std::size_t at = 0; at < bytes.size(); at += kMostUnreduced) {
        addPiece(sums, begin + at, std::min(kMostUnreduced, bytes.size() - at));
    }
    return sums.weighted << kHalfBits | sums.plain;
}

std::uint32_t headerChecksum(std::string_view bytes)
{
    static constexpr std::array<std::uint32_t, kByteValues> kRow = makeHeaderRow();
    constexpr std::uint32_t kByteMask = 0xFF;
    std::uint32_t value = ~std::uint32_t {0};
    for (const char byte : bytes) {
        value = value >> kByteBits ^ kRow[(value ^ static_cast<unsigned char>(byte)) & kByteMask];
    }
    return ~value;
}

} // namespace corma::host::dwg
