// What a cloning needs, and where that stands among what the destination has.

#include "host/acdb_object.h"
#include "host/clone/ClonePlanner.h"

#include <algorithm>
#include <array>

namespace corma::host {

namespace {

constexpr int kDeepest = 64; // owners of owners; more are a circle
constexpr int kFontFile = 3; // of a STYLE
constexpr int kIsShapeFile = 1; // in the flags of a STYLE

struct StandardName
{
    TableKind table;
    std::wstring_view folded;
};

constexpr std::array kLinetypesWithoutContent
    = {std::wstring_view(L"ByLayer"), std::wstring_view(L"ByBlock")};

constexpr std::array kStandardNames = {
    StandardName {TableKind::layer, L"0"},
    StandardName {TableKind::linetype, L"Continuous"},
    StandardName {TableKind::textStyle, L"Standard"},
    StandardName {TableKind::dimStyle, L"Standard"},
};

constexpr std::array<std::wstring_view, 5> kStandardKeys
    = {L"Standard", L"ByLayer", L"ByBlock", L"Global", L"Normal"};

// What two drawings have under one name is the same thing: a second one would only confuse.
constexpr std::array<std::wstring_view, 5> kNeverTwice
    = {L"SCALE", L"VISUALSTYLE", L"DICTIONARYVAR", L"ACDBPLACEHOLDER", L"RASTERVARIABLES"};

bool isSame(std::wstring_view left, std::wstring_view right)
{
    return foldedName(left) == foldedName(right);
}

template<class Names> bool holds(const Names& names, std::wstring_view name)
{
    return std::any_of(names.begin(), names.end(),
                       [&](std::wstring_view known) { return isSame(known, name); });
}

bool isLayoutName(std::wstring_view name)
{
    const std::wstring folded = foldedName(name);
    return folded == foldedName(ACDB_MODEL_SPACE)
        || folded.starts_with(foldedName(ACDB_PAPER_SPACE));
}

} // namespace

PlannedRecord* ClonePlanner::want(AcDbStub& source)
{
    if (PlannedRecord* const known = m_plan.find(&source)) {
        return known;
    }
    switch (source.kind) {
    case RecordKind::tableEntry:
        return wantEntry(source);
    case RecordKind::blockBegin:
    case RecordKind::blockEnd: {
        const Block* const block = m_source.blockOf(source);
        if (block == nullptr || block->record == nullptr) {
            return nullptr;
        }
        wantEntry(*block->record);
        return m_plan.find(&source);
    }
    case RecordKind::entity:
    case RecordKind::subEntity:
        return wantEntity(source);
    case RecordKind::object:
        return wantObject(source);
    default:
        return nullptr;
    }
}

// --- entries of tables ---------------------------------------------------------------------------

PlannedRecord* ClonePlanner::wantEntry(AcDbStub& source)
{
    if (PlannedRecord* const known = m_plan.find(&source)) {
        return known;
    }
    PlannedRecord planned;
    planned.source = &source;
    planned.role = Role::entry;
    if (m_source.blockOf(source) != nullptr) {
        planned.role = Role::block;
    } else {
        const auto table
            = source.container == nullptr ? std::nullopt : m_source.kindOfTable(*source.container);
        if (!table || *table == kBlockTable) {
            return nullptr;
        }
        planned.table = *table;
    }
    planned.name = m_source.nameOfEntry(source);
    PlannedRecord& merged = mergeEntry(std::move(planned));
    m_plan.lead(&source, merged);
    if (merged.source == &source && merged.role == Role::block && merged.fate != Fate::existing) {
        addParts(merged);
    }
    return &merged;
}

PlannedRecord& ClonePlanner::mergeEntry(PlannedRecord planned)
{
    const bool isBlock = planned.role == Role::block;
    const bool isAnonymous = isBlock && planned.name.starts_with(L'*');
    if (isAnonymous && isLayoutName(planned.name)) {
        const bool isModel = isSame(planned.name, ACDB_MODEL_SPACE);
        planned.destination
            = m_destination.findBlock(isModel ? ACDB_MODEL_SPACE : ACDB_PAPER_SPACE)->record;
        planned.source = nullptr;
        planned.fate = Fate::existing;
        return m_plan.add(std::move(planned));
    }
    if (isAnonymous) {
        planned.name = freeAnonymousName(planned.name);
        return m_plan.add(std::move(planned));
    }
    const bool isShapeFile = planned.table == TableKind::textStyle && planned.name.empty();
    if (!isShapeFile) {
        const auto taken = m_names.find({planned.table, foldedName(planned.name)});
        if (taken != m_names.end()) {
            return *taken->second;
        }
    }
    const std::wstring sourceName = planned.name;
    AcDbStub* const there = isShapeFile ? shapeFileLike(*planned.source) : counterpart(planned);
    meet(planned, there, !isStandard(planned) && !isShapeFile);
    PlannedRecord& merged = m_plan.add(std::move(planned));
    if (!isShapeFile) {
        m_names[{merged.table, foldedName(sourceName)}] = &merged;
        m_names[{merged.table, foldedName(merged.name)}] = &merged;
    }
    return merged;
}

AcDbStub* ClonePlanner::counterpart(const PlannedRecord& planned)
{
    if (planned.role == Role::block) {
        const Block* const block = m_destination.findBlock(planned.name);
        return block == nullptr ? nullptr : block->record;
    }
    return m_destination.findEntry(planned.table, planned.name);
}

// What becomes of a record when the destination has one of its name.
void ClonePlanner::meet(PlannedRecord& planned, AcDbStub* there, bool mayBeReplaced)
{
    if (there == nullptr) {
        return;
    }
    const bool mangles
        = m_job.rule == AcDb::kDrcMangleName || m_job.rule == AcDb::kDrcXrefMangleName;
    if (!mayBeReplaced || (!mangles && m_job.rule != AcDb::kDrcReplace)) {
        planned.fate = Fate::existing;
        planned.destination = there;
        return;
    }
    if (mangles) {
        planned.name = freeName(planned);
        return;
    }
    planned.fate = Fate::replaced;
    planned.destination = there;
    if (planned.role == Role::block) {
        failIfBlockIsOpen(*m_destination.blockOf(*there));
    } else {
        failIfOpen(*there);
    }
}

bool ClonePlanner::isStandard(const PlannedRecord& planned) const
{
    if (planned.table == TableKind::appId
        || (planned.table == TableKind::linetype
            && holds(kLinetypesWithoutContent, planned.name))) {
        return true;
    }
    return m_job.standard == CloneJob::Standard::kept
        && std::any_of(
               kStandardNames.begin(), kStandardNames.end(), [&](const StandardName& standard) {
                   return standard.table == planned.table && isSame(standard.folded, planned.name);
               });
}

std::wstring ClonePlanner::freeName(const PlannedRecord& planned)
{
    const std::wstring prefix
        = m_job.rule == AcDb::kDrcXrefMangleName ? m_job.drawingName : std::wstring();
    PlannedRecord tried;
    tried.role = planned.role;
    tried.table = planned.table;
    for (int number = 0;; ++number) {
        tried.name = prefix + L"$" + std::to_wstring(number) + L"$" + planned.name;
        const bool isTaken = planned.role == Role::object
            ? m_keys.contains({planned.into, foldedName(tried.name)})
                || m_destinationDictionaries.at(*planned.into->destination, tried.name) != nullptr
            : m_names.contains({planned.table, foldedName(tried.name)})
                || counterpart(tried) != nullptr;
        if (!isTaken) {
            return tried.name;
        }
    }
}

std::wstring ClonePlanner::freeAnonymousName(std::wstring_view name)
{
    const auto digits = name.find_last_not_of(L"0123456789") + 1;
    const std::wstring prefix(name.substr(0, digits));
    int& last = m_anonymous[foldedName(prefix)];
    std::wstring tried;
    do {
        tried = prefix + std::to_wstring(++last);
    } while (m_destination.findBlock(tried) != nullptr);
    return tried;
}

// --- shapes --------------------------------------------------------------------------------------

// A SHAPE tells its own name, but not the file that it is in.
void ClonePlanner::wantShapeFiles()
{
    if (m_hasShapeFiles) {
        return;
    }
    m_hasShapeFiles = true;
    for (AcDbStub* at = m_source.firstEntry(TableKind::textStyle); at != nullptr;
         at = m_source.entryBehind(TableKind::textStyle, *at)) {
        const Groups groups = m_source.groupsOf(*at);
        if (!at->isErased && (groups.integer(code::flags, groups.body()) & kIsShapeFile) != 0) {
            wantEntry(*at);
        }
    }
}

// Shape files have no name of their own: the same file is the same style.
AcDbStub* ClonePlanner::shapeFileLike(const AcDbStub& style)
{
    const std::wstring file = m_source.textOf(style, kFontFile);
    for (AcDbStub* at = m_destination.firstEntry(TableKind::textStyle); at != nullptr;
         at = m_destination.entryBehind(TableKind::textStyle, *at)) {
        if (!at->isErased && m_destination.textOf(*at, code::name).empty()
            && isSame(m_destination.textOf(*at, kFontFile), file)) {
            return at;
        }
    }
    return nullptr;
}

// --- entities ------------------------------------------------------------------------------------

// One of a block comes with its block; one that stands in a space goes where the others go.
PlannedRecord* ClonePlanner::wantEntity(AcDbStub& source)
{
    AcDbStub& entity = source.kind == RecordKind::subEntity ? *source.container : source;
    const Block* const block = m_source.spaceOf(entity);
    if (block != nullptr && block->share == Block::Share::none && !isLayoutName(block->name)) {
        wantEntry(*block->record);
        return m_plan.find(&source);
    }
    if (m_home == nullptr) {
        PlannedRecord home;
        home.role = Role::block;
        home.fate = Fate::existing;
        home.destination = m_destination.findBlock(ACDB_MODEL_SPACE)->record;
        m_home = &m_plan.add(std::move(home));
    }
    addEntity(entity, *m_home);
    return m_plan.find(&source);
}

// --- objects -------------------------------------------------------------------------------------

PlannedRecord* ClonePlanner::wantOwned(AcDbStub& source, PlannedRecord& owner)
{
    if (PlannedRecord* const known = m_plan.find(&source)) {
        return known;
    }
    if (source.kind != RecordKind::object) {
        return want(source);
    }
    PlannedRecord planned;
    planned.source = &source;
    planned.into = &owner;
    return &addLed(std::move(planned));
}

// One that is pointed at comes along with what owns it: the dictionary that it is found in by name,
// or the record that it is a part of.
PlannedRecord* ClonePlanner::wantObject(AcDbStub& source)
{
    AcDbStub* const owner = m_source.ownerOf(source);
    if (owner == nullptr || owner == &source) {
        return nullptr;
    }
    if (isDictionary(*owner)) {
        if (PlannedRecord* const dictionary = wantDictionary(*owner)) {
            const std::wstring name = m_sourceDictionaries.nameOf(*owner, source);
            return name.empty() ? nullptr : wantKeyed(source, *dictionary, name);
        }
    }
    std::vector<AcDbStub*> chain = {&source};
    for (AcDbStub* at = owner; at != nullptr && m_plan.find(at) == nullptr
         && at->kind == RecordKind::object && chain.size() < kDeepest;
         at = m_source.ownerOf(*at)) {
        chain.push_back(at);
    }
    AcDbStub* const top = m_source.ownerOf(*chain.back());
    PlannedRecord* above
        = top == nullptr || top->kind == RecordKind::object ? m_plan.find(top) : want(*top);
    while (!chain.empty() && above != nullptr && above->fate != Fate::existing) {
        above = wantOwned(*chain.back(), *above);
        chain.pop_back();
    }
    return m_plan.find(&source);
}

// A dictionary that hangs in that of all named objects; null for any other. The destination's own
// stands for it, or a new one without entries.
PlannedRecord* ClonePlanner::wantDictionary(AcDbStub& source, int depth)
{
    if (PlannedRecord* const known = m_plan.find(&source)) {
        return known->isFrame || known->fate == Fate::existing ? known : nullptr;
    }
    PlannedRecord planned;
    planned.source = &source;
    if (&source == &m_source.namedObjects()) {
        planned.fate = Fate::existing;
        planned.destination = &m_destination.namedObjects();
        return &addLed(std::move(planned));
    }
    AcDbStub* const owner = m_source.ownerOf(source);
    if (owner == nullptr || !isDictionary(*owner) || depth >= kDeepest) {
        return nullptr;
    }
    planned.into = wantDictionary(*owner, depth + 1);
    planned.name = m_sourceDictionaries.nameOf(*owner, source);
    if (planned.into == nullptr || planned.name.empty()) {
        return nullptr;
    }
    if (planned.into->fate == Fate::existing) {
        planned.destination
            = m_destinationDictionaries.at(*planned.into->destination, planned.name);
    }
    if (planned.destination != nullptr) {
        planned.fate = Fate::existing;
    } else {
        planned.isFrame = true;
        if (planned.into->fate == Fate::existing) {
            failIfOpen(*planned.into->destination);
        }
    }
    if (planned.fate == Fate::existing && !isDictionary(*planned.destination)) {
        return nullptr;
    }
    return &addLed(std::move(planned));
}

PlannedRecord* ClonePlanner::wantKeyed(AcDbStub& source, PlannedRecord& dictionary,
                                       const std::wstring& sourceName)
{
    const auto taken = m_keys.find({&dictionary, foldedName(sourceName)});
    if (taken != m_keys.end()) {
        m_plan.lead(&source, *taken->second);
        return taken->second;
    }
    PlannedRecord planned;
    planned.source = &source;
    planned.into = &dictionary;
    planned.name = sourceName;
    const bool isThere = dictionary.fate == Fate::existing;
    AcDbStub* const there
        = isThere ? m_destinationDictionaries.at(*dictionary.destination, sourceName) : nullptr;
    const std::string_view type = m_source.nameOf(source.type);
    const bool isStandardKey
        = m_job.standard == CloneJob::Standard::kept && holds(kStandardKeys, sourceName);
    meet(planned, there,
         !isStandardKey && !holds(kNeverTwice, std::wstring(type.begin(), type.end())));
    if (planned.fate == Fate::replaced && m_destination.nameOf(there->type) != type) {
        fail(Acad::eWrongObjectType,
             L"Cannot clone " + sourceName
                 + L": the destination has an object of another type under that name.");
    }
    if (planned.fate == Fate::added && isThere) {
        failIfOpen(*dictionary.destination);
    }
    PlannedRecord& added = addLed(std::move(planned));
    m_keys[{&dictionary, foldedName(sourceName)}] = &added;
    m_keys[{&dictionary, foldedName(added.name)}] = &added;
    return &added;
}

} // namespace corma::host
