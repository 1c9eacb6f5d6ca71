#include "databases/OdbcDrivers.h"

#include "data/odbc/target.h"

#include <algorithm>

namespace corma::testing {

std::string missingDriver(std::wstring_view driver, std::string_view package)
{
    const odbc::Environment environment;
    const auto drivers = odbc::installedDrivers(environment.get());
    const bool isThere = std::find(drivers.begin(), drivers.end(), driver) != drivers.end();
    return isThere ? "" : "the package " + std::string(package) + " is not installed";
}

} // namespace corma::testing
