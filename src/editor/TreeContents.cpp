#include "editor/TreeContents.h"

#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace corma {

namespace {

TreeContents::Item* itemOf(void* item)
{
    return static_cast<TreeContents::Item*>(item);
}

std::unique_ptr<TreeContents::Item> newItem(std::wstring text, TreeContents::Item* parent)
{
    auto item = std::make_unique<TreeContents::Item>();
    item->text = std::move(text);
    item->parent = parent;
    return item;
}

} // namespace

TreeContents::TreeContents(std::wstring formerSelection, int language)
    : m_language(language)
{
    m_topLevel.push_back(newItem(std::move(formerSelection), nullptr));
    m_selected = m_topLevel.front().get();
}

std::wstring TreeContents::textOf(void* item)
{
    return itemOf(item)->text;
}

void TreeContents::deleteAllItems()
{
    m_selected = nullptr;
    m_topLevel.clear();
}

// A category has nothing to unfold, so it counts as unfolded: the key that unfolds goes on to the
// list there.
void* TreeContents::insertItem(const std::wstring& text, void* parent)
{
    Item* const above = itemOf(parent);
    Items& siblings = above == nullptr ? m_topLevel : above->children;
    siblings.push_back(newItem(text, above));
    siblings.back()->isExpanded = above != nullptr;
    return siblings.back().get();
}

void TreeContents::selectItem(void* item)
{
    m_selected = itemOf(item);
}

void TreeContents::expand(void* item)
{
    itemOf(item)->isExpanded = true;
}

void TreeContents::sortChildren(void* item)
{
    const TextOrder order(m_language);
    std::vector<std::pair<std::string, std::unique_ptr<Item>>> sorted;
    Items& children = itemOf(item)->children;
    sorted.reserve(children.size());
    for (auto& child : children) {
        std::string key = order.key(child->text);
        sorted.emplace_back(std::move(key), std::move(child));
    }
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(sorted.begin(), sorted.end(), children.begin(),
                   [](auto& pair) { return std::move(pair.second); });
}

void TreeContents::insertIncludedFile(std::wstring text, int index)
{
    auto item = newItem(std::move(text), nullptr);
    item->data = index + kFirstInclude;
    m_topLevel.insert(m_topLevel.begin(), std::move(item));
}

TreeContents::Item* TreeContents::first() const
{
    return m_topLevel.empty() ? nullptr : m_topLevel.front().get();
}

} // namespace corma
