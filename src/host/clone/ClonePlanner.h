#pragma once

#include "host/clone/ClonePlan.h"
#include "host/clone/DictionaryIndex.h"

#include <map>
#include <utility>

namespace corma::host {

/// Finds out what a cloning has to do, record by record: what is asked for, then what that owns and
/// needs, and so on. Neither drawing changes by it.
class ClonePlanner
{
public:
    explicit ClonePlanner(ClonePlan& plan);

    /// A failure tells what stands in the way; the plan is of no use then.
    CloneFailure complete();

private:
    using Role = PlannedRecord::Role;
    using Fate = PlannedRecord::Fate;

    // What is asked for.
    void planEntities();
    void planEntries();
    void planObjects();
    void planModelSpace();

    // What is needed: null for what stays behind.
    PlannedRecord* want(AcDbStub& source);
    PlannedRecord* wantEntry(AcDbStub& source);
    PlannedRecord* wantEntity(AcDbStub& source);
    PlannedRecord* wantObject(AcDbStub& source);
    PlannedRecord* wantOwned(AcDbStub& source, PlannedRecord& owner);
    PlannedRecord* wantKeyed(AcDbStub& source, PlannedRecord& dictionary,
                             const std::wstring& sourceName);
    PlannedRecord* wantDictionary(AcDbStub& source, int depth = 0);
    void wantShapeFiles();

    // What becomes of a name.
    PlannedRecord& mergeEntry(PlannedRecord planned);
    AcDbStub* counterpart(const PlannedRecord& planned);
    void meet(PlannedRecord& planned, AcDbStub* there, bool mayBeReplaced);
    std::wstring freeName(const PlannedRecord& planned);
    std::wstring freeAnonymousName(std::wstring_view name);
    [[nodiscard]] bool isStandard(const PlannedRecord& planned) const;
    AcDbStub* shapeFileLike(const AcDbStub& style);

    // Adding to the plan.
    PlannedRecord& addLed(PlannedRecord planned);
    void addParts(PlannedRecord& block);
    PlannedRecord& addEntity(AcDbStub& source, PlannedRecord& into);
    void addPlain(TableKind table, const std::wstring& name);

    // Working a record out.
    void work(PlannedRecord& planned);
    void workBlock(PlannedRecord& planned);
    bool takeGroups(PlannedRecord& planned);
    void translateArrows(Groups& dimStyle);
    void follow(PlannedRecord& planned);
    void follow(const Groups& groups, const Reference& reference, PlannedRecord& planned);
    void movePicture(const PlannedRecord& dimension, PlannedRecord& picture);
    void transformAll();
    void transform(std::size_t entity, std::size_t end);

    void fail(CloneFailure failure);
    void fail(Acad::ErrorStatus status, std::wstring message);
    void failIfOpen(const AcDbStub& stub);
    void failIfBlockIsOpen(const Block& block);

    using Names = std::map<std::pair<TableKind, std::wstring>, PlannedRecord*>;
    using Keys = std::map<std::pair<const PlannedRecord*, std::wstring>, PlannedRecord*>;

    ClonePlan& m_plan;
    const CloneJob& m_job;
    Store& m_source;
    Store& m_destination;
    Versions m_versions;
    PlannedRecord* m_home = nullptr; // the block that entities go to
    AcGeMatrix3d m_turning; // the transformation without its moving
    Names m_names; // in the destination, folded: what the plan puts there
    Keys m_keys;
    std::map<std::wstring, int> m_anonymous; // the last number by what stands ahead of it
    DictionaryIndex m_sourceDictionaries;
    DictionaryIndex m_destinationDictionaries;
    bool m_hasShapeFiles = false;
    CloneFailure m_failure;
};

} // namespace corma::host
