#include "host/acdb_dictionary.h"

#include "host/acdb_database.h"
#include "host/host.h"
#include "host/model/Store.h"
#include "host/new_records.h"
#include "platform/text.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

CORMA_HOST_CLASS_BODY(AcDbDictionary, AcDbObject)
CORMA_HOST_CLASS_BODY(AcDbDictionaryWithDefault, AcDbDictionary)

namespace {

using namespace corma::host;

constexpr int kKey = 3;
constexpr int kSoftOwner = 350;
constexpr int kHardOwner = 360;
constexpr int kOwnsHard = 280;
constexpr int kCloningOfEntries = 281;
constexpr std::size_t kNowhere = PositionIndex::kNowhere;

// Its own groups; all of them in a record that lacks the marker.
GroupRange ownGroups(const Groups& groups)
{
    const GroupRange own = groups.subclass(L"AcDbDictionary");
    return own.begin == own.end ? groups.body() : own;
}

bool isEntry(const Groups& groups, std::size_t at, GroupRange in)
{
    return groups[at].code == kKey && at + 1 < in.end
        && (groups[at + 1].code == kSoftOwner || groups[at + 1].code == kHardOwner);
}

// Names that differ in case only have the same.
std::uint32_t hashOf(std::wstring_view name)
{
    constexpr std::uint32_t kStart = 2166136261;
    constexpr std::uint32_t kFactor = 16777619;
    std::uint32_t hash = kStart;
    for (const wchar_t c : name) {
        hash = (hash ^ static_cast<std::uint32_t>(corma::foldCase(c))) * kFactor;
    }
    return hash;
}

// Handles that follow each other do so in the index, too.
std::uint32_t hashOf(Handle handle)
{
    const auto number = static_cast<std::uint64_t>(handle);
    return static_cast<std::uint32_t>(number ^ number >> 32U);
}

bool isPartOfDrawing(const AcDbObject& value)
{
    return AcDbEntity::cast(&value) != nullptr || AcDbSymbolTable::cast(&value) != nullptr
        || AcDbSymbolTableRecord::cast(&value) != nullptr;
}

// Only drawings before R13 have no place for objects.
void tellVersion(const AcDbObject& dictionary)
{
    const ACHAR* fileName = L"";
    if (const AcDbDatabase* database = dictionary.database()) {
        database->getFilename(fileName);
    }
    const std::wstring& version = dictionary.stub()->store->versionText();
    acutPrintf(L"\nSettings cannot be kept in the drawing %s: its version (%s) is R12 or older. "
               L"Save it as R2000 or later first.",
               *fileName == 0 ? L"(unnamed)" : fileName,
               version.empty() ? L"not told" : version.c_str());
}

} // namespace

AcDbDictionary::AcDbDictionary()
    : AcDbObject(L"DICTIONARY")
{
    m_groups.add(Group(code::subclass, L"AcDbDictionary"));
    m_groups.add(Group(kCloningOfEntries, 1));
}

AcDbDictionary::~AcDbDictionary() = default;

// --- entries and groups --------------------------------------------------------------------------

void AcDbDictionary::groupsWereRead()
{
    const GroupRange own = ownGroups(m_groups);
    Groups others;
    m_entries.reserve((own.end - own.begin) / 2);
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        const bool isOwn = i >= own.begin && i < own.end;
        if (isOwn && isEntry(m_groups, i, own)) {
            m_entries.push_back({std::move(m_groups[i]), std::move(m_groups[i + 1])});
            ++i;
            continue;
        }
        m_behindEntries += isOwn && !m_entries.empty() ? 1 : 0;
        others.add(std::move(m_groups[i]));
    }
    m_groups = std::move(others);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        index(i);
    }
}

// An erased object takes its entry along; one that the file does not have was never there to begin
// with, so its entry stays. What is erased itself tells all, so that all can come back.
Groups AcDbDictionary::completeGroups() const
{
    std::vector<Group> entries;
    entries.reserve(2 * (m_entries.size() - m_removed));
    for (const Entry& entry : m_entries) {
        const AcDbStub* const object = entry.isRemoved || stub() == nullptr
            ? nullptr
            : stub()->store->find(entry.object.handle());
        if (entry.isRemoved || (object != nullptr && object->isErased && !isErased())) {
            continue;
        }
        entries.push_back(entry.name);
        entries.push_back(entry.object);
    }
    Groups complete = m_groups;
    complete.insert(ownGroups(complete).end - m_behindEntries, std::move(entries));
    return complete;
}

void AcDbDictionary::index(std::size_t position)
{
    const Entry& entry = m_entries[position];
    m_byName.add(hashOf(entry.name.text()), position);
    m_byObject.add(hashOf(entry.object.handle()), position);
}

void AcDbDictionary::forget(std::size_t position)
{
    const Entry& entry = m_entries[position];
    m_byName.remove(hashOf(entry.name.text()), position);
    m_byObject.remove(hashOf(entry.object.handle()), position);
}

void AcDbDictionary::compact()
{
    constexpr std::size_t kFewest = 32;
    if (m_iterators != 0 || m_removed < kFewest || 2 * m_removed < m_entries.size()) {
        return;
    }
    std::erase_if(m_entries, [](const Entry& entry) { return entry.isRemoved; });
    m_removed = 0;
    m_byName.clear();
    m_byObject.clear();
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        index(i);
    }
}

AcDbStub* AcDbDictionary::stubOf(const Entry& entry) const
{
    AcDbStub* const object = entry.isRemoved || stub() == nullptr
        ? nullptr
        : stub()->store->find(entry.object.handle());
    return object == nullptr || object->isErased ? nullptr : object;
}

bool AcDbDictionary::isNamed(std::size_t position, std::wstring_view name) const
{
    const std::wstring& own = m_entries[position].name.text();
    return std::equal(own.begin(), own.end(), name.begin(), name.end(), [](wchar_t a, wchar_t b) {
        return a == b || corma::foldCase(a) == corma::foldCase(b);
    });
}

// A file can have two entries of a name: the first that has an object counts.
std::size_t AcDbDictionary::positionOf(std::wstring_view name) const
{
    return m_byName.first(hashOf(name), [&](std::size_t at) {
        return isNamed(at, name) && stubOf(m_entries[at]) != nullptr;
    });
}

std::size_t AcDbDictionary::positionOf(AcDbObjectId id) const
{
    if (id.isNull() || stub() == nullptr || id.stub()->store != stub()->store
        || id.stub()->isErased) {
        return kNowhere;
    }
    const Handle handle = id.stub()->handle;
    return m_byObject.first(
        hashOf(handle), [&](std::size_t at) { return m_entries[at].object.handle() == handle; });
}

// --- reading -------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObject*& entry,
                                        AcDb::OpenMode mode) const
{
    entry = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getAt(name, id);
    return status == Acad::eOk ? acdbOpenAcDbObject(entry, id, mode) : status;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObjectId& id) const
{
    id.setNull();
    const std::size_t at = name == nullptr ? kNowhere : positionOf(name);
    if (at == kNowhere) {
        return Acad::eKeyNotFound;
    }
    id = AcDbObjectId(stubOf(m_entries[at]));
    return Acad::eOk;
}

bool AcDbDictionary::has(const ACHAR* name) const
{
    return name != nullptr && positionOf(name) != kNowhere;
}

bool AcDbDictionary::has(AcDbObjectId id) const
{
    return positionOf(id) != kNowhere;
}

unsigned int AcDbDictionary::numEntries() const
{
    return static_cast<unsigned int>(
        std::count_if(m_entries.begin(), m_entries.end(),
                      [this](const Entry& entry) { return stubOf(entry) != nullptr; }));
}

bool AcDbDictionary::isTreatElementsAsHard() const
{
    return m_groups.integer(kOwnsHard, ownGroups(m_groups)) != 0;
}

AcDbDictionaryIterator* AcDbDictionary::newIterator(AcRx::DictIterType type) const
{
    return new AcDbDictionaryIterator(*this, type);
}

// --- changing ------------------------------------------------------------------------------------

bool AcDbDictionary::hangsIn(const AcDbStub& other) const
{
    std::unordered_set<const AcDbStub*> seen; // a file can have a circle of owners
    for (const AcDbStub* at = stub(); at != nullptr && seen.insert(at).second;
         at = at->store->ownerOf(*at)) {
        if (at == &other) {
            return true;
        }
    }
    return false;
}

Acad::ErrorStatus AcDbDictionary::checkNew(const ACHAR* name, const AcDbObject* value) const
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (stub() == nullptr) {
        return Acad::eNotApplicable;
    }
    if (isErased()) {
        return Acad::eWasErased;
    }
    if (name == nullptr || *name == 0) {
        return Acad::eInvalidKey;
    }
    if (value == nullptr) {
        return Acad::eNullObjectPointer;
    }
    if (isPartOfDrawing(*value)) {
        return Acad::eWrongObjectType;
    }
    const AcDbStub* const present = value->stub();
    if (present == nullptr) {
        return Acad::eOk;
    }
    if (present->store != stub()->store) {
        return Acad::eWrongDatabase;
    }
    if (present->isErased) {
        return Acad::eWasErased;
    }
    if (hangsIn(*present)) {
        return Acad::eInvalidInput;
    }
    return present->isLoose && !value->isWriteEnabled() ? Acad::eNotOpenForWrite : Acad::eOk;
}

// Nothing is changed on failure.
Acad::ErrorStatus AcDbDictionary::makeRoom(std::wstring_view name, const AcDbObject& value)
{
    Store& store = *stub()->store;
    const std::size_t at = positionOf(name);
    AcDbStub* const former = at == kNowhere ? nullptr : stubOf(m_entries[at]);
    const bool isReplaced = former != nullptr && former != value.stub();
    const bool isOwned = isReplaced && store.ownerOf(*former) == stub();
    if (isOwned && former->resident != nullptr && former->resident->isReadEnabled()) {
        return former->resident->isWriteEnabled() ? Acad::eWasOpenForWrite : Acad::eWasOpenForRead;
    }
    const Acad::ErrorStatus status = store.makeRoomForObjects();
    if (status == Acad::eInvalidDwgVersion) {
        tellVersion(*this);
    }
    if (status == Acad::eOk && isOwned) {
        store.erase(*former, true);
    }
    return status;
}

// An object that it owns loses its entry, and is not to be saved even if it comes back.
void AcDbDictionary::loosen(const Entry& entry)
{
    Store& store = *stub()->store;
    AcDbStub* const object = store.find(entry.object.handle());
    if (object != nullptr && store.ownerOf(*object) == stub()) {
        store.setLoose(*object, true);
    }
}

// A former entry of the name makes room, also one whose object is gone.
void AcDbDictionary::enter(std::wstring_view name, Handle object)
{
    Entry entry {
        Group(kKey, GroupValue(std::wstring(name))),
        Group(isTreatElementsAsHard() ? kHardOwner : kSoftOwner, object),
    };
    std::size_t at = positionOf(name);
    if (at == kNowhere) {
        at = m_byName.first(hashOf(name), [&](std::size_t known) { return isNamed(known, name); });
        if (at != kNowhere) {
            loosen(m_entries[at]);
        }
    }
    if (at == kNowhere) {
        at = m_entries.size();
        m_entries.push_back(std::move(entry));
    } else {
        forget(at);
        m_entries[at] = std::move(entry);
    }
    index(at);
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* name, AcDbObject* value, AcDbObjectId& id)
{
    id.setNull();
    Acad::ErrorStatus status = checkNew(name, value);
    if (status == Acad::eOk) {
        status = makeRoom(name, *value);
    }
    if (status != Acad::eOk) {
        return status;
    }
    Store& store = *stub()->store;
    AcDbStub* object = value->stub();
    const bool isNew = object == nullptr;
    if (isNew) {
        fitToVersion(value->changeGroups(), store.version());
        object = store.appendObject(store.typeNamed(corma::toUtf8(value->dxfName())));
        store.setResident(*object, std::unique_ptr<AcDbObject>(value), stub()->handle);
        openForWrite(*value);
    }
    if (isNew || object->isLoose) {
        Groups& groups = value->changeGroups();
        setReactor(groups, groups.ownerHandle(), stub()->handle);
        groups.setOwnerHandle(stub()->handle);
    }
    if (object->isLoose) {
        store.setLoose(*object, false);
    }
    id = AcDbObjectId(object);
    const std::size_t at = positionOf(name);
    if (at == kNowhere || stubOf(m_entries[at]) != object) {
        enter(name, object->handle);
        changeGroups();
    }
    return Acad::eOk;
}

void AcDbDictionary::takeOut(std::size_t position)
{
    loosen(m_entries[position]);
    forget(position);
    m_entries[position].isRemoved = true;
    ++m_removed;
    compact();
    changeGroups();
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* name)
{
    AcDbObjectId former;
    return remove(name, former);
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* name, AcDbObjectId& formerId)
{
    formerId.setNull();
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    const Acad::ErrorStatus status = getAt(name, formerId);
    if (status == Acad::eOk) {
        takeOut(positionOf(name));
    }
    return status;
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId id)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    const std::size_t at = positionOf(id);
    if (at == kNowhere) {
        return Acad::eKeyNotFound;
    }
    takeOut(at);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::erase(bool erasing)
{
    if (stub() != nullptr && stub() == &stub()->store->namedObjects()) {
        return Acad::eCannotBeErasedByCaller;
    }
    return AcDbObject::erase(erasing);
}

// --- iterator ------------------------------------------------------------------------------------

AcDbDictionaryIterator::AcDbDictionaryIterator(const AcDbDictionary& dictionary,
                                               AcRx::DictIterType type)
    : m_dictionary(dictionary)
{
    const auto& entries = dictionary.m_entries;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (dictionary.stubOf(entries[i]) != nullptr) {
            m_positions.push_back(i);
        }
    }
    if (type == AcRx::kDictSorted) {
        std::vector<std::wstring> keys(entries.size());
        for (const std::size_t i : m_positions) {
            keys[i] = foldedName(entries[i].name.text());
        }
        std::stable_sort(m_positions.begin(), m_positions.end(),
                         [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    }
    ++m_dictionary.m_iterators;
}

AcDbDictionaryIterator::~AcDbDictionaryIterator()
{
    --m_dictionary.m_iterators;
}

bool AcDbDictionaryIterator::done() const
{
    return m_at >= m_positions.size();
}

bool AcDbDictionaryIterator::next()
{
    do {
        m_at += done() ? 0 : 1;
    } while (!done() && m_dictionary.stubOf(m_dictionary.m_entries[m_positions[m_at]]) == nullptr);
    return !done();
}

const ACHAR* AcDbDictionaryIterator::name() const
{
    return done() ? L"" : m_dictionary.m_entries[m_positions[m_at]].name.text().c_str();
}

AcDbObjectId AcDbDictionaryIterator::objectId() const
{
    return done() ? AcDbObjectId()
                  : AcDbObjectId(m_dictionary.stub()->store->find(
                      m_dictionary.m_entries[m_positions[m_at]].object.handle()));
}

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode) const
{
    object = nullptr;
    return done() ? Acad::eInvalidIndex : acdbOpenAcDbObject(object, objectId(), mode);
}
