// Dimension styles: the dimension variables of the header by other names.

#include "host/dwg/bodies.h"
#include "host/dwg/types/EntryHead.h"
#include "host/dwg/types/colors.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

enum class Kind : std::uint8_t
{
    bit,
    byte,
    shortNumber,
    real,
    angle,
    text,
    color,
    pointer
};

struct Field
{
    Kind kind;
    int code; // 0: not in groups
    double usual = 0.0; // what groups need not say from R2000 on
    DrawingVersion since = r13;
    DrawingVersion until = r2018;
};

using enum Kind;

// In the order of the file.
// clang-format off
constexpr Field kFields[] = {
    {text,        3, 0, r2000},
    {text,        4, 0, r2000},
    {bit,         71, 0, r13, r14},
    {bit,         72, 0, r13, r14},
    {bit,         73, 0, r13, r14},
    {bit,         74, 0, r13, r14},
    {bit,         75, 0, r13, r14},
    {bit,         76, 0, r13, r14},
    {bit,         170, 0, r13, r14},
    {bit,         172, 0, r13, r14},
    {bit,         173, 0, r13, r14},
    {bit,         174, 0, r13, r14},
    {bit,         175, 0, r13, r14},
    {byte,        171, 0, r13, r14},
    {byte,        78, 0, r13, r14},
    {bit,         281, 0, r13, r14},
    {bit,         282, 0, r13, r14},
    {byte,        283, 0, r13, r14},
    {byte,        280, 0, r13, r14},
    {byte,        287, 0, r13, r14},
    {bit,         288, 0, r13, r14},
    {byte,        284, 0, r13, r14},
    {byte,        285, 0, r13, r14},
    {byte,        286, 0, r13, r14},
    {byte,        77, 0, r13, r14},
    {shortNumber, 270, 0, r13, r14},
    {shortNumber, 275, 0, r13, r14},
    {shortNumber, 271, 0, r13, r14},
    {shortNumber, 272, 0, r13, r14},
    {shortNumber, 273, 0, r13, r14},
    {shortNumber, 274, 0, r13, r14},
    {real,        40, 1},
    {real,        41, 0.18},
    {real,        42, 0.0625},
    {real,        43, 0.38},
    {real,        44, 0.18},
    {real,        45},
    {real,        46},
    {real,        47},
    {real,        48},
    {real,        49, 1, r2007},
    {angle,       50, 45, r2007},
    {shortNumber, 69, 0, r2007},
    {color,       70, 0, r2007}, // groups have flags under this code
    {bit,         71, 0, r2000},
    {bit,         72, 0, r2000},
    {bit,         73, 1, r2000},
    {bit,         74, 1, r2000},
    {bit,         75, 0, r2000},
    {bit,         76, 0, r2000},
    {shortNumber, 77, 0, r2000},
    {shortNumber, 78, 0, r2000},
    {shortNumber, 79, 0, r2000},
    {shortNumber, 90, 0, r2007},
    {real,        140, 0.18},
    {real,        141, 0.09},
    {real,        142},
    {real,        143, 25.4},
    {real,        144, 1},
    {real,        145},
    {real,        146, 1},
    {real,        147, 0.09},
    {text,        3, 0, r13, r14},
    {text,        4, 0, r13, r14},
    {text,        5, 0, r13, r14},
    {text,        6, 0, r13, r14},
    {text,        7, 0, r13, r14},
    {real,        148, 0, r2000},
    {bit,         170, 0, r2000},
    {shortNumber, 171, 2, r2000},
    {bit,         172, 0, r2000},
    {bit,         173, 0, r2000},
    {bit,         174, 0, r2000},
    {bit,         175, 0, r2000},
    {color,       176},
    {color,       177},
    {color,       178},
    {shortNumber, 179, 0, r2000},
    {shortNumber, 271, 4, r2000},
    {shortNumber, 272, 4, r2000},
    {shortNumber, 273, 2, r2000},
    {shortNumber, 274, 2, r2000},
    {shortNumber, 275, 0, r2000},
    {shortNumber, 276, 0, r2000},
    {shortNumber, 277, 2, r2000},
    {shortNumber, 278, '.', r2000},
    {shortNumber, 279, 0, r2000},
    {shortNumber, 280, 0, r2000},
    {bit,         281, 0, r2000},
    {bit,         282, 0, r2000},
    {shortNumber, 283, 1, r2000},
    {shortNumber, 284, 0, r2000},
    {shortNumber, 285, 0, r2000},
    {shortNumber, 286, 0, r2000},
    {bit,         288, 0, r2000},
    {shortNumber, 289, 3, r2000},
    {bit,         290, 0, r2007},
    {bit,         295, 0, r2010},
    {real,        0, 100, r2010},
    {text,        0, 0, r2010},
    {real,        0, 100, r2010},
    {text,        0, 0, r2010},
    {shortNumber, 371, -2, r2000},
    {shortNumber, 372, -2, r2000},
    {bit,         0},
    {pointer,     340},
    {pointer,     341, 0, r2000},
    {pointer,     342, 0, r2000},
    {pointer,     343, 0, r2000},
    {pointer,     344, 0, r2000},
    {pointer,     345, 0, r2007},
    {pointer,     346, 0, r2007},
    {pointer,     347, 0, r2007},
};

// clang-format on

constexpr std::size_t kFieldCount = std::size(kFields);

// The order of groups is that of their codes.
constexpr auto kByCode = [] {
    std::array<std::size_t, kFieldCount> order {};
    std::iota(order.begin(), order.end(), std::size_t {0});
    std::sort(order.begin(), order.end(), [](std::size_t a, std::size_t b) {
        return kFields[a].code == kFields[b].code ? a < b : kFields[a].code < kFields[b].code;
    });
    return order;
}();

struct DimStyle
{
    static constexpr wchar_t kMarker[] = L"AcDbDimStyleTableRecord";
    static constexpr int kTextStyle = 340;

    struct Value
    {
        std::int64_t number = 0;
        double real = 0.0; // an angle in radians
        Text text;
        Color color;
        Ref ref;
    };

    EntryHead head;
    std::array<Value, kFieldCount> values {};

    template<class Io> void bits(Io& io)
    {
        head.bits(io);
        for (std::size_t i = 0; i < kFieldCount; ++i) {
            if (io.since(kFields[i].since) && io.until(kFields[i].until)) {
                field(io, kFields[i].kind, values[i]);
            }
        }
    }

    template<class Io> static void field(Io& io, Kind kind, Value& value)
    {
        bool isSet = value.number != 0;
        switch (kind) {
        case bit:
            io.bit(isSet);
            value.number = isSet ? 1 : 0;
            return;
        case byte:
            io.byte(value.number);
            return;
        case shortNumber:
            io.bitShort(value.number);
            return;
        case real:
        case angle:
            io.bitDouble(value.real);
            return;
        case text:
            io.text(value.text);
            return;
        case color:
            io.color(value.color);
            return;
        case pointer:
            io.handle(value.ref, Bond::hardPointer);
            return;
        }
    }

    static bool isInGroups(const Field& field, DrawingVersion version)
    {
        return field.code > code::type && field.code != code::flags && field.since <= version
            && field.until >= version;
    }

    void groups(FieldsToGroups& io) const
    {
        head.groups(io, kMarker, 0);
        for (const std::size_t i : kByCode) {
            if (isInGroups(kFields[i], io.version())) {
                toGroup(io, kFields[i], values[i]);
            }
        }
    }

    static void toGroup(FieldsToGroups& io, const Field& field, const Value& value)
    {
        const bool saysAll = !io.since(r2000);
        switch (field.kind) {
        case real:
            if (saysAll || value.real != field.usual) {
                io.real(field.code, value.real);
            }
            return;
        case angle:
            io.angle(field.code, value.real, radiansFrom(field.usual));
            return;
        case text:
            if (saysAll || !value.text.value.empty()) {
                io.text(field.code, value.text);
            }
            return;
        case color:
            colorToGroup(io, field.code, value.color);
            return;
        case pointer:
            if (field.code == kTextStyle || value.ref.target != Handle::none) {
                io.handle(field.code, value.ref);
            }
            return;
        default:
            if (saysAll || static_cast<double>(value.number) != field.usual) {
                io.integer(field.code, value.number);
            }
        }
    }

    static void colorToGroup(FieldsToGroups& io, int code, const Color& color)
    {
        const int index = paletteIndexIn(io.version(), color);
        if (index != 0 || !io.since(r2000)) {
            io.integer(code, index);
        }
    }

    void groups(FieldsFromGroups& io)
    {
        head.groups(io, kMarker);
        for (std::size_t i = 0; i < kFieldCount; ++i) {
            if (isInGroups(kFields[i], io.version())) {
                fromGroup(io, kFields[i], values[i]);
            }
        }
    }

    static void fromGroup(FieldsFromGroups& io, const Field& field, Value& value)
    {
        switch (field.kind) {
        case real:
            io.real(field.code, value.real, field.usual);
            return;
        case angle:
            io.angle(field.code, value.real, radiansFrom(field.usual));
            return;
        case text:
            io.text(field.code, value.text);
            return;
        case color:
            colorFromGroup(io, field.code, value.color);
            return;
        case pointer:
            io.handle(field.code, value.ref);
            return;
        default:
            io.integer(field.code, value.number, static_cast<std::int64_t>(field.usual));
        }
    }

    // Groups have no red, green and blue here.
    static void colorFromGroup(FieldsFromGroups& io, int code, Color& color)
    {
        int index = 0;
        io.integer(code, index);
        if (!io.since(r2004)) {
            color.index = static_cast<std::int16_t>(index);
        } else if (paletteIndexIn(io.version(), color) != index) {
            setColor(color, index, std::nullopt);
        }
    }
};

} // namespace

std::unique_ptr<Body> makeDimStyle()
{
    return makeBody<DimStyle>();
}

} // namespace corma::host::dwg
