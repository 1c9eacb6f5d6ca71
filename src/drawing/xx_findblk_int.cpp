// Blocks that a drawing has already.

#include "drawing/xx_findblk.h"
#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <algorithm>
#include <memory>

using corma::host::Opened;

namespace {

constexpr const wchar_t* kFindblkIntSource = L"xx_findblk_int.cpp";
constexpr int kRecordLine = 117; // where a record that cannot be opened is reported
constexpr int kRecordCode = 801;

// A record that cannot be had for this reason is none to speak of.
constexpr auto kPassedSilently = static_cast<Acad::ErrorStatus>(86);

AcDbObjectId blockOf(AcDbDatabase& database, const std::wstring& name, int& status)
{
    Opened<AcDbBlockTable> table;
    if (database.getSymbolTable(table.out()) != Acad::eOk) {
        status = RTERROR;
        return {};
    }
    AcDbObjectId id;
    return table->getIdAt(name.c_str(), id) == Acad::eOk ? id : AcDbObjectId();
}

// Nothing for a record that cannot be opened.
std::wstring nameOf(const AcDbSymbolTableIterator& records)
{
    Opened<AcDbSymbolTableRecord> record;
    std::wstring name;
    const Acad::ErrorStatus status = records.getRecord(record.out(), AcDb::kForRead);
    if (status == Acad::eOk) {
        record->getName(name);
    } else if (status != kPassedSilently) {
        xx_reportError(kFindblkIntSource, kRecordLine, acadErrorStatusText(status), kRecordCode);
    }
    return name;
}

} // namespace

std::wstring xx_findblk_name(std::wstring_view text)
{
    const auto separator = std::find_if(text.rbegin(), text.rend(), corma::platform::isSeparator);
    std::wstring name = corma::upperCase({separator.base(), text.end()});
    for (const wchar_t* const extension : {L".DWG", L".DWT"}) {
        if (const auto at = name.find(extension); at != std::wstring::npos) {
            name.erase(at);
            break;
        }
    }
    return name;
}

AcDbObjectId xx_findblk_int(const wchar_t* name, int* status, AcDbDatabase* database)
{
    *status = RTERROR; // what is left when something is thrown
    return corma::atBoundary(kFindblkIntSource, __LINE__, AcDbObjectId(), [&] {
        if (database == nullptr) {
            database = acdbHostApplicationServices()->workingDatabase();
        }
        const std::wstring_view text = corma::view(name);
        int result = RTNORM;
        AcDbObjectId block;
        if (database != nullptr && !text.starts_with(L'$')) {
            block = blockOf(*database, xx_findblk_name(text), result);
        }
        *status = result;
        return block;
    });
}

int xx_block_records(AcDbObjectIdArray& result, const wchar_t* pattern)
{
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    Opened<AcDbBlockTable> table;
    AcDbSymbolTableIterator* made = nullptr;
    if (database == nullptr || database->getSymbolTable(table.out()) != Acad::eOk
        || table->newIterator(made) != Acad::eOk) {
        return RTERROR;
    }
    const std::unique_ptr<AcDbSymbolTableIterator> records(made);
    for (; !records->done(); records->step()) {
        const std::wstring name = nameOf(*records);
        const bool isOwn = !name.empty() && !name.starts_with(L'*');
        AcDbObjectId id;
        if (isOwn && acutWcMatchEx(name.c_str(), pattern, true)
            && records->getRecordId(id) == Acad::eOk) {
            result.append(id);
        }
    }
    return RTNORM;
}
