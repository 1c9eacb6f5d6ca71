#include "camera.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QImage>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <stdexcept>
#include <utility>

namespace screenshots {

Camera::Camera(QString folder, QString suffix, QString only)
    : m_folder(std::move(folder))
    , m_suffix(std::move(suffix))
    , m_only(std::move(only))
{
    QDir().mkpath(m_folder);
}

bool Camera::wants(const char* name) const
{
    return m_only.isEmpty() || m_only == QLatin1StringView(name);
}

// A colour table keeps the files small; dialogs have few colours.
void Camera::take(const char* name, QWidget& widget)
{
    if (!wants(name)) {
        return;
    }
    QApplication::processEvents();
    const QImage picture
        = widget.grab().toImage().convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
    const QString path
        = QStringLiteral("%1/%2-%3.png").arg(m_folder, QLatin1StringView(name), m_suffix);
    constexpr int kSmallest = 0; // of the qualities: PNG files lose nothing by it
    if (!picture.save(path, "PNG", kSmallest)) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
    m_isDone = !m_only.isEmpty();
}

void Camera::takeModal(const char* name, const std::function<void()>& action)
{
    if (!wants(name)) {
        return;
    }
    bool isTaken = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && !isTaken) {
            isTaken = true;
            take(name, *dialog);
            dialog->reject();
        }
    });
    timer.start(0);
    action();
    if (!isTaken) {
        throw std::runtime_error(std::string("no dialog came up for ") + name);
    }
}

QPalette darkPalette()
{
    const QColor window(0x2a, 0x2e, 0x32);
    const QColor base(0x1b, 0x1e, 0x20);
    const QColor text(0xfc, 0xfc, 0xfc);
    const QColor faint(0xa1, 0xa9, 0xb1);
    const QColor highlight(0x3d, 0x8e, 0xc9);
    QPalette palette(window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Link, QColor(0x1d, 0x99, 0xf3));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faint.darker());
    }
    return palette;
}

} // namespace screenshots
