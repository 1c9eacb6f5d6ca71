#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

#include <cmath>
#include <initializer_list>
#include <numbers>

namespace corma::host {

namespace {

constexpr int kDirection = 11;

void scaleAll(RecordPart& part, std::initializer_list<int> lengths, double factor)
{
    for (const int length : lengths) {
        part.scale(length, factor);
    }
}

/// The direction of a base line that is not told: the X axis of the world, or of the plane where
/// the former is not in the plane.
AcGeVector3d impliedDirection(const AcGeVector3d& normal)
{
    constexpr double kRightAngle = 1e-9;
    if (std::abs(normal.dotProduct(AcGeVector3d::kXAxis)) < kRightAngle) {
        return AcGeVector3d::kXAxis;
    }
    return AcGeMatrix3d().setToPlaneToWorld(normal) * AcGeVector3d::kXAxis;
}

/// The direction of the base line: a vector of the world, or an angle in the plane where another
/// writer left that.
void moveDirection(RecordPart& part, const Motion& motion, const PlaneMotion& plane)
{
    if (part.has(code::rotation)) {
        part.setReal(code::rotation, plane.direction(part.real(code::rotation)));
    }
    if (part.has(kDirection)) {
        part.setVector(kDirection, motion.direction(part.vector(kDirection)));
    } else if (!part.has(code::rotation)) {
        constexpr double kNoise = 1e-12;
        const AcGeVector3d after
            = withoutNoise(motion.direction(impliedDirection(plane.normalBefore())));
        const AcGeVector3d implied = impliedDirection(plane.normal());
        if ((after - implied).length() > kNoise) {
            part.setVector(kDirection, after, implied);
        }
    }
}

/// Factors of lengths along the base line and across it.
struct TextScale
{
    double width = 1.0;
    double height = 1.0;
};

TextScale uniformScale(const PlaneMotion& plane)
{
    return {plane.scale(), plane.scale()};
}

/// Where these differ by direction: how far the ends of the base line move apart, and the lines.
TextScale stretchedScale(const RecordPart& part, const PlaneMotion& plane)
{
    AcGeVector3d along = AcGeMatrix3d().setToWorldToPlane(plane.normalBefore())
        * part.vector(kDirection, impliedDirection(plane.normalBefore()));
    if (part.has(code::rotation) && !part.has(kDirection)) {
        const double angle = part.real(code::rotation) * std::numbers::pi / 180.0;
        along = {std::cos(angle), std::sin(angle), 0.0};
    }
    along = along.normal();
    const AcGeVector3d after = plane.vector(along);
    const AcGeVector3d across = plane.vector({-along.y, along.x, 0.0});
    return {after.length(), after.normal().crossProduct(across).length()};
}

/// The groups of an MTEXT, be it an entity or inside an attribute.
void moveText(RecordPart& part, const Motion& motion, const PlaneMotion& plane, TextScale scale)
{
    part.movePoints(code::position, motion);
    moveDirection(part, motion, plane);
    // Width of the frame and of the text; height of letters, of the text, of the frame.
    scaleAll(part, {41, 42}, scale.width);
    scaleAll(part, {40, 43, 46}, scale.height);
    part.movePlane(plane);
}

/// The columns of an MTEXT repeat its place under codes of their own.
void moveColumns(Groups& groups, const Motion& motion, double scale)
{
    constexpr int kColumnDirection = 10;
    constexpr int kColumnPosition = 11;
    constexpr int kColumnHeight = 46; // of each column
    RecordPart part(groups, embeddedObject(groups));
    part.setVector(kColumnDirection, motion.direction(part.vector(kColumnDirection)));
    part.movePoints(kColumnPosition, motion);
    // Width and height of the frame, extents of the text, width of a column, gap.
    scaleAll(part, {40, 41, 42, 43, 44, 45}, scale);
    for (std::size_t at = part.range().begin; at < part.range().end; ++at) {
        if (groups[at].code == kColumnHeight) {
            setRealAt(groups, at, groups[at].real() * scale);
        }
    }
}

} // namespace

Acad::ErrorStatus transformMultilineText(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbMText");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::turnedOver);
    if (!plane.isSimilar()) {
        return Acad::eCannotScaleNonUniformly;
    }
    moveText(part, motion, plane, uniformScale(plane));
    moveColumns(groups, motion, plane.scale());
    return Acad::eOk;
}

Acad::ErrorStatus transformEmbeddedText(Groups& groups, const Motion& motion)
{
    const GroupRange embedded = embeddedObject(groups);
    if (embedded.begin == embedded.end) {
        return Acad::eOk;
    }
    RecordPart part(groups, embedded);
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::turnedOver);
    if (!plane.isSimilar() && !motion.approximatesLetters()) {
        return Acad::eCannotScaleNonUniformly;
    }
    moveText(part, motion, plane,
             plane.isSimilar() ? uniformScale(plane) : stretchedScale(part, plane));
    return Acad::eOk;
}

Acad::ErrorStatus transformTolerance(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbFcf");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::turnedOver);
    if (!plane.isSimilar()) {
        return Acad::eCannotScaleNonUniformly;
    }
    part.movePoints(code::position, motion);
    moveDirection(part, motion, plane);
    part.movePlane(plane);
    return Acad::eOk;
}

} // namespace corma::host
