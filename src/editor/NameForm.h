#pragma once

#include "editor/DeskView.h"
#include "editor/TreeContents.h"

#include <optional>
#include <string>
#include <vector>

namespace corma {

/// The dialog for a new name without its widgets. A category can be a copy of one that the tree
/// shows; whether the name is any good is for the one who asks.
class NameForm
{
public:
    /// Takes what it needs of the tree, in the language in force.
    NameForm(const TreeContents& tree, NameOf what);

    /// True for a category; the rest of these has no meaning for a setting.
    [[nodiscard]] bool offersCopy() const { return m_offersCopy; }

    /// What can be copied, from the top: the root of the categories, then those below it.
    [[nodiscard]] const std::vector<std::wstring>& sources() const { return m_sources; }

    /// The index of the source that is selected; -1 for none.
    [[nodiscard]] int selectedSource() const { return m_selectedSource; }

    void selectSource(int index) { m_selectedSource = index; }

    [[nodiscard]] bool isCopy() const { return m_isCopy; }

    void setCopy(bool isCopy) { m_isCopy = isCopy; }

    [[nodiscard]] bool canSelectSource() const { return m_offersCopy && m_isCopy; }

    void setName(std::wstring name) { m_name = std::move(name); }

    /// What the user asks for now. A copy of nothing, which is one of the category without a name,
    /// is what a ticked box without a selected source gives.
    [[nodiscard]] NewName answer() const;

private:
    void listSources(const TreeContents& tree);

    std::wstring m_name;
    std::vector<std::wstring> m_sources;
    int m_selectedSource = -1;
    bool m_offersCopy;
    bool m_isCopy = false;
};

} // namespace corma
