#include "data/connections.h"

#include "data/sqlite_reader.h"
#include "foundation/messages.h"
#include "platform/platform.h"
#include "platform/text.h"
#include <corma/host.h>
#include <corma/xx_ado.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <sqlite3.h>

namespace corma {

namespace {

constexpr const wchar_t* kConnectionsSource = L"xx__ado.cpp";

// Lines that reports show; support staff look them up, so they stay when the code moves.
constexpr int kOpenLine = 220;
constexpr int kPrepareLine = 225;
constexpr int kFinalizeLine = 227;

constexpr const wchar_t* kFileText = L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=%s%s%s%s;"
                                     L"Jet OLEDB:Database Password=%s";
constexpr const wchar_t* kFolderText = L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=%s%s;"
                                       L"Extended Properties=dBase IV";

// Most that a value or a statement may ask for: far above what words and lists need, and little
// enough that a made-up database cannot take all memory by one of them.
struct Limit
{
    int id;
    int most;
};

constexpr std::array kLimits = {
    Limit {SQLITE_LIMIT_LENGTH, 16 * 1024 * 1024}, // bytes of a value or row
    Limit {SQLITE_LIMIT_SQL_LENGTH, 1'000'000}, // bytes
    Limit {SQLITE_LIMIT_EXPR_DEPTH, 200},
    Limit {SQLITE_LIMIT_COMPOUND_SELECT, 100},
    Limit {SQLITE_LIMIT_ATTACHED, 0},
    Limit {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 1000},
    Limit {SQLITE_LIMIT_WORKER_THREADS, 0},
};

std::array<ConnectionSlot, kConnectionSlots>& slots()
{
    static std::array<ConnectionSlot, kConnectionSlots> all;
    return all;
}

// A file from elsewhere may be made to do harm: its views and its broken pages must not reach
// anything beyond the rows that are asked for.
void defend(sqlite3* database)
{
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    for (const Limit& limit : kLimits) {
        sqlite3_limit(database, limit.id, limit.most);
    }
}

SqliteHandle openReadOnly(const std::wstring& path, int& code)
{
    // The file's name may differ in case. A relative path could be taken for an address,
    // "file:...", which may ask for other modes.
    const platform::NativePath file = platform::locate(platform::fullPath(path));
    if (!platform::fileStamp(file)) {
        code = SQLITE_CANTOPEN; // nothing, or no regular file: a pipe would be waited for
        return nullptr;
    }
    sqlite3* opened = nullptr;
    code = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX,
                           nullptr);
    SqliteHandle database(opened); // there is one to close even when it did not open
    if (code == SQLITE_OK) {
        defend(opened);
        return database;
    }
    return nullptr;
}

// The setting takes effect when the statement is prepared: it is not run.
void preferSpeed(sqlite3* database, const std::wstring& path)
{
    sqlite3_stmt* statement = nullptr;
    const int prepared
        = sqlite3_prepare_v2(database, "PRAGMA synchronous=OFF", -1, &statement, nullptr);
    if (xx_sqlite_check(kConnectionsSource, kPrepareLine, path, L"prepare", prepared, false) == 0) {
        xx_sqlite_check(kConnectionsSource, kFinalizeLine, path, L"finalize",
                        sqlite3_finalize(statement), false);
    }
}

SqliteHandle openSqlite(const std::wstring& path, int& status)
{
    int code = 0;
    SqliteHandle database = openReadOnly(path, code);
    if (xx_sqlite_check(kConnectionsSource, kOpenLine, path, L"open", code, false) != 0) {
        status = RTERROR;
    } else {
        preferSpeed(database.get(), path);
    }
    return database;
}

bool isSqliteFile(const std::wstring& path)
{
    constexpr std::string_view kMagic("SQLite format 3\0", 16);
    std::array<char, kMagic.size()> begin {};
    std::ifstream file(platform::locate(path), std::ios::binary);
    return platform::fileStamp(platform::locate(path)) && file.read(begin.data(), begin.size())
        && std::ranges::equal(begin, kMagic);
}

// What the user can do where the name of a database sends it to a provider that cannot read it.
std::wstring adviceFor(const std::wstring& path, const std::wstring& description)
{
    if (path.empty()) {
        return L"A text with .db3 in it names an SQLite file: pass the name of the file alone.";
    }
    return (isSqliteFile(path) ? L"An SQLite file needs .db3 or .DB3 in its name. " : L"")
        + description;
}

std::unique_ptr<ado::Connection> openByProvider(const std::wstring& path,
                                                const std::wstring& provider,
                                                const Credentials& credentials, int& status)
{
    try {
        auto connection = std::make_unique<ado::Connection>();
        connection->putProvider(provider);
        connection->open(connectionText(path, credentials.password));
        return connection;
    } catch (ComError& error) {
        error.description = adviceFor(path, error.description);
        xx_dump_com_error(error);
        status = RTERROR;
        return nullptr;
    }
}

// The slot that has the path, else the one that was not used for longest.
ConnectionSlot& slotFor(const std::wstring& path)
{
    const auto hit = std::find_if(slots().begin(), slots().end(),
                                  [&](const ConnectionSlot& slot) { return slot.path == path; });
    if (hit != slots().end()) {
        return *hit;
    }
    return *std::min_element(
        slots().begin(), slots().end(),
        [](const ConnectionSlot& a, const ConnectionSlot& b) { return a.age < b.age; });
}

void fill(ConnectionSlot& slot, const std::wstring& path, const std::wstring& provider,
          const Credentials& credentials, int& status)
{
    slot.empty();
    if (isSqliteName(path)) {
        slot.sqliteDb = openSqlite(path, status);
    } else {
        slot.connection = openByProvider(path, provider, credentials, status);
    }
    if (status == RTNORM) {
        slot.path = path;
        slot.provider = provider;
    }
}

void markAsUsed(ConnectionSlot& used)
{
    for (ConnectionSlot& slot : slots()) {
        slot.age -= slot.age > 0 ? 1 : 0;
    }
    used.age = ConnectionSlot::kJustUsed;
}

// A finished connection text may name a server as HOST\INSTANCE.
bool isPath(const std::wstring& name)
{
    const bool hasDrive = name.size() > 1 && name[1] == L':';
    return hasDrive || platform::isAbsolute(name)
        || (name.find(L'\\') != std::wstring::npos && name.find(L'=') == std::wstring::npos);
}

} // namespace

void CloseSqlite::operator()(sqlite3* database) const
{
    sqlite3_close(database);
}

ConnectionSlot& connectionSlot(int index)
{
    return slots().at(static_cast<std::size_t>(index));
}

bool isSqliteName(std::wstring_view name)
{
    return name.find(L".db3") != std::wstring_view::npos
        || name.find(L".DB3") != std::wstring_view::npos;
}

std::wstring connectionText(const std::wstring& name, const std::wstring& password)
{
    if (name.empty() || !isPath(name)) {
        return name;
    }
    const platform::PathParts parts = platform::splitPath(name);
    const bool isDBase = equalIgnoringCase(parts.extension, L".dbf");
    return isDBase ? formatted(kFolderText, parts.drive.c_str(), parts.folder.c_str())
                   : formatted(kFileText, parts.drive.c_str(), parts.folder.c_str(),
                               parts.base.c_str(), parts.extension.c_str(), password.c_str());
}

} // namespace corma

int xx_ado_connection(const std::wstring& path, const std::wstring& provider, int* status,
                      const corma::Credentials& credentials)
{
    *status = RTNORM;
    corma::ConnectionSlot& slot = corma::slotFor(path);
    if (slot.path != path || slot.provider != provider) {
        corma::fill(slot, path, provider, credentials, *status);
    }
    corma::markAsUsed(slot);
    return static_cast<int>(&slot - corma::slots().data());
}

void xx_ado_close_all()
{
    for (corma::ConnectionSlot& slot : corma::slots()) {
        slot.empty();
    }
}
