// Lines of text, alone and as attributes.

#include "host/dwg/Frame.h"
#include "host/dwg/bodies.h"
#include "host/dwg/types/MultilineText.h"
#include "host/dwg/types/pieces.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

/// What TEXT, ATTRIB and ATTDEF have.
struct TextLine
{
    // What is not in the file as it has its usual value; from R2000 on.
    enum Usual : std::uint8_t
    {
        kElevation = 1,
        kAlignment = 2,
        kObliquing = 4,
        kRotation = 8,
        kWidthFactor = 16,
        kGeneration = 32,
        kHorizontal = 64,
        kVertical = 128,
        kAll = 255
    };

    std::uint8_t usual = kAll;
    double elevation = 0.0;
    Point2 position;
    Point2 alignment;
    Point normal = kUsualNormal;
    double thickness = 0.0;
    double obliquing = 0.0;
    double rotation = 0.0;
    double height = 1.0;
    double widthFactor = 1.0;
    Text value;
    std::int16_t generation = 0;
    std::int16_t horizontal = 0;
    std::int16_t vertical = 0;
    Ref style;

    [[nodiscard]] bool has(Usual field) const { return (usual & field) == 0; }

    template<class Io> void bits(Io& io)
    {
        if (io.since(r2000)) {
            shortBits(io);
        } else {
            fullBits(io);
        }
        io.handle(style, Bond::hardPointer);
    }

    template<class Io> void fullBits(Io& io)
    {
        io.bitDouble(elevation);
        io.rawPoint2(position);
        io.rawPoint2(alignment);
        io.point3(normal);
        io.bitDouble(thickness);
        io.bitDouble(obliquing);
        io.bitDouble(rotation);
        io.bitDouble(height);
        io.bitDouble(widthFactor);
        io.text(value);
        io.bitShort(generation);
        io.bitShort(horizontal);
        io.bitShort(vertical);
    }

    template<class Io> void shortBits(Io& io)
    {
        io.byte(usual);
        rawUnless(io, kElevation, elevation);
        io.rawPoint2(position);
        if (has(kAlignment)) {
            io.defaultPoint2(alignment, position);
        }
        io.extrusion(normal);
        io.thickness(thickness);
        rawUnless(io, kObliquing, obliquing);
        rawUnless(io, kRotation, rotation);
        io.rawDouble(height);
        rawUnless(io, kWidthFactor, widthFactor);
        io.text(value);
        shortUnless(io, kGeneration, generation);
        shortUnless(io, kHorizontal, horizontal);
        shortUnless(io, kVertical, vertical);
    }

    template<class Io> void rawUnless(Io& io, Usual field, double& number)
    {
        if (has(field)) {
            io.rawDouble(number);
        }
    }

    template<class Io> void shortUnless(Io& io, Usual field, std::int16_t& number)
    {
        if (has(field)) {
            io.bitShort(number);
        }
    }

    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbText");
        io.real(39, thickness, 0.0);
        pointOfPlane(io, 10, position, elevation);
        io.real(40, height);
        io.text(1, value);
        io.angle(50, rotation, 0.0);
        io.real(41, widthFactor, 1.0);
        io.angle(51, obliquing, 0.0);
        io.named(7, style, TableKind::textStyle, kStandardName);
        io.integer(71, generation, 0);
        io.integer(72, horizontal, 0);
        alignmentGroups(io);
        io.extrusion(normal);
    }

    void alignmentGroups(FieldsToGroups& io)
    {
        if (alignment != Point2 {} || horizontal != 0 || vertical != 0) {
            io.point(11, {alignment.x, alignment.y, elevation});
        }
    }

    void alignmentGroups(FieldsFromGroups& io) { io.point2(11, alignment); }

    /// What is no longer usual goes into the file.
    void settle()
    {
        const bool isUsual[]
            = {elevation == 0.0,   alignment == Point2 {}, obliquing == 0.0, rotation == 0.0,
               widthFactor == 1.0, generation == 0,        horizontal == 0,  vertical == 0};
        for (unsigned i = 0; i < std::size(isUsual); ++i) {
            if (!isUsual[i]) {
                usual = static_cast<std::uint8_t>(usual & ~(1U << i));
            }
        }
    }
};

struct SingleText
{
    TextLine line;

    template<class Io> void bits(Io& io) { line.bits(io); }

    template<class Io> void groups(Io& io)
    {
        line.groups(io);
        io.marker(L"AcDbText");
        io.integer(73, line.vertical, 0);
        if constexpr (Io::isFromGroups) {
            line.settle();
        }
    }
};

/// What ATTRIB and ATTDEF have.
struct AttributePart
{
    // From R2018 on.
    static constexpr std::uint8_t kSingleLine = 1;
    static constexpr std::uint8_t kManyLines = 2; // of an attribute
    static constexpr std::uint8_t kManyLinesOfDefinition = 4;

    TextLine line;
    std::uint8_t version = 0; // from R2010 on
    std::uint8_t kind = kSingleLine;
    Frame frame; // of the text of several lines; it has neither a handle nor an owner
    MultilineText text;
    std::int16_t annotativeSize = 0;
    std::string annotative;
    Ref application;
    std::int16_t unknown = 0;
    Text tag;
    std::int16_t fieldLength = 0;
    std::uint8_t flags = 0;
    bool isLocked = false; // from R2007 on

    AttributePart() { frame.isEntity = true; }

    [[nodiscard]] bool hasManyLines() const { return kind > kSingleLine; }

    template<class Io> void bits(Io& io)
    {
        line.bits(io);
        if (io.since(r2010)) {
            io.byte(version);
        }
        if (io.since(r2018)) {
            io.byte(kind);
            if (hasManyLines()) {
                linesBits(io);
            }
        }
        io.text(tag);
        io.bitShort(fieldLength);
        io.byte(flags);
        if (io.since(r2007)) {
            io.bit(isLocked);
        }
    }

    template<class Io> void linesBits(Io& io)
    {
        frame.fields(io);
        frame.handles(io);
        text.bits(io);
        io.bitShort(annotativeSize);
        if (annotativeSize > 0) {
            io.bytes(annotative, static_cast<std::size_t>(annotativeSize));
            io.handle(application, Bond::hardPointer);
            io.bitShort(unknown);
        }
    }

    static constexpr int kVersion = 280;
    static constexpr int kLocked = 280;
    static constexpr int kFieldLength = 73;
    static constexpr int kVertical = 74;
    static constexpr int kKind = 71;
    static constexpr int kAnnotative = 72;

    template<class Io> void versionGroups(Io& io)
    {
        if (io.since(r2010)) {
            io.integer(kVersion, version);
        }
    }

    void groups(FieldsToGroups& io)
    {
        io.text(code::name, tag);
        io.integer(code::flags, flags);
        io.integer(kFieldLength, fieldLength, 0);
        io.integer(kVertical, line.vertical, 0);
        if (io.since(r2007)) {
            io.integer(kLocked, isLocked);
        }
        if (io.since(r2018) && hasManyLines()) {
            io.integer(kKind, kind);
            io.integer(kAnnotative, annotativeSize > 0);
            io.point(11, {line.alignment.x, line.alignment.y, line.elevation});
            io.groups().add(Group(code::embeddedObject, L"Embedded Object"));
            text.fieldGroups(io);
        }
    }

    void groups(FieldsFromGroups& io)
    {
        io.text(code::name, tag);
        io.integer(code::flags, flags);
        io.integer(kFieldLength, fieldLength);
        io.integer(kVertical, line.vertical);
        isLocked = lockedFrom(io);
        line.settle();
        linesFrom(io);
    }

    // The version has the same code, where there is one, and comes first.
    [[nodiscard]] static bool lockedFrom(const FieldsFromGroups& io)
    {
        GroupWalk walk(io);
        walk.seek(kLocked);
        if (io.since(r2010) && !walk.isAtEnd()) {
            walk.next();
            walk.seek(kLocked);
        }
        return !walk.isAtEnd() && walk.group().integer() != 0;
    }

    void linesFrom(FieldsFromGroups& io)
    {
        std::uint8_t kindOfMany = kind;
        io.integer(kKind, kindOfMany, kManyLines);
        if (!io.since(r2018) || !io.embedded()) {
            kind = kSingleLine;
            return;
        }
        kind = kindOfMany;
        const MultilineText before = text;
        text.fieldGroups(io);
        text.settle(io, before);
        if (frame.layer.target == Handle::none) {
            frame.layer.set(io.names().find(TableKind::layer, L"0"));
        }
    }
};

struct Attribute
{
    AttributePart part;

    template<class Io> void bits(Io& io) { part.bits(io); }

    template<class Io> void groups(Io& io)
    {
        part.line.groups(io);
        io.marker(L"AcDbAttribute");
        part.versionGroups(io);
        part.groups(io);
    }
};

struct AttributeDefinition
{
    AttributePart part;
    std::uint8_t version = 0; // from R2010 on
    Text prompt;

    template<class Io> void bits(Io& io)
    {
        part.bits(io);
        if (io.since(r2010)) {
            io.byte(version);
        }
        io.text(prompt);
    }

    template<class Io> void groups(Io& io)
    {
        constexpr int kPrompt = 3;
        part.line.groups(io);
        io.marker(L"AcDbAttributeDefinition");
        part.versionGroups(io);
        io.text(kPrompt, prompt);
        part.groups(io);
    }
};

} // namespace

std::unique_ptr<Body> makeText()
{
    return makeBody<SingleText>();
}

std::unique_ptr<Body> makeAttribute()
{
    return makeBody<Attribute>();
}

std::unique_ptr<Body> makeAttributeDefinition()
{
    return makeBody<AttributeDefinition>();
}

} // namespace corma::host::dwg
