#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma {

/// The languages of the table, in the order of its columns.
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

/// A row of the table; a column without a text is empty.
struct TextRow
{
    int number = 0;
    std::array<std::wstring, kTextColumns.size()> texts;
};

/// The rows of a table as a spreadsheet writes it (comma separated, UTF-8), in their order. Its
/// first line names the columns: "Row", the headings above, and any others, which are not looked
/// at. Nothing when it is no such table.
std::optional<std::vector<TextRow>> parseTextTable(std::string_view csv);

/// The table that is compiled in: resources/texts.csv.
extern const std::string_view kTextTable;

} // namespace corma
