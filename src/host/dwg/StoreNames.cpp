#include "host/dwg/StoreNames.h"

namespace corma::host::dwg {

std::wstring StoreNames::nameOf(Handle entry) const
{
    const AcDbStub* const stub = m_store->find(entry);
    if (stub == nullptr || stub->kind != RecordKind::tableEntry) {
        return {};
    }
    if (stub->isChanged) {
        return m_store->textOf(*stub, code::name);
    }
    const auto [known, isNew] = m_names.try_emplace(entry);
    if (isNew) {
        // Reading the entry asks for the names of others, which may move what is held here.
        std::wstring name = m_store->textOf(*stub, code::name);
        return m_names[entry] = std::move(name);
    }
    return known->second;
}

Handle StoreNames::find(TableKind table, std::wstring_view name) const
{
    const AcDbStub* const entry = m_store->findEntry(table, name);
    return entry == nullptr ? Handle::none : entry->handle;
}

} // namespace corma::host::dwg
