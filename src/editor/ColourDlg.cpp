#include "editor/ColourDlg.h"

#include "controls/qt_text.h"
#include "editor/ColourTableModel.h"
#include "editor/mnemonics.h"
#include "editor/sample_icons.h"
#include "editor/visual_value.h"
#include "host/color_index.h"
#include "settings/texts.h"
#include "ui_ColourDlg.h"

#include <QHeaderView>
#include <QPushButton>

using corma::ColourTableModel;
using corma::host::kColorByBlock;
using corma::host::kColorByLayer;

namespace {

constexpr int kCell = 19; // device-independent pixels

} // namespace

ColourDlg::ColourDlg(int colour, QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::ColourDlg>())
    , m_form(colour)
{
    m_ui->setupUi(this);
    fill();
    connectWidgets();
    showState();
    m_ui->colours->setFocus();
}

ColourDlg::~ColourDlg() = default;

void ColourDlg::fill()
{
    setWindowTitle(corma::qtText(corma::row::kColour));
    corma::setTextsWithMnemonics({{m_ui->numberLabel, corma::text(corma::row::kColour)},
                                  {m_ui->byLayer, corma::colourText(kColorByLayer)},
                                  {m_ui->byBlock, corma::colourText(kColorByBlock)}});
    m_ui->colours->setAccessibleName(corma::qtText(corma::row::kColour));
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("OK"));
    m_ui->buttons->button(QDialogButtonBox::Cancel)->setText(corma::qtText(corma::row::kCancel));
    m_model = new ColourTableModel(this);
    m_ui->colours->setModel(m_model);
    m_ui->colours->setItemDelegate(new corma::ColourCellDelegate(this));
    fitTable();
}

// All colours are in sight.
void ColourDlg::fitTable()
{
    for (QHeaderView* const header :
         {m_ui->colours->horizontalHeader(), m_ui->colours->verticalHeader()}) {
        header->setMinimumSectionSize(kCell);
        header->setDefaultSectionSize(kCell);
        header->setSectionResizeMode(QHeaderView::Fixed);
        header->hide();
    }
    const int frame = 2 * m_ui->colours->frameWidth();
    m_ui->colours->setFixedSize(m_model->columnCount() * kCell + frame,
                                m_model->rowCount() * kCell + frame);
}

void ColourDlg::connectWidgets()
{
    connect(m_ui->colours->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (!selected.isEmpty()) {
                    choose(ColourTableModel::colourAt(selected.indexes().constFirst()));
                }
            });
    // Enter needs nothing: the table leaves it to the button OK.
    connect(m_ui->colours, &QTableView::doubleClicked, this, &QDialog::accept);
    connect(m_ui->byLayer, &QPushButton::clicked, this, [this] { choose(kColorByLayer); });
    connect(m_ui->byBlock, &QPushButton::clicked, this, [this] { choose(kColorByBlock); });
    connect(m_ui->number, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_form.type(text.trimmed().toStdWString());
        showState();
    });
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void ColourDlg::setReadOnly()
{
    for (QWidget* const each : std::initializer_list<QWidget*> {m_ui->colours, m_ui->number,
                                                                m_ui->byLayer, m_ui->byBlock}) {
        each->setEnabled(false);
    }
}

void ColourDlg::choose(int colour)
{
    m_form.choose(colour);
    showState();
}

void ColourDlg::showState()
{
    const auto colour = m_form.colour();
    const QString text = QString::fromStdWString(m_form.text());
    if (m_ui->number->text().trimmed() != text) {
        m_ui->number->setText(text);
    }
    m_ui->sample->setPixmap(
        corma::colourIcon(corma::host::colorOfIndex(colour.value_or(kColorByBlock)))
            .pixmap(corma::kColourSample, devicePixelRatioF()));
    m_ui->byLayer->setChecked(colour == kColorByLayer);
    m_ui->byBlock->setChecked(colour == kColorByBlock);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(colour.has_value());
    QItemSelectionModel* const selection = m_ui->colours->selectionModel();
    const QModelIndex cell = colour ? m_model->indexOf(*colour) : QModelIndex();
    if (cell.isValid()) {
        selection->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect);
    } else {
        selection->clearSelection();
    }
}
