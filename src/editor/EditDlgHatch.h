#pragma once

#include "editor/EditDlgVis.h"
#include "editor/HatchForm.h"

namespace Ui {
class HatchInputs;
} // namespace Ui

/// The dialog for a hatch: that for a visualisation, with the pattern, its angle and scale and a
/// picture of it below.
class EditDlgHatch : public EditDlgVis
{
    Q_OBJECT

public:
    /// As that of EditDlgVis.
    explicit EditDlgHatch(corma::Desk& desk, QWidget* parent = nullptr,
                          std::optional<HandedIn> handedIn = {});
    EditDlgHatch(const EditDlgHatch&) = delete;
    EditDlgHatch& operator=(const EditDlgHatch&) = delete;
    ~EditDlgHatch() override;

protected:
    [[nodiscard]] std::unique_ptr<corma::SettingForm> makeForm() override;
    [[nodiscard]] std::vector<corma::MnemonicText> ownTexts() const override;
    void showInputs() override;
    void compactLayout() override;

private:
    void connectInputs();
    void showPreview();

    [[nodiscard]] corma::HatchForm& hatchForm() { return static_cast<corma::HatchForm&>(form()); }

    std::unique_ptr<Ui::HatchInputs> m_inputs;
};
