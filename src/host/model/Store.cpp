#include "host/model/Store.h"

#include "host/acdb_object.h"
#include "host/model/Header.h"
#include "host/model/References.h"
#include "host/object_factory.h"
#include "platform/text.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace corma::host {

namespace {

// In the order of RecordType.
constexpr std::array<std::string_view, static_cast<std::size_t>(RecordType::firstOther)> kTypeNames
    = {"",
       "SECTION",
       "ENDSEC",
       "EOF",
       "TABLE",
       "ENDTAB",
       "BLOCK",
       "ENDBLK",
       "DICTIONARY",
       "ACDBDICTIONARYWDFLT",
       "XRECORD",
       "LAYOUT",
       "LAYER",
       "LTYPE",
       "STYLE",
       "DIMSTYLE",
       "VPORT",
       "APPID",
       "VIEW",
       "UCS",
       "BLOCK_RECORD",
       "INSERT",
       "ATTRIB",
       "ATTDEF",
       "SEQEND",
       "VERTEX",
       "POLYLINE",
       "TEXT",
       "MTEXT",
       "VIEWPORT"};

// What can be named by a handle.
bool isObject(RecordKind kind)
{
    return kind != RecordKind::structure && kind != RecordKind::header;
}

} // namespace

Store::Store(AcDbDatabase* database)
    : m_database(database)
{
    for (const std::string_view name : kTypeNames) {
        typeNamed(name);
    }
}

Store::~Store()
{
    for (const auto& piece : m_pieces) {
        for (std::size_t i = 0; i < kStubsInPiece; ++i) {
            delete piece[i].resident;
        }
    }
}

// --- loading -------------------------------------------------------------------------------------

AcDbStub* Store::newStub(RecordKind kind, RecordType type)
{
    if (m_count % kStubsInPiece == 0) {
        m_pieces.push_back(std::make_unique<AcDbStub[]>(kStubsInPiece));
    }
    AcDbStub* const stub = &m_pieces.back()[m_count % kStubsInPiece];
    ++m_count;
    stub->store = this;
    stub->kind = kind;
    stub->type = type;
    return stub;
}

AcDbStub* Store::append(RecordKind kind, RecordType type, std::uint64_t offset, std::uint32_t size)
{
    AcDbStub* const stub = newStub(kind, type);
    stub->offset = offset;
    stub->size = size;
    m_withoutHandle += isObject(kind) ? 1 : 0;
    link(*stub, nullptr);
    return stub;
}

void Store::link(AcDbStub& stub, AcDbStub* before)
{
    AcDbStub* const behind = before == nullptr ? m_last : before->previous;
    stub.previous = behind;
    stub.next = before;
    (behind == nullptr ? m_first : behind->next) = &stub;
    (before == nullptr ? m_last : before->previous) = &stub;
}

void Store::reserve(std::size_t records)
{
    m_pieces.reserve(records / kStubsInPiece + 1);
    m_handles.reserve(records);
}

void Store::giveHandle(AcDbStub& stub, Handle handle)
{
    stub.handle = handle;
    stub.ownsHandle = handle != Handle::none && m_handles.enter(handle, stub);
    if (!stub.ownsHandle) {
        stub.handle = Handle::none; // gets another one when all are known
        return;
    }
    m_withoutHandle -= isObject(stub.kind) ? 1 : 0;
    m_nextHandle = std::max(m_nextHandle, static_cast<std::uint64_t>(handle) + 1);
}

// Every object can be named, also in a file that names none or two by the same handle. These
// handles are good for as long as the drawing is in memory.
void Store::giveMissingHandles()
{
    for (AcDbStub* stub = m_first; stub != nullptr && m_withoutHandle != 0; stub = stub->next) {
        if (isObject(stub->kind) && stub->handle == Handle::none) {
            stub->handle = nextHandle();
            m_handles.enter(stub->handle, *stub);
            --m_withoutHandle;
        }
    }
}

Handle Store::nextHandle()
{
    // 0 comes after a file that uses up to the last handle; the search then starts from below.
    while (m_nextHandle == 0 || find(Handle {m_nextHandle}) != nullptr) {
        ++m_nextHandle;
    }
    const Handle handle {m_nextHandle};
    ++m_nextHandle;
    return handle;
}

Handle Store::newHandle()
{
    const Handle handle = nextHandle();
    noteHandles();
    return handle;
}

// The next program that opens the file takes its handles from there on.
void Store::noteHandles()
{
    if (writesHandles()) {
        setVariable(L"$HANDSEED", Group(code::handle, Handle {m_nextHandle}));
    }
}

bool Store::writesHandles() const
{
    if (m_version >= DrawingVersion::r13) {
        return true;
    }
    const Groups handling = variable(L"$HANDLING");
    return handling.integer(code::flags, handling.all()) != 0;
}

RecordType Store::typeNamed(std::string_view name)
{
    const auto known = m_types.find(std::string(name));
    if (known != m_types.end()) {
        return known->second;
    }
    constexpr std::size_t kMost = 0xFFFF;
    if (m_typeNames.size() >= kMost) {
        return RecordType::none; // only a hostile file has that many
    }
    const auto type = static_cast<RecordType>(m_typeNames.size());
    m_typeNames.emplace_back(name);
    m_types.emplace(name, type);
    return type;
}

std::string_view Store::nameOf(RecordType type) const
{
    return m_typeNames[static_cast<std::size_t>(type)];
}

std::optional<BitsForm> Store::bitsForm() const
{
    return m_bitsForm || !m_format ? m_bitsForm : m_format->bitsForm();
}

void Store::finishLoading(Structure structure, std::unique_ptr<DrawingFormat> format)
{
    m_structure = std::move(structure);
    m_format = std::move(format);
    readVersion();
    const Groups seed = variable(L"$HANDSEED");
    m_nextHandle
        = std::max(m_nextHandle, static_cast<std::uint64_t>(seed.handle(code::handle, seed.all())));
    giveMissingHandles();
    implyTables();
    implyNamedObjects();
    m_isChanged = false;
}

// --- records -------------------------------------------------------------------------------------

Groups Store::groupsOf(const AcDbStub& stub) const
{
    if (stub.resident != nullptr) {
        return stub.resident->completeGroups();
    }
    Groups groups;
    readGroups(stub, groups);
    return groups;
}

// Those of a record that is not in memory.
void Store::readGroups(const AcDbStub& stub, Groups& groups) const
{
    if (m_header && &stub == m_structure.header) {
        groups = m_header->groups;
        return;
    }
    const auto held = m_newGroups.find(&stub);
    if (held != m_newGroups.end()) {
        groups = held->second;
    } else if (stub.size == 0 || !m_format) {
        groups.clear();
    } else {
        m_format->decode(stub, groups);
    }
}

std::wstring Store::textOf(const AcDbStub& stub, int code) const
{
    const Groups groups = groupsOf(stub);
    return std::wstring(groups.text(code, groups.body()));
}

AcDbStub* Store::insertBefore(AcDbStub* place, RecordKind kind, RecordType type)
{
    AcDbStub* const stub = newStub(kind, type);
    link(*stub, place);
    markChanged(*stub);
    stub->handle = newHandle();
    stub->ownsHandle = true;
    m_handles.enter(stub->handle, *stub);
    return stub;
}

// Such a record has no object, so its groups wait in the store.
AcDbStub* Store::insertStructure(AcDbStub* place, RecordKind kind, std::vector<Group> groups)
{
    AcDbStub* const stub = newStub(kind, typeNamed(toUtf8(groups.front().text())));
    link(*stub, place);
    stub->isChanged = true;
    m_isChanged = true;
    m_newGroups[stub] = Groups(std::move(groups));
    return stub;
}

AcDbStub* Store::impliedStub(RecordKind kind, RecordType type, std::vector<Group> groups)
{
    AcDbStub* const stub = newStub(kind, type);
    stub->isImplied = true;
    stub->handle = nextHandle();
    m_handles.enter(stub->handle, *stub);
    m_newGroups[stub] = Groups(std::move(groups));
    return stub;
}

AcDbObject& Store::resident(AcDbStub& stub)
{
    if (stub.resident == nullptr) {
        Groups groups = std::exchange(m_room, {});
        readGroups(stub, groups);
        std::unique_ptr<AcDbObject> object = newObjectFor(stub, groups.isUnderstood());
        object->m_stub = &stub;
        object->m_groups = std::move(groups);
        object->groupsWereRead();
        stub.resident = object.release();
        m_newGroups.erase(&stub);
    }
    return *stub.resident;
}

void Store::setResident(AcDbStub& stub, std::unique_ptr<AcDbObject> object, Handle owner)
{
    Groups& groups = object->m_groups;
    const int handleCode = stub.type == RecordType::dimStyle ? code::dimStyleHandle : code::handle;
    if (writesHandles() && groups.ownHandle() == Handle::none) {
        groups.insert(1, Group(handleCode, stub.handle));
    }
    if (m_version >= DrawingVersion::r13 && owner != Handle::none) {
        groups.setOwnerHandle(owner);
    }
    object->m_stub = &stub;
    m_newGroups.erase(&stub);
    delete stub.resident;
    stub.resident = object.release();
}

namespace {

// Where the owner goes in groups that have none: behind the braces that begin them.
std::size_t behindBraces(const Groups& groups, std::size_t at)
{
    while (at < groups.size() && groups[at].code == code::braces) {
        do {
            ++at;
        } while (at < groups.size() && groups[at].code != code::braces);
        at = std::min(at + 1, groups.size());
    }
    return at;
}

} // namespace

void Store::setGroups(AcDbStub& stub, Groups groups, Handle owner)
{
    std::size_t behindHandle = 1;
    if (writesHandles()) {
        const bool isDimStyle = stub.type == RecordType::dimStyle;
        groups.insert(1, Group(isDimStyle ? code::dimStyleHandle : code::handle, stub.handle));
        ++behindHandle;
    }
    if (m_version >= DrawingVersion::r13) {
        groups.insert(behindBraces(groups, behindHandle), Group(code::owner, owner));
    }
    replaceGroups(stub, std::move(groups));
}

void Store::replaceGroups(AcDbStub& stub, Groups groups)
{
    delete stub.resident;
    stub.resident = nullptr;
    m_newGroups[&stub] = std::move(groups);
    markChanged(stub);
}

void Store::release(AcDbStub& stub)
{
    if (stub.resident != nullptr && !stub.isChanged && !stub.isImplied
        && !stub.resident->staysInMemory()) {
        constexpr std::size_t kMostRoom = 1024; // groups
        Groups& groups = stub.resident->m_groups;
        if (groups.capacity() <= kMostRoom) {
            groups.clear();
            m_room = std::move(groups);
        }
        delete stub.resident;
        stub.resident = nullptr;
    }
}

void Store::markChanged(AcDbStub& stub)
{
    stub.isChanged = true;
    m_isChanged = true;
    if (stub.type == RecordType::insert) {
        noteReference(stub);
    }
}

// What goes when a record goes: what its place or its handles of ownership say is its own.
void Store::collectOwned(const AcDbStub& stub, std::vector<AcDbStub*>& owned)
{
    constexpr int kSoftOwner = 350;
    constexpr int kHardOwner = 360;
    constexpr int kOwnerCodes = 10; // of each kind
    for (const Group& group : groupsOf(stub)) {
        const bool owns = group.code >= kHardOwner && group.code < kHardOwner + kOwnerCodes;
        const bool lists = isDictionary(stub) && group.code >= kSoftOwner
            && group.code < kSoftOwner + kOwnerCodes;
        AcDbStub* const target = owns || lists ? find(group.handle()) : nullptr;
        if (target != nullptr && ownerOf(*target) == &stub) {
            owned.push_back(target);
        }
    }
    for (AcDbStub* sub = firstSubEntity(stub); sub != nullptr; sub = subEntityBehind(*sub)) {
        owned.push_back(sub);
    }
    const bool mayBeBlock
        = stub.type == RecordType::blockRecord || stub.kind == RecordKind::blockBegin;
    const Block* const block = mayBeBlock ? blockOf(stub) : nullptr;
    if (block == nullptr || block->record != &stub) {
        return;
    }
    for (AcDbStub* part : {block->begin, block->end}) {
        if (part != nullptr && part != &stub) {
            owned.push_back(part);
        }
    }
    for (AcDbStub* at = firstEntity(*block); at != nullptr; at = entityBehind(*block, *at)) {
        owned.push_back(at);
    }
}

// A record and all that is its own, each once, even in a circle of owners.
std::vector<AcDbStub*> Store::withOwned(AcDbStub& stub)
{
    std::vector<AcDbStub*> found = {&stub};
    std::unordered_set<AcDbStub*> known = {&stub};
    std::vector<AcDbStub*> owned;
    for (std::size_t i = 0; i < found.size(); ++i) {
        owned.clear();
        collectOwned(*found[i], owned);
        std::copy_if(owned.begin(), owned.end(), std::back_inserter(found),
                     [&](AcDbStub* part) { return known.insert(part).second; });
    }
    return found;
}

void Store::erase(AcDbStub& stub, bool erasing)
{
    if (stub.isErased == erasing) {
        return;
    }
    const AcDbStub* const root = erasing ? &stub : m_erasedWith[&stub];
    for (AcDbStub* part : withOwned(stub)) {
        if (part->isErased == erasing || (!erasing && m_erasedWith[part] != root)) {
            continue;
        }
        part->isErased = erasing;
        if (erasing) {
            m_erasedWith[part] = root;
        } else {
            m_erasedWith.erase(part);
        }
    }
    noteErasing(stub, erasing);
    m_isChanged = true;
}

// What leads to a record by its name follows.
void Store::noteErasing(AcDbStub& stub, bool erasing)
{
    Block* const block = erasing || stub.kind == RecordKind::entity ? nullptr : blockOf(stub);
    if (block != nullptr) {
        m_blocksByName[foldedName(block->name)] = block;
        forgetNames(kBlockTable);
        return;
    }
    AcDbStub* const owner = ownerOf(stub);
    if (owner == nullptr) {
        return;
    }
    if (isDictionary(*owner)) {
        resident(*owner); // its entry is not written
        markChanged(*owner);
    } else if (const auto kind = kindOfTable(*owner)) {
        forgetNames(*kind);
    }
}

void Store::setLoose(AcDbStub& stub, bool isLoose)
{
    for (AcDbStub* part : withOwned(stub)) {
        part->isLoose = isLoose;
    }
    m_isChanged = true;
}

AcDbStub* Store::ownerOf(const AcDbStub& stub) const
{
    if (stub.container != nullptr) {
        return stub.container;
    }
    const Groups groups = groupsOf(stub);
    Handle owner = groups.ownerHandle();
    if (owner == Handle::none && stub.kind == RecordKind::object) {
        owner = groups.handle(code::owner, groups.braces(L"ACAD_REACTORS")); // all that R13 tells
    }
    return owner == Handle::none ? nullptr : find(owner);
}

AcDbStub* Store::appendObject(RecordType type)
{
    AcDbStub* place = m_structure.objectsEnd;
    return insertBefore(place == nullptr ? m_structure.fileEnd : place, RecordKind::object, type);
}

// --- dictionaries --------------------------------------------------------------------------------

void Store::implyNamedObjects()
{
    if (m_structure.objectsBegin != nullptr) {
        for (AcDbStub* stub = m_structure.objectsBegin->next;
             stub != nullptr && stub->kind == RecordKind::object; stub = stub->next) {
            if (stub->type == RecordType::dictionary) {
                m_namedObjects = stub;
                return;
            }
        }
    }
    std::vector<Group> groups = {{code::type, L"DICTIONARY"}, {code::subclass, L"AcDbDictionary"}};
    if (m_version >= DrawingVersion::r2000) {
        constexpr int kCloning = 281;
        groups.emplace_back(kCloning, 1);
    }
    m_namedObjects = impliedStub(RecordKind::object, RecordType::dictionary, std::move(groups));
}

AcDbStub& Store::namedObjects()
{
    return *m_namedObjects;
}

Acad::ErrorStatus Store::makeRoomForObjects()
{
    if (m_version < DrawingVersion::r13) {
        return Acad::eInvalidDwgVersion; // also where the file has some: it lacks handles for more
    }
    if (!m_namedObjects->isImplied) {
        return Acad::eOk;
    }
    if (m_structure.objectsBegin == nullptr) {
        m_structure.objectsBegin
            = insertStructure(m_structure.fileEnd, RecordKind::structure,
                              {{code::type, L"SECTION"}, {code::name, L"OBJECTS"}});
        m_structure.objectsEnd = insertStructure(m_structure.fileEnd, RecordKind::structure,
                                                 {{code::type, L"ENDSEC"}});
    }
    AcDbStub& root = *m_namedObjects;
    AcDbObject& object = resident(root);
    if (object.m_groups.ownHandle() == Handle::none) {
        object.m_groups.insert(1, Group(code::handle, root.handle));
        object.m_groups.setOwnerHandle(Handle::none);
    }
    link(root, m_structure.objectsBegin->next); // readers take the first dictionary for the root
    root.isImplied = false;
    root.ownsHandle = true;
    markChanged(root);
    noteHandles();
    return Acad::eOk;
}

} // namespace corma::host
