#pragma once

#include "editor/AttributeUpdateForm.h"

#include <QAbstractTableModel>

namespace corma {

/// The rows of an attribute update with their check boxes. The form must live as long, and is
/// changed when a row is checked.
class AttributeRowModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        kName,
        kSource,
        kColumns
    };

    explicit AttributeRowModel(AttributeUpdateForm& form, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

    /// Checks a row that is not, and the other way round.
    void toggle(int row);

    /// Tells the views that the form has changed a row.
    void rowChanged(int row);

private:
    [[nodiscard]] const AttributeUpdateForm::Row& row(const QModelIndex& index) const;

    AttributeUpdateForm& m_form;
};

} // namespace corma
