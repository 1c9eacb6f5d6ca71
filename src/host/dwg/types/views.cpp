// Named views and the windows of the model.

#include "host/dwg/bodies.h"
#include "host/dwg/types/EntryHead.h"
#include "host/dwg/types/colors.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr ColorCodes kAmbient = {63, 421, 431};

/// From where something is looked at.
struct Camera
{
    double height = 1.0;
    double width = 1.0;
    Point2 center;
    Point target;
    Point direction {0.0, 0.0, 1.0};
    double twist = 0.0;
    double lens = 50.0;
    double front = 0.0;
    double back = 0.0;
    bool isPerspective = false; // these four are bits of group 71
    bool hasFront = false;
    bool hasBack = false;
    bool isFrontAtEye = true; // turned round there
    std::uint8_t renderMode = 0; // from R2000 on
    bool hasUsualLights = true; // from R2007 on
    std::uint8_t lightsKind = 1;
    double brightness = 0.0;
    double contrast = 0.0;
    Color ambient;

    static constexpr int kPerspective = 1;
    static constexpr int kFront = 2;
    static constexpr int kBack = 4;
    static constexpr int kFrontNotAtEye = 16;

    template<class Io> void bits(Io& io)
    {
        io.bitDouble(height);
        io.bitDouble(width);
        io.rawPoint2(center);
        io.point3(target);
        io.point3(direction);
        io.bitDouble(twist);
        io.bitDouble(lens);
        io.bitDouble(front);
        io.bitDouble(back);
        io.bit(isPerspective);
        io.bit(hasFront);
        io.bit(hasBack);
        io.bit(isFrontAtEye);
        if (io.since(r2000)) {
            io.byte(renderMode);
        }
        if (io.since(r2007)) {
            io.bit(hasUsualLights);
            io.byte(lightsKind);
            io.bitDouble(brightness);
            io.bitDouble(contrast);
            io.color(ambient);
        }
    }

    [[nodiscard]] int mode() const
    {
        return (isPerspective ? kPerspective : 0) | (hasFront ? kFront : 0) | (hasBack ? kBack : 0)
            | (isFrontAtEye ? 0 : kFrontNotAtEye);
    }

    void setMode(std::int64_t mode)
    {
        isPerspective = (mode & kPerspective) != 0;
        hasFront = (mode & kFront) != 0;
        hasBack = (mode & kBack) != 0;
        isFrontAtEye = (mode & kFrontNotAtEye) == 0;
    }
};

/// The coordinate system of a view.
struct ViewSystem
{
    Point origin;
    Point xAxis {1.0, 0.0, 0.0};
    Point yAxis {0.0, 1.0, 0.0};
    double elevation = 0.0;
    std::int16_t orthographic = 0;
    Ref named;
    Ref base;

    template<class Io> void bits(Io& io)
    {
        io.point3(origin);
        io.point3(xAxis);
        io.point3(yAxis);
        io.bitDouble(elevation);
        io.bitShort(orthographic);
    }

    template<class Io> void groups(Io& io)
    {
        io.point(110, origin);
        io.point(111, xAxis);
        io.point(112, yAxis);
        io.integer(79, orthographic);
        io.real(146, elevation);
        io.optionalHandle(345, named);
        io.optionalHandle(346, base);
    }
};

struct View
{
    static constexpr wchar_t kMarker[] = L"AcDbViewTableRecord";

    EntryHead head;
    Camera camera;
    bool isInPaper = false;
    bool hasSystem = false; // from R2000 on
    ViewSystem system;
    bool isPlottable = false; // from R2007 on
    Ref background;
    Ref visualStyle;
    Ref sun;
    Ref liveSection;

    template<class Io> void bits(Io& io)
    {
        head.bits(io);
        camera.bits(io);
        io.bit(isInPaper);
        if (io.since(r2000)) {
            io.bit(hasSystem);
            if (hasSystem) {
                system.bits(io);
            }
        }
        if (io.since(r2007)) {
            io.bit(isPlottable);
            io.handle(background, Bond::softPointer);
            io.handle(visualStyle, Bond::hardPointer);
            io.handle(sun, Bond::hardOwner);
        }
        if (io.since(r2000) && hasSystem) {
            io.handle(system.base, Bond::hardPointer);
            io.handle(system.named, Bond::hardPointer);
        }
        if (io.since(r2007)) {
            io.handle(liveSection, Bond::softPointer);
        }
    }

    template<class Io> void groups(Io& io)
    {
        std::int64_t mode = camera.mode();
        if constexpr (Io::isFromGroups) {
            isInPaper = head.groups(io, kMarker) != 0;
        } else {
            head.groups(io, kMarker, isInPaper ? 1 : 0);
        }
        io.real(40, camera.height);
        io.point2(10, camera.center);
        io.real(41, camera.width);
        io.point(11, camera.direction);
        io.point(12, camera.target);
        io.real(42, camera.lens);
        io.real(43, camera.front);
        io.real(44, camera.back);
        io.angle(50, camera.twist);
        io.integer(71, mode);
        if constexpr (Io::isFromGroups) {
            camera.setMode(mode);
        }
        if (io.since(r2000)) {
            io.integer(281, camera.renderMode);
            io.integer(72, hasSystem);
        }
        if (io.since(r2007)) {
            io.integer(73, isPlottable);
            io.optionalHandle(332, background);
            io.optionalHandle(334, liveSection);
            io.optionalHandle(348, visualStyle);
            io.optionalHandle(361, sun);
        }
        if (io.since(r2000) && hasSystem) {
            system.groups(io);
        }
    }
};

struct Window
{
    static constexpr wchar_t kMarker[] = L"AcDbViewportTableRecord";
    static constexpr int kFollowsSystem = 8; // of group 71

    EntryHead head;
    Camera camera;
    Point2 lowerLeft;
    Point2 upperRight {1.0, 1.0};
    bool followsSystem = false;
    std::int16_t circleZoom = 1000;
    bool isFastZoom = true;
    std::uint8_t systemIcon = 3;
    bool isGridOn = false;
    Point2 gridSpacing {10.0, 10.0};
    bool isSnapOn = false;
    bool isIsometric = false;
    std::int16_t snapPair = 0;
    double snapRotation = 0.0;
    Point2 snapBase;
    Point2 snapSpacing {10.0, 10.0};
    bool unknown = false; // from R2000 on
    bool hasOwnSystem = true;
    ViewSystem system;
    std::int16_t gridFlags = 3; // from R2007 on
    std::int16_t gridMajor = 5;
    Ref background;
    Ref visualStyle;
    Ref sun;

    template<class Io> void bits(Io& io)
    {
        head.bits(io);
        camera.bits(io);
        io.rawPoint2(lowerLeft);
        io.rawPoint2(upperRight);
        io.bit(followsSystem);
        io.bitShort(circleZoom);
        io.bit(isFastZoom);
        io.bits(systemIcon, 2);
        io.bit(isGridOn);
        io.rawPoint2(gridSpacing);
        io.bit(isSnapOn);
        io.bit(isIsometric);
        io.bitShort(snapPair);
        io.bitDouble(snapRotation);
        io.rawPoint2(snapBase);
        io.rawPoint2(snapSpacing);
        if (io.since(r2000)) {
            io.bit(unknown);
            io.bit(hasOwnSystem);
            system.bits(io);
        }
        if (io.since(r2007)) {
            io.bitShort(gridFlags);
            io.bitShort(gridMajor);
            io.handle(background, Bond::softPointer);
            io.handle(visualStyle, Bond::hardPointer);
            io.handle(sun, Bond::hardOwner);
        }
        if (io.since(r2000)) {
            io.handle(system.named, Bond::hardPointer);
            io.handle(system.base, Bond::hardPointer);
        }
    }

    template<class Io> void groups(Io& io)
    {
        if constexpr (Io::isFromGroups) {
            head.groups(io, kMarker);
        } else {
            head.groups(io, kMarker, 0);
        }
        io.point2(10, lowerLeft);
        io.point2(11, upperRight);
        io.point2(12, camera.center);
        io.point2(13, snapBase);
        io.point2(14, snapSpacing);
        io.point2(15, gridSpacing);
        io.point(16, camera.direction);
        io.point(17, camera.target);
        io.real(40, camera.height);
        ratio(io);
        io.real(42, camera.lens);
        io.real(43, camera.front);
        io.real(44, camera.back);
        io.angle(50, snapRotation);
        io.angle(51, camera.twist);
        mode(io);
        io.integer(72, circleZoom);
        io.integer(73, isFastZoom);
        io.integer(74, systemIcon);
        io.integer(75, isSnapOn);
        io.integer(76, isGridOn);
        io.integer(77, isIsometric);
        io.integer(78, snapPair);
        if (io.since(r2000)) {
            io.integer(281, camera.renderMode);
            io.integer(65, hasOwnSystem);
            system.groups(io);
        }
        if (io.since(r2007)) {
            laterGroups(io);
        }
    }

    template<class Io> void laterGroups(Io& io)
    {
        io.optionalHandle(332, background);
        io.handle(348, visualStyle);
        io.integer(60, gridFlags);
        io.integer(61, gridMajor);
        io.integer(292, camera.hasUsualLights);
        io.integer(282, camera.lightsKind);
        io.real(141, camera.brightness);
        io.real(142, camera.contrast);
        colorGroups(io, kAmbient, camera.ambient);
        io.optionalHandle(361, sun);
    }

    static constexpr int kRatio = 41;
    static constexpr int kMode = 71;

    // Groups have the width in relation to the height.
    [[nodiscard]] double widthRatio() const
    {
        return camera.height == 0.0 ? 1.0 : camera.width / camera.height;
    }

    void ratio(FieldsToGroups& io) const { io.real(kRatio, widthRatio()); }

    void ratio(FieldsFromGroups& io)
    {
        double wanted = 1.0;
        io.real(kRatio, wanted, 1.0);
        if (!isSameNumber(widthRatio(), wanted)) {
            camera.width = camera.height * wanted;
        }
    }

    void mode(FieldsToGroups& io) const
    {
        io.integer(kMode, camera.mode() | (followsSystem ? kFollowsSystem : 0));
    }

    void mode(FieldsFromGroups& io)
    {
        std::int64_t all = 0;
        io.integer(kMode, all);
        camera.setMode(all);
        followsSystem = (all & kFollowsSystem) != 0;
    }
};

} // namespace

std::unique_ptr<Body> makeView()
{
    return makeBody<View>();
}

std::unique_ptr<Body> makeWindow()
{
    return makeBody<Window>();
}

} // namespace corma::host::dwg
