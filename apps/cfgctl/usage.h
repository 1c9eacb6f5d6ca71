#pragma once

// What the programs share for wrong usage.

#include <charconv>
#include <limits>
#include <stdexcept>
#include <string>

namespace cfgctl {

/// Wrong usage, or an input that cannot be used at all. The text says what is wrong and what to do.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The whole number that an option of that name was given as. Throws UsageError.
template<class Number> Number numberIn(const std::string& text, const std::string& name)
{
    Number number = 0;
    const bool hasPlus = text.starts_with('+') && !text.starts_with("+-");
    const char* const begin = text.data() + (hasPlus ? 1 : 0);
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(begin, end, number);
    if (error == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<Number>;
        throw UsageError(name + " is out of range: \"" + text + "\"; pass a whole number from "
                         + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max()));
    }
    if (error != std::errc() || behind != end) {
        throw UsageError(name + " is no whole number that can be used: \"" + text
                         + "\"; pass one such as 7");
    }
    return number;
}

} // namespace cfgctl
