#pragma once

#include <string_view>

namespace corma::host {

/// Sets a variable on the host's own behalf, also one that acedSetVar() must not touch: what runs
/// in the host, such as a command, shows itself in these. The name must be a known one.
void setVariable(std::wstring_view name, std::wstring_view value);

/// All variables as they are when a host starts.
void resetVariables();

} // namespace corma::host
