#include "fuzz_support.h"
#include "platform/text.h"
#include "settings/text_table.h"

#include <cstdint>

namespace {

using namespace corma;

// A cell as a spreadsheet writes it: with line ends of two characters.
std::string cell(const std::wstring& text)
{
    std::string quoted = "\"";
    for (const char c : toUtf8(text)) {
        quoted += c == '"' ? "\"\"" : c == '\n' ? "\r\n" : std::string(1, c);
    }
    return quoted + "\"";
}

std::string tableOf(const std::vector<TextRow>& rows)
{
    std::string csv = "Row";
    for (const TextColumn& column : kTextColumns) {
        csv += "," + std::string(column.heading);
    }
    for (const TextRow& row : rows) {
        csv += "\r\n" + std::to_string(row.number);
        for (const std::wstring& text : row.texts) {
            csv += "," + cell(text);
        }
    }
    return csv + "\r\n";
}

} // namespace

/// The input is a text table. What was read of one is read again when it is written as one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto rows = parseTextTable({reinterpret_cast<const char*>(data), size});
    if (!rows) {
        return 0;
    }
    const auto again = parseTextTable(tableOf(*rows));
    fuzzing::require(again.has_value() && again->size() == rows->size());
    for (std::size_t i = 0; i < rows->size(); ++i) {
        fuzzing::require((*again)[i].number == (*rows)[i].number);
        fuzzing::require((*again)[i].texts == (*rows)[i].texts);
    }
    return 0;
}
