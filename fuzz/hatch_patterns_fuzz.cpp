#include "host/hatch_patterns.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

using corma::host::HatchLines;
using corma::host::PatternFile;

namespace {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void checkFamily(const HatchLines& family)
{
    for (const double number : {family.angle, family.x, family.y, family.along, family.across}) {
        require(std::abs(number) <= PatternFile::kLargest);
    }
    require(std::abs(family.across) >= PatternFile::kSmallest);
    require(family.dashes.size() <= PatternFile::kMostDashes);
    double length = 0.0;
    for (const double dash : family.dashes) {
        length += std::abs(dash);
    }
    require(family.dashes.empty() || length > 0.0);
}

} // namespace

/// The input is a pattern file in UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const PatternFile file = corma::host::parseHatchPatterns(corma::fromUtf8(bytes));
    const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
    require(file.defects.size() <= PatternFile::kMostDefects);
    for (const auto& defect : file.defects) {
        require(defect.line >= 1 && defect.line <= lines && !defect.expected.empty());
    }
    for (const auto& pattern : file.patterns) {
        require(!pattern.name.empty() && pattern.name.size() <= PatternFile::kLongestName);
        require(!pattern.families.empty());
        std::for_each(pattern.families.begin(), pattern.families.end(), checkFamily);
    }
    return 0;
}
