#include "platform/text.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace corma {
namespace {

constexpr int kGerman = 7;
constexpr int kEnglish = 9;
constexpr int kSpanish = 10;
constexpr int kFrench = 12;
constexpr int kDutch = 19;
constexpr int kPolish = 21;
constexpr int kRussian = 25;

using Texts = std::vector<std::wstring>;

struct OrderRow
{
    const char* sentence;
    int language;
    Texts ordered;
};

class OrderOfTexts : public ::testing::TestWithParam<OrderRow>
{
};

TEST_P(OrderOfTexts, IsThatOfTheLanguage)
{
    const TextOrder order(GetParam().language);
    Texts texts = GetParam().ordered;
    std::sort(texts.begin(), texts.end(), std::greater<>()); // some order that is another one
    std::sort(texts.begin(), texts.end(), order);
    EXPECT_EQ(texts, GetParam().ordered);
}

TEST_P(OrderOfTexts, IsThatOfTheKeys)
{
    const TextOrder order(GetParam().language);
    const Texts& texts = GetParam().ordered;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(order.key(texts[i]), order.key(texts[i]));
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_LT(order.key(texts[j]), order.key(texts[i])) << j << ' ' << i;
        }
    }
}

TEST_P(OrderOfTexts, IsTotal)
{
    const TextOrder order(GetParam().language);
    for (const auto& a : GetParam().ordered) {
        for (const auto& b : GetParam().ordered) {
            EXPECT_EQ(a != b, order(a, b) != order(b, a));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Platform, OrderOfTexts,
    ::testing::Values(
        OrderRow {"EnglishIgnoresCaseAtFirst", kEnglish, {L"", L"apple", L"Berry", L"cherry"}},
        OrderRow {"CaseDecidesBetweenEqualLetters",
                  kEnglish,
                  {L"ab", L"aB", L"Ab", L"AB", L"abc", L"ABC"}},
        OrderRow {"CodePointsDecideAtLast", kEnglish, {L"a", L"a\x01", L"a\x02", L"b"}},
        OrderRow {
            "GermanUmlautsStandWithTheirLetters", kGerman, {L"Arm", L"\u00C4rmel", L"Art", L"Zug"}},
        OrderRow {"SpanishHasItsEnie", kSpanish, {L"nz", L"\u00F1a", L"oa"}},
        OrderRow {"EnglishDoesNot", kEnglish, {L"\u00F1a", L"nz", L"oa"}},
        OrderRow {"FrenchAccentsComeAfterLetters", kFrench, {L"cote", L"cot\u00E9", L"coter"}},
        OrderRow {"DutchKeepsItsSignsInFront", kDutch, {L"_a", L"1a", L"een", L"\u00E9\u00E9n"}},
        OrderRow {"PolishHasLettersOfItsOwn",
                  kPolish,
                  {L"luz", L"\u0142an", L"mak", L"zero", L"\u017Car"}},
        OrderRow {"RussianFollowsItsAlphabet",
                  kRussian,
                  {L"\u0451\u0436", L"\u0415\u043B\u044C", L"\u0416\u0443\u043A"}},
        OrderRow {"AnyOtherNumberIsTheCommonOrder", 0, {L"a", L"\u00E4", L"B", L"\u00F1a", L"nz"}}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST(TextOrder, CopiesOrderAlike)
{
    const auto make = [] { return TextOrder(kSpanish); };
    const TextOrder copy = make();
    EXPECT_TRUE(copy(L"nz", L"\u00F1a"));
    EXPECT_FALSE(copy(L"\u00F1a", L"nz"));
}

TEST(TextOrder, LivesWithTextsThatAreNone)
{
    const TextOrder order(kEnglish);
    const std::wstring half(1, static_cast<wchar_t>(0xD800));
    EXPECT_NE(order(half, L"a"), order(L"a", half));
    EXPECT_FALSE(order(half, half));
    EXPECT_TRUE(order(std::wstring(L"a\0a", 3), std::wstring(L"a\0b", 3)));
}

} // namespace
} // namespace corma
