#include "host/view.h"

#include "host/host.h"
#include "host/model/Store.h"

namespace corma::host {

namespace {

constexpr int kViewDirection = 16;
constexpr int kViewportNumber = 69;
constexpr int kLayoutOfBlock = 340;
constexpr int kLastViewport = 331; // of a LAYOUT

constexpr std::int64_t kPaperViewport = 1; // the number of a layout's own viewport

AcGePoint3d asPoint(const Point& point)
{
    return {point.x, point.y, point.z};
}

AcGeVector3d asVector(const Point& point)
{
    return {point.x, point.y, point.z};
}

Point pointVariable(const Store& store, std::wstring_view name, Point fallback)
{
    constexpr int kPoint = 10;
    const Groups groups = store.variable(name);
    return groups.point(kPoint, groups.all(), fallback);
}

std::int64_t numberOf(const AcDbStub& viewport)
{
    const Groups groups = viewport.store->groupsOf(viewport);
    return groups.integer(kViewportNumber, groups.body(), kPaperViewport);
}

AcDbStub* activeModelViewport(Store& store)
{
    return store.findEntry(TableKind::viewport, L"*Active");
}

// The viewport that was last active in the current layout, as its LAYOUT tells it; of a drawing
// without layouts the one of the paper itself.
AcDbStub* layoutViewport(Store& store)
{
    const Block* const paper = store.findBlock(ACDB_PAPER_SPACE);
    if (paper == nullptr) {
        return nullptr;
    }
    const Groups record = store.groupsOf(*paper->record);
    const AcDbStub* const layout = store.find(record.handle(kLayoutOfBlock, record.body()));
    if (layout != nullptr) {
        const Groups groups = store.groupsOf(*layout);
        AcDbStub* const last
            = store.find(groups.handle(kLastViewport, groups.subclass(L"AcDbLayout")));
        if (last != nullptr && last->type == RecordType::viewport && !last->isErased) {
            return last;
        }
    }
    for (AcDbStub* at = store.firstEntity(*paper); at != nullptr;
         at = store.entityBehind(*paper, *at)) {
        if (at->type == RecordType::viewport && !at->isErased && numberOf(*at) == kPaperViewport) {
            return at;
        }
    }
    return nullptr;
}

} // namespace

AcDbStub* currentViewportOf(AcDbDatabase& database)
{
    Store& store = database.store();
    return database.tilemode() ? activeModelViewport(store) : layoutViewport(store);
}

WorkPlace workPlaceOf(AcDbDatabase& database)
{
    if (database.tilemode()) {
        return WorkPlace::model;
    }
    const AcDbStub* const viewport = layoutViewport(database.store());
    if (viewport == nullptr) {
        return WorkPlace::model;
    }
    return numberOf(*viewport) <= kPaperViewport ? WorkPlace::paper : WorkPlace::floatingViewport;
}

AcGeMatrix3d userCoordinatesOf(AcDbDatabase& database)
{
    const bool isPaper = workPlaceOf(database) == WorkPlace::paper;
    const Store& store = database.store();
    const Point origin = pointVariable(store, isPaper ? L"$PUCSORG" : L"$UCSORG", {});
    const Point xAxis = pointVariable(store, isPaper ? L"$PUCSXDIR" : L"$UCSXDIR", {1, 0, 0});
    const Point yAxis = pointVariable(store, isPaper ? L"$PUCSYDIR" : L"$UCSYDIR", {0, 1, 0});
    const AcGeVector3d x = asVector(xAxis).normal();
    const AcGeVector3d z = x.crossProduct(asVector(yAxis)).normal();
    AcGeMatrix3d matrix;
    if (x.isZeroLength() || z.isZeroLength()) {
        return matrix; // axes that span no plane
    }
    return matrix.setCoordSystem(asPoint(origin), x, z.crossProduct(x), z);
}

AcGeVector3d viewDirectionOf(AcDbDatabase& database)
{
    const AcDbStub* const viewport = currentViewportOf(database);
    if (viewport == nullptr) {
        return AcGeVector3d::kZAxis;
    }
    const Groups groups = viewport->store->groupsOf(*viewport);
    return asVector(groups.point(kViewDirection, groups.body(), {0, 0, 1}));
}

} // namespace corma::host

bool acdbUcsMatrix(AcGeMatrix3d& matrix, AcDbDatabase* database)
{
    matrix.setToIdentity();
    if (database == nullptr) {
        database = acdbHostApplicationServices()->workingDatabase();
    }
    if (database == nullptr) {
        return false;
    }
    matrix = corma::host::userCoordinatesOf(*database);
    return true;
}

bool acdbUcs2Wcs(const ads_point p, ads_point q, bool isVector)
{
    AcGeMatrix3d matrix;
    const bool hasDrawing = acdbUcsMatrix(matrix);
    AcGePoint3d point(p[0], p[1], p[2]);
    AcGeVector3d vector = point.asVector();
    vector.transformBy(matrix);
    point.transformBy(matrix);
    for (unsigned int i = 0; i < 3; ++i) {
        q[i] = isVector ? vector[i] : point[i];
    }
    return hasDrawing;
}

AcDbObjectId acedGetCurViewportObjectId()
{
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    return database == nullptr ? AcDbObjectId()
                               : AcDbObjectId(corma::host::currentViewportOf(*database));
}
