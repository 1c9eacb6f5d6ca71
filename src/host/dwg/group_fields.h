#pragma once

// The fields of a record as groups, in two directions as fields.h has them for bits: FieldsToGroups
// puts values into groups, FieldsFromGroups takes them out. A record type says once, as a template
// over the two, how its fields stand in groups:
//
//     template<class Io> void groups(Io& io)
//     {
//         io.marker(L"AcDbCircle");
//         io.point(10, center);
//         io.real(40, radius);
//         io.extrusion(normal);
//     }
//
// A value that the groups do not have is the usual one, so a usual one need not be there. What is
// taken out of groups goes over a record as its file has it, if there is one: a value that is the
// same in both keeps the form that it has in the file.

#include "host/dwg/values.h"
#include "host/model/Group.h"
#include "host/model/Store.h"

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// What handles stand for in a drawing.
class Names
{
public:
    Names() = default;
    Names(const Names&) = delete;
    Names& operator=(const Names&) = delete;
    virtual ~Names() = default;

    /// The name of a table's entry; empty when there is none of that handle.
    [[nodiscard]] virtual std::wstring nameOf(Handle entry) const = 0;

    /// none when the table has no such entry.
    [[nodiscard]] virtual Handle find(TableKind table, std::wstring_view name) const = 0;
};

/// What a record has by its place in the drawing; groups do not say it.
struct Surroundings
{
    enum class Space : std::uint8_t
    {
        ofOwner,
        paper,
        model
    };

    Space space = Space::ofOwner; // of an entity
    Handle previous = Handle::none; // of an entity, up to R2000
    Handle next = Handle::none;

    // Of a block, a reference, a polyline: its entities, attributes or vertices, in order. Of a
    // table: its entries.
    std::vector<Handle> owned;
    Handle begin = Handle::none; // BLOCK
    Handle end = Handle::none; // ENDBLK or SEQEND
    std::vector<Handle> references; // of a block: those of the drawing

    // Of the table of blocks and of that of linetypes: the two that are no entries as others are.
    Handle first = Handle::none; // *Model_Space or ByBlock
    Handle second = Handle::none; // *Paper_Space or ByLayer
};

/// The name of a block as bits have it: "*D" for "*D7", which is one of those that have no name of
/// their own.
std::wstring withoutNumber(std::wstring_view name);

inline constexpr Point kUsualNormal {0.0, 0.0, 1.0};

double degreesFrom(double radians);
double radiansFrom(double degrees);

/// By their bits, as what is no number differs from itself.
inline bool isSameNumber(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline bool isSameValue(const GroupValue& a, const GroupValue& b)
{
    const auto* const x = std::get_if<double>(&a);
    const auto* const y = std::get_if<double>(&b);
    return x != nullptr && y != nullptr ? isSameNumber(*x, *y) : a == b;
}

class FieldsToGroups
{
public:
    static constexpr bool isFromGroups = false;

    FieldsToGroups(const Names& names, DrawingVersion version, Groups& groups)
        : m_names(&names)
        , m_version(version)
        , m_groups(&groups)
    {
    }

    [[nodiscard]] bool since(DrawingVersion first) const { return m_version >= first; }

    [[nodiscard]] DrawingVersion version() const { return m_version; }

    [[nodiscard]] const Names& names() const { return *m_names; }

    Groups& groups() { return *m_groups; }

    void marker(const wchar_t* name) { m_groups->add(Group(code::subclass, name)); }

    void real(int code, const double& value) { m_groups->add(Group(code, value)); }

    void real(int code, const double& value, double usual)
    {
        if (value != usual) {
            real(code, value);
        }
    }

    /// Radians in bits, degrees in groups.
    void angle(int code, const double& value) { real(code, degreesFrom(value)); }

    void angle(int code, const double& value, double usual)
    {
        if (value != usual) {
            angle(code, value);
        }
    }

    template<class Number> void integer(int code, const Number& value)
    {
        m_groups->add(Group(code, GroupValue(static_cast<std::int64_t>(value))));
    }

    template<class Number> void integer(int code, const Number& value, std::int64_t usual)
    {
        if (static_cast<std::int64_t>(value) != usual) {
            integer(code, value);
        }
    }

    void point(int code, const Point& value);

    void point(int code, const Point& value, const Point& usual)
    {
        if (value != usual) {
            point(code, value);
        }
    }

    void point2(int code, const Point2& value);

    void extrusion(const Point& value)
    {
        constexpr int kCode = 210;
        point(kCode, value, kUsualNormal);
    }

    void text(int code, const Text& value) { m_groups->add(Group(code, GroupValue(value.value))); }

    void text(int code, const Text& value, std::wstring_view usual)
    {
        if (value.value != usual) {
            text(code, value);
        }
    }

    /// A record by its handle.
    void handle(int code, const Ref& value) { m_groups->add(Group(code, value.target)); }

    /// The same, left out when there is none.
    void optionalHandle(int code, const Ref& value)
    {
        if (value.target != Handle::none) {
            handle(code, value);
        }
    }

    /// The entry of a table by its name; left out when it has the usual one or is no entry.
    void named(int code, const Ref& value, TableKind table, std::wstring_view usual = {});

private:
    const Names* m_names;
    DrawingVersion m_version;
    Groups* m_groups;
};

class FieldsFromGroups
{
public:
    static constexpr bool isFromGroups = true;

    FieldsFromGroups(const Names& names, DrawingVersion version, const Groups& groups,
                     const Surroundings& around)
        : m_names(&names)
        , m_version(version)
        , m_groups(&groups)
        , m_around(&around)
        , m_range(groups.body())
    {
    }

    [[nodiscard]] bool since(DrawingVersion first) const { return m_version >= first; }

    [[nodiscard]] DrawingVersion version() const { return m_version; }

    [[nodiscard]] const Names& names() const { return *m_names; }

    [[nodiscard]] const Groups& groups() const { return *m_groups; }

    [[nodiscard]] const Surroundings& around() const { return *m_around; }

    /// False when the groups say something that bits have no place for, such as a name that the
    /// drawing does not have.
    [[nodiscard]] bool isGood() const { return m_problem.empty(); }

    /// What it is, as a part of a sentence.
    [[nodiscard]] const std::wstring& problem() const { return m_problem; }

    void fail(std::wstring_view problem);

    /// What follows is looked for behind this marker, up to the next one. When a marker comes twice
    /// in a description, the second stands for the second in the groups.
    void marker(const wchar_t* name);

    /// What follows is looked for in the embedded object; false when there is none.
    bool embedded();

    /// The groups behind the marker.
    [[nodiscard]] GroupRange range() const { return m_range; }

    void real(int code, double& value, double usual = 0.0)
    {
        const double wanted = m_groups->real(code, m_range, usual);
        value = value == wanted ? value : wanted; // a zero keeps its sign
    }

    void angle(int code, double& value, double usual = 0.0);

    template<class Number> void integer(int code, Number& value, std::int64_t usual = 0)
    {
        value = static_cast<Number>(m_groups->integer(code, m_range, usual));
    }

    void point(int code, Point& value, const Point& usual = {})
    {
        const Point wanted = m_groups->point(code, m_range, usual);
        value = value == wanted ? value : wanted;
    }

    void point2(int code, Point2& value);

    void extrusion(Point& value)
    {
        constexpr int kCode = 210;
        point(kCode, value, kUsualNormal);
    }

    void text(int code, Text& value, std::wstring_view usual = {})
    {
        setText(value, m_groups->text(code, m_range, usual));
    }

    static void setText(Text& value, std::wstring_view text)
    {
        if (value.value != text) {
            value.set(text);
        }
    }

    void handle(int code, Ref& value) { value.set(m_groups->handle(code, m_range)); }

    void optionalHandle(int code, Ref& value) { handle(code, value); }

    /// True when the groups have the name of this entry. Those of what the file names and no table
    /// has are silent.
    [[nodiscard]] bool isNamed(int code, const Ref& value, std::wstring_view usual = {}) const;

    void named(int code, Ref& value, TableKind table, std::wstring_view usual = {});

private:
    const Names* m_names;
    DrawingVersion m_version;
    const Groups* m_groups;
    const Surroundings* m_around;
    GroupRange m_range;
    std::wstring m_marker;
    std::wstring m_problem;
};

} // namespace corma::host::dwg
