#pragma once

#include "editor/HatchForm.h"

#include <QWidget>

#include <optional>

/// Draws a hatch pattern at its angle and scale, in the place of the host's own preview, and below
/// it how wide the square is in drawing units.
class CHatchpatternctrl2 : public QWidget
{
    Q_OBJECT

public:
    explicit CHatchpatternctrl2(QWidget* parent = nullptr);

    /// Nothing shows an empty square. The source is shown as the tip, and told to those who cannot
    /// see the picture.
    void setPreview(std::optional<corma::HatchForm::Preview> preview, const QString& source);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int captionHeight() const;
    void paintWidth(QPainter& painter, const QRect& area) const;

    std::optional<corma::HatchForm::Preview> m_preview;
};
