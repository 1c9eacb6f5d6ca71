#include "host/dwg/lz77.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace corma::host::dwg {
namespace {

using Decompress = std::optional<std::size_t> (*)(std::string_view, std::span<char>);

// Two digits are a byte, anything between quotes is itself.
std::string bytesFrom(std::string_view form)
{
    constexpr int kHexadecimal = 16;
    std::string bytes;
    for (std::size_t at = 0; at < form.size();) {
        if (form[at] == ' ') {
            ++at;
        } else if (form[at] == '\'') {
            const std::size_t end = form.find('\'', at + 1);
            bytes += form.substr(at + 1, end - at - 1);
            at = end + 1;
        } else {
            bytes += static_cast<char>(
                std::stoi(std::string(form.substr(at, 2)), nullptr, kHexadecimal));
            at += 2;
        }
    }
    return bytes;
}

// What comes out where there is room for it and some more bytes, or not one more.
std::string decompressed(Decompress decompress, std::string_view stream, std::size_t room)
{
    std::string out(room, '\xEE');
    const auto size = decompress(stream, {out.data(), out.size()});
    return size ? out.substr(0, *size) : "none";
}

std::string repeated(std::string_view text, std::size_t size)
{
    std::string all;
    while (all.size() < size) {
        all += text;
    }
    all.resize(size);
    return all;
}

struct StreamRow
{
    const char* sentence;
    const char* stream;
    std::string expected;
};

std::string sentenceOf(const ::testing::TestParamInfo<StreamRow>& row)
{
    return row.param.sentence;
}

void checkRow(Decompress decompress, const StreamRow& row)
{
    const std::string stream = bytesFrom(row.stream);
    const std::size_t size = row.expected.size();
    constexpr std::size_t kMore = 40;
    EXPECT_EQ(decompressed(decompress, stream, size), row.expected);
    EXPECT_EQ(decompressed(decompress, stream, size + kMore), row.expected);
    EXPECT_EQ(decompressed(decompress, stream, size - 1), "none");
}

class PageStream : public ::testing::TestWithParam<StreamRow>
{
};

TEST_P(PageStream, Decompresses)
{
    checkRow(decompressPage, GetParam());
}

const std::string kTwenty = "abcdefghijklmnopqrst";

// clang-format off
const StreamRow pageRows[] = {
    {"ARunOfFourBytes",              "01 'abcd' 11",                          "abcd"},
    {"ARunOf18Bytes",                "0F 'abcdefghijklmnopqr' 11",            "abcdefghijklmnopqr"},
    {"ALongRun",                     "00 02 'abcdefghijklmnopqrst' 11",       kTwenty},
    {"TheEndMayHaveZerosBehind",     "01 'abcd' 11 00 00",                    "abcd"},
    {"NearThreeBytes",               "01 'abcd' 4C 00 11",                    "abcdabc"},
    {"NearTheLastByteAgain",         "01 'abcd' 50 00 11",                    "abcddddd"},
    {"NearFourteenBytes",            "01 'abcd' FC 00 11",                    repeated("abcd", 18)},
    {"NearWithOneLiteral",           "01 'abcd' 4D 00 'x' 11",                "abcdabcx"},
    {"NearWithThreeLiterals",        "01 'abcd' 4F 00 'xyz' 11",              "abcdabcxyz"},
    {"NearWithARunBehind",           "01 'abcd' 4C 00 01 'wxyz' 11",          "abcdabcwxyz"},
    {"TwoAtOnce",                    "01 'abcd' 4C 00 4C 00 11",              "abcdabcdab"},
    {"MiddleThreeBytes",             "01 'abcd' 21 0C 00 11",                 "abcdabc"},
    {"Middle33Bytes",                "01 'abcd' 3F 0C 00 11",                 repeated("abcd", 37)},
    {"MiddleLonger",                 "01 'abcd' 20 01 0C 00 11",              repeated("abcd", 38)},
    {"MiddleMuchLonger",             "01 'abcd' 20 00 00 05 0C 00 11",        repeated("abcd", 552)},
    {"MiddleWithTwoLiterals",        "01 'abcd' 21 0E 00 'xy' 11",            "abcdabcxy"},
};

// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, PageStream, ::testing::ValuesIn(pageRows), sentenceOf);

TEST(PageStream, FarBytesComeFromBehindTheReachOfOthers)
{
    constexpr std::size_t kFarthest = 0x4000; // of the other kinds
    std::string stream = bytesFrom("05 'abcdefgh' 20");
    stream += std::string(64, '\0') + bytesFrom("17 00 00"); // 16376 times the last byte
    stream += bytesFrom("12 00 00 10 01 00 00 11"); // four and ten bytes from kFarthest
    const std::string expected
        = "abcdefgh" + std::string(kFarthest - 8, 'h') + "abcd" + "efghhhhhhh";
    EXPECT_TRUE(decompressed(decompressPage, stream, expected.size()) == expected);
}

TEST(PageStream, ADamagedOneGivesNothing)
{
    const std::vector<const char*> streams = {
        "",
        "01",
        "01 'abc'", // a run is cut off
        "01 'abcd'", // no end mark
        "01 'abcd' 4C", // a repetition is cut off
        "01 'abcd' 21 0C",
        "01 'abcd' 20 00 00",
        "01 'abcd' 01 11", // a run behind a run
        "01 'abcd' 40 01 11", // five bytes back
        "01 'abcd' 21 10 00 11",
        "01 'abcd' 12 00 00 11",
        "4C 00 11", // a repetition of nothing
        "00",
        "00 00 00 00 00",
    };
    for (const char* const stream : streams) {
        constexpr std::size_t kRoom = 2000;
        EXPECT_EQ(decompressed(decompressPage, bytesFrom(stream), kRoom), "none") << stream;
    }
}

std::string randomBytes(std::size_t size, int kinds, std::mt19937& random)
{
    std::uniform_int_distribution<int> byte(0, kinds - 1);
    std::string bytes;
    while (bytes.size() < size) {
        bytes += static_cast<char>(byte(random));
    }
    return bytes;
}

void checkRoundTrip(const std::string& bytes)
{
    const std::string stream = compressPage(bytes);
    EXPECT_TRUE(decompressed(decompressPage, stream, bytes.size()) == bytes) << bytes.size();
}

TEST(CompressPage, RandomBytesOfAllSizesComeBack)
{
    constexpr std::size_t kMost = 700;
    constexpr int kAll = 256;
    std::mt19937 random(1);
    for (std::size_t size = kLeastToCompress; size < kMost; ++size) {
        checkRoundTrip(randomBytes(size, kAll, random));
        checkRoundTrip(randomBytes(size, 2, random));
    }
}

TEST(CompressPage, WholePagesComeBack)
{
    constexpr std::size_t kPage = 0x7400;
    std::mt19937 random(2);
    for (const int kinds : {1, 2, 3, 5, 16, 256}) {
        checkRoundTrip(randomBytes(kPage, kinds, random));
    }
}

TEST(CompressPage, RepetitionsFromEachDistanceComeBack)
{
    constexpr std::size_t kPiece = 40;
    constexpr int kAll = 256;
    std::mt19937 random(3);
    const std::string piece = randomBytes(kPiece, kAll, random);
    for (const std::size_t distance :
         {40U, 1023U, 1024U, 1025U, 16383U, 16384U, 16385U, 32766U, 32767U, 32768U, 40000U}) {
        for (const std::size_t length : {4U, 9U, 10U, 14U, 15U, 33U, 34U, 40U}) {
            const std::string between = randomBytes(distance - kPiece, kAll, random);
            checkRoundTrip(piece + between + piece.substr(0, length) + "end");
        }
    }
}

TEST(CompressPage, WhatRepeatsBecomesSmall)
{
    constexpr std::size_t kPage = 0x7400;
    constexpr std::size_t kSmall = 200;
    EXPECT_LT(compressPage(std::string(kPage, '\0')).size(), kSmall);
    EXPECT_LT(compressPage(repeated(kTwenty, kPage)).size(), kSmall);
}

TEST(CompressPage, WhatDoesNotRepeatBecomesLittleLonger)
{
    constexpr std::size_t kPage = 0x7400;
    constexpr int kAll = 256;
    std::mt19937 random(4);
    EXPECT_LT(compressPage(randomBytes(kPage, kAll, random)).size(), kPage + kPage / 100);
}

class R2007Stream : public ::testing::TestWithParam<StreamRow>
{
};

TEST_P(R2007Stream, Decompresses)
{
    checkRow(decompressR2007Page, GetParam());
}

const std::string kAlphabet = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMN";

// clang-format off
const StreamRow r2007Rows[] = {
    {"ARunOf8Bytes",           "00 'abcdefgh'",                                      kAlphabet.substr(0, 8)},
    {"ARunOf9Bytes",           "01 'bcdefghia'",                                     kAlphabet.substr(0, 9)},
    {"ARunOf11Bytes",          "03 'kcdefghijba'",                                   kAlphabet.substr(0, 11)},
    {"ARunOf15Bytes",          "07 'oghijklmncdefba'",                               kAlphabet.substr(0, 15)},
    {"ARunOf16Bytes",          "08 'ijklmnopabcdefgh'",                              kAlphabet.substr(0, 16)},
    {"ARunOf17Bytes",          "09 'jklmnopqiabcdefgh'",                             kAlphabet.substr(0, 17)},
    {"ARunOf19Bytes",          "0B 'lmnopqrsdefghijkcba'",                           kAlphabet.substr(0, 19)},
    {"ARunOf23Bytes",          "0F 00 'pqrstuvwhijklmnodefgcba'",                    kAlphabet.substr(0, 23)},
    {"ARunOf31Bytes",          "0F 08 'EDvwxyzABCnopqrstufghijklmbcdea'",            kAlphabet.substr(0, 31)},
    {"ARunOf32Bytes",          "0F 09 'yzABCDEFqrstuvwxijklmnopabcdefgh'",           kAlphabet.substr(0, 32)},
    {"ARunOf40Bytes",          "0F 11 'yzABCDEFqrstuvwxijklmnopabcdefghGHIJKLMN'",   kAlphabet.substr(0, 40)},
    {"ThreeBytesAtTheBegin",   "20 00 00 03 'cba'",                                  "abc"},
    {"ThreeBytesAgain",        "00 'abcdefgh' 37 00",                                "abcdefghabc"},
    {"FourteenBytesAgain",     "00 'abcdefgh' 37 00 E7 00",                          "abcdefghabcdefghabcdefgha"},
    {"AgainWithTwoLiterals",   "00 'abcdefgh' 37 02 'yx'",                           "abcdefghabcxy"},
    {"AgainWithSevenLiterals", "00 'abcdefgh' 37 07 'zvwxyut'",                      "abcdefghabctuvwxyz"},
    {"AgainWithARunBehind",    "00 'abcdefgh' 37 00 00 'ijklmnop'",                  "abcdefghabcijklmnop"},
    {"Brief",                  "00 'abcdefgh' 12 07 00",                             "abcdefghabcde"},
    {"Medium",                 "00 'abcdefgh' 01 07 00",                             repeated("abcdefgh", 28)},
    {"MediumLonger",           "00 'abcdefgh' 01 07 80",                             repeated("abcdefgh", 44)},
    {"MediumBehindAnother",    "00 'abcdefgh' 37 00 F1 07 00",                       "abcdefghabcdefghabcdefghabcdefg"},
    {"Far",                    "00 'abcdefgh' 23 08 00 08",                          repeated("abcdefgh", 19)},
    {"FarAndLong",             "00 'abcdefgh' 2B 07 00 01 00",                       repeated("abcdefgh", 275)},
};

// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, R2007Stream, ::testing::ValuesIn(r2007Rows), sentenceOf);

TEST(R2007Stream, ALongRunGoesOnInPairsOfBytes)
{
    constexpr std::size_t kSize = 0x17 + 0xFF + 0xFFFF + 2;
    const std::string stream = bytesFrom("0F FF FF FF 02 00") + std::string(kSize, 'x');
    EXPECT_EQ(decompressed(decompressR2007Page, stream, kSize), std::string(kSize, 'x'));
}

TEST(R2007Stream, ADamagedOneGivesNothing)
{
    const std::vector<const char*> streams = {
        "00 'abc'", // a run is cut off
        "0F FF FF",
        "00 'abcdefgh' 37", // a repetition is cut off
        "00 'abcdefgh' 23 08",
        "00 'abcdefgh' 30 08", // 17 bytes back
        "00 'abcdefgh' 23 00 00 00", // no byte back
        "00 'abcdefgh' 37 02 'x'",
        "00 'abcdefgh' 2F 07 00 FF F8", // more than there is room
    };
    for (const char* const stream : streams) {
        constexpr std::size_t kRoom = 2000;
        EXPECT_EQ(decompressed(decompressR2007Page, bytesFrom(stream), kRoom), "none") << stream;
    }
}

TEST(Streams, ChangedBytesNeverLeaveTheirRoom)
{
    constexpr std::size_t kSize = 3000;
    constexpr int kRounds = 20000;
    std::mt19937 random(5);
    std::string text;
    while (text.size() < kSize) {
        text += randomBytes(8, 4, random) + kAlphabet;
    }
    const std::string stream = compressPage(text);
    for (int round = 0; round < kRounds; ++round) {
        std::string changed = stream;
        changed[random() % changed.size()] = static_cast<char>(random());
        changed.resize(random() % changed.size());
        std::string out(random() % kSize, '\0');
        const auto size = decompressPage(changed, {out.data(), out.size()});
        EXPECT_LE(size.value_or(0), out.size());
        const auto other = decompressR2007Page(changed, {out.data(), out.size()});
        EXPECT_LE(other.value_or(0), out.size());
    }
}

} // namespace
} // namespace corma::host::dwg
