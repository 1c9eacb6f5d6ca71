#pragma once

#include "host/dwg/types/pieces.h"

#include <cstdint>
#include <vector>

namespace corma::host::dwg {

/// The fields of MTEXT, which attributes of several lines have, too, in the order of the file.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct MultilineText
{
    static constexpr std::int32_t kFill = 1; // of the background
    static constexpr std::int32_t kFrame = 16; // from R2018 on
    static constexpr std::int16_t kDynamicColumns = 2;

    Point position;
    Point normal = kUsualNormal;
    Point direction {1.0, 0.0, 0.0};
    double frameWidth = 0.0;
    double frameHeight = 0.0; // from R2007 on
    double height = 1.0; // of the letters
    std::int16_t attachment = 1;
    std::int16_t flow = 1;
    double extentsHeight = 0.0;
    double extentsWidth = 0.0;
    Text value;
    Ref style;
    std::int16_t spacingStyle = 1; // these three from R2000 on
    double spacing = 1.0;
    bool unknownBit = false;
    std::int32_t background = 0; // from R2004 on
    double backgroundScale = kUsualBackgroundScale;
    Color backgroundColor;
    std::int32_t transparency = 0;

    // From R2018 on, with much of the above once more.
    bool hasColumns = true; // false for an annotative text
    std::int16_t version = 0;
    bool isUsual = true;
    Ref application;
    std::int32_t columnAttachment = 1;
    Point columnDirection {1.0, 0.0, 0.0};
    Point columnPosition;
    double columnFrameWidth = 0.0;
    double columnFrameHeight = 0.0;
    double columnExtentsWidth = 0.0;
    double columnExtentsHeight = 0.0;
    std::int16_t columnType = 0;
    std::int32_t columnCount = 0;
    double columnWidth = 0.0;
    double gap = 0.0;
    bool isAutomatic = false;
    bool isReversed = false;
    std::vector<double> columnHeights;

    static constexpr double kUsualBackgroundScale = 1.5;

    template<class Io> void bits(Io& io)
    {
        using enum DrawingVersion;
        io.point3(position);
        io.point3(normal);
        io.point3(direction);
        io.bitDouble(frameWidth);
        if (io.since(r2007)) {
            io.bitDouble(frameHeight);
        }
        io.bitDouble(height);
        io.bitShort(attachment);
        io.bitShort(flow);
        io.bitDouble(extentsHeight);
        io.bitDouble(extentsWidth);
        io.text(value);
        io.handle(style, Bond::hardPointer);
        if (io.since(r2000)) {
            io.bitShort(spacingStyle);
            io.bitDouble(spacing);
            io.bit(unknownBit);
        }
        if (io.since(r2004)) {
            backgroundBits(io);
        }
        if (io.since(r2018)) {
            io.bit(hasColumns);
            if (hasColumns) {
                columnBits(io);
            }
        }
    }

    template<class Io> void backgroundBits(Io& io)
    {
        io.bitLong(background);
        const std::int32_t shown = io.since(DrawingVersion::r2018) ? kFill | kFrame : kFill;
        if ((background & shown) != 0) {
            io.bitDouble(backgroundScale);
            io.color(backgroundColor);
            io.bitLong(transparency);
        }
    }

    template<class Io> void columnBits(Io& io)
    {
        io.bitShort(version);
        io.bit(isUsual);
        io.handle(application, Bond::hardPointer);
        io.bitLong(columnAttachment);
        io.point3(columnDirection);
        io.point3(columnPosition);
        io.bitDouble(columnFrameWidth);
        io.bitDouble(columnFrameHeight);
        io.bitDouble(columnExtentsWidth);
        io.bitDouble(columnExtentsHeight);
        io.bitShort(columnType);
        if (columnType == 0) {
            return;
        }
        io.bitLong(columnCount);
        io.bitDouble(columnWidth);
        io.bitDouble(gap);
        io.bit(isAutomatic);
        io.bit(isReversed);
        if (!isAutomatic && columnType == kDynamicColumns && columnCount > 0) {
            constexpr std::size_t kFewestBits = 2;
            io.resize(columnHeights, static_cast<std::uint64_t>(columnCount), kFewestBits);
            for (double& columnHeight : columnHeights) {
                io.bitDouble(columnHeight);
            }
        }
    }

    /// From the position to the color of the background.
    void fieldGroups(FieldsToGroups& io) const;
    void fieldGroups(FieldsFromGroups& io);

    /// The columns, as an embedded object of their own.
    void columnGroups(FieldsToGroups& io) const;
    void columnGroups(FieldsFromGroups& io);

    /// What was changed is changed where it stands once more, too.
    void settle(const FieldsFromGroups& io, const MultilineText& before);

private:
    void textGroups(FieldsToGroups& io) const;
    void textGroups(FieldsFromGroups& io);
};

} // namespace corma::host::dwg
