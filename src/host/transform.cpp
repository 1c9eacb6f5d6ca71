#include "host/transform.h"

#include "host/transform/Motion.h"
#include "host/transform/transformers.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace corma::host {

namespace {

struct TypeRow
{
    std::wstring_view name;
    Transformer* transform;
};

constexpr TypeRow kTransformers[] = {
    {L"3DFACE", transformFace},         {L"ARC", transformArc},
    {L"ATTDEF", transformAttribute},    {L"ATTRIB", transformAttribute},
    {L"CIRCLE", transformCircle},       {L"DIMENSION", transformDimension},
    {L"ELLIPSE", transformEllipse},     {L"HATCH", transformHatch},
    {L"INSERT", transformInsert},       {L"LEADER", transformLeader},
    {L"LINE", transformLine},           {L"LWPOLYLINE", transformLightPolyline},
    {L"MTEXT", transformMultilineText}, {L"POINT", transformPoint},
    {L"POLYLINE", transformPolyline},   {L"RAY", transformRay},
    {L"SEQEND", transformSequenceEnd},  {L"SHAPE", transformShape},
    {L"SOLID", transformSolid},         {L"SPLINE", transformSpline},
    {L"TEXT", transformText},           {L"TOLERANCE", transformTolerance},
    {L"TRACE", transformSolid},         {L"VERTEX", transformVertex},
    {L"VIEWPORT", transformViewport},   {L"XLINE", transformRay},
};

Transformer* transformerFor(const Groups& groups)
{
    if (groups.empty() || !groups.isUnderstood()) {
        return nullptr;
    }
    const auto* const row
        = std::find_if(std::begin(kTransformers), std::end(kTransformers),
                       [&](const auto& type) { return groups[0].isText(type.name); });
    return row == std::end(kTransformers) ? nullptr : row->transform;
}

bool isUsable(const AcGeMatrix3d& matrix)
{
    const double* const first = &matrix.entry[0][0];
    const bool isFinite = std::all_of(first, first + 16, [](double x) { return std::isfinite(x); });
    return isFinite && !matrix.isSingular();
}

// On failure the groups are half done.
Acad::ErrorStatus transformInPlace(Groups& groups, const AcGeMatrix3d& matrix, const Motion& motion)
{
    Transformer* const transform = transformerFor(groups);
    if (transform == nullptr) {
        return Acad::eNotImplementedYet;
    }
    if (!isUsable(matrix)) {
        return Acad::eInvalidInput;
    }
    if (matrix == AcGeMatrix3d::kIdentity) {
        return Acad::eOk; // not even the last digit of a tilted entity changes
    }
    const Acad::ErrorStatus status = transform(groups, motion);
    if (status == Acad::eOk) {
        transformExtendedData(groups, motion);
    }
    return status;
}

} // namespace

Acad::ErrorStatus transformRecord(Groups& groups, const AcGeMatrix3d& matrix,
                                  const PolylineFrame* owner)
{
    Groups changed = groups;
    const Acad::ErrorStatus status = transformInPlace(changed, matrix, Motion(matrix, owner));
    if (status == Acad::eOk) {
        groups = std::move(changed);
    }
    return status;
}

Acad::ErrorStatus transformPrescribed(Groups& attribute, const AcGeMatrix3d& matrix)
{
    return transformInPlace(attribute, matrix, Motion(matrix, Letters::approximate));
}

Acad::ErrorStatus transformRecords(Groups& entity, std::span<Groups> subEntities,
                                   const AcGeMatrix3d& matrix)
{
    const PolylineFrame frame = PolylineFrame::of(entity);
    Groups changed = entity;
    std::vector<Groups> changedSubEntities(subEntities.begin(), subEntities.end());
    Acad::ErrorStatus status = transformRecord(changed, matrix);
    for (auto sub = changedSubEntities.begin();
         status == Acad::eOk && sub != changedSubEntities.end(); ++sub) {
        status = transformRecord(*sub, matrix, &frame);
    }
    if (status == Acad::eOk) {
        entity = std::move(changed);
        std::move(changedSubEntities.begin(), changedSubEntities.end(), subEntities.begin());
    }
    return status;
}

} // namespace corma::host
