#include "drawing/xx_atblk.h"

#include "drawing/side_database.h"
#include "drawing/xx_findblk.h"
#include "drawing/xx_get_bl_attributes.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"

namespace {

constexpr const wchar_t* kAtblkSource = L"xx_atblk.cpp";
constexpr int kOpenDrawingLine = 191; // where a drawing that cannot be read is reported
constexpr int kOpenDrawingCode = 301;

} // namespace

int xx_atblk(const wchar_t* name, std::wstring* path, xx_VarArray& result)
{
    const auto found = corma::findDrawing(corma::view(name), corma::DrawingNames::dwgOrDwt);
    if (found.status != RTNORM) {
        return found.status;
    }
    const corma::SideDatabase side = corma::readAside(found.path);
    if (side.status != Acad::eOk) {
        xx_reportError(kAtblkSource, kOpenDrawingLine, acadErrorStatusText(side.status),
                       kOpenDrawingCode);
        return RTCAN;
    }
    int status = RTNORM;
    const AcDbObjectId model = xx_findblk_int(ACDB_MODEL_SPACE, &status, side.database.get());
    if (status == RTNORM) {
        status = xx_get_attdefs(model, result, false);
    }
    if (status == RTNORM && path != nullptr) {
        *path = found.path;
    }
    return status;
}
