#pragma once

#include <QCheckBox>

namespace corma {

/// A tick box whose text goes on in further lines where it is wider than the box, and at each "\n".
/// The tick stands beside the first line. Its height follows its width, by a layout.
class WrappedCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit WrappedCheckBox(QWidget* parent = nullptr);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override;

private:
    [[nodiscard]] int textLeft() const;
    [[nodiscard]] QSize textSize(int width) const;
};

} // namespace corma
