#pragma once

// What the descriptions of several types share.

#include "host/dwg/Body.h"
#include "host/dwg/fields.h"
#include "host/dwg/group_fields.h"

#include <cstdint>
#include <vector>

namespace corma::host::dwg {

/// A point whose height is one field for all points of the record.
template<class Io> void pointOfPlane(Io& io, int code, Point2& value, double& elevation)
{
    Point point {value.x, value.y, elevation};
    io.point(code, point);
    if constexpr (Io::isFromGroups) {
        value = {point.x, point.y};
        elevation = point.z;
    }
}

/// The entry of a table by its name, which is there even when it is the usual one.
template<class Io>
void alwaysNamed(Io& io, int code, Ref& value, TableKind table, std::wstring_view usual)
{
    if constexpr (Io::isFromGroups) {
        io.named(code, value, table, usual);
    } else {
        io.named(code, value, table);
    }
}

// Values that groups always have; a record without them gets the usual one.

template<class Io> void alwaysReal(Io& io, int code, double& value, double usual)
{
    if constexpr (Io::isFromGroups) {
        io.real(code, value, usual);
    } else {
        io.real(code, value);
    }
}

template<class Io, class Number>
void alwaysInteger(Io& io, int code, Number& value, std::int64_t usual)
{
    if constexpr (Io::isFromGroups) {
        io.integer(code, value, usual);
    } else {
        io.integer(code, value);
    }
}

template<class Io> void alwaysPoint(Io& io, int code, Point& value, const Point& usual)
{
    if constexpr (Io::isFromGroups) {
        io.point(code, value, usual);
    } else {
        io.point(code, value);
    }
}

inline constexpr Point kXAxis {1.0, 0.0, 0.0};
inline constexpr Point kYAxis {0.0, 1.0, 0.0};

inline constexpr wchar_t kStandardName[] = L"Standard";

/// The records that follow one and belong to it, up to their SEQEND: attributes of a reference,
/// vertices of a polyline.
struct Sequence
{
    std::vector<Ref> all; // from R2004 on
    Ref first; // up to R2000
    Ref last;
    Ref end;

    template<class Io> void bits(Io& io)
    {
        auto number = static_cast<std::uint32_t>(all.size());
        countBits(io, number);
        handleBits(io, number);
    }

    /// For a record that has other fields between the two.
    template<class Io> void countBits(Io& io, std::uint32_t& number)
    {
        if (io.since(DrawingVersion::r2004)) {
            io.bitLong(number);
        }
    }

    template<class Io> void handleBits(Io& io, std::uint32_t number)
    {
        if (io.since(DrawingVersion::r2004)) {
            io.handles(all, number, Bond::hardOwner);
        } else {
            io.handle(first, Bond::softPointer);
            io.handle(last, Bond::softPointer);
        }
        io.handle(end, Bond::hardOwner);
    }

    [[nodiscard]] Owned owned() const;

    void take(const Surroundings& around);
};

/// Groups that stand one behind the other, for what only their order tells apart.
class GroupWalk
{
public:
    GroupWalk(const Groups& groups, GroupRange range)
        : m_groups(&groups)
        , m_range(range)
    {
    }

    explicit GroupWalk(const FieldsFromGroups& io)
        : GroupWalk(io.groups(), io.range())
    {
    }

    [[nodiscard]] bool isAtEnd() const { return m_range.begin >= m_range.end; }

    [[nodiscard]] const Group& group() const { return (*m_groups)[m_range.begin]; }

    [[nodiscard]] bool isAt(int code) const { return !isAtEnd() && group().code == code; }

    void next() { ++m_range.begin; }

    /// Goes on to the first group with a code; to the end when there is none.
    void seek(int code)
    {
        while (!isAtEnd() && group().code != code) {
            next();
        }
    }

private:
    const Groups* m_groups;
    GroupRange m_range;
};

/// The next item of a list that is written over: one that is there already keeps its form.
template<class Item> Item& nextItem(std::vector<Item>& list, std::size_t& count)
{
    if (count == list.size()) {
        list.emplace_back();
    }
    return list[count++];
}

} // namespace corma::host::dwg
