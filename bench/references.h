#pragma once

#include "platform/text.h"

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace corma::bench {

/// A drawing of bench/make_references.py, as bench/CMakeLists.txt has it made.
struct References
{
    std::size_t count;
    std::size_t blocks;

    [[nodiscard]] std::string path() const
    {
        return "references-" + std::to_string(count) + "-" + std::to_string(blocks) + ".dxf";
    }

    [[nodiscard]] std::string form() const
    {
        return std::to_string(blocks) + (blocks == 1 ? " block" : " blocks");
    }

    [[nodiscard]] std::vector<std::wstring> blockNames() const
    {
        std::vector<std::wstring> names;
        for (std::size_t i = 0; i < blocks; ++i) {
            char name[32];
            std::snprintf(name, sizeof name, "DEUR-%03zu", i);
            names.push_back(fromUtf8(name));
        }
        return names;
    }
};

} // namespace corma::bench
