#pragma once

#include "editor/SettingForm.h"
#include "editor/file_question.h"
#include "editor/mnemonics.h"

#include <QDialog>

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QPushButton;

namespace Ui {
class EditDlg;
} // namespace Ui

/// Shows the selected setting of a desk and lets the user give it another value. exec() is Accepted
/// when OK ended it, and the value is then written as far as it can be. The texts are in the
/// language of the desk; what belongs to the setting is taken when the dialog is shown first.
class EditDlg : public QDialog
{
    Q_OBJECT

public:
    /// The desk lives longer than the dialog, and has a selected setting.
    explicit EditDlg(corma::Desk& desk, QWidget* parent = nullptr);
    EditDlg(const EditDlg&) = delete;
    EditDlg& operator=(const EditDlg&) = delete;
    ~EditDlg() override;

    void setVisible(bool visible) override;
    void accept() override;

    /// Asks by this instead of a file dialog.
    void setFileQuestion(corma::FileQuestion question) { m_askFile = std::move(question); }

protected:
    /// What is shown and done, when the dialog is shown first.
    [[nodiscard]] virtual std::unique_ptr<corma::SettingForm> makeForm();

    /// Texts of inputs that a derived dialog adds; their letters are chosen before those of others.
    [[nodiscard]] virtual std::vector<corma::MnemonicText> ownTexts() const { return {}; }

    /// Fills the inputs, shows the one that is to be used, and closes those that cannot be.
    virtual void showInputs();

    /// Puts the focus where the value is given.
    virtual void focusInput();

    /// Fills the drop-down boxes for options.
    virtual void fillChoices();

    /// Closes up the form where there is no picture.
    virtual void compactLayout();

    void resizeEvent(QResizeEvent* event) override;

    /// Puts inputs below those of the dialog, which takes them, and its own out of sight. The
    /// keyboard goes through these of them in that order.
    void addInputs(QWidget* inputs, std::initializer_list<QWidget*> tabOrder);

    [[nodiscard]] corma::Desk& desk() const { return m_desk; }

    [[nodiscard]] corma::SettingForm& form() { return *m_form; }

private:
    void fill();
    void connectInputs();
    void setTexts();
    void showLevels();
    void showLimits();
    void showTickBoxes();
    void showPicture();
    void fitSize();
    void fitQuestion();
    [[nodiscard]] QPushButton& okButton() const;
    [[nodiscard]] QPushButton& cancelButton() const;
    [[nodiscard]] QWidget& input() const;
    void fieldEdited(const QString& text);
    void browse();

    corma::Desk& m_desk;
    std::unique_ptr<Ui::EditDlg> m_ui;
    std::unique_ptr<corma::SettingForm> m_form; // null until the dialog is shown first
    QWidget* m_lastOwnInput = nullptr; // in the order of the keyboard; null without own inputs
    corma::FileQuestion m_askFile;
};
