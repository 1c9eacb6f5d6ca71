#include "controls/icons.h"

#include <QFile>

#include <gtest/gtest.h>

using corma::kMarks;
using corma::kProgramBanner;
using corma::markIcon;
using corma::programIcon;
using corma::widePicture;

TEST(Icons, EveryMarkHasAPictureOfItsOwn)
{
    for (int first = 0; first < kMarks; ++first) {
        const QImage image = markIcon(first).pixmap(16, 16).toImage();
        ASSERT_EQ(image.size(), QSize(16, 16)) << first;
        for (int second = 0; second < first; ++second) {
            EXPECT_NE(image, markIcon(second).pixmap(16, 16).toImage()) << first << ' ' << second;
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
