#include "controls/icons.h"
#include "controls/readable.h"

#include <QFile>
#include <QPainter>

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

namespace {

using corma::attributeIcon;
using corma::blockIcon;
using corma::contrast;
using corma::kAboutPicture;
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

/// Icons of which several are seen at a time.
struct Family
{
    const char* name;
    std::vector<QIcon> icons;
};

std::vector<Family> families()
{
    Family marks {"marks", {}};
    for (int mark = 0; mark < kMarks; ++mark) {
        marks.icons.push_back(markIcon(mark));
    }
    return {marks,
            {"blocks", {blockIcon(0), blockIcon(1), blockIcon(2)}},
            {"attributes", {attributeIcon(0), attributeIcon(1)}}};
}

TEST(Icons, OfAFamilyCanBeToldApartWithoutTheirColours)
{
    for (const Family& family : families()) {
        for (const int size : kSizes) {
            for (const QColor& ground : kGrounds) {
                for (std::size_t first = 0; first < family.icons.size(); ++first) {
                    const QImage image = drawnOn(ground, family.icons[first], size);
                    for (std::size_t second = 0; second < first; ++second) {
                        const QImage other = drawnOn(ground, family.icons[second], size);
                        EXPECT_GE(differenceInGrey(image, other), 8)
                            << family.name << ' ' << first << " and " << second << " in " << size
                            << " pixels on " << ground.name().toStdString();
                    }
                }
            }
        }
    }
}

TEST(Icons, CanBeSeenOnALightAndOnADarkGround)
{
    std::vector<Family> all = families();
    all.push_back({"program", {programIcon()}});
    for (const Family& family : all) {
        for (std::size_t i = 0; i < family.icons.size(); ++i) {
            for (const int size : kSizes) {
                for (const QColor& ground : kGrounds) {
                    const QImage image = drawnOn(ground, family.icons[i], size);
                    const int seen = countPixels(size, [&](const QPoint& at) {
                        return contrast(image.pixelColor(at), ground) >= kLeastContrast;
                    });
                    EXPECT_GE(100 * seen / (size * size), 15)
                        << family.name << ' ' << i << " in " << size << " pixels on "
                        << ground.name().toStdString();
                }
            }
        }
    }
}

TEST(Icons, ANumberBesideAFamilyHasNone)
{
    for (const QIcon& icon : {markIcon(-1), markIcon(kMarks), blockIcon(-1), blockIcon(3),
                              attributeIcon(-1), attributeIcon(2)}) {
        EXPECT_TRUE(icon.isNull());
    }
}

TEST(Icons, TheProgramHasAnIconForTheDesktop)
{
    EXPECT_EQ(programIcon().pixmap(256, 256).size(), QSize(256, 256));
}

TEST(Icons, TheBannerAndTheHeadOfTheAboutBoxAreWidePictures)
{
    EXPECT_TRUE(QFile::exists(widePicture(kProgramBanner)));
    EXPECT_TRUE(QFile::exists(widePicture(kAboutPicture)));
    for (const int none : {-1, 0, kProgramBanner + 1, kAboutPicture - 1, kAboutPicture + 1}) {
        EXPECT_TRUE(widePicture(none).isEmpty()) << none;
    }
}

} // namespace
