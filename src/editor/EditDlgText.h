#pragma once

#include "editor/EditDlgVis.h"
#include "editor/TextForm.h"

namespace Ui {
class TextInputs;
} // namespace Ui

/// The dialog for a text style: that for a visualisation, with the style and its numbers below.
class EditDlgText : public EditDlgVis
{
    Q_OBJECT

public:
    /// As that of EditDlgVis.
    explicit EditDlgText(corma::Desk& desk, QWidget* parent = nullptr,
                         std::optional<HandedIn> handedIn = {});
    EditDlgText(const EditDlgText&) = delete;
    EditDlgText& operator=(const EditDlgText&) = delete;
    ~EditDlgText() override;

protected:
    [[nodiscard]] std::unique_ptr<corma::SettingForm> makeForm() override;
    [[nodiscard]] std::vector<corma::MnemonicText> ownTexts() const override;
    void showInputs() override;
    void showState() override;
    void compactLayout() override;

private:
    void connectInputs();
    [[nodiscard]] NameWidgets styleWidgets() const;

    [[nodiscard]] corma::TextForm& textForm() { return static_cast<corma::TextForm&>(form()); }

    std::unique_ptr<Ui::TextInputs> m_inputs;
};
