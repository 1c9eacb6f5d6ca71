#include "platform/text.h"

#include <cstdarg>
#include <gtest/gtest.h>

namespace corma {
namespace {

TEST(CaseFolding, AsciiFoldsToAsciiAndNothingElseDoes)
{
    EXPECT_EQ(foldCase(L'A'), L'a');
    EXPECT_EQ(foldCase(L'Z'), L'z');
    EXPECT_EQ(foldCase(L'['), L'[');
    EXPECT_EQ(foldCase(L'@'), L'@');
    EXPECT_NE(foldCase(L'\x212A'), L'k'); // the Kelvin sign
    EXPECT_NE(foldCase(L'\x017F'), L's'); // the long s
}

TEST(CaseFolding, LettersOfOtherAlphabetsFoldToo)
{
    EXPECT_TRUE(equalIgnoringCase(L"COÖRDINAAT", L"coördinaat"));
    EXPECT_TRUE(equalIgnoringCase(L"ВЫСОТА", L"высота"));
    EXPECT_FALSE(equalIgnoringCase(L"Hoogte", L"Hoogtes"));
    EXPECT_FALSE(equalIgnoringCase(L"a", L""));
}

TEST(CaseFolding, DoesNotDependOnTheLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "tr_TR.UTF-8");
    EXPECT_EQ(foldCase(L'I'), L'i');
    EXPECT_EQ(upperCase(L"tekst.ini"), L"TEKST.INI");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(LowerCase, IsThatOfEachCharacter)
{
    EXPECT_EQ(lowerCase(L"TEKST Hoogte 1.INI"), L"tekst hoogte 1.ini");
    EXPECT_EQ(lowerCase(L"COÖRDINAAT ВЫСОТА ŁÓDŹ"), L"coördinaat высота łódź");
    EXPECT_EQ(lowerCase(L""), L"");
    EXPECT_EQ(lowerCase(L"straße ½ §"), L"straße ½ §");
    EXPECT_EQ(lowerCase(L"\x10400"), L"\x10428") << "beyond the first plane";
}

TEST(LowerCase, KeepsTheNumberOfCharacters)
{
    EXPECT_EQ(lowerCase(L"\x0130"
                        L"A")
                  .size(),
              2U)
        << "the dotted capital I has no small letter of one character";
}

TEST(LowerCase, DoesNotDependOnTheLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "tr_TR.UTF-8");
    EXPECT_EQ(lowerCase(L"TITEL"), L"titel");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Utf8, GoesBothWays)
{
    const std::wstring text = L"aé€\x1F600";
    EXPECT_EQ(toUtf8(text), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(fromUtf8(toUtf8(text)), text);
}

struct BrokenCase
{
    const char* name;
    std::string bytes;
    std::wstring text;
};

class BrokenUtf8 : public ::testing::TestWithParam<BrokenCase>
{
};

TEST_P(BrokenUtf8, BecomesReplacementCharacters)
{
    EXPECT_FALSE(isUtf8(GetParam().bytes));
    EXPECT_EQ(fromUtf8(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Utf8, BrokenUtf8,
    ::testing::Values(BrokenCase {"ALoneContinuation", "a\x80z", L"a\xFFFDz"},
                      BrokenCase {"ACutSequence", "\xE2\x82", L"\xFFFD\xFFFD"},
                      BrokenCase {"AnOverlongSlash", "\xC0\xAF", L"\xFFFD\xFFFD"},
                      BrokenCase {"AnOverlongOfThree", "\xE0\x80\xAF", L"\xFFFD\xFFFD\xFFFD"},
                      BrokenCase {"ASurrogate", "\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD"},
                      BrokenCase {"BeyondUnicode", "\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
                      BrokenCase {"AnImpossibleByte", "\xFF", L"\xFFFD"}),
    [](const auto& row) { return row.param.name; });

TEST(Utf8, LongTextIsCheckedToItsEnd)
{
    const std::string good = std::string(1000, 'x') + "\xC3\xA9" + std::string(7, 'y');
    EXPECT_TRUE(isUtf8(good));
    EXPECT_FALSE(isUtf8(good + "\xC3"));
    EXPECT_TRUE(isUtf8(""));
}

TEST(Utf8, WhatIsNoCharacterIsReplacedWhenWritten)
{
    EXPECT_EQ(toUtf8(std::wstring(1, wchar_t {0xD800})), "\xEF\xBF\xBD");
}

TEST(Windows1252, GoesBothWaysForEveryByte)
{
    for (int byte = 0; byte < 256; ++byte) {
        const auto b = static_cast<unsigned char>(byte);
        EXPECT_EQ(toWindows1252(fromWindows1252(b)), b) << byte;
    }
    EXPECT_EQ(fromWindows1252(0x80), L'€');
    EXPECT_EQ(fromWindows1252(0x81), L'\x81');
    EXPECT_EQ(fromWindows1252(0xE9), L'é');
}

TEST(Windows1252, HasNoByteForOtherCharacters)
{
    EXPECT_EQ(toWindows1252(L'\x0141'), std::nullopt);
    EXPECT_EQ(toWindows1252(L'\x1F600'), std::nullopt);
    EXPECT_EQ(toWindows1252(L'\x80'), std::nullopt);
}

TEST(Windows1252, HoldsATextWholeOrNotAtAll)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(toWindows1252(L""sv), "");
    EXPECT_EQ(toWindows1252(L"a é €"sv), "a \xE9 \x80");
    EXPECT_EQ(toWindows1252(L"a Ł"sv), std::nullopt);
}

TEST(Utf16, CharactersBeyondTheFirstPlaneTakeTwoUnits)
{
    EXPECT_EQ(toUtf16(L"a\x1F600"), u"a\xD83D\xDE00");
}

std::wstring format(const wchar_t* form, ...)
{
    std::va_list arguments;
    va_start(arguments, form);
    std::wstring text = formatWide(form, arguments);
    va_end(arguments);
    return text;
}

TEST(FormatWide, TextIsWideOnEveryPlatform)
{
    EXPECT_EQ(format(L"<%s>", L"é"), L"<é>");
    EXPECT_EQ(format(L"<%ls>", L"a"), L"<a>");
    EXPECT_EQ(format(L"<%S>", "\xC3\xA9"), L"<é>");
    EXPECT_EQ(format(L"%c%C", L'a', L'b'), L"ab");
}

TEST(FormatWide, WidthAndPrecisionHold)
{
    EXPECT_EQ(format(L"[%5s][%-5s][%.2s][%*s]", L"ab", L"ab", L"abc", 4, L"x"),
              L"[   ab][ab   ][ab][   x]");
    EXPECT_EQ(format(L"[%5d][%-5d][%05d][%+d][% d][%.3d]", 42, 42, -42, 42, 42, 7),
              L"[   42][42   ][-0042][+42][ 42][007]");
    EXPECT_EQ(format(L"%.2f %g %e", 1.005, 0.5, 12.0), L"1.00 0.5 1.200000e+01");
}

TEST(FormatWide, NumbersOfAllSizes)
{
    EXPECT_EQ(format(L"%d %i", -2147483647 - 1, 2147483647), L"-2147483648 2147483647");
    EXPECT_EQ(format(L"%lld %llu", -1LL, ~0ULL), L"-1 18446744073709551615");
    EXPECT_EQ(format(L"%x %X %#x", 255U, 255U, 255U), L"ff FF 0xff");
    EXPECT_EQ(format(L"%zu", std::size_t {7}), L"7");
}

TEST(FormatWide, APercentSignAndWhatIsUnknownStay)
{
    EXPECT_EQ(format(L"100%%"), L"100%");
    EXPECT_EQ(format(L"a%y b%"), L"a%y b%");
    EXPECT_EQ(format(L"%s", static_cast<const wchar_t*>(nullptr)), L"(null)");
}

TEST(FormatWide, DoesNotDependOnTheLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "nl_NL.UTF-8");
    EXPECT_EQ(format(L"%.1f", 2.5), L"2.5");
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace
} // namespace corma
