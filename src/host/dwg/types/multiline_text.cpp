// Texts of several lines.

#include "host/dwg/bodies.h"
#include "host/dwg/types/MultilineText.h"
#include "host/dwg/types/colors.h"
#include <corma/geometry.h>

#include <cmath>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr int kTextEnd = 1;
constexpr int kTextAhead = 3;
constexpr std::size_t kTextChunk = 250; // characters
constexpr ColorCodes kBackgroundCodes {.index = 63, .rgb = 421, .name = 431};

struct MultilineTextRecord
{
    MultilineText text;

    template<class Io> void bits(Io& io) { text.bits(io); }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbMText");
        const MultilineText before = Io::isFromGroups ? text : MultilineText {};
        text.fieldGroups(io);
        if constexpr (Io::isFromGroups) {
            text.settle(io, before);
        }
        if (io.since(r2018)) {
            text.columnGroups(io);
        }
    }
};

// Some programs give the direction as an angle in the plane of the text.
Point directionFrom(const FieldsFromGroups& io, const Point& normal)
{
    constexpr int kAngle = 50;
    const auto at = io.groups().find(kAngle, io.range());
    if (!at) {
        return kXAxis;
    }
    const double angle = radiansFrom(io.groups()[*at].real());
    const AcGeVector3d inPlane(std::cos(angle), std::sin(angle), 0.0);
    const AcGeMatrix3d toWorld
        = AcGeMatrix3d().setToPlaneToWorld(AcGeVector3d(normal.x, normal.y, normal.z));
    const AcGeVector3d inWorld = toWorld * inPlane;
    return {inWorld.x, inWorld.y, inWorld.z};
}

} // namespace

void MultilineText::textGroups(FieldsToGroups& io) const
{
    const std::wstring_view all = value.value;
    std::size_t at = 0;
    for (; all.size() - at > kTextChunk; at += kTextChunk) {
        io.groups().add(Group(kTextAhead, GroupValue(std::wstring(all.substr(at, kTextChunk)))));
    }
    io.groups().add(Group(kTextEnd, GroupValue(std::wstring(all.substr(at)))));
}

void MultilineText::textGroups(FieldsFromGroups& io)
{
    std::wstring all;
    for (GroupWalk walk(io); !walk.isAtEnd(); walk.next()) {
        if (walk.isAt(kTextAhead) || walk.isAt(kTextEnd)) {
            all += walk.group().text();
        }
    }
    FieldsFromGroups::setText(value, all);
}

void MultilineText::fieldGroups(FieldsToGroups& io) const
{
    io.point(10, position);
    io.real(40, height);
    io.real(41, frameWidth);
    if (io.since(r2007)) {
        io.real(46, frameHeight);
    }
    io.integer(71, attachment);
    io.integer(72, flow);
    textGroups(io);
    io.named(7, style, TableKind::textStyle, kStandardName);
    io.extrusion(normal);
    io.point(11, direction, kXAxis);
    if (io.since(r2000)) {
        io.integer(73, spacingStyle);
        io.real(44, spacing);
    }
    const std::int32_t shown = io.since(r2018) ? kFill | kFrame : kFill;
    if (io.since(r2004) && background != 0) {
        io.integer(90, background);
        if ((background & shown) != 0) {
            colorGroups(io, kBackgroundCodes, backgroundColor);
            io.real(45, backgroundScale);
            io.integer(441, transparency);
        }
    }
}

void MultilineText::fieldGroups(FieldsFromGroups& io)
{
    io.point(10, position);
    io.real(40, height, 1.0);
    io.real(41, frameWidth);
    io.real(46, frameHeight);
    io.integer(71, attachment, 1);
    io.integer(72, flow, 1);
    textGroups(io);
    io.named(7, style, TableKind::textStyle, kStandardName);
    io.extrusion(normal);
    io.point(11, direction, directionFrom(io, normal));
    io.integer(73, spacingStyle, 1);
    io.real(44, spacing, 1.0);
    io.integer(90, background);
    const std::int32_t shown = io.since(r2018) ? kFill | kFrame : kFill;
    if ((background & shown) != 0) {
        colorGroups(io, kBackgroundCodes, backgroundColor);
        io.real(45, backgroundScale, kUsualBackgroundScale);
        io.integer(441, transparency);
    }
}

void MultilineText::columnGroups(FieldsToGroups& io) const
{
    if (!hasColumns || columnType == 0) {
        return;
    }
    io.groups().add(Group(code::embeddedObject, L"Embedded Object"));
    io.integer(70, columnAttachment);
    io.point(10, columnDirection);
    io.point(11, columnPosition);
    io.real(40, columnFrameWidth);
    io.real(41, columnFrameHeight);
    io.real(42, columnExtentsWidth);
    io.real(43, columnExtentsHeight);
    io.integer(71, columnType);
    io.integer(72, columnCount);
    io.real(44, columnWidth);
    io.real(45, gap);
    io.integer(73, isAutomatic);
    io.integer(74, isReversed);
    for (const double columnHeight : columnHeights) {
        io.real(46, columnHeight);
    }
}

void MultilineText::columnGroups(FieldsFromGroups& io)
{
    if (!io.embedded()) {
        columnType = 0;
        columnHeights.clear();
        return;
    }
    hasColumns = true;
    io.point(10, columnDirection, kXAxis);
    io.point(11, columnPosition);
    io.real(40, columnFrameWidth);
    io.real(41, columnFrameHeight);
    io.real(42, columnExtentsWidth);
    io.real(43, columnExtentsHeight);
    io.integer(71, columnType);
    io.integer(72, columnCount);
    io.real(44, columnWidth);
    io.real(45, gap);
    io.integer(73, isAutomatic);
    io.integer(74, isReversed);
    columnHeights.clear();
    for (GroupWalk walk(io); !walk.isAtEnd(); walk.next()) {
        if (walk.isAt(46)) {
            columnHeights.push_back(walk.group().real());
        }
    }
    if (columnType == kDynamicColumns && !isAutomatic) {
        columnCount = static_cast<std::int32_t>(columnHeights.size());
    }
}

void MultilineText::settle(const FieldsFromGroups& io, const MultilineText& before)
{
    if (!io.since(r2018) || !hasColumns) {
        return;
    }
    const auto follow = [](auto& copy, const auto& now, const auto& former) {
        if (now != former) {
            copy = now;
        }
    };
    follow(columnAttachment, attachment, before.attachment);
    follow(columnDirection, direction, before.direction);
    follow(columnPosition, position, before.position);
    follow(columnFrameWidth, frameWidth, before.frameWidth);
    follow(columnFrameHeight, frameHeight, before.frameHeight);
}

std::unique_ptr<Body> makeMultilineText()
{
    return makeBody<MultilineTextRecord>();
}

} // namespace corma::host::dwg
