#include "host/dwg/SampleNames.h"

#include "host/model/Store.h"

#include <optional>

namespace corma::host::dwg {

namespace {

std::optional<TableKind> tableOf(std::string_view type)
{
    for (std::size_t i = 0; i < kTableCount; ++i) {
        const auto kind = static_cast<TableKind>(i);
        if (host::nameOf(kind) == type) {
            return kind;
        }
    }
    return std::nullopt;
}

class NoNames : public Names
{
public:
    [[nodiscard]] std::wstring nameOf(Handle /*entry*/) const override { return {}; }

    [[nodiscard]] Handle find(TableKind /*table*/, std::wstring_view /*name*/) const override
    {
        return Handle::none;
    }
};

} // namespace

SampleNames::SampleNames(const SampleFile& file)
{
    file.eachRecord([&](std::string_view bytes, Handle handle) {
        const auto record = Record::read(bytes, file.form, file.types);
        const auto table = record ? tableOf(file.types.find(record->type()).name) : std::nullopt;
        if (table) {
            Groups groups;
            record->toGroups(NoNames(), groups);
            const std::wstring name(groups.text(code::name, groups.body()));
            m_names.emplace(handle, name);
            m_handles.emplace(std::pair(*table, foldedName(name)), handle);
        }
    });
}

std::wstring SampleNames::nameOf(Handle entry) const
{
    const auto found = m_names.find(entry);
    return found == m_names.end() ? std::wstring() : found->second;
}

Handle SampleNames::find(TableKind table, std::wstring_view name) const
{
    const auto found = m_handles.find({table, foldedName(name)});
    return found == m_handles.end() ? Handle::none : found->second;
}

Surroundings surroundingsOf(const Record& record, const Groups& groups)
{
    constexpr int kReference = 331;
    Surroundings around;
    if (const auto owned = record.owned()) {
        around.owned = owned->members;
        if (around.owned.empty() && owned->first != Handle::none) {
            around.owned = {owned->first};
            if (owned->last != owned->first) {
                around.owned.push_back(owned->last);
            }
        }
        around.begin = owned->begin;
        around.end = owned->end;
        around.first = owned->firstSpecial;
        around.second = owned->secondSpecial;
    }
    const GroupRange references = groups.braces(L"BLKREFS");
    for (std::size_t i = references.begin; i < references.end; ++i) {
        if (groups[i].code == kReference) {
            around.references.push_back(groups[i].handle());
        }
    }
    return around;
}

} // namespace corma::host::dwg
