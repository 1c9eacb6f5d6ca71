// The classes of ado.h over a driver with wide functions and a real server.

#include "databases/PostgresTest.h"
#include "databases/reading.h"
#include "support/RecordingServices.h"

#include <gmock/gmock.h>

namespace corma {

namespace {

using corma::testing::errorOf;
using corma::testing::errorOfOpening;
using corma::testing::firstChunk;
using corma::testing::firstField;
using corma::testing::firstText;
using corma::testing::kSmile;
using corma::testing::PostgresServer;
using corma::testing::run;
using corma::testing::times;

class PostgresAdo : public corma::testing::PostgresTest
{
protected:
    void SetUp() override { m_connection.open(connectionText()); }

    corma::testing::RecordingServices m_services;
    ado::Connection m_connection;
};

struct ValueRow
{
    const char* sentence;
    const wchar_t* sqlType;
    const wchar_t* value;
    int type;
    int tag;
    const wchar_t* text;
};

class PostgresTypes : public PostgresAdo, public ::testing::WithParamInterface<ValueRow>
{
};

TEST_P(PostgresTypes, GiveTheirValueAndNull)
{
    const std::wstring type = GetParam().sqlType;
    const auto field = firstField(
        m_connection, L"SELECT '" + std::wstring(GetParam().value) + L"'::" + type + L" AS c");
    EXPECT_EQ(field.name, L"c");
    EXPECT_EQ(field.type, GetParam().type);
    EXPECT_EQ(field.value.tag, GetParam().tag);
    EXPECT_EQ(xx_variant_text(field.value, true), GetParam().text);

    const auto null = firstField(m_connection, L"SELECT NULL::" + type);
    EXPECT_EQ(null.type, GetParam().type);
    EXPECT_EQ(null.value.tag, VT_NULL);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(PostgresAdo, PostgresTypes, ::testing::Values(
    ValueRow {"SmallInteger",  L"int2",          L"-7",          2,   VT_I2,   L"-7"},
    ValueRow {"Integer",       L"int4",          L"70000",       3,   VT_I4,   L"70000"},
    ValueRow {"BigInteger",    L"int8",          L"5000000000",  20,  VT_I8,   L"VT_I8"},
    ValueRow {"Single",        L"float4",        L"1.5",         4,   VT_R4,   L"1.500000e+00"},
    ValueRow {"Double",        L"float8",        L"-2.25",       5,   VT_R8,   L"-2.250000e+00"},
    ValueRow {"True",          L"bool",          L"true",        11,  VT_BOOL, L"TRUE"},
    ValueRow {"False",         L"bool",          L"false",       11,  VT_BOOL, L"FALSE"},
    ValueRow {"ExactNumber",   L"numeric(20,4)", L"12.3400",     131, VT_BSTR, L"12.3400"},
    ValueRow {"LongNumber",    L"numeric", L"123456789012345678901234567890.12", 131, VT_BSTR, L"123456789012345678901234567890.12"},
    ValueRow {"Characters",    L"char(3)",       L"x",           130, VT_BSTR, L"x  "},
    ValueRow {"VarCharacters", L"varchar(10)",   L"abc",         202, VT_BSTR, L"abc"},
    ValueRow {"EmptyText",     L"text",          L"",            203, VT_BSTR, L""},
    ValueRow {"Text",          L"text",          L"\u00E9\u20AC\U0001F600", 203, VT_BSTR, L"\u00E9\u20AC\U0001F600"},
    ValueRow {"Date",          L"date",          L"2024-02-29",  133, VT_DATE, L"29/02/24"},
    ValueRow {"EarlyDate",     L"date",          L"1850-03-04",  133, VT_DATE, L"04/03/1850"},
    ValueRow {"Time",          L"time",          L"13:14:15",    134, VT_BSTR, L"13:14:15"},
    ValueRow {"TimeStamp",     L"timestamp",     L"2024-02-29 18:00", 135, VT_DATE, L"29/02/24"},
    ValueRow {"EarlyStamp",    L"timestamp",     L"1850-03-04 18:00", 135, VT_DATE, L"04/03/1850"},
    ValueRow {"Bytes",         L"bytea",         L"\\x0102",     205, VT_ARRAY | VT_UI1, L"Array of VT_UI1"},
    ValueRow {"Guid",          L"uuid",          L"a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a11", 72, VT_BSTR, L"{A0EEBC99-9C0B-4EF8-BB6D-6BB9BD380A11}"},
    ValueRow {"Interval",      L"interval",      L"1 day",       202, VT_BSTR, L"1 day"},
    ValueRow {"Json",          L"json",          L"{\"a\":1}",   202, VT_BSTR, L"{\"a\":1}"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(PostgresAdo, ATimeOfTheDayIsAFractionFromMidnight)
{
    const auto days = [&](const wchar_t* stamp) {
        return firstField(m_connection, L"SELECT '" + std::wstring(stamp) + L"'::timestamp")
            .value.real;
    };
    EXPECT_EQ(days(L"1899-12-30 00:00"), 0.0);
    EXPECT_EQ(days(L"1899-12-31 18:00"), 1.75);
    EXPECT_EQ(days(L"1899-12-29 06:00"), -1.25);
    EXPECT_NEAR(days(L"2024-02-29 12:34:56.789"), 45351.0 + 45296.789 / 86400.0, 1e-9);
}

TEST_F(PostgresAdo, OnlyLongTypesAreLong)
{
    EXPECT_EQ(firstField(m_connection, L"SELECT 'x'::text").attributes, ado::kIsLong);
    EXPECT_EQ(firstField(m_connection, L"SELECT '\\x01'::bytea").attributes, ado::kIsLong);
    EXPECT_EQ(firstField(m_connection, L"SELECT 'x'::varchar(10)").attributes, 0);
    EXPECT_EQ(firstField(m_connection, L"SELECT 1").attributes, 0);
}

TEST_F(PostgresAdo, ANameMayHaveAnyCharacters)
{
    const std::wstring name = std::wstring(L"naam \u00E9") + kSmile;
    EXPECT_EQ(firstField(m_connection, L"SELECT 1 AS \"" + name + L"\"").name, name);
}

TEST_F(PostgresAdo, ATextIsWholeHoweverLong)
{
    // Around the ends of pieces of 4096 units, one of which falls into a pair.
    for (const int count : {0, 1365, 1366, 2730, 2731, 40000}) {
        const std::wstring word = times(count, std::wstring(L"\u00E9") + kSmile);
        EXPECT_EQ(firstField(m_connection, L"SELECT '" + word + L"'::text").value.text, word)
            << count;
    }
}

struct ChunkRow
{
    const char* sentence;
    std::wstring value;
    int bytes;
    std::wstring chunk;
};

class PostgresChunks : public PostgresAdo, public ::testing::WithParamInterface<ChunkRow>
{
};

TEST_P(PostgresChunks, AreTheFirstUnits)
{
    EXPECT_EQ(
        firstChunk(m_connection, L"SELECT '" + GetParam().value + L"'::text", GetParam().bytes),
        GetParam().chunk);
}

INSTANTIATE_TEST_SUITE_P(
    PostgresAdo, PostgresChunks,
    ::testing::Values(ChunkRow {"OfALongText", times(300, L"m"), 100, times(50, L"m")},
                      ChunkRow {"OfOneThatIsOneTooLong", times(51, L"m"), 100, times(50, L"m")},
                      ChunkRow {"OfOneThatJustFits", times(50, L"m"), 100, times(50, L"m")},
                      ChunkRow {"OfAShortText", L"m", 100, L"m"},
                      ChunkRow {"OfAnEmptyText", L"", 100, L""},
                      ChunkRow {"OfNoBytes", L"m", 0, L""},
                      ChunkRow {"WithAPairThatFits", times(48, L"m") + kSmile + L"z", 100,
                                times(48, L"m") + kSmile},
                      ChunkRow {"WithoutHalfOfAPair", times(49, L"m") + kSmile, 100,
                                times(49, L"m")}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(PostgresAdo, AChunkOfAnotherTypeIsItsValue)
{
    EXPECT_EQ(firstChunk(m_connection, L"SELECT NULL::text", 100), L"NULL");
    EXPECT_EQ(firstChunk(m_connection, L"SELECT '\\x01'::bytea", 100), L"Array of VT_UI1");
    EXPECT_EQ(firstChunk(m_connection, L"SELECT 12345", 2), L"12345");
}

struct FailureRow
{
    const char* sentence;
    const wchar_t* sql;
    const wchar_t* description;
};

class PostgresFailures : public PostgresAdo, public ::testing::WithParamInterface<FailureRow>
{
};

TEST_P(PostgresFailures, AreErrorsAndTheConnectionStays)
{
    const auto error = errorOf(m_connection, GetParam().sql);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 0x80040E14U);
    EXPECT_EQ(error->source, L"PostgreSQL");
    EXPECT_THAT(error->description, ::testing::StartsWith(GetParam().description));
    EXPECT_FALSE(m_connection.isLost());
    EXPECT_EQ(firstText(m_connection, L"SELECT 1"), L"1");
}

INSTANTIATE_TEST_SUITE_P(
    PostgresAdo, PostgresFailures,
    ::testing::Values(
        FailureRow {"OfAnAbsentTable", L"SELECT * FROM weg",
                    L"[42P01] ERROR: relation \"weg\" does not exist;"},
        FailureRow {"OfASyntax", L"SELEKT", L"[42601] ERROR: syntax error at or near \"SELEKT\";"},
        FailureRow {"OfADivision", L"SELECT 1/0", L"[22012] ERROR: division by zero;"},
        FailureRow {"WithAnyCharacters", L"SELECT \"\u00E9\U0001F600\"",
                    L"[42703] ERROR: column \"\u00E9\U0001F600\" does not exist;"}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(PostgresAdo, AStatementWithoutRowsLeavesTheRecordSetClosed)
{
    ado::Recordset records(&m_connection);
    for (const wchar_t* const sql : {L"CREATE TEMPORARY TABLE t (a int)",
                                     L"INSERT INTO t VALUES (1)", L"DELETE FROM t WHERE a = 2"}) {
        records.open(sql);
        EXPECT_FALSE(records.isOpen()) << sql;
    }
    records.open(L"SELECT a FROM t WHERE a = 2");
    EXPECT_TRUE(records.isOpen());
    EXPECT_EQ(records.fieldCount(), 1);
    EXPECT_TRUE(records.isAtEnd());
}

TEST_F(PostgresAdo, AStatementMayTakeThirtySeconds)
{
    EXPECT_EQ(firstText(m_connection, L"SELECT current_setting('statement_timeout')"), L"30s");
}

TEST_F(PostgresAdo, TwoRecordSetsRunBesideEachOther)
{
    ado::Recordset outer(&m_connection);
    outer.open(L"SELECT g FROM generate_series(1, 3) AS g");
    int sum = 0;
    for (; !outer.isAtEnd(); outer.moveNext()) {
        const auto number = outer.value(0).integer;
        sum += std::stoi(firstText(m_connection, L"SELECT 10 * " + std::to_wstring(number)));
    }
    EXPECT_EQ(sum, 60);
}

TEST_F(PostgresAdo, ANameOfADatabaseMayHaveOtherLetters)
{
    run(m_connection, L"CREATE DATABASE \"t\u00FCren \u20AC\"");
    std::wstring text = connectionText();
    const std::wstring part = L"Database=postgres";
    text.replace(text.find(part), part.size(), L"Database=t\u00FCren \u20AC");
    ado::Connection other;
    other.open(text);
    const auto field = firstField(other, L"SELECT current_database()::text");
    EXPECT_EQ(field.value.text, L"t\u00FCren \u20AC");
    EXPECT_EQ(field.type, ado::longWide) << "it is asked by wide functions";
}

TEST_F(PostgresAdo, AUserWhoIsNotKnownIsRefused)
{
    std::wstring text = connectionText();
    text.replace(text.find(L"UID=corma"), std::wstring(L"UID=corma").size(), L"UID=piet");
    const auto error = errorOfOpening(text);
    ASSERT_TRUE(error);
    EXPECT_THAT(error->description, ::testing::StartsWith(L"driver \"PostgreSQL Unicode\": ["));
    EXPECT_THAT(error->description, ::testing::HasSubstr(L"role \"piet\" does not exist"));
}

TEST_F(PostgresAdo, AServerThatIsNotThereIsTold)
{
    const auto error
        = errorOfOpening(L"Driver={PostgreSQL Unicode};Server=/nowhere;Database=x;UID=corma");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 0x80004005U);
    EXPECT_EQ(error->source, L"ODBC");
    EXPECT_THAT(error->description,
                ::testing::StartsWith(L"driver \"PostgreSQL Unicode\": [08001] "));
}

TEST_F(PostgresAdo, AConnectionThatTheServerEndsIsLost)
{
    const auto error = errorOf(m_connection, L"SELECT pg_terminate_backend(pg_backend_pid())");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 0x80004005U);
    EXPECT_THAT(error->description, ::testing::StartsWith(L"[57P01] "));
    EXPECT_TRUE(m_connection.isLost());

    const auto next = errorOf(m_connection, L"SELECT 1");
    ASSERT_TRUE(next);
    EXPECT_EQ(next->description, L"The connection is lost.");
    EXPECT_FALSE(errorOfOpening(connectionText()));
}

TEST_F(PostgresAdo, AServerThatGoesAwayTakesItsConnectionsAlong)
{
    PostgresServer server;
    ado::Connection connection;
    connection.open(connectionText(server));
    ado::Recordset records(&connection);
    records.open(L"SELECT g FROM generate_series(1, 3) AS g");
    EXPECT_FALSE(connection.isLost());
    server.kill();

    EXPECT_TRUE(errorOf(connection, L"SELECT 1"));
    EXPECT_TRUE(connection.isLost());
    EXPECT_TRUE(errorOfOpening(connectionText(server)));
    EXPECT_EQ(firstText(m_connection, L"SELECT 1"), L"1") << "the other server stays";
}

} // namespace

} // namespace corma
