#pragma once

#include "host/model/Group.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace corma::host::dwg {

inline constexpr unsigned kByteBits = 8;
inline constexpr std::size_t kUnicodeSize = 2; // bytes of a unit of UTF-16

/// Reads numbers that begin at any bit; the highest bit of a byte comes first. Reading beyond the
/// end gives zeros and is remembered, so that one question behind a whole record is enough.
class BitReader
{
public:
    BitReader() = default;

    /// The bits from `begin` up to `end`, counted in `bytes`.
    BitReader(std::string_view bytes, std::size_t begin, std::size_t end)
        : m_bytes(bytes)
        , m_at(begin)
        , m_end(end)
    {
        const std::size_t all = bytes.size() * kByteBits;
        if (m_end > all || m_at > m_end) {
            m_at = m_end = all;
            m_isGood = false;
        }
    }

    explicit BitReader(std::string_view bytes)
        : BitReader(bytes, 0, bytes.size() * kByteBits)
    {
    }

    [[nodiscard]] bool isGood() const { return m_isGood; }

    void fail() { m_isGood = false; }

    void skipAll() { m_at = m_end; }

    void skip(std::size_t count)
    {
        m_isGood = m_isGood && count <= left();
        m_at = count <= left() ? m_at + count : m_end;
    }

    [[nodiscard]] std::size_t position() const { return m_at; }

    [[nodiscard]] std::size_t left() const { return m_end - m_at; }

    /// Up to 32 bits.
    std::uint32_t bits(unsigned count)
    {
        if (count > left()) {
            m_isGood = false;
            m_at = m_end;
            return 0;
        }
        return static_cast<std::uint32_t>(next(count));
    }

    /// A number of up to 7 bytes, the highest first.
    std::uint64_t bigEndian(unsigned size)
    {
        if (std::size_t {size} * kByteBits > left()) {
            m_isGood = false;
            m_at = m_end;
            return 0;
        }
        return next(size * kByteBits);
    }

    bool bit() { return bits(1) != 0; }

    std::uint8_t byte() { return static_cast<std::uint8_t>(bits(kByteBits)); }

    // The lowest byte comes first in these three.
    std::uint16_t rawShort();
    std::uint32_t rawLong();
    double rawDouble();

    std::string bytes(std::size_t count); // empty when there are not that many

    // Numbers in a short form where their value has one.
    std::uint16_t bitShort();
    std::uint32_t bitLong();
    std::uint64_t bitLongLong();
    double bitDouble();
    double defaultDouble(double usual); // says how it differs from the usual value

    /// A number of things that follow, each of at least `fewestBits`. A greater one than the rest
    /// has room for is a failure, so nobody makes room for it.
    std::size_t count(std::size_t number, std::size_t fewestBits);

private:
    // There must be as many, and not more than 57. All that is read comes from here.
    [[gnu::always_inline]] std::uint64_t next(unsigned count)
    {
        constexpr unsigned kWindowBits = 64;
        const std::uint64_t window = windowAt(m_at / kByteBits) << m_at % kByteBits;
        m_at += count;
        return count == 0 ? 0 : window >> (kWindowBits - count);
    }

    // 8 bytes from a position on, with zeros behind the end.
    [[nodiscard]] std::uint64_t windowAt(std::size_t byte) const
    {
        std::uint64_t window = 0;
        if (byte + sizeof window <= m_bytes.size()) {
            std::memcpy(&window, m_bytes.data() + byte, sizeof window);
            if constexpr (std::endian::native == std::endian::little) {
                window = __builtin_bswap64(window);
            }
            return window;
        }
        return lastWindow(byte);
    }

    [[nodiscard]] std::uint64_t lastWindow(std::size_t byte) const;

    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    bool m_isGood = true;
};

/// Writes what BitReader reads, always in the shortest form.
class BitWriter
{
public:
    [[nodiscard]] std::size_t size() const { return m_size; } // bits

    /// The bits, with zeros up to the end of the last byte.
    [[nodiscard]] const std::string& bytes() const { return m_bytes; }

    void bits(std::uint32_t value, unsigned count);

    void bit(bool value) { bits(value ? 1 : 0, 1); }

    void byte(std::uint8_t value) { bits(value, kByteBits); }

    void rawShort(std::uint16_t value);
    void rawLong(std::uint32_t value);
    void rawDouble(double value);
    void bytes(std::string_view all);
    void bitShort(std::uint16_t value);
    void bitLong(std::uint32_t value);
    void bitLongLong(std::uint64_t value);
    void bitDouble(double value);
    void defaultDouble(double value, double usual);

    /// Writes over 32 bits that are there already.
    void setRawLong(std::size_t position, std::uint32_t value);

    /// Gives the bits of the last byte that are not in use those of another byte.
    void padWith(char byte);

    /// All bits that another has.
    void append(const BitWriter& other) { append(other.m_bytes, 0, other.m_size); }

    /// The bits from `begin` up to `end` of some bytes.
    void append(std::string_view bytes, std::size_t begin, std::size_t end);

private:
    std::string m_bytes;
    std::size_t m_size = 0;
};

} // namespace corma::host::dwg
