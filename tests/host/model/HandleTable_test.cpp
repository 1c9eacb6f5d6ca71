#include "host/model/HandleTable.h"
#include "host/model/Stub.h"

#include <deque>
#include <gtest/gtest.h>

using namespace corma::host;

namespace {

constexpr std::uint64_t kLast = ~std::uint64_t {0};

/// A table with records of its own.
class Records
{
public:
    HandleTable table;

    bool enter(std::uint64_t number)
    {
        AcDbStub& stub = m_stubs.emplace_back();
        stub.handle = Handle {number};
        return table.enter(stub.handle, stub);
    }

    [[nodiscard]] bool has(std::uint64_t number) const
    {
        const AcDbStub* const found = table.find(Handle {number});
        return found != nullptr && found->handle == Handle {number};
    }

private:
    std::deque<AcDbStub> m_stubs;
};

} // namespace

TEST(HandleTable, NothingIsFoundInAnEmptyOne)
{
    const Records records;
    for (const std::uint64_t number : {std::uint64_t {0}, std::uint64_t {1}, kLast}) {
        EXPECT_EQ(records.table.find(Handle {number}), nullptr) << number;
    }
}

TEST(HandleTable, TheFirstWithAHandleKeepsIt)
{
    Records records;
    for (const std::uint64_t number :
         {std::uint64_t {1}, std::uint64_t {0xFFFF}, std::uint64_t {0x10000},
          std::uint64_t {0x123456789A}, kLast}) {
        EXPECT_TRUE(records.enter(number)) << number;
        const AcDbStub* const first = records.table.find(Handle {number});
        EXPECT_FALSE(records.enter(number)) << number;
        EXPECT_EQ(records.table.find(Handle {number}), first) << number;
    }
}

TEST(HandleTable, NeighboursOfAHandleAreNotFound)
{
    Records records;
    constexpr std::uint64_t kFar = 0x1000000;
    for (const std::uint64_t number : {std::uint64_t {1024}, kFar}) {
        ASSERT_TRUE(records.enter(number));
        EXPECT_FALSE(records.has(number - 1));
        EXPECT_FALSE(records.has(number + 1));
    }
}

TEST(HandleTable, AllAreFoundWhileItGrows)
{
    constexpr std::uint64_t kCount = 300'000;
    Records records;
    ASSERT_TRUE(records.enter(kCount + 5)); // far at first, near later
    ASSERT_TRUE(records.enter(kLast - 1)); // always far
    for (std::uint64_t number = 1; number <= kCount; ++number) {
        ASSERT_TRUE(records.enter(number)) << number;
    }
    for (std::uint64_t number = 1; number <= kCount; ++number) {
        ASSERT_TRUE(records.has(number)) << number;
    }
    EXPECT_TRUE(records.has(kCount + 5));
    EXPECT_FALSE(records.enter(kCount + 5));
    EXPECT_TRUE(records.has(kLast - 1));
    EXPECT_FALSE(records.has(kCount + 1));
}

TEST(HandleTable, HandlesWithGreatGapsAreFound)
{
    constexpr std::uint64_t kCount = 10'000;
    constexpr std::uint64_t kGap = 0x100000001;
    Records records;
    records.table.reserve(kCount);
    for (std::uint64_t i = 1; i <= kCount; ++i) {
        ASSERT_TRUE(records.enter(i * kGap)) << i;
    }
    for (std::uint64_t i = 1; i <= kCount; ++i) {
        ASSERT_TRUE(records.has(i * kGap)) << i;
        ASSERT_FALSE(records.has(i * kGap + 1)) << i;
    }
}

TEST(HandleTable, WhatWasReservedChangesNothing)
{
    Records records;
    records.table.reserve(100'000);
    for (const std::uint64_t number : {399'999, 400'000, 400'384, 400'385, 1'000'000}) {
        EXPECT_TRUE(records.enter(number)) << number;
        EXPECT_TRUE(records.has(number)) << number;
    }
    records.table.reserve(1'000'000); // too late
    EXPECT_TRUE(records.has(1'000'000));
}
