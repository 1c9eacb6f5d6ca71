#include "host/Walk.h"
#include "host/acdb_block.h"
#include "host/acdb_symbol_table.h"
#include "host/host.h"
#include "support/OpenObjects.h"
#include "support/TestDrawing.h"
#include "support/small_drawing.h"

#include <gtest/gtest.h>

using corma::host::Opened;
using corma::host::TableKind;
using corma::testing::Direction;
using corma::testing::Erased;
using corma::testing::kSmallDrawing;
using corma::testing::kSmallDrawingR12;
using corma::testing::TestDrawing;
using corma::testing::withSections;

namespace {

using SymbolTable = corma::testing::OpenObjects;

template<class Table>
Opened<Table> openTable(TestDrawing& drawing, TableKind kind, AcDb::OpenMode mode = AcDb::kForRead)
{
    return Opened<Table>(AcDbObjectId(&drawing.store().table(kind)), mode);
}

Opened<AcDbLayerTable> openLayers(TestDrawing& drawing, AcDb::OpenMode mode = AcDb::kForRead)
{
    return openTable<AcDbLayerTable>(drawing, TableKind::layer, mode);
}

template<class Record>
Opened<Record> openAt(const AcDbSymbolTable& table, const wchar_t* name,
                      AcDb::OpenMode mode = AcDb::kForRead)
{
    AcDbObjectId id;
    EXPECT_EQ(table.getIdAt(name, id), Acad::eOk) << name;
    return Opened<Record>(id, mode);
}

std::wstring names(const AcDbSymbolTable& table, Direction direction = Direction::forward,
                   Erased erased = Erased::skipped)
{
    const bool forward = direction == Direction::forward;
    const bool skip = erased == Erased::skipped;
    AcDbSymbolTableIterator* made = nullptr;
    EXPECT_EQ(table.newIterator(made, forward, skip), Acad::eOk);
    const std::unique_ptr<AcDbSymbolTableIterator> walk(made);
    std::wstring all;
    for (; !walk->done(); walk->step(forward, skip)) {
        AcDbObjectId id;
        EXPECT_EQ(walk->getRecordId(id), Acad::eOk);
        all += (all.empty() ? L"" : L" ") + id.stub()->store->nameOfEntry(*id.stub());
    }
    return all;
}

template<class Record>
AcDbObjectId put(AcDbSymbolTable& table, const wchar_t* name, std::unique_ptr<Record> record)
{
    AcDbObjectId id;
    EXPECT_EQ(record->setName(name), Acad::eOk);
    EXPECT_EQ(table.add(id, record.get()), Acad::eOk);
    EXPECT_TRUE(record->isWriteEnabled());
    EXPECT_EQ(record.release()->close(), Acad::eOk);
    return id;
}

// --- reading -------------------------------------------------------------------------------------

TEST_F(SymbolTable, FindsARecordInAnyCase)
{
    TestDrawing drawing(kSmallDrawing);
    const auto layers = openLayers(drawing);
    for (const wchar_t* name : {L"Gevel", L"GEVEL", L"gevel"}) {
        AcDbObjectId id;
        EXPECT_EQ(layers->getAt(name, id), Acad::eOk);
        EXPECT_EQ(id, drawing.id("11"));
        EXPECT_TRUE(layers->has(name));
    }
    EXPECT_TRUE(layers->has(drawing.id("11")));
}

TEST_F(SymbolTable, GivesNothingForARecordThatIsNotThere)
{
    TestDrawing drawing(kSmallDrawing);
    TestDrawing other(kSmallDrawing);
    const auto layers = openLayers(drawing);
    for (const wchar_t* name : {L"", L"Geve", L"Gevels", static_cast<const wchar_t*>(nullptr)}) {
        AcDbObjectId id = drawing.id("11");
        EXPECT_EQ(layers->getIdAt(name, id), Acad::eKeyNotFound);
        EXPECT_TRUE(id.isNull());
        AcDbSymbolTableRecord* record = nullptr;
        EXPECT_EQ(layers->getAt(name, record, AcDb::kForRead), Acad::eKeyNotFound);
        EXPECT_FALSE(layers->has(name));
    }
    EXPECT_FALSE(layers->has(drawing.id("16"))); // a linetype
    EXPECT_FALSE(layers->has(drawing.id("40"))); // a line
    EXPECT_FALSE(layers->has(other.id("11")));
    EXPECT_FALSE(layers->has(AcDbObjectId()));
}

TEST_F(SymbolTable, FindsAnErasedRecordOnlyWhenAskedFor)
{
    TestDrawing drawing(kSmallDrawing);
    const auto layers = openLayers(drawing);
    ASSERT_EQ(openAt<AcDbLayerTableRecord>(*layers, L"Gevel", AcDb::kForWrite)->erase(), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(layers->getIdAt(L"Gevel", id), Acad::eKeyNotFound);
    EXPECT_EQ(layers->getIdAt(L"Gevel", id, true), Acad::eOk);
    EXPECT_EQ(id, drawing.id("11"));
    EXPECT_FALSE(layers->has(id));
    Opened<AcDbSymbolTableRecord> record;
    EXPECT_EQ(layers->getAt(L"Gevel", record.out(), AcDb::kForRead, true), Acad::eOk);
    EXPECT_EQ(drawing.savedRecord("11"), "");
}

TEST_F(SymbolTable, IsOfTheClassOfItsKind)
{
    TestDrawing drawing(kSmallDrawing);
    EXPECT_TRUE(openTable<AcDbLayerTable>(drawing, TableKind::layer));
    EXPECT_TRUE(openTable<AcDbLinetypeTable>(drawing, TableKind::linetype));
    EXPECT_TRUE(openTable<AcDbTextStyleTable>(drawing, TableKind::textStyle));
    EXPECT_TRUE(openTable<AcDbViewportTable>(drawing, TableKind::viewport));
    EXPECT_TRUE(openTable<AcDbBlockTable>(drawing, TableKind::blockRecord));
    EXPECT_EQ(openTable<AcDbLayerTable>(drawing, TableKind::linetype).status(),
              Acad::eNotThatKindOfClass);
    const auto views = openTable<AcDbSymbolTable>(drawing, TableKind::view);
    EXPECT_STREQ(views->isA()->name(), L"AcDbSymbolTable");
}

TEST_F(SymbolTable, CannotBeErased)
{
    TestDrawing drawing(kSmallDrawing);
    EXPECT_EQ(openLayers(drawing, AcDb::kForWrite)->erase(), Acad::eCannotBeErasedByCaller);
}

// --- walks ---------------------------------------------------------------------------------------

TEST_F(SymbolTable, IsWalkedBothWaysWithAndWithoutErasedRecords)
{
    TestDrawing drawing(kSmallDrawing);
    const auto layers = openLayers(drawing, AcDb::kForWrite);
    put(*layers, L"Dak", std::make_unique<AcDbLayerTableRecord>());
    EXPECT_EQ(names(*layers), L"0 Gevel Dak");
    EXPECT_EQ(names(*layers, Direction::backward), L"Dak Gevel 0");
    for (const wchar_t* erased : {L"0", L"Dak"}) {
        ASSERT_EQ(openAt<AcDbLayerTableRecord>(*layers, erased, AcDb::kForWrite)->erase(),
                  Acad::eOk);
    }
    EXPECT_EQ(names(*layers), L"Gevel");
    EXPECT_EQ(names(*layers, Direction::backward), L"Gevel");
    EXPECT_EQ(names(*layers, Direction::forward, Erased::met), L"0 Gevel Dak");
    EXPECT_EQ(names(*layers, Direction::backward, Erased::met), L"Dak Gevel 0");
}

TEST_F(SymbolTable, AWalkOverNothingIsDone)
{
    TestDrawing drawing(kSmallDrawing);
    for (const TableKind kind : {TableKind::view, TableKind::ucs}) { // there, and implied
        AcDbSymbolTableIterator* made = nullptr;
        ASSERT_EQ(openTable<AcDbSymbolTable>(drawing, kind)->newIterator(made), Acad::eOk);
        const std::unique_ptr<AcDbSymbolTableIterator> walk(made);
        EXPECT_TRUE(walk->done());
        walk->step();
        walk->step(false);
        EXPECT_TRUE(walk->done());
        AcDbObjectId id;
        EXPECT_EQ(walk->getRecordId(id), Acad::eInvalidIndex);
        AcDbSymbolTableRecord* record = nullptr;
        EXPECT_EQ(walk->getRecord(record, AcDb::kForRead), Acad::eInvalidIndex);
    }
}

TEST_F(SymbolTable, ARecordMayGoWhileItIsWalked)
{
    TestDrawing drawing(kSmallDrawing);
    const auto layers = openLayers(drawing);
    AcDbSymbolTableIterator* made = nullptr;
    ASSERT_EQ(layers->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbSymbolTableIterator> walk(made);
    int count = 0;
    for (; !walk->done(); walk->step(), ++count) {
        Opened<AcDbSymbolTableRecord> record;
        ASSERT_EQ(walk->getRecord(record.out(), AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(record->erase(), Acad::eOk);
    }
    EXPECT_EQ(count, 2);
    EXPECT_EQ(names(*layers), L"");
    walk->start();
    EXPECT_TRUE(walk->done());
    walk->start(true, false);
    EXPECT_FALSE(walk->done());
}

// --- new records ---------------------------------------------------------------------------------

TEST_F(SymbolTable, ANewLayerStandsInTheFile)
{
    TestDrawing drawing(kSmallDrawing);
    {
        const auto layers = openLayers(drawing, AcDb::kForWrite);
        put(*layers, L"Dak", std::make_unique<AcDbLayerTableRecord>());
    }
    EXPECT_EQ(drawing.savedRecord("1003"),
              "0 LAYER\n5 1003\n330 2\n100 AcDbSymbolTableRecord\n100 AcDbLayerTableRecord\n"
              "2 Dak\n70 0\n62 7\n6 Continuous\n370 -3\n390 F\n");
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(names(*openLayers(again)), L"0 Gevel Dak");
    EXPECT_EQ(again.saved(), drawing.saved());
}

TEST_F(SymbolTable, ALayerOfR12HasOnlyWhatR12Knows)
{
    TestDrawing drawing(kSmallDrawingR12);
    {
        const auto layers = openLayers(drawing, AcDb::kForWrite);
        put(*layers, L"DAK", std::make_unique<AcDbLayerTableRecord>());
    }
    const std::string saved = drawing.saved();
    EXPECT_NE(saved.find("6 DASHED\n0 LAYER\n5 "), std::string::npos);
    const std::size_t at = saved.find("2 DAK\n");
    EXPECT_EQ(saved.substr(at, saved.find("0 ENDTAB", at) - at),
              "2 DAK\n70 0\n62 7\n6 CONTINUOUS\n");
}

TEST_F(SymbolTable, RefusesWhatCannotBeARecord)
{
    TestDrawing drawing(kSmallDrawing);
    const std::string before = drawing.saved();
    AcDbLayerTableRecord layer;
    AcDbObjectId id;
    {
        const auto layers = openLayers(drawing);
        EXPECT_EQ(layers->add(id, &layer), Acad::eNotOpenForWrite);
    }
    const auto layers = openLayers(drawing, AcDb::kForWrite);
    EXPECT_EQ(layers->add(id, &layer), Acad::eInvalidInput) << "no name";
    EXPECT_EQ(layers->add(id, nullptr), Acad::eNullObjectPointer);
    ASSERT_EQ(layer.setName(L"GEVEL"), Acad::eOk);
    EXPECT_EQ(layers->add(&layer), Acad::eDuplicateKey);
    const auto present = drawing.open<AcDbLayerTableRecord>("11");
    EXPECT_EQ(layers->add(id, present.get()), Acad::eAlreadyInDb);
    AcDbLinetypeTableRecord linetype;
    ASSERT_EQ(linetype.setName(L"Dak"), Acad::eOk);
    EXPECT_EQ(layers->add(id, &linetype), Acad::eWrongObjectType);
    AcDbLayerTable nobodys;
    ASSERT_EQ(layer.setName(L"Dak"), Acad::eOk);
    EXPECT_EQ(nobodys.add(id, &layer), Acad::eNotApplicable);
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(layer.isNewObject());
    EXPECT_EQ(drawing.saved(), before);
}

TEST_F(SymbolTable, ANameIsFreeAgainOnceItsRecordIsErased)
{
    TestDrawing drawing(kSmallDrawing);
    const auto layers = openLayers(drawing, AcDb::kForWrite);
    const auto former = drawing.open<AcDbLayerTableRecord>("11", AcDb::kForWrite);
    ASSERT_EQ(former->erase(), Acad::eOk);
    const AcDbObjectId id = put(*layers, L"GEVEL", std::make_unique<AcDbLayerTableRecord>());
    EXPECT_EQ(names(*layers), L"0 GEVEL");
    EXPECT_EQ(former->erase(false), Acad::eDuplicateKey);
    ASSERT_EQ(Opened<AcDbLayerTableRecord>(id, AcDb::kForWrite)->erase(), Acad::eOk);
    EXPECT_EQ(former->erase(false), Acad::eOk);
    EXPECT_EQ(names(*layers), L"0 Gevel");
    AcDbObjectId found;
    EXPECT_EQ(layers->getIdAt(L"gevel", found), Acad::eOk);
    EXPECT_EQ(found, drawing.id("11"));
}

TEST_F(SymbolTable, ATableThatTheFileLacksComesWithItsFirstRecord)
{
    for (const char* version : {"AC1015", "AC1009"}) {
        TestDrawing drawing(withSections(version, "0 SECTION\n2 ENTITIES\n0 ENDSEC\n"));
        const std::string before = drawing.saved();
        {
            const auto styles
                = openTable<AcDbTextStyleTable>(drawing, TableKind::textStyle, AcDb::kForWrite);
            EXPECT_EQ(names(*styles), L"");
            EXPECT_EQ(drawing.saved(), before);
            put(*styles, L"Plat", std::make_unique<AcDbTextStyleTableRecord>());
            put(*styles, L"Schuin", std::make_unique<AcDbTextStyleTableRecord>());
        }
        TestDrawing again = drawing.reloaded();
        EXPECT_EQ(names(*openTable<AcDbTextStyleTable>(again, TableKind::textStyle)),
                  L"Plat Schuin");
        EXPECT_EQ(again.saved(), drawing.saved()) << version;
        EXPECT_LT(drawing.saved().find("2 TABLES"), drawing.saved().find("2 ENTITIES"));
    }
}

TEST_F(SymbolTable, NewRecordsOfAllKindsAreFoundAfterLoadingAgain)
{
    TestDrawing drawing(kSmallDrawing);
    {
        const auto linetypes
            = openTable<AcDbLinetypeTable>(drawing, TableKind::linetype, AcDb::kForWrite);
        put(*linetypes, L"Recht", std::make_unique<AcDbLinetypeTableRecord>());
        const auto views
            = openTable<AcDbViewportTable>(drawing, TableKind::viewport, AcDb::kForWrite);
        put(*views, L"Links", std::make_unique<AcDbViewportTableRecord>());
    }
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(names(*openTable<AcDbLinetypeTable>(again, TableKind::linetype)),
              L"Continuous Dashed Recht");
    EXPECT_EQ(names(*openTable<AcDbViewportTable>(again, TableKind::viewport)), L"*ACTIVE Links");
}

// --- names ---------------------------------------------------------------------------------------

TEST_F(SymbolTable, ARecordGetsAnotherName)
{
    TestDrawing drawing(kSmallDrawing);
    const auto layers = openLayers(drawing);
    const auto layer = drawing.open<AcDbLayerTableRecord>("11", AcDb::kForWrite);
    EXPECT_EQ(layer->setName(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(layer->setName(L""), Acad::eInvalidInput);
    EXPECT_EQ(layer->setName(L"0"), Acad::eDuplicateKey);
    EXPECT_FALSE(layer->isModified());
    EXPECT_EQ(layer->setName(L"GEVEL"), Acad::eOk);
    EXPECT_EQ(layer->setName(L"Dak"), Acad::eOk);
    EXPECT_EQ(names(*layers), L"0 Dak");
    EXPECT_FALSE(layers->has(L"Gevel"));
    EXPECT_TRUE(layers->has(L"dak"));
    ACHAR* copy = nullptr;
    EXPECT_EQ(layer->getName(copy), Acad::eOk);
    EXPECT_STREQ(copy, L"Dak");
    acutDelString(copy);
    EXPECT_EQ(copy, nullptr);
    EXPECT_EQ(drawing.open<AcDbLayerTableRecord>("10")->setName(L"A"), Acad::eNotOpenForWrite);
}

// --- layers --------------------------------------------------------------------------------------

TEST_F(SymbolTable, ALayerTellsWhatItIs)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const auto layers = openLayers(drawing);
        const auto linetypes = openTable<AcDbLinetypeTable>(drawing, TableKind::linetype);
        const auto first = openAt<AcDbLayerTableRecord>(*layers, L"0");
        EXPECT_EQ(first->color().colorIndex(), 7);
        EXPECT_FALSE(first->isOff() || first->isFrozen() || first->isLocked());
        EXPECT_EQ(first->lineWeight(), AcDb::kLnWtByLwDefault);
        AcDbObjectId continuous;
        ASSERT_EQ(linetypes->getIdAt(L"CONTINUOUS", continuous), Acad::eOk);
        EXPECT_EQ(first->linetypeObjectId(), continuous);

        const auto second = openAt<AcDbLayerTableRecord>(*layers, L"Gevel");
        EXPECT_EQ(second->color().colorIndex(), 3) << "it is off, but has a colour";
        EXPECT_TRUE(second->isOff());
        EXPECT_TRUE(second->isLocked());
        EXPECT_FALSE(second->isFrozen());
        AcDbObjectId dashed;
        ASSERT_EQ(linetypes->getIdAt(L"Dashed", dashed), Acad::eOk);
        EXPECT_EQ(second->linetypeObjectId(), dashed);
    }
    TestDrawing drawing(kSmallDrawing);
    EXPECT_EQ(drawing.open<AcDbLayerTableRecord>("11")->lineWeight(), 25);
}

TEST_F(SymbolTable, AColourLeavesALayerOff)
{
    TestDrawing drawing(kSmallDrawing);
    const auto layer = drawing.open<AcDbLayerTableRecord>("11", AcDb::kForWrite);
    AcCmColor color;
    EXPECT_EQ(color.colorIndex(), 256);
    EXPECT_EQ(layer->setColor(color), Acad::eInvalidInput);
    EXPECT_EQ(color.setColorIndex(257), Acad::eInvalidInput);
    EXPECT_EQ(color.setColorIndex(0), Acad::eOk);
    EXPECT_EQ(layer->setColor(color), Acad::eInvalidInput);
    for (const unsigned short index : {std::uint16_t {1}, std::uint16_t {255}}) {
        EXPECT_EQ(color.setColorIndex(index), Acad::eOk);
        EXPECT_EQ(layer->setColor(color), Acad::eOk);
        EXPECT_EQ(layer->color().colorIndex(), index);
    }
    EXPECT_TRUE(layer->isOff());
    EXPECT_EQ(drawing.savedRecord("11"),
              "0 LAYER\n5 11\n330 2\n100 AcDbSymbolTableRecord\n100 AcDbLayerTableRecord\n2 Gevel\n"
              "70 4\n62 -255\n6 DASHED\n370 25\n390 F\n");
    EXPECT_EQ(drawing.open<AcDbLayerTableRecord>("10")->setColor(color), Acad::eNotOpenForWrite);
}

TEST_F(SymbolTable, ALayerTakesALinetypeOfItsDrawing)
{
    TestDrawing drawing(kSmallDrawing);
    TestDrawing other(kSmallDrawing);
    {
        const auto layer = drawing.open<AcDbLayerTableRecord>("10", AcDb::kForWrite);
        EXPECT_EQ(layer->setLinetypeObjectId({}), Acad::eNullObjectId);
        EXPECT_EQ(layer->setLinetypeObjectId(other.id("17")), Acad::eWrongDatabase);
        EXPECT_EQ(layer->setLinetypeObjectId(drawing.id("11")), Acad::eWrongObjectType);
        EXPECT_FALSE(layer->isModified());
        EXPECT_EQ(layer->setLinetypeObjectId(drawing.id("17")), Acad::eOk);
        EXPECT_EQ(layer->linetypeObjectId(), drawing.id("17"));
    }
    EXPECT_EQ(drawing.open<AcDbLayerTableRecord>("10")->setLinetypeObjectId(drawing.id("17")),
              Acad::eNotOpenForWrite);
    AcDbLayerTableRecord fresh;
    EXPECT_TRUE(fresh.linetypeObjectId().isNull());
    EXPECT_EQ(fresh.setLinetypeObjectId(drawing.id("17")), Acad::eOk);
    EXPECT_EQ(fresh.groups().text(6, fresh.groups().all()), L"Dashed");
}

TEST_F(SymbolTable, ALayerWhoseLinetypeIsNotThereHasNone)
{
    TestDrawing drawing(kSmallDrawing);
    ASSERT_EQ(drawing.open<AcDbLinetypeTableRecord>("17", AcDb::kForWrite)->erase(), Acad::eOk);
    EXPECT_TRUE(drawing.open<AcDbLayerTableRecord>("11")->linetypeObjectId().isNull());
}

// --- linetypes -----------------------------------------------------------------------------------

std::vector<double> dashesOf(const AcDbLinetypeTableRecord& linetype)
{
    std::vector<double> dashes;
    for (int i = 0; i < linetype.numDashes(); ++i) {
        dashes.push_back(linetype.dashLengthAt(i));
    }
    return dashes;
}

std::string withLinetype(std::string_view version, std::string_view groups)
{
    const std::string markers
        = version == "AC1009" ? "" : "100 AcDbSymbolTableRecord\n100 AcDbLinetypeTableRecord\n";
    return withSections(version,
                        "0 SECTION\n2 TABLES\n0 TABLE\n2 LTYPE\n70 1\n0 LTYPE\n5 16\n" + markers
                            + "2 Dashed\n70 0\n3 _ . _\n72 65\n" + std::string(groups)
                            + "0 ENDTAB\n0 ENDSEC\n");
}

TEST_F(SymbolTable, ALinetypeTellsItsDashes)
{
    for (const char* version : {"AC1009", "AC1015"}) {
        TestDrawing drawing(
            withLinetype(version, "73 4\n40 1.0\n49 0.5\n49 -0.25\n49 0.0\n49 -0.25\n"));
        const auto linetype = drawing.open<AcDbLinetypeTableRecord>("16");
        EXPECT_EQ(dashesOf(*linetype), (std::vector {0.5, -0.25, 0.0, -0.25})) << version;
        EXPECT_EQ(linetype->dashLengthAt(-1), 0.0);
        EXPECT_EQ(linetype->dashLengthAt(4), 0.0);
    }
}

TEST_F(SymbolTable, WhatStandsBetweenTheDashesOfALinetypeIsNotTold)
{
    TestDrawing drawing(withLinetype("AC1015",
                                     "73 2\n40 1.0\n49 0.5\n74 2\n75 0\n340 0\n46 0.1\n50 0.0\n"
                                     "44 -0.1\n45 -0.05\n9 GAS\n49 -0.5\n74 0\n"));
    EXPECT_EQ(dashesOf(*drawing.open<AcDbLinetypeTableRecord>("16")), (std::vector {0.5, -0.5}));
}

TEST_F(SymbolTable, AContinuousLinetypeHasNoDashes)
{
    TestDrawing drawing(kSmallDrawing);
    EXPECT_EQ(drawing.open<AcDbLinetypeTableRecord>("16")->numDashes(), 0);
    const AcDbLinetypeTableRecord fresh;
    EXPECT_EQ(fresh.numDashes(), 0);
    EXPECT_EQ(fresh.dashLengthAt(0), 0.0);
}

TEST_F(SymbolTable, TheDashesOfALinetypeAreThoseThatItHasWhateverItsCountTells)
{
    TestDrawing drawing(withLinetype("AC1015", "73 7\n40 1.0\n49 0.5\n49 -0.5\n"));
    EXPECT_EQ(drawing.open<AcDbLinetypeTableRecord>("16")->numDashes(), 2);
}

} // namespace
