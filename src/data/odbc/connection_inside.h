#pragma once

#include "data/ado.h"
#include "data/odbc/Session.h"

#include <memory>
#include <string>

/// What is in a connection.
class corma::ado::Connection::Inside
{
public:
    std::wstring provider;
    std::unique_ptr<odbc::Session> session; // null while it is not open
};
