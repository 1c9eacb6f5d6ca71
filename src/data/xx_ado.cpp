#include "data/ado_reader.h"
#include "data/sqlite_reader.h"
#include "foundation/at_boundary.h"
#include "foundation/wide_text.h"
#include "foundation/xx_findf.h"
#include "platform/text.h"
#include <corma/host.h>
#include <corma/xx_ado.h>

#include <array>

namespace {

constexpr const wchar_t* kAdoSource = L"xx__ado.cpp";

constexpr std::wstring_view kProviderKey = L"Provider=";
constexpr const wchar_t* kSqlServer = L"SQLNCLI";
constexpr const wchar_t* kAccess = L"Microsoft.ACE.OLEDB.12.0";
constexpr const wchar_t* kOdbc = L"MSDASQL";

constexpr std::size_t kPathSize = 261;

/// What a connection text names.
struct Source
{
    std::wstring provider;
    std::wstring file {}; // that was found; empty for what is no file
    int status = RTNORM; // of the search for the file
};

bool isSqlServer(std::wstring_view text)
{
    return text.find(L';') != std::wstring_view::npos
        && text.find(L"\\SQL") != std::wstring_view::npos;
}

// Such a text is complete without a provider. As SQLite files are told by their extension wherever
// it stands, one that names such a file is not taken for it.
bool isOdbcText(const std::wstring& text)
{
    for (const std::wstring_view key : {L"DSN=", L"FILEDSN=", L"Driver="}) {
        if (corma::equalIgnoringCase(text.substr(0, key.size()), key)) {
            return !corma::isSqliteName(text);
        }
    }
    return false;
}

Source sourceOf(const std::wstring& text)
{
    const std::size_t provider = text.find(kProviderKey);
    if (provider != std::wstring::npos) {
        const std::size_t begin = provider + kProviderKey.size();
        return {text.substr(begin, text.find(L';', begin) - begin)};
    }
    if (isSqlServer(text)) {
        return {kSqlServer};
    }
    std::array<wchar_t, kPathSize + 1> found {};
    const int status = xx_findfile(text.c_str(), found.data(), kPathSize);
    if (status != RTNORM && isOdbcText(text)) {
        return {kOdbc};
    }
    return {kAccess, found.data(), status};
}

int select(const std::wstring& connection, const corma::Query& query, xx_VarArray& result)
{
    const Source source = sourceOf(connection);
    if (source.status != RTNORM) {
        return source.status;
    }
    if (corma::isSqliteName(connection)) {
        return xx_sqlite_sql(source.file, source.provider, query, result);
    }
    return xx_ado_sql(source.file.empty() ? connection : source.file, source.provider, query,
                      result, {});
}

} // namespace

int xx_ado_select(const wchar_t* connection, const wchar_t* sql, xx_VarArray* result,
                  int maximumRows, bool debug)
{
    return corma::atBoundary(kAdoSource, __LINE__, RTERROR, [&] {
        if (result == nullptr) {
            return RTERROR;
        }
        const std::wstring text(corma::view(connection));
        return select(text, {std::wstring(corma::view(sql)), maximumRows, debug}, *result);
    });
}
