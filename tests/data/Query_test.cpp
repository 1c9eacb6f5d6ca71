#include "data/Query.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

using corma::isFull;
using corma::Query;
using corma::showLongText;
using corma::testing::RecordingServices;

namespace {

using Messages = std::vector<std::wstring>;

TEST(Query, WantsAsManyRowsAsItsMaximum)
{
    const Query two {.maximumRows = 2};
    EXPECT_TRUE(two.wantsMoreThan(0));
    EXPECT_TRUE(two.wantsMoreThan(1));
    EXPECT_FALSE(two.wantsMoreThan(2));
    EXPECT_FALSE(two.wantsMoreThan(3));
}

TEST(Query, WantsAllRowsWithoutAMaximum)
{
    EXPECT_TRUE(Query {}.wantsMoreThan(1'000'000));
    EXPECT_TRUE(Query {.maximumRows = -1}.wantsMoreThan(1'000'000));
}

TEST(Query, IsOfTooManyRowsWhenAColumnIsFull)
{
    RecordingServices services;
    EXPECT_FALSE(isFull(0));
    EXPECT_FALSE(isFull(32'759));
    EXPECT_EQ(services.printed, Messages {});
    EXPECT_TRUE(isFull(32'760));
    EXPECT_EQ(services.printed,
              (Messages {
                  L"\n",
                  L"Only the first 32760 rows are kept; ask for the others by another statement"}));
}

const std::wstring kHeading = L"\n======================== kop ===============================";

struct LongRow
{
    const char* sentence;
    std::wstring text;
    Messages lines;
};

class LongText : public testing::TestWithParam<LongRow>
{
};

TEST_P(LongText, IsShownByPieces)
{
    RecordingServices services;
    showLongText(L"kop", GetParam().text);
    Messages expected {L"\n", kHeading};
    for (const std::wstring& line : GetParam().lines) {
        expected.insert(expected.end(), {L"\n", line});
    }
    EXPECT_EQ(services.printed, expected);
}

std::wstring letters(std::size_t count)
{
    return std::wstring(count, L'a');
}

INSTANTIATE_TEST_SUITE_P(
    Query, LongText,
    testing::Values(LongRow {"NoneForNothing", L"", {}}, LongRow {"OneOfOne", L"x", {L"x"}},
                    LongRow {"OneOf78", letters(78), {letters(78)}},
                    LongRow {"OneOf79", letters(79), {letters(79)}},
                    LongRow {"TwoOf80", letters(79) + L"b", {letters(79), L"b"}},
                    LongRow {"ThreeOf159", letters(158) + L"c", {letters(79), letters(79), L"c"}},
                    LongRow {"OneWithItsLineEnds", L"x\ny", {L"x\ny"}},
                    LongRow {"OneWithPerCentSignsChanged", L"LIKE 'a%s'", {L"LIKE 'a$s'"}}),
    [](const auto& row) { return std::string(row.param.sentence); });

} // namespace
