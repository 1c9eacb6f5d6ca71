#pragma once

#include "platform/posix/system_calls.h"

#include <filesystem>

namespace corma::platform {

/// One or two folders that no other process, and no other object of this one, can lock while the
/// object lives. The lock is the kernel's: it ends with the process at the latest.
class FolderLock
{
public:
    /// Waits for folders that others have, up to ten seconds. A folder that cannot be locked at
    /// all, as on some file systems, counts as locked. The two may be the same.
    FolderLock(const std::filesystem::path& folder, const std::filesystem::path& other);
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock();

    /// False when another kept a folder for longer.
    [[nodiscard]] bool isTaken() const { return m_isTaken; }

    /// The first folder, to be flushed; -1 when it could not be opened.
    [[nodiscard]] int folder() const { return m_folder.get(); }

private:
    Descriptor m_folder;
    Descriptor m_other;
    bool m_isTaken = true;
};

} // namespace corma::platform
