#include "controls/icons.h"
#include "controls/readable.h"

#include <QFile>
#include <QPainter>

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

using corma::contrast;
using corma::kLeastContrast;
using corma::kMarks;
using corma::kProgramBanner;
using corma::markIcon;
using corma::programIcon;
using corma::widePicture;

constexpr std::array<int, 4> kSizes = {16, 24, 32, 64};

const std::array<QColor, 2> kGrounds = {QColor(Qt::white), QColor(0x23, 0x26, 0x29)};

QImage drawnOn(const QColor& ground, const QIcon& icon, int size)
{
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    return image;
}

template<typename IsCounted> int countPixels(int size, IsCounted isCounted)
{
    int count = 0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            count += isCounted(QPoint(x, y)) ? 1 : 0;
        }
    }
    return count;
}

/// How many of 100 pixels look different without their colour.
int differenceInGrey(const QImage& a, const QImage& b)
{
    constexpr int kPlain = 48; // of 255
    const int size = a.width();
    return 100
        * countPixels(size,
                      [&](const QPoint& at) {
                          return std::abs(qGray(a.pixel(at)) - qGray(b.pixel(at))) >= kPlain;
                      })
        / (size * size);
}

TEST(Icons, OfTheMarksCanBeToldApartWithoutTheirColours)
{
    for (const int size : kSizes) {
        for (const QColor& ground : kGrounds) {
            for (int first = 0; first < kMarks; ++first) {
                const QImage image = drawnOn(ground, markIcon(first), size);
                for (int second = 0; second < first; ++second) {
                    EXPECT_GE(differenceInGrey(image, drawnOn(ground, markIcon(second), size)), 8)
                        << first << " and " << second << " in " << size << " pixels on "
                        << ground.name().toStdString();
                }
            }
        }
    }
}

TEST(Icons, CanBeSeenOnALightAndOnADarkGround)
{
    for (int mark = 0; mark <= kMarks; ++mark) {
        const QIcon icon = mark < kMarks ? markIcon(mark) : programIcon();
        for (const int size : kSizes) {
            for (const QColor& ground : kGrounds) {
                const QImage image = drawnOn(ground, icon, size);
                const int seen = countPixels(size, [&](const QPoint& at) {
                    return contrast(image.pixelColor(at), ground) >= kLeastContrast;
                });
                EXPECT_GE(100 * seen / (size * size), 15)
                    << mark << " in " << size << " pixels on " << ground.name().toStdString();
            }
        }
    }
}

TEST(Icons, ANumberBesideTheMarksHasNone)
{
    EXPECT_TRUE(markIcon(-1).isNull());
    EXPECT_TRUE(markIcon(kMarks).isNull());
}

TEST(Icons, TheProgramHasAnIconForTheDesktop)
{
    EXPECT_EQ(programIcon().pixmap(256, 256).size(), QSize(256, 256));
}

TEST(Icons, OnlyTheBannerIsAWidePicture)
{
    EXPECT_TRUE(QFile::exists(widePicture(kProgramBanner)));
    EXPECT_TRUE(widePicture(0).isEmpty());
}

} // namespace
