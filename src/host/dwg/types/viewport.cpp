// Windows of layouts.

#include "host/dwg/bodies.h"
#include "host/dwg/types/colors.h"
#include "host/dwg/types/pieces.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr ColorCodes kAmbientCodes {.index = 63, .rgb = 421, .name = 431};

/// What of it is shown, and its number among those of its layout, are not in bits.
struct Viewport
{
    Point center;
    double width = 0.0;
    double height = 0.0;

    // From R2000 on.
    Point target;
    Point direction {0.0, 0.0, 1.0};
    double twist = 0.0;
    double viewHeight = 1.0;
    double lens = kUsualLens;
    double frontClip = 0.0;
    double backClip = 0.0;
    double snapAngle = 0.0;
    Point2 viewCenter;
    Point2 snapBase;
    Point2 snapSpacing {10.0, 10.0};
    Point2 gridSpacing {10.0, 10.0};
    std::int16_t circleZoom = kUsualZoom;
    std::int16_t majorGrid = kUsualGrid; // from R2007 on
    std::int32_t status = kUsualStatus;
    Text styleSheet;
    std::uint8_t renderMode = 0;
    bool isUcsAtOrigin = false;
    bool hasOwnUcs = true;
    Point ucsOrigin;
    Point ucsX {1.0, 0.0, 0.0};
    Point ucsY {0.0, 1.0, 0.0};
    double ucsElevation = 0.0;
    std::int16_t ucsView = 0;
    std::int16_t shadePlot = 0; // from R2004 on
    bool hasUsualLight = true; // these from R2007 on
    std::uint8_t usualLight = 1;
    double brightness = 0.0;
    double contrast = 0.0;
    Color ambient;

    Ref header; // up to R2000
    std::vector<Ref> frozen;
    Ref clip;
    Ref namedUcs;
    Ref baseUcs;
    Ref background; // these from R2007 on
    Ref visualStyle;
    Ref shadePlotSource;
    Ref sun;

    static constexpr std::int32_t kUsualStatus = 0x8020; // has a UCS icon, at its origin
    static constexpr double kUsualLens = 50.0;
    static constexpr std::int16_t kUsualZoom = 1000;
    static constexpr std::int16_t kUsualGrid = 5;

    Viewport()
    {
        constexpr int kDarkGray = 250;
        ambient.index = kDarkGray;
        ambient.rgb = rgbOfPalette(kDarkGray);
    }

    template<class Io> void bits(Io& io)
    {
        io.point3(center);
        io.bitDouble(width);
        io.bitDouble(height);
        if (io.until(r14)) {
            io.handle(header, Bond::hardPointer);
            return;
        }
        viewBits(io);
        auto frozenCount = static_cast<std::uint32_t>(frozen.size());
        io.bitLong(frozenCount);
        settingBits(io);
        handleBits(io, frozenCount);
    }

    template<class Io> void viewBits(Io& io)
    {
        io.point3(target);
        io.point3(direction);
        io.bitDouble(twist);
        io.bitDouble(viewHeight);
        io.bitDouble(lens);
        io.bitDouble(frontClip);
        io.bitDouble(backClip);
        io.bitDouble(snapAngle);
        io.rawPoint2(viewCenter);
        io.rawPoint2(snapBase);
        io.rawPoint2(snapSpacing);
        io.rawPoint2(gridSpacing);
        io.bitShort(circleZoom);
        if (io.since(r2007)) {
            io.bitShort(majorGrid);
        }
    }

    template<class Io> void settingBits(Io& io)
    {
        io.bitLong(status);
        io.text(styleSheet);
        io.byte(renderMode);
        io.bit(isUcsAtOrigin);
        io.bit(hasOwnUcs);
        io.point3(ucsOrigin);
        io.point3(ucsX);
        io.point3(ucsY);
        io.bitDouble(ucsElevation);
        io.bitShort(ucsView);
        if (io.since(r2004)) {
            io.bitShort(shadePlot);
        }
        if (io.since(r2007)) {
            io.bit(hasUsualLight);
            io.byte(usualLight);
            io.bitDouble(brightness);
            io.bitDouble(contrast);
            io.color(ambient);
        }
    }

    template<class Io> void handleBits(Io& io, std::uint32_t frozenCount)
    {
        io.handles(frozen, frozenCount, io.since(r2004) ? Bond::softPointer : Bond::hardPointer);
        io.handle(clip, Bond::softPointer);
        if (io.until(r2000)) {
            io.handle(header, Bond::hardPointer);
        }
        io.handle(namedUcs, Bond::hardPointer);
        io.handle(baseUcs, Bond::hardPointer);
        if (io.since(r2007)) {
            io.handle(background, Bond::softPointer);
            io.handle(visualStyle, Bond::hardPointer);
            io.handle(shadePlotSource, Bond::softPointer);
            io.handle(sun, Bond::hardOwner);
        }
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbViewport");
        io.point(10, center);
        io.real(40, width);
        io.real(41, height);
        if (io.since(r2000)) {
            viewGroups(io);
            settingGroups(io);
        }
        if (io.since(r2007)) {
            lightGroups(io);
        }
    }

    template<class Io> void viewGroups(Io& io)
    {
        io.point2(12, viewCenter);
        io.point2(13, snapBase);
        io.point2(14, snapSpacing);
        io.point2(15, gridSpacing);
        alwaysPoint(io, 16, direction, kUsualNormal);
        io.point(17, target);
        alwaysReal(io, 42, lens, kUsualLens);
        io.real(43, frontClip);
        io.real(44, backClip);
        alwaysReal(io, 45, viewHeight, 1.0);
        io.angle(50, snapAngle);
        io.angle(51, twist);
        alwaysInteger(io, 72, circleZoom, kUsualZoom);
        frozenGroups(io);
    }

    static constexpr int kFrozen = 331;
    static constexpr int kFrozenHard = 341; // up to R2000

    void frozenGroups(FieldsToGroups& io) const
    {
        for (const Ref& layer : frozen) {
            io.handle(io.since(r2004) ? kFrozen : kFrozenHard, layer);
        }
    }

    void frozenGroups(FieldsFromGroups& io)
    {
        std::size_t count = 0;
        for (GroupWalk walk(io); !walk.isAtEnd(); walk.next()) {
            if (walk.isAt(kFrozen) || walk.isAt(kFrozenHard)) {
                nextItem(frozen, count).set(walk.group().handle());
            }
        }
        frozen.resize(count);
    }

    template<class Io> void settingGroups(Io& io)
    {
        constexpr int kStatus = 90;
        alwaysInteger(io, kStatus, status, kUsualStatus);
        io.optionalHandle(340, clip);
        io.text(1, styleSheet);
        io.integer(281, renderMode);
        alwaysInteger(io, 71, hasOwnUcs, 1);
        io.integer(74, isUcsAtOrigin);
        io.point(110, ucsOrigin);
        alwaysPoint(io, 111, ucsX, kXAxis);
        alwaysPoint(io, 112, ucsY, kYAxis);
        io.optionalHandle(345, namedUcs);
        io.optionalHandle(346, baseUcs);
        io.integer(79, ucsView);
        io.real(146, ucsElevation);
        if (io.since(r2004)) {
            io.integer(170, shadePlot);
        }
    }

    template<class Io> void lightGroups(Io& io)
    {
        alwaysInteger(io, 61, majorGrid, kUsualGrid);
        io.optionalHandle(332, background);
        io.optionalHandle(348, visualStyle);
        io.optionalHandle(333, shadePlotSource);
        io.optionalHandle(361, sun);
        alwaysInteger(io, 292, hasUsualLight, 1);
        alwaysInteger(io, 282, usualLight, 1);
        io.real(141, brightness);
        io.real(142, contrast);
        if constexpr (Io::isFromGroups) {
            if (!io.groups().find(kAmbientCodes.index, io.range())) {
                return;
            }
        }
        colorGroups(io, kAmbientCodes, ambient);
    }
};

} // namespace

std::unique_ptr<Body> makeViewport()
{
    return makeBody<Viewport>();
}

} // namespace corma::host::dwg
