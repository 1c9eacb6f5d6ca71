#include "host/new_records.h"

#include <cstddef>

namespace corma::host {

namespace {

struct LaterGroup
{
    const wchar_t* subclass;
    int code;
    DrawingVersion since;
    int most; // how many of them are what the row means; the others are something else
};

constexpr int kAll = 100;

constexpr LaterGroup kLaterGroups[] = {
    {L"AcDbDictionary", 281, DrawingVersion::r2000, 1}, // cloning
    {L"AcDbXrecord", 280, DrawingVersion::r2000, 1}, // cloning; further ones are data
    {L"AcDbLayerTableRecord", 370, DrawingVersion::r2000, kAll}, // line weight
    {L"AcDbLayerTableRecord", 390, DrawingVersion::r2000, kAll}, // plot style
    {L"AcDbLayerTableRecord", 347, DrawingVersion::r2007, kAll}, // material
    {L"AcDbAttribute", 280, DrawingVersion::r2010, kAll}, // version, lock of the position
    {L"AcDbAttributeDefinition", 280, DrawingVersion::r2010, kAll},
    {kEntityMarker, 410, DrawingVersion::r2000, kAll}, // layout
};

void removeAll(Groups& groups, const LaterGroup& later)
{
    for (int i = 0; i < later.most; ++i) {
        const GroupRange own = groups.subclass(later.subclass);
        if (!groups.find(later.code, own)) {
            return;
        }
        groups.remove(later.code, own);
    }
}

bool isMarker(const Groups& groups, std::wstring_view name)
{
    for (const Group& group : groups) {
        if (group.code == code::subclass && group.isText(name)) {
            return true;
        }
    }
    return false;
}

// R12 knows neither subclasses nor owners.
void removeMarkers(Groups& groups)
{
    for (std::size_t i = groups.size(); i > 0; --i) {
        if (groups[i - 1].code == code::subclass) {
            groups.erase(i - 1);
        }
    }
}

} // namespace

void fitToVersion(Groups& groups, DrawingVersion version)
{
    for (const LaterGroup& later : kLaterGroups) {
        if (version < later.since && isMarker(groups, later.subclass)) {
            removeAll(groups, later);
        }
    }
    if (version < DrawingVersion::r13) {
        removeMarkers(groups);
    }
}

void setReactor(Groups& groups, Handle former, Handle dictionary)
{
    constexpr const wchar_t* kReactors = L"ACAD_REACTORS";
    constexpr const wchar_t* kOpening = L"{ACAD_REACTORS";
    GroupRange reactors = groups.braces(kReactors);
    if (reactors.begin == 0 || !groups[reactors.begin - 1].isText(kOpening)) {
        const auto handle = groups.find(code::handle);
        groups.insert(handle ? *handle + 1 : 1,
                      std::vector<Group> {{code::braces, kOpening},
                                          {code::owner, dictionary},
                                          {code::braces, L"}"}});
        return;
    }
    for (std::size_t i = reactors.end; i > reactors.begin; --i) {
        const Handle known = groups[i - 1].handle();
        if (known == former || known == dictionary) {
            groups.erase(i - 1);
            --reactors.end;
        }
    }
    groups.insert(reactors.end, Group(code::owner, dictionary));
}

} // namespace corma::host
