#include "host/clone/conversion.h"

#include "host/clone/record_types.h"
#include "host/clone/references.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace corma::host {

namespace {

using enum DrawingVersion;

constexpr std::wstring_view kAttributePart = L"AcDbAttribute";
constexpr std::wstring_view kDefinitionPart = L"AcDbAttributeDefinition";
constexpr int kAttributeVersion = 280; // and, behind the other groups, its lock
constexpr int kElementKind = 74; // in a LTYPE: 0 for a dash without text or shape
constexpr int kElementLength = 49;

/// Codes that older versions do not know where they stand.
struct CodesSince
{
    std::wstring_view type; // empty: any
    std::wstring_view part; // the subclass; empty: any
    int first;
    int last;
    DrawingVersion since;
};

// clang-format off
constexpr CodesSince kCodesSince[] = {
    {{}, kEntityMarker, 48, 48, r13},
    {{}, kEntityMarker, 60, 60, r13},
    {{}, kEntityMarker, 284, 284, r2007},
    {{}, kEntityMarker, 347, 348, r2007},
    {{}, kEntityMarker, 370, 370, r2000},
    {{}, kEntityMarker, 390, 390, r2000},
    {{}, kEntityMarker, 410, 410, r2000},
    {{}, kEntityMarker, 420, 449, r2004},
    {L"ATTDEF", kDefinitionPart, kAttributeVersion, kAttributeVersion, r2010},
    {L"ATTRIB", kAttributePart, kAttributeVersion, kAttributeVersion, r2010},
    {L"BLOCK_RECORD", {}, 70, 70, r2007},
    {L"BLOCK_RECORD", {}, 280, 281, r2007},
    {L"BLOCK_RECORD", {}, 310, 310, r2000},
    {L"BLOCK_RECORD", {}, 340, 340, r2000},
    {L"DICTIONARY", {}, 280, 280, r14},
    {L"DICTIONARY", {}, 281, 281, r2000},
    {L"DIMENSION", L"AcDbDimension", 41, 42, r2000},
    {L"DIMENSION", L"AcDbDimension", 71, 75, r2000},
    {L"DIMENSION", L"AcDbDimension", 280, 280, r2010},
    {L"DIMSTYLE", {}, 49, 50, r2007},
    {L"DIMSTYLE", {}, 69, 69, r2007},
    {L"DIMSTYLE", {}, 90, 90, r2007},
    {L"DIMSTYLE", {}, 148, 148, r2000},
    {L"DIMSTYLE", {}, 179, 179, r2000},
    {L"DIMSTYLE", {}, 270, 275, r13},
    {L"DIMSTYLE", {}, 276, 279, r2000},
    {L"DIMSTYLE", {}, 280, 288, r13},
    {L"DIMSTYLE", {}, 289, 289, r2000},
    {L"DIMSTYLE", {}, 290, 292, r2007},
    {L"DIMSTYLE", {}, 294, 296, r2010},
    {L"DIMSTYLE", {}, 340, 340, r13},
    {L"DIMSTYLE", {}, 341, 344, r2000},
    {L"DIMSTYLE", {}, 345, 347, r2007},
    {L"DIMSTYLE", {}, 371, 372, r2000},
    {L"HATCH", {}, 450, 479, r2004},
    {L"IMAGE", {}, 290, 290, r2010},
    {L"LAYER", {}, 290, 290, r2000},
    {L"LAYER", {}, 347, 348, r2007},
    {L"LAYER", {}, 370, 370, r2000},
    {L"LAYER", {}, 390, 390, r2000},
    {L"LAYER", {}, 420, 449, r2004},
    {L"LTYPE", {}, kElementKind, kElementKind, r13},
    {L"LWPOLYLINE", L"AcDbPolyline", 91, 91, r2010},
    {L"MLINESTYLE", {}, 420, 429, r2004},
    {L"MTEXT", L"AcDbMText", 45, 45, r2004},
    {L"MTEXT", L"AcDbMText", 63, 63, r2004},
    {L"MTEXT", L"AcDbMText", 90, 90, r2004},
    {L"MTEXT", L"AcDbMText", 420, 449, r2004},
    {L"VERTEX", {}, 91, 91, r2010},
    {L"WIPEOUT", {}, 290, 290, r2010},
    {L"XRECORD", L"AcDbXrecord", 280, 280, r2000},
};

// clang-format on

CloneFailure notInVersion(const Groups& groups, DrawingVersion version, std::wstring_view why)
{
    std::wstring message = L"Cannot clone a record of type " + groups[0].text()
        + L" into a drawing of version " + nameOf(version) + L": ";
    message += why;
    return {Acad::eInvalidDwgVersion, std::move(message)};
}

// --- what belongs to the drawing, not to the record ----------------------------------------------

std::size_t endOfFrame(const Groups& groups)
{
    const GroupRange body = groups.body();
    return groups.find(code::subclass, body).value_or(body.end);
}

void removeFrame(Groups& groups)
{
    const bool isDimStyle = groups[0].isText(L"DIMSTYLE");
    const int handleCode = isDimStyle ? code::dimStyleHandle : code::handle;
    const std::size_t end = endOfFrame(groups);
    constexpr std::size_t kNewFrame = 2; // handle and owner in the other drawing
    std::vector<Group> kept;
    kept.reserve(groups.size() + kNewFrame);
    bool hasHandle = false;
    bool hasOwner = false;
    bool isInBraces = false;
    bool isDropped = false;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        Group& group = groups[i];
        group.raw = {};
        if (i < end && group.code == handleCode && !hasHandle) {
            hasHandle = true;
            continue;
        }
        if (i < end && group.code == code::owner && !isInBraces && !hasOwner) {
            hasOwner = true;
            continue;
        }
        if (i < end && group.code == code::braces) {
            isInBraces = !isClosingBrace(group);
            // Who refers to a block is known without it, and it names those of the other drawing.
            isDropped = isDropped || group.isText(L"{BLKREFS");
        }
        if (!isDropped) {
            kept.push_back(std::move(group));
        }
        isDropped = isDropped && isInBraces;
    }
    groups = Groups(std::move(kept));
}

// --- to an older version -------------------------------------------------------------------------

bool isTooNew(std::wstring_view type, std::wstring_view part, int groupCode, DrawingVersion version)
{
    return std::any_of(std::begin(kCodesSince), std::end(kCodesSince), [&](const CodesSince& row) {
        return groupCode >= row.first && groupCode <= row.last && version < row.since
            && (row.type.empty() || row.type == type) && (row.part.empty() || row.part == part);
    });
}

// The picture that stands in for an entity whose program is not there.
bool isProxyGraphic(std::wstring_view part, int groupCode)
{
    return part == kEntityMarker && (groupCode == 92 || groupCode == 160 || groupCode == 310);
}

void dropNewerGroups(Groups& groups, DrawingVersion version)
{
    const std::wstring type = groups[0].text();
    const std::size_t end = groups.body().end;
    std::vector<Group> kept;
    kept.reserve(groups.size());
    std::wstring part;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        Group& group = groups[i];
        if (i < end && group.code == code::subclass && part != L"AcDbXrecord") {
            part = group.text();
        }
        if (i == 0 || i >= end
            || (!isTooNew(type, part, group.code, version) && !isProxyGraphic(part, group.code))) {
            kept.push_back(std::move(group));
        }
    }
    groups = Groups(std::move(kept));
}

bool isOfLaterVersions(const Group& group)
{
    const bool isHandle = (group.code >= 320 && group.code < 370)
        || (group.code >= 390 && group.code < 400) || group.code == 480 || group.code == 481;
    return group.code == code::subclass || isHandle;
}

void dropSubclasses(Groups& groups)
{
    const std::size_t end = groups.body().end;
    std::vector<Group> kept;
    kept.reserve(groups.size());
    bool isInBraces = false;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        Group& group = groups[i];
        if (i < end && group.code == code::braces) {
            isInBraces = !isClosingBrace(group);
        } else if (i >= end || (!isInBraces && !isOfLaterVersions(group))) {
            kept.push_back(std::move(group));
        }
    }
    groups = Groups(std::move(kept));
}

// In R2018 the lines of a text that is more than one stand in an object of their own.
CloneFailure dropEmbedded(Groups& groups, DrawingVersion version)
{
    constexpr int kColumns = 71;
    const auto begin = groups.find(code::embeddedObject, groups.all());
    if (!begin || version >= r2018) {
        return {};
    }
    std::size_t end = *begin;
    while (end < groups.size() && groups[end].code < code::firstExtended) {
        ++end;
    }
    const bool isPlain = groups[0].isText(L"MTEXT") && groups.integer(kColumns, {*begin, end}) == 0;
    if (!isPlain) {
        return notInVersion(groups, version, L"it has a text in several lines or columns.");
    }
    groups.erase(*begin, end - *begin);
    return {};
}

bool hasTextOrShape(const Groups& linetype)
{
    return std::any_of(linetype.begin(), linetype.end(), [](const Group& group) {
        return group.code == kElementKind && group.integer() != 0;
    });
}

CloneFailure checkContent(const Groups& groups, const Versions& versions)
{
    const bool isLinetype = groups[0].isText(L"LTYPE");
    if (isLinetype && versions.toOld() && hasTextOrShape(groups)) {
        return notInVersion(groups, versions.to, L"its dashes have texts or shapes.");
    }
    // Up to R14 what a viewport shows stands in its extended data.
    if (groups[0].isText(L"VIEWPORT") && (versions.from < r2000) != (versions.to < r2000)) {
        return notInVersion(groups, versions.to,
                            L"viewports of " + nameOf(versions.from) + L" have another form.");
    }
    constexpr int kElevation = 38;
    if (versions.fromOld() && !versions.toOld() && groups.find(kElevation)) {
        return notInVersion(groups, versions.to, L"it has an elevation of its own.");
    }
    return {};
}

// --- to a newer version --------------------------------------------------------------------------

void addElementKinds(Groups& linetype)
{
    for (std::size_t i = 0; i < linetype.size(); ++i) {
        if (linetype[i].code == kElementLength) {
            linetype.insert(i + 1, Group(kElementKind, 0));
        }
    }
}

void addVersionAndLock(Groups& attribute)
{
    const bool isDefinition = attribute[0].isText(L"ATTDEF");
    const GroupRange part = attribute.subclass(isDefinition ? kDefinitionPart : kAttributePart);
    if (part.begin == part.end || attribute.find(kAttributeVersion, part)) {
        return;
    }
    attribute.insert(part.end, Group(kAttributeVersion, 0));
    attribute.insert(part.begin, Group(kAttributeVersion, 0));
}

void addNewerGroups(Groups& groups, const Versions& versions)
{
    const bool isAttribute = groups[0].isText(L"ATTDEF") || groups[0].isText(L"ATTRIB");
    if (isAttribute && versions.from < r2010 && versions.to >= r2010) {
        addVersionAndLock(groups);
    }
}

// --- both ----------------------------------------------------------------------------------------

CloneFailure checkType(const Groups& groups, const Versions& versions)
{
    if (!groups.isUnderstood() && versions.takesBits) {
        return {};
    }
    const RecordKnowledge* const known = knowledgeOf(toUtf8(groups[0].text()));
    if (known == nullptr || !groups.isUnderstood()) {
        return {Acad::eNotImplementedYet,
                L"Cannot clone a record of type " + groups[0].text()
                    + L": its content is not understood."};
    }
    if (versions.from > known->until || versions.to > known->until) {
        return {Acad::eNotImplementedYet,
                L"Cannot clone a record of type " + groups[0].text()
                    + L": from R2013 on its shape stands in another section of the drawing."};
    }
    // A program that knows more than its version puts newer records into older drawings, too.
    if (versions.to < known->since && versions.to < versions.from) {
        return notInVersion(groups, versions.to, L"that version does not have it.");
    }
    return {};
}

CloneFailure convertVersion(Groups& groups, RecordKind kind, const Versions& versions)
{
    if (CloneFailure failure = checkContent(groups, versions)) {
        return failure;
    }
    if (CloneFailure failure = dropEmbedded(groups, versions.to)) {
        return failure;
    }
    if (versions.fromOld() && !versions.toOld()) {
        if (!addSubclassMarkers(groups, kind)) {
            return notInVersion(groups, versions.to,
                                L"its form of " + nameOf(versions.from) + L" is not understood.");
        }
        if (groups[0].isText(L"LTYPE")) {
            addElementKinds(groups);
        }
    }
    if (versions.to < versions.from) {
        dropNewerGroups(groups, versions.to);
    }
    if (!versions.fromOld() && versions.toOld()) {
        dropSubclasses(groups);
    }
    addNewerGroups(groups, versions);
    return {};
}

} // namespace

CloneFailure convertRecord(Groups& groups, RecordKind kind, const Versions& versions)
{
    if (groups.empty()) {
        return {Acad::eNotImplementedYet, L"Cannot clone a record without a type."};
    }
    if (CloneFailure failure = checkType(groups, versions)) {
        return failure;
    }
    removeFrame(groups);
    return versions.from == versions.to ? CloneFailure() : convertVersion(groups, kind, versions);
}

std::wstring nameOf(DrawingVersion version)
{
    switch (version) {
    case r10:
        return L"R10";
    case r13:
        return L"R13";
    case r14:
        return L"R14";
    case r2000:
        return L"R2000";
    case r2004:
        return L"R2004";
    case r2007:
        return L"R2007";
    case r2010:
        return L"R2010";
    case r2013:
        return L"R2013";
    case r2018:
        return L"R2018";
    case unknown:
    case r12:
        break;
    }
    return L"R12";
}

} // namespace corma::host
