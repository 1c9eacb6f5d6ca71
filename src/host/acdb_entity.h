#pragma once

// Entities: what is drawn. A class here is a view on a record; a type without a class of its own
// is an AcDbEntity.

#include "host/acdb_object.h"
#include <corma/geometry.h>

#include <vector>

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

    /// eInvalidInput for an empty name, eKeyNotFound for a layer that the drawing does not have; an
    /// entity that is in no drawing takes any name.
    Acad::ErrorStatus setLayer(const ACHAR* name);
    [[nodiscard]] unsigned short colorIndex() const; // 0 by block, 256 by layer

    /// Moves, turns, scales it, with its attributes or vertices. It must be open for write.
    /// eInvalidInput for a matrix without an inverse, eNotImplementedYet for a type whose geometry
    /// is not understood, eCannotScaleNonUniformly where the type has no form for it; the entity
    /// then stays as it was.
    virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);

    using AcDbObject::AcDbObject;

protected:
    /// A new record of that type, with the groups that every entity has and one more subclass.
    AcDbEntity(const wchar_t* dxfType, const wchar_t* subclass);

    void add(std::vector<corma::host::Group> groups);
    void addPoint(int code, const AcGePoint3d& point);
};

/// A single line of text.
class AcDbText : public AcDbEntity
{
    CORMA_HOST_CLASS(AcDbText)

public:
    AcDbText();

    explicit AcDbText(corma::host::WithoutGroups /*none*/) { }

    /// The text with its control codes, that of an attribute of several lines with its paragraph
    /// marks; a heap copy for acutDelString().
    [[nodiscard]] ACHAR* textString() const;

    /// Null is an empty text.
    Acad::ErrorStatus setTextString(const ACHAR* text);

    /// Gives it the text of another; it must be open for write. Several lines stay as they are
    /// written; in a text of one line blanks stand for their paragraph marks.
    void takeText(const AcDbText& other);

    [[nodiscard]] AcGePoint3d position() const; // left end of the base line, in its own plane
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    [[nodiscard]] double height() const;
    [[nodiscard]] double rotation() const; // radians
    [[nodiscard]] AcGeVector3d normal() const;
    [[nodiscard]] AcDbObjectId textStyle() const; // null when the drawing lacks it

protected:
    explicit AcDbText(const wchar_t* dxfType);

private:
    [[nodiscard]] corma::host::GroupRange own() const;
};

/// The prescription of an attribute, in a block definition. Its text is the default.
class AcDbAttributeDefinition : public AcDbText
{
    CORMA_HOST_CLASS(AcDbAttributeDefinition)

public:
    AcDbAttributeDefinition();

    explicit AcDbAttributeDefinition(corma::host::WithoutGroups none)
        : AcDbText(none)
    {
    }

    [[nodiscard]] ACHAR* tag() const; // heap copy for acutDelString()
    Acad::ErrorStatus setTag(const ACHAR* tag); // eInvalidInput for an empty one
    [[nodiscard]] ACHAR* prompt() const;
    [[nodiscard]] bool isInvisible() const;
    [[nodiscard]] bool isConstant() const;
    [[nodiscard]] bool isVerifiable() const;
    [[nodiscard]] bool isPreset() const;

private:
    [[nodiscard]] corma::host::GroupRange own() const;
    [[nodiscard]] bool hasFlag(std::int64_t flag) const;
};

/// A text with a tag that belongs to a block reference.
class AcDbAttribute : public AcDbText
{
    CORMA_HOST_CLASS(AcDbAttribute)

public:
    AcDbAttribute();

    explicit AcDbAttribute(corma::host::WithoutGroups none)
        : AcDbText(none)
    {
    }

    [[nodiscard]] ACHAR* tag() const; // heap copy for acutDelString()
    Acad::ErrorStatus setTag(const ACHAR* tag);
    [[nodiscard]] bool isInvisible() const;

    /// An attribute as a definition prescribes it, for a reference with that transformation
    /// (blockTransform() of the reference). The text is the default; extended data stay as they
    /// are. Letters that cannot be stretched as the matrix asks keep their shape. eInvalidInput for
    /// a matrix without an inverse, and then nothing is changed.
    Acad::ErrorStatus setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                            const AcGeMatrix3d& blockTransform);

    /// With its last attribute the reference loses what ends the list of them.
    Acad::ErrorStatus erase(bool erasing = true) override;

private:
    [[nodiscard]] corma::host::GroupRange own() const;
};

/// An insertion of a block.
class AcDbBlockReference : public AcDbEntity
{
    CORMA_HOST_CLASS(AcDbBlockReference)

public:
    AcDbBlockReference();

    explicit AcDbBlockReference(corma::host::WithoutGroups /*none*/) { }

    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord);

    /// Null when the drawing has no block of the name that the reference bears.
    [[nodiscard]] AcDbObjectId blockTableRecord() const;

    /// eNullObjectId, eWrongObjectType for an id that is no block, eWrongDatabase.
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId id);

    [[nodiscard]] AcGePoint3d position() const; // in world coordinates
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    [[nodiscard]] AcGeScale3d scaleFactors() const;
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale); // eInvalidInput for a factor of 0
    [[nodiscard]] double rotation() const; // radians, in its own plane
    Acad::ErrorStatus setRotation(double angle);
    [[nodiscard]] AcGeVector3d normal() const;

    /// From the coordinates of the block to those of the world. A scale of 0 counts as 1.
    [[nodiscard]] AcGeMatrix3d blockTransform() const;

    /// Its attributes that are not erased, in order. The caller deletes the iterator.
    [[nodiscard]] AcDbObjectIterator* attributeIterator() const;

    /// Puts a new attribute behind the others; the reference must be open for write and in a
    /// drawing (else eNotApplicable). The attribute belongs to the drawing then and is open for
    /// write, and the caller closes it; on failure it stays the caller's. eNullObjectPointer,
    /// eAlreadyInDb.
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);

private:
    friend class AcDbAttribute;

    [[nodiscard]] corma::host::GroupRange own() const;
    void endAttributes(); // makes the end of their list fit what there is
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

    explicit AcDbViewport(corma::host::WithoutGroups /*none*/) { }

    /// 1 for the paper space viewport of a layout itself, from 2 for a window; -1 for one that is
    /// off.
    [[nodiscard]] short number() const;
    [[nodiscard]] AcGeVector3d viewDirection() const; // from the target to the eye, in the world

private:
    [[nodiscard]] corma::host::GroupRange own() const;
};
