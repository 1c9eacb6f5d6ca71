#include "host/dxf/group_codec.h"
#include "support/DxfDrawing.h"

#include <gtest/gtest.h>
#include <limits>

namespace corma::host::dxf {
namespace {

using corma::testing::described;
using namespace std::string_literals;

enum class Kind : unsigned char
{
    aligned,
    bare,
    crLf,
    utf8,
    binary,
    shortCodes
};

Form formOf(Kind kind)
{
    Form form;
    form.alignsNumbers = kind == Kind::aligned;
    form.lineEnd = kind == Kind::crLf ? "\r\n" : "\n";
    form.isBinary = kind == Kind::binary || kind == Kind::shortCodes;
    form.codes
        = kind == Kind::shortCodes ? BinaryTags::Codes::ofOneByte : BinaryTags::Codes::ofTwoBytes;
    if (kind == Kind::utf8) {
        form.page = CodePage::utf8();
    }
    return form;
}

struct Row
{
    const char* test;
    Kind kind;
    std::string bytes; // of one group
    Group group;
};

std::string nameOf(const ::testing::TestParamInfo<Row>& row)
{
    return row.param.test;
}

std::string encoded(const Group& group, Kind kind)
{
    std::string bytes;
    encodeGroups(Groups({group}), formOf(kind), {}, bytes);
    return bytes;
}

class GroupAndBytes : public ::testing::TestWithParam<Row>
{
};

TEST_P(GroupAndBytes, BytesAreAGroup)
{
    const Row& row = GetParam();
    const Groups groups = decodeGroups(row.bytes, formOf(row.kind));
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(groups[0].code, row.group.code);
    EXPECT_EQ(groups[0].value, row.group.value) << described(groups);
    EXPECT_EQ(groups[0].raw, row.bytes);
    EXPECT_EQ(encoded(row.group, row.kind), row.bytes);
}

const std::string k127(127, 'x');

INSTANTIATE_TEST_SUITE_P(
    Text, GroupAndBytes,
    ::testing::Values(
        Row {"ATextInABareFile", Kind::bare, "1\na b\n", {1, L"a b"}},
        Row {"ATextInAnAlignedFile", Kind::aligned, "  1\na b\n", {1, L"a b"}},
        Row {"ATextInAFileWithCrLf", Kind::crLf, "1\r\na\r\n", {1, L"a"}},
        Row {"AnEmptyText", Kind::bare, "1000\n\n", {1000, L""}},
        Row {"ATextOutsideAscii", Kind::bare, "1\n\xE9\\U+010D\n", {1, L"éč"}},
        Row {"ATextInUtf8", Kind::utf8, "1\n\xC3\xA9\xC4\x8D\n", {1, L"éč"}},
        Row {"ATextOfTwoLines", Kind::bare, "1\na^Jb^ c\n", {1, L"a\nb^c"}},
        Row {"ACodeOfTwoDigits", Kind::aligned, " 62\n     7\n", {62, 7}},
        Row {"ACodeOfThreeDigits", Kind::aligned, "100\nA\n", {100, L"A"}},
        Row {"ACodeOfFourDigits", Kind::aligned, "1000\nA\n", {1000, L"A"}},
        Row {"ANegativeCode", Kind::aligned, " -5\nA\n", {-5, L"A"}},
        Row {"AShort", Kind::bare, "70\n-32768\n", {70, -32768}},
        Row {"AShortInAColumn", Kind::aligned, " 70\n   -12\n", {70, -12}},
        Row {"AShortAsWideAsTheColumn", Kind::aligned, " 70\n-32768\n", {70, -32768}},
        Row {"ALongInAColumn", Kind::aligned, " 90\n      -12\n", {90, -12}},
        Row {"ALongWiderThanTheColumn",
             Kind::aligned,
             " 90\n-2147483648\n",
             {90, std::numeric_limits<int>::min()}},
        Row {"AVeryLong",
             Kind::aligned,
             "160\n9223372036854775807\n",
             {160, GroupValue(std::numeric_limits<std::int64_t>::max())}},
        Row {"ABooleanInAColumn", Kind::aligned, "290\n     1\n", {290, 1}},
        Row {"AHandle", Kind::aligned, "330\n1F\n", {330, Handle {0x1F}}},
        Row {"NoHandle", Kind::bare, "330\n0\n", {330, Handle::none}},
        Row {"AHandleThatIsNone", Kind::bare, "5\n_DOT\n", {5, L"_DOT"}},
        Row {"AHandleThatIsEmpty", Kind::bare, "5\n\n", {5, L""}},
        Row {"Bytes", Kind::bare, "310\n00FF7F\n", {310, GroupValue("\0\xFF\x7F"s)}},
        Row {"NoBytes", Kind::bare, "1004\n\n", {1004, GroupValue(""s)}},
        Row {"AReal", Kind::aligned, " 40\n-2680430.068109198\n", {40, -2680430.068109198}},
        Row {"AWholeReal", Kind::bare, "40\n100000.0\n", {40, 1e5}},
        Row {"Zero", Kind::bare, "40\n0.0\n", {40, 0.0}},
        Row {"ASmallReal", Kind::bare, "40\n0.00001\n", {40, 1e-5}},
        Row {"ASmallerReal", Kind::bare, "40\n1.0e-06\n", {40, 1e-6}},
        Row {"TheSmallestReal",
             Kind::bare,
             "40\n5.0e-324\n",
             {40, std::numeric_limits<double>::denorm_min()}},
        Row {"ALargeReal", Kind::bare, "40\n9999999999999998.0\n", {40, 9999999999999998.0}},
        Row {"ALargerReal", Kind::bare, "40\n1.0e+16\n", {40, 1e16}},
        Row {"TheLargestReal",
             Kind::bare,
             "40\n1.7976931348623157e+308\n",
             {40, std::numeric_limits<double>::max()}},
        Row {"ARealOfManyDigits", Kind::bare, "40\n0.30000000000000004\n", {40, 0.1 + 0.2}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Binary, GroupAndBytes,
    ::testing::Values(
        Row {"AText", Kind::binary, "\1\0a b\0"s, {1, L"a b"}},
        Row {"ATextWithShortCodes", Kind::shortCodes, "\1a b\0"s, {1, L"a b"}},
        Row {"ACodeOfOneByte", Kind::shortCodes, "\xFEx\0"s, {254, L"x"}},
        Row {"TheMarkAsACode", Kind::shortCodes, "\xFF\xFF\0x\0"s, {255, L"x"}},
        Row {"ALongCode", Kind::shortCodes, "\xFF\xE8\3x\0"s, {1000, L"x"}},
        Row {"ATextWithAZero", Kind::binary, "\1\0a\\U+0000b\0"s, {1, GroupValue(L"a\0b"s)}},
        Row {"ATextOfTwoLines", Kind::binary, "\1\0a\nb\0"s, {1, L"a\nb"}},
        Row {"ATextWithCarets", Kind::binary, "\1\0^J2^3^ \0"s, {1, L"^J2^3^ "}},
        Row {"AReal", Kind::binary, "\x28\0\0\0\0\0\0\0\xF8\xBF"s, {40, -1.5}},
        Row {"AShort", Kind::binary, "\x46\0\xFE\xFF"s, {70, -2}},
        Row {"ALong", Kind::binary, "\x5A\0\xFE\xFF\xFF\xFF"s, {90, -2}},
        Row {"AVeryLong", Kind::binary, "\xA0\0\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, {160, -2}},
        Row {"ABoolean", Kind::binary, "\x22\1\1"s, {290, 1}},
        Row {"AHandle",
             Kind::binary,
             "\x4A\1"
             "1F\0"s,
             {330, Handle {0x1F}}},
        Row {"AHandleThatIsNone", Kind::binary, "\5\0_DOT\0"s, {5, L"_DOT"}},
        Row {"Bytes", Kind::binary, "\x36\1\3\0\1\2"s, {310, GroupValue("\0\1\2"s)}},
        Row {
            "AsManyBytesAsAGroupHas", Kind::binary, "\x36\1\x7F"s + k127, {310, GroupValue(k127)}}),
    nameOf);

class GroupDecoding : public ::testing::TestWithParam<Row>
{
};

TEST_P(GroupDecoding, UnderstandsTheBytes)
{
    const Row& row = GetParam();
    const Groups groups = decodeGroups(row.bytes, formOf(row.kind));
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(groups[0].value, row.group.value) << described(groups);
    EXPECT_EQ(groups[0].raw, row.bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Groups, GroupDecoding,
    ::testing::Values(
        Row {"ANumberWithSpaces", Kind::bare, " 70 \n  7 \n", {70, 7}},
        Row {"ANumberWithASign", Kind::bare, "70\n+7\n", {70, 7}},
        Row {"AWholeNumberWrittenAsAReal", Kind::bare, "70\n7.0\n", {70, 7}},
        Row {"AWholeNumberThatIsNone", Kind::bare, "70\nseven\n", {70, 0}},
        Row {"AWholeNumberThatIsEmpty", Kind::bare, "70\n\n", {70, 0}},
        Row {"AWholeNumberThatIsInfinite", Kind::bare, "70\ninf\n", {70, 0}},
        Row {"AWholeNumberTooLarge", Kind::bare, "160\n9223372036854775808\n", {160, 0}},
        Row {"ARealThatIsNone", Kind::bare, "40\n1,5\n", {40, 0.0}},
        Row {"ARealThatIsEmpty", Kind::bare, "40\n\n", {40, 0.0}},
        Row {"ARealWithASignAndAnExponent", Kind::bare, "40\n +1.5E+2\n", {40, 150.0}},
        Row {"ARealWithoutADot", Kind::bare, "40\n3\n", {40, 3.0}},
        Row {"AHandleInSmallLettersWithSpaces", Kind::bare, "5\n 1f \n", {5, Handle {0x1F}}},
        Row {"AHandleTooLong", Kind::bare, "5\n12345678901234567\n", {5, L"12345678901234567"}},
        Row {"BytesInSmallLetters", Kind::bare, "310\nff\n", {310, GroupValue("\xFF"s)}},
        Row {"BytesWithHalfAByte", Kind::bare, "310\nFF0\n", {310, GroupValue(""s)}},
        Row {"BytesThatAreNone", Kind::bare, "310\nXX\n", {310, GroupValue(""s)}},
        Row {"ABooleanOfManyValues", Kind::binary, "\x22\1\xFF"s, {290, 255}},
        Row {"ALastLineWithoutItsEnd", Kind::bare, "1\nab", {1, L"ab"}},
        Row {"BlankLinesBehindTheLastGroup", Kind::bare, "1\nab\n\n \n", {1, L"ab"}},
        Row {"WhatStandsBehindTheEndOfTheFile",
             Kind::bare,
             "0\nEOF\n1\na\nno group\n",
             {0, L"EOF"}}),
    nameOf);

TEST(GroupDecoding, TheBytesOfTheGroupsAreThoseOfTheRecord)
{
    const std::string record = "  0\r\nLINE\r\n 10\n1.0\r\n20\n2\n";
    const Groups groups = decodeGroups(record, Form {});
    std::string joined;
    for (const Group& group : groups) {
        joined += group.raw;
    }
    EXPECT_EQ(joined, record);
    EXPECT_EQ(groups.size(), 3U);
}

class GroupEncoding : public ::testing::TestWithParam<Row>
{
};

TEST_P(GroupEncoding, WritesTheValueAsItsCodeDemands)
{
    EXPECT_EQ(encoded(GetParam().group, GetParam().kind), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Groups, GroupEncoding,
    ::testing::Values(
        Row {"AWholeNumberForAReal", Kind::bare, "40\n3.0\n", {40, 3}},
        Row {"ARealForAWholeNumber", Kind::bare, "70\n4\n", {70, 3.5}},
        Row {"ATextForAWholeNumber", Kind::bare, "70\nx\n", {70, L"x"}},
        Row {"AWholeNumberForAText", Kind::bare, "1\n3\n", {1, 3}},
        Row {"AHandleForAText", Kind::bare, "1\n1F\n", {1, Handle {0x1F}}},
        Row {"AWholeNumberForARealInBinary", Kind::binary, "\x28\0\0\0\0\0\0\0\x08\x40"s, {40, 3}},
        Row {"ATextForAWholeNumberInBinary", Kind::binary, "\x46\0\0\0"s, {70, L"x"}},
        Row {"AWholeNumberForATextInBinary", Kind::binary, "\1\0003\0"s, {1, 3}},
        Row {"AShortWithoutASign", Kind::binary, "\x46\0\xFF\xFF"s, {70, 65535}},
        Row {"AShortTooLarge", Kind::binary, "\x46\0\xFF\xFF"s, {70, 65536}},
        Row {"AShortTooSmall", Kind::binary, "\x46\0\0\x80"s, {70, -32769}},
        Row {"ABooleanTooLarge", Kind::binary, "\x22\1\xFF"s, {290, 256}},
        Row {"ABooleanTooSmall", Kind::binary, "\x22\1\0"s, {290, -1}},
        Row {"MoreBytesThanAGroupHas",
             Kind::binary,
             "\x36\1\x7F"s + k127 + "\x36\1\1"s + "y",
             {310, GroupValue(k127 + "y")}},
        Row {"MoreBytesThanALineHas",
             Kind::bare,
             "310\n" + std::string(254, '7') + "\n310\n77\n",
             {310, GroupValue(std::string(128, 'w'))}}),
    nameOf);

TEST(GroupEncoding, AGroupOfTheFileKeepsItsBytes)
{
    const std::string file = "  0\r\nLINE\r\n 40\n 1.50\n";
    Groups groups = decodeGroups(file, Form {});
    std::string bytes;
    encodeGroups(groups, Form {}, file, bytes);
    EXPECT_EQ(bytes, file);
    groups[1].set(1.25);
    groups.add({8, L"0"});
    bytes.clear();
    encodeGroups(groups, Form {}, file, bytes);
    EXPECT_EQ(bytes, "  0\r\nLINE\r\n40\n1.25\n8\n0\n");
}

TEST(GroupEncoding, AGroupOfAnotherFileIsWrittenAnew)
{
    const std::string other = "  0\r\nLINE\r\n";
    const Groups groups = decodeGroups(other, Form {});
    std::string bytes;
    encodeGroups(groups, Form {}, "some file", bytes);
    EXPECT_EQ(bytes, "0\nLINE\n");
}

TEST(GroupEncoding, ALastLineWithoutItsEndGetsOne)
{
    const std::string file = "0\nLINE\n8\n0";
    Groups groups = decodeGroups(file, Form {});
    groups.add({62, 7});
    std::string bytes;
    encodeGroups(groups, Form {}, file, bytes);
    EXPECT_EQ(bytes, "0\nLINE\n8\n0\n62\n7\n");
}

} // namespace
} // namespace corma::host::dxf
