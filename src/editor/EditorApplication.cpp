#include "editor/EditorApplication.h"

#include "controls/icons.h"
#include "platform/platform.h"
#include <corma/host.h>

#include <QLibraryInfo>
#include <QThread>

#include <clocale>
#include <thread>

namespace corma {

namespace {

struct LanguageName
{
    int language;
    const char* name; // as in the names of Qt's files
};

constexpr std::array<LanguageName, 7> kLanguageNames = {{
    {7, "de"},
    {9, "en"},
    {10, "es"},
    {12, "fr"},
    {19, "nl"},
    {21, "pl"},
    {25, "ru"},
}};

QString nameOf(int language)
{
    for (const LanguageName& known : kLanguageNames) {
        if (known.language == language) {
            return QLatin1StringView(known.name);
        }
    }
    return QStringLiteral("en");
}

// Qt takes the thread of the first application for that of the user interface, for good.
std::optional<std::thread::id>& threadOfFirst()
{
    static std::optional<std::thread::id> thread;
    return thread;
}

} // namespace

EditorApplication::EditorApplication(int language, const wchar_t* what)
{
    auto why = problem();
    if (!why && QCoreApplication::instance() == nullptr) {
        const platform::DisplayProbe display; // holds it until the application does
        why = display.problem();
        if (!why) {
            makeApplication();
        }
    }
    if (why) {
        services().alert((std::wstring(what) + L" cannot be shown: " + *why + L'.').c_str());
        return;
    }
    // The editor may be the last window of a program that wants to go on.
    m_quitsOnLastWindow = QGuiApplication::quitOnLastWindowClosed();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    translate(language);
    m_isReady = true;
}

EditorApplication::~EditorApplication()
{
    if (!m_isReady) {
        return;
    }
    m_translator.reset();
    QGuiApplication::setQuitOnLastWindowClosed(m_quitsOnLastWindow);
    if (m_own) {
        m_own.reset();
        std::setlocale(LC_ALL, m_locale.c_str()); // the keyboard input of Qt sets it once more
    }
}

// What speaks against the application that there is, or against making one here.
std::optional<std::wstring> EditorApplication::problem()
{
    const QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr) {
        if (threadOfFirst().value_or(std::this_thread::get_id()) != std::this_thread::get_id()) {
            return L"this is not the thread of the user interface";
        }
        return std::nullopt;
    }
    if (qobject_cast<const QApplication*>(application) == nullptr) {
        return L"the Qt application of this program is not one for widgets";
    }
    if (application->thread() != QThread::currentThread()) {
        return L"this is not the thread of the user interface";
    }
    return std::nullopt;
}

// Numbers of the process are to stay as they are, so Qt's locale is taken back.
void EditorApplication::makeApplication()
{
    threadOfFirst() = std::this_thread::get_id();
    m_locale = std::setlocale(LC_ALL, nullptr);
    m_own = std::make_unique<QApplication>(m_argumentCount, m_arguments.data());
    std::setlocale(LC_ALL, m_locale.c_str());
    QGuiApplication::setDesktopFileName(QStringLiteral("cfgdesk"));
    QGuiApplication::setWindowIcon(programIcon());
}

void EditorApplication::translate(int language)
{
    m_translator = std::make_unique<QTranslator>();
    if (m_translator->load(QStringLiteral("qtbase_") + nameOf(language),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(m_translator.get());
    }
}

} // namespace corma
