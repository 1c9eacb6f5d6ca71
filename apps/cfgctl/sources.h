#pragma once

// Where values come from, in both forms.

#include "output.h"
#include <corma/lookup_trace.h>

#include <vector>

namespace cfgctl {

Json sourcesAsJson(const std::vector<corma::SourceAsked>& sources);
std::string sourcesAsLines(const std::vector<corma::SourceAsked>& sources);

Json levelsAsJson(const std::vector<corma::LevelValue>& levels);
std::string levelsAsLines(const std::vector<corma::LevelValue>& levels);

Json treeAsJson(const corma::IncludedFile& tree);
std::string treeAsLines(const corma::IncludedFile& tree);

} // namespace cfgctl
