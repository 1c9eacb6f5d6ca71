#include "host/transform/samples.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <numbers>
#include <sstream>

namespace corma::host::test {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kTolerance = 1e-9;
constexpr int kPieces = 8; // of a curve

AcGeVector3d atAngle(double degrees)
{
    return {std::cos(degrees * kDegree), std::sin(degrees * kDegree), 0.0};
}

AcGeVector3d leftOf(const AcGeVector3d& vector)
{
    return {-vector.y, vector.x, 0.0};
}

AcGeMatrix3d axes(const AcGeVector3d& x, const AcGeVector3d& y)
{
    return AcGeMatrix3d().setCoordSystem({}, x, y, AcGeVector3d::kZAxis);
}

/// The values of a record, all by code, wherever they stand.
class Record
{
public:
    explicit Record(const Groups& groups)
        : m_groups(groups)
        , m_toWorld(AcGeMatrix3d().setToPlaneToWorld(vector(210, AcGeVector3d::kZAxis)))
    {
    }

    [[nodiscard]] const Groups& groups() const { return m_groups; }

    [[nodiscard]] bool has(int code) const { return m_groups.find(code).has_value(); }

    [[nodiscard]] double real(int code, double absent = 0.0) const
    {
        return m_groups.real(code, m_groups.body(), absent);
    }

    [[nodiscard]] std::int64_t integer(int code, std::int64_t absent = 0) const
    {
        return m_groups.integer(code, m_groups.body(), absent);
    }

    [[nodiscard]] AcGeVector3d vector(int code, const AcGeVector3d& absent = {}) const
    {
        const Point found = m_groups.point(code, m_groups.body(), {absent.x, absent.y, absent.z});
        return {found.x, found.y, found.z};
    }

    [[nodiscard]] AcGePoint3d point(int code) const { return AcGePoint3d() + vector(code); }

    [[nodiscard]] std::vector<AcGePoint3d> points(int code) const
    {
        std::vector<AcGePoint3d> found;
        const GroupRange body = m_groups.body();
        for (std::size_t i = body.begin; i < body.end; ++i) {
            if (m_groups[i].code == code) {
                const GroupRange rest {i, std::min(i + 3, body.end)};
                const Point p = m_groups.point(code, rest);
                found.emplace_back(p.x, p.y, p.z);
            }
        }
        return found;
    }

    [[nodiscard]] const AcGeMatrix3d& toWorld() const { return m_toWorld; }

    [[nodiscard]] AcGeVector3d normal() const { return m_toWorld * AcGeVector3d::kZAxis; }

    [[nodiscard]] AcGeVector3d upright() const { return normal() * real(39); }

private:
    const Groups& m_groups;
    AcGeMatrix3d m_toWorld;
};

void addWithThickness(Samples& samples, const Record& record, const AcGePoint3d& point)
{
    samples.points.push_back(point);
    samples.points.push_back(point + record.upright());
}

// --- one function per type -----------------------------------------------------------------------

Samples ofLine(const Record& record)
{
    Samples samples;
    addWithThickness(samples, record, record.point(10));
    addWithThickness(samples, record, record.point(11));
    return samples;
}

Samples ofPoint(const Record& record)
{
    Samples samples;
    addWithThickness(samples, record, record.point(10));
    samples.directions.push_back(record.toWorld() * atAngle(-record.real(50)));
    return samples;
}

Samples ofRay(const Record& record)
{
    return {.points = {record.point(10)}, .directions = {record.vector(11)}};
}

Samples ofFace(const Record& record)
{
    Samples samples;
    for (int corner = 10; corner <= 13; ++corner) {
        samples.points.push_back(record.point(record.has(corner) ? corner : 12));
    }
    return samples;
}

Samples ofSolid(const Record& record)
{
    Samples samples;
    for (int corner = 10; corner <= 13; ++corner) {
        const int code = record.has(corner) ? corner : 12;
        addWithThickness(samples, record, record.toWorld() * record.point(code));
    }
    return samples;
}

Samples ofCircle(const Record& record)
{
    Samples samples;
    const AcGeMatrix3d& toWorld = record.toWorld();
    const double radius = record.real(40);
    addWithThickness(samples, record, toWorld * record.point(10));
    samples.rings.push_back(Tensor::of(toWorld * AcGeVector3d::kXAxis * radius,
                                       toWorld * AcGeVector3d::kYAxis * radius));
    return samples;
}

Samples ofArc(const Record& record)
{
    Samples samples;
    samples.isOrdered = false;
    const double begin = record.real(50);
    double sweep = record.real(51) - begin;
    sweep += sweep <= 0.0 ? 360.0 : 0.0;
    for (int i = 0; i <= kPieces; ++i) {
        const double angle = begin + sweep * i / kPieces;
        const AcGePoint3d inPlane = record.point(10) + atAngle(angle) * record.real(40);
        addWithThickness(samples, record, record.toWorld() * inPlane);
    }
    return samples;
}

Samples ofEllipse(const Record& record)
{
    Samples samples;
    samples.isOrdered = false;
    const AcGeVector3d major = record.vector(11);
    const AcGeVector3d minor = record.normal().crossProduct(major) * record.real(40);
    samples.points.push_back(record.point(10));
    samples.rings.push_back(Tensor::of(major, minor));
    const double begin = record.real(41);
    const double sweep = record.real(42, 2.0 * std::numbers::pi) - begin;
    if (std::abs(sweep - 2.0 * std::numbers::pi) > kTolerance) {
        for (int i = 0; i <= kPieces; ++i) {
            const double t = begin + sweep * i / kPieces;
            samples.points.push_back(record.point(10) + major * std::cos(t) + minor * std::sin(t));
        }
    }
    return samples;
}

Samples ofSpline(const Record& record)
{
    Samples samples;
    samples.points = record.points(10);
    const auto fitPoints = record.points(11);
    samples.points.insert(samples.points.end(), fitPoints.begin(), fitPoints.end());
    for (const int tangent : {12, 13}) {
        if (record.has(tangent)) {
            samples.directions.push_back(record.vector(tangent));
        }
    }
    if (record.has(210)) {
        samples.lines.push_back(record.normal());
    }
    return samples;
}

struct Corner
{
    AcGePoint3d at;
    double startWidth = 0.0;
    double endWidth = 0.0;
    double bulge = 0.0;
};

/// The segment from a corner to the next: points on its middle line and on both its edges.
std::vector<AcGePoint3d> segmentBetween(const Corner& from, const Corner& to)
{
    std::vector<AcGePoint3d> points;
    const AcGeVector3d chord = to.at - from.at;
    const double halfAngle = 2.0 * std::atan(from.bulge); // of the arc, which swings from - to +
    for (int i = 0; i <= kPieces; ++i) {
        const double part = static_cast<double>(i) / kPieces;
        AcGePoint3d at = from.at + chord * part;
        AcGeVector3d along = chord.normal();
        if (from.bulge != 0.0) {
            const double radius = chord.length() / (2.0 * std::sin(halfAngle));
            const AcGePoint3d center
                = from.at + chord * 0.5 + leftOf(chord.normal()) * (radius * std::cos(halfAngle));
            const double swing = halfAngle * (2.0 * part - 1.0);
            const AcGeVector3d toMiddle = -leftOf(chord.normal()) * radius;
            at = center + AcGeMatrix3d().setToRotation(swing, AcGeVector3d::kZAxis) * toMiddle;
            along.transformBy(AcGeMatrix3d().setToRotation(swing, AcGeVector3d::kZAxis));
        }
        const double width = from.startWidth + (from.endWidth - from.startWidth) * part;
        points.push_back(at);
        points.push_back(at + leftOf(along) * (width / 2.0));
        points.push_back(at - leftOf(along) * (width / 2.0));
    }
    return points;
}

Samples ofLightPolyline(const Record& record)
{
    std::vector<Corner> corners;
    const double constantWidth = record.real(43);
    for (const Group& group : record.groups()) {
        if (group.code == 10) {
            corners.push_back({{group.real(), 0.0, record.real(38)}, constantWidth, constantWidth});
        } else if (group.code == 20) {
            corners.back().at.y = group.real();
        } else if (group.code == 40) {
            corners.back().startWidth = group.real();
        } else if (group.code == 41) {
            corners.back().endWidth = group.real();
        } else if (group.code == 42) {
            corners.back().bulge = group.real();
        }
    }
    Samples samples;
    samples.isOrdered = false;
    for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
        for (const AcGePoint3d& point : segmentBetween(corners[i], corners[i + 1])) {
            addWithThickness(samples, record, record.toWorld() * point);
        }
    }
    return samples;
}

Samples ofPolyline(const Record& record, const std::vector<Groups>& vertices)
{
    const bool isFlat = (record.integer(70) & (8 | 16 | 64)) == 0;
    Samples samples;
    samples.isOrdered = false;
    std::vector<Corner> corners;
    for (const Groups& groups : vertices) {
        if (!groups[0].isText(L"VERTEX")) {
            continue;
        }
        const Record vertex(groups);
        const bool isFace = (vertex.integer(70) & (128 | 64)) == 128;
        if (isFlat) {
            AcGePoint3d at = vertex.point(10);
            at.z = record.real(30);
            corners.push_back({at, vertex.real(40, record.real(40)),
                               vertex.real(41, record.real(41)), vertex.real(42)});
            if (vertex.has(50)) {
                samples.directions.push_back(record.toWorld() * atAngle(vertex.real(50)));
            }
        } else if (!isFace) {
            samples.points.push_back(vertex.point(10));
        }
    }
    for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
        for (const AcGePoint3d& point : segmentBetween(corners[i], corners[i + 1])) {
            addWithThickness(samples, record, record.toWorld() * point);
        }
    }
    return samples;
}

AcGeMatrix3d lettersOf(const Record& record)
{
    // An attribute of several lines has another 71 behind its other marker.
    const std::int64_t generation
        = record.groups().integer(71, record.groups().subclass(L"AcDbText"));
    const double flipX = (generation & 2) != 0 ? -1.0 : 1.0;
    const double flipY = (generation & 4) != 0 ? -1.0 : 1.0;
    const double slant = std::tan(record.real(51) * kDegree);
    return axes(atAngle(record.real(50)), leftOf(atAngle(record.real(50))))
        * axes({flipX, 0, 0}, {0, flipY, 0}) * axes({record.real(41, 1.0), 0, 0}, {slant, 1, 0})
        * axes({record.real(40), 0, 0}, {0, record.real(40), 0});
}

void addLetters(Samples& samples, const Record& record, const AcGePoint3d& base)
{
    const AcGeMatrix3d letters = lettersOf(record);
    for (const AcGeVector3d& corner :
         {AcGeVector3d(0, 0, 0), AcGeVector3d(1, 0, 0), AcGeVector3d(0, 1, 0)}) {
        addWithThickness(samples, record, base + record.toWorld() * (letters * corner));
    }
}

/// Of a text that is placed in the world. The X axis where nothing else is told and it is possible.
AcGeVector3d baseLineOf(const Record& record)
{
    if (record.has(11)) {
        return record.vector(11).normal();
    }
    const bool isXAxis
        = !record.has(50) && std::abs(record.normal().dotProduct(AcGeVector3d::kXAxis)) < 1e-12;
    return isXAxis ? AcGeVector3d::kXAxis : record.toWorld() * atAngle(record.real(50));
}

void addMultilineText(Samples& samples, const Record& record)
{
    const AcGeVector3d along = baseLineOf(record);
    const AcGeVector3d up = record.normal().crossProduct(along);
    samples.points.push_back(record.point(10));
    samples.points.push_back(record.point(10) + along * record.real(41));
    samples.points.push_back(record.point(10) + up * record.real(40));
    samples.points.push_back(record.point(10) + along * record.real(42) + up * record.real(43));
    samples.points.push_back(record.point(10) + up * record.real(46));
    samples.directions.push_back(along);
    samples.directions.push_back(up);
}

/// An embedded object as a record of its own.
Groups embeddedIn(const Groups& groups)
{
    std::vector<Group> found {Group(0, L"MTEXT")};
    for (std::size_t i = groups.body().end; i < groups.size() && groups[i].code < 1000; ++i) {
        if (groups[i].code != 101) {
            found.push_back(groups[i]);
        }
    }
    return Groups(found);
}

Samples ofText(const Record& record)
{
    Samples samples;
    const bool isAligned = record.integer(72) != 0
        || record.integer(record.groups()[0].isText(L"TEXT") ? 73 : 74) != 0;
    addLetters(samples, record, record.toWorld() * record.point(10));
    if (isAligned) {
        for (const AcGePoint3d& point : record.points(11)) {
            samples.points.push_back(record.toWorld() * point);
        }
    }
    const Groups embedded = embeddedIn(record.groups());
    if (embedded.size() > 1) {
        addMultilineText(samples, Record(embedded));
    }
    return samples;
}

Samples ofMultilineText(const Record& record)
{
    Samples samples;
    addMultilineText(samples, record);
    const Groups columns = embeddedIn(record.groups());
    if (columns.size() > 1) {
        const Record part(columns);
        samples.points.push_back(part.point(11));
        samples.directions.push_back(part.vector(10));
        for (const Group& group : columns) {
            if (40 <= group.code && group.code <= 46) {
                samples.lengths.push_back(group.real());
            }
        }
    }
    return samples;
}

Samples ofShape(const Record& record)
{
    Samples samples;
    const bool isOldForm = !record.has(100);
    addLetters(samples, record, isOldForm ? record.toWorld() * record.point(10) : record.point(10));
    return samples;
}

Samples ofTolerance(const Record& record)
{
    const AcGeVector3d along = baseLineOf(record);
    return {.points = {record.point(10)},
            .directions = {along, record.normal().crossProduct(along)}};
}

Samples ofInsert(const Record& record)
{
    Samples samples;
    const AcGeVector3d along = atAngle(record.real(50));
    for (std::int64_t row = 0; row < record.integer(71, 1); ++row) {
        for (std::int64_t column = 0; column < record.integer(70, 1); ++column) {
            const AcGePoint3d base = record.point(10)
                + along * (record.real(44) * static_cast<double>(column))
                + leftOf(along) * (record.real(45) * static_cast<double>(row));
            const AcGeMatrix3d cell = AcGeMatrix3d().setCoordSystem(
                base, along * record.real(41, 1.0), leftOf(along) * record.real(42, 1.0),
                AcGeVector3d::kZAxis * record.real(43, 1.0));
            for (const AcGePoint3d& corner : {AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0),
                                              AcGePoint3d(0, 1, 0), AcGePoint3d(0, 0, 1)}) {
                samples.points.push_back(record.toWorld() * (cell * corner));
            }
        }
    }
    return samples;
}

Samples ofViewport(const Record& record)
{
    return {.points = {record.point(10)}, .lengths = {record.real(40), record.real(41)}};
}

Samples ofDimension(const Record& record)
{
    Samples samples;
    const AcGeMatrix3d& toWorld = record.toWorld();
    for (const int code : {10, 13, 14, 15}) {
        if (record.has(code)) {
            samples.points.push_back(record.point(code));
        }
    }
    for (const int code : {11, 16}) {
        if (record.has(code)) {
            samples.points.push_back(toWorld * record.point(code));
        }
    }
    const std::int64_t type = record.integer(70) & 7;
    if (type == 0) {
        samples.lines.push_back(toWorld * atAngle(record.real(50)));
        samples.lines.push_back(toWorld * atAngle(record.real(50) + record.real(52)));
    }
    samples.lines.push_back(toWorld * atAngle(-record.real(51)));
    samples.lines.push_back(toWorld * atAngle(-record.real(51) + record.real(53)));
    samples.lengths.push_back(record.real(40));
    if (type != 2 && type != 5) {
        samples.lengths.push_back(record.real(42));
    }
    return samples;
}

Samples ofLeader(const Record& record)
{
    Samples samples;
    samples.points = record.points(10);
    const AcGePoint3d last = samples.points.back();
    samples.points.push_back(last + record.vector(212));
    samples.points.push_back(last + record.vector(213));
    samples.directions.push_back(record.vector(211, AcGeVector3d::kXAxis));
    samples.lines.push_back(record.normal());
    samples.lengths = {record.real(40), record.real(41)};
    return samples;
}

// --- hatches -------------------------------------------------------------------------------------

/// Reads the groups of a hatch in their order, as a reader of such files does.
class HatchReader
{
public:
    explicit HatchReader(const Record& record)
        : m_record(record)
        , m_at(*record.groups().find(91))
    {
    }

    Samples read()
    {
        const std::int64_t paths = next(91).integer();
        for (std::int64_t i = 0; i < paths; ++i) {
            const bool isPolyline = (next(92).integer() & 2) != 0;
            isPolyline ? readPolyline() : readEdges();
            for (std::int64_t sources = next(97).integer(); sources > 0; --sources) {
                next(330);
            }
        }
        next(75);
        next(76);
        if (m_record.integer(70) == 0) {
            readPattern();
        }
        if (isNext(47)) {
            next(47);
        }
        for (std::int64_t seeds = next(98).integer(); seeds > 0; --seeds) {
            add(nextPoint(10));
        }
        return m_samples;
    }

private:
    const Group& next(int code)
    {
        const Group& group = m_record.groups()[m_at++];
        EXPECT_EQ(group.code, code) << "at position " << m_at - 1;
        return group;
    }

    bool isNext(int code) const
    {
        return m_at < m_record.groups().size() && m_record.groups()[m_at].code == code;
    }

    AcGePoint3d nextPoint(int code)
    {
        const double x = next(code).real();
        const double y = next(code + 10).real();
        return {x, y, m_record.real(30)};
    }

    AcGeVector3d nextVector(int code)
    {
        const double x = next(code).real();
        return {x, next(code + 10).real(), 0.0};
    }

    void add(const AcGePoint3d& point) { m_samples.points.push_back(m_record.toWorld() * point); }

    void readPolyline()
    {
        const bool hasBulges = next(72).integer() != 0;
        next(73);
        std::vector<Corner> corners;
        for (std::int64_t count = next(93).integer(); count > 0; --count) {
            Corner corner {nextPoint(10)};
            corner.bulge = hasBulges ? next(42).real() : 0.0;
            corners.push_back(corner);
        }
        for (std::size_t i = 0; i < corners.size(); ++i) {
            for (const AcGePoint3d& p :
                 segmentBetween(corners[i], corners[(i + 1) % corners.size()])) {
                add(p);
            }
        }
    }

    void readEdges()
    {
        for (std::int64_t count = next(93).integer(); count > 0; --count) {
            switch (next(72).integer()) {
            case 1:
                add(nextPoint(10));
                add(nextPoint(11));
                break;
            case 2:
                readArc();
                break;
            case 3:
                readEllipticArc();
                break;
            default:
                readSpline();
                break;
            }
        }
    }

    void readArc()
    {
        const AcGePoint3d center = nextPoint(10);
        const double radius = next(40).real();
        const double begin = next(50).real();
        const double sweep = next(51).real() - begin;
        const double side = next(73).integer() != 0 ? 1.0 : -1.0; // clockwise angles count so
        if (std::abs(sweep) >= 360.0) {
            const AcGeMatrix3d& toWorld = m_record.toWorld();
            m_samples.rings.push_back(Tensor::of(toWorld * AcGeVector3d::kXAxis * radius,
                                                 toWorld * AcGeVector3d::kYAxis * radius));
            return;
        }
        for (int i = 0; i <= kPieces; ++i) {
            add(center + atAngle(side * (begin + sweep * i / kPieces)) * radius);
        }
    }

    void readEllipticArc()
    {
        const AcGePoint3d center = nextPoint(10);
        const AcGeVector3d major = nextVector(11);
        const AcGeVector3d minor = leftOf(major) * next(40).real();
        const double begin = next(50).real();
        const double sweep = next(51).real() - begin;
        const double side = next(73).integer() != 0 ? 1.0 : -1.0;
        for (int i = 0; i <= kPieces; ++i) {
            const AcGeVector3d at = atAngle(side * (begin + sweep * i / kPieces));
            add(center + major * at.x + minor * at.y);
        }
    }

    void readSpline()
    {
        next(94);
        const bool isRational = next(73).integer() != 0;
        next(74);
        std::int64_t knots = next(95).integer();
        const std::int64_t controlPoints = next(96).integer();
        for (; knots > 0; --knots) {
            m_knots += next(40).real();
        }
        for (std::int64_t i = 0; i < controlPoints; ++i) {
            add(nextPoint(10));
            m_knots += isRational ? next(42).real() : 0.0;
        }
        if (isNext(97) && m_record.groups()[m_at + 1].code == 11) {
            for (std::int64_t count = next(97).integer(); count > 0; --count) {
                add(nextPoint(11));
            }
            m_samples.directions.push_back(m_record.toWorld() * nextVector(12));
            m_samples.directions.push_back(m_record.toWorld() * nextVector(13));
        }
    }

    void readPattern()
    {
        m_samples.directions.push_back(m_record.toWorld() * atAngle(next(52).real()));
        m_samples.lengths.push_back(next(41).real());
        next(77);
        for (std::int64_t families = next(78).integer(); families > 0; --families) {
            const AcGeVector3d along = atAngle(next(53).real());
            const double x = next(43).real();
            const AcGePoint3d base(x, next(44).real(), m_record.real(30));
            const double right = next(45).real();
            const AcGeVector3d offset(right, next(46).real(), 0.0);
            add(base);
            add(base + offset);
            for (std::int64_t dashes = next(79).integer(); dashes > 0; --dashes) {
                add(base + along * next(49).real());
            }
            m_samples.directions.push_back(m_record.toWorld() * along);
        }
    }

    const Record& m_record;
    std::size_t m_at;
    double m_knots = 0.0; // numbers without a place
    Samples m_samples;
};

Samples ofHatch(const Record& record)
{
    return HatchReader(record).read();
}

const std::map<std::wstring, std::function<Samples(const Record&)>> kSamplers = {
    {L"3DFACE", ofFace},
    {L"ARC", ofArc},
    {L"ATTDEF", ofText},
    {L"ATTRIB", ofText},
    {L"CIRCLE", ofCircle},
    {L"DIMENSION", ofDimension},
    {L"ELLIPSE", ofEllipse},
    {L"HATCH", ofHatch},
    {L"INSERT", ofInsert},
    {L"LEADER", ofLeader},
    {L"LINE", ofLine},
    {L"LWPOLYLINE", ofLightPolyline},
    {L"MTEXT", ofMultilineText},
    {L"POINT", ofPoint},
    {L"RAY", ofRay},
    {L"SHAPE", ofShape},
    {L"SOLID", ofSolid},
    {L"SPLINE", ofSpline},
    {L"TEXT", ofText},
    {L"TOLERANCE", ofTolerance},
    {L"TRACE", ofSolid},
    {L"VIEWPORT", ofViewport},
    {L"XLINE", ofRay},
};

// --- comparing -----------------------------------------------------------------------------------

std::string shown(const AcGeVector3d& v)
{
    std::ostringstream out;
    out.precision(12);
    out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
    return out.str();
}

bool isNear(const AcGeVector3d& a, const AcGeVector3d& b, double size)
{
    return (a - b).length() <= kTolerance * std::max(1.0, size);
}

void expectPoints(const Samples& actual, const Samples& expected)
{
    ASSERT_EQ(actual.points.size(), expected.points.size());
    for (std::size_t i = 0; i < expected.points.size(); ++i) {
        const AcGeVector3d wanted = expected.points[i].asVector();
        const auto fits = [&](const AcGePoint3d& point) {
            return isNear(point.asVector(), wanted, wanted.length());
        };
        if (expected.isOrdered) {
            EXPECT_TRUE(fits(actual.points[i])) << "point " << i << ": " << shown(wanted)
                                                << " became " << shown(actual.points[i].asVector());
        } else {
            EXPECT_TRUE(std::any_of(actual.points.begin(), actual.points.end(), fits))
                << "no point at " << shown(wanted);
        }
    }
}

} // namespace

Groups recordFrom(std::wstring_view lines)
{
    Groups groups;
    std::wistringstream in {std::wstring(lines)};
    for (std::wstring line; std::getline(in >> std::ws, line);) {
        std::wistringstream parts(line);
        int code = -1;
        std::wstring value;
        parts >> code >> std::ws;
        std::getline(parts, value);
        switch (valueKindOf(code)) {
        case ValueKind::real:
            groups.add(Group(code, GroupValue(std::stod(value))));
            break;
        case ValueKind::int16:
        case ValueKind::int32:
            groups.add(Group(code, GroupValue(std::int64_t {std::stol(value)})));
            break;
        case ValueKind::handle:
            groups.add(Group(code, GroupValue(*handleFrom(value))));
            break;
        default:
            groups.add(Group(code, value.c_str()));
            break;
        }
    }
    return groups;
}

std::wstring textOf(const Groups& groups)
{
    std::wostringstream out;
    for (const Group& group : groups) {
        out << group.code << ' ';
        if (std::holds_alternative<double>(group.value)) {
            const double rounded = std::round(group.real() * 1e9) / 1e9;
            out << (rounded == 0.0 ? 0.0 : rounded);
        } else if (std::holds_alternative<Handle>(group.value)) {
            out << toText(group.handle());
        } else if (std::holds_alternative<std::int64_t>(group.value)) {
            out << group.integer();
        } else {
            out << group.text();
        }
        out << '\n';
    }
    return out.str();
}

Tensor Tensor::of(const AcGeVector3d& u, const AcGeVector3d& v)
{
    Tensor tensor;
    for (unsigned int row = 0; row < 3; ++row) {
        for (unsigned int column = 0; column < 3; ++column) {
            tensor.entry[row][column] = u[row] * u[column] + v[row] * v[column];
        }
    }
    return tensor;
}

Tensor Tensor::transformed(const AcGeMatrix3d& matrix) const
{
    Tensor result;
    for (unsigned int row = 0; row < 3; ++row) {
        for (unsigned int column = 0; column < 3; ++column) {
            for (unsigned int i = 0; i < 3; ++i) {
                for (unsigned int j = 0; j < 3; ++j) {
                    result.entry[row][column] += matrix(row, i) * entry[i][j] * matrix(column, j);
                }
            }
        }
    }
    return result;
}

Samples Samples::transformed(const AcGeMatrix3d& matrix) const
{
    Samples result = *this;
    for (AcGePoint3d& point : result.points) {
        point.transformBy(matrix);
    }
    for (AcGeVector3d& direction : result.directions) {
        direction = direction.transformBy(matrix).normal();
    }
    for (AcGeVector3d& line : result.lines) {
        line = line.transformBy(matrix).normal();
    }
    for (double& length : result.lengths) {
        length *= matrix.uniformScale();
    }
    for (Tensor& ring : result.rings) {
        ring = ring.transformed(matrix);
    }
    return result;
}

AcGeMatrix3d moved(double x, double y, double z)
{
    return AcGeMatrix3d().setToTranslation({x, y, z});
}

AcGeMatrix3d stretched(double x, double y, double z)
{
    return AcGeMatrix3d().setCoordSystem({}, {x, 0, 0}, {0, y, 0}, {0, 0, z});
}

Samples samplesOf(const Groups& entity, const std::vector<Groups>& vertices)
{
    const Record record(entity);
    return entity[0].isText(L"POLYLINE") ? ofPolyline(record, vertices)
                                         : kSamplers.at(entity[0].text())(record);
}

void expectSame(const Samples& actual, const Samples& expected)
{
    expectPoints(actual, expected);
    ASSERT_EQ(actual.directions.size(), expected.directions.size());
    for (std::size_t i = 0; i < expected.directions.size(); ++i) {
        EXPECT_TRUE(isNear(actual.directions[i].normal(), expected.directions[i].normal(), 1.0))
            << "direction " << i << ": " << shown(expected.directions[i]) << " became "
            << shown(actual.directions[i]);
    }
    ASSERT_EQ(actual.lines.size(), expected.lines.size());
    for (std::size_t i = 0; i < expected.lines.size(); ++i) {
        EXPECT_TRUE(isNear(actual.lines[i].crossProduct(expected.lines[i]), {}, 1.0))
            << "line " << i << ": " << shown(expected.lines[i]) << " became "
            << shown(actual.lines[i]);
    }
    ASSERT_EQ(actual.lengths.size(), expected.lengths.size());
    for (std::size_t i = 0; i < expected.lengths.size(); ++i) {
        EXPECT_NEAR(actual.lengths[i], expected.lengths[i], kTolerance) << "length " << i;
    }
    ASSERT_EQ(actual.rings.size(), expected.rings.size());
    for (std::size_t i = 0; i < expected.rings.size(); ++i) {
        for (int entry = 0; entry < 9; ++entry) {
            EXPECT_NEAR(actual.rings[i].entry[entry / 3][entry % 3],
                        expected.rings[i].entry[entry / 3][entry % 3], 1e-7)
                << "ring " << i;
        }
    }
}

} // namespace corma::host::test
