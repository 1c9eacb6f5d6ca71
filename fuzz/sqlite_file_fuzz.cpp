#include "data/sqlite_reader.h"
#include "fuzz_support.h"
#include "platform/platform.h"
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using namespace corma;

constexpr const wchar_t* kStatements[] = {
    L"SELECT * FROM Keys WHERE Key='deur'",
    L"SELECT rowid,* FROM Keys ORDER BY E",
    L"SELECT * FROM sqlite_master",
};

constexpr int kLastCode = 26; // of those by which SQLite tells a failure

void checkColumns(const xx_VarArray& result, int maximumRows)
{
    for (int i = 0; i < result.length(); ++i) {
        const xx_Var& column = *result[i];
        fuzzing::require(column.name() != nullptr && column.count == result[0]->count);
        fuzzing::require(0 < column.count && column.count <= maximumRows);
        fuzzing::require(column.type == RTLONG || column.type == RTREAL || column.type == RTSTR);
        for (int row = 0; row < column.count && column.type == RTSTR; ++row) {
            fuzzing::require(column.values[row].rstring != nullptr);
        }
    }
}

std::string contentOf(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

/// The input is an SQLite file. Statements on it end by a status, with columns that are equally
/// long, and leave it as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int kMaximumRows = 1000;
    static fuzzing::SilentServices services;
    static const fuzzing::MemoryFolder folder;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    folder.write("a.db3", bytes);
    const std::wstring path = platform::fromNative(folder.path("a.db3"));
    for (const wchar_t* sql : kStatements) {
        xx_VarArray result;
        const int status
            = xx_sqlite_sql(path, L"", {.sql = sql, .maximumRows = kMaximumRows}, result);
        fuzzing::require(status == RTNORM || (0 < status && status <= kLastCode));
        checkColumns(result, kMaximumRows);
    }
    xx_ado_close_all();
    folder.remove("a.db3-wal"); // what a file with a log has beside it would count for the next
    folder.remove("a.db3-shm");
    fuzzing::require(contentOf(folder.path("a.db3")) == bytes);
    return 0;
}
