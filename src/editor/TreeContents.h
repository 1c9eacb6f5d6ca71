#pragma once

#include "settings/RubriekenArray.h"

#include <memory>
#include <string>
#include <vector>

namespace corma {

/// What the tree of the main dialog shows: the categories below their root and, above it, the files
/// that the configuration file includes. Items live as long as the object, or until deleteAllItems.
class TreeContents : public CategoryTree
{
public:
    /// An item for a category has the number 0, one for an included file its index plus this.
    static constexpr int kFirstInclude = 100;

    struct Item
    {
        std::wstring text;
        Item* parent = nullptr; // null at the top level
        int data = 0;
        bool isExpanded = false;
        std::vector<std::unique_ptr<Item>> children {};

        [[nodiscard]] bool isIncludedFile() const { return data != 0; }
    };

    using Items = std::vector<std::unique_ptr<Item>>;

    /// An empty tree in which an item of that text was selected before.
    TreeContents(std::wstring formerSelection, int language);

    /// An empty tree.
    explicit TreeContents(int language)
        : m_language(language)
    {
    }

    void* selectedItem() override { return m_selected; }

    std::wstring textOf(void* item) override;
    void deleteAllItems() override;
    void* insertItem(const std::wstring& text, void* parent) override;
    void selectItem(void* item) override;
    void expand(void* item) override;
    void sortChildren(void* item) override;

    /// Puts an included file above all others.
    void insertIncludedFile(std::wstring text, int index);

    [[nodiscard]] const Items& topLevel() const { return m_topLevel; }

    [[nodiscard]] const Item* selected() const { return m_selected; }

    /// The first item of all; null for an empty tree.
    [[nodiscard]] Item* first() const;

private:
    Items m_topLevel;
    Item* m_selected = nullptr;
    int m_language;
};

} // namespace corma
