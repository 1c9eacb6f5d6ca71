#pragma once

// What a grid list works out without a widget: the way of the current cell, the numbers of tool
// tips, the form of numbers.

#include <string>
#include <string_view>

namespace corma {

struct GridSize
{
    int rows = 0;
    int columns = 0;
};

/// Where the keys are: the display position of the current column and the row of the selection
/// mark; -1 for none.
struct GridPosition
{
    int column = -1;
    int row = -1;

    bool operator==(const GridPosition&) const = default;
};

enum class CellStep
{
    left,
    right,
    up,
    down
};

/// A step of the current cell, which the edges stop.
GridPosition moved(const GridPosition& from, CellStep step, const GridSize& size);

/// A column as it is displayed: all in pixels.
struct ColumnSpan
{
    int before = 0; // the widths of the columns before it
    int width = 0;
};

/// By how much a list must scroll so that a column is wholly visible: not at all when it is, else
/// so that it begins at the left edge. `left` is where the first column begins, 0 or below, in a
/// view of that width.
int scrollToColumn(const ColumnSpan& column, int left, int viewWidth);

struct GridCell
{
    int row = 0;
    int column = 0;

    bool operator==(const GridCell&) const = default;
};

/// The number of the tool tip of a cell, which has place for 1024 columns.
int toolOf(const GridCell& cell);
GridCell cellOfTool(int tool);

/// A number with no more decimals than that, and any other text as it stands. A number has digits,
/// one point for the decimals, and may have a sign, an exponent, and blanks around; zero stays as
/// it stands. A count below 0 is 0.
std::wstring numberWithin(std::wstring_view text, int maxDecimals);

} // namespace corma
