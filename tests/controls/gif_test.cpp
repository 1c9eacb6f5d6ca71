#include "controls/gif.h"
#include "gif_bytes.h"
#include "support/row_names.h"

#include <gtest/gtest.h>

namespace corma {

namespace {

using testing::nameOfRow;
using namespace std::string_literals;
using testing::gifBlocks;
using testing::gifBytes;
using testing::gifHead;
using testing::TestFrame;
using testing::TestScreen;

/// A line for the screen and one for each frame, as "left,top widthxheight delay disposal".
std::string textOf(std::string_view bytes)
{
    const auto gif = parseGif(bytes);
    if (!gif) {
        return "nothing";
    }
    std::string text = std::to_string(gif->width) + "x" + std::to_string(gif->height);
    for (const GifFrame& frame : gif->frames) {
        text += "\n" + std::to_string(frame.left) + "," + std::to_string(frame.top) + " "
            + std::to_string(frame.width) + "x" + std::to_string(frame.height) + " "
            + std::to_string(frame.delay) + " " + std::to_string(frame.disposal);
    }
    return text;
}

const std::string kHead = gifHead({});
const std::string kDot = gifBlocks({});
const std::string kControl = "\x21\xF9\x04\x08\x07\0\0\0"s; // disposal 2, delay 7
const std::string kComment = "\x21\xFE\x02hi\0"s;
const std::string kTextBlock = "\x21\x01\x01x\0"s;
const std::string kApplication = "\x21\xFF\x0BNETSCAPE2.0\x03\x01\0\0\0"s;

struct GifCase
{
    const char* name;
    std::string bytes;
    std::string expected;
};

class GifOf : public ::testing::TestWithParam<GifCase>
{
};

TEST_P(GifOf, IsTakenApart)
{
    EXPECT_EQ(textOf(GetParam().bytes), GetParam().expected);
}

// clang-format off
const GifCase kGifCases[] = {
    {"NoBytes",                       "", "nothing"},
    {"ASignatureOnly",                "GIF", "nothing"},
    {"AnotherSignature",              "BIF" + (kHead + kDot + ";").substr(3), "nothing"},
    {"AHeadOnly",                     kHead, "nothing"},
    {"AHeadThatIsCut",                kHead.substr(0, 12), "nothing"},
    {"AColourTableThatIsCut",         kHead.substr(0, kHead.size() - 1), "nothing"},
    {"NoImage",                       kHead + kComment + ";", "nothing"},
    {"OneImage",                      kHead + kDot + ";", "4x4\n0,0 1x1 -1 0"},
    {"AnyVersion",                    "GIFxyz" + (kHead + kDot).substr(6), "4x4\n0,0 1x1 -1 0"},
    {"NoTrailer",                     kHead + kDot, "4x4\n0,0 1x1 -1 0"},
    {"NoColours",                     gifHead({.hasColours = false}) + kDot, "4x4\n0,0 1x1 -1 0"},
    {"AnImageWithColoursOfItsOwn",    kHead + gifBlocks({.hasOwnColours = true}) + kDot, "4x4\n0,0 1x1 -1 0\n0,0 1x1 -1 0"},
    {"BytesBehindTheTrailer",         kHead + kDot + ";" + kDot, "4x4\n0,0 1x1 -1 0"},
    {"AControlExtension",             kHead + kControl + kDot, "4x4\n0,0 1x1 7 2"},
    {"AControlExtensionForOneImage",  kHead + kControl + kDot + kDot, "4x4\n0,0 1x1 7 2\n0,0 1x1 -1 0"},
    {"ACommentBetween",               kHead + kControl + kComment + kDot, "4x4\n0,0 1x1 7 2"},
    {"AnApplicationsExtension",       kHead + kApplication + kControl + kDot, "4x4\n0,0 1x1 7 2"},
    {"ATextTakesTheControl",          kHead + kControl + kTextBlock + kDot, "4x4\n0,0 1x1 -1 0"},
    {"TheLastOfTwoControlsCounts",    kHead + kControl + "\x21\xF9\x04\x04\x01\x02\0\0"s + kDot, "4x4\n0,0 1x1 513 1"},
    {"AControlOfAnotherLength",       kHead + "\x21\xF9\x03\x08\x07\0\0"s + kDot, "4x4\n0,0 1x1 -1 0"},
    {"AControlWithMoreBehindIt",      kHead + "\x21\xF9\x04\x08\x07\0\0\x01x\0"s + kDot, "4x4\n0,0 1x1 -1 0"},
    {"AnyDisposal",                   kHead + gifBlocks({.delay = 0, .disposal = 7}), "4x4\n0,0 1x1 0 7"},
    {"TheLargestNumbers",             gifHead({.width = 65535, .height = 65535}) + gifBlocks({.left = 65535, .top = 65534, .delay = 65535}), "65535x65535\n65535,65534 1x1 65535 0"},
    {"AnImageOfNoSize",               kHead + gifBlocks({.width = 0, .height = 0}), "4x4\n0,0 0x0 -1 0"},
    {"AnUnknownBlock",                kHead + kDot + "\x33" + kDot, "4x4\n0,0 1x1 -1 0"},
    {"AnUnknownExtension",            kHead + "\x21\x77\x01!\0"s + kDot, "4x4\n0,0 1x1 -1 0"},
    {"AnExtensionThatIsCut",          kHead + kDot + "\x21\xFE\x05hi", "4x4\n0,0 1x1 -1 0"},
    {"AnExtensionWithoutAKind",       kHead + kDot + "\x21", "4x4\n0,0 1x1 -1 0"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(, GifOf, ::testing::ValuesIn(kGifCases), nameOfRow);

TEST(Gif, AnImageThatIsCutAnywhereIsNone)
{
    const std::string whole = kHead + kDot;
    const std::string image = gifBlocks({.width = 2, .delay = 3, .hasOwnColours = true});
    for (std::size_t size = 0; size < image.size(); ++size) {
        EXPECT_EQ(textOf(whole + image.substr(0, size)), "4x4\n0,0 1x1 -1 0") << size;
    }
    EXPECT_EQ(textOf(whole + image), "4x4\n0,0 1x1 -1 0\n0,0 2x1 3 0");
}

TEST(Gif, TheBackgroundIsAColourOfTheGlobalTable)
{
    const auto backgroundOf = [](const TestScreen& screen) {
        const std::string bytes = gifBytes(screen, {{}});
        return parseGif(bytes)->background;
    };
    EXPECT_EQ(backgroundOf({.background = 3}), (GifColour {.red = 0, .green = 0, .blue = 255}));
    EXPECT_EQ(backgroundOf({.background = 1}), (GifColour {.red = 255, .green = 0, .blue = 0}));
    EXPECT_EQ(backgroundOf({.background = 4}), std::nullopt);
    EXPECT_EQ(backgroundOf({.hasColours = false, .background = 0}), std::nullopt);
}

TEST(Gif, AFrameBecomesAFileOfItsOwn)
{
    const std::string bytes = gifBytes({.width = 9},
                                       {{.left = 1, .top = 2, .width = 3, .height = 2},
                                        {.left = 5, .delay = 8, .disposal = 3, .transparent = 2},
                                        {.hasOwnColours = true}});
    const auto gif = parseGif(bytes);
    ASSERT_TRUE(gif);
    ASSERT_EQ(gif->frames.size(), 3U);
    std::vector<std::string> files;
    for (const GifFrame& frame : gif->frames) {
        files.push_back(fileOfFrame(*gif, frame));
    }
    EXPECT_EQ(files[0],
              gifBytes({.width = 3, .height = 2, .background = 0}, {{.width = 3, .height = 2}}));
    EXPECT_EQ(files[1],
              gifBytes({.width = 1, .height = 1, .background = 0},
                       {{.delay = 8, .disposal = 3, .transparent = 2}}));
    EXPECT_EQ(files[2],
              gifBytes({.width = 1, .height = 1, .background = 0}, {{.hasOwnColours = true}}));
}

TEST(Gif, AFrameOfAFileWithoutColoursHasNoneEither)
{
    const std::string bytes = gifBytes({.hasColours = false}, {{.hasOwnColours = true}, {}});
    const auto gif = parseGif(bytes);
    ASSERT_TRUE(gif);
    EXPECT_EQ(fileOfFrame(*gif, gif->frames[1]),
              gifBytes({.width = 1, .height = 1, .hasColours = false, .background = 0}, {{}}));
}

} // namespace

} // namespace corma
