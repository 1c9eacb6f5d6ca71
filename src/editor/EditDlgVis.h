#pragma once

#include "editor/EditDlg.h"
#include "editor/VisForm.h"

#include <cstddef>
#include <functional>
#include <optional>

class QComboBox;
class QLineEdit;
class QRadioButton;

namespace Ui {
class VisInputs;
} // namespace Ui

/// The dialog for a visualisation: that for plain settings, with inputs for layer, colour, linetype
/// and lineweight in the place of the value.
class EditDlgVis : public EditDlg
{
    Q_OBJECT

public:
    /// A value that is edited for somebody else, who stores it.
    struct HandedIn
    {
        std::wstring value;
        std::size_t mostCharacters; // of the new one
    };

    /// On the selected setting of the desk; OK stores its new value, unless one was handed in.
    explicit EditDlgVis(corma::Desk& desk, QWidget* parent = nullptr,
                        std::optional<HandedIn> handedIn = {});
    EditDlgVis(const EditDlgVis&) = delete;
    EditDlgVis& operator=(const EditDlgVis&) = delete;
    ~EditDlgVis() override;

    /// The new value, when OK ended the dialog.
    [[nodiscard]] const std::wstring& accepted() { return visForm().accepted(); }

protected:
    [[nodiscard]] std::unique_ptr<corma::SettingForm> makeForm() override;
    [[nodiscard]] std::vector<corma::MnemonicText> ownTexts() const override;
    void showInputs() override;
    void focusInput() override;
    void compactLayout() override;

    /// A form for the setting or for the value that was handed in.
    template<class Form> [[nodiscard]] std::unique_ptr<Form> formOf() const
    {
        return m_handedIn
            ? std::make_unique<Form>(desk(), m_handedIn->value, m_handedIn->mostCharacters)
            : std::make_unique<Form>(desk());
    }

    [[nodiscard]] corma::VisForm& visForm() { return static_cast<corma::VisForm&>(form()); }

    /// The widgets that offer one of the names of a list, or one that is typed.
    struct NameWidgets
    {
        QRadioButton* fromList;
        QComboBox* list;
        QRadioButton* fromField;
        QLineEdit* field;
    };

    /// Lets the widgets change a choice of the form, which is asked for when that happens.
    void connectChoice(const NameWidgets& widgets,
                       const std::function<corma::NameChoice&()>& choice);

    /// Shows which of the two counts, and closes the other.
    void showChoice(const NameWidgets& widgets, const corma::NameChoice& choice);

    /// Tells those who cannot see the buttons what they are for.
    static void nameChoice(const NameWidgets& widgets, int label);

    /// Everything that depends on what the form holds.
    virtual void showState();

private:
    void connectInputs();
    [[nodiscard]] NameWidgets layerWidgets() const;
    [[nodiscard]] NameWidgets linetypeWidgets() const;

    std::optional<HandedIn> m_handedIn;
    std::unique_ptr<Ui::VisInputs> m_inputs;
};
