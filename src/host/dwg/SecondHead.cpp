#include "host/dwg/SecondHead.h"

#include "host/dwg/checksum.h"
#include "host/dwg/little_endian.h"
#include "host/dwg/sentinels.h"

#include <array>

namespace corma::host::dwg {

namespace {

constexpr std::size_t kRestSize = 8;

// A section is listed by its number, begin and size.
bool isSection(BitReader& from, std::size_t number, const SecondHead::Section& wanted)
{
    return from.byte() == number && from.bitLong() == wanted.begin && from.bitLong() == wanted.size;
}

void writeLong(std::size_t value, BitWriter& to)
{
    to.bitLong(static_cast<std::uint32_t>(value));
}

} // namespace

std::optional<SecondHead> SecondHead::find(std::string_view file,
                                           const std::vector<Section>& sections)
{
    const std::size_t begin = file.rfind(kSecondHeadBegin);
    if (begin == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view behind = file.substr(begin + kSentinelSize);
    const auto size = numberAt<std::uint32_t>(behind, 0);
    SecondHead head;
    if (size > behind.size() || behind.substr(size).substr(0, kSentinelSize) != kSecondHeadEnd
        || !head.read(behind.substr(0, size), sections)) {
        return std::nullopt;
    }
    head.m_begin = begin;
    head.m_end = begin + 2 * kSentinelSize + size;
    return head;
}

// The length of what stands ahead of the list differs between releases, so the list is looked for.
bool SecondHead::read(std::string_view inner, const std::vector<Section>& sections)
{
    constexpr std::size_t kMostOfPrelude = 256; // bits
    BitReader from(inner);
    from.rawLong();
    from.bitLong();
    const std::size_t preludeBegin = from.position();
    const std::size_t end = inner.size() * kByteBits;
    std::size_t begin = preludeBegin;
    for (;; ++begin) {
        if (begin > preludeBegin + kMostOfPrelude || begin > end) {
            return false;
        }
        from = BitReader(inner, begin, end);
        if (isSection(from, 0, sections[0]) && isSection(from, 1, sections[1])) {
            break;
        }
    }
    m_prelude.append(inner, preludeBegin, begin);
    from = BitReader(inner, begin, end);
    for (const Section& section : sections) {
        from.byte();
        Section listed;
        listed.begin = from.bitLong();
        listed.size = from.bitLong();
        m_sections.push_back(listed);
        m_isOwn.push_back(listed.begin != section.begin || listed.size != section.size);
    }
    const unsigned count = from.bitShort();
    for (unsigned i = 0; i < count && from.isGood(); ++i) {
        const std::size_t size = from.byte();
        Root root;
        root.number = from.byte();
        root.handle = from.bytes(size);
        m_roots.push_back(std::move(root));
    }
    const std::size_t checksumAt = (from.position() + kByteBits - 1) / kByteBits;
    if (!from.isGood() || checksumAt + kChecksumSize + kRestSize != inner.size()
        || checksum(inner.substr(0, checksumAt)) != numberAt<std::uint16_t>(inner, checksumAt)) {
        return false;
    }
    m_rest = inner.substr(checksumAt + kChecksumSize);
    return true;
}

std::string SecondHead::moved(std::size_t begin, const std::vector<Section>& sections,
                              Handle seed) const
{
    BitWriter to;
    to.rawLong(0);
    writeLong(begin, to);
    to.append(m_prelude);
    for (std::size_t i = 0; i < m_sections.size(); ++i) {
        const Section& section = m_isOwn[i] ? m_sections[i] : sections[i];
        to.byte(static_cast<std::uint8_t>(i));
        writeLong(section.begin, to);
        writeLong(section.size, to);
    }
    to.bitShort(static_cast<std::uint16_t>(m_roots.size()));
    for (const Root& root : m_roots) {
        std::string handle = root.handle;
        if (root.number == 0 && seed != Handle::none) {
            handle.clear();
            for (auto rest = static_cast<std::uint64_t>(seed); rest != 0; rest >>= kByteBits) {
                handle.insert(handle.begin(), static_cast<char>(rest));
            }
        }
        to.byte(static_cast<std::uint8_t>(handle.size()));
        to.byte(static_cast<std::uint8_t>(root.number));
        to.bytes(handle);
    }
    std::string inner = to.bytes();
    putNumber(static_cast<std::uint32_t>(inner.size() + kChecksumSize + m_rest.size()), 0, inner);
    addNumber(checksum(inner), inner);
    return std::string(kSecondHeadBegin) + inner + m_rest + std::string(kSecondHeadEnd);
}

std::string SecondHead::made(std::size_t begin, const HeadNumbers& numbers,
                             const std::vector<Section>& sections)
{
    // There is no record 4, and the last but one of the roots is another's.
    constexpr std::array<unsigned char, 14> kRoots
        = {0, 0x01, 0x02, 0x03, 0x05, 0x06, 0x07, 0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x17, 0x0D};
    constexpr std::string_view kBegin("AC1015\0\0\0\0\0", 11);
    SecondHead head;
    head.m_prelude.bytes(kBegin);
    head.m_prelude.byte(numbers.maintenance);
    head.m_prelude.byte(1);
    head.m_prelude.bitShort(numbers.program);
    head.m_prelude.rawShort(numbers.codePage);
    head.m_prelude.bitShort(static_cast<std::uint16_t>(sections.size()));
    head.m_sections = sections;
    head.m_isOwn.assign(sections.size(), false);
    for (std::size_t i = 0; i < kRoots.size(); ++i) {
        Root root;
        root.number = static_cast<unsigned>(i);
        root.handle = static_cast<char>(kRoots[i]);
        head.m_roots.push_back(std::move(root));
    }
    head.m_rest.assign(kRestSize, '\0');
    return head.moved(begin, sections, Handle::none);
}

} // namespace corma::host::dwg
