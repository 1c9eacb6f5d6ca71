#include "host/acdb_block.h"

#include "host/acdb_entity.h"
#include "host/model/Store.h"
#include "host/new_records.h"
#include "platform/text.h"

#include <memory>

CORMA_HOST_CLASS_BODY(AcDbBlockTable, AcDbSymbolTable)
CORMA_HOST_CLASS_BODY(AcDbBlockTableRecord, AcDbSymbolTableRecord)

namespace {

using namespace corma::host;

bool isModelSpace(std::wstring_view folded)
{
    return folded == foldedName(ACDB_MODEL_SPACE);
}

// *Paper_Space of the current layout, *Paper_Space0 and further ones of the others.
bool isPaperSpace(std::wstring_view folded)
{
    return folded.starts_with(foldedName(ACDB_PAPER_SPACE));
}

// The name of the layout that the entities of a space bear; empty where they bear none. An erased
// one tells it as well: to look for another would take the longer the more of them there are.
std::wstring layoutOf(const Store& store, const Block& block)
{
    const AcDbStub* const last = store.lastEntity(block);
    return last == nullptr ? std::wstring() : store.textOf(*last, code::layoutName);
}

// The space that an entity is in stands in it ahead of its layer.
void putInSpace(Groups& groups, bool isPaper, const std::wstring& layout)
{
    const auto layer = groups.find(code::layer);
    if (!layer) {
        return;
    }
    if (!layout.empty()) {
        groups.insert(*layer, Group(code::layoutName, GroupValue(layout)));
    }
    if (isPaper) {
        groups.insert(*layer, Group(code::paperSpace, 1));
    }
}

} // namespace

AcDbBlockTableRecord::AcDbBlockTableRecord()
    : AcDbSymbolTableRecord(L"BLOCK_RECORD")
{
    m_groups.add(Group(code::name, L""));
}

// --- what it is ----------------------------------------------------------------------------------

std::wstring AcDbBlockTableRecord::foldedName() const
{
    std::wstring name;
    getName(name);
    return corma::host::foldedName(name);
}

AcGePoint3d AcDbBlockTableRecord::origin() const
{
    const Block* const block = stub() == nullptr ? nullptr : stub()->store->blockOf(*stub());
    const Point origin = block == nullptr ? Point() : stub()->store->originOf(*block);
    return {origin.x, origin.y, origin.z};
}

bool AcDbBlockTableRecord::isAnonymous() const
{
    return foldedName().starts_with(L'*') && !isLayout();
}

bool AcDbBlockTableRecord::isLayout() const
{
    const std::wstring name = foldedName();
    return isModelSpace(name) || isPaperSpace(name);
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const
{
    const Block* const block = stub() == nullptr ? nullptr : stub()->store->blockOf(*stub());
    if (block == nullptr) {
        return false;
    }
    const Store& store = *stub()->store;
    const AcDbStub* at = store.firstEntity(*block);
    while (at != nullptr && (at->isErased || at->type != RecordType::attributeDefinition)) {
        at = store.entityBehind(*block, *at);
    }
    return at != nullptr;
}

Acad::ErrorStatus AcDbBlockTableRecord::erase(bool erasing)
{
    return isLayout() ? Acad::eCannotBeErasedByCaller : AcDbSymbolTableRecord::erase(erasing);
}

// --- entities ------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator,
                                                    bool atBeginning, bool skipDeleted) const
{
    iterator = nullptr;
    if (stub() == nullptr || stub()->store->blockOf(*stub()) == nullptr) {
        return Acad::eNotApplicable;
    }
    iterator = new AcDbBlockTableRecordIterator(stub(), atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::checkNew(const AcDbEntity* entity) const
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (entity == nullptr) {
        return Acad::eNullObjectPointer;
    }
    if (entity->stub() != nullptr) {
        return Acad::eAlreadyInDb;
    }
    if (AcDbAttribute::cast(entity) != nullptr) {
        return Acad::eWrongObjectType;
    }
    if (isErased()) {
        return Acad::eWasErased;
    }
    const Block* const block = stub() == nullptr ? nullptr : stub()->store->blockOf(*stub());
    const bool hasPlace
        = block != nullptr && (block->begin != nullptr || block->share != Block::Share::none);
    return hasPlace ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity)
{
    id.setNull();
    const Acad::ErrorStatus status = checkNew(entity);
    if (status != Acad::eOk) {
        return status;
    }
    Store& store = *stub()->store;
    Block& block = *store.blockOf(*stub());
    Groups& groups = entity->changeGroups();
    fitToVersion(groups, store.version());
    putInSpace(groups, isPaperSpace(foldedName()), layoutOf(store, block));
    AcDbStub* const entry
        = store.appendEntity(block, store.typeNamed(corma::toUtf8(entity->dxfName())));
    // A record that the file lacks cannot be named in it.
    store.setResident(*entry, std::unique_ptr<AcDbObject>(entity),
                      stub()->isImplied ? Handle::none : stub()->handle);
    openForWrite(*entity);
    id = AcDbObjectId(entry);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity)
{
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

// --- iterator ------------------------------------------------------------------------------------

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(AcDbStub* record, bool atBeginning,
                                                           bool skipDeleted)
    : m_record(record)
{
    start(atBeginning, skipDeleted);
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted)
{
    Store& store = *m_record->store;
    const Block& block = *store.blockOf(*m_record);
    m_at = atBeginning ? store.firstEntity(block) : store.lastEntity(block);
    if (m_at != nullptr && m_at->isErased && skipDeleted) {
        step(atBeginning, skipDeleted);
    }
}

bool AcDbBlockTableRecordIterator::done() const
{
    return m_at == nullptr;
}

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted)
{
    Store& store = *m_record->store;
    const Block& block = *store.blockOf(*m_record);
    while (m_at != nullptr) {
        m_at = forward ? store.entityBehind(block, *m_at) : store.entityBefore(block, *m_at);
        if (m_at == nullptr || !m_at->isErased || !skipDeleted) {
            return;
        }
    }
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const
{
    id = AcDbObjectId(m_at);
    return m_at == nullptr ? Acad::eInvalidIndex : Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const
{
    entity = nullptr;
    return m_at == nullptr ? Acad::eInvalidIndex
                           : acdbOpenObject(entity, AcDbObjectId(m_at), mode, openErased);
}
