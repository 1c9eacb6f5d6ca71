#pragma once

#include "data/ado.h"
#include "support/PostgresServer.h"

#include <gtest/gtest.h>
#include <string>

namespace corma::testing {

/// Tests over the one server of the test program.
class PostgresTest : public ::testing::Test
{
protected:
    /// The text that opens a connection to it. Booleans come as such.
    static std::wstring connectionText();

    /// The same for another server.
    static std::wstring connectionText(const PostgresServer& server);

    /// The port that it listens on.
    static int port();
};

} // namespace corma::testing
