#pragma once

// Text as ODBC's wide functions take and give it: UTF-16.

#include "data/odbc/handles.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corma::odbc {

using Units = std::vector<SQLWCHAR>;

/// The units of a text, with a terminator.
Units toUnits(std::wstring_view text);

/// The text of units. Half of a pair stays as it is.
std::wstring toText(std::span<const SQLWCHAR> units);

/// Units up to the terminator, or all where there is none.
std::span<const SQLWCHAR> untilTerminator(std::span<const SQLWCHAR> units);

/// The text of narrow text: UTF-8, or Windows text where it is none.
std::wstring toText(std::span<const char> bytes);

/// A text that was cut at its end, without the part of a character there.
std::span<const SQLWCHAR> withoutPart(std::span<const SQLWCHAR> units);
std::span<const char> withoutPart(std::span<const char> bytes);

} // namespace corma::odbc
