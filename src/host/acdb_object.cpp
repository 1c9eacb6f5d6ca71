#include "host/acdb_object.h"

#include "host/acdb_database.h"
#include "host/model/Store.h"

#include <vector>

namespace {

constexpr unsigned short kMostReaders = 256;

// What only tells where another record begins or ends goes together with that. The BLOCK of a
// drawing without block records is the block itself.
bool isMark(const AcDbStub& stub)
{
    using namespace corma::host;
    switch (stub.kind) {
    case RecordKind::blockBegin: {
        const Block* const block = stub.store->blockOf(stub);
        return block == nullptr || block->record != &stub;
    }
    case RecordKind::blockEnd:
        return true;
    default:
        return stub.type == RecordType::sequenceEnd;
    }
}

int& openings()
{
    static int count = 0;
    return count;
}

} // namespace

namespace corma::host {

int openObjectCount()
{
    return openings();
}

/// Counts who has an object open.
struct ObjectOpening
{
    static Acad::ErrorStatus open(AcDbObject& object, AcDb::OpenMode mode)
    {
        if (object.m_hasWriter) {
            return Acad::eWasOpenForWrite;
        }
        if (mode == AcDb::kForWrite && object.m_readers != 0) {
            return Acad::eWasOpenForRead;
        }
        if (object.m_readers >= kMostReaders) {
            return Acad::eAtMaxReaders;
        }
        if (mode == AcDb::kForWrite) {
            object.m_hasWriter = true;
        } else {
            ++object.m_readers;
        }
        ++openings();
        return Acad::eOk;
    }

    static void openNew(AcDbObject& object)
    {
        object.m_hasWriter = true;
        ++openings();
    }
};

void openForWrite(AcDbObject& newObject)
{
    ObjectOpening::openNew(newObject);
}

} // namespace corma::host

// --- classes -------------------------------------------------------------------------------------

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const
{
    for (const AcRxClass* at = this; at != nullptr; at = at->m_parent) {
        if (at == other) {
            return true;
        }
    }
    return false;
}

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc()
{
    static AcRxClass description(L"AcRxObject", nullptr);
    return &description;
}

CORMA_HOST_CLASS_BODY(AcDbObject, AcRxObject)

// --- objects -------------------------------------------------------------------------------------

AcDbObject::AcDbObject(const wchar_t* dxfType)
{
    m_groups.add(corma::host::Group(corma::host::code::type, dxfType));
}

// An object whose drawing goes with it still open counts as closed: nobody can close it any more.
AcDbObject::~AcDbObject()
{
    openings() -= m_readers + (m_hasWriter ? 1 : 0);
}

AcDbObjectId AcDbObject::objectId() const
{
    return AcDbObjectId(m_stub);
}

AcDbObjectId AcDbObject::ownerId() const
{
    using namespace corma::host;
    if (m_stub == nullptr) {
        return {};
    }
    Store& store = *m_stub->store;
    if (const Block* space = store.spaceOf(*m_stub)) {
        return AcDbObjectId(m_stub->kind == RecordKind::entity ? space->record : m_stub->container);
    }
    return AcDbObjectId(store.ownerOf(*m_stub));
}

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const
{
    handle = m_stub == nullptr ? AcDbHandle() : AcDbHandle(m_stub->handle);
}

AcDbDatabase* AcDbObject::database() const
{
    return m_stub == nullptr ? nullptr : m_stub->store->database();
}

Acad::ErrorStatus AcDbObject::close()
{
    if (m_stub == nullptr) {
        return Acad::eNotApplicable; // it is its maker's, who deletes it
    }
    if (m_hasWriter) {
        m_hasWriter = false;
    } else if (m_readers != 0) {
        --m_readers;
    } else {
        return Acad::eInvalidOpenState;
    }
    --openings();
    if (m_readers == 0) {
        m_stub->store->release(*m_stub); // this may be the object's end
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (m_stub == nullptr) {
        return Acad::eNotApplicable;
    }
    if (erasing && m_stub->isErased) {
        return Acad::eWasErased;
    }
    if (erasing && isMark(*m_stub)) {
        return Acad::eCannotBeErasedByCaller;
    }
    m_stub->store->erase(*m_stub, erasing);
    return Acad::eOk;
}

bool AcDbObject::isErased() const
{
    return m_stub != nullptr && m_stub->isErased;
}

Acad::ErrorStatus AcDbObject::upgradeOpen()
{
    if (isWriteEnabled()) {
        return Acad::eWasOpenForWrite;
    }
    if (m_readers == 0) {
        return Acad::eNotOpenForRead;
    }
    if (m_readers > 1) {
        return Acad::eWasOpenForRead;
    }
    m_readers = 0;
    m_hasWriter = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen()
{
    if (m_stub == nullptr || !m_hasWriter) {
        return Acad::eNotOpenForWrite;
    }
    m_hasWriter = false;
    m_readers = 1;
    return Acad::eOk;
}

bool AcDbObject::isReadEnabled() const
{
    return isWriteEnabled() || m_readers != 0;
}

bool AcDbObject::isWriteEnabled() const
{
    return m_stub == nullptr || m_hasWriter;
}

bool AcDbObject::isNewObject() const
{
    return m_stub == nullptr;
}

bool AcDbObject::isModified() const
{
    return m_stub == nullptr || m_stub->isChanged;
}

std::wstring AcDbObject::dxfName() const
{
    return m_groups.empty() ? std::wstring() : m_groups[0].text();
}

corma::host::Groups& AcDbObject::changeGroups()
{
    if (m_stub != nullptr) {
        m_stub->store->markChanged(*m_stub);
    }
    return m_groups;
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased)
{
    object = nullptr;
    if (id.isNull()) {
        return Acad::eNullObjectId;
    }
    if (mode != AcDb::kForRead && mode != AcDb::kForWrite) {
        return Acad::eNotImplementedYet; // nothing here sends notifications
    }
    AcDbStub& stub = *id.stub();
    if (stub.isErased && !openErased) {
        return Acad::eWasErased;
    }
    AcDbObject& resident = stub.store->resident(stub);
    const Acad::ErrorStatus status = corma::host::ObjectOpening::open(resident, mode);
    if (status == Acad::eOk) {
        object = &resident;
    }
    return status;
}
