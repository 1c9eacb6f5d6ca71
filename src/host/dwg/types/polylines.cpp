// Polylines of all kinds, and their vertices.

#include "host/dwg/bodies.h"
#include "host/dwg/types/pieces.h"

#include <algorithm>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr int kFollow = 66; // a group that says that vertices follow

// --- LWPOLYLINE ----------------------------------------------------------------------------------

struct Width
{
    double start = 0.0;
    double end = 0.0;
};

struct LightPolyline
{
    enum Flag : std::int16_t
    {
        kHasNormal = 1,
        kHasThickness = 2,
        kHasWidth = 4,
        kHasElevation = 8,
        kHasBulges = 16,
        kHasWidths = 32,
        kIsContinuous = 256, // the pattern of the linetype runs over the vertices
        kIsClosed = 512,
        kHasIds = 1024
    };

    std::int16_t flags = 0;
    double width = 0.0;
    double elevation = 0.0;
    double thickness = 0.0;
    Point normal = kUsualNormal;
    std::vector<Point2> points;
    std::vector<double> bulges;
    std::vector<std::int32_t> ids; // from R2010 on
    std::vector<Width> widths;

    [[nodiscard]] bool has(Flag flag) const { return (flags & flag) != 0; }

    template<class Io> void bits(Io& io)
    {
        io.bitShort(flags);
        if (has(kHasWidth)) {
            io.bitDouble(width);
        }
        if (has(kHasElevation)) {
            io.bitDouble(elevation);
        }
        if (has(kHasThickness)) {
            io.bitDouble(thickness);
        }
        if (has(kHasNormal)) {
            io.point3(normal);
        }
        auto pointCount = static_cast<std::uint32_t>(points.size());
        auto bulgeCount = static_cast<std::uint32_t>(bulges.size());
        auto idCount = static_cast<std::uint32_t>(ids.size());
        auto widthCount = static_cast<std::uint32_t>(widths.size());
        io.bitLong(pointCount);
        countBits(io, kHasBulges, bulgeCount);
        if (io.since(r2010)) {
            countBits(io, kHasIds, idCount);
        }
        countBits(io, kHasWidths, widthCount);
        pointBits(io, pointCount);
        listBits(io, bulgeCount, idCount, widthCount);
    }

    template<class Io> void countBits(Io& io, Flag flag, std::uint32_t& count)
    {
        if (has(flag)) {
            io.bitLong(count);
        }
    }

    template<class Io> void pointBits(Io& io, std::uint32_t count)
    {
        constexpr std::size_t kFewestBits = 4;
        io.resize(points, count, kFewestBits);
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (i == 0 || io.until(r14)) {
                io.rawPoint2(points[i]);
            } else {
                io.defaultPoint2(points[i], points[i - 1]);
            }
        }
    }

    template<class Io>
    void listBits(Io& io, std::uint32_t bulgeCount, std::uint32_t idCount, std::uint32_t widthCount)
    {
        constexpr std::size_t kFewestBits = 2;
        io.resize(bulges, bulgeCount, kFewestBits);
        for (double& bulge : bulges) {
            io.bitDouble(bulge);
        }
        io.resize(ids, idCount, kFewestBits);
        for (std::int32_t& id : ids) {
            io.bitLong(id);
        }
        io.resize(widths, widthCount, 2 * kFewestBits);
        for (Width& part : widths) {
            io.bitDouble(part.start);
            io.bitDouble(part.end);
        }
    }

    static constexpr int kCount = 90;
    static constexpr int kWidth = 43;
    static constexpr int kElevation = 38;
    static constexpr int kX = 10;
    static constexpr int kY = 20;
    static constexpr int kStartWidth = 40;
    static constexpr int kEndWidth = 41;
    static constexpr int kBulge = 42;
    static constexpr int kId = 91;
    static constexpr std::int16_t kGroupClosed = 1; // of group 70
    static constexpr std::int16_t kGroupContinuous = 128;

    void groups(FieldsToGroups& io) const
    {
        io.marker(L"AcDbPolyline");
        io.integer(kCount, points.size());
        io.integer(code::flags,
                   (has(kIsClosed) ? kGroupClosed : 0)
                       | (has(kIsContinuous) ? kGroupContinuous : 0));
        if (widths.empty()) {
            io.real(kWidth, width);
        }
        io.real(kElevation, elevation, 0.0);
        io.real(code::thickness, thickness, 0.0);
        for (std::size_t i = 0; i < points.size(); ++i) {
            io.point2(kX, points[i]);
            if (i < widths.size()) {
                io.real(kStartWidth, widths[i].start);
                io.real(kEndWidth, widths[i].end);
            }
            if (i < bulges.size()) {
                io.real(kBulge, bulges[i], 0.0);
            }
            if (i < ids.size()) {
                io.integer(kId, ids[i]);
            }
        }
        io.extrusion(normal);
    }

    void groups(FieldsFromGroups& io)
    {
        io.marker(L"AcDbPolyline");
        std::int64_t groupFlags = 0;
        io.integer(code::flags, groupFlags);
        io.real(kWidth, width);
        io.real(kElevation, elevation);
        io.real(code::thickness, thickness);
        io.extrusion(normal);
        verticesFrom(io);
        setFlag(kIsClosed, (groupFlags & kGroupClosed) != 0);
        setFlag(kIsContinuous, (groupFlags & kGroupContinuous) != 0);
        // A value that the file tells although it is the usual one stays there.
        setFlag(kHasWidth, (has(kHasWidth) || width != 0.0) && widths.empty());
        setFlag(kHasElevation, has(kHasElevation) || elevation != 0.0);
        setFlag(kHasThickness, has(kHasThickness) || thickness != 0.0);
        setFlag(kHasNormal, has(kHasNormal) || normal != kUsualNormal);
        setFlag(kHasBulges, !bulges.empty());
        setFlag(kHasWidths, !widths.empty());
        setFlag(kHasIds, !ids.empty());
    }

    void setFlag(Flag flag, bool value)
    {
        flags = static_cast<std::int16_t>(value ? flags | flag : flags & ~flag);
    }

    void verticesFrom(const FieldsFromGroups& io)
    {
        const bool hadBulges = !bulges.empty() && bulges.size() == points.size();
        points.clear();
        bulges.clear();
        ids.clear();
        widths.clear();
        bool hasBulges = hadBulges;
        bool hasWidths = false;
        bool hasIds = false;
        for (GroupWalk walk(io); !walk.isAtEnd(); walk.next()) {
            if (walk.isAt(kX)) {
                points.emplace_back().x = walk.group().real();
                bulges.emplace_back();
                ids.emplace_back();
                widths.emplace_back();
            } else if (!points.empty()) {
                const int groupCode = walk.group().code;
                valueFrom(walk.group());
                hasBulges = hasBulges || (groupCode == kBulge && bulges.back() != 0.0);
                hasWidths = hasWidths || groupCode == kStartWidth || groupCode == kEndWidth;
                hasIds = hasIds || (groupCode == kId && io.since(r2010));
            }
        }
        dropUnless(hasBulges, bulges);
        dropUnless(hasWidths, widths);
        dropUnless(hasIds, ids);
    }

    void valueFrom(const Group& group)
    {
        switch (group.code) {
        case kY:
            points.back().y = group.real();
            break;
        case kStartWidth:
            widths.back().start = group.real();
            break;
        case kEndWidth:
            widths.back().end = group.real();
            break;
        case kBulge:
            bulges.back() = group.real();
            break;
        case kId:
            ids.back() = static_cast<std::int32_t>(group.integer());
            break;
        default:
            break;
        }
    }

    template<class Item> static void dropUnless(bool has, std::vector<Item>& list)
    {
        if (!has) {
            list.clear();
        }
    }
};

// --- POLYLINE ------------------------------------------------------------------------------------

struct Polyline2d
{
    std::int16_t flags = 0;
    std::int16_t curve = 0;
    double startWidth = 0.0;
    double endWidth = 0.0;
    double thickness = 0.0;
    double elevation = 0.0;
    Point normal = kUsualNormal;
    Sequence vertices;

    template<class Io> void bits(Io& io)
    {
        io.bitShort(flags);
        io.bitShort(curve);
        io.bitDouble(startWidth);
        io.bitDouble(endWidth);
        io.thickness(thickness);
        io.bitDouble(elevation);
        io.extrusion(normal);
        vertices.bits(io);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDb2dPolyline");
        Point position {0.0, 0.0, elevation};
        if constexpr (Io::isFromGroups) {
            io.point(10, position);
            elevation = position.z;
            vertices.take(io.around());
        } else {
            io.integer(kFollow, 1);
            io.point(10, position);
        }
        io.real(code::thickness, thickness, 0.0);
        io.integer(code::flags, flags, 0);
        io.real(40, startWidth, 0.0);
        io.real(41, endWidth, 0.0);
        io.integer(75, curve, 0);
        io.extrusion(normal);
    }

    [[nodiscard]] Owned ownedHandles() const { return vertices.owned(); }
};

/// What all polylines in space have in groups: no position of their own.
void spaceHead(FieldsToGroups& io)
{
    io.integer(kFollow, 1);
    io.point(10, {});
}

struct Polyline3d
{
    static constexpr std::uint8_t kQuadratic = 1; // of the curve
    static constexpr std::uint8_t kCubic = 2;
    static constexpr std::uint8_t kClosed = 1;

    static constexpr int kGroupIsSpline = 4; // of group 70
    static constexpr int kGroupIs3d = 8;
    static constexpr int kGroupQuadratic = 5; // of group 75
    static constexpr int kGroupCubic = 6;

    std::uint8_t curve = 0;
    std::uint8_t flags = 0;
    Sequence vertices;

    template<class Io> void bits(Io& io)
    {
        io.byte(curve);
        io.byte(flags);
        vertices.bits(io);
    }

    void groups(FieldsToGroups& io) const
    {
        io.marker(L"AcDb3dPolyline");
        spaceHead(io);
        const bool isSpline = (curve & (kQuadratic | kCubic)) != 0;
        io.integer(code::flags, (flags & kClosed) | kGroupIs3d | (isSpline ? kGroupIsSpline : 0));
        if (isSpline) {
            io.integer(75, (curve & kCubic) != 0 ? kGroupCubic : kGroupQuadratic);
        }
    }

    void groups(FieldsFromGroups& io)
    {
        io.marker(L"AcDb3dPolyline");
        int groupFlags = 0;
        int groupCurve = 0;
        io.integer(code::flags, groupFlags);
        io.integer(75, groupCurve);
        flags = static_cast<std::uint8_t>((flags & ~kClosed) | (groupFlags & kClosed));
        int kind = groupCurve == kGroupQuadratic ? kQuadratic : 0;
        kind = groupCurve == kGroupCubic ? kCubic : kind;
        curve = static_cast<std::uint8_t>((curve & ~(kQuadratic | kCubic)) | kind);
        vertices.take(io.around());
    }

    [[nodiscard]] Owned ownedHandles() const { return vertices.owned(); }
};

struct FaceMesh
{
    static constexpr int kGroupIsFaceMesh = 64; // of group 70

    std::int16_t vertexCount = 0;
    std::int16_t faceCount = 0;
    Sequence vertices;

    template<class Io> void bits(Io& io)
    {
        io.bitShort(vertexCount);
        io.bitShort(faceCount);
        vertices.bits(io);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbPolyFaceMesh");
        if constexpr (Io::isFromGroups) {
            vertices.take(io.around());
        } else {
            spaceHead(io);
            io.integer(code::flags, kGroupIsFaceMesh);
        }
        io.integer(71, vertexCount);
        io.integer(72, faceCount);
    }

    [[nodiscard]] Owned ownedHandles() const { return vertices.owned(); }
};

struct Mesh
{
    static constexpr std::int16_t kGroupIsMesh = 16; // of group 70

    std::int16_t flags = kGroupIsMesh;
    std::int16_t curve = 0;
    std::int16_t size[2] = {};
    std::int16_t density[2] = {};
    Sequence vertices;

    template<class Io> void bits(Io& io)
    {
        io.bitShort(flags);
        io.bitShort(curve);
        io.bitShort(size[0]);
        io.bitShort(size[1]);
        io.bitShort(density[0]);
        io.bitShort(density[1]);
        vertices.bits(io);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbPolygonMesh");
        if constexpr (Io::isFromGroups) {
            vertices.take(io.around());
            const bool isToldInBits = (flags & kGroupIsMesh) != 0;
            io.integer(code::flags, flags);
            flags = static_cast<std::int16_t>(isToldInBits ? flags | kGroupIsMesh
                                                           : flags & ~kGroupIsMesh);
        } else {
            spaceHead(io);
            io.integer(code::flags, flags | kGroupIsMesh);
        }
        io.integer(71, size[0]);
        io.integer(72, size[1]);
        io.integer(73, density[0], 0);
        io.integer(74, density[1], 0);
        io.integer(75, curve, 0);
    }

    [[nodiscard]] Owned ownedHandles() const { return vertices.owned(); }
};

// --- VERTEX --------------------------------------------------------------------------------------

struct Vertex2d
{
    std::uint8_t flags = 0;
    Point position;
    bool hasOneWidth = true; // one that is not 0 is told once, as a negative number
    double startWidth = 0.0;
    double endWidth = 0.0;
    double bulge = 0.0;
    std::int32_t id = 0; // from R2010 on
    double tangent = 0.0;

    template<class Io> void bits(Io& io)
    {
        io.byte(flags);
        io.point3(position);
        if constexpr (Io::isReading) {
            io.bitDouble(startWidth);
            hasOneWidth = startWidth < 0.0;
            if (hasOneWidth) {
                startWidth = endWidth = -startWidth;
            } else {
                io.bitDouble(endWidth);
            }
        } else if (hasOneWidth && startWidth == endWidth && startWidth > 0.0) {
            io.bitDouble(-startWidth);
        } else {
            io.bitDouble(startWidth);
            io.bitDouble(endWidth);
        }
        io.bitDouble(bulge);
        if (io.since(r2010)) {
            io.bitLong(id);
        }
        io.bitDouble(tangent);
    }

    template<class Io> void groups(Io& io)
    {
        constexpr int kId = 91;
        io.marker(L"AcDbVertex");
        io.marker(L"AcDb2dVertex");
        io.point(10, position);
        io.real(40, startWidth); // without one it would be that of the polyline
        io.real(41, endWidth);
        io.real(42, bulge, 0.0);
        io.integer(code::flags, flags, 0);
        io.angle(50, tangent, 0.0);
        if (io.since(r2010)) {
            io.integer(kId, id);
        }
    }
};

/// A vertex that is a point in space.
template<const wchar_t* const& marker, std::uint8_t groupFlags> struct SpaceVertex
{
    std::uint8_t flags = groupFlags;
    Point position;

    template<class Io> void bits(Io& io)
    {
        io.byte(flags);
        io.point3(position);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbVertex");
        io.marker(marker);
        io.point(10, position);
        io.integer(code::flags, flags);
    }
};

constexpr const wchar_t* k3dVertexMarker = L"AcDb3dPolylineVertex";
constexpr const wchar_t* kMeshVertexMarker = L"AcDbPolygonMeshVertex";
constexpr const wchar_t* kFaceVertexMarker = L"AcDbPolyFaceMeshVertex";
constexpr std::uint8_t kIs3d = 32; // of group 70
constexpr std::uint8_t kIsOfMesh = 64;
constexpr std::uint8_t kIsOfFaces = 128;

using Vertex3d = SpaceVertex<k3dVertexMarker, kIs3d>;
using MeshVertex = SpaceVertex<kMeshVertexMarker, kIsOfMesh>;
using FaceVertex = SpaceVertex<kFaceVertexMarker, kIsOfMesh | kIsOfFaces>;

/// A face, by the numbers of its vertices.
struct FaceRecord
{
    std::int16_t corners[4] = {};

    template<class Io> void bits(Io& io)
    {
        for (std::int16_t& corner : corners) {
            io.bitShort(corner);
        }
    }

    template<class Io> void groups(Io& io)
    {
        constexpr int kFirstCorner = 71;
        io.marker(L"AcDbFaceRecord");
        if constexpr (!Io::isFromGroups) {
            io.point(10, {});
            io.integer(code::flags, kIsOfFaces);
        }
        for (int i = 0; i < 4; ++i) {
            io.integer(kFirstCorner + i, corners[i], 0);
        }
    }
};

} // namespace

std::unique_ptr<Body> makeLightPolyline()
{
    return makeBody<LightPolyline>();
}

std::unique_ptr<Body> makePolyline2d()
{
    return makeBody<Polyline2d>();
}

std::unique_ptr<Body> makePolyline3d()
{
    return makeBody<Polyline3d>();
}

std::unique_ptr<Body> makeFaceMesh()
{
    return makeBody<FaceMesh>();
}

std::unique_ptr<Body> makeMesh()
{
    return makeBody<Mesh>();
}

std::unique_ptr<Body> makeVertex2d()
{
    return makeBody<Vertex2d>();
}

std::unique_ptr<Body> makeVertex3d()
{
    return makeBody<Vertex3d>();
}

std::unique_ptr<Body> makeMeshVertex()
{
    return makeBody<MeshVertex>();
}

std::unique_ptr<Body> makeFaceVertex()
{
    return makeBody<FaceVertex>();
}

std::unique_ptr<Body> makeFaceRecord()
{
    return makeBody<FaceRecord>();
}

} // namespace corma::host::dwg
