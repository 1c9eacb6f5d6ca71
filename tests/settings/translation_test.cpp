#include "data/connections.h"
#include "platform/text.h"
#include "support/RecordingServices.h"
#include "support/SqliteFile.h"
#include "support/TempFolder.h"
#include <corma/translation.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

constexpr const char* kWords
    = "CREATE TABLE Keys(Key VARCHAR, E VARCHAR, F VARCHAR, G VARCHAR, S VARCHAR, N VARCHAR);"
      "INSERT INTO Keys VALUES('HOUT','Wood','Bois','Holz','Madera','Hout'),"
      "('LEEG',NULL,'','','',''),('ÉÉN','one','un','eins','uno 😀','één')";

constexpr int kEnglishNumber = 9;

// tool.ini names woorden.db3 beside it.
class Translation : public ::testing::Test
{
protected:
    void SetUp() override
    {
        writeIni("TranslateDB=" + folder.homely(folder.path(L"woorden.db3")) + "\n");
        words(kWords);
    }

    /// Writes the configuration file; "~" stands for the folder.
    void writeIni(std::string text)
    {
        const std::string home = toUtf8(folder.path());
        for (std::size_t at = 0; (at = text.find('~', at)) != std::string::npos;) {
            text.replace(at, 1, home);
            at += home.size();
        }
        folder.write(L"tool.ini", text);
    }

    /// Makes the database anew.
    void words(const std::string& statements) const
    {
        folder.write(L"woorden.db3", "");
        SqliteFile(folder.path(L"woorden.db3")).run(statements);
    }

    std::string translate(const std::wstring& word, int language = kEnglishNumber)
    {
        return toUtf8(translateKey(folder.path(L"tool.ini").c_str(), word, language));
    }

    std::string shown()
    {
        std::string all = folder.homely(services.allPrinted());
        services.printed.clear();
        return all;
    }

    RecordingServices services;
    TempFolder folder;
};

struct LanguageRow
{
    const char* sentence;
    int language;
    const char* word;
};

class Language : public Translation, public ::testing::WithParamInterface<LanguageRow>
{
};

TEST_P(Language, HasItsColumn)
{
    EXPECT_EQ(translate(L"HOUT", GetParam().language), GetParam().word);
    EXPECT_EQ(shown(), "");
}

// clang-format off
const LanguageRow languageRows[] = {
    {"French",            12, "Bois"},
    {"German",            7,  "Holz"},
    {"Spanish",           10, "Madera"},
    {"Dutch",             19, "Hout"},
    {"English",           9,  "Wood"},
    {"RussianHasEnglish", 25, "Wood"},
    {"PolishHasEnglish",  21, "Wood"},
    {"NoneHasEnglish",    0,  "Wood"},
    {"MinusHasEnglish",   -12, "Wood"},
    {"AWholeNumberHasEnglish", 0x413, "Wood"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(translateKey, Language, ::testing::ValuesIn(languageRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(Translation, IsThatOfTheWordAsItIsSpelled)
{
    EXPECT_EQ(translate(L"HOUT"), "Wood");
    EXPECT_EQ(translate(L"hout"), "hout");
    EXPECT_EQ(translate(L"HOUT "), "HOUT ");
    EXPECT_EQ(translate(L"STAAL"), "STAAL");
    EXPECT_EQ(translate(L""), "");
    EXPECT_EQ(shown(), "");
}

TEST_F(Translation, HeedsCaseAsTheDatabaseDoes)
{
    words("CREATE TABLE Keys(Key VARCHAR COLLATE NOCASE, E VARCHAR);"
          "INSERT INTO Keys VALUES('HOUT','Wood')");
    EXPECT_EQ(translate(L"hout"), "Wood");
}

TEST_F(Translation, MayBeOutsideAscii)
{
    EXPECT_EQ(translate(L"ÉÉN", 19), "één");
    EXPECT_EQ(translate(L"ÉÉN", 10), "uno 😀");
}

TEST_F(Translation, IsTheFirstOfSeveralRows)
{
    words("CREATE TABLE Keys(Key VARCHAR, E VARCHAR);"
          "INSERT INTO Keys VALUES('A','eerste'),('B','andere'),('A','tweede')");
    EXPECT_EQ(translate(L"A"), "eerste");
}

TEST_F(Translation, MayBeTheTextOfANullOrEmpty)
{
    EXPECT_EQ(translate(L"LEEG", 9), "NULL");
    EXPECT_EQ(translate(L"LEEG", 12), "");
}

TEST_F(Translation, ComesFromTablesOfAnyLayoutWithTheseColumns)
{
    words(
        "CREATE TABLE keys(x INTEGER, e TEXT, key TEXT); INSERT INTO keys VALUES(1,'Wood','HOUT')");
    EXPECT_EQ(translate(L"HOUT"), "Wood");
    words("CREATE TABLE W(K, L); INSERT INTO W VALUES('HOUT','Wood');"
          "CREATE VIEW Keys AS SELECT K AS Key, L AS E FROM W");
    EXPECT_EQ(translate(L"HOUT"), "Wood");
    EXPECT_EQ(shown(), "");
}

// --- no translation ------------------------------------------------------------------------------

struct AbsentRow
{
    const char* sentence;
    const char* words; // statements
    const char* shown;
};

class Untranslated : public Translation, public ::testing::WithParamInterface<AbsentRow>
{
};

TEST_P(Untranslated, IsTheWordItself)
{
    words(GetParam().words);
    EXPECT_EQ(translate(L"HOUT"), "HOUT");
    EXPECT_EQ(shown(), GetParam().shown);
}

constexpr const char* kNoStatement
    = "\nError in file xx__sqlite.cpp on line 137\n"
      "(S=~/woorden.db3 : prepare : SQL error or missing database, ec = 1)";

// clang-format off
const AbsentRow absentRows[] = {
    {"WithoutATable",      "CREATE TABLE Woorden(Key, E)", kNoStatement},
    {"WithoutTheKey",      "CREATE TABLE Keys(Sleutel, E)", kNoStatement},
    {"WithoutARow",        "CREATE TABLE Keys(Key, E)", ""},
    {"WithoutTheLanguage", "CREATE TABLE Keys(Key, N); INSERT INTO Keys VALUES('HOUT','Hout')", ""},
    {"WithANumber", "CREATE TABLE Keys(Key, E INTEGER); INSERT INTO Keys VALUES('HOUT',5)", ""},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(translateKey, Untranslated, ::testing::ValuesIn(absentRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

struct IniRow
{
    const char* sentence;
    const char* ini;
};

class NoDatabase : public Translation, public ::testing::WithParamInterface<IniRow>
{
};

TEST_P(NoDatabase, LeavesTheWordQuietly)
{
    writeIni(GetParam().ini);
    EXPECT_EQ(translate(L"HOUT"), "HOUT");
    EXPECT_EQ(shown(), "");
}

// clang-format off
const IniRow iniRows[] = {
    {"WhenNoneIsNamed",         "Anders=~/woorden.db3\n"},
    {"WhenTheFileIsEmpty",      ""},
    {"WhenTheNameIsEmpty",      "TranslateDB=\n"},
    {"WhenThereIsNoSuchFile",   "TranslateDB=~/nergens.db3\n"},
    {"WhenThereIsNoSuchName",   "TranslateDB=nergens.db3\n"},
    {"WhenItIsNamedInAChapter", "[Algemeen]\nTranslateDB=~/woorden.db3\n"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(translateKey, NoDatabase, ::testing::ValuesIn(iniRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(Translation, IsTheWordWithoutAConfigurationFile)
{
    EXPECT_EQ(translateKey(folder.path(L"nergens.ini").c_str(), L"HOUT", 9), L"HOUT");
    EXPECT_TRUE(shown().ends_with("\n(Inifile \"~/nergens.ini\" not found , ec = 0)"));
}

TEST_F(Translation, IsTheWordForWhatIsNoDatabase)
{
    folder.write(L"woorden.db3", std::string(1000, 'x'));
    EXPECT_EQ(translate(L"HOUT"), "HOUT");
    EXPECT_EQ(shown(),
              "\nError in file xx__ado.cpp on line 225\n"
              "(S=~/woorden.db3 : prepare : File opened that is not a database file, ec = 26)"
              "\nError in file xx__sqlite.cpp on line 137\n"
              "(S=~/woorden.db3 : prepare : File opened that is not a database file, ec = 26)");
}

// --- the word in the statement -------------------------------------------------------------------

TEST_F(Translation, OfAWordWithAnApostropheIsNotFound)
{
    words("CREATE TABLE Keys(Key, E); INSERT INTO Keys VALUES('D''ARC','of arc')");
    EXPECT_EQ(translate(L"D'ARC"), "D'ARC");
    EXPECT_EQ(shown(), kNoStatement);
    EXPECT_EQ(translate(L"D''ARC"), "of arc"); // the word stands in the statement as it is
}

TEST_F(Translation, LeavesTheDatabaseAsItIsWhateverTheWord)
{
    const std::string before = folder.read(L"woorden.db3");
    EXPECT_EQ(translate(L"X'; DROP TABLE Keys; --"), "X'; DROP TABLE Keys; --");
    EXPECT_EQ(translate(L"%s%n"), "%s%n");
    EXPECT_EQ(shown(), "");
    EXPECT_TRUE(folder.read(L"woorden.db3") == before);
}

// --- where the database is -----------------------------------------------------------------------

TEST_F(Translation, ComesFromADatabaseThatTheSearchFinds)
{
    services.module = folder.makeFolder(L"module") + L"/host.bin";
    services.variables[L"ACAD"] = folder.makeFolder(L"support");
    writeIni("TranslateDB=lijst.DB3\n");
    SqliteFile(folder.path(L"support/lijst.DB3"))
        .run("CREATE TABLE Keys(Key, E); INSERT INTO Keys VALUES('HOUT','support')");
    EXPECT_EQ(translate(L"HOUT"), "support");
    SqliteFile(folder.path(L"module/lijst.DB3"))
        .run("CREATE TABLE Keys(Key, E); INSERT INTO Keys VALUES('HOUT','module')");
    EXPECT_EQ(translate(L"HOUT"), "module");
}

TEST_F(Translation, ComesFromADatabaseThatAnIncludedFileNames)
{
    folder.write(L"deel.ini", folder.read(L"tool.ini"));
    writeIni("#INCLUDE=deel.ini\n");
    EXPECT_EQ(translate(L"HOUT"), "Wood");
}

TEST_F(Translation, ComesFromADatabaseThatTheProjectNames)
{
    SqliteFile(folder.path(L"ander.db3"))
        .run("CREATE TABLE Keys(Key, E); INSERT INTO Keys VALUES('HOUT','project')");
    ASSERT_TRUE(newDocument((folder.makeFolder(L"huis") + L"/huis.dxf").c_str()));
    EXPECT_EQ(translate(L"HOUT"), "Wood");
    folder.write(L"huis/tool.ipr", "TranslateDB=" + toUtf8(folder.path(L"ander.db3")) + "\n");
    EXPECT_EQ(translate(L"HOUT"), "project");
    EXPECT_EQ(shown(), "");
}

TEST_F(Translation, ReadsBothFilesAnew)
{
    EXPECT_EQ(translate(L"HOUT"), "Wood");
    words("CREATE TABLE Keys(Key, E); INSERT INTO Keys VALUES('HOUT','nieuw')");
    EXPECT_EQ(translate(L"HOUT"), "nieuw");
    writeIni("Niets=0\n");
    EXPECT_EQ(translate(L"HOUT"), "HOUT");
}

TEST_F(Translation, ClosesEachConnection)
{
    xx_VarArray result;
    ASSERT_EQ(xx_ado_select(folder.path(L"woorden.db3").c_str(), L"SELECT 1", &result), RTNORM);
    ASSERT_TRUE(connectionSlot(0).path.has_value());
    translate(L"HOUT");
    EXPECT_FALSE(connectionSlot(0).path.has_value());
    words("CREATE TABLE Woorden(Key, E)");
    translate(L"HOUT");
    for (int i = 0; i < kConnectionSlots; ++i) {
        EXPECT_FALSE(connectionSlot(i).path.has_value());
    }
    EXPECT_EQ(folder.names(), "tool.ini woorden.db3");
}

TEST_F(Translation, TakesANullFileForNone)
{
    EXPECT_EQ(translateKey(nullptr, L"HOUT", 9), L"HOUT");
}

} // namespace

} // namespace corma::testing
