#pragma once

#include "support/TempFolder.h"

#include <string>
#include <sys/types.h>

namespace corma::testing {

/// A PostgreSQL server of the test's own, in a folder that goes away with it. It listens on a free
/// port of this machine that nobody else reaches, so that any number of them run beside each other.
/// It ends with the object, and with the process whatever happens to that.
class PostgresServer
{
public:
    /// Starts it, which takes a second or two. Throws std::runtime_error, with what the server
    /// told, when it does not start. Root starts it as the user "postgres" or "nobody".
    PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;
    ~PostgresServer();

    /// Why there can be no server here; empty when its programs are installed.
    static std::string missing();

    /// Who connects needs no password. In the form of ODBC, without a driver.
    [[nodiscard]] std::wstring connectionText() const;

    /// Ends it at once, with its connections.
    void kill();

    /// Where its data are.
    [[nodiscard]] const std::wstring& folder() const { return m_folder.path(); }

    [[nodiscard]] int port() const { return m_port; }

    /// The process; 0 when it ended.
    [[nodiscard]] pid_t process() const { return m_process; }

private:
    void makeData();
    bool startOnAFreePort();

    TempFolder m_folder;
    int m_port = 0;
    pid_t m_process = 0;
};

} // namespace corma::testing
