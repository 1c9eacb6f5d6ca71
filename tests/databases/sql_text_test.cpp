#include "data/odbc/pieces.h"
#include "data/odbc/sql_text.h"
#include "databases/reading.h"

#include <gtest/gtest.h>

namespace corma::odbc {

namespace {

using corma::testing::kSmile;

TEST(SqlText, GoesToUnitsAndBack)
{
    const Units units = toUnits(std::wstring(L"\u00E9") + kSmile);
    EXPECT_EQ(units, (Units {0xE9, 0xD83D, 0xDE00, 0}));
    EXPECT_EQ(toText(untilTerminator(units)), std::wstring(L"\u00E9") + kSmile);
    EXPECT_EQ(toUnits(L""), Units {0});
    EXPECT_EQ(toText(untilTerminator({})), L"");
}

TEST(SqlText, EndsAtItsTerminatorIfItHasOne)
{
    EXPECT_EQ(toText(untilTerminator(Units {'a', 0, 'b'})), L"a");
    EXPECT_EQ(toText(untilTerminator(Units {'a', 'b'})), L"ab");
}

TEST(SqlText, IsCutBetweenCharacters)
{
    const auto sizeLeft = [](const Units& units) { return withoutPart(std::span(units)).size(); };
    EXPECT_EQ(sizeLeft({}), 0U);
    EXPECT_EQ(sizeLeft({'a', 'b'}), 2U);
    EXPECT_EQ(sizeLeft({'a', 0xD83D}), 1U);
    EXPECT_EQ(sizeLeft({'a', 0xD83D, 0xDE00}), 3U);
    EXPECT_EQ(sizeLeft({0xD83D, 'a'}), 2U);
}

TEST(SqlText, OfBytesIsCutBetweenCharacters)
{
    const auto left = [](std::string_view bytes) {
        const auto whole = withoutPart(std::span(bytes));
        return std::string(whole.begin(), whole.end());
    };
    for (const std::string_view character : {"\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        const std::string whole = "a" + std::string(character);
        EXPECT_EQ(left(whole), whole);
        for (std::size_t size = 1; size < whole.size(); ++size) {
            EXPECT_EQ(left(whole.substr(0, size)), "a") << whole << ' ' << size;
        }
    }
    EXPECT_EQ(left(""), "");
    EXPECT_EQ(left("\x80\x80\x80\x80"), "\x80\x80\x80\x80");
}

std::wstring ofBytes(std::string_view bytes)
{
    return toText(std::span(bytes));
}

TEST(SqlText, OfBytesIsUtf8OrElseWindowsText)
{
    EXPECT_EQ(ofBytes(""), L"");
    EXPECT_EQ(ofBytes("t\xC3\xBCr \xF0\x9F\x98\x80"), std::wstring(L"t\u00FCr ") + kSmile);
    EXPECT_EQ(ofBytes("\x80 t\xFC"), L"\u20AC t\u00FC");
}

struct PieceRow
{
    const char* sentence;
    Units buffer; // with the place of the terminator
    SQLLEN length; // that the driver tells
    std::size_t count;
    bool isLast;
};

class Pieces : public ::testing::TestWithParam<PieceRow>
{
};

TEST_P(Pieces, AreCounted)
{
    const Piece piece = pieceIn(std::span<const SQLWCHAR>(GetParam().buffer), GetParam().length);
    EXPECT_EQ(piece.count, GetParam().count);
    EXPECT_EQ(piece.isLast, GetParam().isLast);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(SqlText, Pieces, ::testing::Values(
    PieceRow {"OfAnEmptyText",               {0, 0, 0, 0},       0,           0, true},
    PieceRow {"ThatHaveRoomLeft",            {'a', 'b', 0, 0},   4,           2, true},
    PieceRow {"ThatJustFit",                 {'a', 'b', 'c', 0}, 6,           3, true},
    PieceRow {"ThatDoNotFit",                {'a', 'b', 'c', 0}, 8,           3, false},
    PieceRow {"ThatKeepACharacterWhole",     {'a', 'b', 0, 0},   8,           2, false},
    PieceRow {"WithAZeroInside",             {'a', 0, 'c', 0},   6,           3, true},
    PieceRow {"OfNothing",                   {0, 0, 0, 0},       8,           0, true},
    PieceRow {"OfUnknownRest",               {'a', 'b', 'c', 0}, SQL_NO_TOTAL, 3, false},
    PieceRow {"OfUnknownRestWithRoomLeft",   {'a', 0, 0, 0},     SQL_NO_TOTAL, 1, true}),
    [](const auto& row) { return row.param.sentence; });
// clang-format on

} // namespace

} // namespace corma::odbc
