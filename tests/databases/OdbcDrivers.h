#pragma once

#include <string>
#include <string_view>

namespace corma::testing {

/// Why a driver cannot be used here, with the package that has it; empty when it is installed.
std::string missingDriver(std::wstring_view driver, std::string_view package);

} // namespace corma::testing
