// Dimensions of all kinds.

#include "host/dwg/bodies.h"
#include "host/dwg/types/pieces.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

/// What all kinds have.
struct Dimension
{
    // In bits.
    static constexpr std::uint8_t kTextIsInPlace = 1;
    static constexpr std::uint8_t kOwnsBlock = 2;

    // Of group 70, beside the kind.
    static constexpr int kGroupOwnsBlock = 32;
    static constexpr int kGroupTextWasMoved = 128;

    static constexpr std::int16_t kMiddleOfText = 5;

    std::uint8_t version = 0; // from R2010 on
    Point normal = kUsualNormal;
    Point2 textMiddle;
    double elevation = 0.0; // of points in the plane
    std::uint8_t flags = kTextIsInPlace;
    Text text;
    double textRotation = 0.0;
    double horizontal = 0.0;
    Point blockScale {1.0, 1.0, 1.0}; // none of these two is in groups
    double blockRotation = 0.0;
    std::int16_t attachment = kMiddleOfText; // these four from R2000 on
    std::int16_t spacingStyle = 1;
    double spacing = 1.0;
    double measurement = 0.0;
    bool unknown = false; // these three from R2007 on
    bool flipsFirstArrow = false;
    bool flipsSecondArrow = false;
    Point2 blockPosition;
    Ref style;
    Ref block;

    template<class Io> void bits(Io& io)
    {
        if (io.since(r2010)) {
            io.byte(version);
        }
        io.point3(normal);
        io.rawPoint2(textMiddle);
        io.bitDouble(elevation);
        io.byte(flags);
        io.text(text);
        io.bitDouble(textRotation);
        io.bitDouble(horizontal);
        io.point3(blockScale);
        io.bitDouble(blockRotation);
        if (io.since(r2000)) {
            io.bitShort(attachment);
            io.bitShort(spacingStyle);
            io.bitDouble(spacing);
            io.bitDouble(measurement);
        }
        if (io.since(r2007)) {
            io.bit(unknown);
            io.bit(flipsFirstArrow);
            io.bit(flipsSecondArrow);
        }
        io.rawPoint2(blockPosition);
        io.handle(style, Bond::hardPointer);
        io.handle(block, Bond::hardPointer);
    }

    /// `kind` is what group 70 has of the kind itself.
    template<class Io> void groups(Io& io, int kind, Point& definition)
    {
        io.marker(L"AcDbDimension");
        if (io.since(r2010)) {
            io.integer(280, version);
        }
        io.named(code::name, block, TableKind::blockRecord);
        io.point(10, definition);
        pointOfPlane(io, 11, textMiddle, elevation);
        blockPositionGroups(io);
        flagGroups(io, kind);
        io.text(1, text, L"");
        io.angle(53, textRotation, 0.0);
        io.angle(51, horizontal, 0.0);
        if (io.since(r2000)) {
            alwaysInteger(io, 71, attachment, kMiddleOfText);
            io.integer(72, spacingStyle, 1);
            io.real(41, spacing, 1.0);
            io.real(42, measurement);
        }
        if (io.since(r2007)) {
            io.integer(73, unknown);
            io.integer(74, flipsFirstArrow);
            io.integer(75, flipsSecondArrow);
        }
        io.extrusion(normal);
        alwaysNamed(io, 3, style, TableKind::dimStyle, kStandardName);
    }

    static constexpr int kBlockPosition = 12;

    void blockPositionGroups(FieldsToGroups& io) const
    {
        if (blockPosition != Point2 {}) {
            io.point(kBlockPosition, {blockPosition.x, blockPosition.y, elevation});
        }
    }

    void blockPositionGroups(FieldsFromGroups& io) { io.point2(kBlockPosition, blockPosition); }

    void flagGroups(FieldsToGroups& io, int kind) const
    {
        const int ownsBlock = (flags & kOwnsBlock) != 0 ? kGroupOwnsBlock : 0;
        const int wasMoved = (flags & kTextIsInPlace) != 0 ? 0 : kGroupTextWasMoved;
        io.integer(code::flags, kind | ownsBlock | wasMoved);
    }

    void flagGroups(FieldsFromGroups& io, int /*kind*/)
    {
        int groupFlags = 0;
        io.integer(code::flags, groupFlags);
        const int others = flags & ~(kTextIsInPlace | kOwnsBlock);
        const int isInPlace = (groupFlags & kGroupTextWasMoved) != 0 ? 0 : kTextIsInPlace;
        const int ownsBlock = (groupFlags & kGroupOwnsBlock) != 0 ? kOwnsBlock : 0;
        flags = static_cast<std::uint8_t>(others | isInPlace | ownsBlock);
    }
};

/// The kinds, as group 70 has them.
enum DimensionKind : int
{
    kRotated = 0,
    kAligned = 1,
    kTwoLines = 2,
    kDiameter = 3,
    kRadius = 4,
    kThreePoints = 5,
    kOrdinate = 6
};

struct OrdinateDimension
{
    static constexpr std::uint8_t kAlongX = 1;
    static constexpr int kGroupAlongX = 64; // of group 70

    Dimension common;
    Point definition;
    Point feature;
    Point leaderEnd;
    std::uint8_t flags = 0;

    template<class Io> void bits(Io& io)
    {
        common.bits(io);
        io.point3(definition);
        io.point3(feature);
        io.point3(leaderEnd);
        io.byte(flags);
    }

    template<class Io> void groups(Io& io)
    {
        const int alongX = (flags & kAlongX) != 0 ? kGroupAlongX : 0;
        common.groups(io, kOrdinate | alongX, definition);
        if constexpr (Io::isFromGroups) {
            int groupFlags = 0;
            io.integer(code::flags, groupFlags);
            const int isAlongX = (groupFlags & kGroupAlongX) != 0 ? kAlongX : 0;
            flags = static_cast<std::uint8_t>((flags & ~kAlongX) | isAlongX);
        }
        io.marker(L"AcDbOrdinateDimension");
        io.point(13, feature);
        io.point(14, leaderEnd);
    }
};

struct AlignedDimension
{
    Dimension common;
    Point first;
    Point second;
    Point definition;
    double obliquing = 0.0; // of the extension lines

    template<class Io> void bits(Io& io)
    {
        common.bits(io);
        io.point3(first);
        io.point3(second);
        io.point3(definition);
        io.bitDouble(obliquing);
    }

    template<class Io> void groups(Io& io) { groups(io, kAligned); }

    template<class Io> void groups(Io& io, int kind)
    {
        common.groups(io, kind, definition);
        io.marker(L"AcDbAlignedDimension");
        io.point(13, first);
        io.point(14, second);
        io.angle(52, obliquing, 0.0);
    }
};

struct RotatedDimension
{
    AlignedDimension aligned;
    double rotation = 0.0;

    template<class Io> void bits(Io& io)
    {
        aligned.bits(io);
        io.bitDouble(rotation);
    }

    template<class Io> void groups(Io& io)
    {
        aligned.groups(io, kRotated);
        io.angle(50, rotation, 0.0);
        if constexpr (!Io::isFromGroups) {
            io.marker(L"AcDbRotatedDimension");
        }
    }
};

/// The angle at a point.
struct ThreePointDimension
{
    Dimension common;
    Point definition;
    Point first;
    Point second;
    Point vertex;

    template<class Io> void bits(Io& io)
    {
        common.bits(io);
        io.point3(definition);
        io.point3(first);
        io.point3(second);
        io.point3(vertex);
    }

    template<class Io> void groups(Io& io)
    {
        common.groups(io, kThreePoints, definition);
        io.marker(L"AcDb3PointAngularDimension");
        io.point(13, first);
        io.point(14, second);
        io.point(15, vertex);
    }
};

/// The angle between two lines.
struct TwoLineDimension
{
    Dimension common;
    Point2 arc;
    Point firstBegin;
    Point firstEnd;
    Point secondBegin;
    Point secondEnd; // group 10

    template<class Io> void bits(Io& io)
    {
        common.bits(io);
        io.rawPoint2(arc);
        io.point3(firstBegin);
        io.point3(firstEnd);
        io.point3(secondBegin);
        io.point3(secondEnd);
    }

    template<class Io> void groups(Io& io)
    {
        common.groups(io, kTwoLines, secondEnd);
        io.marker(L"AcDb2LineAngularDimension");
        io.point(13, firstBegin);
        io.point(14, firstEnd);
        io.point(15, secondBegin);
        if constexpr (Io::isFromGroups) {
            io.point2(16, arc);
        } else {
            io.point(16, {arc.x, arc.y, common.elevation});
        }
    }
};

/// A radius or a diameter.
struct RoundDimension
{
    Dimension common;
    Point definition;
    Point onCurve;
    double leaderLength = 0.0;

    template<class Io> void bits(Io& io)
    {
        common.bits(io);
        io.point3(definition);
        io.point3(onCurve);
        io.bitDouble(leaderLength);
    }

    template<class Io> void groups(Io& io, int kind, const wchar_t* marker)
    {
        common.groups(io, kind, definition);
        io.marker(marker);
        io.point(15, onCurve);
        io.real(40, leaderLength);
    }
};

struct RadiusDimension : RoundDimension
{
    template<class Io> void groups(Io& io)
    {
        RoundDimension::groups(io, kRadius, L"AcDbRadialDimension");
    }
};

struct DiameterDimension : RoundDimension
{
    // The two points stand the other way round than those of a radius.
    template<class Io> void bits(Io& io)
    {
        common.bits(io);
        io.point3(onCurve);
        io.point3(definition);
        io.bitDouble(leaderLength);
    }

    template<class Io> void groups(Io& io)
    {
        RoundDimension::groups(io, kDiameter, L"AcDbDiametricDimension");
    }
};

} // namespace

std::unique_ptr<Body> makeOrdinateDimension()
{
    return makeBody<OrdinateDimension>();
}

std::unique_ptr<Body> makeRotatedDimension()
{
    return makeBody<RotatedDimension>();
}

std::unique_ptr<Body> makeAlignedDimension()
{
    return makeBody<AlignedDimension>();
}

std::unique_ptr<Body> makeThreePointDimension()
{
    return makeBody<ThreePointDimension>();
}

std::unique_ptr<Body> makeTwoLineDimension()
{
    return makeBody<TwoLineDimension>();
}

std::unique_ptr<Body> makeRadiusDimension()
{
    return makeBody<RadiusDimension>();
}

std::unique_ptr<Body> makeDiameterDimension()
{
    return makeBody<DiameterDimension>();
}

} // namespace corma::host::dwg
