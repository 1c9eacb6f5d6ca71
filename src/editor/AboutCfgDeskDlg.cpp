#include "editor/AboutCfgDeskDlg.h"

#include "controls/icons.h"
#include "ui_AboutCfgDeskDlg.h"

namespace {

constexpr int kIconSize = 48; // pixels, of a screen of usual density

} // namespace

AboutCfgDeskDlg::AboutCfgDeskDlg(QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::AboutCfgDeskDlg>())
{
    m_ui->setupUi(this);
    m_ui->icon->setPixmap(
        corma::programIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
}

AboutCfgDeskDlg::~AboutCfgDeskDlg() = default;
