#include "host/dxf/dxf_text.h"
#include "host/dxf/group_codec.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <optional>

namespace corma::host::dxf {

namespace {

// A text that is a number from its begin to its end.
template<class Number> std::optional<Number> numberFrom(std::string_view text)
{
    text = trimmed(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    Number number {};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::int64_t wholeNumberFrom(std::string_view text)
{
    if (const auto number = numberFrom<std::int64_t>(text)) {
        return *number;
    }
    constexpr double kMost = 9.2e18; // what has no more digits than the type
    const double real = numberFrom<double>(text).value_or(0.0);
    return std::fabs(real) < kMost ? static_cast<std::int64_t>(real) : 0;
}

// Empty for what is no hexadecimal text.
std::string bytesFrom(std::string_view text)
{
    text = trimmed(text);
    std::string bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const auto byte = handleFrom(text.substr(i, 2));
        if (!byte) {
            return {};
        }
        bytes += static_cast<char>(*byte);
    }
    return text.size() % 2 == 0 ? bytes : std::string();
}

GroupValue handleOrText(std::string_view value, const Form& form)
{
    if (const auto handle = handleFrom(trimmed(value))) {
        return *handle;
    }
    return decodeText(value, form.page, form.caret());
}

GroupValue textualValue(const TextTags& tags, const Form& form)
{
    const std::string_view value = tags.value();
    switch (valueKindOf(tags.code())) {
    case ValueKind::real:
        return numberFrom<double>(value).value_or(0.0);
    case ValueKind::int16:
    case ValueKind::int32:
    case ValueKind::int64:
    case ValueKind::boolean:
        return wholeNumberFrom(value);
    case ValueKind::handle:
        return handleOrText(value, form);
    case ValueKind::binary:
        return bytesFrom(value);
    case ValueKind::text:
        break;
    }
    return decodeText(value, form.page, form.caret());
}

// The lowest byte comes first.
std::uint64_t bitsOf(std::string_view bytes)
{
    std::uint64_t bits = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        bits = bits << 8U | static_cast<unsigned char>(bytes[i - 1]);
    }
    return bits;
}

GroupValue binaryValue(const BinaryTags& tags, const Form& form)
{
    const std::string_view value = tags.value();
    switch (valueKindOf(tags.code())) {
    case ValueKind::real:
        return std::bit_cast<double>(bitsOf(value));
    case ValueKind::int16:
        return std::int64_t {static_cast<std::int16_t>(bitsOf(value))};
    case ValueKind::int32:
        return std::int64_t {static_cast<std::int32_t>(bitsOf(value))};
    case ValueKind::int64:
    case ValueKind::boolean:
        return static_cast<std::int64_t>(bitsOf(value));
    case ValueKind::handle:
        return handleOrText(value, form);
    case ValueKind::binary:
        return std::string(value);
    case ValueKind::text:
        break;
    }
    return decodeText(value, form.page, form.caret());
}

template<class Tags, class ValueOf>
void decodeAll(Tags tags, const char* end, const ValueOf& valueOf, Groups& groups)
{
    constexpr std::size_t kFewestBytes = 10; // of usual groups, one with another
    constexpr std::size_t kMostAtOnce = 1024; // large records have large groups
    const auto size = static_cast<std::size_t>(end - tags.end());
    groups.clear();
    groups.reserve(std::min(size / kFewestBytes + 1, kMostAtOnce));
    bool isEndOfFile = false;
    while (!isEndOfFile && tags.next() == Step::group) {
        Group& group = groups.addEmpty(tags.code());
        group.value = valueOf(tags);
        group.raw = {tags.begin(), static_cast<std::size_t>(tags.end() - tags.begin())};
        // Behind the end of the file anything may follow.
        isEndOfFile = groups.size() == 1 && tags.code() == code::type && tags.value() == "EOF";
    }
    if (!groups.empty()) {
        Group& last = groups[groups.size() - 1];
        last.raw = {last.raw.data(), static_cast<std::size_t>(end - last.raw.data())};
    }
}

} // namespace

void decodeGroups(std::string_view record, const Form& form, Groups& groups)
{
    const char* const end = record.data() + record.size();
    if (form.isBinary) {
        decodeAll(
            BinaryTags(record, form.codes), end,
            [&](const BinaryTags& tags) { return binaryValue(tags, form); }, groups);
    } else {
        decodeAll(
            TextTags(record), end, [&](const TextTags& tags) { return textualValue(tags, form); },
            groups);
    }
}

Groups decodeGroups(std::string_view record, const Form& form)
{
    Groups groups;
    decodeGroups(record, form, groups);
    return groups;
}

} // namespace corma::host::dxf
