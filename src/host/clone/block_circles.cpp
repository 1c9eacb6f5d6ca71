// Blocks that would contain themselves.

#include "host/acdb_object.h"
#include "host/clone/ClonePlan.h"

#include <unordered_set>

namespace corma::host {

namespace {

/// What the blocks of the destination are going to contain: by folded name, as that is what both a
/// block that is there and one that is planned have.
class BlockGraph
{
public:
    explicit BlockGraph(const ClonePlan& plan)
        : m_plan(plan)
        , m_destination(plan.job.destination)
    {
        for (const PlannedRecord& planned : plan.records) {
            const bool isEntity = planned.role == PlannedRecord::Role::entity;
            if (planned.role == PlannedRecord::Role::block) {
                note(planned);
            } else if (isEntity && planned.fate == PlannedRecord::Fate::added) {
                noteContent(planned);
            }
        }
    }

    /// The name of a block that contains itself; empty when none does.
    std::wstring circle()
    {
        for (const std::wstring& start : m_starts) {
            std::wstring found = circleFrom(start);
            if (!found.empty()) {
                return found;
            }
        }
        return {};
    }

private:
    struct Content
    {
        std::unordered_set<std::wstring> blocks;
        bool isComplete = false; // nothing of it is in the destination yet
    };

    std::wstring nameOf(const PlannedRecord& block)
    {
        if (block.fate == PlannedRecord::Fate::added) {
            return foldedName(block.name);
        }
        const Block* const there = m_destination.blockOf(*block.destination);
        return there == nullptr ? std::wstring() : foldedName(there->name);
    }

    void note(const PlannedRecord& block)
    {
        const std::wstring name = nameOf(block);
        if (block.fate != PlannedRecord::Fate::existing) {
            m_contents[name].isComplete = true;
            m_starts.push_back(name);
        } else if (block.source == nullptr && !name.starts_with(L'*')) {
            m_starts.push_back(name); // new entities go there; nothing refers to a layout
        }
    }

    void noteContent(const PlannedRecord& entity)
    {
        for (const Reference& reference : referencesOf(entity.groups, RecordKind::entity)) {
            if (reference.kind == Reference::Kind::name && reference.table != kBlockTable) {
                continue;
            }
            const PlannedRecord* const target = targetOf(entity.groups, reference);
            if (target != nullptr && target->role == PlannedRecord::Role::block) {
                m_contents[nameOf(*entity.into)].blocks.insert(nameOf(*target));
            }
        }
    }

    const PlannedRecord* targetOf(const Groups& groups, const Reference& reference)
    {
        const bool isNeeded = reference.kind == Reference::Kind::name
            || reference.kind == Reference::Kind::hardPointer;
        if (!isNeeded) {
            return nullptr;
        }
        if (reference.kind == Reference::Kind::hardPointer) {
            return m_plan.find(m_plan.job.source.find(groups[reference.at].handle()));
        }
        const Block* const block = m_plan.job.source.findBlock(nameIn(groups[reference.at]));
        return block == nullptr ? nullptr : m_plan.find(block->record);
    }

    // With what the destination has in it already.
    const Content& contentOf(const std::wstring& name)
    {
        Content& content = m_contents[name];
        if (content.isComplete) {
            return content;
        }
        content.isComplete = true;
        const Block* const block = m_destination.findBlock(name);
        if (block == nullptr) {
            return content;
        }
        for (const AcDbStub* at = m_destination.firstEntity(*block); at != nullptr;
             at = m_destination.entityBehind(*block, *at)) {
            const bool isReference = at->type == RecordType::insert && !at->isErased;
            if (isReference) {
                content.blocks.insert(foldedName(m_destination.textOf(*at, code::name)));
            }
        }
        return content;
    }

    // Depth first, without recursion, as blocks may be nested deeper than the stack.
    std::wstring circleFrom(const std::wstring& start)
    {
        struct Step
        {
            std::wstring name;
            std::vector<std::wstring> left;
        };

        if (m_done.contains(start)) {
            return {};
        }
        std::vector<Step> way;
        std::unordered_set<std::wstring> onWay;
        const auto enter = [&](const std::wstring& name) {
            const auto& blocks = contentOf(name).blocks;
            way.push_back({name, {blocks.begin(), blocks.end()}});
            onWay.insert(name);
        };
        enter(start);
        while (!way.empty()) {
            Step& step = way.back();
            if (step.left.empty()) {
                m_done.insert(step.name);
                onWay.erase(step.name);
                way.pop_back();
                continue;
            }
            const std::wstring next = std::move(step.left.back());
            step.left.pop_back();
            if (onWay.contains(next)) {
                return next;
            }
            if (!m_done.contains(next)) {
                enter(next);
            }
        }
        return {};
    }

    const ClonePlan& m_plan;
    Store& m_destination;
    std::unordered_map<std::wstring, Content> m_contents;
    std::vector<std::wstring> m_starts;
    std::unordered_set<std::wstring> m_done;
};

} // namespace

CloneFailure checkCircles(const ClonePlan& plan)
{
    const std::wstring circle = BlockGraph(plan).circle();
    if (circle.empty()) {
        return {};
    }
    return {Acad::eInvalidInput, L"Cannot clone: the block " + circle + L" would contain itself."};
}

} // namespace corma::host
