#include "host/clone/conversion.h"
#include "host/dxf/group_codec.h"
#include "platform/text.h"
#include "support/DxfDrawing.h"

#include <gtest/gtest.h>
#include <sstream>

namespace corma::host {

namespace {

using enum DrawingVersion;
using corma::toUtf8;
using corma::testing::dxfText;

Groups groupsFrom(std::string_view lines)
{
    return dxf::decodeGroups(dxfText(lines), {});
}

// "code value" with commas between.
std::string told(const Groups& groups)
{
    std::ostringstream out;
    const char* separator = "";
    for (const Group& group : groups) {
        EXPECT_TRUE(group.raw.empty());
        out << separator << group.code << ' ';
        if (const auto* real = std::get_if<double>(&group.value)) {
            out << *real;
        } else if (const auto* whole = std::get_if<std::int64_t>(&group.value)) {
            out << *whole;
        } else if (const auto* handle = std::get_if<Handle>(&group.value)) {
            out << toUtf8(toText(*handle));
        } else {
            out << toUtf8(group.text());
        }
        separator = ", ";
    }
    return out.str();
}

std::string inLines(std::string text)
{
    for (std::size_t at = text.find(", "); at != std::string::npos; at = text.find(", ", at)) {
        text.replace(at, 2, "\n");
    }
    return text;
}

struct ConversionRow
{
    const char* sentence;
    Versions versions;
    RecordKind kind;
    const char* before;
    const char* after;
};

class Conversion : public ::testing::TestWithParam<ConversionRow>
{
};

TEST_P(Conversion, MakesTheGroupsOfTheOtherVersion)
{
    const ConversionRow& row = GetParam();
    Groups groups = groupsFrom(inLines(row.before));
    const CloneFailure failure = convertRecord(groups, row.kind, row.versions);
    EXPECT_EQ(failure.status, Acad::eOk);
    EXPECT_EQ(told(groups), row.after);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Frame, Conversion, ::testing::Values(
    ConversionRow {"HandleAndOwnerStayBehind", {r2000, r2000}, RecordKind::entity,
        "0 LINE, 5 1A, 330 1F, 100 AcDbEntity, 8 0",
        "0 LINE, 100 AcDbEntity, 8 0"},
    ConversionRow {"ReactorsAndExtensionDictionaryStay", {r2000, r2000}, RecordKind::entity,
        "0 LINE, 5 1A, 102 {ACAD_REACTORS, 330 2, 102 }, 102 {ACAD_XDICTIONARY, 360 3, 102 }, 330 1F, 100 AcDbEntity, 8 0",
        "0 LINE, 102 {ACAD_REACTORS, 330 2, 102 }, 102 {ACAD_XDICTIONARY, 360 3, 102 }, 100 AcDbEntity, 8 0"},
    ConversionRow {"WhoRefersToABlockStaysBehind", {r2000, r2000}, RecordKind::tableEntry,
        "0 BLOCK_RECORD, 5 1A, 330 1, 100 AcDbSymbolTableRecord, 100 AcDbBlockTableRecord, 2 A, 340 0",
        "0 BLOCK_RECORD, 100 AcDbSymbolTableRecord, 100 AcDbBlockTableRecord, 2 A, 340 0"},
    ConversionRow {"TheHandleOfADimensionStyleHasACodeOfItsOwn", {r14, r14}, RecordKind::tableEntry,
        "0 DIMSTYLE, 105 1A, 100 AcDbSymbolTableRecord, 100 AcDbDimStyleTableRecord, 2 A, 5 DOT",
        "0 DIMSTYLE, 100 AcDbSymbolTableRecord, 100 AcDbDimStyleTableRecord, 2 A, 5 DOT"},
    ConversionRow {"DataThatLooksLikeAFrameStays", {r2000, r2000}, RecordKind::object,
        "0 XRECORD, 5 1A, 330 1, 100 AcDbXrecord, 280 1, 5 2B, 330 2, 102 {BLKREFS, 100 AcDbEntity",
        "0 XRECORD, 100 AcDbXrecord, 280 1, 5 2B, 330 2, 102 {BLKREFS, 100 AcDbEntity"}),
    [](const auto& row) { return row.param.sentence; });

INSTANTIATE_TEST_SUITE_P(Markers, Conversion, ::testing::Values(
    ConversionRow {"WhatAllEntitiesHaveComesFirst", {r12, r2000}, RecordKind::entity,
        "0 CIRCLE, 5 1A, 39 1, 8 A, 10 0, 20 0, 30 0, 40 2, 62 3, 67 1",
        "0 CIRCLE, 100 AcDbEntity, 8 A, 62 3, 67 1, 100 AcDbCircle, 39 1, 10 0, 20 0, 30 0, 40 2"},
    ConversionRow {"AnArcIsACircleFirst", {r12, r2000}, RecordKind::entity,
        "0 ARC, 8 A, 10 0, 50 1, 51 2, 40 2",
        "0 ARC, 100 AcDbEntity, 8 A, 100 AcDbCircle, 10 0, 40 2, 100 AcDbArc, 50 1, 51 2"},
    ConversionRow {"ATextHasItsVerticalAlignmentApart", {r12, r2000}, RecordKind::entity,
        "0 TEXT, 8 A, 10 0, 40 2, 1 t, 72 1, 73 2, 11 0",
        "0 TEXT, 100 AcDbEntity, 8 A, 100 AcDbText, 10 0, 40 2, 1 t, 72 1, 11 0, 100 AcDbText, 73 2"},
    ConversionRow {"ADefinitionOfAnAttributeIsAText", {r12, r2000}, RecordKind::entity,
        "0 ATTDEF, 8 A, 10 0, 40 2, 1 t, 3 p, 2 T, 70 0",
        "0 ATTDEF, 100 AcDbEntity, 8 A, 100 AcDbText, 10 0, 40 2, 1 t, 100 AcDbAttributeDefinition, 3 p, 2 T, 70 0"},
    ConversionRow {"FromR2010OnAnAttributeHasVersionAndLock", {r12, r2018}, RecordKind::subEntity,
        "0 ATTRIB, 8 A, 10 0, 40 2, 1 t, 2 T, 70 0, 1001 A",
        "0 ATTRIB, 100 AcDbEntity, 8 A, 100 AcDbText, 10 0, 40 2, 1 t, 100 AcDbAttribute, 280 0, 2 T, 70 0, 280 0, 1001 A"},
    ConversionRow {"AReferenceInRowsIsAnotherClass", {r12, r2000}, RecordKind::entity,
        "0 INSERT, 8 A, 2 B, 10 0, 71 2, 45 1",
        "0 INSERT, 100 AcDbEntity, 8 A, 100 AcDbMInsertBlock, 2 B, 10 0, 71 2, 45 1"},
    ConversionRow {"A3dPolylineTellsByItsFlag", {r12, r2000}, RecordKind::entity,
        "0 POLYLINE, 8 A, 66 1, 10 0, 70 8",
        "0 POLYLINE, 100 AcDbEntity, 8 A, 100 AcDb3dPolyline, 66 1, 10 0, 70 8"},
    ConversionRow {"AVertexHasThreeClasses", {r12, r2000}, RecordKind::subEntity,
        "0 VERTEX, 8 A, 10 0, 70 32",
        "0 VERTEX, 100 AcDbEntity, 8 A, 100 AcDbVertex, 100 AcDb3dPolylineVertex, 10 0, 70 32"},
    ConversionRow {"AFaceOfAMeshIsNoVertex", {r12, r2000}, RecordKind::subEntity,
        "0 VERTEX, 8 A, 10 0, 70 128, 71 1, 72 2",
        "0 VERTEX, 100 AcDbEntity, 8 A, 100 AcDbFaceRecord, 10 0, 70 128, 71 1, 72 2"},
    ConversionRow {"ARotatedDimensionIsAnAlignedOne", {r12, r2000}, RecordKind::entity,
        "0 DIMENSION, 8 A, 2 *D1, 10 0, 11 0, 13 0, 14 0, 50 90, 70 0, 1 t",
        "0 DIMENSION, 100 AcDbEntity, 8 A, 100 AcDbDimension, 2 *D1, 10 0, 11 0, 70 0, 1 t, 100 AcDbAlignedDimension, 13 0, 14 0, 50 90, 100 AcDbRotatedDimension"},
    ConversionRow {"ALinetypeTellsOfEachDashThatItIsPlain", {r12, r2000}, RecordKind::tableEntry,
        "0 LTYPE, 2 A, 70 0, 3 d, 72 65, 73 2, 40 1, 49 0.5, 49 -0.5",
        "0 LTYPE, 100 AcDbSymbolTableRecord, 100 AcDbLinetypeTableRecord, 2 A, 70 0, 3 d, 72 65, 73 2, 40 1, 49 0.5, 74 0, 49 -0.5, 74 0"},
    ConversionRow {"TheBeginOfABlockIsAnEntity", {r12, r2000}, RecordKind::blockBegin,
        "0 BLOCK, 8 0, 2 A, 70 0, 10 0",
        "0 BLOCK, 100 AcDbEntity, 8 0, 100 AcDbBlockBegin, 2 A, 70 0, 10 0"}),
    [](const auto& row) { return row.param.sentence; });

INSTANTIATE_TEST_SUITE_P(Older, Conversion, ::testing::Values(
    ConversionRow {"R12HasNeitherMarkersNorHandlesOfOthers", {r2018, r12}, RecordKind::entity,
        "0 LINE, 5 1A, 102 {ACAD_XDICTIONARY, 360 3, 102 }, 330 1F, 100 AcDbEntity, 8 A, 48 2, 60 1, 347 5, 370 25, 390 6, 420 255, 430 c, 440 9, 100 AcDbLine, 10 0, 1001 A, 1000 t",
        "0 LINE, 8 A, 10 0, 1001 A, 1000 t"},
    ConversionRow {"R2000HasLineWeightsButNoTrueColors", {r2018, r2000}, RecordKind::entity,
        "0 LINE, 100 AcDbEntity, 8 A, 347 5, 370 25, 390 6, 420 255, 440 9, 100 AcDbLine, 10 0",
        "0 LINE, 100 AcDbEntity, 8 A, 370 25, 390 6, 100 AcDbLine, 10 0"},
    ConversionRow {"R2004HasTrueColors", {r2018, r2004}, RecordKind::entity,
        "0 LINE, 100 AcDbEntity, 8 A, 347 5, 370 25, 420 255, 440 9, 100 AcDbLine, 10 0",
        "0 LINE, 100 AcDbEntity, 8 A, 370 25, 420 255, 440 9, 100 AcDbLine, 10 0"},
    ConversionRow {"ALayerLosesItsMaterial", {r2018, r2000}, RecordKind::tableEntry,
        "0 LAYER, 100 AcDbSymbolTableRecord, 100 AcDbLayerTableRecord, 2 A, 70 0, 62 1, 420 5, 6 C, 290 0, 370 -3, 390 F, 347 98, 348 0",
        "0 LAYER, 100 AcDbSymbolTableRecord, 100 AcDbLayerTableRecord, 2 A, 70 0, 62 1, 6 C, 290 0, 370 -3, 390 F"},
    ConversionRow {"AnAttributeLosesVersionAndLock", {r2010, r2007}, RecordKind::subEntity,
        "0 ATTRIB, 100 AcDbEntity, 8 A, 100 AcDbText, 1 t, 100 AcDbAttribute, 280 0, 2 T, 70 0, 280 1",
        "0 ATTRIB, 100 AcDbEntity, 8 A, 100 AcDbText, 1 t, 100 AcDbAttribute, 2 T, 70 0"},
    ConversionRow {"APlainMultilineTextLosesItsEmbeddedObject", {r2018, r2013}, RecordKind::entity,
        "0 MTEXT, 100 AcDbEntity, 8 A, 100 AcDbMText, 1 t, 101 Embedded Object, 70 1, 71 0, 1001 A",
        "0 MTEXT, 100 AcDbEntity, 8 A, 100 AcDbMText, 1 t, 1001 A"},
    ConversionRow {"ANewerTypeInADrawingOfTheSameVersionStays", {r2000, r2000}, RecordKind::entity,
        "0 MESH, 100 AcDbEntity, 8 A, 100 AcDbSubDMesh, 71 2",
        "0 MESH, 100 AcDbEntity, 8 A, 100 AcDbSubDMesh, 71 2"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

struct ConversionRefusalRow
{
    const char* sentence;
    Versions versions;
    const char* groups;
    Acad::ErrorStatus status;
    const wchar_t* message;
};

class ConversionRefusal : public ::testing::TestWithParam<ConversionRefusalRow>
{
};

TEST_P(ConversionRefusal, TellsWhy)
{
    Groups groups = groupsFrom(inLines(GetParam().groups));
    const CloneFailure failure = convertRecord(groups, RecordKind::entity, GetParam().versions);
    EXPECT_EQ(failure.status, GetParam().status);
    EXPECT_EQ(failure.message, GetParam().message);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Conversion, ConversionRefusal, ::testing::Values(
    ConversionRefusalRow {"OfAProxy", {r2000, r2000}, "0 ACAD_PROXY_OBJECT, 100 AcDbProxyObject",
        Acad::eNotImplementedYet,
        L"Cannot clone a record of type ACAD_PROXY_OBJECT: its content is not understood."},
    ConversionRefusalRow {"OfARecordWithoutAType", {r2000, r2000}, "0 , 5 1", Acad::eNotImplementedYet,
        L"Cannot clone a record of type : its content is not understood."},
    ConversionRefusalRow {"OfASolidWhoseShapeStandsElsewhere", {r2013, r2013}, "0 3DSOLID, 100 AcDbEntity",
        Acad::eNotImplementedYet,
        L"Cannot clone a record of type 3DSOLID: from R2013 on its shape stands in another section of the drawing."},
    ConversionRefusalRow {"OfATypeThatComesLater", {r2018, r2004}, "0 MESH, 100 AcDbEntity",
        Acad::eInvalidDwgVersion,
        L"Cannot clone a record of type MESH into a drawing of version R2004: that version does not have it."},
    ConversionRefusalRow {"OfAnAttributeOfSeveralLines", {r2018, r2000}, "0 ATTRIB, 100 AcDbEntity, 8 0, 100 AcDbText, 1 a, 100 AcDbAttribute, 2 T, 101 Embedded Object, 71 0",
        Acad::eInvalidDwgVersion,
        L"Cannot clone a record of type ATTRIB into a drawing of version R2000: it has a text in several lines or columns."},
    ConversionRefusalRow {"OfColumns", {r2018, r2000}, "0 MTEXT, 100 AcDbEntity, 8 0, 100 AcDbMText, 1 a, 101 Embedded Object, 71 2",
        Acad::eInvalidDwgVersion,
        L"Cannot clone a record of type MTEXT into a drawing of version R2000: it has a text in several lines or columns."},
    ConversionRefusalRow {"OfALinetypeWithShapes", {r2000, r12}, "0 LTYPE, 100 AcDbLinetypeTableRecord, 2 A, 49 1, 74 4, 340 5",
        Acad::eInvalidDwgVersion,
        L"Cannot clone a record of type LTYPE into a drawing of version R12: its dashes have texts or shapes."},
    ConversionRefusalRow {"OfAViewportOfAnotherForm", {r14, r2000}, "0 VIEWPORT, 100 AcDbEntity, 8 0",
        Acad::eInvalidDwgVersion,
        L"Cannot clone a record of type VIEWPORT into a drawing of version R2000: viewports of R14 have another form."}),
    [](const auto& row) { return row.param.sentence; });
// clang-format on

} // namespace

} // namespace corma::host
