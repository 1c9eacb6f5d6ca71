#include "host/object_factory.h"

#include "host/acdb_database.h"
#include "host/model/Store.h"

#include <type_traits>

namespace corma::host {

namespace {

using Maker = std::unique_ptr<AcDbObject> (*)();

template<class Object> std::unique_ptr<AcDbObject> make()
{
    if constexpr (std::is_constructible_v<Object, WithoutGroups>) {
        return std::make_unique<Object>(WithoutGroups {});
    } else {
        return std::make_unique<Object>();
    }
}

struct TypeMaker
{
    RecordType type;
    Maker make;
};

// What has no row is known by its kind alone.
constexpr TypeMaker kMakers[] = {
    {RecordType::dictionary, make<AcDbDictionary>},
    {RecordType::dictionaryWithDefault, make<AcDbDictionaryWithDefault>},
    {RecordType::xrecord, make<AcDbXrecord>},
    {RecordType::layer, make<AcDbLayerTableRecord>},
    {RecordType::linetype, make<AcDbLinetypeTableRecord>},
    {RecordType::textStyle, make<AcDbTextStyleTableRecord>},
    {RecordType::viewportEntry, make<AcDbViewportTableRecord>},
    {RecordType::blockRecord, make<AcDbBlockTableRecord>},
    {RecordType::insert, make<AcDbBlockReference>},
    {RecordType::attribute, make<AcDbAttribute>},
    {RecordType::attributeDefinition, make<AcDbAttributeDefinition>},
    {RecordType::text, make<AcDbText>},
    {RecordType::viewport, make<AcDbViewport>},
};

std::unique_ptr<AcDbObject> newTable(const AcDbStub& stub)
{
    switch (stub.store->kindOfTable(stub).value_or(TableKind::view)) {
    case TableKind::blockRecord:
        return make<AcDbBlockTable>();
    case TableKind::layer:
        return make<AcDbLayerTable>();
    case TableKind::linetype:
        return make<AcDbLinetypeTable>();
    case TableKind::textStyle:
        return make<AcDbTextStyleTable>();
    case TableKind::viewport:
        return make<AcDbViewportTable>();
    default:
        return make<AcDbSymbolTable>();
    }
}

std::unique_ptr<AcDbObject> newOfKind(const AcDbStub& stub)
{
    const Block* block = nullptr;
    switch (stub.kind) {
    case RecordKind::table:
        return newTable(stub);
    case RecordKind::tableEntry:
        return make<AcDbSymbolTableRecord>();
    case RecordKind::blockBegin:
        block = stub.store->blockOf(stub);
        return block != nullptr && block->record == &stub ? make<AcDbBlockTableRecord>()
                                                          : make<AcDbEntity>();
    case RecordKind::blockEnd:
    case RecordKind::entity:
    case RecordKind::subEntity:
        return make<AcDbEntity>();
    default:
        return make<AcDbObject>();
    }
}

} // namespace

std::unique_ptr<AcDbObject> newObjectFor(const AcDbStub& stub, bool isUnderstood)
{
    for (const TypeMaker& maker : kMakers) {
        if (maker.type == stub.type && isUnderstood) {
            return maker.make();
        }
    }
    return newOfKind(stub);
}

} // namespace corma::host
