// Hatches.

#include "host/dwg/bodies.h"
#include "host/dwg/types/colors.h"
#include "host/dwg/types/hatch_boundary.h"
#include "host/dwg/types/pieces.h"

#include <algorithm>
#include <optional>

namespace corma::host::dwg {

using enum DrawingVersion;
using namespace hatch;

namespace {

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
            // It need not come back as the same number.
            if (!isSameNumber(degreesFrom(angle), group.real())) {
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
        if (isSameNumber(radiansFrom(degreesFrom(former)), angle)) {
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
