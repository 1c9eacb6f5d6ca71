#include "host/acdb_symbol_table.h"

#include "host/acdb_block.h"
#include "host/model/Store.h"
#include "host/new_records.h"
#include "host/result_list.h"
#include "platform/text.h"

#include <memory>

CORMA_HOST_CLASS_BODY(AcDbSymbolTableRecord, AcDbObject)
CORMA_HOST_CLASS_BODY(AcDbSymbolTable, AcDbObject)
CORMA_HOST_CLASS_BODY(AcDbLayerTable, AcDbSymbolTable)
CORMA_HOST_CLASS_BODY(AcDbLinetypeTable, AcDbSymbolTable)
CORMA_HOST_CLASS_BODY(AcDbTextStyleTable, AcDbSymbolTable)
CORMA_HOST_CLASS_BODY(AcDbViewportTable, AcDbSymbolTable)

namespace {

using namespace corma::host;

// The table that a record of a drawing is an entry of.
std::optional<TableKind> tableOf(const AcDbStub& record)
{
    Store& store = *record.store;
    if (const Block* block = store.blockOf(record)) {
        return block->record == &record ? std::optional(kBlockTable) : std::nullopt;
    }
    return record.container == nullptr || record.kind != RecordKind::tableEntry
        ? std::nullopt
        : store.kindOfTable(*record.container);
}

} // namespace

// --- records -------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& name) const
{
    std::wstring text;
    getName(text);
    name = heapCopy(text);
    return name == nullptr ? Acad::eOutOfMemory : Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(std::wstring& name) const
{
    name = stub() == nullptr ? std::wstring(m_groups.text(code::name, m_groups.body()))
                             : stub()->store->nameOfEntry(*stub());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (name == nullptr || *name == 0) {
        return Acad::eInvalidInput;
    }
    const auto table = stub() == nullptr ? std::nullopt : tableOf(*stub());
    if (table) {
        const AcDbStub* const present = stub()->store->findEntry(*table, name);
        if (present != nullptr && present != stub()) {
            return Acad::eDuplicateKey;
        }
    }
    Block* const block = stub() == nullptr ? nullptr : stub()->store->blockOf(*stub());
    if (block != nullptr && block->share != Block::Share::none) {
        return Acad::eInvalidInput;
    }
    if (block != nullptr) {
        stub()->store->renameBlock(*block, name);
        return Acad::eOk;
    }
    Groups& groups = changeGroups();
    groups.set(code::name, groups.body(), std::wstring(name));
    if (table) {
        stub()->store->forgetNames(*table);
    }
    return Acad::eOk;
}

void AcDbSymbolTableRecord::fitInto(Store& store)
{
    fitToVersion(m_groups, store.version());
}

Acad::ErrorStatus AcDbSymbolTableRecord::erase(bool erasing)
{
    if (!erasing && isErased() && isWriteEnabled()) {
        std::wstring name;
        getName(name);
        const auto table = tableOf(*stub());
        if (table && stub()->store->findEntry(*table, name) != nullptr) {
            return Acad::eDuplicateKey;
        }
    }
    return AcDbObject::erase(erasing);
}

// --- tables --------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbSymbolTable::getIdAt(const ACHAR* name, AcDbObjectId& id,
                                           bool getErasedRecord) const
{
    id.setNull();
    const auto table = stub() == nullptr ? std::nullopt : stub()->store->kindOfTable(*stub());
    if (table && name != nullptr) {
        id = AcDbObjectId(stub()->store->findEntry(*table, name, getErasedRecord));
    }
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& id,
                                         bool getErasedRecord) const
{
    return getIdAt(name, id, getErasedRecord);
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbSymbolTableRecord*& record,
                                         AcDb::OpenMode mode, bool openErasedRecord) const
{
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getIdAt(name, id, openErasedRecord);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErasedRecord) : status;
}

bool AcDbSymbolTable::has(const ACHAR* name) const
{
    AcDbObjectId id;
    return getIdAt(name, id) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const
{
    if (id.isNull() || stub() == nullptr || id.stub()->store != stub()->store
        || id.stub()->isErased) {
        return false;
    }
    const auto table = tableOf(*id.stub());
    return table && table == stub()->store->kindOfTable(*stub());
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record)
{
    AcDbObjectId id;
    return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record)
{
    id.setNull();
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    const auto table = stub() == nullptr ? std::nullopt : stub()->store->kindOfTable(*stub());
    if (!table) {
        return Acad::eNotApplicable;
    }
    if (record == nullptr) {
        return Acad::eNullObjectPointer;
    }
    if (record->stub() != nullptr) {
        return Acad::eAlreadyInDb;
    }
    Store& store = *stub()->store;
    const std::string type = corma::toUtf8(record->dxfName());
    if (type != nameOf(*table)) {
        return Acad::eWrongObjectType;
    }
    std::wstring name;
    record->getName(name);
    if (name.empty()) {
        return Acad::eInvalidInput;
    }
    if (store.findEntry(*table, name) != nullptr) {
        return Acad::eDuplicateKey;
    }
    record->fitInto(store);
    AcDbStub* const entry = table == kBlockTable
        ? store.addBlock(name).record
        : store.appendEntry(*table, store.typeNamed(type), name);
    if (table == kBlockTable) {
        record->changeGroups() = store.groupsOf(*entry);
    }
    store.setResident(*entry, std::unique_ptr<AcDbObject>(record), stub()->handle);
    openForWrite(*record);
    id = AcDbObjectId(entry);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const
{
    iterator = nullptr;
    if (stub() == nullptr) {
        return Acad::eNotApplicable;
    }
    iterator = new AcDbSymbolTableIterator(stub(), atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::erase(bool /*erasing*/)
{
    return Acad::eCannotBeErasedByCaller;
}

// --- iterator ------------------------------------------------------------------------------------

AcDbSymbolTableIterator::AcDbSymbolTableIterator(AcDbStub* table, bool atBeginning,
                                                 bool skipDeleted)
    : m_table(table)
{
    start(atBeginning, skipDeleted);
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted)
{
    Store& store = *m_table->store;
    const TableKind kind = *store.kindOfTable(*m_table);
    m_at = atBeginning ? store.firstEntry(kind) : store.lastEntry(kind);
    if (m_at != nullptr && m_at->isErased && skipDeleted) {
        step(atBeginning, skipDeleted);
    }
}

bool AcDbSymbolTableIterator::done() const
{
    return m_at == nullptr;
}

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted)
{
    Store& store = *m_table->store;
    const TableKind kind = *store.kindOfTable(*m_table);
    while (m_at != nullptr) {
        m_at = forward ? store.entryBehind(kind, *m_at) : store.entryBefore(kind, *m_at);
        if (m_at == nullptr || !m_at->isErased || !skipDeleted) {
            return;
        }
    }
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const
{
    id = AcDbObjectId(m_at);
    return m_at == nullptr ? Acad::eInvalidIndex : Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record,
                                                     AcDb::OpenMode mode, bool openErased) const
{
    record = nullptr;
    return m_at == nullptr ? Acad::eInvalidIndex
                           : acdbOpenObject(record, AcDbObjectId(m_at), mode, openErased);
}
