#include "host/dwg/lz77.h"

#include "host/dwg/lz77_buffers.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>

namespace corma::host::dwg {

namespace {

// A stream is: a run of literal bytes, then repetitions with literal bytes behind each, then the
// end mark. The first byte of a repetition, the opcode, tells its kind:
//     0x40..0xFF  3 to 14 bytes from nearby, 2 bits of the distance in the opcode
//     0x20..0x3F  any length from nearby, the distance in two bytes
//     0x10..0x1F  the same from far away
// The lowest two bits of the byte with the low part of the distance are the number of literal
// bytes behind the repetition; where they are 0 a run tells it, unless an opcode follows at once.
constexpr unsigned kNear = 0x40;
constexpr unsigned kMiddle = 0x20;
constexpr unsigned kFar = 0x10;
constexpr unsigned kEnd = 0x11;

constexpr unsigned kFewMask = 3; // literal bytes that are told with a repetition
constexpr unsigned kFewBits = 2;
constexpr unsigned kRunOpcode = 0xF0; // none of these bits: a run of literal bytes
constexpr std::size_t kRunLeast = 4; // bytes of the shortest run
constexpr std::size_t kRunBase = 3; // of a run of one byte
constexpr std::size_t kLongRunBase = 18; // of a run that goes on
constexpr std::size_t kByteMost = 0xFF;
constexpr unsigned kLowBits = 6; // of a distance in two bytes

constexpr std::size_t kNearMost = 14;
constexpr std::size_t kNearReach = 0x400;
constexpr std::size_t kMiddleBase = 2;
constexpr std::size_t kMiddleMost = 0x21; // longer ones go on
constexpr std::size_t kMiddleReach = 0x4000;
constexpr std::size_t kFarBase = 2;
constexpr std::size_t kFarMost = 9; // longer ones go on
constexpr unsigned kFarMask = 0x0F;
constexpr std::size_t kFarReach = 0x7FFF;

class PageDecompressor
{
public:
    PageDecompressor(std::string_view stream, std::span<char> out)
        : m_input(stream)
        , m_output(out)
    {
    }

    std::optional<std::size_t> run()
    {
        unsigned opcode = 0;
        std::size_t literals = runLength(opcode);
        for (;;) {
            if (!m_input.isGood() || !m_output.copyFrom(m_input, literals)) {
                return std::nullopt;
            }
            if (opcode == 0) {
                opcode = m_input.next();
            }
            if (opcode == kEnd) {
                return m_output.size();
            }
            unsigned few = 0;
            if (!repeat(opcode, few)) {
                return std::nullopt;
            }
            opcode = 0;
            literals = few != 0 ? few : runLength(opcode);
        }
    }

private:
    // The length of a run, or the opcode that stands in its place.
    std::size_t runLength(unsigned& opcode)
    {
        const unsigned byte = m_input.next();
        if ((byte & kRunOpcode) != 0) {
            opcode = byte;
            return 0;
        }
        return byte != 0 ? byte + kRunBase : kLongRunBase + longLength();
    }

    // Each zero stands for 255 more.
    std::size_t longLength()
    {
        std::size_t length = 0;
        for (;;) {
            const unsigned byte = m_input.next();
            if (byte != 0 || !m_input.isGood()) {
                return length + byte;
            }
            length += kByteMost;
        }
    }

    std::size_t distance(unsigned& few)
    {
        const unsigned low = m_input.next();
        few = low & kFewMask;
        return (low >> kFewBits | m_input.next() << kLowBits) + std::size_t {1};
    }

    bool repeat(unsigned opcode, unsigned& few)
    {
        if (opcode >= kNear) {
            few = opcode & kFewMask;
            const std::size_t away = (opcode >> 2U & 3U) + (std::size_t {m_input.next()} << 2U) + 1;
            return m_input.isGood() && m_output.repeat(away, (opcode >> 4U) - 1);
        }
        if (opcode >= kMiddle) {
            const std::size_t length
                = opcode == kMiddle ? kMiddleMost + longLength() : (opcode - kMiddle) + kMiddleBase;
            const std::size_t away = distance(few);
            return m_input.isGood() && m_output.repeat(away, length);
        }
        if (opcode >= kFar) {
            const std::size_t length
                = opcode == kFar ? kFarMost + longLength() : (opcode & kFarMask) + kFarBase;
            const std::size_t away = distance(few) + kMiddleReach - 1;
            return m_input.isGood() && m_output.repeat(away, length);
        }
        return false;
    }

    StreamInput m_input;
    StreamOutput m_output;
};

// Takes the latest place where the next four bytes stood before, if they did.
class PageCompressor
{
public:
    explicit PageCompressor(std::string_view bytes)
        : m_bytes(bytes)
    {
        m_places.fill(kNowhere);
        m_stream.reserve(bytes.size() / 2);
    }

    std::string run()
    {
        std::size_t at = 0;
        std::size_t literals = 0; // where those that are not written begin
        // The first run cannot be shorter than four bytes.
        for (; at < kRunLeast; ++at) {
            remember(at);
        }
        while (at + kRunLeast <= m_bytes.size()) {
            const std::size_t before = remember(at);
            const std::size_t length = matchLength(before, at);
            if (length == 0) {
                ++at;
                continue;
            }
            addLiterals(literals, at);
            addRepetition(at - before, length);
            const std::size_t end = at + length;
            const std::size_t last = std::min(end, at + kMostRemembered);
            for (++at; at < last; ++at) {
                remember(at);
            }
            at = end;
            literals = end;
        }
        addLiterals(literals, m_bytes.size());
        m_stream += static_cast<char>(kEnd);
        m_stream.append(2, '\0');
        return std::move(m_stream);
    }

private:
    static constexpr unsigned kPlaceBits = 13;
    static constexpr std::uint32_t kNowhere = 0xFFFFFFFF;
    static constexpr std::size_t kMostRemembered = 64; // places inside one repetition

    // Puts the place down for the bytes that begin there; the former place of such bytes.
    std::size_t remember(std::size_t at)
    {
        constexpr std::uint32_t kSpread = 2654435761U;
        constexpr unsigned kNumberBits = 32;
        if (at + sizeof(std::uint32_t) > m_bytes.size()) {
            return kNowhere;
        }
        std::uint32_t four = 0;
        std::memcpy(&four, m_bytes.data() + at, sizeof four);
        std::uint32_t& place = m_places[four * kSpread >> (kNumberBits - kPlaceBits)];
        const std::uint32_t before = place;
        place = static_cast<std::uint32_t>(at);
        return before;
    }

    [[nodiscard]] std::size_t matchLength(std::size_t before, std::size_t at) const
    {
        if (before == kNowhere || at - before > kFarReach) {
            return 0;
        }
        const char* const end = m_bytes.data() + m_bytes.size();
        const char* const begin = m_bytes.data() + at;
        const auto length = static_cast<std::size_t>(
            std::mismatch(begin, end, m_bytes.data() + before).first - begin);
        return length < kRunLeast ? 0 : length;
    }

    void addByte(std::size_t byte) { m_stream += static_cast<char>(byte); }

    void addLongLength(std::size_t length)
    {
        for (; length > kByteMost; length -= kByteMost) {
            addByte(0);
        }
        addByte(length);
    }

    void addLiterals(std::size_t begin, std::size_t end)
    {
        const std::size_t count = end - begin;
        if (count == 0) {
            return;
        }
        if (count < kRunLeast) {
            m_stream[m_few] = static_cast<char>(static_cast<unsigned char>(m_stream[m_few])
                                                | static_cast<unsigned>(count));
        } else if (count <= kLongRunBase) {
            addByte(count - kRunBase);
        } else {
            addByte(0);
            addLongLength(count - kLongRunBase);
        }
        m_stream += m_bytes.substr(begin, count);
    }

    void addRepetition(std::size_t distance, std::size_t length)
    {
        const std::size_t away = distance - 1;
        if (length <= kNearMost && away < kNearReach) {
            m_few = m_stream.size();
            addByte((length + 1) << 4U | (away & 3U) << 2U);
            addByte(away >> 2U);
            return;
        }
        if (away < kMiddleReach) {
            addLength(kMiddle, length, {.base = kMiddleBase, .most = kMiddleMost});
            addDistance(away);
            return;
        }
        addLength(kFar, length, {.base = kFarBase, .most = kFarMost});
        addDistance(away - (kMiddleReach - 1));
    }

    struct Lengths
    {
        std::size_t base = 0;
        std::size_t most = 0;
    };

    void addLength(std::size_t opcode, std::size_t length, Lengths told)
    {
        if (length <= told.most) {
            addByte(opcode + (length - told.base));
            return;
        }
        addByte(opcode);
        addLongLength(length - told.most);
    }

    void addDistance(std::size_t away)
    {
        m_few = m_stream.size();
        addByte(away << kFewBits);
        addByte(away >> kLowBits);
    }

    std::string_view m_bytes;
    std::string m_stream;
    std::size_t m_few = 0; // the byte of the stream that tells the literal bytes behind
    std::array<std::uint32_t, std::size_t {1} << kPlaceBits> m_places {};
};

} // namespace

std::optional<std::size_t> decompressPage(std::string_view stream, std::span<char> out)
{
    return PageDecompressor(stream, out).run();
}

std::string compressPage(std::string_view bytes)
{
    assert(bytes.size() >= kLeastToCompress);
    return PageCompressor(bytes).run();
}

} // namespace corma::host::dwg
