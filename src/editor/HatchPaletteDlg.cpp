#include "editor/HatchPaletteDlg.h"

#include "controls/qt_text.h"
#include "editor/HatchPatternModel.h"
#include "editor/HatchSwatchDelegate.h"
#include "settings/texts.h"
#include "ui_HatchPaletteDlg.h"

#include <QPushButton>

using corma::HatchPalette;
using corma::HatchPatternModel;
using corma::host::CustomPatterns;

HatchPaletteDlg::HatchPaletteDlg(const std::wstring& pattern, bool showCustom, QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::HatchPaletteDlg>())
    , m_palette(corma::host::loadHatchPatterns(showCustom ? CustomPatterns::shown
                                                          : CustomPatterns::hidden),
                pattern)
{
    m_ui->setupUi(this);
    fill();
    connectWidgets();
    showState();
}

HatchPaletteDlg::~HatchPaletteDlg() = default;

std::wstring HatchPaletteDlg::chosen() const
{
    return m_palette.name();
}

void HatchPaletteDlg::fill()
{
    setWindowTitle(corma::qtText(corma::row::kHatch));
    m_ui->patternLabel->setText(corma::qtText(corma::row::kPattern));
    m_ui->patterns->setAccessibleName(corma::qtText(corma::row::kPattern));
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("OK"));
    m_ui->buttons->button(QDialogButtonBox::Cancel)->setText(corma::qtText(corma::row::kCancel));
    QFont bold = m_ui->nameText->font();
    bold.setBold(true);
    m_ui->nameText->setFont(bold);

    auto* const model = new HatchPatternModel(m_palette, this);
    m_ui->patterns->setModel(model);
    m_ui->patterns->setItemDelegate(new corma::HatchSwatchDelegate(this));
    const auto selected = m_palette.selected();
    const QModelIndex first = model->index(selected ? static_cast<int>(*selected) : 0);
    auto* const selection = m_ui->patterns->selectionModel();
    selection->setCurrentIndex(
        first, selected ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate);
    m_ui->patterns->scrollTo(first);
}

void HatchPaletteDlg::connectWidgets()
{
    connect(m_ui->patterns->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &HatchPaletteDlg::choose);
    // Enter needs nothing: the list leaves it to the button OK.
    connect(m_ui->patterns, &QListView::doubleClicked, this, &QDialog::accept);
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void HatchPaletteDlg::choose()
{
    const QModelIndexList rows = m_ui->patterns->selectionModel()->selectedIndexes();
    m_palette.select(rows.isEmpty()
                         ? std::nullopt
                         : HatchPalette::Index(static_cast<std::size_t>(rows.first().row())));
    showState();
}

void HatchPaletteDlg::showState()
{
    m_ui->nameText->setText(QString::fromStdWString(m_palette.name()));
    m_ui->descriptionText->setText(QString::fromStdWString(m_palette.description()));
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(m_palette.selected().has_value());
}
