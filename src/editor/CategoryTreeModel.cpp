#include "editor/CategoryTreeModel.h"

#include <QApplication>
#include <QStyle>

#include <algorithm>

namespace corma {

void CategoryTreeModel::show(const TreeContents& tree)
{
    beginResetModel();
    m_tree = &tree;
    endResetModel();
}

const TreeContents::Item* CategoryTreeModel::itemAt(const QModelIndex& index)
{
    return static_cast<const TreeContents::Item*>(index.internalPointer());
}

QModelIndex CategoryTreeModel::indexOf(const TreeContents::Item* item) const
{
    if (item == nullptr || m_tree == nullptr) {
        return {};
    }
    const TreeContents::Items& siblings
        = item->parent == nullptr ? m_tree->topLevel() : item->parent->children;
    const auto found = std::find_if(siblings.begin(), siblings.end(),
                                    [=](const auto& some) { return some.get() == item; });
    return found == siblings.end()
        ? QModelIndex()
        : createIndex(static_cast<int>(found - siblings.begin()), 0, item);
}

const TreeContents::Items* CategoryTreeModel::itemsBelow(const QModelIndex& parent) const
{
    if (m_tree == nullptr) {
        return nullptr;
    }
    return parent.isValid() ? &itemAt(parent)->children : &m_tree->topLevel();
}

QModelIndex CategoryTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    return createIndex(row, column, (*itemsBelow(parent))[static_cast<std::size_t>(row)].get());
}

QModelIndex CategoryTreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOf(itemAt(child)->parent) : QModelIndex();
}

int CategoryTreeModel::rowCount(const QModelIndex& parent) const
{
    const TreeContents::Items* const items = itemsBelow(parent);
    return items == nullptr ? 0 : static_cast<int>(items->size());
}

int CategoryTreeModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

QVariant CategoryTreeModel::data(const QModelIndex& index, int role) const
{
    const TreeContents::Item* const item = itemAt(index);
    if (item == nullptr) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return QString::fromStdWString(item->text);
    case Qt::DecorationRole:
        return item->isIncludedFile()
            ? QVariant(QApplication::style()->standardIcon(QStyle::SP_FileLinkIcon))
            : QVariant();
    default:
        return {};
    }
}

} // namespace corma
