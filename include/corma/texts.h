#pragma once

// The texts of the editor in their languages. A language is a primary language number: 7 German,
// 9 English, 10 Spanish, 12 French, 19 Dutch, 21 Polish, 25 Russian; any other has the English
// texts.

#include <corma/export.h>

#include <vector>

namespace corma {

/// The text of a row of the table; empty when there is no such row. It lives as long as the
/// library.
CORMA_EXPORT const wchar_t* textOf(int row, int language);

/// The numbers of all rows, in order.
CORMA_EXPORT std::vector<int> textRows();

/// The language of all texts that the library shows from now on; English when a process starts.
CORMA_EXPORT void setTextLanguage(int language);
CORMA_EXPORT int textLanguage();

} // namespace corma
