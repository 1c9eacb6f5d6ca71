#include "editor/HelpDlg.h"

#include "controls/icons.h"
#include "settings/texts.h"
#include "ui_HelpDlg.h"

#include <QFile>
#include <QPushButton>

#include <array>

// Outside any namespace, as Qt wants it: in a static library nothing else draws the pages in.
static void loadPages()
{
    Q_INIT_RESOURCE(help);
}

namespace {

constexpr int kMarkSize = 16; // pixels, of a screen of usual density
constexpr int kMargin = 12;

struct Page
{
    int language;
    const char* name;
};

constexpr std::array<Page, 3> kTranslated = {{{12, "fr"}, {19, "nl"}, {25, "ru"}}};

} // namespace

// Drawn at the density of the screen; the page gives the size.
QVariant HelpPage::loadResource(int type, const QUrl& name)
{
    if (name.scheme() != QLatin1StringView("mark")) {
        return QTextBrowser::loadResource(type, name);
    }
    return corma::markIcon(name.path().toInt())
        .pixmap(QSize(kMarkSize, kMarkSize), devicePixelRatioF());
}

HelpDlg::HelpDlg(int language, QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::HelpDlg>())
{
    m_ui->setupUi(this);
    const QString title = QString::fromWCharArray(corma::textOf(corma::row::kHelp, language));
    setWindowTitle(title);
    m_ui->page->setAccessibleName(title);
    QFile page(pageFor(language));
    if (page.open(QIODevice::ReadOnly)) {
        m_ui->page->setHtml(QString::fromUtf8(page.readAll()));
        m_ui->page->document()->setDocumentMargin(kMargin);
        m_ui->page->document()->setIndentWidth(kMargin * 2);
    }
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_ui->buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("OK"));
}

HelpDlg::~HelpDlg() = default;

QString HelpDlg::pageFor(int language)
{
    loadPages();
    const char* name = "en";
    for (const Page& page : kTranslated) {
        if (page.language == language) {
            name = page.name;
        }
    }
    return QStringLiteral(":/corma/help/%1.html").arg(QLatin1StringView(name));
}
