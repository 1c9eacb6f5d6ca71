#include "support/Child.h"

#include <csignal>
#include <cstdio>
#include <grp.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace corma::testing {

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

namespace {

bool giveUpRights()
{
    constexpr unsigned kNobody = 65534;
    return ::geteuid() != 0
        || (::setgroups(0, nullptr) == 0 && ::setresgid(kNobody, kNobody, kNobody) == 0
            && ::setresuid(kNobody, kNobody, kNobody) == 0);
}

} // namespace

ChildEnd inChildWithoutRights(const std::function<bool()>& thing)
{
    return inChild([&] {
        if (!giveUpRights()) {
            throw std::runtime_error("the rights of root stay");
        }
        return thing();
    });
}

} // namespace corma::testing
