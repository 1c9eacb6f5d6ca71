#include "foundation/wide_text.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace corma {
namespace {

TEST(WideText, NullCountsAsEmpty)
{
    EXPECT_EQ(length(nullptr), 0U);
    EXPECT_EQ(length(L"abc"), 3U);
    EXPECT_EQ(find(nullptr, L'a'), nullptr);
    EXPECT_EQ(view(nullptr), L"");
    wchar_t target[] = L"x";
    copy(target, nullptr);
    EXPECT_STREQ(target, L"");
}

TEST(WideText, NullIsBelowAnyTextAndEqualToNull)
{
    EXPECT_EQ(compare(nullptr, nullptr), 0);
    EXPECT_LT(compare(nullptr, L""), 0);
    EXPECT_GT(compareIgnoringCase(L"", nullptr), 0);
    EXPECT_EQ(compareIgnoringCase(nullptr, nullptr), 0);
}

TEST(WideText, ComparesWithAndWithoutRegardToCase)
{
    EXPECT_EQ(compare(L"abc", L"abc"), 0);
    EXPECT_GT(compare(L"abc", L"ABC"), 0);
    EXPECT_LT(compare(L"ab", L"abc"), 0);
    EXPECT_GT(compare(L"abc", L"ab"), 0);
    EXPECT_EQ(compareIgnoringCase(L"ABÉ", L"abé"), 0);
    EXPECT_LT(compareIgnoringCase(L"ABa", L"abb"), 0);
}

TEST(WideText, ABoundedCopyAlwaysEnds)
{
    wchar_t target[] = L"####";
    copyBounded(target, 4, L"abc");
    EXPECT_STREQ(target, L"abc");
    copyBounded(target, 3, L"xyz");
    EXPECT_STREQ(target, L"xy");
    copyBounded(target, 0, L"q");
    EXPECT_STREQ(target, L"xy");
}

TEST(WideText, DuplicatesOnTheHeap)
{
    wchar_t* heap = duplicate(L"text");
    EXPECT_STREQ(heap, L"text");
    std::free(heap);
    EXPECT_EQ(duplicate(nullptr), nullptr);
}

TEST(WideText, TrimsBlanksAtBothEnds)
{
    EXPECT_EQ(trimmed(L"  a b  "), L"a b");
    EXPECT_EQ(trimmed(L"\ta"), L"\ta");
    EXPECT_EQ(trimmed(L"   "), L"");
    EXPECT_EQ(trimmed(L""), L"");
}

TEST(WideText, FindsTheFirstPlaceOfACharacter)
{
    const wchar_t text[] = L"a=b=c";
    EXPECT_EQ(find(text, L'='), text + 1);
    EXPECT_EQ(find(text, L'x'), nullptr);
}

} // namespace
} // namespace corma
