// Circles, arcs and other curves.

#include "host/dwg/bodies.h"
#include "host/dwg/types/pieces.h"

#include <numbers>

namespace corma::host::dwg {

using enum DrawingVersion;

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

struct Ellipse
{
    Point center;
    Point majorAxis {1.0, 0.0, 0.0};
    Point normal = kUsualNormal;
    double ratio = 1.0;
    double start = 0.0;
    double end = 2 * std::numbers::pi;

    template<class Io> void bits(Io& io)
    {
        io.point3(center);
        io.point3(majorAxis);
        io.point3(normal);
        io.bitDouble(ratio);
        io.bitDouble(start);
        io.bitDouble(end);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbEllipse");
        io.point(10, center);
        io.point(11, majorAxis);
        alwaysPoint(io, 210, normal, kUsualNormal);
        alwaysReal(io, 40, ratio, 1.0);
        io.real(41, start); // parameters, no angles, so they are in radians in groups, too
        alwaysReal(io, 42, end, 2 * std::numbers::pi);
    }
};

/// Given by knots and control points, or by points that it goes through. In groups the latter come
/// with the former, which only a file of groups has.
struct Spline
{
    enum Form : std::int32_t
    {
        kByControlPoints = 1,
        kByFitPoints = 2
    };

    // From R2013 on.
    static constexpr std::int32_t kUsesFitPoints = 1;
    static constexpr std::int32_t kClosedFit = 4;
    static constexpr std::int32_t kUsesKnotParameter = 8;
    static constexpr std::int32_t kOwnKnots = 15;

    // Of group 70.
    static constexpr int kClosed = 1;
    static constexpr int kPeriodic = 2;
    static constexpr int kRational = 4;
    static constexpr unsigned kKnotShift = 9; // from R2013 on: how knots follow from fit points

    static constexpr double kKnotTolerance = 1e-7;
    static constexpr double kFitTolerance = 1e-10;
    static constexpr int kCubic = 3;

    struct ControlPoint
    {
        Point position;
        double weight = 1.0;
    };

    bool isByFit = false; // what the next three say
    std::int32_t form = kByControlPoints;
    std::int32_t fitFlags = 0; // these two from R2013 on
    std::int32_t knotParameter = kOwnKnots;
    std::int32_t degree = kCubic;
    bool isRational = false;
    bool isClosed = false;
    bool isPeriodic = false;
    double knotTolerance = kKnotTolerance;
    double controlTolerance = kKnotTolerance;
    bool hasWeights = false;
    std::vector<double> knots;
    std::vector<ControlPoint> controlPoints;
    double fitTolerance = kFitTolerance;
    Point startTangent;
    Point endTangent;
    std::vector<Point> fitPoints;

    template<class Io> void bits(Io& io)
    {
        io.bitLong(form);
        if (io.since(r2013)) {
            io.bitLong(fitFlags);
            io.bitLong(knotParameter);
        }
        io.bitLong(degree);
        isByFit = form == kByFitPoints;
        if (io.since(r2013)) {
            isByFit = (fitFlags & kUsesFitPoints) != 0 && knotParameter != kOwnKnots;
        }
        if (isByFit) {
            fitBits(io);
        } else {
            controlBits(io);
        }
    }

    template<class Io> void fitBits(Io& io)
    {
        constexpr std::size_t kFewestBits = 6;
        io.bitDouble(fitTolerance);
        io.point3(startTangent);
        io.point3(endTangent);
        io.count(fitPoints, kFewestBits);
        for (Point& point : fitPoints) {
            io.point3(point);
        }
    }

    template<class Io> void controlBits(Io& io)
    {
        constexpr std::size_t kFewestBits = 2; // of a knot
        constexpr std::size_t kFewestBitsOfPoint = 6;
        io.bit(isRational);
        io.bit(isClosed);
        io.bit(isPeriodic);
        io.bitDouble(knotTolerance);
        io.bitDouble(controlTolerance);
        auto knotCount = static_cast<std::uint32_t>(knots.size());
        auto pointCount = static_cast<std::uint32_t>(controlPoints.size());
        io.bitLong(knotCount);
        io.bitLong(pointCount);
        io.bit(hasWeights);
        io.resize(knots, knotCount, kFewestBits);
        for (double& knot : knots) {
            io.bitDouble(knot);
        }
        io.resize(controlPoints, pointCount, kFewestBitsOfPoint);
        for (ControlPoint& point : controlPoints) {
            io.point3(point.position);
            if (hasWeights) {
                io.bitDouble(point.weight);
            }
        }
    }

    [[nodiscard]] int groupFlags(const FieldsToGroups& io) const
    {
        constexpr int kIsByFit = 1024;
        constexpr int kFitMethod = 32;
        int flags = (isClosed ? kClosed : 0) | (isPeriodic ? kPeriodic : 0)
            | (isRational ? kRational : 0);
        if (io.since(r2013) && isByFit) {
            flags |= (fitFlags & kClosedFit) != 0 ? kClosed : 0;
            flags |= kIsByFit | kFitMethod;
        }
        return flags;
    }

    void groups(FieldsToGroups& io) const
    {
        io.marker(L"AcDbSpline");
        io.integer(code::flags, groupFlags(io));
        io.integer(71, degree);
        io.integer(72, isByFit ? 0 : knots.size());
        io.integer(73, isByFit ? 0 : controlPoints.size());
        io.integer(74, isByFit ? fitPoints.size() : 0);
        if (isByFit) {
            io.real(44, fitTolerance);
            io.point(12, startTangent, {});
            io.point(13, endTangent, {});
            for (const Point& point : fitPoints) {
                io.point(11, point);
            }
            return;
        }
        io.real(42, knotTolerance);
        io.real(43, controlTolerance);
        for (const double knot : knots) {
            io.real(40, knot);
        }
        for (const ControlPoint& point : controlPoints) {
            io.point(10, point.position);
            if (hasWeights) {
                io.real(41, point.weight);
            }
        }
    }

    void groups(FieldsFromGroups& io)
    {
        io.marker(L"AcDbSpline");
        int flags = 0;
        io.integer(code::flags, flags);
        io.integer(71, degree, kCubic);
        pointsFrom(io);
        setForm(controlPoints.empty());
        isClosed = (flags & kClosed) != 0;
        isPeriodic = (flags & kPeriodic) != 0;
        isRational = (flags & kRational) != 0;
        if (isByFit) {
            io.real(44, fitTolerance, kFitTolerance);
            io.point(12, startTangent);
            io.point(13, endTangent);
            fitFlags = isClosed ? fitFlags | kClosedFit : fitFlags & ~kClosedFit;
        } else {
            io.real(42, knotTolerance, kKnotTolerance);
            io.real(43, controlTolerance, kKnotTolerance);
        }
    }

    // What the file says of it stays as long as it is the same.
    void setForm(bool hasFitPointsOnly)
    {
        if (isByFit != hasFitPointsOnly) {
            isByFit = hasFitPointsOnly;
            form = isByFit ? kByFitPoints : kByControlPoints;
            fitFlags = isByFit ? kUsesFitPoints | kUsesKnotParameter : 0;
            knotParameter = isByFit ? 0 : kOwnKnots;
        }
    }

    void pointsFrom(const FieldsFromGroups& io)
    {
        knots.clear();
        controlPoints.clear();
        fitPoints.clear();
        hasWeights = false;
        Point* current = nullptr;
        std::size_t weightCount = 0;
        for (GroupWalk walk(io); !walk.isAtEnd(); walk.next()) {
            const Group& group = walk.group();
            switch (group.code) {
            case 40:
                knots.push_back(group.real());
                break;
            case 41: // behind its point, or all of them behind all points
                if (weightCount < controlPoints.size()) {
                    controlPoints[weightCount++].weight = group.real();
                    hasWeights = true;
                }
                break;
            case 10:
                current = &controlPoints.emplace_back().position;
                current->x = group.real();
                break;
            case 11:
                current = &fitPoints.emplace_back();
                current->x = group.real();
                break;
            case 20:
            case 21:
                setAxis(current, &Point::y, group.real());
                break;
            case 30:
            case 31:
                setAxis(current, &Point::z, group.real());
                break;
            default:
                break;
            }
        }
    }

    static void setAxis(Point* point, double Point::*axis, double value)
    {
        if (point != nullptr) {
            point->*axis = value;
        }
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

std::unique_ptr<Body> makeEllipse()
{
    return makeBody<Ellipse>();
}

std::unique_ptr<Body> makeSpline()
{
    return makeBody<Spline>();
}

} // namespace corma::host::dwg
