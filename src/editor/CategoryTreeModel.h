#pragma once

#include "editor/TreeContents.h"

#include <QAbstractItemModel>

namespace corma {

/// The items of the main dialog's tree. The items themselves stand elsewhere.
class CategoryTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    using QAbstractItemModel::QAbstractItemModel;

    /// Shows another tree, which lives until the next call.
    void show(const TreeContents& tree);

    /// The item at an index; null for an invalid one.
    [[nodiscard]] static const TreeContents::Item* itemAt(const QModelIndex& index);

    /// The index of an item of the tree; an invalid one for null.
    [[nodiscard]] QModelIndex indexOf(const TreeContents::Item* item) const;

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] const TreeContents::Items* itemsBelow(const QModelIndex& parent) const;

    const TreeContents* m_tree = nullptr; // null until the first one
};

} // namespace corma
