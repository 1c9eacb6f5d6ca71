#pragma once

#include "platform/posix/system_calls.h"

#include <filesystem>
#include <vector>

namespace corma::platform {

/// Folders that no other process, and no other object of this one, can lock while the object lives.
/// The lock is the kernel's: it ends with the process at the latest.
class FolderLock
{
public:
    /// Waits for folders that others have, up to ten seconds. A folder that cannot be locked at
    /// all, as on some file systems, counts as locked.
    explicit FolderLock(std::vector<std::filesystem::path> folders);

    /// False when another kept a folder for longer.
    [[nodiscard]] bool isTaken() const { return m_isTaken; }

private:
    std::vector<Descriptor> m_folders;
    bool m_isTaken = true;
};

} // namespace corma::platform
