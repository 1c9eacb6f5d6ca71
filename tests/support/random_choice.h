#pragma once

#include <cstddef>
#include <random>
#include <vector>

namespace corma::testing {

using Random = std::mt19937; // gives the same numbers everywhere

/// A number from zero up to a bound, without the bound itself.
inline std::size_t below(Random& random, std::size_t bound)
{
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

/// One of some, of which there is at least one.
template<class Value> const Value& oneOf(Random& random, const std::vector<Value>& choices)
{
    return choices[below(random, choices.size())];
}

} // namespace corma::testing
