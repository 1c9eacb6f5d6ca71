#include "host/dwg/dwg_reader.h"

#include "host/dwg/Container.h"
#include "host/dwg/DwgFormat.h"
#include "host/dwg/Record.h"
#include "host/dwg/classes.h"
#include "host/dwg/file_form.h"
#include "host/dwg/header_variables.h"
#include "host/dwg/object_map.h"
#include "host/dwg/release.h"

#include <algorithm>
#include <array>
#include <limits>

namespace corma::host::dwg {

namespace {

/// A record of the file that is not yet a record of the drawing, or is one already.
struct Found
{
    Handle handle = Handle::none;
    std::uint64_t offset = 0;
    std::uint32_t size = 0;
    unsigned type = 0;
    AcDbStub* stub = nullptr;
};

/// What a number of a type means in the drawing.
struct KnownType
{
    RecordType type = RecordType::none;
    bool isEntity = false;
    bool isKnown = false; // the other two were looked up
};

/// Makes the records of a drawing in the order that a DXF file of it has, since that is how the
/// model knows them: tables, blocks with what is in them, entities, objects. A record that nothing
/// leads to goes along as bits.
class StructureReader
{
public:
    StructureReader(const Parts& parts, const FileForm& form, const TypeTable& types, Store& store)
        : m_parts(parts)
        , m_form(form)
        , m_types(types)
        , m_store(store)
    {
    }

    std::optional<ReadResult> findRecords(const std::wstring& path);
    Store::Structure read(const RootHandles& roots);

    DwgFormat::BlockPlaces takeBlockPlaces() { return std::move(m_blockPlaces); }

private:
    using Kind = RecordKind;

    Found* find(Handle handle);
    [[nodiscard]] std::optional<Record> recordOf(const Found& found) const;
    const KnownType& lookUpType(unsigned number);

    const KnownType& typeOf(unsigned number)
    {
        const bool isKnown = number < m_knownTypes.size() && m_knownTypes[number].isKnown;
        return isKnown ? m_knownTypes[number] : lookUpType(number);
    }

    AcDbStub* append(Found& found, Kind kind, AcDbStub* container);
    AcDbStub* appendImplied(Kind kind, RecordType type);
    void addHeader();
    void addClasses();
    void addTables(const RootHandles& roots);
    void addTable(TableKind kind, Handle control);
    void addBlocks();
    void addBlock(AcDbStub& record);
    void addMembers(const Owned& owned, AcDbStub* container, bool isPaperSpace);
    void addEntity(Found& found, AcDbStub* container, bool isPaperSpace);
    void addSubEntities(const Found& owner, AcDbStub* stub);
    [[nodiscard]] Handle nextOf(const Found& found) const;
    Handle readNext(const RecordHead& head);
    void addSpaces();
    void addObjects(Handle root);

    const Parts& m_parts;
    const FileForm& m_form;
    const TypeTable& m_types;
    Store& m_store;
    Store::Structure m_structure;
    std::vector<Found> m_found; // by handle
    std::vector<Handle> m_next; // up to R2000, in the same order: the entity behind each
    std::size_t m_foundLast = 0; // the position that was found last
    std::vector<KnownType> m_knownTypes; // by number

    DwgFormat::BlockPlaces m_blockPlaces;
    Handle m_modelRecord = Handle::none;
    Handle m_paperRecord = Handle::none;

    // Those whose entities have a section of their own.
    std::optional<Owned> m_modelSpace;
    std::optional<Owned> m_paperSpace;
};

// --- records -------------------------------------------------------------------------------------

std::optional<ReadResult> StructureReader::findRecords(const std::wstring& path)
{
    auto places = decodeObjectMap(m_parts.map);
    if (!places) {
        return damage(path, 0, L"the object map is wrong or has a wrong checksum");
    }
    const auto byHandle
        = [](const ObjectPlace& a, const ObjectPlace& b) { return a.handle < b.handle; };
    if (!std::is_sorted(places->begin(), places->end(), byHandle)) {
        std::stable_sort(places->begin(), places->end(), byHandle);
    }
    m_found.reserve(places->size());
    m_next.reserve(m_form.version <= DrawingVersion::r2000 ? places->size() : 0);
    for (const ObjectPlace& place : *places) {
        const std::string_view bytes = place.offset < m_parts.objects.size()
            ? m_parts.objects.substr(place.offset)
            : std::string_view();
        const auto head = readHead(bytes, m_form.version);
        if (!head || head->handle != place.handle
            || head->size > std::numeric_limits<std::uint32_t>::max()) {
            return damage(path, place.offset,
                          L"the object " + toText(place.handle)
                              + (head ? L" has another handle" : L" has a wrong checksum"));
        }
        m_found.push_back(
            {place.handle, place.offset, static_cast<std::uint32_t>(head->size), head->type});
        if (m_form.version <= DrawingVersion::r2000) {
            m_next.push_back(readNext(*head));
        }
    }
    return std::nullopt;
}

// Each record is looked into once, while it is near.
Handle StructureReader::readNext(const RecordHead& head)
{
    return typeOf(head.type).isEntity ? nextInChain(head, m_form.version) : Handle::none;
}

// What is looked for mostly stands a little behind what was found last.
Found* StructureReader::find(Handle handle)
{
    const auto isBefore = [](const Found& found, Handle wanted) { return found.handle < wanted; };
    auto begin = m_found.begin();
    auto end = m_found.end();
    if (m_foundLast < m_found.size() && m_found[m_foundLast].handle < handle) {
        begin += static_cast<std::ptrdiff_t>(m_foundLast) + 1;
        for (std::ptrdiff_t step = 1; step < end - begin; step *= 2) {
            if (!isBefore(begin[step - 1], handle)) {
                end = begin + step;
                break;
            }
            begin += step;
        }
    }
    const auto at = std::lower_bound(begin, end, handle, isBefore);
    if (at == m_found.end() || at->handle != handle) {
        return nullptr;
    }
    m_foundLast = static_cast<std::size_t>(at - m_found.begin());
    return &*at;
}

std::optional<Record> StructureReader::recordOf(const Found& found) const
{
    return Record::peek(m_parts.objects.substr(found.offset, found.size), m_form, m_types);
}

const KnownType& StructureReader::lookUpType(unsigned number)
{
    if (number >= m_knownTypes.size()) {
        m_knownTypes.resize(std::size_t {number} + 1);
    }
    const TypeInfo info = m_types.find(number);
    m_knownTypes[number] = {m_store.typeNamed(info.name), info.isEntity, true};
    return m_knownTypes[number];
}

AcDbStub* StructureReader::append(Found& found, Kind kind, AcDbStub* container)
{
    AcDbStub* const stub = m_store.append(kind, typeOf(found.type).type, found.offset, found.size);
    stub->container = container;
    m_store.giveHandle(*stub, found.handle);
    found.stub = stub;
    return stub;
}

AcDbStub* StructureReader::appendImplied(Kind kind, RecordType type)
{
    AcDbStub* const stub = m_store.append(kind, type, 0, 0);
    stub->isImplied = true;
    return stub;
}

// --- structure -----------------------------------------------------------------------------------

Store::Structure StructureReader::read(const RootHandles& roots)
{
    m_store.reserve(m_found.size());
    addHeader();
    addClasses();
    addTables(roots);
    addBlocks();
    addSpaces();
    addObjects(roots.namedObjects);
    m_structure.fileEnd = appendImplied(Kind::structure, RecordType::endOfFile);
    return std::move(m_structure);
}

void StructureReader::addHeader()
{
    m_structure.header = m_store.append(Kind::header, RecordType::section, 0,
                                        static_cast<std::uint32_t>(m_parts.header.size()));
}

void StructureReader::addClasses()
{
    AcDbStub* const begin = appendImplied(Kind::structure, RecordType::section);
    m_structure.classesBegin = begin;
    const RecordType type = m_store.typeNamed("CLASS");
    for (std::size_t i = 0; i < m_types.classes().size(); ++i) {
        m_store.append(Kind::structure, type, i, 1);
    }
    appendImplied(Kind::structure, RecordType::endSection);
}

void StructureReader::addTables(const RootHandles& roots)
{
    appendImplied(Kind::structure, RecordType::section);
    const std::array<std::pair<TableKind, Handle>, kTableCount> controls = {{
        {TableKind::viewport, roots.windows},
        {TableKind::linetype, roots.linetypes},
        {TableKind::layer, roots.layers},
        {TableKind::textStyle, roots.textStyles},
        {TableKind::view, roots.views},
        {TableKind::ucs, roots.coordinateSystems},
        {TableKind::appId, roots.applications},
        {TableKind::dimStyle, roots.dimStyles},
        {TableKind::blockRecord, roots.blocks},
    }};
    for (const auto& [kind, control] : controls) {
        addTable(kind, control);
    }
    m_structure.tablesEnd = appendImplied(Kind::structure, RecordType::endSection);
}

void StructureReader::addTable(TableKind kind, Handle control)
{
    Found* const found = find(control);
    const auto record
        = found == nullptr || found->stub != nullptr ? std::nullopt : recordOf(*found);
    const auto owned = record ? record->owned() : std::nullopt;
    if (!owned) {
        return;
    }
    Table& table = m_structure.tables[static_cast<std::size_t>(kind)];
    table.head = append(*found, Kind::table, nullptr);
    const auto add = [&](Handle handle) {
        Found* const entry = find(handle);
        if (entry != nullptr && entry->stub == nullptr) {
            append(*entry, Kind::tableEntry, table.head);
        }
    };
    add(owned->firstSpecial);
    add(owned->secondSpecial);
    std::for_each(owned->members.begin(), owned->members.end(), add);
    table.end = appendImplied(Kind::structure, RecordType::endTable);
    if (kind == kBlockTable) {
        m_modelRecord = owned->firstSpecial;
        m_paperRecord = owned->secondSpecial;
        for (std::size_t place = 0; place < owned->members.size(); ++place) {
            m_blockPlaces.emplace(owned->members[place], place);
        }
    }
}

void StructureReader::addBlocks()
{
    appendImplied(Kind::structure, RecordType::section);
    const AcDbStub* const head = m_structure.tables[static_cast<std::size_t>(kBlockTable)].head;
    for (AcDbStub* at = head == nullptr ? nullptr : head->next;
         at != nullptr && at->kind == Kind::tableEntry; at = at->next) {
        addBlock(*at);
    }
    m_structure.blocksEnd = appendImplied(Kind::structure, RecordType::endSection);
}

void StructureReader::addBlock(AcDbStub& record)
{
    const auto read = recordOf(*find(record.handle));
    const auto owned = read ? read->owned() : std::nullopt;
    Found* const begin = owned ? find(owned->begin) : nullptr;
    if (begin == nullptr || begin->stub != nullptr) {
        return;
    }
    Block block;
    block.record = &record;
    block.begin = append(*begin, Kind::blockBegin, nullptr);
    if (record.handle == m_modelRecord) {
        m_modelSpace = owned;
    } else if (record.handle == m_paperRecord) {
        m_paperSpace = owned;
    } else {
        addMembers(*owned, block.begin, false);
    }
    Found* const end = find(owned->end);
    if (end != nullptr && end->stub == nullptr) {
        block.end = append(*end, Kind::blockEnd, nullptr);
    } else {
        block.end = appendImplied(Kind::blockEnd, RecordType::blockEnd);
    }
    m_structure.blocks.push_back(std::move(block));
}

void StructureReader::addSpaces()
{
    m_structure.entitiesBegin = appendImplied(Kind::structure, RecordType::section);
    if (m_modelSpace) {
        addMembers(*m_modelSpace, nullptr, false);
    }
    if (m_paperSpace) {
        addMembers(*m_paperSpace, nullptr, true);
    }
    m_structure.entitiesEnd = appendImplied(Kind::structure, RecordType::endSection);
}

// --- entities ------------------------------------------------------------------------------------

void StructureReader::addMembers(const Owned& owned, AcDbStub* container, bool isPaperSpace)
{
    for (const Handle member : owned.members) {
        Found* const found = find(member);
        if (found != nullptr && found->stub == nullptr) {
            addEntity(*found, container, isPaperSpace);
        }
    }
    // Up to R2000 each entity tells the next one.
    for (Found* at = find(owned.first); at != nullptr && at->stub == nullptr;
         at = at->handle == owned.last ? nullptr : find(nextOf(*at))) {
        addEntity(*at, container, isPaperSpace);
    }
}

Handle StructureReader::nextOf(const Found& found) const
{
    const auto position = static_cast<std::size_t>(&found - m_found.data());
    return position < m_next.size() ? m_next[position] : Handle::none;
}

void StructureReader::addEntity(Found& found, AcDbStub* container, bool isPaperSpace)
{
    AcDbStub* const stub = append(found, Kind::entity, container);
    stub->isPaperSpace = isPaperSpace;
    if (stub->type == RecordType::insert || stub->type == RecordType::polyline) {
        addSubEntities(found, stub);
    }
}

void StructureReader::addSubEntities(const Found& owner, AcDbStub* stub)
{
    const auto record = recordOf(owner);
    const auto owned = record ? record->owned() : std::nullopt;
    if (!owned) {
        return;
    }
    const auto add = [&](Found* found) {
        if (found != nullptr && found->stub == nullptr) {
            append(*found, Kind::subEntity, stub);
        }
    };
    for (const Handle member : owned->members) {
        add(find(member));
    }
    for (Found* at = find(owned->first); at != nullptr && at->stub == nullptr;) {
        Found* const next = at->handle == owned->last ? nullptr : find(nextOf(*at));
        add(at);
        at = next;
    }
    add(find(owned->end));
}

// --- objects -------------------------------------------------------------------------------------

void StructureReader::addObjects(Handle root)
{
    m_structure.objectsBegin = appendImplied(Kind::structure, RecordType::section);
    if (Found* const found = find(root); found != nullptr && found->stub == nullptr) {
        append(*found, Kind::object, nullptr);
    }
    for (Found& found : m_found) {
        if (found.stub != nullptr) {
            continue;
        }
        const KnownType& known = typeOf(found.type);
        if (!known.isEntity && known.type != RecordType::table) {
            append(found, Kind::object, nullptr);
        }
    }
    m_structure.objectsEnd = appendImplied(Kind::structure, RecordType::endSection);
    for (Found& found : m_found) {
        if (found.stub == nullptr) {
            append(found, Kind::structure, nullptr);
        }
    }
}

} // namespace

ReadResult readDwg(platform::FileContent content, const std::wstring& path, Store& store)
{
    ContainerOrTrouble read = readContainer(std::move(content), path);
    if (auto* const trouble = std::get_if<ReadResult>(&read)) {
        return std::move(*trouble);
    }
    auto& container = std::get<std::unique_ptr<Container>>(read);
    const Parts& parts = container->parts();
    FileForm form = formOf(parts);
    auto classes = decodeClasses(parts.classes, form);
    if (!classes) {
        return damage(path, 0, L"the classes are wrong or have a wrong checksum");
    }
    const auto roots = decodeRootHandles(parts.header, form);
    if (!roots) {
        return damage(path, 0, L"the header variables are wrong or have a wrong checksum");
    }
    TypeTable types(form.version, std::move(*classes));
    StructureReader reader(parts, form, types, store);
    if (auto trouble = reader.findRecords(path)) {
        return std::move(*trouble);
    }
    Store::Structure structure = reader.read(*roots);
    DwgFormat::BlockPlaces places = reader.takeBlockPlaces();
    store.finishLoading(std::move(structure),
                        std::make_unique<DwgFormat>(std::move(container), std::move(form),
                                                    std::move(types), store, std::move(places)));
    return {};
}

} // namespace corma::host::dwg
