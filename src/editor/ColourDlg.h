#pragma once

#include "editor/ColourForm.h"

#include <QDialog>

#include <memory>

namespace Ui {
class ColourDlg;
} // namespace Ui

namespace corma {
class ColourTableModel;
}

/// Lets a person choose a colour: one of the 255 by a picture of them all or by its number, or one
/// of the words for the colour of the layer and of the block.
class ColourDlg : public QDialog
{
    Q_OBJECT

public:
    /// The colour that is selected at first; any number, as a value may have it.
    explicit ColourDlg(int colour, QWidget* parent = nullptr);
    ColourDlg(const ColourDlg&) = delete;
    ColourDlg& operator=(const ColourDlg&) = delete;
    ~ColourDlg() override;

    /// The colour is only looked at.
    void setReadOnly();

    /// What was chosen, 0 to 256; after exec() was accepted it is a colour.
    [[nodiscard]] int chosen() const { return m_form.colour().value_or(0); }

private:
    void fill();
    void fitTable();
    void connectWidgets();
    void choose(int colour);
    void showState();

    std::unique_ptr<Ui::ColourDlg> m_ui;
    corma::ColourForm m_form;
    corma::ColourTableModel* m_model = nullptr; // the dialog's
};
