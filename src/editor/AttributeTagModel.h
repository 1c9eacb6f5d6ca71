#pragma once

#include "editor/AttributeUpdateForm.h"

#include <QAbstractListModel>

#include <vector>

namespace corma {

/// The attributes by which a row of an attribute update differs: new ones, and those too many.
class AttributeTagModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void show(std::vector<AttributeUpdateForm::Tag> tags);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    std::vector<AttributeUpdateForm::Tag> m_tags;
};

} // namespace corma
