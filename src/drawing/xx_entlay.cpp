#include "drawing/xx_entlay.h"

#include "foundation/messages.h"
#include "host/host.h"

#include <memory>

using corma::host::Opened;

namespace {

constexpr const wchar_t* kEntlaySource = L"xx_entlay.cpp";

// Where the failures are reported, and the codes of each.
constexpr int kIteratorLine = 77;
constexpr int kIteratorCode = 900;
constexpr int kIdLine = 91;
constexpr int kIdCode = 1000;
constexpr int kEntityLine = 104;
constexpr int kEntityCode = 1010;

void report(int line, Acad::ErrorStatus status, int code)
{
    xx_reportError(kEntlaySource, line, acadErrorStatusText(status), code);
}

void collectId(const AcDbBlockTableRecordIterator& entities, AcDbObjectIdArray& result)
{
    AcDbObjectId id;
    const Acad::ErrorStatus status = entities.getEntityId(id);
    if (status == Acad::eOk) {
        result.append(id);
    } else {
        report(kIdLine, status, kIdCode);
    }
}

void collectWanted(const AcDbBlockTableRecordIterator& entities, const EntityQuery& query,
                   AcDbObjectIdArray& result)
{
    Opened<AcDbEntity> entity;
    const Acad::ErrorStatus status = entities.getEntity(entity.out(), query.open);
    if (status != Acad::eOk) {
        report(kEntityLine, status, kEntityCode);
    } else if (query.filter(entity.get(), query.argument) != 0) {
        result.append(entity->objectId());
    }
}

void collect(AcDbBlockTableRecordIterator& entities, const EntityQuery& query,
             AcDbObjectIdArray& result)
{
    for (entities.start(); !entities.done(); entities.step()) {
        if (query.filter == nullptr) {
            collectId(entities, result);
        } else {
            collectWanted(entities, query, result);
        }
    }
}

Acad::ErrorStatus openBlock(const EntityQuery& query, Opened<AcDbBlockTableRecord>& block)
{
    AcDbDatabase* const database = query.database != nullptr
        ? query.database
        : acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr) {
        return Acad::eNullObjectPointer;
    }
    Opened<AcDbBlockTable> table;
    if (const Acad::ErrorStatus status = database->getSymbolTable(table.out());
        status != Acad::eOk) {
        return status;
    }
    AcDbObjectId id;
    table->getIdAt(query.block, id);
    block = Opened<AcDbBlockTableRecord>(id);
    return block.status();
}

} // namespace

int xx_entlay(AcDbObjectIdArray& result, const EntityQuery& query)
{
    Opened<AcDbBlockTableRecord> block;
    if (openBlock(query, block) != Acad::eOk) {
        return RTERROR;
    }
    AcDbBlockTableRecordIterator* made = nullptr;
    if (const Acad::ErrorStatus status = block->newIterator(made); status != Acad::eOk) {
        report(kIteratorLine, status, kIteratorCode);
        return RTERROR;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    collect(*entities, query, result);
    return RTNORM;
}
