#include "host/clone/references.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace corma::host {

namespace {

struct NameCode
{
    std::wstring_view type;
    int code;
    TableKind table;
    std::wstring_view subclass; // empty: any
};

// clang-format off
constexpr NameCode kNameCodes[] = {
    {L"ACAD_TABLE",             2, TableKind::blockRecord, L"AcDbBlockReference"},
    {L"ACAD_TABLE",             7, TableKind::textStyle,   L"AcDbTable"},
    {L"ARCALIGNEDTEXT",         7, TableKind::textStyle,   {}},
    {L"ARC_DIMENSION",          2, TableKind::blockRecord, L"AcDbDimension"},
    {L"ARC_DIMENSION",          3, TableKind::dimStyle,    L"AcDbDimension"},
    {L"ATTDEF",                 7, TableKind::textStyle,   L"AcDbText"},
    {L"ATTRIB",                 7, TableKind::textStyle,   L"AcDbText"},
    {L"DIMENSION",              2, TableKind::blockRecord, L"AcDbDimension"},
    {L"DIMENSION",              3, TableKind::dimStyle,    L"AcDbDimension"},
    {L"DIMSTYLE",               5, TableKind::blockRecord, L"AcDbDimStyleTableRecord"},
    {L"DIMSTYLE",               6, TableKind::blockRecord, L"AcDbDimStyleTableRecord"},
    {L"DIMSTYLE",               7, TableKind::blockRecord, L"AcDbDimStyleTableRecord"},
    {L"INSERT",                 2, TableKind::blockRecord, {}},
    {L"LARGE_RADIAL_DIMENSION", 2, TableKind::blockRecord, L"AcDbDimension"},
    {L"LARGE_RADIAL_DIMENSION", 3, TableKind::dimStyle,    L"AcDbDimension"},
    {L"LAYER",                  6, TableKind::linetype,    {}},
    {L"LEADER",                 3, TableKind::dimStyle,    L"AcDbLeader"},
    {L"MLINESTYLE",             6, TableKind::linetype,    {}},
    {L"MTEXT",                  7, TableKind::textStyle,   L"AcDbMText"},
    {L"RTEXT",                  7, TableKind::textStyle,   {}},
    {L"TABLESTYLE",             7, TableKind::textStyle,   {}},
    {L"TEXT",                   7, TableKind::textStyle,   L"AcDbText"},
    {L"TOLERANCE",              3, TableKind::dimStyle,    L"AcDbFcf"},
};
// clang-format on

constexpr std::wstring_view kXrecordPart = L"AcDbXrecord";
constexpr std::wstring_view kSortPart = L"AcDbSortentsTable";
constexpr int kExtendedLayer = 1003;

std::optional<Reference::Kind> kindOfHandle(int groupCode)
{
    // 320 to 329 are any handles: they name nothing that can be found here.
    if (groupCode >= 330 && groupCode < 340) {
        return Reference::Kind::softPointer;
    }
    if ((groupCode >= 340 && groupCode < 350) || (groupCode >= 390 && groupCode < 400)
        || groupCode == 480 || groupCode == 481) {
        return Reference::Kind::hardPointer;
    }
    if (groupCode >= 350 && groupCode < 370) {
        return Reference::Kind::owned;
    }
    return std::nullopt;
}

bool isGraphical(RecordKind kind)
{
    return kind == RecordKind::entity || kind == RecordKind::subEntity
        || kind == RecordKind::blockBegin || kind == RecordKind::blockEnd;
}

// Walks over the groups of a record and knows in which part of it each one stands.
class ReferenceFinder
{
public:
    ReferenceFinder(const Groups& groups, RecordKind kind)
        : m_groups(groups)
        , m_type(groups.empty() ? std::wstring_view() : groups[0].text())
        , m_isGraphical(isGraphical(kind))
    {
    }

    std::vector<Reference> all()
    {
        const std::size_t bodyEnd = m_groups.body().end;
        for (m_at = 1; m_at < bodyEnd; ++m_at) {
            inBody(m_groups[m_at]);
        }
        for (m_at = bodyEnd; m_at < m_groups.size(); ++m_at) {
            behindBody(m_groups[m_at]);
        }
        return std::move(m_found);
    }

private:
    void inBody(const Group& group)
    {
        if (group.code == code::subclass && m_part != kXrecordPart) {
            m_part = group.text();
            m_isAhead = false;
        } else if (group.code == code::braces && m_isAhead) {
            m_isInReactors = isReactors(group);
            m_isInBraces = !isClosingBrace(group);
        } else if (const auto table = tableNamedBy(group.code)) {
            m_found.push_back({m_at, Reference::Kind::name, *table});
        } else {
            addHandle(group);
        }
    }

    void addHandle(const Group& group)
    {
        if (m_isInReactors) {
            add(Reference::Kind::reactor);
        } else if (group.code == code::owner && m_isAhead && !m_isInBraces && !m_hasOwner) {
            m_hasOwner = true;
        } else if (const auto kind = kindOfHandle(group.code)) {
            add(*kind);
        } else if (group.code == code::handle && m_part == kSortPart) {
            add(Reference::Kind::sortHandle);
        }
    }

    void behindBody(const Group& group)
    {
        if (group.code == code::application) {
            m_found.push_back({m_at, Reference::Kind::name, TableKind::appId});
        } else if (group.code == kExtendedLayer) {
            m_found.push_back({m_at, Reference::Kind::name, TableKind::layer});
        } else if (group.code == code::extendedHandle) {
            add(Reference::Kind::softPointer);
        } else if (const auto kind = kindOfHandle(group.code)) {
            add(*kind); // of an embedded object
        }
    }

    void add(Reference::Kind kind) { m_found.push_back({m_at, kind}); }

    // A record without markers is one part.
    [[nodiscard]] bool isIn(std::wstring_view part) const
    {
        return part.empty() || m_part == part || (m_isAhead && m_part.empty());
    }

    [[nodiscard]] std::optional<TableKind> tableNamedBy(int groupCode) const
    {
        if (m_isGraphical && isIn(kEntityMarker)) {
            if (groupCode == code::layer) {
                return TableKind::layer;
            }
            if (groupCode == code::linetype) {
                return TableKind::linetype;
            }
        }
        const auto* const row
            = std::find_if(std::begin(kNameCodes), std::end(kNameCodes), [&](const NameCode& name) {
                  return name.code == groupCode && name.type == m_type && isIn(name.subclass);
              });
        return row == std::end(kNameCodes) ? std::nullopt : std::optional(row->table);
    }

    const Groups& m_groups;
    std::wstring_view m_type;
    bool m_isGraphical;
    std::size_t m_at = 0;
    std::wstring_view m_part;
    bool m_isAhead = true; // of the first subclass
    bool m_isInBraces = false;
    bool m_isInReactors = false;
    bool m_hasOwner = false;
    std::vector<Reference> m_found;
};

} // namespace

std::vector<Reference> referencesOf(const Groups& groups, RecordKind kind)
{
    return ReferenceFinder(groups, kind).all();
}

std::wstring nameIn(const Group& group)
{
    return std::holds_alternative<Handle>(group.value) ? toText(group.handle()) : group.text();
}

bool isReactors(const Group& group)
{
    return group.code == code::braces && group.isText(L"{ACAD_REACTORS");
}

bool isExtensionDictionary(const Group& group)
{
    return group.code == code::braces && group.isText(L"{ACAD_XDICTIONARY");
}

bool isClosingBrace(const Group& group)
{
    return group.code == code::braces && group.text().starts_with(L'}');
}

} // namespace corma::host
