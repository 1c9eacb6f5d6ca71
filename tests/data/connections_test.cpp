#include "data/DataTest.h"
#include "data/FakeProviders.h"
#include "data/connections.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

using Slots = std::vector<std::string>;

// Every name but those of SQLite files is one of a fake provider's databases.
class Connections : public DataTest
{
protected:
    /// The slot that a database got.
    int use(const std::wstring& path, const std::wstring& provider = L"P")
    {
        return xx_ado_connection(path, provider, &status, {});
    }

    /// The paths in the slots, "-" for none.
    static Slots paths()
    {
        Slots all;
        for (int i = 0; i < kConnectionSlots; ++i) {
            const auto& path = connectionSlot(i).path;
            all.push_back(path ? toUtf8(*path) : "-");
        }
        return all;
    }

    static std::vector<int> ages()
    {
        std::vector<int> all;
        for (int i = 0; i < kConnectionSlots; ++i) {
            all.push_back(connectionSlot(i).age);
        }
        return all;
    }

    ~Connections() override { xx_ado_close_all(); } // while there are providers

    FakeProviders providers;
};

TEST_F(Connections, FillTheSlotsFromTheFirst)
{
    EXPECT_EQ(paths(), (Slots {"-", "-", "-", "-", "-"}));
    EXPECT_EQ(ages(), (std::vector {0, 0, 0, 0, 0}));
    EXPECT_EQ(use(L"a"), 0);
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(use(L"b"), 1);
    EXPECT_EQ(use(L"c"), 2);
    EXPECT_EQ(use(L"d"), 3);
    EXPECT_EQ(use(L"e"), 4);
    EXPECT_EQ(paths(), (Slots {"a", "b", "c", "d", "e"}));
    EXPECT_EQ(ages(), (std::vector {9996, 9997, 9998, 9999, 10000}));
    EXPECT_EQ(providers.log(), "open P: a\nopen P: b\nopen P: c\nopen P: d\nopen P: e");
}

TEST_F(Connections, StayOpenForTheNextUse)
{
    use(L"a");
    use(L"b");
    providers.log();
    EXPECT_EQ(use(L"a"), 0);
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(providers.log(), "");
    EXPECT_EQ(ages(), (std::vector {10000, 9999, 0, 0, 0}));
}

TEST_F(Connections, KeepOnlyOneOfThemYoungest)
{
    use(L"a");
    use(L"a");
    EXPECT_EQ(ages(), (std::vector {10000, 0, 0, 0, 0}));
    use(L"b");
    use(L"b");
    EXPECT_EQ(ages(), (std::vector {9998, 10000, 0, 0, 0}));
}

TEST_F(Connections, GiveWayWhenTheyWereNotUsedForLongest)
{
    for (const wchar_t* path : {L"a", L"b", L"c", L"d", L"e", L"a", L"c"}) {
        use(path);
    }
    providers.log();
    EXPECT_EQ(use(L"f"), 1);
    EXPECT_EQ(providers.log(), "close b\nopen P: f");
    EXPECT_EQ(paths(), (Slots {"a", "f", "c", "d", "e"}));
    EXPECT_EQ(use(L"b"), 3);
    EXPECT_EQ(providers.log(), "close d\nopen P: b");
}

TEST_F(Connections, GiveWayAtTheFirstOfEqualAges)
{
    for (const wchar_t* path : {L"a", L"b", L"c", L"d", L"e"}) {
        use(path);
    }
    connectionSlot(2).age = 7;
    connectionSlot(4).age = 7;
    EXPECT_EQ(use(L"f"), 2);
    EXPECT_EQ(use(L"g"), 4);
}

TEST_F(Connections, StopAgeingAtZero)
{
    use(L"a");
    connectionSlot(0).age = 2;
    for (int i = 0; i < 5; ++i) {
        use(L"b");
    }
    EXPECT_EQ(ages(), (std::vector {0, 10000, 0, 0, 0}));
    EXPECT_EQ(paths(), (Slots {"a", "b", "-", "-", "-"}));
}

TEST_F(Connections, OfAPathWithAnotherProviderAreOpenedAnewInTheirSlot)
{
    use(L"a");
    use(L"b");
    use(L"c");
    providers.log();
    EXPECT_EQ(use(L"b", L"Q"), 1);
    EXPECT_EQ(providers.log(), "close b\nopen Q: b");
    EXPECT_EQ(connectionSlot(1).provider, L"Q");
    EXPECT_EQ(paths(), (Slots {"a", "b", "c", "-", "-"}));
    EXPECT_EQ(use(L"b", L"q"), 1);
    EXPECT_EQ(providers.log(), "close b\nopen q: b");
}

TEST_F(Connections, AreToldApartByTheCaseOfTheirPaths)
{
    EXPECT_EQ(use(L"a"), 0);
    EXPECT_EQ(use(L"A"), 1);
    EXPECT_EQ(use(L"a"), 0);
    EXPECT_EQ(providers.log(), "open P: a\nopen P: A");
}

TEST_F(Connections, HaveAnEmptyPathToo)
{
    EXPECT_EQ(use(L""), 0);
    EXPECT_EQ(use(L""), 0);
    EXPECT_EQ(providers.log(), "open P: ");
}

TEST_F(Connections, AreAllClosedAtOnce)
{
    use(L"a");
    use(L"b");
    use(database(L"c.db3", "CREATE TABLE T(A)"));
    ASSERT_NE(connectionSlot(2).sqliteDb, nullptr);
    providers.log();
    xx_ado_close_all();
    EXPECT_EQ(providers.log(), "close a\nclose b");
    EXPECT_EQ(paths(), (Slots {"-", "-", "-", "-", "-"}));
    EXPECT_EQ(ages(), (std::vector {0, 0, 0, 0, 0}));
    EXPECT_EQ(connectionSlot(2).sqliteDb, nullptr);
    xx_ado_close_all();
    EXPECT_EQ(use(L"b"), 0);
}

TEST_F(Connections, ThatFailToOpenAreTriedAgain)
{
    providers.refuses = true;
    EXPECT_EQ(use(L"a"), 0);
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(paths(), (Slots {"-", "-", "-", "-", "-"}));
    EXPECT_EQ(connectionSlot(0).connection, nullptr);
    EXPECT_EQ(shown(),
              "\nxx_dump_com_error!\n\n"
              "\tCode = 80004005\n\n"
              "\tCode meaning = Unspecified error\n\n"
              "\tSource = Fake\n\n"
              "\tDescription = refused\n");
    providers.refuses = false;
    providers.log();
    use(L"a");
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(providers.log(), "open P: a");
}

TEST_F(Connections, ThatFailToOpenWithAnotherProviderAreGone)
{
    use(L"a");
    providers.refuses = true;
    EXPECT_EQ(use(L"a", L"Q"), 0);
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(paths(), (Slots {"-", "-", "-", "-", "-"}));
    EXPECT_EQ(providers.log(), "open P: a\nclose a\nopen Q: a");
}

TEST_F(Connections, AreOpenedWithTheirConnectionText)
{
    xx_ado_connection(L"/huis/deuren.mdb", L"P", &status, {.password = L"geheim"});
    EXPECT_EQ(providers.log(),
              "open P: Provider=Microsoft.ACE.OLEDB.12.0;"
              "Data Source=/huis/deuren.mdb;"
              "Jet OLEDB:Database Password=geheim");
}

// --- SQLite files --------------------------------------------------------------------------------

TEST_F(Connections, ToSqliteFilesHaveAHandle)
{
    const auto path = database(L"a.db3", "CREATE TABLE T(A)");
    EXPECT_EQ(use(path), 0);
    EXPECT_EQ(status, RTNORM);
    EXPECT_NE(connectionSlot(0).sqliteDb, nullptr);
    EXPECT_EQ(connectionSlot(0).connection, nullptr);
    const sqlite3* const handle = connectionSlot(0).sqliteDb.get();
    use(path);
    EXPECT_EQ(connectionSlot(0).sqliteDb.get(), handle);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(providers.log(), "");
}

TEST_F(Connections, ToASqliteFileThatDoesNotOpenAreReported)
{
    EXPECT_EQ(use(folder.path(L"nergens.db3")), 0);
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(shown(),
              "Error in file xx__ado.cpp on line 220\n"
              "(S=~/nergens.db3 : open : Unable to open the database file, ec = 14)");
    EXPECT_EQ(paths(), (Slots {"-", "-", "-", "-", "-"}));
    EXPECT_EQ(folder.names(), ""); // none is made
}

TEST_F(Connections, ToASqliteFileOpenWhenItHasCome)
{
    use(folder.path(L"a.db3"));
    const auto path = database(L"a.db3", "CREATE TABLE T(A)");
    const int slot = use(path);
    EXPECT_EQ(status, RTNORM);
    EXPECT_NE(connectionSlot(slot).sqliteDb, nullptr);
}

TEST_F(Connections, AreToSqliteFilesByTwoSpellingsAnywhereInTheName)
{
    struct Row
    {
        const wchar_t* name;
        bool isSqlite;
    };

    for (const Row& row :
         {Row {L"a.db3", true}, Row {L"a.DB3", true}, Row {L"a.Db3", false}, Row {L"a.dB3", false},
          Row {L"a.db", false}, Row {L"db3", false}, Row {L".db3", true}, Row {L"", false},
          Row {L"a.db3.bak", true}, Row {L"a.DB3;x", true}, Row {L"x.db3/a.mdb", true},
          Row {L"a.db³", false}}) {
        EXPECT_EQ(isSqliteName(row.name), row.isSqlite) << toUtf8(row.name);
    }
}

// --- connection texts ----------------------------------------------------------------------------

struct ConnectionTextRow
{
    const char* sentence;
    const wchar_t* name;
    const wchar_t* text;
};

class ConnectionText : public ::testing::TestWithParam<ConnectionTextRow>
{
};

TEST_P(ConnectionText, IsMadeFromTheName)
{
    const bool isFinished = std::wstring_view(GetParam().name) == GetParam().text;
    EXPECT_EQ(toUtf8(connectionText(GetParam().name, L"pw")),
              toUtf8(isFinished ? GetParam().text : platform::nativeSeparators(GetParam().text)));
}

#define FILE_TEXT(file)                                                                            \
    L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=" file L";Jet OLEDB:Database Password=pw"
#define FOLDER_TEXT(folder)                                                                        \
    L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=" folder L";Extended Properties=dBase IV"

// clang-format off
const ConnectionTextRow connectionTextRows[] = {
    {"NothingForNothing", L"", L""},
    {"AFinishedTextAsItStands", L"Provider=X;Data Source=huis", L"Provider=X;Data Source=huis"},
    {"AFinishedTextWithAFileAsItStands",
        L"Provider=X;Data Source=C:\\huis\\a.mdb", L"Provider=X;Data Source=C:\\huis\\a.mdb"},
    {"AServerAndItsInstanceAsTheyStand", L"Server=PC\\SQLEXPRESS;Database=huis",
        L"Server=PC\\SQLEXPRESS;Database=huis"},
    {"ABareNameAsItStands", L"huis.mdb", L"huis.mdb"},
    {"OneLetterAsItStands", L"C", L"C"},
    {"ADriveAndAFile", L"C:huis.mdb", FILE_TEXT(L"C:huis.mdb")},
    {"ADriveAlone", L"C:", FILE_TEXT(L"C:")},
    {"AFullPath", L"C:\\data\\huis.mdb", FILE_TEXT(L"C:\\data\\huis.mdb")},
    {"AFullPathWithoutAnExtension", L"C:\\data\\huis", FILE_TEXT(L"C:\\data\\huis")},
    {"AFullPathWithTwoDots", L"C:\\da.ta\\hu.is.accdb", FILE_TEXT(L"C:\\da.ta\\hu.is.accdb")},
    {"APathOnAServer", L"\\\\pc\\deel\\huis.mdb", FILE_TEXT(L"\\\\pc\\deel\\huis.mdb")},
    {"AFolderAndAFile", L"data\\huis.mdb", FILE_TEXT(L"data\\huis.mdb")},
    {"APathFromTheRoot", L"/data/huis.mdb", FILE_TEXT(L"/data/huis.mdb")},
    {"LettersOutsideAscii", L"C:\\données\\été.mdb", FILE_TEXT(L"C:\\données\\été.mdb")},
    {"APerCentSign", L"C:\\100%s\\a.mdb", FILE_TEXT(L"C:\\100%s\\a.mdb")},
    {"TheFolderOfADBaseFile", L"C:\\data\\huis.dbf", FOLDER_TEXT(L"C:\\data\\")},
    {"TheFolderOfADBaseFileInCapitals", L"C:\\data\\huis.DBF", FOLDER_TEXT(L"C:\\data\\")},
    {"TheFolderOfADBaseFileFromTheRoot", L"/data/huis.dBf", FOLDER_TEXT(L"/data/")},
    {"AnExtensionThatOnlyBeginsSo", L"C:\\data\\huis.dbfx", FILE_TEXT(L"C:\\data\\huis.dbfx")},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(connections, ConnectionText, ::testing::ValuesIn(connectionTextRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST(ConnectionText, HasAnEmptyPasswordWithoutOne)
{
    EXPECT_EQ(connectionText(L"C:a.mdb", L""),
              L"Provider=Microsoft.ACE.OLEDB.12.0;"
              L"Data Source=C:a.mdb;Jet OLEDB:Database Password=");
}

} // namespace

} // namespace corma::testing
