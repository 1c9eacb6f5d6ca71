#pragma once

#include <QStringList>

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace corma {

/// Asks the user for a file, from a path or a folder on, with filters in the form of Qt. The full
/// path; nothing when the user cancels.
using FileQuestion = std::function<std::optional<std::wstring>(
    QWidget& parent, const std::wstring& start, const QStringList& filters)>;

/// Asks with a file dialog above the parent. The file need not be there.
std::optional<std::wstring> askWithFileDialog(QWidget& parent, const std::wstring& start,
                                              const QStringList& filters);

/// The filters of a setting or a question, as nameFilters() reads them, for such a question.
QStringList filtersOf(const std::wstring& filter);

} // namespace corma
