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

struct GroupRow
{
    const char* test;
    Kind kind;
    std::string bytes; // of one group
    Group group;
};

std::string nameOfGroup(const ::testing::TestParamInfo<GroupRow>& row)
{
    return row.param.test;
}

std::string encoded(const Group& group, Kind kind)
{
    std::string bytes;
    encodeGroups(Groups({group}), formOf(kind), {}, bytes);
    return bytes;
}

class GroupAndBytes : public ::testing::TestWithParam<GroupRow>
{
};

TEST_P(GroupAndBytes, BytesAreAGroup)
{
    const GroupRow& row = GetParam();
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
        GroupRow {"ATextInABareFile", Kind::bare, "1\na b\n", {1, L"a b"}},
        GroupRow {"ATextInAnAlignedFile", Kind::aligned, "  1\na b\n", {1, L"a b"}},
        GroupRow {"ATextInAFileWithCrLf", Kind::crLf, "1\r\na\r\n", {1, L"a"}},
        GroupRow {"AnEmptyText", Kind::bare, "1000\n\n", {1000, L""}},
        GroupRow {"ATextOutsideAscii", Kind::bare, "1\n\xE9\\U+010D\n", {1, L"éč"}},
        GroupRow {"ATextInUtf8", Kind::utf8, "1\n\xC3\xA9\xC4\x8D\n", {1, L"éč"}},
        GroupRow {"ATextOfTwoLines", Kind::bare, "1\na^Jb^ c\n", {1, L"a\nb^c"}},
        GroupRow {"ACodeOfTwoDigits", Kind::aligned, " 62\n     7\n", {62, 7}},
        GroupRow {"ACodeOfThreeDigits", Kind::aligned, "100\nA\n", {100, L"A"}},
        GroupRow {"ACodeOfFourDigits", Kind::aligned, "1000\nA\n", {1000, L"A"}},
        GroupRow {"ANegativeCode", Kind::aligned, " -5\nA\n", {-5, L"A"}},
        GroupRow {"AShort", Kind::bare, "70\n-32768\n", {70, -32768}},
        GroupRow {"AShortInAColumn", Kind::aligned, " 70\n   -12\n", {70, -12}},
        GroupRow {"AShortAsWideAsTheColumn", Kind::aligned, " 70\n-32768\n", {70, -32768}},
        GroupRow {"ALongInAColumn", Kind::aligned, " 90\n      -12\n", {90, -12}},
        GroupRow {"ALongWiderThanTheColumn",
                  Kind::aligned,
                  " 90\n-2147483648\n",
                  {90, std::numeric_limits<int>::min()}},
        GroupRow {"AVeryLong",
                  Kind::aligned,
                  "160\n9223372036854775807\n",
                  {160, GroupValue(std::numeric_limits<std::int64_t>::max())}},
        GroupRow {"ABooleanInAColumn", Kind::aligned, "290\n     1\n", {290, 1}},
        GroupRow {"AHandle", Kind::aligned, "330\n1F\n", {330, Handle {0x1F}}},
        GroupRow {"NoHandle", Kind::bare, "330\n0\n", {330, Handle::none}},
        GroupRow {"AHandleThatIsNone", Kind::bare, "5\n_DOT\n", {5, L"_DOT"}},
        GroupRow {"AHandleThatIsEmpty", Kind::bare, "5\n\n", {5, L""}},
        GroupRow {"Bytes", Kind::bare, "310\n00FF7F\n", {310, GroupValue("\0\xFF\x7F"s)}},
        GroupRow {"NoBytes", Kind::bare, "1004\n\n", {1004, GroupValue(""s)}},
        GroupRow {"AReal", Kind::aligned, " 40\n-2680430.068109198\n", {40, -2680430.068109198}},
        GroupRow {"AWholeReal", Kind::bare, "40\n100000.0\n", {40, 1e5}},
        GroupRow {"Zero", Kind::bare, "40\n0.0\n", {40, 0.0}},
        GroupRow {"ASmallReal", Kind::bare, "40\n0.00001\n", {40, 1e-5}},
        GroupRow {"ASmallerReal", Kind::bare, "40\n1.0e-06\n", {40, 1e-6}},
        GroupRow {"TheSmallestReal",
                  Kind::bare,
                  "40\n5.0e-324\n",
                  {40, std::numeric_limits<double>::denorm_min()}},
        GroupRow {"ALargeReal", Kind::bare, "40\n9999999999999998.0\n", {40, 9999999999999998.0}},
        GroupRow {"ALargerReal", Kind::bare, "40\n1.0e+16\n", {40, 1e16}},
        GroupRow {"TheLargestReal",
                  Kind::bare,
                  "40\n1.7976931348623157e+308\n",
                  {40, std::numeric_limits<double>::max()}},
        GroupRow {"ARealOfManyDigits", Kind::bare, "40\n0.30000000000000004\n", {40, 0.1 + 0.2}}),
    nameOfGroup);

INSTANTIATE_TEST_SUITE_P(
    Binary, GroupAndBytes,
    ::testing::Values(
        GroupRow {"AText", Kind::binary, "\1\0a b\0"s, {1, L"a b"}},
        GroupRow {"ATextWithShortCodes", Kind::shortCodes, "\1a b\0"s, {1, L"a b"}},
        GroupRow {"ACodeOfOneByte", Kind::shortCodes, "\xFEx\0"s, {254, L"x"}},
        GroupRow {"TheMarkAsACode", Kind::shortCodes, "\xFF\xFF\0x\0"s, {255, L"x"}},
        GroupRow {"ALongCode", Kind::shortCodes, "\xFF\xE8\3x\0"s, {1000, L"x"}},
        GroupRow {"ATextWithAZero", Kind::binary, "\1\0a\\U+0000b\0"s, {1, GroupValue(L"a\0b"s)}},
        GroupRow {"ATextOfTwoLines", Kind::binary, "\1\0a\nb\0"s, {1, L"a\nb"}},
        GroupRow {"ATextWithCarets", Kind::binary, "\1\0^J2^3^ \0"s, {1, L"^J2^3^ "}},
        GroupRow {"AReal", Kind::binary, "\x28\0\0\0\0\0\0\0\xF8\xBF"s, {40, -1.5}},
        GroupRow {"AShort", Kind::binary, "\x46\0\xFE\xFF"s, {70, -2}},
        GroupRow {"ALong", Kind::binary, "\x5A\0\xFE\xFF\xFF\xFF"s, {90, -2}},
        GroupRow {"AVeryLong", Kind::binary, "\xA0\0\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, {160, -2}},
        GroupRow {"ABoolean", Kind::binary, "\x22\1\1"s, {290, 1}},
        GroupRow {"AHandle",
                  Kind::binary,
                  "\x4A\1"
                  "1F\0"s,
                  {330, Handle {0x1F}}},
        GroupRow {"AHandleThatIsNone", Kind::binary, "\5\0_DOT\0"s, {5, L"_DOT"}},
        GroupRow {"Bytes", Kind::binary, "\x36\1\3\0\1\2"s, {310, GroupValue("\0\1\2"s)}},
        GroupRow {
            "AsManyBytesAsAGroupHas", Kind::binary, "\x36\1\x7F"s + k127, {310, GroupValue(k127)}}),
    nameOfGroup);

class GroupDecoding : public ::testing::TestWithParam<GroupRow>
{
};

TEST_P(GroupDecoding, UnderstandsTheBytes)
{
    const GroupRow& row = GetParam();
    const Groups groups = decodeGroups(row.bytes, formOf(row.kind));
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(groups[0].value, row.group.value) << described(groups);
    EXPECT_EQ(groups[0].raw, row.bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Groups, GroupDecoding,
    ::testing::Values(
        GroupRow {"ANumberWithSpaces", Kind::bare, " 70 \n  7 \n", {70, 7}},
        GroupRow {"ANumberWithASign", Kind::bare, "70\n+7\n", {70, 7}},
        GroupRow {"AWholeNumberWrittenAsAReal", Kind::bare, "70\n7.0\n", {70, 7}},
        GroupRow {"AWholeNumberThatIsNone", Kind::bare, "70\nseven\n", {70, 0}},
        GroupRow {"AWholeNumberThatIsEmpty", Kind::bare, "70\n\n", {70, 0}},
        GroupRow {"AWholeNumberThatIsInfinite", Kind::bare, "70\ninf\n", {70, 0}},
        GroupRow {"AWholeNumberTooLarge", Kind::bare, "160\n9223372036854775808\n", {160, 0}},
        GroupRow {"ARealThatIsNone", Kind::bare, "40\n1,5\n", {40, 0.0}},
        GroupRow {"ARealThatIsEmpty", Kind::bare, "40\n\n", {40, 0.0}},
        GroupRow {"ARealWithASignAndAnExponent", Kind::bare, "40\n +1.5E+2\n", {40, 150.0}},
        GroupRow {"ARealWithoutADot", Kind::bare, "40\n3\n", {40, 3.0}},
        GroupRow {"AHandleInSmallLettersWithSpaces", Kind::bare, "5\n 1f \n", {5, Handle {0x1F}}},
        GroupRow {
            "AHandleTooLong", Kind::bare, "5\n12345678901234567\n", {5, L"12345678901234567"}},
        GroupRow {"BytesInSmallLetters", Kind::bare, "310\nff\n", {310, GroupValue("\xFF"s)}},
        GroupRow {"BytesWithHalfAByte", Kind::bare, "310\nFF0\n", {310, GroupValue(""s)}},
        GroupRow {"BytesThatAreNone", Kind::bare, "310\nXX\n", {310, GroupValue(""s)}},
        GroupRow {"ABooleanOfManyValues", Kind::binary, "\x22\1\xFF"s, {290, 255}},
        GroupRow {"ALastLineWithoutItsEnd", Kind::bare, "1\nab", {1, L"ab"}},
        GroupRow {"BlankLinesBehindTheLastGroup", Kind::bare, "1\nab\n\n \n", {1, L"ab"}},
        GroupRow {"WhatStandsBehindTheEndOfTheFile",
                  Kind::bare,
                  "0\nEOF\n1\na\nno group\n",
                  {0, L"EOF"}}),
    nameOfGroup);

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

class GroupEncoding : public ::testing::TestWithParam<GroupRow>
{
};

TEST_P(GroupEncoding, WritesTheValueAsItsCodeDemands)
{
    EXPECT_EQ(encoded(GetParam().group, GetParam().kind), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Groups, GroupEncoding,
    ::testing::Values(
        GroupRow {"AWholeNumberForAReal", Kind::bare, "40\n3.0\n", {40, 3}},
        GroupRow {"ARealForAWholeNumber", Kind::bare, "70\n4\n", {70, 3.5}},
        GroupRow {"ATextForAWholeNumber", Kind::bare, "70\nx\n", {70, L"x"}},
        GroupRow {"AWholeNumberForAText", Kind::bare, "1\n3\n", {1, 3}},
        GroupRow {"AHandleForAText", Kind::bare, "1\n1F\n", {1, Handle {0x1F}}},
        GroupRow {
            "AWholeNumberForARealInBinary", Kind::binary, "\x28\0\0\0\0\0\0\0\x08\x40"s, {40, 3}},
        GroupRow {"ATextForAWholeNumberInBinary", Kind::binary, "\x46\0\0\0"s, {70, L"x"}},
        GroupRow {"AWholeNumberForATextInBinary", Kind::binary, "\1\0003\0"s, {1, 3}},
        GroupRow {"AShortWithoutASign", Kind::binary, "\x46\0\xFF\xFF"s, {70, 65535}},
        GroupRow {"AShortTooLarge", Kind::binary, "\x46\0\xFF\xFF"s, {70, 65536}},
        GroupRow {"AShortTooSmall", Kind::binary, "\x46\0\0\x80"s, {70, -32769}},
        GroupRow {"ABooleanTooLarge", Kind::binary, "\x22\1\xFF"s, {290, 256}},
        GroupRow {"ABooleanTooSmall", Kind::binary, "\x22\1\0"s, {290, -1}},
        GroupRow {"MoreBytesThanAGroupHas",
                  Kind::binary,
                  "\x36\1\x7F"s + k127 + "\x36\1\1"s + "y",
                  {310, GroupValue(k127 + "y")}},
        GroupRow {"MoreBytesThanALineHas",
                  Kind::bare,
                  "310\n" + std::string(254, '7') + "\n310\n77\n",
                  {310, GroupValue(std::string(128, 'w'))}}),
    nameOfGroup);

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
