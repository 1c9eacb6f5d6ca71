// Statements as users of the library run them, on a real server.

#include "data/ComError.h"
#include "data/connections.h"
#include "databases/PostgresTest.h"
#include "databases/reading.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/host.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <cstdlib>
#include <gmock/gmock.h>

using corma::testing::kSmile;

namespace {

using corma::testing::PostgresServer;
using corma::testing::times;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Texts = std::vector<std::wstring>;

class PostgresSelect : public corma::testing::PostgresTest
{
protected:
    void TearDown() override { xx_ado_close_all(); }

    int select(const std::wstring& sql, int maximumRows = 0, bool debug = false)
    {
        return xx_ado_select(connectionText().c_str(), sql.c_str(), &m_result, maximumRows, debug);
    }

    /// The values of a column as texts.
    [[nodiscard]] Texts column(int index) const
    {
        Texts texts;
        const xx_Var& column = *m_result[index];
        for (short i = 0; i < column.count; ++i) {
            const ads_u_val& value = column.values[i];
            texts.push_back(column.type == RTSTR        ? value.rstring
                                : column.type == RTREAL ? std::to_wstring(value.rreal)
                                                        : std::to_wstring(value.rlong));
        }
        return texts;
    }

    /// The messages to the user; each was printed behind a line end.
    [[nodiscard]] Texts messages() const
    {
        Texts texts;
        for (const std::wstring& text : m_services.printed) {
            if (text != L"\n") {
                texts.push_back(text);
            }
        }
        return texts;
    }

    corma::testing::RecordingServices m_services;
    xx_VarArray m_result;
};

struct KeptRow
{
    const char* sentence;
    const wchar_t* sqlType;
    const wchar_t* value;
    int kept; // type of the record
    const wchar_t* text;
    const wchar_t* null; // what a NULL becomes
};

class PostgresKept : public PostgresSelect, public ::testing::WithParamInterface<KeptRow>
{
};

TEST_P(PostgresKept, AsItsColumnSays)
{
    const std::wstring type = GetParam().sqlType;
    ASSERT_EQ(select(L"SELECT '" + std::wstring(GetParam().value) + L"'::" + type
                     + L" AS Kolom UNION ALL SELECT NULL::" + type),
              RTNORM);
    EXPECT_EQ(m_services.allPrinted(), L"");
    ASSERT_EQ(m_result.length(), 1);
    EXPECT_STREQ(m_result[0]->name(), L"kolom");
    EXPECT_EQ(m_result[0]->type, GetParam().kept);
    EXPECT_EQ(column(0), (Texts {GetParam().text, GetParam().null}));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(PostgresSelect, PostgresKept, ::testing::Values(
    KeptRow {"ASmallInteger",      L"int2",    L"-7",           RTLONG, L"-7",        L"0"},
    KeptRow {"AnInteger",          L"int4",    L"70000",        RTLONG, L"70000",     L"0"},
    KeptRow {"ABigInteger",        L"int8",    L"12",           RTLONG, L"12",        L"0"},
    KeptRow {"ABigIntegerTooBig",  L"int8",    L"5000000000",   RTLONG, L"705032704", L"0"},
    KeptRow {"ADouble",            L"float8",  L"2.25",         RTREAL, L"2.250000",  L"0.000000"},
    KeptRow {"ASingle",            L"float4",  L"2.25",         RTSTR,  L"2.250000e+00", L"NULL"},
    KeptRow {"ATrue",              L"bool",    L"true",         RTLONG, L"1",         L"0"},
    KeptRow {"AFalse",             L"bool",    L"false",        RTLONG, L"0",         L"0"},
    KeptRow {"AnExactNumber",      L"numeric", L"12.3400",      RTSTR,  L"12.3400",   L"NULL"},
    KeptRow {"ADate",              L"date",    L"2024-02-29",   RTSTR,  L"29/02/24",  L"NULL"},
    KeptRow {"ADateOfOtherYears",  L"date",    L"1929-12-31",   RTSTR,  L"31/12/1929", L"NULL"},
    KeptRow {"ATime",              L"time",    L"13:14:15",     RTSTR,  L"13:14:15",  L"NULL"},
    KeptRow {"ATimeStamp",         L"timestamp", L"2024-02-29 23:59:59", RTSTR, L"29/02/24", L"NULL"},
    KeptRow {"Bytes",              L"bytea",   L"\\x0102",      RTSTR,  L"Array of VT_UI1", L"NULL"},
    KeptRow {"AGuid",              L"uuid",    L"a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a11", RTSTR, L"{A0EEBC99-9C0B-4EF8-BB6D-6BB9BD380A11}", L"NULL"},
    KeptRow {"AShortText",         L"varchar(20)", L"t\u00FCr \U0001F600", RTSTR, L"t\u00FCr \U0001F600", L"NULL"},
    KeptRow {"ALongText",          L"text",    L"t\u00FCr \U0001F600", RTSTR, L"t\u00FCr \U0001F600", L"NULL"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(PostgresSelect, ALongTextIsCutToItsFirstHundredBytes)
{
    ASSERT_EQ(select(L"SELECT repeat('m', 300), repeat('m', 49) || '" + std::wstring(kSmile)
                     + L"', repeat('m', 200)::varchar(200)"),
              RTNORM);
    ASSERT_EQ(m_result.length(), 2) << "the columns of one name are one";
    EXPECT_EQ(column(0), Texts {times(49, L"m")});
    EXPECT_EQ(column(1), Texts {times(200, L"m")});
}

TEST_F(PostgresSelect, GivesOneElementForEachColumnAndOneValueForEachRow)
{
    ASSERT_EQ(select(L"SELECT g AS \"Aantal\", 'nr ' || g AS \"Naam \u20AC\" FROM "
                     L"generate_series(1, 3) AS g"),
              RTNORM);
    ASSERT_EQ(m_result.length(), 2);
    EXPECT_STREQ(m_result[0]->name(), L"Aantal");
    EXPECT_STREQ(m_result[1]->name(), L"Naam \u00AC") << "names keep the low byte of a character";
    EXPECT_EQ(column(0), (Texts {L"1", L"2", L"3"}));
    EXPECT_EQ(column(1), (Texts {L"nr 1", L"nr 2", L"nr 3"}));
}

TEST_F(PostgresSelect, WithoutRowsTheResultIsEmpty)
{
    m_result.setOwned(new xx_Var(L"former", 1));
    EXPECT_EQ(select(L"SELECT 1 WHERE false"), RTNORM);
    EXPECT_EQ(m_result.length(), 0);
    EXPECT_EQ(select(L"CREATE TEMPORARY TABLE leeg (a int)"), RTNORM);
    EXPECT_EQ(m_result.length(), 0);
}

TEST_F(PostgresSelect, ReadsNoMoreRowsThanTheMaximum)
{
    for (const auto& [maximum, count] :
         {std::pair {1, 1}, {2, 2}, {3, 3}, {4, 3}, {0, 3}, {-1, 3}}) {
        ASSERT_EQ(select(L"SELECT g FROM generate_series(1, 3) AS g", maximum), RTNORM);
        EXPECT_EQ(m_result[0]->count, count) << maximum;
    }
}

TEST_F(PostgresSelect, MoreRowsThanAColumnHoldsAreLeftOutAndTold)
{
    ASSERT_EQ(select(L"SELECT g FROM generate_series(1, 32760) AS g"), RTNORM);
    EXPECT_EQ(m_result[0]->count, 32760);
    EXPECT_EQ(m_services.allPrinted(), L"");
    ASSERT_EQ(select(L"SELECT g FROM generate_series(1, 32761) AS g"), RTNORM);
    EXPECT_EQ(m_result[0]->count, 32760);
    EXPECT_EQ(
        messages(),
        Texts {L"Only the first 32760 rows are kept; ask for the others by another statement"});
}

TEST_F(PostgresSelect, DebugShowsTheStatementAndWhatIsRead)
{
    const std::wstring sql
        = L"SELECT 1 AS i, 2.5::float8 AS d, true AS b, 3::int8 AS l, 'vier' AS s "
          L"/* a remark that makes it longer than a line */";
    ASSERT_EQ(select(sql, 0, true), RTNORM);
    EXPECT_EQ(
        messages(),
        (Texts {L"\n======================== xx_ado_sql 1 ===============================",
                sql.substr(0, 79), sql.substr(79),
                L"\n----------------------------------------------------------", L"\nRead record 0",
                L"\nField   0 : ", L"Naam                    i Var (Int) 1", L"\nField   1 : ",
                L"Naam                    d Var (Double) 2.500000", L"\nField   2 : ",
                L"Naam                    b Var (Bool) 1", L"\nField   3 : ",
                L"Naam                    l Var (Long) 3", L"\nField   4 : ",
                L"Naam                    s Var (String) vier", L"\nec = 5100"}));
}

TEST_F(PostgresSelect, AFailingStatementIsToldAndItsConnectionStays)
{
    ASSERT_EQ(select(L"SELECT pg_backend_pid()"), RTNORM);
    const Texts process = column(0);
    EXPECT_EQ(select(L"SELECT * FROM weg"), RTERROR);
    EXPECT_EQ(m_result.length(), 0);
    const Texts told = messages();
    ASSERT_EQ(told.size(), 5U);
    EXPECT_EQ(told[0], L"\nxx_dump_com_error!\n");
    EXPECT_EQ(told[1], L"\tCode = 80040e14\n");
    EXPECT_EQ(told[2], L"\tCode meaning = IDispatch error #3092\n");
    EXPECT_EQ(told[3], L"\tSource = PostgreSQL\n");
    EXPECT_THAT(told[4],
                StartsWith(L"\tDescription = [42P01] ERROR: relation \"weg\" does not exist;"));

    ASSERT_EQ(select(L"SELECT pg_backend_pid()"), RTNORM);
    EXPECT_EQ(column(0), process);
}

TEST_F(PostgresSelect, AStatementThatFailsOnALaterRowGivesNothing)
{
    EXPECT_EQ(select(L"SELECT 1 / (2 - g) FROM generate_series(1, 2) AS g"), RTERROR);
    EXPECT_EQ(m_result.length(), 0);
    EXPECT_THAT(m_services.allPrinted(), HasSubstr(L"[22012] ERROR: division by zero"));
}

TEST_F(PostgresSelect, ALongErrorIsCut)
{
    EXPECT_EQ(select(L"SELECT '" + times(300, L"z") + L"'::int"), RTERROR);
    EXPECT_EQ(messages().back().size(), 256U);
}

TEST_F(PostgresSelect, AConnectionThatIsLostIsOpenedAnew)
{
    ASSERT_EQ(select(L"SELECT 1"), RTNORM);
    EXPECT_EQ(select(L"SELECT pg_terminate_backend(pg_backend_pid())"), RTERROR);
    EXPECT_THAT(m_services.allPrinted(), HasSubstr(L"[57P01] "));
    EXPECT_EQ(select(L"SELECT 1"), RTNORM);
    EXPECT_EQ(column(0), Texts {L"1"});
}

TEST_F(PostgresSelect, AServerThatGoesAwayIsAnErrorEachTime)
{
    PostgresServer server;
    const std::wstring text = connectionText(server);
    ASSERT_EQ(xx_ado_select(text.c_str(), L"SELECT 1", &m_result), RTNORM);
    server.kill();
    for (int i = 0; i < 2; ++i) {
        m_services.printed.clear();
        EXPECT_EQ(xx_ado_select(text.c_str(), L"SELECT 1", &m_result), RTERROR);
        EXPECT_EQ(messages().size(), 5U);
        EXPECT_EQ(m_result.length(), 0);
    }
    EXPECT_THAT(messages().back(),
                StartsWith(L"\tDescription = driver \"PostgreSQL Unicode\": [08001] "));
    EXPECT_EQ(select(L"SELECT 1"), RTNORM);
}

TEST_F(PostgresSelect, AnOpenConnectionIsUsedAgain)
{
    ASSERT_EQ(select(L"SELECT pg_backend_pid()"), RTNORM);
    const Texts process = column(0);
    ASSERT_EQ(select(L"SELECT pg_backend_pid()"), RTNORM);
    EXPECT_EQ(column(0), process);
    xx_ado_close_all();
    ASSERT_EQ(select(L"SELECT pg_backend_pid()"), RTNORM);
    EXPECT_NE(column(0), process);
}

/// Files of data sources that ODBC looks in, for the life of the object.
class DataSources
{
public:
    explicit DataSources(const std::wstring& content)
        : m_path(m_folder.write(L"odbc.ini", corma::toUtf8(content)))
    {
        ::setenv("ODBCINI", corma::platform::toNative(m_path).c_str(), 1);
    }

    DataSources(const DataSources&) = delete;
    DataSources& operator=(const DataSources&) = delete;

    ~DataSources() { ::unsetenv("ODBCINI"); }

private:
    corma::testing::TempFolder m_folder;
    std::wstring m_path;
};

TEST_F(PostgresSelect, ADataSourceIsReachedByItsName)
{
    const DataSources sources(L"[corma firma]\nDriver = PostgreSQL Unicode\nServername = 127.0.0.1"
                              L"\nPort = "
                              + std::to_wstring(port())
                              + L"\nDatabase = postgres\nUsername = corma\n");
    for (const wchar_t* const text : {L"Provider=MSDASQL;DSN=corma firma", L"DSN=corma firma"}) {
        ASSERT_EQ(xx_ado_select(text, L"SELECT 6 * 7", &m_result), RTNORM) << text;
        EXPECT_EQ(column(0), Texts {L"42"});
    }
    EXPECT_EQ(m_services.allPrinted(), L"");
}

TEST_F(PostgresSelect, ADriverIsReachedThroughTheProviderOfOdbc)
{
    const std::wstring text = L"Provider=MSDASQL;" + connectionText();
    ASSERT_EQ(xx_ado_select(text.c_str(), L"SELECT 6 * 7", &m_result), RTNORM);
    EXPECT_EQ(column(0), Texts {L"42"});
}

} // namespace
