#pragma once

#include <cstddef>
#include <cstdint>

namespace corma::host::dwg {

/// What may be made of a file, whatever it says of itself: bounds for the memory and for the time.
class Allowance
{
public:
    explicit Allowance(std::size_t fileSize)
        : m_memory(fileSize * kMostGrowth + kLeast)
        , m_work(2 * m_memory)
    {
    }

    /// Bytes that come out of pages. False when it would be too many.
    bool take(std::uint64_t bytes) { return takeFrom(m_memory, bytes); }

    /// Bytes that are looked at. A page can be named again and again.
    bool takeWork(std::uint64_t bytes) { return takeFrom(m_work, bytes); }

    [[nodiscard]] std::uint64_t memory() const { return m_memory; }

private:
    // Real files hold about ten times their size; a small one has a page of each section.
    static constexpr std::uint64_t kMostGrowth = 32;
    static constexpr std::uint64_t kLeast = std::uint64_t {1} << 20U;

    static bool takeFrom(std::uint64_t& left, std::uint64_t bytes)
    {
        if (bytes > left) {
            return false;
        }
        left -= bytes;
        return true;
    }

    std::uint64_t m_memory;
    std::uint64_t m_work;
};

} // namespace corma::host::dwg
