#include "TestDatabase.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace corma::testing {

void makeDatabase(const std::string& path, const char* statements)
{
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, statements, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    EXPECT_EQ(sqlite3_close(database), SQLITE_OK);
}

} // namespace corma::testing
