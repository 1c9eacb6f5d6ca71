#pragma once

#include "host/dwg/SampleRecords.h"
#include "host/dwg/group_fields.h"

#include <map>
#include <string>
#include <utility>

namespace corma::host::dwg {

/// The names of the entries of a real drawing's tables.
class SampleNames : public Names
{
public:
    explicit SampleNames(const SampleFile& file);

    [[nodiscard]] std::wstring nameOf(Handle entry) const override;
    [[nodiscard]] Handle find(TableKind table, std::wstring_view name) const override;

private:
    std::map<Handle, std::wstring> m_names;
    std::map<std::pair<TableKind, std::wstring>, Handle> m_handles;
};

/// What a record says of its surroundings, as a drawing would when it writes the record anew.
Surroundings surroundingsOf(const Record& record, const Groups& groups);

} // namespace corma::host::dwg
