// Files as no one should write them: nothing of them may bring the reader down.

#include "inifile/InifileTest.h"
#include "platform/platform.h"
#include <corma/xx_Var.h>

#include <fstream>
#include <sstream>

using corma::testing::Ini;
using corma::testing::InifileTest;
using namespace std::string_literals;

namespace {

using Robustness = InifileTest;

constexpr std::size_t kMegabyte = 1'000'000;

// The largest memory that the process has had, in bytes.
std::size_t peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::stoul(line.substr(6)) * 1024;
        }
    }
    return 0;
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMemoryIsTheLibrarys = false; // the sanitizer keeps memory of its own
#else
constexpr bool kMemoryIsTheLibrarys = true;
#endif

TEST_F(Robustness, AFileOf500MegabytesIsReadInAFewTimesItsSize)
{
    const auto path = folder.write(L"large.ini", "First=1\r\n");
    {
        std::ostringstream block;
        for (int i = 0; block.tellp() < static_cast<std::streamoff>(kMegabyte); ++i) {
            block << (i % 20 == 0 ? "[Chapter" + std::to_string(i) + "]\r\n" : "") << "Ident" << i
                  << "=some value of the setting\r\n";
        }
        std::ofstream file(corma::platform::toNative(path), std::ios::binary | std::ios::app);
        for (int i = 0; i < 500; ++i) {
            file << block.str();
        }
        file << "[Last]\r\nLast=2\r\n";
    }
    const std::size_t before = peakMemory();
    Ini ini(path);
    EXPECT_EQ(ini.get(L"First"), L"1");
    EXPECT_EQ(ini.get(L"[Last]Last"), L"2");
    EXPECT_EQ(ini.get(L"[Last]Nothing"), L"(none)");
    if (kMemoryIsTheLibrarys) {
        EXPECT_LT(peakMemory() - before, 3 * 500 * kMegabyte);
    }
}

TEST_F(Robustness, AnEmptyFileHasNothing)
{
    Ini ini(folder.write(L"a.ini", ""));
    EXPECT_EQ(ini.get(L"X"), L"(none)");
    EXPECT_EQ(ini.get(L"X"), L"(none)");
    xx_VarArray results;
    wchar_t pattern[] = L"*";
    EXPECT_EQ(ini.file.getWcString(pattern, &results, 0, 0), 2);
    Ini scrambled(folder.path(L"a.ini"), 7);
    EXPECT_EQ(scrambled.get(L"X"), L"(none)");
}

TEST_F(Robustness, FifteenMegabytesOfNulBytesAreOneLongLine)
{
    Ini ini(folder.write(L"a.ini", "X=1\n" + std::string(15 * kMegabyte, '\0') + "\nY=2\n"));
    EXPECT_EQ(ini.get(L"X"), L"1");
    EXPECT_EQ(ini.get(L"Y"), L"2");
}

TEST_F(Robustness, BrokenTextIsReadAsFarAsItIsText)
{
    Ini ini(folder.write(L"a.ini", "\xFF\xFEX\0=\0\x00\xD8\x00\xD8\n\0Y\0=\0\x31\0\x32"s));
    EXPECT_EQ(ini.get(L"X"), L"\xFFFD\xFFFD");
    EXPECT_EQ(ini.get(L"Y"), L"1\xFFFD");
    Ini utf8(folder.write(L"b.ini", "\xEF\xBB\xBFX=\xC3\x28\nY=1\n"));
    EXPECT_EQ(utf8.get(L"X"), L"\xFFFD(");
    EXPECT_EQ(utf8.get(L"Y"), L"1");
}

TEST_F(Robustness, ManyChaptersAreAsGoodAsMany)
{
    std::string text;
    for (int i = 0; i < 50'000; ++i) {
        text += "[C" + std::to_string(i) + "]\nX=" + std::to_string(i) + "\n";
    }
    Ini ini(folder.write(L"a.ini", text));
    EXPECT_EQ(ini.get(L"[C49999]X"), L"49999");
    EXPECT_EQ(ini.get(L"[c25000]x"), L"25000");
    EXPECT_EQ(ini.get(L"[C50000]X"), L"(none)");
}

TEST_F(Robustness, OneNameAHundredThousandTimesIsTheFirst)
{
    std::string text;
    for (int i = 0; i < 100'000; ++i) {
        text += "Same=" + std::to_string(i) + "\n";
    }
    Ini ini(folder.write(L"a.ini", text + "Other=1\n"));
    EXPECT_EQ(ini.get(L"Same"), L"0");
    EXPECT_EQ(ini.get(L"Other"), L"1");
}

TEST_F(Robustness, AFileThatShrinksBetweenLookupsIsFollowed)
{
    Ini ini(folder.write(L"a.ini", std::string(kMegabyte, 'x') + "\nX=1\n"));
    EXPECT_EQ(ini.get(L"X"), L"1");
    folder.write(L"a.ini", "X=2");
    EXPECT_EQ(ini.get(L"X"), L"2");
    folder.write(L"a.ini", "");
    EXPECT_EQ(ini.get(L"X"), L"(none)");
}

} // namespace
