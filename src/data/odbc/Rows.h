#pragma once

#include "data/odbc/Session.h"
#include "data/odbc/column_types.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corma::odbc {

struct Column
{
    std::wstring name;
    ColumnType type;
};

/// A statement that ran, and the rows that it gives, one after the other. What fails throws a
/// ComError.
class Rows
{
public:
    /// Runs the statement and goes to its first row.
    Rows(Session& session, const std::wstring& sql);
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;
    ~Rows() = default;

    /// The columns; none for a statement that gives no rows.
    [[nodiscard]] const std::vector<Column>& columns() const { return m_columns; }

    [[nodiscard]] bool isAtEnd() const { return m_isAtEnd; }

    void moveNext();

    [[nodiscard]] Session& session() const { return m_session; }

    [[nodiscard]] SQLHANDLE statement() const { return m_statement.get(); }

private:
    void run(const std::wstring& sql);
    [[nodiscard]] SQLRETURN execute(const std::wstring& sql);
    [[nodiscard]] int columnCount();
    [[nodiscard]] Column describe(int index, std::size_t room);

    Session& m_session;
    Handle<SQL_HANDLE_STMT> m_statement;
    std::vector<Column> m_columns;
    bool m_isAtEnd = true;
};

} // namespace corma::odbc
