#pragma once

// The texts of the editor in their languages. A language is a primary language number: 7 German,
// 9 English, 10 Spanish, 12 French, 19 Dutch, 21 Polish, 25 Russian. Any other has the English
// texts, and so has German.

#include <corma/export.h>

#include <vector>

namespace corma {

inline constexpr int kEnglish = 9;

/// The text of a row of the table, as it stands there; empty when there is no such row. It lives as
/// long as the library.
CORMA_EXPORT const wchar_t* textOf(int row, int language);

/// The numbers of all rows, in rising order.
CORMA_EXPORT std::vector<int> textRows();

/// The language of all texts that the library shows from now on; kEnglish when a process starts. A
/// number without texts of its own is kept as it is.
CORMA_EXPORT void setTextLanguage(int language);
CORMA_EXPORT int textLanguage();

} // namespace corma
