#include "../CloneTest.h"
#include "host/clone/references.h"

#include <gtest/gtest.h>

namespace corma::host {

namespace {

using corma::testing::Clone;
using corma::testing::CloneDrawing;

// Between drawings of different versions.

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

} // namespace

} // namespace corma::host
