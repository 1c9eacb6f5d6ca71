#pragma once

#include <string>

namespace corma::testing {

/// Compares two DXF files record by record, byte for byte: a line such as "- XRECORD" for one that
/// is in the first only, "+ XRECORD" for one that is in the second only, in the order of the files,
/// first file first. The header counts as equal when nothing but $HANDSEED differs in it. Another
/// line when the records that both have stand in another order, and when a file is no drawing.
std::string drawingChanges(const std::string& before, const std::string& after);

} // namespace corma::testing
