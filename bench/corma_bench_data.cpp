// Times of database access: statements of many rows and of one, and the translation of a word,
// beside the same through the bare interface of SQLite.

#include "bench_table.h"
#include "benchmark_run.h"
#include "platform/platform.h"
#include "sample_files.h"
#include <corma/host.h>
#include <corma/translation.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace corma::bench {

namespace {

constexpr std::array<std::size_t, 3> kSizes = {1'000, 10'000, 100'000};

// A column holds fewer values than the largest table has rows, so that it is read in parts.
constexpr std::size_t kMostAtOnce = 25'000;

constexpr std::size_t kWordCount = 1'000;

constexpr const char* kSelect = "select of mixed rows";
constexpr const char* kBareSelect = "floor: the same, bare SQLite";
constexpr const char* kOpening = "one row, opened anew";
constexpr const char* kHit = "one row, connection open";
constexpr const char* kBareHit = "floor: one row, bare SQLite";
constexpr const char* kBareOpening = "floor: open, one row, close";
constexpr const char* kTranslate = "translateKey";
constexpr const char* kForm = "db3";

// The aims, in times of the floor.
constexpr double kMostOfFloor = 2;

constexpr double kMicrosecond = 1000; // ns

struct CloseDatabase
{
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};

using Database = std::unique_ptr<sqlite3, CloseDatabase>;

Database open(const std::string& path, int flags)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    Database database(opened);
    require(code == SQLITE_OK, "the database opens");
    return database;
}

void make(const std::string& path, const std::string& sql)
{
    const Database database = open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    require(sqlite3_exec(database.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK,
            "the database is made");
}

// Numbers of all kinds, texts short and long, some without a value.
std::string rowsOf(std::size_t count)
{
    return "CREATE TABLE Parts(Id INTEGER PRIMARY KEY, Number INT, Length REAL, Name VARCHAR, "
           "Note TEXT, Size integer);"
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<"
        + std::to_string(count)
        + ") INSERT INTO Parts SELECT i, i*7%1000, i*0.25, 'Kozijn '||i, CASE WHEN i%5=0 THEN NULL "
          "ELSE 'Hout, gelakt in kleur '||(i%40)||', geplaatst' END, i%90 FROM n;";
}

std::string keysOf(std::size_t count)
{
    return "CREATE TABLE Keys(Key TEXT PRIMARY KEY, E TEXT, N TEXT);"
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<"
        + std::to_string(count)
        + ") INSERT INTO Keys SELECT 'WORD'||i, 'word '||i, 'woord '||i FROM n;";
}

std::string partOf(std::size_t begin)
{
    return "SELECT * FROM Parts WHERE Id BETWEEN " + std::to_string(begin + 1) + " AND "
        + std::to_string(begin + kMostAtOnce);
}

std::wstring wide(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

// What a program without any library of ours would do at least: it looks at each value.
std::size_t readBare(sqlite3* database, const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK,
            "the statement is prepared");
    std::size_t rows = 0;
    const int columns = sqlite3_column_count(statement);
    for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
        for (int i = 0; i < columns; ++i) {
            switch (sqlite3_column_type(statement, i)) {
            case SQLITE_INTEGER:
                benchmark::DoNotOptimize(sqlite3_column_int(statement, i));
                break;
            case SQLITE_FLOAT:
                benchmark::DoNotOptimize(sqlite3_column_double(statement, i));
                break;
            default:
                benchmark::DoNotOptimize(sqlite3_column_text16(statement, i));
            }
        }
    }
    sqlite3_finalize(statement);
    return rows;
}

int rowsIn(const xx_VarArray& columns)
{
    return columns.length() == 0 ? 0 : columns[0]->count;
}

void select(benchmark::State& state, const std::string& path, std::size_t entries)
{
    const std::wstring name = wide(path);
    for ([[maybe_unused]] const auto& once : state) {
        int rows = 0;
        for (std::size_t begin = 0; begin < entries; begin += kMostAtOnce) {
            xx_VarArray result;
            xx_ado_select(name.c_str(), wide(partOf(begin)).c_str(), &result);
            rows += rowsIn(result);
        }
        require(static_cast<std::size_t>(rows) == entries, "all rows come");
    }
    xx_ado_close_all();
}

void bareSelect(benchmark::State& state, const std::string& path, std::size_t entries)
{
    const Database database = open(path, SQLITE_OPEN_READONLY);
    for ([[maybe_unused]] const auto& once : state) {
        std::size_t rows = 0;
        for (std::size_t begin = 0; begin < entries; begin += kMostAtOnce) {
            rows += readBare(database.get(), partOf(begin));
        }
        require(rows == entries, "all rows come");
    }
}

constexpr const char* kOneWord = "SELECT * FROM Keys WHERE Key='WORD500'";

void oneRow(benchmark::State& state, const std::string& path, bool isAnew)
{
    const std::wstring name = wide(path);
    const std::wstring sql = wide(kOneWord);
    for ([[maybe_unused]] const auto& once : state) {
        xx_VarArray result;
        xx_ado_select(name.c_str(), sql.c_str(), &result);
        require(rowsIn(result) == 1, "the row comes");
        if (isAnew) {
            xx_ado_close_all();
        }
    }
    xx_ado_close_all();
}

void bareRow(benchmark::State& state, const std::string& path, bool isAnew)
{
    Database database = open(path, SQLITE_OPEN_READONLY);
    for ([[maybe_unused]] const auto& once : state) {
        if (isAnew) {
            database.reset();
            database = open(path, SQLITE_OPEN_READONLY);
        }
        require(readBare(database.get(), kOneWord) == 1, "the row comes");
    }
}

void translate(benchmark::State& state, const std::string& configuration)
{
    const std::wstring file = wide(configuration);
    for ([[maybe_unused]] const auto& once : state) {
        require(translateKey(file.c_str(), L"WORD500", 19) == L"woord 500", "the word is found");
    }
}

void addRow(std::vector<Row>& rows, const Medians& medians, const char* what, const char* floorOf,
            std::size_t entries)
{
    const auto measured = medians.of(what, kForm, entries);
    const auto floor = medians.of(floorOf, kForm, entries);
    if (measured && floor) {
        Row row {what, kForm, entries, *measured / kMicrosecond, *floor / kMicrosecond, {}};
        if (what == kSelect) {
            row.aim = kMostOfFloor * *floor / kMicrosecond;
        }
        rows.push_back(row);
    }
}

template<class Measure, class... Arguments>
void add(const char* what, std::size_t entries, Measure measure, Arguments... arguments)
{
    benchmark::RegisterBenchmark(nameOf(what, kForm, entries).c_str(), measure, arguments...);
}

int run(int argc, char** argv)
{
    if (!initialize(argc, argv)) {
        return EXIT_FAILURE;
    }
    const SampleFolder folder;
    const std::string place = folder.newFolder() + "/";
    for (const std::size_t entries : kSizes) {
        const std::string path = place + "parts" + std::to_string(entries) + ".db3";
        make(path, rowsOf(entries));
        add(kSelect, entries, select, path, entries);
        add(kBareSelect, entries, bareSelect, path, entries);
    }
    const std::string words = place + "words.db3";
    make(words, keysOf(kWordCount));
    const std::string configuration = place + "tool.ini";
    std::ofstream(configuration) << "TranslateDB=" << words << "\n";
    add(kOpening, kWordCount, oneRow, words, true);
    add(kBareOpening, kWordCount, bareRow, words, true);
    add(kHit, kWordCount, oneRow, words, false);
    add(kBareHit, kWordCount, bareRow, words, false);
    add(kTranslate, kWordCount, translate, configuration);

    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::vector<Row> rows;
    for (const std::size_t entries : kSizes) {
        addRow(rows, medians, kSelect, kBareSelect, entries);
    }
    addRow(rows, medians, kHit, kBareHit, kWordCount);
    addRow(rows, medians, kOpening, kBareOpening, kWordCount);
    addRow(rows, medians, kTranslate, kBareOpening, kWordCount);
    printTable(rows, "us");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    return corma::bench::runProgram("corma_bench_data", corma::bench::run, argc, argv);
}
