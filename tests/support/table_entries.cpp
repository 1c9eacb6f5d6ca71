#include "support/table_entries.h"

#include "host/host.h"

#include <gtest/gtest.h>
#include <memory>

namespace corma::testing {

namespace {

AcDbDatabase& database()
{
    return *acdbHostApplicationServices()->workingDatabase();
}

template<class Table, class Record> void add(const wchar_t* name, std::unique_ptr<Record> record)
{
    host::Opened<Table> table;
    ASSERT_EQ(database().getSymbolTable(table.out(), AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(record->setName(name), Acad::eOk);
    ASSERT_EQ(table->add(record.get()), Acad::eOk);
    ASSERT_EQ(record.release()->close(), Acad::eOk);
}

} // namespace

void addLayer(const wchar_t* name, unsigned short colour)
{
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    AcCmColor color;
    ASSERT_EQ(color.setColorIndex(colour), Acad::eOk);
    ASSERT_EQ(layer->setColor(color), Acad::eOk);
    add<AcDbLayerTable>(name, std::move(layer));
}

void addTextStyle(const wchar_t* name)
{
    add<AcDbTextStyleTable>(name, std::make_unique<AcDbTextStyleTableRecord>());
}

void addLinetype(const wchar_t* name)
{
    ASSERT_EQ(database().loadLineTypeFile(name, L"acad.lin"), Acad::eOk);
}

} // namespace corma::testing
