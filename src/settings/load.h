#pragma once

// What the loads of the model have in common.

#include <string>
#include <string_view>

namespace corma {

/// The value of a key that stands before `rest` in a line: up to a blank or the end.
std::string_view keyValue(std::string_view rest);

/// The path of a picture as a file names it: a name without a folder is in the given one. It is
/// made in the buffer where it is another text than the name.
std::string_view picturePath(std::string_view folder, std::string_view name, std::string& buffer);

/// Tells the user that a file could not be opened, and why.
void tellCannotOpen(const std::wstring& path);

} // namespace corma
