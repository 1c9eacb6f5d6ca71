#pragma once

// host/dxf/ - how a drawing stands in a DXF file. Here: walking over the groups of a file as they
// stand there, in one pass and without a copy.

#include "host/model/Group.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace corma::host::dxf {

inline constexpr std::string_view kBinarySentinel("AutoCAD Binary DXF\r\n\x1A\0", 22);
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

inline constexpr int kLeastCode = -5;
inline constexpr int kGreatestCode = 1071;

/// What the next group turned out to be.
enum class Step : std::uint8_t
{
    group,
    end, // there is none
    noCode, // something else stands where a group code was expected
    cutOff // the bytes end in the middle of it
};

/// The groups of a text file. Behind the bytes must stand a zero byte or another group.
class TextTags
{
public:
    explicit TextTags(std::string_view bytes)
        : m_begin(bytes.data())
        , m_next(bytes.data())
        , m_end(bytes.data() + bytes.size())
    {
    }

    /// Goes to the next group.
    Step next();

    [[nodiscard]] int code() const { return m_code; }

    /// Without its line end.
    [[nodiscard]] std::string_view value() const { return m_value; }

    /// Where the group begins; after a failing step, where the trouble is.
    [[nodiscard]] const char* begin() const { return m_begin; }

    [[nodiscard]] const char* end() const { return m_next; }

    /// Goes to the end of the bytes.
    void skipAll() { m_next = m_end; }

    /// A whole number that is no more than spaces and digits; 0 for anything else.
    [[nodiscard]] int smallNumber() const;

private:
    Step nextOdd();
    Step take(int code, const char* lineEnd);

    const char* m_begin;
    const char* m_next;
    const char* m_end;
    int m_code = 0;
    std::string_view m_value;
};

/// The groups of a binary file, behind its sentinel.
class BinaryTags
{
public:
    /// In files up to R12 a code has one byte, or three from 255 on; later two.
    enum class Codes : std::uint8_t
    {
        ofOneByte,
        ofTwoBytes
    };

    BinaryTags(std::string_view bytes, Codes codes)
        : m_codes(codes)
        , m_begin(bytes.data())
        , m_next(bytes.data())
        , m_end(bytes.data() + bytes.size())
    {
    }

    Step next();

    [[nodiscard]] int code() const { return m_code; }

    /// The bytes of the value, without the length or the zero that tells where it ends.
    [[nodiscard]] std::string_view value() const { return m_value; }

    [[nodiscard]] const char* begin() const { return m_begin; }

    [[nodiscard]] const char* end() const { return m_next; }

    void skipAll() { m_next = m_end; }

    [[nodiscard]] int smallNumber() const; // the lowest byte

private:
    [[nodiscard]] std::size_t left() const { return static_cast<std::size_t>(m_end - m_next); }

    bool takeCode();
    bool takeValue();
    bool takeBytes(std::size_t count);
    bool takeText();

    Codes m_codes;
    const char* m_begin;
    const char* m_next;
    const char* m_end;
    int m_code = 0;
    std::string_view m_value;
};

/// How the codes of a binary file stand, by the bytes behind its sentinel.
BinaryTags::Codes codesOf(std::string_view bytes);

/// Without spaces and tabs at both ends.
std::string_view trimmed(std::string_view text);

/// True for nothing but spaces, line ends, zeros, and the mark that ended text files once.
bool isBlank(std::string_view bytes);

inline Step TextTags::take(int code, const char* lineEnd)
{
    const char* const value = lineEnd + 1;
    if (value == m_end) {
        return Step::cutOff;
    }
    const auto left = static_cast<std::size_t>(m_end - value);
    const auto* const end = static_cast<const char*>(std::memchr(value, '\n', left));
    const char* const stop = end == nullptr ? m_end : end;
    m_next = end == nullptr ? m_end : end + 1;
    m_code = code;
    m_value = {value, static_cast<std::size_t>(stop - value)};
    if (m_value.ends_with('\r')) {
        m_value.remove_suffix(1);
    }
    return Step::group;
}

// Reading a large drawing is this and little else, so it stands here to be put in place.
inline Step TextTags::next()
{
    m_begin = m_next;
    if (m_next == m_end) {
        return Step::end;
    }
    const char* at = m_next;
    while (*at == ' ') {
        ++at;
    }
    constexpr unsigned kRadix = 10;
    const char* const digits = at;
    unsigned code = 0;
    for (unsigned digit = 0; (digit = static_cast<unsigned char>(*at) - unsigned {'0'}) < kRadix;) {
        code = code * kRadix + digit;
        ++at;
    }
    constexpr std::ptrdiff_t kMostDigits = 4;
    const std::ptrdiff_t count = at - digits;
    if (*at == '\r') {
        ++at;
    }
    if (*at != '\n' || count == 0 || count > kMostDigits || code > kGreatestCode) {
        return nextOdd();
    }
    return take(static_cast<int>(code), at);
}

} // namespace corma::host::dxf
