#pragma once

#include <corma/settings_model.h>

#include <QAbstractTableModel>

#include <vector>

namespace corma {

/// The rows of the main dialog's list. The rows themselves stand elsewhere.
class SettingListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        kName,
        kType,
        kValue,
        kDescription,
        kColumns
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows other rows, which live until the next call.
    void show(const std::vector<SettingRow>& rows);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    const std::vector<SettingRow>* m_rows = nullptr; // null until the first ones
};

} // namespace corma
