// Linked with the example of the about box, whose test has no user: tells what the first dialog
// shows and closes it.

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QWidget>

#include <cstdio>

static void closeFirstDialog()
{
    QTimer::singleShot(0, QCoreApplication::instance(), [] {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) {
            std::puts("no dialog came up");
            QCoreApplication::exit(1);
            return;
        }
        std::puts(qPrintable(dialog->findChild<QLabel*>(QStringLiteral("appName"))->text()));
        for (const char* const name : {"appVersion", "menuVersion"}) {
            std::puts(qPrintable(dialog->findChild<QLineEdit*>(QLatin1StringView(name))->text()));
        }
        dialog->close();
    });
}

Q_COREAPP_STARTUP_FUNCTION(closeFirstDialog)
