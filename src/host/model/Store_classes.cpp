// How a store's drawing describes the types that only some programs know.

#include "host/model/Store.h"
#include "platform/text.h"

namespace corma::host {

namespace {

constexpr int kClassType = 1; // the name of the records that a CLASS describes

} // namespace

Groups Store::classOf(std::string_view type) const
{
    const AcDbStub* at = m_structure.classesBegin;
    const std::wstring wanted = fromUtf8(type);
    while (at != nullptr && at->type != RecordType::endSection) {
        if (nameOf(at->type) == "CLASS" && textOf(*at, kClassType) == wanted) {
            return groupsOf(*at);
        }
        at = at->next;
    }
    return {};
}

void Store::addClass(Groups groups)
{
    if (m_version < DrawingVersion::r13 || m_first == nullptr) {
        return;
    }
    AcDbStub* place = m_structure.classesBegin;
    if (place != nullptr) {
        while (place != nullptr && place->type != RecordType::endSection) {
            place = place->next;
        }
    } else {
        place = m_structure.header == nullptr ? m_first : m_structure.header->next;
        while (place != nullptr
               && (place->type == RecordType::endSection || place->type == RecordType::none)) {
            place = place->next; // the end of the header, or what stands ahead of all sections
        }
        m_structure.classesBegin = insertStructure(
            place, RecordKind::structure, {{code::type, L"SECTION"}, {code::name, L"CLASSES"}});
        place = insertStructure(place, RecordKind::structure, {{code::type, L"ENDSEC"}});
    }
    insertStructure(place, RecordKind::structure, {groups.begin(), groups.end()});
}

} // namespace corma::host
