#pragma once

#include <optional>
#include <string>

namespace corma {

/// The dialog for a colour without its widgets: a colour that is chosen from all there are, or
/// typed.
class ColourForm
{
public:
    /// Any number may come; one that is no colour is none until another one is chosen.
    explicit ColourForm(int colour);

    /// "ByLayer", "ByBlock" or a number, as it was typed.
    [[nodiscard]] const std::wstring& text() const { return m_text; }

    /// 0 by block, 256 by layer, 1 to 255; nothing for a text that is none of these.
    [[nodiscard]] std::optional<int> colour() const;

    void choose(int colour);

    void type(std::wstring text) { m_text = std::move(text); }

private:
    std::wstring m_text;
};

} // namespace corma
