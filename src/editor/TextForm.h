#pragma once

#include "editor/VisForm.h"

namespace corma {

/// The dialog for a text style without its widgets: a visualisation, and the style with height,
/// width factor and oblique angle. The numbers are stored as they were typed; nothing checks them.
class TextForm : public VisForm
{
public:
    /// As those of VisForm.
    explicit TextForm(const Desk& desk);
    TextForm(const Desk& desk, const std::wstring& value, std::size_t mostCharacters);

    [[nodiscard]] NameChoice& style() { return m_style; }

    [[nodiscard]] const NameChoice& style() const { return m_style; }

    [[nodiscard]] const std::wstring& height() const { return m_height; }

    void setHeight(std::wstring text) { m_height = std::move(text); }

    [[nodiscard]] const std::wstring& widthFactor() const { return m_widthFactor; }

    void setWidthFactor(std::wstring text) { m_widthFactor = std::move(text); }

    [[nodiscard]] const std::wstring& oblique() const { return m_oblique; }

    void setOblique(std::wstring text) { m_oblique = std::move(text); }

protected:
    [[nodiscard]] std::vector<std::wstring> fields() const override;

private:
    void takeOwn();

    NameChoice m_style;
    std::wstring m_height;
    std::wstring m_widthFactor;
    std::wstring m_oblique;
};

} // namespace corma
