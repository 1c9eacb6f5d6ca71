#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corma {

/// The text with the values of environment variables in the place of %NAME%. Unknown names stay as
/// they are written. Nothing when the result is longer than `longest` characters.
std::optional<std::wstring> expandEnvironment(std::wstring_view text, std::size_t longest);

} // namespace corma
