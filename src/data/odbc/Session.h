#pragma once

#include "data/odbc/diagnostics.h"
#include "data/odbc/handles.h"
#include "data/odbc/target.h"

#include <string>

namespace corma::odbc {

/// An open connection of ODBC: opened by the constructor, which throws a ComError, and closed by
/// the destructor.
class Session
{
public:
    explicit Session(const Target& target);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() = default;

    [[nodiscard]] HandleRef ref() const { return m_connection.ref(); }

    /// The driver takes and gives all characters as UTF-16. If not, text is to be exchanged as
    /// UTF-8: for a driver without wide functions the driver manager converts, and loses
    /// characters.
    [[nodiscard]] bool isWide() const { return m_isWide; }

    /// The other side is gone.
    [[nodiscard]] bool isLost() const;

    /// Throws the ComError of a failed call on the connection or a statement of it, and keeps in
    /// mind when it tells that the other side is gone.
    void check(SQLRETURN result, HandleRef handle);

private:
    struct Link : Handle<SQL_HANDLE_DBC>
    {
        using Handle::Handle;

        ~Link() { SQLDisconnect(get()); } // without effect while it is not connected
    };

    void connect(const Target& target);
    void requireOpen(SQLRETURN result, const Target& target) const;

    Environment m_environment;
    Link m_connection;
    std::wstring m_source = kSource; // the database's own name for itself once it is open
    bool m_isWide = false;
    bool m_isKnownToBeLost = false;
};

} // namespace corma::odbc
