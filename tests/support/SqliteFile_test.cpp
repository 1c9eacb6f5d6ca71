#include "support/SqliteFile.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <stdexcept>

using corma::testing::SqliteFile;
using corma::testing::TempFolder;

TEST(SqliteFile, KeepsWhatWasWrittenForTheNextOne)
{
    const TempFolder folder;
    SqliteFile(folder.path(L"a.db3")).run("CREATE TABLE T(A); INSERT INTO T VALUES('één'),('b')");
    SqliteFile file(folder.path(L"a.db3"));
    EXPECT_EQ(file.valueOf("SELECT A FROM T"), "één");
    EXPECT_EQ(file.valueOf("SELECT count(*) FROM T"), "2");
    EXPECT_EQ(file.valueOf("SELECT A FROM T WHERE A='c'"), "");
    EXPECT_EQ(folder.names(), "a.db3");
}

TEST(SqliteFile, ThrowsWhenSomethingFails)
{
    const TempFolder folder;
    SqliteFile file(folder.path(L"a.db3"));
    EXPECT_THROW(file.run("CREATE NOTHING"), std::runtime_error);
    EXPECT_THROW(static_cast<void>(file.valueOf("SELECT A FROM Nowhere")), std::runtime_error);
    EXPECT_THROW(SqliteFile(folder.path(L"nowhere/a.db3")), std::runtime_error);
}
