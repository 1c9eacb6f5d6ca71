#pragma once

// Values of the current row of a statement.

#include "data/Variant.h"
#include "data/odbc/Session.h"
#include "data/odbc/column_types.h"

namespace corma::odbc {

/// A field of a statement that has a current row.
struct FieldRef
{
    Session& session;
    SQLHANDLE statement = SQL_NULL_HANDLE;
    int index = 0;
};

/// The value of a field. It can be asked for once.
Variant readValue(const FieldRef& field, Reading reading);

/// The same, but of a text only the characters that the first bytes of it hold in the database.
Variant readChunk(const FieldRef& field, Reading reading, int bytes);

} // namespace corma::odbc
