#include "host/acdb_entity.h"

#include "host/color_index.h"
#include "host/model/Store.h"
#include "host/result_list.h"
#include "host/transform.h"

#include <cstdlib>
#include <iterator>

CORMA_HOST_CLASS_BODY(AcDbEntity, AcDbObject)
CORMA_HOST_CLASS_BODY(AcDbViewport, AcDbEntity)

namespace {

using namespace corma::host;

constexpr const wchar_t* kFirstLayer = L"0"; // which every drawing has

} // namespace

AcDbEntity::AcDbEntity(const wchar_t* dxfType, const wchar_t* subclass)
    : AcDbObject(dxfType)
{
    add({{code::subclass, kEntityMarker}, {code::layer, kFirstLayer}, {code::subclass, subclass}});
}

void AcDbEntity::add(std::vector<Group> groups)
{
    m_groups.insert(m_groups.size(), std::move(groups));
}

void AcDbEntity::addPoint(int code, const AcGePoint3d& point)
{
    m_groups.setPoint(code, {m_groups.size(), m_groups.size()}, {point.x, point.y, point.z});
}

AcDbObjectId AcDbEntity::blockId() const
{
    const Block* const block = stub() == nullptr ? nullptr : stub()->store->spaceOf(*stub());
    return block == nullptr ? AcDbObjectId() : AcDbObjectId(block->record);
}

// --- layer and colour ----------------------------------------------------------------------------

ACHAR* AcDbEntity::layer() const
{
    return heapCopy(m_groups.text(code::layer, m_groups.subclass(kEntityMarker), kFirstLayer));
}

AcDbObjectId AcDbEntity::layerId() const
{
    return stub() == nullptr
        ? AcDbObjectId()
        : AcDbObjectId(stub()->store->findEntry(
            TableKind::layer,
            m_groups.text(code::layer, m_groups.subclass(kEntityMarker), kFirstLayer)));
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* name)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (name == nullptr || *name == 0) {
        return Acad::eInvalidInput;
    }
    std::wstring spelled = name;
    if (stub() != nullptr) {
        const AcDbStub* const entry = stub()->store->findEntry(TableKind::layer, name);
        if (entry == nullptr) {
            return Acad::eKeyNotFound;
        }
        spelled = stub()->store->nameOfEntry(*entry);
    }
    Groups& groups = changeGroups();
    groups.set(code::layer, groups.subclass(kEntityMarker), std::move(spelled));
    return Acad::eOk;
}

unsigned short AcDbEntity::colorIndex() const
{
    return static_cast<unsigned short>(
        std::abs(m_groups.integer(code::color, m_groups.subclass(kEntityMarker), kColorByLayer)));
}

// --- transformation ------------------------------------------------------------------------------

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& matrix)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    Groups changed = m_groups;
    std::vector<AcDbStub*> subEntities;
    std::vector<Groups> changedSubEntities;
    AcDbStub* sub = stub() == nullptr ? nullptr : Store::firstSubEntity(*stub());
    for (; sub != nullptr; sub = Store::subEntityBehind(*sub)) {
        if (!sub->isErased && sub->type != RecordType::sequenceEnd) { // which lies nowhere
            subEntities.push_back(sub);
            changedSubEntities.push_back(stub()->store->groupsOf(*sub));
        }
    }
    const Acad::ErrorStatus status = transformRecords(changed, changedSubEntities, matrix);
    if (status != Acad::eOk) {
        return status;
    }
    changeGroups() = std::move(changed);
    for (std::size_t i = 0; i < subEntities.size(); ++i) {
        stub()->store->resident(*subEntities[i]).changeGroups() = std::move(changedSubEntities[i]);
    }
    return Acad::eOk;
}

// --- viewports -----------------------------------------------------------------------------------

namespace {

constexpr const wchar_t* kViewportMarker = L"AcDbViewport";
constexpr int kStatus = 68;
constexpr int kNumber = 69;
constexpr int kDirection = 16;

// Before R2000 a viewport keeps its view in extended data of the host: target, then direction.
std::optional<Point> oldDirection(const Groups& groups)
{
    constexpr int kExtendedText = 1000;
    constexpr int kExtendedPoint = 1010;
    std::size_t at = groups.body().end;
    while (at < groups.size()
           && !(groups[at].code == kExtendedText && groups[at].isText(L"MVIEW"))) {
        ++at;
    }
    const auto target = groups.find(kExtendedPoint, {at, groups.size()});
    const auto direction
        = target ? groups.find(kExtendedPoint, {*target + 1, groups.size()}) : std::nullopt;
    if (!direction) {
        return std::nullopt;
    }
    return groups.point(kExtendedPoint, {*direction, groups.size()});
}

} // namespace

// A view from above, one by one, that is off.
AcDbViewport::AcDbViewport()
    : AcDbEntity(L"VIEWPORT", kViewportMarker)
{
    constexpr int kWidth = 40;
    constexpr int kHeight = 41;
    addPoint(10, AcGePoint3d::kOrigin);
    add({{kWidth, 1.0}, {kHeight, 1.0}, {kStatus, 0}, {kNumber, 0}});
    addPoint(kDirection, AcGePoint3d::kOrigin + AcGeVector3d::kZAxis);
}

GroupRange AcDbViewport::own() const
{
    return m_groups.subclass(kViewportMarker);
}

short AcDbViewport::number() const
{
    const bool isOff = m_groups.integer(kStatus, own()) == 0;
    return isOff ? short {-1} : static_cast<short>(m_groups.integer(kNumber, own()));
}

AcGeVector3d AcDbViewport::viewDirection() const
{
    const Point above {0.0, 0.0, 1.0};
    const Point direction = m_groups.find(kDirection, own())
        ? m_groups.point(kDirection, own(), above)
        : oldDirection(m_groups).value_or(above);
    return {direction.x, direction.y, direction.z};
}
