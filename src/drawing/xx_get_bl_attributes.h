#pragma once

#include "host/acdb_block.h"
#include "host/acdb_entity.h"
#include <corma/attributes.h>

/// The same as by the id. Null is reported and ends in RTERROR.
int xx_get_bl_attributes(const AcDbBlockReference* reference, xx_VarArray& result,
                         AcGePoint3d* point = nullptr, const wchar_t* pattern = nullptr);

/// The same as by the id. Always RTNORM.
int xx_get_attdefs(const AcDbBlockTableRecord& record, xx_VarArray& result, bool constantOnly);

/// The attributes of a reference alone, without the constant ones of its block. RTNORM; RTERROR,
/// which the user is told, when one cannot be opened: the others are in the list all the same.
int xx_get_own_attributes(const AcDbBlockReference& reference, xx_VarArray& result);
