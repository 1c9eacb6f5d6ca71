#include "host/dwg/dwg_writer.h"

#include "host/clone/conversion.h"
#include "host/drawing_files.h"
#include "host/dwg/DwgFormat.h"
#include "host/dwg/Record.h"
#include "host/dwg/StoreNames.h"
#include "host/dwg/classes.h"
#include "host/dwg/code_pages.h"
#include "host/dwg/file_form.h"
#include "host/dwg/header_variables.h"
#include "host/dwg/ownership.h"
#include "host/dwg/standard_classes.h"
#include "platform/text.h"

#include <algorithm>
#include <deque>
#include <limits>

namespace corma::host::dwg {

namespace {

constexpr int kPageCode = 3; // of $DWGCODEPAGE

// The value of a dictionary's entry.
Handle entryOf(const Groups& dictionary, std::wstring_view name)
{
    constexpr int kName = 3;
    const std::wstring folded = foldedName(name);
    for (std::size_t i = 0; i + 1 < dictionary.size(); ++i) {
        if (dictionary[i].code == kName && foldedName(dictionary[i].text()) == folded) {
            return dictionary[i + 1].handle();
        }
    }
    return Handle::none;
}

/// Makes the parts of a file from a drawing.
class DrawingEncoder
{
public:
    DrawingEncoder(Store& store, const DwgFormat* source, const FileForm& form, TypeTable types)
        : m_store(store)
        , m_source(source)
        , m_form(form)
        , m_types(std::move(types))
        , m_names(store)
        , m_ownership(store)
    {
    }

    WriteResult encode();

    /// Valid for as long as the encoder lives.
    [[nodiscard]] NewParts parts() const;

private:
    /// A record on its way into the file.
    struct Piece
    {
        AcDbStub* stub = nullptr;
        std::string_view bytes;
    };

    [[nodiscard]] bool isFromFile(const AcDbStub& stub) const
    {
        return m_source != nullptr && stub.size != 0;
    }

    [[nodiscard]] static bool isRecord(const AcDbStub& stub);
    void collect();
    void collectClass(const AcDbStub& stub);
    void touchOwners();
    void noteReference(const AcDbStub& reference);
    [[nodiscard]] std::vector<Handle> keptReferences(const Record& block) const;
    void linkMembers();
    [[nodiscard]] bool mustEncode(const AcDbStub& stub) const;
    WriteResult encodeRecord(AcDbStub& stub);
    std::optional<Record> recordFor(const AcDbStub& stub, const Groups& groups);
    std::optional<unsigned> typeFor(const Groups& groups);
    [[nodiscard]] Surroundings surroundingsOf(AcDbStub& stub, const Record& record);
    [[nodiscard]] const Block* blockAround(const AcDbStub& stub) const;
    [[nodiscard]] Handle ownerOf(const AcDbStub& stub) const;
    void takeBlockFacts(const AcDbStub& stub, Record& record);
    void encodeHeader();
    [[nodiscard]] Handle seed() const;
    [[nodiscard]] RootHandles rootHandles() const;
    static WriteResult failure(const AcDbStub& stub, const Groups& groups, std::wstring_view why);

    Store& m_store;
    const DwgFormat* m_source; // null for a drawing of another format
    const FileForm& m_form;
    TypeTable m_types;
    StoreNames m_names;
    Ownership m_ownership;
    std::vector<Piece> m_pieces;
    std::deque<std::string> m_encoded;
    std::string m_header;
    std::string m_classes;
    bool m_hasNewClasses = false;
};

// What stands in the list of objects of a file.
bool DrawingEncoder::isRecord(const AcDbStub& stub)
{
    return stub.handle != Handle::none && stub.kind != RecordKind::header
        && (stub.kind != RecordKind::structure || stub.ownsHandle);
}

void DrawingEncoder::collect()
{
    for (AcDbStub* at = m_store.first(); at != nullptr; at = at->next) {
        if (isRecord(*at) && isWritten(*at)) {
            m_pieces.push_back({at, {}});
        } else if (m_store.nameOf(at->type) == "CLASS") {
            collectClass(*at);
        }
    }
}

void DrawingEncoder::collectClass(const AcDbStub& stub)
{
    if (!isFromFile(stub)) {
        m_types.add(classFromGroups(m_store.groupsOf(stub)));
        m_hasNewClasses = true;
    }
}

// A drawing of another format has to be made whole.
void DrawingEncoder::touchOwners()
{
    for (const AcDbStub* at = m_store.first(); at != nullptr; at = at->next) {
        const bool isGone = isFromFile(*at) && !isWritten(*at);
        const bool isNew = !isFromFile(*at) && isWritten(*at);
        if ((isGone || isNew) && isRecord(*at)) {
            m_ownership.touchOwnerOf(*at);
        }
        if (at->kind == RecordKind::blockBegin && at->isChanged) {
            m_ownership.touchOwnerOf(*at);
        }
        if (at->type == RecordType::insert) {
            noteReference(*at);
        }
    }
}

// The block that a reference was of loses it, and the one that it is of gets it.
void DrawingEncoder::noteReference(const AcDbStub& reference)
{
    if (isFromFile(reference) && (reference.isChanged || !isWritten(reference))) {
        const auto record = m_source->recordOf(reference);
        const auto block = record ? record->referencedBlock() : Handle::none;
        if (const AcDbStub* const former = m_store.find(block)) {
            m_ownership.touch(*former);
        }
    }
    if (isWritten(reference) && (!isFromFile(reference) || reference.isChanged)) {
        m_ownership.noteReference(reference);
    }
}

void DrawingEncoder::linkMembers()
{
    if (m_form.version >= DrawingVersion::r2004) {
        return;
    }
    const auto owners = m_ownership.touched();
    for (const AcDbStub* owner : owners) {
        m_ownership.linkMembers(*owner);
    }
}

bool DrawingEncoder::mustEncode(const AcDbStub& stub) const
{
    if (!isFromFile(stub) || stub.isChanged || m_ownership.isTouched(stub)) {
        return true;
    }
    const Ownership::Neighbours* const neighbours = m_ownership.neighboursOf(stub);
    if (neighbours == nullptr) {
        return false;
    }
    const auto record = m_source->recordOf(stub);
    return record
        && (record->frame().previousHandle() != neighbours->previous
            || record->frame().nextHandle() != neighbours->next);
}

WriteResult DrawingEncoder::encode()
{
    collect();
    touchOwners();
    linkMembers();
    for (Piece& piece : m_pieces) {
        if (!mustEncode(*piece.stub)) {
            piece.bytes = m_source->bytesOf(*piece.stub);
            continue;
        }
        if (WriteResult result = encodeRecord(*piece.stub); result.status != Acad::eOk) {
            return result;
        }
        piece.bytes = m_encoded.back();
    }
    // New records come behind all others.
    const auto place = [&](const Piece& piece) {
        return isFromFile(*piece.stub) ? piece.stub->offset
                                       : std::numeric_limits<std::uint64_t>::max();
    };
    std::stable_sort(m_pieces.begin(), m_pieces.end(),
                     [&](const Piece& a, const Piece& b) { return place(a) < place(b); });
    encodeHeader();
    if (m_hasNewClasses || m_source == nullptr) {
        m_classes = encodeClasses(m_types.classes(), m_form,
                                  m_source == nullptr ? std::string_view()
                                                      : m_source->container().parts().classes);
    }
    return {};
}

std::optional<unsigned> DrawingEncoder::typeFor(const Groups& groups)
{
    if (const auto number = m_types.numberFor(groups)) {
        return number;
    }
    const std::string type = toUtf8(groups[0].text());
    const Groups described = m_store.classOf(type);
    const auto known
        = described.empty() ? standardClass(type) : std::optional(classFromGroups(described));
    if (!known) {
        return std::nullopt;
    }
    m_types.add(*known);
    m_hasNewClasses = true;
    return m_types.numberFor(groups);
}

std::optional<Record> DrawingEncoder::recordFor(const AcDbStub& stub, const Groups& groups)
{
    if (isFromFile(stub)) {
        if (auto record = m_source->recordOf(stub)) {
            const bool isSame = m_types.find(record->type()).name == m_store.nameOf(stub.type);
            const auto number = typeFor(groups);
            if (isSame
                && (!number || *number == record->type()
                    || record->depth() != Record::Depth::all)) {
                return record;
            }
        }
    }
    const auto number = groups.empty() ? std::nullopt : typeFor(groups);
    if (!number) {
        return std::nullopt;
    }
    return Record(m_form, m_types, *number, groups.isUnderstood());
}

WriteResult DrawingEncoder::failure(const AcDbStub& stub, const Groups& groups,
                                    std::wstring_view why)
{
    std::wstring message = groups.empty() ? L"a record" : L"the " + groups[0].text();
    message += L" " + toText(stub.handle) + L" has no form in such a file: ";
    message += why;
    return {Acad::eNotImplementedYet, std::move(message)};
}

WriteResult DrawingEncoder::encodeRecord(AcDbStub& stub)
{
    const Groups groups = m_store.groupsOf(stub);
    auto record = recordFor(stub, groups);
    if (!record) {
        return failure(stub, groups, L"its type is not understood");
    }
    const Surroundings around = surroundingsOf(stub, *record);
    if (const auto problem = record->fromGroups(m_names, groups, around)) {
        return failure(stub, groups, *problem);
    }
    record->frame().self.set(stub.handle);
    record->frame().owner.set(ownerOf(stub));
    if (stub.type == RecordType::blockRecord) {
        takeBlockFacts(stub, *record);
    }
    m_encoded.push_back(record->bytes());
    return {};
}

// The block that an entity is in, or that a record begins or ends.
const Block* DrawingEncoder::blockAround(const AcDbStub& stub) const
{
    switch (stub.kind) {
    case RecordKind::entity:
        return m_store.spaceOf(stub);
    case RecordKind::blockBegin:
    case RecordKind::blockEnd:
        return m_store.blockOf(stub);
    default:
        return nullptr;
    }
}

Handle DrawingEncoder::ownerOf(const AcDbStub& stub) const
{
    const AcDbStub* owner = stub.container;
    if (const Block* const block = blockAround(stub)) {
        owner = block->record;
    } else if (stub.kind != RecordKind::tableEntry && stub.kind != RecordKind::subEntity) {
        owner = m_store.ownerOf(stub);
    }
    return owner == nullptr ? Handle::none : owner->handle;
}

// Those of a record that stays where it is are what its file says.
Surroundings DrawingEncoder::surroundingsOf(AcDbStub& stub, const Record& record)
{
    Surroundings around = m_ownership.of(stub);
    const Frame& frame = record.frame();
    if (isFromFile(stub)) {
        const std::vector<Handle> added = std::move(around.references);
        around.references = keptReferences(record);
        around.references.insert(around.references.end(), added.begin(), added.end());
        around.space = static_cast<Surroundings::Space>(frame.space);
        if (m_ownership.neighboursOf(stub) == nullptr) {
            around.previous = frame.previousHandle();
            around.next = frame.nextHandle();
        }
        return around;
    }
    const Block* const block = blockAround(stub);
    if (block != nullptr && block->share == Block::Share::modelSpace) {
        around.space = Surroundings::Space::model;
    } else if (block != nullptr && block->share == Block::Share::paperSpace) {
        around.space = Surroundings::Space::paper;
    }
    return around;
}

// Those in the file that are still there; a changed one may be of another block now.
std::vector<Handle> DrawingEncoder::keptReferences(const Record& block) const
{
    std::vector<Handle> kept;
    const auto owned = block.owned();
    for (const Handle handle : owned ? owned->references : std::vector<Handle>()) {
        const AcDbStub* const stub = m_store.find(handle);
        const bool isChangedReference
            = stub != nullptr && stub->isChanged && stub->type == RecordType::insert;
        if (stub != nullptr && isWritten(*stub) && !isChangedReference) {
            kept.push_back(handle);
        }
    }
    return kept;
}

void DrawingEncoder::takeBlockFacts(const AcDbStub& stub, Record& record)
{
    const Block* const block = m_store.blockOf(stub);
    const AcDbStub* const begin = block == nullptr ? nullptr : block->begin;
    auto facts = record.blockFacts();
    if (begin == nullptr || !facts || (isFromFile(*begin) && !begin->isChanged)) {
        return;
    }
    constexpr int kBase = 10;
    constexpr int kPath = 1;
    constexpr int kDescription = 4;
    const Groups groups = m_store.groupsOf(*begin);
    const GroupRange part = groups.subclass(L"AcDbBlockBegin");
    facts->flags = static_cast<std::int16_t>(groups.integer(code::flags, part));
    facts->base = groups.point(kBase, part);
    facts->path = groups.text(kPath, part);
    facts->description = groups.text(kDescription, part);
    record.setBlockFacts(*facts);
}

void DrawingEncoder::encodeHeader()
{
    auto variables = m_source == nullptr
        ? HeaderVariables(m_form)
        : HeaderVariables::read(m_source->container().parts().header, m_form)
              .value_or(HeaderVariables(m_form));
    if (m_source == nullptr) {
        variables.setRootHandles(rootHandles());
    }
    variables.fromGroups(m_names, m_store.headerGroups());
    variables.setSeed(seed());
    m_header = variables.bytes();
}

Handle DrawingEncoder::seed() const
{
    const Groups seed = m_store.variable(L"$HANDSEED");
    return seed.handle(code::handle, seed.all());
}

RootHandles DrawingEncoder::rootHandles() const
{
    RootHandles roots;
    const auto table = [&](TableKind kind) { return m_store.table(kind).handle; };
    roots.blocks = table(TableKind::blockRecord);
    roots.layers = table(TableKind::layer);
    roots.textStyles = table(TableKind::textStyle);
    roots.linetypes = table(TableKind::linetype);
    roots.views = table(TableKind::view);
    roots.coordinateSystems = table(TableKind::ucs);
    roots.windows = table(TableKind::viewport);
    roots.applications = table(TableKind::appId);
    roots.dimStyles = table(TableKind::dimStyle);
    roots.namedObjects = m_store.namedObjects().handle;
    const Groups root = m_store.groupsOf(m_store.namedObjects());
    roots.groups = entryOf(root, L"ACAD_GROUP");
    roots.mlineStyles = entryOf(root, L"ACAD_MLINESTYLE");
    roots.layouts = entryOf(root, L"ACAD_LAYOUT");
    roots.plotSettings = entryOf(root, L"ACAD_PLOTSETTINGS");
    roots.plotStyles = entryOf(root, L"ACAD_PLOTSTYLENAME");
    roots.materials = entryOf(root, L"ACAD_MATERIAL");
    roots.colors = entryOf(root, L"ACAD_COLOR");
    roots.visualStyles = entryOf(root, L"ACAD_VISUALSTYLE");
    roots.modelSpace = m_names.find(TableKind::blockRecord, L"*Model_Space");
    roots.paperSpace = m_names.find(TableKind::blockRecord, L"*Paper_Space");
    roots.byLayer = m_names.find(TableKind::linetype, L"ByLayer");
    roots.byBlock = m_names.find(TableKind::linetype, L"ByBlock");
    roots.continuous = m_names.find(TableKind::linetype, L"Continuous");
    const AcDbStub* const styles = m_store.find(roots.mlineStyles);
    if (styles != nullptr) {
        roots.currentMlineStyle = entryOf(m_store.groupsOf(*styles), L"Standard");
    }
    return roots;
}

NewParts DrawingEncoder::parts() const
{
    NewParts parts;
    parts.header = m_header;
    parts.classes = m_classes;
    parts.objects.reserve(m_pieces.size());
    for (const Piece& piece : m_pieces) {
        parts.objects.push_back({piece.stub->handle, piece.bytes});
    }
    parts.seed = seed();
    return parts;
}

// --- files ---------------------------------------------------------------------------------------

bool isUnchanged(const Store& store)
{
    for (const AcDbStub* at = store.first(); at != nullptr; at = at->next) {
        if (at->isChanged || at->isErased || at->isLoose) {
            return false;
        }
    }
    return true;
}

WriteResult writeFile(const Container& container, const NewParts& parts, const std::wstring& path)
{
    platform::FileReplacement file(path);
    bool wasTaken = true;
    const bool isWhole = container.write(parts, [&](std::string_view bytes) {
        wasTaken = file.write(bytes);
        return wasTaken;
    });
    if (!isWhole && wasTaken) {
        return {Acad::eNotImplementedYet, L"the parts of the file stand in an unknown order"};
    }
    return committed(file);
}

WriteResult cannotWrite(DrawingVersion version)
{
    return {Acad::eNotImplementedYet,
            L"a DWG file of " + nameOf(version)
                + L" can be read but not written; save it as another version, or as DXF, in the "
                  L"CAD program"};
}

} // namespace

bool isDwgDrawing(const Store& store)
{
    return dynamic_cast<const DwgFormat*>(store.format()) != nullptr;
}

WriteResult writeDwg(const Store& store, const Container& container, const std::wstring& path)
{
    if (isUnchanged(store)) {
        platform::FileReplacement file(path);
        file.write(container.bytes());
        return committed(file);
    }
    if (container.canWrite() != Acad::eOk) {
        return cannotWrite(store.version());
    }
    const auto* const source = dynamic_cast<const DwgFormat*>(store.format());
    DrawingEncoder encoder(*store.first()->store, source, source->form(), source->types());
    if (WriteResult result = encoder.encode(); result.status != Acad::eOk) {
        return result;
    }
    return writeFile(container, encoder.parts(), path);
}

WriteResult writeNewDwg(const Store& store, const std::wstring& path)
{
    const Groups page = store.variable(L"$DWGCODEPAGE");
    FileForm form = newForm(store.version(), codePageNumber(page.text(kPageCode, page.all())));
    const std::unique_ptr<Container> container = newContainer(form.version, form.codePage);
    if (container == nullptr) {
        return store.version() < DrawingVersion::r2000
            ? WriteResult {Acad::eInvalidDwgVersion,
                           L"a drawing of " + nameOf(store.version())
                               + L" cannot become a DWG file"}
            : cannotWrite(store.version());
    }
    form.maintenance = container->parts().maintenance;
    DrawingEncoder encoder(*store.first()->store, nullptr, form, TypeTable(form.version));
    if (WriteResult result = encoder.encode(); result.status != Acad::eOk) {
        return result;
    }
    return writeFile(*container, encoder.parts(), path);
}

} // namespace corma::host::dwg
