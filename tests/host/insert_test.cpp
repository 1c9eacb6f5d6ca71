#include "host/host.h"
#include "support/CloneDrawing.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>
#include <numbers>

namespace corma::host {

namespace {

using corma::testing::CloneDrawing;
using corma::testing::RecordingServices;

constexpr std::string_view kDoor = R"(
0 LINE
5 30
330 1F
100 AcDbEntity
8 WALLS
100 AcDbLine
10 1.0
20 2.0
30 0.0
11 4.0
21 2.0
31 0.0
0 ATTDEF
5 31
330 1F
100 AcDbEntity
8 0
100 AcDbText
10 1.0
20 1.0
30 0.0
40 2.5
1 oak
100 AcDbAttributeDefinition
3 Wood?
2 WOOD
70 0)";

constexpr std::string_view kOrigin = "9 $INSBASE\n10 1.0\n20 2.0\n30 0.0\n9 $INSUNITS\n70 4\n";

constexpr std::string_view kReferenceToDoor = R"(
0 INSERT
5 30
330 1F
100 AcDbEntity
8 0
100 AcDbBlockReference
2 DOOR
10 0.0
20 0.0
30 0.0)";

constexpr std::string_view kDoorBlock = R"(
0 BLOCK
5 40
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 DOOR
70 0
10 0.0
20 0.0
30 0.0
3 DOOR
1
0 CIRCLE
5 41
100 AcDbEntity
8 0
100 AcDbCircle
10 0.0
20 0.0
30 0.0
40 1.0
0 ENDBLK
5 42
100 AcDbEntity
8 0
100 AcDbBlockEnd)";

class InsertAsBlock : public ::testing::Test
{
protected:
    RecordingServices m_services;
    CloneDrawing m_door {{.header = kOrigin, .entities = kDoor}};
    AcDbObjectId m_id;

    Acad::ErrorStatus insertInto(const CloneDrawing& to, const wchar_t* name = L"DOOR")
    {
        return to.database().insert(m_id, name, &m_door.database());
    }
};

TEST_F(InsertAsBlock, MakesTheModelSpaceABlockWithTheBasePointAsOrigin)
{
    const CloneDrawing to;
    ASSERT_EQ(insertInto(to), Acad::eOk);
    EXPECT_EQ(m_id, to.block(L"DOOR"));

    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.content(L"Door"),
              "LINE 8=WALLS 10=1 20=2 30=0 11=4 21=2 31=0\n"
              "ATTDEF 10=1 20=1 30=0 40=2.5 1=oak 280=0 3=Wood? 2=WOOD 70=0 280=0\n");
    const Block& door = *saved.store().findBlock(L"DOOR");
    EXPECT_EQ(saved.described(*door.begin), "BLOCK 2=DOOR 70=2 10=1 20=2 30=0 3=DOOR 1=");
    EXPECT_EQ(saved.described(*door.record), "BLOCK_RECORD 2=DOOR 340=#0 70=0 280=1 281=0");
    EXPECT_FALSE(saved.entry(TableKind::layer, L"WALLS").isNull());
    EXPECT_TRUE(saved.model().empty());
    EXPECT_EQ(openObjectCount(), 0);
}

TEST_F(InsertAsBlock, TakesTheRecordOfTheModelSpaceAlong)
{
    const CloneDrawing from;
    Opened<AcDbBlockTableRecord> model(from.block(ACDB_MODEL_SPACE), AcDb::kForWrite);
    model->changeGroups().add(Group(1001, L"ACAD"));
    model->changeGroups().add(Group(1000, L"said of the model"));
    model.close();
    from.store().setVariable(L"$INSUNITS", Group(70, 4));

    const CloneDrawing to;
    ASSERT_EQ(to.database().insert(m_id, L"PLAN", &from.database()), Acad::eOk);
    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.described(*saved.block(L"PLAN").stub()),
              "BLOCK_RECORD 2=PLAN 340=#0 70=4 1001=ACAD 1000=said of the model");
}

TEST_F(InsertAsBlock, RedefinesABlockUnderItsIdAndNameAndLeavesTheReferences)
{
    const CloneDrawing to({.blocks = kDoorBlock, .entities = kReferenceToDoor});
    const AcDbObjectId before = to.block(L"DOOR");
    ASSERT_EQ(insertInto(to, L"door"), Acad::eOk);

    EXPECT_EQ(m_id, before);
    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.content(L"DOOR"),
              "LINE 8=WALLS 10=1 20=2 30=0 11=4 21=2 31=0\n"
              "ATTDEF 10=1 20=1 30=0 40=2.5 1=oak 3=Wood? 2=WOOD 70=0\n");
    EXPECT_EQ(saved.model(), "INSERT 2=DOOR 10=0 20=0 30=0\n");
    const Block& door = *saved.store().findBlock(L"DOOR");
    EXPECT_EQ(saved.described(*door.begin), "BLOCK 2=DOOR 70=2 10=1 20=2 30=0 3=DOOR 1=");
    EXPECT_EQ(door.name, L"DOOR");
    ASSERT_EQ(insertInto(to), Acad::eOk);
    EXPECT_EQ(to.reloaded().content(L"DOOR"), saved.content(L"DOOR"));
}

TEST_F(InsertAsBlock, KeepsTheNestedBlocksOfTheDestination)
{
    const CloneDrawing from({.blocks = kDoorBlock, .entities = kReferenceToDoor});
    const CloneDrawing to;
    ASSERT_EQ(insertInto(to), Acad::eOk);
    const std::string door = to.content(L"DOOR");
    ASSERT_EQ(to.database().insert(m_id, L"HOUSE", &from.database()), Acad::eOk);
    EXPECT_EQ(to.content(L"DOOR"), door);
    EXPECT_EQ(to.content(L"HOUSE"), "INSERT 2=DOOR 10=0 20=0 30=0\n");
}

TEST_F(InsertAsBlock, ADrawingThatRefersToABlockOfItsNewNameIsRefused)
{
    const CloneDrawing from({.blocks = kDoorBlock, .entities = kReferenceToDoor});
    const CloneDrawing to;
    const std::string before = to.bytes();
    EXPECT_EQ(to.database().insert(m_id, L"Door", &from.database()), Acad::eInvalidInput);
    EXPECT_EQ(m_services.allPrinted(), L"\nCannot clone: the block door would contain itself.");
    EXPECT_TRUE(m_id.isNull());
    EXPECT_EQ(to.bytes(), before);
}

TEST_F(InsertAsBlock, GoesIntoAndComesFromR12)
{
    const CloneDrawing old({.version = "AC1009", .header = "9 $HANDLING\n70 1\n"});
    ASSERT_EQ(insertInto(old), Acad::eOk);
    const CloneDrawing saved = old.reloaded();
    EXPECT_EQ(saved.content(L"DOOR"),
              "LINE 8=WALLS 10=1 20=2 30=0 11=4 21=2 31=0\n"
              "ATTDEF 10=1 20=1 30=0 40=2.5 1=oak 3=Wood? 2=WOOD 70=0\n");
    EXPECT_EQ(saved.bytes().find("AcDb"), std::string::npos);

    const CloneDrawing from({.version = "AC1009",
                             .blocks = R"(
0 BLOCK
8 0
2 KNOB
70 0
10 0.0
20 0.0
30 0.0
0 POINT
8 0
10 1.0
20 1.0
30 0.0
0 ENDBLK
8 0)",
                             .entities = "0 INSERT\n8 0\n2 KNOB\n10 3.0\n20 0.0\n30 0.0\n70 2"});
    const CloneDrawing to;
    ASSERT_EQ(to.database().insert(m_id, L"GATE", &from.database()), Acad::eOk);
    const CloneDrawing back = to.reloaded();
    EXPECT_EQ(back.content(L"GATE"), "INSERT 2=KNOB 10=3 20=0 30=0 70=2\n");
    EXPECT_EQ(back.content(L"KNOB"), "POINT 10=1 20=1 30=0\n");
    const Block& knob = *back.store().findBlock(L"KNOB");
    EXPECT_EQ(knob.record->type, RecordType::blockRecord);
    EXPECT_EQ(back.store().groupsOf(*knob.begin).ownerHandle(), knob.record->handle);
}

struct NameRow
{
    const char* sentence;
    const wchar_t* name;
    Acad::ErrorStatus status;
};

class BlockName : public InsertAsBlock, public ::testing::WithParamInterface<NameRow>
{
};

TEST_P(BlockName, IsChecked)
{
    const CloneDrawing to;
    EXPECT_EQ(insertInto(to, GetParam().name), GetParam().status);
    EXPECT_EQ(to.database().isModified(), GetParam().status == Acad::eOk);
}

INSTANTIATE_TEST_SUITE_P(InsertAsBlock, BlockName,
                         ::testing::Values(NameRow {"NullIsNone", nullptr, Acad::eNullBlockName},
                                           NameRow {"AnEmptyOneIsNone", L"",
                                                    Acad::eInvalidBlockName},
                                           NameRow {"OneOfALayoutIsNotForUsers", L"*Model_Space",
                                                    Acad::eInvalidBlockName},
                                           NameRow {"APathIsNone", L"a/b", Acad::eInvalidBlockName},
                                           NameRow {"SpacesAreAllowed", L"front door", Acad::eOk}),
                         [](const auto& row) { return row.param.sentence; });

TEST_F(InsertAsBlock, NeedsAnotherDrawing)
{
    EXPECT_EQ(insertInto(m_door), Acad::eWrongDatabase);
    EXPECT_EQ(m_door.database().insert(m_id, L"DOOR", nullptr), Acad::eNullObjectPointer);
}

// --- with a transformation -----------------------------------------------------------------------

class InsertMoved : public ::testing::Test
{
protected:
    RecordingServices m_services;

    static AcGeMatrix3d quarterTurnAt(double x, double y)
    {
        return AcGeMatrix3d().setToTranslation({x, y, 0.0})
            * AcGeMatrix3d().setToRotation(std::numbers::pi / 2, AcGeVector3d::kZAxis);
    }
};

TEST_F(InsertMoved, TransformsWhatItPutsIntoTheModel)
{
    const CloneDrawing from({.blocks = kDoorBlock, .entities = R"(
0 TEXT
5 30
100 AcDbEntity
8 0
100 AcDbText
10 1.0
20 0.0
30 0.0
40 2.0
1 hall
100 AcDbText
0 INSERT
5 31
100 AcDbEntity
8 0
100 AcDbBlockReference
66 1
2 DOOR
10 2.0
20 0.0
30 0.0
0 ATTRIB
5 32
330 31
100 AcDbEntity
8 0
100 AcDbText
10 3.0
20 0.0
30 0.0
40 1.0
1 7
100 AcDbAttribute
2 NUMBER
70 0
0 SEQEND
5 33
330 31
100 AcDbEntity
8 0)"});
    const CloneDrawing to({.version = "AC1015"});
    ASSERT_EQ(to.database().insert(quarterTurnAt(10.0, 20.0), &from.database()), Acad::eOk);
    EXPECT_EQ(to.reloaded().model(),
              "TEXT 10=10 20=21 30=0 40=2 1=hall 50=90\n"
              "INSERT 66=1 2=DOOR 10=10 20=22 30=0 50=90\n"
              "  ATTRIB 10=10 20=23 30=0 40=1 1=7 50=90 2=NUMBER 70=0\n"
              "  SEQEND\n");
}

TEST_F(InsertMoved, TurnsThePictureOfADimensionAroundItsPoint)
{
    const CloneDrawing from({.blocks = R"(
0 BLOCK
5 40
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 *D7
70 1
10 0.0
20 0.0
30 0.0
3 *D7
1
0 LINE
5 41
100 AcDbEntity
8 0
100 AcDbLine
10 0.0
20 1.0
30 0.0
11 4.0
21 1.0
31 0.0
0 ENDBLK
5 42
100 AcDbEntity
8 0
100 AcDbBlockEnd)",
                             .entities = R"(
0 DIMENSION
5 30
100 AcDbEntity
8 0
100 AcDbDimension
2 *D7
10 4.0
20 1.0
30 0.0
11 2.0
21 1.0
31 0.0
70 33
3 Standard
100 AcDbAlignedDimension
13 0.0
23 0.0
33 0.0
14 4.0
24 0.0
34 0.0)"});
    const CloneDrawing to;
    ASSERT_EQ(to.database().insert(quarterTurnAt(10.0, 0.0), &from.database()), Acad::eOk);

    const CloneDrawing saved = to.reloaded();
    const Groups dimension = saved.store().groupsOf(*saved.entity(0).stub());
    const Groups line
        = saved.store().groupsOf(*saved.store().firstEntity(*saved.store().findBlock(L"*D1")));
    const Point at = dimension.point(12, dimension.body());
    const Point end = line.point(11, line.body());
    // (4,1), the end of the line, was at the definition point and still is.
    const Point definition = dimension.point(10, dimension.body());
    EXPECT_NEAR(definition.x, 9.0, 1e-9);
    EXPECT_NEAR(definition.y, 4.0, 1e-9);
    EXPECT_NEAR(at.x + end.x, definition.x, 1e-9);
    EXPECT_NEAR(at.y + end.y, definition.y, 1e-9);
}

TEST_F(InsertMoved, WhatCannotBeTransformedFailsWithoutATrace)
{
    const CloneDrawing from({.entities = R"(
0 LINE
5 30
100 AcDbEntity
8 0
100 AcDbLine
10 0.0
20 0.0
30 0.0
11 1.0
21 0.0
31 0.0
0 OLE2FRAME
5 31
100 AcDbEntity
8 0
100 AcDbOle2Frame
70 2)"});
    const CloneDrawing to({.version = "AC1015"});
    const std::string before = to.bytes();
    EXPECT_EQ(to.database().insert(quarterTurnAt(1.0, 0.0), &from.database()),
              Acad::eNotImplementedYet);
    EXPECT_EQ(m_services.allPrinted(), L"\nCannot transform a record of type OLE2FRAME.");
    EXPECT_EQ(to.bytes(), before);
    EXPECT_EQ(to.database().insert(AcGeMatrix3d::kIdentity, &from.database()), Acad::eOk);
}

constexpr std::string_view kPoint
    = "0 POINT\n5 30\n100 AcDbEntity\n8 0\n100 AcDbPoint\n10 1.0\n20 1.0\n30 0.0";

// A layout with a viewport of its own and a window on the model.
constexpr std::string_view kLayoutTables = R"(
0 TABLE
2 BLOCK_RECORD
5 10
100 AcDbSymbolTable
70 1
0 BLOCK_RECORD
5 11
330 10
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 *Paper_Space
340 20
0 ENDTAB)";

constexpr std::string_view kViewports = R"(
0 VIEWPORT
5 50
330 11
100 AcDbEntity
67 1
8 0
100 AcDbViewport
10 0.0
20 0.0
30 0.0
40 1.0
41 1.0
69 1
0 VIEWPORT
5 51
330 11
100 AcDbEntity
67 1
8 0
100 AcDbViewport
10 0.0
20 0.0
30 0.0
40 1.0
41 1.0
69 2)";

std::string layoutWith(std::string_view lastViewport)
{
    return "0 DICTIONARY\n5 C\n330 0\n100 AcDbDictionary\n0 LAYOUT\n5 20\n330 C\n"
           "100 AcDbPlotSettings\n1 A4\n100 AcDbLayout\n1 Sheet\n330 11\n331 "
        + std::string(lastViewport);
}

CloneDrawing drawingWithLayout(const std::string& layout)
{
    return CloneDrawing({.header = "9 $TILEMODE\n70 0\n",
                         .tables = kLayoutTables,
                         .entities = kViewports,
                         .objects = layout});
}

TEST_F(InsertMoved, GoesIntoPaperSpaceWhileThatIsCurrent)
{
    const CloneDrawing from({.entities = kPoint});
    const CloneDrawing to = drawingWithLayout(layoutWith("50"));
    ASSERT_EQ(to.database().insert(AcGeMatrix3d::kIdentity, &from.database()), Acad::eOk);
    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.model(), "");
    EXPECT_NE(saved.content(L"*Paper_Space").find("POINT 67=1 10=1 20=1 30=0\n"),
              std::string::npos);
}

TEST_F(InsertMoved, GoesIntoTheModelThroughAFloatingViewport)
{
    const CloneDrawing from({.entities = kPoint});
    const CloneDrawing to = drawingWithLayout(layoutWith("51"));
    ASSERT_EQ(to.database().insert(AcGeMatrix3d::kIdentity, &from.database()), Acad::eOk);
    EXPECT_EQ(to.reloaded().model(), "POINT 10=1 20=1 30=0\n");
}

TEST_F(InsertMoved, GoesIntoTheModelOfALayoutWithoutViewport)
{
    const CloneDrawing from({.entities = kPoint});
    const CloneDrawing to(
        {.header = "9 $TILEMODE\n70 0\n", .tables = kLayoutTables, .objects = layoutWith("0")});
    ASSERT_EQ(to.database().insert(AcGeMatrix3d::kIdentity, &from.database()), Acad::eOk);
    EXPECT_EQ(to.reloaded().model(), "POINT 10=1 20=1 30=0\n");
}

TEST_F(InsertMoved, NeedsAnotherDrawing)
{
    const CloneDrawing to;
    EXPECT_EQ(to.database().insert(AcGeMatrix3d::kIdentity, &to.database()), Acad::eWrongDatabase);
    EXPECT_EQ(to.database().insert(AcGeMatrix3d::kIdentity, nullptr), Acad::eNullObjectPointer);
}

} // namespace

} // namespace corma::host
