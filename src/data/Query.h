#pragma once

#include <string>

namespace corma {

/// A statement, and how it is to be run.
struct Query
{
    std::wstring sql {};
    int maximumRows = 0; // 0 or less: all
    bool debug = false; // shows the statement and what is read
};

/// Shows a long text in lines of 79 characters below a header.
void showLongText(const wchar_t* header, const std::wstring& text);

} // namespace corma
