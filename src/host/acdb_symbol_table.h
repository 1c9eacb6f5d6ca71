#pragma once

// The symbol tables of a drawing and their records; blocks are in host/acdb_block.h.

#include "host/acdb_object.h"

#include <memory>
#include <string>

class AcDbSymbolTable;
class AcDbSymbolTableIterator;

namespace AcDb {

/// Widths of lines in hundredths of a millimetre, and the three words.
enum LineWeight
{
    kLnWtByLwDefault = -3,
    kLnWtByBlock = -2,
    kLnWtByLayer = -1,
    kLnWt000 = 0,
    kLnWt211 = 211 // the widest
};

} // namespace AcDb

/// A colour by its index: 0 by block, 1 to 255, 256 by layer.
class AcCmColor
{
public:
    [[nodiscard]] unsigned short colorIndex() const { return m_index; }

    Acad::ErrorStatus setColorIndex(unsigned short index); // eInvalidInput above 256

private:
    unsigned short m_index = 256;
};

class AcDbSymbolTableRecord : public AcDbObject
{
    CORMA_HOST_CLASS(AcDbSymbolTableRecord)

public:
    /// A heap copy that the caller frees by acutDelString().
    Acad::ErrorStatus getName(ACHAR*& name) const;
    Acad::ErrorStatus getName(std::wstring& name) const;

    /// eInvalidInput for an empty one and for model and paper space, eDuplicateKey for one that
    /// another record of its table has, eNotOpenForWrite. What names the record by its old name is
    /// left as it is.
    Acad::ErrorStatus setName(const ACHAR* name);

    /// eDuplicateKey when a record is to come back whose name another one has by now.
    Acad::ErrorStatus erase(bool erasing = true) override;

    using AcDbObject::AcDbObject;

protected:
    friend class AcDbSymbolTable;

    /// Makes a new record one of a drawing into which it is about to come.
    virtual void fitInto(corma::host::Store& store);
};

/// Named records. Names compare without regard to case.
class AcDbSymbolTable : public AcDbObject
{
    CORMA_HOST_CLASS(AcDbSymbolTable)

public:
    /// eKeyNotFound when there is no such record; `id` is then null. An erased record is found only
    /// when it is asked for.
    Acad::ErrorStatus getIdAt(const ACHAR* name, AcDbObjectId& id,
                              bool getErasedRecord = false) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id,
                            bool getErasedRecord = false) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                            bool openErasedRecord = false) const;
    [[nodiscard]] bool has(const ACHAR* name) const;
    [[nodiscard]] bool has(AcDbObjectId id) const;

    /// Puts a new record into the table; it must be open for write. The record belongs to the
    /// drawing then and is open for write, and the caller closes it; on failure it stays the
    /// caller's. eDuplicateKey for a name that is there, eInvalidInput for a record without a name,
    /// eWrongObjectType for a record of another table, eAlreadyInDb, eNotOpenForWrite.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
    Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);

    /// A walk in the order of the table; the caller deletes it. A record that is added meanwhile is
    /// met.
    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    /// Always eCannotBeErasedByCaller.
    Acad::ErrorStatus erase(bool erasing = true) override;
};

class AcDbSymbolTableIterator
{
public:
    void start(bool atBeginning = true, bool skipDeleted = true);
    [[nodiscard]] bool done() const;

    /// Nothing happens once it is done.
    void step(bool forward = true, bool skipDeleted = true);
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const; // eInvalidIndex behind the end
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                                bool openErased = false) const;

private:
    friend class AcDbSymbolTable;
    AcDbSymbolTableIterator(AcDbStub* table, bool atBeginning, bool skipDeleted);

    AcDbStub* m_table;
    AcDbStub* m_at = nullptr;
};

class AcDbLayerTableRecord : public AcDbSymbolTableRecord
{
    CORMA_HOST_CLASS(AcDbLayerTableRecord)

public:
    /// White, continuous, on, without a name. Plot style and material are those of the other layers
    /// once it is in a drawing.
    AcDbLayerTableRecord();

    [[nodiscard]] AcCmColor color() const; // a layer that is off has its colour all the same

    /// eInvalidInput for by block and by layer, which is no colour of a layer.
    Acad::ErrorStatus setColor(const AcCmColor& color);

    /// Null when the drawing lacks the linetype that the layer names.
    [[nodiscard]] AcDbObjectId linetypeObjectId() const;

    /// eWrongObjectType for an id that is no linetype, eWrongDatabase for one of another drawing.
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId id);
    [[nodiscard]] AcDb::LineWeight lineWeight() const; // the default where the file does not tell
    [[nodiscard]] bool isFrozen() const;
    [[nodiscard]] bool isOff() const;
    [[nodiscard]] bool isLocked() const;

protected:
    void fitInto(corma::host::Store& store) override;

private:
    [[nodiscard]] corma::host::GroupRange own() const;
};

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord
{
    CORMA_HOST_CLASS(AcDbLinetypeTableRecord)

public:
    AcDbLinetypeTableRecord();

    [[nodiscard]] int numDashes() const;

    /// In drawing units: a dash is positive, a gap negative, a dot 0. The index is from 0; 0 for
    /// any other one. Texts and shapes between the dashes are not told.
    [[nodiscard]] double dashLengthAt(int index) const;
};

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord
{
    CORMA_HOST_CLASS(AcDbTextStyleTableRecord)

public:
    AcDbTextStyleTableRecord();
};

class AcDbViewportTableRecord : public AcDbSymbolTableRecord
{
    CORMA_HOST_CLASS(AcDbViewportTableRecord)

public:
    AcDbViewportTableRecord();
};

class AcDbLayerTable : public AcDbSymbolTable
{
    CORMA_HOST_CLASS(AcDbLayerTable)
};

class AcDbLinetypeTable : public AcDbSymbolTable
{
    CORMA_HOST_CLASS(AcDbLinetypeTable)
};

class AcDbTextStyleTable : public AcDbSymbolTable
{
    CORMA_HOST_CLASS(AcDbTextStyleTable)
};

class AcDbViewportTable : public AcDbSymbolTable
{
    CORMA_HOST_CLASS(AcDbViewportTable)
};
