#pragma once

// settings/ - stored words, which are the same in every language, shown in that of the user.

#include <corma/export.h>

#include <string>

namespace corma {

/// The translation of a stored word by the database that the ident "TranslateDB" of a configuration
/// file names; the word itself when there is no such ident, file, table, row or column. The
/// database has a table "Keys" with a column "Key" and one for each language: "F" (language number
/// 12), "G" (7), "S" (10), "N" (19), and "E" for any other number. The word goes into the statement
/// as it stands, so that an apostrophe in it breaks the statement. Problems with the database are
/// told to the user. Both files are opened anew by each call and closed behind it.
CORMA_EXPORT std::wstring translateKey(const wchar_t* configurationFile, const std::wstring& word,
                                       int language);

} // namespace corma
