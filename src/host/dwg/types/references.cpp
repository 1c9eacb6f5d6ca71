// The begin and the end of blocks, references to them, and the end of what follows a record.

#include "host/dwg/bodies.h"
#include "host/dwg/types/pieces.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

/// Its other groups come from the record of the block, which has the fields for them.
struct BlockBegin
{
    Text name;

    template<class Io> void bits(Io& io) { io.text(name); }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbBlockBegin");
        if constexpr (Io::isFromGroups) {
            const std::wstring_view wanted = io.groups().text(code::name, io.range());
            if (name.value != wanted) { // some files have the number
                Io::setText(name, withoutNumber(wanted));
            }
        } else {
            io.text(code::name, name);
        }
    }
};

struct BlockEnd
{
    template<class Io> void bits(Io& /*io*/) { }

    template<class Io> void groups(Io& io) { io.marker(L"AcDbBlockEnd"); }
};

struct SequenceEnd
{
    template<class Io> void bits(Io& /*io*/) { }

    template<class Io> void groups(Io& /*io*/) { }
};

/// How the file tells the three factors of a reference, from R2000 on.
enum ScaleForm : std::uint8_t
{
    kEachScale = 0, // the second and the third as they differ from the first
    kFirstIsOne = 1,
    kEqualScales = 2,
    kAllAreOne = 3
};

struct Insert
{
    Point position;
    std::uint8_t scaleForm = kAllAreOne;
    Point scale {1.0, 1.0, 1.0};
    double rotation = 0.0;
    Point normal = kUsualNormal;
    bool hasAttributes = false;
    Ref block;
    Sequence attributes;

    // The numbers of rows and columns, of those that have them, stand behind what `begin` has.
    template<class Io> void begin(Io& io, std::uint32_t& attributeCount)
    {
        io.point3(position);
        if (io.since(r2000)) {
            scaleBits(io);
        } else {
            io.point3(scale);
        }
        io.bitDouble(rotation);
        io.point3(normal);
        io.bit(hasAttributes);
        if (hasAttributes) {
            attributes.countBits(io, attributeCount);
        }
    }

    template<class Io> void scaleBits(Io& io)
    {
        constexpr unsigned kTwoBits = 2;
        io.bits(scaleForm, kTwoBits);
        const bool hasFirst = scaleForm == kEachScale || scaleForm == kEqualScales;
        if (hasFirst) {
            io.rawDouble(scale.x);
        }
        if constexpr (Io::isReading) {
            scale.x = hasFirst ? scale.x : 1.0;
            scale.y = scale.z = scale.x;
        }
        if (scaleForm == kEachScale || scaleForm == kFirstIsOne) {
            io.defaultDouble(scale.y, scale.x);
            io.defaultDouble(scale.z, scale.x);
        }
    }

    template<class Io> void handles(Io& io, std::uint32_t attributeCount)
    {
        io.handle(block, Bond::hardPointer);
        if (hasAttributes) {
            attributes.handleBits(io, attributeCount);
        }
    }

    template<class Io> void bits(Io& io)
    {
        auto attributeCount = static_cast<std::uint32_t>(attributes.all.size());
        begin(io, attributeCount);
        handles(io, attributeCount);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbBlockReference");
        fieldGroups(io);
        io.extrusion(normal);
    }

    template<class Io> void fieldGroups(Io& io)
    {
        constexpr int kHasAttributes = 66;
        if constexpr (Io::isFromGroups) {
            hasAttributes = !io.around().owned.empty() || io.around().end != Handle::none;
            attributes.take(io.around());
        } else {
            io.integer(kHasAttributes, hasAttributes, 0);
        }
        io.named(code::name, block, TableKind::blockRecord);
        io.point(10, position);
        io.real(41, scale.x, 1.0);
        io.real(42, scale.y, 1.0);
        io.real(43, scale.z, 1.0);
        io.angle(50, rotation, 0.0);
        if constexpr (Io::isFromGroups) {
            chooseScaleForm();
        }
    }

    // The form of the file stays as long as it can tell the factors.
    void chooseScaleForm()
    {
        const bool isFirstOne = scale.x == 1.0;
        const bool areEqual = scale.y == scale.x && scale.z == scale.x;
        const bool fits[] = {true, isFirstOne, areEqual, areEqual && isFirstOne};
        if (!fits[scaleForm]) {
            scaleForm = kAllAreOne;
        }
        while (!fits[scaleForm]) {
            --scaleForm;
        }
    }

    [[nodiscard]] Handle referencedBlock() const { return block.target; }

    [[nodiscard]] Owned ownedHandles() const { return attributes.owned(); }
};

/// A reference in rows and columns.
struct InsertArray : Insert
{
    std::int16_t columns = 1;
    std::int16_t rows = 1;
    double columnDistance = 0.0;
    double rowDistance = 0.0;

    template<class Io> void bits(Io& io)
    {
        auto attributeCount = static_cast<std::uint32_t>(attributes.all.size());
        begin(io, attributeCount);
        io.bitShort(columns);
        io.bitShort(rows);
        io.bitDouble(columnDistance);
        io.bitDouble(rowDistance);
        handles(io, attributeCount);
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbMInsertBlock");
        if constexpr (Io::isFromGroups) {
            if (io.range().begin == io.range().end) {
                io.marker(L"AcDbBlockReference"); // which some programs write for it, too
            }
        }
        fieldGroups(io);
        io.integer(70, columns, 1);
        io.integer(71, rows, 1);
        io.real(44, columnDistance, 0.0);
        io.real(45, rowDistance, 0.0);
        io.extrusion(normal);
    }
};

} // namespace

std::unique_ptr<Body> makeBlockBegin()
{
    return makeBody<BlockBegin>();
}

std::unique_ptr<Body> makeBlockEnd()
{
    return makeBody<BlockEnd>();
}

std::unique_ptr<Body> makeSequenceEnd()
{
    return makeBody<SequenceEnd>();
}

std::unique_ptr<Body> makeInsert()
{
    return makeBody<Insert>();
}

std::unique_ptr<Body> makeInsertArray()
{
    return makeBody<InsertArray>();
}

} // namespace corma::host::dwg
