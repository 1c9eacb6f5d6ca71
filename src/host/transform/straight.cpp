#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

#include <cmath>

namespace corma::host {

namespace {

/// A normal that is nothing but the direction of the thickness: it may go anywhere.
void moveExtrusion(RecordPart& part, const Motion& motion)
{
    const AcGeVector3d normal = part.normal();
    const AcGeVector3d along = withoutNoise(motion.direction(normal));
    const double factor = motion.vector(normal).length();
    constexpr double kNoise = 1e-12;
    if ((along - normal).length() > kNoise) {
        part.setVector(code::normal, along, AcGeVector3d::kZAxis);
    }
    if (std::abs(factor - 1.0) > kNoise) {
        part.scale(code::thickness, factor);
    }
}

} // namespace

Acad::ErrorStatus transformLine(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbLine");
    part.movePoints(10, motion);
    part.movePoints(11, motion);
    moveExtrusion(part, motion);
    return Acad::eOk;
}

Acad::ErrorStatus transformPoint(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbPoint");
    part.movePoints(10, motion);
    // The angle is measured from the user's X axis to that of the plane, so it has the other sign.
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::inPlane);
    const double angle = part.real(50);
    const double after = plane.direction(-angle);
    if (after != -angle) {
        part.setReal(50, normalizedDegrees(-after));
    }
    moveExtrusion(part, motion);
    return Acad::eOk;
}

Acad::ErrorStatus transformRay(Groups& groups, const Motion& motion)
{
    const bool isRay = groups[0].isText(L"RAY");
    RecordPart part(groups, isRay ? L"AcDbRay" : L"AcDbXline");
    part.movePoints(10, motion);
    part.setVector(11, motion.direction(part.vector(11)));
    return Acad::eOk;
}

Acad::ErrorStatus transformFace(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbFace");
    for (int corner = 10; corner <= 13; ++corner) {
        part.movePoints(corner, motion);
    }
    return Acad::eOk;
}

Acad::ErrorStatus transformSolid(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbTrace");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::inPlane);
    for (int corner = 10; corner <= 13; ++corner) {
        part.movePoints(corner, plane);
    }
    if (!part.moveThickness(plane)) {
        return Acad::eCannotScaleNonUniformly;
    }
    part.movePlane(plane);
    return Acad::eOk;
}

} // namespace corma::host
