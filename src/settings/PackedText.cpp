#include "settings/PackedText.h"

#include "platform/text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace corma {

namespace {

constexpr std::string_view kPackedMarker = "***KV_BESTAAT_NIET***";

// The same characters as bytes.
constexpr bool isMarker(std::wstring_view text)
{
    return std::equal(text.begin(), text.end(), kPackedMarker.begin(), kPackedMarker.end(),
                      [](wchar_t a, char b) { return a == static_cast<wchar_t>(b); });
}

static_assert(isMarker(NOT_FOUND_MARKER));

constexpr std::size_t kMostInside = 7; // bytes
constexpr char32_t kSurrogates = 0xD800;
constexpr char32_t kBehindSurrogates = 0xE000;

static_assert(std::endian::native == std::endian::little); // the lowest byte comes first
static_assert(sizeof(std::uint64_t) >= sizeof(void*));

// A text outside stands in a block: its size, and its bytes.
using Size = std::uint32_t;

constexpr std::size_t kBlockStep = 4; // bytes; the lowest bits of an address are for other use
constexpr std::size_t kChunkSize = 65'536; // bytes

// The number that the bytes of a word make, the first one lowest; 1 to 7 of them. It is made of
// pieces that may overlap, since a copy of so few bytes costs more than that.
std::uint64_t numberOf(std::string_view bytes)
{
    const auto piece = [&](std::size_t at, auto number) {
        std::memcpy(&number, bytes.data() + at, sizeof number);
        return std::uint64_t {number} << (8 * at);
    };
    const std::size_t size = bytes.size();
    if (size >= sizeof(std::uint32_t)) {
        return piece(0, std::uint32_t {}) | piece(size - sizeof(std::uint32_t), std::uint32_t {});
    }
    return piece(0, std::uint8_t {}) | piece(size / 2, std::uint8_t {})
        | piece(size - 1, std::uint8_t {});
}

std::size_t blockSize(std::string_view bytes)
{
    return sizeof(Size) + bytes.size();
}

void writeBlock(char* block, std::string_view bytes)
{
    const auto size = static_cast<Size>(bytes.size());
    std::memcpy(block, &size, sizeof size);
    std::memcpy(block + sizeof size, bytes.data(), bytes.size());
}

std::string_view textOf(const char* block)
{
    Size size = 0;
    std::memcpy(&size, block, sizeof size);
    return {block + sizeof size, size};
}

bool isSurrogate(char32_t c)
{
    return c >= kSurrogates && c < kBehindSurrogates;
}

void appendPacked(std::string& bytes, char32_t c)
{
    if (!isSurrogate(c)) {
        appendUtf8(bytes, c);
        return;
    }
    bytes.push_back(static_cast<char>(0xE0U | (c >> 12U)));
    bytes.push_back(static_cast<char>(0x80U | ((c >> 6U) & 0x3FU)));
    bytes.push_back(static_cast<char>(0x80U | (c & 0x3FU)));
}

// A surrogate that stands at a place of the bytes as appendPacked() writes it, else 0.
char32_t surrogateAt(std::string_view bytes, std::size_t at)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[at + i]); };
    if (at + 2 >= bytes.size() || byte(0) != 0xEDU || byte(1) < 0xA0U) {
        return 0;
    }
    return kSurrogates | ((byte(1) & 0x1FU) << 6U) | (byte(2) & 0x3FU);
}

char* addressOf(std::uint64_t word)
{
    char* address = nullptr;
    std::memcpy(&address, &word, sizeof address);
    return address;
}

} // namespace

std::string toPacked(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t c : text) {
        appendPacked(bytes, static_cast<char32_t>(c));
    }
    return bytes;
}

std::wstring fromPacked(std::string_view bytes)
{
    std::wstring text(bytes.size(), L'\0');
    wchar_t* out = text.data();
    for (std::size_t at = 0; at < bytes.size();) {
        const auto c = static_cast<unsigned char>(bytes[at]);
        if (c < 0x80) {
            *out++ = static_cast<wchar_t>(c);
            ++at;
        } else if (const char32_t surrogate = surrogateAt(bytes, at)) {
            *out++ = static_cast<wchar_t>(surrogate);
            at += 3;
        } else {
            *out++ = static_cast<wchar_t>(nextUtf8(bytes, at));
        }
    }
    text.resize(static_cast<std::size_t>(out - text.data()));
    return text;
}

std::string_view PackedText::bytes() const
{
    if ((m_word & kInside) != 0) {
        return {reinterpret_cast<const char*>(&m_word) + 1, (m_word & 0xFFU) >> 1U};
    }
    if (m_word == kEmpty) {
        return {};
    }
    if (m_word == kMarker) {
        return kPackedMarker;
    }
    return textOf(addressOf(m_word & ~kBorrowed));
}

std::optional<PackedText::Word> PackedText::wordWithoutBlock(std::string_view bytes)
{
    if (bytes.size() > kMostInside) {
        return bytes == kPackedMarker ? std::optional(kMarker) : std::nullopt;
    }
    if (bytes.empty()) {
        return kEmpty;
    }
    return (numberOf(bytes) << 8U) | (bytes.size() << 1U) | kInside;
}

void PackedText::assign(std::string_view bytes)
{
    auto word = wordWithoutBlock(bytes);
    if (!word) {
        char* const block = static_cast<char*>(::operator new(blockSize(bytes)));
        writeBlock(block, bytes);
        word = reinterpret_cast<std::uintptr_t>(block);
    }
    release(); // not before: the bytes may be a part of the former text
    m_word = *word;
}

void PackedText::release()
{
    if (m_word != kEmpty && (m_word & (kInside | kBorrowed)) == 0) {
        ::operator delete(addressOf(m_word));
    }
}

PackedText TextArena::pack(std::string_view bytes)
{
    if (const auto word = PackedText::wordWithoutBlock(bytes)) {
        return PackedText(PackedText::Raw {*word});
    }
    const std::size_t size = (blockSize(bytes) + kBlockStep - 1) / kBlockStep * kBlockStep;
    if (size > m_left) {
        m_left = std::max(size, kChunkSize);
        m_chunks.push_back(std::make_unique_for_overwrite<char[]>(m_left));
        m_free = m_chunks.back().get();
    }
    writeBlock(m_free, bytes);
    const auto address = reinterpret_cast<std::uintptr_t>(m_free);
    m_free += size;
    m_left -= size;
    return PackedText(PackedText::Raw {address | PackedText::kBorrowed});
}

} // namespace corma
