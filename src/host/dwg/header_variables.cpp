#include "host/dwg/header_variables.h"

#include "host/dwg/code_pages.h"
#include "host/dwg/header_fields.h"
#include "host/dwg/line_weight_code.h"
#include "host/dwg/section_frame.h"
#include "host/dwg/sentinels.h"
#include "host/dwg/types/colors.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <unordered_map>

namespace corma::host::dwg {

using namespace header;

namespace {

constexpr Sentinels kVariableSentinels = {kVariablesBegin, kVariablesEnd};

// --- how they stand in groups --------------------------------------------------------------------

enum class Form : std::uint8_t
{
    plain, // as the kind of the field says
    angle, // degrees in groups
    entry, // the name of a table's entry
    style, // the name of a style of multiple lines
    optional, // a handle that may be missing
    weight, // some bits of `flags`
    flags,
    version, // these three stand in the head of the file
    maintenance,
    codePage
};

// The rows of a table read best in this order.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct Variable
{
    std::wstring_view name; // without the dollar
    int code;
    Form form = Form::plain;
    TableKind table {};
    std::uint32_t mask = 0; // of `flags`
    bool isTurned = false; // a bit says that the variable is 0
    DrawingVersion since = r13;
    DrawingVersion until = r2018;
};

// In the order of DXF.
// clang-format off
constexpr Variable kVariables[] = {
    {L"ACADVER",             1, Form::version},
    {L"ACADMAINTVER",        70, Form::maintenance, {}, 0, false, r14, r2013},
    {L"ACADMAINTVER",        90, Form::maintenance, {}, 0, false, r2018},
    {L"DWGCODEPAGE",         3, Form::codePage},
    {L"REQUIREDVERSIONS",    160},
    {L"INSBASE",             10},
    {L"EXTMIN",              10},
    {L"EXTMAX",              10},
    {L"LIMMIN",              10},
    {L"LIMMAX",              10},
    {L"ORTHOMODE",           70},
    {L"REGENMODE",           70},
    {L"FILLMODE",            70},
    {L"QTEXTMODE",           70},
    {L"MIRRTEXT",            70},
    {L"DRAGMODE",            70},
    {L"LTSCALE",             40},
    {L"OSMODE",              70},
    {L"ATTMODE",             70},
    {L"TEXTSIZE",            40},
    {L"TRACEWID",            40},
    {L"TEXTSTYLE",           7, Form::entry, TableKind::textStyle},
    {L"CLAYER",              8, Form::entry, TableKind::layer},
    {L"CELTYPE",             6, Form::entry, TableKind::linetype},
    {L"CECOLOR",             62},
    {L"CELTSCALE",           40},
    {L"DELOBJ",              70},
    {L"DISPSILH",            70},
    {L"DIMSCALE",            40},
    {L"DIMASZ",              40},
    {L"DIMEXO",              40},
    {L"DIMDLI",              40},
    {L"DIMRND",              40},
    {L"DIMDLE",              40},
    {L"DIMEXE",              40},
    {L"DIMTP",               40},
    {L"DIMTM",               40},
    {L"DIMTXT",              40},
    {L"DIMCEN",              40},
    {L"DIMTSZ",              40},
    {L"DIMTOL",              70},
    {L"DIMLIM",              70},
    {L"DIMTIH",              70},
    {L"DIMTOH",              70},
    {L"DIMSE1",              70},
    {L"DIMSE2",              70},
    {L"DIMTAD",              70},
    {L"DIMZIN",              70},
    {L"DIMBLK",              1, Form::entry, TableKind::blockRecord},
    {L"DIMASO",              70},
    {L"DIMSHO",              70},
    {L"DIMPOST",             1},
    {L"DIMAPOST",            1},
    {L"DIMALT",              70},
    {L"DIMALTD",             70},
    {L"DIMALTF",             40},
    {L"DIMLFAC",             40},
    {L"DIMTOFL",             70},
    {L"DIMTVP",              40},
    {L"DIMTIX",              70},
    {L"DIMSOXD",             70},
    {L"DIMSAH",              70},
    {L"DIMBLK1",             1, Form::entry, TableKind::blockRecord},
    {L"DIMBLK2",             1, Form::entry, TableKind::blockRecord},
    {L"DIMSTYLE",            2, Form::entry, TableKind::dimStyle},
    {L"DIMCLRD",             70},
    {L"DIMCLRE",             70},
    {L"DIMCLRT",             70},
    {L"DIMTFAC",             40},
    {L"DIMGAP",              40},
    {L"DIMJUST",             70},
    {L"DIMSD1",              70},
    {L"DIMSD2",              70},
    {L"DIMTOLJ",             70},
    {L"DIMTZIN",             70},
    {L"DIMALTZ",             70},
    {L"DIMALTTZ",            70},
    {L"DIMFIT",              70},
    {L"DIMUPT",              70},
    {L"DIMUNIT",             70},
    {L"DIMDEC",              70},
    {L"DIMTDEC",             70},
    {L"DIMALTU",             70},
    {L"DIMALTTD",            70},
    {L"DIMTXSTY",            7, Form::entry, TableKind::textStyle},
    {L"DIMAUNIT",            70},
    {L"DIMADEC",             70},
    {L"DIMALTRND",           40},
    {L"DIMAZIN",             70},
    {L"DIMDSEP",             70},
    {L"DIMATFIT",            70},
    {L"DIMFRAC",             70},
    {L"DIMLDRBLK",           1, Form::entry, TableKind::blockRecord},
    {L"DIMLUNIT",            70},
    {L"DIMLWD",              70},
    {L"DIMLWE",              70},
    {L"DIMTMOVE",            70},
    {L"DIMFXL",              40},
    {L"DIMFXLON",            70},
    {L"DIMJOGANG",           40},
    {L"DIMTFILL",            70},
    {L"DIMTFILLCLR",         70},
    {L"DIMARCSYM",           70},
    {L"DIMLTYPE",            6, Form::entry, TableKind::linetype},
    {L"DIMLTEX1",            6, Form::entry, TableKind::linetype},
    {L"DIMLTEX2",            6, Form::entry, TableKind::linetype},
    {L"DIMTXTDIRECTION",     70},
    {L"LUNITS",              70},
    {L"LUPREC",              70},
    {L"SKETCHINC",           40},
    {L"FILLETRAD",           40},
    {L"AUNITS",              70},
    {L"AUPREC",              70},
    {L"MENU",                1},
    {L"ELEVATION",           40},
    {L"PELEVATION",          40},
    {L"THICKNESS",           40},
    {L"LIMCHECK",            70},
    {L"BLIPMODE",            70},
    {L"CHAMFERA",            40},
    {L"CHAMFERB",            40},
    {L"CHAMFERC",            40},
    {L"CHAMFERD",            40},
    {L"SKPOLY",              70},
    {L"TDCREATE",            40},
    {L"TDUCREATE", 40},
    {L"TDUPDATE",            40},
    {L"TDUUPDATE", 40},
    {L"TDINDWG",             40},
    {L"TDUSRTIMER",          40},
    {L"USRTIMER",            70},
    {L"ANGBASE",             50, Form::angle},
    {L"ANGDIR",              70},
    {L"PDMODE",              70},
    {L"PDSIZE",              40},
    {L"PLINEWID",            40},
    {L"COORDS",              70},
    {L"SPLFRAME",            70},
    {L"SPLINETYPE",          70},
    {L"SPLINESEGS",          70},
    {L"ATTDIA",              70},
    {L"ATTREQ",              70},
    {L"HANDSEED",            5},
    {L"SURFTAB1",            70},
    {L"SURFTAB2",            70},
    {L"SURFTYPE",            70},
    {L"SURFU",               70},
    {L"SURFV",               70},
    {L"UCSBASE",             2, Form::entry, TableKind::ucs},
    {L"UCSNAME",             2, Form::entry, TableKind::ucs},
    {L"UCSORG",              10},
    {L"UCSXDIR",             10},
    {L"UCSYDIR",             10},
    {L"UCSORTHOREF",         2, Form::entry, TableKind::ucs},
    {L"UCSORTHOVIEW",        70},
    {L"UCSORGTOP",           10},
    {L"UCSORGBOTTOM",        10},
    {L"UCSORGLEFT",          10},
    {L"UCSORGRIGHT",         10},
    {L"UCSORGFRONT",         10},
    {L"UCSORGBACK",          10},
    {L"PUCSBASE",            2, Form::entry, TableKind::ucs},
    {L"PUCSNAME",            2, Form::entry, TableKind::ucs},
    {L"PUCSORG",             10},
    {L"PUCSXDIR",            10},
    {L"PUCSYDIR",            10},
    {L"PUCSORTHOREF",        2, Form::entry, TableKind::ucs},
    {L"PUCSORTHOVIEW",       70},
    {L"PUCSORGTOP",          10},
    {L"PUCSORGBOTTOM",       10},
    {L"PUCSORGLEFT",         10},
    {L"PUCSORGRIGHT",        10},
    {L"PUCSORGFRONT",        10},
    {L"PUCSORGBACK",         10},
    {L"USERI1",              70},
    {L"USERI2",              70},
    {L"USERI3",              70},
    {L"USERI4",              70},
    {L"USERI5",              70},
    {L"USERR1",              40},
    {L"USERR2",              40},
    {L"USERR3",              40},
    {L"USERR4",              40},
    {L"USERR5",              40},
    {L"WORLDVIEW",           70},
    {L"SHADEDGE",            70},
    {L"SHADEDIF",            70},
    {L"TILEMODE",            70},
    {L"MAXACTVP",            70},
    {L"PINSBASE",            10},
    {L"PLIMCHECK",           70},
    {L"PEXTMIN",             10},
    {L"PEXTMAX",             10},
    {L"PLIMMIN",             10},
    {L"PLIMMAX",             10},
    {L"UNITMODE",            70},
    {L"VISRETAIN",           70},
    {L"PLINEGEN",            70},
    {L"PSLTSCALE",           70},
    {L"TREEDEPTH",           70},
    {L"PICKSTYLE",           70},
    {L"CMLSTYLE",            2, Form::style},
    {L"CMLJUST",             70},
    {L"CMLSCALE",            40},
    {L"PROXYGRAPHICS",       70},
    {L"CELWEIGHT",           370, Form::weight},
    {L"ENDCAPS",             280, Form::flags, {}, 0x60},
    {L"JOINSTYLE",           280, Form::flags, {}, 0x180},
    {L"LWDISPLAY",           290, Form::flags, {}, 0x200, true},
    {L"INSUNITS",            70},
    {L"HYPERLINKBASE",       1},
    {L"STYLESHEET",          1},
    {L"XEDIT",               290, Form::flags, {}, 0x400, true},
    {L"CEPSNTYPE",           380},
    {L"PSTYLEMODE",          290, Form::flags, {}, 0x2000},
    {L"FINGERPRINTGUID",     2},
    {L"VERSIONGUID",         2},
    {L"EXTNAMES",            290, Form::flags, {}, 0x800},
    {L"PSVPSCALE",           40},
    {L"OLESTARTUP",          290, Form::flags, {}, 0x4000},
    {L"SORTENTS",            280},
    {L"INDEXCTL",            280},
    {L"HIDETEXT",            280},
    {L"XCLIPFRAME",          290, Form::plain, {}, 0, false, r13, r2007},
    {L"XCLIPFRAME",          280, Form::plain, {}, 0, false, r2010},
    {L"HALOGAP",             280},
    {L"OBSCOLOR",            70},
    {L"OBSLTYPE",            280},
    {L"INTERSECTIONDISPLAY", 280},
    {L"INTERSECTIONCOLOR",   70},
    {L"DIMASSOC",            280},
    {L"PROJECTNAME",         1},
    {L"CAMERADISPLAY",       290},
    {L"LENSLENGTH",          40},
    {L"CAMERAHEIGHT",        40},
    {L"STEPSPERSEC",         40},
    {L"STEPSIZE",            40},
    {L"3DDWFPREC",           40},
    {L"PSOLWIDTH",           40},
    {L"PSOLHEIGHT",          40},
    {L"LOFTANG1",            40},
    {L"LOFTANG2",            40},
    {L"LOFTMAG1",            40},
    {L"LOFTMAG2",            40},
    {L"LOFTPARAM",           70},
    {L"LOFTNORMALS",         280},
    {L"LATITUDE",            40},
    {L"LONGITUDE",           40},
    {L"NORTHDIRECTION",      40},
    {L"TIMEZONE",            70},
    {L"LIGHTGLYPHDISPLAY",   280},
    {L"TILEMODELIGHTSYNCH",  280},
    {L"CMATERIAL",           347},
    {L"SOLIDHIST",           280},
    {L"SHOWHIST",            280},
    {L"DWFFRAME",            280},
    {L"DGNFRAME",            280},
    {L"REALWORLDSCALE",      290},
    {L"INTERFERECOLOR",      62},
    {L"INTERFEREOBJVS",      345},
    {L"INTERFEREVPVS",       346},
    {L"CSHADOW",             280},
    {L"SHADOWPLANELOCATION", 40},
    {L"DRAGVS",              349, Form::optional},
};

// clang-format on

constexpr std::wstring_view kFlags = L"flags"; // of those that share a number
constexpr std::uint32_t kWeightMask = 0x1F;
constexpr int kTrueColor = 420;

} // namespace

// --- fields --------------------------------------------------------------------------------------

namespace {

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

// --- to groups -----------------------------------------------------------------------------------

namespace {

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

int indexOf(const Color& color, DrawingVersion version)
{
    return version >= r2004 ? paletteIndexOf(color.rgb) : color.index;
}

void colorToGroups(int code, const Color& color, FieldsToGroups& io)
{
    io.integer(code, indexOf(color, io.version()));
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
    } else if (indexOf(color, from.version) != index) {
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
