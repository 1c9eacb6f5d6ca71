#include "editor/file_question.h"

#include "editor/file_filter.h"

#include <QFileDialog>
#include <QFileInfo>

namespace corma {

std::optional<std::wstring> askWithFileDialog(QWidget& parent, const std::wstring& start,
                                              const QStringList& filters)
{
    QFileDialog dialog(&parent);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
    }
    const QFileInfo begin(QString::fromStdWString(start).replace(u'\\', u'/'));
    if (begin.isDir()) {
        dialog.setDirectory(begin.filePath());
    } else if (!start.empty() && begin.dir().exists()) {
        dialog.setDirectory(begin.path());
        dialog.selectFile(begin.fileName());
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return QDir::toNativeSeparators(dialog.selectedFiles().constFirst()).toStdWString();
}

QStringList filtersOf(const std::wstring& filter)
{
    QStringList filters;
    for (const std::wstring& one : nameFilters(filter)) {
        filters.append(QString::fromStdWString(one));
    }
    return filters;
}

} // namespace corma
