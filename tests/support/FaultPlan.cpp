#include "support/FaultPlan.h"

#include <csignal>

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

} // namespace corma::testing
