#include "data/DataTest.h"

#include <gtest/gtest.h>

// What the declared type of a column makes of its values.

namespace corma::testing {

namespace {

struct TypeRow
{
    const char* sentence;
    std::string type; // as it is declared
    const char* column; // with the values 12, 2.75, NULL, '7x' and 'x'
};

constexpr const char* kAsLong = "A long: 12|2|0|7|0";
constexpr const char* kAsReal = "A real: 12|2.75|0|7|0";
constexpr const char* kAsText = "A text: 12|2.75|NULL|7x|x";
constexpr const char* kAsRealText = "A text: 12.0|2.75|NULL|7x|x"; // SQLite keeps reals there

class DeclaredType : public DataTest, public ::testing::WithParamInterface<TypeRow>
{
};

TEST_P(DeclaredType, DecidesHowValuesCome)
{
    const auto path = database(L"a.db3",
                               "CREATE TABLE T(A " + GetParam().type
                                   + "); INSERT INTO T VALUES(12),(2.75),(NULL),('7x'),('x')");
    EXPECT_EQ(select(path, L"SELECT A FROM T"), GetParam().column);
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
}

// clang-format off
const TypeRow typeRows[] = {
    {"OfINTEGERIsLong",             "INTEGER", kAsLong},
    {"OfINTIsLong",                 "INT", kAsLong},
    {"OfREALIsReal",                "REAL", kAsReal},
    {"OfSmallIntegerIsText",        "integer", kAsText},
    {"OfSmallIntIsText",            "int", kAsText},
    {"OfCapitalisedIntegerIsText",  "Integer", kAsText},
    {"OfCapitalisedIntIsText",      "Int", kAsText},
    {"OfMixedIntegerIsText",        "InTEGER", kAsText},
    {"OfSmallRealIsText",           "real", kAsRealText},
    {"OfCapitalisedRealIsText",     "Real", kAsRealText},
    {"OfVARCHARIsText",             "VARCHAR", kAsText},
    {"OfVARCHARWithLengthIsText",   "VARCHAR(20)", kAsText},
    {"OfTEXTIsText",                "TEXT", kAsText},
    {"OfSmallTextIsText",           "text", kAsText},
    {"OfBLOBIsText",                "BLOB", kAsText},
    {"OfNUMERICIsText",             "NUMERIC", kAsText},
    {"OfBIGINTIsText",              "BIGINT", kAsText},
    {"OfINTEGERWithLengthIsText",   "INTEGER(4)", kAsText},
    {"OfUNSIGNEDINTEGERIsText",     "UNSIGNED INTEGER", kAsText},
    {"OfDOUBLEIsText",              "DOUBLE", kAsRealText},
    {"OfNothingIsText",             "", kAsText},
    {"OfAConstraintAloneIsText",    "DEFAULT 5", kAsText},
    {"OfINTEGERInQuotesIsLong",     "\"INTEGER\"", kAsLong},
    {"OfINTEGERInBracketsIsLong",   "[INTEGER]", kAsLong},
    {"OfINTEGERInBackquotesIsLong", "`INTEGER`", kAsLong},
    {"OfINTEGERInSingleQuotesIsLong", "'INTEGER'", kAsLong},
    {"OfSmallIntegerInQuotesIsText", "\"integer\"", kAsText},
    {"OfINTEGERWithADefaultIsLong", "INTEGER DEFAULT 5", kAsLong},
    {"OfINTEGERThatMayRepeatIsLong", "INTEGER UNIQUE", kAsLong},
    {"OfINTEGERWithACheckIsLong",   "INTEGER CHECK(A<>99)", kAsLong},
    {"OfINTEGERBehindACommentIsLong", "/* integer */ INTEGER", kAsLong},
    {"OfSmallIntegerBehindACommentIsText", "/* INTEGER */ integer", kAsText},
    {"OfSmallIntegerBehindALineOfCommentIsText", "-- INTEGER\n integer", kAsText},
    {"OfINTEGERWithACollationIsLong", "INTEGER COLLATE NOCASE", kAsLong},
    {"OfTextNamedLikeANumberIsText", "TEXT DEFAULT 'INTEGER'", kAsText},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(sqlite, DeclaredType, ::testing::ValuesIn(typeRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

struct ColumnsRow
{
    const char* sentence;
    const char* tables;
    const wchar_t* sql;
    const char* columns;
};

class ColumnsOf : public DataTest, public ::testing::WithParamInterface<ColumnsRow>
{
};

TEST_P(ColumnsOf, HaveTheTypesOfWhatTheyAreReadFrom)
{
    const auto path = database(L"a.db3", GetParam().tables);
    EXPECT_EQ(select(path, GetParam().sql), GetParam().columns);
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(shown(), "");
}

constexpr const char* kNumbers = "CREATE TABLE T(A INTEGER, B integer, C REAL, D real, E VARCHAR);"
                                 "INSERT INTO T VALUES(1,2,3.5,4.5,'5')";

// clang-format off
const ColumnsRow columnsRows[] = {
    {"ATable", kNumbers, L"SELECT * FROM T",
        "A long: 1\nB text: 2\nC real: 3.5\nD text: 4.5\nE text: 5"},
    {"ATableInAnotherOrder", kNumbers, L"SELECT D,C,B,A FROM T",
        "D text: 4.5\nC real: 3.5\nB text: 2\nA long: 1"},
    {"ATableInOtherCase", kNumbers, L"SELECT a,b FROM t", "A long: 1\nB text: 2"},
    {"ColumnsWithOtherNames", kNumbers, L"SELECT A AS B2, B AS A2 FROM T AS U",
        "B2 long: 1\nA2 text: 2"},
    {"ANameInQuotes", "CREATE TABLE \"een \"\"t\"\"\"(\"a \"\"b\"\"\" INTEGER, [c d] integer);"
        "INSERT INTO \"een \"\"t\"\"\" VALUES(1,2)",
        L"SELECT * FROM \"een \"\"t\"\"\"", "a \"b\" long: 1\nc d text: 2"},
    {"ANameWithAnApostrophe", "CREATE TABLE \"t'1\"(\"a'b\" INTEGER, \"c'd\" integer);"
        "INSERT INTO \"t'1\" VALUES(1,2)",
        L"SELECT * FROM \"t'1\"", "a'b long: 1\nc'd text: 2"},
    {"ANameOutsideAscii", "CREATE TABLE Türen(Größe INTEGER, Höhe integer);"
        "INSERT INTO Türen VALUES(1,2)",
        L"SELECT * FROM Türen", "Größe long: 1\nHöhe text: 2"},
    {"Expressions", kNumbers, L"SELECT A+1 AS X, C*2 AS Y, count(*) AS Z, 7 AS V, A||'' AS W FROM T",
        "X text: 2\nY text: 7.0\nZ text: 1\nV text: 7\nW text: 1"},
    {"ACast", kNumbers, L"SELECT CAST(E AS INTEGER) AS X FROM T", "X text: 5"},
    {"AColumnInBrackets", kNumbers, L"SELECT (A) AS X FROM T", "X long: 1"},
    {"AColumnOfASubquery", kNumbers, L"SELECT X, Y FROM (SELECT A AS X, B AS Y FROM T)",
        "X long: 1\nY text: 2"},
    {"ASubqueryAsValue", kNumbers, L"SELECT (SELECT A FROM T) AS X, (SELECT B FROM T) AS Y",
        "X long: 1\nY text: 2"},
    {"ACommonTable", kNumbers, L"WITH N AS (SELECT A, B FROM T) SELECT * FROM N",
        "A long: 1\nB text: 2"},
    {"AView", "CREATE TABLE T(A INTEGER, B integer); INSERT INTO T VALUES(1,2);"
        "CREATE VIEW V AS SELECT B AS Y, A AS X, A+B AS Z FROM T",
        L"SELECT * FROM V", "Y text: 2\nX long: 1\nZ text: 3"},
    {"AViewOfAView", "CREATE TABLE T(A INTEGER, B integer); INSERT INTO T VALUES(1,2);"
        "CREATE VIEW V AS SELECT * FROM T; CREATE VIEW W AS SELECT * FROM V",
        L"SELECT * FROM W", "A long: 1\nB text: 2"},
    {"TwoTables", "CREATE TABLE T(K INTEGER, A integer); CREATE TABLE U(K integer, B INTEGER);"
        "INSERT INTO T VALUES(1,2); INSERT INTO U VALUES(1,3)",
        L"SELECT T.K AS TK, A, U.K AS UK, B FROM T JOIN U ON T.K=U.K",
        "TK long: 1\nA text: 2\nUK text: 1\nB long: 3"},
    {"AnOuterJoin", "CREATE TABLE T(K INTEGER); CREATE TABLE U(K INTEGER, B INTEGER, C TEXT, D REAL);"
        "INSERT INTO T VALUES(1)",
        L"SELECT T.K AS TK, B, C, D FROM T LEFT JOIN U ON T.K=U.K",
        "TK long: 1\nB long: 0\nC text: NULL\nD real: 0"},
    {"AUnionByItsFirstPart", kNumbers, L"SELECT A FROM T UNION ALL SELECT E FROM T",
        "A long: 1|5"},
    {"TheNumberOfARow", "CREATE TABLE T(A); INSERT INTO T VALUES('x')",
        L"SELECT rowid, A FROM T", "rowid long: 1\nA text: x"},
    {"TheNumberOfARowThatIsAColumn", "CREATE TABLE T(A INTEGER PRIMARY KEY); INSERT INTO T VALUES(7)",
        L"SELECT rowid AS R, A FROM T", "R long: 7\nA long: 7"},
    {"TheNumberOfARowThatIsAColumnInSmallLetters",
        "CREATE TABLE T(A integer PRIMARY KEY); INSERT INTO T VALUES(7)",
        L"SELECT rowid AS R, A FROM T", "R text: 7\nA text: 7"},
    {"ATableWithoutRowNumbers",
        "CREATE TABLE T(A INTEGER PRIMARY KEY, B int) WITHOUT ROWID; INSERT INTO T VALUES(7,8)",
        L"SELECT * FROM T", "A long: 7\nB text: 8"},
    {"AStrictTable", "CREATE TABLE T(A INTEGER, B int, C REAL, D real) STRICT;"
        "INSERT INTO T VALUES(1,2,3,4)",
        L"SELECT * FROM T", "A long: 1\nB text: 2\nC real: 3\nD text: 4.0"},
    {"TheTableOfTables", "CREATE TABLE T(A)",
        L"SELECT type, name, rootpage FROM sqlite_master",
        "type text: table\nname text: T\nrootpage text: 2"},
    {"TheTableOfTablesByItsOtherName", "CREATE TABLE T(A)",
        L"SELECT rootpage FROM sqlite_schema", "rootpage text: 2"},
    {"AColumnThatWasAdded", "CREATE TABLE T(A INTEGER); ALTER TABLE T ADD COLUMN B integer;"
        "ALTER TABLE T ADD COLUMN C INT; INSERT INTO T VALUES(1,2,3)",
        L"SELECT * FROM T", "A long: 1\nB text: 2\nC long: 3"},
    {"AColumnThatWasRenamed", "CREATE TABLE T(A integer, B INTEGER);"
        "ALTER TABLE T RENAME COLUMN A TO X; ALTER TABLE T RENAME TO U; INSERT INTO U VALUES(1,2)",
        L"SELECT * FROM U", "X text: 1\nB long: 2"},
    {"AColumnBehindOneThatWasDropped", "CREATE TABLE T(A integer, B INTEGER, C integer);"
        "ALTER TABLE T DROP COLUMN A; INSERT INTO T VALUES(1,2)",
        L"SELECT * FROM T", "B long: 1\nC text: 2"},
    {"ATableMadeFromAnother", "CREATE TABLE T(A integer, B REAL, C VARCHAR);"
        "INSERT INTO T VALUES(1,2.5,'x'); CREATE TABLE U AS SELECT * FROM T",
        L"SELECT * FROM U", "A long: 1\nB real: 2.5\nC text: x"}, // SQLite writes INT and REAL there
    {"ATableWithConstraints", "CREATE TABLE T(A integer NOT NULL, B INTEGER REFERENCES U(X),"
        "C NUMERIC(3,2) DEFAULT (1+2), D int CHECK(D IN (1,2)), E INT, PRIMARY KEY(A,B), CHECK(E>0));"
        "INSERT INTO T VALUES(1,2,3,1,5)",
        L"SELECT * FROM T", "A text: 1\nB long: 2\nC text: 3\nD text: 1\nE long: 5"},
    {"AColumnThatIsWorkedOut", "CREATE TABLE T(A integer, B INTEGER AS (A*2), C int AS (A*3) STORED);"
        "INSERT INTO T(A) VALUES(1)",
        L"SELECT * FROM T", "A text: 1\nB long: 2\nC text: 3"},
    {"ColumnsWhoseNamesAreWordsOfSql", "CREATE TABLE T(\"primary\" integer, \"check\" INTEGER,"
        "\"constraint\" int, \"unique\" INT, Key integer); INSERT INTO T VALUES(1,2,3,4,5)",
        L"SELECT * FROM T",
        "primary text: 1\ncheck long: 2\nconstraint text: 3\nunique long: 4\nKey text: 5"},
    {"ATemporaryTableOfTables", "CREATE TABLE T(A)",
        L"SELECT 'x' AS X, rootpage FROM sqlite_temp_master UNION ALL SELECT 'y', 5",
        "X text: y\nrootpage text: 5"},
    {"ATextSearchTable", "CREATE VIRTUAL TABLE T USING fts5(A); INSERT INTO T VALUES('x')",
        L"SELECT A, rowid FROM T", "A text: x\nrowid long: 1"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(sqlite, ColumnsOf, ::testing::ValuesIn(columnsRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

// --- values --------------------------------------------------------------------------------------

// clang-format off
const ColumnsRow valueRows[] = {
    {"LongsAreCutToTheirLow32Bits",
        "CREATE TABLE T(A INTEGER); INSERT INTO T VALUES(2147483647),(-2147483648),(2147483648),"
        "(4294967295),(4294967297),(-4294967297),(9223372036854775807),(1e300),('9999999999')",
        L"SELECT A FROM T",
        "A long: 2147483647|-2147483648|-2147483648|-1|1|-1|-1|-1|1410065407"},
    {"LongsOfOtherValues",
        "CREATE TABLE T(A INTEGER); INSERT INTO T VALUES(3.9),(-3.9),('12 deuren'),(''),(x'3132'),('-5')",
        L"SELECT A FROM T", "A long: 3|-3|12|0|12|-5"},
    {"RealsOfOtherValues",
        "CREATE TABLE T(A REAL); INSERT INTO T VALUES(1e300),(-0.1),('2.5x'),('1e2'),(x'33'),(NULL)",
        L"SELECT A FROM T", "A real: 1e+300|-0.1|2.5|100|3|0"},
    {"TextsOfOtherValues",
        "CREATE TABLE T(A); INSERT INTO T VALUES(9223372036854775807),(0.1),(1e300),(NULL),('')",
        L"SELECT A FROM T", "A text: 9223372036854775807|0.1|1.0e+300|NULL|"},
    {"ANullInVARCHAR", "CREATE TABLE T(A VARCHAR); INSERT INTO T VALUES(NULL)",
        L"SELECT A FROM T", "A text: NULL"},
    {"ATextThatSaysNULL", "CREATE TABLE T(A VARCHAR); INSERT INTO T VALUES('NULL')",
        L"SELECT A FROM T", "A text: NULL"},
    {"ABlobAsText", "CREATE TABLE T(A BLOB); INSERT INTO T VALUES(x'4142'),(x''),(x'C3A9')",
        L"SELECT A FROM T", "A text: AB||é"},
    {"ATextEndsAtANull", "CREATE TABLE T(A TEXT); INSERT INTO T VALUES(CAST(x'610062' AS TEXT)),"
        "(x'630064'),(CAST(x'0061' AS TEXT)),('e')",
        L"SELECT A FROM T", "A text: a|c||e"},
    {"TextsOutsideAscii", "CREATE TABLE T(A TEXT); INSERT INTO T VALUES('één'),('дверь'),('門'),('😀')",
        L"SELECT A FROM T", "A text: één|дверь|門|😀"},
    {"BytesThatAreNoText", "CREATE TABLE T(A TEXT); INSERT INTO T VALUES(CAST(x'61FF62' AS TEXT)),"
        "(CAST(x'C3' AS TEXT)),(CAST(x'EDA080' AS TEXT)),(CAST(x'C080' AS TEXT))",
        L"SELECT A FROM T", "A text: a�b|�|�|�"}, // as SQLite puts it
    {"ALongTextBeforeAShortOne", "CREATE TABLE T(A TEXT, B TEXT); INSERT INTO T VALUES"
        "('een lange tekst','k'),('x','ook lang')",
        L"SELECT A,B FROM T", "A text: een lange tekst|x\nB text: k|ook lang"},
    {"HalvesOfPairs", "PRAGMA encoding='UTF-16le'; CREATE TABLE T(A TEXT);"
        "INSERT INTO T VALUES(CAST(x'610000D86200' AS TEXT)),(CAST(x'00DC00D8' AS TEXT)),"
        "(CAST(x'3DD800DE' AS TEXT)),(CAST(x'00D8' AS TEXT))",
        L"SELECT A FROM T", "A text: a�b|��|😀|�"},
    {"AUtf16Database", "PRAGMA encoding='UTF-16le'; CREATE TABLE Größe(Höhe TEXT, B integer, C INT);"
        "INSERT INTO Größe VALUES('één 😀',1,2)",
        L"SELECT * FROM Größe WHERE Höhe='één 😀'", "Höhe text: één 😀\nB text: 1\nC long: 2"},
    {"AUtf16DatabaseOfTheOtherOrder",
        "PRAGMA encoding='UTF-16be'; CREATE TABLE T(A TEXT, B integer, C INT);"
        "INSERT INTO T VALUES('één 😀',1,2)",
        L"SELECT * FROM T WHERE A LIKE 'één%'", "A text: één 😀\nB text: 1\nC long: 2"},
    {"DoubledNamesOfWhichTheLastStays", "CREATE TABLE T(A); INSERT INTO T VALUES('x')",
        L"SELECT 1 AS N, A, 2 AS N FROM T", "A text: x\nN text: 2"},
    {"DoubledNamesInOtherCase", "CREATE TABLE T(A); INSERT INTO T VALUES('x')",
        L"SELECT 1 AS n, A, 2 AS N FROM T", "A text: x\nN text: 2"},
    {"ANameThatIsEmpty", "CREATE TABLE T(A); INSERT INTO T VALUES('x')",
        L"SELECT A AS \"\" FROM T", " text: x"},
    {"ATextOfTheStatement", "CREATE TABLE T(A)", L"SELECT 'één 😀' AS \"Größe 😀\"",
        "Größe 😀 text: één 😀"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(sqliteValues, ColumnsOf, ::testing::ValuesIn(valueRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(DataTest, ANameOfAColumnIsCutTo256Characters)
{
    const auto path = database(L"a.db3", "CREATE TABLE T(A)");
    for (const std::size_t length : {255U, 256U, 257U, 300U}) {
        const std::wstring name(length, L'é');
        select(path, L"SELECT 1 AS " + name);
        ASSERT_EQ(result.length(), 1);
        EXPECT_EQ(result[0]->name(), name.substr(0, 256));
    }
}

TEST_F(DataTest, NamesThatAreEqualWhenTheyAreCutAreOne)
{
    const auto path = database(L"a.db3", "CREATE TABLE T(A)");
    const std::wstring name(256, L'n');
    select(path, L"SELECT 1 AS " + name + L"1, 2 AS " + name + L"2");
    ASSERT_EQ(result.length(), 1);
    EXPECT_STREQ(result[0]->currentText(), L"2");
}

} // namespace

} // namespace corma::testing
