// The subclass markers that records have from R13 on.

#include "host/clone/conversion.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <vector>

namespace corma::host {

namespace {

constexpr std::wstring_view kEntryPart = L"AcDbSymbolTableRecord";

/// A subclass, and the codes that go there; the part without codes takes all others.
struct Part
{
    const wchar_t* marker = nullptr;
    std::vector<int> codes {};
};

using Parts = std::vector<Part>;

const std::vector<int>& none()
{
    static const std::vector<int> never = {-1};
    return never;
}

struct TypeParts
{
    std::wstring_view type;
    Parts parts;
};

const std::vector<TypeParts>& simpleTypes()
{
    static const std::vector<TypeParts> types = {
        {L"3DFACE", {{L"AcDbFace"}}},
        {L"APPID", {{L"AcDbRegAppTableRecord"}}},
        {L"ARC", {{L"AcDbCircle"}, {L"AcDbArc", {50, 51}}}},
        {L"ATTDEF", {{L"AcDbText"}, {L"AcDbAttributeDefinition", {2, 3, 70, 73, 74}}}},
        {L"ATTRIB", {{L"AcDbText"}, {L"AcDbAttribute", {2, 70, 73, 74}}}},
        {L"BLOCK", {{L"AcDbBlockBegin"}}},
        {L"CIRCLE", {{L"AcDbCircle"}}},
        {L"DIMSTYLE", {{L"AcDbDimStyleTableRecord"}}},
        {L"ENDBLK", {{L"AcDbBlockEnd"}}},
        {L"LAYER", {{L"AcDbLayerTableRecord"}}},
        {L"LINE", {{L"AcDbLine"}}},
        {L"LTYPE", {{L"AcDbLinetypeTableRecord"}}},
        {L"POINT", {{L"AcDbPoint"}}},
        {L"SEQEND", {}},
        {L"SHAPE", {{L"AcDbShape"}}},
        {L"SOLID", {{L"AcDbTrace"}}},
        {L"STYLE", {{L"AcDbTextStyleTableRecord"}}},
        {L"TEXT", {{L"AcDbText"}, {L"AcDbText", {73}}}},
        {L"TRACE", {{L"AcDbTrace"}}},
        {L"UCS", {{L"AcDbUCSTableRecord"}}},
        {L"VIEW", {{L"AcDbViewTableRecord"}}},
    };
    return types;
}

std::int64_t flagsOf(const Groups& groups)
{
    return groups.integer(code::flags, groups.body());
}

Parts partsOfInsert(const Groups& groups)
{
    constexpr int kColumns = 70;
    constexpr int kRows = 71;
    const GroupRange body = groups.body();
    const bool isArray
        = groups.integer(kColumns, body, 1) > 1 || groups.integer(kRows, body, 1) > 1;
    return {{isArray ? L"AcDbMInsertBlock" : L"AcDbBlockReference"}};
}

Parts partsOfPolyline(const Groups& groups)
{
    constexpr int kIs3d = 8;
    constexpr int kIsMesh = 16;
    constexpr int kIsFaceMesh = 64;
    const auto flags = flagsOf(groups);
    if ((flags & kIsFaceMesh) != 0) {
        return {{L"AcDbPolyFaceMesh"}};
    }
    if ((flags & kIsMesh) != 0) {
        return {{L"AcDbPolygonMesh"}};
    }
    return {{(flags & kIs3d) != 0 ? L"AcDb3dPolyline" : L"AcDb2dPolyline"}};
}

Parts partsOfVertex(const Groups& groups)
{
    constexpr int kIs3d = 32;
    constexpr int kIsMesh = 64;
    constexpr int kIsFaceMesh = 128;
    const auto flags = flagsOf(groups);
    const bool isMesh = (flags & kIsMesh) != 0;
    if ((flags & kIsFaceMesh) != 0) {
        return isMesh ? Parts {{L"AcDbVertex", none()}, {L"AcDbPolyFaceMeshVertex"}}
                      : Parts {{L"AcDbFaceRecord"}};
    }
    if (isMesh) {
        return {{L"AcDbVertex", none()}, {L"AcDbPolygonMeshVertex"}};
    }
    return {{L"AcDbVertex", none()},
            {(flags & kIs3d) != 0 ? L"AcDb3dPolylineVertex" : L"AcDb2dVertex"}};
}

Parts partsOfDimension(const Groups& groups)
{
    constexpr int kTypeBits = 7;
    constexpr std::array kMarkers
        = {L"AcDbAlignedDimension",   L"AcDbAlignedDimension", L"AcDb2LineAngularDimension",
           L"AcDbDiametricDimension", L"AcDbRadialDimension",  L"AcDb3PointAngularDimension",
           L"AcDbOrdinateDimension"};
    const auto type = static_cast<std::size_t>(flagsOf(groups) & kTypeBits);
    if (type >= kMarkers.size()) {
        return {};
    }
    Parts parts = {
        {L"AcDbDimension"},
        {kMarkers[type], {12, 22, 32, 13, 23, 33, 14, 24, 34, 15, 25, 35, 16, 26, 36, 40, 50, 52}}};
    if (type == 0) {
        parts.push_back({L"AcDbRotatedDimension", none()});
    }
    return parts;
}

struct VaryingType
{
    std::wstring_view type;
    Parts (*partsOf)(const Groups& groups);
};

constexpr std::array kVaryingTypes
    = {VaryingType {L"DIMENSION", partsOfDimension}, VaryingType {L"INSERT", partsOfInsert},
       VaryingType {L"POLYLINE", partsOfPolyline}, VaryingType {L"VERTEX", partsOfVertex}};

// Nothing for a type that has no row.
std::optional<Parts> partsOf(const Groups& groups)
{
    const std::wstring& type = groups[0].text();
    for (const VaryingType& row : kVaryingTypes) {
        if (row.type == type) {
            Parts parts = row.partsOf(groups);
            return parts.empty() ? std::nullopt : std::optional(std::move(parts));
        }
    }
    for (const TypeParts& row : simpleTypes()) {
        if (row.type == type) {
            return row.parts;
        }
    }
    return std::nullopt;
}

// What all entities have, ahead of what is their own.
Part entityPart()
{
    return {kEntityMarker, {code::linetype, code::layer, code::color, code::paperSpace, 48, 60}};
}

std::size_t partFor(const Parts& parts, int groupCode)
{
    std::size_t rest = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto& codes = parts[i].codes;
        if (codes.empty()) {
            rest = i;
        } else if (std::find(codes.begin(), codes.end(), groupCode) != codes.end()) {
            return i;
        }
    }
    return rest;
}

} // namespace

bool addSubclassMarkers(Groups& groups, RecordKind kind)
{
    auto parts = partsOf(groups);
    if (!parts) {
        return false;
    }
    const bool isEntry = kind == RecordKind::tableEntry;
    parts->insert(parts->begin(), isEntry ? Part {kEntryPart.data(), none()} : entityPart());

    const std::size_t bodyEnd = groups.body().end;
    std::vector<std::vector<Group>> sorted(parts->size());
    for (std::size_t i = 1; i < bodyEnd; ++i) {
        sorted[partFor(*parts, groups[i].code)].push_back(std::move(groups[i]));
    }
    std::vector<Group> all = {std::move(groups[0])};
    for (std::size_t i = 0; i < parts->size(); ++i) {
        all.emplace_back(code::subclass, (*parts)[i].marker);
        std::move(sorted[i].begin(), sorted[i].end(), std::back_inserter(all));
    }
    for (std::size_t i = bodyEnd; i < groups.size(); ++i) {
        all.push_back(std::move(groups[i]));
    }
    groups = Groups(std::move(all));
    return true;
}

} // namespace corma::host
