#include "editor/xx_attUpdateDlg.h"

#include "editor/accessible_texts.h"
#include "ui_xx_attUpdateDlg.h"

#include <QPushButton>
#include <QShortcut>

using corma::AccessibleText;
using corma::AttributeUpdateForm;

namespace {

constexpr const wchar_t* kDrawings = L"Drawing (*.dwg)|*.dwg|Drawing Template (*.dwt)|*.dwt||";

} // namespace

xx_attUpdateDlg::xx_attUpdateDlg(corma::AttributeUpdate& update, QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::xx_attUpdateDlg>())
    , m_form(update)
    , m_rows(m_form)
{
    m_ui->setupUi(this);
    fill();
    connectWidgets();
    showState();
}

xx_attUpdateDlg::~xx_attUpdateDlg() = default;

void xx_attUpdateDlg::fill()
{
    QPushButton& browseButton = m_ui->rows->button();
    const QString browseText
        = QString::fromStdWString(corma::accessibleText(AccessibleText::browseSource));
    browseButton.setAccessibleName(browseText);
    browseButton.setToolTip(browseText);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("OK"));
    m_ui->buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    m_ui->buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
    setTabOrder(m_ui->rows, &browseButton);
    setTabOrder(&browseButton, m_ui->attributes);

    m_ui->rows->setModel(&m_rows);
    m_ui->attributes->setModel(&m_tags);
    m_ui->rows->fitColumns();
    if (const auto current = m_form.current()) {
        // Marked, but not selected: nothing was chosen yet.
        m_ui->rows->selectionModel()->setCurrentIndex(m_rows.index(static_cast<int>(*current), 0),
                                                      QItemSelectionModel::NoUpdate);
    }
}

void xx_attUpdateDlg::connectWidgets()
{
    connect(m_ui->rows->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &xx_attUpdateDlg::select);
    connect(m_ui->rows, &corma::AttributeRowView::togglePressed, &m_rows,
            &corma::AttributeRowModel::toggle);
    connect(&m_rows, &QAbstractItemModel::dataChanged, this, &xx_attUpdateDlg::showState);
    connect(m_ui->rows, &QTreeView::doubleClicked, this, &xx_attUpdateDlg::browse);
    connect(&m_ui->rows->button(), &QPushButton::clicked, this, &xx_attUpdateDlg::browse);
    // The keys that open a list or a dialog beside a field elsewhere.
    for (const QKeyCombination key : {QKeyCombination(Qt::Key_F4), Qt::ALT | Qt::Key_Down}) {
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this,
                &xx_attUpdateDlg::browse);
    }
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &xx_attUpdateDlg::accept);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &xx_attUpdateDlg::reject);
}

void xx_attUpdateDlg::showState()
{
    m_tags.show(m_form.tags());
    m_ui->attributes->resizeColumnToContents(0);
    m_ui->rows->showButtonIn(m_form.hasBrowseButton()
                                 ? m_rows.index(static_cast<int>(*m_form.current()), 0)
                                 : QModelIndex());
}

void xx_attUpdateDlg::select()
{
    const QModelIndexList rows = m_ui->rows->selectionModel()->selectedRows();
    m_form.select(rows.isEmpty()
                      ? std::nullopt
                      : AttributeUpdateForm::Index(static_cast<std::size_t>(rows.first().row())));
    showState();
}

void xx_attUpdateDlg::browse()
{
    if (!m_form.canBrowse()) {
        return;
    }
    const auto file = m_askFile(*this, m_lastFile, corma::filtersOf(kDrawings));
    if (!file) {
        return;
    }
    m_lastFile = *file;
    if (m_form.browse(*file)) {
        m_rows.rowChanged(static_cast<int>(*m_form.current()));
    }
}

void xx_attUpdateDlg::accept()
{
    m_form.accept();
    QDialog::accept();
}
