#include "data/odbc/Session.h"

#include "data/odbc/sql_text.h"
#include "platform/text.h"

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

// There are drivers that write the completed text without looking whether it is wanted, so that
// both ways have a place for it.
constexpr SQLSMALLINT kCompletedRoom = 1024;

SQLRETURN openWide(SQLHANDLE connection, const std::wstring& text)
{
    Units units = toUnits(text);
    std::array<SQLWCHAR, kCompletedRoom> completed {};
    SQLSMALLINT length = 0;
    return SQLDriverConnectW(connection, nullptr, units.data(), SQL_NTS, completed.data(),
                             kCompletedRoom, &length, SQL_DRIVER_NOPROMPT);
}

SQLRETURN openNarrow(SQLHANDLE connection, std::string text)
{
    std::array<SQLCHAR, kCompletedRoom> completed {};
    SQLSMALLINT length = 0;
    return SQLDriverConnect(connection, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS,
                            completed.data(), kCompletedRoom, &length, SQL_DRIVER_NOPROMPT);
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
    // A text that grows as UTF-8 has no room in the driver manager on the way to a driver without
    // wide functions: a file name would come out as another one. What kind a driver is shows only
    // when it is connected, and one with wide functions must be asked by those.
    const std::string narrow = toUtf8(target.text);
    const bool mayGrow = !isAllAscii(narrow);
    requireOpen(mayGrow ? openNarrow(m_connection.get(), narrow)
                        : openWide(m_connection.get(), target.text),
                target);
    m_isWide = carriesWideText(m_connection.get());
    if (m_isWide && mayGrow) {
        SQLDisconnect(m_connection.get());
        requireOpen(openWide(m_connection.get(), target.text), target);
    }
    m_source = nameOfDatabase(m_connection.get());
}

void Session::requireOpen(SQLRETURN result, const Target& target) const
{
    if (!SQL_SUCCEEDED(result)) {
        const Diagnosis diagnosis = diagnosisOf(ref());
        throw ComError {.code = codeOf(diagnosis, Step::opening),
                        .source = m_source,
                        .description = inWords(target) + L": " + textOf(diagnosis)};
    }
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
