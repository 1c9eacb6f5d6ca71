#include "controls/PerformanceTimer.h"

#include "foundation/messages.h"
#include "platform/platform.h"

#include <algorithm>
#include <chrono>

namespace corma {

namespace {

constexpr std::int64_t kMicroseconds = 1'000'000; // in a second

// A text is written through a buffer of so many characters, the terminator among them.
constexpr std::size_t kBufferSize = 512;

constexpr const wchar_t* kMarkText = L"Performance mark in %s, line %i: %lld \u00b5s\n";
constexpr const wchar_t* kEndText = L"Function %s took %lld \u00b5s\n";

class Machine : public TimerSystem
{
public:
    using Clock = std::chrono::steady_clock;

    bool isListening() override { return platform::hasDebugOutput(); }

    std::int64_t count() override { return Clock::now().time_since_epoch().count(); }

    std::int64_t frequency() override { return Clock::period::den / Clock::period::num; }

    void write(std::wstring_view text) override { platform::debugOutput(text); }
};

Machine machine;
TimerSystem* current = &machine;

void writeCut(TimerSystem& system, std::wstring text)
{
    text.resize(std::min(text.size(), kBufferSize - 1));
    system.write(text);
}

} // namespace

TimerSystem* replaceTimerSystem(TimerSystem* system)
{
    TimerSystem* const former = current == &machine ? nullptr : current;
    current = system == nullptr ? &machine : system;
    return former;
}

PerformanceTimer::PerformanceTimer(const wchar_t* name)
    : m_system(current->isListening() ? current : nullptr)
{
    if (m_system == nullptr) {
        return;
    }
    if (name != nullptr) {
        m_name = name;
    }
    m_frequency = m_system->frequency();
    m_start = m_system->count();
}

PerformanceTimer::~PerformanceTimer()
{
    if (m_system == nullptr || !m_name) {
        return;
    }
    const long long microseconds = m_microseconds + lap();
    writeCut(*m_system, formatted(kEndText, m_name->c_str(), microseconds));
}

void PerformanceTimer::mark(const wchar_t* source, int line)
{
    if (m_system == nullptr) {
        return;
    }
    const std::int64_t microseconds = lap();
    m_microseconds += microseconds;
    writeCut(*m_system, formatted(kMarkText, source, line, static_cast<long long>(microseconds)));
    m_start = m_system->count();
}

std::int64_t PerformanceTimer::lap() const
{
    // In two steps, since the product of hours and a million would be too much.
    const std::int64_t counts = m_system->count() - m_start;
    return counts / m_frequency * kMicroseconds
        + counts % m_frequency * kMicroseconds / m_frequency;
}

} // namespace corma
