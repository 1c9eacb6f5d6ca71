#include "controls/readable.h"

#include <gtest/gtest.h>

namespace corma {

namespace {

TEST(Contrast, IsOneForTheSameColourAndTwentyOneForBlackAndWhite)
{
    EXPECT_DOUBLE_EQ(contrast(Qt::red, Qt::red), 1);
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 1e-9);
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 1e-9);
    EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.005);
    EXPECT_NEAR(contrast(Qt::red, Qt::white), 4.0, 0.005);
}

TEST(ReadableOn, AColourThatCanBeReadStays)
{
    EXPECT_EQ(readableOn(Qt::red, Qt::white), QColor(Qt::red));
    EXPECT_EQ(readableOn(Qt::black, Qt::white), QColor(Qt::black));
    EXPECT_EQ(readableOn(Qt::yellow, QColor(0x23, 0x26, 0x29)), QColor(Qt::yellow));
}

TEST(ReadableOn, AnInvalidColourStays)
{
    EXPECT_FALSE(readableOn(QColor(), Qt::white).isValid());
}

TEST(ReadableOn, AYellowOnWhiteBecomesADarkYellow)
{
    const QColor colour = readableOn(Qt::yellow, Qt::white);
    EXPECT_EQ(colour.red(), colour.green());
    EXPECT_EQ(colour.blue(), 0);
    EXPECT_LT(colour.red(), 200);
}

TEST(ReadableOn, ABlueOnADarkGroundBecomesALightBlue)
{
    const QColor colour = readableOn(Qt::blue, QColor(0x23, 0x26, 0x29));
    EXPECT_EQ(colour.blue(), 255);
    EXPECT_EQ(colour.red(), colour.green());
    EXPECT_GT(colour.red(), 50);
}

TEST(ReadableOn, WhatIsTransparentStaysSo)
{
    EXPECT_EQ(readableOn(QColor(255, 255, 0, 100), Qt::white).alpha(), 100);
}

TEST(ReadableOn, EveryColourCanBeReadOnEveryGroundAndKeepsItsHue)
{
    constexpr int kStep = 51;
    for (int ground = 0; ground < 256; ground += 15) {
        const QColor background(ground, ground, ground);
        for (int i = 0; i < 216; ++i) {
            const QColor colour(i / 36 * kStep, i / 6 % 6 * kStep, i % 6 * kStep);
            const QColor readable = readableOn(colour, background);
            EXPECT_GE(contrast(readable, background), kLeastContrast)
                << colour.name().toStdString() << " on " << ground;
            if (readable.hslHue() >= 0) {
                const int turn = std::abs(readable.hslHue() - colour.hslHue());
                EXPECT_LE(std::min(turn, 360 - turn), 6)
                    << colour.name().toStdString() << " on " << ground;
            }
        }
    }
}

TEST(ReadableOn, AColourChangesNoMoreThanItMust)
{
    const QColor colour = readableOn(QColor(255, 180, 0), Qt::white);
    EXPECT_LT(contrast(colour, Qt::white), kLeastContrast + 0.1);
}

} // namespace

} // namespace corma
