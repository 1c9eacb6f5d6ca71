#include "data/declared_types.h"
#include "support/row_names.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <random>
#include <sqlite3.h>

namespace corma {

namespace {

using corma::testing::nameOfRow;

// One line for each column: name, "|" and type.
std::string columnText(std::string_view createStatement)
{
    std::string text;
    for (const DeclaredColumn& column : declaredColumns(createStatement)) {
        text += column.name + "|" + column.type + "\n";
    }
    return text;
}

struct Case
{
    const char* name;
    std::string statement;
    std::string columns;
};

class DeclaredColumns : public ::testing::TestWithParam<Case>
{
};

TEST_P(DeclaredColumns, AreAsTheStatementSpellsThem)
{
    EXPECT_EQ(columnText(GetParam().statement), GetParam().columns);
}

// clang-format off
const Case kStatements[] = {
    {"ATypeKeepsItsCase", "CREATE TABLE t(a Integer, b INT, c int)", "a|Integer\nb|INT\nc|int\n"},
    {"AColumnNeedsNoType", "CREATE TABLE t(a, b INT, c)", "a|\nb|INT\nc|\n"},
    {"KeywordsGoInAnyCase", "create Table t(a INT Primary key, b Not Null)", "a|INT\nb|\n"},
    {"ATemporaryTable", "CREATE TEMP TABLE t(a INT)", "a|INT\n"},
    {"ATemporaryTableInFull", "CREATE TEMPORARY TABLE t(a INT)", "a|INT\n"},
    {"ATableThatMayBeThere", "CREATE TABLE IF NOT EXISTS t(a INT)", "a|INT\n"},
    {"ATableOfASchema", "CREATE TABLE main . \"t\"(a INT)", "a|INT\n"},
    {"AVirtualTableHasNone", "CREATE VIRTUAL TABLE t USING fts5(a, b)", ""},
    {"ATableAsAQueryHasNone", "CREATE TABLE t AS SELECT 1 AS a, (2) AS b", ""},
    {"AViewHasNone", "CREATE VIEW t(a, b) AS SELECT 1, 2", ""},
    {"SemicolonAndOptionsStandBehind", "CREATE TABLE t(a INT PRIMARY KEY) WITHOUT ROWID, STRICT;", "a|INT\n"},
    {"SeveralWords", "CREATE TABLE t(a UNSIGNED BIG INT, b double precision)", "a|UNSIGNED BIG INT\nb|double precision\n"},
    {"ASize", "CREATE TABLE t(a VARCHAR(40), b INT)", "a|VARCHAR(40)\nb|INT\n"},
    {"TwoSizes", "CREATE TABLE t(a DECIMAL ( 10 , -2 ), b INT)", "a|DECIMAL ( 10 , -2 )\nb|INT\n"},
    {"WhiteSpaceWithinATypeStays", "CREATE TABLE t(a BIG \n\tINT , b INT\n)", "a|BIG \n\tINT\nb|INT\n"},
    {"CommentsWithinATypeStay", "CREATE TABLE t(a BIG/*,*/INT--)\n INT, b)", "a|BIG/*,*/INT--)\n INT\nb|\n"},
    {"CommentsAroundATypeGo", "CREATE/**/TABLE t(/*x*/a--y\nINT/*, z*/,b INT--)\n)", "a|INT\nb|INT\n"},
    {"AnOpenCommentIsOneToTheEnd", "CREATE TABLE t(a INT /* b INT)", "a|INT\n"},
    {"ASlashIsNoComment", "CREATE TABLE t(a DEFAULT (4/2), b INT)", "a|\nb|INT\n"},
    {"NamesInAnyQuotes", "CREATE TABLE t(\"a b\" INT, 'c,d' INT, `e)` INT, [f\"g] INT)", "a b|INT\nc,d|INT\ne)|INT\nf\"g|INT\n"},
    {"ADoubledQuoteIsOne", "CREATE TABLE t(\"a\"\"b\" INT, 'c''' INT, ```d` INT)", "a\"b|INT\nc'|INT\n`d|INT\n"},
    {"AnEmptyName", "CREATE TABLE t(\"\" INT, b)", "|INT\nb|\n"},
    {"AQuotedTableName", "CREATE TABLE \"t(a INT)\"(b INT)", "b|INT\n"},
    {"AQuotedTypeHasNoQuotes", "CREATE TABLE t(a \"INTEGER\", b 'my type', c [REAL])", "a|INTEGER\nb|my type\nc|REAL\n"},
    {"ATypeBeginsWithAQuotedWord", "CREATE TABLE t(a \"BIG\" INT(3), b [x] y)", "a|BIG\nb|x\n"},
    {"ATypeGoesOnWithAQuotedWord", "CREATE TABLE t(a BIG \"INT\", b)", "a|BIG \"INT\"\nb|\n"},
    {"AQuotedKeywordIsAName", "CREATE TABLE t(\"PRIMARY\" INT, [check] INT, a \"NOT\" NULL)", "PRIMARY|INT\ncheck|INT\na|NOT\n"},
    {"LettersBeyondAscii", "CREATE TABLE t(h\xC3\xB6he ma\xC3\x9F, b INT)", "h\xC3\xB6he|ma\xC3\x9F\nb|INT\n"},
    {"AByteOrderMarkIsSpace", "\xEF\xBB\xBF" "CREATE TABLE t(a \xEF\xBB\xBF INT)", "a|INT\n"},
    {"ADollarWithinAName", "CREATE TABLE t(a$1 INT)", "a$1|INT\n"},
    {"NamesThatAreNoKeywordsHere", "CREATE TABLE t(key INT, generated, always INT, if INT)", "key|INT\ngenerated|\nalways|INT\nif|INT\n"},
    {"ADefaultInParentheses", "CREATE TABLE t(a INT DEFAULT (max(1, 2) + ')'), b INT)", "a|INT\nb|INT\n"},
    {"ADefaultText", "CREATE TABLE t(a DEFAULT 'x, y) INT', b INT)", "a|\nb|INT\n"},
    {"ADefaultNumber", "CREATE TABLE t(a DEFAULT - 1.5e3, b DEFAULT +2, c INT)", "a|\nb|\nc|INT\n"},
    {"ANamedConstraint", "CREATE TABLE t(a INT CONSTRAINT n UNIQUE, b INT)", "a|INT\nb|INT\n"},
    {"ACollation", "CREATE TABLE t(a TEXT COLLATE NOCASE, b COLLATE \"RTRIM\")", "a|TEXT\nb|\n"},
    {"ACheck", "CREATE TABLE t(a INT CHECK (a IN (1, 2)), b INT)", "a|INT\nb|INT\n"},
    {"AReference", "CREATE TABLE t(a INT REFERENCES o(x, y) ON DELETE SET NULL DEFERRABLE INITIALLY DEFERRED, b INT)", "a|INT\nb|INT\n"},
    {"AGeneratedColumn", "CREATE TABLE t(a INT, b REAL GENERATED ALWAYS AS (a * 2) STORED, c INT AS (a, b))", "a|INT\nb|REAL\nc|INT\n"},
    {"AGeneratedColumnWithoutType", "CREATE TABLE t(a INT, b Generated\nAlways AS (1), c)", "a|INT\nb|\nc|\n"},
    {"TheWordAlwaysAloneIsAType", "CREATE TABLE t(a ALWAYS, b IS ALWAYS)", "a|ALWAYS\nb|IS ALWAYS\n"},
    {"ATableConstraintIsNoColumn", "CREATE TABLE t(a INT, PRIMARY KEY (a))", "a|INT\n"},
    {"ANamedTableConstraintIsNoColumn", "CREATE TABLE t(a INT, CONSTRAINT n UNIQUE (a) CHECK (a > 1))", "a|INT\n"},
    {"AForeignKeyIsNoColumn", "CREATE TABLE t(a INT, FOREIGN KEY (a) REFERENCES o(b), CHECK (a))", "a|INT\n"},
    {"NothingIsNoStatement", "", ""},
    {"ATextIsNoStatement", "SELECT * FROM t", ""},
    {"WithoutAList", "CREATE TABLE t", ""},
    {"WithoutATable", "CREATE TABLE (a INT)", ""},
    {"WithHalfAName", "CREATE TABLE main.(a INT)", ""},
    {"WithHalfACondition", "CREATE TABLE IF EXISTS t(a INT)", ""},
    {"AnEmptyList", "CREATE TABLE t()", ""},
    {"AnOpenList", "CREATE TABLE t(a INT, b REAL", "a|INT\nb|REAL\n"},
    {"AnOpenListAfterAComma", "CREATE TABLE t(a INT,", "a|INT\n"},
    {"AnOpenSize", "CREATE TABLE t(a VARCHAR(4, b INT", "a|VARCHAR(4, b INT\n"},
    {"AnOpenQuote", "CREATE TABLE t(a INT, b \"INT)", "a|INT\nb|\n"},
    {"AnOpenQuoteInAConstraint", "CREATE TABLE t(a INT DEFAULT 'x, b INT)", "a|INT\n"},
    {"NoNameBehindAComma", "CREATE TABLE t(a INT, 5, b INT)", "a|INT\n"},
    {"WhatIsNoConstraintIsPassedOver", "CREATE TABLE t(a INT 5 ? x, b INT)", "a|INT\nb|INT\n"},
    {"ANullByteIsNoName", std::string("CREATE TABLE t(a INT, \0b INT)", 29), "a|INT\n"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Statements, DeclaredColumns, ::testing::ValuesIn(kStatements), nameOfRow);

// --- beside SQLite -------------------------------------------------------------------------------

struct CloseDatabase
{
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};

using Database = std::unique_ptr<sqlite3, CloseDatabase>;

Database openInMemory()
{
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(":memory:", &database), SQLITE_OK);
    return Database(database);
}

bool run(const Database& database, const std::string& sql)
{
    return sqlite3_exec(database.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::vector<std::vector<std::string>> rows(const Database& database, const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database.get(), sql, -1, &statement, nullptr), SQLITE_OK);
    std::vector<std::vector<std::string>> result;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        result.emplace_back();
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
            result.back().emplace_back(text == nullptr ? "" : text);
        }
    }
    sqlite3_finalize(statement);
    return result;
}

std::string lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return text;
}

// The columns that SQLite sees and those that the text of its schema declares, types in lower case.
// Nothing when SQLite refuses the statements.
struct BothColumns
{
    std::string statement; // as the schema has it
    std::string seen;
    std::string declared;
};

std::optional<BothColumns> columnsOf(const std::string& statements)
{
    const Database database = openInMemory();
    if (!run(database, "CREATE TABLE o(x UNIQUE, y UNIQUE);" + statements)) {
        return std::nullopt;
    }
    const auto schema
        = rows(database, "SELECT sql FROM sqlite_master WHERE name = 't' AND type = 'table'");
    if (schema.size() != 1) {
        return std::nullopt;
    }
    BothColumns both {.statement = schema[0][0], .seen = {}, .declared = {}};
    for (const auto& row : rows(database, "SELECT name, type FROM pragma_table_xinfo('t')")) {
        both.seen += row[0] + "|" + lower(row[1]) + "\n";
    }
    for (const DeclaredColumn& column : declaredColumns(both.statement)) {
        both.declared += column.name + "|" + lower(column.type) + "\n";
    }
    return both;
}

TEST(DeclaredColumnsBesideSqlite, AreTheSameForEachStatementThatItTakes)
{
    int taken = 0;
    for (const Case& row : kStatements) {
        // SQLite 3.40 cuts a type that goes on behind a word in brackets at both ends instead.
        if (row.statement.find("[x] y") != std::string::npos) {
            continue;
        }
        const auto both = columnsOf(row.statement);
        if (!both || row.statement.find("VIRTUAL") != std::string::npos) {
            continue;
        }
        ++taken;
        EXPECT_EQ(both->declared, both->seen) << row.name << "\n" << both->statement;
    }
    EXPECT_GT(taken, 30);
}

TEST(DeclaredColumnsBesideSqlite, AreTheSameForATableThatWasAltered)
{
    const char* const alterations[] = {
        "CREATE TABLE t AS SELECT x AS 'a b', y FROM o",
        "CREATE TABLE u(a INT, b Real); ALTER TABLE u RENAME TO t",
        "CREATE TABLE t(a INT, b Real); ALTER TABLE t ADD COLUMN c Varchar(3) DEFAULT 'x,y'",
        "CREATE TABLE t(a INT, b Real); ALTER TABLE t RENAME COLUMN a TO 'a,\"b'",
        "CREATE TABLE t(a INT, b Real, PRIMARY KEY(a)); ALTER TABLE t DROP COLUMN b",
        "CREATE TABLE t(a INT, PRIMARY KEY(a)); ALTER TABLE t ADD COLUMN c Varchar(3)",
    };
    for (const char* const statements : alterations) {
        const auto both = columnsOf(statements);
        ASSERT_TRUE(both) << statements;
        EXPECT_EQ(both->declared, both->seen) << both->statement;
    }
}

/// Makes up declarations, of which SQLite takes a part.
class Declarations
{
public:
    explicit Declarations(unsigned seed)
        : m_random(seed)
    {
    }

    std::string statement()
    {
        std::string text = "CREATE" + space() + "TABLE" + space();
        text += oneOf(std::array {"", "", "IF NOT EXISTS ", "main.", "\"main\" . "});
        text += oneOf(std::array {"t", "\"t\"", "[t]", "`t`", "'t'"}) + gap() + "(";
        const int columns = 1 + below(5);
        for (int i = 0; i < columns; ++i) {
            text += (i == 0 ? "" : ",") + gap() + column() + gap();
        }
        text += oneOf(std::array {"", "", "", ", UNIQUE (rowid)", ", CHECK (1 IN (1, 2))",
                                  ",CONSTRAINT \"n\" CHECK (')' <> ',')",
                                  ", CHECK (1) CHECK (2), CHECK (3)"});
        return text + gap() + ")"
            + oneOf(std::array {"", "", ";", " -- end", "/*, z INT)*/", " WITHOUT ROWID"});
    }

private:
    int below(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    template<std::size_t count> std::string oneOf(const std::array<const char*, count>& texts)
    {
        return texts.at(m_random() % count);
    }

    std::string space()
    {
        return oneOf(std::array {" ", " ", " ", "\n", "\t ", " /**/ ", "/* a, (b */", " --x)\n",
                                 "\r\n", " \f", "\n\xEF\xBB\xBF "});
    }

    std::string gap() { return below(3) == 0 ? space() : ""; }

    std::string identifier()
    {
        const std::string letter(1, static_cast<char>('a' + below(26)));
        return letter
            + oneOf(std::array {"", "1", "$", "_x", "\xC3\xB6", "\xE2\x82\xAC", "23", "Abc"});
    }

    std::string quoted(char opening, const char* closing)
    {
        std::string text(1, opening);
        for (int i = below(5); i > 0; --i) {
            text += oneOf(std::array {"a", "B", " ", ",", "(", ")", "[", "--", "/*", "\n", "int"});
            if (below(5) == 0 && opening != '[') {
                text += std::string(closing) + closing;
            }
        }
        return text + closing;
    }

    std::string name()
    {
        switch (below(9)) {
        case 0:
            return quoted('"', "\"");
        case 1:
            return quoted('\'', "'");
        case 2:
            return quoted('`', "`");
        case 3:
            return quoted('[', "]");
        case 4:
            return oneOf(std::array {"key", "Always", "generated", "if", "temp", "view", "inner",
                                     "asc", "no", "action", "SELECT", "primary", "check"});
        default:
            return identifier();
        }
    }

    std::string typeWord()
    {
        return oneOf(std::array {"INT", "Integer", "real", "TEXT", "varchar", "BIG", "unsigned",
                                 "double", "precision", "Any", "blob", "always", "GENERATED", "key",
                                 "\xC3\xA9", "\"q r\"", "'s'", "`u``v`", "[w x]"});
    }

    std::string type()
    {
        std::string text;
        for (int i = below(4); i > 0; --i) {
            text += typeWord() + space();
        }
        return text.empty() ? text
                            : text
                + oneOf(std::array {"", "", "", "(10)", "(10, 2)", "( +1 , -2.5 )", "/**/(0x1)"});
    }

    std::string constraint()
    {
        return oneOf(std::array {"NOT NULL",
                                 "NULL",
                                 "UNIQUE",
                                 "PRIMARY KEY",
                                 "primary key desc",
                                 "DEFAULT 5",
                                 "DEFAULT -5",
                                 "DEFAULT + 1.5e-3",
                                 "DEFAULT 'a,b)'",
                                 "DEFAULT (max(1, (2)))",
                                 "DEFAULT x'00ff'",
                                 "DEFAULT current_time",
                                 "DEFAULT \"a)\"",
                                 "COLLATE nocase",
                                 "CHECK (1 IN (1, 2))",
                                 "REFERENCES o(x)",
                                 "REFERENCES o ON DELETE SET NULL ON UPDATE CASCADE",
                                 "GENERATED ALWAYS AS (1 + 2)",
                                 "generated always as ('a,b') stored",
                                 "AS (1)",
                                 "as (2) virtual",
                                 "CONSTRAINT \"a,\"",
                                 "CONSTRAINT n NOT NULL ON CONFLICT IGNORE",
                                 "NOT DEFERRABLE INITIALLY DEFERRED"});
    }

    std::string column()
    {
        std::string text = name() + space() + type();
        for (int i = below(3); i > 0; --i) {
            text += space() + constraint();
        }
        return text;
    }

    std::mt19937 m_random;
};

// True when a type goes on behind a word in brackets, which SQLite 3.40 cuts at both ends instead.
bool hasTypeBehindBrackets(const std::string& seen)
{
    return seen.find("|w x]") != std::string::npos;
}

TEST(DeclaredColumnsBesideSqlite, AreTheSameForAnyDeclaration)
{
    constexpr int statements = 6'000;
    int taken = 0;
    Declarations declarations(1);
    for (int i = 0; i < statements; ++i) {
        const auto both = columnsOf(declarations.statement());
        if (!both || hasTypeBehindBrackets(both->seen)) {
            continue;
        }
        ++taken;
        ASSERT_EQ(both->declared, both->seen) << both->statement;
    }
    EXPECT_GT(taken, statements / 10);
}

double secondsFor(const std::string& piece, std::size_t size)
{
    std::string text = "CREATE TABLE t(a INT,";
    while (text.size() < size) {
        text += piece;
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_GE(declaredColumns(text).size(), 1U);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

TEST(DeclaredColumnsCost, GrowsAsTheLengthDoes)
{
    constexpr std::size_t size = 60'000;
    for (const char* const piece :
         {"(", ")", "[", "\"", "'", "--", "/*", "a,", "a ", "a,[", "\n"}) {
        // The square of the length would make it 256 times as much.
        EXPECT_LT(secondsFor(piece, 16 * size), 80 * secondsFor(piece, size) + 0.05) << piece;
    }
}

} // namespace

} // namespace corma
