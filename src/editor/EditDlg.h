#pragma once

#include "editor/SettingForm.h"

#include <QDialog>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <string>

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

    /// Asks the user for a file, from a path or a folder on, with filters in the form of Qt. The
    /// full path; nothing when the user cancels.
    using FileQuestion = std::function<std::optional<std::wstring>(
        QWidget& parent, const std::wstring& start, const QStringList& filters)>;

    /// Asks by this instead of a file dialog.
    void setFileQuestion(FileQuestion question) { m_askFile = std::move(question); }

protected:
    /// Fills the drop-down boxes for options.
    virtual void fillChoices();

    /// Closes up the form where there is no picture.
    virtual void compactLayout();

    void resizeEvent(QResizeEvent* event) override;

    [[nodiscard]] corma::Desk& desk() const { return m_desk; }

    [[nodiscard]] corma::SettingForm& form() { return *m_form; }

private:
    void fill();
    void connectInputs();
    void setTexts();
    void showLevels();
    void showInputs();
    void showLimits();
    void showTickBoxes();
    void showPicture();
    void fitSize();
    void fitQuestion();
    [[nodiscard]] QPushButton& okButton() const;
    [[nodiscard]] QPushButton& cancelButton() const;
    [[nodiscard]] QWidget& input() const;
    void focusInput();
    void fieldEdited(const QString& text);
    void browse();

    corma::Desk& m_desk;
    std::unique_ptr<Ui::EditDlg> m_ui;
    std::unique_ptr<corma::SettingForm> m_form; // null until the dialog is shown first
    FileQuestion m_askFile;
};
