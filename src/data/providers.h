#pragma once

// From the connection texts that name a provider to those that ODBC takes.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corma {

/// The parts of a connection text, "key=value;key=value": in order, without the blanks around them
/// and the quotes ('...' or "...") or braces around a value, within which ";" and blanks belong to
/// it and two closing ones stand for one. Only one before ";" or the end closes; where none does,
/// the value goes to the end. A part without "=" is left out. The cost is linear.
using ConnectionParts = std::vector<std::pair<std::wstring, std::wstring>>;
ConnectionParts connectionParts(std::wstring_view text);

/// How a provider's databases are reached through ODBC.
struct ProviderRow
{
    std::wstring provider; // "*" stands for any characters but "/"; case does not count
    std::wstring odbc; // connection text; "<Key>" stands for the value of that key, and
                       // "<Key|Other>" for that of the first key that has one
};

/// Rows of a table in a text, "provider = ODBC connection text" each. Left out are empty lines,
/// those that begin with ";" and those without "=" or with nothing at one side of it.
std::vector<ProviderRow> providerRows(std::wstring_view text);

/// The rows in force: those of the file "odbc_drivers.txt" where one is found as the library finds
/// files, then the built-in ones.
std::vector<ProviderRow> providerTable();

/// The ODBC text for a connection text, by the first row that fits. Nothing when none does.
///
/// A row is compared with the provider that the text names, else with `provider`; with "/" and the
/// value of "Extended Properties" behind it when there is one, so that a row for the files of a
/// provider does not take the other formats that it also reads. Parts of the row with a key in "<>"
/// that has no value are left out. The case of keys does not count, of two equal ones the last
/// does, and an empty value is none. A value goes in braces, with "}" doubled, where ODBC would not
/// take it as it is: when it holds ";", begins with "{", or has blanks at an end.
///
/// A text with the key "DSN", "FILEDSN" or "Driver" stands as it is, without its provider.
std::optional<std::wstring> odbcText(std::wstring_view text, const std::wstring& provider,
                                     const std::vector<ProviderRow>& table);

} // namespace corma
