#pragma once

// Entities: what is drawn. A class here is a view on a record; a type without a class of its own
// is an AcDbEntity.

#include "host/acdb_object.h"
#include "host/geometry.h"

class AcDbAttribute;
class AcDbObjectIterator;

class AcDbEntity : public AcDbObject
{
    CORMA_HOST_CLASS(AcDbEntity)

public:
    /// The block that it is in; for an attribute that of its reference.
    [[nodiscard]] AcDbObjectId blockId() const;

    /// Name of its layer, "0" where the record does not tell; a heap copy for acutDelString().
    [[nodiscard]] ACHAR* layer() const;
    [[nodiscard]] AcDbObjectId layerId() const;
    Acad::ErrorStatus setLayer(const ACHAR* name); // eKeyNotFound for a layer that is not there
    [[nodiscard]] unsigned short colorIndex() const; // 256 by layer

    /// Moves, turns, scales it. It must be open for write. eNotImplementedYet for a type whose
    /// geometry is not understood, eCannotScaleNonUniformly where the type has no form for it; the
    /// entity then stays as it was.
    virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);

    using AcDbObject::AcDbObject;
};

/// A single line of text.
class AcDbText : public AcDbEntity
{
    CORMA_HOST_CLASS(AcDbText)

public:
    AcDbText();

    /// Heap copies for acutDelString().
    [[nodiscard]] ACHAR* textString() const;
    Acad::ErrorStatus setTextString(const ACHAR* text);

    [[nodiscard]] AcGePoint3d position() const; // left end of the base line, in its own plane
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    [[nodiscard]] double height() const;
    [[nodiscard]] double rotation() const; // radians
    [[nodiscard]] AcGeVector3d normal() const;
    [[nodiscard]] AcDbObjectId textStyle() const;

protected:
    explicit AcDbText(const wchar_t* dxfType);
};

/// The prescription of an attribute, in a block definition. Its text is the default.
class AcDbAttributeDefinition : public AcDbText
{
    CORMA_HOST_CLASS(AcDbAttributeDefinition)

public:
    AcDbAttributeDefinition();

    [[nodiscard]] ACHAR* tag() const; // heap copy for acutDelString()
    Acad::ErrorStatus setTag(const ACHAR* tag); // eInvalidInput for an empty one
    [[nodiscard]] ACHAR* prompt() const;
    [[nodiscard]] bool isInvisible() const;
    [[nodiscard]] bool isConstant() const;
    [[nodiscard]] bool isVerifiable() const;
    [[nodiscard]] bool isPreset() const;
};

/// A text with a tag that belongs to a block reference.
class AcDbAttribute : public AcDbText
{
    CORMA_HOST_CLASS(AcDbAttribute)

public:
    AcDbAttribute();

    [[nodiscard]] ACHAR* tag() const; // heap copy for acutDelString()
    Acad::ErrorStatus setTag(const ACHAR* tag);
    [[nodiscard]] bool isInvisible() const;

    /// An attribute as a definition prescribes it, for a reference with that transformation
    /// (blockTransform() of the reference). The text is the default.
    Acad::ErrorStatus setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                            const AcGeMatrix3d& blockTransform);
};

/// An insertion of a block.
class AcDbBlockReference : public AcDbEntity
{
    CORMA_HOST_CLASS(AcDbBlockReference)

public:
    AcDbBlockReference();
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord);

    /// Null when the drawing has no block of the name that the reference bears.
    [[nodiscard]] AcDbObjectId blockTableRecord() const;
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId id);

    [[nodiscard]] AcGePoint3d position() const; // in world coordinates
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    [[nodiscard]] AcGeScale3d scaleFactors() const;
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
    [[nodiscard]] double rotation() const; // radians, in its own plane
    Acad::ErrorStatus setRotation(double angle);
    [[nodiscard]] AcGeVector3d normal() const;

    /// From the coordinates of the block to those of the world.
    [[nodiscard]] AcGeMatrix3d blockTransform() const;

    /// Its attributes that are not erased, in order. The caller deletes the iterator.
    AcDbObjectIterator* attributeIterator() const;

    /// Puts a new attribute behind the others; the reference must be open for write. The attribute
    /// belongs to the drawing then and the caller closes it.
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);

    /// The attributes follow the reference.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
};

class AcDbObjectIterator
{
public:
    void start();
    [[nodiscard]] bool done() const;
    void step();
    [[nodiscard]] AcDbObjectId objectId() const; // null behind the end

private:
    friend class AcDbBlockReference;
    explicit AcDbObjectIterator(AcDbStub* owner);

    AcDbStub* m_owner;
    AcDbStub* m_at = nullptr;
};

/// A window of paper space on the model.
class AcDbViewport : public AcDbEntity
{
    CORMA_HOST_CLASS(AcDbViewport)

public:
    AcDbViewport();

    /// 1 for the paper space viewport of a layout itself, from 2 for a window; -1 for one that is
    /// off.
    [[nodiscard]] short number() const;
    [[nodiscard]] AcGeVector3d viewDirection() const; // from the target to the eye, in the world
};
