#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma {

/// A name that is either one of a list or typed, as two radio buttons with a list and a field
/// offer it.
class NameChoice
{
public:
    using Index = std::optional<std::size_t>;

    /// Nothing is chosen or typed.
    NameChoice() = default;

    explicit NameChoice(std::vector<std::wstring> names)
        : m_names(std::move(names))
    {
    }

    [[nodiscard]] const std::vector<std::wstring>& names() const { return m_names; }

    /// The name in the list, in any case of its letters; nothing when it is not there.
    [[nodiscard]] Index find(std::wstring_view name) const;

    /// Takes a name: from the list where it has it, else as one that was typed.
    void take(const std::wstring& name);

    /// The chosen one of the list, whether that counts or not.
    [[nodiscard]] Index chosen() const { return m_chosen; }

    /// Nothing, or a number beyond the list, chooses none.
    void choose(Index index);

    [[nodiscard]] bool isTyped() const { return m_isTyped; }

    /// False for an empty list, which has nothing to choose.
    [[nodiscard]] bool canChoose() const { return !m_names.empty(); }

    /// The list counts from now on. With nothing chosen yet its first name is.
    void fromList();

    /// What is typed counts from now on. With nothing typed yet it begins with the chosen name.
    void fromField();

    [[nodiscard]] const std::wstring& typed() const { return m_typed; }

    void type(std::wstring name) { m_typed = std::move(name); }

    /// What counts; empty when nothing is chosen.
    [[nodiscard]] std::wstring name() const;

private:
    std::vector<std::wstring> m_names;
    Index m_chosen;
    std::wstring m_typed;
    bool m_isTyped = false;
};

} // namespace corma
