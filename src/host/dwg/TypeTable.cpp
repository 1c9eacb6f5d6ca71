#include "host/dwg/TypeTable.h"

#include "host/dwg/bodies.h"
#include "platform/text.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace corma::host::dwg {

namespace {

struct FixedType
{
    std::string_view name; // of several with one name groups tell which it is
    MakeBody makeBody;
    unsigned number;
    bool isEntity;
};

// clang-format off
constexpr FixedType kFixedTypes[] = {
    {"TEXT",                makeText,                0x01, true},
    {"ATTRIB",              makeAttribute,           0x02, true},
    {"ATTDEF",              makeAttributeDefinition, 0x03, true},
    {"BLOCK",               makeBlockBegin,          0x04, true},
    {"ENDBLK",              makeBlockEnd,            0x05, true},
    {"SEQEND",              makeSequenceEnd,         0x06, true},
    {"INSERT",              makeInsert,              0x07, true},
    {"INSERT",              makeInsertArray,         0x08, true}, // in rows and columns
    {"VERTEX",              makeVertex2d,            0x0A, true}, // 2D
    {"VERTEX",              makeVertex3d,            0x0B, true}, // 3D
    {"VERTEX",              makeMeshVertex,          0x0C, true}, // of a mesh
    {"VERTEX",              makeFaceVertex,          0x0D, true}, // of faces
    {"VERTEX",              makeFaceRecord,          0x0E, true}, // a face
    {"POLYLINE",            makePolyline2d,          0x0F, true}, // 2D
    {"POLYLINE",            makePolyline3d,          0x10, true}, // 3D
    {"ARC",                 makeArc,                 0x11, true},
    {"CIRCLE",              makeCircle,              0x12, true},
    {"LINE",                makeLine,                0x13, true},
    {"DIMENSION",           makeOrdinateDimension,   0x14, true}, // ordinate
    {"DIMENSION",           makeRotatedDimension,    0x15, true}, // linear
    {"DIMENSION",           makeAlignedDimension,    0x16, true}, // aligned
    {"DIMENSION",           makeThreePointDimension, 0x17, true}, // angle of 3 points
    {"DIMENSION",           makeTwoLineDimension,    0x18, true}, // angle of 2 lines
    {"DIMENSION",           makeRadiusDimension,     0x19, true}, // radius
    {"DIMENSION",           makeDiameterDimension,   0x1A, true}, // diameter
    {"POINT",               makePoint,               0x1B, true},
    {"3DFACE",              makeFace,                0x1C, true},
    {"POLYLINE",            makeFaceMesh,            0x1D, true}, // faces
    {"POLYLINE",            makeMesh,                0x1E, true}, // mesh
    {"SOLID",               makeSolid,               0x1F, true},
    {"TRACE",               makeTrace,               0x20, true},
    {"SHAPE",               nullptr,                 0x21, true},
    {"VIEWPORT",            makeViewport,            0x22, true},
    {"ELLIPSE",             makeEllipse,             0x23, true},
    {"SPLINE",              makeSpline,              0x24, true},
    {"REGION",              nullptr,                 0x25, true},
    {"3DSOLID",             nullptr,                 0x26, true},
    {"BODY",                nullptr,                 0x27, true},
    {"RAY",                 makeRay,                 0x28, true},
    {"XLINE",               makeXline,               0x29, true},
    {"DICTIONARY",          makeDictionary,          0x2A, false},
    {"OLEFRAME",            nullptr,                 0x2B, true},
    {"MTEXT",               makeMultilineText,       0x2C, true},
    {"LEADER",              makeLeader,              0x2D, true},
    {"TOLERANCE",           makeTolerance,           0x2E, true},
    {"MLINE",               makeMultiline,           0x2F, true},
    {"TABLE",               makeBlockControl,        0x30, false}, // of blocks
    {"BLOCK_RECORD",        makeBlockRecord,         0x31, false},
    {"TABLE",               makeLayerControl,        0x32, false}, // of layers
    {"LAYER",               makeLayer,               0x33, false},
    {"TABLE",               makeStyleControl,        0x34, false}, // of text styles
    {"STYLE",               makeTextStyle,           0x35, false},
    {"TABLE",               makeLinetypeControl,     0x38, false}, // of linetypes
    {"LTYPE",               makeLinetype,            0x39, false},
    {"TABLE",               makeViewControl,         0x3C, false}, // of views
    {"VIEW",                makeView,                0x3D, false},
    {"TABLE",               makeUcsControl,          0x3E, false}, // of coordinate systems
    {"UCS",                 makeCoordinateSystem,    0x3F, false},
    {"TABLE",               makeViewportControl,     0x40, false}, // of the windows of the model
    {"VPORT",               makeWindow,              0x41, false},
    {"TABLE",               makeAppIdControl,        0x42, false}, // of applications
    {"APPID",               makeApplication,         0x43, false},
    {"TABLE",               makeDimStyleControl,     0x44, false}, // of dimension styles
    {"DIMSTYLE",            makeDimStyle,            0x45, false},
    {"TABLE",               makePaperViewportControl,0x46, false}, // of viewports, up to R2000
    {"VX",                  makePaperViewport,       0x47, false},
    {"GROUP",               makeEntityGroup,         0x48, false},
    {"MLINESTYLE",          makeMlineStyle,          0x49, false},
    {"OLE2FRAME",           nullptr,                 0x4A, true},
    {"LONG_TRANSACTION",    nullptr,                 0x4C, false},
    {"LWPOLYLINE",          makeLightPolyline,       0x4D, true},
    {"HATCH",               makeHatch,               0x4E, true},
    {"XRECORD",             makeXrecord,             0x4F, false},
    {"ACDBPLACEHOLDER",     makePlaceholder,         0x50, false},
    {"VBA_PROJECT",         nullptr,                 0x51, false},
    {"LAYOUT",              makeLayout,              0x52, false},
    {"ACAD_PROXY_ENTITY",   nullptr,                 0x1F2, true},
    {"ACAD_PROXY_OBJECT",   nullptr,                 0x1F3, false},
};

struct ClassType
{
    std::string_view name;
    MakeBody makeBody;
};

// Types that drawings number by their classes, some of them in a few versions only.
constexpr ClassType kClassTypes[] = {
    {"ACDBDICTIONARYWDFLT", makeDictionaryWithDefault},
    {"ACDBPLACEHOLDER",     makePlaceholder},
    {"DICTIONARYVAR",       makeDictionaryVariable},
    {"IMAGEDEF",            makeImageDefinition},
    {"PLOTSETTINGS",        makePlotSettings},
    {"RASTERVARIABLES",     makeRasterVariables},
    {"SCALE",               makeScale},
    {"SORTENTSTABLE",       makeDrawOrder},
    {"WIPEOUTVARIABLES",    makeWipeoutVariables},
};

// clang-format on

// The head of a table by the name of its entries, which have the next number.
std::optional<unsigned> tableNumber(std::string_view entryName)
{
    const auto* const found
        = std::find_if(std::begin(kFixedTypes), std::end(kFixedTypes),
                       [&](const FixedType& row) { return row.name == entryName; });
    const bool isTable = found != std::end(kFixedTypes) && found != std::begin(kFixedTypes)
        && (found - 1)->name == "TABLE";
    return isTable ? std::optional((found - 1)->number) : std::nullopt;
}

std::int64_t flagsOf(const Groups& groups)
{
    return groups.integer(code::flags, groups.body());
}

// 1 for a reference in rows and columns, whose numbers have the code that flags have elsewhere.
std::int64_t isInRows(const Groups& groups)
{
    constexpr int kColumns = 70;
    constexpr int kRows = 71;
    const GroupRange body = groups.body();
    return groups.integer(kColumns, body, 1) > 1 || groups.integer(kRows, body, 1) > 1 ? 1 : 0;
}

// One of the types with a name that several have.
struct Variant
{
    unsigned number;
    std::string_view name;
    const wchar_t* marker; // null for one whose marker another has, too
    std::int64_t (*flagsOf)(const Groups& groups);
    std::int64_t mask; // where no marker tells it, these bits of the flags ...
    std::int64_t flags; // ... are so
};

// clang-format off
constexpr Variant kVariants[] = {
    {0x08, "INSERT",    L"AcDbMInsertBlock",           isInRows, 1,   1},
    {0x07, "INSERT",    nullptr,                       isInRows, 1,   0},
    {0x0E, "VERTEX",    L"AcDbFaceRecord",             flagsOf,  192, 128},
    {0x0D, "VERTEX",    L"AcDbPolyFaceMeshVertex",     flagsOf,  192, 192},
    {0x0C, "VERTEX",    L"AcDbPolygonMeshVertex",      flagsOf,  192, 64},
    {0x0B, "VERTEX",    L"AcDb3dPolylineVertex",       flagsOf,  32,  32},
    {0x0A, "VERTEX",    L"AcDb2dVertex",               flagsOf,  0,   0},
    {0x1D, "POLYLINE",  L"AcDbPolyFaceMesh",           flagsOf,  64,  64},
    {0x1E, "POLYLINE",  L"AcDbPolygonMesh",            flagsOf,  16,  16},
    {0x10, "POLYLINE",  L"AcDb3dPolyline",             flagsOf,  8,   8},
    {0x0F, "POLYLINE",  L"AcDb2dPolyline",             flagsOf,  0,   0},
    {0x15, "DIMENSION", L"AcDbRotatedDimension",       flagsOf,  7,   0}, // has the next one's, too
    {0x16, "DIMENSION", L"AcDbAlignedDimension",       flagsOf,  7,   1},
    {0x18, "DIMENSION", L"AcDb2LineAngularDimension",  flagsOf,  7,   2},
    {0x1A, "DIMENSION", L"AcDbDiametricDimension",     flagsOf,  7,   3},
    {0x19, "DIMENSION", L"AcDbRadialDimension",        flagsOf,  7,   4},
    {0x17, "DIMENSION", L"AcDb3PointAngularDimension", flagsOf,  7,   5},
    {0x14, "DIMENSION", L"AcDbOrdinateDimension",      flagsOf,  7,   6},
};

// clang-format on

bool hasMarker(const Groups& groups, const wchar_t* marker)
{
    return std::any_of(groups.begin(), groups.end(), [&](const Group& group) {
        return group.code == code::subclass && group.isText(marker);
    });
}

// Nothing for a name that one type has only.
std::optional<unsigned> numberOfVariant(std::string_view name, const Groups& groups)
{
    for (const Variant& row : kVariants) {
        if (row.name == name && row.marker != nullptr && hasMarker(groups, row.marker)) {
            return row.number;
        }
    }
    for (const Variant& row : kVariants) {
        if (row.name == name && (row.flagsOf(groups) & row.mask) == row.flags) {
            return row.number;
        }
    }
    return std::nullopt;
}

const FixedType* fixedOf(unsigned number)
{
    const auto* const found = std::lower_bound(
        std::begin(kFixedTypes), std::end(kFixedTypes), number,
        [](const FixedType& row, unsigned wanted) { return row.number < wanted; });
    return found == std::end(kFixedTypes) || found->number != number ? nullptr : found;
}

} // namespace

MakeBody bodyNamed(std::string_view name)
{
    const auto* const found = std::find_if(std::begin(kClassTypes), std::end(kClassTypes),
                                           [&](const ClassType& row) { return row.name == name; });
    if (found != std::end(kClassTypes)) {
        return found->makeBody;
    }
    const auto* const fixed = std::find_if(std::begin(kFixedTypes), std::end(kFixedTypes),
                                           [&](const FixedType& row) { return row.name == name; });
    return fixed == std::end(kFixedTypes) ? nullptr : fixed->makeBody;
}

TypeTable::TypeTable(DrawingVersion version, std::vector<ClassInfo> classes)
    : m_version(version)
    , m_classes(std::move(classes))
{
    for (std::size_t i = 0; i < m_classes.size(); ++i) {
        enter(i);
    }
}

void TypeTable::enter(std::size_t position)
{
    const ClassInfo& entered = m_classes[position];
    m_names.push_back(toUtf8(entered.dxfName.value));
    m_byNumber.emplace(entered.number, position);
    m_byName.emplace(m_names.back(), entered.number);
}

TypeInfo TypeTable::find(unsigned number) const
{
    if (const FixedType* const fixed = fixedOf(number)) {
        return {fixed->name, fixed->isEntity, fixed->makeBody};
    }
    const auto found = m_byNumber.find(number);
    if (found == m_byNumber.end()) {
        return {};
    }
    const std::string& name = m_names[found->second];
    return {name, m_classes[found->second].isEntity, bodyNamed(name)};
}

std::optional<unsigned> TypeTable::numberFor(const Groups& groups) const
{
    const std::string name = toUtf8(groups[0].text());
    if (name == "TABLE") {
        return tableNumber(toUtf8(groups.text(code::name, groups.body())));
    }
    if (const auto number = numberOfVariant(name, groups)) {
        return number;
    }
    // Some numbers were given to types that had been classes before.
    constexpr unsigned kFirstSinceR2004 = 0x50;
    const auto* const fixed = std::find_if(std::begin(kFixedTypes), std::end(kFixedTypes),
                                           [&](const FixedType& row) { return row.name == name; });
    const bool isFixed = fixed != std::end(kFixedTypes)
        && (fixed->number < kFirstSinceR2004 || m_version >= DrawingVersion::r2004);
    if (isFixed) {
        return fixed->number;
    }
    const auto byClass = m_byName.find(name);
    return byClass == m_byName.end() ? std::nullopt : std::optional(byClass->second);
}

void TypeTable::add(ClassInfo added)
{
    constexpr unsigned kFirst = 500;
    added.number = kFirst;
    for (const ClassInfo& known : m_classes) {
        added.number = std::max(added.number, known.number + 1);
    }
    m_classes.push_back(std::move(added));
    enter(m_classes.size() - 1);
}

} // namespace corma::host::dwg
