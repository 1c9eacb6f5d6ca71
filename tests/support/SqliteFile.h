#pragma once

#include <memory>
#include <string>
#include <string_view>

struct sqlite3;

namespace corma::testing {

/// An SQLite database that a test makes, with a connection of its own that may write. What fails
/// throws.
class SqliteFile
{
public:
    /// Opens the database of a path, which is made when there is none.
    explicit SqliteFile(const std::wstring& path);

    /// Runs statements in UTF-8, with ";" between.
    void run(const std::string& statements);

    /// The first value of a statement's first row as a text in UTF-8; empty without one.
    [[nodiscard]] std::string valueOf(const std::string& statement);

private:
    struct Close
    {
        void operator()(sqlite3* database) const;
    };

    std::unique_ptr<sqlite3, Close> m_database;
};

} // namespace corma::testing
