#pragma once

#include "controls/PerformanceTimer.h"

#include <string>

namespace corma::testing {

/// A clock that stands still unless it is moved, and the texts of timers, for as long as it lives.
class TimerRecorder : public TimerSystem
{
public:
    TimerRecorder()
        : m_former(replaceTimerSystem(this))
    {
    }

    ~TimerRecorder() override { replaceTimerSystem(m_former); }

    bool isListening() override { return listens; }

    std::int64_t count() override
    {
        ++asked;
        return now;
    }

    std::int64_t frequency() override { return perSecond; }

    void write(std::wstring_view written) override
    {
        text += written;
        now += perWrite;
    }

    bool listens = true;
    std::int64_t now = 5'000;
    std::int64_t perSecond = 1'000'000;
    std::int64_t perWrite = 0; // what the writing of a text takes
    int asked = 0; // for the count
    std::wstring text;

private:
    TimerSystem* m_former;
};

} // namespace corma::testing
