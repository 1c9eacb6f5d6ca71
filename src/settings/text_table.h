#pragma once

// The table of all texts of the editor: what resources/texts.csv holds, and the reading of it.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma {

/// A language of the table.
struct TextColumn
{
    int language; // primary language number
    std::string_view heading;
};

inline constexpr std::array<TextColumn, 7> kTextColumns = {{
    {7, "German"},
    {9, "English"},
    {10, "Spanish"},
    {12, "French"},
    {19, "Dutch"},
    {21, "Polish"},
    {25, "Russian"},
}};

/// A row of the table. Its texts stand in the order of kTextColumns; one that is not translated is
/// empty.
struct TextRow
{
    int number = 0;
    std::array<std::wstring, kTextColumns.size()> texts;
};

/// The rows of a table as a spreadsheet writes it: UTF-8, separated by commas, texts in double
/// quotes where they need them. The first line has the headings "Row" and those of kTextColumns, in
/// any order, and others that are not looked at. A line end within a text becomes a line feed.
///
/// Nothing when it is no such table: a heading is missing, a line has more or fewer cells than the
/// first, a row has no number or that of another row, a quote is out of place, or the bytes are no
/// UTF-8.
std::optional<std::vector<TextRow>> parseTextTable(std::string_view csv);

/// The table that is compiled in: resources/texts.csv.
extern const std::string_view kTextTable;

} // namespace corma
