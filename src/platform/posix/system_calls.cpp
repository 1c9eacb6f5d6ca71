#include "platform/posix/system_calls.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corma::platform {

namespace {

CallObserver*& observer()
{
    static CallObserver* inForce = nullptr;
    return inForce;
}

template<class Call> auto observed(SystemCall kind, const Call& call) -> decltype(call())
{
    CallObserver* const watching = observer();
    if (watching == nullptr) {
        return call();
    }
    if (const int error = watching->before(kind)) {
        errno = error;
        return -1;
    }
    const auto result = call();
    const int error = errno;
    watching->after(kind);
    errno = error;
    return result;
}

template<class Call> auto untilDone(const Call& call) -> decltype(call())
{
    for (;;) {
        const auto result = call();
        if (result != -1 || errno != EINTR) {
            return result;
        }
    }
}

} // namespace

const char* nameOf(SystemCall call)
{
    constexpr std::array kNames = {
        "openTarget", "openFolder", "lockFolder", "read", "create", "changeOwner", "changeMode",
        "write",      "flush",      "close",      "link", "rename", "remove",      "flushFolder"};
    return kNames.at(static_cast<std::size_t>(call));
}

CallObserver* observeCalls(CallObserver* watching)
{
    return std::exchange(observer(), watching);
}

bool Descriptor::close()
{
    const int descriptor = std::exchange(m_descriptor, -1);
    return descriptor < 0 || calls::close(descriptor) == 0;
}

namespace calls {

int open(SystemCall kind, const std::string& path, int flags, mode_t mode)
{
    return observed(kind, [&] {
        return untilDone([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); });
    });
}

ssize_t read(int descriptor, char* bytes, std::size_t size)
{
    return observed(SystemCall::read,
                    [&] { return untilDone([&] { return ::read(descriptor, bytes, size); }); });
}

ssize_t write(int descriptor, std::string_view bytes)
{
    return observed(SystemCall::write, [&] {
        return untilDone([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
    });
}

int flush(int descriptor)
{
    return observed(SystemCall::flush, [&] {
        const int result = untilDone([&] { return ::fsync(descriptor); });
        return result == -1 && (errno == EINVAL || errno == ENOSYS) ? 0 : result;
    });
}

int flushFolder(int descriptor)
{
    return observed(SystemCall::flushFolder,
                    [&] { return untilDone([&] { return ::fsync(descriptor); }); });
}

int close(int descriptor)
{
    bool isClosed = false;
    const int result = observed(SystemCall::close, [&] {
        isClosed = true;
        return ::close(descriptor);
    });
    if (!isClosed) {
        const int error = errno;
        ::close(descriptor);
        errno = error;
    }
    return result;
}

int lockWithoutWaiting(int descriptor)
{
    return observed(SystemCall::lockFolder, [&] {
        return untilDone([&] { return ::flock(descriptor, LOCK_EX | LOCK_NB); });
    });
}

int changeOwner(int descriptor, uid_t owner, gid_t group)
{
    return observed(SystemCall::changeOwner, [&] { return ::fchown(descriptor, owner, group); });
}

int changeMode(int descriptor, mode_t mode)
{
    return observed(SystemCall::changeMode, [&] { return ::fchmod(descriptor, mode); });
}

int link(const std::string& from, const std::string& to)
{
    return observed(SystemCall::link, [&] { return ::link(from.c_str(), to.c_str()); });
}

int rename(const std::string& from, const std::string& to)
{
    return observed(SystemCall::rename, [&] { return std::rename(from.c_str(), to.c_str()); });
}

int remove(const std::string& path)
{
    return observed(SystemCall::remove, [&] { return ::unlink(path.c_str()); });
}

} // namespace calls

ssize_t readUpTo(int descriptor, char* bytes, std::size_t size)
{
    std::size_t got = 0;
    while (got < size) {
        const ssize_t count = calls::read(descriptor, bytes + got, size - got);
        if (count < 0) {
            return -1;
        }
        if (count == 0) {
            break;
        }
        got += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(got);
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = calls::write(descriptor, bytes);
        if (count < 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace corma::platform
