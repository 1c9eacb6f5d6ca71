#pragma once

#include <string>
#include <vector>

namespace corma::host {

/// The support folders in their order: the variable "ACAD" at its ";", empty pieces left out.
std::vector<std::wstring> supportFolders();

} // namespace corma::host
