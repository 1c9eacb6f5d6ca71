#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corma {

/// What a timer measures with and writes to.
class TimerSystem
{
public:
    TimerSystem() = default;
    TimerSystem(const TimerSystem&) = delete;
    TimerSystem& operator=(const TimerSystem&) = delete;
    virtual ~TimerSystem() = default;

    /// True when what is written goes anywhere. A timer asks once, when it begins.
    virtual bool isListening() = 0;

    /// The high-resolution counter, and its counts in a second.
    virtual std::int64_t count() = 0;
    virtual std::int64_t frequency() = 0;

    virtual void write(std::wstring_view text) = 0;
};

/// Makes timers that begin from now on use another system, for null the machine's clock and its
/// debug output. It stays the caller's. Returns the former one. For tests.
TimerSystem* replaceTimerSystem(TimerSystem* system);

/// Measures the time of a piece of code, from its construction, and tells it to the debug output.
/// Where nobody listens it does nothing.
class PerformanceTimer
{
public:
    /// The name of the function, for what is told at the end; null for a timer that tells nothing
    /// then.
    explicit PerformanceTimer(const wchar_t* name);
    PerformanceTimer(const PerformanceTimer&) = delete;
    PerformanceTimer& operator=(const PerformanceTimer&) = delete;

    /// Tells the time since the beginning, without what the telling of marks took.
    ~PerformanceTimer();

    /// Tells the time since the last mark, or the beginning, as that up to a line of a source.
    void mark(const wchar_t* source, int line);

private:
    [[nodiscard]] std::int64_t lap() const;

    TimerSystem* m_system; // null where nobody listens
    std::int64_t m_start = 0; // counts
    std::int64_t m_microseconds = 0; // up to the last mark
    std::int64_t m_frequency = 1;
    std::optional<std::wstring> m_name;
};

} // namespace corma
