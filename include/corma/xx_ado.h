#pragma once

// data/ - SELECT statements on databases that are named by a plain text: SQLite files, and whatever
// the system has a database driver for.

#include <corma/export.h>

class xx_VarArray;

/// Runs a SELECT statement and gives its result as one element for each column, with one value for
/// each row. A statement that gives no row leaves the result empty.
///
/// `connection` tells the database:
/// - a file name with ".db3" or ".DB3" in it, spelled so: an SQLite database. It is opened for
///   reading only; columns declared exactly INTEGER or INT come as RTLONG (32 bits), REAL as
///   RTREAL, all others as RTSTR, a NULL in them as the text "NULL". A value above 16 MiB ends the
///   statement with code 18, a run of more than 30 s with code 9;
/// - any other file name: an Access database (a folder of dBase files for ".dbf");
/// - a text with ";" and "\SQL" in it: an SQL Server;
/// - a text with "Provider=": what that provider takes, with "Provider=MSDASQL" an ODBC connection
///   text. One that begins with "DSN=" or "Driver=" needs no provider.
/// All but the first go through ODBC; README tells how to name drivers. There, integers and
/// booleans come as RTLONG, doubles as RTREAL, all others as RTSTR, and a long text is cut to its
/// first 100 bytes in the driver's form.
/// A file name is looked for as xx_findfile_arx() does it.
///
/// `maximumRows` of 0 or less means all, but a column holds 32,760 values at most; when there are
/// more rows the user is told, and the first ones are kept. `debug` shows the statement and what is
/// read as user messages. Connections stay open for later calls, five of them; close them by
/// xx_ado_close_all(). Calls come from one thread only.
///
/// RTNORM when the statement ran; the status of the search for a file that is not found; the small
/// positive result code of SQLite for a statement that fails there, RTERROR elsewhere. Each failure
/// but the first is told to the user. A null text counts as empty; a null `result` is RTERROR.
CORMA_EXPORT int xx_ado_select(const wchar_t* connection, const wchar_t* sql, xx_VarArray* result,
                               int maximumRows = 0, bool debug = false);

/// Closes all connections that xx_ado_select() left open.
CORMA_EXPORT void xx_ado_close_all();
