// Processes that are killed in the middle of their writes, at whatever moment that is.

#include "settings/SettingsTest.h"
#include "support/Child.h"
#include <corma/xx_Inifile.h>

#include <chrono>
#include <cstdio>
#include <random>
#include <thread>

using corma::testing::Child;
using corma::testing::SettingsTest;

namespace {

constexpr const char* kLinesBefore = "; settings\n[A]\n";
constexpr const char* kLinesBehind = "[B]\nBreedte=4\n";

// Contents of many sizes: one write more than fits into a buffer, and one that does.
std::wstring valueOf(int number)
{
    constexpr int kSteps = 7;
    constexpr int kStep = 20'000;
    return std::to_wstring(number) + L":"
        + std::wstring(static_cast<std::size_t>(number % kSteps * kStep), L'x');
}

std::string contentWith(int number)
{
    const std::wstring value = valueOf(number);
    return kLinesBefore + ("Waarde=" + std::string(value.begin(), value.end())) + "\n"
        + kLinesBehind;
}

class KilledWriterTest : public SettingsTest
{
protected:
    bool write(int number) const
    {
        std::wstring name = path;
        xx_Inifile file(name.data(), 0, nullptr);
        std::wstring ident = L"[A]Waarde";
        std::wstring value = valueOf(number);
        file.writeString(ident.data(), value.data(), 0);
        return services.boxes.empty() && services.printed.empty();
    }

    // The number of the write that the file holds whole; -1 for none.
    [[nodiscard]] int numberInFile() const
    {
        const std::string content = folder.read(L"tool.ini");
        int number = -1;
        static_cast<void>(std::sscanf(content.c_str(), "; settings\n[A]\nWaarde=%d:", &number));
        return number >= 0 && content == contentWith(number) ? number : -1;
    }

    std::wstring path = folder.write(L"tool.ini", contentWith(0));
};

TEST_F(KilledWriterTest, LeavesAWholeFileAtWhateverMoment)
{
    constexpr int kKills = 100;
    constexpr int kLongestLife = 30'000; // us
    std::mt19937 random(4711);
    std::uniform_int_distribution<int> life(0, kLongestLife);
    int last = 0;
    int killedAtWork = 0;
    for (int i = 0; i < kKills; ++i) {
        Child writer([&] {
            for (int number = last + 1; write(number);) {
                ++number;
            }
            return false;
        });
        std::this_thread::sleep_for(std::chrono::microseconds(life(random)));
        writer.kill();
        ASSERT_TRUE(writer.end().wasKilled());
        const int found = numberInFile();
        ASSERT_GE(found, last) << "the file is not whole, or older than it was";
        killedAtWork += found > last ? 1 : 0;
        last = found + 1;
        ASSERT_TRUE(write(last));
        ASSERT_EQ(numberInFile(), last);
        EXPECT_FALSE(folder.has(L"dummy.tmp"));
    }
    EXPECT_GT(killedAtWork, 0);
    RecordProperty("kills", kKills);
    std::printf("[ faults   ] %d processes killed, %d of them behind a write or more, %d writes\n",
                kKills, killedAtWork, last);
}

} // namespace
