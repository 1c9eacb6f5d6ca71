#include "databases/PostgresTest.h"

#include "databases/OdbcDrivers.h"

#include <cstdio>
#include <memory>

namespace corma::testing {

namespace {

constexpr int kSkipped = 77; // as CMakeLists.txt tells CTest
constexpr const wchar_t* kDriver = L"PostgreSQL Unicode";

/// The server, from the first test to the last.
class ServerOfAll : public ::testing::Environment
{
public:
    void SetUp() override
    {
        try {
            server = std::make_unique<PostgresServer>();
        } catch (const std::exception& error) {
            FAIL() << error.what();
        }
    }

    void TearDown() override { server.reset(); }

    std::unique_ptr<PostgresServer> server;
};

ServerOfAll* serverOfAll = nullptr; // owned by GoogleTest

} // namespace

std::wstring PostgresTest::connectionText()
{
    return connectionText(*serverOfAll->server);
}

std::wstring PostgresTest::connectionText(const PostgresServer& server)
{
    return std::wstring(L"Driver={") + kDriver + L"};" + server.connectionText()
        + L";BoolsAsChar=0";
}

int PostgresTest::port()
{
    return serverOfAll->server->port();
}

} // namespace corma::testing

int main(int count, char** arguments)
{
    using namespace corma::testing;
    ::testing::InitGoogleTest(&count, arguments);
    for (const std::string& reason :
         {PostgresServer::missing(), missingDriver(kDriver, "odbc-postgresql")}) {
        if (!reason.empty()) {
            std::printf("skipped: %s\n", reason.c_str());
            return kSkipped;
        }
    }
    serverOfAll = new ServerOfAll;
    ::testing::AddGlobalTestEnvironment(serverOfAll);
    return RUN_ALL_TESTS();
}
