// The classes of ado.h for a build without ODBC: nothing opens.

#include "data/ado.h"

namespace corma::ado {

namespace {

[[noreturn]] void fail()
{
    throw ComError {.code = kClassNotRegistered,
                    .source = L"ODBC",
                    .description = L"This build of the library has no ODBC (CORMA_ODBC is off): "
                                   L"only SQLite files can be read."};
}

} // namespace

class Connection::Inside
{
};

class Recordset::Inside
{
};

Connection::Connection()
    : m_inside(std::make_unique<Inside>())
{
}

Connection::~Connection() = default;

void Connection::putProvider(const std::wstring& /*provider*/) { }

void Connection::open(const std::wstring& /*text*/)
{
    fail();
}

bool Connection::isLost() const
{
    return false;
}

Recordset::Recordset(Connection* /*connection*/)
    : m_inside(std::make_unique<Inside>())
{
}

Recordset::~Recordset() = default;

void Recordset::open(const std::wstring& /*sql*/)
{
    fail();
}

int Recordset::fieldCount() const
{
    return 0;
}

// A record set that never opens has no field to ask for.

const std::wstring& Recordset::name(int /*field*/) const
{
    fail();
}

int Recordset::type(int /*field*/) const
{
    fail();
}

int Recordset::attributes(int /*field*/) const
{
    fail();
}

bool Recordset::isAtEnd() const
{
    return true;
}

void Recordset::moveNext()
{
    fail();
}

Variant Recordset::value(int /*field*/)
{
    fail();
}

Variant Recordset::chunk(int /*field*/, int /*bytes*/)
{
    fail();
}

bool Recordset::isOpen() const
{
    return false;
}

void Recordset::close() { }

} // namespace corma::ado
