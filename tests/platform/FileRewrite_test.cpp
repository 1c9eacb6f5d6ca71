#include "platform/faults.h"
#include "platform/platform.h"
#include "support/Child.h"
#include "support/FaultPlan.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

using corma::testing::FaultPlan;
using corma::testing::FullDisk;
using corma::testing::inChildWithoutRights;
using corma::testing::memoryFolder;
using corma::testing::namesOf;
using corma::testing::TempFolder;
namespace fs = std::filesystem;

namespace corma::platform {
namespace {

using Cause = FileError::Cause;
using Fault = FaultPlan::Fault;
using Missing = FileRewrite::Missing;

constexpr mode_t kModeBits = 07777;

mode_t modeOf(const std::wstring& path)
{
    struct stat status = {};
    return ::stat(toNative(path).c_str(), &status) == 0 ? status.st_mode & kModeBits : 0;
}

bool writeText(FileRewrite& file, std::string_view text)
{
    return file.write({&text, 1}) && file.commit();
}

class FileRewriteTest : public ::testing::Test
{
protected:
    // Rewrites a file of the folder by way of dummy.tmp beside it.
    Cause rewrite(std::wstring_view name, std::string_view text,
                  Missing missing = Missing::isFailure)
    {
        FileRewrite file(folder.path(name), temporary, missing);
        const bool isDone = writeText(file, text);
        EXPECT_EQ(isDone, !file.error().isOne());
        return file.error().cause;
    }

    void link(const char* target, std::wstring_view name) const
    {
        fs::create_symlink(target, toNative(folder.path(name)));
    }

    [[nodiscard]] bool isLink(std::wstring_view name) const
    {
        return fs::is_symlink(toNative(folder.path(name)));
    }

    TempFolder folder;
    std::wstring temporary = folder.path(L"dummy.tmp");
};

TEST_F(FileRewriteTest, GivesTheContentAndPutsAnotherInItsPlace)
{
    const auto path = folder.write(L"a", std::string("o\0d\r\n", 5));
    FileRewrite file(path, temporary, Missing::isFailure);
    EXPECT_TRUE(file.isThere());
    EXPECT_EQ(file.content(), std::string_view("o\0d\r\n", 5));
    const std::array<std::string_view, 3> pieces = {"one", "", "two"};
    EXPECT_TRUE(file.write(pieces));
    EXPECT_EQ(folder.read(L"a"), std::string("o\0d\r\n", 5));
    EXPECT_EQ(folder.read(L"dummy.tmp"), "onetwo");
    EXPECT_TRUE(file.commit());
    EXPECT_FALSE(file.error().isOne());
    EXPECT_EQ(folder.read(L"a"), "onetwo");
    EXPECT_EQ(folder.names(), "a");
}

TEST_F(FileRewriteTest, WithoutACommitTheFileStays)
{
    const auto path = folder.write(L"a", "old");
    {
        FileRewrite file(path, temporary, Missing::isFailure);
        const std::string_view text = "new";
        EXPECT_TRUE(file.write({&text, 1}));
    }
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_EQ(folder.names(), "a");
}

TEST_F(FileRewriteTest, ACommitNeedsAWriteBeforeIt)
{
    FileRewrite file(folder.write(L"a", "old"), temporary, Missing::isFailure);
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(folder.read(L"a"), "old");
}

TEST_F(FileRewriteTest, AFileThatIsNotThereIsAFailureOrEmpty)
{
    EXPECT_EQ(rewrite(L"a", "new"), Cause::notFound);
    EXPECT_EQ(folder.names(), "");
    EXPECT_EQ(rewrite(L"a", "new", Missing::isEmpty), Cause::none);
    EXPECT_EQ(folder.read(L"a"), "new");
    EXPECT_EQ(folder.names(), "a");
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(modeOf(folder.path(L"a")), 0666U & ~mask);
}

TEST_F(FileRewriteTest, AFileThatIsNotThereIsNotMadeBeforeTheCommit)
{
    FileRewrite file(folder.path(L"a"), temporary, Missing::isEmpty);
    EXPECT_FALSE(file.isThere());
    EXPECT_EQ(file.content(), "");
    const std::string_view text = "new";
    EXPECT_TRUE(file.write({&text, 1}));
    EXPECT_FALSE(folder.has(L"a"));
}

TEST_F(FileRewriteTest, TellsWhyAFileCannotBeRewritten)
{
    folder.makeFolder(L"folder");
    fs::create_symlink("circle", toNative(folder.path(L"circle")));
    ASSERT_EQ(::mkfifo(toNative(folder.path(L"pipe")).c_str(), 0666), 0);
    EXPECT_EQ(rewrite(L"folder", "new", Missing::isEmpty), Cause::denied);
    EXPECT_EQ(rewrite(L"circle", "new", Missing::isEmpty), Cause::badPath);
    EXPECT_EQ(rewrite(L"pipe", "new", Missing::isEmpty), Cause::denied);
    EXPECT_EQ(rewrite(L"none/a", "new", Missing::isEmpty), Cause::badPath);
    EXPECT_EQ(folder.names(), "circle folder pipe");
}

TEST_F(FileRewriteTest, AFileThatMayNotBeWrittenStaysThoughItsFolderWouldTakeAnother)
{
    const auto path = folder.write(L"a", "old");
    ASSERT_EQ(::chmod(toNative(path).c_str(), 0444), 0);
    ASSERT_EQ(::chmod(toNative(folder.path()).c_str(), 0777), 0);
    EXPECT_TRUE(inChildWithoutRights([&] {
                    const FileRewrite file(path, temporary, Missing::isFailure);
                    return file.error().cause == Cause::denied;
                }).isGood());
    EXPECT_EQ(folder.names(), "a");
}

TEST_F(FileRewriteTest, AFolderThatTakesNoFileIsToldAtTheWrite)
{
    const auto path = folder.write(L"a", "old");
    ASSERT_EQ(::chmod(toNative(path).c_str(), 0666), 0);
    ASSERT_EQ(::chmod(toNative(folder.path()).c_str(), 0555), 0);
    EXPECT_TRUE(inChildWithoutRights([&] {
                    FileRewrite file(path, temporary, Missing::isFailure);
                    const std::string_view text = "new";
                    return !file.error().isOne() && !file.write({&text, 1})
                        && file.error().cause == Cause::denied;
                }).isGood());
    ASSERT_EQ(::chmod(toNative(folder.path()).c_str(), 0755), 0);
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_EQ(folder.names(), "a");
}

TEST_F(FileRewriteTest, TellsThatTheDiskIsFull)
{
    folder.write(L"a", "old");
    {
        const FullDisk disk(10);
        EXPECT_EQ(rewrite(L"a", std::string(11, 'x')), Cause::diskFull);
    }
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_EQ(folder.names(), "a");
}

TEST_F(FileRewriteTest, ATemporaryFileFromBeforeGoesAway)
{
    folder.write(L"a", "old");
    folder.write(L"dummy.tmp", "half of something that is longer");
    EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
    EXPECT_EQ(folder.read(L"a"), "new");
    EXPECT_EQ(folder.names(), "a");
}

TEST_F(FileRewriteTest, ALinkInThePlaceOfTheTemporaryFileIsNotFollowed)
{
    const TempFolder elsewhere;
    elsewhere.write(L"precious", "gold");
    const std::string precious = toNative(elsewhere.path(L"precious"));
    const std::string absent = toNative(elsewhere.path(L"absent"));
    for (const std::string& target : {precious, absent, std::string("a")}) {
        folder.write(L"a", "old");
        link(target.c_str(), L"dummy.tmp");
        EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
        EXPECT_EQ(folder.read(L"a"), "new");
        EXPECT_FALSE(isLink(L"a"));
        EXPECT_EQ(folder.names(), "a");
    }
    EXPECT_EQ(elsewhere.read(L"precious"), "gold");
    EXPECT_EQ(elsewhere.names(), "precious");
}

TEST_F(FileRewriteTest, ASecondNameOfTheFileInThePlaceOfTheTemporaryOneGoesAway)
{
    folder.write(L"a", "old");
    fs::create_hard_link(toNative(folder.path(L"a")), toNative(temporary));
    EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
    EXPECT_EQ(folder.read(L"a"), "new");
    EXPECT_EQ(folder.names(), "a");
}

TEST_F(FileRewriteTest, AFolderInThePlaceOfTheTemporaryFileIsAFailure)
{
    folder.write(L"a", "old");
    folder.makeFolder(L"dummy.tmp");
    EXPECT_EQ(rewrite(L"a", "new"), Cause::denied);
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_EQ(folder.names(), "a dummy.tmp");
}

TEST_F(FileRewriteTest, AFileOfTheTemporaryNameIsNotWrittenInPlace)
{
    for (const char* const old : {"old", ""}) {
        folder.write(L"dummy.tmp", old);
        FileRewrite file(temporary, temporary, Missing::isFailure);
        const std::string_view text = "new";
        EXPECT_TRUE(file.write({&text, 1}));
        EXPECT_EQ(folder.read(L"dummy.tmp"), old);
        EXPECT_TRUE(file.commit());
        EXPECT_EQ(folder.read(L"dummy.tmp"), "new");
        EXPECT_EQ(folder.names(), "dummy.tmp");
    }
}

TEST_F(FileRewriteTest, AFileOfTheTemporaryNameIsNotMadeBeforeTheCommit)
{
    const std::wstring throughLink = folder.path(L"link/dummy.tmp");
    link(".", L"link");
    FileRewrite file(throughLink, temporary, Missing::isEmpty);
    const std::string_view text = "new";
    EXPECT_TRUE(file.write({&text, 1}));
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(folder.read(L"dummy.tmp"), "new");
}

TEST_F(FileRewriteTest, LinksStayLinks)
{
    const TempFolder elsewhere;
    const std::string absolute = toNative(elsewhere.write(L"far", "old"));
    folder.write(L"sub/near", "old");
    link("sub/near", L"relative");
    link("relative", L"chain");
    link(absolute.c_str(), L"absolute");
    link("sub/new", L"dangling");
    EXPECT_EQ(rewrite(L"relative", "1"), Cause::none);
    EXPECT_EQ(folder.read(L"sub/near"), "1");
    EXPECT_EQ(rewrite(L"chain", "2"), Cause::none);
    EXPECT_EQ(folder.read(L"sub/near"), "2");
    EXPECT_EQ(rewrite(L"absolute", "3"), Cause::none);
    EXPECT_EQ(elsewhere.read(L"far"), "3");
    EXPECT_EQ(rewrite(L"dangling", "4"), Cause::notFound);
    EXPECT_EQ(rewrite(L"dangling", "4", Missing::isEmpty), Cause::none);
    EXPECT_EQ(folder.read(L"sub/new"), "4");
    for (const wchar_t* const name : {L"relative", L"chain", L"absolute", L"dangling"}) {
        EXPECT_TRUE(isLink(name));
    }
}

TEST_F(FileRewriteTest, ModeBitsStay)
{
    for (const mode_t mode : {0600U, 0640U, 0755U, 0666U}) {
        const auto path = folder.write(L"a", "old");
        ASSERT_EQ(::chmod(toNative(path).c_str(), mode), 0);
        EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
        EXPECT_EQ(modeOf(path), mode);
        fs::remove(toNative(path));
    }
}

TEST_F(FileRewriteTest, TheContentIsOnDiskBeforeItGetsTheNameAndTheNameBehindIt)
{
    folder.write(L"a", "old");
    const FaultPlan plan;
    EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
    EXPECT_EQ(namesOf(plan.calls()),
              "openFolder lockFolder openTarget read close "
              "create changeOwner changeMode write flush rename close flushFolder close");
}

TEST_F(FileRewriteTest, WhatIsKeptUnderAnotherNameIsTheFormerFile)
{
    const auto path = folder.write(L"a", "old");
    ASSERT_EQ(::chmod(toNative(path).c_str(), 0640), 0);
    const std::wstring backup = folder.path(L"b");
    for (const char* const inTheWay : {"", "older"}) {
        if (*inTheWay != 0) {
            folder.write(L"b", inTheWay);
            folder.write(L"b.new", "stray");
        }
        FileRewrite file(path, temporary, Missing::isFailure);
        const std::string before(file.content());
        EXPECT_TRUE(file.keepAs(backup));
        EXPECT_EQ(folder.read(L"b"), before);
        EXPECT_EQ(folder.read(L"a"), before);
        EXPECT_TRUE(writeText(file, "new"));
        EXPECT_EQ(folder.read(L"b"), before);
        EXPECT_EQ(folder.names(), "a b");
    }
    EXPECT_EQ(modeOf(backup), 0640U);
}

TEST_F(FileRewriteTest, WhereAFileCannotHaveTwoNamesItsFormerContentIsCopied)
{
    for (const auto call : {SystemCall::link, SystemCall::rename}) {
        const auto path = folder.write(L"a", "old");
        ASSERT_EQ(::chmod(toNative(path).c_str(), 0640), 0);
        folder.write(L"b", "older");
        FileRewrite file(path, temporary, Missing::isFailure);
        std::size_t at = 0;
        {
            // keepAs() removes what is in the way, links, and renames.
            at = call == SystemCall::link ? 1 : 2;
            const FaultPlan plan({.fault = Fault::failure, .call = at, .error = EPERM});
            EXPECT_TRUE(file.keepAs(folder.path(L"b")));
            EXPECT_EQ(plan.calls()[at], call);
        }
        EXPECT_TRUE(writeText(file, "new"));
        EXPECT_EQ(folder.read(L"a"), "new");
        EXPECT_EQ(folder.read(L"b"), "old");
        EXPECT_EQ(modeOf(folder.path(L"b")), 0640U);
        EXPECT_EQ(folder.names(), "a b");
    }
}

TEST_F(FileRewriteTest, AFolderInThePlaceOfTheOtherNameIsAFailureThatChangesNothing)
{
    const auto path = folder.write(L"a", "old");
    folder.makeFolder(L"b");
    {
        FileRewrite file(path, temporary, Missing::isFailure);
        EXPECT_FALSE(file.keepAs(folder.path(L"b")));
    }
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_EQ(folder.names(), "a b");
}

TEST_F(FileRewriteTest, NothingIsKeptOfAFileThatIsNotThere)
{
    FileRewrite file(folder.path(L"a"), temporary, Missing::isEmpty);
    EXPECT_FALSE(file.keepAs(folder.path(L"b")));
    EXPECT_EQ(folder.names(), "");
}

// --- a temporary file on another file system -----------------------------------------------------

class FileRewriteAcrossTest : public FileRewriteTest
{
protected:
    void SetUp() override
    {
        struct stat here = {};
        struct stat there = {};
        if (memoryFolder().empty() || ::stat(toNative(folder.path()).c_str(), &here) != 0
            || ::stat(memoryFolder().c_str(), &there) != 0 || here.st_dev == there.st_dev) {
            GTEST_SKIP() << "there is no second file system to write to";
        }
        memory.emplace(memoryFolder());
        temporary = memory->path(L"dummy.tmp");
    }

    std::optional<TempFolder> memory;
};

TEST_F(FileRewriteAcrossTest, ItTakesItsPlaceThroughACopyBesideTheFile)
{
    const auto path = folder.write(L"a", "old");
    ASSERT_EQ(::chmod(toNative(path).c_str(), 0640), 0);
    folder.write(L"dummy.tmp", "stray");
    const std::string text(200'000, 'x'); // more than is copied at once
    EXPECT_EQ(rewrite(L"a", text), Cause::none);
    EXPECT_EQ(folder.read(L"a"), text);
    EXPECT_EQ(modeOf(path), 0640U);
    EXPECT_EQ(folder.names(), "a");
    EXPECT_EQ(memory->names(), "");
}

TEST_F(FileRewriteAcrossTest, TheCopyIsOnDiskBeforeItGetsTheName)
{
    folder.write(L"a", "old");
    const FaultPlan plan;
    EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
    EXPECT_EQ(namesOf(plan.calls()),
              "openFolder openFolder lockFolder lockFolder openTarget read close "
              "create changeOwner changeMode write flush rename "
              "create changeOwner changeMode read read write read flush rename close "
              "flushFolder close remove close close");
}

TEST_F(FileRewriteAcrossTest, ACopyThatCannotBeMadeLeavesTheFile)
{
    folder.write(L"a", "old");
    folder.makeFolder(L"dummy.tmp");
    EXPECT_EQ(rewrite(L"a", "new"), Cause::denied);
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_EQ(memory->names(), "");
}

// --- renaming that never works -------------------------------------------------------------------

TEST_F(FileRewriteTest, WhereNothingCanBeRenamedTheCopyIsTriedOnce)
{
    folder.write(L"a", "old");
    for (const int error : {EXDEV, EIO}) {
        std::size_t firstRename = 0;
        {
            const FaultPlan counted;
            EXPECT_EQ(rewrite(L"a", "old"), Cause::none);
            const auto found
                = std::find(counted.calls().begin(), counted.calls().end(), SystemCall::rename);
            firstRename = static_cast<std::size_t>(found - counted.calls().begin());
        }
        const FaultPlan plan(
            {.fault = Fault::failuresFromHere, .call = firstRename, .error = error});
        EXPECT_NE(rewrite(L"a", "new"), Cause::none);
        EXPECT_EQ(plan.failures(), error == EXDEV ? 2U : 1U);
        EXPECT_EQ(folder.read(L"a"), "old");
        EXPECT_EQ(folder.names(), "a");
    }
}

// --- the lock ------------------------------------------------------------------------------------

// Counts the tries to lock a folder, of all threads.
class LockTries : public CallObserver
{
public:
    LockTries()
        : m_former(observeCalls(this))
    {
    }

    LockTries(const LockTries&) = delete;
    LockTries& operator=(const LockTries&) = delete;

    ~LockTries() override { observeCalls(m_former); }

    int before(SystemCall call) override
    {
        m_tries += call == SystemCall::lockFolder ? 1 : 0;
        return 0;
    }

    void after(SystemCall /*call*/) override { }

    void waitFor(int tries) const
    {
        while (m_tries < tries) {
            std::this_thread::yield();
        }
    }

private:
    std::atomic<int> m_tries = 0;
    CallObserver* m_former;
};

class FolderLockTest : public FileRewriteTest
{
protected:
    // What a second rewrite reads that began while the first one was at work.
    std::string readMeanwhile(const std::wstring& first, const std::wstring& second,
                              const std::wstring& temporaryOfSecond)
    {
        const LockTries tries;
        std::string seen;
        std::thread other;
        {
            FileRewrite file(first, temporary, Missing::isFailure);
            tries.waitFor(1);
            other = std::thread([&] {
                const FileRewrite waiting(second, temporaryOfSecond, Missing::isFailure);
                seen = waiting.error().isOne() ? "failed" : waiting.content();
            });
            tries.waitFor(4); // the other one had to try again and again
            EXPECT_TRUE(writeText(file, "new"));
        }
        other.join();
        return seen;
    }
};

TEST_F(FolderLockTest, AChangeWaitsForAnotherOneOfTheFile)
{
    const auto path = folder.write(L"a", "old");
    EXPECT_EQ(readMeanwhile(path, path, temporary), "new");
}

TEST_F(FolderLockTest, AChangeWaitsForOneOfAnotherFileOfTheFolder)
{
    const auto path = folder.write(L"a", "old");
    const auto other = folder.write(L"b", "other");
    EXPECT_EQ(readMeanwhile(path, other, temporary), "other");
}

TEST_F(FolderLockTest, AFolderIsTheSameByWhateverPath)
{
    const auto path = folder.write(L"sub/a", "old");
    link("sub", L"link");
    link("sub/a", L"file");
    EXPECT_EQ(readMeanwhile(path, folder.path(L"link/a"), folder.path(L"link/dummy.tmp")), "new");
    folder.write(L"sub/a", "old");
    EXPECT_EQ(readMeanwhile(path, folder.path(L"sub/../link/a"), temporary), "new");
    folder.write(L"sub/a", "old");
    EXPECT_EQ(readMeanwhile(path, folder.path(L"file"), temporary), "new");
}

TEST_F(FolderLockTest, TheFolderOfTheTemporaryFileIsLockedToo)
{
    const auto path = folder.write(L"sub/a", "old");
    const auto other = folder.write(L"b", "other");
    EXPECT_EQ(readMeanwhile(path, other, folder.path(L"b.tmp")), "other");
}

TEST_F(FolderLockTest, AFolderThatCannotBeLockedIsNoError)
{
    for (const int error : {ENOTSUP, ENOLCK, EBADF, EIO}) {
        folder.write(L"a", "old");
        const FaultPlan plan({.fault = Fault::failure, .call = 1, .error = error});
        EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
        EXPECT_EQ(plan.failures(), 1U);
        EXPECT_EQ(plan.calls()[1], SystemCall::lockFolder);
        EXPECT_EQ(folder.read(L"a"), "new");
    }
}

TEST_F(FolderLockTest, AFolderThatCannotBeOpenedIsNoError)
{
    folder.write(L"a", "old");
    const FaultPlan plan({.fault = Fault::failure, .call = 0, .error = EACCES});
    EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
    EXPECT_EQ(plan.calls()[0], SystemCall::openFolder);
    EXPECT_EQ(folder.read(L"a"), "new");
}

TEST_F(FolderLockTest, WhatHasBeenKilledKeepsNothing)
{
    const auto path = folder.write(L"a", "old");
    const auto ended = testing::inChild([&] {
        const FaultPlan plan({.fault = Fault::endBefore, .call = 7});
        return rewrite(L"a", "of the dead") == Cause::none;
    });
    EXPECT_TRUE(ended.wasKilled());
    const FaultPlan plan;
    EXPECT_EQ(rewrite(L"a", "new"), Cause::none);
    EXPECT_EQ(std::count(plan.calls().begin(), plan.calls().end(), SystemCall::lockFolder), 1);
    EXPECT_EQ(folder.read(L"a"), "new");
}

} // namespace
} // namespace corma::platform
