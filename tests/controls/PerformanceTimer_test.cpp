#include "TimerRecorder.h"
#include "controls/PerformanceTimer.h"

#include <gtest/gtest.h>

namespace corma {

namespace {

using testing::TimerRecorder;

TEST(PerformanceTimer, TellsTheTimeOfEachMarkAndOfTheWhole)
{
    TimerRecorder recorder;
    recorder.perSecond = 2'000'000;
    {
        PerformanceTimer timer(L"paint");
        recorder.now += 20;
        timer.mark(L"list.cpp", 12);
        recorder.now += 6;
        timer.mark(L"list.cpp", 15);
        recorder.now += 4;
    }
    EXPECT_EQ(recorder.text,
              L"Performance mark in list.cpp, line 12: 10 \u00b5s\n"
              L"Performance mark in list.cpp, line 15: 3 \u00b5s\n"
              L"Function paint took 15 \u00b5s\n");
}

TEST(PerformanceTimer, TheTellingOfMarksDoesNotCount)
{
    TimerRecorder recorder;
    recorder.perWrite = 1000;
    {
        PerformanceTimer timer(L"paint");
        recorder.now += 7;
        timer.mark(L"list.cpp", 1);
        recorder.now += 2;
        timer.mark(L"list.cpp", 2);
    }
    EXPECT_EQ(recorder.text,
              L"Performance mark in list.cpp, line 1: 7 \u00b5s\n"
              L"Performance mark in list.cpp, line 2: 2 \u00b5s\n"
              L"Function paint took 9 \u00b5s\n");
}

TEST(PerformanceTimer, WithoutANameItTellsMarksOnly)
{
    TimerRecorder recorder;
    {
        PerformanceTimer timer(nullptr);
        timer.mark(L"list.cpp", 1);
    }
    EXPECT_EQ(recorder.text, L"Performance mark in list.cpp, line 1: 0 \u00b5s\n");
}

TEST(PerformanceTimer, AnEmptyNameIsAName)
{
    TimerRecorder recorder;
    {
        const PerformanceTimer timer(L"");
    }
    EXPECT_EQ(recorder.text, L"Function  took 0 \u00b5s\n");
}

TEST(PerformanceTimer, KeepsItsOwnCopyOfTheName)
{
    TimerRecorder recorder;
    {
        wchar_t name[] = L"paint";
        const PerformanceTimer timer(name);
        name[0] = L'f';
    }
    EXPECT_EQ(recorder.text, L"Function paint took 0 \u00b5s\n");
}

TEST(PerformanceTimer, CutsATextThatIsLongerThanItsBuffer)
{
    const std::wstring around = L"Function  took 0 \u00b5s\n";
    for (const std::size_t size : {510U, 511U, 512U}) {
        TimerRecorder recorder;
        const std::wstring name(size - around.size(), L'x');
        {
            const PerformanceTimer timer(name.c_str());
        }
        EXPECT_EQ(recorder.text, (L"Function " + name + L" took 0 \u00b5s\n").substr(0, 511));
        recorder.text.clear();
        {
            PerformanceTimer timer(nullptr);
            timer.mark(std::wstring(600, L'y').c_str(), 1);
        }
        EXPECT_EQ(recorder.text, L"Performance mark in " + std::wstring(491, L'y'));
    }
}

TEST(PerformanceTimer, MeasuresDaysInNanoseconds)
{
    TimerRecorder recorder;
    recorder.perSecond = 1'000'000'000;
    {
        const PerformanceTimer timer(L"wait");
        recorder.now += 30LL * 24 * 3600 * 1'000'000'000 + 1'999;
    }
    EXPECT_EQ(recorder.text, L"Function wait took 2592000000001 \u00b5s\n");
}

TEST(PerformanceTimer, DoesNothingWhenNobodyListens)
{
    TimerRecorder recorder;
    recorder.listens = false;
    {
        PerformanceTimer timer(L"paint");
        timer.mark(L"list.cpp", 1);
        recorder.listens = true; // it asks when it begins
        timer.mark(L"list.cpp", 2);
    }
    EXPECT_EQ(recorder.text, L"");
    EXPECT_EQ(recorder.asked, 0);
}

TEST(PerformanceTimer, ASystemIsInPlaceUntilItIsTakenBack)
{
    TimerRecorder outer;
    {
        TimerRecorder inner;
        const PerformanceTimer timer(L"paint");
        EXPECT_EQ(outer.asked, 0);
        EXPECT_EQ(inner.asked, 1);
    }
    {
        const PerformanceTimer timer(L"paint");
    }
    EXPECT_EQ(outer.text, L"Function paint took 0 \u00b5s\n");
    EXPECT_EQ(replaceTimerSystem(&outer), &outer);
}

} // namespace

} // namespace corma
