#pragma once

// SELECT statements on the databases that are not SQLite files.

#include "data/Query.h"
#include "data/connections.h"

class xx_VarArray;

/// Runs a statement. See xx_ado_select() for the result.
int xx_ado_sql(const std::wstring& path, const std::wstring& provider, const corma::Query& query,
               xx_VarArray& result, const corma::Credentials& credentials);
