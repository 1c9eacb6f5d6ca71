#include "controls/CIconStatic.h"
#include "controls/icons.h"

#include <gtest/gtest.h>

namespace {

constexpr QColor kPaper(1, 2, 3);

QImage drawn(QWidget& widget, const QSize& size, int scale = 1)
{
    widget.resize(size);
    QImage image(size * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(kPaper);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    image.setDevicePixelRatio(1);
    return image;
}

/// The part of an image that is not of the paper's colour.
QRect inked(const QImage& image)
{
    QRect part;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            part |= image.pixelColor(x, y) == kPaper ? QRect() : QRect(x, y, 1, 1);
        }
    }
    return part;
}

TEST(WideIcon, StandsInTheMiddleOfTheWidthAtTheUpperEnd)
{
    CIconStatic icon(corma::kProgramBanner);
    const QImage exact = drawn(icon, {140, 48});
    ASSERT_FALSE(inked(exact).isEmpty());

    const QImage wide = drawn(icon, {201, 60});
    EXPECT_EQ(wide.copy(30, 0, 140, 48), exact);
    EXPECT_TRUE(QRect(30, 0, 140, 48).contains(inked(wide)));
}

TEST(WideIcon, KeepsItsMiddleInAControlThatIsTooNarrow)
{
    CIconStatic icon(corma::kProgramBanner);
    const QImage exact = drawn(icon, {140, 48});
    EXPECT_EQ(drawn(icon, {100, 30}), exact.copy(20, 0, 100, 30));
}

TEST(WideIcon, IsDrawnFinerOnAScreenOfMorePixels)
{
    CIconStatic icon(corma::kProgramBanner);
    const QImage coarse = drawn(icon, {140, 48}).scaled(280, 96);
    const QImage fine = drawn(icon, {140, 48}, 2);
    EXPECT_NE(fine, coarse);
    const QRect expected = inked(coarse);
    EXPECT_TRUE(expected.adjusted(-2, -2, 2, 2).contains(inked(fine)));
    EXPECT_TRUE(inked(fine).adjusted(-2, -2, 2, 2).contains(expected));
}

TEST(WideIcon, OfAnUnknownNumberIsEmpty)
{
    CIconStatic icon(99);
    EXPECT_TRUE(inked(drawn(icon, {140, 48})).isEmpty());
}

TEST(WideIcon, AsksForTheRoomThatThePictureTakes)
{
    const CIconStatic icon(corma::kProgramBanner);
    EXPECT_EQ(icon.sizeHint(), QSize(140, 48));
    EXPECT_EQ(icon.minimumSizeHint(), QSize(140, 48));
}

} // namespace
