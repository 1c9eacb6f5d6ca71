#pragma once

// Texts of the library as those of Qt.

#include "settings/texts.h"

#include <QString>

#include <string_view>

namespace corma {

inline QString toQt(std::wstring_view text)
{
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

/// The text of a row of the table in the language in force.
inline QString qtText(int row)
{
    return toQt(text(row));
}

} // namespace corma
