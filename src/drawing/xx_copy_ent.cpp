// Copies of entities: they go out into a drawing of their own and come in again, so that all that
// they need comes along.

#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "host/host.h"
#include <corma/entities.h>

#include <memory>

using corma::host::Opened;

namespace {

constexpr const wchar_t* kCopyEntSource = L"xx_copy_ent.cpp";

// Where failures are reported, and the texts there.
constexpr int kExportLine = 70;
constexpr int kExceptionLine = 76;
constexpr int kCopyLine = 94;
constexpr const wchar_t* kFailed = L"100";
constexpr const wchar_t* kException = L"99";

int reportCopyFailure(int line, Acad::ErrorStatus status)
{
    xx_reportError(kCopyEntSource, line, kFailed, status);
    return RTERROR;
}

// --- copying -------------------------------------------------------------------------------------

AcDbDatabase* databaseOf(const AcDbObjectIdArray& ids)
{
    const Opened<AcDbObject> first(ids.isEmpty() ? AcDbObjectId() : ids.at(0));
    return first ? first->database() : nullptr;
}

std::unique_ptr<AcDbDatabase> exported(const AcDbObjectIdArray& ids, AcDbDatabase& from)
{
    AcDbDatabase* output = nullptr;
    try {
        const Acad::ErrorStatus status = from.wblock(output, ids, AcGePoint3d::kOrigin);
        if (status != Acad::eOk) {
            reportCopyFailure(kExportLine, status);
        }
    } catch (...) {
        xx_reportError(kCopyEntSource, kExceptionLine, kException, 0);
    }
    return std::unique_ptr<AcDbDatabase>(output);
}

int copy(const AcDbObjectIdArray& ids, const AcGeMatrix3d& matrix, AcDbDatabase* destination)
{
    AcDbDatabase* const from = databaseOf(ids);
    if (from == nullptr || destination == nullptr) {
        return RTERROR;
    }
    const auto drawing = exported(ids, *from);
    if (drawing == nullptr) {
        return RTERROR;
    }
    AcGeMatrix3d userCoordinates;
    acdbUcsMatrix(userCoordinates);
    const Acad::ErrorStatus status
        = destination->insert(matrix * userCoordinates, drawing.get(), false);
    return status == Acad::eOk ? RTNORM : reportCopyFailure(kCopyLine, status);
}

// --- telling what was copied ---------------------------------------------------------------------

/// The entities of the current space from the newest to the oldest.
class NewestFirst
{
public:
    /// False when the space cannot be opened.
    bool start()
    {
        AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
        Opened<AcDbBlockTable> table;
        AcDbObjectId id;
        if (database == nullptr || database->getSymbolTable(table.out()) != Acad::eOk
            || table->getIdAt(xx_current_space_name(), id) != Acad::eOk) {
            return false;
        }
        m_space = Opened<AcDbBlockTableRecord>(id);
        AcDbBlockTableRecordIterator* made = nullptr;
        if (!m_space || m_space->newIterator(made, false, true) != Acad::eOk) {
            return false;
        }
        m_entities.reset(made);
        return true;
    }

    [[nodiscard]] bool done() const { return m_entities->done(); }

    void step() { m_entities->step(false, true); }

    [[nodiscard]] Acad::ErrorStatus id(AcDbObjectId& id) const
    {
        return m_entities->getEntityId(id);
    }

private:
    Opened<AcDbBlockTableRecord> m_space;
    std::unique_ptr<AcDbBlockTableRecordIterator> m_entities;
};

// Null in a space that is empty so far.
int lastEntity(AcDbObjectId& last)
{
    NewestFirst entities;
    if (!entities.start()) {
        return RTERROR;
    }
    return entities.done() || entities.id(last) == Acad::eOk ? RTNORM : RTERROR;
}

int entitiesBehind(AcDbObjectId last, AcDbObjectIdArray& ids)
{
    NewestFirst entities;
    if (!entities.start()) {
        return RTERROR;
    }
    for (; !entities.done(); entities.step()) {
        AcDbObjectId id;
        if (entities.id(id) != Acad::eOk) {
            return RTERROR;
        }
        if (id == last) {
            break;
        }
        ids.append(id);
    }
    return RTNORM;
}

int copyAndTell(const AcDbObjectIdArray& ids, const AcGeMatrix3d& matrix, AcDbObjectIdArray* newIds)
{
    AcDbDatabase* const working = acdbHostApplicationServices()->workingDatabase();
    if (newIds == nullptr) {
        return copy(ids, matrix, working);
    }
    AcDbObjectIdArray made;
    AcDbObjectId last;
    int status = lastEntity(last);
    if (status == RTNORM) {
        status = copy(ids, matrix, working);
    }
    if (status == RTNORM) {
        status = entitiesBehind(last, made);
    }
    *newIds = std::move(made);
    return status;
}

int copyOne(AcDbObjectId entity, const AcGeMatrix3d& matrix, AcDbObjectId* newId)
{
    AcDbObjectIdArray ids;
    ids.append(entity);
    if (newId == nullptr) {
        return copyAndTell(ids, matrix, nullptr);
    }
    newId->setNull();
    AcDbObjectIdArray newIds;
    const int status = copyAndTell(ids, matrix, &newIds);
    if (status != RTNORM) {
        return status;
    }
    if (newIds.isEmpty()) {
        return RTCAN;
    }
    *newId = newIds.at(0);
    return RTNORM;
}

} // namespace

int xx_copy_ent(const AcDbObjectIdArray& ids, const AcGeMatrix3d& matrix, AcDbDatabase* destination)
{
    return corma::atBoundary(kCopyEntSource, __LINE__, RTERROR,
                             [&] { return copy(ids, matrix, destination); });
}

int xx_copy_entities(const AcDbObjectIdArray& ids, const AcGeMatrix3d& matrix,
                     AcDbObjectIdArray* newIds)
{
    return corma::atBoundary(kCopyEntSource, __LINE__, RTERROR,
                             [&] { return copyAndTell(ids, matrix, newIds); });
}

int xx_copy_entity_arx(AcDbObjectId entity, const AcGeMatrix3d& matrix, AcDbObjectId* newId)
{
    return corma::atBoundary(kCopyEntSource, __LINE__, RTERROR,
                             [&] { return copyOne(entity, matrix, newId); });
}
