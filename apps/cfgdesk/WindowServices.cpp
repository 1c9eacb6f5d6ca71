#include "WindowServices.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

namespace cfgdesk {

namespace {

// The Qt application of the process, or one for the life of the object.
class SomeApplication
{
public:
    SomeApplication()
    {
        if (QCoreApplication::instance() == nullptr) {
            m_own.emplace(m_count, m_arguments.data());
        }
    }

    SomeApplication(const SomeApplication&) = delete;
    SomeApplication& operator=(const SomeApplication&) = delete;
    ~SomeApplication() = default;

private:
    std::array<char, 8> m_name {"cfgdesk"};
    std::array<char*, 2> m_arguments {m_name.data(), nullptr};
    int m_count = 1;
    std::optional<QApplication> m_own;
};

bool isWindowThread()
{
    const QCoreApplication* const application = QCoreApplication::instance();
    return application != nullptr && application->thread() == QThread::currentThread();
}

} // namespace

WindowServices::WindowServices() = default;

void WindowServices::print(const wchar_t* text)
{
    ConsoleServices::print(text);
    if (QCoreApplication::instance() == nullptr || isWindowThread()) {
        keepLines(text);
    }
    if (isWindowThread() && !std::exchange(m_isDue, true)) {
        auto* const timer = new QTimer(qApp);
        timer->setSingleShot(true);
        QObject::connect(timer, &QTimer::timeout, timer, [this, timer] {
            timer->deleteLater();
            showLines();
        });
        timer->start(0);
    }
}

void WindowServices::alert(const wchar_t* text)
{
    m_wasRefused = true;
    ConsoleServices::alert(text);
}

void WindowServices::keepLines(std::wstring_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        const std::wstring line(text.substr(0, end));
        if (!line.empty() && std::find(m_lines.begin(), m_lines.end(), line) == m_lines.end()) {
            m_lines.push_back(line);
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

// What comes while a box is open is shown in the next one.
void WindowServices::showLines()
{
    while (!m_lines.empty()) {
        std::wstring text;
        for (const std::wstring& line : std::exchange(m_lines, {})) {
            text += (text.empty() ? L"" : L"\n") + line;
        }
        QMessageBox box(QApplication::activeModalWidget());
        box.setObjectName(QStringLiteral("printed"));
        box.setWindowTitle(QStringLiteral("CfgDesk"));
        box.setIcon(QMessageBox::Warning);
        box.setTextFormat(Qt::PlainText);
        box.setText(QString::fromStdWString(text));
        box.setTextInteractionFlags(Qt::TextSelectableByMouse);
        box.addButton(QMessageBox::Ok)->setText(QStringLiteral("OK"));
        box.exec();
    }
    m_isDue = false;
}

void WindowServices::showRest()
{
    if (m_lines.empty() || m_wasRefused) {
        return;
    }
    const SomeApplication application;
    m_isDue = true;
    showLines();
}

} // namespace cfgdesk
