#pragma once

#include "host/dwg/R2007File.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corma::testing {

/// An R2007 file as far as it is read, with everything in it that may be any bytes.
struct MadeR2007File
{
    /// A page of a section; what its row in the section map says of it is up to the map.
    struct Page
    {
        std::string stored; // with the rows mixed, where the section has them
        std::uint64_t id = 0;
    };

    std::vector<Page> pages;
    std::string sectionMap;

    [[nodiscard]] std::string bytes() const;
};

/// A stream of literal bytes; what comes out of it has zeros behind up to a multiple of 64.
std::string literalStream(std::string bytes);

/// Puts the bytes into rows of `rowSize`, with parity of zeros, and mixes the rows.
std::string mixedRows(std::string bytes, std::size_t rowSize);

/// The entry of a section in the section map.
std::string r2007MapEntry(const host::dwg::R2007Section& section);

} // namespace corma::testing
