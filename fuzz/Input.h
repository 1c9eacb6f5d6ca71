#pragma once

#include "host/dwg/little_endian.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corma::fuzzing {

/// Takes numbers and bytes off the begin of the input of a target; nothing behind its end.
class Input
{
public:
    explicit Input(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    [[nodiscard]] bool isEmpty() const { return m_bytes.empty(); }

    std::size_t byte() { return number<std::uint8_t>(); }

    std::size_t shortNumber() { return number<std::uint16_t>(); }

    std::string_view bytes(std::size_t count)
    {
        const std::string_view taken = m_bytes.substr(0, count);
        m_bytes.remove_prefix(taken.size());
        return taken;
    }

    /// As many as the number of two bytes ahead of them says.
    std::string_view counted() { return bytes(shortNumber()); }

    std::string_view rest() { return bytes(m_bytes.size()); }

private:
    template<class Number> std::size_t number()
    {
        const auto value = host::dwg::numberAt<Number>(m_bytes, 0);
        bytes(sizeof(Number));
        return value;
    }

    std::string_view m_bytes;
};

} // namespace corma::fuzzing
