#include "data/DataTest.h"
#include "data/FakeProviders.h"
#include "data/connections.h"
#include "platform/text.h"
#include <corma/xx_ado.h>

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

class Select : public DataTest
{
protected:
    Select()
    {
        services.module = folder.makeFolder(L"module") + L"/host.bin";
        services.variables[L"ACAD"] = folder.makeFolder(L"support");
        providers.answers[L"SELECT"]
            = {.fields = {{L"A", ado::Type::integer}}, .rows = {{{.tag = VT_I4, .integer = 5}}}};
    }

    ~Select() override { xx_ado_close_all(); } // while there are providers

    /// What is told of the error in the first provider that a text is passed to.
    std::string descriptionFor(const std::wstring& text)
    {
        constexpr std::string_view kBegin = "\tDescription = ";
        select(text, L"SELECT");
        const std::string all = shown();
        const std::size_t begin = all.find(kBegin) + kBegin.size();
        return all.substr(begin, all.find('\n', begin) - begin);
    }

    /// What the providers were asked, with "~" for the folder.
    std::string log() { return folder.homely(fromUtf8(providers.log())); }

    FakeProviders providers;
    CurrentFolder here {folder.makeFolder(L"here")};
};

constexpr const char* kOne = "CREATE TABLE T(A INTEGER); INSERT INTO T VALUES(1)";
constexpr const char* kTwo = "CREATE TABLE T(A INTEGER); INSERT INTO T VALUES(2)";

TEST_F(Select, FindsTheFileAsTheLibraryFindsFiles)
{
    EXPECT_EQ(select(L"deuren.db3", L"SELECT A FROM T"), "");
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(shown(), "");
    database(L"support/deuren.db3", kOne);
    EXPECT_EQ(select(L"deuren.db3", L"SELECT A FROM T"), "A long: 1");
    EXPECT_EQ(status, RTNORM);
    database(L"module/deuren.db3", kTwo);
    EXPECT_EQ(select(L"deuren.db3", L"SELECT A FROM T"), "A long: 2");
    EXPECT_EQ(select(folder.path(L"support/deuren.db3"), L"SELECT A FROM T"), "A long: 1");
    EXPECT_EQ(shown(), "");
}

TEST_F(Select, KeepsTheResultWhenThereIsNoFile)
{
    result.append(new xx_Var(L"Oud", L"inhoud"));
    EXPECT_EQ(select(L"nergens.db3", L"SELECT 1"), "Oud text: inhoud");
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(select(L"nergens.mdb", L"SELECT"), "Oud text: inhoud");
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(select(L"", L"SELECT"), "Oud text: inhoud");
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(log(), "");
}

TEST_F(Select, KeepsTheConnectionOfAFile)
{
    const auto path = database(L"a.db3", kOne);
    select(path, L"SELECT A FROM T");
    EXPECT_EQ(connectionSlot(0).path, path);
    EXPECT_EQ(connectionSlot(0).provider, L"Microsoft.ACE.OLEDB.12.0");
    xx_ado_close_all();
    EXPECT_FALSE(connectionSlot(0).path.has_value());
}

TEST_F(Select, ReadsBothSpellingsOfTheExtension)
{
    database(L"here/klein.db3", kOne);
    database(L"here/GROOT.DB3", kTwo);
    EXPECT_EQ(select(L"klein.db3", L"SELECT A FROM T"), "A long: 1");
    EXPECT_EQ(select(L"GROOT.DB3", L"SELECT A FROM T"), "A long: 2");
    EXPECT_EQ(log(), "");
}

TEST_F(Select, ReadsAFileWhoseNameDiffersInCase)
{
    database(L"here/Deuren.db3", kOne);
    EXPECT_EQ(select(L"deuren.db3", L"SELECT A FROM T"), "A long: 1");
    EXPECT_EQ(select(L"DEUREN.DB3", L"SELECT A FROM T"), "A long: 1");
    EXPECT_EQ(shown(), "");
}

TEST_F(Select, AsksAProviderForTheExtensionInAnyOtherSpelling)
{
    database(L"here/deuren.Db3", kOne);
    EXPECT_EQ(select(L"deuren.Db3", L"SELECT"), "A long: 5");
    EXPECT_EQ(log(),
              "open Microsoft.ACE.OLEDB.12.0: Provider=Microsoft.ACE.OLEDB.12.0;"
              "Data Source=~/here/deuren.Db3;Jet OLEDB:Database Password=\n"
              "run SELECT\nend rows");
    EXPECT_EQ(status, RTNORM);
}

TEST_F(Select, AsksAProviderForAnyOtherFile)
{
    folder.write(L"support/deuren.mdb", "");
    EXPECT_EQ(select(L"deuren.mdb", L"SELECT"), "A long: 5");
    folder.write(L"support/deuren.dbf", "");
    select(L"deuren.dbf", L"SELECT");
    EXPECT_EQ(log(),
              "open Microsoft.ACE.OLEDB.12.0: Provider=Microsoft.ACE.OLEDB.12.0;"
              "Data Source=~/support/deuren.mdb;Jet OLEDB:Database Password=\n"
              "run SELECT\nend rows\n"
              "open Microsoft.ACE.OLEDB.12.0: Provider=Microsoft.ACE.OLEDB.12.0;"
              "Data Source=~/support/;Extended Properties=dBase IV\n"
              "run SELECT\nend rows");
}

struct TextRow
{
    const char* sentence;
    const wchar_t* text;
    const char* log; // what the provider is asked
};

class ConnectionTexts : public Select, public ::testing::WithParamInterface<TextRow>
{
};

TEST_P(ConnectionTexts, GoToTheProviderAsTheyStand)
{
    EXPECT_EQ(select(GetParam().text, L"SELECT"), "A long: 5");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(log(), std::string(GetParam().log) + "\nrun SELECT\nend rows");
    EXPECT_EQ(shown(), "");
}

// clang-format off
const TextRow textRows[] = {
    {"WithAProvider", L"Provider=X.1;Data Source=huis", "open X.1: Provider=X.1;Data Source=huis"},
    {"WithAProviderAlone", L"Provider=X.1", "open X.1: Provider=X.1"},
    {"WithAProviderBehindOtherParts", L"Data Source=huis;Provider=X.1;User ID=u",
        "open X.1: Data Source=huis;Provider=X.1;User ID=u"},
    {"WithTwoProvidersByTheFirst", L"Provider=X;Provider=Y", "open X: Provider=X;Provider=Y"},
    {"WithAnEmptyProvider", L"Provider=;Data Source=huis", "open : Provider=;Data Source=huis"},
    {"WithAProviderAndAServer", L"Provider=X;Data Source=PC\\SQLEXPRESS",
        "open X: Provider=X;Data Source=PC\\SQLEXPRESS"},
    {"OfAnSqlServer", L"Data Source=PC\\SQLEXPRESS;Initial Catalog=huis",
        "open SQLNCLI: Data Source=PC\\SQLEXPRESS;Initial Catalog=huis"},
    {"OfOdbc", L"DSN=huis;UID=u", "open MSDASQL: DSN=huis;UID=u"},
    {"OfAnOdbcDriver", L"driver=SQLite3;Database=huis.sqlite",
        "open MSDASQL: driver=SQLite3;Database=huis.sqlite"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(xx_ado, ConnectionTexts, ::testing::ValuesIn(textRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

class TextsOfNoFile : public Select, public ::testing::WithParamInterface<TextRow>
{
};

TEST_P(TextsOfNoFile, AreLookedForAndNotFound)
{
    EXPECT_EQ(select(GetParam().text, L"SELECT"), "");
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(log(), "");
    EXPECT_EQ(shown(), "");
}

// clang-format off
const TextRow noFileRows[] = {
    {"WithAProviderInSmallLetters", L"provider=X;Data Source=huis", ""},
    {"WithAServerButNothingBehindIt", L"Data Source=PC\\SQLEXPRESS", ""},
    {"WithAServerInSmallLetters", L"Data Source=PC\\sqlexpress;x=y", ""},
    {"WithPartsAlone", L"Data Source=huis;User ID=u", ""},
    {"OfAnOdbcDriverForAnSqliteFile", L"Driver=SQLite3;Database=huis.db3", ""},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(xx_ado, TextsOfNoFile, ::testing::ValuesIn(noFileRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(Select, HasNoPathForAnSqliteFileInATextWithAProvider)
{
    const auto path = database(L"a.db3", kOne);
    result.append(new xx_Var(L"Oud", L"inhoud"));
    EXPECT_EQ(select(L"Provider=X;Data Source=" + path, L"SELECT A FROM T"), "Oud text: inhoud");
    EXPECT_EQ(status, 21);
    EXPECT_EQ(shown(),
              "Error in file xx__sqlite.cpp on line 137\n"
              "(S= : prepare : Library used incorrectly, ec = 21)");
    EXPECT_EQ(log(), "open X: "); // as for any name that is no SQLite file's
}

TEST_F(Select, TellsWhatToDoWithAnSqliteFileThatGoesToAProvider)
{
    database(L"here/a.sqlite", kOne);
    folder.write(L"here/a.mdb", "");
    providers.refuses = true;
    EXPECT_EQ(descriptionFor(L"a.mdb"), "refused");
    EXPECT_EQ(descriptionFor(L"a.sqlite"),
              "An SQLite file needs .db3 or .DB3 in its name. refused");
    EXPECT_EQ(descriptionFor(L"Provider=X;Data Source=a.db3"),
              "A text with .db3 in it names an SQLite file: pass the name of the file alone.");
}

TEST_F(Select, ReadsAFileWithAnSqlServersSignsInItsName)
{
    const auto path = database(L"here/x.db3", kOne);
    EXPECT_EQ(select(path + L";\\SQL", L"SELECT A FROM T"), "");
    EXPECT_EQ(status, 21); // the text is an SQL Server's, for which no file is looked for
}

TEST_F(Select, TakesNullTextsForEmptyOnes)
{
    const auto path = database(L"a.db3", kOne);
    EXPECT_EQ(xx_ado_select(nullptr, L"SELECT", &result), RTERROR);
    EXPECT_EQ(xx_ado_select(path.c_str(), nullptr, &result), RTNORM);
    EXPECT_EQ(result.length(), 0);
    EXPECT_EQ(xx_ado_select(path.c_str(), L"SELECT 1", nullptr), RTERROR);
    EXPECT_EQ(shown(), "");
}

TEST_F(Select, TakesAllRowsQuietlyUnlessToldOtherwise)
{
    const auto path = database(L"a.db3", "CREATE TABLE T(A INT); INSERT INTO T VALUES(1),(2)");
    EXPECT_EQ(xx_ado_select(path.c_str(), L"SELECT A FROM T", &result), RTNORM);
    EXPECT_EQ(columnsOf(result), "A long: 1|2");
    EXPECT_EQ(shown(), "");
}

TEST_F(Select, ReadsMoreDatabasesThanThereAreConnections)
{
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 8; ++i) {
            const std::wstring name = std::to_wstring(i) + L".db3";
            if (round == 0) {
                database(L"here/" + name,
                         "CREATE TABLE T(A INT);INSERT INTO T VALUES(" + std::to_string(i) + ")");
            }
            EXPECT_EQ(select(name, L"SELECT A FROM T"), "A long: " + std::to_string(i));
        }
    }
    EXPECT_EQ(shown(), "");
}

} // namespace

} // namespace corma::testing
