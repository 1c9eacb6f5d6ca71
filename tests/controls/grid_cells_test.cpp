#include "controls/grid_cells.h"

#include <gtest/gtest.h>
#include <limits>
#include <ostream>

namespace corma {

void PrintTo(const GridPosition& position, std::ostream* out) // NOLINT: named by GoogleTest
{
    *out << "column " << position.column << ", row " << position.row;
}

namespace {

struct Move
{
    const char* name;
    GridPosition from;
    CellStep step;
    GridPosition to;
};

constexpr GridSize kThreeByFour {3, 4}; // rows, columns

// clang-format off
constexpr Move kMoves[] = {
    {"LeftGoesToThePreviousColumn",       {2, 1},  CellStep::left,  {1, 1}},
    {"LeftStaysAtTheFirstColumn",         {0, 1},  CellStep::left,  {0, 1}},
    {"LeftWithoutAColumnMakesNone",       {-1, 1}, CellStep::left,  {-1, 1}},
    {"RightGoesToTheNextColumn",          {2, 1},  CellStep::right, {3, 1}},
    {"RightStaysAtTheLastColumn",         {3, 1},  CellStep::right, {3, 1}},
    {"RightStaysBehindTheLastColumn",     {7, 1},  CellStep::right, {7, 1}},
    {"RightWithoutAColumnGoesToTheFirst", {-1, 1}, CellStep::right, {0, 1}},
    {"UpGoesToThePreviousRow",            {2, 1},  CellStep::up,    {2, 0}},
    {"UpStaysAtTheFirstRow",              {2, 0},  CellStep::up,    {2, 0}},
    {"UpWithoutARowMakesNone",            {2, -1}, CellStep::up,    {2, -1}},
    {"DownGoesToTheNextRow",              {2, 1},  CellStep::down,  {2, 2}},
    {"DownStaysAtTheLastRow",             {2, 2},  CellStep::down,  {2, 2}},
    {"DownWithoutARowGoesToTheFirst",     {2, -1}, CellStep::down,  {2, 0}},
};

// clang-format on

class CellMoves : public ::testing::TestWithParam<Move>
{
};

TEST_P(CellMoves, Go)
{
    const Move& move = GetParam();
    EXPECT_EQ(moved(move.from, move.step, kThreeByFour), move.to);
}

INSTANTIATE_TEST_SUITE_P(Grid, CellMoves, ::testing::ValuesIn(kMoves),
                         [](const auto& row) { return row.param.name; });

TEST(CellMovesInAnEmptyGrid, GoNowhere)
{
    for (const auto step : {CellStep::left, CellStep::right, CellStep::up, CellStep::down}) {
        EXPECT_EQ(moved({-1, -1}, step, {0, 0}), (GridPosition {-1, -1}));
    }
}

struct Scroll
{
    const char* name;
    ColumnSpan column;
    int left;
    int amount;
};

// clang-format off
constexpr Scroll kScrolls[] = {
    {"AVisibleColumnStays",                    {50, 100},  0,    0},
    {"AColumnThatEndsAtTheRightEdgeStays",     {100, 100}, 0,    0},
    {"AColumnOneBeyondTheRightEdgeComesLeft",  {101, 100}, 0,    101},
    {"AColumnThatBeginsAtTheLeftEdgeStays",    {30, 100},  -30,  0},
    {"AColumnOneBeforeTheLeftEdgeComesBack",   {30, 100},  -31,  -1},
    {"ScrollingCountsWhatIsScrolledAlready",   {300, 100}, -180, 120},
    {"AColumnWiderThanTheViewBeginsAtTheLeft", {10, 300},  0,    10},
    {"AColumnOutOfSightAtTheLeftComesBack",    {0, 100},   -500, -500},
};

// clang-format on

class Scrolls : public ::testing::TestWithParam<Scroll>
{
};

TEST_P(Scrolls, ByAnAmount)
{
    const Scroll& scroll = GetParam();
    EXPECT_EQ(scrollToColumn(scroll.column, scroll.left, 200), scroll.amount);
}

INSTANTIATE_TEST_SUITE_P(Grid, Scrolls, ::testing::ValuesIn(kScrolls),
                         [](const auto& row) { return row.param.name; });

TEST(ToolNumbers, AreMadeOfRowAndColumn)
{
    EXPECT_EQ(toolOf({0, 0}), 1);
    EXPECT_EQ(toolOf({3, 2}), 3075);
    EXPECT_EQ(toolOf({0, 1023}), 1024);
    EXPECT_EQ(toolOf({1, 0}), 1025);
}

TEST(ToolNumbers, HaveNoPlaceForMoreThan1024Columns)
{
    EXPECT_EQ(toolOf({2, 1024}), toolOf({2, 0}));
    EXPECT_EQ(toolOf({2, 1025}), toolOf({2, 1}));
}

TEST(ToolNumbers, TellTheirCell)
{
    for (const GridCell cell : {GridCell {0, 0}, {3, 2}, {0, 1023}, {1, 0}, {12345, 1023}}) {
        EXPECT_EQ(cellOfTool(toolOf(cell)), cell);
    }
}

struct Number
{
    const char* name;
    const wchar_t* text;
    int maxDecimals;
    const wchar_t* shown;
};

// clang-format off
constexpr Number kNumbers[] = {
    {"ShortFractionsStay",             L"12.50",         32, L"12.50"},
    {"AFractionAtTheLimitStays",       L"12.50",         2,  L"12.50"},
    {"AFractionAboveTheLimitIsCut",    L"12.501",        2,  L"12.50"},
    {"TheLastDecimalIsRounded",        L"12.509",        2,  L"12.51"},
    {"NoDecimalsAtAll",                L"12.6",          0,  L"13"},
    {"ALimitBelowZeroIsZero",          L"12.6",          -1, L"13"},
    {"WithoutAPointItStays",           L"1234567",       2,  L"1234567"},
    {"ZeroStays",                      L"0.000",         2,  L"0.000"},
    {"MinusZeroStays",                 L"-0.000",        2,  L"-0.000"},
    {"AlmostZeroIsCut",                L"0.0001",        2,  L"0.00"},
    {"ASignMayLead",                   L"-1.239",        2,  L"-1.24"},
    {"AlsoAPlus",                      L"+1.239",        2,  L"1.24"},
    {"TwoSignsAreNoNumber",            L"+-1.239",       2,  L"+-1.239"},
    {"NothingBeforeThePoint",          L".12345",        2,  L"0.12"},
    {"NothingBehindThePoint",          L"12.",           0,  L"12."},
    {"BlanksAroundANumberGo",          L" 1.239 ",       2,  L"1.24"},
    {"BlanksStayWithANumberThatStays", L" 1.2 ",         2,  L" 1.2 "},
    {"AnExponentIsWrittenOut",         L"1.23456e3",     2,  L"1234.56"},
    {"AVersionIsNoNumber",             L"1.2345.6",      2,  L"1.2345.6"},
    {"AUnitMakesItNoNumber",           L"1.2345 mm",     2,  L"1.2345 mm"},
    {"ACommaIsNoPoint",                L"1,2345",        2,  L"1,2345"},
    {"AWordStays",                     L"doors",         2,  L"doors"},
    {"APointAloneStays",               L".",             0,  L"."},
    {"AnEmptyTextStays",               L"",              2,  L""},
    {"NotANumberStays",                L"nan.123",       2,  L"nan.123"},
    {"ANumberBeyondAllBoundsStays",    L"1.2345e999",    2,  L"1.2345e999"},
    {"OtherDigitsAreNoNumber",         L"\u0661.\u0662\u0663\u0664", 2, L"\u0661.\u0662\u0663\u0664"},
};

// clang-format on

class Numbers : public ::testing::TestWithParam<Number>
{
};

TEST_P(Numbers, HaveTheirForm)
{
    const Number& number = GetParam();
    EXPECT_EQ(numberWithin(number.text, number.maxDecimals), number.shown);
}

INSTANTIATE_TEST_SUITE_P(Grid, Numbers, ::testing::ValuesIn(kNumbers),
                         [](const auto& row) { return row.param.name; });

} // namespace

} // namespace corma
