#include "platform/platform.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using corma::testing::TempFolder;
namespace fs = std::filesystem;

namespace corma::platform {
namespace {

constexpr std::int64_t kMillisecond = 1'000'000;
constexpr std::int64_t kSecond = 1'000 * kMillisecond;

TEST(ReadFile, GivesTheBytesWithZerosBehindThem)
{
    const TempFolder folder;
    const auto path = toNative(folder.write(L"a", std::string("a\0b\r\n", 5)));
    const auto content = readFile(path);
    ASSERT_TRUE(content);
    EXPECT_EQ(content->view(), std::string_view("a\0b\r\n", 5));
    for (std::size_t i = 0; i < FileContent::kPadding; ++i) {
        EXPECT_EQ(content->bytes[content->size + i], '\0');
    }
    EXPECT_EQ(content->stamp, fileStamp(path));
}

TEST(ReadFile, RefusesWhatIsNoRegularFile)
{
    const TempFolder folder;
    EXPECT_FALSE(readFile(toNative(folder.path())));
    EXPECT_FALSE(readFile(toNative(folder.path(L"none"))));
    EXPECT_FALSE(readFile("/dev/zero"));
    const auto pipe = toNative(folder.path(L"pipe"));
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(readFile(pipe));
}

TEST(FileStamp, TellsEveryKindOfChange)
{
    const TempFolder folder;
    const auto path = toNative(folder.write(L"a", "one"));
    const auto before = fileStamp(path);
    testing::letFilesSettle();
    folder.write(L"a", "two");
    const auto inPlace = fileStamp(path);
    EXPECT_NE(before, inPlace);
    folder.replace(L"a", "six");
    EXPECT_NE(fileStamp(path), inPlace);
    EXPECT_FALSE(fileStamp(toNative(folder.path())));
}

TEST(FileStamp, ATimeThatIsPutBackIsStillAChange)
{
    const TempFolder folder;
    const auto path = toNative(folder.write(L"a", "one"));
    const auto before = fileStamp(path);
    const auto time = fs::last_write_time(path);
    testing::letFilesSettle();
    folder.write(L"a", "two");
    fs::last_write_time(path, time);
    EXPECT_NE(fileStamp(path), before);
}

TEST(FolderStamp, TellsThatANameCame)
{
    const TempFolder folder;
    const auto path = toNative(folder.path());
    const auto before = folderStamp(path);
    testing::letFilesSettle();
    EXPECT_EQ(folderStamp(path), before);
    const auto file = folder.write(L"a", "");
    EXPECT_NE(folderStamp(path), before);
    EXPECT_FALSE(folderStamp(toNative(file)));
    EXPECT_FALSE(folderStamp(toNative(folder.path(L"none"))));
}

TEST(CouldHideAChange, ForTwoStepsOfTheClock)
{
    FileStamp stamp;
    stamp.changed = kSecond + kMillisecond;
    EXPECT_TRUE(couldHideAChange(stamp, stamp.changed));
    EXPECT_TRUE(couldHideAChange(stamp, stamp.changed + 19 * kMillisecond));
    EXPECT_FALSE(couldHideAChange(stamp, stamp.changed + 20 * kMillisecond));
}

TEST(CouldHideAChange, LongerWhereTimesAreWholeSeconds)
{
    FileStamp stamp;
    stamp.changed = 5 * kSecond;
    EXPECT_TRUE(couldHideAChange(stamp, stamp.changed + 4 * kSecond - 1));
    EXPECT_FALSE(couldHideAChange(stamp, stamp.changed + 4 * kSecond));
}

TEST(CouldHideAChange, ForATimeInTheFuture)
{
    FileStamp stamp;
    stamp.changed = 10 * kSecond + 1;
    EXPECT_TRUE(couldHideAChange(stamp, kSecond));
}

TEST(ReplaceFile, MakesAFileAndPutsNewContentInItsPlace)
{
    const TempFolder folder;
    EXPECT_TRUE(replaceFile(folder.path(L"a"), "one"));
    EXPECT_EQ(folder.read(L"a"), "one");
    EXPECT_TRUE(replaceFile(folder.path(L"a"), "two"));
    EXPECT_EQ(folder.read(L"a"), "two");
}

TEST(ReplaceFile, KeepsModeBitsAndLinks)
{
    const TempFolder folder;
    const auto path = folder.write(L"real/a", "one");
    fs::permissions(toNative(path), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("real/a", toNative(folder.path(L"link")));
    EXPECT_TRUE(replaceFile(folder.path(L"link"), "two"));
    EXPECT_TRUE(fs::is_symlink(toNative(folder.path(L"link"))));
    EXPECT_EQ(folder.read(L"real/a"), "two");
    EXPECT_EQ(fs::status(toNative(path)).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST(ReplaceFile, KeepsALinkWhoseFileIsNotThereYet)
{
    const TempFolder folder;
    folder.makeFolder(L"real");
    fs::create_symlink("real/b", toNative(folder.path(L"first")));
    fs::create_symlink("first", toNative(folder.path(L"second")));
    EXPECT_TRUE(replaceFile(folder.path(L"second"), "new"));
    EXPECT_TRUE(fs::is_symlink(toNative(folder.path(L"second"))));
    EXPECT_TRUE(fs::is_symlink(toNative(folder.path(L"first"))));
    EXPECT_EQ(folder.read(L"real/b"), "new");
}

TEST(ReplaceFile, RefusesLinksThatGoInACircle)
{
    const TempFolder folder;
    fs::create_symlink("b", toNative(folder.path(L"a")));
    fs::create_symlink("a", toNative(folder.path(L"b")));
    EXPECT_FALSE(replaceFile(folder.path(L"a"), "x"));
    EXPECT_TRUE(fs::is_symlink(toNative(folder.path(L"a"))));
}

TEST(ReplaceFile, ANewFileHasTheGroupThatItsFolderGives)
{
    const TempFolder folder;
    const auto shared = toNative(folder.makeFolder(L"shared"));
    const bool isRoot = ::geteuid() == 0; // others can only give their own groups
    const gid_t group = isRoot ? 12345 : ::getegid();
    ASSERT_EQ(::chown(shared.c_str(), static_cast<uid_t>(-1), group), 0);
    ASSERT_EQ(::chmod(shared.c_str(), 02775), 0);
    EXPECT_TRUE(replaceFile(folder.path(L"shared/a"), "x"));
    struct stat status = {};
    ASSERT_EQ(::stat((shared + "/a").c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, group);
}

TEST(ReplaceFile, LeavesNothingBehindWhenItFails)
{
    const TempFolder folder;
    folder.makeFolder(L"taken/inside");
    EXPECT_FALSE(replaceFile(folder.path(L"taken"), "x"));
    EXPECT_FALSE(replaceFile(folder.path(L"none/a"), "x"));
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(toNative(folder.path()))) {
        ++entries;
    }
    EXPECT_EQ(entries, 1U);
    EXPECT_TRUE(folder.has(L"taken/inside"));
}

TEST(ReplaceFile, RefusesWhatIsNoRegularFile)
{
    const TempFolder folder;
    const auto pipe = toNative(folder.path(L"pipe"));
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(replaceFile(folder.path(L"pipe"), "x"));
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_FALSE(replaceFile(L"/dev/null", "x"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(ReplaceFile, RefusesAFileThatMayNotBeWritten)
{
    const TempFolder folder;
    const auto path = folder.write(L"a", "one");
    fs::permissions(toNative(path), fs::perms::owner_read);
    const bool isRoot = ::geteuid() == 0; // root may write every file
    EXPECT_EQ(replaceFile(path, "two"), isRoot);
    EXPECT_EQ(folder.read(L"a"), isRoot ? "two" : "one");
    EXPECT_EQ(fs::status(toNative(path)).permissions(), fs::perms::owner_read);
}

TEST(ReplaceFile, KeepsTheOwnerWhereTheSystemAllowsIt)
{
    const TempFolder folder;
    const auto path = toNative(folder.write(L"a", "one"));
    const bool isRoot = ::geteuid() == 0;
    const uid_t owner = isRoot ? 12345 : ::geteuid();
    ASSERT_EQ(::chown(path.c_str(), owner, static_cast<gid_t>(-1)), 0);
    EXPECT_TRUE(replaceFile(folder.path(L"a"), "two"));
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, owner);
}

std::vector<std::wstring> namesIn(const TempFolder& folder)
{
    std::vector<std::wstring> names;
    for (const auto& entry : fs::directory_iterator(toNative(folder.path()))) {
        names.push_back(entry.path().filename().wstring());
    }
    return names;
}

TEST(FileReplacement, PutsPiecesOfAnySizeBehindEachOther)
{
    const TempFolder folder;
    const std::wstring path = folder.write(L"a", "old");
    std::string all;
    FileReplacement file(path);
    for (const std::size_t size : {1, 0, 65534, 1, 1, 65535, 65536, 65537, 200000, 3}) {
        const std::string piece(size, static_cast<char>('a' + all.size() % 26));
        EXPECT_TRUE(file.write(piece));
        all += piece;
    }
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(folder.read(L"a"), all);
    EXPECT_EQ(namesIn(folder), std::vector<std::wstring> {L"a"});
}

TEST(FileReplacement, WithoutAPieceTheFileIsEmpty)
{
    const TempFolder folder;
    FileReplacement file(folder.path(L"a"));
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(folder.read(L"a"), "");
}

TEST(FileReplacement, WhatIsNotCommittedGoesAway)
{
    const TempFolder folder;
    const std::wstring path = folder.write(L"a", "old");
    {
        FileReplacement file(path);
        EXPECT_TRUE(file.write(std::string(100000, 'x')));
        EXPECT_EQ(namesIn(folder).size(), 2U);
    }
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_EQ(namesIn(folder).size(), 1U);
}

TEST(FileReplacement, NothingCanBeWrittenBehindTheCommit)
{
    const TempFolder folder;
    FileReplacement file(folder.path(L"a"));
    EXPECT_TRUE(file.write("x"));
    EXPECT_TRUE(file.commit());
    EXPECT_FALSE(file.write("y"));
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(folder.read(L"a"), "x");
}

TEST(FileReplacement, RefusesWhatReplaceFileRefuses)
{
    const TempFolder folder;
    FileReplacement file(folder.path(L"none/a"));
    EXPECT_FALSE(file.write("x"));
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(file.error().cause, FileError::Cause::badPath);
}

TEST(FileReplacement, TellsThatThereIsNoRoom)
{
    const TempFolder folder;
    const std::wstring path = folder.write(L"a", "old");
    {
        const testing::FullDisk disk(100000);
        FileReplacement file(path);
        EXPECT_TRUE(file.write(std::string(50000, 'x')));
        file.write(std::string(100000, 'x'));
        EXPECT_FALSE(file.write("x"));
        EXPECT_FALSE(file.commit());
        EXPECT_EQ(file.error().cause, FileError::Cause::diskFull);
    }
    EXPECT_EQ(folder.read(L"a"), "old");
    EXPECT_EQ(namesIn(folder).size(), 1U);
}

TEST(Exists, InAnyCase)
{
    const TempFolder folder;
    folder.write(L"Sub/Tool.ini", "");
    EXPECT_TRUE(exists(folder.path(L"SUB/TOOL.INI")));
    EXPECT_TRUE(exists(folder.path(L"sub")));
    EXPECT_FALSE(exists(folder.path(L"sub/none")));
}

TEST(IsReadable, TellsFilesFromAllElse)
{
    const TempFolder folder;
    const auto path = folder.write(L"Tool.ini", "");
    EXPECT_TRUE(isReadable(path));
    EXPECT_TRUE(isReadable(folder.path(L"TOOL.INI")));
    EXPECT_FALSE(isReadable(folder.path(L"other.ini")));
    EXPECT_FALSE(folder.has(L"other.ini"));
    EXPECT_FALSE(isReadable(folder.path()));
    EXPECT_FALSE(isReadable(L"/dev/null"));
    EXPECT_FALSE(isReadable(L""));
}

TEST(EnsureFile, MakesAnEmptyFile)
{
    const TempFolder folder;
    EXPECT_TRUE(ensureFile(folder.path(L"a")));
    EXPECT_TRUE(folder.has(L"a"));
    EXPECT_EQ(folder.read(L"a"), "");
}

TEST(EnsureFile, LeavesAFileThatIsThere)
{
    const TempFolder folder;
    const auto path = folder.write(L"Sub/Tool.ipr", "A=1\n");
    const auto before = fileStamp(toNative(path));
    EXPECT_TRUE(ensureFile(path));
    EXPECT_TRUE(ensureFile(folder.path(L"sub/TOOL.IPR"))) << "it is known in any case";
    EXPECT_EQ(fileStamp(toNative(path)), before);
    EXPECT_EQ(folder.read(L"Sub/Tool.ipr"), "A=1\n");
    EXPECT_FALSE(folder.has(L"sub"));
}

TEST(EnsureFile, TakesAFileThatCannotBeWritten)
{
    const TempFolder folder;
    const auto path = folder.write(L"a", "x");
    ASSERT_EQ(::chmod(toNative(path).c_str(), 0400), 0);
    EXPECT_TRUE(ensureFile(path));
    EXPECT_EQ(folder.read(L"a"), "x");
}

TEST(EnsureFile, RefusesWhatIsNoFileAndMakesNoFolders)
{
    const TempFolder folder;
    EXPECT_FALSE(ensureFile(folder.path()));
    EXPECT_FALSE(ensureFile(folder.path(L"none/a")));
    EXPECT_FALSE(folder.has(L"none"));
    EXPECT_FALSE(ensureFile(L"/dev/null"));
    EXPECT_FALSE(ensureFile(L""));
    const auto pipe = toNative(folder.path(L"pipe"));
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(ensureFile(folder.path(L"pipe")));
}

TEST(TemporaryFolder, IsThereAndHasNoSeparatorAtItsEnd)
{
    const TempFolder folder;
    const std::wstring before = temporaryFolder();
    EXPECT_TRUE(exists(before));
    EXPECT_FALSE(isSeparator(before.back()));
    const auto variable = environmentVariable(L"TMPDIR");
    ::setenv("TMPDIR", toNative(folder.path() + L"//").c_str(), 1);
    EXPECT_EQ(temporaryFolder(), folder.path());
    ::setenv("TMPDIR", "/", 1);
    EXPECT_EQ(temporaryFolder(), L"/") << "the root is nothing but its separator";
    ::setenv("TMPDIR", toNative(folder.path(L"none")).c_str(), 1);
    EXPECT_EQ(temporaryFolder(), L"/tmp") << "one that is not there does not count";
    if (variable) {
        ::setenv("TMPDIR", toNative(*variable).c_str(), 1);
    } else {
        ::unsetenv("TMPDIR");
    }
    EXPECT_EQ(temporaryFolder(), before);
}

TEST(CurrentFolder, IsSetToAFolderOnly)
{
    const TempFolder folder;
    const testing::CurrentFolder putBack(currentFolder());
    folder.makeFolder(L"Sub");
    folder.write(L"file", "");
    EXPECT_TRUE(setCurrentFolder(folder.path()));
    EXPECT_EQ(currentFolder(), folder.path());
    EXPECT_TRUE(setCurrentFolder(L"sub")) << "in any case of its letters";
    EXPECT_EQ(currentFolder(), folder.path(L"Sub"));
    EXPECT_FALSE(setCurrentFolder(folder.path(L"file")));
    EXPECT_FALSE(setCurrentFolder(folder.path(L"none")));
    EXPECT_FALSE(setCurrentFolder(L""));
    EXPECT_EQ(currentFolder(), folder.path(L"Sub"));
}

TEST(Environment, VariablesAndTheProgram)
{
    ::setenv("CORMA_TEST_VARIABLE", "w\xC3\xA9", 1);
    EXPECT_EQ(environmentVariable(L"CORMA_TEST_VARIABLE"), L"wé");
    ::unsetenv("CORMA_TEST_VARIABLE");
    EXPECT_EQ(environmentVariable(L"CORMA_TEST_VARIABLE"), std::nullopt);
    EXPECT_EQ(splitPath(programFile()).base, L"test_platform");
}

TEST(LoadedLibrary, GivesThePathOfOneThatIsThere)
{
    const auto path = loadedLibrary(L"libc.so.6");
    ASSERT_TRUE(path);
    EXPECT_TRUE(exists(*path));
    EXPECT_EQ(loadedLibrary(L"no-such-library.so"), std::nullopt);
}

} // namespace
} // namespace corma::platform
