#include "controls/grid_style.h"

#include <gtest/gtest.h>
#include <memory>

namespace corma {

namespace {

const CellColors kOfList {Qt::black, Qt::white};
constexpr unsigned kText = ItemStruct::kHasTextColor;
constexpr unsigned kBack = ItemStruct::kHasBackColor;
constexpr unsigned kStopFont = ItemStruct::kStopFont;
constexpr unsigned kStopAll = ItemStruct::kStopAll;

QFont fontOfList()
{
    QFont font(QStringLiteral("Sans"));
    font.setPointSize(11);
    return font;
}

ItemStruct record(unsigned flags, const QColor& text = Qt::black, const QColor& back = Qt::black)
{
    ItemStruct made;
    made.setFlags(flags);
    made.textColor = text;
    made.backColor = back;
    return made;
}

TEST(ANewStyle, IsEmpty)
{
    const ItemStruct style;
    EXPECT_EQ(style.styleFlags, 0U);
    EXPECT_FALSE(style.hasFontStyle);
    EXPECT_EQ(style.textColor, QColor(Qt::black));
    EXPECT_EQ(style.backColor, QColor(Qt::black));
    EXPECT_EQ(style.image, 0);
    EXPECT_TRUE(style.cells.empty());
    EXPECT_EQ(style.rowStyle, nullptr);
    EXPECT_EQ(style.selectedStyle, nullptr);
    EXPECT_FALSE(style.font);
    EXPECT_FALSE(style.compositeFont);
    EXPECT_FALSE(style.fontOwned);
    EXPECT_TRUE(style.tipText.isEmpty());
}

TEST(StyleFlags, HaveTheirNumbers)
{
    EXPECT_EQ(ItemStruct::kBold, 1U);
    EXPECT_EQ(ItemStruct::kItalic, 2U);
    EXPECT_EQ(ItemStruct::kUnderline, 4U);
    EXPECT_EQ(ItemStruct::kStrikeOut, 8U);
    EXPECT_EQ(kText, 16U);
    EXPECT_EQ(kBack, 32U);
    EXPECT_EQ(kStopFont, 64U);
    EXPECT_EQ(kStopAll, 128U);
}

TEST(StyleFlags, TellWhetherThereIsAFontStyle)
{
    for (const unsigned flag : {1U, 2U, 4U, 8U}) {
        EXPECT_TRUE(record(flag).hasFontStyle) << flag;
    }
    for (const unsigned flag : {0U, 16U, 32U, 64U, 128U}) {
        EXPECT_FALSE(record(flag).hasFontStyle) << flag;
    }
}

TEST(StyleFlags, DropTheFontsThatWereMade)
{
    ItemStruct cell = record(ItemStruct::kBold);
    ItemStruct row = record(ItemStruct::kItalic);
    ASSERT_TRUE(fontOf({&cell, &row, nullptr}, RowState::plain, fontOfList())->bold());
    EXPECT_TRUE(cell.fontOwned);
    cell.setFlags(ItemStruct::kUnderline);
    EXPECT_FALSE(cell.font);
    EXPECT_FALSE(cell.compositeFont);
    EXPECT_FALSE(cell.fontOwned);
    const QFont font = *fontOf({&cell, &row, nullptr}, RowState::plain, fontOfList());
    EXPECT_FALSE(font.bold());
    EXPECT_TRUE(font.underline());
}

TEST(StyleFlags, KeepAFontThatTheHostGave)
{
    ItemStruct cell;
    cell.font = QFont(QStringLiteral("Serif"));
    cell.setFlags(ItemStruct::kBold);
    EXPECT_EQ(*fontOf({&cell, nullptr, nullptr}, RowState::plain, fontOfList()), *cell.font);
    EXPECT_FALSE(cell.font->bold());
}

TEST(TheSelectedStyle, IsMadeOnFirstUse)
{
    ItemStruct cell;
    ItemStruct& style = cell.whileSelected();
    EXPECT_EQ(cell.selectedStyle.get(), &style);
    EXPECT_EQ(&cell.whileSelected(), &style);
}

// --- colours -------------------------------------------------------------------------------------

struct Colors
{
    const char* name;
    unsigned cell; // red on yellow
    unsigned row; // blue on green
    QColor text;
    QColor back;
};

const Colors kColors[] = {
    {"OfTheListWithoutAStyle", 0, 0, Qt::black, Qt::white},
    {"OfTheCell", kText | kBack, 0, Qt::red, Qt::yellow},
    {"OfTheRow", 0, kText | kBack, Qt::blue, Qt::green},
    {"OfTheCellBeforeThoseOfTheRow", kText | kBack, kText | kBack, Qt::red, Qt::yellow},
    {"OfBothOneEach", kText, kBack, Qt::red, Qt::green},
    {"TheOtherWayRound", kBack, kText, Qt::blue, Qt::yellow},
    {"NoneOfTheRowWhenTheCellStopsAll", kStopAll, kText | kBack, Qt::black, Qt::white},
    {"ACellThatStopsAllHasItsOwn", kStopAll | kText, kText | kBack, Qt::red, Qt::white},
    {"AStopOfFontsStopsNoColours", kStopFont, kText | kBack, Qt::blue, Qt::green},
    {"AStopOfTheRowStopsNoColours", kText, kStopAll | kStopFont | kBack, Qt::red, Qt::green},
};

class CellColorsOf : public ::testing::TestWithParam<Colors>
{
protected:
    ItemStruct cell = record(GetParam().cell, Qt::red, Qt::yellow);
    ItemStruct row = record(GetParam().row, Qt::blue, Qt::green);
};

TEST_P(CellColorsOf, APlainRow)
{
    const CellColors colors = colorsOf({&cell, &row, nullptr}, RowState::plain, kOfList);
    EXPECT_EQ(colors.text, GetParam().text);
    EXPECT_EQ(colors.back, GetParam().back);
    EXPECT_EQ(colors.isTextGiven, GetParam().text != Qt::black);
    EXPECT_EQ(colors.isBackGiven, GetParam().back != Qt::white);
}

TEST_P(CellColorsOf, ASelectedRow)
{
    ItemStruct plainCell;
    ItemStruct plainRow;
    plainCell.selectedStyle = std::make_unique<ItemStruct>(std::move(cell));
    plainRow.selectedStyle = std::make_unique<ItemStruct>(std::move(row));
    const CellColors colors
        = colorsOf({&plainCell, &plainRow, nullptr}, RowState::selected, kOfList);
    EXPECT_EQ(colors.text, GetParam().text);
    EXPECT_EQ(colors.back, GetParam().back);
}

INSTANTIATE_TEST_SUITE_P(Grid, CellColorsOf, ::testing::ValuesIn(kColors),
                         [](const auto& row) { return row.param.name; });

TEST(TheColorsOfASelectedRow, AreNotThoseOfThePlainStyles)
{
    ItemStruct cell = record(kText | kBack, Qt::red, Qt::yellow);
    ItemStruct row = record(kText | kBack, Qt::blue, Qt::green);
    const CellColors colors = colorsOf({&cell, &row, nullptr}, RowState::selected, kOfList);
    EXPECT_EQ(colors.text, kOfList.text);
    EXPECT_EQ(colors.back, kOfList.back);
}

TEST(TheColorsOfAPlainRow, AreNotThoseOfTheSelectedStyles)
{
    ItemStruct cell;
    cell.whileSelected() = record(kText, Qt::red);
    EXPECT_EQ(colorsOf({&cell, nullptr, nullptr}, RowState::plain, kOfList).text, kOfList.text);
}

TEST(TheColorsOfACell, AreNeverThoseOfItsColumn)
{
    ItemStruct cell;
    ItemStruct column = record(kText | kBack, Qt::red, Qt::yellow);
    column.whileSelected() = record(kText | kBack, Qt::red, Qt::yellow);
    for (const auto state : {RowState::plain, RowState::selected}) {
        const CellColors colors = colorsOf({&cell, nullptr, &column}, state, kOfList);
        EXPECT_EQ(colors.text, kOfList.text);
        EXPECT_EQ(colors.back, kOfList.back);
    }
}

// --- fonts ---------------------------------------------------------------------------------------

constexpr unsigned kB = ItemStruct::kBold;
constexpr unsigned kI = ItemStruct::kItalic;
constexpr unsigned kU = ItemStruct::kUnderline;
constexpr unsigned kS = ItemStruct::kStrikeOut;

struct Fonts
{
    const char* name;
    unsigned cell;
    unsigned row;
    unsigned column;
    unsigned selectedCell; // 0 for no such record
    unsigned selectedRow;
    unsigned inPlainRow; // the low bits that the font has; 0 for no font
    unsigned inSelectedRow;
};

// clang-format off
constexpr Fonts kFonts[] = {
    //                                              cell            row             column sel. cell      sel. row   plain    selected
    {"NoneIsThatOfTheList",                         0,              0,              0,     0,             0,         0,       0},
    {"OfTheCell",                                   kB,             0,              0,     0,             0,         kB,      kB},
    {"OfTheCellWithAllStyles",                      kB|kI|kU|kS,    0,              0,     0,             0,         kB|kI|kU|kS, kB|kI|kU|kS},
    {"OfTheRow",                                    0,              kI,             0,     0,             0,         kI,      kI},
    {"OfTheColumnInSelectedRowsOnly",               0,              0,              kU,    0,             0,         0,       kU},
    {"OfCellAndRowTogether",                        kB,             kI,             0,     0,             0,         kB|kI,   kB|kI},
    {"OfAllThreeTogether",                          kB,             kI,             kU,    0,             0,         kB|kI,   kB|kI|kU},
    {"ASelectedCellTakesThePlaceOfThePlainOne",     kB,             0,              0,     kI,            0,         kB,      kI},
    {"ASelectedRowTakesThePlaceOfThePlainOne",      0,              kB,             0,     0,             kI,        kB,      kI},
    {"ASelectedCellWithoutAFontStyleGivesWay",      kB,             0,              0,     kText|kBack,   0,         kB,      kB},
    {"AlsoWhenItStops",                             kB,             kI,             0,     kStopAll,      0,         kB|kI,   kB|kI},
    {"ASelectedRowWithoutAFontStyleGivesWay",       0,              kB,             0,     0,             kBack,     kB,      kB},
    {"ACellThatStopsFontsStopsTheColumn",           kB|kStopFont,   kI,             kU,    0,             0,         kB|kI,   kB|kI},
    {"ACellThatStopsFontsNeedsNoneItself",          kStopFont,      0,              kU,    0,             0,         0,       0},
    {"ACellThatStopsTheRowLeavesTheColumn",         kB|kStopAll,    kI,             kU,    0,             0,         kB,      kB|kU},
    {"ACellThatStopsBothIsAlone",                   kB|kStopAll|kStopFont, kI,      kU,    0,             0,         kB,      kB},
    {"ARowThatStopsFontsStopsTheColumn",            kB,             kI|kStopFont,   kU,    0,             0,         kB|kI,   kB|kI},
    {"AStoppedRowStopsNothing",                     kB|kStopAll,    kI|kStopFont,   kU,    0,             0,         kB,      kB|kU},
    {"ARowThatStopsAllStopsNoFont",                 kB,             kI|kStopAll,    kU,    0,             0,         kB|kI,   kB|kI|kU},
    {"AColumnStopsNothing",                         kB,             kI,             kU|kStopAll|kStopFont, 0, 0,    kB|kI,   kB|kI|kU},
    {"ASelectedCellStops",                          0,              kI,             kU,    kB|kStopAll,   0,         kI,      kB|kU},
    {"ASelectedRowStops",                           0,              0,              kU,    0,             kI|kStopFont, 0,    kI},
};

// clang-format on

unsigned bitsOf(const QFont& font)
{
    return (font.bold() ? kB : 0U) | (font.italic() ? kI : 0U) | (font.underline() ? kU : 0U)
        | (font.strikeOut() ? kS : 0U);
}

class CellFonts : public ::testing::TestWithParam<Fonts>
{
protected:
    CellFonts()
    {
        if (GetParam().selectedCell != 0) {
            cell.whileSelected().setFlags(GetParam().selectedCell);
        }
        if (GetParam().selectedRow != 0) {
            row.whileSelected().setFlags(GetParam().selectedRow);
        }
    }

    void expectFont(RowState state, unsigned bits)
    {
        const auto font = fontOf({&cell, &row, &column}, state, fontOfList());
        ASSERT_EQ(font.has_value(), bits != 0);
        if (font) {
            EXPECT_EQ(bitsOf(*font), bits);
            EXPECT_EQ(font->weight(), (bits & kB) != 0 ? 700 : 400);
            EXPECT_EQ(font->family(), fontOfList().family());
            EXPECT_EQ(font->pointSize(), fontOfList().pointSize());
        }
    }

    ItemStruct cell = record(GetParam().cell);
    ItemStruct row = record(GetParam().row);
    ItemStruct column = record(GetParam().column);
};

TEST_P(CellFonts, InARow)
{
    const Fonts& fonts = GetParam();
    expectFont(RowState::plain, fonts.inPlainRow);
    expectFont(RowState::selected, fonts.inSelectedRow);
    expectFont(RowState::plain, fonts.inPlainRow); // nothing stays behind of the selected state
}

INSTANTIATE_TEST_SUITE_P(Grid, CellFonts, ::testing::ValuesIn(kFonts),
                         [](const auto& row) { return row.param.name; });

TEST(FontsOfCells, NeedNoRecordOfRowAndColumn)
{
    ItemStruct cell = record(kB);
    for (const auto state : {RowState::plain, RowState::selected}) {
        EXPECT_EQ(bitsOf(*fontOf({&cell, nullptr, nullptr}, state, fontOfList())), kB);
    }
}

TEST(FontsOfCells, AreMadeOnce)
{
    ItemStruct cell = record(kB);
    ItemStruct row = record(kI);
    fontOf({&cell, &row, nullptr}, RowState::plain, fontOfList());
    ASSERT_TRUE(cell.font);
    ASSERT_TRUE(cell.compositeFont);
    EXPECT_TRUE(cell.fontOwned);
    EXPECT_TRUE(row.fontOwned);
    EXPECT_FALSE(row.compositeFont);
    const QFont again = *fontOf({&cell, &row, nullptr}, RowState::plain, fontOfList());
    EXPECT_TRUE(again.isCopyOf(*cell.compositeFont));
}

TEST(FontsOfCells, FollowAStyleOfTheRowThatChanges)
{
    ItemStruct cell = record(kB);
    ItemStruct row = record(kI);
    EXPECT_EQ(bitsOf(*fontOf({&cell, &row, nullptr}, RowState::plain, fontOfList())), kB | kI);
    row.setFlags(kS);
    EXPECT_EQ(bitsOf(*fontOf({&cell, &row, nullptr}, RowState::plain, fontOfList())), kB | kS);
}

TEST(FontsOfCells, ComeFromFlagsThatWereSetByHand)
{
    ItemStruct cell;
    cell.styleFlags = kB; // and no hasFontStyle
    EXPECT_EQ(bitsOf(*fontOf({&cell, nullptr, nullptr}, RowState::plain, fontOfList())), kB);
}

TEST(FontsOfCells, AreNormalWhereTheListIsBold)
{
    QFont ofList = fontOfList();
    ofList.setBold(true);
    ItemStruct cell = record(kI);
    EXPECT_EQ(bitsOf(*fontOf({&cell, nullptr, nullptr}, RowState::plain, ofList)), kI);
}

TEST(ACompositeFont, HasOfEachLevelWhatDiffersFromTheList)
{
    QFont large = fontOfList();
    large.setPointSize(20);
    QFont serif = fontOfList();
    serif.setFamilies({QStringLiteral("Serif")});
    serif.setPointSize(9);
    ItemStruct cell = record(kB);
    ItemStruct row;
    row.font = large;
    ItemStruct column;
    column.font = serif;
    const QFont font = *fontOf({&cell, &row, &column}, RowState::selected, fontOfList());
    EXPECT_TRUE(font.bold());
    EXPECT_EQ(font.pointSize(), 20) << "the row comes before the column";
    EXPECT_EQ(font.families(), QStringList {QStringLiteral("Serif")});
}

TEST(ACompositeFont, KnowsSizesInPixels)
{
    QFont large = fontOfList();
    large.setPixelSize(33);
    large.setStretch(QFont::Condensed);
    ItemStruct cell = record(kU);
    ItemStruct row;
    row.font = large;
    const QFont font = *fontOf({&cell, &row, nullptr}, RowState::plain, fontOfList());
    EXPECT_EQ(font.pixelSize(), 33);
    EXPECT_EQ(font.stretch(), QFont::Condensed);
    EXPECT_TRUE(font.underline());
}

TEST(DroppedFonts, AreAllThatWereMadeOnARow)
{
    ItemStruct row = record(kB);
    row.whileSelected().setFlags(kB);
    row.rowStyle = std::make_unique<ItemStruct>(record(kI));
    row.cells.push_back(std::make_unique<ItemStruct>(record(kU)));
    const auto makeAll = [&](const QFont& ofList) {
        for (const auto state : {RowState::plain, RowState::selected}) {
            fontOf({&row, row.rowStyle.get(), nullptr}, state, ofList);
            fontOf({row.cells.front().get(), row.rowStyle.get(), nullptr}, state, ofList);
        }
    };
    makeAll(fontOfList());
    dropFonts(row);
    for (const ItemStruct* const style :
         {&row, row.selectedStyle.get(), row.rowStyle.get(), row.cells.front().get()}) {
        EXPECT_FALSE(style->font);
        EXPECT_FALSE(style->compositeFont);
        EXPECT_NE(style->styleFlags, 0U);
    }
    QFont other = fontOfList();
    other.setPointSize(30);
    makeAll(other);
    EXPECT_EQ(row.compositeFont->pointSize(), 30);
}

} // namespace

} // namespace corma
