// Erasing of objects.

#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "host/acdb_object.h"
#include <corma/entities.h>

using corma::host::Opened;

namespace {

constexpr const wchar_t* kCormaSource = L"xx_corma.cpp";
constexpr int kEraseLine = 244; // where an object that cannot be opened is reported

int eraseEach(const AcDbObjectIdArray& ids)
{
    for (const AcDbObjectId id : ids) {
        const Opened<AcDbObject> object(id, AcDb::kForWrite);
        if (!object) {
            xx_reportError(kCormaSource, kEraseLine, L"0", 0);
            return RTCAN;
        }
        object->erase(true);
    }
    return RTNORM;
}

} // namespace

int xx_erase_ids(const AcDbObjectIdArray& ids)
{
    return corma::atBoundary(kCormaSource, __LINE__, RTCAN, [&] { return eraseEach(ids); });
}
