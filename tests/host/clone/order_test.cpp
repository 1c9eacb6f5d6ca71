#include "../CloneTest.h"

#include <gtest/gtest.h>

namespace corma::host {

namespace {

using corma::testing::Clone;
using corma::testing::CloneDrawing;

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

} // namespace corma::host
