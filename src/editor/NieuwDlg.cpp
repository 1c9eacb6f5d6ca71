#include "editor/NieuwDlg.h"

#include "editor/Desk.h"
#include "editor/mnemonics.h"
#include "ui_NieuwDlg.h"

#include <QPushButton>

NieuwDlg::NieuwDlg(const corma::Desk& desk, corma::NameOf what, QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::NieuwDlg>())
    , m_form(desk.tree(), what)
{
    m_ui->setupUi(this);
    fill(desk);
    connectWidgets();
    showState();
    m_ui->name->setFocus();
}

NieuwDlg::~NieuwDlg() = default;

void NieuwDlg::fill(const corma::Desk& desk)
{
    const corma::FixedTexts& texts = desk.texts();
    setWindowTitle(QString::fromStdWString(texts.newOne));
    corma::setTextsWithMnemonics({
        {m_ui->nameLabel, texts.specifyName},
        {m_ui->copy, texts.copyOf},
        {m_ui->buttons->button(QDialogButtonBox::Ok), L"OK"},
        {m_ui->buttons->button(QDialogButtonBox::Cancel), texts.cancel},
    });
    m_ui->source->setAccessibleName(QString::fromStdWString(texts.copyOf));
    m_ui->copy->setVisible(m_form.offersCopy());
    m_ui->source->setVisible(m_form.offersCopy());
    for (const std::wstring& source : m_form.sources()) {
        m_ui->source->addItem(QString::fromStdWString(source));
    }
}

void NieuwDlg::connectWidgets()
{
    connect(m_ui->name, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_form.setName(text.toStdWString()); });
    connect(m_ui->copy, &QCheckBox::toggled, this, [this](bool isTicked) {
        m_form.setCopy(isTicked);
        showState();
    });
    connect(m_ui->source, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_form.selectSource(index); });
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void NieuwDlg::showState()
{
    m_ui->copy->setChecked(m_form.isCopy());
    m_ui->source->setEnabled(m_form.canSelectSource());
    m_ui->source->setCurrentIndex(m_form.selectedSource());
}
