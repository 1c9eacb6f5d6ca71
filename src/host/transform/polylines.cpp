#include "host/transform.h"
#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

#include <array>

namespace corma::host {

namespace {

// Bits of group 70.
namespace polyline {
constexpr std::int64_t kInSpace = 8 | 16 | 64; // a 3D polyline, a mesh, a polyface mesh
} // namespace polyline

namespace vertex {
constexpr std::int64_t kInSpace = 32 | 64; // of a 3D polyline, of a mesh
constexpr std::int64_t kOfPolyface = 128;
constexpr std::int64_t kIsPosition = 64; // without it, one of a polyface mesh is a face
} // namespace vertex

// Widths at the start and the end of a segment, its bulge, the width of all segments.
constexpr int kStartWidth = 40;
constexpr int kConstantWidth = 43;

/// Widths and bulges, of which a polyline without them may be stretched. False where it may not.
bool moveWidthsAndBulges(Groups& groups, GroupRange in, const PlaneMotion& plane)
{
    for (std::size_t at = in.begin; at < in.end; ++at) {
        const double before = groups[at].real();
        const bool isOne = kStartWidth <= groups[at].code && groups[at].code <= kConstantWidth;
        if (!isOne || before == 0.0) {
            continue;
        }
        if (!plane.isSimilar()) {
            return false;
        }
        const double bulgeAfter = plane.mirrors() ? -before : before;
        setRealAt(groups, at, groups[at].code == code::bulge ? bulgeAfter : before * plane.scale());
    }
    return true;
}

void setElevation(Groups& groups, RecordPart& part, double elevation)
{
    constexpr int kElevation = 38;
    const auto firstVertex = groups.find(10, part.range());
    if (!part.has(kElevation) && elevation != 0.0 && firstVertex) {
        groups.insert(*firstVertex, Group(kElevation, elevation)); // vertices end the fixed part
    } else {
        part.setReal(kElevation, elevation);
    }
}

PolylineFrame frameOf(const Groups& vertexRecord, const Motion& motion)
{
    if (motion.owner() != nullptr) {
        return *motion.owner();
    }
    const std::int64_t flags = vertexRecord.integer(code::flags, vertexRecord.body());
    PolylineFrame frame;
    frame.isFlat = (flags & (vertex::kInSpace | vertex::kOfPolyface)) == 0;
    frame.elevation = vertexRecord.real(30, vertexRecord.body());
    return frame;
}

Acad::ErrorStatus transformFlatVertex(Groups& groups, const Motion& motion,
                                      const PolylineFrame& frame)
{
    RecordPart part(groups, groups.body());
    const PlaneMotion plane = motion.ofPlane(frame.normal, Mirroring::inPlane);
    if (!moveWidthsAndBulges(groups, part.range(), plane)) {
        return Acad::eCannotScaleNonUniformly;
    }
    AcGePoint3d position = part.point(10);
    // The height of all vertices is that of the polyline; many files repeat it, many say 0.
    const bool repeatsElevation = position.z == frame.elevation;
    const double zWithout = position.z;
    position.z = frame.elevation;
    position = plane.point(position);
    part.setPoint(10, {position.x, position.y, repeatsElevation ? position.z : zWithout});
    constexpr int kTangent = 50;
    if (part.has(kTangent)) {
        part.setReal(kTangent, plane.direction(part.real(kTangent)));
    }
    return Acad::eOk;
}

} // namespace

PolylineFrame PolylineFrame::of(const Groups& polyline)
{
    const GroupRange body = polyline.body();
    const Point normal = polyline.point(code::normal, body, {0.0, 0.0, 1.0});
    PolylineFrame frame;
    frame.isFlat = (polyline.integer(code::flags, body) & polyline::kInSpace) == 0;
    frame.normal = {normal.x, normal.y, normal.z};
    frame.elevation = polyline.real(30, body);
    return frame;
}

Acad::ErrorStatus transformLightPolyline(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbPolyline");
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::inPlane);
    if (!part.moveThickness(plane) || !moveWidthsAndBulges(groups, part.range(), plane)) {
        return Acad::eCannotScaleNonUniformly;
    }
    const double elevation = part.real(38);
    const GroupRange range = part.range();
    for (std::size_t at = range.begin; at < range.end; ++at) {
        if (groups[at].code == 10) {
            setPointAt(groups, at, plane.point(pointAt(groups, at, elevation)));
        }
    }
    part.movePlane(plane);
    setElevation(groups, part, plane.elevation(elevation));
    return Acad::eOk;
}

Acad::ErrorStatus transformPolyline(Groups& groups, const Motion& motion)
{
    const PolylineFrame frame = PolylineFrame::of(groups);
    if (!frame.isFlat) {
        return Acad::eOk; // it has no geometry of its own
    }
    RecordPart part(groups, L"AcDb2dPolyline");
    const PlaneMotion plane = motion.ofPlane(frame.normal, Mirroring::inPlane);
    if (!part.moveThickness(plane) || !moveWidthsAndBulges(groups, part.range(), plane)) {
        return Acad::eCannotScaleNonUniformly;
    }
    AcGePoint3d atElevation = part.point(10);
    atElevation.z = plane.elevation(frame.elevation);
    part.setPoint(10, atElevation);
    part.movePlane(plane);
    return Acad::eOk;
}

Acad::ErrorStatus transformVertex(Groups& groups, const Motion& motion)
{
    const PolylineFrame frame = frameOf(groups, motion);
    if (frame.isFlat) {
        return transformFlatVertex(groups, motion, frame);
    }
    const std::int64_t flags = groups.integer(code::flags, groups.body());
    const bool isFace = (flags & vertex::kOfPolyface) != 0 && (flags & vertex::kIsPosition) == 0;
    if (!isFace) {
        RecordPart(groups, groups.body()).movePoints(10, motion);
    }
    return Acad::eOk;
}

Acad::ErrorStatus transformSequenceEnd(Groups& /*groups*/, const Motion& /*motion*/)
{
    return Acad::eOk;
}

} // namespace corma::host
