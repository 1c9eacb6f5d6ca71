#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

#include <cmath>
#include <numbers>

namespace corma::host {

namespace {

constexpr double kFullTurn = 2.0 * std::numbers::pi;

/// What a circle and an arc have in common. False when it would be no circle any more.
bool moveCircle(RecordPart& part, const PlaneMotion& plane)
{
    if (!plane.isSimilar() || !part.moveThickness(plane)) {
        return false;
    }
    part.movePoints(10, plane);
    part.scale(40, plane.scale());
    part.movePlane(plane);
    return true;
}

/// An ellipse about its center: major * cos t + minor * sin t. The two need not be at right angles.
struct EllipseAxes
{
    AcGeVector3d major;
    AcGeVector3d minor;

    [[nodiscard]] AcGeVector3d at(double parameter) const
    {
        return major * std::cos(parameter) + minor * std::sin(parameter);
    }

    /// The parameter of a point that is farthest from the center.
    [[nodiscard]] double farthest() const
    {
        return std::atan2(2.0 * major.dotProduct(minor),
                          major.dotProduct(major) - minor.dotProduct(minor))
            / 2.0;
    }
};

/// Parameters of an elliptical arc, counter-clockwise.
struct ParameterRange
{
    double begin = 0.0;
    double end = kFullTurn;

    [[nodiscard]] bool isFull() const
    {
        constexpr double kNoise = 1e-9;
        return std::abs(std::abs(end - begin) - kFullTurn) < kNoise;
    }

    [[nodiscard]] ParameterRange shifted(double by) const
    {
        if (isFull() || by == 0.0) {
            return *this; // a full ellipse begins anywhere
        }
        const double lowered = begin - by;
        const double turns = std::floor(lowered / kFullTurn) * kFullTurn;
        return {lowered - turns, end - by - turns};
    }

    [[nodiscard]] ParameterRange mirrored() const { return {kFullTurn - end, kFullTurn - begin}; }
};

} // namespace

Acad::ErrorStatus transformCircle(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbCircle");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::inPlane);
    return moveCircle(part, plane) ? Acad::eOk : Acad::eCannotScaleNonUniformly;
}

Acad::ErrorStatus transformArc(Groups& groups, const Motion& motion)
{
    RecordPart circle(groups, L"AcDbCircle");
    const PlaneMotion plane = motion.ofPlane(circle.normal(), Mirroring::inPlane);
    if (!moveCircle(circle, plane)) {
        return Acad::eCannotScaleNonUniformly;
    }
    RecordPart arc(groups, L"AcDbArc");
    const double begin = plane.direction(arc.real(50));
    const double end = plane.direction(arc.real(51));
    arc.setReal(50, plane.mirrors() ? end : begin);
    arc.setReal(51, plane.mirrors() ? begin : end);
    return Acad::eOk;
}

Acad::ErrorStatus transformEllipse(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbEllipse");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::inPlane);
    const AcGeVector3d major = part.vector(11);
    const AcGeVector3d minor = plane.normalBefore().crossProduct(major) * part.real(40, 1.0);
    const EllipseAxes image {motion.vector(major), motion.vector(minor)};
    // Axes that stay at right angles stay the axes, and the ratio keeps its digits.
    const double shift = plane.isSimilar() ? 0.0 : image.farthest();
    const ParameterRange range {part.real(41), part.real(42, kFullTurn)};
    ParameterRange after = range.shifted(shift);
    if (plane.mirrors()) {
        after = after.mirrored();
    }

    part.movePoints(10, motion);
    if (plane.isSimilar()) {
        part.setVector(11, image.major);
    } else {
        const AcGeVector3d longAxis = image.at(shift);
        const AcGeVector3d shortAxis = image.at(shift + std::numbers::pi / 2.0);
        part.setVector(11, longAxis);
        part.setReal(40, shortAxis.length() / longAxis.length(), 1.0);
    }
    part.setReal(41, after.begin);
    part.setReal(42, after.end, kFullTurn);
    part.movePlane(plane);
    return Acad::eOk;
}

Acad::ErrorStatus transformSpline(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbSpline");
    part.movePoints(10, motion); // control points
    part.movePoints(11, motion); // fit points
    for (const int tangent : {12, 13}) {
        part.setVector(tangent, motion.direction(part.vector(tangent)));
    }
    part.scale(44, motion.lengthScale()); // how far the curve may pass from its fit points
    if (part.has(code::normal)) { // only a plane one has a normal
        part.movePlane(motion.ofPlane(part.normal(), Mirroring::inPlane));
    }
    return Acad::eOk;
}

} // namespace corma::host
