#include "CloneTest.h"

#include <gtest/gtest.h>

namespace corma::host {

namespace {

using corma::testing::Clone;
using corma::testing::CloneDrawing;
using corma::testing::kOtherTables;

TEST_F(Clone, ABlockBringsItsBlocksLayersAndLinetypes)
{
    const CloneDrawing to;
    ASSERT_EQ(cloneBlock(m_chairs, L"CHAIR", to, AcDb::kDrcReplace), Acad::eOk);

    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.content(L"chair"), "INSERT 8=WOOD 2=LEG 10=5 20=0 30=0\n");
    EXPECT_EQ(saved.content(L"LEG"), "LINE 8=WOOD 10=0 20=0 30=0 11=0 21=9 31=0\n");
    EXPECT_EQ(saved.described(*saved.entry(TableKind::layer, L"WOOD").stub()),
              "LAYER 2=WOOD 70=0 62=30 6=DASHED");
    EXPECT_FALSE(saved.entry(TableKind::linetype, L"DASHED").isNull());
    EXPECT_EQ(saved.store().originOf(*saved.store().findBlock(L"CHAIR")).y, 2.0);
    EXPECT_EQ(openObjectCount(), 0);
}

TEST_F(Clone, TheMappingLeadsFromEachRecordToItsClone)
{
    const CloneDrawing to;
    ASSERT_EQ(cloneBlock(m_chairs, L"CHAIR", to, AcDb::kDrcReplace), Acad::eOk);

    AcDbIdMappingIter walk(m_mapping);
    AcDbIdPair first;
    ASSERT_TRUE(walk.getMap(first));
    EXPECT_EQ(first.key(), m_chairs.block(L"CHAIR"));
    EXPECT_EQ(first.value(), to.block(L"CHAIR"));
    EXPECT_TRUE(first.isCloned());
    EXPECT_EQ(cloneOf(m_chairs.entry(TableKind::layer, L"WOOD")),
              to.entry(TableKind::layer, L"WOOD"));
    EXPECT_EQ(m_mapping.destDb(), &to.database());
}

TEST_F(Clone, ClonesHaveHandlesOfTheirOwnAndTheSeedGrows)
{
    ASSERT_EQ(cloneBlock(m_chairs, L"CHAIR", m_other, AcDb::kDrcIgnore), Acad::eOk);

    const CloneDrawing saved = m_other.reloaded();
    const AcDbObjectId chair = saved.block(L"CHAIR");
    ASSERT_FALSE(chair.isNull());
    EXPECT_GT(chair.stub()->handle, Handle {0x25});
    const Groups begin = saved.store().groupsOf(*saved.store().findBlock(L"CHAIR")->begin);
    EXPECT_EQ(begin.ownerHandle(), chair.stub()->handle);
    for (AcDbStub* at = saved.store().first(); at != nullptr; at = at->next) {
        if (at->handle != Handle::none && !at->isImplied) {
            EXPECT_EQ(saved.store().find(at->handle), at);
        }
    }
}

struct MergeRow
{
    const char* name;
    AcDb::DuplicateRecordCloning rule;
    const char* layers;
    const char* blocks;
    const char* leg;
    const char* chair;
};

class Merging : public Clone, public ::testing::WithParamInterface<MergeRow>
{
};

TEST_P(Merging, OfNamesFollowsTheRule)
{
    const MergeRow& row = GetParam();
    ASSERT_EQ(cloneBlock(m_chairs, L"CHAIR", m_other, row.rule), Acad::eOk);

    const CloneDrawing saved = m_other.reloaded();
    EXPECT_EQ(saved.names(TableKind::layer), row.layers);
    EXPECT_EQ(saved.names(TableKind::blockRecord), row.blocks);
    EXPECT_EQ(saved.content(L"LEG"), row.leg);
    EXPECT_EQ(saved.content(L"CHAIR"), row.chair);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Clone, Merging, ::testing::Values(
    MergeRow {"IgnoringKeepsWhatIsThere", AcDb::kDrcIgnore,
        "Wood", "Leg CHAIR *Model_Space *Paper_Space",
        "CIRCLE 8=Wood 10=0 20=0 30=0 40=1\n",
        "INSERT 8=WOOD 2=LEG 10=5 20=0 30=0\n"},
    MergeRow {"ReplacingTakesTheContentOver", AcDb::kDrcReplace,
        "WOOD", "LEG CHAIR *Model_Space *Paper_Space",
        "LINE 8=WOOD 10=0 20=0 30=0 11=0 21=9 31=0\n",
        "INSERT 8=WOOD 2=LEG 10=5 20=0 30=0\n"},
    MergeRow {"ManglingKeepsBoth", AcDb::kDrcMangleName,
        "Wood $0$WOOD", "Leg CHAIR $0$LEG *Model_Space *Paper_Space",
        "CIRCLE 8=Wood 10=0 20=0 30=0 40=1\n",
        "INSERT 8=$0$WOOD 2=$0$LEG 10=5 20=0 30=0\n"}),
    [](const auto& row) { return row.param.name; });

// clang-format on

TEST_F(Clone, AReplacedRecordKeepsItsIdAndHandle)
{
    const AcDbObjectId leg = m_other.block(L"LEG");
    const Handle handle = leg.stub()->handle;
    ASSERT_EQ(cloneBlock(m_chairs, L"CHAIR", m_other, AcDb::kDrcReplace), Acad::eOk);

    EXPECT_EQ(m_other.block(L"LEG"), leg);
    EXPECT_EQ(m_other.reloaded().block(L"LEG").stub()->handle, handle);
    EXPECT_EQ(cloneOf(m_chairs.block(L"LEG")), leg);
}

TEST_F(Clone, ManglingTakesTheFirstFreeNumber)
{
    ASSERT_EQ(cloneBlock(m_chairs, L"LEG", m_other, AcDb::kDrcMangleName), Acad::eOk);
    ASSERT_EQ(cloneBlock(m_chairs, L"LEG", m_other, AcDb::kDrcMangleName), Acad::eOk);
    EXPECT_EQ(m_other.reloaded().names(TableKind::blockRecord),
              "Leg $0$LEG $1$LEG *Model_Space *Paper_Space");
    EXPECT_EQ(m_other.content(L"$1$LEG"), "LINE 8=$1$WOOD 10=0 20=0 30=0 11=0 21=9 31=0\n");
}

TEST_F(Clone, WhatIsOpenIsNotReplaced)
{
    const std::string before = m_other.bytes();
    {
        const Opened<AcDbObject> open(m_other.block(L"LEG"));
        EXPECT_EQ(cloneBlock(m_chairs, L"CHAIR", m_other, AcDb::kDrcReplace),
                  Acad::eWasOpenForRead);
        EXPECT_EQ(cloneBlock(m_chairs, L"CHAIR", m_other, AcDb::kDrcIgnore), Acad::eOk);
    }
}

TEST_F(Clone, CannotGoWhereItComesFrom)
{
    EXPECT_EQ(cloneBlock(m_chairs, L"CHAIR", m_chairs, AcDb::kDrcReplace), Acad::eWrongDatabase);
}

TEST_F(Clone, TellsWhatIsWrongWithItsArguments)
{
    AcDbObjectIdArray ids;
    ids.append(m_chairs.block(L"NO SUCH BLOCK"));
    AcDbObjectId owner = m_other.database().blockTableId();
    const auto cloned = [&](AcDb::DuplicateRecordCloning rule = AcDb::kDrcReplace) {
        AcDbIdMapping mapping;
        mapping.setDestDb(&m_other.database());
        return m_chairs.database().wblockCloneObjects(ids, owner, mapping, rule);
    };
    EXPECT_EQ(cloned(), Acad::eNullObjectId);
    ids[0] = m_other.block(L"LEG");
    EXPECT_EQ(cloned(), Acad::eWrongDatabase);
    ids[0] = m_chairs.entry(TableKind::layer, L"WOOD");
    EXPECT_EQ(cloned(), Acad::eWrongObjectType);
    ids[0] = m_chairs.block(L"CHAIR");
    EXPECT_EQ(cloned(AcDb::kDrcUnmangleName), Acad::eNotImplementedYet);
    ids[0] = m_chairs.block(ACDB_MODEL_SPACE);
    EXPECT_EQ(cloned(), Acad::eNotApplicable);
    owner.setNull();
    EXPECT_EQ(cloned(), Acad::eNullObjectId);
    EXPECT_FALSE(m_other.database().isModified());
}

TEST_F(Clone, ACircleThroughBlocksOfBothDrawingsIsRefused)
{
    // There a LEG has a CHAIR, here the CHAIR has a LEG.
    constexpr std::string_view kLegWithChair = R"(
0 BLOCK
5 23
330 16
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 LEG
70 0
10 0.0
20 0.0
30 0.0
3 LEG
1
0 INSERT
5 24
330 16
100 AcDbEntity
8 0
100 AcDbBlockReference
2 CHAIR
10 0.0
20 0.0
30 0.0
0 ENDBLK
5 25
330 16
100 AcDbEntity
8 0
100 AcDbBlockEnd)";
    const CloneDrawing to({.tables = kOtherTables, .blocks = kLegWithChair});
    const std::string before = to.bytes();

    EXPECT_EQ(cloneBlock(m_chairs, L"CHAIR", to, AcDb::kDrcIgnore), Acad::eInvalidInput);
    EXPECT_EQ(m_services.allPrinted(), L"\nCannot clone: the block chair would contain itself.");
    EXPECT_EQ(to.bytes(), before);
    EXPECT_EQ(cloneBlock(m_chairs, L"CHAIR", to, AcDb::kDrcReplace), Acad::eOk);
}

TEST_F(Clone, ATypeThatIsNotUnderstoodFailsWithoutATrace)
{
    const CloneDrawing from({.entities = R"(
0 LINE
5 30
100 AcDbEntity
8 NEW LAYER
100 AcDbLine
10 0.0
20 0.0
30 0.0
11 1.0
21 1.0
31 0.0
0 ACAD_PROXY_ENTITY
5 31
100 AcDbEntity
8 0
100 AcDbProxyEntity
90 498)"});
    const std::string before = m_other.bytes();
    AcDbObjectIdArray ids;
    ids.append(from.entity(0));
    ids.append(from.entity(1));
    AcDbObjectId owner = m_other.block(ACDB_MODEL_SPACE);
    AcDbIdMapping mapping;

    EXPECT_EQ(from.database().wblockCloneObjects(ids, owner, mapping, AcDb::kDrcIgnore),
              Acad::eNotImplementedYet);
    EXPECT_EQ(m_services.allPrinted(),
              L"\nCannot clone a record of type ACAD_PROXY_ENTITY: its "
              L"content is not understood.");
    EXPECT_EQ(m_other.bytes(), before);
    EXPECT_FALSE(AcDbIdMappingIter(mapping).getMap(*std::make_unique<AcDbIdPair>()));
}

TEST_F(Clone, ExtensionDictionariesComeAlongAndPointersFollow)
{
    const CloneDrawing from({.entities = R"(
0 CIRCLE
5 30
102 {ACAD_REACTORS
330 42
330 99
102 }
102 {ACAD_XDICTIONARY
360 40
102 }
330 1F
100 AcDbEntity
8 0
100 AcDbCircle
10 0.0
20 0.0
30 0.0
40 2.0
1001 MAKER
1000 made
1005 30
1005 99)",
                             .objects = R"(
0 DICTIONARY
5 C
330 0
100 AcDbDictionary
281 1
0 DICTIONARY
5 40
330 30
100 AcDbDictionary
280 1
281 1
3 SETTINGS
360 41
3 LOST
360 98
0 XRECORD
5 41
330 40
100 AcDbXrecord
280 1
1 text
5 AB
330 30
340 42
102 {ANY
70 7
320 99
0 XRECORD
5 42
330 41
100 AcDbXrecord
280 1
90 7)"});
    const CloneDrawing to;
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);

    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.model(),
              "CIRCLE 102={ACAD_REACTORS 330=#XRECORD 102=} 102={ACAD_XDICTIONARY "
              "360=#DICTIONARY 102=} 10=0 20=0 30=0 40=2 1001=MAKER 1000=made 1005=#CIRCLE "
              "1005=#0\n");
    EXPECT_FALSE(saved.entry(TableKind::appId, L"MAKER").isNull());
    const Groups circle = saved.store().groupsOf(*saved.entity(0).stub());
    const AcDbStub* const dictionary
        = saved.store().find(circle.handle(360, circle.braces(L"ACAD_XDICTIONARY")));
    ASSERT_NE(dictionary, nullptr);
    EXPECT_EQ(saved.described(*dictionary), "DICTIONARY 280=1 281=1 3=SETTINGS 360=#XRECORD");
    EXPECT_EQ(saved.store().ownerOf(*dictionary), saved.entity(0).stub());
    const Groups groups = saved.store().groupsOf(*dictionary);
    const AcDbStub* const settings = saved.store().find(groups.handle(360, groups.all()));
    ASSERT_NE(settings, nullptr);
    EXPECT_EQ(saved.described(*settings),
              "XRECORD 280=1 1=text 330=#CIRCLE 340=#XRECORD "
              "102={ANY 70=7 320=#0");
    EXPECT_EQ(saved.store().ownerOf(*settings), dictionary);
}

TEST_F(Clone, ADimensionBringsItsStyleItsArrowsAndItsPictureUnderAFreshName)
{
    const CloneDrawing from({.tables = R"(
0 TABLE
2 DIMSTYLE
5 50
100 AcDbSymbolTable
70 1
0 DIMSTYLE
105 51
330 50
100 AcDbSymbolTableRecord
100 AcDbDimStyleTableRecord
2 FINE
70 0
340 61
342 53
0 ENDTAB
0 TABLE
2 STYLE
5 60
100 AcDbSymbolTable
70 1
0 STYLE
5 61
330 60
100 AcDbSymbolTableRecord
100 AcDbTextStyleTableRecord
2 NARROW
70 0
40 0.0
41 0.5
3 romans.shx
0 ENDTAB
0 TABLE
2 BLOCK_RECORD
5 14
100 AcDbSymbolTable
70 2
0 BLOCK_RECORD
5 53
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 _DOT
340 0
0 BLOCK_RECORD
5 54
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 *D1
340 0
0 ENDTAB)",
                             .blocks = R"(
0 BLOCK
5 70
330 53
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 _DOT
70 0
10 0.0
20 0.0
30 0.0
3 _DOT
1
0 ENDBLK
5 71
330 53
100 AcDbEntity
8 0
100 AcDbBlockEnd
0 BLOCK
5 72
330 54
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 *D1
70 1
10 0.0
20 0.0
30 0.0
3 *D1
1
0 POINT
5 73
330 54
100 AcDbEntity
8 0
100 AcDbPoint
10 3.0
20 0.0
30 0.0
0 ENDBLK
5 74
330 54
100 AcDbEntity
8 0
100 AcDbBlockEnd)",
                             .entities = R"(
0 DIMENSION
5 30
100 AcDbEntity
8 0
100 AcDbDimension
2 *D1
10 1.0
20 0.0
30 0.0
11 1.0
21 0.0
31 0.0
70 33
3 FINE
100 AcDbAlignedDimension
13 0.0
23 0.0
33 0.0
14 4.0
24 0.0
34 0.0)"});
    const CloneDrawing to;
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);

    const CloneDrawing saved = to.reloaded();
    EXPECT_NE(saved.model().find(" 2=*D1 "), std::string::npos);
    EXPECT_NE(saved.model().find(" 2=*D2 "), std::string::npos);
    EXPECT_EQ(saved.content(L"*D2"), "POINT 10=3 20=0 30=0\n");
    EXPECT_EQ(saved.described(*saved.entry(TableKind::dimStyle, L"FINE").stub()),
              "DIMSTYLE 105=#DIMSTYLE:FINE 2=FINE 70=0 340=#STYLE:NARROW "
              "342=#BLOCK_RECORD:_DOT");
}

TEST_F(Clone, ObjectsGoIntoADictionaryUnderTheirNames)
{
    constexpr std::string_view kObjects = R"(
0 DICTIONARY
5 C
330 0
100 AcDbDictionary
281 1
3 HOUSE
350 40
0 DICTIONARY
5 40
330 C
100 AcDbDictionary
281 1
3 DOOR
350 41
0 XRECORD
5 41
330 40
100 AcDbXrecord
280 1
1 oak)";
    const CloneDrawing from({.objects = kObjects});
    const CloneDrawing to;
    AcDbObjectIdArray ids;
    ids.append(AcDbObjectId(from.object(L"HOUSE")));
    AcDbObjectId owner = to.database().namedObjectsDictionaryId();
    AcDbIdMapping mapping;
    ASSERT_EQ(from.database().wblockCloneObjects(ids, owner, mapping, AcDb::kDrcIgnore), Acad::eOk);
    ASSERT_EQ(from.database().wblockCloneObjects(ids, owner, mapping, AcDb::kDrcMangleName),
              Acad::eOk);

    const CloneDrawing saved = to.reloaded();
    const AcDbStub* const door = saved.object(L"HOUSE/DOOR");
    ASSERT_NE(door, nullptr);
    EXPECT_EQ(saved.described(*door), "XRECORD 280=1 1=oak");
    EXPECT_NE(saved.object(L"$0$HOUSE/DOOR"), nullptr);
    EXPECT_EQ(openObjectCount(), 0);
}

TEST_F(Clone, WhatHangsInANamedDictionaryFindsItsPlaceThere)
{
    constexpr std::string_view kStyleObjects = R"(
0 DICTIONARY
5 C
330 0
100 AcDbDictionary
281 1
3 ACAD_MLINESTYLE
350 40
0 DICTIONARY
5 40
330 C
100 AcDbDictionary
281 1
3 WALL
350 41
0 MLINESTYLE
5 41
102 {ACAD_REACTORS
330 40
102 }
330 40
100 AcDbMlineStyle
2 WALL
70 0
3 a wall
62 256
51 90.0
52 90.0
71 1
49 0.5
62 256
6 BYLAYER)";
    const CloneDrawing from({.entities = R"(
0 MLINE
5 30
100 AcDbEntity
8 0
100 AcDbMline
2 WALL
340 41
40 1.0)",
                             .objects = kStyleObjects});
    const CloneDrawing to;
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);

    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.model(),
              "MLINE 2=WALL 340=#MLINESTYLE 40=1\nMLINE 2=WALL 340=#MLINESTYLE "
              "40=1\n");
    const AcDbStub* const style = saved.object(L"ACAD_MLINESTYLE/WALL");
    ASSERT_NE(style, nullptr);
    EXPECT_EQ(saved.described(*style).substr(0, 72),
              "MLINESTYLE 102={ACAD_REACTORS 330=#DICTIONARY 102=} 2=WALL 70=0 3=a wall");
}

TEST_F(Clone, ALeaderBringsTheTextThatItPointsWith)
{
    const CloneDrawing from({.entities = R"(
0 LEADER
5 30
100 AcDbEntity
8 0
100 AcDbLeader
3 Standard
76 1
10 0.0
20 0.0
30 0.0
340 31
0 MTEXT
5 31
102 {ACAD_REACTORS
330 30
102 }
100 AcDbEntity
8 0
100 AcDbMText
10 0.0
20 0.0
30 0.0
40 2.5
1 note)"});
    const CloneDrawing to;
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);
    EXPECT_EQ(to.reloaded().model(),
              "LEADER 3=Standard 76=1 10=0 20=0 30=0 340=#MTEXT\n"
              "MTEXT 102={ACAD_REACTORS 330=#LEADER 102=} 10=0 20=0 30=0 40=2.5 1=note\n");
}

TEST_F(Clone, AHatchLosesTheBoundariesThatStayBehind)
{
    const CloneDrawing from({.entities = R"(
0 HATCH
5 30
100 AcDbEntity
8 0
100 AcDbHatch
10 0.0
20 0.0
30 0.0
2 SOLID
91 1
92 1
93 0
97 2
330 31
330 32
75 1
98 0
0 LINE
5 31
100 AcDbEntity
8 0
100 AcDbLine
10 0.0
20 0.0
30 0.0
11 0.0
21 0.0
31 0.0)"});
    const CloneDrawing to;
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);
    EXPECT_EQ(to.model(), "HATCH 10=0 20=0 30=0 2=SOLID 91=1 92=1 93=0 97=0 75=1 98=0\n");
}

} // namespace

} // namespace corma::host
