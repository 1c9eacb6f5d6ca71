#include "controls/grid_cells.h"

#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

namespace corma {

namespace {

constexpr int kColumnsOfTools = 1024;

// The value of a text that is a number from end to end, in no language's form.
std::optional<double> valueOf(std::wstring_view text)
{
    if (text.starts_with(L'+') && !text.starts_with(L"+-")) {
        text.remove_prefix(1);
    }
    const std::string digits = toUtf8(text);
    double value = 0.0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

int decimalsOf(std::wstring_view number)
{
    const std::size_t point = number.find(L'.');
    if (point == std::wstring_view::npos) {
        return 0;
    }
    const std::size_t first = point + 1;
    const std::size_t end = std::min(number.find_first_not_of(L"0123456789", first), number.size());
    return static_cast<int>(end - first);
}

} // namespace

GridPosition moved(const GridPosition& from, CellStep step, const GridSize& size)
{
    GridPosition to = from;
    switch (step) {
    case CellStep::left:
        to.column -= from.column > 0 ? 1 : 0;
        break;
    case CellStep::right:
        to.column += from.column < size.columns - 1 ? 1 : 0;
        break;
    case CellStep::up:
        to.row -= from.row > 0 ? 1 : 0;
        break;
    case CellStep::down:
        to.row += from.row < size.rows - 1 ? 1 : 0;
        break;
    }
    return to;
}

int scrollToColumn(const ColumnSpan& column, int left, int viewWidth)
{
    const int begin = column.before + left;
    const bool isVisible = begin >= 0 && begin + column.width <= viewWidth;
    return isVisible ? 0 : begin;
}

int toolOf(const GridCell& cell)
{
    return cell.row * kColumnsOfTools + cell.column % kColumnsOfTools + 1;
}

GridCell cellOfTool(int tool)
{
    return {(tool - 1) / kColumnsOfTools, (tool - 1) % kColumnsOfTools};
}

std::wstring numberWithin(std::wstring_view text, int maxDecimals)
{
    const int most = std::max(maxDecimals, 0);
    const std::wstring_view number = trimmed(text);
    const auto value = valueOf(number);
    if (!value || *value == 0.0 || decimalsOf(number) <= most) {
        return std::wstring(text);
    }
    const std::wstring format = formatted(L"%%.%ilf", most);
    return formatted(format.c_str(), *value);
}

} // namespace corma
