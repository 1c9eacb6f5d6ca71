#include "data/odbc/Session.h"

#include "data/odbc/sql_text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace corma::odbc {

namespace {

constexpr std::uintptr_t kLoginSeconds = 15;
constexpr SQLUSMALLINT kNames[] = {SQL_DBMS_NAME, SQL_DRIVER_NAME}; // the better one first

/// What the database calls itself, such as "PostgreSQL"; else the file of its driver.
std::wstring nameOfDatabase(SQLHANDLE connection)
{
    for (const SQLUSMALLINT question : kNames) {
        std::array<SQLWCHAR, SQL_MAX_MESSAGE_LENGTH> name {};
        SQLSMALLINT bytes = 0;
        const SQLRETURN done = SQLGetInfoW(connection, question, name.data(),
                                           static_cast<SQLSMALLINT>(sizeof(name)), &bytes);
        if (SQL_SUCCEEDED(done) && name[0] != 0) {
            return toText(untilTerminator(name));
        }
    }
    return kSource;
}

/// Whether a text survives the way through the driver and back. It has characters of one, two and
/// four bytes in UTF-8.
bool carriesWideText(SQLHANDLE connection)
{
    Units text = toUnits(L"SELECT '\u00E9\U0001F600'");
    std::array<SQLWCHAR, 256> native {};
    SQLINTEGER length = 0;
    const SQLRETURN done = SQLNativeSqlW(connection, text.data(), SQL_NTS, native.data(),
                                         static_cast<SQLINTEGER>(native.size()), &length);
    const auto back = untilTerminator(native);
    return SQL_SUCCEEDED(done)
        && std::equal(back.begin(), back.end(), text.begin(), text.end() - 1);
}

/// The target in words for a message, without its password.
std::wstring inWords(const Target& target)
{
    return target.driver.empty() ? L"data source \"" + target.dataSource + L"\""
                                 : L"driver \"" + target.driver + L"\"";
}

} // namespace

Session::Session(const Target& target)
    : m_connection(m_environment.ref())
{
    requireDriver(target, installedDrivers(m_environment.get()));
    connect(target);
}

void Session::connect(const Target& target)
{
    // Not every driver has a timeout; without one it waits as long as it likes.
    SQLSetConnectAttrW(m_connection.get(), SQL_ATTR_LOGIN_TIMEOUT, asPointer(kLoginSeconds),
                       SQL_IS_UINTEGER);
    Units text = toUnits(target.text);
    // There are drivers that write the completed text without looking whether it is wanted.
    std::array<SQLWCHAR, 1024> completed {};
    SQLSMALLINT length = 0;
    const SQLRETURN done
        = SQLDriverConnectW(m_connection.get(), nullptr, text.data(), SQL_NTS, completed.data(),
                            completed.size(), &length, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(done)) {
        const Diagnosis diagnosis = diagnosisOf(ref());
        throw ComError {.code = codeOf(diagnosis, Step::opening),
                        .source = m_source,
                        .description = inWords(target) + L": " + textOf(diagnosis)};
    }
    m_source = nameOfDatabase(m_connection.get());
    m_isWide = carriesWideText(m_connection.get());
}

bool Session::isLost() const
{
    if (m_isKnownToBeLost) {
        return true;
    }
    SQLUINTEGER dead = SQL_CD_FALSE;
    const SQLRETURN done = SQLGetConnectAttrW(m_connection.get(), SQL_ATTR_CONNECTION_DEAD, &dead,
                                              SQL_IS_UINTEGER, nullptr);
    return SQL_SUCCEEDED(done) && dead == SQL_CD_TRUE;
}

void Session::check(SQLRETURN result, HandleRef handle)
{
    if (SQL_SUCCEEDED(result)) {
        return;
    }
    const Diagnosis diagnosis = diagnosisOf(handle);
    m_isKnownToBeLost = m_isKnownToBeLost || tellsOfLoss(diagnosis);
    throw ComError {.code = codeOf(diagnosis, Step::running),
                    .source = m_source,
                    .description = textOf(diagnosis)};
}

} // namespace corma::odbc
