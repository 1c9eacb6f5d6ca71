#pragma once

// SELECT statements on SQLite files.

#include "data/Query.h"

class xx_VarArray;

/// Runs a statement on the SQLite file of a path. See xx_ado_select() for the result, which is
/// RTNORM or the result code of SQLite.
int xx_sqlite_sql(const std::wstring& path, const std::wstring& provider, const corma::Query& query,
                  xx_VarArray& result);

/// Reports a result code of SQLite that is not 0, or any with `always`: with the name of the
/// database, what was done, and what the code means. Returns the code.
int xx_sqlite_check(const wchar_t* sourceName, int line, const std::wstring& database,
                    const wchar_t* operation, int code, bool always);
