#include "data/odbc/target.h"

#include "data/ComError.h"
#include "data/odbc/diagnostics.h"
#include "data/odbc/sql_text.h"
#include "data/providers.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corma::odbc {

namespace {

constexpr std::size_t kNameLength = 512; // units; the driver manager itself takes 100

struct DriverPackage
{
    std::wstring_view driver; // the beginning of its name
    const wchar_t* package; // of Debian
};

constexpr std::array<DriverPackage, 4> kPackages = {{
    {L"MDBTools", L"odbc-mdbtools"},
    {L"FreeTDS", L"tdsodbc"},
    {L"PostgreSQL", L"odbc-postgresql"},
    {L"SQLite", L"libsqliteodbc"},
}};

/// The value of a key, which is compared without case; empty when there is none.
std::wstring valueOf(const ConnectionParts& parts, std::wstring_view key)
{
    const auto found = std::find_if(parts.begin(), parts.end(), [&](const auto& part) {
        return equalIgnoringCase(part.first, key);
    });
    return found != parts.end() ? found->second : std::wstring();
}

std::wstring packageOf(std::wstring_view driver)
{
    for (const DriverPackage& row : kPackages) {
        if (equalIgnoringCase(driver.substr(0, row.driver.size()), row.driver)) {
            return row.package;
        }
    }
    return {};
}

bool isPath(std::wstring_view driver)
{
    return std::any_of(driver.begin(), driver.end(), platform::isSeparator);
}

[[noreturn]] void failUnregistered(std::wstring description)
{
    throw ComError {
        .code = kClassNotRegistered, .source = kSource, .description = std::move(description)};
}

// The messages begin with what is missing, since users see the first part of a long one only.

[[noreturn]] void failWithoutRow(const std::wstring& provider)
{
    failUnregistered(L"No ODBC driver is known for provider \"" + provider
                     + L"\". Name one in odbc_drivers.txt, or begin the connection with \"DSN=\" "
                       L"or \"Driver=\".");
}

[[noreturn]] void failWithoutDriver(const Target& target)
{
    std::wstring text = L"ODBC driver \"" + target.driver + L"\" is not installed";
    if (!target.provider.empty()) {
        text += L" (for provider \"" + target.provider + L"\")";
    }
    if (const std::wstring package = packageOf(target.driver); !package.empty()) {
        text += L"; Debian has it in package " + package;
    }
    failUnregistered(text + L". Another one can be named in odbc_drivers.txt.");
}

} // namespace

Target targetOf(const std::wstring& text, const std::wstring& provider)
{
    Target target;
    target.provider = valueOf(connectionParts(text), L"Provider");
    if (target.provider.empty()) {
        target.provider = provider;
    }
    auto odbc = odbcText(text, provider, providerTable());
    if (!odbc) {
        const std::wstring extended = valueOf(connectionParts(text), L"Extended Properties");
        failWithoutRow(extended.empty() ? target.provider : target.provider + L'/' + extended);
    }
    const ConnectionParts parts = connectionParts(*odbc);
    target.driver = valueOf(parts, L"Driver");
    target.dataSource = valueOf(parts, L"DSN");
    if (target.dataSource.empty()) {
        target.dataSource = valueOf(parts, L"FILEDSN");
    }
    target.text = *std::move(odbc);
    return target;
}

std::vector<std::wstring> installedDrivers(SQLHANDLE environment)
{
    std::vector<std::wstring> names;
    std::array<SQLWCHAR, kNameLength> name {};
    std::array<SQLWCHAR, kNameLength> attributes {};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT attributesLength = 0;
    const auto next = [&](SQLUSMALLINT direction) {
        return SQL_SUCCEEDED(SQLDriversW(environment, direction, name.data(), kNameLength,
                                         &nameLength, attributes.data(), kNameLength,
                                         &attributesLength));
    };
    for (bool found = next(SQL_FETCH_FIRST); found; found = next(SQL_FETCH_NEXT)) {
        names.push_back(toText(untilTerminator(name)));
    }
    return names;
}

void requireDriver(const Target& target, const std::vector<std::wstring>& installed)
{
    if (target.driver.empty() || isPath(target.driver)) {
        return;
    }
    const bool isThere
        = std::any_of(installed.begin(), installed.end(), [&](const std::wstring& name) {
              return equalIgnoringCase(name, target.driver);
          });
    if (!isThere) {
        failWithoutDriver(target);
    }
}

} // namespace corma::odbc
