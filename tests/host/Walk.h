#pragma once

namespace corma::testing {

// How a test goes over the entities of a block or over the entries of a table.

enum class Direction
{
    forward,
    backward
};

enum class Erased
{
    skipped,
    met
};

} // namespace corma::testing
