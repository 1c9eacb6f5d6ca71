#pragma once

#include <QString>

#include <string>

namespace corma::testing {

/// For comparisons whose failure shows the text.
inline std::string utf8(const QString& text)
{
    return text.toStdString();
}

} // namespace corma::testing
