#include "data/sqlite_reader.h"

#include "data/connections.h"
#include "data/declared_types.h"
#include "foundation/messages.h"
#include "platform/text.h"
#include <corma/xx_Var.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <sqlite3.h>
#include <vector>

namespace {

constexpr const wchar_t* kSqliteSource = L"xx__sqlite.cpp";

// Lines that reports show; support staff look them up, so they stay when the code moves.
constexpr int kPrepareLine = 137;
constexpr int kFinalizeLine = 256;

constexpr std::size_t kLongestColumnName = 256; // characters

constexpr const wchar_t* kCodeTexts[] = {
    L"Successful result",
    L"SQL error or missing database",
    L"Internal logic error in SQLite",
    L"Access permission denied",
    L"Callback routine requested an abort",
    L"The database file is locked",
    L"A table in the database is locked",
    L"A malloc() failed",
    L"Attempt to write a readonly database",
    L"Operation terminated by sqlite3_interrupt()",
    L"Some kind of disk I/O error occurred",
    L"The database disk image is malformed",
    L"NOT USED. Table or record not found",
    L"Insertion failed because database is full",
    L"Unable to open the database file",
    L"NOT USED. Database lock protocol error",
    L"Database is empty",
    L"The database schema changed",
    L"String or BLOB exceeds size limit",
    L"Abort due to constraint violation",
    L"Data type mismatch",
    L"Library used incorrectly",
    L"Uses OS features not supported on host",
    L"Authorization denied",
    L"Auxiliary database format error",
    L"2nd parameter to sqlite3_bind out of range",
    L"File opened that is not a database file",
};

const wchar_t* textOfCode(int code)
{
    if (code >= 0 && code < static_cast<int>(std::size(kCodeTexts))) {
        return kCodeTexts[code];
    }
    switch (code) {
    case SQLITE_ROW:
        return L"sqlite3_step() has another row ready";
    case SQLITE_DONE:
        return L"sqlite3_step() has finished executing";
    default:
        return L"XX SQLite unknown errorcode";
    }
}

struct Finalize
{
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

std::string_view view(const char* text)
{
    return text == nullptr ? std::string_view() : std::string_view(text);
}

std::string_view textOf(sqlite3_stmt* statement, int column)
{
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

Statement prepare(sqlite3* database, const std::string& sql, int& code)
{
    sqlite3_stmt* statement = nullptr;
    code = database == nullptr ? SQLITE_MISUSE
                               : sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    return Statement(statement);
}

// --- types of columns ----------------------------------------------------------------------------

// The types of the columns of a database as its tables were declared. SQLite gives the standard
// ones in capitals, and only what is written so counts as a number.
class Declarations
{
public:
    explicit Declarations(sqlite3* database)
        : m_database(database)
    {
    }

    std::string typeOf(sqlite3_stmt* statement, int column)
    {
        std::string known(view(sqlite3_column_decltype(statement, column)));
        if (known != "INTEGER" && known != "INT" && known != "REAL") {
            return known;
        }
        const auto schema = view(sqlite3_column_database_name(statement, column));
        const auto table = view(sqlite3_column_table_name(statement, column));
        const auto name = view(sqlite3_column_origin_name(statement, column));
        for (const corma::DeclaredColumn& declared : columnsOf(schema, table)) {
            if (sqlite3_stricmp(declared.name.c_str(), std::string(name).c_str()) == 0) {
                return isSpelling(declared.type, known) ? declared.type : known;
            }
        }
        return known;
    }

private:
    using Columns = std::vector<corma::DeclaredColumn>;

    static bool isSpelling(const std::string& declared, const std::string& known)
    {
        return sqlite3_stricmp(declared.c_str(), known.c_str()) == 0;
    }

    const Columns& columnsOf(std::string_view schema, std::string_view table)
    {
        const auto [found, isNew]
            = m_tables.try_emplace(std::string(schema) + '.' + std::string(table));
        if (isNew) {
            found->second = corma::declaredColumns(statementOf(schema, table));
        }
        return found->second;
    }

    [[nodiscard]] std::string statementOf(std::string_view schema, std::string_view table) const
    {
        // The table of tables is in none.
        if (table == "sqlite_master" || table == "sqlite_temp_master") {
            return "CREATE TABLE x(type text,name text,tbl_name text,rootpage int,sql text)";
        }
        const std::unique_ptr<char, void (*)(void*)> sql(
            sqlite3_mprintf("SELECT sql FROM \"%w\".sqlite_master WHERE type='table' AND "
                            "name='%q' COLLATE NOCASE",
                            std::string(schema).c_str(), std::string(table).c_str()),
            sqlite3_free);
        int code = 0;
        const Statement statement = prepare(m_database, sql ? sql.get() : "", code);
        if (!statement || sqlite3_step(statement.get()) != SQLITE_ROW) {
            return {};
        }
        return std::string(textOf(statement.get(), 0));
    }

    sqlite3* m_database;
    std::map<std::string, Columns> m_tables;
};

// --- columns -------------------------------------------------------------------------------------

enum class Kind
{
    integer = 1,
    real = 2,
    text = 3
};

struct SqliteColumn
{
    std::wstring name;
    Kind kind;
    std::unique_ptr<xx_Var> values;
};

Kind kindOf(const std::string& declaredType)
{
    if (declaredType == "INTEGER" || declaredType == "INT") {
        return Kind::integer;
    }
    return declaredType == "REAL" ? Kind::real : Kind::text;
}

std::vector<SqliteColumn> columnsOf(sqlite3* database, sqlite3_stmt* statement)
{
    Declarations declarations(database);
    std::vector<SqliteColumn> columns;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
        std::wstring name = corma::fromUtf8(view(sqlite3_column_name(statement, i)));
        name.resize(std::min(name.size(), kLongestColumnName));
        columns.push_back({std::move(name), kindOf(declarations.typeOf(statement, i)),
                           std::make_unique<xx_Var>()});
    }
    return columns;
}

constexpr bool isHalfOfPair(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

// The character at `at`, which moves behind it; of half a pair U+FFFD.
char32_t nextOf(std::u16string_view units, std::size_t& at)
{
    const char16_t first = units[at++];
    if (!isHalfOfPair(first)) {
        return first;
    }
    const bool isPair
        = first < 0xDC00 && at < units.size() && isHalfOfPair(units[at]) && units[at] >= 0xDC00;
    return isPair ? 0x10000 + ((first - 0xD800U) << 10U) + (units[at++] - 0xDC00U) : 0xFFFD;
}

// Reads texts, into a buffer that it keeps: what SQLite has for them in UTF-16, where it puts
// others in the place of bytes that are no characters. ASCII, as most texts are, is the same in
// UTF-8, which is quicker to get; but UTF-16 must not be turned into that and back.
class TextReader
{
public:
    TextReader(sqlite3* database, sqlite3_stmt* statement)
        : m_database(database)
        , m_statement(statement)
    {
    }

    const wchar_t* read(int column)
    {
        switch (sqlite3_column_type(m_statement, column)) {
        case SQLITE_NULL:
            return L"NULL";
        case SQLITE_TEXT:
        case SQLITE_BLOB:
            return (isUtf8() && readAscii(column)) || readUtf16(column) ? m_text.c_str() : L"NULL";
        default: // a number
            readAscii(column);
            return m_text.c_str();
        }
    }

private:
    bool isUtf8()
    {
        if (!m_isUtf8) {
            int code = 0;
            const Statement encoding = prepare(m_database, "PRAGMA encoding", code);
            m_isUtf8 = encoding && sqlite3_step(encoding.get()) == SQLITE_ROW
                && textOf(encoding.get(), 0) == "UTF-8";
        }
        return *m_isUtf8;
    }

    // False for a text with other characters.
    bool readAscii(int column)
    {
        const std::string_view bytes = textOf(m_statement, column);
        wchar_t* out = roomFor(bytes.size());
        for (const char byte : bytes) {
            *out++ = static_cast<wchar_t>(byte);
        }
        *out = 0;
        return corma::isAllAscii(bytes);
    }

    // False for want of memory.
    bool readUtf16(int column)
    {
        const auto* const text
            = static_cast<const char16_t*>(sqlite3_column_text16(m_statement, column));
        const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes16(m_statement, column));
        const std::u16string_view units(text, text == nullptr ? 0 : bytes / sizeof(char16_t));
        wchar_t* out = roomFor(units.size());
        for (std::size_t at = 0; at < units.size();) {
            *out++ = static_cast<wchar_t>(nextOf(units, at));
        }
        *out = 0;
        return text != nullptr;
    }

    wchar_t* roomFor(std::size_t characters)
    {
        m_text.resize(std::max(m_text.size(), characters + 1));
        return m_text.data();
    }

    sqlite3* m_database;
    sqlite3_stmt* m_statement;
    std::optional<bool> m_isUtf8; // not asked for yet
    std::wstring m_text;
};

void readRow(sqlite3_stmt* statement, std::vector<SqliteColumn>& columns, TextReader& texts)
{
    int index = 0;
    for (SqliteColumn& column : columns) {
        switch (column.kind) {
        case Kind::integer:
            column.values->addLong(column.name.c_str(), sqlite3_column_int(statement, index));
            break;
        case Kind::real:
            column.values->add(column.name.c_str(), sqlite3_column_double(statement, index));
            break;
        case Kind::text:
            column.values->addText(column.name.c_str(), texts.read(index));
            break;
        }
        ++index;
    }
}

void readRows(sqlite3* database, sqlite3_stmt* statement, const corma::Query& query,
              xx_VarArray& result)
{
    std::vector<SqliteColumn> columns;
    TextReader texts(database, statement);
    int rows = 0;
    while (query.wantsMoreThan(rows) && sqlite3_step(statement) == SQLITE_ROW
           && !corma::isFull(rows)) {
        if (rows == 0) {
            // Not sooner: when the tables have changed, the first step prepares the statement anew.
            columns = columnsOf(database, statement);
        }
        readRow(statement, columns, texts);
        ++rows;
    }
    for (SqliteColumn& column : columns) {
        if (rows > 0) {
            result.setOwned(column.values.release());
        }
    }
}

// While it lives, statements on a database end with the code of an interruption when their time is
// over: a view of a database from elsewhere may go on for ever.
class TimeLimit
{
public:
    TimeLimit(sqlite3* database, std::chrono::milliseconds longest)
        : m_database(database)
        , m_end(Clock::now() + longest)
    {
        constexpr int kSteps = 100'000; // of its machine, between two looks at the clock
        sqlite3_progress_handler(m_database, kSteps, isOver, this);
    }

    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

    ~TimeLimit() { sqlite3_progress_handler(m_database, 0, nullptr, nullptr); }

private:
    using Clock = std::chrono::steady_clock;

    static int isOver(void* limit)
    {
        return Clock::now() >= static_cast<const TimeLimit*>(limit)->m_end ? 1 : 0;
    }

    sqlite3* m_database;
    Clock::time_point m_end;
};

} // namespace

int xx_sqlite_sql(const std::wstring& path, const std::wstring& provider, const corma::Query& query,
                  xx_VarArray& result)
{
    if (query.debug) {
        corma::showLongText(L"xx_sqlite_sql", query.sql);
    }
    // A database that does not open is told there, and here by the statement that has none.
    int status = 0;
    const int slot = xx_ado_connection(path, provider, &status, {});
    sqlite3* const database = corma::connectionSlot(slot).sqliteDb.get();
    int code = 0;
    Statement statement = prepare(database, corma::toUtf8(query.sql), code);
    const auto check = [&](int line, const wchar_t* operation) {
        return xx_sqlite_check(kSqliteSource, line, path, operation, code, query.debug);
    };
    if (check(kPrepareLine, L"prepare") != SQLITE_OK) {
        return code;
    }
    result = xx_VarArray();
    if (statement) {
        const TimeLimit limit(database, query.longest);
        readRows(database, statement.get(), query, result);
    }
    // It gives the code of what failed while rows were read.
    code = sqlite3_finalize(statement.release());
    check(kFinalizeLine, L"finalize");
    return code != SQLITE_OK ? code : RTNORM;
}

int xx_sqlite_check(const wchar_t* sourceName, int line, const std::wstring& database,
                    const wchar_t* operation, int code, bool always)
{
    if (code != SQLITE_OK || always) {
        const std::wstring text
            = corma::formatted(L"S=%s : %s : %s", database.c_str(), operation, textOfCode(code));
        xx_reportError(sourceName, line, text.c_str(), code);
    }
    return code;
}
