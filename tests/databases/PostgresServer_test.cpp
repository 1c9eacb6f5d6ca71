#include "databases/PostgresTest.h"
#include "platform/platform.h"

#include <csignal>

namespace {

using corma::testing::PostgresServer;

TEST(PostgresServer, LeavesNeitherProcessNorFolderBehind)
{
    // It runs beside that of all tests.
    std::wstring folder;
    pid_t process = 0;
    {
        const PostgresServer server;
        folder = server.folder();
        process = server.process();
        EXPECT_TRUE(corma::platform::exists(folder + L"/data/PG_VERSION"));
        EXPECT_EQ(::kill(process, 0), 0);
    }
    EXPECT_FALSE(corma::platform::exists(folder));
    EXPECT_EQ(::kill(process, 0), -1);
}

} // namespace
