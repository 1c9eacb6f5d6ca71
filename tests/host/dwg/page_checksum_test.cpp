#include "host/dwg/R2007File.h"
#include "host/dwg/page_checksum.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace corma::host::dwg {
namespace {

// Byte for byte, as the sum is meant.
std::uint32_t plainChecksum(std::uint32_t start, const std::string& bytes)
{
    constexpr std::uint32_t kModulus = 0xFFF1;
    constexpr std::uint32_t kHalf = 0x10000;
    std::uint32_t plain = start % kHalf;
    std::uint32_t weighted = start / kHalf;
    for (const char byte : bytes) {
        plain = (plain + static_cast<unsigned char>(byte)) % kModulus;
        weighted = (weighted + plain) % kModulus;
    }
    return weighted * kHalf + plain;
}

TEST(PageChecksum, IsASumOfTheBytesAndASumOfTheirSums)
{
    std::mt19937 random(1);
    for (std::size_t size : {0U, 1U, 15U, 16U, 17U, 100U, 5551U, 5552U, 5553U, 29696U}) {
        std::string bytes(size, '\xFF');
        EXPECT_EQ(pageChecksum(0, bytes), plainChecksum(0, bytes)) << size;
        EXPECT_EQ(pageChecksum(0xFFF0FFF0, bytes), plainChecksum(0xFFF0FFF0, bytes)) << size;
        for (char& byte : bytes) {
            byte = static_cast<char>(random());
        }
        EXPECT_EQ(pageChecksum(1, bytes), plainChecksum(1, bytes)) << size;
    }
}

TEST(PageChecksum, GoesOnFromAnother)
{
    EXPECT_EQ(pageChecksum(0, "Rubriek"), pageChecksum(pageChecksum(0, "Rub"), "riek"));
    EXPECT_NE(pageChecksum(0, "Rubriek"), pageChecksum(0, "Rubreik"));
}

TEST(HeaderChecksum, IsTheUsualOneOf32Bits)
{
    EXPECT_EQ(headerChecksum("123456789"), 0xCBF43926U);
    EXPECT_EQ(headerChecksum(""), 0U);
}

TEST(R2007Checksum, TakesTheBytesOfAWordInPairsFromItsEnd)
{
    constexpr std::uint32_t kModulus = 0xFFF1;
    // Each row is a text, and its bytes in the order in which they are taken.
    const std::pair<std::string, std::string> rows[] = {
        {"a", "a"},
        {"abc", "abc"},
        {"abcd", "cdab"},
        {"abcdefg", "cdabefg"},
        {"abcdefgh", "ghefcdab"},
        {"abcdefghijklm", "ghefcdabklijm"},
    };
    for (const auto& [text, taken] : rows) {
        const auto size = static_cast<std::uint32_t>(text.size());
        const std::uint32_t start = size * 0x343FD + 0x269EC3;
        EXPECT_EQ(r2007Checksum(text) % kModulus, plainChecksum(start, taken) % kModulus) << text;
        EXPECT_EQ(r2007Checksum(text), plainChecksum(start, taken)) << text;
    }
}

} // namespace
} // namespace corma::host::dwg
