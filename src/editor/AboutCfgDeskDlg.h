#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class AboutCfgDeskDlg;
} // namespace Ui

/// The about box of the editor: the program's icon and its line.
class AboutCfgDeskDlg : public QDialog
{
    Q_OBJECT

public:
    explicit AboutCfgDeskDlg(QWidget* parent);
    AboutCfgDeskDlg(const AboutCfgDeskDlg&) = delete;
    AboutCfgDeskDlg& operator=(const AboutCfgDeskDlg&) = delete;
    ~AboutCfgDeskDlg() override;

private:
    std::unique_ptr<Ui::AboutCfgDeskDlg> m_ui;
};
