#include "data/odbc/Rows.h"

#include "data/odbc/sql_text.h"
#include "platform/text.h"

namespace corma::odbc {

namespace {

constexpr std::uintptr_t kStatementSeconds = 30;
constexpr std::size_t kFirstNameLength = 256; // units tried first; a longer name is asked for again

} // namespace

Rows::Rows(Session& session, const std::wstring& sql)
    : m_session(session)
    , m_statement(session.ref())
{
    run(sql);
    const int count = columnCount();
    for (int index = 0; index < count; ++index) {
        m_columns.push_back(describe(index, kFirstNameLength));
    }
    if (count > 0) {
        moveNext();
    }
}

void Rows::run(const std::wstring& sql)
{
    // Not every driver has a timeout; without one it takes as long as it likes.
    SQLSetStmtAttrW(statement(), SQL_ATTR_QUERY_TIMEOUT, asPointer(kStatementSeconds),
                    SQL_IS_UINTEGER);
    const SQLRETURN done = execute(sql);
    if (done != SQL_NO_DATA) { // which an UPDATE that changes nothing gives
        m_session.check(done, m_statement.ref());
    }
}

SQLRETURN Rows::execute(const std::wstring& sql)
{
    if (m_session.isWide()) {
        Units text = toUnits(sql);
        return SQLExecDirectW(statement(), text.data(), SQL_NTS);
    }
    std::string text = toUtf8(sql);
    return SQLExecDirect(statement(), reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS);
}

int Rows::columnCount()
{
    SQLSMALLINT count = 0;
    m_session.check(SQLNumResultCols(statement(), &count), m_statement.ref());
    return count;
}

Column Rows::describe(int index, std::size_t room)
{
    Units name(room);
    SQLSMALLINT length = 0;
    SQLSMALLINT type = SQL_UNKNOWN_TYPE;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    const SQLRETURN done = SQLDescribeColW(statement(), static_cast<SQLUSMALLINT>(index + 1),
                                           name.data(), static_cast<SQLSMALLINT>(room), &length,
                                           &type, &size, &digits, &nullable);
    m_session.check(done, m_statement.ref());
    if (const auto needed = static_cast<std::size_t>(length) + 1; length > 0 && needed > room) {
        return describe(index, needed);
    }
    return {.name = toText(untilTerminator(name)), .type = columnType(type)};
}

void Rows::moveNext()
{
    const SQLRETURN done = SQLFetch(statement());
    m_isAtEnd = true;
    if (done != SQL_NO_DATA) {
        m_session.check(done, m_statement.ref());
        m_isAtEnd = false;
    }
}

} // namespace corma::odbc
