#include "CloneDrawing.h"
#include "host/clone/references.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

using namespace corma::host;
using corma::testing::CloneDrawing;
using corma::testing::DrawingText;
using corma::testing::RecordingServices;

namespace {

// A chair whose leg is a block of its own, on a layer with a linetype of its own.
constexpr std::string_view kChairTables = R"(
0 TABLE
2 LTYPE
5 10
100 AcDbSymbolTable
70 1
0 LTYPE
5 11
330 10
100 AcDbSymbolTableRecord
100 AcDbLinetypeTableRecord
2 DASHED
70 0
3 dashes
72 65
73 2
40 0.75
49 0.5
74 0
49 -0.25
74 0
0 ENDTAB
0 TABLE
2 LAYER
5 12
100 AcDbSymbolTable
70 1
0 LAYER
5 13
330 12
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 WOOD
70 0
62 30
6 DASHED
0 ENDTAB
0 TABLE
2 BLOCK_RECORD
5 14
100 AcDbSymbolTable
70 2
0 BLOCK_RECORD
5 15
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 CHAIR
340 0
0 BLOCK_RECORD
5 16
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 LEG
340 0
0 ENDTAB)";

constexpr std::string_view kChairBlocks = R"(
0 BLOCK
5 20
330 15
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 CHAIR
70 0
10 1.0
20 2.0
30 0.0
3 CHAIR
1
0 INSERT
5 21
330 15
100 AcDbEntity
8 WOOD
100 AcDbBlockReference
2 LEG
10 5.0
20 0.0
30 0.0
0 ENDBLK
5 22
330 15
100 AcDbEntity
8 0
100 AcDbBlockEnd
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
0 LINE
5 24
330 16
100 AcDbEntity
8 WOOD
100 AcDbLine
10 0.0
20 0.0
30 0.0
11 0.0
21 9.0
31 0.0
0 ENDBLK
5 25
330 16
100 AcDbEntity
8 0
100 AcDbBlockEnd)";

// Another leg, and another wood.
constexpr std::string_view kOtherTables = R"(
0 TABLE
2 LAYER
5 12
100 AcDbSymbolTable
70 1
0 LAYER
5 13
330 12
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 Wood
70 0
62 1
6 Continuous
0 ENDTAB
0 TABLE
2 BLOCK_RECORD
5 14
100 AcDbSymbolTable
70 1
0 BLOCK_RECORD
5 16
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 Leg
340 0
0 ENDTAB)";

constexpr std::string_view kOtherBlocks = R"(
0 BLOCK
5 23
330 16
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 Leg
70 0
10 0.0
20 0.0
30 0.0
3 Leg
1
0 CIRCLE
5 24
330 16
100 AcDbEntity
8 Wood
100 AcDbCircle
10 0.0
20 0.0
30 0.0
40 1.0
0 ENDBLK
5 25
330 16
100 AcDbEntity
8 0
100 AcDbBlockEnd)";

class Clone : public ::testing::Test
{
protected:
    RecordingServices m_services;
    CloneDrawing m_chairs {{.tables = kChairTables, .blocks = kChairBlocks}};
    CloneDrawing m_other {{.tables = kOtherTables, .blocks = kOtherBlocks}};
    AcDbIdMapping m_mapping;

    Acad::ErrorStatus cloneBlock(const CloneDrawing& from, const wchar_t* name,
                                 const CloneDrawing& to, AcDb::DuplicateRecordCloning rule)
    {
        AcDbObjectIdArray ids;
        ids.append(from.block(name));
        AcDbObjectId owner = to.database().blockTableId();
        m_mapping = AcDbIdMapping();
        m_mapping.setDestDb(&to.database());
        return from.database().wblockCloneObjects(ids, owner, m_mapping, rule);
    }

    Acad::ErrorStatus cloneToModel(const CloneDrawing& from, int entity, const CloneDrawing& to)
    {
        AcDbObjectIdArray ids;
        ids.append(from.entity(entity));
        AcDbObjectId owner = to.block(ACDB_MODEL_SPACE);
        m_mapping = AcDbIdMapping();
        return from.database().wblockCloneObjects(ids, owner, m_mapping, AcDb::kDrcIgnore);
    }

    AcDbObjectId cloneOf(AcDbObjectId source) const
    {
        AcDbIdPair pair(source, {}, false);
        return m_mapping.compute(pair) ? pair.value() : AcDbObjectId();
    }
};

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

// --- versions ------------------------------------------------------------------------------------

constexpr std::string_view kOldEntities = R"(
0 ARC
8 WALLS
6 CONTINUOUS
62 1
10 1.0
20 2.0
30 0.0
40 3.0
50 0.0
51 90.0
0 POLYLINE
8 WALLS
66 1
10 0.0
20 0.0
30 0.0
70 1
0 VERTEX
8 WALLS
10 1.0
20 1.0
30 0.0
0 SEQEND
8 WALLS
0 TEXT
8 0
7 STANDARD
10 0.0
20 0.0
30 0.0
40 2.5
1 caf\U+00E9
73 2)";

TEST_F(Clone, RecordsOfR12GetSubclassesInALaterDrawing)
{
    const CloneDrawing from({.version = "AC1009", .entities = kOldEntities});
    const CloneDrawing to;
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(cloneToModel(from, i, to), Acad::eOk);
    }
    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.model(),
              "ARC 8=WALLS 6=CONTINUOUS 62=1 10=1 20=2 30=0 40=3 50=0 51=90\n"
              "POLYLINE 8=WALLS 66=1 10=0 20=0 30=0 70=1\n"
              "  VERTEX 8=WALLS 10=1 20=1 30=0\n"
              "  SEQEND 8=WALLS\n"
              "TEXT 7=STANDARD 10=0 20=0 30=0 40=2.5 1=caf\xC3\xA9 73=2\n");
    std::string markers;
    for (const Group& group : saved.store().groupsOf(*saved.entity(0).stub())) {
        if (group.code == code::subclass) {
            markers += std::string(group.text().begin(), group.text().end()) + " ";
        }
    }
    EXPECT_EQ(markers, "AcDbEntity AcDbCircle AcDbArc ");
    // The layer that the old drawing uses without defining it.
    EXPECT_EQ(saved.described(*saved.entry(TableKind::layer, L"WALLS").stub()),
              "LAYER 2=WALLS 70=0 62=7 6=Continuous");
}

TEST_F(Clone, RecordsLoseWhatR12DoesNotKnow)
{
    const CloneDrawing to({.version = "AC1009"});
    ASSERT_EQ(cloneBlock(m_chairs, L"CHAIR", to, AcDb::kDrcIgnore), Acad::eOk);
    const CloneDrawing saved = to.reloaded();
    EXPECT_EQ(saved.content(L"CHAIR"), "INSERT 8=WOOD 2=LEG 10=5 20=0 30=0\n");
    EXPECT_EQ(saved.bytes().find("AcDb"), std::string::npos);
    EXPECT_EQ(saved.bytes().find("\n330\n"), std::string::npos);
    EXPECT_EQ(saved.described(*saved.entry(TableKind::linetype, L"DASHED").stub()),
              "LTYPE 2=DASHED 70=0 3=dashes 72=65 73=2 40=0.75 49=0.5 49=-0.25");
}

TEST_F(Clone, ATypeThatTheVersionLacksIsRefused)
{
    const CloneDrawing from({.entities = R"(
0 MTEXT
5 31
100 AcDbEntity
8 0
100 AcDbMText
10 0.0
20 0.0
30 0.0
40 2.5
1 note)"});
    const CloneDrawing to({.version = "AC1009"});
    EXPECT_EQ(cloneToModel(from, 0, to), Acad::eInvalidDwgVersion);
    EXPECT_EQ(m_services.allPrinted(),
              L"\nCannot clone a record of type MTEXT into a drawing of "
              L"version R12: that version does not have it.");
    EXPECT_FALSE(to.database().isModified());
}

TEST_F(Clone, NewerGroupsAreDroppedForAnOlderVersion)
{
    const CloneDrawing from({.version = "AC1032", .entities = R"(
0 ATTDEF
5 30
100 AcDbEntity
8 0
62 1
420 16711680
440 33554559
370 25
100 AcDbText
10 0.0
20 0.0
30 0.0
40 2.5
1 oak
100 AcDbAttributeDefinition
280 0
3 Wood?
2 WOOD
70 0
280 1)"});
    const CloneDrawing r2000({.version = "AC1015"});
    const CloneDrawing r14({.version = "AC1014"});
    ASSERT_EQ(cloneToModel(from, 0, r2000), Acad::eOk);
    ASSERT_EQ(cloneToModel(from, 0, r14), Acad::eOk);
    EXPECT_EQ(r2000.reloaded().model(),
              "ATTDEF 62=1 370=25 10=0 20=0 30=0 40=2.5 1=oak 3=Wood? "
              "2=WOOD 70=0\n");
    EXPECT_EQ(r14.reloaded().model(),
              "ATTDEF 62=1 10=0 20=0 30=0 40=2.5 1=oak 3=Wood? 2=WOOD 70=0\n");
}

TEST_F(Clone, TextGoesFromOneCodePageIntoAnother)
{
    const CloneDrawing from({.version = "AC1015",
                             .header = "9 $DWGCODEPAGE\n3 ANSI_1251\n",
                             .entities = "0 TEXT\n5 30\n100 AcDbEntity\n8 \xC4\xEE\xEC\n"
                                         "100 AcDbText\n10 0.0\n20 0.0\n30 0.0\n40 1.0\n"
                                         "1 \xC4\xEE\xEC\n100 AcDbText\n"});
    const CloneDrawing to;
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);
    EXPECT_EQ(to.reloaded().model(),
              "TEXT 8=\xD0\x94\xD0\xBE\xD0\xBC 10=0 20=0 30=0 40=1 1=\xD0\x94\xD0\xBE\xD0\xBC\n");
    const CloneDrawing western({.header = "9 $DWGCODEPAGE\n3 ANSI_1252\n"});
    ASSERT_EQ(cloneToModel(from, 0, western), Acad::eOk);
    EXPECT_EQ(western.reloaded().model(), to.model());
}

TEST_F(Clone, ArrowsAreNamedUpToR14AndPointedAtFromR2000On)
{
    const CloneDrawing old({.version = "AC1009",
                            .tables = R"(
0 TABLE
2 DIMSTYLE
70 1
0 DIMSTYLE
2 FINE
70 0
3
5 ABC
6
7 TICK
0 ENDTAB)",
                            .blocks = R"(
0 BLOCK
8 0
2 ABC
70 0
10 0.0
20 0.0
30 0.0
0 ENDBLK
8 0)",
                            .entities = R"(
0 DIMENSION
8 0
2
3 FINE
10 0.0
20 0.0
30 0.0
11 0.0
21 0.0
31 0.0
13 0.0
23 0.0
33 0.0
14 1.0
24 0.0
34 0.0
70 1)"});
    const CloneDrawing modern({.version = "AC1015"});
    ASSERT_EQ(cloneToModel(old, 0, modern), Acad::eOk);
    const CloneDrawing saved = modern.reloaded();
    EXPECT_EQ(saved.described(*saved.entry(TableKind::dimStyle, L"FINE").stub()),
              "DIMSTYLE 105=#DIMSTYLE:FINE 2=FINE 70=0 3= 342=#BLOCK_RECORD:ABC");

    const CloneDrawing back({.version = "AC1009", .header = "9 $HANDLING\n70 1\n"});
    ASSERT_EQ(cloneToModel(saved, 0, back), Acad::eOk);
    const CloneDrawing again = back.reloaded();
    const Groups style = again.store().groupsOf(*again.entry(TableKind::dimStyle, L"FINE").stub());
    EXPECT_EQ(nameIn(style[*style.find(5)]), L"ABC");
    EXPECT_FALSE(style.find(342));
    EXPECT_FALSE(again.block(L"ABC").isNull());
}

TEST_F(Clone, ABlockKeepsItsOrderOfDrawing)
{
    const CloneDrawing from({.tables = R"(
0 TABLE
2 BLOCK_RECORD
5 14
100 AcDbSymbolTable
70 1
0 BLOCK_RECORD
5 15
102 {ACAD_XDICTIONARY
360 60
102 }
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 SIGN
340 0
0 ENDTAB)",
                             .blocks = R"(
0 BLOCK
5 20
330 15
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 SIGN
70 0
10 0.0
20 0.0
30 0.0
3 SIGN
1
0 POINT
5 21
330 15
100 AcDbEntity
8 0
100 AcDbPoint
10 0.0
20 0.0
30 0.0
0 CIRCLE
5 22
330 15
100 AcDbEntity
8 0
100 AcDbCircle
10 0.0
20 0.0
30 0.0
40 1.0
0 ENDBLK
5 23
330 15
100 AcDbEntity
8 0
100 AcDbBlockEnd)",
                             .objects = R"(
0 DICTIONARY
5 C
330 0
100 AcDbDictionary
0 DICTIONARY
5 60
330 15
100 AcDbDictionary
280 1
3 ACAD_SORTENTS
360 61
0 SORTENTSTABLE
5 61
330 60
100 AcDbSortentsTable
330 15
331 21
5 22
331 22
5 21
331 99
5 98)",
                             .classes = R"(
0 CLASS
1 SORTENTSTABLE
2 AcDbSortentsTable
3 ObjectDBX Classes
90 0
91 1
280 0
281 0)"});
    const CloneDrawing to({.version = "AC1015"});
    ASSERT_EQ(cloneBlock(from, L"SIGN", to, AcDb::kDrcReplace), Acad::eOk);

    const CloneDrawing saved = to.reloaded();
    const Groups record = saved.store().groupsOf(*saved.block(L"SIGN").stub());
    const AcDbStub* const dictionary
        = saved.store().find(record.handle(360, record.braces(L"ACAD_XDICTIONARY")));
    ASSERT_NE(dictionary, nullptr);
    const Groups entries = saved.store().groupsOf(*dictionary);
    const AcDbStub* const order = saved.store().find(entries.handle(360, entries.all()));
    ASSERT_NE(order, nullptr);
    const Groups groups = saved.store().groupsOf(*order);
    const GroupRange table = groups.subclass(L"AcDbSortentsTable");
    std::string told;
    for (std::size_t i = table.begin; i < table.end; ++i) {
        told += std::string(saved.store().nameOf(saved.store().find(groups[i].handle())->type))
            + " ";
    }
    EXPECT_EQ(told, "BLOCK_RECORD POINT CIRCLE CIRCLE POINT ");
    // Its class comes along, but for the count that R2000 does not know.
    const Groups described = saved.store().classOf("SORTENTSTABLE");
    EXPECT_EQ(described.text(2, described.all()), L"AcDbSortentsTable");
    EXPECT_FALSE(described.find(91));

    // What the former definition had goes with it.
    ASSERT_EQ(cloneBlock(from, L"SIGN", saved, AcDb::kDrcReplace), Acad::eOk);
    EXPECT_TRUE(dictionary->isErased);
    EXPECT_EQ(saved.reloaded().content(L"SIGN"), to.content(L"SIGN"));
}

TEST_F(Clone, AFrozenLayerThatStaysBehindLeavesTheViewport)
{
    const CloneDrawing from({.entities = R"(
0 VIEWPORT
5 30
100 AcDbEntity
8 0
67 1
100 AcDbViewport
10 0.0
20 0.0
30 0.0
40 1.0
41 1.0
68 1
69 2
331 13
90 32)"});
    const CloneDrawing to;
    AcDbObjectIdArray ids;
    const Block& paper = *from.store().findBlock(ACDB_PAPER_SPACE);
    ids.append(AcDbObjectId(from.store().firstEntity(paper)));
    AcDbObjectId owner = to.block(ACDB_PAPER_SPACE);
    ASSERT_EQ(from.database().wblockCloneObjects(ids, owner, m_mapping, AcDb::kDrcIgnore),
              Acad::eOk);
    EXPECT_NE(to.content(L"*Paper_Space")
                  .find("VIEWPORT 67=1 10=0 20=0 30=0 40=1 41=1 68=1 69=2 "
                        "90=32\n"),
              std::string::npos);
}

TEST_F(Clone, ALongPolylineKeepsTheOrderOfItsVertices)
{
    std::string entities = "0 POLYLINE\n5 30\n100 AcDbEntity\n8 0\n100 AcDb2dPolyline\n66 1\n"
                           "10 0.0\n20 0.0\n30 0.0\n";
    std::string expected = "POLYLINE 66=1 10=0 20=0 30=0\n";
    for (int i = 0; i < 100; ++i) {
        const std::string number = std::to_string(i);
        entities += "0 VERTEX\n100 AcDbEntity\n8 0\n100 AcDbVertex\n100 AcDb2dVertex\n10 " + number
            + ".0\n20 0.0\n30 0.0\n";
        expected += "  VERTEX 10=" + number + " 20=0 30=0\n";
    }
    entities += "0 SEQEND\n100 AcDbEntity\n8 0\n";
    expected += "  SEQEND\n";
    const CloneDrawing from({.entities = entities});
    const CloneDrawing to;
    ASSERT_EQ(cloneToModel(from, 0, to), Acad::eOk);
    EXPECT_EQ(to.reloaded().model(), expected);
}

} // namespace
