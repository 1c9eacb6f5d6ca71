#include "controls/GifPlayer.h"
#include "controls/pictures.h"
#include "gif_bytes.h"
#include "support/row_names.h"

#include <gtest/gtest.h>

namespace corma {

namespace {

using testing::nameOfRow;
using namespace std::chrono_literals;
using testing::gifBlocks;
using testing::gifBytes;
using testing::gifHead;
using testing::TestFrame;
using testing::TestScreen;

char letterOf(QRgb pixel)
{
    switch (pixel) {
    case qRgb(0, 0, 0):
        return 'K';
    case qRgb(255, 0, 0):
        return 'R';
    case qRgb(0, 255, 0):
        return 'G';
    case qRgb(0, 0, 255):
        return 'B';
    case qRgb(255, 255, 0):
        return 'Y';
    case qRgba(0, 0, 0, 0):
        return '.';
    default:
        return '?';
    }
}

/// A letter for each pixel, a blank between the rows.
std::string textOf(const QImage& image)
{
    std::string text;
    for (int y = 0; y < image.height(); ++y) {
        text += y == 0 ? "" : " ";
        for (int x = 0; x < image.width(); ++x) {
            text += letterOf(image.pixel(x, y));
        }
    }
    return text;
}

struct PicturesCase
{
    const char* name;
    TestScreen screen; // with background blue
    std::vector<TestFrame> frames;
    std::vector<std::string> expected; // one after the other
};

class PicturesOf : public ::testing::TestWithParam<PicturesCase>
{
};

TEST_P(PicturesOf, AreComposed)
{
    const auto player = GifPlayer::open(gifBytes(GetParam().screen, GetParam().frames));
    ASSERT_TRUE(player);
    for (const std::string& expected : GetParam().expected) {
        EXPECT_EQ(textOf(player->next().picture), expected);
    }
}

constexpr TestScreen kSmall {.width = 3, .height = 1};

// clang-format off
const PicturesCase kPicturesCases[] = {
    {"AFrameStays", kSmall,
        {{.left = 0, .colour = 1}, {.left = 1, .colour = 2}},
        {"RBB", "RGB"}},
    {"AfterTheLastFrameAllIsBackground", kSmall,
        {{.left = 0, .colour = 1}, {.left = 1, .colour = 2}},
        {"RBB", "RGB", "RBB", "RGB", "RBB"}},
    {"WithoutColoursTheBackgroundIsTransparent", {.width = 3, .height = 1, .hasColours = false},
        {{.left = 0, .colour = 1, .hasOwnColours = true}, {.left = 1, .colour = 1, .hasOwnColours = true}},
        {"Y..", "YY.", "Y.."}},
    {"TheBackgroundIsNoColourOfTheTable", {.width = 3, .height = 1, .background = 9},
        {{.left = 0, .colour = 1}, {.left = 1, .colour = 2}},
        {"R..", "RG."}},
    {"Disposal1LeavesTheFrame", kSmall,
        {{.left = 0, .colour = 1, .delay = 5, .disposal = 1}, {.left = 1, .colour = 2}},
        {"RBB", "RGB"}},
    {"Disposal2ClearsTheFramesArea", kSmall,
        {{.width = 3, .colour = 1}, {.left = 0, .width = 2, .colour = 2, .delay = 5, .disposal = 2}, {.left = 1, .colour = 0}},
        {"RRR", "GGR", "BKR", "RRR"}},
    {"Disposal3PutsBackWhatWasThere", kSmall,
        {{.width = 2, .colour = 1}, {.left = 1, .width = 2, .colour = 2, .delay = 5, .disposal = 3}, {.left = 0, .colour = 0}},
        {"RRB", "RGG", "KRB", "RRB"}},
    {"Disposal3OfTheFirstFrame", kSmall,
        {{.width = 2, .colour = 1, .delay = 5, .disposal = 3}, {.left = 2, .colour = 2}},
        {"RRB", "BBG"}},
    {"Disposal3TwiceGoesBackToTheSame", kSmall,
        {{.colour = 1}, {.left = 1, .colour = 2, .delay = 5, .disposal = 3}, {.left = 2, .colour = 0, .delay = 5, .disposal = 3}, {.colour = 0}},
        {"RBB", "RGB", "RBK", "KBB"}},
    {"DisposalOfAnUnknownNumberLeavesTheFrame", kSmall,
        {{.colour = 1, .delay = 5, .disposal = 7}, {.left = 1, .colour = 2}},
        {"RBB", "RGB"}},
    {"TransparentPixelsShowWhatWasThere", kSmall,
        {{.width = 2, .colour = 1}, {.width = 3, .colour = 2, .delay = 5, .transparent = 2}, {.left = 2, .colour = 2, .delay = 5, .transparent = 1}},
        {"RRB", "RRB", "RRG"}},
    {"AFrameReachesBeyondTheScreen", kSmall,
        {{.left = 2, .width = 2, .height = 3, .colour = 1, .delay = 5, .disposal = 3}, {.left = 9, .colour = 2, .delay = 5, .disposal = 2}, {.colour = 0}},
        {"BBR", "BBB", "KBB"}},
    {"AFrameIsBesideTheScreen", kSmall,
        {{.left = 65535, .top = 65535, .delay = 5, .disposal = 3}, {.colour = 2}},
        {"BBB", "GBB"}},
    {"AFrameHasColoursOfItsOwn", kSmall,
        {{.colour = 1, .hasOwnColours = true}, {.left = 1, .colour = 1}},
        {"YBB", "YRB"}},
    {"RowsAreOfTheScreensWidth", {.width = 2, .height = 2},
        {{.left = 1, .top = 0, .height = 2, .colour = 1}, {.left = 0, .top = 1, .colour = 2}},
        {"BR BR", "BR GR"}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(, PicturesOf, ::testing::ValuesIn(kPicturesCases), nameOfRow);

TEST(GifPlayer, ADelayBelow5IsATenthOfASecond)
{
    EXPECT_EQ(timeOfFrame(-1), 100ms);
    EXPECT_EQ(timeOfFrame(0), 100ms);
    EXPECT_EQ(timeOfFrame(4), 100ms);
    EXPECT_EQ(timeOfFrame(5), 50ms);
    EXPECT_EQ(timeOfFrame(10), 100ms);
    EXPECT_EQ(timeOfFrame(65535), 655350ms);
}

TEST(GifPlayer, EachFrameHasItsTime)
{
    const auto player
        = GifPlayer::open(gifBytes(kSmall, {{.delay = 5}, {}, {.delay = 4}, {.delay = 300}}));
    ASSERT_TRUE(player);
    for (const auto time : {50ms, 100ms, 100ms, 3000ms, 50ms}) {
        EXPECT_EQ(player->next().time, time);
    }
}

TEST(GifPlayer, ItsSizeIsThatOfTheScreen)
{
    const auto player = GifPlayer::open(gifBytes({.width = 30, .height = 20}, {{}, {}}));
    ASSERT_TRUE(player);
    EXPECT_EQ(player->size(), QSize(30, 20));
}

TEST(GifPlayer, OneImageIsNoAnimation)
{
    EXPECT_FALSE(GifPlayer::open(gifBytes({}, {{}})));
    EXPECT_FALSE(GifPlayer::open("nonsense"));
    EXPECT_FALSE(GifPlayer::open(""));
}

constexpr TestFrame kBroken {.width = 0, .height = 0};

TEST(GifPlayer, ABrokenFrameIsDroppedWithoutTakingTime)
{
    const auto player
        = GifPlayer::open(gifBytes(kSmall, {{.colour = 1}, kBroken, {.left = 1, .colour = 2}}));
    ASSERT_TRUE(player);
    EXPECT_EQ(player->frames(), 3U);
    EXPECT_EQ(textOf(player->next().picture), "RBB");

    const TimedPicture dropped = player->next();
    EXPECT_TRUE(dropped.picture.isNull());
    EXPECT_EQ(dropped.time, 0ms);
    EXPECT_EQ(player->frames(), 2U);

    for (const char* expected : {"RGB", "RBB", "RGB", "RBB"}) {
        EXPECT_EQ(textOf(player->next().picture), expected);
    }
}

TEST(GifPlayer, ABrokenLastFrameIsFollowedByTheFirst)
{
    const auto player = GifPlayer::open(gifBytes(kSmall, {{.colour = 1}, kBroken}));
    ASSERT_TRUE(player);
    EXPECT_EQ(textOf(player->next().picture), "RBB");
    EXPECT_TRUE(player->next().picture.isNull());
    EXPECT_EQ(textOf(player->next().picture), "RBB");
    EXPECT_EQ(textOf(player->next().picture), "RBB");
}

TEST(GifPlayer, BrokenFramesAtTheBeginningAreDroppedAtOnce)
{
    const auto player = GifPlayer::open(gifBytes(kSmall, {kBroken, kBroken, {.colour = 2}}));
    ASSERT_TRUE(player);
    EXPECT_EQ(player->frames(), 1U);
    EXPECT_EQ(textOf(player->next().picture), "GBB");
}

TEST(GifPlayer, BrokenFramesAloneAreNothing)
{
    EXPECT_FALSE(GifPlayer::open(gifBytes(kSmall, {kBroken, kBroken})));
}

TEST(GifPlayer, TheSearchForAFrameThatCanBeDecodedHasAnEnd)
{
    const auto isOpened = [](std::size_t broken) {
        std::vector<TestFrame> frames(broken, kBroken);
        frames.push_back({});
        return GifPlayer::open(gifBytes(kSmall, frames)) != nullptr;
    };
    EXPECT_TRUE(isOpened(1'000));
    EXPECT_FALSE(isOpened(10'000));
}

TEST(GifPlayer, AScreenHasAtMostTheNumberOfPixelsThatCanBeShown)
{
    const auto isOpened = [](int width, int height) {
        return GifPlayer::open(gifBytes({.width = width, .height = height}, {{}, {}})) != nullptr;
    };
    EXPECT_TRUE(isOpened(8192, 4096));
    EXPECT_FALSE(isOpened(8192, 4097));
    EXPECT_FALSE(isOpened(65535, 65535));
    EXPECT_FALSE(isOpened(0, 4));
    EXPECT_FALSE(isOpened(4, 0));
}

TEST(GifPlayer, AFrameThatClaimsTooManyPixelsIsBroken)
{
    // The image data is that of one pixel; the size is at the fifth byte of the block.
    std::string image = gifBlocks({});
    image.replace(5, 4, "\xFF\xFF\xFF\xFF");
    const auto player = GifPlayer::open(gifHead(kSmall) + image + gifBlocks({.colour = 2}) + ";");
    ASSERT_TRUE(player);
    EXPECT_EQ(player->frames(), 1U);
    EXPECT_EQ(textOf(player->next().picture), "GBB");
}

} // namespace

} // namespace corma
