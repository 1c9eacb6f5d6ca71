#pragma once

#include "host/dwg/TypeTable.h"

#include <optional>
#include <string_view>

namespace corma::host::dwg {

/// The class of a type that every program knows although files have to describe it; nothing for
/// any other. Its number is still to be given.
std::optional<ClassInfo> standardClass(std::string_view type);

} // namespace corma::host::dwg
