#include "host/dwg/DwgFormat.h"

#include "host/dwg/classes.h"
#include "host/dwg/dwg_writer.h"
#include "host/dwg/header_variables.h"

namespace corma::host::dwg {

DwgFormat::DwgFormat(std::unique_ptr<Container> container, FileForm form, TypeTable types,
                     Store& store, BlockPlaces places)
    : m_container(std::move(container))
    , m_form(std::move(form))
    , m_types(std::move(types))
    , m_store(&store)
    , m_names(store)
    , m_blockPlaces(std::move(places))
{
}

std::string_view DwgFormat::bytesOf(const AcDbStub& stub) const
{
    return m_container->parts().objects.substr(stub.offset, stub.size);
}

std::optional<Record> DwgFormat::recordOf(const AcDbStub& stub) const
{
    const bool isRecord = stub.size != 0 && stub.kind != RecordKind::header && !isClass(stub);
    return isRecord ? Record::read(bytesOf(stub), m_form, m_types) : std::nullopt;
}

bool DwgFormat::isClass(const AcDbStub& stub) const
{
    return stub.kind == RecordKind::structure && m_store->nameOf(stub.type) == "CLASS";
}

void DwgFormat::decode(const AcDbStub& stub, Groups& groups) const
{
    groups.clear();
    if (stub.kind == RecordKind::header) {
        decodeHeader(groups);
    } else if (isClass(stub)) {
        groups = classToGroups(m_types.classes()[stub.offset], m_form.version);
    } else if (const auto record = recordOf(stub)) {
        record->toGroups(m_names, groups);
        if (stub.kind == RecordKind::blockBegin) {
            addBlockFacts(*record, groups);
            numberName(record->frame().owner.target, groups);
        } else if (stub.type == RecordType::blockRecord) {
            numberName(stub.handle, groups);
        }
    }
}

// "*D" is "*D7" in groups for a block that stands at place 7.
void DwgFormat::numberName(Handle block, Groups& groups) const
{
    constexpr int kSecondName = 3;
    const auto place = m_blockPlaces.find(block);
    if (place == m_blockPlaces.end()) {
        return;
    }
    for (Group& group : groups) {
        const bool isName = group.code == code::name || group.code == kSecondName;
        if (isName && group.text().starts_with(L'*')) {
            group.set(withoutNumber(group.text()) + std::to_wstring(place->second));
        }
    }
}

void DwgFormat::decodeHeader(Groups& groups) const
{
    groups.add(Group(code::type, L"SECTION"));
    groups.add(Group(code::name, L"HEADER"));
    if (const auto variables = HeaderVariables::read(m_container->parts().header, m_form)) {
        variables->toGroups(m_names, groups);
    }
}

// In groups a block says of itself what its record says in bits.
void DwgFormat::addBlockFacts(const Record& block, Groups& groups) const
{
    constexpr int kSecondName = 3;
    constexpr int kPath = 1;
    constexpr int kDescription = 4;
    constexpr int kBase = 10;
    const AcDbStub* const owner = m_store->find(block.frame().owner.target);
    const auto record = owner == nullptr ? std::nullopt : recordOf(*owner);
    const auto facts = record ? record->blockFacts() : std::nullopt;
    const auto name = groups.find(code::name, groups.subclass(L"AcDbBlockBegin"));
    if (!facts || !name) {
        return;
    }
    std::vector<Group> more = {{code::flags, int {facts->flags}},
                               {kBase, facts->base.x},
                               {kBase + 10, facts->base.y},
                               {kBase + 20, facts->base.z},
                               {kSecondName, GroupValue(groups[*name].text())},
                               {kPath, GroupValue(facts->path)}};
    if (!facts->description.empty()) {
        more.emplace_back(kDescription, GroupValue(facts->description));
    }
    groups.insert(*name + 1, std::move(more));
}

std::optional<BitsForm> DwgFormat::bitsForm() const
{
    return BitsForm {m_form.version, m_form.hasUnicode() ? 0 : m_form.codePage};
}

WriteResult DwgFormat::write(const Store& store, const std::wstring& path) const
{
    return writeDwg(store, *m_container, path);
}

} // namespace corma::host::dwg
