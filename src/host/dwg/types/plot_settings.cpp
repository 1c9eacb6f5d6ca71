// Layouts, and how they and what is named apart from them are plotted.

#include "host/dwg/bodies.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

struct PlotSettings
{
    Text pageSetup;
    Text device;
    std::int16_t flags = 688;
    double margins[4] {}; // left, bottom, right, top
    double paperWidth = 0.0;
    double paperHeight = 0.0;
    Text paper;
    Point2 origin;
    std::int16_t units = 0;
    std::int16_t rotation = 0;
    std::int16_t kind = 5;
    Point2 windowMin;
    Point2 windowMax;
    Text viewName; // up to R2000
    double realUnits = 1.0;
    double drawingUnits = 1.0;
    Text styleSheet;
    std::int16_t scaleKind = 16;
    double scale = 1.0;
    Point2 imageOrigin;
    std::int16_t shading = 0; // the rest from R2004 on
    std::int16_t resolution = 2;
    std::int16_t dotsPerInch = 300;
    Ref view;
    Ref visualStyle; // from R2007 on

    template<class Io> void bits(Io& io)
    {
        io.text(pageSetup);
        io.text(device);
        io.bitShort(flags);
        for (double& margin : margins) {
            io.bitDouble(margin);
        }
        io.bitDouble(paperWidth);
        io.bitDouble(paperHeight);
        io.text(paper);
        io.point2(origin);
        io.bitShort(units);
        io.bitShort(rotation);
        io.bitShort(kind);
        io.point2(windowMin);
        io.point2(windowMax);
        if (io.until(r2000)) {
            io.text(viewName);
        }
        io.bitDouble(realUnits);
        io.bitDouble(drawingUnits);
        io.text(styleSheet);
        io.bitShort(scaleKind);
        io.bitDouble(scale);
        io.point2(imageOrigin);
        if (io.since(r2004)) {
            io.bitShort(shading);
            io.bitShort(resolution);
            io.bitShort(dotsPerInch);
            io.handle(view, Bond::hardPointer);
        }
        if (io.since(r2007)) {
            io.handle(visualStyle, Bond::softPointer);
        }
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbPlotSettings");
        io.text(1, pageSetup);
        io.text(2, device);
        io.text(4, paper);
        if (io.since(r2004)) {
            viewGroup(io);
        } else {
            io.text(6, viewName);
        }
        for (int i = 0; i < 4; ++i) {
            io.real(40 + i, margins[i]);
        }
        io.real(44, paperWidth);
        io.real(45, paperHeight);
        io.real(46, origin.x);
        io.real(47, origin.y);
        io.real(48, windowMin.x);
        io.real(49, windowMin.y);
        io.real(140, windowMax.x);
        io.real(141, windowMax.y);
        io.real(142, realUnits);
        io.real(143, drawingUnits);
        io.integer(70, flags);
        io.integer(72, units);
        io.integer(73, rotation);
        io.integer(74, kind);
        io.text(7, styleSheet);
        io.integer(75, scaleKind);
        io.real(147, scale);
        if (io.since(r2004)) {
            io.integer(76, shading);
            io.integer(77, resolution);
            io.integer(78, dotsPerInch);
        }
        io.real(148, imageOrigin.x);
        io.real(149, imageOrigin.y);
        if (io.since(r2007)) {
            io.optionalHandle(333, visualStyle);
        }
    }

    static constexpr int kViewName = 6;

    // A name is there even when it is empty.
    void viewGroup(FieldsToGroups& io) const
    {
        const Handle target = view.target;
        std::wstring name = target == Handle::none ? std::wstring() : io.names().nameOf(target);
        io.groups().add(Group(kViewName, GroupValue(std::move(name))));
    }

    void viewGroup(FieldsFromGroups& io) { io.named(kViewName, view, TableKind::view); }
};

struct PlotSettingsObject
{
    PlotSettings settings;

    template<class Io> void bits(Io& io) { settings.bits(io); }

    template<class Io> void groups(Io& io) { settings.groups(io); }
};

struct Layout
{
    PlotSettings settings;
    Text name;
    std::int32_t order = 0;
    std::int16_t flags = 1;
    Point systemOrigin;
    Point2 limitsMin;
    Point2 limitsMax;
    Point base;
    Point xAxis {1.0, 0.0, 0.0};
    Point yAxis {0.0, 1.0, 0.0};
    double elevation = 0.0;
    std::int16_t orthographic = 0;
    Point extentsMin {1e20, 1e20, 1e20};
    Point extentsMax {-1e20, -1e20, -1e20};
    Ref block;
    Ref viewport;
    Ref baseSystem;
    Ref namedSystem;
    std::vector<Ref> viewports; // from R2004 on; groups do not have them

    template<class Io> void bits(Io& io)
    {
        settings.bits(io);
        io.text(name);
        io.bitLong(order);
        io.bitShort(flags);
        io.point3(systemOrigin);
        io.rawPoint2(limitsMin);
        io.rawPoint2(limitsMax);
        io.point3(base);
        io.point3(xAxis);
        io.point3(yAxis);
        io.bitDouble(elevation);
        io.bitShort(orthographic);
        io.point3(extentsMin);
        io.point3(extentsMax);
        if (io.since(r2004)) {
            io.countOfHandles(viewports);
        }
        io.handle(block, Bond::softPointer);
        io.handle(viewport, Bond::softPointer);
        io.handle(baseSystem, Bond::hardPointer);
        io.handle(namedSystem, Bond::hardPointer);
        io.handles(viewports, viewports.size(), Bond::softPointer);
    }

    template<class Io> void groups(Io& io)
    {
        settings.groups(io);
        io.marker(L"AcDbLayout");
        io.text(1, name);
        io.integer(70, flags);
        io.integer(71, order);
        io.point2(10, limitsMin);
        io.point2(11, limitsMax);
        io.point(12, base);
        io.point(14, extentsMin);
        io.point(15, extentsMax);
        io.real(146, elevation);
        io.point(13, systemOrigin);
        io.point(16, xAxis);
        io.point(17, yAxis);
        io.integer(76, orthographic);
        io.handle(330, block);
        io.optionalHandle(331, viewport);
        io.optionalHandle(345, namedSystem);
        io.optionalHandle(346, baseSystem);
    }
};

} // namespace

std::unique_ptr<Body> makePlotSettings()
{
    return makeBody<PlotSettingsObject>();
}

std::unique_ptr<Body> makeLayout()
{
    return makeBody<Layout>();
}

} // namespace corma::host::dwg
