#include "host/clone/ClonePlanner.h"

#include "host/acdb_object.h"
#include "host/transform.h"

#include <array>
#include <iterator>

namespace corma::host {

namespace {

constexpr int kLayout = 340; // of a BLOCK_RECORD
constexpr int kSecondName = 3; // of a BLOCK
constexpr int kLayoutName = 410;
constexpr int kUnits = 70; // of a BLOCK_RECORD

DrawingVersion knownVersion(const Store& store)
{
    return std::max(store.version(), DrawingVersion::r12); // as what tells none is read
}

void setText(Groups& groups, int code, const std::wstring& text)
{
    if (const auto at = groups.find(code)) {
        groups[*at].set(text);
    }
}

// Which space an entity is in belongs to the drawing, not to it.
void setSpace(Groups& entity, bool isInPaperSpace)
{
    for (const int groupCode : {code::paperSpace, kLayoutName}) {
        entity.remove(groupCode, entity.subclass(kEntityMarker));
    }
    if (isInPaperSpace) {
        entity.insert(entity.subclass(kEntityMarker).begin, Group(code::paperSpace, 1));
    }
}

void dropEntries(Groups& dictionary)
{
    constexpr int kSoftEntry = 350;
    constexpr int kHardEntry = 360;
    std::vector<Group> kept;
    bool isInBraces = false;
    for (Group& group : dictionary) {
        if (group.code == code::braces) {
            isInBraces = !isClosingBrace(group);
            continue;
        }
        const bool isEntry
            = group.code == kSecondName || group.code == kSoftEntry || group.code == kHardEntry;
        if (!isInBraces && !isEntry) {
            kept.push_back(std::move(group));
        }
    }
    dictionary = Groups(std::move(kept));
}

bool takesBits(const Store& source, const Store& destination)
{
    return source.bitsForm() && source.bitsForm() == destination.bitsForm();
}

} // namespace

ClonePlanner::ClonePlanner(ClonePlan& plan)
    : m_plan(plan)
    , m_job(plan.job)
    , m_source(plan.job.source)
    , m_destination(plan.job.destination)
    , m_versions {knownVersion(m_source), knownVersion(m_destination),
                  takesBits(m_source, m_destination)}
    , m_sourceDictionaries(m_source)
    , m_destinationDictionaries(m_destination)
{
    if (m_job.transform) {
        m_turning = *m_job.transform;
        for (unsigned int row = 0; row < 3; ++row) {
            m_turning(row, 3) = 0.0;
        }
    }
}

CloneFailure ClonePlanner::complete()
{
    planEntities();
    planEntries();
    planObjects();
    planModelSpace();
    for (std::size_t i = 0; i < m_plan.records.size() && !m_failure; ++i) {
        work(m_plan.records[i]);
    }
    if (!m_failure) {
        transformAll();
    }
    return m_failure ? m_failure : checkCircles(m_plan);
}

void ClonePlanner::fail(CloneFailure failure)
{
    if (!m_failure) {
        m_failure = std::move(failure);
    }
}

void ClonePlanner::fail(Acad::ErrorStatus status, std::wstring message)
{
    fail(CloneFailure {status, std::move(message)});
}

void ClonePlanner::failIfOpen(const AcDbStub& stub)
{
    const AcDbObject* const object = stub.resident;
    if (object != nullptr && object->isReadEnabled()) {
        fail(object->isWriteEnabled() ? Acad::eWasOpenForWrite : Acad::eWasOpenForRead,
             L"Cannot clone: the record " + toText(stub.handle)
                 + L" of the destination has to change, and is open.");
    }
}

void ClonePlanner::failIfBlockIsOpen(const Block& block)
{
    failIfOpen(*block.record);
    if (block.begin == nullptr) {
        fail(Acad::eInvalidBlockName,
             L"Cannot clone: the block " + block.name + L" of the destination has no content.");
        return;
    }
    for (AcDbStub* at = m_destination.firstEntity(block); at != nullptr;
         at = m_destination.entityBehind(block, *at)) {
        failIfOpen(*at);
        for (const AcDbStub* sub = Store::firstSubEntity(*at); sub != nullptr;
             sub = Store::subEntityBehind(*sub)) {
            failIfOpen(*sub);
        }
    }
}

// --- what is asked for ---------------------------------------------------------------------------

void ClonePlanner::planEntities()
{
    if (m_job.block == nullptr) {
        return;
    }
    PlannedRecord home;
    home.role = Role::block;
    home.fate = Fate::existing;
    home.destination = m_job.block;
    m_home = &m_plan.add(std::move(home));
    for (AcDbStub* const entity : m_job.entities) {
        const Block* const space = m_source.spaceOf(*entity);
        if (space != nullptr && space->share != Block::Share::none) {
            m_plan.lead(space->record, *m_home);
        }
        if (m_plan.find(entity) == nullptr) {
            addEntity(*entity, *m_home);
        }
    }
}

void ClonePlanner::planEntries()
{
    for (AcDbStub* const entry : m_job.entries) {
        const PlannedRecord* const planned = wantEntry(*entry);
        const bool isLayout = planned != nullptr && planned->source == nullptr;
        if (planned == nullptr || isLayout) {
            fail(Acad::eNotApplicable,
                 L"Cannot clone the record " + toText(entry->handle)
                     + L": it is the space of a layout, or in no table.");
        }
    }
}

void ClonePlanner::planObjects()
{
    if (m_job.dictionary == nullptr || m_job.objects.empty()) {
        return;
    }
    if (m_versions.toOld() || m_versions.fromOld()) {
        fail(Acad::eInvalidDwgVersion,
             L"Cannot clone objects into a drawing of version " + nameOf(m_versions.to)
                 + L": that version has none.");
        return;
    }
    PlannedRecord home;
    home.fate = Fate::existing;
    home.destination = m_job.dictionary;
    PlannedRecord& dictionary = m_plan.add(std::move(home));
    for (AcDbStub* const object : m_job.objects) {
        const AcDbStub* const owner = m_source.ownerOf(*object);
        const std::wstring name = owner == nullptr || !isDictionary(*owner)
            ? std::wstring()
            : m_sourceDictionaries.nameOf(*owner, *object);
        if (name.empty()) {
            fail(Acad::eKeyNotFound,
                 L"Cannot clone the object " + toText(object->handle)
                     + L": it has no name in a dictionary.");
            return;
        }
        wantKeyed(*object, dictionary, name);
    }
}

void ClonePlanner::planModelSpace()
{
    if (m_job.modelSpaceAs.empty()) {
        return;
    }
    const Block& model = *m_source.findBlock(ACDB_MODEL_SPACE);
    PlannedRecord planned;
    planned.source = model.record;
    planned.role = Role::block;
    planned.name = m_job.modelSpaceAs;
    if (const Block* const there = m_destination.findBlock(m_job.modelSpaceAs)) {
        planned.name = there->name; // as its user wrote it
        planned.fate = Fate::replaced;
        planned.destination = there->record;
        failIfBlockIsOpen(*there);
    }
    PlannedRecord& block = addLed(std::move(planned));
    m_names[{kBlockTable, foldedName(block.name)}] = &block;
    m_home = &block;
    for (AcDbStub* at = m_source.firstEntity(model); at != nullptr;
         at = m_source.entityBehind(model, *at)) {
        if (!at->isErased) {
            addEntity(*at, block);
        }
    }
    block.parts = m_plan.records.size() - block.position - 1;
}

// --- adding to the plan --------------------------------------------------------------------------

PlannedRecord& ClonePlanner::addLed(PlannedRecord planned)
{
    PlannedRecord& added = m_plan.add(std::move(planned));
    m_plan.lead(added.source, added);
    return added;
}

PlannedRecord& ClonePlanner::addEntity(AcDbStub& source, PlannedRecord& into)
{
    PlannedRecord planned;
    planned.source = &source;
    planned.role = Role::entity;
    planned.into = &into;
    if (&into == m_home && m_job.transform) {
        planned.transform = &*m_job.transform;
    }
    PlannedRecord& entity = addLed(std::move(planned));
    for (AcDbStub* at = Store::firstSubEntity(source); at != nullptr;
         at = Store::subEntityBehind(*at)) {
        if (at->isErased) {
            continue;
        }
        PlannedRecord part;
        part.source = at;
        part.role = Role::subEntity;
        part.into = &entity;
        addLed(std::move(part));
    }
    return entity;
}

// Begin, entities and end of a block: all at once, so that they keep their order whatever else
// points at one of them.
void ClonePlanner::addParts(PlannedRecord& planned)
{
    const Block& block = *m_source.blockOf(*planned.source);
    const auto addFrame = [&](AcDbStub* stub, Role role) {
        if (stub == nullptr || stub->isImplied) {
            return;
        }
        PlannedRecord part;
        part.source = stub;
        part.role = role;
        part.into = &planned;
        PlannedRecord& added = m_plan.add(std::move(part));
        if (stub != planned.source) {
            m_plan.lead(stub, added); // in R12 the begin is the record, too
        }
    };
    addFrame(block.begin, Role::blockBegin);
    for (AcDbStub* at = m_source.firstEntity(block); at != nullptr;
         at = m_source.entityBehind(block, *at)) {
        if (!at->isErased) {
            addEntity(*at, planned);
        }
    }
    addFrame(block.end, Role::blockEnd);
    planned.parts = m_plan.records.size() - planned.position - 1;
}

// A record of R12 may name a layer that its drawing does not define. Layer 0 is in every drawing.
void ClonePlanner::addPlain(TableKind table, const std::wstring& name)
{
    constexpr int kWhite = 7;
    const bool isLayer = table == TableKind::layer;
    if ((!isLayer && table != TableKind::appId) || name.empty() || (isLayer && name == L"0")
        || m_destination.findEntry(table, name) != nullptr) {
        return;
    }
    PlannedRecord*& known = m_names[{table, foldedName(name)}];
    if (known != nullptr) {
        return;
    }
    PlannedRecord planned;
    planned.role = Role::entry;
    planned.table = table;
    planned.name = name;
    std::vector<Group> groups = {{code::type, isLayer ? L"LAYER" : L"APPID"}};
    if (!m_versions.toOld()) {
        groups.emplace_back(code::subclass, L"AcDbSymbolTableRecord");
        groups.emplace_back(code::subclass,
                            isLayer ? L"AcDbLayerTableRecord" : L"AcDbRegAppTableRecord");
    }
    groups.emplace_back(code::name, GroupValue(name));
    groups.emplace_back(code::flags, 0);
    if (isLayer) {
        groups.emplace_back(code::color, kWhite);
        groups.emplace_back(code::linetype, L"Continuous");
    }
    planned.groups = Groups(std::move(groups));
    known = &m_plan.add(std::move(planned));
}

// --- working a record out ------------------------------------------------------------------------

void ClonePlanner::work(PlannedRecord& planned)
{
    if (planned.fate == Fate::existing || planned.source == nullptr) {
        return;
    }
    if (planned.role == Role::block) {
        workBlock(planned);
        return;
    }
    if (!takeGroups(planned)) {
        return;
    }
    switch (planned.role) {
    case Role::entry:
        setText(planned.groups, code::name, planned.name);
        break;
    case Role::blockBegin:
        setText(planned.groups, code::name, planned.into->name);
        setText(planned.groups, kSecondName, planned.into->name);
        setSpace(planned.groups, false);
        break;
    case Role::blockEnd:
        setSpace(planned.groups, false);
        break;
    case Role::entity:
    case Role::subEntity: {
        const PlannedRecord& block
            = planned.role == Role::entity ? *planned.into : *planned.into->into;
        const Block* const into
            = block.destination == nullptr ? nullptr : m_destination.blockOf(*block.destination);
        setSpace(planned.groups, into != nullptr && into->share == Block::Share::paperSpace);
        break;
    }
    case Role::object:
        if (planned.isFrame) {
            dropEntries(planned.groups);
        } else if (planned.groups[0].isText(L"MLINESTYLE") && !planned.name.empty()) {
            setText(planned.groups, code::name, planned.name);
        }
        break;
    case Role::block:
        break;
    }
    follow(planned);
}

// Before R13 there are no records of blocks: the destination then makes or keeps its own.
void ClonePlanner::workBlock(PlannedRecord& planned)
{
    const bool hasRecord
        = planned.source->type == RecordType::blockRecord && !planned.source->isImplied;
    if (!hasRecord || m_versions.toOld()) {
        return;
    }
    if (!takeGroups(planned)) {
        return;
    }
    Groups& groups = planned.groups;
    setText(groups, code::name, planned.name);
    if (const auto layout = groups.find(kLayout)) {
        groups[*layout].set(Handle::none);
    }
    if (&planned == m_home && m_versions.to >= DrawingVersion::r2007) {
        const Groups units = m_source.variable(L"$INSUNITS");
        groups.set(kUnits, groups.subclass(L"AcDbBlockTableRecord"),
                   units.integer(kUnits, units.all()));
    }
    follow(planned);
}

bool ClonePlanner::takeGroups(PlannedRecord& planned)
{
    planned.groups = m_source.groupsOf(*planned.source);
    if (planned.source->type == RecordType::dimStyle) {
        translateArrows(planned.groups);
    }
    fail(convertRecord(planned.groups, kindOf(planned.role), m_versions));
    return !m_failure;
}

// The blocks of arrows are named up to R14, and pointed at from R2000 on.
void ClonePlanner::translateArrows(Groups& dimStyle)
{
    constexpr std::array<std::pair<int, int>, 3> kArrows = {{{5, 342}, {6, 343}, {7, 344}}};
    const bool toPointers
        = m_versions.from < DrawingVersion::r2000 && m_versions.to >= DrawingVersion::r2000;
    const bool toNames
        = m_versions.from >= DrawingVersion::r2000 && m_versions.to < DrawingVersion::r2000;
    if (!toPointers && !toNames) {
        return;
    }
    for (const auto& [nameCode, pointerCode] : kArrows) {
        const auto at = dimStyle.find(toNames ? pointerCode : nameCode);
        if (!at) {
            continue;
        }
        const AcDbStub* const pointed = m_source.find(dimStyle[*at].handle());
        const Block* const block = toPointers ? m_source.findBlock(nameIn(dimStyle[*at]))
            : pointed == nullptr              ? nullptr
                                              : m_source.blockOf(*pointed);
        if (block == nullptr) {
            dimStyle.erase(*at);
        } else if (toNames) {
            dimStyle[*at] = Group(nameCode, GroupValue(block->name));
        } else {
            dimStyle[*at] = Group(pointerCode, block->record->handle);
        }
    }
}

void ClonePlanner::follow(PlannedRecord& planned)
{
    if (planned.groups[0].isText(L"SHAPE")) {
        wantShapeFiles();
    }
    const Groups& groups = planned.groups;
    for (const Reference& reference : referencesOf(groups, kindOf(planned.role))) {
        follow(groups, reference, planned);
    }
}

void ClonePlanner::follow(const Groups& groups, const Reference& reference, PlannedRecord& planned)
{
    AcDbStub* const target = m_plan.named(groups, reference);
    if (target == nullptr) {
        if (reference.kind == Reference::Kind::name) {
            addPlain(reference.table, groups[reference.at].text());
        }
        return;
    }
    switch (reference.kind) {
    case Reference::Kind::owned:
        wantOwned(*target, planned);
        break;
    case Reference::Kind::name:
    case Reference::Kind::hardPointer:
        if (PlannedRecord* const wanted = want(*target)) {
            movePicture(planned, *wanted);
        }
        break;
    case Reference::Kind::softPointer:
        // Extended data has one kind of handles only; what a style or a block stands behind it is
        // needed, as the arrows of a dimension are.
        if (groups[reference.at].code == code::extendedHandle
            && target->kind == RecordKind::tableEntry) {
            want(*target);
        }
        break;
    case Reference::Kind::reactor:
    case Reference::Kind::sortHandle:
        break;
    }
}

// A dimension is drawn by a block of its own, at a point that moves with it. What else becomes of
// the dimension has to become of the block.
void ClonePlanner::movePicture(const PlannedRecord& dimension, PlannedRecord& picture)
{
    const bool isPicture = dimension.role == Role::entity && picture.role == Role::block
        && picture.fate == Fate::added && picture.name.starts_with(L'*');
    if (!isPicture || dimension.transform == nullptr || m_turning == AcGeMatrix3d::kIdentity
        || !dimension.groups[0].text().ends_with(L"DIMENSION")) {
        return;
    }
    for (std::size_t i = 1; i <= picture.parts; ++i) {
        PlannedRecord& part = m_plan.records[picture.position + i];
        if (part.role == Role::entity && part.transform == nullptr) {
            part.transform = &m_turning;
        }
    }
}

void ClonePlanner::transformAll()
{
    const auto& records = m_plan.records;
    for (std::size_t i = 0; i < records.size() && !m_failure; ++i) {
        if (records[i].role != Role::entity || records[i].transform == nullptr) {
            continue;
        }
        std::size_t end = i + 1;
        while (end < records.size() && records[end].role == Role::subEntity) {
            ++end;
        }
        transform(i, end);
    }
}

void ClonePlanner::transform(std::size_t entity, std::size_t end)
{
    auto& records = m_plan.records;
    std::vector<Groups> parts;
    for (std::size_t i = entity + 1; i < end; ++i) {
        parts.push_back(std::move(records[i].groups));
    }
    PlannedRecord& planned = records[entity];
    const Acad::ErrorStatus status = transformRecords(planned.groups, parts, *planned.transform);
    if (status != Acad::eOk) {
        fail(status, L"Cannot transform a record of type " + planned.groups[0].text() + L".");
        return;
    }
    for (std::size_t i = entity + 1; i < end; ++i) {
        records[i].groups = std::move(parts[i - entity - 1]);
    }
}

} // namespace corma::host
