#include "host/dxf/tags.h"

#include <gtest/gtest.h>
#include <string>

namespace corma::host::dxf {
namespace {

// Steps and groups in a line; `text` must stand where a zero byte follows.
template<class Tags> std::string walked(Tags tags)
{
    std::string steps;
    for (;;) {
        switch (tags.next()) {
        case Step::group:
            steps += std::to_string(tags.code()) + "=" + std::string(tags.value()) + "|";
            break;
        case Step::end:
            return steps + "end";
        case Step::noCode:
            return steps + "no code";
        case Step::cutOff:
            return steps + "cut off";
        }
    }
}

struct TextRow
{
    const char* name;
    std::string bytes;
    const char* steps;
};

class TextDxfFile : public ::testing::TestWithParam<TextRow>
{
};

TEST_P(TextDxfFile, IsWalkedGroupByGroup)
{
    EXPECT_EQ(walked(TextTags(GetParam().bytes)), GetParam().steps);
}

INSTANTIATE_TEST_SUITE_P(
    Tags, TextDxfFile,
    ::testing::Values(TextRow {"NothingAtAll", "", "end"},
                      TextRow {"LinesEndWithLf", "0\nA\n1\nB\n", "0=A|1=B|end"},
                      TextRow {"LinesEndWithCrLf", "0\r\nA\r\n1\r\nB\r\n", "0=A|1=B|end"},
                      TextRow {"LineEndsAreMixed", "0\r\nA\n1\nB\r\n", "0=A|1=B|end"},
                      TextRow {"TheLastLineNeedsNoEnd", "0\nA\n1\nB", "0=A|1=B|end"},
                      TextRow {"CodesAreAligned", "  0\nA\n 10\nB\n1071\nC\n",
                               "0=A|10=B|1071=C|end"},
                      TextRow {"SpacesStandBehindACode", "0 \nA\n1\t\r\nB\n", "0=A|1=B|end"},
                      TextRow {"TabsStandBeforeACode", "\t0\nA\n", "0=A|end"},
                      TextRow {"ValuesKeepTheirSpaces", "1\n  a b \n", "1=  a b |end"},
                      TextRow {"ValuesMayBeEmpty", "1\n\n2\n\r\n", "1=|2=|end"},
                      TextRow {"ACrWithinAValueStays", "1\na\rb\r\r\n", "1=a\rb\r|end"},
                      TextRow {"CodesMayBeNegative", "-1\nA\n-5\nB\n", "-1=A|-5=B|end"},
                      TextRow {"CodesMayHaveZerosAhead", "0005\nA\n00005\nB\n", "5=A|5=B|end"},
                      TextRow {"BlankLinesStandAtTheEnd", "0\nA\n\n \r\n\n", "0=A|end"},
                      TextRow {"AnOldEndOfFileMarkStandsAtTheEnd", "0\nA\n\x1A", "0=A|end"},
                      TextRow {"ABlankLineInTheMiddle", "0\nA\n\n1\nB\n", "0=A|no code"},
                      TextRow {"ATextInPlaceOfACode", "0\nA\nabc\nB\n", "0=A|no code"},
                      TextRow {"ARealInPlaceOfACode", "1.0\nA\n", "no code"},
                      TextRow {"ATextBehindACode", "1 x\nA\n", "no code"},
                      TextRow {"ACodeTooGreat", "1071\nA\n1072\nB\n", "1071=A|no code"},
                      TextRow {"ACodeTooSmall", "-6\nB\n", "no code"},
                      TextRow {"ACodeOfManyDigits", "99999999999999999999\nB\n", "no code"},
                      TextRow {"ASignAlone", "-\nB\n", "no code"},
                      TextRow {"TheEndWithinACode", "0\nA\n1", "0=A|cut off"},
                      TextRow {"TheEndBehindACode", "0\nA\n1\n", "0=A|cut off"}),
    [](const auto& row) { return std::string(row.param.name); });

struct BinaryRow
{
    const char* name;
    std::string bytes;
    std::string steps;
};

std::string operator""_b(const char* bytes, std::size_t size)
{
    return {bytes, size};
}

class BinaryDxfFile : public ::testing::TestWithParam<BinaryRow>
{
};

TEST_P(BinaryDxfFile, IsWalkedGroupByGroup)
{
    const std::string& bytes = GetParam().bytes;
    EXPECT_EQ(walked(BinaryTags(bytes, codesOf(bytes))), GetParam().steps);
}

INSTANTIATE_TEST_SUITE_P(
    Tags, BinaryDxfFile,
    ::testing::Values(
        BinaryRow {"NothingAtAll", "", "end"},
        BinaryRow {"CodesOfTwoBytes", "\0\0A\0\x08\0B\0"_b, "0=A|8=B|end"},
        BinaryRow {"CodesOfOneByte", "\0A\0\x08"_b + "B\0"_b, "0=A|8=B|end"},
        BinaryRow {"LongCodesAmongThoseOfOneByte", "\0A\0\xFF\xE8\x03x\0"_b, "0=A|1000=x|end"},
        BinaryRow {"ACommentFirst", "\xE7\x03x\0\0\0A\0"_b, "999=x|0=A|end"},
        BinaryRow {"ACommentFirstWithCodesOfOneByte", "\xFF\xE7\x03x\0\0A\0"_b, "999=x|0=A|end"},
        BinaryRow {"AReal",
                   "\0\0A\0\x28\0"
                   "12345678"_b,
                   "0=A|40=12345678|end"},
        BinaryRow {"AShort",
                   "\0\0A\0\x46\0"
                   "12"_b,
                   "0=A|70=12|end"},
        BinaryRow {"ALong",
                   "\0\0A\0\x5A\0"
                   "1234"_b,
                   "0=A|90=1234|end"},
        BinaryRow {"ALongInExtendedData",
                   "\0\0A\0\x2F\x04"
                   "1234"_b,
                   "0=A|1071=1234|end"},
        BinaryRow {"AVeryLong",
                   "\0\0A\0\xA0\0"
                   "12345678"_b,
                   "0=A|160=12345678|end"},
        BinaryRow {"ABoolean",
                   "\0\0A\0\x22\x01"
                   "1"_b,
                   "0=A|290=1|end"},
        BinaryRow {"Bytes",
                   "\0\0A\0\x36\x01\x03"
                   "1\0"
                   "2"_b,
                   "0=A|310=1\0"
                   "2|end"_b},
        BinaryRow {"NoBytes", "\0\0A\0\xEC\x03\0"_b, "0=A|1004=|end"},
        BinaryRow {"ACodeTooGreat", "\0\0A\0\x30\x04x\0"_b, "0=A|no code"},
        BinaryRow {"TheEndWithinACode", "\0\0A\0\x01"_b, "0=A|cut off"},
        BinaryRow {"TheEndWithinALongCode", "\0A\0\xFF\xE8"_b, "0=A|cut off"},
        BinaryRow {"TheEndBehindACode", "\0\0A\0\x01\0"_b, "0=A|cut off"},
        BinaryRow {"TheEndWithinAText", "\0\0A\0\x01\0x"_b, "0=A|cut off"},
        BinaryRow {"TheEndWithinAReal",
                   "\0\0A\0\x28\0"
                   "1234567"_b,
                   "0=A|cut off"},
        BinaryRow {"TheEndAheadOfALength", "\0\0A\0\x36\x01"_b, "0=A|cut off"},
        BinaryRow {"TheEndWithinBytes",
                   "\0\0A\0\x36\x01\x03"
                   "12"_b,
                   "0=A|cut off"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SmallNumber, InBothForms)
{
    TextTags text("67\n     1\n67\n0\n67\nx\n");
    for (const int wanted : {1, 0, 0}) {
        ASSERT_EQ(text.next(), Step::group);
        EXPECT_EQ(text.smallNumber(), wanted);
    }
    BinaryTags binary(std::string_view("\x43\0\x01\0", 4), BinaryTags::Codes::ofTwoBytes);
    ASSERT_EQ(binary.next(), Step::group);
    EXPECT_EQ(binary.smallNumber(), 1);
}

TEST(Trimmed, TakesSpacesAndTabsFromBothEnds)
{
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \t "), "");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed("\t a b \t"), "a b");
}

} // namespace
} // namespace corma::host::dxf
