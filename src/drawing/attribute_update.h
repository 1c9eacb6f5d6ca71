#pragma once

// The steps of an attribute update: what differs, and how it is brought up to date.

#include "host/acdb_database.h"
#include <corma/attributes.h>

/// True for a reference of a block whose name fits a wild-card pattern, case ignored. A block that
/// cannot be read is reported.
bool xx_block_matches(const AcDbBlockReference& reference, const wchar_t* pattern);

/// The references in model space of such blocks, put behind what is in `result`. The statuses of
/// xx_entlay().
int xx_block_refs_in_model_space(AcDbObjectIdArray& result, const wchar_t* pattern);

/// True when both lists have the same number of elements and each name of one is in the other, case
/// ignored. Values and order do not count.
bool xx_same_attributes(const xx_VarArray& definitions, const xx_VarArray& found);

/// Those of the references in model space whose attributes are not the ones that their block
/// defines. What cannot be opened is passed over.
AcDbObjectIdArray xx_find_out_of_date_refs(const wchar_t* pattern);

/// Those of the blocks with attribute definitions whose definitions are not those of the drawing
/// file of their name. A block without such a file is passed over.
AcDbObjectIdArray xx_find_out_of_date_records(const wchar_t* pattern);

/// Loads each block anew from the drawing file of its name, and then gives all references of those
/// that were loaded the attributes of the new definition. The status of the last thing done.
int xx_update_records(const AcDbObjectIdArray& records);

/// Gives the references of each block that one of these is of the attributes of its definition,
/// once a block. A reference of a block without definitions loses its attributes instead. The
/// status of the last thing done.
int xx_update_refs(const AcDbObjectIdArray& references);
