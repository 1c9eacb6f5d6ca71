#pragma once

#include "editor/AttributeRowModel.h"
#include "editor/AttributeTagModel.h"
#include "editor/AttributeUpdateForm.h"
#include "editor/file_question.h"

#include <QDialog>

#include <memory>
#include <string>

namespace Ui {
class xx_attUpdateDlg;
}

/// Shows what an attribute update found, and lets a person choose what is brought up to date and,
/// for references, from which drawing the new definition comes.
class xx_attUpdateDlg : public QDialog
{
    Q_OBJECT

public:
    /// The update lives longer than the dialog; what is chosen is left in it when OK ends that.
    explicit xx_attUpdateDlg(corma::AttributeUpdate& update, QWidget* parent = nullptr);
    xx_attUpdateDlg(const xx_attUpdateDlg&) = delete;
    xx_attUpdateDlg& operator=(const xx_attUpdateDlg&) = delete;
    ~xx_attUpdateDlg() override;

    void accept() override;

    /// Asks by this instead of a file dialog.
    void setFileQuestion(corma::FileQuestion question) { m_askFile = std::move(question); }

private:
    void fill();
    void connectWidgets();
    void showState();
    void select();
    void browse();

    const std::unique_ptr<Ui::xx_attUpdateDlg> m_ui;
    corma::AttributeUpdateForm m_form;
    corma::AttributeRowModel m_rows;
    corma::AttributeTagModel m_tags;
    corma::FileQuestion m_askFile = corma::askWithFileDialog;
    std::wstring m_lastFile; // that was chosen; empty at first
};
