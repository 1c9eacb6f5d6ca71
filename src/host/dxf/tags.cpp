#include "host/dxf/tags.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace corma::host::dxf {

namespace {

constexpr char kLongCodeMark = '\xFF'; // the code stands in the next two bytes

// Sizes of values in binary files that no value has.
constexpr std::uint8_t kToTheZero = 254;
constexpr std::uint8_t kCounted = 255;

std::uint8_t sizeOfKind(ValueKind kind)
{
    switch (kind) {
    case ValueKind::real:
    case ValueKind::int64:
        return 8;
    case ValueKind::int32:
        return 4;
    case ValueKind::int16:
        return 2;
    case ValueKind::boolean:
        return 1;
    case ValueKind::binary:
        return kCounted;
    case ValueKind::text:
    case ValueKind::handle:
        break;
    }
    return kToTheZero;
}

std::uint8_t binarySizeOf(int code)
{
    static const auto kSizes = [] {
        std::array<std::uint8_t, kGreatestCode + 1> sizes {};
        for (int i = 0; i <= kGreatestCode; ++i) {
            sizes[static_cast<std::size_t>(i)] = sizeOfKind(valueKindOf(i));
        }
        return sizes;
    }();
    return kSizes[static_cast<std::size_t>(code)];
}

// One or two bytes, the lowest first.
int unsignedNumber(std::string_view bytes)
{
    int number = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        number = number * 256 + static_cast<unsigned char>(bytes[i - 1]);
    }
    return number;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const auto isSpace = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool isBlank(std::string_view bytes)
{
    constexpr std::string_view kBlanks(" \t\r\n\x1A\0", 6);
    return bytes.find_first_not_of(kBlanks) == std::string_view::npos;
}

// What next() does not expect: a negative code, spaces behind a code, the end of the bytes.
Step TextTags::nextOdd()
{
    if (isBlank({m_begin, static_cast<std::size_t>(m_end - m_begin)})) {
        m_next = m_end;
        return Step::end;
    }
    const char* const lineEnd = std::find(m_begin, m_end, '\n');
    std::string_view line(m_begin, static_cast<std::size_t>(lineEnd - m_begin));
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    line = trimmed(line);
    int code = 0;
    const auto [stop, error] = std::from_chars(line.data(), line.data() + line.size(), code);
    const bool isCode = error == std::errc() && stop == line.data() + line.size()
        && code >= kLeastCode && code <= kGreatestCode;
    if (!isCode) {
        return Step::noCode;
    }
    return lineEnd == m_end ? Step::cutOff : take(code, lineEnd);
}

int TextTags::smallNumber() const
{
    const std::string_view text = trimmed(m_value);
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

bool BinaryTags::takeBytes(std::size_t count)
{
    if (left() < count) {
        return false;
    }
    m_value = {m_next, count};
    m_next += count;
    return true;
}

bool BinaryTags::takeText()
{
    const auto* const end = static_cast<const char*>(std::memchr(m_next, 0, left()));
    if (end == nullptr) {
        return false;
    }
    m_value = {m_next, static_cast<std::size_t>(end - m_next)};
    m_next = end + 1;
    return true;
}

bool BinaryTags::takeCode()
{
    const bool isOneByte = m_codes == Codes::ofOneByte;
    if (!takeBytes(isOneByte ? 1 : 2)) {
        return false;
    }
    if (isOneByte && m_value[0] == kLongCodeMark && !takeBytes(2)) {
        return false;
    }
    m_code = unsignedNumber(m_value);
    return true;
}

bool BinaryTags::takeValue()
{
    const std::size_t size = binarySizeOf(m_code);
    if (size == kToTheZero) {
        return takeText();
    }
    if (size != kCounted) {
        return takeBytes(size);
    }
    return takeBytes(1) && takeBytes(static_cast<unsigned char>(m_value[0]));
}

Step BinaryTags::next()
{
    m_begin = m_next;
    if (m_next == m_end) {
        return Step::end;
    }
    if (!takeCode()) {
        return Step::cutOff;
    }
    if (m_code > kGreatestCode) {
        return Step::noCode;
    }
    return takeValue() ? Step::group : Step::cutOff;
}

BinaryTags::Codes codesOf(std::string_view bytes)
{
    // The first group is the begin of a section or a comment.
    if (bytes.size() < 2) {
        return BinaryTags::Codes::ofTwoBytes;
    }
    const int code = unsignedNumber(bytes.substr(0, 2));
    return code == 0 || code == code::comment ? BinaryTags::Codes::ofTwoBytes
                                              : BinaryTags::Codes::ofOneByte;
}

int BinaryTags::smallNumber() const
{
    return m_value.empty() ? 0 : static_cast<unsigned char>(m_value.front());
}

} // namespace corma::host::dxf
