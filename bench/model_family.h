#pragma once

// Families of files to load models from: a configuration file with definitions and descriptions
// of all its settings. They look like real ones and are the same at each run.

#include "settings/FileNameSet.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corma::bench {

struct ModelFamily
{
    FileNameSet names;
    std::size_t bytes = 0; // of all three
    std::size_t settings = 0;
    std::size_t categories = 0;

    /// The name of the form in tables, such as "10 categ.".
    [[nodiscard]] std::string form() const { return std::to_string(categories) + " categ."; }
};

/// The names of the family in a folder, and the paths of its three files.
FileNameSet namesIn(const std::string& folder);
std::vector<std::string> pathsIn(const std::string& folder);

/// Writes a family into a folder that exists. The settings are spread evenly over the categories.
ModelFamily makeFamily(const std::string& folder, std::size_t settings, std::size_t categories);

} // namespace corma::bench
