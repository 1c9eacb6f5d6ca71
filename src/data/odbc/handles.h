#pragma once

// What ODBC gives, owned.

#include <cstdint>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace corma::odbc {

/// A handle of any kind, not owned: what diagnoses are asked of.
struct HandleRef
{
    SQLSMALLINT kind = SQL_HANDLE_ENV;
    SQLHANDLE handle = SQL_NULL_HANDLE;
};

/// A number in the place of a pointer, as ODBC's attributes take it.
inline SQLPOINTER asPointer(std::uintptr_t number)
{
    return reinterpret_cast<SQLPOINTER>(number); // NOLINT(performance-no-int-to-ptr): ODBC's way
}

/// Throws the ComError of a handle that could not be made from `parent`.
[[noreturn]] void failToMake(HandleRef parent);

/// A handle of a kind, freed at the end of the object.
template<SQLSMALLINT kKind> class Handle
{
public:
    explicit Handle(HandleRef parent)
    {
        if (!SQL_SUCCEEDED(SQLAllocHandle(kKind, parent.handle, &m_handle))) {
            failToMake(parent);
        }
    }

    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    ~Handle() { SQLFreeHandle(kKind, m_handle); }

    [[nodiscard]] SQLHANDLE get() const { return m_handle; }

    [[nodiscard]] HandleRef ref() const { return {kKind, m_handle}; }

private:
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

/// An environment for version 3 of ODBC.
struct Environment : Handle<SQL_HANDLE_ENV>
{
    Environment()
        : Handle(HandleRef {})
    {
        SQLSetEnvAttr(get(), SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0);
    }
};

} // namespace corma::odbc
