#include "platform/posix/FolderLock.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <tuple>

namespace corma::platform {

namespace {

using Clock = std::chrono::steady_clock;

// Others have a folder for the few milliseconds of a write. Who has it for longer hangs, and is not
// to make everyone else hang.
constexpr auto kLongestWait = std::chrono::seconds(10);
constexpr auto kFirstPause = std::chrono::microseconds(50);
constexpr auto kLongestPause = std::chrono::milliseconds(2);

struct Folder
{
    Descriptor opened;
    dev_t device = 0;
    ino_t number = 0;

    [[nodiscard]] auto identity() const { return std::tie(device, number); }
};

std::vector<Folder> openAll(const std::vector<std::filesystem::path>& paths)
{
    std::vector<Folder> folders;
    for (const auto& path : paths) {
        Descriptor opened(
            calls::open(SystemCall::openFolder, path.native(), O_RDONLY | O_DIRECTORY));
        struct stat status = {};
        if (opened.isOpen() && ::fstat(opened.get(), &status) == 0) {
            folders.push_back({std::move(opened), status.st_dev, status.st_ino});
        }
    }
    return folders;
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
FolderLock::FolderLock(std::vector<std::filesystem::path> paths)
{
    std::vector<Folder> folders = openAll(paths);
    std::sort(folders.begin(), folders.end(),
              [](const Folder& a, const Folder& b) { return a.identity() < b.identity(); });
    const auto behind
        = std::unique(folders.begin(), folders.end(), [](const Folder& a, const Folder& b) {
              return a.identity() == b.identity();
          });
    const auto end = Clock::now() + kLongestWait;
    for (auto folder = folders.begin(); folder != behind && m_isTaken; ++folder) {
        m_isTaken = lockUntil(end, folder->opened.get());
        m_folders.push_back(std::move(folder->opened));
    }
}

} // namespace corma::platform
