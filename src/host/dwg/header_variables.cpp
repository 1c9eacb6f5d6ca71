#include "host/dwg/header_variables.h"

#include "host/dwg/header_fields.h"
#include "host/dwg/section_frame.h"
#include "host/dwg/sentinels.h"
#include "host/dwg/types/colors.h"

namespace corma::host::dwg {

using namespace header;

namespace {

// --- fields --------------------------------------------------------------------------------------

constexpr Sentinels kVariableSentinels = {kVariablesBegin, kVariablesEnd};

bool isIn(const Field& field, DrawingVersion version)
{
    return field.since <= version && field.until >= version;
}

// Up to R2004 handles stand among the other fields.
void handle(FieldsFromBits& io, Ref& ref, Bond bond)
{
    if (io.since(r2007)) {
        io.handle(ref, bond);
    } else {
        ref = readRef(io.streams().data, Handle::none);
    }
}

void handle(FieldsToBits& io, const Ref& ref, Bond bond)
{
    if (io.since(r2007)) {
        io.handle(ref, bond);
    } else {
        writeRef(ref, bond, io.data());
    }
}

void seedHandle(FieldsFromBits& io, Ref& ref)
{
    ref = readRef(io.streams().data, Handle::none);
}

void seedHandle(FieldsToBits& io, const Ref& ref)
{
    writeRef(ref, Bond::none, io.data());
}

template<class Io, class Value> void rawPointField(Io& io, Value& value)
{
    Point2 flat {value.point.x, value.point.y};
    io.rawPoint2(flat);
    value.point = {flat.x, flat.y, 0.0};
}

template<class Io, class Value> void numberField(Io& io, Kind kind, Value& value)
{
    auto wide = static_cast<std::uint64_t>(value.number);
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
    case longNumber:
        io.bitLong(value.number);
        return;
    case wideNumber:
        io.bitLongLong(wide);
        value.number = static_cast<std::int64_t>(wide);
        return;
    default: // a time
        io.bitLong(value.number);
        io.bitLong(value.milliseconds);
    }
}

template<class Io, class Value> void anyField(Io& io, Kind kind, Value& value)
{
    switch (kind) {
    case real:
        io.bitDouble(value.real);
        return;
    case point:
    case xAxis:
    case yAxis:
        io.point3(value.point);
        return;
    case rawPoint:
        rawPointField(io, value);
        return;
    case text:
        io.text(value.text);
        return;
    case color:
        io.color(value.color);
        return;
    case seed:
        seedHandle(io, value.ref);
        return;
    case pointer:
    case plotStyle:
        handle(io, value.ref, Bond::hardPointer);
        return;
    case owner:
        handle(io, value.ref, Bond::hardOwner);
        return;
    default:
        numberField(io, kind, value);
    }
}

} // namespace

HeaderVariables::HeaderVariables(const FileForm& form)
    : m_form(&form)
    , m_values(kFieldCount)
{
    for (std::size_t i = 0; i < kFieldCount; ++i) {
        const double usual = kFields[i].usual;
        Value& value = m_values[i];
        value.real = usual;
        switch (kFields[i].kind) {
        case color:
            setColor(value.color, static_cast<int>(usual), std::nullopt);
            value.color.index
                = static_cast<std::int16_t>(form.version < r2004 ? static_cast<int>(usual) : 0);
            break;
        case xAxis:
            value.point = {1.0, 0.0, 0.0};
            break;
        case yAxis:
            value.point = {0.0, 1.0, 0.0};
            break;
        case point:
            value.point = {usual, usual, usual};
            break;
        default:
            value.number = kFields[i].kind == real ? 0 : static_cast<std::int64_t>(usual);
        }
    }
}

template<class Io> void HeaderVariables::fields(Io& io)
{
    constexpr int kHasPlotStyle = 3;
    const Value* const plotStyleKind = find(L"CEPSNTYPE");
    for (std::size_t i = 0; i < kFieldCount; ++i) {
        const bool isLeftOut = kFields[i].kind == plotStyle && plotStyleKind != nullptr
            && plotStyleKind->number != kHasPlotStyle;
        if (!isLeftOut && isIn(kFields[i], m_form->version)) {
            anyField(io, kFields[i].kind, m_values[i]);
        }
    }
}

std::optional<HeaderVariables> HeaderVariables::read(std::string_view section, const FileForm& form)
{
    const auto streams = openSection(section, kVariableSentinels, form);
    if (!streams) {
        return std::nullopt;
    }
    FieldsFromBits io(form, Handle::none, *streams);
    HeaderVariables variables(form);
    variables.fields(io);
    if (!io.isGood()) {
        return std::nullopt;
    }
    const BitReader& last = form.hasUnicode() ? io.streams().handles : io.streams().data;
    variables.m_rest.append(io.streams().bytes, last.position(), last.position() + last.left());
    variables.m_isUnderstood = variables.bytes() == section;
    return variables;
}

std::string HeaderVariables::bytes() const
{
    FieldsToBits io(*m_form, Handle::none);
    const_cast<HeaderVariables*>(this)->fields(io); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    (m_form->hasUnicode() ? io.handleBits() : io.data()).append(m_rest);
    return closeSection(io, kVariableSentinels, *m_form, {});
}

const HeaderVariables::Value* HeaderVariables::find(std::wstring_view name) const
{
    const std::size_t found = fieldNamed(name, m_form->version);
    return found == kFieldCount ? nullptr : &m_values[found];
}

HeaderVariables::Value* HeaderVariables::find(std::wstring_view name)
{
    const std::size_t found = fieldNamed(name, m_form->version);
    return found == kFieldCount ? nullptr : &m_values[found];
}

// --- handles -------------------------------------------------------------------------------------

namespace {

struct Root
{
    Handle RootHandles::*handle;
    std::wstring_view name;
};

constexpr Root kRoots[] = {
    {&RootHandles::blocks, L"blocks"},
    {&RootHandles::layers, L"layers"},
    {&RootHandles::textStyles, L"text styles"},
    {&RootHandles::linetypes, L"linetypes"},
    {&RootHandles::views, L"views"},
    {&RootHandles::coordinateSystems, L"coordinate systems"},
    {&RootHandles::windows, L"windows"},
    {&RootHandles::applications, L"applications"},
    {&RootHandles::dimStyles, L"dimension styles"},
    {&RootHandles::viewports, L"viewports"},
    {&RootHandles::namedObjects, L"named objects"},
    {&RootHandles::groups, L"groups"},
    {&RootHandles::mlineStyles, L"styles of multiple lines"},
    {&RootHandles::layouts, L"layouts"},
    {&RootHandles::plotSettings, L"plot settings"},
    {&RootHandles::plotStyles, L"plot styles"},
    {&RootHandles::materials, L"materials"},
    {&RootHandles::colors, L"colors"},
    {&RootHandles::visualStyles, L"visual styles"},
    {&RootHandles::paperSpace, L"paper space"},
    {&RootHandles::modelSpace, L"model space"},
    {&RootHandles::byLayer, L"by layer"},
    {&RootHandles::byBlock, L"by block"},
    {&RootHandles::continuous, L"continuous"},
    {&RootHandles::currentMlineStyle, L"CMLSTYLE"},
};

} // namespace

RootHandles HeaderVariables::rootHandles() const
{
    RootHandles handles;
    for (const Root& root : kRoots) {
        if (const Value* const value = find(root.name)) {
            handles.*root.handle = value->ref.target;
        }
    }
    return handles;
}

void HeaderVariables::setRootHandles(const RootHandles& handles)
{
    for (const Root& root : kRoots) {
        if (Value* const value = find(root.name)) {
            value->ref.set(handles.*root.handle);
        }
    }
}

Handle HeaderVariables::seed() const
{
    return find(L"HANDSEED")->ref.target;
}

void HeaderVariables::setSeed(Handle seed)
{
    find(L"HANDSEED")->ref.set(seed);
}

std::optional<RootHandles> decodeRootHandles(std::string_view section, const FileForm& form)
{
    const auto variables = HeaderVariables::read(section, form);
    return variables ? std::optional(variables->rootHandles()) : std::nullopt;
}

} // namespace corma::host::dwg
