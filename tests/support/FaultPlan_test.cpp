#include "platform/platform.h"
#include "support/Child.h"
#include "support/FaultPlan.h"
#include "support/TempFolder.h"

#include <cerrno>
#include <gtest/gtest.h>

using corma::platform::replaceFile;
using corma::platform::SystemCall;
using corma::testing::FaultPlan;
using corma::testing::inChild;
using corma::testing::namesOf;
using corma::testing::TempFolder;

namespace {

using Fault = FaultPlan::Fault;

class FaultPlanTest : public ::testing::Test
{
protected:
    // The place of the first call of a kind among those of a replacement.
    std::size_t placeOf(SystemCall call)
    {
        const FaultPlan plan;
        EXPECT_TRUE(replaceFile(path, "old"));
        for (std::size_t i = 0; i < plan.calls().size(); ++i) {
            if (plan.calls()[i] == call) {
                return i;
            }
        }
        ADD_FAILURE() << "no such call";
        return 0;
    }

    TempFolder folder;
    std::wstring path = folder.path(L"a");
};

TEST_F(FaultPlanTest, CountsTheCallsAndLetsThemBe)
{
    const FaultPlan plan;
    EXPECT_TRUE(replaceFile(path, "new"));
    EXPECT_EQ(
        namesOf(plan.calls()),
        "create changeOwner changeMode write flush rename close openFolder flushFolder close");
    EXPECT_EQ(plan.failures(), 0U);
    EXPECT_EQ(folder.read(L"a"), "new");
}

TEST_F(FaultPlanTest, ACallFailsOnceAndIsNotMade)
{
    const std::size_t rename = placeOf(SystemCall::rename);
    const FaultPlan plan({.fault = Fault::failure, .call = rename, .error = EIO});
    EXPECT_FALSE(replaceFile(path, "new"));
    EXPECT_EQ(plan.failures(), 1U);
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_TRUE(replaceFile(path, "new"));
    EXPECT_EQ(plan.failures(), 1U);
}

TEST_F(FaultPlanTest, AllCallsOfAKindFailFromOneOn)
{
    const std::size_t write = placeOf(SystemCall::write);
    const FaultPlan plan({.fault = Fault::failuresFromHere, .call = write, .error = ENOSPC});
    EXPECT_FALSE(replaceFile(path, "new"));
    EXPECT_FALSE(replaceFile(path, "new"));
    EXPECT_EQ(plan.failures(), 2U);
    EXPECT_EQ(folder.read(L"a"), "old");
}

TEST_F(FaultPlanTest, EndsTheProcessBeforeACallOrBehindIt)
{
    const std::size_t rename = placeOf(SystemCall::rename);
    const auto writeUpTo = [&](Fault fault) {
        return inChild([&] {
            const FaultPlan plan({.fault = fault, .call = rename});
            return replaceFile(path, "new");
        });
    };
    EXPECT_TRUE(writeUpTo(Fault::endBefore).wasKilled());
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_TRUE(writeUpTo(Fault::endBehind).wasKilled());
    EXPECT_EQ(folder.read(L"a"), "new");
}

TEST_F(FaultPlanTest, PutsTheFormerObserverBack)
{
    const FaultPlan outer;
    {
        const FaultPlan inner;
        EXPECT_TRUE(replaceFile(path, "one"));
        EXPECT_FALSE(inner.calls().empty());
    }
    EXPECT_TRUE(outer.calls().empty());
    EXPECT_TRUE(replaceFile(path, "two"));
    EXPECT_FALSE(outer.calls().empty());
}

} // namespace
