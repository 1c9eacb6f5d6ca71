#pragma once

// What a connection text means to ODBC.

#include "data/odbc/handles.h"

#include <string>
#include <vector>

namespace corma::odbc {

/// Where a connection leads to.
struct Target
{
    std::wstring text {}; // that ODBC takes
    std::wstring provider {}; // as the user named it; may be empty
    std::wstring driver {}; // without braces; empty when the text names a data source instead
    std::wstring dataSource {}; // empty when the text names a driver
};

/// The target of a connection text; `provider` counts when the text names none. Throws a ComError
/// when no row of the table of providers fits.
Target targetOf(const std::wstring& text, const std::wstring& provider);

/// The names of the drivers that ODBC knows in an environment.
std::vector<std::wstring> installedDrivers(SQLHANDLE environment);

/// Throws a ComError that says what to install when the target's driver is not among the installed
/// ones. A driver that is the path of a file is not looked up.
void requireDriver(const Target& target, const std::vector<std::wstring>& installed);

} // namespace corma::odbc
