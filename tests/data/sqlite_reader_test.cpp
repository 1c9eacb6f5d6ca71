#include "data/DataTest.h"
#include "data/sqlite_reader.h"
#include "platform/platform.h"
#include "support/Child.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace corma::testing {

namespace {

constexpr const char* kThree = "CREATE TABLE T(A VARCHAR, N INTEGER);"
                               "INSERT INTO T VALUES('een',1),('twee',2),('drie',3)";

class SqliteReader : public DataTest
{
protected:
    [[nodiscard]] std::wstring three() const { return database(L"a.db3", kThree); }

    /// Gives the result something that it held before.
    void fillResult()
    {
        result.clear();
        result.append(new xx_Var(L"Oud", L"inhoud"));
    }
};

constexpr const char* kOld = "Oud text: inhoud";

// --- rows ----------------------------------------------------------------------------------------

TEST_F(SqliteReader, GivesAColumnWithAValueForEachRow)
{
    EXPECT_EQ(select(three(), L"SELECT * FROM T"), "A text: een|twee|drie\nN long: 1|2|3");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
}

TEST_F(SqliteReader, StopsAtTheMaximumOfRows)
{
    const auto path = three();
    EXPECT_EQ(select(path, L"SELECT A FROM T", 0), "A text: een|twee|drie");
    EXPECT_EQ(select(path, L"SELECT A FROM T", -1), "A text: een|twee|drie");
    EXPECT_EQ(select(path, L"SELECT A,N FROM T", 1), "A text: een\nN long: 1");
    EXPECT_EQ(select(path, L"SELECT A FROM T", 2), "A text: een|twee");
    EXPECT_EQ(select(path, L"SELECT A FROM T", 3), "A text: een|twee|drie");
    EXPECT_EQ(select(path, L"SELECT A FROM T", 4), "A text: een|twee|drie");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
}

TEST_F(SqliteReader, KeepsAsManyRowsAsAColumnHolds)
{
    const auto path = database(L"a.db3",
                               "CREATE TABLE T(A INTEGER, B TEXT);"
                               "WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I+1 "
                               "FROM N WHERE I<32760) INSERT INTO T SELECT I,I FROM N");
    select(path, L"SELECT * FROM T");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
    ASSERT_EQ(result.length(), 2);
    EXPECT_EQ(result[0]->count, 32'760);
    EXPECT_EQ(result[0]->values[32'759].rlong, 32'760);
    EXPECT_STREQ(result[1]->values[32'759].rstring, L"32760");

    SqliteFile(path).run("INSERT INTO T VALUES(-1,-1)");
    select(path, L"SELECT * FROM T ORDER BY A DESC");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(),
              "Only the first 32760 rows are kept; ask for the others by another statement");
    EXPECT_EQ(result[0]->count, 32'760);
    EXPECT_EQ(result[0]->values[0].rlong, 32'760);
    EXPECT_EQ(result[0]->values[32'759].rlong, 1);
    EXPECT_STREQ(result[1]->values[32'759].rstring, L"1");

    select(path, L"SELECT * FROM T", 32'760); // as many as were wanted
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(result[0]->count, 32'760);
}

TEST_F(SqliteReader, EndsWhereRowsAreWithoutEnd)
{
    const auto path = three();
    select(path, L"WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I+1 FROM N) SELECT I FROM N");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(),
              "Only the first 32760 rows are kept; ask for the others by another statement");
    EXPECT_EQ(result[0]->count, 32'760);
}

TEST_F(SqliteReader, LeavesTheResultEmptyWithoutRows)
{
    const auto path = three();
    fillResult();
    EXPECT_EQ(select(path, L"SELECT * FROM T WHERE N=9"), "");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
}

TEST_F(SqliteReader, EmptiesTheResultBeforeItFillsIt)
{
    const auto path = three();
    fillResult();
    EXPECT_EQ(select(path, L"SELECT A FROM T WHERE N=1"), "A text: een");
}

TEST_F(SqliteReader, KeepsTheFormerResultWhenTheStatementIsNone)
{
    const auto path = three();
    fillResult();
    EXPECT_EQ(select(path, L"SELECT FROM"), kOld);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(shown(),
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/a.db3 : prepare : SQL error or missing database, ec = 1)");
}

TEST_F(SqliteReader, EmptiesTheResultWhenTheStatementFailsAsItRuns)
{
    const auto path = three();
    fillResult();
    EXPECT_EQ(select(path, L"SELECT abs(-9223372036854775807-1)"), "");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(shown(),
              "Error in file xx__sqlite.cpp on line 256\n"
              "(S=~/a.db3 : finalize : SQL error or missing database, ec = 1)");
}

TEST_F(SqliteReader, KeepsTheRowsBeforeOneThatFails)
{
    EXPECT_EQ(select(three(),
                     L"SELECT A, CASE N WHEN 3 THEN zeroblob(99999999) ELSE N END AS X "
                     L"FROM T"),
              "A text: een|twee\nX text: 1|2");
    EXPECT_EQ(status, 18);
}

TEST_F(SqliteReader, DoesNothingForAnEmptyStatement)
{
    const auto path = three();
    for (const wchar_t* sql : {L"", L" ", L";", L"-- niets", L"/* niets */"}) {
        fillResult();
        EXPECT_EQ(select(path, sql), "");
        EXPECT_EQ(status, RTNORM);
        EXPECT_EQ(shown(), "");
    }
}

TEST_F(SqliteReader, RunsOnlyTheFirstOfSeveralStatements)
{
    const auto path = three();
    EXPECT_EQ(select(path, L"SELECT A FROM T WHERE N=1; SELECT N FROM T"), "A text: een");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(select(path, L"SELECT N FROM T WHERE N=2; this is none"), "N long: 2");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
}

TEST_F(SqliteReader, SeesWhatChangesBetweenCalls)
{
    const auto path = three();
    EXPECT_EQ(select(path, L"SELECT A FROM T WHERE N>2"), "A text: drie");
    SqliteFile(path).run("INSERT INTO T VALUES('vier',4); ALTER TABLE T ADD COLUMN C INTEGER");
    EXPECT_EQ(select(path, L"SELECT A FROM T WHERE N>2"), "A text: drie|vier");
    EXPECT_EQ(select(path, L"SELECT C FROM T WHERE N>2"), "C long: 0|0");
    SqliteFile(path).run("DROP TABLE T; CREATE TABLE T(A INTEGER); INSERT INTO T VALUES(7)");
    EXPECT_EQ(select(path, L"SELECT * FROM T"), "A long: 7");
    EXPECT_EQ(shown(), "");
}

TEST_F(SqliteReader, HoldsNoLockBetweenCalls)
{
    const auto path = three();
    SqliteFile writer(path);
    select(path, L"SELECT * FROM T", 1); // rows are left
    writer.run("BEGIN EXCLUSIVE; DELETE FROM T WHERE N=1; COMMIT");
    select(path, L"SELECT nothing FROM T");
    select(path, L"SELECT abs(-9223372036854775807-1) FROM T");
    writer.run("BEGIN EXCLUSIVE; DELETE FROM T WHERE N=2; COMMIT");
    EXPECT_EQ(select(path, L"SELECT N FROM T"), "N long: 3");
}

// --- failures ------------------------------------------------------------------------------------

struct FailureRow
{
    const char* sentence;
    const wchar_t* sql;
    int status;
    const char* message;
};

class SqliteRefusal : public SqliteReader, public ::testing::WithParamInterface<FailureRow>
{
};

TEST_P(SqliteRefusal, LeavesTheFileAsItIs)
{
    const auto path = three();
    folder.write(L"andere.db3", folder.read(L"a.db3"));
    const CurrentFolder here(folder.path());
    const std::string before = folder.read(L"a.db3");
    select(path, GetParam().sql);
    EXPECT_EQ(status, GetParam().status);
    EXPECT_EQ(shown(), GetParam().message);
    EXPECT_EQ(result.length(), 0);
    xx_ado_close_all();
    EXPECT_TRUE(folder.read(L"a.db3") == before);
    EXPECT_TRUE(folder.read(L"andere.db3") == before);
    EXPECT_EQ(folder.names(), "a.db3 andere.db3");
}

constexpr const char* kReadOnly
    = "Error in file xx__sqlite.cpp on line 256\n"
      "(S=~/a.db3 : finalize : Attempt to write a readonly database, ec = 8)";
constexpr const char* kNotPrepared
    = "Error in file xx__sqlite.cpp on line 137\n"
      "(S=~/a.db3 : prepare : SQL error or missing database, ec = 1)";
constexpr const char* kFailed = "Error in file xx__sqlite.cpp on line 256\n"
                                "(S=~/a.db3 : finalize : SQL error or missing database, ec = 1)";
constexpr const char* kTooBig
    = "Error in file xx__sqlite.cpp on line 256\n"
      "(S=~/a.db3 : finalize : String or BLOB exceeds size limit, ec = 18)";

// clang-format off
const FailureRow failureRows[] = {
    {"OfAnInsert",        L"INSERT INTO T VALUES('x',9)", 8, kReadOnly},
    {"OfAnUpdate",        L"UPDATE T SET A='x'", 8, kReadOnly},
    {"OfADelete",         L"DELETE FROM T", 8, kReadOnly},
    {"OfANewTable",       L"CREATE TABLE U(A)", 8, kReadOnly},
    {"OfADroppedTable",   L"DROP TABLE T", 8, kReadOnly},
    {"OfAnAlteredTable",  L"ALTER TABLE T ADD COLUMN C", 8, kReadOnly},
    {"OfAnIndex",         L"CREATE INDEX I ON T(A)", 8, kReadOnly},
    {"OfARowThatComesBack", L"INSERT INTO T VALUES('x',9) RETURNING A", 8, kReadOnly},
    {"OfAVersion",        L"PRAGMA user_version=5", 8, kReadOnly},
    {"OfAnotherFile",     L"ATTACH 'andere.db3' AS B", 1, kFailed},
    {"OfANewFile",        L"ATTACH 'nieuw.db3' AS B", 1, kFailed},
    {"OfACopy",           L"VACUUM INTO 'kopie.db3'", 1, kFailed},
    {"OfALibrary",        L"SELECT load_extension('libc.so.6')", 1, kFailed},
    {"OfAMissingTable",   L"SELECT * FROM U", 1, kNotPrepared},
    {"OfAMissingColumn",  L"SELECT C FROM T", 1, kNotPrepared},
    {"OfAnOpenQuote",     L"SELECT * FROM T WHERE A='d'Arc'", 1, kNotPrepared},
    {"OfALargeBlob",      L"SELECT zeroblob(16777217)", 18, kTooBig},
    {"OfARandomBlob",     L"SELECT randomblob(1000000000)", 18, kTooBig},
    {"OfALargeText",      L"SELECT hex(zeroblob(9000000))", 18, kTooBig},
    {"OfATextThatGrows",  L"SELECT replace(hex(zeroblob(4000)),'0',hex(zeroblob(4000)))", 18,
        kTooBig},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(sqlite, SqliteRefusal, ::testing::ValuesIn(failureRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(SqliteReader, TakesAValueOfTheLargestSize)
{
    EXPECT_EQ(select(three(), L"SELECT length(zeroblob(16777216)) AS X"), "X text: 16777216");
    EXPECT_EQ(status, RTNORM);
}

TEST_F(SqliteReader, RefusesAStatementThatIsTooDeep)
{
    std::wstring sql = L"SELECT 1";
    for (int i = 0; i < 250; ++i) {
        sql += L"+(1";
    }
    select(three(), sql + std::wstring(250, L')'));
    EXPECT_EQ(status, 1);
    EXPECT_EQ(shown(), kNotPrepared);
}

TEST_F(SqliteReader, RefusesAStatementThatIsTooLong)
{
    select(three(), L"SELECT '" + std::wstring(1'000'001, L'a') + L"'");
    EXPECT_EQ(status, 18);
    EXPECT_EQ(shown(),
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/a.db3 : prepare : String or BLOB exceeds size limit, ec = 18)");
}

TEST_F(SqliteReader, TellsThatAnotherOneWrites)
{
    const auto path = three();
    SqliteFile writer(path);
    writer.run("BEGIN EXCLUSIVE; DELETE FROM T");
    fillResult();
    EXPECT_EQ(select(path, L"SELECT * FROM T"), kOld);
    EXPECT_EQ(status, 5);
    EXPECT_EQ(shown(),
              "Error in file xx__ado.cpp on line 225\n"
              "(S=~/a.db3 : prepare : The database file is locked, ec = 5)\n"
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/a.db3 : prepare : The database file is locked, ec = 5)");
    writer.run("ROLLBACK");
    EXPECT_EQ(select(path, L"SELECT N FROM T"), "N long: 1|2|3");
    EXPECT_EQ(status, RTNORM);
    writer.run("BEGIN EXCLUSIVE"); // now that the tables are known
    EXPECT_EQ(select(path, L"SELECT N FROM T"), "");
    EXPECT_EQ(status, 5);
    EXPECT_EQ(shown(),
              "Error in file xx__sqlite.cpp on line 256\n"
              "(S=~/a.db3 : finalize : The database file is locked, ec = 5)");
    writer.run("ROLLBACK");
}

TEST_F(SqliteReader, ReadsWhileAnotherOneHasNotFinishedWriting)
{
    const auto path = three();
    SqliteFile writer(path);
    writer.run("BEGIN IMMEDIATE; DELETE FROM T");
    EXPECT_EQ(select(path, L"SELECT N FROM T"), "N long: 1|2|3");
    writer.run("COMMIT");
    EXPECT_EQ(select(path, L"SELECT N FROM T"), "");
    EXPECT_EQ(status, RTNORM);
}

TEST_F(SqliteReader, TellsWhatIsNoDatabase)
{
    const auto path = folder.write(L"a.db3", std::string(2000, 'x'));
    select(path, L"SELECT * FROM T");
    EXPECT_EQ(status, 26);
    EXPECT_EQ(shown(),
              "Error in file xx__ado.cpp on line 225\n"
              "(S=~/a.db3 : prepare : File opened that is not a database file, ec = 26)\n"
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/a.db3 : prepare : File opened that is not a database file, ec = 26)");
    EXPECT_EQ(folder.read(L"a.db3"), std::string(2000, 'x'));
}

TEST_F(SqliteReader, FindsNoTableInAnEmptyFile)
{
    const auto path = folder.write(L"a.db3", "");
    select(path, L"SELECT * FROM T");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(shown(), kNotPrepared);
    EXPECT_EQ(folder.read(L"a.db3"), "");
}

TEST_F(SqliteReader, OpensRegularFilesOnly)
{
    constexpr mode_t kAnyone = 0600;
    const auto pipe = folder.path(L"a.db3");
    ASSERT_EQ(::mkfifo(platform::toNative(pipe).c_str(), kAnyone), 0);
    const std::string message = "Error in file xx__ado.cpp on line 220\n"
                                "(S=~/a.db3 : open : Unable to open the database file, ec = 14)\n"
                                "Error in file xx__sqlite.cpp on line 137\n"
                                "(S=~/a.db3 : prepare : Library used incorrectly, ec = 21)";
    select(pipe, L"SELECT * FROM T");
    EXPECT_EQ(status, 21);
    EXPECT_EQ(shown(), message);
    folder.remove(L"a.db3");
    select(folder.makeFolder(L"a.db3"), L"SELECT * FROM T");
    EXPECT_EQ(status, 21);
    EXPECT_EQ(shown(), message);
    EXPECT_EQ(result.length(), 0);
}

TEST_F(SqliteReader, TellsThatTheFileIsGone)
{
    fillResult();
    status = xx_sqlite_sql(folder.path(L"weg.db3"), L"P", {.sql = L"SELECT 1"}, result);
    EXPECT_EQ(status, 21);
    EXPECT_EQ(columnsOf(result), kOld);
    EXPECT_EQ(shown(),
              "Error in file xx__ado.cpp on line 220\n"
              "(S=~/weg.db3 : open : Unable to open the database file, ec = 14)\n"
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/weg.db3 : prepare : Library used incorrectly, ec = 21)");
}

TEST_F(SqliteReader, NeedsNoRightToWrite)
{
    constexpr mode_t kReadFile = 0444;
    constexpr mode_t kReadFolder = 0555;
    const auto path = three();
    ASSERT_EQ(::chmod(platform::toNative(path).c_str(), kReadFile), 0);
    ASSERT_EQ(::chmod(platform::toNative(folder.path()).c_str(), kReadFolder), 0);
    EXPECT_TRUE(inChildWithoutRights([&] {
                    return select(path, L"SELECT N FROM T") == "N long: 1|2|3";
                }).isGood());
    ASSERT_EQ(::chmod(platform::toNative(folder.path()).c_str(), S_IRWXU), 0);
}

TEST_F(SqliteReader, TellsThatAFileCannotBeRead)
{
    constexpr mode_t kEnterFolder = 0711;
    const auto path = three();
    ASSERT_EQ(::chmod(platform::toNative(path).c_str(), 0), 0);
    ASSERT_EQ(::chmod(platform::toNative(folder.path()).c_str(), kEnterFolder), 0);
    const std::string message = "Error in file xx__ado.cpp on line 220\n"
                                "(S=~/a.db3 : open : Unable to open the database file, ec = 14)\n"
                                "Error in file xx__sqlite.cpp on line 137\n"
                                "(S=~/a.db3 : prepare : Library used incorrectly, ec = 21)";
    EXPECT_TRUE(inChildWithoutRights([&] {
                    select(path, L"SELECT N FROM T");
                    return status == 21 && shown() == message;
                }).isGood());
}

// --- logs beside the file ------------------------------------------------------------------------

TEST_F(SqliteReader, ReadsWhatAnotherOneHasInItsLog)
{
    const auto path = three();
    SqliteFile writer(path);
    EXPECT_EQ(writer.valueOf("PRAGMA journal_mode=WAL"), "wal");
    writer.run("PRAGMA wal_autocheckpoint=0; INSERT INTO T VALUES('vier',4)");
    const std::string before = folder.read(L"a.db3");
    EXPECT_EQ(select(path, L"SELECT N FROM T"), "N long: 1|2|3|4");
    EXPECT_EQ(status, RTNORM);
    writer.run("INSERT INTO T VALUES('vijf',5)");
    EXPECT_EQ(select(path, L"SELECT N FROM T"), "N long: 1|2|3|4|5");
    xx_ado_close_all();
    EXPECT_TRUE(folder.read(L"a.db3") == before);
    EXPECT_EQ(writer.valueOf("SELECT count(*) FROM T"), "5");
    EXPECT_EQ(shown(), "");
}

TEST_F(SqliteReader, ReadsTheLogThatAnotherOneLeft)
{
    {
        SqliteFile writer(three());
        EXPECT_EQ(writer.valueOf("PRAGMA journal_mode=WAL"), "wal");
        writer.run("PRAGMA wal_autocheckpoint=0; INSERT INTO T VALUES('vier',4)");
        folder.write(L"b.db3", folder.read(L"a.db3"));
        folder.write(L"b.db3-wal", folder.read(L"a.db3-wal"));
    }
    const std::string before = folder.read(L"b.db3");
    const std::string log = folder.read(L"b.db3-wal");
    EXPECT_EQ(select(folder.path(L"b.db3"), L"SELECT N FROM T"), "N long: 1|2|3|4");
    EXPECT_EQ(status, RTNORM);
    xx_ado_close_all();
    EXPECT_TRUE(folder.read(L"b.db3") == before);
    EXPECT_TRUE(folder.read(L"b.db3-wal") == log);
    EXPECT_EQ(SqliteFile(folder.path(L"b.db3")).valueOf("SELECT count(*) FROM T"), "4");
}

TEST_F(SqliteReader, ReadsAFileWithALogThatIsClosed)
{
    {
        SqliteFile writer(three());
        EXPECT_EQ(writer.valueOf("PRAGMA journal_mode=WAL"), "wal");
        writer.run("INSERT INTO T VALUES('vier',4)");
    }
    const std::string before = folder.read(L"a.db3");
    ASSERT_EQ(folder.names(), "a.db3");
    EXPECT_EQ(select(folder.path(L"a.db3"), L"SELECT N FROM T"), "N long: 1|2|3|4");
    xx_ado_close_all();
    EXPECT_TRUE(folder.read(L"a.db3") == before);
    // SQLite leaves these to the next one who may write.
    EXPECT_EQ(folder.names(), "a.db3 a.db3-shm a.db3-wal");
    EXPECT_EQ(folder.read(L"a.db3-wal"), "");
    EXPECT_EQ(SqliteFile(folder.path(L"a.db3")).valueOf("SELECT count(*) FROM T"), "4");
    EXPECT_EQ(folder.names(), "a.db3");
}

TEST_F(SqliteReader, DoesNotUndoWhatAnotherOneLeftUnfinished)
{
    {
        SqliteFile writer(three());
        writer.run("PRAGMA cache_size=1; PRAGMA cache_spill=1; BEGIN;"
                   "WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I+1 FROM N WHERE I<3000)"
                   "INSERT INTO T SELECT hex(zeroblob(50)),I FROM N; DELETE FROM T WHERE N=1");
        folder.write(L"b.db3", folder.read(L"a.db3"));
        folder.write(L"b.db3-journal", folder.read(L"a.db3-journal"));
    }
    const std::string before = folder.read(L"b.db3");
    const std::string journal = folder.read(L"b.db3-journal");
    ASSERT_GT(before.size(), 100'000U);
    ASSERT_GT(journal.size(), 512U);
    select(folder.path(L"b.db3"), L"SELECT * FROM T");
    EXPECT_EQ(status, 8);
    EXPECT_EQ(shown(),
              "Error in file xx__ado.cpp on line 225\n"
              "(S=~/b.db3 : prepare : Attempt to write a readonly database, ec = 8)\n"
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/b.db3 : prepare : Attempt to write a readonly database, ec = 8)");
    xx_ado_close_all();
    EXPECT_TRUE(folder.read(L"b.db3") == before);
    EXPECT_TRUE(folder.read(L"b.db3-journal") == journal);
}

// --- messages ------------------------------------------------------------------------------------

TEST_F(SqliteReader, ShowsTheStatementAndEachStepOnDemand)
{
    const auto path = three();
    EXPECT_EQ(select(path, L"SELECT A FROM T WHERE A LIKE 'd%'", 0, true), "A text: drie");
    EXPECT_EQ(shown(),
              "\n======================== xx_sqlite_sql ===============================\n"
              "SELECT A FROM T WHERE A LIKE 'd$'\n"
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/a.db3 : prepare : Successful result, ec = 0)\n"
              "Error in file xx__sqlite.cpp on line 256\n"
              "(S=~/a.db3 : finalize : Successful result, ec = 0)");
}

TEST_F(SqliteReader, ShowsAStatementThatFailsOnce)
{
    const auto path = three();
    select(path, L"SELECT FROM", 0, true);
    EXPECT_EQ(shown(),
              "\n======================== xx_sqlite_sql ===============================\n"
              "SELECT FROM\n"
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/a.db3 : prepare : SQL error or missing database, ec = 1)");
}

TEST_F(SqliteReader, ShowsAMissingFileBehindTheStatement)
{
    status
        = xx_sqlite_sql(folder.path(L"weg.db3"), L"P", {.sql = L"SELECT 1", .debug = true}, result);
    EXPECT_EQ(shown(),
              "\n======================== xx_sqlite_sql ===============================\n"
              "SELECT 1\n"
              "Error in file xx__ado.cpp on line 220\n"
              "(S=~/weg.db3 : open : Unable to open the database file, ec = 14)\n"
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/weg.db3 : prepare : Library used incorrectly, ec = 21)");
}

TEST_F(SqliteReader, ReadsAFileWhosePathIsOutsideAscii)
{
    const auto path = database(L"één 😀%s.db3", kThree);
    EXPECT_EQ(select(path, L"SELECT N FROM T"), "N long: 1|2|3");
    select(path, L"SELECT FROM");
    EXPECT_EQ(shown(),
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S=~/één 😀$s.db3 : prepare : SQL error or missing database, ec = 1)");
}

TEST_F(SqliteReader, DoesNotTakeAPathForAnAddress)
{
    const CurrentFolder here(folder.path());
    database(L"a.db3", kThree);
    folder.write(L"file:a.db3?mode=memory", folder.read(L"a.db3"));
    status = xx_sqlite_sql(L"file:a.db3?mode=memory", L"P", {.sql = L"SELECT N FROM T"}, result);
    EXPECT_EQ(columnsOf(result), "N long: 1|2|3");
}

struct CodeRow
{
    int code;
    const char* text;
};

class SqliteCode : public DataTest, public ::testing::WithParamInterface<CodeRow>
{
};

TEST_P(SqliteCode, IsReportedWithItsMeaning)
{
    const int code = GetParam().code;
    const std::string report = "Error in file bron.cpp on line 12\n(S=huis.db3 : doen : "
        + std::string(GetParam().text) + ", ec = " + std::to_string(code) + ")";
    EXPECT_EQ(xx_sqlite_check(L"bron.cpp", 12, L"huis.db3", L"doen", code, true), code);
    EXPECT_EQ(shown(), report);
    EXPECT_EQ(xx_sqlite_check(L"bron.cpp", 12, L"huis.db3", L"doen", code, false), code);
    EXPECT_EQ(shown(), code == 0 ? "" : report);
}

// clang-format off
const CodeRow codeRows[] = {
    {0, "Successful result"},
    {1, "SQL error or missing database"},
    {2, "Internal logic error in SQLite"},
    {3, "Access permission denied"},
    {4, "Callback routine requested an abort"},
    {5, "The database file is locked"},
    {6, "A table in the database is locked"},
    {7, "A malloc() failed"},
    {8, "Attempt to write a readonly database"},
    {9, "Operation terminated by sqlite3_interrupt()"},
    {10, "Some kind of disk I/O error occurred"},
    {11, "The database disk image is malformed"},
    {12, "NOT USED. Table or record not found"},
    {13, "Insertion failed because database is full"},
    {14, "Unable to open the database file"},
    {15, "NOT USED. Database lock protocol error"},
    {16, "Database is empty"},
    {17, "The database schema changed"},
    {18, "String or BLOB exceeds size limit"},
    {19, "Abort due to constraint violation"},
    {20, "Data type mismatch"},
    {21, "Library used incorrectly"},
    {22, "Uses OS features not supported on host"},
    {23, "Authorization denied"},
    {24, "Auxiliary database format error"},
    {25, "2nd parameter to sqlite3_bind out of range"},
    {26, "File opened that is not a database file"},
    {27, "XX SQLite unknown errorcode"},
    {99, "XX SQLite unknown errorcode"},
    {100, "sqlite3_step() has another row ready"},
    {101, "sqlite3_step() has finished executing"},
    {102, "XX SQLite unknown errorcode"},
    {-1, "XX SQLite unknown errorcode"},
    {266, "XX SQLite unknown errorcode"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(sqlite, SqliteCode, ::testing::ValuesIn(codeRows), [](const auto& row) {
    const int code = row.param.code;
    return code < 0 ? "Minus" + std::to_string(-code) : "Code" + std::to_string(code);
});

} // namespace

} // namespace corma::testing
