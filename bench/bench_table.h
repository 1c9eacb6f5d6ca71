#pragma once

// The table that ends a measurement.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corma::bench {

/// One measured number beside what the machine needs at least for it, and beside our aim.
struct Row
{
    std::string what;
    std::string form; // "plain" or "scrambled"
    std::size_t entries = 0;
    double measured = 0;
    std::optional<double> floor;
    std::optional<double> aim; // the most that it may be
};

/// Prints the rows with ratio (measured to floor) and verdict, all numbers in the given unit, and
/// how many aims hold.
void printTable(const std::vector<Row>& rows, const std::string& unit);

} // namespace corma::bench
