#pragma once

#include "editor/DeskView.h"
#include "editor/NameForm.h"

#include <QDialog>

#include <memory>

namespace corma {
class Desk;
} // namespace corma

namespace Ui {
class NieuwDlg;
} // namespace Ui

/// Asks for the name of a new setting or category ("nieuw" is Dutch for new).
class NieuwDlg : public QDialog
{
    Q_OBJECT

public:
    /// The desk is shown already; it is not kept.
    NieuwDlg(const corma::Desk& desk, corma::NameOf what, QWidget* parent);
    NieuwDlg(const NieuwDlg&) = delete;
    NieuwDlg& operator=(const NieuwDlg&) = delete;
    ~NieuwDlg() override;

    /// What was typed and chosen, once the dialog was accepted.
    [[nodiscard]] corma::NewName answer() const { return m_form.answer(); }

private:
    void fill(const corma::Desk& desk);
    void connectWidgets();
    void showState();

    std::unique_ptr<Ui::NieuwDlg> m_ui;
    corma::NameForm m_form;
};
