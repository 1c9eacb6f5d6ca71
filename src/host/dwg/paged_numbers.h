#pragma once

// Numbers in the pages of a file, lowest byte first.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace corma::host::dwg {

/// The number at a byte; sizeof(Number) bytes must be there.
template<typename Number> Number numberAt(std::string_view bytes, std::size_t at)
{
    constexpr unsigned kByteBits = 8;
    std::uint64_t value = 0;
    for (std::size_t i = sizeof(Number); i != 0; --i) {
        value = value << kByteBits | static_cast<unsigned char>(bytes[at + i - 1]);
    }
    return static_cast<Number>(value);
}

/// Sets the number at a byte; sizeof(Number) bytes must be there.
template<typename Number> void setNumber(std::string& bytes, std::size_t at, Number number)
{
    constexpr unsigned kByteBits = 8;
    auto value = static_cast<std::make_unsigned_t<Number>>(number);
    for (std::size_t i = 0; i < sizeof(Number); ++i) {
        bytes[at + i] = static_cast<char>(static_cast<std::uint64_t>(value) >> (i * kByteBits));
    }
}

template<typename Number> void addNumber(std::string& bytes, Number number)
{
    bytes.append(sizeof(Number), '\0');
    setNumber(bytes, bytes.size() - sizeof(Number), number);
}

} // namespace corma::host::dwg
