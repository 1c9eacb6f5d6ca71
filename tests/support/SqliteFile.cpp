#include "support/SqliteFile.h"

#include "platform/platform.h"

#include <sqlite3.h>
#include <stdexcept>

namespace corma::testing {

namespace {

void require(int code, sqlite3* database)
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE) {
        throw std::runtime_error(sqlite3_errmsg(database));
    }
}

} // namespace

void SqliteFile::Close::operator()(sqlite3* database) const
{
    sqlite3_close(database);
}

SqliteFile::SqliteFile(const std::wstring& path)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open(platform::toNative(path).c_str(), &opened);
    m_database.reset(opened);
    require(code, opened);
}

void SqliteFile::run(const std::string& statements)
{
    require(sqlite3_exec(m_database.get(), statements.c_str(), nullptr, nullptr, nullptr),
            m_database.get());
}

std::string SqliteFile::valueOf(const std::string& statement)
{
    sqlite3_stmt* prepared = nullptr;
    require(sqlite3_prepare_v2(m_database.get(), statement.c_str(), -1, &prepared, nullptr),
            m_database.get());
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(prepared, sqlite3_finalize);
    const int code = sqlite3_step(prepared);
    require(code, m_database.get());
    const auto* const text = code == SQLITE_ROW
        ? reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0))
        : nullptr;
    return text == nullptr ? "" : text;
}

} // namespace corma::testing
