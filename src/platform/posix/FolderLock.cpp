#include "platform/posix/FolderLock.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <utility>
#include <vector>

namespace corma::platform {

namespace {

using Clock = std::chrono::steady_clock;

// Others have a folder for the few milliseconds of a write. Who has it for longer hangs, and is not
// to make everyone else hang.
constexpr auto kLongestWait = std::chrono::seconds(10);
constexpr auto kFirstPause = std::chrono::microseconds(50);
constexpr auto kLongestPause = std::chrono::milliseconds(1);

// Who writes again and again has the folder free for moments only, which those who wait and look
// again after each pause would hardly ever meet. So it steps aside now and then, for long enough
// that each of them looks.
constexpr auto kLongestSeries = std::chrono::milliseconds(50);
constexpr auto kStepAside = 2 * kLongestPause;

// The changes of this process that follow each other closely.
class Series
{
public:
    void stepAsideIfLong()
    {
        if (Clock::now() - m_end.load() <= kLongestPause
            && m_end.load() - m_begin.load() > kLongestSeries) {
            std::this_thread::sleep_for(kStepAside);
        }
    }

    void begin()
    {
        const auto now = Clock::now();
        if (now - m_end.load() > kLongestPause) {
            m_begin = now;
        }
    }

    void end() { m_end = Clock::now(); }

private:
    std::atomic<Clock::time_point> m_begin;
    std::atomic<Clock::time_point> m_end;
};

Series series;

Descriptor openFolder(const std::filesystem::path& path)
{
    return Descriptor(calls::open(SystemCall::openFolder, path.native(), O_RDONLY | O_DIRECTORY));
}

// Tells two folders apart, and gives them an order that is the same in all processes.
std::pair<dev_t, ino_t> identityOf(const Descriptor& folder)
{
    struct stat status = {};
    if (!folder.isOpen() || ::fstat(folder.get(), &status) != 0) {
        return {};
    }
    return {status.st_dev, status.st_ino};
}

// False when another has it until then.
bool lockUntil(Clock::time_point end, int folder)
{
    Clock::duration pause = kFirstPause;
    while (calls::lockWithoutWaiting(folder) != 0) {
        if (errno != EWOULDBLOCK) {
            return true;
        }
        if (Clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(pause);
        pause = std::min<Clock::duration>(2 * pause, kLongestPause);
    }
    return true;
}

} // namespace

// In one order for all, so that two who want the same two folders do not wait for each other.
FolderLock::FolderLock(const std::filesystem::path& folder, const std::filesystem::path& other)
    : m_folder(openFolder(folder))
    , m_other(folder == other ? Descriptor() : openFolder(other))
{
    std::vector<const Descriptor*> inOrder {&m_folder};
    if (m_other.isOpen()) {
        const auto identity = identityOf(m_folder);
        const auto otherIdentity = identityOf(m_other);
        if (identity != otherIdentity) {
            inOrder.insert(otherIdentity < identity ? inOrder.begin() : inOrder.end(), &m_other);
        }
    }
    series.stepAsideIfLong();
    const auto end = Clock::now() + kLongestWait;
    for (const Descriptor* const one : inOrder) {
        m_isTaken = m_isTaken && (!one->isOpen() || lockUntil(end, one->get()));
    }
    series.begin();
}

FolderLock::~FolderLock()
{
    m_other.close();
    m_folder.close();
    series.end();
}

} // namespace corma::platform
