#include "host/clone/references.h"
#include "host/dxf/group_codec.h"
#include "support/DxfDrawing.h"

#include <gtest/gtest.h>

namespace corma::host {

namespace {

using corma::testing::dxfText;

const char* kindName(Reference::Kind kind)
{
    switch (kind) {
    case Reference::Kind::name:
        return "name";
    case Reference::Kind::hardPointer:
        return "hard";
    case Reference::Kind::softPointer:
        return "soft";
    case Reference::Kind::owned:
        return "owned";
    case Reference::Kind::reactor:
        return "reactor";
    case Reference::Kind::sortHandle:
        return "sort";
    }
    return "?";
}

struct ReferenceRow
{
    const char* sentence;
    RecordKind kind;
    const char* groups;
    const char* references; // code and kind, or code and table
};

class References : public ::testing::TestWithParam<ReferenceRow>
{
};

TEST_P(References, AreFoundByCodeAndPlace)
{
    std::string text = GetParam().groups;
    for (std::size_t at = text.find(", "); at != std::string::npos; at = text.find(", ", at)) {
        text.replace(at, 2, "\n");
    }
    const Groups groups = dxf::decodeGroups(dxfText(text), {});
    std::string told;
    for (const Reference& reference : referencesOf(groups, GetParam().kind)) {
        const bool isName = reference.kind == Reference::Kind::name;
        told += (told.empty() ? "" : ", ") + std::to_string(groups[reference.at].code) + ' '
            + (isName ? std::string(corma::host::nameOf(reference.table))
                      : kindName(reference.kind));
    }
    EXPECT_EQ(told, GetParam().references);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, References, ::testing::Values(
    ReferenceRow {"AnEntityNamesLayerAndLinetype", RecordKind::entity,
        "0 LINE, 100 AcDbEntity, 8 A, 6 B, 100 AcDbLine, 10 0",
        "8 LAYER, 6 LTYPE"},
    ReferenceRow {"ARecordOfR12IsOnePart", RecordKind::entity,
        "0 TEXT, 8 A, 10 0, 7 S, 1001 APP, 1003 B, 1005 1",
        "8 LAYER, 7 STYLE, 1001 APPID, 1003 LAYER, 1005 soft"},
    ReferenceRow {"AnAttributeHasATagWhereAReferenceHasABlock", RecordKind::subEntity,
        "0 ATTRIB, 100 AcDbEntity, 8 A, 100 AcDbText, 7 S, 1 t, 100 AcDbAttribute, 2 TAG",
        "8 LAYER, 7 STYLE"},
    ReferenceRow {"AReferenceNamesItsBlock", RecordKind::entity,
        "0 INSERT, 100 AcDbEntity, 8 A, 100 AcDbMInsertBlock, 2 B",
        "8 LAYER, 2 BLOCK_RECORD"},
    ReferenceRow {"ADimensionNamesPictureAndStyle", RecordKind::entity,
        "0 DIMENSION, 100 AcDbEntity, 8 A, 100 AcDbDimension, 2 *D1, 3 S, 100 AcDbAlignedDimension, 13 0",
        "8 LAYER, 2 BLOCK_RECORD, 3 DIMSTYLE"},
    ReferenceRow {"HandlesTellByTheirCodeHowMuchTheyNeed", RecordKind::object,
        "0 MATERIAL, 100 AcDbMaterial, 319 AA, 320 1, 329 1, 330 2, 339 2, 340 3, 349 3, 350 4, 360 5, 369 5, 390 6, 399 6, 480 7, 481 7, 482 x",
        "330 soft, 339 soft, 340 hard, 349 hard, 350 owned, 360 owned, 369 owned, 390 hard, 399 hard, 480 hard, 481 hard"},
    ReferenceRow {"ReactorsAreApart", RecordKind::object,
        "0 XRECORD, 102 {ACAD_REACTORS, 330 1, 102 }, 102 {ACAD_XDICTIONARY, 360 2, 102 }, 100 AcDbXrecord, 330 3",
        "330 reactor, 360 owned, 330 soft"},
    ReferenceRow {"DataOfARecordNamesNothing", RecordKind::object,
        "0 XRECORD, 100 AcDbXrecord, 280 1, 8 A, 6 B, 7 C, 5 1, 100 AcDbEntity, 8 A, 102 {ACAD_REACTORS, 340 9",
        "340 hard"},
    ReferenceRow {"ThePlacesInADrawingOrderAreHandles", RecordKind::object,
        "0 SORTENTSTABLE, 100 AcDbSortentsTable, 331 1, 5 2",
        "331 soft, 5 sort"},
    ReferenceRow {"ADimensionStyleOfR14NamesItsArrows", RecordKind::tableEntry,
        "0 DIMSTYLE, 100 AcDbSymbolTableRecord, 100 AcDbDimStyleTableRecord, 2 A, 5 DOT, 6 B, 7 C, 340 1",
        "5 BLOCK_RECORD, 6 BLOCK_RECORD, 7 BLOCK_RECORD, 340 hard"},
    ReferenceRow {"ALayerNamesItsLinetype", RecordKind::tableEntry,
        "0 LAYER, 100 AcDbSymbolTableRecord, 100 AcDbLayerTableRecord, 2 A, 6 B, 390 F",
        "6 LTYPE, 390 hard"}),
    [](const auto& row) { return row.param.sentence; });
// clang-format on

} // namespace

} // namespace corma::host
