#include "foundation/text_rewrite.h"
#include "support/RefusedCalls.h"
#include "support/TempFolder.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

using corma::platform::SystemCall;
using corma::testing::RefusedCalls;
using corma::testing::TempFolder;
using namespace std::string_literals;

namespace corma {
namespace {

using Step = RewriteFailure::Step;
using Missing = TextRewrite::Missing;
using Cause = platform::FileError::Cause;

class Rewrite : public ::testing::Test
{
protected:
    [[nodiscard]] std::wstring path() const { return folder.path(L"tool.ini"); }

    [[nodiscard]] std::wstring temporary() const { return folder.path(L"dummy.tmp"); }

    static bool replace(TextRewrite& file, std::string_view text)
    {
        return file.replace(std::array {text});
    }

    TempFolder folder;
};

TEST_F(Rewrite, PutsTheNewTextInThePlaceOfTheFormerOne)
{
    folder.write(L"tool.ini", "a=1\r\nb=2\r\n");
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_TRUE(file.isThere());
    EXPECT_EQ(file.text(), "a=1\r\nb=2\r\n");
    EXPECT_EQ(file.lineEnd(), "\r\n");
    EXPECT_TRUE(file.write(std::array {std::string_view("a="), std::string_view("3\r\n")}));
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\r\nb=2\r\n") << "not before it is committed";
    EXPECT_TRUE(file.commit());
    EXPECT_FALSE(file.failure().isOne());
    EXPECT_EQ(folder.read(L"tool.ini"), "a=3\r\n");
    EXPECT_EQ(folder.names(), "tool.ini");
}

TEST_F(Rewrite, WhatIsNotCommittedGoesAway)
{
    folder.write(L"tool.ini", "a=1\n");
    {
        TextRewrite file(path(), temporary(), Missing::isFailure);
        EXPECT_TRUE(file.write(std::array {std::string_view("b=2\n")}));
        EXPECT_EQ(folder.names(), "dummy.tmp tool.ini");
    }
    EXPECT_EQ(folder.names(), "tool.ini");
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
}

TEST_F(Rewrite, AFormerTemporaryFileGoesAway)
{
    folder.write(L"tool.ini", "a=1\n");
    folder.write(L"dummy.tmp", "left behind, and longer than what comes");
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_TRUE(replace(file, "b=2\n"));
    EXPECT_EQ(folder.read(L"tool.ini"), "b=2\n");
    EXPECT_EQ(folder.names(), "tool.ini");
}

TEST_F(Rewrite, AMissingFileCanBeMade)
{
    TextRewrite file(path(), temporary(), Missing::isEmpty);
    EXPECT_FALSE(file.isThere());
    EXPECT_EQ(file.text(), "");
    EXPECT_EQ(file.lineEnd(), "\n");
    EXPECT_TRUE(replace(file, "é=1\n"));
    EXPECT_EQ(folder.read(L"tool.ini"), "é=1\n");
}

TEST_F(Rewrite, KeepsTheFormerFileUnderAnotherName)
{
    folder.write(L"tool.ini", "a=1\n");
    folder.write(L"tool.ino", "a former one");
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_TRUE(file.write(std::array {std::string_view("b=2\n")}));
    EXPECT_TRUE(file.keepAs(folder.path(L"tool.ino")));
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(folder.read(L"tool.ini"), "b=2\n");
    EXPECT_EQ(folder.read(L"tool.ino"), "a=1\n");
    EXPECT_EQ(folder.names(), "tool.ini tool.ino");
}

TEST_F(Rewrite, KeepsTheFormerFileByACopyWhereThereAreNoLinks)
{
    folder.write(L"tool.ini", "\xE9=1\n");
    const RefusedCalls noLinks(SystemCall::link, EPERM);
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_TRUE(file.write(std::array {std::string_view("é=2\n")}));
    EXPECT_TRUE(file.keepAs(folder.path(L"tool.ino")));
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(noLinks.count(), 1);
    EXPECT_EQ(folder.read(L"tool.ini"), "\xE9=2\n");
    EXPECT_EQ(folder.read(L"tool.ino"), "\xE9=1\n");
    EXPECT_EQ(folder.names(), "tool.ini tool.ino");
}

TEST_F(Rewrite, LinksAndModesStay)
{
    folder.write(L"real/tool.ini", "a=1\n");
    const auto real = platform::toNative(folder.path(L"real/tool.ini"));
    ASSERT_EQ(::chmod(real.c_str(), 0640), 0);
    std::filesystem::create_symlink(real, platform::toNative(path()));
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_TRUE(replace(file, "b=2\n"));
    EXPECT_TRUE(std::filesystem::is_symlink(platform::toNative(path())));
    EXPECT_EQ(folder.read(L"real/tool.ini"), "b=2\n");
    struct stat status = {};
    ASSERT_EQ(::stat(real.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

// --- encodings -----------------------------------------------------------------------------------

struct RewriteRow
{
    const char* sentence;
    std::string former;
    std::string text; // UTF-8, as read
    std::string newText;
    std::string content;
};

class RewriteEncoding : public Rewrite, public ::testing::WithParamInterface<RewriteRow>
{
};

TEST_P(RewriteEncoding, IsKept)
{
    folder.write(L"tool.ini", GetParam().former);
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_EQ(file.text(), GetParam().text);
    EXPECT_TRUE(replace(file, GetParam().newText));
    EXPECT_EQ(folder.read(L"tool.ini"), GetParam().content);
}

INSTANTIATE_TEST_SUITE_P(
    TextRewrite, RewriteEncoding,
    ::testing::Values(
        RewriteRow {"EmptyBecomesUtf8", "", "", "€", "€"},
        RewriteRow {"Utf8", "é\n", "é\n", "€\n", "€\n"},
        RewriteRow {"Utf8WithItsMark", "\xEF\xBB\xBFé\n", "é\n", "€\n", "\xEF\xBB\xBF€\n"},
        RewriteRow {"Windows1252", "\xE9\n", "é\n", "€é\n", "\x80\xE9\n"},
        RewriteRow {"LittleUtf16",
                    "\xFF\xFE"
                    "a\0\n\0"s,
                    "a\n", "€\n", "\xFF\xFE\xAC\x20\n\0"s},
        RewriteRow {"BigUtf16", "\xFE\xFF\0a\0\n"s, "a\n", "€\n", "\xFE\xFF\x20\xAC\0\n"s},
        RewriteRow {"AMarkAlone", "\xFE\xFF", "", "a", "\xFE\xFF\0a"s}),
    [](const auto& row) { return std::string(row.param.sentence); });

// --- failures ------------------------------------------------------------------------------------

class RewriteFails : public Rewrite
{
protected:
    // Nothing can be done any more, the failure stays the first, and the file is what it was.
    void expectNothingDone(TextRewrite& file, Step step, const std::string& former)
    {
        EXPECT_EQ(file.failure().step, step);
        EXPECT_TRUE(file.failure().isOne());
        EXPECT_FALSE(file.write(std::array {std::string_view("c=3\n")}));
        EXPECT_FALSE(file.keepAs(folder.path(L"tool.ino")));
        EXPECT_FALSE(file.commit());
        EXPECT_FALSE(replace(file, "c=3\n"));
        EXPECT_EQ(file.failure().step, step);
        EXPECT_EQ(folder.read(L"tool.ini"), former);
    }
};

TEST_F(RewriteFails, ForAFileThatIsMissing)
{
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_FALSE(file.isThere());
    expectNothingDone(file, Step::open, "");
    EXPECT_EQ(file.failure().error.cause, Cause::notFound);
    EXPECT_EQ(file.failure().error.number, ENOENT);
    EXPECT_EQ(folder.names(), "");
}

TEST_F(RewriteFails, ForAMissingFolderWhateverMayBeMissing)
{
    for (const Missing missing : {Missing::isFailure, Missing::isEmpty}) {
        TextRewrite file(folder.path(L"none/tool.ini"), folder.path(L"none/dummy.tmp"), missing);
        replace(file, "a=1\n");
        EXPECT_EQ(file.failure().step, Step::open);
        EXPECT_EQ(file.failure().error.cause, Cause::badPath);
        EXPECT_EQ(folder.names(), "");
    }
}

TEST_F(RewriteFails, ForAFolder)
{
    folder.makeFolder(L"tool.ini");
    TextRewrite file(path(), temporary(), Missing::isEmpty);
    EXPECT_FALSE(replace(file, "a=1\n"));
    EXPECT_EQ(file.failure().step, Step::open);
    EXPECT_EQ(file.failure().error.cause, Cause::denied);
    EXPECT_EQ(folder.names(), "tool.ini");
}

TEST_F(RewriteFails, ForAFileThatMayNotBeWritten)
{
    folder.write(L"tool.ini", "a=1\n");
    const RefusedCalls refused(SystemCall::openTarget, EACCES);
    TextRewrite file(path(), temporary(), Missing::isFailure);
    expectNothingDone(file, Step::open, "a=1\n");
    EXPECT_EQ(file.failure().error.cause, Cause::denied);
    EXPECT_EQ(folder.names(), "tool.ini");
}

TEST_F(RewriteFails, ForAFileThatIsNotWhatItsMarkSays)
{
    const std::string content = "\xEF\xBB\xBF"
                                "a=1\nb=\xFF\n";
    folder.write(L"tool.ini", content);
    TextRewrite file(path(), temporary(), Missing::isFailure);
    expectNothingDone(file, Step::decode, content);
    EXPECT_EQ(file.failure().detail, L"line 2 is no UTF-8, as its byte-order mark says");
    EXPECT_FALSE(file.failure().error.isOne());
    EXPECT_EQ(folder.names(), "tool.ini");
}

TEST_F(RewriteFails, ForATextThatTheEncodingCannotHold)
{
    folder.write(L"tool.ini", "\xE9=1\n");
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_FALSE(replace(file, "é=Ł\n"));
    expectNothingDone(file, Step::encode, "\xE9=1\n");
    EXPECT_EQ(file.failure().detail,
              L"line 1 has a character that Windows-1252, the encoding of the file, does not have");
    EXPECT_EQ(folder.names(), "tool.ini");
}

struct Refusal
{
    const char* sentence;
    SystemCall call;
    int error;
    Cause cause;
};

class RefusedWrite : public RewriteFails, public ::testing::WithParamInterface<Refusal>
{
};

TEST_P(RefusedWrite, LeavesTheFileAndNoTemporaryOne)
{
    folder.write(L"tool.ini", "a=1\n");
    {
        const RefusedCalls refused(GetParam().call, GetParam().error);
        TextRewrite file(path(), temporary(), Missing::isFailure);
        EXPECT_FALSE(file.write(std::array {std::string_view("b=2\n")}));
        EXPECT_EQ(file.failure().error.cause, GetParam().cause);
        EXPECT_EQ(file.failure().error.number, GetParam().error);
        EXPECT_GT(refused.count(), 0);
        expectNothingDone(file, Step::write, "a=1\n");
    }
    EXPECT_EQ(folder.names(), "tool.ini");
}

INSTANTIATE_TEST_SUITE_P(
    TextRewrite, RefusedWrite,
    ::testing::Values(Refusal {"AFolderThatTakesNoFile", SystemCall::create, EACCES, Cause::denied},
                      Refusal {"AFullDisk", SystemCall::write, ENOSPC, Cause::diskFull},
                      Refusal {"ADiskThatCannotBeFlushed", SystemCall::flush, EIO,
                               Cause::hardware}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(RewriteFails, ForABackupThatCannotTakeItsName)
{
    folder.write(L"tool.ini", "a=1\n");
    folder.write(L"tool.ino/in the way", "");
    {
        TextRewrite file(path(), temporary(), Missing::isFailure);
        EXPECT_TRUE(file.write(std::array {std::string_view("b=2\n")}));
        EXPECT_FALSE(file.keepAs(folder.path(L"tool.ino")));
        expectNothingDone(file, Step::keep, "a=1\n");
    }
    EXPECT_EQ(folder.names(), "tool.ini tool.ino");
}

TEST_F(RewriteFails, ForABackupOfAFileThatWasNotThere)
{
    TextRewrite file(path(), temporary(), Missing::isEmpty);
    EXPECT_TRUE(file.write(std::array {std::string_view("b=2\n")}));
    EXPECT_FALSE(file.keepAs(folder.path(L"tool.ino")));
    expectNothingDone(file, Step::keep, "");
}

TEST_F(RewriteFails, ForANameThatIsNotGiven)
{
    folder.write(L"tool.ini", "a=1\n");
    {
        const RefusedCalls refused(SystemCall::rename, EACCES);
        TextRewrite file(path(), temporary(), Missing::isFailure);
        EXPECT_TRUE(file.write(std::array {std::string_view("b=2\n")}));
        EXPECT_FALSE(file.commit());
        EXPECT_EQ(file.failure().error.cause, Cause::denied);
        expectNothingDone(file, Step::replace, "a=1\n");
    }
    EXPECT_EQ(folder.names(), "tool.ini");
}

TEST_F(RewriteFails, ForACommitOfNothing)
{
    folder.write(L"tool.ini", "a=1\n");
    TextRewrite file(path(), temporary(), Missing::isFailure);
    EXPECT_FALSE(file.commit());
    expectNothingDone(file, Step::replace, "a=1\n");
}

} // namespace
} // namespace corma
