#pragma once

// The text of a value that tells how something is drawn: its layer, colour, linetype and lineweight
// and, behind them, the fields of its kind, with "," between.

#include <string>
#include <string_view>
#include <vector>

namespace corma {

/// The first fields of a text, always so many: missing ones are empty.
std::vector<std::wstring> fieldsOf(std::wstring_view text, std::size_t count);

/// What stands behind the four visual fields, by behindSeparators(): in a text with only them it is
/// the text from its beginning.
std::wstring_view behindVisualFields(std::wstring_view text);

/// The fields with the separator between.
std::wstring joinedFields(const std::vector<std::wstring>& fields);

/// A typed number as it is stored: a comma, which would end its field, becomes a point.
std::wstring withDecimalPoints(std::wstring text);

/// "ByLayer" for 256, "ByBlock" for 0, else the number.
std::wstring colourText(int colour);

/// "ByLayer", "ByBlock" and "Default" for -1, -2 and -3, else hundredths of a millimetre as
/// millimetres with two decimals.
std::wstring lineweightText(int weight);

} // namespace corma
