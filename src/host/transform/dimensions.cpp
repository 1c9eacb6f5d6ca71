#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

namespace corma::host {

namespace {

// The low bits of group 70.
constexpr std::int64_t kTypeBits = 7;
constexpr std::int64_t kRotated = 0; // horizontal, vertical or at an angle
constexpr std::int64_t kAngular = 2;
constexpr std::int64_t kAngularByThreePoints = 5;

/// What all types of dimension have.
void moveCommonPart(RecordPart& part, const Motion& motion, const PlaneMotion& plane)
{
    constexpr int kTextMiddle = 11;
    constexpr int kPicture = 12; // where the block with the picture is inserted
    constexpr int kMeasurement = 42;
    constexpr int kHorizontal = 51;
    constexpr int kTextRotation = 53;

    part.movePoints(10, motion);
    part.movePoints(kTextMiddle, plane);
    part.setPoint(kPicture, plane.point(part.point(kPicture)));

    const std::int64_t type = part.integer(code::flags) & kTypeBits;
    if (type != kAngular && type != kAngularByThreePoints) {
        part.scale(kMeasurement, plane.scale());
    }
    // Stored as the angle from the user's X axis to that of the plane. A mirrored text is not
    // drawn upside down: its base line runs the other way.
    const double before = part.real(kHorizontal);
    const double turned = normalizedDegrees(before - plane.turn());
    const double mirrored = normalizedDegrees(-before - plane.turn());
    if (plane.mirrors()) {
        part.setReal(kHorizontal, mirrored);
        part.scale(kTextRotation, -1.0);
    } else if (plane.turn() != 0.0) {
        part.setReal(kHorizontal, turned);
    }
    part.movePlane(plane);
}

} // namespace

Acad::ErrorStatus transformDimension(Groups& groups, const Motion& motion)
{
    RecordPart common(groups, L"AcDbDimension");
    const PlaneMotion plane = motion.ofPlane(common.normal(), Mirroring::inPlane);
    if (!plane.isSimilar()) {
        return Acad::eCannotScaleNonUniformly;
    }
    const std::int64_t type = common.integer(code::flags) & kTypeBits;
    moveCommonPart(common, motion, plane);

    constexpr int kArcPoint = 16; // the only one in coordinates of the plane
    constexpr int kLeaderLength = 40;
    RecordPart whole(groups, groups.body());
    for (const int definition : {13, 14, 15}) {
        whole.movePoints(definition, motion);
    }
    whole.movePoints(kArcPoint, plane);
    whole.scale(kLeaderLength, plane.scale());

    constexpr int kAngle = 50;
    constexpr int kObliquing = 52; // of the extension lines, counted from that angle
    RecordPart linear(groups, L"AcDbAlignedDimension");
    if (type == kRotated || linear.has(kAngle)) {
        linear.setReal(kAngle, plane.direction(linear.real(kAngle)));
    }
    if (plane.mirrors()) {
        linear.scale(kObliquing, -1.0);
    }
    return Acad::eOk;
}

Acad::ErrorStatus transformLeader(Groups& groups, const Motion& motion)
{
    constexpr int kAnnotationHeight = 40;
    constexpr int kAnnotationWidth = 41;
    constexpr int kHorizontal = 211;
    RecordPart part(groups, L"AcDbLeader");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::inPlane);
    if (!plane.isSimilar()) {
        return Acad::eCannotScaleNonUniformly;
    }
    part.movePoints(10, motion);
    part.scale(kAnnotationHeight, plane.scale());
    part.scale(kAnnotationWidth, plane.scale());
    const AcGeVector3d horizontal = part.vector(kHorizontal, AcGeVector3d::kXAxis);
    part.setVector(kHorizontal, motion.direction(horizontal), AcGeVector3d::kXAxis);
    for (const int offset : {212, 213}) { // of the last vertex from the annotation
        part.setVector(offset, motion.vector(part.vector(offset)));
    }
    part.movePlane(plane);
    return Acad::eOk;
}

} // namespace corma::host
