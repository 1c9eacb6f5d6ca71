// The view, viewport and space that the user works in.

#include "drawing/host_variables.h"
#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "host/host.h"
#include <corma/entities.h>

#include <array>

using corma::host::Opened;

namespace {

constexpr const wchar_t* kCurvwdirSource = L"xx_curvwdir.cpp";
constexpr int kDirectionLine = 38; // where a view that cannot be had is reported
constexpr short kPaperViewport = 1; // number of a layout's own viewport; its windows have others

AcGeVector3d viewDirection()
{
    std::array<double, 3> direction {};
    const int status = xx_get_variable(L"VIEWDIR", {RT3DPOINT, direction.data()}, 0);
    if (status != RTNORM) {
        xx_reportError(kCurvwdirSource, kDirectionLine, L"100", status);
        return {};
    }
    acdbUcs2Wcs(direction.data(), direction.data(), true);
    return {direction[0], direction[1], direction[2]};
}

bool isInPaperSpace(AcDbDatabase* database)
{
    AcDbDatabase* const working = acdbHostApplicationServices()->workingDatabase();
    const bool isWorking = database == nullptr || database == working;
    if (working == nullptr || !isWorking || working->tilemode()) {
        return false;
    }
    const Opened<AcDbViewport> viewport(acedGetCurViewportObjectId());
    return viewport && viewport->number() <= kPaperViewport;
}

} // namespace

AcGeVector3d xx_getCurrentViewDir_arx()
{
    return corma::atBoundary(kCurvwdirSource, __LINE__, AcGeVector3d(), viewDirection);
}

AcDbObjectId xx_getCurViewportObjectId_arx()
{
    return acedGetCurViewportObjectId();
}

const wchar_t* xx_current_space_name(AcDbDatabase* database)
{
    return corma::atBoundary(kCurvwdirSource, __LINE__, ACDB_MODEL_SPACE, [&] {
        return isInPaperSpace(database) ? ACDB_PAPER_SPACE : ACDB_MODEL_SPACE;
    });
}
