#pragma once

// Where a test gets between the library and the operating system: it sees each system call that a
// write of a file makes, can let it fail, and can end the process at it.

namespace corma::platform {

enum class SystemCall
{
    openTarget,
    openFolder,
    lockFolder,
    read,
    create, // of a temporary file
    changeOwner,
    changeMode,
    write,
    flush, // of a temporary file
    close,
    link,
    rename,
    remove,
    flushFolder
};

/// The name of a call, for what a test tells.
const char* nameOf(SystemCall call);

class CallObserver
{
public:
    CallObserver() = default;
    CallObserver(const CallObserver&) = delete;
    CallObserver& operator=(const CallObserver&) = delete;
    virtual ~CallObserver() = default;

    /// The number of the error that the call fails with instead of being made; 0: it is made.
    virtual int before(SystemCall call) = 0;

    /// The call was made, whatever came of it.
    virtual void after(SystemCall call) = 0;
};

/// Makes an observer see all calls of this process, for null none. It stays the caller's. Returns
/// the former one.
CallObserver* observeCalls(CallObserver* observer);

} // namespace corma::platform
