#pragma once

#include <string>

namespace corma::testing {

/// The name of a test that is a row of a table: the sentence of the row.
inline constexpr auto sentenceOf = [](const auto& row) { return std::string(row.param.sentence); };

/// The same of rows that have a name instead.
inline constexpr auto nameOfRow = [](const auto& row) { return std::string(row.param.name); };

} // namespace corma::testing
