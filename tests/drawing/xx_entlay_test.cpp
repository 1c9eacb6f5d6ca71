// The entities of a block, chosen by a filter.

#include "AttributeTest.h"
#include "drawing/xx_entlay.h"
#include "host/host.h"

#include <gtest/gtest.h>
#include <stdexcept>

using corma::host::Opened;

namespace corma::testing {

namespace {

BlockDrawing plan()
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD", "pine", false, "21"}}, {{"22", "KNOB"}})
        .block("KNOB")
        .inModel({"A1", "DOOR", {{"WOOD", "oak"}}})
        .definitionInModel({"TITLE", "plan", false, "A2"})
        .inModel({"A3", "KNOB"})
        .inPaper({"B1", "KNOB"});
    return drawing;
}

int isReference(AcDbEntity* entity, void* /*argument*/)
{
    return AcDbBlockReference::cast(entity) != nullptr ? -1 : 0;
}

int keepsNone(AcDbEntity* /*entity*/, void* /*argument*/)
{
    return 0;
}

class Entlay : public AttributeTest
{
protected:
    static std::string list(const EntityQuery& query)
    {
        AcDbObjectIdArray result;
        const int status = xx_entlay(result, query);
        return (status == RTNORM ? "" : std::to_string(status) + ' ') + described(result);
    }
};

TEST_F(Entlay, ListsModelSpaceInTheOrderOfTheDrawing)
{
    open(plan());
    EXPECT_EQ(list({}), "A1 A2 A3");
    erase(id("A2"));
    EXPECT_EQ(list({}), "A1 A3");
    EXPECT_EQ(printed(), "");
}

TEST_F(Entlay, ListsAnyBlockWithoutRegardToCase)
{
    open(plan());
    EXPECT_EQ(list({.block = L"door"}), "21 22");
    EXPECT_EQ(list({.block = L"KNOB"}), "");
    EXPECT_EQ(list({.block = ACDB_PAPER_SPACE}), "B1");
}

TEST_F(Entlay, PutsTheIdsBehindThoseThatAreThere)
{
    open(plan());
    AcDbObjectIdArray result;
    result.append(id("B1"));
    EXPECT_EQ(xx_entlay(result, {.filter = isReference}), RTNORM);
    EXPECT_EQ(described(result), "B1 A1 A3");
}

TEST_F(Entlay, TakesAnyAnswerButZeroForYes)
{
    open(plan());
    EXPECT_EQ(list({.filter = isReference}), "A1 A3");
    EXPECT_EQ(list({.filter = keepsNone}), "");
}

TEST_F(Entlay, HandsTheArgumentToTheFilter)
{
    open(plan());
    AcDbObjectId wanted = id("A3");
    const auto isThat = [](AcDbEntity* entity, void* argument) {
        return entity->objectId() == *static_cast<AcDbObjectId*>(argument) ? 1 : 0;
    };
    EXPECT_EQ(list({.filter = isThat, .argument = &wanted}), "A3");
}

TEST_F(Entlay, OpensEntitiesForTheFilterAsItIsAskedTo)
{
    open(plan());
    const auto isWritten
        = [](AcDbEntity* entity, void* /*argument*/) { return entity->isWriteEnabled() ? 1 : 0; };
    EXPECT_EQ(list({.filter = isWritten}), "");
    EXPECT_EQ(list({.filter = isWritten, .open = AcDb::kForWrite}), "A1 A2 A3");
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(Entlay, GoesOnBehindAnEntityThatTheFilterErased)
{
    open(plan());
    const auto eraseIt = [](AcDbEntity* entity, void* /*argument*/) {
        return entity->erase() == Acad::eOk ? 1 : 0;
    };
    EXPECT_EQ(list({.filter = eraseIt, .open = AcDb::kForWrite}), "A1 A2 A3");
    EXPECT_EQ(list({}), "");
}

TEST_F(Entlay, ReadsAnotherDrawing)
{
    open(plan());
    BlockDrawing other;
    other.block("DOOR").inModel({"C1", "DOOR"});
    const std::wstring path = folder.write(L"other.dxf", other.bytes());
    AcDbDatabase* const database = openDatabase(path.c_str());
    ASSERT_NE(database, nullptr);
    EXPECT_EQ(list({.filter = isReference, .database = database}), "C1");
    closeDatabase(database);
}

// --- failures ------------------------------------------------------------------------------------

TEST_F(Entlay, TellsAnEntityThatItCannotOpenAndGoesOn)
{
    open(plan());
    const Opened<AcDbObject> held(id("A1"), AcDb::kForWrite);
    EXPECT_EQ(list({.filter = isReference}), "A3");
    EXPECT_EQ(printed(), failure("xx_entlay", 104, "eWasOpenForWrite", "1010"));

    const Opened<AcDbObject> read(id("A3"));
    EXPECT_EQ(list({.filter = isReference, .open = AcDb::kForWrite}), "");
    EXPECT_EQ(printed(),
              failure("xx_entlay", 104, "eWasOpenForWrite", "1010")
                  + failure("xx_entlay", 104, "eWasOpenForRead", "1010"));
}

TEST_F(Entlay, OpensNothingWithoutAFilter)
{
    open(plan());
    const Opened<AcDbObject> held(id("A1"), AcDb::kForWrite);
    EXPECT_EQ(list({}), "A1 A2 A3");
    EXPECT_EQ(printed(), "");
}

TEST_F(Entlay, FailsWithoutADrawing)
{
    EXPECT_EQ(list({}), "-5001 ");
    EXPECT_EQ(printed(), "");
}

TEST_F(Entlay, FailsForABlockThatIsNotThereOrCannotBeOpened)
{
    open(plan());
    EXPECT_EQ(list({.block = L"GATE"}), "-5001 ");
    {
        const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
        EXPECT_EQ(list({.block = L"DOOR"}), "-5001 ");
    }
    const Opened<AcDbObject> table(acdbHostApplicationServices()->workingDatabase()->blockTableId(),
                                   AcDb::kForWrite);
    EXPECT_EQ(list({.block = L"DOOR"}), "-5001 ");
    EXPECT_EQ(printed(), "");
}

TEST_F(Entlay, LeavesNothingOpenWhenTheFilterThrows)
{
    open(plan());
    const auto thrower
        = [](AcDbEntity* /*entity*/, void* /*argument*/) -> int { throw std::runtime_error("no"); };
    AcDbObjectIdArray result;
    EXPECT_THROW(xx_entlay(result, {.filter = thrower, .open = AcDb::kForWrite}),
                 std::runtime_error);
    EXPECT_EQ(host::openObjectCount(), 0);
}

} // namespace

} // namespace corma::testing
