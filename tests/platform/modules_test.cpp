#include "platform/platform.h"
#include "support/ModuleFile.h"
#include "support/TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

using corma::testing::moduleWithVersion;
using corma::testing::TempFolder;
namespace fs = std::filesystem;

namespace corma::platform {
namespace {

using namespace std::string_literals;

// What loaded_library.cpp says of itself.
void expectTextsOfLibrary(const std::wstring& file)
{
    EXPECT_EQ(versionText(file, "FileDescription"), L"Library of the tests, \"caf\u00E9\"");
    EXPECT_EQ(versionText(file, "FileVersion"), L"3.1.4");
    EXPECT_EQ(versionText(file, "LegalCopyright"), L"Copyright (c) 2026 Korvane");
    EXPECT_EQ(versionText(file, "ProductName"), std::nullopt);
}

TEST(VersionText, IsThatOfALibraryAsTheLinkerMadeIt)
{
    expectTextsOfLibrary(fromNative(CORMA_LOADED_LIBRARY));
}

TEST(VersionText, SurvivesStripping)
{
    const TempFolder folder;
    const std::wstring copy = folder.path(L"stripped.so");
    fs::copy_file(CORMA_LOADED_LIBRARY, toNative(copy));
    const auto before = fs::file_size(toNative(copy));
    if (std::system(("strip --strip-all '" + toNative(copy) + "' 2>&1").c_str()) != 0) {
        GTEST_SKIP() << "there is no strip here";
    }
    ASSERT_LT(fs::file_size(toNative(copy)), before);
    expectTextsOfLibrary(copy);
}

TEST(VersionText, OfAProgramWithoutANoteIsNone)
{
    EXPECT_EQ(versionText(programFile(), "FileVersion"), std::nullopt);
}

TEST(VersionText, OfWhatIsNoModuleIsNone)
{
    const TempFolder folder;
    const std::wstring pipe = folder.path(L"pipe");
    ASSERT_EQ(::mkfifo(toNative(pipe).c_str(), 0600), 0);
    for (const std::wstring& file :
         {folder.path(), folder.path(L"none"), pipe, folder.write(L"empty", ""),
          folder.write(L"text", "FileVersion=1\n"), std::wstring(L"/dev/zero"), std::wstring()}) {
        EXPECT_EQ(versionText(file, "FileVersion"), std::nullopt) << folder.homely(file);
    }
}

TEST(VersionText, IsUtf8AndWhatIsNoneOfItIsReplaced)
{
    const TempFolder folder;
    const std::wstring file = folder.write(L"a.so",
                                           moduleWithVersion("\xD0\x9F\xD0\xBB\xD0\xB0\xD0\xBD",
                                                             "\xFF"
                                                             "1",
                                                             ""));
    EXPECT_EQ(versionText(file, "FileDescription"), L"\u041F\u043B\u0430\u043D");
    EXPECT_EQ(versionText(file, "FileVersion"),
              L"\uFFFD"
              L"1");
    EXPECT_EQ(versionText(file, "LegalCopyright"), L"");
}

TEST(VersionText, IsFoundWhateverTheCaseOfTheFile)
{
    const TempFolder folder;
    folder.write(L"Module.so", moduleWithVersion("", "7", ""));
    EXPECT_EQ(versionText(folder.path(L"MODULE.SO"), "FileVersion"), L"7");
}

/// The time zone of the process, for the life of the object.
class Zone
{
public:
    explicit Zone(const char* zone)
    {
        if (const char* const before = std::getenv("TZ")) {
            m_before = before;
        }
        ::setenv("TZ", zone, 1);
    }

    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

    ~Zone()
    {
        if (m_before) {
            ::setenv("TZ", m_before->c_str(), 1);
        } else {
            ::unsetenv("TZ");
        }
    }

private:
    std::optional<std::string> m_before;
};

std::string localText(std::int64_t moment)
{
    const LocalTime time = localTime(moment);
    return std::to_string(time.year) + "-" + std::to_string(time.month) + "-"
        + std::to_string(time.day) + " " + std::to_string(time.hour) + ":"
        + std::to_string(time.minute) + ":" + std::to_string(time.second);
}

TEST(LocalTime, IsThatOfTheZone)
{
    constexpr std::int64_t kMoment = 1'782'910'799'999'999'999; // 1 July 2026, 12:59:59 UTC
    const Zone utc("UTC0");
    EXPECT_EQ(localText(kMoment), "2026-7-1 12:59:59");
    const Zone summer("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(localText(kMoment), "2026-7-1 14:59:59");
    EXPECT_EQ(localText(kMoment + 1), "2026-7-1 15:0:0");
    const Zone west("XXX+13");
    EXPECT_EQ(localText(kMoment), "2026-6-30 23:59:59");
}

TEST(LocalTime, ReachesBeforeTheFirstSecondOfTheClock)
{
    const Zone utc("UTC0");
    EXPECT_EQ(localText(0), "1970-1-1 0:0:0");
    EXPECT_EQ(localText(-1), "1969-12-31 23:59:59");
    EXPECT_EQ(localText(-1'000'000'000), "1969-12-31 23:59:59");
    EXPECT_EQ(localText(-1'000'000'001), "1969-12-31 23:59:58");
}

} // namespace
} // namespace corma::platform
