#include "data/DataTest.h"
#include "data/sqlite_reader.h"
#include "platform/text.h"

#include <gtest/gtest.h>
#include <random>

// Database files that were made or damaged to do harm. The sanitizers judge what these tests cannot
// see.

namespace corma::testing {

namespace {

class HostileDatabase : public DataTest
{
protected:
    /// A small database with most of what a file can hold: an index, overflow pages, free pages,
    /// a view, a trigger.
    [[nodiscard]] std::string valid() const
    {
        const auto path = folder.path(L"heel.db3");
        SqliteFile(path).run(
            "PRAGMA page_size=512; CREATE TABLE Keys(Key VARCHAR, E VARCHAR, N INTEGER, R REAL);"
            "CREATE INDEX I ON Keys(Key); CREATE TABLE Oud(A);"
            "INSERT INTO Keys VALUES('deur','door',1,1.5),('raam',hex(zeroblob(600)),2,NULL),"
            "('één','één 😀',-3,1e300); INSERT INTO Oud VALUES(zeroblob(900)); DROP TABLE Oud;"
            "CREATE VIEW V AS SELECT E, count(*) AS C FROM Keys GROUP BY E;"
            "CREATE TRIGGER G AFTER INSERT ON Keys BEGIN DELETE FROM Keys; END");
        return folder.read(L"heel.db3");
    }

    /// Runs statements on a file; each must end by a status that there is, with columns that are
    /// equally long, and must leave the file as it is.
    void runOn(const std::string& bytes)
    {
        const std::wstring path = folder.write(L"kapot.db3", bytes);
        for (const wchar_t* sql :
             {L"SELECT * FROM Keys WHERE Key='deur'", L"SELECT rowid,* FROM Keys",
              L"SELECT * FROM V", L"SELECT * FROM sqlite_master"}) {
            select(path, sql);
            EXPECT_TRUE(status == RTNORM || (1 <= status && status <= 26)) << status;
            EXPECT_EQ(shown().empty(), status == RTNORM);
            for (int i = 0; i < result.length(); ++i) {
                EXPECT_EQ(result[i]->count, result[0]->count);
            }
            m_good += status == RTNORM ? 1 : 0;
            ++m_all;
        }
        xx_ado_close_all();
        EXPECT_TRUE(folder.read(L"kapot.db3") == bytes);
    }

    int m_good = 0; // statements that ran
    int m_all = 0;
};

TEST_F(HostileDatabase, IsReadWhenItIsWhole)
{
    runOn(valid());
    EXPECT_EQ(m_good, m_all);
    EXPECT_EQ(select(folder.path(L"kapot.db3"), L"SELECT E, N, R FROM Keys WHERE Key='één'"),
              "E text: één 😀\nN long: -3\nR real: 1e+300");
}

TEST_F(HostileDatabase, WithChangedBytesEndsInAStatus)
{
    constexpr int kVariants = 2000;
    const std::string whole = valid();
    std::mt19937 random(20'240'229); // NOLINT(cert-msc51-cpp): the same ones each time
    for (int i = 0; i < kVariants; ++i) {
        std::string bytes = whole;
        const unsigned changes = 1 + random() % 8;
        // Half of them hit the first page, which tells where all others are.
        const std::size_t span = random() % 2 == 0 ? 512 : bytes.size();
        for (unsigned j = 0; j < changes; ++j) {
            bytes[random() % span] = static_cast<char>(random());
        }
        runOn(bytes);
        ASSERT_FALSE(HasFailure()) << "variant " << i;
    }
    EXPECT_GT(m_good, 0);
    EXPECT_LT(m_good, m_all);
}

TEST_F(HostileDatabase, ThatIsCutEndsInAStatus)
{
    const std::string whole = valid();
    for (std::size_t size = 0; size < whole.size(); size += 61) {
        runOn(whole.substr(0, size));
        ASSERT_FALSE(HasFailure()) << "size " << size;
    }
    EXPECT_LT(m_good, m_all);
}

// --- views that reach out ------------------------------------------------------------------------

struct ViewRow
{
    const char* sentence;
    const char* view; // what is behind the name of the table
    int status;
};

class HostileView : public DataTest, public ::testing::WithParamInterface<ViewRow>
{
};

TEST_P(HostileView, HasNoEffect)
{
    folder.write(L"andere.db3", "");
    const auto path = database(L"a.db3", "CREATE TABLE T(A);");
    SqliteFile(path).run("CREATE VIEW Keys AS " + std::string(GetParam().view));
    const CurrentFolder here(folder.path());
    select(path, L"SELECT * FROM Keys");
    EXPECT_EQ(status, GetParam().status);
    EXPECT_NE(shown(), "");
    EXPECT_EQ(folder.names(), "a.db3 andere.db3");
}

// clang-format off
const ViewRow viewRows[] = {
    {"ThatLoadsALibrary", "SELECT load_extension('libc.so.6') AS E", 1},
    {"ThatIsTooLarge", "SELECT zeroblob(999999999) AS E", 18},
    {"OfItself", "SELECT * FROM Keys", 1},
    {"OfWhatIsNotThere", "SELECT * FROM U", 1},
    {"OfATableThatChangesThings", "SELECT * FROM pragma_journal_mode('wal')", 1},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(sqlite, HostileView, ::testing::ValuesIn(viewRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(DataTest, AViewWithoutAnEndIsEndedWhenItsTimeIsOver)
{
    const auto path = database(L"a.db3",
                               "CREATE VIEW Keys AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                               "SELECT i+1 FROM n) SELECT count(*) AS E FROM n");
    const corma::Query query {.sql = L"SELECT * FROM Keys",
                              .longest = std::chrono::milliseconds(1)};
    EXPECT_EQ(xx_sqlite_sql(path, L"P", query, result), 9);
    EXPECT_EQ(shown(),
              "Error in file xx__sqlite.cpp on line 256\n"
              "(S=~/a.db3 : finalize : Operation terminated by sqlite3_interrupt(), ec = 9)");
    EXPECT_EQ(result.length(), 0);
    EXPECT_EQ(select(path, L"SELECT 6 * 7 AS A"), "A text: 42");
}

} // namespace

} // namespace corma::testing
