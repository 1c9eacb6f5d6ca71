// Objects with few fields.

#include "host/dwg/bodies.h"
#include "host/dwg/types/colors.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

/// The handles that groups have under one code, behind the marker.
void handleGroups(FieldsToGroups& io, int code, const std::vector<Ref>& refs)
{
    for (const Ref& ref : refs) {
        io.handle(code, ref);
    }
}

void handleGroups(FieldsFromGroups& io, int code, std::vector<Ref>& refs)
{
    std::size_t count = 0;
    for (std::size_t i = io.range().begin; i < io.range().end; ++i) {
        if (io.groups()[i].code == code) {
            if (count == refs.size()) {
                refs.emplace_back();
            }
            refs[count++].set(io.groups()[i].handle());
        }
    }
    refs.resize(count);
}

struct EntityGroup
{
    Text description;
    std::int16_t isUnnamed = 0;
    std::int16_t isSelectable = 1;
    std::vector<Ref> members;

    template<class Io> void bits(Io& io)
    {
        io.text(description);
        io.bitShort(isUnnamed);
        io.bitShort(isSelectable);
        io.countOfHandles(members);
        io.handles(members, members.size(), Bond::hardPointer);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbGroup");
        io.text(300, description);
        io.integer(70, isUnnamed);
        io.integer(71, isSelectable);
        handleGroups(io, 340, members);
    }
};

struct DictionaryVariable
{
    std::uint8_t schema = 0;
    Text value;

    template<class Io> void bits(Io& io)
    {
        io.byte(schema);
        io.text(value);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"DictionaryVariables");
        io.integer(280, schema);
        io.text(1, value);
    }
};

struct Scale
{
    std::int16_t flags = 0;
    Text name;
    double paperUnits = 1.0;
    double drawingUnits = 1.0;
    bool isUnit = false;

    template<class Io> void bits(Io& io)
    {
        io.bitShort(flags);
        io.text(name);
        io.bitDouble(paperUnits);
        io.bitDouble(drawingUnits);
        io.bit(isUnit);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbScale");
        io.integer(70, flags);
        io.text(300, name);
        io.real(140, paperUnits);
        io.real(141, drawingUnits);
        io.integer(290, isUnit);
    }
};

/// In which order the entities of a block are drawn.
struct DrawOrder
{
    struct Row
    {
        Ref place; // among the fields: the entity is drawn as if this were its handle
        Ref entity;
    };

    static constexpr int kBlock = 330;
    static constexpr int kEntity = 331;
    static constexpr int kPlace = 5;

    std::vector<Row> rows;
    Ref block;

    template<class Io> void bits(Io& io)
    {
        io.countOfHandles(rows);
        for (Row& row : rows) {
            if constexpr (Io::isReading) {
                row.place = readRef(io.streams().data, Handle::none);
            } else {
                writeRef(row.place, Bond::none, io.data());
            }
        }
        io.handle(block, Bond::softPointer);
        for (Row& row : rows) {
            io.handle(row.entity, Bond::softPointer);
        }
    }

    void groups(FieldsToGroups& io) const
    {
        io.marker(L"AcDbSortentsTable");
        io.handle(kBlock, block);
        for (const Row& row : rows) {
            io.handle(kEntity, row.entity);
            io.handle(kPlace, row.place);
        }
    }

    void groups(FieldsFromGroups& io)
    {
        io.marker(L"AcDbSortentsTable");
        io.handle(kBlock, block);
        std::size_t count = 0;
        for (std::size_t i = io.range().begin; i < io.range().end; ++i) {
            const Group& group = io.groups()[i];
            if (group.code == kEntity) {
                if (count == rows.size()) {
                    rows.emplace_back();
                }
                rows[count++].entity.set(group.handle());
            } else if (group.code == kPlace && count != 0) {
                rows[count - 1].place.set(group.handle());
            }
        }
        rows.resize(count);
    }
};

struct MlineStyle
{
    struct Line
    {
        double offset = 0.0;
        Color color;
        std::int16_t linetypeIndex = kByLayer; // up to R2013
        Ref linetype; // from R2018 on
    };

    static constexpr std::int16_t kByLayer = 32767;
    static constexpr std::int16_t kByBlock = 32766;
    static constexpr wchar_t kByLayerName[] = L"BYLAYER";
    static constexpr wchar_t kByBlockName[] = L"BYBLOCK";
    static constexpr ColorCodes kColor = {62, 420, 430};
    static constexpr int kOffset = 49; // begins a line
    static constexpr double kRightAngle = 1.5707963267948966;

    Text name;
    Text description;
    std::uint16_t flags = 0;
    Color fill;
    double start = kRightAngle;
    double end = kRightAngle;
    std::vector<Line> lines;

    template<class Io> void bits(Io& io)
    {
        auto count = static_cast<std::uint8_t>(lines.size());
        io.text(name);
        io.text(description);
        io.bitShort(flags);
        io.color(fill);
        io.bitDouble(start);
        io.bitDouble(end);
        io.byte(count);
        if constexpr (Io::isReading) {
            lines.assign(count, {});
        }
        for (Line& line : lines) {
            lineBits(io, line);
        }
    }

    // The numbers of linetypes depend on their table, so only the two that do not are understood.
    template<class Io> static void lineBits(Io& io, Line& line)
    {
        io.bitDouble(line.offset);
        io.color(line.color);
        if (io.since(r2018)) {
            io.handle(line.linetype, Bond::hardPointer);
            return;
        }
        io.bitShort(line.linetypeIndex);
        if constexpr (Io::isReading) {
            if (line.linetypeIndex != kByLayer && line.linetypeIndex != kByBlock) {
                io.fail();
            }
        }
    }

    /// Groups have the bits in another order.
    struct FlagPair
    {
        std::uint16_t bits;
        std::uint16_t groups;
    };

    static constexpr FlagPair kFlags[]
        = {{1, 2}, {2, 1}, {16, 16}, {32, 64}, {64, 32}, {256, 256}, {512, 1024}, {1024, 512}};

    [[nodiscard]] int groupFlags() const
    {
        int all = 0;
        for (const FlagPair& pair : kFlags) {
            all |= (flags & pair.bits) != 0 ? pair.groups : 0;
        }
        return all;
    }

    void setGroupFlags(int all)
    {
        if (all == groupFlags()) {
            return;
        }
        flags = 0;
        for (const FlagPair& pair : kFlags) {
            if ((all & pair.groups) != 0) {
                flags = static_cast<std::uint16_t>(flags | pair.bits);
            }
        }
    }

    void groups(FieldsToGroups& io) const
    {
        io.marker(L"AcDbMlineStyle");
        io.text(2, name);
        io.integer(70, groupFlags());
        io.text(3, description);
        colorGroups(io, kColor, fill);
        io.angle(51, start);
        io.angle(52, end);
        io.integer(71, lines.size());
        for (const Line& line : lines) {
            io.real(kOffset, line.offset);
            colorGroups(io, kColor, line.color);
            if (io.since(r2018)) {
                io.named(code::linetype, line.linetype, TableKind::linetype);
            } else {
                io.groups().add(Group(
                    code::linetype, line.linetypeIndex == kByBlock ? kByBlockName : kByLayerName));
            }
        }
    }

    void groups(FieldsFromGroups& io)
    {
        constexpr std::size_t kMostLines = 16;
        io.marker(L"AcDbMlineStyle");
        io.text(2, name);
        int all = 0;
        io.integer(70, all);
        setGroupFlags(all);
        io.text(3, description);
        colorGroups(io, kColor, fill);
        io.angle(51, start, kRightAngle);
        io.angle(52, end, kRightAngle);
        std::vector<std::size_t> begins;
        for (std::size_t i = io.range().begin; i < io.range().end; ++i) {
            if (io.groups()[i].code == kOffset) {
                begins.push_back(i);
            }
        }
        if (begins.size() > kMostLines) {
            io.fail(L"it has more lines than a DWG file takes");
            return;
        }
        lines.resize(begins.size());
        for (std::size_t i = 0; i < begins.size(); ++i) {
            const std::size_t behind = i + 1 < begins.size() ? begins[i + 1] : io.range().end;
            setLine(io, {begins[i], behind}, lines[i]);
        }
    }

    static void setLine(FieldsFromGroups& io, GroupRange range, Line& line)
    {
        const Groups& all = io.groups();
        line.offset = all.real(kOffset, range);
        setLineColor(io, range, line.color);
        const std::wstring_view wanted = all.text(code::linetype, range, kByLayerName);
        const std::wstring folded = foldedName(wanted);
        if (io.since(r2018)) {
            const Handle current = line.linetype.target;
            if (current == Handle::none || foldedName(io.names().nameOf(current)) != folded) {
                line.linetype.set(io.names().find(TableKind::linetype, wanted));
            }
        } else if (folded == foldedName(kByBlockName)) {
            line.linetypeIndex = kByBlock;
        } else if (folded == foldedName(kByLayerName)) {
            line.linetypeIndex = kByLayer;
        } else {
            io.fail(L"its lines have linetypes of their own");
        }
    }

    static void setLineColor(const FieldsFromGroups& io, GroupRange range, Color& color)
    {
        const Groups& all = io.groups();
        const int index = static_cast<int>(all.integer(kColor.index, range, kColorByLayer));
        if (!io.since(r2004)) {
            color.index = static_cast<std::int16_t>(index);
        } else if (all.find(kColor.rgb, range)) {
            setColor(color, index, static_cast<std::uint32_t>(all.integer(kColor.rgb, range)));
        } else {
            setColor(color, index, std::nullopt);
        }
    }
};

struct RasterVariables
{
    std::int32_t version = 0;
    std::int16_t frame = 1;
    std::int16_t quality = 1;
    std::int16_t units = 0;

    template<class Io> void bits(Io& io)
    {
        io.bitLong(version);
        io.bitShort(frame);
        io.bitShort(quality);
        io.bitShort(units);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbRasterVariables");
        io.integer(90, version);
        io.integer(70, frame);
        io.integer(71, quality);
        io.integer(72, units);
    }
};

struct ImageDefinition
{
    std::int32_t version = 0;
    Point2 size;
    Text path;
    bool isLoaded = true;
    std::uint8_t units = 0;
    Point2 pixel;

    template<class Io> void bits(Io& io)
    {
        io.bitLong(version);
        io.rawPoint2(size);
        io.text(path);
        io.bit(isLoaded);
        io.byte(units);
        io.rawPoint2(pixel);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbRasterImageDef");
        io.integer(90, version);
        io.text(1, path);
        io.point2(10, size);
        io.point2(11, pixel);
        io.integer(280, isLoaded);
        io.integer(281, units);
    }
};

struct WipeoutVariables
{
    std::int16_t frame = 1;

    template<class Io> void bits(Io& io) { io.bitShort(frame); }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbWipeoutVariables");
        io.integer(70, frame);
    }
};

} // namespace

std::unique_ptr<Body> makeEntityGroup()
{
    return makeBody<EntityGroup>();
}

std::unique_ptr<Body> makeDictionaryVariable()
{
    return makeBody<DictionaryVariable>();
}

std::unique_ptr<Body> makeScale()
{
    return makeBody<Scale>();
}

std::unique_ptr<Body> makeDrawOrder()
{
    return makeBody<DrawOrder>();
}

std::unique_ptr<Body> makeMlineStyle()
{
    return makeBody<MlineStyle>();
}

std::unique_ptr<Body> makeRasterVariables()
{
    return makeBody<RasterVariables>();
}

std::unique_ptr<Body> makeImageDefinition()
{
    return makeBody<ImageDefinition>();
}

std::unique_ptr<Body> makeWipeoutVariables()
{
    return makeBody<WipeoutVariables>();
}

} // namespace corma::host::dwg
