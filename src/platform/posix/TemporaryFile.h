#pragma once

#include "platform/platform.h"
#include "platform/posix/system_calls.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/types.h>

namespace corma::platform {

/// What a file that takes the place of another takes over from it.
struct Belongings
{
    mode_t mode = 0;
    uid_t owner = kAsItIs;
    gid_t group = kAsItIs;

    static constexpr auto kAsItIs = static_cast<uid_t>(-1); // what the folder gives to a new file

    static Belongings ofNewFile();
    static Belongings of(const struct ::stat& status);
};

/// A new file that goes away unless it takes the name of another.
class TemporaryFile
{
public:
    /// A file of a name that no other has, beside the target.
    static TemporaryFile beside(const std::filesystem::path& target);

    /// A file of that name; what else has it goes away.
    static TemporaryFile named(const std::filesystem::path& path);

    TemporaryFile(TemporaryFile&& other) noexcept;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile();

    /// What failed last; a file that could not be made has failed.
    [[nodiscard]] const FileError& error() const { return m_error; }

    // Each of these is false, and sets the error, when it fails or something failed before.

    bool take(const Belongings& belongings);
    bool write(std::string_view bytes);
    bool flush(); ///< to the disk; nothing can be written from then on

    /// Takes the name of the target, of which nothing stays. A flushed file on another file system
    /// does so through a copy beside the target, which gets the belongings, too.
    bool takeNameOf(const std::filesystem::path& target, const Belongings& belongings);

private:
    TemporaryFile(std::string path, int descriptor);

    bool note(bool isDone);
    bool takeNameInOneStep(const std::filesystem::path& target); // false leaves errno
    bool copyTo(const std::filesystem::path& target, const Belongings& belongings);

    std::string m_path;
    Descriptor m_descriptor;
    bool m_isThere;
    FileError m_error;
};

/// The file that a link means, so that the link itself stays; it need not be there. Nothing for
/// links that go in a circle.
std::optional<std::filesystem::path> behindLinks(std::filesystem::path path);

/// The folder of a file.
std::filesystem::path folderOf(const std::filesystem::path& path);

/// Flushes the names in a folder to disk; `opened` is the folder or, if it is not open, -1. Some
/// file systems have no such thing, and what was done is done: it tells nothing.
void flushFolder(const std::filesystem::path& folder, int opened = -1);

} // namespace corma::platform
