// The classes of ado.h over a driver that knows narrow text only, with SQLite files.

#include "databases/OdbcDrivers.h"
#include "databases/reading.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

namespace corma {

namespace {

using corma::testing::errorOf;
using corma::testing::firstChunk;
using corma::testing::firstField;
using corma::testing::firstText;
using corma::testing::kSmile;
using corma::testing::run;
using corma::testing::times;

struct CloseDatabase
{
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};

void makeDatabase(const std::wstring& path, const std::wstring& sql)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open(platform::toNative(path).c_str(), &opened);
    const std::unique_ptr<sqlite3, CloseDatabase> database(opened);
    ASSERT_EQ(code, SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(opened, toUtf8(sql).c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(opened);
}

class OdbcSqlite : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (const auto reason = corma::testing::missingDriver(L"SQLite3", "libsqliteodbc");
            !reason.empty()) {
            GTEST_SKIP() << reason;
        }
        makeDatabase(m_path,
                     L"CREATE TABLE Keys (Key VARCHAR(20), N TEXT, Aantal INTEGER);"
                     L"INSERT INTO Keys VALUES ('t\u00FCr', 'deur \u20AC', 1);"
                     L"INSERT INTO Keys VALUES ('wand', NULL, 2);");
        m_connection.open(connectionText());
    }

    [[nodiscard]] std::wstring connectionText() const
    {
        return L"Driver={SQLite3};Database=" + m_path;
    }

    corma::testing::RecordingServices m_services;
    corma::testing::TempFolder m_folder;
    std::wstring m_path
        = m_folder.path(L"w\u00F6rter.sqlite"); // not ".db3", which is read directly
    ado::Connection m_connection;
};

struct DeclaredRow
{
    const char* sentence;
    const wchar_t* declared;
    const wchar_t* value;
    int type;
    int tag;
    const wchar_t* text;
};

class OdbcSqliteTypes : public OdbcSqlite, public ::testing::WithParamInterface<DeclaredRow>
{
};

TEST_P(OdbcSqliteTypes, GiveTheirValueAndNull)
{
    run(m_connection, std::wstring(L"CREATE TABLE t (c ") + GetParam().declared + L")");
    run(m_connection, std::wstring(L"INSERT INTO t VALUES (") + GetParam().value + L")");
    const auto field = firstField(m_connection, L"SELECT c FROM t");
    EXPECT_EQ(field.name, L"c");
    EXPECT_EQ(field.type, GetParam().type);
    EXPECT_EQ(field.value.tag, GetParam().tag);
    EXPECT_EQ(xx_variant_text(field.value, true), GetParam().text);

    run(m_connection, L"UPDATE t SET c = NULL");
    EXPECT_EQ(firstField(m_connection, L"SELECT c FROM t").value.tag, VT_NULL);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(OdbcSqlite, OdbcSqliteTypes, ::testing::Values(
    DeclaredRow {"TinyInteger",  L"TINYINT",     L"3",     16,  VT_I2,   L"3"},
    DeclaredRow {"SmallInteger", L"SMALLINT",    L"-7",    2,   VT_I2,   L"-7"},
    DeclaredRow {"Integer",      L"INTEGER",     L"70000", 3,   VT_I4,   L"70000"},
    DeclaredRow {"BigInteger",   L"BIGINT",      L"5e9",   20,  VT_I8,   L"VT_I8"},
    DeclaredRow {"Double",       L"DOUBLE",      L"2.25",  5,   VT_R8,   L"2.250000e+00"},
    DeclaredRow {"Boolean",      L"BOOLEAN",     L"1",     11,  VT_BOOL, L"TRUE"},
    DeclaredRow {"VarChar",      L"VARCHAR(9)",  L"'ab'",  200, VT_BSTR, L"ab"},
    DeclaredRow {"Text",         L"TEXT",        L"'ab'",  201, VT_BSTR, L"ab"},
    DeclaredRow {"Date",         L"DATE",        L"'2024-02-29'",          133, VT_DATE, L"29/02/24"},
    DeclaredRow {"TimeStamp",    L"TIMESTAMP",   L"'1850-03-04 18:00:00'", 135, VT_DATE, L"04/03/1850"},
    DeclaredRow {"Time",         L"TIME",        L"'13:14:15'",            134, VT_BSTR, L"13:14:15"},
    DeclaredRow {"Blob",         L"BLOB",        L"x'0102'", 128, VT_ARRAY | VT_UI1, L"Array of VT_UI1"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(OdbcSqlite, GivesTheRowsOneAfterTheOther)
{
    ado::Recordset records(&m_connection);
    records.open(L"SELECT Key, N, Aantal FROM Keys ORDER BY Aantal");
    ASSERT_TRUE(records.isOpen());
    ASSERT_EQ(records.fieldCount(), 3);
    EXPECT_EQ(records.name(1), L"N");
    EXPECT_EQ(records.attributes(0), 0);
    EXPECT_EQ(records.attributes(1), ado::kIsLong);
    EXPECT_EQ(records.value(0).text, L"t\u00FCr");
    EXPECT_EQ(records.value(1).text, L"deur \u20AC");
    EXPECT_EQ(records.value(2).integer, 1);
    records.moveNext();
    ASSERT_FALSE(records.isAtEnd());
    EXPECT_EQ(records.value(0).text, L"wand");
    EXPECT_EQ(records.value(1).tag, VT_NULL);
    EXPECT_EQ(records.value(2).integer, 2);
    records.moveNext();
    EXPECT_TRUE(records.isAtEnd());
    records.close();
    EXPECT_FALSE(records.isOpen());
}

TEST_F(OdbcSqlite, AStatementWithoutRowsLeavesTheRecordSetClosed)
{
    ado::Recordset records(&m_connection);
    records.open(L"UPDATE Keys SET N = 'muur' WHERE Key = 'wand'");
    EXPECT_FALSE(records.isOpen());
    records.open(L"UPDATE Keys SET N = 'muur' WHERE Key = 'dak'");
    EXPECT_FALSE(records.isOpen());
    records.open(L"SELECT N FROM Keys WHERE Key = 'dak'");
    EXPECT_TRUE(records.isOpen());
    EXPECT_TRUE(records.isAtEnd());
}

TEST_F(OdbcSqlite, CharactersBeyondSixteenBitsPassBothWays)
{
    const std::wstring word = std::wstring(L"\u00E9\u20AC") + kSmile;
    EXPECT_EQ(firstText(m_connection, L"SELECT '" + word + L"'"), word);
    EXPECT_EQ(firstText(m_connection, L"SELECT length('" + word + L"')"), L"3");
}

TEST_F(OdbcSqlite, ATextIsWholeHoweverLong)
{
    for (const int count : {0, 1, 819, 820, 1365, 1366, 40000}) { // around pieces of 4096 bytes
        const std::wstring word = times(count, L"\u20ACab");
        EXPECT_EQ(firstField(m_connection, L"SELECT '" + word + L"'").value.text, word) << count;
    }
}

TEST_F(OdbcSqlite, AChunkHasWholeCharactersOfItsBytes)
{
    run(m_connection,
        L"UPDATE Keys SET N = '" + times(40, std::wstring(L"\u00E9") + kSmile) + L"'");
    const std::wstring pair = std::wstring(L"\u00E9") + kSmile; // two bytes and four
    EXPECT_EQ(firstChunk(m_connection, L"SELECT N FROM Keys", 100), times(16, pair) + L"\u00E9");
    EXPECT_EQ(firstChunk(m_connection, L"SELECT N FROM Keys", 102), times(17, pair));
    EXPECT_EQ(firstChunk(m_connection, L"SELECT N FROM Keys", 101), times(16, pair) + L"\u00E9");
    EXPECT_EQ(firstChunk(m_connection, L"SELECT N FROM Keys", 1000), times(40, pair));
    EXPECT_EQ(firstChunk(m_connection, L"SELECT NULL FROM Keys", 100), L"NULL");
}

TEST_F(OdbcSqlite, BytesThatAreNoUtf8AreReadAsWindowsText)
{
    EXPECT_EQ(firstText(m_connection, L"SELECT CAST(x'8074FC' AS TEXT)"), L"\u20ACt\u00FC");
}

TEST_F(OdbcSqlite, AFailingStatementIsAnErrorAndTheConnectionStays)
{
    const auto error = errorOf(m_connection, L"SELECT * FROM Weg");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 0x80040E14U);
    EXPECT_EQ(error->source, L"SQLite");
    EXPECT_THAT(error->description, ::testing::StartsWith(L"[HY000] "));
    EXPECT_THAT(error->description, ::testing::HasSubstr(L"no such table: Weg"));
    EXPECT_FALSE(m_connection.isLost());
    EXPECT_EQ(firstText(m_connection, L"SELECT count(*) FROM Keys"), L"2");
}

TEST_F(OdbcSqlite, ANameOfADatabaseMayHaveAnyCharacters)
{
    const std::wstring name = L"\u00FC\u00F6\u20AC" + times(9, kSmile) + L".sqlite";
    makeDatabase(m_folder.path(name), L"CREATE TABLE t (a); INSERT INTO t VALUES ('hier')");
    const std::string before = m_folder.names();
    m_connection.open(L"Driver=SQLite3;Database=" + m_folder.path(name));
    EXPECT_EQ(firstText(m_connection, L"SELECT a FROM t"), L"hier");
    EXPECT_EQ(m_folder.names(), before) << "no other file came to be";
}

TEST_F(OdbcSqlite, AConnectionCanBeOpenedAnew)
{
    const std::wstring other = m_folder.path(L"other.sqlite");
    makeDatabase(other, L"CREATE TABLE Keys (Key TEXT); INSERT INTO Keys VALUES ('ander');");
    m_connection.open(L"driver=sqlite3;database=" + other);
    EXPECT_EQ(firstText(m_connection, L"SELECT Key FROM Keys"), L"ander");
}

TEST_F(OdbcSqlite, IsReachedByAStatementOfTheLibrary)
{
    xx_VarArray result;
    EXPECT_EQ(xx_ado_select(connectionText().c_str(),
                            L"SELECT Key, Aantal FROM Keys WHERE Key = 't\u00FCr'", &result),
              RTNORM);
    xx_ado_close_all();
    ASSERT_EQ(result.length(), 2);
    EXPECT_STREQ(result[0]->currentText(), L"t\u00FCr");
    EXPECT_EQ(result[1]->type, RTLONG);
    EXPECT_EQ(result[1]->values[0].rlong, 1);
    EXPECT_EQ(m_services.allPrinted(), L"");
}

} // namespace

} // namespace corma
