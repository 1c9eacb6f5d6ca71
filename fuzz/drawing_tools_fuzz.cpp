#include "drawing/attribute_update.h"
#include "drawing/xx_entlay.h"
#include "drawing/xx_findblk.h"
#include "fuzz_support.h"
#include "host/host.h"
#include "platform/platform.h"
#include <corma/entities.h>

#include <cstdint>
#include <string>

namespace {

using corma::fuzzing::MemoryFolder;
using corma::fuzzing::require;

constexpr const char* kFile = "plan.dxf";
constexpr const char* kSaved = "saved.dxf";

/// Wants all that is out of date brought up to date.
class All : public corma::AttributeUpdateChooser
{
public:
    bool choose(corma::AttributeUpdate& update) override
    {
        require(corma::host::openObjectCount() == 0);
        return !update.outOfDateRefs.isEmpty();
    }
};

AcDbDatabase& working()
{
    return *acdbHostApplicationServices()->workingDatabase();
}

std::wstring nameOf(AcDbObjectId block)
{
    std::wstring name;
    const corma::host::Opened<AcDbBlockTableRecord> record(block);
    if (record) {
        record->getName(name);
    }
    return name;
}

AcDbObjectId chosen(const AcDbObjectIdArray& ids, std::uint8_t which)
{
    return ids.isEmpty() ? AcDbObjectId() : ids.at(which % ids.length());
}

AcDbObjectIdArray blocks()
{
    AcDbObjectIdArray all;
    xx_block_records(all, L"*");
    return all;
}

AcDbObjectIdArray entities()
{
    AcDbObjectIdArray all;
    xx_entlay(all, {});
    return all;
}

// --- the tools; `which` chooses what they work on ------------------------------------------------

// References that were brought up to date are up to date.
void update(std::uint8_t /*which*/)
{
    All all;
    if (corma::updateAttributes(corma::AttributeUpdateMode::references, nullptr, all) == RTNORM) {
        corma::updateAttributes(corma::AttributeUpdateMode::references, nullptr, all);
    }
}

// Where a name counts for the first block that bears it.
void sync(std::uint8_t which)
{
    const std::wstring name = nameOf(chosen(blocks(), which));
    if (xx_sync_attributes(name.c_str()) == RTNORM) {
        require(xx_sync_attributes(name.c_str()) == RTNORM);
    }
}

void copy(std::uint8_t which)
{
    AcGeMatrix3d matrix;
    matrix.setToRotation(which / 16.0, {0.1, 0.2, 1.0}, {1, 2, 3});
    const AcDbObjectIdArray before = entities();
    AcDbObjectIdArray ids;
    ids.append(chosen(before, which));
    AcDbObjectIdArray copies;
    const bool isMade = xx_copy_entities(ids, matrix, &copies) == RTNORM;
    require(isMade || copies.isEmpty());
    require(isMade || entities().length() == before.length());
}

void erase(std::uint8_t which)
{
    AcDbObjectIdArray ids;
    ids.append(chosen(entities(), which));
    xx_erase_ids(ids);
}

// A block of the drawing for another one, and back again as a newer version.
void exchange(std::uint8_t which)
{
    const std::wstring name = nameOf(chosen(blocks(), which));
    AcDbDatabase other;
    int status = RTNORM;
    std::wstring text = L"x!$" + name;
    xx_findblk(text.data(), 0, &status, &other, &working(), nullptr);
    if (status == RTNORM) {
        text = L"x!$" + name;
        xx_findblk(text.data(), 0, &status, &working(), &other, nullptr);
    }
}

void look(std::uint8_t which)
{
    const AcDbObjectId entity = chosen(entities(), which);
    xx_VarArray attributes;
    xx_get_bl_attributes(entity, attributes, nullptr, L"*");
    xx_getCurrentViewDir_arx();
    xx_current_space_name();
}

using Tool = void (*)(std::uint8_t which);
constexpr Tool kTools[] = {update, sync, copy, erase, exchange, look};

// What was changed can be written and read again.
void checkSaved(const MemoryFolder& folder)
{
    const std::wstring path = corma::platform::fromNative(folder.path(kSaved));
    require(corma::saveDocument(path.c_str()));
    require(corma::openDocument(path.c_str()));
    folder.remove(kSaved);
}

} // namespace

/// The first byte chooses the tool, the second what it works on; the others are the drawing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t kChoices = 2;
    if (size < kChoices) {
        return 0;
    }
    const corma::fuzzing::SilentServices services;
    static const MemoryFolder folder;
    folder.write(kFile, {reinterpret_cast<const char*>(data + kChoices), size - kChoices});
    if (corma::openDocument(corma::platform::fromNative(folder.path(kFile)).c_str())) {
        kTools[data[0] % std::size(kTools)](data[1]);
        require(corma::host::openObjectCount() == 0);
        checkSaved(folder);
    }
    corma::closeDocument();
    require(corma::host::openObjectCount() == 0);
    return 0;
}
