#pragma once

// From the connection texts that name a provider to those that ODBC takes.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corma {

/// The parts of a connection text, "key=value;key=value": in order, without the blanks around them
/// and the quotes or braces around a value. A part without "=" is left out.
using ConnectionParts = std::vector<std::pair<std::wstring, std::wstring>>;
ConnectionParts connectionParts(std::wstring_view text);

/// How a provider's databases are reached through ODBC.
struct ProviderRow
{
    std::wstring provider; // "*" stands for any characters; case does not count
    std::wstring odbc; // connection text; "<Key>" stands for the value of that key
};

/// Rows of a table in a text, "provider = ODBC connection text" each. Empty lines, those that begin
/// with ";" and those without "=" are left out.
std::vector<ProviderRow> providerRows(std::wstring_view text);

/// The rows in force: those of the file "odbc_drivers.txt" where one is found as the library finds
/// files, then the built-in ones.
std::vector<ProviderRow> providerTable();

/// The ODBC text for a connection text: by the first row whose provider fits. Parts of the row for
/// whose key the text has no value are left out. A text with the key "DSN", "FILEDSN" or "Driver"
/// stands as it is, without its provider. `provider` counts when the text names none. Nothing when
/// no row fits.
std::optional<std::wstring> odbcText(std::wstring_view text, const std::wstring& provider,
                                     const std::vector<ProviderRow>& table);

} // namespace corma
