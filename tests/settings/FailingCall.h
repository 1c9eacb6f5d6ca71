#pragma once

#include "platform/faults.h"

namespace corma::testing {

/// While it lives, every system call of one kind that a write makes fails with an error.
class FailingCall : public platform::CallObserver
{
public:
    FailingCall(platform::SystemCall call, int error)
        : m_call(call)
        , m_error(error)
        , m_former(platform::observeCalls(this))
    {
    }

    FailingCall(const FailingCall&) = delete;
    FailingCall& operator=(const FailingCall&) = delete;

    ~FailingCall() override { platform::observeCalls(m_former); }

    int before(platform::SystemCall call) override { return call == m_call ? m_error : 0; }

    void after(platform::SystemCall /*call*/) override { }

private:
    platform::SystemCall m_call;
    int m_error;
    platform::CallObserver* m_former;
};

} // namespace corma::testing
