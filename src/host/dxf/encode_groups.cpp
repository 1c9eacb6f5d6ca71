#include "host/dxf/dxf_text.h"
#include "host/dxf/group_codec.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <functional>

namespace corma::host::dxf {

namespace {

constexpr std::size_t kMostBytes = 127; // of binary data in one group

// --- values as the kind that their code has ------------------------------------------------------

std::int64_t wholeNumber(const Group& group)
{
    constexpr double kMost = 9.2e18;
    const auto* real = std::get_if<double>(&group.value);
    if (real == nullptr) {
        return group.integer();
    }
    return std::fabs(*real) < kMost ? std::llround(*real) : 0;
}

std::string realText(double number)
{
    // Longer ones are easier to read with an exponent.
    constexpr double kLeastPlain = 1e-5;
    constexpr double kLeastWithExponent = 1e16;
    const double size = std::fabs(number);
    const bool isPlain = number == 0.0 || (size >= kLeastPlain && size < kLeastWithExponent);
    std::array<char, 40> buffer {};
    const auto end
        = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                        isPlain ? std::chars_format::fixed : std::chars_format::scientific)
              .ptr;
    std::string text(buffer.data(), end);
    if (std::isfinite(number) && text.find('.') == std::string::npos) {
        text.insert(std::min(text.find('e'), text.size()), ".0");
    }
    return text;
}

std::string hexText(std::string_view bytes)
{
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kHex[byte >> 4U];
        text += kHex[byte & 0xFU];
    }
    return text;
}

std::string asciiText(std::wstring_view text)
{
    return {text.begin(), text.end()};
}

std::string textOf(const Group& group, const Form& form)
{
    if (const auto* handle = std::get_if<Handle>(&group.value)) {
        return asciiText(toText(*handle));
    }
    if (const auto* real = std::get_if<double>(&group.value)) {
        return realText(*real);
    }
    if (const auto* whole = std::get_if<std::int64_t>(&group.value)) {
        return std::to_string(*whole);
    }
    if (const auto* bytes = std::get_if<std::string>(&group.value)) {
        return hexText(*bytes);
    }
    return encodeText(group.text(), form.page, form.caret());
}

// --- text files ----------------------------------------------------------------------------------

void appendAligned(std::string_view text, std::size_t width, const Form& form, std::string& bytes)
{
    if (form.alignsNumbers && text.size() < width) {
        bytes.append(width - text.size(), ' ');
    }
    bytes += text;
}

std::string textualValue(const Group& group, const Form& form)
{
    // A text where a number belongs is what the file had there, or what someone wants there.
    if (std::holds_alternative<std::wstring>(group.value)) {
        return textOf(group, form);
    }
    std::string value;
    switch (valueKindOf(group.code)) {
    case ValueKind::real:
        return realText(group.real());
    case ValueKind::int16:
    case ValueKind::boolean:
        appendAligned(std::to_string(wholeNumber(group)), 6, form, value);
        return value;
    case ValueKind::int32:
        appendAligned(std::to_string(wholeNumber(group)), 9, form, value);
        return value;
    case ValueKind::int64:
        return std::to_string(wholeNumber(group));
    case ValueKind::text:
    case ValueKind::handle:
    case ValueKind::binary:
        break;
    }
    return textOf(group, form);
}

void appendTextual(const Group& group, const Form& form, std::string& bytes)
{
    appendAligned(std::to_string(group.code), 3, form, bytes);
    bytes += form.lineEnd;
    bytes += textualValue(group, form);
    bytes += form.lineEnd;
}

// --- binary files --------------------------------------------------------------------------------

void appendBits(std::uint64_t bits, std::size_t size, std::string& bytes)
{
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(bits >> (8 * i) & 0xFFU);
    }
}

// A number that has no place, neither with a sign nor without, becomes the nearest one.
void appendWhole(std::int64_t number, std::size_t size, std::string& bytes)
{
    const std::int64_t half = std::int64_t {1} << (8 * size - 1);
    appendBits(static_cast<std::uint64_t>(std::clamp(number, -half, 2 * half - 1)), size, bytes);
}

void appendBinaryCode(int code, const Form& form, std::string& bytes)
{
    constexpr int kLongCodeMark = 255;
    const auto bits = static_cast<std::uint64_t>(code);
    if (form.codes == BinaryTags::Codes::ofTwoBytes) {
        appendBits(bits, 2, bytes);
    } else if (code < kLongCodeMark) {
        appendBits(bits, 1, bytes);
    } else {
        appendBits(kLongCodeMark, 1, bytes);
        appendBits(bits, 2, bytes);
    }
}

void appendBinary(const Group& group, const Form& form, std::string& bytes)
{
    appendBinaryCode(group.code, form, bytes);
    switch (valueKindOf(group.code)) {
    case ValueKind::real:
        appendBits(std::bit_cast<std::uint64_t>(group.real()), sizeof(double), bytes);
        return;
    case ValueKind::int16:
        appendWhole(wholeNumber(group), sizeof(std::int16_t), bytes);
        return;
    case ValueKind::int32:
        appendWhole(wholeNumber(group), sizeof(std::int32_t), bytes);
        return;
    case ValueKind::int64:
        appendBits(static_cast<std::uint64_t>(wholeNumber(group)), sizeof(std::int64_t), bytes);
        return;
    case ValueKind::boolean:
        appendWhole(std::max(wholeNumber(group), std::int64_t {0}), 1, bytes);
        return;
    case ValueKind::binary:
        appendBits(group.bytes().size(), 1, bytes);
        bytes += group.bytes();
        return;
    case ValueKind::text:
    case ValueKind::handle:
        break;
    }
    bytes += textOf(group, form);
    bytes += '\0';
}

// --- both ----------------------------------------------------------------------------------------

void appendNew(const Group& group, const Form& form, std::string& bytes)
{
    const auto append = form.isBinary ? appendBinary : appendTextual;
    const bool isBinary = valueKindOf(group.code) == ValueKind::binary;
    if (!isBinary || group.bytes().size() <= kMostBytes) {
        append(group, form, bytes);
        return;
    }
    for (std::string_view left = group.bytes(); !left.empty();) {
        const std::string_view piece = left.substr(0, kMostBytes);
        append(Group(group.code, GroupValue(std::string(piece))), form, bytes);
        left.remove_prefix(piece.size());
    }
}

bool liesIn(std::string_view piece, std::string_view whole)
{
    constexpr std::less_equal<> kUpTo;
    return !piece.empty() && kUpTo(whole.data(), piece.data())
        && kUpTo(piece.data() + piece.size(), whole.data() + whole.size());
}

} // namespace

void encodeGroups(const Groups& groups, const Form& form, std::string_view file, std::string& bytes)
{
    for (const Group& group : groups) {
        if (!form.isBinary && !bytes.empty() && bytes.back() != '\n') {
            bytes += form.lineEnd; // the last line of the file has none
        }
        if (liesIn(group.raw, file)) {
            bytes += group.raw;
        } else {
            appendNew(group, form, bytes);
        }
    }
}

} // namespace corma::host::dxf
