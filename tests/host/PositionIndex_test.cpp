#include "host/PositionIndex.h"

#include <gtest/gtest.h>

namespace {

using corma::host::PositionIndex;

const auto kAny = [](std::size_t) { return true; };

TEST(PositionIndex, NothingIsFoundInAnEmptyOne)
{
    const PositionIndex index;
    EXPECT_EQ(index.first(7, kAny), PositionIndex::kNowhere);
}

TEST(PositionIndex, TheLowestPositionOfAHashIsFoundInWhateverOrderTheyCame)
{
    PositionIndex index;
    index.add(7, 5);
    index.add(7, 2);
    index.add(7, 9);
    EXPECT_EQ(index.first(7, kAny), 2U);
    EXPECT_EQ(index.first(7, [](std::size_t at) { return at > 2; }), 5U);
    EXPECT_EQ(index.first(7, [](std::size_t at) { return at > 9; }), PositionIndex::kNowhere);
}

TEST(PositionIndex, HashesThatEndAlikeAreToldApart)
{
    PositionIndex index;
    index.add(0x10000001, 0);
    index.add(0x20000001, 1);
    EXPECT_EQ(index.first(0x10000001, kAny), 0U);
    EXPECT_EQ(index.first(0x20000001, kAny), 1U);
    EXPECT_EQ(index.first(0x30000001, kAny), PositionIndex::kNowhere);
}

TEST(PositionIndex, WhatIsTakenOutIsNotFoundAndItsNeighboursAre)
{
    PositionIndex index;
    for (std::size_t i = 0; i < 3; ++i) {
        index.add(7, i);
    }
    index.remove(7, 0);
    EXPECT_EQ(index.first(7, kAny), 1U);
    index.remove(7, 1);
    EXPECT_EQ(index.first(7, kAny), 2U);
    index.add(7, 0);
    EXPECT_EQ(index.first(7, kAny), 0U);
}

TEST(PositionIndex, TakingOutWhatIsNotThereChangesNothing)
{
    PositionIndex index;
    index.remove(7, 0);
    index.add(7, 3);
    index.remove(7, 2);
    index.remove(8, 3);
    EXPECT_EQ(index.first(7, kAny), 3U);
}

TEST(PositionIndex, ManyAreAllFoundAndAreAllGoneAfterClearing)
{
    constexpr std::uint32_t kMany = 1000;
    PositionIndex index;
    for (std::uint32_t i = 0; i < kMany; ++i) {
        index.add(i * 31, i);
    }
    for (std::uint32_t i = 0; i < kMany; ++i) {
        ASSERT_EQ(index.first(i * 31, kAny), i);
    }
    index.clear();
    EXPECT_EQ(index.first(31, kAny), PositionIndex::kNowhere);
    index.add(31, 4);
    EXPECT_EQ(index.first(31, kAny), 4U);
}

} // namespace
