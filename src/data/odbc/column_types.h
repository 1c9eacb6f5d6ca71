#pragma once

// The types of columns that ODBC knows, as those of ado.h, and how their values are read.

#include "data/odbc/handles.h"

namespace corma::odbc {

/// The way a value is asked for and kept.
enum class Reading
{
    shortInteger,
    longInteger,
    bigInteger,
    single,
    real,
    boolean,
    date,
    timeStamp,
    guid,
    bytes,
    narrowText, // one byte for a character in the database
    wideText
};

struct ColumnType
{
    SQLSMALLINT odbcType = SQL_UNKNOWN_TYPE;
    int type = 0; // of ado::Type
    Reading reading = Reading::wideText;
};

/// The row of an ODBC type. One that is not known is read as a text.
const ColumnType& columnType(SQLSMALLINT odbcType);

/// The attributes of a field of a type of ado::Type.
int attributesOf(int type);

} // namespace corma::odbc
