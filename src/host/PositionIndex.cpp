#include "host/PositionIndex.h"

#include <algorithm>

namespace corma::host {

void PositionIndex::add(std::uint32_t hash, std::size_t position)
{
    if (m_count == m_chains.size()) {
        grow();
    }
    if (position >= m_links.size()) {
        m_links.resize(position + 1);
    }
    std::uint32_t& chain = m_chains[hash & (m_chains.size() - 1)];
    m_links[position] = {hash, chain};
    chain = static_cast<std::uint32_t>(position + 1);
    ++m_count;
}

void PositionIndex::remove(std::uint32_t hash, std::size_t position)
{
    if (m_chains.empty()) {
        return;
    }
    std::uint32_t* at = &m_chains[hash & (m_chains.size() - 1)];
    while (*at != 0 && *at - 1 != position) {
        at = &m_links[*at - 1].next;
    }
    if (*at != 0) {
        *at = m_links[position].next;
        --m_count;
    }
}

void PositionIndex::clear()
{
    m_chains.clear();
    m_links.clear();
    m_count = 0;
}

void PositionIndex::grow()
{
    constexpr std::size_t kFewest = 4;
    std::vector<std::uint32_t> longer(std::max(kFewest, 2 * m_chains.size()));
    for (std::uint32_t at : m_chains) {
        while (at != 0) {
            Link& link = m_links[at - 1];
            const std::uint32_t next = link.next;
            std::uint32_t& chain = longer[link.hash & (longer.size() - 1)];
            link.next = chain;
            chain = at;
            at = next;
        }
    }
    m_chains.swap(longer);
}

} // namespace corma::host
