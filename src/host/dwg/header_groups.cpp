// The header variables as groups.

#include "host/dwg/code_pages.h"
#include "host/dwg/header_group_table.h"
#include "host/dwg/header_variables.h"
#include "host/dwg/line_weight_code.h"
#include "host/dwg/types/colors.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <unordered_map>

namespace corma::host::dwg {

using namespace header;

// --- to groups -----------------------------------------------------------------------------------

namespace {

constexpr std::uint32_t kWeightMask = 0x1F;
constexpr int kTrueColor = 420;
constexpr double kMillisecondsOfDay = 86400000.0;

bool isIn(const Variable& variable, DrawingVersion version)
{
    return variable.since <= version && variable.until >= version;
}

int shiftOf(std::uint32_t mask)
{
    return std::countr_zero(mask);
}

std::wstring dollarName(const Variable& variable)
{
    return L"$" + std::wstring(variable.name);
}

// Those that are not among the fields; nothing for all others.
std::optional<GroupValue> headValue(Form variable, const FileForm& form)
{
    constexpr std::size_t kNumberDigits = 4;
    switch (variable) {
    case Form::version: {
        std::wstring digits = std::to_wstring(static_cast<int>(form.version));
        digits.insert(0, kNumberDigits - std::min(digits.size(), kNumberDigits), L'0');
        return L"AC" + digits;
    }
    case Form::maintenance:
        return std::int64_t {form.maintenance};
    case Form::codePage:
        return codePageName(form.codePage);
    default:
        return std::nullopt;
    }
}

std::int64_t flagValue(const Variable& variable, std::int64_t flags)
{
    const auto bits = static_cast<std::uint32_t>(flags) & variable.mask;
    return variable.isTurned ? (bits == 0 ? 1 : 0) : bits >> shiftOf(variable.mask);
}

void colorToGroups(int code, const Color& color, FieldsToGroups& io)
{
    io.integer(code, paletteIndexIn(io.version(), color));
    if (code == code::color && io.since(r2004) && isTrueColor(color.rgb)) {
        io.integer(kTrueColor, color.rgb & Color::kRgbMask);
    }
}

template<class Value> double timeOf(const Value& value)
{
    return static_cast<double>(value.number)
        + static_cast<double>(value.milliseconds) / kMillisecondsOfDay;
}

template<class Value> void nameToGroups(int code, const Value& value, FieldsToGroups& io)
{
    const Handle target = value.ref.target;
    std::wstring name = target == Handle::none ? std::wstring() : io.names().nameOf(target);
    io.groups().add(Group(code, GroupValue(std::move(name))));
}

template<class Value>
void plainToGroups(const Variable& variable, Kind kind, const Value& value, FieldsToGroups& io)
{
    switch (kind) {
    case real:
        io.real(variable.code, value.real);
        return;
    case point:
    case xAxis:
    case yAxis:
        io.point(variable.code, value.point);
        return;
    case rawPoint:
        io.point2(variable.code, {value.point.x, value.point.y});
        return;
    case text:
        io.text(variable.code, value.text);
        return;
    case color:
        colorToGroups(variable.code, value.color, io);
        return;
    case time:
        io.real(variable.code, timeOf(value));
        return;
    case seed:
    case pointer:
    case owner:
    case plotStyle:
        io.handle(variable.code, value.ref);
        return;
    default:
        io.integer(variable.code, value.number);
    }
}

template<class Value>
void valueToGroups(const Variable& variable, Kind kind, const Value& value, FieldsToGroups& io)
{
    switch (variable.form) {
    case Form::angle:
        io.angle(variable.code, value.real);
        return;
    case Form::weight:
        io.integer(variable.code,
                   weightFromCode(static_cast<std::uint8_t>(value.number & kWeightMask)));
        return;
    case Form::flags:
        io.integer(variable.code, flagValue(variable, value.number));
        return;
    case Form::entry:
    case Form::style:
        if (kind != text) {
            nameToGroups(variable.code, value, io);
            return;
        }
        [[fallthrough]];
    default:
        plainToGroups(variable, kind, value, io);
    }
}

bool isFlag(const Variable& variable)
{
    return variable.form == Form::weight || variable.form == Form::flags;
}

} // namespace

void HeaderVariables::toGroups(const Names& names, Groups& groups) const
{
    FieldsToGroups io(names, m_form->version, groups);
    for (const Variable& variable : kVariables) {
        if (!isIn(variable, m_form->version)) {
            continue;
        }
        const Group name(code::variable, GroupValue(dollarName(variable)));
        if (auto head = headValue(variable.form, *m_form)) {
            groups.add(name);
            groups.add(Group(variable.code, std::move(*head)));
            continue;
        }
        const std::wstring_view field = isFlag(variable) ? kFlags : variable.name;
        const std::size_t found = fieldNamed(field, m_form->version);
        const bool isThere = found != kFieldCount
            && (variable.form != Form::optional || m_values[found].ref.target != Handle::none);
        if (isThere) {
            groups.add(name);
            valueToGroups(variable, kFields[found].kind, m_values[found], io);
        }
    }
}

// --- from groups ---------------------------------------------------------------------------------

namespace {

using Ranges = std::unordered_map<std::wstring_view, GroupRange>;

Ranges rangesOf(const Groups& groups)
{
    Ranges ranges;
    GroupRange* last = nullptr;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code == code::variable) {
            last = &ranges[groups[i].text()];
            *last = {i + 1, i + 1};
        } else if (groups[i].code == code::type) {
            last = nullptr;
        } else if (last != nullptr) {
            last->end = i + 1;
        }
    }
    return ranges;
}

/// The values of one variable; there is at least one.
struct Source
{
    const Groups& groups;
    GroupRange range;
    const Names& names;
    DrawingVersion version;

    [[nodiscard]] std::int64_t integer() const { return groups[range.begin].integer(); }

    [[nodiscard]] double number() const { return groups[range.begin].real(); }

    [[nodiscard]] Point point() const
    {
        constexpr int kFirst = 10;
        return groups.point(kFirst, range);
    }

    [[nodiscard]] std::wstring_view text() const { return groups[range.begin].text(); }
};

void setColorFrom(const Source& from, Color& color)
{
    const auto index = static_cast<int>(from.integer());
    if (from.version < r2004) {
        color.index = static_cast<std::int16_t>(index);
        return;
    }
    if (from.groups.find(kTrueColor, from.range)) {
        setColor(color, index,
                 static_cast<std::uint32_t>(from.groups.integer(kTrueColor, from.range)));
    } else if (paletteIndexIn(from.version, color) != index) {
        setColor(color, index, std::nullopt);
    }
}

template<class Value> void setTime(const Source& from, Value& value)
{
    constexpr double kMostDays = 0x7FFFFFFF;
    const double days = std::floor(from.number());
    const bool isTime = days >= 0 && days <= kMostDays;
    if (isTime && timeOf(value) != from.number()) {
        value.number = static_cast<std::int64_t>(days);
        value.milliseconds = std::lround((from.number() - days) * kMillisecondsOfDay);
    }
}

template<class Value> void setEntry(const Source& from, TableKind table, Value& value)
{
    const std::wstring_view name = from.text();
    const Handle current = value.ref.target;
    if (current != Handle::none && foldedName(from.names.nameOf(current)) == foldedName(name)) {
        return;
    }
    const Handle found = name.empty() ? Handle::none : from.names.find(table, name);
    if (found != Handle::none || name.empty()) {
        value.ref.set(found);
    }
}

template<class Value> void setPlain(const Source& from, Kind kind, Value& value)
{
    switch (kind) {
    case real:
        value.real = from.number();
        return;
    case point:
    case xAxis:
    case yAxis:
    case rawPoint:
        value.point = from.point();
        return;
    case text:
        FieldsFromGroups::setText(value.text, from.text());
        return;
    case color:
        setColorFrom(from, value.color);
        return;
    case time:
        setTime(from, value);
        return;
    case seed:
    case pointer:
    case owner:
    case plotStyle:
        value.ref.set(from.groups[from.range.begin].handle());
        return;
    default:
        value.number = from.integer();
    }
}

void setFlag(const Variable& variable, std::int64_t wanted, std::int64_t& flags)
{
    auto bits = static_cast<std::uint32_t>(flags);
    auto number = static_cast<std::uint32_t>(wanted);
    if (variable.isTurned) {
        number = wanted == 0 ? 1 : 0;
    }
    bits = (bits & ~variable.mask) | ((number << shiftOf(variable.mask)) & variable.mask);
    flags = bits;
}

void setWeight(std::int64_t weight, std::int64_t& flags)
{
    const auto code = static_cast<std::uint8_t>(flags & kWeightMask);
    if (weightFromCode(code) != weight) {
        flags = (flags & ~std::int64_t {kWeightMask}) | codeFromWeight(weight);
    }
}

template<class Value>
void setValue(const Variable& variable, Kind kind, const Source& from, Value& value)
{
    switch (variable.form) {
    case Form::angle:
        if (!isSameNumber(degreesFrom(value.real), from.number())) {
            value.real = radiansFrom(from.number());
        }
        return;
    case Form::weight:
        setWeight(from.integer(), value.number);
        return;
    case Form::flags:
        setFlag(variable, from.integer(), value.number);
        return;
    case Form::style:
        return; // no table has it, so it is one of RootHandles
    case Form::entry:
        if (kind != text) {
            setEntry(from, variable.table, value);
            return;
        }
        [[fallthrough]];
    default:
        setPlain(from, kind, value);
    }
}

} // namespace

void HeaderVariables::fromGroups(const Names& names, const Groups& groups)
{
    const Ranges ranges = rangesOf(groups);
    for (const Variable& variable : kVariables) {
        const std::wstring_view field = isFlag(variable) ? kFlags : variable.name;
        const std::size_t found = fieldNamed(field, m_form->version);
        const auto range = ranges.find(dollarName(variable));
        if (found == kFieldCount || range == ranges.end() || !isIn(variable, m_form->version)
            || range->second.begin == range->second.end) {
            continue;
        }
        setValue(variable, kFields[found].kind,
                 Source {groups, range->second, names, m_form->version}, m_values[found]);
    }
}

} // namespace corma::host::dwg
