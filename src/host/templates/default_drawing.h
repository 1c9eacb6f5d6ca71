#pragma once

// The drawings that the host makes new ones from.

#include <string_view>

namespace corma::host {

/// An empty metric drawing as text DXF of R2018 (AC1032): the tables, the model with one layout,
/// the dictionaries that every drawing has. It holds nothing that R2000 does not know, so it is
/// good for every version from AC1015 on once the one "AC1032" in it is replaced. Lines end with a
/// line feed.
std::string_view defaultDrawing();

/// The same as R12 (AC1009), with handles. There are no layouts and no dictionaries in it.
std::string_view r12Drawing();

} // namespace corma::host
