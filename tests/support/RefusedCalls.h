#pragma once

#include "platform/faults.h"

namespace corma::testing {

/// For the life of the object all system calls of one kind fail with the number of an error.
class RefusedCalls : public platform::CallObserver
{
public:
    RefusedCalls(platform::SystemCall call, int error)
        : m_call(call)
        , m_error(error)
        , m_former(platform::observeCalls(this))
    {
    }

    RefusedCalls(const RefusedCalls&) = delete;
    RefusedCalls& operator=(const RefusedCalls&) = delete;

    ~RefusedCalls() override { platform::observeCalls(m_former); }

    int before(platform::SystemCall call) override
    {
        m_count += call == m_call ? 1 : 0;
        return call == m_call ? m_error : 0;
    }

    void after(platform::SystemCall /*call*/) override { }

    /// How many were refused.
    [[nodiscard]] int count() const { return m_count; }

private:
    platform::SystemCall m_call;
    int m_error;
    int m_count = 0;
    platform::CallObserver* m_former;
};

} // namespace corma::testing
