#include "controls/xx_aboutDlg.h"

#include "controls/CIconStatic.h"
#include "controls/icons.h"
#include "settings/texts.h"
#include "ui_xx_aboutDlg.h"
#include <corma/host.h>

#include <QDesktopServices>
#include <QImage>
#include <QPushButton>
#include <QUrl>

#include <cmath>

namespace {

// Of the dialog, in quarters of a letter's width and eighths of its height.
constexpr QSize kUnits(269, 202);

QSize fromUnits(const QSize& units, const QFontMetrics& font)
{
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const auto wide = static_cast<int>(font.horizontalAdvance(letters) / letters.size());
    return {units.width() * wide / 4, units.height() * font.height() / 8};
}

// Long ones take another line, those that cannot be broken are cut; none makes the dialog wider.
void showParagraph(QLabel& label, const std::wstring& text)
{
    label.setTextFormat(Qt::PlainText);
    label.setText(QString::fromStdWString(text));
    label.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label.setFocusPolicy(Qt::StrongFocus); // whoever has no mouse copies it, too
    label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label.setVisible(!text.empty());
}

// Looks like a label, and scrolls where the text is longer.
void showLine(QLineEdit& line, const std::wstring& text)
{
    QPalette palette = line.palette();
    palette.setBrush(QPalette::Base, Qt::transparent);
    line.setPalette(palette);
    line.setFrame(false);
    line.setReadOnly(true);
    line.setText(QString::fromStdWString(text));
    line.setCursorPosition(0);
    const int date = line.fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000 00:00:00 "));
    line.setMinimumWidth(date + line.textMargins().left() + line.textMargins().right());
}

// In few enough pixels, but in as many of the screen's as these take.
QPixmap fitting(const QImage& image, int most, qreal ratio)
{
    QSize size = image.size();
    if (size.width() > most || size.height() > most) {
        size = size.scaled(most, most, Qt::KeepAspectRatio).expandedTo({1, 1});
    }
    const QSize onScreen(static_cast<int>(std::lround(size.width() * ratio)),
                         static_cast<int>(std::lround(size.height() * ratio)));
    const bool isLarger = image.width() > onScreen.width() || image.height() > onScreen.height();
    QPixmap pixmap = QPixmap::fromImage(
        isLarger ? image.scaled(onScreen, Qt::IgnoreAspectRatio, Qt::SmoothTransformation) : image);
    pixmap.setDevicePixelRatio(static_cast<qreal>(pixmap.width()) / size.width());
    return pixmap;
}

} // namespace

xx_aboutDlg::xx_aboutDlg(const corma::AboutBox& box, const QImage* bitmap, QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::xx_aboutDlg>())
{
    m_ui->setupUi(this);
    auto* const header = new CIconStatic(corma::kAboutPicture, this);
    header->setObjectName(QStringLiteral("header"));
    m_ui->headerLayout->addWidget(header);
    showTexts(box);
    showPicture(bitmap);
    showRows(box);
    showLink();
    m_ui->buttons->button(QDialogButtonBox::Ok)->setFocus();
    resize(fromUnits(kUnits, fontMetrics()).expandedTo(minimumSizeHint()));
}

xx_aboutDlg::~xx_aboutDlg() = default;

QString xx_aboutDlg::supportAddress()
{
    return QStringLiteral(CORMA_SUPPORT_URL);
}

void xx_aboutDlg::showTexts(const corma::AboutBox& box)
{
    constexpr qreal kLarger = 1.2;
    QFont font = m_ui->appName->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * kLarger);
    m_ui->appName->setFont(font);
    showParagraph(*m_ui->appName, box.appName);
    showLine(*m_ui->appVersion, box.appVersion);
    showLine(*m_ui->menuVersion, box.menuVersion);
    showLine(*m_ui->appDate, box.appDate);
    showParagraph(*m_ui->copyright, box.copyright);
}

void xx_aboutDlg::showPicture(const QImage* bitmap)
{
    const bool isThere = bitmap != nullptr && !bitmap->isNull();
    m_ui->bitmap->setVisible(isThere);
    if (isThere) {
        m_ui->bitmap->setPixmap(fitting(*bitmap, kMostOfPicture, devicePixelRatioF()));
    }
}

void xx_aboutDlg::showRows(const corma::AboutBox& box)
{
    xx_gridListCtrl& grid = *m_ui->grid;
    grid.setGridStyle(0);
    int column = 0;
    for (const wchar_t* const heading : corma::AboutBox::kHeadings) {
        grid.insertColumn(column,
                          {.text = QString::fromWCharArray(heading),
                           .alignment = Qt::AlignLeft,
                           .order = column});
        ++column;
    }
    int row = 0;
    for (const auto& cells : box.rows) {
        column = 0;
        for (const std::wstring& cell : cells) {
            grid.setCellText(row, column++, 0, QString::fromStdWString(cell), QString());
        }
        ++row;
    }
    grid.autoSizeColumns();
    constexpr int kLeastLines = 8; // with the headings, and the room around texts
    grid.setMinimumHeight(kLeastLines * grid.fontMetrics().height());
}

void xx_aboutDlg::showLink()
{
    const QString text = QString::fromStdWString(corma::text(corma::row::kRemoteAssistance));
    const QString address = supportAddress();
    m_ui->link->setTextFormat(Qt::RichText);
    m_ui->link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    m_ui->link->setText(
        QStringLiteral("<a href=\"%1\">%2</a>").arg(address.toHtmlEscaped(), text.toHtmlEscaped()));
    m_ui->link->setToolTip(address);
    m_ui->link->setAccessibleName(text);
    m_ui->link->setAccessibleDescription(address);
    connect(m_ui->link, &QLabel::linkActivated, this, &xx_aboutDlg::openLink);
}

void xx_aboutDlg::openLink()
{
    const QString address = supportAddress();
    if (!QDesktopServices::openUrl(QUrl(address))) {
        corma::services().alert((L"Cannot open " + address.toStdWString()).c_str());
    }
}
