#pragma once

#include "host/dwg/group_fields.h"

#include <string>
#include <unordered_map>

namespace corma::host::dwg {

/// The names of the tables of a drawing. Those that stand in the file are read once.
class StoreNames : public Names
{
public:
    explicit StoreNames(Store& store)
        : m_store(&store)
    {
    }

    [[nodiscard]] std::wstring nameOf(Handle entry) const override;
    [[nodiscard]] Handle find(TableKind table, std::wstring_view name) const override;

private:
    Store* m_store;
    mutable std::unordered_map<Handle, std::wstring> m_names; // of unchanged entries
};

} // namespace corma::host::dwg
