// What users are told when a connection cannot be opened. No database is needed for that.

#include "data/odbc/target.h"
#include "databases/OdbcDrivers.h"
#include "databases/reading.h"
#include "support/RecordingServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corma {

namespace {

using corma::testing::errorOf;
using corma::testing::errorOfOpening;
using corma::testing::RecordingServices;

constexpr std::uint32_t kNotRegistered = 0x80040154;
constexpr std::uint32_t kOtherTrouble = 0x80004005;

struct MissingRow
{
    const char* sentence;
    odbc::Target target;
    const wchar_t* description;
};

class MissingDriver : public ::testing::TestWithParam<MissingRow>
{
};

TEST_P(MissingDriver, IsNamedWithWhatHelps)
{
    try {
        odbc::requireDriver(GetParam().target, {L"Other"});
        FAIL() << "it was found";
    } catch (const ComError& error) {
        EXPECT_EQ(error.code, kNotRegistered);
        EXPECT_EQ(error.source, L"ODBC");
        EXPECT_EQ(error.description, GetParam().description);
        EXPECT_LE(error.description.size(), 240U) << "the message is cut behind that";
    }
}

INSTANTIATE_TEST_SUITE_P(
    Opening, MissingDriver,
    ::testing::Values(
        MissingRow {
            "OfAccess",
            {.provider = L"Microsoft.ACE.OLEDB.12.0", .driver = L"MDBTools"},
            L"ODBC driver \"MDBTools\" is not installed (for provider "
            L"\"Microsoft.ACE.OLEDB.12.0\"); Debian has it in package odbc-mdbtools. Another "
            L"one can be named in odbc_drivers.txt."},
        MissingRow {"OfSqlServer",
                    {.provider = L"SQLNCLI", .driver = L"FreeTDS"},
                    L"ODBC driver \"FreeTDS\" is not installed (for provider \"SQLNCLI\"); Debian "
                    L"has it in package tdsodbc. Another one can be named in odbc_drivers.txt."},
        MissingRow {
            "OfPostgres",
            {.driver = L"postgresql unicode"},
            L"ODBC driver \"postgresql unicode\" is not installed; Debian has it in package "
            L"odbc-postgresql. Another one can be named in odbc_drivers.txt."},
        MissingRow {"OfSqlite",
                    {.driver = L"SQLite3"},
                    L"ODBC driver \"SQLite3\" is not installed; Debian has it in package "
                    L"libsqliteodbc. Another one can be named in odbc_drivers.txt."},
        MissingRow {
            "ThatIsUnknown",
            {.provider = L"Firma", .driver = L"Firma 12"},
            L"ODBC driver \"Firma 12\" is not installed (for provider \"Firma\"). Another one "
            L"can be named in odbc_drivers.txt."}),
    [](const auto& row) { return row.param.sentence; });

TEST(Opening, ADriverIsFoundInAnyCase)
{
    EXPECT_NO_THROW(odbc::requireDriver({.driver = L"freeTDS"}, {L"Other", L"FreeTDS"}));
}

TEST(Opening, ADriverThatIsAFileIsNotLookedUp)
{
    EXPECT_NO_THROW(odbc::requireDriver({.driver = L"/opt/firma/driver.so"}, {}));
    EXPECT_NO_THROW(odbc::requireDriver({.driver = L"C:\\firma\\driver.dll"}, {}));
}

TEST(Opening, ADataSourceNeedsNoDriver)
{
    EXPECT_NO_THROW(odbc::requireDriver({.dataSource = L"firma"}, {}));
}

TEST(Opening, AProviderThatNobodyKnowsIsNamed)
{
    const RecordingServices services;
    const auto error = errorOfOpening(L"Provider=Firma.9;Data Source=x");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, kNotRegistered);
    EXPECT_EQ(error->source, L"ODBC");
    EXPECT_EQ(error->description,
              L"No ODBC driver is known for provider \"Firma.9\". Name one in odbc_drivers.txt, or "
              L"begin the connection with \"DSN=\" or \"Driver=\".");
}

TEST(Opening, AFormatThatNobodyKnowsIsNamedWithItsProvider)
{
    const RecordingServices services;
    const auto error = errorOfOpening(
        L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=/x/;Extended Properties=dBase IV");
    ASSERT_TRUE(error);
    EXPECT_THAT(error->description,
                ::testing::StartsWith(L"No ODBC driver is known for provider "
                                      L"\"Microsoft.ACE.OLEDB.12.0/dBase IV\"."));
}

TEST(Opening, ADriverThatIsNotInstalledIsNamed)
{
    const RecordingServices services;
    const auto error = errorOfOpening(L"Driver={Firma 12};Database=x");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, kNotRegistered);
    EXPECT_EQ(error->description,
              L"ODBC driver \"Firma 12\" is not installed. Another one can be "
              L"named in odbc_drivers.txt.");
}

TEST(Opening, ADriverFileThatIsNotThereIsNamed)
{
    const RecordingServices services;
    const auto error = errorOfOpening(L"Driver=/nowhere/firma.so;Database=x");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, kOtherTrouble);
    EXPECT_THAT(error->description,
                ::testing::StartsWith(L"driver \"/nowhere/firma.so\": [01000]"));
}

TEST(Opening, ADataSourceWithoutEntryIsNamed)
{
    const RecordingServices services;
    for (const wchar_t* const text : {L"DSN=firma", L"Provider=MSDASQL;DSN=firma"}) {
        const auto error = errorOfOpening(text);
        ASSERT_TRUE(error) << text;
        EXPECT_EQ(error->code, kOtherTrouble);
        EXPECT_EQ(error->source, L"ODBC");
        EXPECT_THAT(error->description, ::testing::StartsWith(L"data source \"firma\": [IM002] "));
    }
}

TEST(Opening, AFileOfADataSourceThatIsNotThereIsNamed)
{
    const RecordingServices services;
    const auto error = errorOfOpening(L"FILEDSN=/nowhere/firma.dsn");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, kOtherTrouble);
    EXPECT_THAT(error->description,
                ::testing::StartsWith(L"data source \"/nowhere/firma.dsn\": ["));
}

TEST(Opening, ThePasswordIsNotTold)
{
    const RecordingServices services;
    for (const wchar_t* const text : {L"DSN=firma;UID=jan;PWD=geheim", L"Driver=Firma;PWD=geheim",
                                      L"Driver=/nowhere/firma.so;PWD=geheim"}) {
        const auto error = errorOfOpening(text);
        ASSERT_TRUE(error) << text;
        EXPECT_THAT(error->description, ::testing::Not(::testing::HasSubstr(L"geheim")));
    }
}

TEST(Opening, ARecordSetNeedsAnOpenConnection)
{
    ado::Recordset unconnected(nullptr);
    EXPECT_THROW(unconnected.open(L"SELECT 1"), ComError);
    EXPECT_FALSE(unconnected.isOpen());

    ado::Connection connection;
    EXPECT_FALSE(connection.isLost());
    const auto error = errorOf(connection, L"SELECT 1");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, kOtherTrouble);
    EXPECT_EQ(error->description, L"The connection is not open.");
}

TEST(Opening, AClosedRecordSetHasNothing)
{
    ado::Recordset records(nullptr);
    EXPECT_EQ(records.fieldCount(), 0);
    EXPECT_TRUE(records.isAtEnd());
    EXPECT_THROW(records.moveNext(), ComError);
    EXPECT_THROW(records.value(0), ComError);
    records.close();
    EXPECT_FALSE(records.isOpen());
}

TEST(OdbcDrivers, ADriverThatIsMissingIsToldByItsPackage)
{
    EXPECT_EQ(corma::testing::missingDriver(L"Firma 12", "firma-odbc"),
              "the package firma-odbc is not installed");
}

} // namespace

} // namespace corma
