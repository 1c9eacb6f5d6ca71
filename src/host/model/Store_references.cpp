// Block references by the name of their block.

#include "host/acdb_object.h"
#include "host/model/References.h"

#include <unordered_set>

namespace corma::host {

void Store::noteReference(AcDbStub& changed)
{
    if (!m_references) {
        return;
    }
    if (m_references->changed.size() > m_count) {
        m_references.reset(); // going over the drawing again is cheaper
    } else if (m_references->changed.empty() || m_references->changed.back() != &changed) {
        m_references->changed.push_back(&changed);
    }
}

std::wstring Store::blockNameOf(const AcDbStub& reference) const
{
    if (reference.resident == nullptr) {
        return foldedName(textOf(reference, code::name));
    }
    const Groups& groups = reference.resident->groups();
    return foldedName(groups.text(code::name, groups.body()));
}

Store::References& Store::references()
{
    if (!m_references) {
        m_references = std::make_unique<References>();
        for (AcDbStub* at = m_first; at != nullptr; at = at->next) {
            if (at->kind == RecordKind::entity && at->type == RecordType::insert) {
                m_references->byName[blockNameOf(*at)].push_back(at);
            }
        }
    }
    for (AcDbStub* const stub : m_references->changed) {
        m_references->byName[blockNameOf(*stub)].push_back(stub);
    }
    m_references->changed.clear();
    return *m_references;
}

std::vector<AcDbStub*> Store::referencesOf(std::wstring_view blockName)
{
    const std::wstring name = foldedName(blockName);
    std::vector<AcDbStub*>& known = references().byName[name];
    // One that changed may bear another name now, or be entered twice.
    std::unordered_set<const AcDbStub*> met;
    std::erase_if(known, [&](const AcDbStub* stub) {
        return stub->isChanged && (!met.insert(stub).second || blockNameOf(*stub) != name);
    });
    std::vector<AcDbStub*> found;
    for (AcDbStub* const stub : known) {
        if (!stub->isErased) {
            found.push_back(stub);
        }
    }
    return found;
}

} // namespace corma::host
