#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

#include <cmath>
#include <numbers>

namespace corma::host {

namespace {

/// What a transformation makes of the axes of an insertion: the factors along them and the new
/// angle of the X axis. A mirrored one has its X axis reversed.
struct InsertionAxes
{
    double xFactor = 0.0;
    double yFactor = 0.0;
    double rotation = 0.0;
    bool areAtRightAngles = false;
};

InsertionAxes axesOf(const PlaneMotion& plane, double rotation)
{
    const double side = plane.mirrors() ? -1.0 : 1.0;
    if (plane.isSimilar()) {
        return {.xFactor = side * plane.scale(),
                .yFactor = plane.scale(),
                .rotation = plane.mirrors() ? normalizedDegrees(plane.turn() - rotation)
                                            : plane.direction(rotation),
                .areAtRightAngles = true};
    }
    constexpr double kRightAngle = 1e-9;
    const double angle = rotation * std::numbers::pi / 180.0;
    const AcGeVector3d xAxis = plane.vector({std::cos(angle), std::sin(angle), 0.0});
    const AcGeVector3d yAxis = plane.vector({-std::sin(angle), std::cos(angle), 0.0});
    return {.xFactor = side * xAxis.length(),
            .yFactor = yAxis.length(),
            .rotation = degreesOf(xAxis * side),
            .areAtRightAngles = std::abs(xAxis.normal().dotProduct(yAxis.normal())) <= kRightAngle};
}

} // namespace

Acad::ErrorStatus transformInsert(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbBlockReference");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::inPlane);
    const InsertionAxes axes = axesOf(plane, part.real(50));
    const auto zFactor = plane.upright();
    if (!axes.areAtRightAngles || !zFactor) {
        return Acad::eCannotScaleNonUniformly;
    }
    part.movePoints(10, plane);
    part.setReal(41, part.real(41, 1.0) * axes.xFactor, 1.0);
    part.setReal(42, part.real(42, 1.0) * axes.yFactor, 1.0);
    part.setReal(43, part.real(43, 1.0) * *zFactor, 1.0);
    part.setReal(50, axes.rotation);
    part.scale(44, axes.xFactor); // from column to column
    part.scale(45, axes.yFactor); // from row to row
    part.movePlane(plane);
    return Acad::eOk;
}

Acad::ErrorStatus transformViewport(Groups& groups, const Motion& motion)
{
    if (!motion.isUniform()) {
        return Acad::eCannotScaleNonUniformly;
    }
    RecordPart part(groups, L"AcDbViewport");
    part.movePoints(10, motion);
    part.scale(40, motion.lengthScale());
    part.scale(41, motion.lengthScale());
    return Acad::eOk;
}

} // namespace corma::host
