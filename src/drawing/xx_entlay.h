#pragma once

#include "host/acdb_database.h"

/// Answers whether an entity is wanted; not 0 for yes. It is open in the way that was asked for.
using EntityFilter = int (*)(AcDbEntity* entity, void* argument);

/// What xx_entlay() looks through, and for what.
struct EntityQuery
{
    const wchar_t* block = ACDB_MODEL_SPACE; // name of the block
    EntityFilter filter = nullptr; // null: every entity, which is then not opened
    void* argument = nullptr; // for the filter
    AcDb::OpenMode open = AcDb::kForRead; // for the filter
    AcDbDatabase* database = nullptr; // null: the working database
};

/// Puts the ids of a block's entities behind what is in `result`, in the order of the drawing.
/// RTNORM; RTERROR when the block cannot be opened. An entity that cannot be opened is reported and
/// passed over.
int xx_entlay(AcDbObjectIdArray& result, const EntityQuery& query);
