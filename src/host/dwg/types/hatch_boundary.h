#pragma once

// The boundaries of hatches.

#include "host/dwg/types/pieces.h"

#include <cstdint>
#include <utility>
#include <variant>
#include <vector>

namespace corma::host::dwg::hatch {

inline constexpr std::size_t kFewestBitsOfReal = 2;
inline constexpr std::size_t kBitsOfRawPoint = 128;

// --- edges of a boundary -------------------------------------------------------------------------

// What an edge is, in bits and in group 72.
enum EdgeKind : std::uint8_t
{
    kLine = 1,
    kArc = 2,
    kEllipse = 3,
    kSpline = 4
};

struct LineEdge
{
    Point2 start;
    Point2 end;

    template<class Io> void bits(Io& io)
    {
        io.rawPoint2(start);
        io.rawPoint2(end);
    }

    void toGroups(FieldsToGroups& io) const
    {
        io.point2(10, start);
        io.point2(11, end);
    }

    void take(const Group& group)
    {
        switch (group.code) {
        case 10:
            start.x = group.real();
            break;
        case 20:
            start.y = group.real();
            break;
        case 11:
            end.x = group.real();
            break;
        case 21:
            end.y = group.real();
            break;
        default:
            break;
        }
    }
};

/// A part of a circle.
struct ArcEdge
{
    Point2 center;
    double radius = 0.0;
    double start = 0.0; // radians
    double end = 0.0;
    bool isCounterClockwise = true;

    template<class Io> void bits(Io& io)
    {
        io.rawPoint2(center);
        io.bitDouble(radius);
        io.bitDouble(start);
        io.bitDouble(end);
        io.bit(isCounterClockwise);
    }

    void toGroups(FieldsToGroups& io) const
    {
        io.point2(10, center);
        io.real(40, radius);
        io.angle(50, start);
        io.angle(51, end);
        io.integer(73, isCounterClockwise);
    }

    void take(const Group& group)
    {
        switch (group.code) {
        case 10:
            center.x = group.real();
            break;
        case 20:
            center.y = group.real();
            break;
        case 40:
            radius = group.real();
            break;
        case 50:
            start = radiansFrom(group.real());
            break;
        case 51:
            end = radiansFrom(group.real());
            break;
        case 73:
            isCounterClockwise = group.integer() != 0;
            break;
        default:
            break;
        }
    }
};

/// A part of an ellipse; its angles count from the major axis.
struct EllipseEdge
{
    ArcEdge arc; // its radius is the ratio of the axes
    Point2 majorAxis;

    template<class Io> void bits(Io& io)
    {
        io.rawPoint2(arc.center);
        io.rawPoint2(majorAxis);
        io.bitDouble(arc.radius);
        io.bitDouble(arc.start);
        io.bitDouble(arc.end);
        io.bit(arc.isCounterClockwise);
    }

    void toGroups(FieldsToGroups& io) const
    {
        io.point2(10, arc.center);
        io.point2(11, majorAxis);
        io.real(40, arc.radius);
        io.angle(50, arc.start);
        io.angle(51, arc.end);
        io.integer(73, arc.isCounterClockwise);
    }

    void take(const Group& group)
    {
        if (group.code == 11) {
            majorAxis.x = group.real();
        } else if (group.code == 21) {
            majorAxis.y = group.real();
        } else {
            arc.take(group);
        }
    }
};

struct SplineEdge
{
    struct ControlPoint
    {
        Point2 position;
        double weight = 1.0;
    };

    std::int32_t degree = 3;
    bool isRational = false;
    bool isPeriodic = false;
    std::vector<double> knots;
    std::vector<ControlPoint> controlPoints;
    std::vector<Point2> fitPoints; // from R2010 on
    Point2 startTangent;
    Point2 endTangent;

    template<class Io> void bits(Io& io)
    {
        io.bitLong(degree);
        io.bit(isRational);
        io.bit(isPeriodic);
        auto knotCount = static_cast<std::uint32_t>(knots.size());
        auto pointCount = static_cast<std::uint32_t>(controlPoints.size());
        io.bitLong(knotCount);
        io.bitLong(pointCount);
        io.resize(knots, knotCount, kFewestBitsOfReal);
        for (double& knot : knots) {
            io.bitDouble(knot);
        }
        io.resize(controlPoints, pointCount, kBitsOfRawPoint);
        for (ControlPoint& point : controlPoints) {
            io.rawPoint2(point.position);
            if (isRational) {
                io.bitDouble(point.weight);
            }
        }
        if (io.since(DrawingVersion::r2010)) {
            fitBits(io);
        }
    }

    template<class Io> void fitBits(Io& io)
    {
        io.count(fitPoints, kBitsOfRawPoint);
        for (Point2& point : fitPoints) {
            io.rawPoint2(point);
        }
        if (!fitPoints.empty()) {
            io.rawPoint2(startTangent);
            io.rawPoint2(endTangent);
        }
    }

    void toGroups(FieldsToGroups& io) const
    {
        io.integer(94, degree);
        io.integer(73, isRational);
        io.integer(74, isPeriodic);
        io.integer(95, knots.size());
        io.integer(96, controlPoints.size());
        for (const double knot : knots) {
            io.real(40, knot);
        }
        for (const ControlPoint& point : controlPoints) {
            io.point2(10, point.position);
            if (isRational) {
                io.real(42, point.weight);
            }
        }
        if (!io.since(DrawingVersion::r2010)) {
            return;
        }
        io.integer(97, fitPoints.size());
        for (const Point2& point : fitPoints) {
            io.point2(11, point);
        }
        if (!fitPoints.empty()) {
            io.point2(12, startTangent);
            io.point2(13, endTangent);
        }
    }

    void take(const Group& group)
    {
        switch (group.code) {
        case 94:
            degree = static_cast<std::int32_t>(group.integer());
            break;
        case 73:
            isRational = group.integer() != 0;
            break;
        case 74:
            isPeriodic = group.integer() != 0;
            break;
        case 40:
            knots.push_back(group.real());
            break;
        default:
            takePoint(group);
            break;
        }
    }

    void takePoint(const Group& group)
    {
        const bool isX = group.code < 2 * kCoordinateStep;
        if (group.code == 10) {
            controlPoints.emplace_back();
        } else if (group.code == 11) {
            fitPoints.emplace_back();
        }
        Point2* const point = pointOf(isX ? group.code : group.code - kCoordinateStep);
        if (point != nullptr) {
            (isX ? point->x : point->y) = group.real();
        } else if (group.code == 42 && !controlPoints.empty()) {
            controlPoints.back().weight = group.real();
        }
    }

    Point2* pointOf(int code)
    {
        switch (code) {
        case 10:
            return controlPoints.empty() ? nullptr : &controlPoints.back().position;
        case 11:
            return fitPoints.empty() ? nullptr : &fitPoints.back();
        case 12:
            return &startTangent;
        case 13:
            return &endTangent;
        default:
            return nullptr;
        }
    }
};

using Edge = std::variant<LineEdge, ArcEdge, EllipseEdge, SplineEdge>;

inline EdgeKind kindOf(const Edge& edge)
{
    return static_cast<EdgeKind>(edge.index() + 1);
}

/// An empty edge; false for a kind that there is not.
inline bool makeEdge(Edge& edge, std::int64_t kind)
{
    switch (kind) {
    case kLine:
        edge = LineEdge {};
        return true;
    case kArc:
        edge = ArcEdge {};
        return true;
    case kEllipse:
        edge = EllipseEdge {};
        return true;
    case kSpline:
        edge = SplineEdge {};
        return true;
    default:
        return false;
    }
}

/// The arc in an edge; null for one without angles.
template<class AnyEdge> auto* arcOf(AnyEdge& edge)
{
    auto* const ellipse = std::get_if<EllipseEdge>(&edge);
    return ellipse == nullptr ? std::get_if<ArcEdge>(&edge) : &ellipse->arc;
}

// --- boundaries ----------------------------------------------------------------------------------

/// A closed polyline or a sequence of edges.
struct Path
{
    static constexpr std::int32_t kIsPolyline = 2; // of the flags
    static constexpr std::int32_t kIsDerived = 4;

    struct Vertex
    {
        Point2 position;
        double bulge = 0.0;
    };

    std::int32_t flags = 1;
    std::vector<Edge> edges;
    bool hasBulges = false;
    bool isClosed = true;
    std::vector<Vertex> vertices;
    std::uint32_t sourceCount = 0;
    std::vector<Ref> sources; // the entities that it comes from

    [[nodiscard]] bool isPolyline() const { return (flags & kIsPolyline) != 0; }

    template<class Io> void bits(Io& io)
    {
        io.bitLong(flags);
        if (isPolyline()) {
            vertexBits(io);
        } else {
            edgeBits(io);
        }
        if constexpr (!Io::isReading) {
            io.bitLong(sources.size());
        } else {
            io.bitLong(sourceCount);
        }
    }

    template<class Io> void vertexBits(Io& io)
    {
        io.bit(hasBulges);
        io.bit(isClosed);
        io.count(vertices, kBitsOfRawPoint);
        for (Vertex& vertex : vertices) {
            io.rawPoint2(vertex.position);
            if (hasBulges) {
                io.bitDouble(vertex.bulge);
            }
        }
    }

    template<class Io> void edgeBits(Io& io)
    {
        constexpr std::size_t kFewestBits = 16;
        io.count(edges, kFewestBits);
        for (Edge& edge : edges) {
            std::uint8_t kind = kindOf(edge);
            io.byte(kind);
            if constexpr (Io::isReading) {
                if (!makeEdge(edge, kind)) {
                    io.fail();
                    return;
                }
            }
            std::visit([&](auto& fields) { fields.bits(io); }, edge);
        }
    }

    void toGroups(FieldsToGroups& io) const
    {
        io.integer(92, flags);
        if (isPolyline()) {
            io.integer(72, hasBulges);
            io.integer(73, isClosed);
            io.integer(93, vertices.size());
            for (const Vertex& vertex : vertices) {
                io.point2(10, vertex.position);
                if (hasBulges) {
                    io.real(42, vertex.bulge);
                }
            }
        } else {
            io.integer(93, edges.size());
            for (const Edge& edge : edges) {
                io.integer(72, kindOf(edge));
                std::visit([&](const auto& fields) { fields.toGroups(io); }, edge);
            }
        }
        io.integer(97, sources.size());
        for (const Ref& source : sources) {
            io.handle(330, source);
        }
    }

    void take(const Group& group, std::size_t& refCount)
    {
        if (group.code == 330) {
            nextItem(sources, refCount).set(group.handle());
        } else if (isPolyline()) {
            takeVertex(group);
        } else if (group.code == 72) {
            Edge edge;
            if (makeEdge(edge, group.integer())) {
                edges.push_back(std::move(edge));
            }
        } else if (!edges.empty()) {
            std::visit([&](auto& fields) { fields.take(group); }, edges.back());
        }
    }

    void takeVertex(const Group& group)
    {
        switch (group.code) {
        case 72:
            hasBulges = group.integer() != 0;
            break;
        case 73:
            isClosed = group.integer() != 0;
            break;
        case 10:
            vertices.emplace_back().position.x = group.real();
            break;
        case 20:
            if (!vertices.empty()) {
                vertices.back().position.y = group.real();
            }
            break;
        case 42:
            if (!vertices.empty()) {
                vertices.back().bulge = group.real();
            }
            break;
        default:
            break;
        }
    }
};

} // namespace corma::host::dwg::hatch
