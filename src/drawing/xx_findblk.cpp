// Blocks that a drawing has, or that are loaded into it.

#include "drawing/xx_findblk.h"

#include "drawing/side_database.h"
#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"

#include <algorithm>
#include <memory>
#include <string>

namespace {

constexpr const wchar_t* kFindblkSource = L"xx_findblk.cpp";
constexpr std::size_t kLongestFile = 260; // characters
constexpr int kAlert = 1; // mode of xx_printMessage()
constexpr const wchar_t* kFileNotFound = L"File %s not found";
constexpr const wchar_t* kBlockNotFound = L"Block %s not found";

// Where failures are reported, and the code for a drawing that cannot be read.
constexpr int kReadLine = 137;
constexpr int kInsertLine = 170;
constexpr int kReadNamedLine = 215;
constexpr int kReadCode = 300;

/// What a text asks for, and where to.
struct BlockRequest
{
    std::wstring file; // the drawing that has the block; empty when the drawing is the block
    std::wstring text; // without the file and "$"
    std::wstring name; // of the block
    bool isForced = false; // to be loaded even when it is there
    bool isReporting = false;
    AcDbDatabase* destination = nullptr;
    AcDbDatabase* source = nullptr;
    const wchar_t* password = nullptr;
};

void alert(const BlockRequest& request, const wchar_t* format, const std::wstring& name)
{
    if (request.isReporting) {
        xx_printMessage(format, name.c_str(), kAlert);
    }
}

/// The drawing that a block is taken from: the caller's, or one that is read for it.
class Source
{
public:
    explicit Source(AcDbDatabase* given)
        : m_database(given)
    {
    }

    // Takes what was read; a failure is reported at the line.
    int take(corma::SideDatabase side, int line)
    {
        if (side.status != Acad::eOk) {
            xx_reportError(kFindblkSource, line, acadErrorStatusText(side.status), kReadCode);
            return RTCAN;
        }
        m_own = std::move(side.database);
        m_database = m_own.get();
        return RTNORM;
    }

    [[nodiscard]] bool isThere() const { return m_database != nullptr; }

    [[nodiscard]] AcDbDatabase* get() const { return m_database; }

private:
    AcDbDatabase* m_database;
    std::unique_ptr<AcDbDatabase> m_own;
};

// --- a block within a drawing --------------------------------------------------------------------

AcDbObjectId cloneOf(AcDbObjectId block, const AcDbIdMapping& mapping)
{
    AcDbIdMappingIter pairs(mapping);
    for (pairs.start(); !pairs.done(); pairs.next()) {
        AcDbIdPair pair;
        if (pairs.getMap(pair) && pair.key() == block) {
            return pair.value();
        }
    }
    return {};
}

// A block that is not there is a null id, which the host refuses to clone.
AcDbObjectId cloneBlock(const BlockRequest& request, AcDbDatabase& source, int& status)
{
    const AcDbObjectId block = xx_findblk_int(request.name.c_str(), &status, &source);
    AcDbObjectIdArray ids;
    ids.append(block);
    AcDbObjectId owner = request.destination->blockTableId();
    AcDbIdMapping mapping;
    mapping.setDestDb(request.destination);
    if (source.wblockCloneObjects(ids, owner, mapping, AcDb::kDrcReplace, false) != Acad::eOk) {
        status = RTERROR;
        return {};
    }
    return cloneOf(block, mapping);
}

int openNamedDrawing(const BlockRequest& request, Source& source)
{
    if (source.isThere()) {
        return RTNORM;
    }
    const auto found = corma::findDrawing(request.file, corma::DrawingNames::dwgDwtOrDxf);
    if (found.status != RTNORM) {
        alert(request, kFileNotFound, request.file);
        return found.status;
    }
    return source.take(corma::readAsideByName(found.path), kReadNamedLine);
}

AcDbObjectId cloneFromDrawing(const BlockRequest& request, int& status)
{
    Source source(request.source);
    status = openNamedDrawing(request, source);
    AcDbObjectId block;
    if (status == RTNORM) {
        block = cloneBlock(request, *source.get(), status);
    }
    if (status != RTNORM) {
        alert(request, kBlockNotFound, request.name);
    }
    return block;
}

// --- a drawing as a block ------------------------------------------------------------------------

AcDbObjectId insertDrawing(const BlockRequest& request, int& status)
{
    const auto found = corma::findDrawing(request.text, corma::DrawingNames::dwgOrDwt);
    status = found.status;
    if (status != RTNORM) {
        alert(request, kBlockNotFound, request.text);
        return {};
    }
    Source source(request.source);
    if (!source.isThere()) {
        status = source.take(corma::readAside(found.path, request.password), kReadLine);
        if (status != RTNORM) {
            return {};
        }
    }
    AcDbObjectId block;
    const Acad::ErrorStatus inserted
        = request.destination->insert(block, request.name.c_str(), source.get(), true);
    if (inserted != Acad::eOk) {
        xx_reportError(kFindblkSource, kInsertLine, L"0", inserted);
        status = RTCAN;
    }
    return block;
}

// --- both ----------------------------------------------------------------------------------------

// What stands behind a "!" overwrites the caller's text, who goes on with the name alone.
void takeText(wchar_t* text, BlockRequest& request)
{
    if (const wchar_t* const mark = corma::find(text, L'!'); mark != nullptr) {
        request.file.assign(text, std::min(static_cast<std::size_t>(mark - text), kLongestFile));
        corma::copy(text, std::wstring(mark + 1).c_str());
    }
    request.text = text;
    request.isForced = request.text.starts_with(L'$');
    request.text.erase(0, request.isForced ? 1 : 0);
    request.name = xx_findblk_name(request.text);
}

AcDbObjectId findOrLoad(const BlockRequest& request, int& status)
{
    if (!request.isForced) {
        const AcDbObjectId present
            = xx_findblk_int(request.name.c_str(), &status, request.destination);
        if (!present.isNull() || status != RTNORM) {
            return present;
        }
    }
    return request.file.empty() ? insertDrawing(request, status)
                                : cloneFromDrawing(request, status);
}

AcDbObjectId findBlock(wchar_t* text, BlockRequest request, int& status)
{
    if (corma::length(text) == 0) {
        return {};
    }
    if (request.destination == nullptr) {
        request.destination = acdbHostApplicationServices()->workingDatabase();
    }
    if (request.destination == nullptr) {
        return {};
    }
    takeText(text, request);
    return findOrLoad(request, status);
}

} // namespace

AcDbObjectId xx_findblk(wchar_t* text, int report, int* status, AcDbDatabase* destination,
                        AcDbDatabase* source, const wchar_t* password)
{
    *status = RTERROR; // what is left when something is thrown
    return corma::atBoundary(kFindblkSource, __LINE__, AcDbObjectId(), [&] {
        BlockRequest request;
        request.isReporting = report != 0;
        request.destination = destination;
        request.source = source;
        request.password = password;
        int result = RTNORM;
        const AcDbObjectId block = findBlock(text, std::move(request), result);
        *status = result;
        return block;
    });
}

AcDbObjectId xx_findblk(wchar_t* text, int* status, AcDbDatabase* destination, AcDbDatabase* source)
{
    return xx_findblk(text, 1, status, destination, source, nullptr);
}

void xx_find_block_recordId_arx(wchar_t* text, int* status, AcDbDatabase* database,
                                AcDbObjectId* id)
{
    *id = xx_findblk(text, status, database, nullptr);
}
