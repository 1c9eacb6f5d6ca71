#pragma once

// The database connections that stay open between calls.

#include "data/ado.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

struct sqlite3;

namespace corma {

struct CloseSqlite
{
    void operator()(sqlite3* database) const;
};

using SqliteHandle = std::unique_ptr<sqlite3, CloseSqlite>;

/// A place for an open connection, which it owns.
struct ConnectionSlot
{
    std::optional<std::wstring> path; // the database, as it was named; none in an empty slot
    std::wstring provider;
    std::unique_ptr<ado::Connection> connection; // null for SQLite
    SqliteHandle sqliteDb; // null for others
    std::int32_t age = 0; // kJustUsed at a use, one less at each use of another slot

    static constexpr std::int32_t kJustUsed = 10'000;

    /// Closes the connection.
    void empty() { *this = {}; }
};

inline constexpr int kConnectionSlots = 5;

/// What opens a connection beside path and provider.
struct Credentials
{
    std::wstring user {};
    std::wstring password {};
    std::wstring extra {};
};

/// The slot of an index below kConnectionSlots.
ConnectionSlot& connectionSlot(int index);

/// True for the names that mean SQLite files: those that hold ".db3" or ".DB3".
bool isSqliteName(std::wstring_view name);

/// The text that opens a database that is no SQLite file: a finished connection text as it stands,
/// for the path of a file one that names it to the provider of Access, with its folder as database
/// for ".dbf".
std::wstring connectionText(const std::wstring& name, const std::wstring& password);

} // namespace corma

/// The slot with the connection to a database, which is opened unless a slot has it: a path in use
/// with another provider is opened anew in its slot, else the slot that was not used for longest
/// gives way. `status` becomes RTNORM, or RTERROR when it cannot be opened, which is told to the
/// user; the slot is empty then, so that the next call tries again. Paths are compared exactly.
int xx_ado_connection(const std::wstring& path, const std::wstring& provider, int* status,
                      const corma::Credentials& credentials);
