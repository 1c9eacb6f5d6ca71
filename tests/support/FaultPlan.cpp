#include "support/FaultPlan.h"

#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace corma::testing {

using platform::SystemCall;

FaultPlan::FaultPlan()
    : FaultPlan(Plan {})
{
}

FaultPlan::FaultPlan(Plan plan)
    : m_plan(plan)
    , m_former(platform::observeCalls(this))
{
}

FaultPlan::~FaultPlan()
{
    platform::observeCalls(m_former);
}

bool FaultPlan::isToFail(SystemCall call) const
{
    const std::size_t number = m_calls.size() - 1;
    switch (m_plan.fault) {
    case Fault::failure:
        return number == m_plan.call;
    case Fault::failuresFromHere:
        return number >= m_plan.call && call == m_calls[m_plan.call];
    default:
        return false;
    }
}

int FaultPlan::before(SystemCall call)
{
    m_calls.push_back(call);
    if (m_plan.fault == Fault::endBefore && m_calls.size() - 1 == m_plan.call) {
        static_cast<void>(std::raise(SIGKILL));
    }
    if (!isToFail(call)) {
        return 0;
    }
    ++m_failures;
    return m_plan.error;
}

void FaultPlan::after(SystemCall /*call*/)
{
    if (m_plan.fault == Fault::endBehind && m_calls.size() - 1 == m_plan.call) {
        static_cast<void>(std::raise(SIGKILL));
    }
}

std::string namesOf(const std::vector<SystemCall>& calls)
{
    std::string names;
    for (const SystemCall call : calls) {
        names += names.empty() ? "" : " ";
        names += platform::nameOf(call);
    }
    return names;
}

bool ChildEnd::wasKilled() const
{
    return signal == SIGKILL;
}

namespace {

constexpr int kWasFalse = 1;
constexpr int kThrew = 2;

int statusOf(const std::function<bool()>& thing)
{
    try {
        return thing() ? 0 : kWasFalse;
    } catch (...) {
        return kThrew;
    }
}

} // namespace

Child::Child(const std::function<bool()>& thing)
{
    // What is not written yet would be written by both.
    static_cast<void>(std::fflush(nullptr));
    m_process = ::fork();
    if (m_process < 0) {
        throw std::runtime_error("no child process");
    }
    if (m_process == 0) {
        ::_exit(statusOf(thing));
    }
}

Child::~Child()
{
    if (m_process > 0) {
        kill();
        end();
    }
}

void Child::kill()
{
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
    }
}

ChildEnd Child::end()
{
    int status = 0;
    if (m_process <= 0 || ::waitpid(std::exchange(m_process, 0), &status, 0) < 0) {
        throw std::runtime_error("no child process to wait for");
    }
    if (WIFSIGNALED(status)) {
        return {.signal = WTERMSIG(status)};
    }
    return {.status = WEXITSTATUS(status)};
}

ChildEnd inChild(const std::function<bool()>& thing)
{
    return Child(thing).end();
}

} // namespace corma::testing
