// Cloning from one drawing into another.

#include "host/cloning.h"
#include "host/drawing_files.h"
#include "host/host.h"
#include "host/templates/default_drawing.h"
#include "host/view.h"

#include <algorithm>
#include <array>

using namespace corma::host;

namespace {

// What the entities of a drawing are measured and drawn by.
constexpr std::array<std::wstring_view, 24> kSharedVariables
    = {L"$ANGBASE",   L"$ANGDIR",    L"$ATTMODE",     L"$AUNITS",     L"$AUPREC",   L"$CELTSCALE",
       L"$DIMSCALE",  L"$FILLMODE",  L"$INSUNITS",    L"$LIMMAX",     L"$LIMMIN",   L"$LTSCALE",
       L"$LUNITS",    L"$LUPREC",    L"$MEASUREMENT", L"$MIRRTEXT",   L"$PDMODE",   L"$PDSIZE",
       L"$PSLTSCALE", L"$QTEXTMODE", L"$SPLFRAME",    L"$SPLINESEGS", L"$TEXTSIZE", L"$TRACEWID"};

Acad::ErrorStatus finish(const CloneFailure& failure)
{
    if (failure) {
        acutPrintf(L"\n%s", failure.message.c_str());
    }
    return failure.status;
}

// Names that a user can give to a block.
bool isBlockName(std::wstring_view name)
{
    return !name.empty() && name.find_first_of(L"<>/\\\":;?*|,=`") == std::wstring_view::npos;
}

Acad::ErrorStatus checkIds(const AcDbObjectIdArray& ids, const Store& store)
{
    for (const AcDbObjectId id : ids) {
        if (id.isNull()) {
            return Acad::eNullObjectId;
        }
        if (id.stub()->store != &store) {
            return Acad::eWrongDatabase;
        }
        if (id.stub()->isErased) {
            return Acad::eWasErased;
        }
    }
    return Acad::eOk;
}

bool areAll(const AcDbObjectIdArray& ids, RecordKind kind)
{
    return std::all_of(ids.begin(), ids.end(),
                       [&](AcDbObjectId id) { return id.stub()->kind == kind; });
}

std::vector<AcDbStub*> stubsOf(const AcDbObjectIdArray& ids)
{
    std::vector<AcDbStub*> stubs;
    for (const AcDbObjectId id : ids) {
        stubs.push_back(id.stub());
    }
    return stubs;
}

// --- where to ------------------------------------------------------------------------------------

bool areEntriesOf(const AcDbObjectIdArray& ids, Store& store, TableKind table)
{
    return std::all_of(ids.begin(), ids.end(), [&](AcDbObjectId id) {
        const AcDbStub& stub = *id.stub();
        const Block* const block = table == kBlockTable ? store.blockOf(stub) : nullptr;
        return block != nullptr ? block->record == &stub
                                : stub.kind == RecordKind::tableEntry && stub.container != nullptr
                && store.kindOfTable(*stub.container) == table && table != kBlockTable;
    });
}

// Tells the job where its records go, by what the owner is.
Acad::ErrorStatus setOwner(CloneJob& job, const AcDbObjectIdArray& ids, AcDbStub& owner)
{
    if (owner.kind == RecordKind::table) {
        const auto table = job.destination.kindOfTable(owner);
        job.entries = stubsOf(ids);
        return table && areEntriesOf(ids, job.source, *table) ? Acad::eOk : Acad::eWrongObjectType;
    }
    const Block* const block = job.destination.blockOf(owner);
    if (block != nullptr && block->record == &owner) {
        job.block = &owner;
        job.entities = stubsOf(ids);
        return areAll(ids, RecordKind::entity) ? Acad::eOk : Acad::eWrongObjectType;
    }
    const bool isDictionary
        = owner.type == RecordType::dictionary || owner.type == RecordType::dictionaryWithDefault;
    job.dictionary = &owner;
    job.objects = stubsOf(ids);
    return isDictionary && areAll(ids, RecordKind::object) ? Acad::eOk : Acad::eWrongObjectType;
}

std::wstring drawingNameOf(const AcDbDatabase& database)
{
    const ACHAR* file = nullptr;
    database.getFilename(file);
    std::wstring name(file);
    name.erase(0, name.find_last_of(L"/\\") + 1);
    return name.substr(0, name.rfind(L'.'));
}

// --- new drawings --------------------------------------------------------------------------------

void replaceText(std::string& text, std::string_view from, std::string_view to)
{
    if (const auto at = text.find(from); at != std::string::npos) {
        text.replace(at, from.size(), to);
    }
}

// R13 and R14 have no template: what comes from them fits into R2000.
std::string drawingLike(const Store& store)
{
    constexpr std::string_view kVersion = "AC1032";
    constexpr std::string_view kCodePage = "ANSI_1252";
    constexpr int kName = 3;
    const bool isOld = store.version() < DrawingVersion::r13;
    std::string text(isOld ? r12Drawing() : defaultDrawing());
    if (!isOld) {
        const auto version = std::max(store.version(), DrawingVersion::r2000);
        replaceText(text, kVersion, "AC" + std::to_string(static_cast<int>(version)));
    }
    const Groups page = store.variable(L"$DWGCODEPAGE");
    const std::wstring_view name = page.text(kName, page.all());
    const bool isPlain = !name.empty()
        && std::all_of(name.begin(), name.end(), [](wchar_t c) { return c > L' ' && c < 0x7F; });
    if (isPlain) {
        replaceText(text, kCodePage, std::string(name.begin(), name.end()));
    }
    return text;
}

void shareVariables(const Store& from, Store& to)
{
    for (const std::wstring_view name : kSharedVariables) {
        for (const Group& group : from.variable(name)) {
            to.setVariable(name, Group(group.code, group.value));
        }
    }
}

} // namespace

// --- operations ----------------------------------------------------------------------------------

Acad::ErrorStatus AcDbDatabase::wblockCloneObjects(const AcDbObjectIdArray& ids,
                                                   AcDbObjectId& owner, AcDbIdMapping& mapping,
                                                   AcDb::DuplicateRecordCloning rule,
                                                   bool /*deferTranslation*/)
{
    if (owner.isNull()) {
        return Acad::eNullObjectId;
    }
    Store& destination = *owner.stub()->store;
    const bool fits = mapping.destDb() == nullptr || mapping.destDb() == destination.database();
    if (&destination == m_store.get() || !fits) {
        return Acad::eWrongDatabase;
    }
    if (rule == AcDb::kDrcUnmangleName) {
        return Acad::eNotImplementedYet;
    }
    if (const Acad::ErrorStatus status = checkIds(ids, *m_store); status != Acad::eOk) {
        return status;
    }
    CloneJob job {.source = *m_store, .destination = destination, .rule = rule};
    job.drawingName = drawingNameOf(*this);
    if (const Acad::ErrorStatus status = setOwner(job, ids, *owner.stub()); status != Acad::eOk) {
        return status;
    }
    mapping.setDestDb(destination.database());
    return finish(clone(job, mapping));
}

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& blockId, const ACHAR* blockName,
                                       AcDbDatabase* source, bool /*preserveSource*/)
{
    blockId.setNull();
    if (blockName == nullptr) {
        return Acad::eNullBlockName;
    }
    if (!isBlockName(blockName)) {
        return Acad::eInvalidBlockName;
    }
    if (source == nullptr) {
        return Acad::eNullObjectPointer;
    }
    if (source == this) {
        return Acad::eWrongDatabase;
    }
    CloneJob job {.source = *source->m_store, .destination = *m_store};
    job.modelSpaceAs = blockName;
    AcDbIdMapping mapping;
    const Acad::ErrorStatus status = finish(clone(job, mapping));
    if (status == Acad::eOk) {
        blockId = AcDbObjectId(m_store->findBlock(blockName)->record);
    }
    return status;
}

Acad::ErrorStatus AcDbDatabase::insert(const AcGeMatrix3d& transform, AcDbDatabase* source,
                                       bool /*preserveSource*/)
{
    if (source == nullptr) {
        return Acad::eNullObjectPointer;
    }
    if (source == this) {
        return Acad::eWrongDatabase;
    }
    Store& from = *source->m_store;
    const Block& model = *from.findBlock(ACDB_MODEL_SPACE);
    CloneJob job {.source = from, .destination = *m_store};
    const bool isPaper = workPlaceOf(*this) == WorkPlace::paper;
    const ACHAR* const space = isPaper ? ACDB_PAPER_SPACE : ACDB_MODEL_SPACE;
    job.block = m_store->findBlock(space)->record;
    for (AcDbStub* at = from.firstEntity(model); at != nullptr;
         at = from.entityBehind(model, *at)) {
        if (!at->isErased) {
            job.entities.push_back(at);
        }
    }
    if (!(transform == AcGeMatrix3d::kIdentity)) {
        job.transform = transform;
    }
    AcDbIdMapping mapping;
    return finish(clone(job, mapping));
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& output, const AcDbObjectIdArray& ids,
                                       const AcGePoint3d& basePoint)
{
    output = nullptr;
    if (const Acad::ErrorStatus status = checkIds(ids, *m_store); status != Acad::eOk) {
        return status;
    }
    if (!areAll(ids, RecordKind::entity)) {
        return Acad::eWrongObjectType;
    }
    auto drawing = std::make_unique<AcDbDatabase>(false, true);
    const Acad::ErrorStatus made = drawing->read(textContent(drawingLike(*m_store)), L"");
    if (made != Acad::eOk) {
        return made;
    }
    Store& destination = *drawing->m_store;
    shareVariables(*m_store, destination);
    if (destination.version() == m_store->version()) {
        destination.setBitsForm(m_store->bitsForm());
    }
    CloneJob job {.source = *m_store,
                  .destination = destination,
                  .rule = AcDb::kDrcReplace,
                  .standard = CloneJob::Standard::byRule};
    job.entities = stubsOf(ids);
    job.block = destination.findBlock(ACDB_MODEL_SPACE)->record;
    if (!(basePoint == AcGePoint3d::kOrigin)) {
        job.transform = AcGeMatrix3d().setToTranslation(-basePoint.asVector());
    }
    AcDbIdMapping mapping;
    const Acad::ErrorStatus status = finish(clone(job, mapping));
    if (status == Acad::eOk) {
        output = drawing.release();
    }
    return status;
}
