#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corma::host::dwg {

/// A number of `Number`'s size with its lowest byte first; 0 when the bytes end before it does.
template<class Number> Number numberAt(std::string_view bytes, std::size_t at)
{
    constexpr unsigned kBits = 8;
    if (at > bytes.size() || bytes.size() - at < sizeof(Number)) {
        return 0;
    }
    Number value = 0;
    for (std::size_t i = sizeof(Number); i > 0; --i) {
        const auto byte = static_cast<unsigned char>(bytes[at + i - 1]);
        value = static_cast<Number>(static_cast<std::uint64_t>(value) << kBits | byte);
    }
    return value;
}

/// Writes over the bytes at a place that is there.
template<class Number> void putNumber(Number value, std::size_t at, std::string& bytes)
{
    constexpr unsigned kBits = 8;
    for (std::size_t i = 0; i < sizeof(Number); ++i) {
        bytes[at + i] = static_cast<char>(static_cast<unsigned char>(value >> (i * kBits)));
    }
}

template<class Number> void addNumber(Number value, std::string& bytes)
{
    bytes.resize(bytes.size() + sizeof(Number));
    putNumber(value, bytes.size() - sizeof(Number), bytes);
}

} // namespace corma::host::dwg
