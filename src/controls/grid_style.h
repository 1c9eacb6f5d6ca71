#pragma once

// Which colours and which font a cell of a grid list has.

#include <corma/xx_gridListCtrl.h>

#include <QColor>
#include <QFont>

#include <optional>

namespace corma {

/// The records that a cell takes its style from; each but the first may be null.
struct StyleLevels
{
    ItemStruct* cell = nullptr; // the plain one
    ItemStruct* row = nullptr; // the plain style of the row as a whole
    ItemStruct* column = nullptr;
};

enum class RowState
{
    plain,
    selected
};

struct CellColors
{
    QColor text;
    QColor back;
    bool isTextGiven = false; // by a record, not by the list
    bool isBackGiven = false;
};

/// The colours of a cell; `ofList` has those of the list, or of the highlight for a selected row.
CellColors colorsOf(const StyleLevels& levels, RowState state, const CellColors& ofList);

/// The font of a cell; nothing for that of the list. Fonts are made from it and kept in the
/// records.
std::optional<QFont> fontOf(const StyleLevels& levels, RowState state, const QFont& ofList);

/// Forgets the fonts that were made in the record and those that hang on it, since the font of the
/// list is another.
void dropFonts(ItemStruct& record);

} // namespace corma
