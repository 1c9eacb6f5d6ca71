#include "data/odbc/column_types.h"

#include "data/ado.h"

#include <algorithm>
#include <array>

namespace corma::odbc {

namespace {

// An exact number is read as text: no double holds all its digits. A time of the day has no date to
// count from.
// clang-format off
constexpr std::array kTypes = {
    ColumnType {SQL_SMALLINT,       ado::smallInteger,  Reading::shortInteger},
    ColumnType {SQL_INTEGER,        ado::integer,       Reading::longInteger},
    ColumnType {SQL_REAL,           ado::single,        Reading::single},
    ColumnType {SQL_FLOAT,          ado::real,          Reading::real},
    ColumnType {SQL_DOUBLE,         ado::real,          Reading::real},
    ColumnType {SQL_BIT,            ado::boolean,       Reading::boolean},
    ColumnType {SQL_TINYINT,        ado::tinyInteger,   Reading::shortInteger},
    ColumnType {SQL_BIGINT,         ado::bigInteger,    Reading::bigInteger},
    ColumnType {SQL_GUID,           ado::guid,          Reading::guid},
    ColumnType {SQL_BINARY,         ado::bytes,         Reading::bytes},
    ColumnType {SQL_CHAR,           ado::narrow,        Reading::narrowText},
    ColumnType {SQL_WCHAR,          ado::wide,          Reading::wideText},
    ColumnType {SQL_NUMERIC,        ado::numeric,       Reading::narrowText},
    ColumnType {SQL_DECIMAL,        ado::numeric,       Reading::narrowText},
    ColumnType {SQL_TYPE_DATE,      ado::day,           Reading::date},
    ColumnType {SQL_TYPE_TIME,      ado::time,          Reading::narrowText},
    ColumnType {SQL_TYPE_TIMESTAMP, ado::timeStamp,     Reading::timeStamp},
    ColumnType {SQL_VARCHAR,        ado::varyingNarrow, Reading::narrowText},
    ColumnType {SQL_LONGVARCHAR,    ado::longNarrow,    Reading::narrowText},
    ColumnType {SQL_WVARCHAR,       ado::varyingWide,   Reading::wideText},
    ColumnType {SQL_WLONGVARCHAR,   ado::longWide,      Reading::wideText},
    ColumnType {SQL_VARBINARY,      ado::varyingBytes,  Reading::bytes},
    ColumnType {SQL_LONGVARBINARY,  ado::longBytes,     Reading::bytes},
};
// clang-format on

constexpr ColumnType kOther = {SQL_UNKNOWN_TYPE, ado::varyingWide, Reading::wideText};

} // namespace

const ColumnType& columnType(SQLSMALLINT odbcType)
{
    const auto found = std::find_if(kTypes.begin(), kTypes.end(), [&](const ColumnType& row) {
        return row.odbcType == odbcType;
    });
    return found != kTypes.end() ? *found : kOther;
}

int attributesOf(int type)
{
    const bool isLong = type == ado::longNarrow || type == ado::longWide || type == ado::longBytes;
    return isLong ? ado::kIsLong : 0;
}

} // namespace corma::odbc
