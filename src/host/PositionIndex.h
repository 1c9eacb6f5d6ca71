#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corma::host {

/// Finds the places of things in a list by a hash of their names. It keeps no names: whoever asks
/// compares them. Many things may have one hash, or one name.
class PositionIndex
{
public:
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    /// The position must not be there yet.
    void add(std::uint32_t hash, std::size_t position);

    /// Takes out what was added under that hash; nothing happens when it is not there.
    void remove(std::uint32_t hash, std::size_t position);
    void clear();

    /// The lowest position with that hash for which `fits(position)`, or kNowhere.
    template<class Fits> [[nodiscard]] std::size_t first(std::uint32_t hash, const Fits& fits) const
    {
        std::size_t best = kNowhere;
        for (std::uint32_t at = chainOf(hash); at != 0; at = m_links[at - 1].next) {
            const std::size_t position = at - 1;
            if (m_links[position].hash == hash && position < best && fits(position)) {
                best = position;
            }
        }
        return best;
    }

private:
    // The things whose hashes end in the same bits hang together, the last one added in front.
    struct Link
    {
        std::uint32_t hash = 0;
        std::uint32_t next = 0; // a position and 1; 0 at the end
    };

    [[nodiscard]] std::uint32_t chainOf(std::uint32_t hash) const
    {
        return m_chains.empty() ? 0 : m_chains[hash & (m_chains.size() - 1)];
    }

    void grow();

    std::vector<std::uint32_t> m_chains; // each a position and 1, or 0
    std::vector<Link> m_links; // by position
    std::size_t m_count = 0;
};

} // namespace corma::host
