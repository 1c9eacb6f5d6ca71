#pragma once

// What the two decompressors have in common: bytes that come in, bytes that go out.

#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>

namespace corma::host::dwg {

inline constexpr std::size_t kStride = 16; // bytes that are copied at once where there is room

class StreamInput
{
public:
    explicit StreamInput(std::string_view bytes)
        : m_at(bytes.data())
        , m_end(bytes.data() + bytes.size())
    {
    }

    [[nodiscard]] std::size_t left() const { return static_cast<std::size_t>(m_end - m_at); }

    [[nodiscard]] bool isGood() const { return m_isGood; }

    /// The next byte; 0, and no longer good, behind the end.
    unsigned next()
    {
        if (m_at == m_end) {
            m_isGood = false;
            return 0;
        }
        return static_cast<unsigned char>(*m_at++);
    }

    [[nodiscard]] const char* at() const { return m_at; }

    void skip(std::size_t count) { m_at += count; }

private:
    const char* m_at;
    const char* m_end;
    bool m_isGood = true;
};

class StreamOutput
{
public:
    explicit StreamOutput(std::span<char> out)
        : m_begin(out.data())
        , m_at(out.data())
        , m_end(out.data() + out.size())
    {
    }

    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(m_at - m_begin); }

    [[nodiscard]] std::size_t left() const { return static_cast<std::size_t>(m_end - m_at); }

    /// False when one of both sides has too few bytes.
    bool copyFrom(StreamInput& input, std::size_t count)
    {
        if (count > input.left() || count > left()) {
            return false;
        }
        if (count <= kStride && input.left() >= kStride && left() >= kStride) {
            std::memcpy(m_at, input.at(), kStride);
        } else {
            std::memcpy(m_at, input.at(), count);
        }
        input.skip(count);
        m_at += count;
        return true;
    }

    /// There must be room.
    void append(std::string_view bytes)
    {
        std::memcpy(m_at, bytes.data(), bytes.size());
        m_at += bytes.size();
    }

    /// Repeats bytes that came out before; they may overlap those that are made. False when they
    /// lie before the begin or there is no room.
    bool repeat(std::size_t distance, std::size_t count)
    {
        if (distance == 0 || distance > size() || count > left()) {
            return false;
        }
        if (left() - count < kStride) {
            repeatExactly(distance, count);
        } else if (distance >= kStride) {
            for (std::size_t done = 0; done < count; done += kStride) {
                std::memcpy(m_at + done, m_at + done - distance, kStride);
            }
        } else {
            repeatNear(distance, count);
        }
        m_at += count;
        return true;
    }

private:
    // What lies so near is a pattern: eight bytes of it one by one, the others by eights from a
    // multiple of the distance.
    void repeatNear(std::size_t distance, std::size_t count) const
    {
        constexpr std::size_t kEight = 8;
        for (std::size_t i = 0; i < kEight; ++i) {
            m_at[i] = *(m_at + i - distance);
        }
        const std::size_t step = (kEight + distance - 1) / distance * distance;
        for (std::size_t done = kEight; done < count; done += kEight) {
            std::memcpy(m_at + done, m_at + done - step, kEight);
        }
    }

    void repeatExactly(std::size_t distance, std::size_t count) const
    {
        const char* const from = m_at - distance;
        char* to = m_at;
        while (count > distance) { // what was made doubles what can be repeated at once
            std::memcpy(to, from, distance);
            to += distance;
            count -= distance;
            distance += distance;
        }
        std::memcpy(to, from, count);
    }

    char* m_begin;
    char* m_at;
    char* m_end;
};

} // namespace corma::host::dwg
