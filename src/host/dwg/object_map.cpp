#include "host/dwg/object_map.h"

#include "host/dwg/bits.h"
#include "host/dwg/checksum.h"

namespace corma::host::dwg {

namespace {

constexpr std::size_t kMostOfPiece = 2032; // bytes with the length ahead
constexpr std::size_t kLengthSize = 2;
constexpr unsigned kMore = 0x80; // another byte follows
constexpr unsigned kValueMask = 0x7F;
constexpr unsigned kValueBits = 7;
constexpr unsigned kSign = 0x40; // in the last byte of a signed number
constexpr unsigned kLastMask = 0x3F;
constexpr unsigned kMostShift = 63;

// The numbers of a piece. Each says how far it lies from the one before.
class Piece
{
public:
    explicit Piece(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    [[nodiscard]] bool isOver() const { return m_at == m_bytes.size(); }

    [[nodiscard]] bool isGood() const { return m_isGood; }

    std::uint64_t unsignedNumber()
    {
        std::uint64_t value = 0;
        for (unsigned shift = 0;; shift += kValueBits) {
            const unsigned byte = next();
            value |= shifted(byte & kValueMask, shift);
            if ((byte & kMore) == 0) {
                return value;
            }
        }
    }

    // Two's complement, so that adding goes both ways.
    std::uint64_t signedNumber()
    {
        std::uint64_t value = 0;
        for (unsigned shift = 0;; shift += kValueBits) {
            const unsigned byte = next();
            if ((byte & kMore) == 0) {
                value |= shifted(byte & kLastMask, shift);
                return (byte & kSign) != 0 ? 0 - value : value;
            }
            value |= shifted(byte & kValueMask, shift);
        }
    }

private:
    unsigned next()
    {
        if (isOver()) {
            m_isGood = false;
            return 0;
        }
        return static_cast<unsigned char>(m_bytes[m_at++]);
    }

    std::uint64_t shifted(unsigned value, unsigned shift)
    {
        if (shift > kMostShift) {
            m_isGood = false;
            return 0;
        }
        return std::uint64_t {value} << shift;
    }

    std::string_view m_bytes;
    std::size_t m_at = 0;
    bool m_isGood = true;
};

// The highest byte comes first, other than anywhere else in a file.
unsigned bigEndian(std::string_view bytes)
{
    return static_cast<unsigned>(static_cast<unsigned char>(bytes[0])) << kByteBits
        | static_cast<unsigned char>(bytes[1]);
}

void addBigEndian(unsigned value, std::string& bytes)
{
    bytes += static_cast<char>(value >> kByteBits);
    bytes += static_cast<char>(value);
}

bool decodePiece(std::string_view bytes, std::vector<ObjectPlace>& places)
{
    Piece piece(bytes);
    std::uint64_t handle = 0;
    std::uint64_t offset = 0;
    constexpr std::uint64_t kMostOffset = ~std::uint64_t {0} >> 1U;
    while (!piece.isOver()) {
        handle += piece.unsignedNumber();
        offset += piece.signedNumber();
        if (!piece.isGood() || offset > kMostOffset) {
            return false;
        }
        places.push_back({Handle {handle}, offset});
    }
    return true;
}

void addUnsigned(std::uint64_t value, std::string& bytes)
{
    while (value > kValueMask) {
        bytes += static_cast<char>((value & kValueMask) | kMore);
        value >>= kValueBits;
    }
    bytes += static_cast<char>(value);
}

void addSigned(std::uint64_t difference, std::string& bytes)
{
    const bool isNegative = difference >> kMostShift != 0;
    std::uint64_t value = isNegative ? 0 - difference : difference;
    while (value > kLastMask) {
        bytes += static_cast<char>((value & kValueMask) | kMore);
        value >>= kValueBits;
    }
    bytes += static_cast<char>(value | (isNegative ? kSign : 0U));
}

void closePiece(std::size_t begin, std::string& map)
{
    const std::size_t size = map.size() - begin;
    map[begin] = static_cast<char>(size >> kByteBits);
    map[begin + 1] = static_cast<char>(size);
    addBigEndian(checksum(std::string_view(map).substr(begin)), map);
}

} // namespace

std::optional<std::vector<ObjectPlace>> decodeObjectMap(std::string_view map)
{
    constexpr std::size_t kUsualBytes = 3; // of one object
    std::vector<ObjectPlace> places;
    places.reserve(map.size() / kUsualBytes);
    for (;;) {
        if (map.size() < kLengthSize + kChecksumSize) {
            return std::nullopt;
        }
        const std::size_t size = bigEndian(map);
        if (size < kLengthSize || size + kChecksumSize > map.size()
            || checksum(map.substr(0, size)) != bigEndian(map.substr(size))) {
            return std::nullopt;
        }
        if (size == kLengthSize) {
            return places;
        }
        if (!decodePiece(map.substr(kLengthSize, size - kLengthSize), places)) {
            return std::nullopt;
        }
        map.remove_prefix(size + kChecksumSize);
    }
}

std::string encodeObjectMap(const std::vector<ObjectPlace>& places)
{
    std::string map(kLengthSize, '\0');
    std::size_t begin = 0;
    ObjectPlace before;
    std::string entry;
    const auto encode = [&](const ObjectPlace& place) {
        entry.clear();
        addUnsigned(static_cast<std::uint64_t>(place.handle)
                        - static_cast<std::uint64_t>(before.handle),
                    entry);
        addSigned(place.offset - before.offset, entry);
    };
    for (const ObjectPlace& place : places) {
        encode(place);
        if (map.size() - begin + entry.size() > kMostOfPiece) {
            closePiece(begin, map);
            begin = map.size();
            map.append(kLengthSize, '\0');
            before = {};
            encode(place);
        }
        map += entry;
        before = place;
    }
    if (map.size() - begin != kLengthSize) {
        closePiece(begin, map);
        begin = map.size();
        map.append(kLengthSize, '\0');
    }
    closePiece(begin, map);
    return map;
}

} // namespace corma::host::dwg
