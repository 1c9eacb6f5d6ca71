#include "host/acdb_entity.h"
#include "host/model/Store.h"
#include "host/new_records.h"

#include <numbers>

CORMA_HOST_CLASS_BODY(AcDbBlockReference, AcDbEntity)

namespace {

using namespace corma::host;

constexpr const wchar_t* kReferenceMarker = L"AcDbBlockReference";
constexpr const wchar_t* kMultipleMarker
    = L"AcDbMInsertBlock"; // of a reference in rows and columns
constexpr int kScales[] = {41, 42, 43};
constexpr int kAttributesFollow = 66;

AcGePoint3d pointFrom(const Point& point)
{
    return {point.x, point.y, point.z};
}

bool isAttribute(const AcDbStub& stub)
{
    return stub.type == RecordType::attribute && !stub.isErased;
}

AcDbStub* firstAttribute(const AcDbStub& reference)
{
    AcDbStub* at = Store::firstSubEntity(reference);
    while (at != nullptr && !isAttribute(*at)) {
        at = Store::subEntityBehind(*at);
    }
    return at;
}

// A sub-entity is in the layer and space of what it belongs to.
void takeSpace(Groups& groups, const Groups& reference)
{
    const GroupRange entity = reference.subclass(kEntityMarker);
    const auto layer = groups.find(code::layer);
    for (const int spaceCode : {code::layoutName, code::paperSpace}) {
        if (const auto at = reference.find(spaceCode, entity); at && layer) {
            groups.insert(*layer, Group(spaceCode, reference[*at].value));
        }
    }
}

} // namespace

AcDbBlockReference::AcDbBlockReference()
    : AcDbBlockReference(AcGePoint3d::kOrigin, {})
{
}

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord)
    : AcDbEntity(L"INSERT", kReferenceMarker)
{
    add({{code::name, L""}});
    addPoint(code::position, position);
    if (!blockTableRecord.isNull()) {
        setBlockTableRecord(blockTableRecord);
    }
}

GroupRange AcDbBlockReference::own() const
{
    const GroupRange reference = m_groups.subclass(kReferenceMarker);
    return reference.begin < reference.end ? reference : m_groups.subclass(kMultipleMarker);
}

AcDbObjectId AcDbBlockReference::blockTableRecord() const
{
    const Block* const block
        = stub() == nullptr ? nullptr : stub()->store->findBlock(m_groups.text(code::name, own()));
    return block == nullptr ? AcDbObjectId() : AcDbObjectId(block->record);
}

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId id)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (id.isNull()) {
        return Acad::eNullObjectId;
    }
    const Block* const block = id.stub()->store->blockOf(*id.stub());
    if (block == nullptr || block->record != id.stub()) {
        return Acad::eWrongObjectType;
    }
    if (stub() != nullptr && stub()->store != id.stub()->store) {
        return Acad::eWrongDatabase;
    }
    changeGroups().set(code::name, own(), block->name);
    return Acad::eOk;
}

// --- place ---------------------------------------------------------------------------------------

AcGePoint3d AcDbBlockReference::position() const
{
    AcGePoint3d point = pointFrom(m_groups.point(code::position, own()));
    return point.transformBy(AcGeMatrix3d().setToPlaneToWorld(normal()));
}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    AcGePoint3d point = position;
    point.transformBy(AcGeMatrix3d().setToWorldToPlane(normal()));
    changeGroups().setPoint(code::position, own(), {point.x, point.y, point.z});
    return Acad::eOk;
}

AcGeScale3d AcDbBlockReference::scaleFactors() const
{
    return {m_groups.real(kScales[0], own(), 1.0), m_groups.real(kScales[1], own(), 1.0),
            m_groups.real(kScales[2], own(), 1.0)};
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    const double factors[] = {scale.sx, scale.sy, scale.sz};
    for (const double factor : factors) {
        if (factor == 0.0) {
            return Acad::eInvalidInput;
        }
    }
    Groups& groups = changeGroups();
    for (std::size_t axis = 0; axis < std::size(kScales); ++axis) {
        if (groups.real(kScales[axis], own(), 1.0) != factors[axis]) {
            groups.set(kScales[axis], own(), factors[axis]);
        }
    }
    return Acad::eOk;
}

double AcDbBlockReference::rotation() const
{
    return m_groups.real(code::rotation, own()) * kRadians;
}

Acad::ErrorStatus AcDbBlockReference::setRotation(double angle)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    changeGroups().set(code::rotation, own(), angle / kRadians);
    return Acad::eOk;
}

AcGeVector3d AcDbBlockReference::normal() const
{
    const AcGeVector3d normal
        = pointFrom(m_groups.point(code::normal, own(), {0.0, 0.0, 1.0})).asVector();
    return normal.isZeroLength() ? AcGeVector3d::kZAxis : normal;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const
{
    const AcDbObjectId record = blockTableRecord();
    AcGePoint3d origin;
    if (!record.isNull()) {
        Store& store = *stub()->store;
        origin = pointFrom(store.originOf(*store.blockOf(*record.stub())));
    }
    const AcGeScale3d scale = scaleFactors();
    AcGeMatrix3d scaling;
    const auto factor = [](double told) { return told == 0.0 ? 1.0 : told; };
    scaling.setCoordSystem(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis * factor(scale.sx),
                           AcGeVector3d::kYAxis * factor(scale.sy),
                           AcGeVector3d::kZAxis * factor(scale.sz));
    return AcGeMatrix3d().setToTranslation(position().asVector())
        * AcGeMatrix3d().setToPlaneToWorld(normal())
        * AcGeMatrix3d().setToRotation(rotation(), AcGeVector3d::kZAxis) * scaling
        * AcGeMatrix3d().setToTranslation(-origin.asVector());
}

// --- attributes ----------------------------------------------------------------------------------

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const
{
    return new AcDbObjectIterator(stub());
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute)
{
    id.setNull();
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (stub() == nullptr) {
        return Acad::eNotApplicable;
    }
    if (attribute == nullptr) {
        return Acad::eNullObjectPointer;
    }
    if (attribute->stub() != nullptr) {
        return Acad::eAlreadyInDb;
    }
    Store& store = *stub()->store;
    Groups& groups = attribute->changeGroups();
    fitToVersion(groups, store.version());
    takeSpace(groups, m_groups);
    AcDbStub* const entry = store.appendSubEntity(*stub(), RecordType::attribute);
    store.setResident(*entry, std::unique_ptr<AcDbObject>(attribute), stub()->handle);
    openForWrite(*attribute);
    endAttributes();
    id = AcDbObjectId(entry);
    return Acad::eOk;
}

namespace {

AcDbStub* sequenceEndOf(const AcDbStub& reference)
{
    AcDbStub* at = Store::firstSubEntity(reference);
    while (at != nullptr && at->type != RecordType::sequenceEnd) {
        at = Store::subEntityBehind(*at);
    }
    return at;
}

// The end of the list is in the reference's layer.
class SequenceEnd : public AcDbEntity
{
public:
    explicit SequenceEnd(const Groups& reference)
        : AcDbEntity(L"SEQEND", L"")
    {
        m_groups.erase(m_groups.size() - 1); // it has no subclass of its own
        const GroupRange entity = reference.subclass(kEntityMarker);
        m_groups.set(code::layer, m_groups.body(),
                     std::wstring(reference.text(code::layer, entity, L"0")));
        takeSpace(m_groups, reference);
    }
};

} // namespace

void AcDbBlockReference::endAttributes()
{
    Store& store = *stub()->store;
    const bool hasAttributes = firstAttribute(*stub()) != nullptr;
    AcDbStub* const present = sequenceEndOf(*stub());
    if (present != nullptr) {
        store.erase(*present, !hasAttributes);
    } else if (hasAttributes) {
        auto end = std::make_unique<SequenceEnd>(m_groups);
        fitToVersion(end->changeGroups(), store.version());
        AcDbStub* const entry = store.appendSubEntity(*stub(), RecordType::sequenceEnd);
        store.setResident(*entry, std::move(end), stub()->handle);
    }
    const auto flag = m_groups.find(kAttributesFollow, own());
    if (!hasAttributes && flag) {
        changeGroups().erase(*flag);
    } else if (hasAttributes && !flag) {
        const std::size_t name = m_groups.find(code::name, own()).value_or(own().begin);
        changeGroups().insert(name, Group(kAttributesFollow, 1));
    } else if (hasAttributes && m_groups[*flag].integer() != 1) {
        changeGroups()[*flag].set(std::int64_t {1});
    }
}

AcDbObjectIterator::AcDbObjectIterator(AcDbStub* owner)
    : m_owner(owner)
{
    start();
}

void AcDbObjectIterator::start()
{
    m_at = m_owner == nullptr ? nullptr : firstAttribute(*m_owner);
}

bool AcDbObjectIterator::done() const
{
    return m_at == nullptr;
}

void AcDbObjectIterator::step()
{
    do {
        m_at = m_at == nullptr ? nullptr : Store::subEntityBehind(*m_at);
    } while (m_at != nullptr && !isAttribute(*m_at));
}

AcDbObjectId AcDbObjectIterator::objectId() const
{
    return AcDbObjectId(m_at);
}
