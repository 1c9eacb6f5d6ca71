#pragma once

#include "platform/faults.h"

#include <cstddef>
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

} // namespace corma::testing
