#pragma once

#include "host/model/Group.h"

#include <cstdint>

class AcDbObject;

namespace corma::host {

class Store;

/// What part a record plays in its drawing.
enum class RecordKind : std::uint8_t
{
    structure, // holds the file together: begin and end of sections and tables, what is not decoded
    header, // the header variables
    table, // the head of a symbol table
    tableEntry,
    blockBegin, // BLOCK
    blockEnd, // ENDBLK
    entity,
    subEntity, // ATTRIB, VERTEX or SEQEND behind the entity that owns it
    object // a dictionary and whatever else is no entity
};

/// The type of a record as DXF names it. The names that the library deals with have numbers of
/// their own; all others are numbered by the drawing that has them.
enum class RecordType : std::uint16_t
{
    none, // bytes without a type, such as those before the first record
    section,
    endSection,
    endOfFile,
    table,
    endTable,
    block,
    blockEnd,
    dictionary,
    dictionaryWithDefault,
    xrecord,
    layout,
    layer,
    linetype,
    textStyle,
    dimStyle,
    viewportEntry, // VPORT
    appId,
    view,
    ucs,
    blockRecord,
    insert,
    attribute, // ATTRIB
    attributeDefinition, // ATTDEF
    sequenceEnd,
    vertex,
    polyline,
    text,
    multilineText,
    viewport, // VIEWPORT
    firstOther
};

} // namespace corma::host

/// One record of a drawing. It stays where it is for as long as its drawing lives, so an object id
/// is its address.
class AcDbStub
{
public:
    corma::host::Store* store = nullptr;
    corma::host::Handle handle = corma::host::Handle::none;

    // Where its bytes stand in the file; none for a record that is new.
    std::uint64_t offset = 0;
    std::uint32_t size = 0;

    corma::host::RecordType type = corma::host::RecordType::none;
    corma::host::RecordKind kind = corma::host::RecordKind::structure;

    bool isErased : 1 = false;
    bool isChanged : 1 = false; // its groups in memory are what gets written, not its bytes
    bool isImplied : 1 = false; // the file means it without saying it; it is not written
    bool isLoose : 1 = false; // taken out of its dictionary; not written unless it finds another
    bool isPaperSpace : 1 = false; // an entity of the section ENTITIES that is in paper space
    bool ownsHandle : 1 = false; // its handle stands in its record; else it has it in memory only

    AcDbObject* resident = nullptr; // the object in memory, owned; null while it is not needed

    // The order in which records are written.
    AcDbStub* previous = nullptr;
    AcDbStub* next = nullptr;

    // The record that it belongs to by its place: the BLOCK of an entity, the entity of a
    // subEntity, the table of an entry. Null where the place does not say it.
    AcDbStub* container = nullptr;
};

namespace corma::host {

inline bool isDictionary(const AcDbStub& stub)
{
    return stub.type == RecordType::dictionary || stub.type == RecordType::dictionaryWithDefault;
}

} // namespace corma::host
