#pragma once

// The system calls that a write makes, each of them open to an observer. Nothing in the sources
// beside this one makes such a call in another way.

#include "platform/faults.h"

#include <cerrno>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>

namespace corma::platform {

/// Closes what it holds.
class Descriptor
{
public:
    Descriptor() = default;

    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    Descriptor(Descriptor&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }

    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }

    ~Descriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

    [[nodiscard]] int get() const { return m_descriptor; }

    bool close();

private:
    int m_descriptor = -1;
};

namespace calls {

// Each as the call of that name; -1, with errno, when it fails. Those that a signal can interrupt
// are made again.

int open(SystemCall kind, const std::string& path, int flags, mode_t mode = 0);
ssize_t read(int descriptor, char* bytes, std::size_t size);
ssize_t write(int descriptor, std::string_view bytes);
int flush(int descriptor); // a file system that has no such thing counts as flushed
int flushFolder(int descriptor);
int close(int descriptor); // closed also when it fails
int lockWithoutWaiting(int descriptor);
int changeOwner(int descriptor, uid_t owner, gid_t group);
int changeMode(int descriptor, mode_t mode);
int link(const std::string& from, const std::string& to);
int rename(const std::string& from, const std::string& to);
int remove(const std::string& path);

} // namespace calls

/// Reads until `size` bytes are there or the file ends; the count, or -1.
ssize_t readUpTo(int descriptor, char* bytes, std::size_t size);

bool writeAll(int descriptor, std::string_view bytes);

} // namespace corma::platform
