#include "host/transform/RecordPart.h"
#include "host/transform/transformers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <numbers>

namespace corma::host {

namespace {

/// What a group of a hatch belongs to. Codes have other meanings from part to part.
enum class HatchPart
{
    head,
    polyline, // a boundary path in one piece
    edges, // a boundary path before its first edge
    line,
    arc,
    ellipticArc,
    spline,
    pattern,
    seeds,
    gradient
};

/// What a transformation does to a group.
enum class Effect
{
    point, // in the plane; y stands under the code + 10
    vector,
    tangent, // a direction with its length
    patternPoint, // y stands under the next code
    patternVector,
    length,
    angle, // degrees
    arcAngles, // of begin and end, the second in the next group
    radians
};

struct HatchRule
{
    HatchPart part;
    int code;
    Effect effect;
};

constexpr HatchRule kRules[] = {
    {HatchPart::polyline, 10, Effect::point},
    {HatchPart::line, 10, Effect::point},
    {HatchPart::line, 11, Effect::point},
    {HatchPart::arc, 10, Effect::point},
    {HatchPart::arc, 40, Effect::length},
    {HatchPart::arc, 50, Effect::arcAngles},
    {HatchPart::ellipticArc, 10, Effect::point},
    {HatchPart::ellipticArc, 11, Effect::vector}, // the major axis, from which its angles count
    {HatchPart::spline, 10, Effect::point},
    {HatchPart::spline, 11, Effect::point},
    {HatchPart::spline, 12, Effect::tangent},
    {HatchPart::spline, 13, Effect::tangent},
    {HatchPart::pattern, 52, Effect::angle},
    {HatchPart::pattern, 41, Effect::length},
    {HatchPart::pattern, 53, Effect::angle}, // of a family of lines, and so on
    {HatchPart::pattern, 43, Effect::patternPoint},
    {HatchPart::pattern, 45, Effect::patternVector},
    {HatchPart::pattern, 49, Effect::length},
    {HatchPart::seeds, 10, Effect::point},
    {HatchPart::gradient, 460, Effect::radians},
};

constexpr int kElevation = 30;
constexpr int kIsSolid = 70;
constexpr int kHasGradient = 450;

HatchPart edgeOf(std::int64_t type)
{
    constexpr HatchPart kEdges[] = {HatchPart::edges, HatchPart::line, HatchPart::arc,
                                    HatchPart::ellipticArc, HatchPart::spline};
    const bool isKnown = 0 <= type && type < std::ssize(kEdges);
    return isKnown ? kEdges[type] : HatchPart::edges;
}

/// The part that a group begins, else the part that it is in.
HatchPart partAt(const Group& group, HatchPart current)
{
    constexpr int kPath = 92;
    constexpr std::int64_t kIsPolyline = 2;
    constexpr int kEdge = 72; // in a polyline it tells whether there are bulges
    constexpr int kStyle = 75; // ends the boundary
    constexpr int kSeeds = 98;
    const bool isInBoundary = HatchPart::head < current && current < HatchPart::pattern;
    switch (group.code) {
    case kPath:
        return (group.integer() & kIsPolyline) != 0 ? HatchPart::polyline : HatchPart::edges;
    case kEdge:
        return isInBoundary && current != HatchPart::polyline ? edgeOf(group.integer()) : current;
    case kStyle:
        return HatchPart::pattern;
    case kSeeds:
        return HatchPart::seeds;
    case kHasGradient:
        return HatchPart::gradient;
    default:
        return current;
    }
}

/// Curves that are parts of circles, patterns and gradients cannot be stretched.
bool mayBeStretched(const Groups& groups, GroupRange in)
{
    const bool hasPattern = groups.integer(kIsSolid, in) == 0;
    if (hasPattern || groups.integer(kHasGradient, in) != 0) {
        return false;
    }
    HatchPart part = HatchPart::head;
    for (std::size_t at = in.begin; at < in.end; ++at) {
        part = partAt(groups[at], part);
        const bool isBulge = part == HatchPart::polyline && groups[at].code == code::bulge
            && groups[at].real() != 0.0;
        if (isBulge || part == HatchPart::arc || part == HatchPart::ellipticArc) {
            return false;
        }
    }
    return true;
}

/// Changes the groups of a hatch one by one.
class HatchMover
{
public:
    HatchMover(Groups& groups, GroupRange range, const PlaneMotion& plane, double elevation)
        : m_groups(groups)
        , m_range(range)
        , m_plane(plane)
        , m_elevation(elevation)
    {
    }

    void moveAll()
    {
        HatchPart part = HatchPart::head;
        for (std::size_t at = m_range.begin; at < m_range.end; ++at) {
            part = partAt(m_groups[at], part);
            const auto* const rule = std::find_if(
                std::begin(kRules), std::end(kRules), [&](const HatchRule& candidate) {
                    return candidate.part == part && candidate.code == m_groups[at].code;
                });
            if (rule != std::end(kRules)) {
                apply(rule->effect, at);
            }
        }
    }

private:
    void apply(Effect effect, std::size_t at)
    {
        const double before = m_groups[at].real();
        switch (effect) {
        case Effect::point:
            setPointAt(m_groups, at, m_plane.point(pointAt(m_groups, at, m_elevation)));
            return;
        case Effect::vector:
            setPointAt(m_groups, at, AcGePoint3d::kOrigin + imageOfVector(at));
            return;
        case Effect::tangent:
            setPointAt(m_groups, at, AcGePoint3d::kOrigin + imageOfTangent(at));
            return;
        case Effect::patternPoint:
            setPair(at, m_plane.point({before, valueBehind(at), m_elevation}).asVector());
            return;
        case Effect::patternVector:
            setPair(at, m_plane.vector({before, valueBehind(at), 0.0}));
            return;
        case Effect::length:
            scaleAt(at);
            return;
        case Effect::angle:
            setRealAt(m_groups, at, m_plane.direction(before));
            return;
        case Effect::arcAngles:
            turnArc(at);
            return;
        case Effect::radians:
            setRealAt(m_groups, at, before + m_plane.turn() * std::numbers::pi / 180.0);
            return;
        }
    }

    void scaleAt(std::size_t at)
    {
        if (m_plane.isSimilar()) { // else it is of a pattern that is not shown
            setRealAt(m_groups, at, m_groups[at].real() * m_plane.scale());
        }
    }

    [[nodiscard]] AcGeVector3d imageOfVector(std::size_t at) const
    {
        return m_plane.vector(pointAt(m_groups, at).asVector());
    }

    [[nodiscard]] AcGeVector3d imageOfTangent(std::size_t at) const
    {
        return imageOfVector(at).normal() * pointAt(m_groups, at).asVector().length();
    }

    [[nodiscard]] bool hasPair(std::size_t at) const
    {
        return at + 1 < m_range.end && m_groups[at + 1].code == m_groups[at].code + 1;
    }

    [[nodiscard]] double valueBehind(std::size_t at) const
    {
        return hasPair(at) ? m_groups[at + 1].real() : 0.0;
    }

    void setPair(std::size_t at, const AcGeVector3d& value)
    {
        setRealAt(m_groups, at, value.x);
        if (hasPair(at)) {
            setRealAt(m_groups, at + 1, value.y);
        }
    }

    void turnArc(std::size_t at)
    {
        constexpr int kIsCounterClockwise = 73; // the angles of a clockwise arc count clockwise
        constexpr double kFullTurn = 360.0;
        const double begin = m_groups[at].real();
        const double sweep = valueBehind(at) - begin;
        const bool isCircle = std::abs(sweep) >= kFullTurn; // it may begin anywhere
        if (m_plane.turn() == 0.0 || !hasPair(at) || isCircle) {
            return;
        }
        const bool isCounterClockwise
            = m_groups.integer(kIsCounterClockwise, {at, m_range.end}, 1) != 0;
        const double turned = normalizedDegrees(isCounterClockwise ? begin + m_plane.turn()
                                                                   : begin - m_plane.turn());
        setRealAt(m_groups, at, turned);
        setRealAt(m_groups, at + 1, turned + sweep);
    }

    Groups& m_groups;
    GroupRange m_range;
    const PlaneMotion& m_plane;
    double m_elevation;
};

} // namespace

Acad::ErrorStatus transformHatch(Groups& groups, const Motion& motion)
{
    RecordPart part(groups, L"AcDbHatch");
    // Turned over rather than mirrored, as a pattern that is known by name has no mirrored form.
    const PlaneMotion plane = motion.ofPlane(part.normal(), Mirroring::turnedOver);
    if (!plane.isSimilar() && !mayBeStretched(groups, part.range())) {
        return Acad::eCannotScaleNonUniformly;
    }
    const double elevation = part.real(kElevation);
    HatchMover(groups, part.range(), plane, elevation).moveAll();
    part.setReal(kElevation, plane.elevation(elevation));
    part.movePlane(plane);
    return Acad::eOk;
}

} // namespace corma::host
