#include "data/odbc/Rows.h"
#include "data/odbc/connection_inside.h"
#include "data/odbc/values.h"

#include <optional>

namespace corma::ado {

namespace {

[[noreturn]] void fail(const wchar_t* description)
{
    throw ComError {.code = kUnspecified, .source = odbc::kSource, .description = description};
}

odbc::Session& usableSession(const Connection* connection)
{
    if (connection == nullptr || !connection->inside().session) {
        fail(L"The connection is not open.");
    }
    odbc::Session& session = *connection->inside().session;
    if (session.isLost()) {
        fail(L"The connection is lost.");
    }
    return session;
}

} // namespace

/// What is in a record set.
class Recordset::Inside
{
public:
    explicit Inside(const Connection* connection)
        : m_connection(connection)
    {
    }

    void open(const std::wstring& sql)
    {
        m_rows.reset();
        m_rows.emplace(usableSession(m_connection), sql);
        if (m_rows->columns().empty()) {
            m_rows.reset();
        }
    }

    void close() { m_rows.reset(); }

    [[nodiscard]] bool isOpen() const { return m_rows.has_value(); }

    [[nodiscard]] odbc::Rows& rows()
    {
        if (!m_rows) {
            fail(L"The record set is closed.");
        }
        return *m_rows;
    }

    [[nodiscard]] const odbc::Column& column(int field)
    {
        return rows().columns().at(static_cast<std::size_t>(field));
    }

    [[nodiscard]] odbc::FieldRef field(int index)
    {
        return {.session = rows().session(), .statement = rows().statement(), .index = index};
    }

private:
    const Connection* m_connection;
    std::optional<odbc::Rows> m_rows; // none while it is closed
};

Recordset::Recordset(Connection* connection)
    : m_inside(std::make_unique<Inside>(connection))
{
}

Recordset::~Recordset() = default;

void Recordset::open(const std::wstring& sql)
{
    m_inside->open(sql);
}

int Recordset::fieldCount() const
{
    return isOpen() ? static_cast<int>(m_inside->rows().columns().size()) : 0;
}

const std::wstring& Recordset::name(int field) const
{
    return m_inside->column(field).name;
}

int Recordset::type(int field) const
{
    return m_inside->column(field).type.type;
}

int Recordset::attributes(int field) const
{
    return odbc::attributesOf(type(field));
}

bool Recordset::isAtEnd() const
{
    return !isOpen() || m_inside->rows().isAtEnd();
}

void Recordset::moveNext()
{
    m_inside->rows().moveNext();
}

Variant Recordset::value(int field)
{
    return odbc::readValue(m_inside->field(field), m_inside->column(field).type.reading);
}

Variant Recordset::chunk(int field, int bytes)
{
    return odbc::readChunk(m_inside->field(field), m_inside->column(field).type.reading, bytes);
}

bool Recordset::isOpen() const
{
    return m_inside->isOpen();
}

void Recordset::close()
{
    m_inside->close();
}

} // namespace corma::ado
