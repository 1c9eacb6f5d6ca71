#pragma once

#include <QPalette>
#include <QString>

#include <functional>

class QWidget;

namespace screenshots {

/// Saves pictures of widgets as NAME-SUFFIX.png in a folder.
class Camera
{
public:
    /// With a name as `only`, pictures of other names are not taken.
    Camera(QString folder, QString suffix, QString only);

    void take(const char* name, QWidget& widget);

    /// Which widget of a dialog is to be seen.
    using PartOf = std::function<QWidget&(QWidget& dialog)>;

    /// Does something that shows a modal dialog, takes a picture of it, or of a part, and cancels
    /// it. Throws when no dialog comes up.
    void takeModal(const char* name, const std::function<void()>& action,
                   const PartOf& partOf = {});

    /// True when the only picture that is wanted was taken.
    [[nodiscard]] bool isDone() const { return m_isDone; }

private:
    [[nodiscard]] bool wants(const char* name) const;

    QString m_folder;
    QString m_suffix;
    QString m_only; // empty for all
    bool m_isDone = false;
};

/// A palette as dark desktops have it.
QPalette darkPalette();

} // namespace screenshots
