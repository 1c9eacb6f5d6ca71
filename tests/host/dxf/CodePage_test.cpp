#include "host/dxf/CodePage.h"

#include <gtest/gtest.h>

namespace corma::host::dxf {
namespace {

struct PageRow
{
    const char* test;
    const char* name; // in $DWGCODEPAGE
    const char* bytes;
    const wchar_t* text;
};

class NamedPage : public ::testing::TestWithParam<PageRow>
{
};

TEST_P(NamedPage, TurnsBytesIntoTextAndBack)
{
    const PageRow& row = GetParam();
    const CodePage page = CodePage::named(row.name);
    EXPECT_EQ(page.decode(row.bytes), row.text);
    std::string bytes;
    for (const wchar_t c : std::wstring_view(row.text)) {
        EXPECT_TRUE(page.encode(static_cast<char32_t>(c), bytes));
    }
    EXPECT_EQ(bytes, row.bytes);
}

INSTANTIATE_TEST_SUITE_P(
    CodePage, NamedPage,
    ::testing::Values(
        PageRow {"Ansi874", "ANSI_874", "a\xA1", L"aก"},
        PageRow {"Ansi932", "ANSI_932", "\x95\x5C\\\xB1", L"表\\ｱ"},
        PageRow {"Dos932", "dos932", "\x95\x5C", L"表"},
        PageRow {"AnsiSlashDos932", "ANSI/dos932", "\x95\x5C", L"表"},
        PageRow {"Ansi936", "ANSI_936", "\xD6\xD0", L"中"},
        PageRow {"Gb2312", "gb2312", "\xD6\xD0", L"中"},
        PageRow {"Ansi949", "ANSI_949", "\xC7\xD1", L"한"},
        PageRow {"Ksc5601", "ksc5601", "\xC7\xD1", L"한"},
        PageRow {"Ansi950", "ANSI_950", "\xA4\xA4", L"中"},
        PageRow {"Big5", "BIG5", "\xA4\xA4", L"中"},
        PageRow {"Ansi1250", "ANSI_1250", "\xE8\x80", L"č€"},
        PageRow {"Ansi1251", "ANSI_1251", "\xCF", L"П"},
        PageRow {"Ansi1252", "ANSI_1252", "\xE9\x80", L"é€"},
        PageRow {"InSmallLetters", "ansi_1252", "\xE9", L"é"},
        PageRow {"Ansi1253", "ANSI_1253", "\xE1", L"α"},
        PageRow {"Ansi1254", "ANSI_1254", "\xFE", L"ş"},
        PageRow {"Ansi1255", "ANSI_1255", "\xE0", L"א"},
        PageRow {"Ansi1256", "ANSI_1256", "\xC8", L"ب"},
        PageRow {"Ansi1257", "ANSI_1257", "\xE0", L"ą"},
        PageRow {"Ansi1258", "ANSI_1258", "\xD0", L"Đ"}, PageRow {"Dos437", "dos437", "\x82", L"é"},
        PageRow {"Dos850", "DOS850", "\x9B", L"ø"}, PageRow {"Dos852", "dos852", "\x9F", L"č"},
        PageRow {"Dos866", "dos866", "\x8F", L"П"},
        PageRow {"Dos864", "dos864", "\xB3\xE1", L"٣\xFED3"},
        PageRow {"MacRoman", "MAC-ROMAN", "\x8E\xDB", L"é€"},
        PageRow {"MacRomanWithoutAHyphen", "mac_roman", "\x8E", L"é"},
        PageRow {"Iso1", "ISO8859_1", "\xE9", L"é"}, PageRow {"Iso2", "ISO8859-2", "\xB1", L"ą"},
        PageRow {"Iso5", "iso8859_5", "\xBF", L"П"}, PageRow {"Iso9", "ISO8859_9", "\xFE", L"ş"},
        PageRow {"Ascii", "ASCII", "\xE9", L"é"}, PageRow {"Undefined", "UNDEFINED", "\xE9", L"é"},
        PageRow {"None", "", "\xE9", L"é"}, PageRow {"AnUnknownName", "martian", "\xE9", L"é"},
        PageRow {"AnUnknownNumber", "ANSI_99999", "\xE9", L"é"},
        PageRow {"ANumberOfManyDigits", "dos99999999999999999999999999999999", "\xE9", L"é"},
        PageRow {"Johab", "ANSI_1361", "\xE9", L"é"},
        PageRow {"OneThatIsNoAscii", "dos37", "\xE9", L"é"},
        PageRow {"OneOfUnits", "ANSI_1200", "\xE9", L"é"},
        PageRow {"OneWithShifts", "dos50220", "\xE9", L"é"}),
    [](const auto& row) { return std::string(row.param.test); });

TEST(CodePage, LacksWhatItHasNoBytesFor)
{
    struct Case
    {
        const char* name;
        char32_t c;
    };

    for (const Case& row :
         {Case {"ANSI_1252", U'č'}, Case {"ANSI_1250", U'é' + 0x1000}, Case {"ANSI_1250", U'П'},
          Case {"ANSI_932", U'한'}, Case {"ANSI_1251", 0x1F600}, Case {"ANSI_1252", 0xD800},
          Case {"ANSI_1250", 0xDC00}, Case {"ANSI_1250", 0x110000}, Case {"ANSI_1252", 0x10080},
          Case {"dos864", 0x66A}}) {
        std::string bytes;
        EXPECT_FALSE(CodePage::named(row.name).encode(row.c, bytes))
            << row.name << ' ' << static_cast<unsigned>(row.c);
        EXPECT_EQ(bytes, "");
    }
}

TEST(CodePage, BytesThatMeanNothingAreReplaced)
{
    EXPECT_EQ(CodePage::named("ANSI_932").decode("a\x95"), L"a\xFFFD");
    EXPECT_EQ(CodePage::utf8().decode("a\xC3"), L"a\xFFFD");
}

TEST(CodePage, AsciiIsItselfInAllOfThem)
{
    std::string ascii;
    for (int c = 1; c < 0x80; ++c) {
        ascii += static_cast<char>(c);
    }
    for (const char* name : {"dos437", "dos850", "dos864", "dos932", "ANSI_936", "ANSI_949",
                             "ANSI_950", "ANSI_1250", "MAC-ROMAN", "ISO8859_5"}) {
        EXPECT_EQ(CodePage::named(name).decode(ascii), std::wstring(ascii.begin(), ascii.end()))
            << name;
    }
}

TEST(CodePage, OfUtf8)
{
    const CodePage page = CodePage::utf8();
    EXPECT_EQ(page.decode("\xC3\xA9\xF0\x9F\x98\x80"), L"é\U0001F600");
    std::string bytes;
    EXPECT_TRUE(page.encode(0x1F600, bytes));
    EXPECT_EQ(bytes, "\xF0\x9F\x98\x80");
    EXPECT_FALSE(page.encode(0xD800, bytes));
}

TEST(CodePage, OfEscapesByTheirDigits)
{
    EXPECT_EQ(CodePage::ofEscape('1').value().decode("\x95\x5C"), L"表");
    EXPECT_EQ(CodePage::ofEscape('2').value().decode("\xA4\xA4"), L"中");
    EXPECT_EQ(CodePage::ofEscape('3').value().decode("\xC7\xD1"), L"한");
    EXPECT_EQ(CodePage::ofEscape('5').value().decode("\xD6\xD0"), L"中");
    for (const char digit : {'0', '4', '6', 'a', '\0', '\xFF'}) {
        EXPECT_FALSE(CodePage::ofEscape(digit)) << digit;
    }
}

} // namespace
} // namespace corma::host::dxf
