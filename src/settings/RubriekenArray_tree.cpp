// The categories in the tree of an editor.

#include "inifile/Ident.h"
#include "settings/RubriekenArray.h"
#include "settings/texts.h"

#include <optional>

void RubriekenArray::fillTree(corma::CategoryTree& tree, bool sort)
{
    void* const former = tree.selectedItem();
    const std::optional<std::wstring> wanted
        = former == nullptr ? std::nullopt : std::optional(tree.textOf(former));
    tree.deleteAllItems();
    void* const root = tree.insertItem(corma::text(corma::row::kGeneral), nullptr);
    if (Rubriek* const head = findCategory(corma::kHeadChapter)) {
        head->setTreeItem(root);
    }
    for (std::size_t i = 1; i < m_categories.size(); ++i) {
        const std::wstring name = m_categories[i]->name();
        void* const item = tree.insertItem(name, root);
        m_categories[i]->setTreeItem(item);
        if (name == wanted) {
            tree.selectItem(item);
        }
    }
    if (tree.selectedItem() == nullptr) {
        tree.selectItem(root);
    }
    tree.expand(root);
    if (sort) {
        tree.sortChildren(root);
    }
}
