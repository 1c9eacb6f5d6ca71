#pragma once

#include "data/ComError.h"
#include "data/ado.h"

#include <optional>
#include <string>

namespace corma::testing {

/// A character that UTF-16 writes as a pair.
inline constexpr const wchar_t* kSmile = L"\U0001F600";

/// The first field of the first row of a statement.
struct FirstField
{
    std::wstring name;
    int type = 0; // of ado::Type
    int attributes = 0;
    Variant value;
};

FirstField firstField(ado::Connection& connection, const std::wstring& sql);

/// The value as the user is shown it.
std::wstring firstText(ado::Connection& connection, const std::wstring& sql);

/// The first bytes of it.
std::wstring firstChunk(ado::Connection& connection, const std::wstring& sql, int bytes);

/// Runs a statement whose rows do not matter.
void run(ado::Connection& connection, const std::wstring& sql);

/// What a statement fails with; nothing when it does not fail.
std::optional<ComError> errorOf(ado::Connection& connection, const std::wstring& sql);

/// What the opening of a connection fails with; nothing when it does not fail.
std::optional<ComError> errorOfOpening(const std::wstring& text);

/// A text repeated.
std::wstring times(int count, const std::wstring& text);

} // namespace corma::testing
