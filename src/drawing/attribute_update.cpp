#include "drawing/attribute_update.h"

#include "drawing/host_variables.h"
#include "drawing/xx_findblk.h"
#include "drawing/xx_get_bl_attributes.h"
#include "foundation/at_boundary.h"
#include "host/host.h"
#include <corma/entities.h>

#include <memory>
#include <optional>
#include <unordered_set>
#include <vector>

using corma::AttributeUpdate;
using corma::AttributeUpdateChooser;
using corma::AttributeUpdateMode;
using corma::host::Opened;

namespace {

constexpr const wchar_t* kAttributeUpdateSource = L"attribute_update.cpp";
constexpr const wchar_t* kAllBlocks = L"*";
constexpr const wchar_t* kSyncCommand = L"_ATTSYNC";
constexpr const wchar_t* kRunningSync = L"ATTSYNC"; // as the host names it while it runs

// The two updates have always spelled the option in their own ways, which is what others may see.
constexpr const wchar_t* kOptionForRecords = L"Name";
constexpr const wchar_t* kOptionForReferences = L"NAME";

constexpr const wchar_t* kRecordsUpToDate = L"Block Tabel Records (%s) : Attributes up to date.";
constexpr const wchar_t* kReferencesUpToDate = L"Block References (%s) : Attributes up to date.";
constexpr const wchar_t* kRemoved = L"\nAttributes removed successfully.";

int runSync(const wchar_t* option, const std::wstring& block)
{
    const int status
        = acedCommandS(RTSTR, kSyncCommand, RTSTR, option, RTSTR, block.c_str(), RTNONE);
    xx_finish_command(kRunningSync);
    return status;
}

// --- records -------------------------------------------------------------------------------------

// Those that could be loaded anew; `status` is that of the last.
std::vector<std::wstring> reload(const AcDbObjectIdArray& records, int& status)
{
    std::vector<std::wstring> loaded;
    for (const AcDbObjectId id : records) {
        std::wstring name;
        {
            const Opened<AcDbBlockTableRecord> record(id);
            if (!record || record->getName(name) != Acad::eOk) {
                continue;
            }
        }
        std::wstring text = L"$" + name;
        xx_findblk(text.data(), &status);
        if (status == RTNORM) {
            loaded.push_back(name);
        }
    }
    return loaded;
}

// --- references ----------------------------------------------------------------------------------

struct BlockToSync
{
    std::wstring name;
    bool hasDefinitions = false;
};

// Nothing for a block that cannot be opened: whether it has definitions is not known then, and to
// take it for one without them would cost its references their attributes.
std::optional<BlockToSync> blockToSync(AcDbObjectId id)
{
    const Opened<AcDbBlockTableRecord> record(id);
    if (!record) {
        return std::nullopt;
    }
    BlockToSync block;
    xx_VarArray definitions;
    xx_get_attdefs(*record, definitions, false);
    block.hasDefinitions = definitions.length() != 0;
    record->getName(block.name);
    return block;
}

AcDbObjectId blockOf(AcDbObjectId reference)
{
    const Opened<AcDbBlockReference> opened(reference);
    return opened ? opened->blockTableRecord() : AcDbObjectId();
}

AcDbObjectIdArray attributesOf(AcDbObjectId reference)
{
    AcDbObjectIdArray ids;
    const Opened<AcDbBlockReference> opened(reference);
    if (!opened) {
        return ids;
    }
    const std::unique_ptr<AcDbObjectIterator> attributes(opened->attributeIterator());
    for (attributes->start(); !attributes->done(); attributes->step()) {
        if (Opened<AcDbAttribute>(attributes->objectId())) {
            ids.append(attributes->objectId());
        }
    }
    return ids;
}

// Without definitions all attributes of a reference are orphans.
int strip(AcDbObjectId reference)
{
    const AcDbObjectIdArray orphans = attributesOf(reference);
    if (orphans.isEmpty()) {
        return RTNORM;
    }
    const int status = xx_erase_ids(orphans);
    if (status == RTNORM) {
        acutPrintf(kRemoved);
    }
    return status;
}

// --- what the user chooses -----------------------------------------------------------------------

AttributeUpdate detect(AttributeUpdateMode mode, const wchar_t* pattern)
{
    AttributeUpdate update;
    update.mode = mode;
    if (mode == AttributeUpdateMode::records) {
        update.outOfDateRecords = xx_find_out_of_date_records(pattern);
        return update;
    }
    update.outOfDateRefs = xx_find_out_of_date_refs(pattern);
    AcDbObjectIdArray all;
    if (xx_block_refs_in_model_space(all, pattern) != RTNORM) {
        return update;
    }
    std::unordered_set<AcDbStub*> outOfDate;
    for (const AcDbObjectId id : update.outOfDateRefs) {
        outOfDate.insert(id.stub());
    }
    for (const AcDbObjectId id : all) {
        if (outOfDate.count(id.stub()) == 0) {
            update.upToDateRefs.append(id);
        }
    }
    return update;
}

bool isEmpty(const AttributeUpdate& update)
{
    return update.outOfDateRefs.isEmpty() && update.upToDateRefs.isEmpty()
        && update.outOfDateRecords.isEmpty();
}

int runUpdate(AttributeUpdateMode mode, const wchar_t* pattern, AttributeUpdateChooser& chooser)
{
    const bool isOfRecords = mode == AttributeUpdateMode::records;
    AttributeUpdate update = detect(mode, pattern);
    if (isEmpty(update)) {
        acutPrintf(isOfRecords ? kRecordsUpToDate : kReferencesUpToDate, pattern);
        return RTNORM;
    }
    if (!chooser.choose(update)) {
        return RTNORM;
    }
    return isOfRecords ? xx_update_records(update.outOfDateRecords)
                       : xx_update_refs(update.outOfDateRefs);
}

} // namespace

int xx_update_records(const AcDbObjectIdArray& records)
{
    int status = RTNORM;
    const std::vector<std::wstring> loaded = reload(records, status);
    if (loaded.empty()) {
        return status;
    }
    const corma::QuietCommands quiet;
    for (const std::wstring& name : loaded) {
        acutPrintf(L"\n%s", name.c_str());
        status = runSync(kOptionForRecords, name);
    }
    return status;
}

int xx_update_refs(const AcDbObjectIdArray& references)
{
    if (references.isEmpty()) {
        return RTNORM;
    }
    const corma::QuietCommands quiet;
    std::unordered_set<AcDbStub*> done;
    int status = RTNORM;
    for (const AcDbObjectId reference : references) {
        const AcDbObjectId record = blockOf(reference);
        if (record.isNull() || done.count(record.stub()) != 0) {
            continue;
        }
        const std::optional<BlockToSync> block = blockToSync(record);
        if (!block) {
            continue;
        }
        if (!block->hasDefinitions) {
            status = strip(reference);
        } else if (!block->name.empty()) {
            status = runSync(kOptionForReferences, block->name);
            if (status == RTNORM) {
                done.insert(record.stub());
            }
        }
    }
    return status;
}

int xx_sync_attributes(const wchar_t* blockName)
{
    return corma::atBoundary(kAttributeUpdateSource, __LINE__, RTERROR, [&] {
        return runSync(kOptionForReferences, blockName == nullptr ? L"" : blockName);
    });
}

namespace corma {

AttributeUpdateChooser::~AttributeUpdateChooser() = default;

int updateAttributes(AttributeUpdateMode mode, const wchar_t* pattern,
                     AttributeUpdateChooser& chooser)
{
    return atBoundary(kAttributeUpdateSource, __LINE__, RTERROR, [&] {
        return runUpdate(mode, pattern == nullptr ? kAllBlocks : pattern, chooser);
    });
}

} // namespace corma
