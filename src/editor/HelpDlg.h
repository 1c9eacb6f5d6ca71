#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class HelpDlg;
} // namespace Ui

/// The help page of the editor, which is compiled in, for where there is no help file. Resizable,
/// and closed by Escape.
class HelpDlg : public QDialog
{
    Q_OBJECT

public:
    /// In the language of that number; in English when there is no page in it.
    HelpDlg(int language, QWidget* parent);
    HelpDlg(const HelpDlg&) = delete;
    HelpDlg& operator=(const HelpDlg&) = delete;
    ~HelpDlg() override;

    /// Path of the page for a language.
    static QString pageFor(int language);

private:
    std::unique_ptr<Ui::HelpDlg> m_ui;
};
