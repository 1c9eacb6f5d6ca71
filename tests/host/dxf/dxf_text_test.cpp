#include "host/dxf/dxf_text.h"

#include <gtest/gtest.h>

namespace corma::host::dxf {
namespace {

struct TextFormRow
{
    const char* test;
    const char* page; // null for UTF-8
    std::string value;
    std::wstring text;
};

CodePage pageOf(const TextFormRow& row)
{
    return row.page == nullptr ? CodePage::utf8() : CodePage::named(row.page);
}

std::string nameOfText(const ::testing::TestParamInfo<TextFormRow>& row)
{
    return row.param.test;
}

class TextAndValue : public ::testing::TestWithParam<TextFormRow>
{
};

TEST_P(TextAndValue, AValueIsAText)
{
    const TextFormRow& row = GetParam();
    EXPECT_EQ(decodeText(row.value, pageOf(row)), row.text);
    EXPECT_EQ(encodeText(row.text, pageOf(row)), row.value);
}

INSTANTIATE_TEST_SUITE_P(
    DxfText, TextAndValue,
    ::testing::Values(
        TextFormRow {"Nothing", "ANSI_1252", "", L""},
        TextFormRow {"Ascii", "ANSI_1252", " a b ", L" a b "},
        TextFormRow {"OfTheCodePage", "ANSI_1252", "caf\xE9", L"café"},
        TextFormRow {"OfUtf8", nullptr, "caf\xC3\xA9 \xF0\x9F\x98\x80", L"café \U0001F600"},
        TextFormRow {"NotOfTheCodePage", "ANSI_1252", "\\U+010D\xE9", L"čé"},
        TextFormRow {"AboveTheFirstPlane", "ANSI_1252", "\\U+D83D\\U+DE00x", L"\U0001F600x"},
        TextFormRow {"ALoneSurrogate", "ANSI_1252", "\\U+D83Dx", std::wstring(1, 0xD83D) + L"x"},
        TextFormRow {"ALoneSurrogateInUtf8", nullptr, "\\U+DE00", std::wstring(1, 0xDE00)},
        TextFormRow {"ALineEnd", "ANSI_1252", "a^Jb", L"a\nb"},
        TextFormRow {"ATab", "ANSI_1252", "^I", L"\t"},
        TextFormRow {"ACarriageReturn", "ANSI_1252", "^M", L"\r"},
        TextFormRow {"AZero", "ANSI_1252", "a^@b", std::wstring(L"a\0b", 3)},
        TextFormRow {"TheLastControlCharacter", "ANSI_1252", "^_", L"\x1F"},
        TextFormRow {"ACaret", "ANSI_1252", "2^ 3", L"2^3"},
        TextFormRow {"TwoCarets", "ANSI_1252", "^ ^ ", L"^^"},
        TextFormRow {"ACaretAndALetter", "ANSI_1252", "^ J", L"^J"},
        TextFormRow {"ABackslash", "ANSI_1252", "C:\\Users\\x", L"C:\\Users\\x"},
        TextFormRow {"AFormatCode", "ANSI_1252", "\\U+12\\M+\\Px", L"\\U+12\\M+\\Px"},
        TextFormRow {"ATextThatReadsLikeAnEscape", "ANSI_1252", "\\U+005CU+0041", L"\\U+0041"},
        TextFormRow {"ATextThatReadsLikeAnotherEscape", "ANSI_1252", "\\U+005CM+1955C",
                     L"\\M+1955C"},
        TextFormRow {"AnEscapeOfAnUnknownCodePage", "ANSI_1252", "\\M+4955C \\M+9955C",
                     L"\\M+4955C \\M+9955C"},
        TextFormRow {"ABackslashByteOfACharacter", "ANSI_932", "\x95\x5CU+0041", L"表U+0041"},
        TextFormRow {"ACaretByteOfACharacter", "ANSI_932", "\x83\x5EJ", L"タJ"}),
    nameOfText);

class ValueAsText : public ::testing::TestWithParam<TextFormRow>
{
};

TEST_P(ValueAsText, AValueIsReadAs)
{
    EXPECT_EQ(decodeText(GetParam().value, pageOf(GetParam())), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    DxfText, ValueAsText,
    ::testing::Values(
        TextFormRow {"AnEscapeThatNeedsNone", "ANSI_1252", "\\U+00E9\\U+0041", L"éA"},
        TextFormRow {"AnEscapeInSmallLetters", "ANSI_1252", "\\U+00e9", L"é"},
        TextFormRow {"AnEscapeInUtf8", nullptr, "\\U+00E9\xC3\xA9", L"éé"},
        TextFormRow {"TooFewDigits", "ANSI_1252", "\\U+00E", L"\\U+00E"},
        TextFormRow {"NoDigits", "ANSI_1252", "\\U+00 9", L"\\U+00 9"},
        TextFormRow {"ADoubleByteCharacter", "ANSI_1252", "a\\M+1955C\\M+5D6D0b", L"a表中b"},
        TextFormRow {"ADoubleByteCharacterThatIsNone", "ANSI_1252", "\\M+1FFFF", L"\\M+1FFFF"},
        TextFormRow {"ACaretAtTheEnd", "ANSI_1252", "a^", L"a^"},
        TextFormRow {"ACaretBeforeADigit", "ANSI_1252", "1^2", L"1^2"},
        TextFormRow {"ACaretBeforeASmallLetter", "ANSI_1252", "^j", L"^j"},
        TextFormRow {"TwoSurrogatesInTheWrongOrder",
                     "ANSI_1252",
                     "\\U+DE00\\U+D83D",
                     {static_cast<wchar_t>(0xDE00), static_cast<wchar_t>(0xD83D)}}),
    nameOfText);

TEST(DxfText, ACaretThatEscapesNothingIsItself)
{
    const CodePage page;
    EXPECT_EQ(decodeText("^J^ \\U+0041\n", page, Caret::isItself), L"^J^ A\n");
    EXPECT_EQ(encodeText(L"^J^ \x416\n\t", page, Caret::isItself), "^J^ \\U+0416\n\t");
    EXPECT_EQ(encodeText(std::wstring(L"\0", 1), page, Caret::isItself), "\\U+0000");
}

TEST(DxfText, WhatIsNoCharacterIsReplaced)
{
    if constexpr (sizeof(wchar_t) == 4) {
        const std::wstring text(1, static_cast<wchar_t>(0x110000));
        EXPECT_EQ(encodeText(text, CodePage()), "\\U+FFFD");
        EXPECT_EQ(encodeText(text, CodePage::utf8()), "\xEF\xBF\xBD");
    }
}

TEST(DxfText, EveryCharacterComesBack)
{
    for (const char* name :
         {"ANSI_1252", "ANSI_1250", "ANSI_932", "ANSI_936", "dos850", "dos864", "utf8"}) {
        const CodePage page
            = name == std::string("utf8") ? CodePage::utf8() : CodePage::named(name);
        for (char32_t c = 0; c < 0x11000; ++c) {
            const std::wstring text(1, static_cast<wchar_t>(c));
            const std::string value = encodeText(text, page);
            ASSERT_EQ(value.find_first_of(std::string_view("\0\n\r", 3)), std::string::npos)
                << name << ' ' << static_cast<unsigned>(c);
            ASSERT_EQ(decodeText(value, page), text) << name << ' ' << static_cast<unsigned>(c);
            const std::string plain = encodeText(text, page, Caret::isItself);
            ASSERT_EQ(plain.find('\0'), std::string::npos) << name;
            ASSERT_EQ(decodeText(plain, page, Caret::isItself), text)
                << name << ' ' << static_cast<unsigned>(c);
        }
    }
}

} // namespace
} // namespace corma::host::dxf
