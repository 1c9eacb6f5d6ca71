#pragma once

#include "platform/faults.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace corma::testing {

/// Sees the system calls of this process's writes while it lives, in place of whoever saw them
/// before, and does to one of them what it was made for. Calls are counted from 0.
class FaultPlan : public platform::CallObserver
{
public:
    enum class Fault
    {
        none,
        failure, // the call is not made and fails
        failuresFromHere, // so do all later ones of its kind
        endBefore, // the process is killed instead of making the call
        endBehind // the process is killed when the call was made
    };

    struct Plan
    {
        Fault fault = Fault::none;
        std::size_t call = 0;
        int error = 0; // what a failure fails with
    };

    /// Only counts.
    FaultPlan();
    explicit FaultPlan(Plan plan);
    FaultPlan(const FaultPlan&) = delete;
    FaultPlan& operator=(const FaultPlan&) = delete;
    ~FaultPlan() override;

    /// The calls so far.
    [[nodiscard]] const std::vector<platform::SystemCall>& calls() const { return m_calls; }

    /// How many of them failed by the plan.
    [[nodiscard]] std::size_t failures() const { return m_failures; }

    int before(platform::SystemCall call) override;
    void after(platform::SystemCall call) override;

private:
    [[nodiscard]] bool isToFail(platform::SystemCall call) const;

    Plan m_plan;
    std::vector<platform::SystemCall> m_calls;
    std::size_t m_failures = 0;
    platform::CallObserver* m_former;
};

/// The names of calls, a blank between.
std::string namesOf(const std::vector<platform::SystemCall>& calls);

/// How a child process ended.
struct ChildEnd
{
    int signal = 0; // that ended it; 0 for none
    int status = 0; // that it ended with itself

    /// What it was asked was true.
    [[nodiscard]] bool isGood() const { return signal == 0 && status == 0; }

    [[nodiscard]] bool wasKilled() const;
};

/// A child process that does one thing, which is a copy of this process at the moment of the
/// making. It ends without the ends of its objects, so that it takes nothing of the test with it.
/// The thing must not use assertions: what is true or not is for the parent to tell.
class Child
{
public:
    explicit Child(const std::function<bool()>& thing);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child(); ///< kills it if nobody waited for it

    void kill();

    /// Waits for its end. A thing that was false ends with status 1, one that threw with 2.
    ChildEnd end();

private:
    int m_process;
};

/// The end of a child that does one thing.
ChildEnd inChild(const std::function<bool()>& thing);

} // namespace corma::testing
