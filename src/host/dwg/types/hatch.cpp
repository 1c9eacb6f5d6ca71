// Hatches.

#include "host/dwg/bodies.h"
#include "host/dwg/types/colors.h"
#include "host/dwg/types/pieces.h"

#include <algorithm>
#include <optional>
#include <variant>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr std::size_t kFewestBitsOfReal = 2;
constexpr std::size_t kBitsOfRawPoint = 128;

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
        if (io.since(r2010)) {
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
        if (!io.since(r2010)) {
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
        constexpr int kAxis = 10; // between the codes of coordinates
        const bool isX = group.code < 2 * kAxis;
        if (group.code == 10) {
            controlPoints.emplace_back();
        } else if (group.code == 11) {
            fitPoints.emplace_back();
        }
        Point2* const point = pointOf(isX ? group.code : group.code - kAxis);
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

EdgeKind kindOf(const Edge& edge)
{
    return static_cast<EdgeKind>(edge.index() + 1);
}

/// An empty edge; false for a kind that there is not.
bool makeEdge(Edge& edge, std::int64_t kind)
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

// --- pattern and gradient ------------------------------------------------------------------------

/// A family of parallel lines.
struct PatternLine
{
    double angle = 0.0;
    Point2 origin;
    Point2 offset;
    std::vector<double> dashes;

    template<class Io> void bits(Io& io)
    {
        io.bitDouble(angle);
        io.point2(origin);
        io.point2(offset);
        auto count = static_cast<std::uint16_t>(dashes.size());
        io.bitShort(count);
        io.resize(dashes, count, kFewestBitsOfReal);
        for (double& dash : dashes) {
            io.bitDouble(dash);
        }
    }

    void toGroups(FieldsToGroups& io) const
    {
        io.angle(53, angle);
        io.real(43, origin.x);
        io.real(44, origin.y);
        io.real(45, offset.x);
        io.real(46, offset.y);
        io.integer(79, dashes.size());
        for (const double dash : dashes) {
            io.real(49, dash);
        }
    }

    void take(const Group& group)
    {
        switch (group.code) {
        case 53:
            if (degreesFrom(angle) != group.real()) { // it need not come back as the same number
                angle = radiansFrom(group.real());
            }
            break;
        case 43:
            origin.x = group.real();
            break;
        case 44:
            origin.y = group.real();
            break;
        case 45:
            offset.x = group.real();
            break;
        case 46:
            offset.y = group.real();
            break;
        case 49:
            dashes.push_back(group.real());
            break;
        default:
            break;
        }
    }
};

constexpr ColorCodes kGradientCodes {.index = 63, .rgb = 421, .name = 431};

/// A fill that goes from color to color; from R2004 on.
struct Gradient
{
    struct Stop
    {
        double at = 0.0;
        Color color;
    };

    std::int32_t isThere = 0;
    std::int32_t reserved = 0;
    double angle = 0.0; // in radians in groups, too
    double shift = 0.0;
    std::int32_t hasOneColor = 0;
    double tint = 0.0;
    std::vector<Stop> stops;
    Text name;

    template<class Io> void bits(Io& io)
    {
        constexpr std::size_t kFewestBits = 14;
        io.bitLong(isThere);
        io.bitLong(reserved);
        io.bitDouble(angle);
        io.bitDouble(shift);
        io.bitLong(hasOneColor);
        io.bitDouble(tint);
        io.count(stops, kFewestBits);
        for (Stop& stop : stops) {
            io.bitDouble(stop.at);
            io.color(stop.color);
        }
        io.text(name);
    }

    void groups(FieldsToGroups& io) const
    {
        if (isThere == 0) {
            return;
        }
        io.integer(450, isThere);
        io.integer(451, reserved);
        io.real(460, angle);
        io.real(461, shift);
        io.integer(452, hasOneColor);
        io.real(462, tint);
        io.integer(453, stops.size());
        for (const Stop& stop : stops) {
            io.real(463, stop.at);
            colorGroups(io, kGradientCodes, stop.color);
        }
        io.text(470, name);
    }

    void groups(FieldsFromGroups& io)
    {
        if (!io.groups().find(450, io.range()) && isThere == 0) {
            return; // what the file has of a gradient that is not shown stays
        }
        io.integer(450, isThere);
        io.integer(451, reserved);
        io.real(460, angle);
        io.real(461, shift);
        io.integer(452, hasOneColor);
        io.real(462, tint);
        stopsFrom(io);
        io.text(470, name);
    }

    void stopsFrom(const FieldsFromGroups& io)
    {
        std::size_t count = 0;
        GroupWalk walk(io);
        for (walk.seek(463); !walk.isAtEnd(); walk.next()) {
            if (walk.isAt(463)) {
                nextItem(stops, count).at = walk.group().real();
                colorOfStop(walk, stops[count - 1].color);
            }
        }
        stops.resize(count);
    }

    // The groups behind that of the place, up to the next color.
    static void colorOfStop(GroupWalk walk, Color& color)
    {
        int index = 0;
        std::optional<std::uint32_t> rgb;
        for (walk.next(); !walk.isAtEnd() && !walk.isAt(463); walk.next()) {
            if (walk.isAt(kGradientCodes.index)) {
                index = static_cast<int>(walk.group().integer());
            } else if (walk.isAt(kGradientCodes.rgb)) {
                rgb = static_cast<std::uint32_t>(walk.group().integer());
            }
        }
        setColor(color, index, rgb);
    }
};

// --- the whole -----------------------------------------------------------------------------------

struct Hatch
{
    Gradient gradient;
    double elevation = 0.0;
    Point normal = kUsualNormal;
    Text name;
    bool isSolid = false;
    bool isAssociative = false;
    std::vector<Path> paths;
    std::int16_t style = 0;
    std::int16_t patternKind = 1;
    double angle = 0.0; // these of one with a pattern only
    double scale = 1.0;
    bool isDouble = false;
    std::vector<PatternLine> lines;
    double pixelSize = 0.0; // of one with a derived boundary only
    std::vector<Point2> seeds;

    template<class Io> void bits(Io& io)
    {
        constexpr std::size_t kFewestBitsOfPath = 6;
        if (io.since(r2004)) {
            gradient.bits(io);
        }
        io.bitDouble(elevation);
        io.point3(normal);
        io.text(name);
        io.bit(isSolid);
        io.bit(isAssociative);
        io.count(paths, kFewestBitsOfPath);
        for (Path& path : paths) {
            path.bits(io);
        }
        io.bitShort(style);
        io.bitShort(patternKind);
        if (!isSolid) {
            patternBits(io);
        }
        if (hasDerivedPath()) {
            io.bitDouble(pixelSize);
        }
        io.count(seeds, kBitsOfRawPoint);
        for (Point2& seed : seeds) {
            io.rawPoint2(seed);
        }
        for (Path& path : paths) {
            io.handles(path.sources, path.sourceCount, Bond::softPointer);
        }
    }

    template<class Io> void patternBits(Io& io)
    {
        constexpr std::size_t kFewestBits = 12;
        io.bitDouble(angle);
        io.bitDouble(scale);
        io.bit(isDouble);
        auto count = static_cast<std::uint16_t>(lines.size());
        io.bitShort(count);
        io.resize(lines, count, kFewestBits);
        for (PatternLine& line : lines) {
            line.bits(io);
        }
    }

    [[nodiscard]] bool hasDerivedPath() const
    {
        bool has = false;
        for (const Path& path : paths) {
            has = has || (path.flags & Path::kIsDerived) != 0;
        }
        return has;
    }

    static constexpr int kPathCount = 91;
    static constexpr int kPath = 92;
    static constexpr int kStyle = 75; // behind the last path
    static constexpr int kLine = 53;
    static constexpr int kSeedCount = 98;

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbHatch");
        Point origin {0.0, 0.0, elevation};
        io.point(10, origin);
        if constexpr (Io::isFromGroups) {
            elevation = origin.z;
        }
        alwaysPoint(io, 210, normal, kUsualNormal);
        io.text(code::name, name);
        io.integer(70, isSolid);
        io.integer(71, isAssociative);
        pathGroups(io);
        io.integer(kStyle, style);
        alwaysInteger(io, 76, patternKind, 1);
        if (!isSolid) {
            io.angle(52, angle);
            alwaysReal(io, 41, scale, 1.0);
            io.integer(77, isDouble);
            lineGroups(io);
        }
        if (hasDerivedPath()) {
            io.real(47, pixelSize);
        }
        seedGroups(io);
        if (io.since(r2004)) {
            gradient.groups(io);
        }
    }

    void pathGroups(FieldsToGroups& io) const
    {
        io.integer(kPathCount, paths.size());
        for (const Path& path : paths) {
            path.toGroups(io);
        }
    }

    void pathGroups(FieldsFromGroups& io)
    {
        std::vector<Path> former = std::move(paths);
        paths.clear();
        std::size_t refCount = 0;
        GroupWalk walk(io);
        for (walk.seek(kPath); !walk.isAtEnd() && !walk.isAt(kStyle); walk.next()) {
            if (!walk.isAt(kPath)) {
                paths.back().take(walk.group(), refCount);
                continue;
            }
            endPath(refCount);
            refCount = 0;
            Path& path = paths.emplace_back();
            path.flags = static_cast<std::int32_t>(walk.group().integer());
            if (paths.size() <= former.size()) {
                path.sources = std::move(former[paths.size() - 1].sources);
            }
        }
        endPath(refCount);
        keepAngles(former);
    }

    void endPath(std::size_t refCount)
    {
        if (!paths.empty()) {
            paths.back().sources.resize(refCount);
        }
    }

    // Angles are kept as the file has them where they are the same in groups.
    void keepAngles(const std::vector<Path>& former)
    {
        for (std::size_t i = 0; i < std::min(paths.size(), former.size()); ++i) {
            const std::size_t count = std::min(paths[i].edges.size(), former[i].edges.size());
            for (std::size_t k = 0; k < count; ++k) {
                keepAngles(paths[i].edges[k], former[i].edges[k]);
            }
        }
    }

    static void keepAngles(Edge& edge, const Edge& former)
    {
        ArcEdge* const arc = arcOf(edge);
        const ArcEdge* const before = arcOf(former);
        if (arc != nullptr && before != nullptr) {
            keepAngle(arc->start, before->start);
            keepAngle(arc->end, before->end);
        }
    }

    static void keepAngle(double& angle, double former)
    {
        if (radiansFrom(degreesFrom(former)) == angle) {
            angle = former;
        }
    }

    void lineGroups(FieldsToGroups& io) const
    {
        io.integer(78, lines.size());
        for (const PatternLine& line : lines) {
            line.toGroups(io);
        }
    }

    void lineGroups(FieldsFromGroups& io)
    {
        std::size_t count = 0;
        GroupWalk walk(io);
        walk.seek(kStyle);
        for (walk.seek(kLine); !walk.isAtEnd() && !walk.isAt(kSeedCount); walk.next()) {
            if (walk.isAt(kLine)) {
                nextItem(lines, count).dashes.clear();
            }
            lines[count - 1].take(walk.group());
        }
        lines.resize(count);
    }

    void seedGroups(FieldsToGroups& io) const
    {
        io.integer(kSeedCount, seeds.size());
        for (const Point2& seed : seeds) {
            io.point2(10, seed);
        }
    }

    void seedGroups(FieldsFromGroups& io)
    {
        seeds.clear();
        GroupWalk walk(io);
        for (walk.seek(kSeedCount); !walk.isAtEnd(); walk.next()) {
            if (walk.isAt(10)) {
                seeds.emplace_back().x = walk.group().real();
            } else if (walk.isAt(20) && !seeds.empty()) {
                seeds.back().y = walk.group().real();
            }
        }
    }
};

} // namespace

std::unique_ptr<Body> makeHatch()
{
    return makeBody<Hatch>();
}

} // namespace corma::host::dwg
