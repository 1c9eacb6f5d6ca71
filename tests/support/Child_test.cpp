#include "support/Child.h"
#include "support/TempFolder.h"

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include <unistd.h>

using corma::testing::Child;
using corma::testing::inChild;
using corma::testing::inChildWithoutRights;
using corma::testing::TempFolder;

namespace {

TEST(InChild, TellsHowTheChildEnded)
{
    EXPECT_TRUE(inChild([] { return true; }).isGood());
    EXPECT_EQ(inChild([] { return false; }).status, 1);
    EXPECT_EQ(inChild([]() -> bool { throw std::runtime_error("no"); }).status, 2);
    const auto ended = inChild([] { return std::raise(SIGTERM) == 0; });
    EXPECT_EQ(ended.signal, SIGTERM);
    EXPECT_FALSE(ended.isGood());
    EXPECT_FALSE(ended.wasKilled());
}

TEST(InChild, LeavesTheObjectsOfTheTestAlone)
{
    const TempFolder folder;
    folder.write(L"a", "1");
    EXPECT_TRUE(inChild([&] { return folder.has(L"a"); }).isGood());
    EXPECT_TRUE(folder.has(L"a"));
}

TEST(InChildWithoutRights, NothingOfOthersCanBeChanged)
{
    const auto mayWrite = [](const std::string& path) { return ::access(path.c_str(), W_OK) == 0; };
    EXPECT_TRUE(inChildWithoutRights([&] { return !mayWrite("/"); }).isGood());
    EXPECT_TRUE(inChildWithoutRights([&] { return mayWrite("/tmp"); }).isGood());
}

TEST(Child, CanBeKilledMeanwhile)
{
    Child child([] {
        for (;;) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    });
    child.kill();
    EXPECT_TRUE(child.end().wasKilled());
    EXPECT_THROW(child.end(), std::runtime_error);
}

} // namespace
