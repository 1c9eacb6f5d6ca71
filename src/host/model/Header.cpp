#include "host/model/Header.h"

#include <array>

namespace corma::host {

namespace {

// In order of age.
constexpr std::array kVersions
    = {DrawingVersion::r10,   DrawingVersion::r12,   DrawingVersion::r13,   DrawingVersion::r14,
       DrawingVersion::r2000, DrawingVersion::r2004, DrawingVersion::r2007, DrawingVersion::r2010,
       DrawingVersion::r2013, DrawingVersion::r2018};

// The version that a text such as "AC1015" stands for: of one that has no row the next older one,
// whose rules it keeps.
DrawingVersion versionFrom(std::wstring_view text)
{
    constexpr std::wstring_view kPrefix = L"AC";
    constexpr std::size_t kDigits = 4;
    if (!text.starts_with(kPrefix) || text.size() != kPrefix.size() + kDigits) {
        return DrawingVersion::unknown;
    }
    int number = 0;
    for (const wchar_t digit : text.substr(kPrefix.size())) {
        if (digit < L'0' || digit > L'9') {
            return DrawingVersion::unknown;
        }
        number = 10 * number + (digit - L'0');
    }
    auto version = DrawingVersion::unknown;
    for (const DrawingVersion known : kVersions) {
        if (static_cast<int>(known) <= number) {
            version = known;
        }
    }
    return version;
}

} // namespace

Store::Header::Header(Groups all)
    : groups(std::move(all))
{
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code == code::variable) {
            positions.emplace(groups[i].text(), i);
        }
    }
}

GroupRange Store::Header::rangeOf(std::wstring_view name) const
{
    const auto found = positions.find(std::wstring(name));
    if (found == positions.end()) {
        return {};
    }
    GroupRange range {found->second + 1, found->second + 1};
    while (range.end < groups.size() && groups[range.end].code != code::variable) {
        ++range.end;
    }
    return range;
}

void Store::Header::set(std::wstring_view name, const Group& value)
{
    const GroupRange range = rangeOf(name);
    if (const auto at = groups.find(value.code, range)) {
        if (groups[*at].value != value.value) {
            groups[*at].set(value.value);
        }
    } else if (range.begin != 0) {
        groups.insert(range.end, Group(value.code, value.value));
        *this = Header(std::move(groups)); // what follows has moved
    } else {
        positions.emplace(name, groups.size());
        groups.add(Group(code::variable, GroupValue(std::wstring(name))));
        groups.add(Group(value.code, value.value));
    }
}

Store::Header& Store::header() const
{
    if (!m_header) {
        const AcDbStub* const stub = m_structure.header;
        m_header = std::make_unique<Header>(stub == nullptr ? Groups() : groupsOf(*stub));
    }
    return *m_header;
}

void Store::readVersion()
{
    const Groups version = variable(L"$ACADVER");
    m_versionText = version.text(1, version.all());
    m_version = versionFrom(m_versionText);
}

Groups Store::variable(std::wstring_view name) const
{
    const Header& variables = header();
    const GroupRange range = variables.rangeOf(name);
    Groups values;
    for (std::size_t i = range.begin; i < range.end; ++i) {
        values.add(variables.groups[i]);
    }
    return values;
}

Groups Store::headerGroups() const
{
    return header().groups;
}

void Store::setVariable(std::wstring_view name, const Group& value)
{
    if (m_structure.header == nullptr) {
        return;
    }
    header().set(name, value);
    markChanged(*m_structure.header);
}

} // namespace corma::host
