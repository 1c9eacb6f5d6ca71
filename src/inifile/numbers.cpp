#include "inifile/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace corma {

namespace {

// The number that a text begins with, sign apart, as far as its characters can be part of one.
struct Numeral
{
    bool isNegative = false;
    std::string digits;
};

Numeral numeralOf(std::wstring_view text, std::wstring_view allowed)
{
    text.remove_prefix(std::min(text.find_first_not_of(L" \t\n\v\f\r"), text.size()));
    Numeral numeral;
    if (!text.empty() && (text.front() == L'-' || text.front() == L'+')) {
        numeral.isNegative = text.front() == L'-';
        text.remove_prefix(1);
    }
    const std::size_t end = std::min(text.find_first_not_of(allowed), text.size());
    for (const wchar_t c : text.substr(0, end)) {
        numeral.digits.push_back(static_cast<char>(c));
    }
    return numeral;
}

// A number that does not fit is either too large or too small; its exponent or, without one, its
// length tells which.
bool isTooLarge(std::string_view digits)
{
    const std::size_t exponent = digits.find_first_of("eE");
    if (exponent == std::string_view::npos) {
        return digits.find_first_not_of("0.") < digits.find('.');
    }
    return digits.substr(exponent + 1).find('-') == std::string_view::npos;
}

template<class Text> int intIn(Text text)
{
    const auto isSpace = [](auto c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    const bool isNegative = !text.empty() && text.front() == '-';
    if (isNegative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    constexpr long long kLargest = std::numeric_limits<int>::max();
    long long value = 0;
    for (; !text.empty() && text.front() >= '0' && text.front() <= '9'; text.remove_prefix(1)) {
        value = std::min(value * 10 + (text.front() - '0'), kLargest + 1);
    }
    return static_cast<int>(isNegative ? -value : std::min(value, kLargest));
}

} // namespace

int toInt(std::wstring_view text)
{
    return intIn(text);
}

int toInt(std::string_view text)
{
    return intIn(text);
}

double toDouble(std::wstring_view text)
{
    const Numeral numeral = numeralOf(text, L"0123456789.eE+-");
    const std::string& digits = numeral.digits;
    // A second sign belongs to no number, and words such as "e" are none.
    if (digits.empty() || std::string_view("+-eE").find(digits.front()) != std::string_view::npos) {
        return 0.0;
    }
    double value = 0.0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        value = isTooLarge({digits.data(), result.ptr}) ? HUGE_VAL : 0.0;
    }
    return numeral.isNegative ? -value : value;
}

} // namespace corma
