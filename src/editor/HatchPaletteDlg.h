#pragma once

#include "editor/HatchPalette.h"

#include <QDialog>

#include <memory>
#include <string>

namespace Ui {
class HatchPaletteDlg;
}

/// Lets a person choose a hatch pattern among pictures of them.
class HatchPaletteDlg : public QDialog
{
    Q_OBJECT

public:
    /// The pattern of that name is selected at first, if there is one. showCustom adds the patterns
    /// with files of their own in the support folders.
    HatchPaletteDlg(const std::wstring& pattern, bool showCustom, QWidget* parent = nullptr);
    ~HatchPaletteDlg() override;

    /// The name of the pattern that was chosen; after exec() was accepted never empty.
    [[nodiscard]] std::wstring chosen() const;

private:
    void fill();
    void connectWidgets();
    void showState();
    void choose();

    const std::unique_ptr<Ui::HatchPaletteDlg> m_ui;
    corma::HatchPalette m_palette;
};
