// Points, lines and what has corners only.

#include "host/dwg/bodies.h"
#include "host/dwg/types/pieces.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

struct Line
{
    bool isFlat = true; // the heights are 0 and not in the file; from R2000 on
    Point start;
    Point end;
    double thickness = 0.0;
    Point normal = kUsualNormal;

    template<class Io> void bits(Io& io)
    {
        if (io.until(r14)) {
            io.point3(start);
            io.point3(end);
        } else {
            io.bit(isFlat);
            io.rawDouble(start.x);
            io.defaultDouble(end.x, start.x);
            io.rawDouble(start.y);
            io.defaultDouble(end.y, start.y);
            if (!isFlat) {
                io.rawDouble(start.z);
                io.defaultDouble(end.z, start.z);
            }
        }
        io.thickness(thickness);
        io.extrusion(normal);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbLine");
        io.real(code::thickness, thickness, 0.0);
        io.point(10, start);
        io.point(11, end);
        io.extrusion(normal);
        if constexpr (Io::isFromGroups) {
            isFlat = isFlat && start.z == 0.0 && end.z == 0.0;
        }
    }
};

struct SinglePoint
{
    Point position;
    double thickness = 0.0;
    Point normal = kUsualNormal;
    double angle = 0.0; // of the X axis

    template<class Io> void bits(Io& io)
    {
        io.point3(position);
        io.thickness(thickness);
        io.extrusion(normal);
        io.bitDouble(angle);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbPoint");
        io.point(10, position);
        io.real(code::thickness, thickness, 0.0);
        io.extrusion(normal);
        io.angle(50, angle, 0.0);
    }
};

/// A line without an end, in one direction or in both.
struct EndlessLine
{
    Point begin;
    Point direction {1.0, 0.0, 0.0};

    template<class Io> void bits(Io& io)
    {
        io.point3(begin);
        io.point3(direction);
    }

    template<class Io> void groups(Io& io)
    {
        io.point(10, begin);
        io.point(11, direction);
    }
};

struct Ray : EndlessLine
{
    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbRay");
        EndlessLine::groups(io);
    }
};

struct Xline : EndlessLine
{
    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbXline");
        EndlessLine::groups(io);
    }
};

/// A SOLID or a TRACE.
struct Solid
{
    double thickness = 0.0;
    double elevation = 0.0;
    Point2 corners[4];
    Point normal = kUsualNormal;

    template<class Io> void bits(Io& io)
    {
        io.thickness(thickness);
        io.bitDouble(elevation);
        for (Point2& corner : corners) {
            io.rawPoint2(corner);
        }
        io.extrusion(normal);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbTrace");
        int code = 13; // the first corner comes last when they are taken out, as it has the height
        if constexpr (Io::isFromGroups) {
            for (; code >= 10; --code) {
                pointOfPlane(io, code, corners[code - 10], elevation);
            }
        } else {
            for (code = 10; code <= 13; ++code) {
                pointOfPlane(io, code, corners[code - 10], elevation);
            }
        }
        io.real(code::thickness, thickness, 0.0);
        io.extrusion(normal);
    }
};

struct Face
{
    bool hasNoEdges = true; // all edges are seen, and their flags are not in the file
    bool isFlat = true; // the height of the first corner is 0 and not in the file
    Point corners[4];
    std::int16_t hiddenEdges = 0;

    template<class Io> void bits(Io& io)
    {
        if (io.until(r14)) {
            for (Point& corner : corners) {
                io.point3(corner);
            }
            io.bitShort(hiddenEdges);
            return;
        }
        io.bit(hasNoEdges);
        io.bit(isFlat);
        io.rawDouble(corners[0].x);
        io.rawDouble(corners[0].y);
        if (!isFlat) {
            io.rawDouble(corners[0].z);
        }
        for (int i = 1; i < 4; ++i) {
            io.defaultDouble(corners[i].x, corners[i - 1].x);
            io.defaultDouble(corners[i].y, corners[i - 1].y);
            io.defaultDouble(corners[i].z, corners[i - 1].z);
        }
        if (!hasNoEdges) {
            io.bitShort(hiddenEdges);
        }
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbFace");
        for (int i = 0; i < 4; ++i) {
            io.point(10 + i, corners[i]);
        }
        io.integer(code::flags, hiddenEdges, 0);
        if constexpr (Io::isFromGroups) {
            hasNoEdges = hasNoEdges && hiddenEdges == 0;
            isFlat = isFlat && corners[0].z == 0.0;
        }
    }
};

} // namespace

std::unique_ptr<Body> makeLine()
{
    return makeBody<Line>();
}

std::unique_ptr<Body> makePoint()
{
    return makeBody<SinglePoint>();
}

std::unique_ptr<Body> makeRay()
{
    return makeBody<Ray>();
}

std::unique_ptr<Body> makeXline()
{
    return makeBody<Xline>();
}

std::unique_ptr<Body> makeSolid()
{
    return makeBody<Solid>();
}

std::unique_ptr<Body> makeTrace()
{
    return makeBody<Solid>();
}

std::unique_ptr<Body> makeFace()
{
    return makeBody<Face>();
}

} // namespace corma::host::dwg
