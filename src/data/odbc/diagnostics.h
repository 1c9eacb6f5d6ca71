#pragma once

// From what ODBC tells of a failed call to a ComError.

#include "data/ComError.h"
#include "data/odbc/handles.h"

#include <string>
#include <string_view>
#include <vector>

namespace corma::odbc {

/// Who tells of an error as long as no database has named itself.
inline constexpr const wchar_t* kSource = L"ODBC";

// Codes that providers give for what fails in a database.
inline constexpr std::uint32_t kStatementFailed = 0x80040E14;
inline constexpr std::uint32_t kNotAuthorised = 0x80040E4D;

struct DiagnosticRecord
{
    std::wstring state; // SQLSTATE: two characters of class and three more
    std::wstring text;
};

using Diagnosis = std::vector<DiagnosticRecord>;

/// What the last call left behind on a handle.
Diagnosis diagnosisOf(HandleRef handle);

/// True when a record says that the connection is gone, so that no further call can succeed.
bool tellsOfLoss(const Diagnosis& diagnosis);

enum class Step
{
    opening,
    running
};

/// The code for what failed at a step, by the first record that is no warning.
std::uint32_t codeOf(const Diagnosis& diagnosis, Step step);

/// All records in one text: "[SQLSTATE] text", a blank between them.
std::wstring textOf(const Diagnosis& diagnosis);

} // namespace corma::odbc
