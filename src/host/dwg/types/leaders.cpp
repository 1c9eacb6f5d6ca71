// Leaders and tolerances.

#include "host/dwg/bodies.h"
#include "host/dwg/types/pieces.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

struct Leader
{
    static constexpr std::int16_t kNoAnnotation = 3;

    bool unknownAhead = false;
    std::int16_t annotationKind = kNoAnnotation;
    std::int16_t path = 0;
    std::vector<Point> points;
    Point origin;
    Point normal = kUsualNormal;
    Point horizontal = kXAxis;
    Point blockOffset;
    Point annotationOffset; // from R14 on
    double gap = 0.0; // up to R14
    double boxHeight = 0.0; // these two up to R2007
    double boxWidth = 0.0;
    bool hookIsAlongX = false;
    bool hasArrow = true;

    // Up to R14.
    std::int16_t arrowKind = 0;
    double arrowSize = 0.0;
    bool unknownBits[4] = {};
    std::int16_t unknownShort = 0;
    std::int16_t byBlockColor = 0;

    // From R2000 on.
    std::int16_t unknownBehind = 0;
    bool unknownBehindBits[2] = {};

    Ref annotation;
    Ref style;

    template<class Io> void bits(Io& io)
    {
        constexpr std::size_t kFewestBits = 6;
        io.bit(unknownAhead);
        io.bitShort(annotationKind);
        io.bitShort(path);
        io.count(points, kFewestBits);
        for (Point& point : points) {
            io.point3(point);
        }
        io.point3(origin);
        io.point3(normal);
        io.point3(horizontal);
        io.point3(blockOffset);
        if (io.since(r14)) {
            io.point3(annotationOffset);
        }
        if (io.until(r14)) {
            io.bitDouble(gap);
        }
        if (io.until(r2007)) {
            io.bitDouble(boxHeight);
            io.bitDouble(boxWidth);
        }
        io.bit(hookIsAlongX);
        io.bit(hasArrow);
        if (io.until(r14)) {
            formerBits(io);
        } else {
            io.bitShort(unknownBehind);
            io.bit(unknownBehindBits[0]);
            io.bit(unknownBehindBits[1]);
        }
        io.handle(annotation, Bond::softPointer);
        io.handle(style, Bond::hardPointer);
    }

    template<class Io> void formerBits(Io& io)
    {
        io.bitShort(arrowKind);
        io.bitDouble(arrowSize);
        io.bit(unknownBits[0]);
        io.bit(unknownBits[1]);
        io.bitShort(unknownShort);
        io.bitShort(byBlockColor);
        io.bit(unknownBits[2]);
        io.bit(unknownBits[3]);
    }

    template<class Io> void groups(Io& io)
    {
        constexpr int kHorizontal = 211;
        constexpr int kBlockOffset = 212;
        constexpr int kAnnotationOffset = 213;
        io.marker(L"AcDbLeader");
        alwaysNamed(io, 3, style, TableKind::dimStyle, kStandardName);
        io.integer(71, hasArrow, 1);
        io.integer(72, path, 0);
        io.integer(73, annotationKind, kNoAnnotation);
        io.integer(74, hookIsAlongX);
        boxGroups(io);
        pointGroups(io);
        io.optionalHandle(340, annotation);
        io.extrusion(normal);
        io.point(kHorizontal, horizontal, kXAxis);
        io.point(kBlockOffset, blockOffset, {});
        io.point(kAnnotationOffset, annotationOffset, {});
    }

    static constexpr int kHasHook = 75;

    // A file of groups tells whether there is a hook, which is a matter of how it is drawn.
    void boxGroups(FieldsToGroups& io) const
    {
        if (io.version() <= r2007) {
            io.real(40, boxHeight, 0.0);
            io.real(41, boxWidth, 0.0);
        }
    }

    void boxGroups(FieldsFromGroups& io)
    {
        io.real(40, boxHeight);
        io.real(41, boxWidth);
    }

    void pointGroups(FieldsToGroups& io) const
    {
        constexpr int kCount = 76;
        io.integer(kCount, points.size());
        for (const Point& point : points) {
            io.point(10, point);
        }
    }

    void pointGroups(FieldsFromGroups& io)
    {
        const Point before = points.empty() ? origin : points.front();
        points.clear();
        for (GroupWalk walk(io); !walk.isAtEnd(); walk.next()) {
            if (walk.isAt(10)) {
                points.emplace_back().x = walk.group().real();
            } else if (walk.isAt(20) && !points.empty()) {
                points.back().y = walk.group().real();
            } else if (walk.isAt(30) && !points.empty()) {
                points.back().z = walk.group().real();
            }
        }
        if (!points.empty() && points.front() != before) {
            origin = points.front();
        }
    }
};

struct Tolerance
{
    std::int16_t unknown = 0; // these three up to R14
    double height = 0.0;
    double gap = 0.0;
    Point position;
    Point direction = kXAxis;
    Point normal = kUsualNormal;
    Text text;
    Ref style;

    template<class Io> void bits(Io& io)
    {
        if (io.until(r14)) {
            io.bitShort(unknown);
            io.bitDouble(height);
            io.bitDouble(gap);
        }
        io.point3(position);
        io.point3(direction);
        io.point3(normal);
        io.text(text);
        io.handle(style, Bond::hardPointer);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbFcf");
        alwaysNamed(io, 3, style, TableKind::dimStyle, kStandardName);
        io.point(10, position);
        io.text(1, text);
        io.extrusion(normal);
        io.point(11, direction, kXAxis);
    }
};

} // namespace

std::unique_ptr<Body> makeLeader()
{
    return makeBody<Leader>();
}

std::unique_ptr<Body> makeTolerance()
{
    return makeBody<Tolerance>();
}

} // namespace corma::host::dwg
