// cfgctl sql and translate.

#include "CfgctlTest.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace corma::testing {

namespace {

constexpr const char* kAllColumns = "SELECT Naam,Aantal,Dikte FROM Wand";

class CfgctlSql : public CfgctlTest
{
protected:
    CfgctlSql()
    {
        database("wand.db3")
            .run("CREATE TABLE Wand(Naam VARCHAR,Aantal INTEGER,Dikte REAL);"
                 "INSERT INTO Wand VALUES('binnen',3,70.5),('buiten',-2,365),"
                 "(NULL,NULL,NULL)");
    }

    // What is reported of wand.db3 when a statement does not run.
    std::string report(int line, const std::string& what, int code) const
    {
        return "Error in file xx__sqlite.cpp on line " + std::to_string(line) + "\n(S="
            + pathOf("wand.db3") + " : " + what + ", ec = " + std::to_string(code) + ")\n";
    }
};

TEST_F(CfgctlSql, ShowsALineOfNamesAndOneForEachRow)
{
    const ProgramResult result = run({"sql", "wand.db3", kAllColumns});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out,
              "Naam\tAantal\tDikte\nbinnen\t3\t70.5\nbuiten\t-2\t365.0\nNULL\t0\t0.0\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(CfgctlSql, GivesADocumentOfColumns)
{
    EXPECT_EQ(json({"sql", "wand.db3", kAllColumns}),
              R"({"status":5100,"columns":[)"
              R"({"name":"Naam","type":5005,"values":["binnen","buiten","NULL"]},)"
              R"({"name":"Aantal","type":5010,"values":[3,-2,0]},)"
              R"({"name":"Dikte","type":5001,"values":[70.5,365.0,0.0]}]})");
}

struct Maximum
{
    const char* sentence;
    const char* maximum;
    std::size_t rows;
};

class CfgctlSqlMaximum : public CfgctlSql, public ::testing::WithParamInterface<Maximum>
{
};

TEST_P(CfgctlSqlMaximum, IsTheNumberOfRows)
{
    const std::string maximum = std::string("--max=") + GetParam().maximum;
    const Json document = Json::parse(json({"sql", "wand.db3", kAllColumns, maximum}));
    ASSERT_EQ(document["columns"].size(), 3U);
    for (const Json& column : document["columns"]) {
        EXPECT_EQ(column["values"].size(), GetParam().rows) << column;
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, CfgctlSqlMaximum, ::testing::Values(
    Maximum {"One",           "1", 1},
    Maximum {"OneLess",       "2", 2},
    Maximum {"AsManyAsThere", "3", 3},
    Maximum {"OneMore",       "4", 3},
    Maximum {"NoneIsAll",     "0", 3},
    Maximum {"LessIsAll",     "-1", 3}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgctlSql, ShowsNothingWhenThereIsNoRow)
{
    const char* const none = "SELECT Naam FROM Wand WHERE Naam='weg'";
    const ProgramResult result = run({"sql", "wand.db3", none});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(json({"sql", "wand.db3", none}), R"({"status":5100,"columns":[]})");
}

TEST_F(CfgctlSql, KeepsARowOnItsLine)
{
    database("wand.db3").run("DELETE FROM Wand;INSERT INTO Wand VALUES('a\tb\r\nc \xC3\xA9',1,2)");
    EXPECT_EQ(run({"sql", "wand.db3", "SELECT Naam,Aantal FROM Wand"}).out,
              "Naam\tAantal\na b  c \xC3\xA9\t1\n");
    EXPECT_EQ(json({"sql", "wand.db3", "SELECT Naam FROM Wand"}),
              "{\"status\":5100,\"columns\":[{\"name\":\"Naam\",\"type\":5005,"
              "\"values\":[\"a\\tb\\r\\nc \xC3\xA9\"]}]}");
}

TEST_F(CfgctlSql, TakesNamesOfAllKinds)
{
    database("w\xC3\xB6rter.DB3").run(kWords);
    EXPECT_EQ(run({"sql", "w\xC3\xB6rter.DB3",
                   "SELECT G AS \"\xD0\xB4\xD0\xB0\" FROM Keys WHERE Key='WOOD'"})
                  .out,
              "\xD0\xB4\xD0\xB0\nHolz\n");
}

TEST_F(CfgctlSql, FindsADatabaseInASupportFolder)
{
    write("map/x", "");
    database("map/woorden.db3").run(kWords);
    environment["ACAD"] = pathOf("map");
    EXPECT_EQ(run({"sql", "woorden.db3", "SELECT N FROM Keys", "--max=1"}).out, "N\nHout\n");
}

struct Failure
{
    const char* sentence;
    const char* statement;
    int line;
    const char* what;
    int code;
};

class CfgctlSqlFailure : public CfgctlSql, public ::testing::WithParamInterface<Failure>
{
};

TEST_P(CfgctlSqlFailure, IsToldAndChangesNothing)
{
    const std::string database = read("wand.db3");
    const ProgramResult result = run({"sql", "wand.db3", GetParam().statement});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, report(GetParam().line, GetParam().what, GetParam().code));
    const ProgramResult document = run({"sql", "wand.db3", GetParam().statement, "--json"});
    EXPECT_EQ(document.exitStatus, 1);
    EXPECT_EQ(document.out,
              "{\"status\":" + std::to_string(GetParam().code) + ",\"columns\":[]}\n");
    EXPECT_EQ(read("wand.db3"), database);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, CfgctlSqlFailure, ::testing::Values(
    Failure {"ATableThatIsNotThere",  "SELECT Naam FROM Deur", 137, "prepare : SQL error or missing database", 1},
    Failure {"AColumnThatIsNotThere", "SELECT Kleur FROM Wand", 137, "prepare : SQL error or missing database", 1},
    Failure {"WhatIsNoStatement",     "Naam", 137, "prepare : SQL error or missing database", 1},
    Failure {"AChange",               "DELETE FROM Wand", 256, "finalize : Attempt to write a readonly database", 8},
    Failure {"ANewTable",             "CREATE TABLE Deur(Naam)", 256, "finalize : Attempt to write a readonly database", 8}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgctlSql, TellsOfADatabaseThatIsNotThere)
{
    for (const char* name : {"weg.db3", "weg.mdb", "", "."}) {
        const ProgramResult result = run({"sql", name, kAllColumns, "--json"});
        EXPECT_EQ(result.exitStatus, 1) << name;
        EXPECT_EQ(result.out, "{\"status\":-5001,\"columns\":[]}\n") << name;
        EXPECT_NE(result.err, "") << name;
    }
    EXPECT_EQ(run({"sql", "weg.db3", kAllColumns}).err,
              "cfgctl: the database \"weg.db3\" was not found\n");
    EXPECT_FALSE(folder.has(L"weg.db3"));
}

TEST_F(CfgctlSql, TellsOfAFileThatIsNoDatabase)
{
    write("wand.db3", std::string(2000, 'x'));
    const ProgramResult result = run({"sql", "wand.db3", kAllColumns, "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":26,\"columns\":[]}\n");
    EXPECT_THAT(result.err,
                HasSubstr(report(137, "prepare : File opened that is not a database file", 26)));
}

TEST_F(CfgctlSql, TellsOfAConnectionThatDoesNotOpen)
{
    for (const char* connection :
         {"Driver=No driver of this name;Server=weg", "Provider=MSDASQL;DSN=no source of this name",
          "Provider=NoProviderOfThisName;Data Source=weg"}) {
        const ProgramResult result = run({"sql", connection, kAllColumns, "--json"});
        EXPECT_EQ(result.exitStatus, 1) << connection;
        EXPECT_EQ(result.out, "{\"status\":-5001,\"columns\":[]}\n") << connection;
        EXPECT_THAT(result.err, StartsWith("xx_dump_com_error!\n")) << connection;
    }
}

TEST_F(CfgctlSql, ShowsWhatIsRunWithDebug)
{
    const ProgramResult result = run({"sql", "wand.db3", kAllColumns, "--debug"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, run({"sql", "wand.db3", kAllColumns}).out);
    EXPECT_EQ(
        result.err,
        std::string("======================== xx_sqlite_sql ===============================\n")
            + kAllColumns + '\n' + report(137, "prepare : Successful result", 0)
            + report(256, "finalize : Successful result", 0));
}

class CfgctlTranslate : public CfgctlTest
{
protected:
    CfgctlTranslate()
    {
        write("tool.ini", "TranslateDB=woorden.db3\n");
        database("woorden.db3").run(kWords);
    }

    // The line that is printed, of a command that succeeds; standard error is `told`.
    std::string translated(const std::string& word, const Words& options = {}) const
    {
        Words words {"translate", "tool.ini", word};
        words.insert(words.end(), options.begin(), options.end());
        const ProgramResult result = run(words);
        EXPECT_EQ(result.exitStatus, 0);
        told = result.err;
        return result.out;
    }

    mutable std::string told;
};

TEST_F(CfgctlTranslate, GivesTheWordOfTheLanguage)
{
    EXPECT_EQ(translated("WOOD"), "Wood\n");
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"9", "Wood\n"},  {"12", "Bois\n"}, {"7", "Holz\n"}, {"10", "Madera\n"}, {"19", "Hout\n"},
        {"25", "Wood\n"}, {"21", "Wood\n"}, {"0", "Wood\n"}, {"-1", "Wood\n"}};
    for (const auto& [language, text] : rows) {
        EXPECT_EQ(translated("WOOD", {std::string("--language=") + language}), text) << language;
        EXPECT_EQ(told, "") << language;
    }
}

TEST_F(CfgctlTranslate, IsAnOperationWithoutStatus)
{
    EXPECT_EQ(json({"translate", "tool.ini", "WOOD"}), R"({"status":5100})");
    EXPECT_EQ(json({"translate", "tool.ini", "OAK"}), R"({"status":5100})");
}

TEST_F(CfgctlTranslate, LeavesAWordThatTheDatabaseLacks)
{
    for (const char* word : {"OAK", "wood", "WOOD ", "", "%", "\xC3\xA9"}) {
        EXPECT_EQ(translated(word), std::string(word) + '\n');
        EXPECT_EQ(told, "") << word;
    }
}

TEST_F(CfgctlTranslate, TakesTheFirstOfSeveralRows)
{
    database("woorden.db3").run("INSERT INTO Keys(Key,E) VALUES('WOOD','Timber')");
    EXPECT_EQ(translated("WOOD"), "Wood\n");
}

TEST_F(CfgctlTranslate, ShowsWhatTheColumnHolds)
{
    database("woorden.db3").run("INSERT INTO Keys(Key,E,N) VALUES('OAK','',NULL)");
    EXPECT_EQ(translated("OAK"), "\n");
    EXPECT_EQ(translated("OAK", {"--language=19"}), "NULL\n");
}

// The statement breaks at it.
TEST_F(CfgctlTranslate, LeavesAWordWithAnApostrophe)
{
    database("woorden.db3").run("INSERT INTO Keys(Key,E) VALUES('O''K','Oak')");
    EXPECT_EQ(translated("O'K"), "O'K\n");
    EXPECT_EQ(told,
              "Error in file xx__sqlite.cpp on line 137\n(S=" + pathOf("woorden.db3")
                  + " : prepare : SQL error or missing database, ec = 1)\n");
}

TEST_F(CfgctlTranslate, LeavesTheWordWithoutADatabase)
{
    for (const char* content :
         {"", "TranslateDB=\n", "TranslateDB=weg.db3\n", "[Algemeen]\nTranslateDB=woorden.db3\n"}) {
        write("tool.ini", content);
        EXPECT_EQ(translated("WOOD"), "WOOD\n") << content;
        EXPECT_EQ(told, "") << content;
    }
}

TEST_F(CfgctlTranslate, LeavesTheWordWithoutItsColumn)
{
    database("klein.db3")
        .run("CREATE TABLE Keys(Key TEXT,F TEXT);INSERT INTO Keys VALUES('WOOD','Bois')");
    write("tool.ini", "TranslateDB=klein.db3\n");
    EXPECT_EQ(translated("WOOD", {"--language=12"}), "Bois\n");
    EXPECT_EQ(translated("WOOD", {"--language=19"}), "WOOD\n");
    EXPECT_EQ(translated("WOOD"), "WOOD\n");
    EXPECT_EQ(told, "");
}

TEST_F(CfgctlTranslate, TellsOfADatabaseWithoutTheTable)
{
    database("leeg.db3").run("CREATE TABLE Woorden(Key TEXT,E TEXT)");
    write("tool.ini", "TranslateDB=leeg.db3\n");
    EXPECT_EQ(translated("WOOD"), "WOOD\n");
    EXPECT_THAT(told, HasSubstr("leeg.db3 : prepare : SQL error or missing database, ec = 1"));
}

TEST_F(CfgctlTranslate, TellsOfAFileThatIsNoDatabase)
{
    write("woorden.db3", "Key,E\nWOOD,Wood\n");
    EXPECT_EQ(translated("WOOD"), "WOOD\n");
    EXPECT_THAT(told, HasSubstr("prepare : File opened that is not a database file, ec = 26"));
}

TEST_F(CfgctlTranslate, TellsOfAConfigurationFileThatIsNotThere)
{
    const ProgramResult result = run({"translate", "weg.ini", "WOOD"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "WOOD\n");
    EXPECT_THAT(result.err, HasSubstr("Inifile \"weg.ini\" not found"));
}

TEST_F(CfgctlTranslate, LooksItsDatabaseUpAsEverySetting)
{
    write("norm.ini", "TranslateDB=norm.db3\n");
    database("norm.db3")
        .run("CREATE TABLE Keys(Key TEXT,E TEXT);INSERT INTO Keys VALUES('WOOD','Timber')");
    write("tool.ini", "#INCLUDE=norm.ini\nTranslateDB=woorden.db3\n");
    EXPECT_EQ(translated("WOOD"), "Timber\n");

    write("tool.ini", "TranslateDB=woorden.db3\n");
    write("werk/tool.ipr", "TranslateDB=norm.db3\n");
    copyDrawing("r2000", "werk/plan.dxf");
    EXPECT_EQ(translated("WOOD", {"--drawing=werk/plan.dxf"}), "Timber\n");
    EXPECT_EQ(translated("WOOD"), "Wood\n");
}

} // namespace

} // namespace corma::testing
