#include "host/acdb_object.h"
#include "host/model/Store.h"
#include "support/OpenObjects.h"
#include "support/TestDrawing.h"
#include "support/small_drawing.h"

#include <gtest/gtest.h>
#include <set>

namespace corma::host {

namespace {

using corma::testing::kSmallDrawing;
using corma::testing::kSmallDrawingR12;
using corma::testing::TestDrawing;
using corma::testing::withSections;

using StoreOfRecords = corma::testing::OpenObjects;

std::string header(std::string_view variables)
{
    return "0 SECTION\n2 HEADER\n" + std::string(variables) + "0 ENDSEC\n0 EOF\n";
}

std::wstring entryNames(Store& store, TableKind table)
{
    std::wstring all;
    for (AcDbStub* at = store.firstEntry(table); at != nullptr;
         at = store.entryBehind(table, *at)) {
        all += (all.empty() ? L"" : L" ") + store.nameOfEntry(*at);
    }
    return all;
}

// --- header --------------------------------------------------------------------------------------

struct HeaderVersionRow
{
    std::string_view text;
    DrawingVersion version;
};

TEST_F(StoreOfRecords, KnowsItsVersion)
{
    for (const HeaderVersionRow& row : {
             HeaderVersionRow {"AC1009", DrawingVersion::r12},
             HeaderVersionRow {"AC1012", DrawingVersion::r13},
             HeaderVersionRow {"AC1014", DrawingVersion::r14},
             HeaderVersionRow {"AC1015", DrawingVersion::r2000},
             HeaderVersionRow {"AC1016", DrawingVersion::r2000}, // between two releases
             HeaderVersionRow {"AC1032", DrawingVersion::r2018},
             HeaderVersionRow {"AC1099", DrawingVersion::r2018}, // later ones keep its rules
             HeaderVersionRow {"AC1002", DrawingVersion::unknown},
             HeaderVersionRow {"AC15", DrawingVersion::unknown},
             HeaderVersionRow {"ACxxxx", DrawingVersion::unknown},
             HeaderVersionRow {"", DrawingVersion::unknown},
         }) {
        TestDrawing drawing(header("9 $ACADVER\n1 " + std::string(row.text) + "\n"));
        EXPECT_EQ(drawing.store().version(), row.version) << row.text;
        EXPECT_EQ(drawing.store().versionText(), std::wstring(row.text.begin(), row.text.end()));
    }
    TestDrawing without("0 SECTION\n2 ENTITIES\n0 ENDSEC\n0 EOF\n");
    EXPECT_EQ(without.store().version(), DrawingVersion::unknown);
}

TEST_F(StoreOfRecords, ReadsAndSetsVariables)
{
    TestDrawing drawing(header("9 $ACADVER\n1 AC1015\n9 $LIMMIN\n10 1.0\n20 2.0\n9 $TILEMODE\n"
                               "70 1\n"));
    Store& store = drawing.store();
    const Groups limits = store.variable(L"$LIMMIN");
    EXPECT_EQ(limits.point(10, limits.all()), (Point {1.0, 2.0, 0.0}));
    EXPECT_TRUE(store.variable(L"$NONE").empty());
    store.setVariable(L"$TILEMODE", Group(70, 1));
    store.setVariable(L"$LIMMIN", Group(30, 3.0));
    store.setVariable(L"$TILEMODE", Group(70, 0));
    store.setVariable(L"$NEW", Group(40, 1.5));
    EXPECT_TRUE(store.isChanged());
    EXPECT_EQ(drawing.saved(),
              header("9 $ACADVER\n1 AC1015\n9 $LIMMIN\n10 1.0\n20 2.0\n30 3.0\n9 $TILEMODE\n"
                     "70 0\n9 $NEW\n40 1.5\n"));
}

TEST_F(StoreOfRecords, WithoutAHeaderHasNoVariables)
{
    TestDrawing drawing("0 SECTION\n2 ENTITIES\n0 ENDSEC\n0 EOF\n");
    drawing.store().setVariable(L"$TILEMODE", Group(70, 0));
    EXPECT_TRUE(drawing.store().variable(L"$TILEMODE").empty());
    EXPECT_FALSE(drawing.store().isChanged());
}

// --- handles -------------------------------------------------------------------------------------

TEST_F(StoreOfRecords, FindsRecordsByTheirHandles)
{
    TestDrawing drawing(kSmallDrawing);
    Store& store = drawing.store();
    ASSERT_NE(store.find(Handle {0x40}), nullptr);
    EXPECT_EQ(store.nameOf(store.find(Handle {0x40})->type), "LINE");
    EXPECT_EQ(store.find(Handle {0x999}), nullptr);
    EXPECT_EQ(store.find(Handle::none), nullptr);
}

TEST_F(StoreOfRecords, OfTwoRecordsWithOneHandleTheFirstHasIt)
{
    TestDrawing drawing(withSections("AC1015",
                                     "0 SECTION\n2 ENTITIES\n0 LINE\n5 50\n8 a\n"
                                     "0 POINT\n5 50\n8 b\n0 CIRCLE\n8 c\n0 ENDSEC\n"));
    Store& store = drawing.store();
    std::set<Handle> handles;
    Block* const model = store.findBlock(L"*Model_Space");
    ASSERT_NE(model, nullptr);
    for (AcDbStub* at = store.firstEntity(*model); at != nullptr;
         at = store.entityBehind(*model, *at)) {
        handles.insert(at->handle);
        EXPECT_EQ(store.find(at->handle), at);
    }
    EXPECT_EQ(handles.size(), 3U);
    EXPECT_EQ(store.nameOf(store.find(Handle {0x50})->type), "LINE");
    EXPECT_EQ(drawing.reloaded().saved(), drawing.saved()) << "the file keeps what it has";
}

TEST_F(StoreOfRecords, NewHandlesAreAboveAllThatTheFileHas)
{
    for (const auto& [seed, first] :
         {std::pair {"30", Handle {0x51}}, std::pair {"60", Handle {0x60}}}) {
        TestDrawing drawing("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1015\n9 $HANDSEED\n5 "
                            + std::string(seed)
                            + "\n0 ENDSEC\n0 SECTION\n2 ENTITIES\n0 LINE\n5 50\n0 ENDSEC\n0 EOF\n");
        const Handle made = drawing.store().newHandle();
        EXPECT_GE(made, first);
        EXPECT_EQ(drawing.store().find(made), nullptr);
        EXPECT_NE(drawing.store().newHandle(), made);
        TestDrawing again = drawing.reloaded();
        EXPECT_GT(again.store().newHandle(), made) << "$HANDSEED has grown";
    }
}

TEST_F(StoreOfRecords, WritesHandlesInR12OnlyWhereTheFileSaysSo)
{
    EXPECT_TRUE(TestDrawing(kSmallDrawing).store().writesHandles());
    EXPECT_TRUE(TestDrawing(kSmallDrawingR12).store().writesHandles());
    EXPECT_FALSE(TestDrawing(header("9 $ACADVER\n1 AC1009\n")).store().writesHandles());
    EXPECT_FALSE(
        TestDrawing(header("9 $ACADVER\n1 AC1009\n9 $HANDLING\n70 0\n")).store().writesHandles());
}

// --- records -------------------------------------------------------------------------------------

TEST_F(StoreOfRecords, IsWrittenAsItWasWhenNothingChanged)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        Store& store = drawing.store();
        for (AcDbStub* at = store.first(); at != nullptr; at = at->next) {
            const Opened<AcDbObject> object(at->kind == RecordKind::structure
                                                    || at->kind == RecordKind::header
                                                ? AcDbObjectId()
                                                : AcDbObjectId(at));
            EXPECT_EQ(store.groupsOf(*at).empty(), at->isImplied || at->size == 0);
        }
        store.blocks();
        store.findEntry(TableKind::layer, L"0");
        EXPECT_FALSE(store.isChanged());
        EXPECT_EQ(drawing.saved(), text);
    }
}

TEST_F(StoreOfRecords, NumbersTypesOfRecordsByTheirNames)
{
    Store store(nullptr);
    EXPECT_EQ(store.typeNamed("XRECORD"), RecordType::xrecord);
    EXPECT_EQ(store.typeNamed("VIEWPORT"), RecordType::viewport);
    const RecordType other = store.typeNamed("MLEADER");
    EXPECT_GE(other, RecordType::firstOther);
    EXPECT_EQ(store.typeNamed("MLEADER"), other);
    EXPECT_EQ(store.nameOf(other), "MLEADER");
}

TEST_F(StoreOfRecords, TellsTheTextsOfARecordWithoutKeepingIt)
{
    TestDrawing drawing(kSmallDrawing);
    EXPECT_EQ(drawing.store().textOf(drawing.stub("33"), 2), L"NUMMER");
    EXPECT_EQ(drawing.store().textOf(drawing.stub("33"), 4), L"");
    EXPECT_EQ(drawing.stub("33").resident, nullptr);
}

TEST_F(StoreOfRecords, TellsOwnersByPlaceOrByWhatTheRecordSays)
{
    TestDrawing drawing(withSections("AC1012", R"(0 SECTION
2 OBJECTS
0 DICTIONARY
5 C
100 AcDbDictionary
3 A
350 D
0 XRECORD
5 D
102 {ACAD_REACTORS
330 C
102 }
100 AcDbXrecord
0 XRECORD
5 E
330 D
100 AcDbXrecord
0 XRECORD
5 F
330 999
100 AcDbXrecord
0 ENDSEC
)"));
    Store& store = drawing.store();
    EXPECT_EQ(store.ownerOf(drawing.stub("D")), &drawing.stub("C")) << "all that R13 tells";
    EXPECT_EQ(store.ownerOf(drawing.stub("E")), &drawing.stub("D"));
    EXPECT_EQ(store.ownerOf(drawing.stub("F")), nullptr);
    EXPECT_EQ(store.ownerOf(drawing.stub("C")), nullptr);
    TestDrawing small(kSmallDrawing);
    EXPECT_EQ(small.store().ownerOf(small.stub("42")), &small.stub("41"));
    EXPECT_EQ(small.store().ownerOf(small.stub("10")), &small.stub("2"));
}

// --- tables --------------------------------------------------------------------------------------

TEST_F(StoreOfRecords, HasAllTablesAlsoWhereTheFileLacksThem)
{
    TestDrawing drawing(header("9 $ACADVER\n1 AC1015\n"));
    Store& store = drawing.store();
    for (std::size_t i = 0; i < kTableCount; ++i) {
        const auto kind = static_cast<TableKind>(i);
        AcDbStub& table = store.table(kind);
        EXPECT_TRUE(table.isImplied);
        EXPECT_EQ(store.kindOfTable(table), kind);
        EXPECT_EQ(entryNames(store, kind),
                  kind == kBlockTable ? L"*Model_Space *Paper_Space" : L"");
    }
    EXPECT_EQ(store.lastEntry(TableKind::layer), nullptr);
    EXPECT_EQ(store.kindOfTable(store.namedObjects()), std::nullopt);
}

TEST_F(StoreOfRecords, FindsEntriesByNameInAnyCase)
{
    TestDrawing drawing(kSmallDrawing);
    Store& store = drawing.store();
    EXPECT_EQ(store.findEntry(TableKind::layer, L"gevel"), &drawing.stub("11"));
    EXPECT_EQ(store.findEntry(TableKind::layer, L"Dak"), nullptr);
    EXPECT_EQ(store.findEntry(TableKind::linetype, L"gevel"), nullptr);
    EXPECT_EQ(store.findEntry(kBlockTable, L"DEUR"), &drawing.stub("30"));
    EXPECT_EQ(entryNames(store, TableKind::linetype), L"Continuous Dashed");
    EXPECT_EQ(store.lastEntry(TableKind::linetype), &drawing.stub("17"));
    EXPECT_EQ(store.entryBefore(TableKind::linetype, drawing.stub("17")), &drawing.stub("16"));
    EXPECT_EQ(store.entryBefore(TableKind::linetype, drawing.stub("16")), nullptr);
}

TEST_F(StoreOfRecords, OfTwoEntriesOfANameTheFirstCounts)
{
    TestDrawing drawing(withSections("AC1015",
                                     "0 SECTION\n2 TABLES\n0 TABLE\n2 LAYER\n5 2\n70 2\n"
                                     "0 LAYER\n5 10\n2 A\n0 LAYER\n5 11\n2 a\n0 ENDTAB\n"
                                     "0 ENDSEC\n"));
    Store& store = drawing.store();
    EXPECT_EQ(store.findEntry(TableKind::layer, L"A"), &drawing.stub("10"));
    store.erase(drawing.stub("10"), true);
    EXPECT_EQ(store.findEntry(TableKind::layer, L"A"), &drawing.stub("11"));
}

// --- blocks --------------------------------------------------------------------------------------

TEST_F(StoreOfRecords, KnowsABlockByEachOfItsRecords)
{
    TestDrawing drawing(kSmallDrawing);
    Store& store = drawing.store();
    Block* const door = store.findBlock(L"DEUR");
    ASSERT_NE(door, nullptr);
    for (const char* handle : {"30", "31", "35"}) {
        EXPECT_EQ(store.blockOf(drawing.stub(handle)), door) << handle;
    }
    EXPECT_EQ(store.blockOf(drawing.stub("32")), nullptr);
    EXPECT_EQ(store.findBlock(L"Raam"), nullptr);
    EXPECT_EQ(store.originOf(*door), (Point {1.0, 2.0, 0.0}));
}

TEST_F(StoreOfRecords, KnowsTheSpacesOfR12ByTheirModernNames)
{
    TestDrawing drawing(withSections("AC1009",
                                     "0 SECTION\n2 BLOCKS\n0 BLOCK\n8 0\n2 $MODEL_SPACE\n"
                                     "0 ENDBLK\n0 BLOCK\n8 0\n2 $PAPER_SPACE\n0 ENDBLK\n"
                                     "0 ENDSEC\n0 SECTION\n2 ENTITIES\n0 LINE\n5 50\n8 0\n"
                                     "0 LINE\n5 51\n67 1\n8 0\n0 ENDSEC\n"));
    Store& store = drawing.store();
    EXPECT_EQ(entryNames(store, kBlockTable), L"*Model_Space *Paper_Space");
    EXPECT_EQ(store.spaceOf(drawing.stub("50")), store.findBlock(L"*MODEL_SPACE"));
    EXPECT_EQ(store.spaceOf(drawing.stub("51")), store.findBlock(L"*PAPER_SPACE"));
}

TEST_F(StoreOfRecords, EntitiesOfASpaceAreThoseOfItsBlockAndThenOfTheSection)
{
    TestDrawing drawing(withSections("AC1015", R"(0 SECTION
2 BLOCKS
0 BLOCK
5 20
2 *Model_Space
0 LINE
5 40
8 0
0 ENDBLK
5 21
0 ENDSEC
0 SECTION
2 ENTITIES
0 LINE
5 41
67 1
0 LINE
5 42
8 0
0 ENDSEC
)"));
    Store& store = drawing.store();
    const Block& model = *store.findBlock(L"*Model_Space");
    EXPECT_EQ(store.firstEntity(model), &drawing.stub("40"));
    EXPECT_EQ(store.entityBehind(model, drawing.stub("40")), &drawing.stub("42"));
    EXPECT_EQ(store.entityBehind(model, drawing.stub("42")), nullptr);
    EXPECT_EQ(store.lastEntity(model), &drawing.stub("42"));
    EXPECT_EQ(store.entityBefore(model, drawing.stub("42")), &drawing.stub("40"));
    EXPECT_EQ(store.entityBefore(model, drawing.stub("40")), nullptr);
}

TEST_F(StoreOfRecords, TheLastEntityIsFoundBeyondSubEntitiesOfAnotherSpace)
{
    TestDrawing drawing(withSections("AC1015", R"(0 SECTION
2 BLOCKS
0 BLOCK
5 20
2 *Model_Space
0 LINE
5 40
8 0
0 ENDBLK
5 21
0 ENDSEC
0 SECTION
2 ENTITIES
0 INSERT
5 41
67 1
66 1
2 A
0 ATTRIB
5 42
2 B
0 SEQEND
5 43
0 ENDSEC
)"));
    Store& store = drawing.store();
    EXPECT_EQ(store.lastEntity(*store.findBlock(L"*Model_Space")), &drawing.stub("40"));
    EXPECT_EQ(store.lastEntity(*store.findBlock(L"*Paper_Space")), &drawing.stub("41"));
}

TEST_F(StoreOfRecords, PassesSubEntitiesOver)
{
    TestDrawing drawing(kSmallDrawing);
    Store& store = drawing.store();
    const Block& model = *store.findBlock(L"*Model_Space");
    EXPECT_EQ(store.entityBehind(model, drawing.stub("41")), nullptr);
    EXPECT_EQ(store.lastEntity(model), &drawing.stub("41"));
    EXPECT_EQ(Store::firstSubEntity(drawing.stub("41")), &drawing.stub("42"));
    EXPECT_EQ(Store::subEntityBehind(drawing.stub("42")), &drawing.stub("43"));
    EXPECT_EQ(Store::subEntityBehind(drawing.stub("43")), nullptr);
    EXPECT_EQ(Store::firstSubEntity(drawing.stub("40")), nullptr);
}

// --- the named objects ---------------------------------------------------------------------------

TEST_F(StoreOfRecords, MakesRoomForObjectsOnce)
{
    TestDrawing drawing(withSections("AC1015", ""));
    Store& store = drawing.store();
    EXPECT_TRUE(store.namedObjects().isImplied);
    EXPECT_EQ(store.makeRoomForObjects(), Acad::eOk);
    const std::string saved = drawing.saved();
    EXPECT_EQ(store.makeRoomForObjects(), Acad::eOk);
    EXPECT_EQ(drawing.saved(), saved);
    EXPECT_FALSE(store.namedObjects().isImplied);
    TestDrawing again = drawing.reloaded();
    EXPECT_FALSE(again.store().namedObjects().isImplied);
    EXPECT_EQ(again.store().namedObjects().handle, store.namedObjects().handle);
}

TEST_F(StoreOfRecords, HasNoRoomForObjectsBeforeR13)
{
    for (const char* version : {"AC1009", "AC1006", ""}) {
        TestDrawing drawing(withSections(version, ""));
        EXPECT_EQ(drawing.store().makeRoomForObjects(), Acad::eInvalidDwgVersion);
        EXPECT_FALSE(drawing.store().isChanged());
    }
    TestDrawing r13(withSections("AC1012", ""));
    EXPECT_EQ(r13.store().makeRoomForObjects(), Acad::eOk);
    EXPECT_EQ(r13.saved().find("281"), std::string::npos);
}

} // namespace

} // namespace corma::host
