// A build without ODBC: databases other than SQLite files are refused in words.

#include "data/ado.h"
#include "support/RecordingServices.h"
#include <corma/host.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corma {

namespace {

TEST(WithoutOdbc, NoConnectionOpens)
{
    ado::Connection connection;
    connection.putProvider(L"MSDASQL");
    try {
        connection.open(L"Driver=SQLite3;Database=x");
        FAIL() << "it opened";
    } catch (const ComError& error) {
        EXPECT_EQ(error.code, 0x80040154U);
        EXPECT_EQ(error.source, L"ODBC");
        EXPECT_EQ(error.description,
                  L"This build of the library has no ODBC (CORMA_ODBC is off): "
                  L"only SQLite files can be read.");
    }
    EXPECT_FALSE(connection.isLost());
}

TEST(WithoutOdbc, NoRecordSetOpens)
{
    ado::Connection connection;
    ado::Recordset records(&connection);
    EXPECT_THROW(records.open(L"SELECT 1"), ComError);
    EXPECT_FALSE(records.isOpen());
    EXPECT_TRUE(records.isAtEnd());
    EXPECT_EQ(records.fieldCount(), 0);
    EXPECT_THROW(records.moveNext(), ComError);
    EXPECT_THROW(records.value(0), ComError);
    EXPECT_THROW(records.chunk(0, 100), ComError);
    EXPECT_THROW(static_cast<void>(records.name(0)), ComError);
    records.close();
}

TEST(WithoutOdbc, AStatementIsAnErrorThatIsTold)
{
    corma::testing::RecordingServices services;
    xx_VarArray result;
    EXPECT_EQ(xx_ado_select(L"Provider=MSDASQL;DSN=firma", L"SELECT 1", &result), RTERROR);
    EXPECT_EQ(result.length(), 0);
    EXPECT_THAT(services.allPrinted(),
                ::testing::HasSubstr(L"\tDescription = This build of the library has no ODBC"));
}

} // namespace

} // namespace corma
