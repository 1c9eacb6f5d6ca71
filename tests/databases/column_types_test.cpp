#include "data/ado.h"
#include "data/odbc/column_types.h"

#include <gtest/gtest.h>

namespace corma {

namespace {

using odbc::Reading;

struct TypeRow
{
    const char* sentence;
    SQLSMALLINT odbcType;
    int type;
    int attributes;
    Reading reading;
};

class ColumnTypes : public ::testing::TestWithParam<TypeRow>
{
};

TEST_P(ColumnTypes, HaveTheirNumberAndReading)
{
    const odbc::ColumnType& type = odbc::columnType(GetParam().odbcType);
    EXPECT_EQ(type.type, GetParam().type);
    EXPECT_EQ(type.reading, GetParam().reading);
    EXPECT_EQ(odbc::attributesOf(type.type), GetParam().attributes);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(ColumnTypes, ColumnTypes, ::testing::Values(
    TypeRow {"SmallInteger", SQL_SMALLINT,        2,   0,   Reading::shortInteger},
    TypeRow {"Integer",      SQL_INTEGER,         3,   0,   Reading::longInteger},
    TypeRow {"Real",         SQL_REAL,            4,   0,   Reading::single},
    TypeRow {"Float",        SQL_FLOAT,           5,   0,   Reading::real},
    TypeRow {"Double",       SQL_DOUBLE,          5,   0,   Reading::real},
    TypeRow {"Bit",          SQL_BIT,             11,  0,   Reading::boolean},
    TypeRow {"TinyInteger",  SQL_TINYINT,         16,  0,   Reading::shortInteger},
    TypeRow {"BigInteger",   SQL_BIGINT,          20,  0,   Reading::bigInteger},
    TypeRow {"Guid",         SQL_GUID,            72,  0,   Reading::guid},
    TypeRow {"Binary",       SQL_BINARY,          128, 0,   Reading::bytes},
    TypeRow {"Char",         SQL_CHAR,            129, 0,   Reading::narrowText},
    TypeRow {"WideChar",     SQL_WCHAR,           130, 0,   Reading::wideText},
    TypeRow {"Numeric",      SQL_NUMERIC,         131, 0,   Reading::narrowText},
    TypeRow {"Decimal",      SQL_DECIMAL,         131, 0,   Reading::narrowText},
    TypeRow {"Date",         SQL_TYPE_DATE,       133, 0,   Reading::date},
    TypeRow {"Time",         SQL_TYPE_TIME,       134, 0,   Reading::narrowText},
    TypeRow {"TimeStamp",    SQL_TYPE_TIMESTAMP,  135, 0,   Reading::timeStamp},
    TypeRow {"VarChar",      SQL_VARCHAR,         200, 0,   Reading::narrowText},
    TypeRow {"LongVarChar",  SQL_LONGVARCHAR,     201, 128, Reading::narrowText},
    TypeRow {"WideVarChar",  SQL_WVARCHAR,        202, 0,   Reading::wideText},
    TypeRow {"LongWide",     SQL_WLONGVARCHAR,    203, 128, Reading::wideText},
    TypeRow {"VarBinary",    SQL_VARBINARY,       204, 0,   Reading::bytes},
    TypeRow {"LongBinary",   SQL_LONGVARBINARY,   205, 128, Reading::bytes},
    TypeRow {"AnInterval",   SQL_INTERVAL_DAY,    202, 0,   Reading::wideText},
    TypeRow {"NoneAtAll",    SQL_UNKNOWN_TYPE,    202, 0,   Reading::wideText}),
    [](const auto& row) { return row.param.sentence; });
// clang-format on

} // namespace

} // namespace corma
