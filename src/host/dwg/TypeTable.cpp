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
    unsigned number;
    std::string_view name; // of several with one name groups tell which it is
    bool isEntity;
    MakeBody makeBody;
};

// clang-format off
constexpr FixedType kFixedTypes[] = {
    {0x01, "TEXT",                true,  makeText},
    {0x02, "ATTRIB",              true,  makeAttribute},
    {0x03, "ATTDEF",              true,  makeAttributeDefinition},
    {0x04, "BLOCK",               true,  makeBlockBegin},
    {0x05, "ENDBLK",              true,  makeBlockEnd},
    {0x06, "SEQEND",              true,  makeSequenceEnd},
    {0x07, "INSERT",              true,  makeInsert},
    {0x08, "INSERT",              true,  makeInsertArray}, // in rows and columns
    {0x0A, "VERTEX",              true,  makeVertex2d}, // 2D
    {0x0B, "VERTEX",              true,  makeVertex3d}, // 3D
    {0x0C, "VERTEX",              true,  makeMeshVertex}, // of a mesh
    {0x0D, "VERTEX",              true,  makeFaceVertex}, // of faces
    {0x0E, "VERTEX",              true,  makeFaceRecord}, // a face
    {0x0F, "POLYLINE",            true,  makePolyline2d}, // 2D
    {0x10, "POLYLINE",            true,  makePolyline3d}, // 3D
    {0x11, "ARC",                 true,  makeArc},
    {0x12, "CIRCLE",              true,  makeCircle},
    {0x13, "LINE",                true,  makeLine},
    {0x14, "DIMENSION",           true,  makeOrdinateDimension}, // ordinate
    {0x15, "DIMENSION",           true,  makeRotatedDimension}, // linear
    {0x16, "DIMENSION",           true,  makeAlignedDimension}, // aligned
    {0x17, "DIMENSION",           true,  makeThreePointDimension}, // angle of 3 points
    {0x18, "DIMENSION",           true,  makeTwoLineDimension}, // angle of 2 lines
    {0x19, "DIMENSION",           true,  makeRadiusDimension}, // radius
    {0x1A, "DIMENSION",           true,  makeDiameterDimension}, // diameter
    {0x1B, "POINT",               true,  makePoint},
    {0x1C, "3DFACE",              true,  makeFace},
    {0x1D, "POLYLINE",            true,  makeFaceMesh}, // faces
    {0x1E, "POLYLINE",            true,  makeMesh}, // mesh
    {0x1F, "SOLID",               true,  makeSolid},
    {0x20, "TRACE",               true,  makeTrace},
    {0x21, "SHAPE",               true,  nullptr},
    {0x22, "VIEWPORT",            true,  makeViewport},
    {0x23, "ELLIPSE",             true,  makeEllipse},
    {0x24, "SPLINE",              true,  makeSpline},
    {0x25, "REGION",              true,  nullptr},
    {0x26, "3DSOLID",             true,  nullptr},
    {0x27, "BODY",                true,  nullptr},
    {0x28, "RAY",                 true,  makeRay},
    {0x29, "XLINE",               true,  makeXline},
    {0x2A, "DICTIONARY",          false, makeDictionary},
    {0x2B, "OLEFRAME",            true,  nullptr},
    {0x2C, "MTEXT",               true,  makeMultilineText},
    {0x2D, "LEADER",              true,  makeLeader},
    {0x2E, "TOLERANCE",           true,  makeTolerance},
    {0x2F, "MLINE",               true,  makeMultiline},
    {0x30, "TABLE",               false, makeBlockControl}, // of blocks
    {0x31, "BLOCK_RECORD",        false, makeBlockRecord},
    {0x32, "TABLE",               false, makeLayerControl}, // of layers
    {0x33, "LAYER",               false, makeLayer},
    {0x34, "TABLE",               false, makeStyleControl}, // of text styles
    {0x35, "STYLE",               false, makeTextStyle},
    {0x38, "TABLE",               false, makeLinetypeControl}, // of linetypes
    {0x39, "LTYPE",               false, makeLinetype},
    {0x3C, "TABLE",               false, makeViewControl}, // of views
    {0x3D, "VIEW",                false, makeView},
    {0x3E, "TABLE",               false, makeUcsControl}, // of coordinate systems
    {0x3F, "UCS",                 false, makeCoordinateSystem},
    {0x40, "TABLE",               false, makeViewportControl}, // of the windows of the model
    {0x41, "VPORT",               false, makeWindow},
    {0x42, "TABLE",               false, makeAppIdControl}, // of applications
    {0x43, "APPID",               false, makeApplication},
    {0x44, "TABLE",               false, makeDimStyleControl}, // of dimension styles
    {0x45, "DIMSTYLE",            false, makeDimStyle},
    {0x46, "TABLE",               false, makePaperViewportControl}, // of viewports, up to R2000
    {0x47, "VX",                  false, makePaperViewport},
    {0x48, "GROUP",               false, makeEntityGroup},
    {0x49, "MLINESTYLE",          false, makeMlineStyle},
    {0x4A, "OLE2FRAME",           true,  nullptr},
    {0x4C, "LONG_TRANSACTION",    false, nullptr},
    {0x4D, "LWPOLYLINE",          true,  makeLightPolyline},
    {0x4E, "HATCH",               true,  makeHatch},
    {0x4F, "XRECORD",             false, makeXrecord},
    {0x50, "ACDBPLACEHOLDER",     false, makePlaceholder},
    {0x51, "VBA_PROJECT",         false, nullptr},
    {0x52, "LAYOUT",              false, makeLayout},
    {0x1F2, "ACAD_PROXY_ENTITY",  true,  nullptr},
    {0x1F3, "ACAD_PROXY_OBJECT",  false, nullptr},
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
