#include "camera.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QImage>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace screenshots {

namespace {

// A table of the 256 most frequent colours keeps the files small. Dialogs have few colours; what
// stands between two of them, at the edges of letters, becomes the nearest one.
QImage withColourTable(const QImage& picture)
{
    constexpr std::size_t kMostColours = 256;
    const QImage plain = picture.convertToFormat(QImage::Format_RGB32);
    std::map<QRgb, int> counts;
    for (int y = 0; y < plain.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
        std::for_each(line, line + plain.width(), [&](QRgb colour) { ++counts[colour]; });
    }
    std::vector<std::pair<int, QRgb>> byCount;
    byCount.reserve(counts.size());
    for (const auto& [colour, count] : counts) {
        byCount.emplace_back(-count, colour);
    }
    std::sort(byCount.begin(), byCount.end());
    QList<QRgb> table;
    for (std::size_t i = 0; i < std::min(byCount.size(), kMostColours); ++i) {
        table.append(byCount[i].second);
    }
    return plain.convertToFormat(QImage::Format_Indexed8, table, Qt::ThresholdDither);
}

} // namespace

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

void Camera::take(const char* name, QWidget& widget)
{
    if (!wants(name)) {
        return;
    }
    QApplication::processEvents();
    const QImage picture = withColourTable(widget.grab().toImage());
    const QString path
        = QStringLiteral("%1/%2-%3.png").arg(m_folder, QLatin1StringView(name), m_suffix);
    constexpr int kSmallest = 0; // of the qualities: PNG files lose nothing by it
    if (!picture.save(path, "PNG", kSmallest)) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
    m_isDone = !m_only.isEmpty();
}

void Camera::takeModal(const char* name, const std::function<void()>& action, const PartOf& partOf)
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
            take(name, partOf ? partOf(*dialog) : *dialog);
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
