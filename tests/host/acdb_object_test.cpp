#include "host/acdb_database.h"
#include "host/acdb_object.h"
#include "host/model/Store.h"
#include "support/OpenObjects.h"
#include "support/TestDrawing.h"
#include "support/small_drawing.h"

#include <gtest/gtest.h>
#include <vector>

using corma::host::Opened;
using corma::host::openObjectCount;
using corma::testing::kSmallDrawing;
using corma::testing::kSmallDrawingR12;
using corma::testing::TestDrawing;

namespace {

using Object = corma::testing::OpenObjects;

Acad::ErrorStatus statusOfOpening(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false)
{
    return Opened<AcDbObject>(id, mode, openErased).status();
}

// --- opening and closing -------------------------------------------------------------------------

TEST_F(Object, HasManyReadersOrOneWriter)
{
    TestDrawing drawing(kSmallDrawing);
    const AcDbObjectId id = drawing.id("40");
    {
        const Opened<AcDbObject> first(id);
        const Opened<AcDbObject> second(id);
        EXPECT_EQ(first.get(), second.get());
        EXPECT_TRUE(first->isReadEnabled());
        EXPECT_FALSE(first->isWriteEnabled());
        EXPECT_EQ(openObjectCount(), 2);
        EXPECT_EQ(statusOfOpening(id, AcDb::kForWrite), Acad::eWasOpenForRead);
    }
    const Opened<AcDbObject> writer(id, AcDb::kForWrite);
    EXPECT_TRUE(writer->isReadEnabled());
    EXPECT_TRUE(writer->isWriteEnabled());
    EXPECT_EQ(statusOfOpening(id, AcDb::kForRead), Acad::eWasOpenForWrite);
    EXPECT_EQ(statusOfOpening(id, AcDb::kForWrite), Acad::eWasOpenForWrite);
}

TEST_F(Object, HasAtMost256Readers)
{
    constexpr int kMost = 256;
    TestDrawing drawing(kSmallDrawing);
    std::vector<Opened<AcDbObject>> readers;
    for (int i = 1; i < kMost; ++i) {
        readers.emplace_back(drawing.id("40"));
    }
    EXPECT_EQ(statusOfOpening(drawing.id("40"), AcDb::kForRead), Acad::eOk);
    readers.emplace_back(drawing.id("40"));
    EXPECT_EQ(openObjectCount(), kMost);
    EXPECT_EQ(statusOfOpening(drawing.id("40"), AcDb::kForRead), Acad::eAtMaxReaders);
    readers.pop_back();
    EXPECT_EQ(statusOfOpening(drawing.id("40"), AcDb::kForRead), Acad::eOk);
}

TEST_F(Object, IsNotOpenedWithoutAnIdOrForNotifications)
{
    TestDrawing drawing(kSmallDrawing);
    AcDbObject* object = &*drawing.open<AcDbObject>("C");
    EXPECT_EQ(acdbOpenAcDbObject(object, {}, AcDb::kForRead), Acad::eNullObjectId);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(acdbOpenAcDbObject(object, drawing.id("40"), AcDb::kForNotify),
              Acad::eNotImplementedYet);
    EXPECT_EQ(object, nullptr);
}

TEST_F(Object, OfAnotherClassIsNotOpened)
{
    TestDrawing drawing(kSmallDrawing);
    AcDbXrecord* record = nullptr;
    EXPECT_EQ(acdbOpenObject(record, drawing.id("40")), Acad::eNotThatKindOfClass);
    EXPECT_EQ(record, nullptr);
    EXPECT_EQ(openObjectCount(), 0);
}

TEST_F(Object, IsClosedAsOftenAsItWasOpened)
{
    TestDrawing drawing(kSmallDrawing);
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(object, drawing.id("C"), AcDb::kForRead), Acad::eOk);
    ASSERT_EQ(acdbOpenAcDbObject(object, drawing.id("C"), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(object->close(), Acad::eOk);
    EXPECT_EQ(object->close(), Acad::eOk);
    EXPECT_EQ(object->close(), Acad::eInvalidOpenState); // a dictionary stays in memory
    EXPECT_EQ(openObjectCount(), 0);
}

TEST_F(Object, OfNoDrawingIsItsMakers)
{
    AcDbXrecord record;
    EXPECT_TRUE(record.isNewObject());
    EXPECT_TRUE(record.isWriteEnabled());
    EXPECT_TRUE(record.isModified());
    EXPECT_TRUE(record.objectId().isNull());
    EXPECT_TRUE(record.ownerId().isNull());
    EXPECT_EQ(record.database(), nullptr);
    EXPECT_EQ(record.close(), Acad::eNotApplicable);
    EXPECT_EQ(record.erase(), Acad::eNotApplicable);
    EXPECT_EQ(record.upgradeOpen(), Acad::eWasOpenForWrite);
    EXPECT_EQ(record.downgradeOpen(), Acad::eNotOpenForWrite);
    AcDbHandle handle(corma::host::Handle {7});
    record.getAcDbHandle(handle);
    EXPECT_TRUE(handle.isNull());
}

TEST_F(Object, StaysInMemoryWhenItWasChanged)
{
    TestDrawing drawing(kSmallDrawing);
    drawing.open<AcDbObject>("40", AcDb::kForWrite).close();
    EXPECT_EQ(drawing.stub("40").resident, nullptr);
    drawing.open<AcDbEntity>("40", AcDb::kForWrite)->setLayer(L"0");
    EXPECT_NE(drawing.stub("40").resident, nullptr);
    EXPECT_TRUE(drawing.open<AcDbEntity>("40")->isModified());
}

TEST_F(Object, WhoseDrawingGoesCountsAsClosed)
{
    AcDbObject* object = nullptr;
    {
        TestDrawing drawing(kSmallDrawing);
        ASSERT_EQ(acdbOpenAcDbObject(object, drawing.id("40"), AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(openObjectCount(), 1);
    }
    EXPECT_EQ(openObjectCount(), 0);
}

// --- changing the mode ---------------------------------------------------------------------------

TEST_F(Object, GoesFromReadToWriteWhenNobodyElseReads)
{
    TestDrawing drawing(kSmallDrawing);
    Opened<AcDbObject> first(drawing.id("40"));
    {
        const Opened<AcDbObject> second(drawing.id("40"));
        EXPECT_EQ(first->upgradeOpen(), Acad::eWasOpenForRead);
        EXPECT_FALSE(first->isWriteEnabled());
    }
    EXPECT_EQ(first->upgradeOpen(), Acad::eOk);
    EXPECT_TRUE(first->isWriteEnabled());
    EXPECT_EQ(first->upgradeOpen(), Acad::eWasOpenForWrite);
    EXPECT_EQ(openObjectCount(), 1);
    EXPECT_EQ(first->downgradeOpen(), Acad::eOk);
    EXPECT_EQ(first->downgradeOpen(), Acad::eNotOpenForWrite);
    EXPECT_FALSE(first->isWriteEnabled());
    EXPECT_EQ(statusOfOpening(drawing.id("40"), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(openObjectCount(), 1);
}

TEST_F(Object, ThatIsNotOpenDoesNotChangeItsMode)
{
    TestDrawing drawing(kSmallDrawing);
    AcDbObject& closed = drawing.store().resident(drawing.stub("C"));
    EXPECT_EQ(closed.upgradeOpen(), Acad::eNotOpenForRead);
    EXPECT_EQ(closed.downgradeOpen(), Acad::eNotOpenForWrite);
}

// --- erasing -------------------------------------------------------------------------------------

TEST_F(Object, ThatIsErasedIsOpenedOnlyWhenAskedFor)
{
    TestDrawing drawing(kSmallDrawing);
    const std::string before = drawing.saved();
    {
        const auto line = drawing.open<AcDbObject>("40", AcDb::kForWrite);
        EXPECT_EQ(line->erase(), Acad::eOk);
        EXPECT_TRUE(line->isErased());
        EXPECT_EQ(line->erase(), Acad::eWasErased);
    }
    EXPECT_EQ(statusOfOpening(drawing.id("40"), AcDb::kForRead), Acad::eWasErased);
    EXPECT_EQ(statusOfOpening(drawing.id("40"), AcDb::kForRead, true), Acad::eOk);
    EXPECT_NE(drawing.saved(), before);
    const auto line = drawing.open<AcDbObject>("40", AcDb::kForWrite, true);
    EXPECT_EQ(line->erase(false), Acad::eOk);
    EXPECT_FALSE(line->isErased());
    EXPECT_EQ(line->erase(false), Acad::eOk);
    EXPECT_EQ(drawing.saved(), before);
}

TEST_F(Object, ThatMarksBeginOrEndOfAnotherIsNotErasedAlone)
{
    TestDrawing drawing(kSmallDrawing);
    for (const char* mark : {"31", "35", "43"}) {
        SCOPED_TRACE(mark);
        const auto object = drawing.open<AcDbObject>(mark, AcDb::kForWrite);
        ASSERT_TRUE(object);
        EXPECT_EQ(object->erase(), Acad::eCannotBeErasedByCaller);
        EXPECT_FALSE(object->isErased());
    }
    EXPECT_FALSE(drawing.store().isChanged());
    TestDrawing old(kSmallDrawingR12);
    const corma::host::Block& door = *old.store().findBlock(L"Deur");
    ASSERT_EQ(door.record, door.begin);
    const Opened<AcDbObject> block(AcDbObjectId(door.record), AcDb::kForWrite);
    EXPECT_EQ(block->erase(), Acad::eOk);
}

TEST_F(Object, IsNotErasedByItsReaders)
{
    TestDrawing drawing(kSmallDrawing);
    const auto line = drawing.open<AcDbObject>("40");
    EXPECT_EQ(line->erase(), Acad::eNotOpenForWrite);
    EXPECT_FALSE(line->isErased());
    EXPECT_FALSE(drawing.store().isChanged());
}

// --- classes -------------------------------------------------------------------------------------

struct ClassRow
{
    const char* handle;
    const wchar_t* name;
    const wchar_t* dxfName;
};

TEST_F(Object, IsOfTheClassOfItsRecord)
{
    TestDrawing drawing(kSmallDrawing);
    for (const ClassRow& row : {
             ClassRow {"C", L"AcDbDictionary", L"DICTIONARY"},
             ClassRow {"2", L"AcDbLayerTable", L"TABLE"},
             ClassRow {"10", L"AcDbLayerTableRecord", L"LAYER"},
             ClassRow {"16", L"AcDbLinetypeTableRecord", L"LTYPE"},
             ClassRow {"18", L"AcDbTextStyleTableRecord", L"STYLE"},
             ClassRow {"19", L"AcDbViewportTableRecord", L"VPORT"},
             ClassRow {"30", L"AcDbBlockTableRecord", L"BLOCK_RECORD"},
             ClassRow {"31", L"AcDbEntity", L"BLOCK"},
             ClassRow {"33", L"AcDbAttributeDefinition", L"ATTDEF"},
             ClassRow {"40", L"AcDbEntity", L"LINE"},
             ClassRow {"41", L"AcDbBlockReference", L"INSERT"},
             ClassRow {"42", L"AcDbAttribute", L"ATTRIB"},
             ClassRow {"43", L"AcDbEntity", L"SEQEND"},
             ClassRow {"45", L"AcDbViewport", L"VIEWPORT"},
         }) {
        const auto object = drawing.open<AcDbObject>(row.handle);
        EXPECT_STREQ(object->isA()->name(), row.name);
        EXPECT_EQ(object->dxfName(), row.dxfName);
        EXPECT_EQ(object->objectId(), drawing.id(row.handle));
        AcDbHandle handle;
        object->getAcDbHandle(handle);
        EXPECT_EQ(handle.value(), *corma::host::handleFrom(std::string_view(row.handle)));
    }
}

TEST_F(Object, IsCastToItsClassAndItsParentsOnly)
{
    AcDbAttribute attribute;
    EXPECT_EQ(AcDbAttribute::cast(&attribute), &attribute);
    EXPECT_EQ(AcDbText::cast(&attribute), &attribute);
    EXPECT_EQ(AcDbObject::cast(&attribute), &attribute);
    EXPECT_EQ(AcDbAttributeDefinition::cast(&attribute), nullptr);
    EXPECT_EQ(AcDbText::cast(nullptr), nullptr);
    EXPECT_EQ(AcDbAttribute::desc()->myParent(), AcDbText::desc());
    EXPECT_EQ(AcRxObject::desc()->myParent(), nullptr);
    EXPECT_TRUE(attribute.isKindOf(AcDbEntity::desc()));
    EXPECT_FALSE(attribute.isKindOf(AcDbDictionary::desc()));
}

// --- the guard -----------------------------------------------------------------------------------

TEST_F(Object, AGuardClosesWhatItHolds)
{
    TestDrawing drawing(kSmallDrawing);
    Opened<AcDbObject> guard(drawing.id("40"));
    EXPECT_EQ(openObjectCount(), 1);
    Opened<AcDbObject> taken(std::move(guard));
    EXPECT_EQ(openObjectCount(), 1);
    taken = Opened<AcDbObject>(drawing.id("41"));
    EXPECT_EQ(openObjectCount(), 1);
    EXPECT_EQ(taken->objectId(), drawing.id("41"));
    ASSERT_EQ(acdbOpenAcDbObject(taken.out(), drawing.id("44"), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(openObjectCount(), 1);
    taken.close();
    taken.close();
    EXPECT_FALSE(taken);
    EXPECT_EQ(openObjectCount(), 0);
}

} // namespace
