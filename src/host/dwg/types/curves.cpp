// Circles, arcs and other curves.

#include "host/dwg/bodies.h"

namespace corma::host::dwg {

namespace {

struct Circle
{
    Point center;
    double radius = 0.0;
    double thickness = 0.0;
    Point normal = kUsualNormal;

    template<class Io> void bits(Io& io)
    {
        io.point3(center);
        io.bitDouble(radius);
        io.thickness(thickness);
        io.extrusion(normal);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbCircle");
        io.real(39, thickness, 0.0);
        io.point(10, center);
        io.real(40, radius);
        io.extrusion(normal);
    }
};

struct Arc
{
    Circle circle;
    double start = 0.0; // radians
    double end = 0.0;

    template<class Io> void bits(Io& io)
    {
        circle.bits(io);
        io.bitDouble(start);
        io.bitDouble(end);
    }

    template<class Io> void groups(Io& io)
    {
        circle.groups(io);
        io.marker(L"AcDbArc");
        io.angle(50, start);
        io.angle(51, end);
    }
};

} // namespace

std::unique_ptr<Body> makeCircle()
{
    return makeBody<Circle>();
}

std::unique_ptr<Body> makeArc()
{
    return makeBody<Arc>();
}

} // namespace corma::host::dwg
