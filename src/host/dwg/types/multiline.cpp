// Bundles of parallel lines.

#include "host/dwg/bodies.h"
#include "host/dwg/types/pieces.h"

namespace corma::host::dwg {

namespace {

struct Multiline
{
    /// Of one line of the bundle at a vertex: where it begins and where it is broken.
    struct Element
    {
        std::vector<double> breaks;
        std::vector<double> fills;
    };

    struct Vertex
    {
        Point position;
        Point direction;
        Point miter;
        std::vector<Element> elements;
    };

    static constexpr std::int16_t kOpen = 1; // 3 for a closed one

    double scale = 1.0;
    std::uint8_t justification = 0;
    Point begin;
    Point normal = kUsualNormal;
    std::int16_t flags = kOpen;
    std::uint8_t elementCount = 0;
    std::vector<Vertex> vertices;
    Ref style;

    template<class Io> void bits(Io& io)
    {
        constexpr std::size_t kFewestBits = 18;
        constexpr std::size_t kFewestBitsOfElement = 4;
        io.bitDouble(scale);
        io.byte(justification);
        io.point3(begin);
        io.point3(normal);
        io.bitShort(flags);
        io.byte(elementCount);
        auto count = static_cast<std::uint16_t>(vertices.size());
        io.bitShort(count);
        io.resize(vertices, count, kFewestBits);
        for (Vertex& vertex : vertices) {
            io.point3(vertex.position);
            io.point3(vertex.direction);
            io.point3(vertex.miter);
            io.resize(vertex.elements, elementCount, kFewestBitsOfElement);
            for (Element& element : vertex.elements) {
                listBits(io, element.breaks);
                listBits(io, element.fills);
            }
        }
        io.handle(style, Bond::hardPointer);
    }

    template<class Io> void listBits(Io& io, std::vector<double>& list)
    {
        constexpr std::size_t kFewestBits = 2;
        auto count = static_cast<std::uint16_t>(list.size());
        io.bitShort(count);
        io.resize(list, count, kFewestBits);
        for (double& value : list) {
            io.bitDouble(value);
        }
    }

    static constexpr int kStyle = 340;
    static constexpr int kVertex = 11;
    static constexpr int kDirection = 12;
    static constexpr int kMiter = 13;
    static constexpr int kBreakCount = 74;
    static constexpr int kBreak = 41;
    static constexpr int kFillCount = 75;
    static constexpr int kFill = 42;

    // The name of the style stands in groups, too; it is that of the record in a dictionary.
    template<class Io> void groups(Io& io)
    {
        io.marker(L"AcDbMline");
        io.handle(kStyle, style);
        alwaysReal(io, 40, scale, 1.0);
        io.integer(70, justification);
        io.integer(71, flags);
        vertexGroups(io);
    }

    void vertexGroups(FieldsToGroups& io)
    {
        io.integer(72, vertices.size());
        io.integer(73, elementCount);
        io.point(10, begin);
        io.point(210, normal);
        for (const Vertex& vertex : vertices) {
            io.point(kVertex, vertex.position);
            io.point(kDirection, vertex.direction);
            io.point(kMiter, vertex.miter);
            for (const Element& element : vertex.elements) {
                listGroups(io, kBreakCount, kBreak, element.breaks);
                listGroups(io, kFillCount, kFill, element.fills);
            }
        }
    }

    static void listGroups(FieldsToGroups& io, int countCode, int code,
                           const std::vector<double>& list)
    {
        io.integer(countCode, list.size());
        for (const double value : list) {
            io.real(code, value);
        }
    }

    void vertexGroups(FieldsFromGroups& io)
    {
        io.integer(73, elementCount);
        io.point(10, begin);
        io.point(210, normal, kUsualNormal);
        vertices.clear();
        GroupWalk walk(io);
        for (walk.seek(kVertex); !walk.isAtEnd(); walk.next()) {
            if (walk.isAt(kVertex)) {
                vertices.emplace_back();
            }
            valueFrom(walk.group());
        }
        for (Vertex& vertex : vertices) {
            vertex.elements.resize(elementCount);
        }
    }

    void valueFrom(const Group& group)
    {
        Vertex& vertex = vertices.back();
        Point* const points[] = {&vertex.position, &vertex.direction, &vertex.miter};
        const int point = group.code % kCoordinateStep - kVertex % kCoordinateStep;
        if (kVertex <= group.code && group.code < kVertex + 3 * kCoordinateStep && 0 <= point
            && point < 3) {
            constexpr double Point::*kAxes[] = {&Point::x, &Point::y, &Point::z};
            points[point]->*kAxes[(group.code - kVertex) / kCoordinateStep] = group.real();
        } else if (group.code == kBreakCount) {
            vertex.elements.emplace_back();
        } else if (group.code == kBreak && !vertex.elements.empty()) {
            vertex.elements.back().breaks.push_back(group.real());
        } else if (group.code == kFill && !vertex.elements.empty()) {
            vertex.elements.back().fills.push_back(group.real());
        }
    }
};

} // namespace

std::unique_ptr<Body> makeMultiline()
{
    return makeBody<Multiline>();
}

} // namespace corma::host::dwg
