// What users are told when a setting cannot be written, and that nothing is lost then.

#include "platform/faults.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "settings/Instelling.h"
#include "settings/SettingsTest.h"
#include "support/Child.h"
#include "support/FaultPlan.h"
#include <corma/xx_Inifile.h>

#include <algorithm>
#include <cerrno>
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

using corma::MessageIcon;
using corma::platform::SystemCall;
using corma::testing::FaultPlan;
using corma::testing::FullDisk;
using corma::testing::inChild;
using corma::testing::inChildWithoutRights;
using corma::testing::SettingsTest;
using ::testing::Each;

namespace {

using Fault = FaultPlan::Fault;

constexpr const char* kOld = "[A]\nKleur=rood\n";
constexpr const char* kNew = "[A]\nKleur=blauw\n";
constexpr const char* kFileNotWritten = "~/tool.ini\n"
                                        "Setting was not written. \n"
                                        "Check if ini-file is present and \n"
                                        "if the file is not read-only\n";

class WriteFailuresTest : public SettingsTest
{
protected:
    enum class Level
    {
        global,
        project
    };

    bool write(const wchar_t* value, Level level = Level::global) const
    {
        Rubriek category(L"A");
        Instelling setting(L"Kleur", value);
        setting.setCategory(&category);
        return setting.writeToFile(names(), level == Level::global, true);
    }

    void giveToAnyone(std::wstring_view name, mode_t mode) const
    {
        ASSERT_EQ(::chmod(corma::platform::toNative(folder.path(name)).c_str(), mode), 0);
    }

    // What was printed, with "~" for the folder.
    [[nodiscard]] std::string reports() const
    {
        return homely(corma::toUtf8(services.allPrinted()));
    }

    // The place of the rename among the calls of a write.
    std::size_t placeOfRename(Level level)
    {
        const FaultPlan plan;
        EXPECT_TRUE(write(L"rood", level));
        const auto& calls = plan.calls();
        const auto found = std::find(calls.begin(), calls.end(), SystemCall::rename);
        EXPECT_NE(found, calls.end());
        return static_cast<std::size_t>(found - calls.begin());
    }

    bool writeWithoutRename(Level level)
    {
        const std::size_t rename = placeOfRename(level);
        const FaultPlan plan({.fault = Fault::failure, .call = rename, .error = EBUSY});
        return write(L"blauw", level);
    }
};

TEST_F(WriteFailuresTest, AFileThatIsNotThereIsToldAndNotMade)
{
    EXPECT_FALSE(write(L"blauw"));
    EXPECT_EQ(boxes(), std::string("~/tool.ini : Ini-file not found: \n") + kFileNotWritten);
    EXPECT_THAT(services.icons, Each(MessageIcon::stop));
    EXPECT_FALSE(folder.has(L"tool.ini"));
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
}

TEST_F(WriteFailuresTest, AFileThatMayNotBeWrittenIsTold)
{
    folder.write(L"tool.ini", kOld);
    giveToAnyone(L"tool.ini", 0444);
    giveToAnyone(L"", 0777);
    EXPECT_TRUE(inChildWithoutRights([&] {
                    return !write(L"blauw")
                        && boxes()
                        == std::string("~/tool.ini : Could not open file for write \n")
                            + kFileNotWritten;
                }).isGood());
    EXPECT_EQ(folder.read(L"tool.ini"), kOld);
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
}

TEST_F(WriteFailuresTest, AFolderThatTakesNoFileIsTold)
{
    folder.write(L"tool.ini", kOld);
    giveToAnyone(L"tool.ini", 0666);
    giveToAnyone(L"", 0555);
    EXPECT_TRUE(inChildWithoutRights([&] {
                    return !write(L"blauw")
                        && boxes()
                        == std::string("~/tool.ini : Could not open file for write \n")
                            + kFileNotWritten;
                }).isGood());
    giveToAnyone(L"", 0755);
    EXPECT_EQ(folder.read(L"tool.ini"), kOld);
}

TEST_F(WriteFailuresTest, TheTextsNameTheConfigurationFileForAProjectFileToo)
{
    folder.write(L"tool.ini", kOld);
    folder.write(L"tool.ipr", kOld);
    giveToAnyone(L"tool.ipr", 0444);
    giveToAnyone(L"", 0777);
    EXPECT_TRUE(inChildWithoutRights([&] {
                    return !write(L"blauw", Level::project)
                        && boxes()
                        == std::string("~/tool.ini : Could not open file for write \n")
                            + kFileNotWritten;
                }).isGood());
    EXPECT_EQ(folder.read(L"tool.ipr"), kOld);
}

TEST_F(WriteFailuresTest, AFullDiskIsToldAndTheNextWriteWorks)
{
    folder.write(L"tool.ini", kOld);
    {
        const FullDisk disk(10);
        EXPECT_FALSE(write(L"blauw"));
    }
    EXPECT_EQ(boxes(), std::string("~/tool.ini : the disk is full\n") + kFileNotWritten);
    EXPECT_EQ(folder.read(L"tool.ini"), kOld);
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
    EXPECT_TRUE(write(L"blauw"));
    EXPECT_EQ(folder.read(L"tool.ini"), kNew);
}

TEST_F(WriteFailuresTest, AFullDiskLeavesAFileThatIsUpdatedAndItsBackup)
{
    std::wstring path = folder.write(L"tool.ini", kOld);
    std::wstring defaults = folder.write(L"defaults.txt", "[A]\nNieuw=1\n");
    folder.write(L"tool.ino", "older\n");
    xx_Inifile file(path.data(), 0, nullptr);
    {
        const FullDisk disk(10);
        EXPECT_NE(file.update(defaults.data(), nullptr), 5100);
    }
    EXPECT_THAT(reports(), ::testing::HasSubstr("File ~/tool.ini is not changed: "));
    EXPECT_EQ(folder.read(L"tool.ini"), kOld);
    EXPECT_EQ(folder.read(L"tool.ino"), "older\n");
    EXPECT_EQ(file.update(defaults.data(), nullptr), 5100);
    EXPECT_EQ(folder.read(L"tool.ino"), kOld);
}

// --- a disk that is really full ------------------------------------------------------------------

// Puts a file system of 64 kB in the place of a folder, for this process alone.
bool mountSmallDisk(const std::wstring& folder)
{
    return ::unshare(CLONE_NEWNS) == 0
        && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", corma::platform::toNative(folder).c_str(), "tmpfs", 0, "size=64k") == 0;
}

TEST_F(WriteFailuresTest, ADiskThatIsReallyFullLosesNothing)
{
    if (!inChild([&] { return mountSmallDisk(folder.path()); }).isGood()) {
        GTEST_SKIP() << "a file system cannot be mounted here";
    }
    EXPECT_TRUE(inChild([&] {
                    constexpr std::size_t kMoreThanAll = 0x20000;
                    if (!mountSmallDisk(folder.path())) {
                        return false;
                    }
                    folder.write(L"tool.ini", kOld);
                    folder.write(L"filler", std::string(kMoreThanAll, 'x'));
                    const bool isRefused = !write(L"blauw")
                        && boxes()
                            == std::string("~/tool.ini : the disk is full\n") + kFileNotWritten
                        && folder.read(L"tool.ini") == kOld && !folder.has(L"dummy.tmp");
                    folder.remove(L"filler");
                    return isRefused && write(L"blauw") && folder.read(L"tool.ini") == kNew;
                }).isGood());
}

// --- a temporary file that does not take the name ------------------------------------------------

TEST_F(WriteFailuresTest, AConfigurationFileThatCannotBeRenamedIsReportedInThreeLines)
{
    folder.write(L"tool.ini", kOld);
    EXPECT_FALSE(writeWithoutRename(Level::global));
    EXPECT_EQ(reports(),
              "\nError in file Instelling.cpp on line 388\n"
              "(unable to rename dummy.tmp to inifile, ec = 16)"
              "\nError in file Instelling.cpp on line 389\n"
              "(  - ~/dummy.tmp, ec = 16)"
              "\nError in file Instelling.cpp on line 390\n"
              "(  - ~/tool.ini, ec = 16)");
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(folder.read(L"tool.ini"), kOld);
}

TEST_F(WriteFailuresTest, AProjectFileThatCannotBeRenamedIsNotTold)
{
    folder.write(L"tool.ipr", kOld);
    EXPECT_FALSE(writeWithoutRename(Level::project));
    EXPECT_EQ(reports(), "");
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(folder.read(L"tool.ipr"), kOld);
}

} // namespace
