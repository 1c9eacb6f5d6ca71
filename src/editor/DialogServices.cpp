#include "editor/DialogServices.h"

#include "editor/HatchPaletteDlg.h"
#include "editor/HelpDlg.h"
#include "editor/mnemonics.h"
#include "foundation/wide_text.h"
#include "settings/messages.h"
#include "settings/texts.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>
#include <QUrl>

#include <array>
#include <span>
#include <vector>

namespace corma {

namespace {

QString toQt(const wchar_t* text)
{
    const std::wstring_view seen = view(text);
    return QString::fromWCharArray(seen.data(), static_cast<qsizetype>(seen.size()));
}

// Widgets can be used nowhere else.
bool isWindowThread()
{
    return QThread::currentThread() == qApp->thread();
}

QMessageBox::Icon iconOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::information:
        return QMessageBox::Information;
    case MessageIcon::question:
        return QMessageBox::Question;
    case MessageIcon::exclamation:
        return QMessageBox::Warning;
    case MessageIcon::stop:
        return QMessageBox::Critical;
    case MessageIcon::none:
        break;
    }
    return QMessageBox::NoIcon;
}

struct Button
{
    MessageAnswer answer;
    QMessageBox::StandardButton kind;
    int textRow; // 0: "OK", which is the same in all languages
};

constexpr Button kOk = {MessageAnswer::ok, QMessageBox::Ok, 0};
constexpr Button kCancel = {MessageAnswer::cancel, QMessageBox::Cancel, row::kCancel};
constexpr Button kYes = {MessageAnswer::yes, QMessageBox::Yes, row::kYes};
constexpr Button kNo = {MessageAnswer::no, QMessageBox::No, row::kNo};

// From the first to the last, which gives the cautious answer.
std::span<const Button> buttonsOf(MessageButtons buttons)
{
    static constexpr std::array<Button, 1> kJustOk = {kOk};
    static constexpr std::array<Button, 2> kOkCancel = {kOk, kCancel};
    static constexpr std::array<Button, 2> kYesNo = {kYes, kNo};
    static constexpr std::array<Button, 3> kYesNoCancel = {kYes, kNo, kCancel};
    switch (buttons) {
    case MessageButtons::okCancel:
        return kOkCancel;
    case MessageButtons::yesNo:
        return kYesNo;
    case MessageButtons::yesNoCancel:
        return kYesNoCancel;
    case MessageButtons::ok:
        break;
    }
    return kJustOk;
}

void addButtons(QMessageBox& box, std::span<const Button> buttons)
{
    std::vector<MnemonicText> texts;
    for (const Button& button : buttons) {
        texts.push_back({box.addButton(button.kind),
                         button.textRow == 0 ? std::wstring(L"OK") : text(button.textRow)});
    }
    setTextsWithMnemonics(texts);
    box.setDefaultButton(buttons.front().kind);
    box.setEscapeButton(buttons.back().kind);
}

} // namespace

QWidget* windowInUse()
{
    QWidget* const modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : QApplication::activeWindow();
}

DialogServices::DialogServices()
    : m_before(services())
    , m_former(setServices(this))
{
}

DialogServices::~DialogServices()
{
    setServices(m_former);
}

void DialogServices::print(const wchar_t* text)
{
    m_before.print(text);
}

void DialogServices::alert(const wchar_t* text)
{
    if (!isWindowThread()) {
        m_before.alert(text);
        return;
    }
    messageBox(text, kEditorTitle, MessageIcon::exclamation, MessageButtons::ok);
}

MessageAnswer DialogServices::messageBox(const wchar_t* text, const wchar_t* title,
                                         MessageIcon icon, MessageButtons buttons)
{
    if (!isWindowThread()) {
        return m_before.messageBox(text, title, icon, buttons);
    }
    const std::span<const Button> shown = buttonsOf(buttons);
    QMessageBox box(windowInUse());
    box.setObjectName(QStringLiteral("messageBox"));
    box.setWindowTitle(toQt(title));
    box.setIcon(iconOf(icon));
    box.setTextFormat(Qt::PlainText);
    box.setText(toQt(text));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    addButtons(box, shown);
    const int pressed = box.exec();
    for (const Button& button : shown) {
        if (button.kind == pressed) {
            return button.answer;
        }
    }
    return shown.back().answer;
}

void DialogServices::fail(const wchar_t* text)
{
    m_before.fail(text);
}

bool DialogServices::chooseHatchPattern(const HatchPatternQuestion& question, std::wstring& chosen)
{
    if (!isWindowThread()) {
        return m_before.chooseHatchPattern(question, chosen);
    }
    HatchPaletteDlg palette(std::wstring(view(question.pattern)), question.showCustom,
                            windowInUse());
    if (palette.exec() != QDialog::Accepted) {
        return false;
    }
    chosen = palette.chosen();
    return true;
}

bool DialogServices::showHelp(const wchar_t* file)
{
    if (!isWindowThread()) {
        return m_before.showHelp(file);
    }
    const QString path = toQt(file);
    if (QFileInfo(path).isFile() && QDesktopServices::openUrl(QUrl::fromLocalFile(path))) {
        return true;
    }
    QWidget* const owner = windowInUse();
    if (owner == nullptr) {
        HelpDlg(textLanguage(), nullptr).exec();
        return true;
    }
    auto* help = owner->findChild<HelpDlg*>();
    if (help == nullptr) {
        help = new HelpDlg(textLanguage(), owner); // goes with its owner
    }
    help->show();
    help->raise();
    help->activateWindow();
    return true;
}

const wchar_t* DialogServices::moduleFile()
{
    return m_before.moduleFile();
}

const wchar_t* DialogServices::environment(const wchar_t* name)
{
    return m_before.environment(name);
}

} // namespace corma
