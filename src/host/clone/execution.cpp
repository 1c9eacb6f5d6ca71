// How a plan is carried out. All that can fail was looked at before.

#include "host/acdb_object.h"
#include "host/clone/ClonePlan.h"
#include "host/clone/DictionaryIndex.h"

#include <algorithm>
#include <unordered_set>

namespace corma::host {

namespace {

using Role = PlannedRecord::Role;
using Fate = PlannedRecord::Fate;

constexpr int kKeyOfEntry = 3; // in a DICTIONARY
constexpr int kPathCount = 97; // in a HATCH: how many handles follow
constexpr int kBasePoint = 10; // of a BLOCK

// A group whose target stays behind is taken out where it is one of a list.
bool isListed(const Groups& groups, const Reference& reference)
{
    const std::wstring& type = groups[0].text();
    return reference.kind == Reference::Kind::reactor || reference.kind == Reference::Kind::owned
        || type == L"HATCH" || type == L"VIEWPORT" || type == L"IDBUFFER" || type == L"FIELDLIST";
}

/// Turns the names and handles of the source into those of the destination.
class Translation
{
public:
    Translation(ClonePlan& plan, Groups& groups, RecordKind kind)
        : m_plan(plan)
        , m_groups(groups)
        , m_isDropped(groups.size())
        , m_isDictionary(groups[0].text().ends_with(L"DICTIONARY")
                         || groups[0].isText(L"ACDBDICTIONARYWDFLT"))
    {
        for (const Reference& reference : referencesOf(groups, kind)) {
            translate(reference);
        }
    }

    void finish()
    {
        dropEmptyBraces();
        if (std::find(m_isDropped.begin(), m_isDropped.end(), true) == m_isDropped.end()) {
            return;
        }
        std::vector<Group> kept;
        kept.reserve(m_groups.size());
        for (std::size_t i = 0; i < m_groups.size(); ++i) {
            if (!m_isDropped[i]) {
                kept.push_back(std::move(m_groups[i]));
            }
        }
        m_groups = Groups(std::move(kept));
    }

private:
    void translate(const Reference& reference)
    {
        Group& group = m_groups[reference.at];
        const PlannedRecord* const target = m_plan.target(m_groups, reference);
        if (reference.kind == Reference::Kind::name) {
            if (target != nullptr && target->fate == Fate::added && target->name != nameIn(group)) {
                group.set(target->name);
            }
            return;
        }
        if (target != nullptr) {
            group.set(target->destination->handle);
            nameLineStyle(reference, *target);
            return;
        }
        drop(reference, group);
    }

    // A MLINE has the name of its style beside the handle.
    void nameLineStyle(const Reference& reference, const PlannedRecord& target)
    {
        const bool isStyle = reference.kind == Reference::Kind::hardPointer
            && m_groups[0].isText(L"MLINE") && target.role == Role::object;
        const auto name = isStyle ? m_groups.find(code::name) : std::nullopt;
        if (name && !target.name.empty() && !m_groups[*name].isText(target.name)) {
            m_groups[*name].set(target.name);
        }
    }

    void drop(const Reference& reference, Group& group)
    {
        if (m_groups[0].isText(L"SORTENTSTABLE") && group.code != code::extendedHandle) {
            // Entity and place in the order go together.
            const bool isPlace = reference.kind == Reference::Kind::sortHandle;
            const std::size_t other = isPlace ? reference.at - 1 : reference.at + 1;
            m_isDropped[reference.at] = true;
            if (other < m_groups.size() && m_groups[other].code != code::subclass) {
                m_isDropped[other] = true;
            }
            return;
        }
        if (!isListed(m_groups, reference) || group.code == code::extendedHandle) {
            group.set(Handle::none);
            return;
        }
        m_isDropped[reference.at] = true;
        if (m_isDictionary && reference.at > 0 && m_groups[reference.at - 1].code == kKeyOfEntry) {
            m_isDropped[reference.at - 1] = true;
        }
        if (m_groups[0].isText(L"HATCH")) {
            countDown(reference.at);
        }
    }

    void countDown(std::size_t at)
    {
        while (at > 0 && m_groups[at].code != kPathCount) {
            --at;
        }
        if (at > 0 && m_groups[at].integer() > 0) {
            m_groups[at].set(m_groups[at].integer() - 1);
        }
    }

    void dropEmptyBraces()
    {
        const std::size_t end = m_groups.body().end;
        for (std::size_t i = 1; i < end; ++i) {
            if (!isReactors(m_groups[i]) && !isExtensionDictionary(m_groups[i])) {
                continue;
            }
            std::size_t next = i + 1;
            while (next < end && m_isDropped[next]) {
                ++next;
            }
            if (next < end && isClosingBrace(m_groups[next])) {
                m_isDropped[i] = true;
                m_isDropped[next] = true;
            }
        }
    }

    ClonePlan& m_plan;
    Groups& m_groups;
    std::vector<bool> m_isDropped;
    bool m_isDictionary;
};

class Execution
{
public:
    explicit Execution(ClonePlan& plan)
        : m_plan(plan)
        , m_source(plan.job.source)
        , m_destination(plan.job.destination)
    {
    }

    void run()
    {
        for (PlannedRecord& planned : m_plan.records) {
            if (planned.fate == Fate::replaced) {
                empty(planned);
            }
        }
        for (PlannedRecord& planned : m_plan.records) {
            if (planned.fate == Fate::added) {
                make(planned);
            }
        }
        for (PlannedRecord& planned : m_plan.records) {
            if (planned.fate != Fate::existing && !planned.groups.empty()) {
                fill(planned);
            }
        }
        for (const PlannedRecord& planned : m_plan.records) {
            if (planned.role == Role::object && planned.fate == Fate::added
                && !planned.name.empty()) {
                enter(planned);
            }
        }
        finishModelSpace();
        describeTypes();
    }

private:
    // Programs that do not know a type by themselves find in its class what made it.
    void describeTypes()
    {
        std::unordered_set<std::string_view> known;
        for (const PlannedRecord& planned : m_plan.records) {
            if (planned.fate == Fate::added && planned.source != nullptr) {
                const std::string_view type = m_source.nameOf(planned.source->type);
                if (known.insert(type).second) {
                    describeType(type);
                }
            }
        }
    }

    void describeType(std::string_view type)
    {
        constexpr int kCount = 91; // of the records, since R2004
        Groups groups = m_source.classOf(type);
        if (groups.empty() || !m_destination.classOf(type).empty()) {
            return;
        }
        for (Group& group : groups) {
            group.raw = {};
        }
        if (m_destination.version() < DrawingVersion::r2004) {
            groups.remove(kCount, groups.body());
        }
        m_destination.addClass(std::move(groups));
    }

    // What the record of the destination owned goes with its former content.
    void empty(const PlannedRecord& planned)
    {
        constexpr int kFirstOwner = 350;
        constexpr int kBehindOwners = 370;
        AcDbStub& stub = *planned.destination;
        Groups groups = m_destination.groupsOf(stub);
        for (const Group& group : groups) {
            const bool owns = group.code >= kFirstOwner && group.code < kBehindOwners;
            AcDbStub* const owned = owns ? m_destination.find(group.handle()) : nullptr;
            if (owned != nullptr && m_destination.ownerOf(*owned) == &stub) {
                m_destination.erase(*owned, true);
            }
        }
        if (planned.role == Role::block) {
            emptyBlock(planned, groups);
        }
    }

    void emptyBlock(const PlannedRecord& planned, Groups& groups)
    {
        const Block& block = *m_destination.blockOf(*planned.destination);
        std::vector<AcDbStub*> entities;
        for (AcDbStub* at = m_destination.firstEntity(block); at != nullptr;
             at = m_destination.entityBehind(block, *at)) {
            entities.push_back(at);
        }
        for (AcDbStub* const entity : entities) {
            m_destination.erase(*entity, true);
        }
        const GroupRange dictionary = groups.braces(L"ACAD_XDICTIONARY");
        if (planned.groups.empty() && dictionary.begin < dictionary.end) {
            groups.erase(dictionary.begin - 1, dictionary.end - dictionary.begin + 2);
            m_destination.replaceGroups(*planned.destination, std::move(groups));
        }
    }

    void make(PlannedRecord& planned)
    {
        switch (planned.role) {
        case Role::entry:
            planned.destination
                = m_destination.appendEntry(planned.table, typeOf(planned), planned.name);
            break;
        case Role::block:
            planned.destination = m_destination.addBlock(planned.name).record;
            break;
        case Role::blockBegin:
            planned.destination = blockOf(*planned.into).begin;
            break;
        case Role::blockEnd:
            planned.destination = blockOf(*planned.into).end;
            break;
        case Role::entity:
            planned.destination
                = m_destination.appendEntity(blockOf(*planned.into), typeOf(planned));
            m_lastPart = planned.destination;
            break;
        case Role::subEntity:
            makeSubEntity(planned);
            break;
        case Role::object:
            (void)m_destination.makeRoomForObjects(); // its version was looked at
            planned.destination = m_destination.appendObject(typeOf(planned));
            break;
        }
    }

    // Behind the one before, which the plan has right ahead of it.
    void makeSubEntity(PlannedRecord& planned)
    {
        AcDbStub& entity = *planned.into->destination;
        AcDbStub& behind = m_lastPart == nullptr ? entity : *m_lastPart;
        planned.destination = m_destination.appendSubEntity(entity, behind, typeOf(planned));
        m_lastPart = planned.destination;
    }

    RecordType typeOf(const PlannedRecord& planned)
    {
        if (planned.source == nullptr) {
            return planned.table == TableKind::layer ? RecordType::layer : RecordType::appId;
        }
        return m_destination.typeNamed(m_source.nameOf(planned.source->type));
    }

    Block& blockOf(const PlannedRecord& block)
    {
        return *m_destination.blockOf(*block.destination);
    }

    void fill(PlannedRecord& planned)
    {
        Translation(m_plan, planned.groups, kindOf(planned.role)).finish();
        if (planned.destination == nullptr) {
            return; // the destination's block has no end
        }
        m_destination.setGroups(*planned.destination, std::move(planned.groups), ownerOf(planned));
    }

    Handle ownerOf(const PlannedRecord& planned)
    {
        if (planned.role == Role::entry || planned.role == Role::block) {
            return m_destination.table(planned.table).handle;
        }
        return planned.into->destination->handle;
    }

    void enter(const PlannedRecord& planned)
    {
        const Opened<AcDbDictionary> dictionary(AcDbObjectId(planned.into->destination),
                                                AcDb::kForWrite);
        const Opened<AcDbObject> object(AcDbObjectId(planned.destination), AcDb::kForWrite);
        AcDbObjectId id;
        if (dictionary && object) {
            dictionary->setAt(planned.name.c_str(), object.get(), id);
        }
    }

    // The block that a drawing becomes: its origin, and whether references ask for attributes.
    void finishModelSpace()
    {
        const std::wstring& name = m_plan.job.modelSpaceAs;
        if (name.empty()) {
            return;
        }
        constexpr int kHasAttributes = 2;
        AcDbStub& begin = *m_destination.findBlock(name)->begin;
        Groups groups = m_destination.groupsOf(begin);
        const bool isDivided = groups.find(code::subclass).has_value();
        const auto part
            = [&] { return isDivided ? groups.subclass(L"AcDbBlockBegin") : groups.body(); };
        const Groups base = m_source.variable(L"$INSBASE");
        groups.setPoint(kBasePoint, part(), base.point(kBasePoint, base.all()));
        groups.set(code::flags, part(), std::int64_t {hasDefinitions() ? kHasAttributes : 0});
        m_destination.replaceGroups(begin, std::move(groups));
    }

    bool hasDefinitions()
    {
        constexpr int kIsConstant = 2;
        const Block& block = *m_destination.findBlock(m_plan.job.modelSpaceAs);
        for (AcDbStub* at = m_destination.firstEntity(block); at != nullptr;
             at = m_destination.entityBehind(block, *at)) {
            if (at->isErased || at->type != RecordType::attributeDefinition) {
                continue;
            }
            const Groups groups = m_destination.groupsOf(*at);
            const auto flags
                = groups.integer(code::flags, groups.subclass(L"AcDbAttributeDefinition"));
            if ((flags & kIsConstant) == 0) {
                return true;
            }
        }
        return false;
    }

    ClonePlan& m_plan;
    Store& m_source;
    Store& m_destination;
    AcDbStub* m_lastPart = nullptr; // of the entity that is being made
};

} // namespace

void execute(ClonePlan& plan, AcDbIdMapping& mapping)
{
    Execution(plan).run();
    for (const PlannedRecord& planned : plan.records) {
        // The begin of a block of R12 is its record, which has its own place in the plan.
        if (planned.source != nullptr && plan.find(planned.source) == &planned) {
            mapping.assign(AcDbIdPair(AcDbObjectId(planned.source),
                                      AcDbObjectId(planned.destination),
                                      planned.fate != Fate::existing));
        }
    }
}

} // namespace corma::host
