#include "editor/sample_icons.h"

#include <QApplication>
#include <QImage>
#include <QPalette>

#include <gtest/gtest.h>

namespace {

QImage drawn(const QIcon& icon, const QSize& size, double scale = 1.0,
             QIcon::Mode mode = QIcon::Normal)
{
    return icon.pixmap(size, scale, mode).toImage();
}

// Pixels of a column in the middle that are more painted than not.
int thickness(const QImage& image)
{
    constexpr int kHalf = 128;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        count += image.pixelColor(image.width() / 2, y).alpha() >= kHalf ? 1 : 0;
    }
    return count;
}

int paintedColumns(const QImage& image)
{
    int count = 0;
    for (int x = 0; x < image.width(); ++x) {
        bool isPainted = false;
        for (int y = 0; y < image.height(); ++y) {
            isPainted = isPainted || image.pixelColor(x, y).alpha() > 0;
        }
        count += isPainted ? 1 : 0;
    }
    return count;
}

TEST(ColourIcon, IsASquareOfTheColourInAFrame)
{
    const QImage image = drawn(corma::colourIcon(corma::host::Rgb {10, 20, 30}), {16, 16});
    EXPECT_EQ(image.pixelColor(8, 8), QColor(10, 20, 30));
    EXPECT_EQ(image.pixelColor(1, 8), QApplication::palette().color(QPalette::Text));
}

TEST(ColourIcon, WithoutAColourIsCrossedOut)
{
    const QImage image = drawn(corma::colourIcon({}), {16, 16});
    EXPECT_GT(image.pixelColor(8, 7).alpha(), 0);
    EXPECT_EQ(image.pixelColor(4, 4).alpha(), 0);
}

TEST(LineweightIcon, IsAsWideAsOnPaper)
{
    EXPECT_EQ(thickness(drawn(corma::lineweightIcon(211), corma::kLineSample)), 8);
    EXPECT_EQ(thickness(drawn(corma::lineweightIcon(106), corma::kLineSample)), 4);
    EXPECT_EQ(thickness(drawn(corma::lineweightIcon(211), corma::kLineSample, 2.0)), 16);
}

TEST(LineweightIcon, OfNoWidthIsStillSeen)
{
    EXPECT_EQ(paintedColumns(drawn(corma::lineweightIcon(0), corma::kLineSample)),
              corma::kLineSample.width());
}

TEST(LineweightIcon, OfAWordIsNone)
{
    EXPECT_TRUE(corma::lineweightIcon(-1).isNull());
}

TEST(LinetypeIcon, ShowsDashesAndGaps)
{
    const int whole = paintedColumns(drawn(corma::linetypeIcon({}), corma::kLineSample));
    const int dashed = paintedColumns(drawn(corma::linetypeIcon({1, -1}), corma::kLineSample));
    const int dotted = paintedColumns(drawn(corma::linetypeIcon({0, -1}), corma::kLineSample));
    EXPECT_EQ(whole, corma::kLineSample.width());
    EXPECT_NEAR(dashed, whole * 3 / 5, 4); // two and a half repetitions begin with a dash
    EXPECT_GT(dotted, 2);
    EXPECT_LT(dotted, whole / 8);
}

TEST(SampleIcons, FollowTheStateOfWhatTheyStandOn)
{
    const QIcon icon = corma::lineweightIcon(211);
    const auto colourOf = [&](QIcon::Mode mode) {
        return drawn(icon, corma::kLineSample, 1.0, mode).pixelColor(10, 8);
    };
    const QPalette palette = QApplication::palette();
    EXPECT_EQ(colourOf(QIcon::Normal), palette.color(QPalette::Text));
    EXPECT_EQ(colourOf(QIcon::Selected), palette.color(QPalette::HighlightedText));
    EXPECT_EQ(colourOf(QIcon::Active), palette.color(QPalette::HighlightedText));
    EXPECT_EQ(colourOf(QIcon::Disabled), palette.color(QPalette::Disabled, QPalette::Text));
}

TEST(SampleIcons, AColourOnAButtonWithTheFocusKeepsItsFrame)
{
    const QIcon icon = corma::colourIcon(corma::host::Rgb {10, 20, 30});
    EXPECT_EQ(drawn(icon, {16, 16}, 1.0, QIcon::Active).pixelColor(1, 8),
              QApplication::palette().color(QPalette::Text));
}

TEST(SampleIcons, FollowThePalette)
{
    const QIcon icon = corma::lineweightIcon(211);
    const QPalette before = QApplication::palette();
    QPalette other = before;
    other.setColor(QPalette::Text, QColor(1, 2, 3));
    QApplication::setPalette(other);
    const QColor colour = drawn(icon, corma::kLineSample).pixelColor(10, 8);
    QApplication::setPalette(before);
    EXPECT_EQ(colour, QColor(1, 2, 3));
}

} // namespace
