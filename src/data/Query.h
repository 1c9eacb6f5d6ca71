#pragma once

#include <chrono>
#include <string>

namespace corma {

/// A statement, and how it is to be run.
struct Query
{
    std::wstring sql {};
    int maximumRows = 0; // 0 or less: all
    bool debug = false; // shows the statement and what is read
    std::chrono::milliseconds longest = std::chrono::seconds(30); // that it may run; SQLite only

    /// One row more is to be read behind so many.
    [[nodiscard]] bool wantsMoreThan(int rows) const
    {
        return maximumRows <= 0 || rows < maximumRows;
    }
};

/// True when a column has no place for a value behind so many rows, which is then told to the user:
/// there is a row that will be left out.
bool isFull(int rows);

/// Shows a long text in lines of 79 characters below a header.
void showLongText(const wchar_t* header, const std::wstring& text);

} // namespace corma
