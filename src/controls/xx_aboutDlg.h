#pragma once

#include "controls/AboutBox.h"

#include <QDialog>

#include <memory>

class QImage;

namespace Ui {
class xx_aboutDlg;
} // namespace Ui

/// The about box of client applications: their picture, what is told of their module and menu, a
/// grid of rows, and a link to the support. Texts are shown as they are, never as markup, and can
/// be copied.
class xx_aboutDlg : public QDialog
{
    Q_OBJECT

public:
    /// The largest size in which the picture of the application is shown, in pixels of a screen of
    /// usual density. Smaller ones stay as they are.
    static constexpr int kMostOfPicture = 128;

    /// A null bitmap, or one without pixels, is none; it is not needed any more afterwards.
    xx_aboutDlg(const corma::AboutBox& box, const QImage* bitmap, QWidget* parent);
    xx_aboutDlg(const xx_aboutDlg&) = delete;
    xx_aboutDlg& operator=(const xx_aboutDlg&) = delete;
    ~xx_aboutDlg() override;

    /// The address that the link opens.
    static QString supportAddress();

private:
    void showTexts(const corma::AboutBox& box);
    void showPicture(const QImage* bitmap);
    void showRows(const corma::AboutBox& box);
    void showLink();
    void openLink();

    std::unique_ptr<Ui::xx_aboutDlg> m_ui;
};
