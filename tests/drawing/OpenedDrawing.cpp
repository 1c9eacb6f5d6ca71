#include "OpenedDrawing.h"

#include "platform/platform.h"

#include <memory>

using corma::host::Opened;

namespace corma::testing {

void OpenedDrawing::TearDown()
{
    OpenObjects::TearDown();
    closeDocument();
}

AcDbDatabase& OpenedDrawing::open(const wchar_t* name)
{
    const std::wstring path = platform::fromNative(CORMA_TEST_DATA "/") + name + L".dxf";
    EXPECT_TRUE(openDocument(path.c_str())) << platform::toNative(path);
    return *acdbHostApplicationServices()->workingDatabase();
}

AcDbObjectIdArray OpenedDrawing::ids(std::initializer_list<const wchar_t*> handles)
{
    AcDbObjectIdArray all;
    for (const wchar_t* const handle : handles) {
        all.append(id(handle));
    }
    return all;
}

AcDbObjectIdArray OpenedDrawing::entitiesOf(AcDbDatabase& database, const wchar_t* block)
{
    Opened<AcDbBlockTable> table;
    AcDbObjectId id;
    EXPECT_EQ(database.getSymbolTable(table.out()), Acad::eOk);
    EXPECT_EQ(table->getIdAt(block, id), Acad::eOk);
    const Opened<AcDbBlockTableRecord> record(id);
    AcDbBlockTableRecordIterator* made = nullptr;
    EXPECT_EQ(record->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    AcDbObjectIdArray all;
    for (; !entities->done(); entities->step()) {
        entities->getEntityId(id);
        all.append(id);
    }
    return all;
}

std::wstring OpenedDrawing::blockNames(AcDbDatabase& database)
{
    Opened<AcDbBlockTable> table;
    EXPECT_EQ(database.getSymbolTable(table.out()), Acad::eOk);
    AcDbSymbolTableIterator* made = nullptr;
    EXPECT_EQ(table->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbSymbolTableIterator> blocks(made);
    std::wstring names;
    for (; !blocks->done(); blocks->step()) {
        Opened<AcDbSymbolTableRecord> record;
        blocks->getRecord(record.out(), AcDb::kForRead);
        std::wstring name;
        record->getName(name);
        names += name + L' ';
    }
    return names;
}

} // namespace corma::testing
