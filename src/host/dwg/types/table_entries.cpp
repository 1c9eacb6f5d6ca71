// Layers, text styles, coordinate systems, applications: entries of tables with few fields.

#include "host/dwg/bodies.h"
#include "host/dwg/line_weight_code.h"
#include "host/dwg/types/EntryHead.h"
#include "host/dwg/types/colors.h"

#include <cstdlib>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

struct Layer
{
    static constexpr wchar_t kMarker[] = L"AcDbLayerTableRecord";

    EntryHead head;
    std::uint16_t state = kIsPlotted | kDefaultCode << kWeightShift; // from R2000 on all of it
    Color color;
    Ref plotStyle; // from R2000 on
    Ref material; // from R2007 on
    Ref linetype;
    Ref visualStyle; // from R2013 on

    // Of the state.
    static constexpr std::uint16_t kIsFrozen = 1;
    static constexpr std::uint16_t kIsOff = 2;
    static constexpr std::uint16_t kIsFrozenInNew = 4;
    static constexpr std::uint16_t kIsLocked = 8;
    static constexpr std::uint16_t kIsPlotted = 16;
    static constexpr unsigned kWeightShift = 5;
    static constexpr std::uint16_t kWeightMask = 0x1F << kWeightShift;

    template<class Io> void bits(Io& io)
    {
        head.bits(io);
        if (io.since(r2000)) {
            io.bitShort(state);
        } else {
            earlyState(io);
        }
        io.color(color);
        if (io.since(r2000)) {
            io.handle(plotStyle, Bond::hardPointer);
        }
        if (io.since(r2007)) {
            io.handle(material, Bond::hardPointer);
        }
        io.handle(linetype, Bond::hardPointer);
        if (io.since(r2013)) {
            io.handle(visualStyle, Bond::hardPointer);
        }
    }

    template<class Io> void earlyState(Io& io)
    {
        bool isOn = !has(kIsOff);
        bool frozen = has(kIsFrozen);
        bool frozenInNew = has(kIsFrozenInNew);
        bool locked = has(kIsLocked);
        io.bit(frozen);
        io.bit(isOn);
        io.bit(frozenInNew);
        io.bit(locked);
        if constexpr (Io::isReading) {
            set(kIsFrozen, frozen);
            set(kIsOff, !isOn);
            set(kIsFrozenInNew, frozenInNew);
            set(kIsLocked, locked);
        }
    }

    [[nodiscard]] bool has(std::uint16_t bit) const { return (state & bit) != 0; }

    void set(std::uint16_t bit, bool isSet)
    {
        state = static_cast<std::uint16_t>(isSet ? state | bit : state & ~bit);
    }

    // Of group 70.
    static constexpr int kFrozenFlag = 1;
    static constexpr int kFrozenInNewFlag = 2;
    static constexpr int kLockedFlag = 4;

    static constexpr ColorCodes kColor = {62, 420, 430};
    static constexpr int kPlotted = 290;
    static constexpr int kWeight = 370;
    static constexpr int kPlotStyle = 390;
    static constexpr int kMaterial = 347;
    static constexpr int kVisualStyle = 348;

    void groups(FieldsToGroups& io) const
    {
        head.groups(io, kMarker,
                    (has(kIsFrozen) ? kFrozenFlag : 0)
                        | (has(kIsFrozenInNew) ? kFrozenInNewFlag : 0)
                        | (has(kIsLocked) ? kLockedFlag : 0));
        const std::size_t colorAt = io.groups().size();
        colorGroups(io, kColor, color);
        if (has(kIsOff)) {
            Group& index = io.groups()[colorAt];
            index.set(-index.integer());
        }
        io.named(code::linetype, linetype, TableKind::linetype);
        if (io.since(r2000)) {
            io.integer(kPlotted, has(kIsPlotted), 1);
            io.integer(kWeight, weightFromCode(weightCode()));
            io.handle(kPlotStyle, plotStyle);
        }
        if (io.since(r2007)) {
            io.handle(kMaterial, material);
        }
        if (io.since(r2013)) {
            io.handle(kVisualStyle, visualStyle);
        }
    }

    [[nodiscard]] std::uint8_t weightCode() const
    {
        return static_cast<std::uint8_t>((state & kWeightMask) >> kWeightShift);
    }

    void groups(FieldsFromGroups& io)
    {
        const std::int64_t flags = head.groups(io, kMarker);
        set(kIsFrozen, (flags & kFrozenFlag) != 0);
        set(kIsFrozenInNew, (flags & kFrozenInNewFlag) != 0);
        set(kIsLocked, (flags & kLockedFlag) != 0);
        colorFrom(io);
        io.named(code::linetype, linetype, TableKind::linetype, L"Continuous");
        bool isPlotted = true;
        io.integer(kPlotted, isPlotted, 1);
        set(kIsPlotted, isPlotted);
        std::int64_t weight = kWeightDefault;
        io.integer(kWeight, weight, kWeightDefault);
        if (weightFromCode(weightCode()) != weight) {
            state = static_cast<std::uint16_t>((state & ~kWeightMask)
                                               | codeFromWeight(weight) << kWeightShift);
        }
        io.handle(kPlotStyle, plotStyle);
        io.handle(kMaterial, material);
        io.handle(kVisualStyle, visualStyle);
    }

    // A layer that is off has its color as a negative number.
    void colorFrom(FieldsFromGroups& io)
    {
        constexpr int kWhite = 7;
        int index = kWhite;
        io.integer(kColor.index, index, kWhite);
        set(kIsOff, index < 0);
        if (index >= 0 && io.groups().find(kColor.index, io.range())) {
            colorGroups(io, kColor, color);
            return;
        }
        index = std::abs(index);
        if (!io.since(r2004)) {
            color.index = static_cast<std::int16_t>(index);
            return;
        }
        std::optional<std::uint32_t> rgb;
        if (io.groups().find(kColor.rgb, io.range())) {
            io.integer(kColor.rgb, rgb.emplace());
        }
        const std::uint32_t former = color.rgb;
        setColor(color, index, rgb);
        if (color.rgb != former) {
            color.names = 0;
        }
    }
};

struct TextStyle
{
    static constexpr wchar_t kMarker[] = L"AcDbTextStyleTableRecord";
    static constexpr int kShapesFlag = 1;
    static constexpr int kVerticalFlag = 4;

    EntryHead head;
    bool hasShapes = false; // its file has shapes in place of letters
    bool isVertical = false;
    double height = 0.0;
    double width = 1.0;
    double oblique = 0.0;
    std::uint8_t generation = 0;
    double lastHeight = 0.0;
    Text font;
    Text bigFont;

    template<class Io> void bits(Io& io)
    {
        head.bits(io);
        io.bit(hasShapes);
        io.bit(isVertical);
        io.bitDouble(height);
        io.bitDouble(width);
        io.bitDouble(oblique);
        io.byte(generation);
        io.bitDouble(lastHeight);
        io.text(font);
        io.text(bigFont);
    }

    template<class Io> void groups(Io& io)
    {
        if constexpr (Io::isFromGroups) {
            const std::int64_t flags = head.groups(io, kMarker);
            hasShapes = (flags & kShapesFlag) != 0;
            isVertical = (flags & kVerticalFlag) != 0;
        } else {
            head.groups(io, kMarker,
                        (hasShapes ? kShapesFlag : 0) | (isVertical ? kVerticalFlag : 0));
        }
        io.real(40, height);
        io.real(41, width);
        io.angle(50, oblique);
        io.integer(71, generation);
        io.real(42, lastHeight);
        io.text(3, font);
        io.text(4, bigFont);
    }
};

struct Application
{
    static constexpr wchar_t kMarker[] = L"AcDbRegAppTableRecord";

    EntryHead head;
    std::uint8_t unknown = 0;

    template<class Io> void bits(Io& io)
    {
        head.bits(io);
        io.byte(unknown);
    }

    void groups(FieldsToGroups& io) const { head.groups(io, kMarker, 0); }

    void groups(FieldsFromGroups& io) { head.groups(io, kMarker); }
};

struct CoordinateSystem
{
    static constexpr wchar_t kMarker[] = L"AcDbUCSTableRecord";

    EntryHead head;
    Point origin;
    Point xAxis {1.0, 0.0, 0.0};
    Point yAxis {0.0, 1.0, 0.0};
    double elevation = 0.0; // the rest from R2000 on
    std::int16_t orthographicView = 0;
    std::int16_t orthographicType = 0;
    Ref base;
    Ref named;

    template<class Io> void bits(Io& io)
    {
        head.bits(io);
        io.point3(origin);
        io.point3(xAxis);
        io.point3(yAxis);
        if (io.since(r2000)) {
            io.bitDouble(elevation);
            io.bitShort(orthographicView);
            io.bitShort(orthographicType);
            io.handle(base, Bond::hardPointer);
            io.handle(named, Bond::hardPointer);
        }
    }

    template<class Io> void groups(Io& io)
    {
        if constexpr (Io::isFromGroups) {
            head.groups(io, kMarker);
        } else {
            head.groups(io, kMarker, 0);
        }
        io.point(10, origin);
        io.point(11, xAxis);
        io.point(12, yAxis);
        if (io.since(r2000)) {
            io.integer(79, orthographicView);
            io.real(146, elevation);
            io.optionalHandle(346, base);
        }
    }
};

/// Of a viewport in paper space, up to R2000; groups have nothing of the kind.
struct PaperViewport
{
    EntryHead head;
    bool isOn = false;
    Ref viewport;
    Ref next;

    template<class Io> void bits(Io& io)
    {
        head.bits(io);
        io.bit(isOn);
        io.handle(viewport, Bond::softPointer);
        io.handle(next, Bond::hardPointer);
    }

    template<class Io> void groups(Io& io)
    {
        if constexpr (Io::isFromGroups) {
            isOn = head.groups(io, L"AcDbVXTableRecord") != 0;
        } else {
            head.groups(io, L"AcDbVXTableRecord", isOn ? 1 : 0);
        }
        io.handle(340, viewport);
        io.handle(341, next);
    }
};

} // namespace

std::unique_ptr<Body> makeLayer()
{
    return makeBody<Layer>();
}

std::unique_ptr<Body> makeTextStyle()
{
    return makeBody<TextStyle>();
}

std::unique_ptr<Body> makeApplication()
{
    return makeBody<Application>();
}

std::unique_ptr<Body> makeCoordinateSystem()
{
    return makeBody<CoordinateSystem>();
}

std::unique_ptr<Body> makePaperViewport()
{
    return makeBody<PaperViewport>();
}

} // namespace corma::host::dwg
