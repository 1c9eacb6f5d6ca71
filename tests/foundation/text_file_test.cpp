#include "foundation/text_file.h"
#include "platform/text.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using corma::testing::TempFolder;

namespace corma {
namespace {

std::wstring textOf(const TextFile& file)
{
    return decode(file.bytes(), file.encoding());
}

std::wstring readBack(const std::string& bytes)
{
    const TempFolder folder;
    const auto file = xx_openUnicode(folder.write(L"a.ini", bytes), OpenMode::text);
    return file ? textOf(*file) : L"not opened";
}

struct EncodingRow
{
    const char* sentence;
    std::string bytes;
    std::wstring text;
};

class TextFileEncoding : public ::testing::TestWithParam<EncodingRow>
{
};

TEST_P(TextFileEncoding, IsFollowed)
{
    EXPECT_EQ(readBack(GetParam().bytes), GetParam().text);
}

using namespace std::string_literals;

INSTANTIATE_TEST_SUITE_P(
    Marks, TextFileEncoding,
    ::testing::Values(
        EncodingRow {"WithoutAMarkValidUtf8IsUtf8", "m\xC2\xB2", L"m²"},
        EncodingRow {"WithoutAMarkAnythingElseIsWindows1252", "m\xB2 \x80", L"m² €"},
        EncodingRow {"OneBadByteMakesTheWholeFileWindows1252", "\xC2\xB2\xFF", L"Â²ÿ"},
        EncodingRow {"AMarkMakesItUtf8", "\xEF\xBB\xBFm\xC2\xB2", L"m²"},
        EncodingRow {"BrokenUtf8BehindAMarkIsReplaced",
                     "\xEF\xBB\xBF"
                     "a\xFFz",
                     L"a\xFFFDz"},
        EncodingRow {"Utf16LittleEndian",
                     "\xFF\xFE"
                     "a\0\xAC\x20"s,
                     L"a€"},
        EncodingRow {"Utf16BigEndian", "\xFE\xFF\0a\x20\xAC"s, L"a€"},
        EncodingRow {"Utf16PairsOfSurrogates", "\xFF\xFE\x3D\xD8\x00\xDE"s, L"\x1F600"},
        EncodingRow {"ALoneSurrogateIsReplaced",
                     "\xFF\xFE\x3D\xD8"
                     "a\0"s,
                     L"\xFFFD"
                     L"a"},
        EncodingRow {"ALoneTrailIsReplaced",
                     "\xFF\xFE\x00\xDE"
                     "a\0"s,
                     L"\xFFFD"
                     L"a"},
        EncodingRow {"AnOddByteAtTheEndIsReplaced",
                     "\xFF\xFE"
                     "a\0b"s,
                     L"a\xFFFD"},
        EncodingRow {"OnlyAMark", "\xEF\xBB\xBF", L""},
        EncodingRow {"OnlyAUtf16Mark", "\xFF\xFE", L""}, EncodingRow {"AnEmptyFile", "", L""},
        EncodingRow {"NulBytesAreThere", "a\0b"s, L"a\0b"s}),
    [](const auto& row) { return row.param.sentence; });

struct Utf8Row
{
    const char* sentence;
    std::string bytes;
    OpenMode mode;
    std::string utf8;
    bool isConverted;
};

class Utf8OfAFile : public ::testing::TestWithParam<Utf8Row>
{
};

TEST_P(Utf8OfAFile, IsWellFormed)
{
    const TempFolder folder;
    const auto file = xx_openUnicode(folder.write(L"a.ini", GetParam().bytes), GetParam().mode);
    ASSERT_TRUE(file);
    std::string converted = "former text";
    const std::string_view text = file->utf8(converted);
    EXPECT_EQ(text, GetParam().utf8);
    EXPECT_TRUE(isUtf8(text));
    EXPECT_EQ(text.data() == file->bytes().data(), !GetParam().isConverted);
    EXPECT_EQ(fromUtf8(text), textOf(*file));
}

INSTANTIATE_TEST_SUITE_P(
    TextFile, Utf8OfAFile,
    ::testing::Values(Utf8Row {"AnEmptyFile", "", OpenMode::text, "", false},
                      Utf8Row {"AsciiIsItself", "A=1\r\n", OpenMode::text, "A=1\r\n", false},
                      Utf8Row {"Utf8IsItself", "m\xC2\xB2", OpenMode::text, "m\xC2\xB2", false},
                      Utf8Row {"TheMarkIsNoPartOfIt", "\xEF\xBB\xBFm\xC2\xB2", OpenMode::text,
                               "m\xC2\xB2", false},
                      Utf8Row {"Windows1252IsConverted", "m\xB2 \x80", OpenMode::text,
                               "m\xC2\xB2 \xE2\x82\xAC", true},
                      Utf8Row {"BrokenUtf8BehindAMarkIsMended", "\xEF\xBB\xBF\xE9z", OpenMode::text,
                               "\xEF\xBF\xBDz", true},
                      Utf8Row {"Utf16IsWhatItWasTurnedInto", "\xFF\xFE\xAC\x20", OpenMode::text,
                               "\xE2\x82\xAC", false},
                      Utf8Row {"BytesAsTheyAreAreConvertedWhateverTheyLookLike", "\xC2\xB2",
                               OpenMode::binary, "\xC3\x82\xC2\xB2", true},
                      Utf8Row {"NulBytesAreKept", "a\0\xE9"s, OpenMode::text, "a\0\xC3\xA9"s,
                               true}),
    [](const auto& row) { return row.param.sentence; });

TEST(TextFile, ItsUtf8IsThatOfTheLastRefresh)
{
    const TempFolder folder;
    const auto file = xx_openUnicode(folder.write(L"a.ini", "one"), OpenMode::text);
    std::string converted;
    EXPECT_EQ(file->utf8(converted), "one");
    folder.write(L"a.ini", "t\xE9");
    EXPECT_EQ(file->utf8(converted), "one");
    EXPECT_TRUE(file->refresh());
    EXPECT_EQ(file->utf8(converted), "t\xC3\xA9");
}

TEST(TextFile, CannotBeOpenedWhenItIsNoFile)
{
    const TempFolder folder;
    EXPECT_EQ(xx_openUnicode(folder.path(), OpenMode::text), nullptr);
    EXPECT_EQ(xx_openUnicode(folder.path(L"none"), OpenMode::text), nullptr);
    EXPECT_EQ(xx_openUnicode(L"/dev/null", OpenMode::text), nullptr);
    EXPECT_EQ(xx_openUnicode(L"", OpenMode::text), nullptr);
}

TEST(TextFile, BinaryModeTakesTheBytesAsTheyAre)
{
    const TempFolder folder;
    const auto file = xx_openUnicode(folder.write(L"a.ini", "\xEF\xBB\xBFx"), OpenMode::binary);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->encoding(), Encoding::windows1252);
    EXPECT_EQ(file->bytes().size(), 4U);
}

TEST(TextFile, FollowsTheFileOnDisk)
{
    const TempFolder folder;
    const auto file = xx_openUnicode(folder.write(L"a.ini", "one"), OpenMode::text);
    EXPECT_FALSE(file->refresh());
    folder.write(L"a.ini", "two");
    EXPECT_TRUE(file->refresh());
    EXPECT_EQ(textOf(*file), L"two");
    folder.replace(L"a.ini", "six");
    EXPECT_TRUE(file->refresh());
    EXPECT_EQ(textOf(*file), L"six");
    testing::letFilesSettle();
    EXPECT_FALSE(file->refresh());
    EXPECT_EQ(textOf(*file), L"six");
}

TEST(TextFile, AFileThatIsWrittenAgainTheSameIsNoOtherText)
{
    const TempFolder folder;
    const auto file = xx_openUnicode(folder.write(L"a.ini", "same"), OpenMode::text);
    testing::letFilesSettle();
    folder.replace(L"a.ini", "same");
    EXPECT_FALSE(file->refresh());
}

TEST(TextFile, AMarkThatGoesCanChangeTheText)
{
    const TempFolder folder;
    const auto file = xx_openUnicode(folder.write(L"a.ini", "\xEF\xBB\xBF\xE9"), OpenMode::text);
    EXPECT_EQ(textOf(*file), L"\xFFFD");
    folder.write(L"a.ini", "\xE9");
    EXPECT_TRUE(file->refresh());
    EXPECT_EQ(textOf(*file), L"é");
}

TEST(TextFile, AFileThatVanishesKeepsItsLastText)
{
    const TempFolder folder;
    const auto file = xx_openUnicode(folder.write(L"a.ini", "one"), OpenMode::text);
    folder.remove(L"a.ini");
    EXPECT_FALSE(file->refresh());
    EXPECT_EQ(textOf(*file), L"one");
    folder.write(L"a.ini", "two");
    EXPECT_TRUE(file->refresh());
    EXPECT_EQ(textOf(*file), L"two");
}

TEST(DecodeInto, HeedsItsBound)
{
    wchar_t out[] = L"#####";
    EXPECT_EQ(decodeInto("\xC3\xA9t\xC3\xA9", Encoding::utf8, out, 4), 3U);
    EXPECT_STREQ(out, L"été");
    EXPECT_EQ(decodeInto("abcd", Encoding::utf8, out, 3), 2U);
    EXPECT_STREQ(out, L"ab");
    EXPECT_EQ(decodeInto("x", Encoding::utf8, out, 1), 0U);
    EXPECT_STREQ(out, L"");
    EXPECT_EQ(decodeInto("x", Encoding::utf8, nullptr, 0), 0U);
}

} // namespace
} // namespace corma
