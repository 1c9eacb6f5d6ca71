#pragma once

// Block definitions of a drawing, model and paper space among them.

#include "host/acdb_symbol_table.h"
#include <corma/geometry.h>

class AcDbBlockTableRecordIterator;
class AcDbEntity;

inline constexpr const ACHAR* ACDB_MODEL_SPACE = L"*Model_Space";
inline constexpr const ACHAR* ACDB_PAPER_SPACE = L"*Paper_Space";

class AcDbBlockTable : public AcDbSymbolTable
{
    CORMA_HOST_CLASS(AcDbBlockTable)
};

class AcDbBlockTableRecord : public AcDbSymbolTableRecord
{
    CORMA_HOST_CLASS(AcDbBlockTableRecord)

public:
    AcDbBlockTableRecord();

    explicit AcDbBlockTableRecord(corma::host::WithoutGroups /*none*/) { }

    /// A walk over its entities; the caller deletes it. An attribute is no entity of the block but
    /// of its block reference. An entity that is appended meanwhile is met.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    /// Puts a new entity behind the others; the record must be open for write. The entity belongs
    /// to the drawing then and is open for write, and the caller closes it; on failure it stays the
    /// caller's. eNullObjectPointer, eAlreadyInDb, eWrongObjectType for an attribute,
    /// eNotApplicable for a record in no drawing or without a definition, eWasErased.
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);

    [[nodiscard]] AcGePoint3d origin() const;
    [[nodiscard]] bool isAnonymous() const;
    [[nodiscard]] bool isLayout() const; // model space or a paper space
    [[nodiscard]] bool hasAttributeDefinitions() const;

    /// Its erasing takes the entities along. eCannotBeErasedByCaller for model and paper space.
    Acad::ErrorStatus erase(bool erasing = true) override;

private:
    [[nodiscard]] Acad::ErrorStatus checkNew(const AcDbEntity* entity) const;
    [[nodiscard]] std::wstring foldedName() const;
};

class AcDbBlockTableRecordIterator
{
public:
    void start(bool atBeginning = true, bool skipDeleted = true);
    [[nodiscard]] bool done() const;

    /// Nothing happens once it is done.
    void step(bool forward = true, bool skipDeleted = true);
    Acad::ErrorStatus getEntityId(AcDbObjectId& id) const; // eInvalidIndex behind the end
    Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                bool openErased = false) const;

private:
    friend class AcDbBlockTableRecord;
    AcDbBlockTableRecordIterator(AcDbStub* record, bool atBeginning, bool skipDeleted);

    AcDbStub* m_record;
    AcDbStub* m_at = nullptr;
};
