#include "controls/grid_style.h"

#include <array>

void ItemStruct::setFlags(unsigned flags)
{
    styleFlags = flags;
    hasFontStyle = (flags & kFontFlags) != 0;
    if (fontOwned) {
        font.reset();
        fontOwned = false;
    }
    compositeFont.reset();
}

ItemStruct& ItemStruct::whileSelected()
{
    if (!selectedStyle) {
        selectedStyle = std::make_unique<ItemStruct>();
    }
    return *selectedStyle;
}

namespace corma {

namespace {

bool has(const ItemStruct* record, unsigned flag)
{
    return record != nullptr && (record->styleFlags & flag) != 0;
}

ItemStruct* inState(ItemStruct* record, RowState state)
{
    if (record == nullptr || state == RowState::plain) {
        return record;
    }
    return record->selectedStyle.get();
}

// The record that gives a colour, if any: the cell before the row.
const ItemStruct* giverOf(unsigned flag, const ItemStruct* cell, const ItemStruct* row)
{
    if (has(cell, flag)) {
        return cell;
    }
    return has(row, flag) && !has(cell, ItemStruct::kStopAll) ? row : nullptr;
}

// What is selected has no font of its own unless it says so.
ItemStruct* forFont(ItemStruct* plain, RowState state)
{
    ItemStruct* const record = inState(plain, state);
    return record != nullptr && (state == RowState::plain || record->hasFontStyle) ? record : plain;
}

// A stop of the row does not count where the cell stopped something; a cell that stops the row does
// not stop the column (test: ACellThatStopsTheRowLeavesTheColumn).
void applyStops(StyleLevels& levels)
{
    if (has(levels.cell, ItemStruct::kStopFont | ItemStruct::kStopAll)) {
        if (has(levels.cell, ItemStruct::kStopFont)) {
            levels.column = nullptr;
        }
        if (has(levels.cell, ItemStruct::kStopAll)) {
            levels.row = nullptr;
        }
        return;
    }
    if (has(levels.row, ItemStruct::kStopFont)) {
        levels.column = nullptr;
    }
}

std::optional<QFont> fontOfRecord(ItemStruct* record, const QFont& ofList)
{
    if (record == nullptr) {
        return std::nullopt;
    }
    if (!record->font && has(record, ItemStruct::kFontFlags)) {
        QFont font = ofList;
        font.setWeight(has(record, ItemStruct::kBold) ? QFont::Bold : QFont::Normal);
        font.setItalic(has(record, ItemStruct::kItalic));
        font.setUnderline(has(record, ItemStruct::kUnderline));
        font.setStrikeOut(has(record, ItemStruct::kStrikeOut));
        record->font = font;
        record->fontOwned = true;
    }
    return record->font;
}

void takeSize(QFont& font, const QFont& from, const QFont& ofList)
{
    if (from.pointSizeF() == ofList.pointSizeF() && from.pixelSize() == ofList.pixelSize()) {
        return;
    }
    if (from.pixelSize() > 0) {
        font.setPixelSize(from.pixelSize());
    } else {
        font.setPointSizeF(from.pointSizeF());
    }
}

// A font has what differs from that of the list.
void takeDifferences(QFont& font, const QFont& from, const QFont& ofList)
{
    takeSize(font, from, ofList);
    if (from.families() != ofList.families()) {
        font.setFamilies(from.families());
    }
    if (from.weight() != ofList.weight()) {
        font.setWeight(from.weight());
    }
    if (from.style() != ofList.style()) {
        font.setStyle(from.style());
    }
    if (from.underline() != ofList.underline()) {
        font.setUnderline(from.underline());
    }
    if (from.strikeOut() != ofList.strikeOut()) {
        font.setStrikeOut(from.strikeOut());
    }
    if (from.stretch() != ofList.stretch()) {
        font.setStretch(from.stretch());
    }
}

// The least specific level comes first, so that the cell has the last word. The plain record keeps
// the fonts of selected rows, too, which have the column besides; so it is compared what of.
QFont composite(ItemStruct& cell, const std::vector<QFont>& fonts, const QFont& ofList)
{
    std::vector<QFont> parts = fonts;
    parts.push_back(ofList);
    if (!cell.compositeFont || cell.compositeParts != parts) {
        QFont font = ofList;
        for (const QFont& level : fonts) {
            takeDifferences(font, level, ofList);
        }
        cell.compositeFont = font;
        cell.compositeParts = std::move(parts);
    }
    return *cell.compositeFont;
}

} // namespace

CellColors colorsOf(const StyleLevels& levels, RowState state, const CellColors& ofList)
{
    const ItemStruct* const cell = inState(levels.cell, state);
    const ItemStruct* const row = inState(levels.row, state);
    CellColors colors = ofList;
    if (const ItemStruct* const giver = giverOf(ItemStruct::kHasTextColor, cell, row)) {
        colors.text = giver->textColor;
        colors.isTextGiven = true;
    }
    if (const ItemStruct* const giver = giverOf(ItemStruct::kHasBackColor, cell, row)) {
        colors.back = giver->backColor;
        colors.isBackGiven = true;
    }
    return colors;
}

std::optional<QFont> fontOf(const StyleLevels& levels, RowState state, const QFont& ofList)
{
    StyleLevels used {forFont(levels.cell, state), forFont(levels.row, state),
                      state == RowState::selected ? levels.column : nullptr};
    applyStops(used);
    std::vector<QFont> fonts;
    for (ItemStruct* const level : {used.column, used.row, used.cell}) {
        if (const auto font = fontOfRecord(level, ofList)) {
            fonts.push_back(*font);
        }
    }
    if (fonts.empty()) {
        return std::nullopt;
    }
    return fonts.size() == 1 ? fonts.front() : composite(*used.cell, fonts, ofList);
}

void dropFonts(ItemStruct& record)
{
    record.setFlags(record.styleFlags);
    for (const auto& cell : record.cells) {
        dropFonts(*cell);
    }
    for (ItemStruct* const other : {record.rowStyle.get(), record.selectedStyle.get()}) {
        if (other != nullptr) {
            dropFonts(*other);
        }
    }
}

} // namespace corma
