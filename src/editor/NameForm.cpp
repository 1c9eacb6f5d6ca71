#include "editor/NameForm.h"

#include "platform/text.h"
#include "settings/texts.h"

#include <algorithm>

namespace corma {

namespace {

bool beginsWith(std::wstring_view text, std::wstring_view prefix)
{
    return equalIgnoringCase(text.substr(0, prefix.size()), prefix);
}

} // namespace

NameForm::NameForm(const TreeContents& tree, NameOf what)
    : m_offersCopy(what == NameOf::category)
{
    if (m_offersCopy) {
        listSources(tree);
    }
}

// The first source that begins with the selected text is taken, be it a longer one that stands
// higher (test: ALongerNameAboveTheSelectedOneIsFoundFirst).
void NameForm::listSources(const TreeContents& tree)
{
    const std::wstring rootText = text(row::kGeneral);
    const auto root = std::find_if(tree.topLevel().begin(), tree.topLevel().end(),
                                   [&](const auto& item) { return item->text == rootText; });
    if (root == tree.topLevel().end()) {
        return;
    }
    m_sources.push_back(rootText);
    for (const auto& child : (*root)->children) {
        m_sources.push_back(child->text);
    }
    if ((*root)->children.empty()) {
        return;
    }
    const std::wstring wanted = tree.selected() == nullptr ? rootText : tree.selected()->text;
    const auto found
        = std::find_if(m_sources.begin(), m_sources.end(),
                       [&](const std::wstring& source) { return beginsWith(source, wanted); });
    m_selectedSource = found == m_sources.end() ? -1 : static_cast<int>(found - m_sources.begin());
}

NewName NameForm::answer() const
{
    NewName answer {.name = m_name};
    if (m_offersCopy && m_isCopy) {
        answer.copyOf = m_selectedSource < 0
            ? std::wstring()
            : m_sources[static_cast<std::size_t>(m_selectedSource)];
    }
    return answer;
}

} // namespace corma
