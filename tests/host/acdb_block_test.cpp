#include "host/Walk.h"
#include "host/acdb_block.h"
#include "host/acdb_entity.h"
#include "platform/text.h"
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

using Block = corma::testing::OpenObjects;

Opened<AcDbBlockTable> openBlocks(TestDrawing& drawing, AcDb::OpenMode mode = AcDb::kForRead)
{
    return Opened<AcDbBlockTable>(AcDbObjectId(&drawing.store().table(TableKind::blockRecord)),
                                  mode);
}

Opened<AcDbBlockTableRecord> openBlock(TestDrawing& drawing, const wchar_t* name,
                                       AcDb::OpenMode mode = AcDb::kForRead)
{
    AcDbObjectId id;
    EXPECT_EQ(openBlocks(drawing)->getIdAt(name, id), Acad::eOk) << name;
    return Opened<AcDbBlockTableRecord>(id, mode);
}

std::wstring blockNames(TestDrawing& drawing)
{
    AcDbSymbolTableIterator* made = nullptr;
    EXPECT_EQ(openBlocks(drawing)->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbSymbolTableIterator> walk(made);
    std::wstring all;
    for (; !walk->done(); walk->step()) {
        Opened<AcDbSymbolTableRecord> record;
        EXPECT_EQ(walk->getRecord(record.out(), AcDb::kForRead), Acad::eOk);
        std::wstring name;
        record->getName(name);
        all += (all.empty() ? L"" : L" ") + name;
    }
    return all;
}

// The handles of a block's entities.
std::wstring entities(const AcDbBlockTableRecord& block, Direction direction = Direction::forward,
                      Erased erased = Erased::skipped)
{
    const bool forward = direction == Direction::forward;
    const bool skip = erased == Erased::skipped;
    AcDbBlockTableRecordIterator* made = nullptr;
    EXPECT_EQ(block.newIterator(made, forward, skip), Acad::eOk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> walk(made);
    std::wstring all;
    for (; !walk->done(); walk->step(forward, skip)) {
        AcDbObjectId id;
        EXPECT_EQ(walk->getEntityId(id), Acad::eOk);
        all += (all.empty() ? L"" : L" ") + corma::host::toText(id.stub()->handle);
    }
    return all;
}

template<class Entity>
AcDbObjectId append(AcDbBlockTableRecord& block, std::unique_ptr<Entity> entity)
{
    AcDbObjectId id;
    EXPECT_EQ(block.appendAcDbEntity(id, entity.get()), Acad::eOk);
    EXPECT_TRUE(entity->isWriteEnabled());
    EXPECT_EQ(entity.release()->close(), Acad::eOk);
    return id;
}

// A new block with a text in it.
void addBlock(TestDrawing& drawing, const wchar_t* name)
{
    const auto blocks = openBlocks(drawing, AcDb::kForWrite);
    auto made = std::make_unique<AcDbBlockTableRecord>();
    ASSERT_EQ(made->setName(name), Acad::eOk);
    ASSERT_EQ(blocks->add(made.get()), Acad::eOk);
    const Opened<AcDbBlockTableRecord> block(made.release());
    append(*block, std::make_unique<AcDbText>());
}

std::size_t count(const std::string& text, std::string_view part)
{
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

// --- reading -------------------------------------------------------------------------------------

TEST_F(Block, AreListedWithTheSpaces)
{
    TestDrawing drawing(kSmallDrawing);
    TestDrawing old(kSmallDrawingR12);
    EXPECT_EQ(blockNames(drawing), L"*Model_Space *Paper_Space Deur");
    EXPECT_EQ(blockNames(old), L"DEUR *Model_Space *Paper_Space");
}

TEST_F(Block, TellsWhatItIs)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const auto door = openBlock(drawing, L"deur");
        EXPECT_EQ(door->origin(), AcGePoint3d(1.0, 2.0, 0.0));
        EXPECT_TRUE(door->hasAttributeDefinitions());
        EXPECT_FALSE(door->isLayout());
        EXPECT_FALSE(door->isAnonymous());
        const auto model = openBlock(drawing, ACDB_MODEL_SPACE);
        EXPECT_FALSE(model->hasAttributeDefinitions());
        EXPECT_TRUE(model->isLayout());
        EXPECT_FALSE(model->isAnonymous());
        EXPECT_TRUE(openBlock(drawing, ACDB_PAPER_SPACE)->isLayout());
    }
}

TEST_F(Block, OfAnotherLayoutIsALayoutAndOneWithAStarIsAnonymous)
{
    TestDrawing drawing(kSmallDrawing);
    addBlock(drawing, L"*Paper_Space0");
    addBlock(drawing, L"*U1");
    EXPECT_TRUE(openBlock(drawing, L"*PAPER_SPACE0")->isLayout());
    EXPECT_FALSE(openBlock(drawing, L"*u1")->isLayout());
    EXPECT_TRUE(openBlock(drawing, L"*u1")->isAnonymous());
}

TEST_F(Block, IsWalkedBothWays)
{
    struct Row
    {
        const wchar_t* block;
        std::wstring forward;
        std::wstring backward;
    };

    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        for (const Row& row :
             {Row {L"Deur", L"32 33 34", L"34 33 32"}, Row {ACDB_MODEL_SPACE, L"40 41", L"41 40"},
              Row {ACDB_PAPER_SPACE, L"44 45", L"45 44"}}) {
            const auto block = openBlock(drawing, row.block);
            EXPECT_EQ(entities(*block), row.forward);
            EXPECT_EQ(entities(*block, Direction::backward), row.backward);
        }
    }
}

TEST_F(Block, IsWalkedWithoutErasedEntitiesUnlessTheyAreAskedFor)
{
    TestDrawing drawing(kSmallDrawing);
    const auto door = openBlock(drawing, L"Deur");
    for (const char* handle : {"32", "34"}) {
        ASSERT_EQ(drawing.open<AcDbEntity>(handle, AcDb::kForWrite)->erase(), Acad::eOk);
    }
    EXPECT_EQ(entities(*door), L"33");
    EXPECT_EQ(entities(*door, Direction::backward), L"33");
    EXPECT_EQ(entities(*door, Direction::forward, Erased::met), L"32 33 34");
    EXPECT_EQ(entities(*door, Direction::backward, Erased::met), L"34 33 32");
}

TEST_F(Block, AWalkOpensTheEntities)
{
    TestDrawing drawing(kSmallDrawing);
    const auto door = openBlock(drawing, L"Deur");
    AcDbBlockTableRecordIterator* made = nullptr;
    ASSERT_EQ(door->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> walk(made);
    int erased = 0;
    for (; !walk->done(); walk->step(), ++erased) {
        Opened<AcDbEntity> entity;
        ASSERT_EQ(walk->getEntity(entity.out(), AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(entity->erase(), Acad::eOk);
    }
    EXPECT_EQ(erased, 3);
    EXPECT_EQ(entities(*door), L"");
    AcDbObjectId id;
    EXPECT_EQ(walk->getEntityId(id), Acad::eInvalidIndex);
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(walk->getEntity(entity, AcDb::kForRead), Acad::eInvalidIndex);
    walk->step();
    EXPECT_TRUE(walk->done());
    walk->start(true, false);
    EXPECT_EQ(walk->getEntity(entity, AcDb::kForRead), Acad::eWasErased);
    ASSERT_EQ(walk->getEntity(entity, AcDb::kForRead, true), Acad::eOk);
    entity->close();
}

TEST_F(Block, EntitiesKnowTheBlockThatTheyAreIn)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const AcDbObjectId model = openBlock(drawing, ACDB_MODEL_SPACE)->objectId();
        EXPECT_EQ(drawing.open<AcDbEntity>("33")->blockId(),
                  openBlock(drawing, L"Deur")->objectId());
        EXPECT_EQ(drawing.open<AcDbEntity>("40")->blockId(), model);
        EXPECT_EQ(drawing.open<AcDbEntity>("42")->blockId(), model);
        EXPECT_EQ(drawing.open<AcDbEntity>("42")->ownerId(), drawing.id("41"));
        EXPECT_EQ(drawing.open<AcDbEntity>("44")->blockId(),
                  openBlock(drawing, ACDB_PAPER_SPACE)->objectId());
    }
}

// --- new blocks and entities ---------------------------------------------------------------------

TEST_F(Block, ANewOneIsThereAfterLoadingAgain)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const std::string before = drawing.saved();
        addBlock(drawing, L"RAAM");
        TestDrawing again = drawing.reloaded();
        const auto window = openBlock(again, L"raam");
        EXPECT_EQ(window->origin(), AcGePoint3d::kOrigin);
        EXPECT_EQ(entities(*window), entities(*openBlock(drawing, L"raam")));
        EXPECT_NE(entities(*window), L"");
        EXPECT_EQ(again.saved(), drawing.saved());
        EXPECT_EQ(count(drawing.saved(), "\n0 BLOCK\n"), count(before, "\n0 BLOCK\n") + 1);
        EXPECT_EQ(count(drawing.saved(), "\n0 ENDBLK\n"), count(before, "\n0 ENDBLK\n") + 1);
    }
}

TEST_F(Block, ANewOneStandsInTheFileWithItsOwner)
{
    TestDrawing drawing(kSmallDrawing);
    addBlock(drawing, L"Raam");
    const auto window = openBlock(drawing, L"Raam");
    EXPECT_EQ(window->ownerId(), openBlocks(drawing)->objectId());
    EXPECT_EQ(drawing.savedRecord("1003"),
              "0 BLOCK_RECORD\n5 1003\n330 1\n100 AcDbSymbolTableRecord\n"
              "100 AcDbBlockTableRecord\n2 Raam\n340 0\n");
    EXPECT_EQ(drawing.savedRecord("1004"),
              "0 BLOCK\n5 1004\n330 1003\n100 AcDbEntity\n8 0\n100 AcDbBlockBegin\n2 Raam\n70 0\n"
              "10 0.0\n20 0.0\n30 0.0\n3 Raam\n1 \n");
    EXPECT_EQ(
        drawing.savedRecord("1006"),
        "0 TEXT\n5 1006\n330 1003\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0.0\n20 0.0\n30 0.0\n"
        "40 1.0\n1 \n100 AcDbText\n");
}

TEST_F(Block, ANewEntityIsTheLastOfItsSpace)
{
    TestDrawing drawing(kSmallDrawing);
    const std::string before = drawing.saved();
    AcDbObjectId inModel;
    AcDbObjectId inPaper;
    {
        const auto model = openBlock(drawing, ACDB_MODEL_SPACE, AcDb::kForWrite);
        inModel = append(*model, std::make_unique<AcDbText>());
        const auto paper = openBlock(drawing, ACDB_PAPER_SPACE, AcDb::kForWrite);
        inPaper = append(*paper, std::make_unique<AcDbText>());
        EXPECT_EQ(entities(*model), L"40 41 1003");
        EXPECT_EQ(entities(*paper), L"44 45 1004");
    }
    EXPECT_EQ(Opened<AcDbEntity>(inPaper)->blockId(),
              openBlock(drawing, ACDB_PAPER_SPACE)->objectId());
    EXPECT_EQ(drawing.savedRecord("1003"),
              "0 TEXT\n5 1003\n330 1F\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0.0\n20 0.0\n30 0.0\n"
              "40 1.0\n1 \n100 AcDbText\n");
    EXPECT_EQ(drawing.savedRecord("1004"),
              "0 TEXT\n5 1004\n330 1B\n100 AcDbEntity\n67 1\n410 Blad 1\n8 0\n100 AcDbText\n"
              "10 0.0\n20 0.0\n30 0.0\n40 1.0\n1 \n100 AcDbText\n");
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(entities(*openBlock(again, ACDB_PAPER_SPACE)), L"44 45 1004");
}

TEST_F(Block, ANewEntityHasTheLayoutOfItsSpaceAlsoWhenAllOthersAreErased)
{
    TestDrawing drawing(kSmallDrawing);
    const auto paper = openBlock(drawing, ACDB_PAPER_SPACE, AcDb::kForWrite);
    for (AcDbStub* at = drawing.store().firstEntity(*drawing.store().blockOf(*paper->stub()));
         at != nullptr;
         at = drawing.store().entityBehind(*drawing.store().blockOf(*paper->stub()), *at)) {
        Opened<AcDbEntity>(AcDbObjectId(at), AcDb::kForWrite)->erase();
    }
    append(*paper, std::make_unique<AcDbText>());
    EXPECT_EQ(entities(*paper), L"1003");
    EXPECT_NE(drawing.savedRecord("1003").find("410 Blad 1\n"), std::string::npos);
}

TEST_F(Block, ANewEntityOfR12HasOnlyWhatR12Knows)
{
    TestDrawing drawing(kSmallDrawingR12);
    const AcDbObjectId id = append(*openBlock(drawing, ACDB_PAPER_SPACE, AcDb::kForWrite),
                                   std::make_unique<AcDbText>());
    const std::string handle = corma::toUtf8(corma::host::toText(id.stub()->handle));
    EXPECT_EQ(drawing.savedRecord(handle),
              "0 TEXT\n5 " + handle
                  + "\n67 1\n8 0\n10 0.0\n20 0.0\n30 0.0\n40 1.0\n"
                    "1 \n");
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(entities(*openBlock(again, ACDB_PAPER_SPACE)),
              entities(*openBlock(drawing, ACDB_PAPER_SPACE)));
}

TEST_F(Block, ADrawingWithoutEntitiesGetsTheSectionWithTheFirst)
{
    TestDrawing drawing(withSections("AC1015", ""));
    {
        const auto model = openBlock(drawing, ACDB_MODEL_SPACE, AcDb::kForWrite);
        EXPECT_EQ(entities(*model), L"");
        append(*model, std::make_unique<AcDbText>());
    }
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(entities(*openBlock(again, ACDB_MODEL_SPACE)),
              entities(*openBlock(drawing, ACDB_MODEL_SPACE)));
    EXPECT_EQ(drawing.saved().find("330 "), std::string::npos) << "the file has no record to name";
}

TEST_F(Block, ADrawingWithoutBlocksGetsTheSectionsWithTheFirst)
{
    for (const char* version : {"AC1015", "AC1009"}) {
        TestDrawing drawing(withSections(version, "0 SECTION\n2 ENTITIES\n0 ENDSEC\n"));
        addBlock(drawing, L"RAAM");
        TestDrawing again = drawing.reloaded();
        EXPECT_EQ(entities(*openBlock(again, L"Raam")), entities(*openBlock(drawing, L"Raam")));
        EXPECT_EQ(again.saved(), drawing.saved());
        EXPECT_LT(drawing.saved().find("2 BLOCKS"), drawing.saved().find("2 ENTITIES"));
    }
}

TEST_F(Block, RefusesWhatCannotBeAnEntity)
{
    TestDrawing drawing(kSmallDrawing);
    const std::string before = drawing.saved();
    AcDbText text;
    AcDbObjectId id;
    EXPECT_EQ(openBlock(drawing, L"Deur")->appendAcDbEntity(id, &text), Acad::eNotOpenForWrite);
    const auto door = openBlock(drawing, L"Deur", AcDb::kForWrite);
    EXPECT_EQ(door->appendAcDbEntity(id, nullptr), Acad::eNullObjectPointer);
    const auto line = drawing.open<AcDbEntity>("40");
    EXPECT_EQ(door->appendAcDbEntity(id, line.get()), Acad::eAlreadyInDb);
    AcDbAttribute attribute;
    EXPECT_EQ(door->appendAcDbEntity(&attribute), Acad::eWrongObjectType);
    AcDbBlockTableRecord nobodys;
    EXPECT_EQ(nobodys.appendAcDbEntity(id, &text), Acad::eNotApplicable);
    AcDbBlockTableRecordIterator* walk = nullptr;
    EXPECT_EQ(nobodys.newIterator(walk), Acad::eNotApplicable);
    EXPECT_EQ(walk, nullptr);
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(text.isNewObject());
    EXPECT_EQ(drawing.saved(), before);
    ASSERT_EQ(door->erase(), Acad::eOk);
    EXPECT_EQ(door->appendAcDbEntity(id, &text), Acad::eWasErased);
}

// --- erasing and renaming ------------------------------------------------------------------------

TEST_F(Block, GoesAndComesBackWithAllThatIsInIt)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const std::string before = drawing.saved();
        ASSERT_EQ(drawing.open<AcDbEntity>("34", AcDb::kForWrite)->erase(), Acad::eOk);
        const std::string withoutOne = drawing.saved();
        const auto door = openBlock(drawing, L"Deur", AcDb::kForWrite);
        ASSERT_EQ(door->erase(), Acad::eOk);
        const std::string after = drawing.saved();
        for (const char* name : {"\n2 Deur\n", "\n2 DEUR\n"}) {
            EXPECT_EQ(count(after, std::string(name) + "10 10.0"), count(after, name))
                << "but for the reference";
        }
        EXPECT_EQ(count(after, "NUMMER"), 1U);
        EXPECT_EQ(count(after, "\n0 ENDBLK\n"), count(before, "\n0 ENDBLK\n") - 1);
        EXPECT_FALSE(openBlocks(drawing)->has(L"Deur"));
        EXPECT_TRUE(drawing.open<AcDbBlockReference>("41")->blockTableRecord().isNull());
        ASSERT_EQ(door->erase(false), Acad::eOk);
        EXPECT_EQ(drawing.saved(), withoutOne);
        EXPECT_FALSE(drawing.open<AcDbBlockReference>("41")->blockTableRecord().isNull());
    }
}

TEST_F(Block, ASpaceCannotBeErasedOrRenamed)
{
    TestDrawing drawing(kSmallDrawing);
    addBlock(drawing, L"*Paper_Space0");
    for (const wchar_t* name : {ACDB_MODEL_SPACE, ACDB_PAPER_SPACE, L"*Paper_Space0"}) {
        EXPECT_EQ(openBlock(drawing, name, AcDb::kForWrite)->erase(),
                  Acad::eCannotBeErasedByCaller);
    }
    EXPECT_EQ(openBlock(drawing, ACDB_MODEL_SPACE, AcDb::kForWrite)->setName(L"A"),
              Acad::eInvalidInput);
}

TEST_F(Block, OfTheNameOfAnErasedOneIsAnotherBlock)
{
    TestDrawing drawing(kSmallDrawing);
    {
        const auto former = openBlock(drawing, L"Deur", AcDb::kForWrite);
        ASSERT_EQ(former->erase(), Acad::eOk);
        addBlock(drawing, L"DEUR");
        EXPECT_EQ(former->erase(false), Acad::eDuplicateKey);
    }
    const auto made = openBlock(drawing, L"Deur");
    EXPECT_NE(made->objectId(), drawing.id("30"));
    EXPECT_EQ(drawing.open<AcDbBlockReference>("41")->blockTableRecord(), made->objectId());
    EXPECT_EQ(blockNames(drawing), L"*Model_Space *Paper_Space DEUR");
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(blockNames(again), L"*Model_Space *Paper_Space DEUR");
}

TEST_F(Block, GetsAnotherName)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        {
            const auto door = openBlock(drawing, L"Deur", AcDb::kForWrite);
            EXPECT_EQ(door->setName(ACDB_MODEL_SPACE), Acad::eDuplicateKey);
            EXPECT_EQ(door->setName(L"POORT"), Acad::eOk);
        }
        EXPECT_FALSE(openBlocks(drawing)->has(L"Deur"));
        TestDrawing again = drawing.reloaded();
        EXPECT_EQ(entities(*openBlock(again, L"Poort")), L"32 33 34");
    }
}

} // namespace
