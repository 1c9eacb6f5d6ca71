#include "host/dwg/bits.h"
#include "host/dwg/lz77.h"
#include "host/dwg/lz77_buffers.h"

#include <array>

namespace corma::host::dwg {

namespace {

// The sizes of the groups that a run of literal bytes, shorter than kWholeRun, is cut into from its
// end on. The groups come out in this order, each as it is.
constexpr std::size_t kWholeRun = 32;
constexpr std::array<std::string_view, kWholeRun> kGroups = {
    // clang-format off
    "",         "1",        "11",       "111",      "4",        "14",       "141",      "1141",
    "8",        "18",       "181",      "1181",     "48",       "148",      "1481",     "11481",
    "88",       "818",      "1881",     "11188",    "488",      "1488",     "11488",    "111488",
    "888",      "8188",     "18188",    "118188",   "4888",     "14888",    "114888",   "1488811",
    // clang-format on
};

// An instruction tells a repetition by its upper four bits; the lowest three bits of its last byte
// are the number of literal bytes behind it.
constexpr unsigned kKindBits = 4;
constexpr unsigned kLowMask = 0x0F;
constexpr unsigned kRestMask = 0x07;
constexpr unsigned kHighMask = 0xF8;

enum Opcode : unsigned
{
    medium = 0, // a run of literal bytes unless it stands behind one
    brief = 1,
    far = 2,
    mediumAgain = 15 // as medium where that would be a run
};

class R2007Decompressor
{
public:
    R2007Decompressor(std::string_view stream, std::span<char> out)
        : m_input(stream)
        , m_output(out)
    {
    }

    std::optional<std::size_t> run()
    {
        std::size_t literals = begin();
        while (m_input.isGood() && m_input.left() != 0) {
            if (literals == 0) {
                literals = runLength();
            }
            if (!m_input.isGood() || !copyLiterals(literals)) {
                return std::nullopt;
            }
            if (m_input.left() == 0) {
                break;
            }
            if (!repeatUntilLiterals(literals)) {
                return std::nullopt;
            }
        }
        return m_input.isGood() ? std::optional(m_output.size()) : std::nullopt;
    }

private:
    // A stream may begin with a number of literal bytes in place of a run.
    std::size_t begin()
    {
        m_opcode = m_input.next();
        if (m_opcode >> kKindBits != Opcode::far) {
            return 0;
        }
        m_input.next();
        m_input.next();
        return m_input.next() & kRestMask;
    }

    std::size_t runLength()
    {
        constexpr std::size_t kBase = 8;
        constexpr std::size_t kLong = 0x17;
        constexpr unsigned kByteMost = 0xFF;
        constexpr unsigned kMost = 0xFFFF;
        std::size_t length = m_opcode + kBase;
        if (length != kLong) {
            return length;
        }
        unsigned more = m_input.next();
        length += more;
        if (more == kByteMost) {
            do {
                more = nextTwo();
                length += more;
            } while (more == kMost && m_input.isGood());
        }
        return length;
    }

    unsigned nextTwo()
    {
        const unsigned low = m_input.next();
        return low | m_input.next() << kByteBits;
    }

    bool copyLiterals(std::size_t count)
    {
        constexpr std::size_t kWord = 8;
        if (count > m_input.left() || count > m_output.left()) {
            return false;
        }
        for (; count >= kWholeRun; count -= kWholeRun) {
            for (std::size_t back = kWord; back <= kWholeRun; back += kWord) {
                m_output.append({m_input.at() + (kWholeRun - back), kWord});
            }
            m_input.skip(kWholeRun);
        }
        const char* from = m_input.at() + count;
        for (const char digit : kGroups[count]) {
            const auto size = static_cast<std::size_t>(digit - '0');
            from -= size;
            m_output.append({from, size});
        }
        m_input.skip(count);
        return true;
    }

    // Ends with an opcode for a run, or with the number of literal bytes that follow.
    bool repeatUntilLiterals(std::size_t& literals)
    {
        literals = 0;
        m_opcode = m_input.next();
        for (;;) {
            if (!repeat()) {
                return false;
            }
            literals = m_opcode & kRestMask;
            if (literals != 0 || m_input.left() == 0) {
                return true;
            }
            m_opcode = m_input.next();
            if (m_opcode >> kKindBits == Opcode::medium) {
                return true;
            }
            if (m_opcode >> kKindBits == Opcode::mediumAgain) {
                m_opcode &= kLowMask;
            }
        }
    }

    bool repeat()
    {
        std::size_t length = 0;
        std::size_t away = 0;
        switch (m_opcode >> kKindBits) {
        case Opcode::medium:
            readMedium(length, away);
            break;
        case Opcode::brief: {
            constexpr std::size_t kBase = 3;
            length = (m_opcode & kLowMask) + kBase;
            away = m_input.next();
            m_opcode = m_input.next();
            away += ((m_opcode & kHighMask) << 5U) + 1;
            break;
        }
        case Opcode::far:
            readFar(length, away);
            break;
        default:
            length = m_opcode >> kKindBits;
            away = m_opcode & kLowMask;
            m_opcode = m_input.next();
            away += ((m_opcode & kHighMask) << 1U) + 1;
            break;
        }
        return m_input.isGood() && m_output.repeat(away, length);
    }

    void readMedium(std::size_t& length, std::size_t& away)
    {
        constexpr std::size_t kBase = 0x13;
        constexpr unsigned kLongBit = 0x10;
        constexpr unsigned kAwayMask = 0x78;
        length = (m_opcode & kLowMask) + kBase;
        away = m_input.next();
        m_opcode = m_input.next();
        length += m_opcode >> 3U & kLongBit;
        away += ((m_opcode & kAwayMask) << 5U) + 1;
    }

    void readFar(std::size_t& length, std::size_t& away)
    {
        constexpr unsigned kLongBit = 0x08;
        constexpr std::size_t kLongBase = 0x100;
        const bool isLong = (m_opcode & kLongBit) != 0;
        length = m_opcode & kRestMask;
        away = nextTwo();
        if (isLong) {
            ++away;
            length += kLongBase + (std::size_t {m_input.next()} << 3U);
        }
        m_opcode = m_input.next();
        length += std::size_t {m_opcode & kHighMask} << (isLong ? kByteBits : 0U);
    }

    StreamInput m_input;
    StreamOutput m_output;
    unsigned m_opcode = 0;
};

} // namespace

std::optional<std::size_t> decompressR2007Page(std::string_view stream, std::span<char> out)
{
    return R2007Decompressor(stream, out).run();
}

} // namespace corma::host::dwg
