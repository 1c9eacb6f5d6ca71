#pragma once

#include <QSvgRenderer>
#include <QWidget>

/// Draws one wide picture, 140 by 48, in the middle of its width and at its upper end. The picture
/// is a vector picture and sharp on every screen.
class CIconStatic : public QWidget
{
    Q_OBJECT

public:
    /// By the number of the picture (see corma::widePicture()); one without a picture stays empty.
    explicit CIconStatic(int icon, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSvgRenderer m_picture;
};
